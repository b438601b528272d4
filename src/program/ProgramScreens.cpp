#include "program/ProgramScreens.h"

#include "jobs/frmBackupNow.h"
#include "jobs/frmDTEmail.h"
#include "jobs/frmManageScheduledJobs.h"
#include "account/AccountScreens.h"
#include "base/Guarded.h"
#include "frame/Logs.h"
#include "notify/Notices.h"
#include "sessions/frmSessionLog.h"

namespace program {

ProgramScreens::ProgramScreens(frame::AppState& app, kit::Ui& ui,
                               std::function<double()> labelFontSize)
    : app_(app),
      ui_(ui),
      notices_(std::make_unique<notify::Notices>(
          app, ui,
          notify::NoticeHooks{[this] { OpenSessionLog(); },
                              // The notice's link opens the report beside the monitor,
                              // where the menu opens it modally.
                              [this] { account::ShowErrorReportModeless(app_, ui_); },
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

// The screens of the menus: one call each, with the screen's arguments. What a screen
// answers is its own business; the menus go on either way.
void ProgramScreens::OpenBackupNow() { jobs::ShowBackupNow(app_, ui_, {}); }
void ProgramScreens::OpenUpdatePassword() { account::ShowUpdatePassword(app_, ui_, {}); }
// The job list opens the schedule editor through its hook.
void ProgramScreens::OpenManageScheduledJobs() {
  jobs::ShowManageScheduledJobs(app_, ui_, {.openEditor = [this](const base::Text& no) {
                                  jobs::ShowDTEmail(app_, ui_, {.recordNo = no});
                                }});
}
void ProgramScreens::OpenErrorReport() { account::ShowErrorReport(app_, ui_, {}); }
void ProgramScreens::OpenAbout() { account::ShowAbout(app_, ui_, {}); }

// Not modal, as the job-end notice has it; the menu opens the same screen.
void ProgramScreens::OpenSessionLog() { sessions::ShowSessionLog(app_, ui_); }

}  // namespace program
