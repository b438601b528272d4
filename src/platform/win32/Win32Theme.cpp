#include "platform/win32/Win32Theme.h"

#include <cwchar>

namespace platform::win32 {

namespace {

constexpr wchar_t kHighContrastKey[] = L"Control Panel\\Accessibility\\HighContrast";
constexpr wchar_t kPersonalizeKey[] = L"Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize";

}  // namespace

bool HighContrastOn() {
  HIGHCONTRASTW hc{};
  hc.cbSize = sizeof(hc);
  if (SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof(hc), &hc, 0) && (hc.dwFlags & HCF_HIGHCONTRASTON) != 0)
    return true;
  wchar_t flags[32] = {};
  DWORD size = sizeof(flags) - sizeof(wchar_t);
  if (RegGetValueW(HKEY_CURRENT_USER, kHighContrastKey, L"Flags", RRF_RT_REG_SZ, nullptr, flags, &size) !=
      ERROR_SUCCESS)
    return false;
  return (std::wcstoul(flags, nullptr, 10) & HCF_HIGHCONTRASTON) != 0;
}

bool LightTaskbar() {
  DWORD value = 0;
  DWORD size = sizeof(value);
  if (RegGetValueW(HKEY_CURRENT_USER, kPersonalizeKey, L"SystemUsesLightTheme", RRF_RT_REG_DWORD, nullptr,
                   &value, &size) != ERROR_SUCCESS)
    return false;
  return value == 1;
}

bool ThemeSettingChanged(UINT action, const wchar_t* area) {
  if (action == SPI_SETHIGHCONTRAST) return true;
  if (area == nullptr) return false;
  return std::wcscmp(area, L"ImmersiveColorSet") == 0 || std::wcscmp(area, L"WindowsThemeElement") == 0 ||
         std::wcscmp(area, L"Accessibility") == 0;
}

}  // namespace platform::win32
