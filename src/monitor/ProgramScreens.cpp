#include "monitor/ProgramScreens.h"

#include "jobs/frmBackupNow.h"
#include "jobs/frmDTEmail.h"
#include "jobs/frmManageScheduledJobs.h"
#include "support/SupportScreens.h"
#include "base/Guarded.h"
#include "frame/Logs.h"
#include "notify/Notices.h"
#include "sessions/frmSessionLog.h"

namespace monitor {

ProgramScreens::ProgramScreens(frame::AppState& app, kit::Ui& ui,
                               std::function<double()> labelFontSize)
    : app_(app),
      ui_(ui),
      notices_(std::make_unique<notify::Notices>(
          app, ui,
          notify::NoticeHooks{[this] { return OpenSessionLog(); },
                              // The notice's link opens the report beside the monitor,
                              // where the menu opens it modally.
                              [this] {
                                support::ShowErrorReportModeless(app_, ui_);
                                return true;
                              },
                              std::move(labelFontSize)})) {}

ProgramScreens::~ProgramScreens() = default;

// The notices of the tick: steps 17, 18 and 21.
void ProgramScreens::senddesktopnotify() { notices_->senddesktopnotify(); }
void ProgramScreens::Dialupdisconnect() { notices_->DialupCheck(); }
void ProgramScreens::CheckMissedBackup() {
  // A failure here ends the tick's run, as the tick's own handler would have it.
  base::Guarded([&] { notices_->CheckMissedBackup(); },
                frame::TraceFailure(app_, u"Error in Monitor progress timer "));
}

// The screens of the menus come with their folders; each is one
// call here, such as `return jobs::ShowBackupNow(app_, ui_, {}).opened;`.
bool ProgramScreens::OpenBackupNow() {
  jobs::ShowBackupNow(app_, ui_);
  return true;
}
bool ProgramScreens::OpenUpdatePassword() { return support::ShowUpdatePassword(app_, ui_); }
// The job list opens the schedule editor through its hook.
bool ProgramScreens::OpenManageScheduledJobs() {
  jobs::ShowManageScheduledJobs(
      app_, ui_, {[this](const base::Text& no) { return jobs::ShowDTEmail(app_, ui_, no); }});
  return true;
}
bool ProgramScreens::OpenErrorReport() { return support::ShowErrorReport(app_, ui_); }
bool ProgramScreens::OpenAbout() { return support::ShowAbout(app_, ui_); }

// Not modal, as the job-end notice has it; the menu opens the same screen.
bool ProgramScreens::OpenSessionLog() {
  sessions::ShowSessionLog(app_, ui_);
  return true;
}

}  // namespace monitor
