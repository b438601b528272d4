#include "monitor/frmQVWinService.h"

#include <algorithm>

#include "base/Guarded.h"
#include "engine/EngineNames.h"
#include "engine/EngineObject.h"
#include "engine/EngineObjects.h"
#include "engine/ProcessScan.h"
#include "engine/StopWord.h"
#include "frame/Logs.h"
#include "frame/Settings.h"
#include "kit/Branding.h"
#include "kit/MesgBox.h"
#include "kit/MessageTable.h"
#include "kit/ToolTips.h"
#include "kit/WindowLook.h"
#include "monitor/LogView.h"
#include "monitor/PaneText.h"
#include "platform/TextFile.h"

namespace monitor {

namespace {

constexpr char16_t kRunning[] = u"Running";
constexpr char16_t kPauseCaption[] = u"Pause Service";
constexpr char16_t kResumeCaption[] = u"Resume Service";
constexpr kit::Color kErrorRowColor = 255;  // red
// Room the window needs below the log list (its frame, caption and menu bar included)
// to show the list whole, in twips at 96 dots per inch.
constexpr double kBelowLogTwips = 900;
// What a hidden log list leaves of the window below its top.
constexpr double kHiddenLogTwips = 300;

Text StatusOf(const std::shared_ptr<engine::EngineObject>& engine) {
  Text word;
  if (engine) base::IgnoreFailure([&] { word = engine->GetServiceStatus(); });
  return word;
}

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

long Percent(const Text& text) { return kit::RoundHalfEven(base::LeadingNumber(text)); }

}  // namespace

frmQVWinService::frmQVWinService(frame::AppState& app, kit::Ui& ui, MonitorScreens* screens)
    : Form(u"frmQVWinService", {1200, 1200, 7440, 4860}, u"Corvane for Windows Monitor"),
      app_(app),
      ui_(ui),
      screens_(screens ? screens : &defaultScreens_),
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
  TrayMenu.SetVisible(false);          // a popup, not on the menu bar
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

void frmQVWinService::BindEvents() {
  Progress.on.Timer = [this] { Progress_Timer(); };
  pic_Status.on.Click = [this] { pic_Status_Click(); };
  cmdDetails.on.Click = [this] { cmdDetails_Click(); };
  btnClose.on.Click = [this] { Unload(kit::UnloadMode::Code); };
  Picture1.on.Click = [this] { LocalHelpMenu_Click(); };
  btnRefresh.on.Click = [this] { Refresh(); };
  btnLogFile.on.Click = [this] { mnuOpenlog_Click(); };
  btnStopTransfer.on.Click = [this] { StopTransfer_Click(); };
  // The buttons' balloon tips come up on a right button up; any other click removes them.
  for (kit::Control* c : std::initializer_list<kit::Control*>{&btnLogFile, &btnRefresh,
                                                              &btnStopTransfer, &btnClose,
                                                              &cmdDetails, &chkbandwidth}) {
    c->on.MouseUp = [this, c](const kit::MouseArgs& a) { ui_.Tips().ButtonMouseUp(*c, a.button); };
  }
  chkbandwidth.on.Click = [this] { chkbandwidth_Click(); };
  StartAuto.on.Click = [this] { StartAuto_Click(); };
  PictSliderKnob1.on.MouseDown = [this](const kit::MouseArgs& a) { PictSliderKnob1_MouseDown(a); };
  PictSliderKnob1.on.MouseMove = [this](const kit::MouseArgs& a) { PictSliderKnob1_MouseMove(a); };
  PictSliderKnob1.on.MouseUp = [this](const kit::MouseArgs& a) { PictSliderKnob1_MouseUp(a); };

  Start.on.Click = [this] { Start_Click(); };
  Stop.on.Click = [this] { Stop_Click(); };
  Pause.on.Click = [this] { Pause_Click(); };
  StoptransferMenu.on.Click = [this] { StopTransfer_Click(); };
  RefreshMenu.on.Click = [this] { Refresh(); };
  ShutDownMenu.on.Click = [this] { ShutDownMenu_Click(); };
  mnuViewDetails.on.Click = [this] { mnuViewDetails_Click(); };
  mnuHideDetails.on.Click = [this] { mnuHideDetails_Click(); };
  mnuOpenlog.on.Click = [this] { mnuOpenlog_Click(); };
  mnuClearlog.on.Click = [this] { mnuClearlog_Click(); };
  LocalHelpMenu.on.Click = [this] { LocalHelpMenu_Click(); };
  mnusenderrorrpt.on.Click = [this] { SendErrorReport_Click(); };
  WebsiteMenu.on.Click = [this] { WebsiteMenu_Click(); };
  AboutMenu.on.Click = [this] { AboutMenu_Click(); };

  mnuOpen.on.Click = [this] { mnuOpen_Click(); };
  mnuLaunch.on.Click = [this] { mnuLaunch_Click(); };
  mnuBackupNow.on.Click = [this] { mnuBackupNow_Click(); };
  mnuChangePassword.on.Click = [this] { mnuChangePassword_Click(); };
  mnuManSchJob.on.Click = [this] { mnuManSchJob_Click(); };
  mnuenablesch.on.Click = [this] { mnuenablesch_Click(); };
  mnustprunjob.on.Click = [this] { StopTransfer_Click(); };
  WebMang.on.Click = [this] { WebMang_Click(); };
  mnusenderrorreport.on.Click = [this] { SendErrorReport_Click(); };
  mnuviewlog.on.Click = [this] { mnuOpenlog_Click(); };
  mnuShutdown.on.Click = [this] { mnuShutdown_Click(); };
}

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
  return ui_.MessageBox(kit::GetMessage(app_, code), icon, buttons, app_.AppTitle);
}

void frmQVWinService::NotAvailable(const Text& item, const Text& screen) {
  frame::WriteTrace(app_, item + u": the " + screen + u" screen is not part of this build yet; nothing was opened.");
}

// ---- Load ---------------------------------------------------------------------------

void frmQVWinService::Form_Load() {
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
  // 4. The account and the web helper.
  base::IgnoreFailure([&] { WebManagementAtLoad(); });
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
  // 6.
  base::IgnoreFailure([&] { AddTrayIcon(); });
  // 7.
  base::IgnoreFailure([&] { LogPath(); });
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
  // 9. A background engine is restarted once a day between transfers.
  base::IgnoreFailure([&] {
    if (frame::EngineIsService(app_) == 0) dailyTimer_ = engine::StartDailyTimer(app_);
  });
  Indicate_ServiceStatus();
  // 10.
  base::IgnoreFailure([&] { SliderRule(SliderPass::Load); });
  // 11. Size and shape.
  base::IgnoreFailure([&] { ResizeControls(); });
  base::IgnoreFailure([&] { kit::clsRounder().RoundForm(*this, ui_.TwipsPerPixelX(), ui_.TwipsPerPixelY()); });
  // 12. The slider's skin.
  base::IgnoreFailure([&] {
    PictSliderBox1.SetPictureKey(u"slider_box");
    PictSliderKnob1.SetPictureKey(u"slider_knob2");
    lblSlider1Tooltip.SetCaption(
        base::FromNumber(static_cast<long long>(sliderBandwidth.Value())) + u"%");
  });
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
        if (app_.UpdateWaiting) {                                       // 3
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
          base::IgnoreFailure([&] { lblRsyncTransferStatus.SetCaption(TransferStatusLine(app_, t)); });  // 7
          base::IgnoreFailure([&] {  // 8
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
          base::IgnoreFailure([&] { txtRsyncfilesize1.SetCaption(GetProperSizeValue(app_, t.dFileSize, false)); });
          app_.UpdateWaiting = false;
        }
        base::IgnoreFailure([&] { WebManagementTick(); });  // 15
        base::IgnoreFailure([&] {                           // 16
          if ((frame::EngineIsService(app_) == 1 || app_.TransferSeen) && Visible())
            ShowLogInWindow();
        });
        base::IgnoreFailure([&] { screens_->senddesktopnotify(); });  // 17
        base::IgnoreFailure([&] { screens_->Dialupdisconnect(); });   // 18
        Indicate_ServiceStatus();                         // 19
        base::IgnoreFailure([&] {                                     // 20
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
        base::IgnoreFailure([&] { screens_->CheckMissedBackup(); });  // 21
        base::IgnoreFailure([&] {                                     // 22
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
  const double limit = txtRsyncFileName1.Width();
  const double size = txtRsyncFileName1.FontSize();
  const bool bold = txtRsyncFileName1.FontBold();
  const kit::TextMeasure& measure = ui_.Measure();
  txtRsyncFileName1.SetCaption(WrapLabelText(text, [&](TextView piece) {
    return measure.Measure(piece, size, bold, 0).width <= limit;
  }));
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

// ---- Status ------------------------------------------------------------------------

void frmQVWinService::Indicate_ServiceStatus() {
  base::Guarded(
      [&] {
        engine::ClearStaleStateWord(app_);
        // Both programs are kept running whichever is installed; the background
        // program's word is the one shown.
        auto keepRunning = [&](const std::shared_ptr<engine::EngineObject>& engine) {
          Text word = StatusOf(engine);
          if (word != kRunning) {
            if (engine) base::IgnoreFailure([&] { engine->ServiceStart(); });
            Sleep(100);
            word = StatusOf(engine);
          }
          return word;
        };
        Text word;
        for (int round = 0; round < kStatusRounds; ++round) {
          keepRunning(app_.ServiceEngine);
          word = keepRunning(app_.BackgroundEngine);
          if (word.empty()) {
            word = u"Unknown";
            Set_Unknown();
          }
          lblStatus.SetCaption(word);
          if (word == kRunning) {
            Set_Start();
            break;
          }
          if (word == u"Stopped") {
            Set_Stop();
            break;
          }
          if (word == u"Paused") {
            Set_Pause();
            break;
          }
          Sleep(100);
        }
        base::IgnoreFailure([&] {
          if (frame::EngineIsService(app_) == 0)
            Pause.SetEnabled(false);
          else
            StoptransferMenu.SetEnabled(true);
        });
        base::IgnoreFailure([&] { ShowTrayState(word); });
      },
      frame::TraceFailure(app_, u"Error obtaining the service status: "));
}

void frmQVWinService::ShowTrayState(const Text& word) {
  const Text branded = app_.ProgramFolder + u"\\images\\MonitorIcon.ico";
  if (app_.platform.fs == nullptr || !app_.platform.fs->FileExists(branded)) {
    tray_.SetIcon(word == kRunning ? kTrayRunning : kTrayNotRunning);
    return;
  }
  // A branded icon stands for every state, in the tray and on the window.
  picTrayicon.SetPictureKey(branded);
  tray_.SetIcon(branded);
  SetIconPath(branded);
}

void frmQVWinService::Set_Start() {
  TrafficLights1.SetPictureKey(kLightRunning);
  Start.SetEnabled(false);
  Pause.SetEnabled(true);
  Stop.SetEnabled(true);
  Pause.SetCaption(kPauseCaption);
  lblStatus.SetCaption(kRunning);
}

void frmQVWinService::Set_Pause() {
  TrafficLights1.SetPictureKey(kLightChanging);
  Start.SetEnabled(false);
  Stop.SetEnabled(true);
  Pause.SetCaption(kResumeCaption);
  lblStatus.SetCaption(u"Paused");
}

void frmQVWinService::Set_Resume() {
  TrafficLights1.SetPictureKey(kLightRunning);
  Start.SetEnabled(false);
  Pause.SetVisible(true);
  Stop.SetEnabled(true);
  Pause.SetCaption(kPauseCaption);
}

void frmQVWinService::Set_Stop() {
  TrafficLights1.SetPictureKey(kLightStopped);
  Start.SetEnabled(true);
  Pause.SetEnabled(false);
  Stop.SetEnabled(false);
  lblStatus.SetCaption(u"Stopped");
}

void frmQVWinService::Set_Stopping() {
  TrafficLights1.SetPictureKey(kLightChanging);
  Start.SetEnabled(false);
  Pause.SetEnabled(false);
  Stop.SetEnabled(false);
  lblStatus.SetCaption(u"Stopping");
}

void frmQVWinService::Set_Unknown() {
  TrafficLights1.SetPictureKey(kLightChanging);
  Start.SetEnabled(false);
  Pause.SetEnabled(false);
  Stop.SetEnabled(false);
  lblStatus.SetCaption(u"Unknown");
}

void frmQVWinService::Start_Click() {
  TrafficLights1.SetPictureKey(kLightWaiting);
  if (app_.ActiveEngine) base::IgnoreFailure([&] { app_.ActiveEngine->ServiceStart(); });
  Sleep(400);
  Indicate_ServiceStatus();
}

void frmQVWinService::Stop_Click() {
  engine::StopWindowSteps steps;
  steps.setStopping = [this] { Set_Stopping(); };
  // A transfer is running: it was asked to stop instead (or the user said No).
  if (engine::IsBackingUp(app_, steps)) return;
  TrafficLights1.SetPictureKey(kLightWaiting);
  if (app_.ActiveEngine) base::IgnoreFailure([&] { app_.ActiveEngine->ServiceStop(); });
  Sleep(400);
  Indicate_ServiceStatus();
}

void frmQVWinService::Pause_Click() {
  if (!engine::CanPause(app_)) {
    Ask(17, kit::kIconInfo, kit::kButtonsOk);
    return;
  }
  if (Pause.Caption() == kPauseCaption) {
    Set_Pause();
    if (app_.ActiveEngine) base::IgnoreFailure([&] { app_.ActiveEngine->ServicePause(); });
  } else {
    Set_Resume();
    if (app_.ActiveEngine) base::IgnoreFailure([&] { app_.ActiveEngine->ServiceResume(); });
  }
  Sleep(400);
  Indicate_ServiceStatus();
}

void frmQVWinService::StopTransfer_Click() { engine::AskAndStopTransfer(app_); }

// ---- Tray, window and geometry ------------------------------------------------------

Text frmQVWinService::TrayTip() const {
  return app_.AppTitle == kit::kDefaultAppTitle ? Text(u"Corvane for Windows Monitor")
                                                : Text(u"QVMonitor");
}

void frmQVWinService::UpdateTrayTip() {
  Text tip = TrayTip();
  if (app_.TransferSeen && app_.Transfer.dTotalFilesize != 0)
    tip += u" - " + base::FromNumber(app_.Transfer.iTotalProg) + u"% transferred";
  if (tip.substr(0, TrayIcon::kTipUnits) != tray_.Tip()) tray_.SetTip(tip);
}

void frmQVWinService::AddTrayIcon() {
  const platform::UiHandle owner = windowHandle_ ? windowHandle_() : 0;
  const Text icon = IconPath().empty() ? Text(kTrayRunning) : IconPath();
  tray_.Add(owner, icon, TrayTip(), [this](int mouseMessage) {
    base::IgnoreFailure([&] { TrayMouse(mouseMessage); });
  });
}

void frmQVWinService::TrayMouse(int mouseMessage) {
  if (mouseMessage == platform::kTrayLeftDoubleClick) {
    if (!StatusTabSelected()) SelectStatusTab();
    FramesByUpdateWaiting();
    SetVisible(true);
    ui_.Show(*this);
  } else if (mouseMessage == platform::kTrayRightButtonUp) {
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
  ui_.Show(*this);
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
  if (!screens_->OpenBackupNow()) NotAvailable(u"mnuBackupNow", u"Backup Now");
}

void frmQVWinService::mnuChangePassword_Click() {
  if (base::IsBlank(app_.UserName)) return;
  if (!screens_->OpenUpdatePassword()) NotAvailable(u"mnuChangePassword", u"Update Password");
}

void frmQVWinService::mnuManSchJob_Click() {
  if (!screens_->OpenManageScheduledJobs())
    NotAvailable(u"mnuManSchJob", u"Manage Scheduled Jobs");
}

void frmQVWinService::SendErrorReport_Click() {
  if (!screens_->OpenErrorReport()) NotAvailable(u"Send Error Report", u"Feedback Report");
}

void frmQVWinService::LocalHelpMenu_Click() { kit::ShowHelpFile(app_, *this, kMainWindowTopic); }

void frmQVWinService::WebsiteMenu_Click() {
  if (app_.platform.shell == nullptr) return;
  app_.platform.shell->Execute(0, u"open", kWebsite, Text(), Text(), 3);
}

void frmQVWinService::AboutMenu_Click() {
  if (app_.platform.sound != nullptr) app_.platform.sound->PlayAlias(u"SystemStart");
  if (!screens_->OpenAbout()) NotAvailable(u"AboutMenu", u"About");
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
    frame::WriteSetting(app_, u"DisableAllSchdulers", u"1");
    mnuenablesch.SetCaption(kEnableAllJobs);
    tell(u"'Disable all the Scheduled jobs' option is selected.");
  } else {
    frame::WriteSetting(app_, u"DisableAllSchdulers", u"0");
    mnuenablesch.SetCaption(kDisableAllJobs);
    tell(u"'Enable all the Scheduled jobs' option is selected.");
  }
}

// ---- Activity log ------------------------------------------------------------------

Text frmQVWinService::LogPath() {
  Text path = frame::ReadAccountKey(app_, u"Corvane", u"SessionFile", false);
  if (path.empty()) path = app_.ServiceLogPath;
  app_.SessionFilePath = path;
  return path;
}

void frmQVWinService::ShowLogInWindow() {
  base::IgnoreFailure(
      [&] {
        platform::IFileSystem* fs = app_.platform.fs;
        if (fs == nullptr) return;
        Text path = app_.SessionFilePath;
        if (path.empty()) path = frame::ReadAccountKey(app_, u"Corvane", u"SessionFile", false);
        if (path.empty()) path = app_.ServiceLogPath;
        if (!fs->FileExists(path)) return;
        auto lines = ReadNewestLines(*fs, path, kNewestLines, [&] {
          Sleep(1);
          ui_.DoEvents();
        });
        // A file that cannot be read gives no lines, as an empty one does.
        FillLogList(lines.value_or(std::vector<Text>{}));
      });
}

bool frmQVWinService::SameRows(const std::vector<LogRow>& rows) const {
  if (static_cast<std::size_t>(lstLog.Count()) != rows.size()) return false;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const kit::ListItem& item = lstLog.Item(static_cast<int>(i) + 1);
    const LogRow& row = rows[i];
    if (item.GetText() != row.type || item.SubItem(1) != row.time ||
        item.SubItem(2) != row.message || item.SubItemCount() != 2 ||
        item.ForeColor() != (row.error ? kErrorRowColor : kit::kDefaultColor))
      return false;
  }
  return true;
}

void frmQVWinService::FillLogList(const std::vector<Text>& lines) {
  std::vector<LogRow> rows;
  for (const Text& line : lines) {
    if (auto row = ParseLogLine(line)) rows.push_back(std::move(*row));
  }
  // The rows go below those already there, and a list that would then hold more rows
  // than there are lines is filled again from empty. Deciding first gives the same
  // list without adding the rows twice.
  const int selected = lstLog.SelectedIndex();
  const bool refill = static_cast<std::size_t>(lstLog.Count()) + rows.size() > lines.size();
  // Most ticks find the log as it was: the list already shows what filling it again
  // would give, so it is left alone (and does not flicker).
  if (refill && SameRows(rows)) return;
  if (refill) lstLog.ClearRows();
  for (const LogRow& row : rows) {
    kit::ListItem& item = lstLog.AddRow(row.type);
    item.SetSubItem(1, row.time);
    item.SetSubItem(2, row.message);
    if (row.error) item.SetForeColor(kErrorRowColor);
    Sleep(2);
  }
  if (refill && selected > 0 && selected <= lstLog.Count()) lstLog.Item(selected).SetSelected(true);
}

void frmQVWinService::mnuOpenlog_Click() {
  base::IgnoreFailure(
      [&] {
        const Text path = LogPath();
        platform::IFileSystem* fs = app_.platform.fs;
        if (fs != nullptr && !fs->FileExists(path)) platform::TextFile::Create(*fs, path, false);
        if (app_.platform.shell == nullptr) return;
        const long result = app_.platform.shell->Execute(0, u"open", path, Text(), Text(), 1);
        // The shell's result is the number of what went wrong.
        if (result < 32) {
          frame::WriteTrace(app_, u"Error while opening the Session log file.\r\nReason : " +
                                      base::FromNumber(result));
        }
      });
}

void frmQVWinService::mnuClearlog_Click() {
  LogPath();
  lstLog.ClearRows();
}

// ---- Bandwidth ---------------------------------------------------------------------

void frmQVWinService::PlaceSlider(long percent) {
  sliderBandwidth.SetValue(static_cast<double>(percent));
  lablBandWidth.SetCaption(base::FromNumber(percent) + u"%");
  PictSliderKnob1.SetLeft(PictSliderBox1.Left() +
                          (PictSliderBox1.Width() - PictSliderKnob1.Width()) * percent / 100.0);
}

Text frmQVWinService::ReadLimit(const Text& key) {
  Text value = base::Trim(frame::ReadSetting(app_, key));
  return value.empty() ? Text(u"100") : value;
}

void frmQVWinService::SliderRule(SliderPass pass) {
  const Text autoPause = base::Trim(frame::ReadSetting(app_, u"AUTOPAUSECHECK"));
  settingCheck_ = true;
  base::IgnoreFailure([&] { chkbandwidth.SetValue(autoPause == u"1" ? 1 : 0); });
  settingCheck_ = false;
  if (pass == SliderPass::First) LabelPauseMsg.SetVisible(autoPause == u"1");
  const Text plain = ReadLimit(u"BANDWIDTH");
  const Text paused = ReadLimit(u"BANDWIDTHPAUSE");

  if (!chkbandwidth.Checked()) {
    PlaceSlider(Percent(plain));
    if (pass == SliderPass::First) LabelPauseMsg.SetVisible(false);
    return;
  }
  // At load the window opens with the limit for an active user; the engine's idle
  // state is first consulted by the tick.
  Text idle;
  if (pass != SliderPass::Load && app_.platform.profile != nullptr) {
    idle = app_.platform.profile->GetString(u"AUTOPAUSE", u"BackupIdleState", Text(),
                                            frame::kProfileBufferChars,
                                            app_.CommonFile(u"AutoPause.ini"));
  }
  if (idle == u"1") {
    PlaceSlider(Percent(plain));
    LabelPauseMsg.SetVisible(false);
  } else if (idle.empty() || idle == u"0") {
    PlaceSlider(Percent(paused));
    if (pass == SliderPass::First) {
      LabelPauseMsg.SetVisible(true);
    } else if (pass == SliderPass::Second) {
      const long kind = app_.Transfer.sBkStatus;
      LabelPauseMsg.SetVisible(kind >= 1 && kind <= 4);
    }
  }
}

void frmQVWinService::chkbandwidth_Click() {
  if (settingCheck_) return;
  const bool on = chkbandwidth.Checked();
  const Text key = on ? u"BANDWIDTHPAUSE" : u"BANDWIDTH";
  const Text limit = base::Trim(frame::ReadSetting(app_, key));
  if (!limit.empty()) {
    PlaceSlider(Percent(limit));
  } else {
    PlaceSlider(100);
    frame::WriteSetting(app_, key,
                        base::FromNumber(static_cast<long long>(sliderBandwidth.Value())));
  }
  frame::WriteSetting(app_, u"AUTOPAUSECHECK", base::FromNumber(chkbandwidth.Value()));
  LabelPauseMsg.SetVisible(on);
}

void frmQVWinService::PlaceSliderTip() {
  lblSlider1Tooltip.SetLeft(PictSliderKnob1.Left() + PictSliderKnob1.Width() / 2 -
                            lblSlider1Tooltip.Width() / 2);
  lblSlider1Tooltip.SetTop(PictSliderKnob1.Top() - lblSlider1Tooltip.Height());
}

void frmQVWinService::PictSliderKnob1_MouseDown(const kit::MouseArgs&) {
  dragging_ = true;
  lblSlider1Tooltip.SetCaption(
      base::FromNumber(static_cast<long long>(sliderBandwidth.Value())) + u"%");
  PlaceSliderTip();
  lblSlider1Tooltip.SetVisible(true);
}

void frmQVWinService::PictSliderKnob1_MouseMove(const kit::MouseArgs& a) {
  if (!dragging_) return;
  const double boxLeft = PictSliderBox1.Left();
  const double boxWidth = PictSliderBox1.Width();
  const double left = PictSliderKnob1.Left();
  const double width = PictSliderKnob1.Width();
  if (left + a.x >= boxLeft && left + width + a.x <= boxLeft + boxWidth + kKnobSlackTwips)
    PictSliderKnob1.SetLeft(left + a.x);
  // With the slack the figure can pass 100; the slider keeps what it can hold.
  const double value = (PictSliderKnob1.Left() - boxLeft) * 100 / (boxWidth - width);
  const long rounded = kit::RoundHalfEven(value);
  sliderBandwidth.SetValue(static_cast<double>(rounded));
  const Text shown = base::FromNumber(rounded) + u"%";
  lablBandWidth.SetCaption(shown);
  lblSlider1Tooltip.SetCaption(shown);
  PlaceSliderTip();
}

void frmQVWinService::PictSliderKnob1_MouseUp(const kit::MouseArgs&) {
  dragging_ = false;
  lblSlider1Tooltip.SetVisible(false);
  const Text value = base::FromNumber(static_cast<long long>(sliderBandwidth.Value()));
  frame::WriteSetting(app_, chkbandwidth.Checked() ? u"BANDWIDTHPAUSE" : u"BANDWIDTH", value);
  lablBandWidth.SetCaption(value + u"%");
}

// ---- Web management ----------------------------------------------------------------

bool frmQVWinService::HasCredentials() {
  app_.UserName = frame::ReadSetting(app_, u"UserName");
  if (base::IsBlank(app_.UserName)) return false;
  const Text password = frame::ReadSetting(app_, app_.UserName, true);
  return !base::IsBlank(password);
}

Text frmQVWinService::ReadErrVal() {
  if (app_.platform.profile == nullptr) return Text();
  return app_.platform.profile->GetString(u"OLWA", u"ErrVal", Text(), frame::kProfileBufferChars,
                                          app_.CommonFile(u"qvwin.ini"));
}

void frmQVWinService::WriteErrVal(const Text& value) {
  if (app_.platform.profile == nullptr) return;
  app_.platform.profile->WriteString(u"OLWA", Text(u"ErrVal"), value,
                                     app_.CommonFile(u"qvwin.ini"));
}

long frmQVWinService::KillHelper() {
  long found = 0;
  base::IgnoreFailure([&] { found = engine::IsExeRunningAutomatic(app_, kWebHelper, true); });
  return found;
}

void frmQVWinService::StartHelper(bool testRunning) {
  if (testRunning && engine::IsExeRunningAutomatic(app_, kWebHelper, false) != 0) return;
  const Text path = app_.ProgramFolder + u"\\" + kWebHelper;
  if (app_.platform.fs == nullptr || !app_.platform.fs->FileExists(path)) return;
  WriteErrVal(u"0");
  if (app_.platform.shell != nullptr)
    app_.platform.shell->Execute(0, u"open", path, Text(), Text(), 0);
}

void frmQVWinService::WebManagementAtLoad() {
  const bool credentials = HasCredentials();
  const Text w = base::Trim(frame::ReadAccountKey(app_, u"Corvane", u"WebManage", true));
  if (w == u"0") {
    WebMang.SetChecked(false);
    KillHelper();
  } else if ((w == u"1" || w.empty()) && credentials) {
    WebMang.SetChecked(true);
    base::IgnoreFailure([&] { StartHelper(true); });
  }
}

void frmQVWinService::WebManagementTick() {
  const bool credentials = HasCredentials();
  const Text w = base::Trim(frame::ReadAccountKey(app_, u"Corvane", u"WebManage", true));
  if (w == u"0") {
    WebMang.SetChecked(false);
    return;
  }
  if (!(w == u"1" || w.empty()) || !credentials) return;
  WebMang.SetChecked(true);
  frame::WriteAccountKey(app_, u"Corvane", u"WebManage", u"1");
  base::IgnoreFailure([&] { StartHelper(true); });
  // The helper reports its login through ErrVal; it is given two seconds each tick.
  Sleep(1000);
  ui_.DoEvents();
  Sleep(1000);
  const Text errVal = ReadErrVal();
  if (errVal.empty()) return;
  auto turnOff = [&] {
    frame::WriteAccountKey(app_, u"Corvane", u"WebManage", u"0");
    KillHelper();
    WebMang.SetChecked(false);
  };
  if (errVal == u"-2" || errVal == u"-3") {
    turnOff();
    const Text text = kit::GetMessage(app_, 278);
    frame::WriteTrace(app_, text);
    frame::WriteActivityLog(app_, text, frame::kError);
  } else if (errVal == u"-1") {
    const Text told = frame::ReadSetting(app_, u"WebMessage");
    if (told == u"0" || told.empty()) {
      turnOff();
      Ask(277, kit::kIconError, kit::kButtonsOk);
      const Text text = kit::GetMessage(app_, 277);
      frame::WriteActivityLog(app_, text, frame::kError);
      frame::WriteTrace(app_, text);
    }
    frame::WriteSetting(app_, u"WebMessage", u"1");
  } else if (errVal == u"0") {
    frame::WriteSetting(app_, u"WebMessage", u"0");
  }
}

void frmQVWinService::WebMang_Click() {
  if (!HasCredentials()) {
    Ask(72, kit::kIconInfo, kit::kButtonsOk);
    return;
  }
  auto turnOff = [&] {
    frame::WriteAccountKey(app_, u"Corvane", u"WebManage", u"0");
    KillHelper();
    WebMang.SetChecked(false);
  };
  if (WebMang.Checked()) {
    if (Ask(74, kit::kIconQuestion, kit::kButtonsYesNo) == kit::kResultYes) turnOff();
    return;
  }
  WriteErrVal(u"0");
  frame::WriteAccountKey(app_, u"Corvane", u"WebManage", u"1");
  WebMang.SetChecked(true);
  KillHelper();
  Sleep(1000);
  ui_.DoEvents();
  base::IgnoreFailure([&] { StartHelper(false); });
  Sleep(1000);
  ui_.DoEvents();
  Sleep(1000);
  const Text errVal = ReadErrVal();
  if (errVal.empty()) return;
  if (errVal == u"-2") {
    Ask(278, kit::kIconError, kit::kButtonsOk);
    turnOff();
  } else if (errVal == u"-3") {
    turnOff();
  } else if (errVal == u"-1") {
    Ask(277, kit::kIconError, kit::kButtonsOk);
    turnOff();
  }
}

}  // namespace monitor
