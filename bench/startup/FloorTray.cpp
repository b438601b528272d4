// The floor of the start-up benchmark: the least a tray program can be. One window,
// shown, and one notification-area icon; nothing read, nothing registered.
#include "FloorTray.h"

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
  return RunInTray(window, L"Floor tray", show);
}
