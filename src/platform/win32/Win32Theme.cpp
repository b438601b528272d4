#include "platform/win32/Win32Theme.h"

#include <algorithm>
#include <cwchar>

#include "platform/win32/Win32Handles.h"

namespace platform::win32 {

namespace {

constexpr wchar_t kHighContrastKey[] = L"Control Panel\\Accessibility\\HighContrast";
constexpr wchar_t kPersonalizeKey[] =
    L"Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize";

}  // namespace

bool HighContrastOn() {
  HIGHCONTRASTW hc{};
  hc.cbSize = sizeof(hc);
  if (SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof(hc), &hc, 0) &&
      (hc.dwFlags & HCF_HIGHCONTRASTON) != 0)
    return true;
  wchar_t flags[32] = {};
  DWORD size = sizeof(flags) - sizeof(wchar_t);
  if (RegGetValueW(HKEY_CURRENT_USER, kHighContrastKey, L"Flags", RRF_RT_REG_SZ, nullptr, flags,
                   &size) != ERROR_SUCCESS)
    return false;
  return (std::wcstoul(flags, nullptr, 10) & HCF_HIGHCONTRASTON) != 0;
}

bool LightTaskbar() {
  DWORD value = 0;
  DWORD size = sizeof(value);
  if (RegGetValueW(HKEY_CURRENT_USER, kPersonalizeKey, L"SystemUsesLightTheme", RRF_RT_REG_DWORD,
                   nullptr, &value, &size) != ERROR_SUCCESS)
    return false;
  return value == 1;
}

int DpiForWindow(HWND hwnd, int fallback) {
  using Fn = UINT(WINAPI*)(HWND);
  static const auto fn = reinterpret_cast<Fn>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"user32.dll"), "GetDpiForWindow")));
  const UINT dpi = fn != nullptr ? fn(hwnd) : 0;
  return dpi != 0 ? static_cast<int>(dpi) : fallback;
}

int MetricForDpi(int index, int dpi) {
  using Fn = int(WINAPI*)(int, UINT);
  static const auto fn = reinterpret_cast<Fn>(reinterpret_cast<void*>(
      GetProcAddress(GetModuleHandleW(L"user32.dll"), "GetSystemMetricsForDpi")));
  if (fn != nullptr) return fn(index, static_cast<UINT>(dpi));
  // The system's metric is for its own scale.
  win32::WindowDC screen(nullptr);
  const int system = std::max(1, GetDeviceCaps(screen.Get(), LOGPIXELSY));
  return MulDiv(GetSystemMetrics(index), dpi, system);
}

bool CutCornersShowBlack() {
  static const bool wine =
      GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
  return wine;
}

bool ThemeSettingChanged(UINT action, const wchar_t* area) {
  if (action == SPI_SETHIGHCONTRAST) return true;
  if (area == nullptr) return false;
  return std::wcscmp(area, L"ImmersiveColorSet") == 0 ||
         std::wcscmp(area, L"WindowsThemeElement") == 0 || std::wcscmp(area, L"Accessibility") == 0;
}

}  // namespace platform::win32
