#include "monitor/ProgramScreens.h"

#include "jobs/frmBackupNow.h"
#include "jobs/frmDTEmail.h"
#include "jobs/frmManageScheduledJobs.h"
#include "support/SupportScreens.h"

namespace monitor {

// The notices of the tick come with the notifications folder; until then a tick has
// nothing to show for these steps.
void ProgramScreens::senddesktopnotify() {}
void ProgramScreens::Dialupdisconnect() {}
void ProgramScreens::CheckMissedBackup() {}

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

}  // namespace monitor
