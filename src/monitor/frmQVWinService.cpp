// The monitor window: construction, events, the load and the ten-second tick, and
// the panes and tabs. The status, tray and menus, activity log, bandwidth slider and
// web management live in the Monitor*.cpp files beside this one.
#include "monitor/frmQVWinService.h"

#include <algorithm>

#include "base/Guarded.h"
#include "engine/EngineNames.h"
#include "engine/EngineObject.h"
#include "engine/EngineObjects.h"
#include "frame/Logs.h"
#include "frame/Settings.h"
#include "frame/StartupTimes.h"
#include "kit/Branding.h"
#include "kit/Design.h"
#include "kit/MesgBox.h"
#include "frame/MessageTable.h"
#include "kit/ToolTips.h"
#include "kit/WindowLook.h"
#include "monitor/PaneText.h"
#include "monitor/MonitorTips.h"

namespace monitor {

namespace {

// Room the window needs below the log list (its frame, caption and menu bar included)
// to show the list whole, in twips at 96 dots per inch.
constexpr double kBelowLogTwips = 900;

// The service manager's and the web helper's icon and button codes of the job store
// (the platform's message box numbers) as the product's box takes them.
int KitIcon(int icon) {
  switch (icon) {
    case jobstore::kIconCritical: return kit::kIconError;
    case jobstore::kIconQuestion: return kit::kIconQuestion;
    case jobstore::kIconExclamation: return kit::kIconWarning;
    default: return kit::kIconInfo;
  }
}

int KitButtons(int buttons) {
  switch (buttons) {
    case 1: return kit::kButtonsOkCancel;
    case 4: return kit::kButtonsYesNo;
    default: return kit::kButtonsOk;
  }
}

}  // namespace

frmQVWinService::frmQVWinService(frame::AppState& app, kit::Ui& ui, MonitorScreens* screens)
    : Form(u"frmQVWinService", {1200, 1200, 7440, 4860}, u"Corvane for Windows Monitor"),
      app_(app),
      ui_(ui),
      screens_(screens),
      tray_(app.platform.ui) {
  SetFrameFlags(true, true, false);
  Label1.SetFontSize(9.75);
  Label1.SetFontBold(true);
  lblStatus.SetTextAlignment(kit::Alignment::Center);
  lblStatus.SetFontBold(true);
  lblGuideLines.SetWordWrap(true);
  txtRsyncFileName1.SetFontBold(true);
  lablBandWidth.SetTextAlignment(kit::Alignment::Right);
  lblSlider1Tooltip.SetTextAlignment(kit::Alignment::Center);
  lblSlider1Tooltip.SetBackColor(0x00E1FFFF);
  lblSlider1Tooltip.SetVisible(false);
  LabelPauseMsg.SetVisible(false);
  FrameProgress.SetVisible(false);
  FrameDetails.SetVisible(false);
  sliderBandwidth.SetRange(0, 100);
  sliderBandwidth.SetVisible(false);  // holds the value; the pictures are what is seen
  picTrayicon.SetVisible(false);
  TrayMenu.SetVisible(false);  // a popup, not on the menu bar
  lstLog.SetFullRowSelect(true);

  // Names for a screen reader: pictures that act as buttons, tabs or indicators carry
  // a caption that is their window text and is not drawn.
  Picture1.SetCaption(u"Help");
  btnClose.SetCaption(u"Close");
  pic_Status.SetCaption(u"Status");
  cmdDetails.SetCaption(u"Details");
  pic_nor.SetCaption(u"No transfer in progress");
  TrafficLights1.SetCaption(u"Service status light");
  btnRefresh.SetCaption(u"Refresh");
  btnLogFile.SetCaption(u"View log file");
  btnStopTransfer.SetCaption(u"Stop transfer");
  PictSliderBox1.SetCaption(u"Bandwidth limit");
  PictSliderKnob1.SetCaption(u"Bandwidth limit slider");
  lstLog.SetCaption(u"Activity log");

  BindEvents();
}

frmQVWinService::~frmQVWinService() {
  if (installedBox_) app_.Store.ShowMessage = nullptr;
  tray_.Remove();
  if (dailyTimer_ != 0 && app_.platform.ui != nullptr) app_.platform.ui->StopTimer(dailyTimer_);
}

// doc:monitor
void frmQVWinService::BindEvents() {
  using S = frmQVWinService;
  // The tray light says its state in words too; the knob is moved by the arrows.
  TrafficLights1.SetRole(kit::Role::Indicator);
  PictSliderKnob1.SetRole(kit::Role::Slider);
  SetTipTexts(kMonitorTips);
  kit::Design(*this, ui_)
      .TabOrder({&pic_Status, &cmdDetails, &StartAuto, &btnRefresh, &btnLogFile, &btnStopTransfer,
                 &chkbandwidth, &PictSliderKnob1, &lstLog, &Picture1, &btnClose})
      .Click(pic_Status, &S::pic_Status_Click)
      .Click(cmdDetails, &S::cmdDetails_Click)
      .Click(btnClose, &S::btnClose_Click)
      .Click(Picture1, &S::LocalHelpMenu_Click)
      .Click(btnRefresh, &S::Refresh)
      .Click(btnLogFile, &S::mnuOpenlog_Click)
      .Click(btnStopTransfer, &S::StopTransfer_Click)
      // The buttons' balloon tips come up on a right button up; any other removes them.
      .Tips({&btnLogFile, &btnRefresh, &btnStopTransfer, &btnClose, &cmdDetails, &chkbandwidth})
      .On(chkbandwidth.on.Click, &S::chkbandwidth_Click)
      .On(StartAuto.on.Click, &S::StartAuto_Click)
      .On(PictSliderKnob1.on.MouseDown, &S::PictSliderKnob1_MouseDown)
      .On(PictSliderKnob1.on.MouseMove, &S::PictSliderKnob1_MouseMove)
      .On(PictSliderKnob1.on.MouseUp, &S::PictSliderKnob1_MouseUp)
      .KeyWhile(PictSliderKnob1, kit::KeyStroke::Down, {kit::kKeyLeft}, &S::SliderKeyLower)
      .KeyWhile(PictSliderKnob1, kit::KeyStroke::Down, {kit::kKeyDown}, &S::SliderKeyLower)
      .KeyWhile(PictSliderKnob1, kit::KeyStroke::Down, {kit::kKeyRight}, &S::SliderKeyHigher)
      .KeyWhile(PictSliderKnob1, kit::KeyStroke::Down, {kit::kKeyUp}, &S::SliderKeyHigher)
      .On(Progress.on.Timer, &S::Progress_Timer)
      // The menu bar.
      .On(Start.on.Click, &S::Start_Click)
      .On(Stop.on.Click, &S::Stop_Click)
      .On(Pause.on.Click, &S::Pause_Click)
      .On(StoptransferMenu.on.Click, &S::StopTransfer_Click)
      .On(RefreshMenu.on.Click, &S::Refresh)
      .On(ShutDownMenu.on.Click, &S::ShutDownMenu_Click)
      .On(mnuViewDetails.on.Click, &S::mnuViewDetails_Click)
      .On(mnuHideDetails.on.Click, &S::mnuHideDetails_Click)
      .On(mnuOpenlog.on.Click, &S::mnuOpenlog_Click)
      .On(mnuClearlog.on.Click, &S::mnuClearlog_Click)
      .On(LocalHelpMenu.on.Click, &S::LocalHelpMenu_Click)
      .On(mnusenderrorrpt.on.Click, &S::SendErrorReport_Click)
      .On(WebsiteMenu.on.Click, &S::WebsiteMenu_Click)
      .On(AboutMenu.on.Click, &S::AboutMenu_Click)
      // The tray's menu.
      .On(mnuOpen.on.Click, &S::mnuOpen_Click)
      .On(mnuLaunch.on.Click, &S::mnuLaunch_Click)
      .On(mnuBackupNow.on.Click, &S::mnuBackupNow_Click)
      .On(mnuChangePassword.on.Click, &S::mnuChangePassword_Click)
      .On(mnuManSchJob.on.Click, &S::mnuManSchJob_Click)
      .On(mnuenablesch.on.Click, &S::mnuenablesch_Click)
      .On(mnustprunjob.on.Click, &S::StopTransfer_Click)
      .On(WebMang.on.Click, &S::WebMang_Click)
      .On(mnusenderrorreport.on.Click, &S::SendErrorReport_Click)
      .On(mnuviewlog.on.Click, &S::mnuviewlog_Click)
      .On(mnuShutdown.on.Click, &S::mnuShutdown_Click);
}
// doc:end

void frmQVWinService::btnClose_Click() { Unload(kit::UnloadMode::Code); }

void frmQVWinService::InstallMessageBox() {
  if (app_.Store.ShowMessage) return;
  installedBox_ = true;
  app_.Store.ShowMessage = [this](const Text& text, int icon, int buttons) {
    return ui_.MessageBox(text, KitIcon(icon), KitButtons(buttons), app_.AppTitle);
  };
}

void frmQVWinService::Sleep(std::uint32_t ms) {
  if (app_.platform.clock != nullptr) app_.platform.clock->Sleep(ms);
}

int frmQVWinService::Ask(long code, int icon, int buttons) {
  return ui_.MessageBox(frame::GetMessage(app_, code), icon, buttons, app_.AppTitle);
}

// ---- Load ---------------------------------------------------------------------------

void frmQVWinService::Form_Load() {
  frame::MarkStartup(app_, u"load: window made");
  loading_ = true;
  InstallMessageBox();
  // 1. The log columns, the tabs, and the pane by whether an update is waiting.
  base::IgnoreFailure([&] {
    lstLog.ClearColumns();
    lstLog.AddColumn(u"Type", 1300);
    lstLog.AddColumn(u"Time", 2000);
    lstLog.AddColumn(u"Message", 3700);
  });
  base::IgnoreFailure([&] {
    pic_Status.SetPictureKey(kTabStatusSelected);
    cmdDetails.SetPictureKey(kTabDetails);
    mnustprunjob.SetEnabled(app_.UpdateWaiting);
    BringToFront(app_.UpdateWaiting ? FrameProgress : FrameNormal);
  });
  frame::MarkStartup(app_, u"load: columns and tabs");
  // 2. The button pictures.
  base::IgnoreFailure([&] {
    Picture1.SetPictureKey(u"qv_small_help");
    btnClose.SetPictureKey(u"qv_small_close");
    btnLogFile.SetPictureKey(u"qvmon_view");
    btnRefresh.SetPictureKey(u"qvmon_refresh");
    btnStopTransfer.SetPictureKey(u"qvmon_stop");
    pic_nor.SetPictureKey(u"qv_nor");
  });
  // 3.
  Label1.SetCaption(u"Corvane for Windows Monitor");
  frame::MarkStartup(app_, u"load: button pictures and caption");
  // 4. The account and the web helper.
  base::IgnoreFailure([&] { WebManagementAtLoad(); });
  frame::MarkStartup(app_, u"load: account and web helper");
  // 5. The title and icons of the images folder.
  base::IgnoreFailure([&] {
    if (app_.platform.fs == nullptr) return;
    const kit::Branding branding =
        kit::ReadBranding(*app_.platform.fs, app_.ProgramFolder, app_.AppTitle);
    kit::ApplyBranding(app_, branding);
    if (!branding.formIconPath.empty())
      SetIconPath(branding.formIconPath);
    else if (!branding.appIconPath.empty())
      SetIconPath(branding.appIconPath);
    mnuLaunch.SetCaption(kit::LaunchMenuCaption(app_.AppTitle));
    AboutMenu.SetCaption(kit::AboutMenuCaption(app_.AppTitle));
  });
  frame::MarkStartup(app_, u"load: branding");
  // 6.
  base::IgnoreFailure([&] { AddTrayIcon(); });
  frame::MarkStartup(app_, u"load: tray icon");
  // 7.
  base::IgnoreFailure([&] { LogPath(); });
  frame::MarkStartup(app_, u"load: session file");
  // 8. Menus, start at logon, the guide text.
  base::IgnoreFailure([&] {
    mnuHideDetails.SetEnabled(false);
    mnuViewDetails.SetEnabled(true);
  });
  base::IgnoreFailure([&] { StartAuto.SetValue(frame::IsInRun(app_) == 1 ? 1 : 0); });
  base::IgnoreFailure([&] {
    lblGuideLines.SetCaption(app_.ActiveEngine ? app_.ActiveEngine->getlabelstring()
                                               : Text(engine::kGuideText));
  });
  frame::MarkStartup(app_, u"load: menus, start at logon, guide text");
  // 9. A background engine is restarted once a day between transfers.
  base::IgnoreFailure([&] {
    if (frame::EngineIsService(app_) == 0) dailyTimer_ = engine::StartDailyTimer(app_);
  });
  frame::MarkStartup(app_, u"load: daily timer");
  Indicate_ServiceStatus();
  frame::MarkStartup(app_, u"load: service status");
  // 10.
  base::IgnoreFailure([&] { SliderRule(SliderPass::Load); });
  frame::MarkStartup(app_, u"load: bandwidth");
  // 11. Size and shape.
  base::IgnoreFailure([&] { ResizeControls(); });
  base::IgnoreFailure(
      [&] { kit::clsRounder().RoundForm(*this, ui_.TwipsPerPixelX(), ui_.TwipsPerPixelY()); });
  frame::MarkStartup(app_, u"load: size and shape");
  // 12. The slider's skin.
  base::IgnoreFailure([&] {
    PictSliderBox1.SetPictureKey(u"slider_box");
    PictSliderKnob1.SetPictureKey(u"slider_knob2");
    lblSlider1Tooltip.SetCaption(base::FromNumber(static_cast<long long>(sliderBandwidth.Value())) +
                                 u"%");
  });
  frame::MarkStartup(app_, u"load: slider skin");
  loading_ = false;
}

void frmQVWinService::ResizeControls() {
  // The check box reads without the hyphen once the window has been sized.
  chkbandwidth.SetCaption(kAutoPauseCaption);
  const int tpp = ui_.TwipsPerPixelX();
  const double dpi = kit::DotsPerInch(tpp);
  const double factor = dpi > 96.0 ? dpi / 96.0 : 1.0;
  kit::ResizeControl(*this, tpp, {}, [&](double) {
    // The long message does not fit the line at this size: it moves to the tooltip.
    LabelPauseMsg.SetCaption(kPauseMessageShort);
    LabelPauseMsg.SetToolTipText(kPauseMessage);
  });
  belowLog_ = kBelowLogTwips / factor;
}

void frmQVWinService::Form_Resize() {
  if (chkbandwidth.Caption() != kAutoPauseCaption) chkbandwidth.SetCaption(kAutoPauseCaption);
}

void frmQVWinService::Form_QueryUnload(int& cancel, kit::UnloadMode) {
  // Closing only hides the window; the monitor lives on in the tray.
  StoreGeometry();
  HideFromTaskBar();
  cancel = 1;
}

// ---- The tick -----------------------------------------------------------------------

void frmQVWinService::Progress_Timer() {
  base::Guarded(
      [&] {
        const engine::TransferUpdate& t = app_.Transfer;
        base::IgnoreFailure([&] { Sleep(1); });                                     // 1
        base::IgnoreFailure([&] { mnustprunjob.SetEnabled(app_.UpdateWaiting); });  // 2
        if (app_.UpdateWaiting) {                                                   // 3
          base::IgnoreFailure([&] {                                                 // 4
            Sleep(2);
            app_.TransferSeen = true;
          });
          base::IgnoreFailure([&] {  // 5
            if (t.engNumber != 0) {
              txtRsyncFileName1.SetVisible(true);
              txtRsyncfilesize1.SetVisible(true);
            } else {
              ui_.DoEvents();
              txtRsyncFileName1.SetVisible(false);
              txtRsyncfilesize1.SetVisible(false);
            }
          });
          base::IgnoreFailure([&] { PrgbarRsyncTotal.SetVisible(t.dTotalFilesize != 0); });  // 6
          base::IgnoreFailure(
              [&] { lblRsyncTransferStatus.SetCaption(TransferStatusLine(app_, t)); });  // 7
          base::IgnoreFailure([&] {                                                      // 8
            if (StatusTabSelected()) {
              cmdDetails.SetPictureKey(kTabDetails);
              BringToFront(FrameProgress);
            }
          });
          base::IgnoreFailure([&] { SliderRule(SliderPass::First); });  // 9
          base::IgnoreFailure([&] {                                     // 10
            app_.StopSeen = false;
            StoptransferMenu.SetEnabled(true);
          });
          base::IgnoreFailure([&] { txtRsyncTimeElapsed.SetCaption(t.timeelapsed); });  // 11
          base::IgnoreFailure([&] { DrawTimeLeft(); });
          base::IgnoreFailure([&] { PrgbarRsyncTotal.SetValue(t.iTotalProg); });
          base::IgnoreFailure([&] {  // 12
            chkbandwidth.SetVisible(true);
            PictSliderBox1.SetVisible(true);
            PictSliderKnob1.SetVisible(true);
            lablBandWidth.SetVisible(true);
          });
          base::IgnoreFailure([&] { DrawFileName(); });
          base::IgnoreFailure([&] {
            if (t.sBkStatus < 1 || t.sBkStatus > 4) {
              // A restore is not throttled.
              LabelPauseMsg.SetVisible(false);
              chkbandwidth.SetVisible(false);
              PictSliderBox1.SetVisible(false);
              PictSliderKnob1.SetVisible(false);
              lablBandWidth.SetVisible(false);
            }
          });
          // 13. What the user sees; the first pass moved the slider before the pane changed.
          base::IgnoreFailure([&] { SliderRule(SliderPass::Second); });
          base::IgnoreFailure([&] { prgbarRsyncfile1.SetValue(t.iFileProg); });  // 14
          base::IgnoreFailure(
              [&] { txtRsyncfilesize1.SetCaption(GetProperSizeValue(app_, t.dFileSize, false)); });
          app_.UpdateWaiting = false;
        }
        base::IgnoreFailure([&] { WebManagementTick(); });  // 15
        base::IgnoreFailure([&] {                           // 16
          if ((frame::EngineIsService(app_) == 1 || app_.TransferSeen) && Visible())
            ShowLogInWindow();
        });
        base::IgnoreFailure([&] {
          if (screens_) screens_->senddesktopnotify();
        });  // 17
        base::IgnoreFailure([&] {
          if (screens_) screens_->Dialupdisconnect();
        });                        // 18
        Indicate_ServiceStatus();  // 19
        base::IgnoreFailure([&] {  // 20
          if (!app_.StopSeen) return;
          if (StatusTabSelected()) {
            pic_Status.SetPictureKey(kTabStatusSelected);
            cmdDetails.SetPictureKey(kTabDetails);
            BringToFront(FrameNormal);
          }
          StoptransferMenu.SetEnabled(false);
          app_.TransferSeen = false;
        });
        base::IgnoreFailure([&] { UpdateTrayTip(); });
        base::IgnoreFailure([&] {
          if (screens_) screens_->CheckMissedBackup();
        });                        // 21
        base::IgnoreFailure([&] {  // 22
          const bool liveFile = t.dFileSize != 0 && t.iFileProg != 0 && !t.sFileName.empty();
          if (app_.PaneFlag == u"1" && !liveFile) {
            pic_Status_Click();
            app_.PaneFlag = u"0";
          }
        });
      },
      frame::TraceFailure(app_, u"Error in Monitor progress timer "));
}

void frmQVWinService::DrawFileName() {
  const Text text = FileNameWithKind(app_.Transfer);
  txtRsyncFileName1.SetCaption(
      WrapLabelText(text, txtRsyncFileName1.Width(), txtRsyncFileName1, ui_.Measure()));
}

void frmQVWinService::DrawTimeLeft() {
  if (auto shown = TimeLeftForPane(app_.Transfer)) txtRsyncTimeLeft.SetCaption(*shown);
}

// ---- Frames and tabs -----------------------------------------------------------------

void frmQVWinService::BringToFront(kit::Picture& frame) {
  // The three panes lie on the same spot; the one in front is the one seen.
  for (kit::Picture* f : {&FrameNormal, &FrameProgress, &FrameDetails}) f->SetVisible(f == &frame);
}

void frmQVWinService::SelectStatusTab() {
  pic_Status.SetPictureKey(kTabStatusSelected);
  cmdDetails.SetPictureKey(kTabDetails);
}

void frmQVWinService::FramesByUpdateWaiting() {
  BringToFront(app_.UpdateWaiting ? FrameProgress : FrameNormal);
}

void frmQVWinService::pic_Status_Click() {
  app_.PaneFlag = u"1";
  SelectStatusTab();
  FramesByUpdateWaiting();
}

void frmQVWinService::cmdDetails_Click() {
  pic_Status.SetPictureKey(kTabStatus);
  cmdDetails.SetPictureKey(kTabDetailsSelected);
  BringToFront(FrameDetails);
  app_.PaneFlag = u"2";
}

}  // namespace monitor
