#pragma once
// What both floors of the start-up benchmark share: their top-level window, and what
// they end with (the tray icon, the window shown unless the command line ends with
// "Min", as the monitor's is, and the message loop until the thread is told to quit).
#include <windows.h>
#include <shellapi.h>

// A plain window of a class of its own, not yet shown.
inline HWND MakeFloorWindow(HINSTANCE instance, const wchar_t* name, const wchar_t* title,
                            int background, DWORD style, int width, int height) {
  WNDCLASSW wc{};
  wc.lpfnWndProc = DefWindowProcW;
  wc.hInstance = instance;
  wc.hbrBackground = reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(background + 1));
  wc.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  wc.lpszClassName = name;
  RegisterClassW(&wc);
  return CreateWindowW(name, title, style, CW_USEDEFAULT, CW_USEDEFAULT, width, height, nullptr,
                       nullptr, instance, nullptr);
}

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
