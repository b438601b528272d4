// keep-desktop.exe READY_FILE: holds the Wine prefix's desktop for as long as
// tools/with-wine.sh runs, and writes READY_FILE once it does.
//
// Wine ends the desktop's process (explorer.exe /desktop) a second after the last
// program on the desktop has gone, and the next program that needs the desktop
// (a window, or COM's hidden window) starts it again. That new explorer.exe
// inherits the standard error of the program that started it, and lives as long
// as any program uses the desktop: a test harness that waits for the end of a
// test program's output then waits for the desktop instead. This program is on
// the desktop from the start to the end of the run, with its output detached, so
// the desktop is never started again by a program under test.
#include <windows.h>

#include "platform/win32/Win32Handles.h"

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR readyFile, int) {
  // A message-only window: on the desktop, yet in no window list and never drawn.
  HWND window =
      CreateWindowExA(0, "STATIC", "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
  if (!window) return 1;
  if (readyFile && *readyFile) {
    const platform::win32::UniqueHandle ready(CreateFileA(
        readyFile, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
  }
  MSG message;
  while (GetMessageA(&message, nullptr, 0, 0) > 0) DispatchMessageA(&message);
  return 0;
}
