#pragma once
// The monitor window as frame::Main sees it: the steps Main asks of the layers above
// it, carried out on frmQVWinService, with the program's screens behind the window's
// hooks. The program creates one over its process state and its screen service and
// hands it to Main:
//
//   kit::HostedUi ui(*app.platform.ui);
//   program::MonitorProgram program(app, ui);
//   program.SetTerminate([](unsigned code) { TerminateProcess(GetCurrentProcess(), code); });
//   if (frame::Main(app, program) != frame::MainResult::Run) return 0;
//   return app.platform.ui->RunMessageLoop();
#include <functional>
#include <memory>

#include "frame/Startup.h"
#include "kit/Ui.h"
#include "monitor/frmQVWinService.h"
#include "program/ProgramScreens.h"

namespace program {

class MonitorProgram : public frame::IStartupSteps {
 public:
  MonitorProgram(frame::AppState& app, kit::Ui& ui);
  ~MonitorProgram() override;

  void CreateEngines(frame::AppState& app) override;
  void LoadMonitorWindow(frame::AppState& app) override;
  void ApplyGeometry(frame::AppState& app, std::optional<long> width, std::optional<long> height,
                     std::optional<long> top, std::optional<long> left) override;
  void HideFromTaskBar(frame::AppState& app) override;
  void ShowFromTaskBar(frame::AppState& app) override;
  void ShowLogInWindow(frame::AppState& app) override;

  // How the shutdown items end the process; see frmQVWinService::SetTerminate.
  void SetTerminate(std::function<void(unsigned exitCode)> terminate);

  monitor::frmQVWinService& Window() { return window_; }
  ProgramScreens& Screens() { return screens_; }

 private:
  kit::Ui& ui_;
  // Made before the window, which calls them; they ask the window only once it runs.
  ProgramScreens screens_;
  monitor::frmQVWinService window_;
};

}  // namespace program
