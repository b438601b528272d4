// The floor of the start-up benchmark: the least a tray program can be. One window,
// shown, and one notification-area icon; nothing read, nothing registered.
#include "FloorTray.h"

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR, int show) {
  HWND window = MakeFloorWindow(instance, L"FloorTray", L"Floor tray", COLOR_WINDOW,
                                WS_OVERLAPPEDWINDOW, 480, 360);
  return RunInTray(window, L"Floor tray", show);
}
