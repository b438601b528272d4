#pragma once
// The notices the tick brings up by itself: the job-end notification, the dial-up
// window and the missed-backup notice. One Notices lives as long as the monitor window
// and owns the three forms and the names they keep; the monitor's screen hooks call
// its three steps on every tick and give it the two screens it opens.
#include <functional>
#include <memory>
#include <set>

#include "frame/AppState.h"
#include "kit/Ui.h"
#include "notify/Requests.h"

namespace notify {

class bkupjobnotify;
class frmBKErrNotify;
class Dialupdisconnect;

struct NoticeHooks {
  std::function<void()> openSessionLog;   // View Log of the job-end notification
  std::function<void()> openErrorReport;  // the missed-backup notice's link
  // The font size of the monitor window's file-name label, which the job-end
  // notification's names are measured in (0: the standard size).
  std::function<double()> monitorLabelFontSize;
};

class Notices {
 public:
  Notices(frame::AppState& app, kit::Ui& ui, NoticeHooks hooks);
  ~Notices();
  Notices(const Notices&) = delete;
  Notices& operator=(const Notices&) = delete;

  // The job-end notification, when the engine has left its request file.
  void senddesktopnotify();
  // The dial-up window, when the engine has left its request file.
  void DialupCheck();
  // The missed-backup check; a failure (a NoofDays that is no number) is thrown to
  // the tick, which ends its run there.
  void CheckMissedBackup();

  KeptNames& Names() { return names_; }
  bkupjobnotify& JobNotice() { return *jobNotice_; }
  frmBKErrNotify& ErrNotice() { return *errNotice_; }
  Dialupdisconnect& DialupWindow() { return *dialup_; }

 private:
  // Shows a notice that does not take the keyboard, and runs what its activation would.
  void ShowQuietly(kit::Form& form, const std::function<void()>& activationWork);

  frame::AppState& app_;
  kit::Ui& ui_;
  KeptNames names_;
  std::unique_ptr<bkupjobnotify> jobNotice_;
  std::unique_ptr<frmBKErrNotify> errNotice_;
  std::unique_ptr<Dialupdisconnect> dialup_;
  std::set<base::Text> passedOverUsers_;  // NotifyUsers entries traced as passed over
};

}  // namespace notify
