// The floor of the start-up benchmark: the least a tray program can be. One window,
// shown, and one notification-area icon; nothing read, nothing registered.
#include <windows.h>
#include <shellapi.h>

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR, int show) {
  WNDCLASSW wc{};
  wc.lpfnWndProc = DefWindowProcW;
  wc.hInstance = instance;
  wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
  wc.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  wc.lpszClassName = L"FloorTray";
  RegisterClassW(&wc);
  HWND window = CreateWindowW(L"FloorTray", L"Floor tray", WS_OVERLAPPEDWINDOW, CW_USEDEFAULT,
                              CW_USEDEFAULT, 480, 360, nullptr, nullptr, instance, nullptr);
  NOTIFYICONDATAW icon{};
  icon.cbSize = sizeof(icon);
  icon.hWnd = window;
  icon.uFlags = NIF_ICON | NIF_TIP;
  icon.hIcon = LoadIconW(nullptr, IDI_APPLICATION);
  lstrcpyW(icon.szTip, L"Floor tray");
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
