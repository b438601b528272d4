#pragma once
// What the monitor window hands to the screens and notices of the other folders:
// three steps of the tick and the screens its menus open. The window only knows this
// interface; program::ProgramScreens, in the one folder above all screens, is its one
// implementation in the program and the only caller of the screens' own calls (each
// modal screen has one call with its arguments and its result, in its folder). Tests
// put a recording one in its place.
namespace monitor {

class MonitorScreens {
 public:
  virtual ~MonitorScreens() = default;

  // Tick step 17: the job-end notification looks for its request file.
  virtual void senddesktopnotify() = 0;
  // Tick step 18: the dial-up window looks for its request file.
  virtual void Dialupdisconnect() = 0;
  // Tick step 21: the missed-backup and failure notice.
  virtual void CheckMissedBackup() = 0;

  // The screens of the menus.
  virtual void OpenBackupNow() = 0;            // mnuBackupNow
  virtual void OpenUpdatePassword() = 0;       // mnuChangePassword
  virtual void OpenManageScheduledJobs() = 0;  // mnuManSchJob
  virtual void OpenErrorReport() = 0;          // mnusenderrorreport, mnusenderrorrpt
  virtual void OpenAbout() = 0;                // AboutMenu
  virtual void OpenSessionLog() = 0;           // mnuviewlog, and the job-end notice's View Log
};

}  // namespace monitor
