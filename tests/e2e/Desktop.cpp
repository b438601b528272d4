#include "Desktop.h"

#include <vector>

namespace e2e {

namespace {
constexpr wchar_t kHighContrastKey[] = L"Control Panel\\Accessibility\\HighContrast";
}  // namespace

UserSetting::UserSetting(const std::wstring& subkey, const std::wstring& name, DWORD value)
    : name_(name) {
  RegCreateKeyExW(HKEY_CURRENT_USER, subkey.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                  key_.Out(), nullptr);
  Set(REG_DWORD, &value, sizeof(value));
}

UserSetting::UserSetting(const std::wstring& subkey, const std::wstring& name,
                         const std::wstring& value)
    : name_(name) {
  RegCreateKeyExW(HKEY_CURRENT_USER, subkey.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                  key_.Out(), nullptr);
  Set(REG_SZ, value.c_str(), static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
}

void UserSetting::Set(DWORD type, const void* data, DWORD size) {
  if (!key_) return;
  DWORD oldSize = 0;
  if (RegQueryValueExW(key_.Get(), name_.c_str(), nullptr, &oldType_, nullptr, &oldSize) ==
      ERROR_SUCCESS) {
    oldData_.resize(oldSize);
    had_ = RegQueryValueExW(key_.Get(), name_.c_str(), nullptr, &oldType_,
                            reinterpret_cast<BYTE*>(oldData_.data()), &oldSize) == ERROR_SUCCESS;
  }
  RegSetValueExW(key_.Get(), name_.c_str(), 0, type, static_cast<const BYTE*>(data), size);
}

UserSetting::~UserSetting() {
  if (!key_) return;
  if (had_) {
    RegSetValueExW(key_.Get(), name_.c_str(), 0, oldType_,
                   reinterpret_cast<const BYTE*>(oldData_.data()),
                   static_cast<DWORD>(oldData_.size()));
  } else {
    RegDeleteValueW(key_.Get(), name_.c_str());
  }
}

HighContrastOn::HighContrastOn() : UserSetting(kHighContrastKey, L"Flags", std::wstring(L"1")) {
  BroadcastSettingChange(SPI_SETHIGHCONTRAST, L"Accessibility");
}

HighContrastOn::~HighContrastOn() {
  // The base puts the flag back after this; the programs hear of it once it is back.
  platform::win32::UniqueKey key;
  if (RegOpenKeyExW(HKEY_CURRENT_USER, kHighContrastKey, 0, KEY_SET_VALUE, key.Out()) ==
      ERROR_SUCCESS)
    RegSetValueExW(key.Get(), L"Flags", 0, REG_SZ, reinterpret_cast<const BYTE*>(L"0"),
                   2 * sizeof(wchar_t));
  BroadcastSettingChange(SPI_SETHIGHCONTRAST, L"Accessibility");
}

void BroadcastSettingChange(UINT action, const wchar_t* area) {
  DWORD_PTR result = 0;
  SendMessageTimeoutW(HWND_BROADCAST, WM_SETTINGCHANGE, action, reinterpret_cast<LPARAM>(area),
                      SMTO_ABORTIFHUNG, 3000, &result);
}

void TypeKey(WORD vk, bool shift, bool alt) {
  std::vector<INPUT> keys;
  auto key = [&](WORD code, bool up) {
    INPUT in{};
    in.type = INPUT_KEYBOARD;
    in.ki.wVk = code;
    in.ki.dwFlags = up ? KEYEVENTF_KEYUP : 0;
    keys.push_back(in);
  };
  if (shift) key(VK_SHIFT, false);
  if (alt) key(VK_MENU, false);
  key(vk, false);
  key(vk, true);
  if (alt) key(VK_MENU, true);
  if (shift) key(VK_SHIFT, true);
  SendInput(static_cast<UINT>(keys.size()), keys.data(), sizeof(INPUT));
}

HWND FocusOf(HWND top) {
  GUITHREADINFO info{};
  info.cbSize = sizeof(info);
  const DWORD thread = GetWindowThreadProcessId(top, nullptr);
  if (thread == 0 || !GetGUIThreadInfo(thread, &info)) return nullptr;
  return info.hwndFocus;
}

}  // namespace e2e
