#pragma once
// The program's screens behind the monitor window's hooks: the one place that calls
// the screens of the job, session, notice and account folders, each through its one
// call with its arguments and result.
#include <functional>
#include <memory>

#include "frame/AppState.h"
#include "kit/Ui.h"
#include "monitor/MonitorScreens.h"

namespace notify {
class Notices;
}

namespace program {

class ProgramScreens : public monitor::MonitorScreens {
 public:
  // `labelFontSize` tells the font size of the monitor window's file-name label, in
  // which the job-end notification measures its names (none: the standard size).
  ProgramScreens(frame::AppState& app, kit::Ui& ui, std::function<double()> labelFontSize = {});
  ~ProgramScreens() override;

  void senddesktopnotify() override;
  void Dialupdisconnect() override;
  void CheckMissedBackup() override;

  void OpenBackupNow() override;
  void OpenUpdatePassword() override;
  void OpenManageScheduledJobs() override;
  void OpenErrorReport() override;
  void OpenAbout() override;
  void OpenSessionLog() override;

  notify::Notices& Notices() { return *notices_; }

 private:
  frame::AppState& app_;
  kit::Ui& ui_;
  std::unique_ptr<notify::Notices> notices_;
};

}  // namespace program
