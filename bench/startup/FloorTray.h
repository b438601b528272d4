#pragma once
// What both floors of the start-up benchmark end with: the tray icon, the window shown
// (left hidden when the command line ends with "Min", as the monitor's is), and the
// message loop until the window's thread is told to quit.
#include <windows.h>
#include <shellapi.h>

inline int RunInTray(HWND window, const wchar_t* tip, int show) {
  NOTIFYICONDATAW icon{};
  icon.cbSize = sizeof(icon);
  icon.hWnd = window;
  icon.uFlags = NIF_ICON | NIF_TIP;
  icon.hIcon = LoadIconW(nullptr, IDI_APPLICATION);
  lstrcpynW(icon.szTip, tip, ARRAYSIZE(icon.szTip));
  Shell_NotifyIconW(NIM_ADD, &icon);
  if (lstrcmpW(GetCommandLineW() + lstrlenW(GetCommandLineW()) - 3, L"Min") != 0) {
    ShowWindow(window, show);
    UpdateWindow(window);
  }
  MSG msg;
  while (GetMessageW(&msg, nullptr, 0, 0) > 0) DispatchMessageW(&msg);
  Shell_NotifyIconW(NIM_DELETE, &icon);
  return 0;
}
