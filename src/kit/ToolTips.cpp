#include "kit/ToolTips.h"

#include "kit/Controls.h"
#include "kit/Form.h"

namespace kit {

namespace {

struct TipEntry {
  const char16_t* key;
  const char16_t* text;
};

// The names are looked up as they stand, also those of controls that have since
// been renamed or removed.
constexpr TipEntry kTips[] = {
    {u"frmQVWinService.btnLogFile", u"<br>View details of scheduled jobs<br>"},
    {u"frmQVWinService.btnRefresh", u"<br>Update the service status and the log entries<br>"},
    {u"frmQVWinService.btnStopTransfer",
     u"<br>Immediately stop the backup or restore <br>operation that is underway<br>"},
    {u"frmQVWinService.btnClose", u"QVMonitor will continue to <br>run in the system tray.<br>"},
    {u"frmQVWinService.cmdDetails", u"<br>View the 20 most recent Session logs.<br>"},
    {u"frmBackupNow.cmdBackupNow",
     u"<br>Initiate an immediate scheduled backup for the <br>selected Backup set, without logging "
     u"into <br>the application<br>"},
    {u"frmBackupNow.cmdClose", u"<br>Exit this screen<br>"},
    {u"frmUpdatePassword.cmdUpdate", u"<br>Apply the updated password<br>"},
    {u"frmUpdatePassword.cmdClear", u"<br>Clear the data entered<br>"},
    {u"frmManageScheduledJobs.Pic_Edit",
     u"<br>Edit a backup or restore job (only exception <br>is when it is indicated as 'In "
     u"Progress')<br>"},
    {u"frmManageScheduledJobs.Pic_Delete",
     u"<br>Delete a backup or restore job (only exception <br>is when it is indicated as 'In "
     u"Progress')<br>"},
    {u"frmManageScheduledJobs.Pic_Imme",
     u"<br>Start an immediate backup or restore of the selected job<br>"},
    {u"frmManageScheduledJobs.Pic_Refresh", u"<br>View an updated list of your scheduled jobs<br>"},
    {u"frmManageScheduledJobs.Pic_Sttrf", u"<br>Stop the backup or restore job <br>"},
    {u"frmDTEmail.Sch_Start4_Cancel", u"<br>Exit this screen<br>"},
    {u"frmDTEmail.Sch_Start4_Next", u"<br>Save the information and <br>parameters provided<br>"},
    {u"frmDTEmail.Sch_Start4_Help", u"<br>Access the Help Guide<br>"},
    {u"bkupjobnotify.viewbkuplog",
     u"<br>View the log of the scheduled <br>backup /restore jobs<br>"},
    {u"bkupjobnotify.cancel", u"<br>Exit this screen<br>"},
    {u"frmDTEmail.cmdmailadd",
     u"<br>Provide additional email addresses on which <br>you want to receive the "
     u"notifications<br>"},
    {u"frmUpdatePassword.cmdClose", u"<br>Exit this screen<br>"},
    {u"frmManageScheduledJobs.SchcmdClose", u"<br>Exit this screen<br>"},
    {u"frmDTEmail.Pic_Delete",
     u"<br>Delete the selected backup / restore job unless <br>its status indicates 'In "
     u"Progress'<br>"},
    {u"frmDTEmail.Pic_Refresh", u"<br>Update the scheduled job list<br>"},
    {u"frmDTEmail.Pic_Sttrf",
     u"<br>Stop the backup / restore job <br>with the status 'In Progress'<br>"},
    {u"frmQVWinService.chkbandwidth",
     u"<br>Auto Pause option makes intelligent guesses on <br>pausing backup to enable optimum "
     u"<br>desktop experience during user activity <br>"},
    {u"frmErrorReport.cmdSend", u"<br>Email your query or feedback on the application <br>"},
    {u"frmErrorReport.cmdExit", u"<br>Exit the screen<br>"},
    {u"frmSessionLog.chkSelectAll",
     u"<br>Select all the backup and restore <br>session log entries <br>"},
    {u"frmSessionLog.cmdView",
     u"<br>View the log file of the selected <br>backup or restore session <br>"},
    {u"frmSessionLog.cmdDelete",
     u"<br>Delete the log file of the selected backup <br>or restore session<br>"},
    {u"frmSessionLog.cmdCloseSessionLog", u"<br>Exit this screen<br>"},
};

}  // namespace

Text GetToolTipText(TextView key) {
  for (const TipEntry& e : kTips) {
    if (base::EqualsNoCase(e.key, key)) return e.text;
  }
  return Text();
}

const std::vector<Text>& ToolTipKeys() {
  static const std::vector<Text> keys = [] {
    std::vector<Text> k;
    for (const TipEntry& e : kTips) k.emplace_back(e.key);
    return k;
  }();
  return keys;
}

Text CutTipText(TextView text) {
  TextView rest = text.substr(std::min<std::size_t>(4, text.size()));
  rest.remove_suffix(std::min<std::size_t>(4, rest.size()));
  return base::Replace(rest, u"<br>", u"\r\n");
}

// ---- CBalloonToolTip ------------------------------------------------------------

CBalloonToolTip::~CBalloonToolTip() { Destroy(); }

std::uint32_t CBalloonToolTip::ToolFlags() const {
  if (centered_) return popupOnDemand_ ? 35u : 19u;
  return popupOnDemand_ ? 289u : 17u;
}

TipPlan CBalloonToolTip::Plan(const Control& window) const {
  TipPlan plan;
  plan.parent = &window;
  if (style_ == 1) plan.style |= kTipStyleBalloon;
  plan.toolFlags = ToolFlags();
  plan.text = tipText_;
  plan.title = title_;
  plan.icon = icon_;
  plan.font = tipFont_;
  plan.messages.push_back({kTtmSetMaxTipWidth, 0, kTipMaxWidthPixels});
  plan.messages.push_back({kTtmAddTool, 0, 0});
  if (!title_.empty() || icon_ != 0) plan.messages.push_back({kTtmSetTitle, icon_, 0});
  if (backColor_) plan.messages.push_back({kTtmSetTipBkColor, *backColor_, 0});
  if (foreColor_) plan.messages.push_back({kTtmSetTipTextColor, *foreColor_, 0});
  if (tipFont_) plan.messages.push_back({kWmSetFont, 0, 1});
  plan.messages.push_back({kTtmSetDelayTime, 2, visibleTime_});
  plan.messages.push_back({kTtmSetDelayTime, 3, delayTime_});
  return plan;
}

void CBalloonToolTip::CreateToolTip(const Control& window) {
  if (created_) Destroy();
  parent_ = &window;
  handle_ = backend_ != nullptr ? backend_->Create(Plan(window)) : 0;
  created_ = true;
}

void CBalloonToolTip::Show(long x, long y, const Control& window) {
  if (created_ && backend_ != nullptr && handle_ != 0) backend_->Track(handle_, x, y, window);
}

void CBalloonToolTip::Destroy() {
  if (!created_) return;
  if (backend_ != nullptr && handle_ != 0) backend_->Destroy(handle_);
  handle_ = 0;
  created_ = false;
}

// ---- TipService -----------------------------------------------------------------

void TipService::Remove() {
  if (plain_) {
    if (backend_ != nullptr) backend_->DestroyPlain();
    plain_.reset();
  }
  balloon_.reset();
  tipForm_ = nullptr;
}

void TipService::RemoveOf(const Form& form) {
  if (tipForm_ == &form) Remove();
}

void TipService::ShowTip(int button, const Text& text, const Control& window, bool plainMode) {
  if (button != kRightButton) {
    Remove();
    return;
  }
  tipForm_ = &window.Owner();
  if (plainMode) {
    plain_ = PlainTip{CutTipText(text)};
    if (backend_ != nullptr) backend_->ShowPlain(plain_->text);
    return;
  }
  // The new tip replaces the old one, whose window goes with it.
  balloon_.reset();
  balloon_ = std::make_unique<CBalloonToolTip>(backend_);
  balloon_->SetStyle(1);
  balloon_->SetDelayTime(0);
  balloon_->SetTipText(CutTipText(text));
  balloon_->SetPopupOnDemand(false);
  balloon_->SetVisibleTime(60000);
  balloon_->CreateToolTip(window);
}

Text TipService::KeyFor(const Control& control) {
  const Control* tool = &control;
  if (control.Kind() == ControlKind::Label && control.Container() != nullptr &&
      control.Container()->Kind() == ControlKind::PictureButton) {
    tool = control.Container();
  }
  return tool->Owner().Name() + u"." + tool->Name();
}

void TipService::ButtonMouseUp(const Control& control, int button) {
  const Control* tool = &control;
  if (control.Kind() == ControlKind::Label && control.Container() != nullptr &&
      control.Container()->Kind() == ControlKind::PictureButton) {
    tool = control.Container();
  }
  ShowTip(button, GetToolTipText(KeyFor(control)), *tool);
}

}  // namespace kit
