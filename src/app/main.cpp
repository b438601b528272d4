// QVMonitor.exe: the monitor of the backup engine, living in the notification area.
#include <windows.h>

#include "app/ComRegistration.h"
#include "app/MonitorShell.h"
#include "frame/Startup.h"
#include "platform/win32/Win32Platform.h"
#include "support/ValueFiles.h"

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR, int) {
  platform::Win32Platform win32;
  platform::Win32ComServer com;
  win32.Get().com = &com;
  const base::Text arguments = win32.system.CommandLine();
  if (app::IsRegServerCommand(arguments)) return com.RegisterServer() ? 0 : 1;
  app::StartedByCom startedByCom(win32.system);
  if (app::IsEmbeddingCommand(arguments)) win32.Get().system = &startedByCom;
  frame::AppState app(win32.Get());
  support::SecureValueStore secure(app);
  app.secureStore = &secure;

  app::MonitorShell shell(instance);
  if (frame::Main(app, shell) != frame::MainResult::Run) return 0;
  // Only the one running monitor serves the engine's progress calls.
  app::ServeMonitorClass(app, com);

  MSG msg;
  while (GetMessageW(&msg, nullptr, 0, 0) > 0) {
    TranslateMessage(&msg);
    DispatchMessageW(&msg);
  }
  return 0;
}
