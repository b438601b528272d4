// QVWin Service_955.exe of the simulated engine: a real service that starts, stops,
// pauses and continues. Paused, it starts no new job.
#include <windows.h>

#include <thread>

#include "EngineSim.h"

namespace {

SERVICE_STATUS_HANDLE statusHandle = nullptr;
SERVICE_STATUS status{};
enginesim::Control control;
HANDLE stopped = nullptr;

void Report(DWORD state) {
  status.dwServiceType = SERVICE_WIN32_OWN_PROCESS;
  status.dwCurrentState = state;
  status.dwControlsAccepted =
      state == SERVICE_START_PENDING ? 0 : SERVICE_ACCEPT_STOP | SERVICE_ACCEPT_PAUSE_CONTINUE;
  status.dwWin32ExitCode = NO_ERROR;
  SetServiceStatus(statusHandle, &status);
}

DWORD WINAPI Handler(DWORD code, DWORD, void*, void*) noexcept {
  switch (code) {
    case SERVICE_CONTROL_STOP:
      Report(SERVICE_STOP_PENDING);
      control.quit = true;
      SetEvent(stopped);
      return NO_ERROR;
    case SERVICE_CONTROL_PAUSE:
      control.paused = true;
      Report(SERVICE_PAUSED);
      return NO_ERROR;
    case SERVICE_CONTROL_CONTINUE:
      control.paused = false;
      Report(SERVICE_RUNNING);
      return NO_ERROR;
    case SERVICE_CONTROL_INTERROGATE: SetServiceStatus(statusHandle, &status); return NO_ERROR;
    default: return ERROR_CALL_NOT_IMPLEMENTED;
  }
}

void WINAPI ServiceEntry(DWORD, LPWSTR* argv) noexcept {
  statusHandle = RegisterServiceCtrlHandlerExW(argv && argv[0] ? argv[0] : L"", Handler, nullptr);
  if (!statusHandle) return;
  Report(SERVICE_START_PENDING);
  stopped = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  std::thread worker([] { enginesim::RunEngine(control); });
  Report(SERVICE_RUNNING);
  WaitForSingleObject(stopped, INFINITE);
  worker.join();
  Report(SERVICE_STOPPED);
}

}  // namespace

int wmain() {
  wchar_t name[] = L"";
  SERVICE_TABLE_ENTRYW table[] = {{name, ServiceEntry}, {nullptr, nullptr}};
  if (StartServiceCtrlDispatcherW(table)) return 0;
  // Started by hand rather than by the service manager: run in the foreground
  // until the console is closed or the process is ended.
  enginesim::RunEngine(control);
  return 0;
}
