#pragma once
// The monitor window as frame::Main sees it: the steps Main asks of the layers above
// it, carried out on frmQVWinService. The program creates one over its process state
// and its screen service and hands it to Main:
//
//   kit::HostedUi ui(*app.platform.ui);
//   monitor::MonitorProgram program(app, ui);
//   program.SetTerminate([](unsigned code) { TerminateProcess(GetCurrentProcess(), code); });
//   if (frame::Main(app, program) != frame::MainResult::Run) return 0;
//   return app.platform.ui->RunMessageLoop();
#include <functional>
#include <memory>

#include "frame/Startup.h"
#include "kit/Ui.h"
#include "monitor/MonitorScreens.h"
#include "monitor/frmQVWinService.h"

namespace monitor {

class MonitorProgram : public frame::IStartupSteps {
 public:
  // `screens` are the other folders' parts; null for none yet.
  MonitorProgram(frame::AppState& app, kit::Ui& ui, MonitorScreens* screens = nullptr);
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

  frmQVWinService& Window() { return window_; }

 private:
  kit::Ui& ui_;
  frmQVWinService window_;
};

}  // namespace monitor
