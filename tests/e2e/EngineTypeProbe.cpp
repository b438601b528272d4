// e2e_enginetype.exe DATAROOT: prints how the monitor's start-up would take the
// installed engine for a data root, on the real Windows profile and registry calls:
//   EngineIsService=<0|1> ActiveEngine=<NTService|BackGroundService>
// The monitor window shows nothing of the engine type yet, so the end-to-end tests ask
// this program, built from the same libraries, instead.
#include <windows.h>

#include <cstdio>

#include "engine/BackGroundService.h"
#include "engine/EngineObjects.h"
#include "engine/NTService.h"
#include "frame/AppState.h"
#include "frame/Settings.h"
#include "platform/win32/Win32Platform.h"

int wmain(int argc, wchar_t** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: e2e_enginetype DATAROOT\n");
    return 2;
  }
  static_assert(sizeof(wchar_t) == sizeof(char16_t));
  platform::Win32Platform win32;
  frame::AppState app(win32.Get());
  app.DataRoot = reinterpret_cast<const char16_t*>(argv[1]);
  app.ProgramFolder = app.DataRoot;

  const int isService = frame::EngineIsService(app);
  engine::CreateEngines(app);
  const char* active = "none";
  if (dynamic_cast<engine::NTService*>(app.ActiveEngine.get()))
    active = "NTService";
  else if (dynamic_cast<engine::BackGroundService*>(app.ActiveEngine.get()))
    active = "BackGroundService";
  std::printf("EngineIsService=%d ActiveEngine=%s\n", isService, active);
  return 0;
}
