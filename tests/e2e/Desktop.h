#pragma once
// The desktop as a user changes it: settings of the user's registry set for a while
// (a screen scale, high contrast, the taskbar's theme) and put back, the broadcast
// that tells every program a setting changed, the real keyboard, and which window of
// another program has the keyboard's focus.
#include <windows.h>

#include "platform/win32/Win32Handles.h"

#include <optional>
#include <string>

namespace e2e {

// A value under HKEY_CURRENT_USER\<subkey>, set from construction to destruction and
// then put back as it was (deleted when there was none).
class UserSetting {
 public:
  UserSetting(const std::wstring& subkey, const std::wstring& name, DWORD value);
  UserSetting(const std::wstring& subkey, const std::wstring& name, const std::wstring& value);
  ~UserSetting();
  UserSetting(const UserSetting&) = delete;
  UserSetting& operator=(const UserSetting&) = delete;

 private:
  void Set(DWORD type, const void* data, DWORD size);
  platform::win32::UniqueKey key_;
  std::wstring name_;
  DWORD oldType_ = 0;
  std::string oldData_;
  bool had_ = false;
};

// High contrast as the accessibility settings keep it (the flag the system call
// does not carry under Wine), told to every program.
class HighContrastOn : public UserSetting {
 public:
  HighContrastOn();
  ~HighContrastOn();
};

// Tells every top-level window that a setting changed, as the control panel does.
void BroadcastSettingChange(UINT action, const wchar_t* area);

// A key typed on the real keyboard (to whatever has the focus), with Shift or Alt held.
void TypeKey(WORD vk, bool shift = false, bool alt = false);

// The window that has the keyboard's focus in the thread of `top` (any process).
HWND FocusOf(HWND top);

}  // namespace e2e
