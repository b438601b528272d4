#pragma once
// What the monitor window hands to the screens and notices of other folders: three
// steps of the tick and the screens its menus open. Until a folder provides its
// part, the defaults below stand: the tick steps do nothing, and a menu item whose
// screen is missing opens nothing (the window writes so to the trace).
namespace monitor {

class MonitorScreens {
 public:
  virtual ~MonitorScreens() = default;

  // Tick step 17: the job-end notification looks for its request file.
  virtual void senddesktopnotify() {}
  // Tick step 18: the dial-up window looks for its request file.
  virtual void Dialupdisconnect() {}
  // Tick step 21: the missed-backup and failure notice.
  virtual void CheckMissedBackup() {}

  // The screens of the menus. Each answers whether it opened a screen.
  virtual bool OpenBackupNow() { return false; }          // mnuBackupNow
  virtual bool OpenUpdatePassword() { return false; }     // mnuChangePassword
  virtual bool OpenManageScheduledJobs() { return false; } // mnuManSchJob
  virtual bool OpenErrorReport() { return false; }        // mnusenderrorreport, mnusenderrorrpt
  virtual bool OpenAbout() { return false; }              // AboutMenu
};

}  // namespace monitor
