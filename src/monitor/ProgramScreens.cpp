#include "monitor/ProgramScreens.h"

#include "base/Guarded.h"
#include "frame/Logs.h"
#include "notify/Notices.h"

namespace monitor {

ProgramScreens::ProgramScreens(frame::AppState& app, kit::Ui& ui)
    : app_(app),
      ui_(ui),
      notices_(std::make_unique<notify::Notices>(
          app, ui,
          notify::NoticeHooks{[this] { return OpenSessionLog(); },
                              [this] { return OpenErrorReport(); }})) {}

ProgramScreens::~ProgramScreens() = default;

// The notices of the tick: steps 17, 18 and 21.
void ProgramScreens::senddesktopnotify() { notices_->senddesktopnotify(); }
void ProgramScreens::Dialupdisconnect() { notices_->DialupCheck(); }
void ProgramScreens::CheckMissedBackup() {
  // A failure here ends the tick's run, as the tick's own handler would have it.
  base::Guarded([&] { notices_->CheckMissedBackup(); },
                frame::TraceFailure(app_, u"Error in Monitor progress timer "));
}

// The screens of the menus come with their folders (jobs, support); each will be one
// call here, such as `return jobs::ShowBackupNow(app_, ui_, {}).opened;`.
bool ProgramScreens::OpenBackupNow() { return false; }
bool ProgramScreens::OpenUpdatePassword() { return false; }
bool ProgramScreens::OpenManageScheduledJobs() { return false; }
bool ProgramScreens::OpenErrorReport() { return false; }
// The Session Log screen comes with the sessions folder.
bool ProgramScreens::OpenSessionLog() { return false; }
bool ProgramScreens::OpenAbout() { return false; }

}  // namespace monitor
