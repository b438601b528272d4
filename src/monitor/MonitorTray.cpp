// The monitor window: the tray icon, hiding and showing, the stored geometry,
// Refresh, Shutdown and the menu items that open other screens or programs.
#include "base/Guarded.h"
#include "frame/Logs.h"
#include "frame/Settings.h"
#include "kit/MesgBox.h"
#include "kit/WindowLook.h"
#include "monitor/frmQVWinService.h"

namespace monitor {

namespace {

// What a hidden log list leaves of the window below its top.
constexpr double kHiddenLogTwips = 300;

}  // namespace

Text frmQVWinService::TrayTip() const { return TrayTipText(app_.AppTitle, false, 0, 0); }

void frmQVWinService::UpdateTrayTip() {
  const Text tip = TrayTipText(app_.AppTitle, app_.TransferSeen, app_.Transfer.dTotalFilesize,
                               app_.Transfer.iTotalProg);
  if (tip.substr(0, TrayIcon::kTipUnits) != tray_.Tip()) tray_.SetTip(tip);
}

void frmQVWinService::AddTrayIcon() {
  const platform::UiHandle owner = windowHandle_ ? windowHandle_() : 0;
  const Text icon = IconPath().empty() ? Text(kTrayRunning) : IconPath();
  tray_.Add(owner, icon, TrayTip(),
            [this](int mouseMessage) { base::IgnoreFailure([&] { TrayMouse(mouseMessage); }); });
}

void frmQVWinService::TrayMouse(int mouseMessage) {
  if (mouseMessage == platform::kTrayLeftDoubleClick) {
    if (!StatusTabSelected()) SelectStatusTab();
    FramesByUpdateWaiting();
    // Visible, then shown normal with the focus: restored from the taskbar and in
    // front of other programs, visible before or not.
    SetVisible(true);
    ui_.ShowNormal(*this);
  } else if (mouseMessage == platform::kTrayRightButtonUp ||
             mouseMessage == platform::kTrayKeyboardMenu) {
    // The keyboard on the icon (Enter, the context-menu key) opens the same menu.
    // Another program may have changed the key; the menu tells what it says now.
    mnuenablesch.SetCaption(frame::ReadSetting(app_, u"DisableAllSchdulers") == u"1"
                                ? kEnableAllJobs
                                : kDisableAllJobs);
    ui_.PopupMenu(*this, TrayMenu);
  }
}

void frmQVWinService::HideFromTaskBar() {
  Hide();
  mnuOpen.SetEnabled(true);
}

void frmQVWinService::ShowFromTaskBar() {
  SetVisible(true);
  ui_.ShowNormal(*this);
}

void frmQVWinService::ApplyGeometry(std::optional<long> width, std::optional<long> height,
                                    std::optional<long> top, std::optional<long> left) {
  if (width) SetWidth(static_cast<double>(*width));
  if (height) SetHeight(static_cast<double>(*height));
  if (top) SetTop(static_cast<double>(*top));
  if (left) SetLeft(static_cast<double>(*left));
}

void frmQVWinService::StoreGeometry() {
  base::IgnoreFailure([&] {
    keptGeometry_ = GetLayout();
    if (WindowState() == kit::kWindowMinimized) return;
    frame::WriteSetting(app_, u"MonWidth", base::FromNumber(kit::RoundHalfEven(Width())));
    frame::WriteSetting(app_, u"MonHeight", base::FromNumber(kit::RoundHalfEven(Height())));
    frame::WriteSetting(app_, u"MonTop", base::FromNumber(kit::RoundHalfEven(Top())));
    frame::WriteSetting(app_, u"MonLeft", base::FromNumber(kit::RoundHalfEven(Left())));
  });
}

void frmQVWinService::Refresh() {
  SetPointer(kit::MousePointer::Hourglass);
  Indicate_ServiceStatus();
  base::IgnoreFailure([&] { LogPath(); });
  Progress_Timer();
  SetPointer(kit::MousePointer::Default);
}

void frmQVWinService::Shutdown(bool killDailyTimer) {
  if (Visible()) StoreGeometry();
  if (killDailyTimer && dailyTimer_ != 0 && app_.platform.ui != nullptr) {
    app_.platform.ui->StopTimer(dailyTimer_);
    dailyTimer_ = 0;
  }
  tray_.Remove();
  if (terminate_)
    terminate_(0);
  else if (app_.platform.ui != nullptr)
    app_.platform.ui->Quit(0);
}

void frmQVWinService::ShutDownMenu_Click() { Shutdown(true); }

void frmQVWinService::mnuShutdown_Click() { Shutdown(false); }

void frmQVWinService::mnuViewDetails_Click() {
  mnuHideDetails.SetEnabled(true);
  mnuViewDetails.SetEnabled(false);
  SetHeight(lstLog.Top() + lstLog.Height() + belowLog_);
}

void frmQVWinService::mnuHideDetails_Click() {
  mnuViewDetails.SetEnabled(true);
  mnuHideDetails.SetEnabled(false);
  SetHeight(lstLog.Top() + kHiddenLogTwips);
}

void frmQVWinService::mnuOpen_Click() {
  ShowFromTaskBar();
  SelectStatusTab();
  BringToFront(app_.UpdateWaiting ? FrameProgress : FrameNormal);
  mnustprunjob.SetEnabled(app_.UpdateWaiting);
  mnuOpen.SetEnabled(false);
}

void frmQVWinService::mnuLaunch_Click() {
  if (app_.platform.shell == nullptr) return;
  app_.platform.shell->Execute(0, u"open", app_.ProgramFolder + u"\\" + kMainApplication, Text(),
                               Text(), 1);
}

void frmQVWinService::mnuBackupNow_Click() {
  if (screens_) screens_->OpenBackupNow();
}

void frmQVWinService::mnuChangePassword_Click() {
  if (base::IsBlank(app_.UserName)) return;
  if (screens_) screens_->OpenUpdatePassword();
}

void frmQVWinService::mnuManSchJob_Click() {
  app_.Store.BackupNowMode = false;
  if (screens_) screens_->OpenManageScheduledJobs();
}

void frmQVWinService::mnuviewlog_Click() {
  if (screens_) screens_->OpenSessionLog();
}

void frmQVWinService::SendErrorReport_Click() {
  if (screens_) screens_->OpenErrorReport();
}

void frmQVWinService::LocalHelpMenu_Click() { kit::ShowHelpFile(app_, *this, kMainWindowTopic); }

void frmQVWinService::WebsiteMenu_Click() {
  if (app_.platform.shell == nullptr) return;
  app_.platform.shell->Execute(0, u"open", kWebsite, Text(), Text(), 3);
}

void frmQVWinService::AboutMenu_Click() {
  if (app_.platform.sound != nullptr) app_.platform.sound->PlayAlias(u"SystemStart");
  if (screens_) screens_->OpenAbout();
}

void frmQVWinService::StartAuto_Click() {
  if (loading_) return;
  if (StartAuto.Checked())
    frame::AddToRun(app_);
  else
    frame::RemoveFromRun(app_);
}

void frmQVWinService::mnuenablesch_Click() {
  auto tell = [&](const Text& line) {
    frame::WriteTrace(app_, line);
    frame::WriteActivityLog(app_, line, frame::kInformation);
  };
  if (base::EqualsNoCase(mnuenablesch.Caption(), kDisableAllJobs)) {
    if (Ask(20, kit::kIconQuestion, kit::kButtonsYesNo) != kit::kResultYes) return;
    if (!frame::WriteSetting(app_, u"DisableAllSchdulers", u"1")) return;  // traced there
    mnuenablesch.SetCaption(kEnableAllJobs);
    tell(u"'Disable all the Scheduled jobs' option is selected.");
  } else {
    if (!frame::WriteSetting(app_, u"DisableAllSchdulers", u"0")) return;  // traced there
    mnuenablesch.SetCaption(kDisableAllJobs);
    tell(u"'Enable all the Scheduled jobs' option is selected.");
  }
}

}  // namespace monitor
