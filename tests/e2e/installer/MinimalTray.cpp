// The smallest tray program: a hidden window and one notification-area icon, the
// yardstick of the monitor's working set (docs/installer.md). Runs until it is ended.
#include <windows.h>
#include <shellapi.h>

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR, int) {
  WNDCLASSW wc{};
  wc.lpfnWndProc = DefWindowProcW;
  wc.hInstance = instance;
  wc.lpszClassName = L"MinimalTray";
  RegisterClassW(&wc);
  HWND window = CreateWindowW(L"MinimalTray", L"Minimal tray", 0, 0, 0, 0, 0, nullptr, nullptr,
                              instance, nullptr);
  NOTIFYICONDATAW icon{};
  icon.cbSize = sizeof(icon);
  icon.hWnd = window;
  icon.uFlags = NIF_ICON | NIF_TIP;
  icon.hIcon = LoadIconW(nullptr, IDI_APPLICATION);
  lstrcpyW(icon.szTip, L"Minimal tray");
  Shell_NotifyIconW(NIM_ADD, &icon);
  MSG msg;
  while (GetMessageW(&msg, nullptr, 0, 0) > 0) DispatchMessageW(&msg);
  Shell_NotifyIconW(NIM_DELETE, &icon);
  return 0;
}
