#pragma once
// The screen's scale, and what the user chose for the look of the desktop, read where Windows keeps
// it: a high-contrast theme, and a light or dark taskbar. Both can change while the program runs;
// the host reads them again when the system says a setting changed.
#include "platform/win32/Win32Text.h"

namespace platform::win32 {

// High contrast: the system's own answer (SystemParametersInfo), or the flag the
// accessibility settings keep in the user's registry (HighContrast "Flags", bit 1),
// which is where the setting lives when the system call does not know it.
bool HighContrastOn();
// A light taskbar (Personalize "SystemUsesLightTheme" 1); dark, the system's
// default, when the value is missing.
bool LightTaskbar();

// The scale a window is drawn at, as the system says (`fallback` where it cannot),
// and a system metric at a scale. Looked up at run time: older systems lack both.
int DpiForWindow(HWND hwnd, int fallback);
int MetricForDpi(int index, int dpi);

// Whether the program runs under Wine, whose window system shows the pixels a
// window region cuts away in black instead of what lies behind.
bool CutCornersShowBlack();

// Whether a WM_SETTINGCHANGE with this text may have changed one of the two.
bool ThemeSettingChanged(UINT action, const wchar_t* area);

}  // namespace platform::win32
