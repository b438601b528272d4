// QVMonitor.exe: the monitor of the backup engine, living in the notification area.
#include <windows.h>

#include <cstdint>

#include "app/ComRegistration.h"
#include "frame/Logs.h"
#include "frame/Startup.h"
#include "frame/StartupTimes.h"
#include "kit/HostedUi.h"
#include "program/MonitorProgram.h"
#include "platform/win32/Win32Platform.h"
#include "account/ValueFiles.h"

namespace {

// The engine may call the monitor as soon as the window's load has started it, so the
// one running monitor serves the progress class before the engines are even made.
class ServingMonitorProgram : public program::MonitorProgram {
 public:
  ServingMonitorProgram(frame::AppState& app, kit::Ui& ui, platform::Win32ComServer& com)
      : MonitorProgram(app, ui), com_(com) {}
  void CreateEngines(frame::AppState& app) override {
    app::ServeMonitorClass(app, com_);
    frame::MarkStartup(app, u"progress class served");
    MonitorProgram::CreateEngines(app);
  }

 private:
  platform::Win32ComServer& com_;
};

// How long this process has run, for the start-up's stopwatch.
std::uint64_t ProcessAgeMs() {
  FILETIME created{}, exited{}, kernel{}, user{}, now{};
  if (!GetProcessTimes(GetCurrentProcess(), &created, &exited, &kernel, &user)) return 0;
  GetSystemTimeAsFileTime(&now);
  const auto ticks = [](const FILETIME& t) {
    return (static_cast<std::uint64_t>(t.dwHighDateTime) << 32) | t.dwLowDateTime;
  };
  return ticks(now) > ticks(created) ? (ticks(now) - ticks(created)) / 10000 : 0;
}

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
  platform::Win32Platform win32;
  platform::Win32ComServer com;
  win32.Get().com = &com;
  const base::Text arguments = win32.system.CommandLine();
  if (app::IsRegServerCommand(arguments)) return com.RegisterServer() ? 0 : 1;
  app::StartedByCom startedByCom(win32.system);
  if (app::IsEmbeddingCommand(arguments)) win32.Get().system = &startedByCom;
  frame::AppState app(win32.Get());
  frame::StartupTimes startupTimes(app, ProcessAgeMs());
  if (startupTimes.Enabled()) app.startupTimes = &startupTimes;
  frame::MarkStartup(app, u"entry");
  account::SecureValueStore secure(app);
  app.secureStore = &secure;
  // What escapes the handling of a window message or of an engine's call goes to the
  // trace; the window or the call goes on.
  app.platform.ui->SetFailureSink([&app](const base::Text& line) { frame::WriteTrace(app, line); });
  com.SetFailureSink([&app](const base::Text& line) { frame::WriteTrace(app, line); });

  kit::HostedUi ui(*app.platform.ui);
  ServingMonitorProgram program(app, ui, com);
  // The shutdown items end the process at once, as the engine expects of its monitor;
  // the class object goes first so that no engine call reaches a dying server.
  program.SetTerminate([&com](unsigned code) {
    com.RevokeClassObject();
    TerminateProcess(GetCurrentProcess(), code);
  });
  const frame::MainResult started = frame::Main(app, program);
  startupTimes.Write();
  app.startupTimes = nullptr;
  if (started != frame::MainResult::Run) return 0;
  return app.platform.ui->RunMessageLoop();
}
