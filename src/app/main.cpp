// QVMonitor.exe: the monitor of the backup engine, living in the notification area.
#include <windows.h>

#include "app/MonitorShell.h"
#include "frame/Startup.h"
#include "platform/win32/Win32Platform.h"
#include "support/ValueFiles.h"

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR, int) {
  platform::Win32Platform win32;
  frame::AppState app(win32.Get());
  support::SecureValueStore secure(app);
  app.secureStore = &secure;

  app::MonitorShell shell(instance);
  if (frame::Main(app, shell) != frame::MainResult::Run) return 0;

  MSG msg;
  while (GetMessageW(&msg, nullptr, 0, 0) > 0) {
    TranslateMessage(&msg);
    DispatchMessageW(&msg);
  }
  return 0;
}
