#include "monitor/ProgramScreens.h"

#include "sessions/frmSessionLog.h"

namespace monitor {

// The notices of the tick come with the notifications folder; until then a tick has
// nothing to show for these steps.
void ProgramScreens::senddesktopnotify() {}
void ProgramScreens::Dialupdisconnect() {}
void ProgramScreens::CheckMissedBackup() {}

// The screens of the menus come with their folders (jobs, support); each will be one
// call here, such as `return jobs::ShowBackupNow(app_, ui_, {}).opened;`.
bool ProgramScreens::OpenBackupNow() { return false; }
bool ProgramScreens::OpenUpdatePassword() { return false; }
bool ProgramScreens::OpenManageScheduledJobs() { return false; }
bool ProgramScreens::OpenErrorReport() { return false; }
bool ProgramScreens::OpenAbout() { return false; }

// Not modal, as the job-end notice has it; the menu opens the same screen.
bool ProgramScreens::OpenSessionLog() {
  sessions::ShowSessionLog(app_, ui_);
  return true;
}

}  // namespace monitor
