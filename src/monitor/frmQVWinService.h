#pragma once
// The monitor window: the Status and Details tabs with the idle pane, the transfer
// pane and the details pane, the engine's status light, the bandwidth slider, the
// activity log list, the menus and the notification-area icon, and the ten-second
// tick that drives all of it. See docs/monitor.md. The definitions are spread over
// frmQVWinService.cpp and the Monitor*.cpp files by section; the rules that need no
// window are in BandwidthRules, StatusLook, WebHelperAnswer, TrayIcon, PaneText and
// LogView.
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

#include "frame/AppState.h"
#include "kit/Controls.h"
#include "kit/Form.h"
#include "kit/ListView.h"
#include "kit/Menu.h"
#include "kit/Ui.h"
#include "monitor/BandwidthRules.h"
#include "monitor/LogView.h"
#include "monitor/MonitorPictures.h"
#include "monitor/MonitorScreens.h"
#include "monitor/StatusLook.h"
#include "monitor/TrayIcon.h"

namespace monitor {

using base::Text;

inline constexpr unsigned kProgressIntervalMs = 10000;
inline constexpr int kStatusRounds = 200;

inline constexpr char16_t kWebHelper[] = u"Corvane_Web.exe";
inline constexpr char16_t kMainApplication[] = u"CorvaneForWindows_955.exe";
inline constexpr char16_t kWebsite[] = u"http://www.corvane.com";
inline constexpr char16_t kMainWindowTopic[] = u"QVWINHelp.chm::/Main_Window/Main_Window.htm";

inline constexpr char16_t kAutoPauseCaption[] = u"Auto Pause (Bandwidth used)";
inline constexpr char16_t kPauseMessage[] =
    u"Auto-Pause is checked. This means backups may be very slow during user activity.";
inline constexpr char16_t kPauseMessageShort[] =
    u"Auto-Pause is checked. This means backups may be very slow...";
inline constexpr char16_t kEnableAllJobs[] = u"Enable all the Scheduled jobs";
inline constexpr char16_t kDisableAllJobs[] = u"Disable all the Scheduled jobs";

class frmQVWinService : public kit::Form {
 public:
  // `screens` are the other folders' screens behind the menus and the tick (the
  // program's ProgramScreens); null for the window alone, whose items then open nothing.
  frmQVWinService(frame::AppState& app, kit::Ui& ui, MonitorScreens* screens = nullptr);
  ~frmQVWinService() override;

  // ---- The tick and the status --------------------------------------------------
  void Progress_Timer();
  void Indicate_ServiceStatus();
  void Set_Start();
  void Set_Pause();
  void Set_Resume();
  void Set_Stop();
  void Set_Stopping();
  void Set_Unknown();

  // ---- Window and tray -----------------------------------------------------------
  void HideFromTaskBar();
  void ShowFromTaskBar();
  void ShowLogInWindow();
  // Main's stored geometry, in twips, in the order width, height, top, left.
  void ApplyGeometry(std::optional<long> width, std::optional<long> height, std::optional<long> top,
                     std::optional<long> left);
  // Keeps the window's place in members and, unless it is minimised, in qvwin.ini.
  void StoreGeometry();
  void Refresh();
  // The tray icon's callback: the mouse message the shell passed.
  void TrayMouse(int mouseMessage);

  // The Status tab routine and the Details tab.
  void pic_Status_Click();
  void cmdDetails_Click();
  void btnClose_Click();

  // ---- Bandwidth -------------------------------------------------------------------
  using SliderPass = monitor::SliderPass;
  void PlaceSlider(long percent);
  void SliderRule(SliderPass pass);
  void chkbandwidth_Click();
  void PictSliderKnob1_MouseDown(const kit::MouseArgs& a);
  void PictSliderKnob1_MouseMove(const kit::MouseArgs& a);
  void PictSliderKnob1_MouseUp(const kit::MouseArgs& a);
  // The arrows on the knob move the limit by one and keep it, as a drag does.
  void SliderKeyLower();
  void SliderKeyHigher();

  // ---- Web management --------------------------------------------------------------
  void WebManagementAtLoad();
  void WebManagementTick();
  void WebMang_Click();

  // ---- Menu items --------------------------------------------------------------------
  void Start_Click();
  void Stop_Click();
  void Pause_Click();
  void StopTransfer_Click();  // StoptransferMenu, mnustprunjob, btnStopTransfer
  void ShutDownMenu_Click();
  void mnuShutdown_Click();
  void mnuViewDetails_Click();
  void mnuHideDetails_Click();
  void mnuOpenlog_Click();  // also btnLogFile
  void mnuviewlog_Click();  // the Session Log screen
  void mnuClearlog_Click();
  void mnuOpen_Click();
  void mnuLaunch_Click();
  void mnuBackupNow_Click();
  void mnuChangePassword_Click();
  void mnuManSchJob_Click();
  void mnuenablesch_Click();
  void SendErrorReport_Click();  // mnusenderrorreport, mnusenderrorrpt
  void LocalHelpMenu_Click();
  void WebsiteMenu_Click();
  void AboutMenu_Click();
  void StartAuto_Click();

  // ---- For the program around the window ------------------------------------------
  // How the shutdown items end the process (TerminateProcess on itself, with no
  // further clean-up); by default the message loop is told to quit.
  void SetTerminate(std::function<void(unsigned exitCode)> terminate) {
    terminate_ = std::move(terminate);
  }
  // The host's handle of this window, to own the tray icon (0: the host's own).
  void SetWindowHandle(std::function<platform::UiHandle()> handle) {
    windowHandle_ = std::move(handle);
  }

  bool StatusTabSelected() const { return pic_Status.PictureKey() == kTabStatusSelected; }
  const TrayIcon& Tray() const { return tray_; }
  std::uintptr_t DailyTimer() const { return dailyTimer_; }
  bool Dragging() const { return dragging_; }
  // The window's place as the store routine last kept it.
  const kit::Layout& KeptGeometry() const { return keptGeometry_; }

  // ---- Controls, in twips --------------------------------------------------------
  kit::Label Label1{*this, u"Label1", {120, 90, 5400, 300}};
  kit::Picture Picture1{*this, u"Picture1", {6600, 120, 240, 240}};
  kit::Picture btnClose{*this, u"btnClose", {6900, 120, 240, 240}};

  kit::Picture pic_Status{*this, u"pic_Status", {120, 480, 1320, 360}};
  kit::Picture cmdDetails{*this, u"cmdDetails", {1440, 480, 1320, 360}};

  kit::Picture FrameNormal{*this, u"FrameNormal", {120, 840, 5760, 2520}};
  kit::Picture pic_nor{FrameNormal, u"pic_nor", {240, 240, 960, 960}};
  kit::Label lblGuideLines{FrameNormal, u"lblGuideLines", {1380, 240, 4200, 1800}};

  kit::Picture FrameProgress{*this, u"FrameProgress", {120, 840, 5760, 2520}};
  kit::Label txtRsyncFileName1{FrameProgress, u"txtRsyncFileName1", {120, 120, 5520, 780}};
  kit::Label txtRsyncfilesize1{FrameProgress, u"txtRsyncfilesize1", {120, 960, 2640, 255}};
  kit::ProgressBar prgbarRsyncfile1{FrameProgress, u"prgbarRsyncfile1", {120, 1260, 5520, 240}};
  kit::ProgressBar PrgbarRsyncTotal{FrameProgress, u"PrgbarRsyncTotal", {120, 1620, 5520, 240}};
  kit::Label lblRsyncTransferStatus{
      FrameProgress, u"lblRsyncTransferStatus", {120, 1920, 5520, 255}};
  kit::Label txtRsyncTimeElapsed{FrameProgress, u"txtRsyncTimeElapsed", {120, 2220, 2700, 255}};
  kit::Label txtRsyncTimeLeft{FrameProgress, u"txtRsyncTimeLeft", {2940, 2220, 2700, 255}};

  kit::Picture FrameDetails{*this, u"FrameDetails", {120, 840, 5760, 2520}};
  kit::CheckBox StartAuto{FrameDetails,
                          u"StartAuto",
                          {240, 240, 5280, 255},
                          u"Start the Status Indicator when I log on to Windows"};

  kit::Picture TrafficLights1{*this, u"TrafficLights1", {6480, 900, 240, 600}};
  kit::Label lblStatus{*this, u"lblStatus", {6000, 1560, 1200, 255}};
  kit::Picture btnRefresh{*this, u"btnRefresh", {6120, 1980, 360, 360}};
  kit::Picture btnLogFile{*this, u"btnLogFile", {6720, 1980, 360, 360}};
  kit::Picture btnStopTransfer{*this, u"btnStopTransfer", {6420, 2460, 360, 360}};
  kit::Picture picTrayicon{*this, u"picTrayicon", {0, 0, 240, 240}};

  kit::CheckBox chkbandwidth{
      *this, u"chkbandwidth", {120, 3480, 2880, 255}, u"Auto-Pause (Bandwidth used)"};
  kit::ProgressBar sliderBandwidth{*this, u"sliderBandwidth", {3060, 3480, 2250, 255}};
  kit::Picture PictSliderBox1{*this, u"PictSliderBox1", {3060, 3473, 2250, 270}};
  kit::Picture PictSliderKnob1{*this, u"PictSliderKnob1", {3060, 3473, 180, 270}};
  kit::Label lablBandWidth{*this, u"lablBandWidth", {5400, 3495, 720, 255}};
  kit::Label lblSlider1Tooltip{*this, u"lblSlider1Tooltip", {3060, 3180, 600, 255}};
  kit::Label LabelPauseMsg{*this, u"LabelPauseMsg", {120, 3780, 7080, 255}, kPauseMessage};

  kit::ListView lstLog{*this, u"lstLog", {120, 4560, 7080, 2160}};
  kit::Timer Progress{*this, u"Progress", kProgressIntervalMs};

  kit::Menu MainMenu{*this, u"MainMenu", u"Main"};
  kit::MenuItem Start{MainMenu, u"Start", u"Start Service"};
  kit::MenuItem Stop{MainMenu, u"Stop", u"Stop Service"};
  kit::MenuItem Pause{MainMenu, u"Pause", u"Pause Service"};
  kit::MenuItem StoptransferMenu{MainMenu, u"StoptransferMenu", u"Stop Transfer"};
  kit::MenuItem RefreshMenu{MainMenu, u"RefreshMenu", u"Refresh"};
  kit::MenuItem ShutDownMenu{MainMenu, u"ShutDownMenu", u"Shutdown Corvane for Windows Monitor"};

  kit::Menu mnuview{*this, u"mnuview", u"View"};
  kit::MenuItem MnuDetails{mnuview, u"MnuDetails", u"Details"};
  kit::MenuItem mnuViewDetails{MnuDetails, u"mnuViewDetails", u"&View"};
  kit::MenuItem mnuHideDetails{MnuDetails, u"mnuHideDetails", u"&Hide"};
  kit::MenuItem LogMenu{mnuview, u"LogMenu", u"Log"};
  kit::MenuItem mnuOpenlog{LogMenu, u"mnuOpenlog", u"&View"};
  kit::MenuItem mnuClearlog{LogMenu, u"mnuClearlog", u"&Clear"};

  kit::Menu HelpMenu{*this, u"HelpMenu", u"Help"};
  kit::MenuItem LocalHelpMenu{HelpMenu, u"LocalHelpMenu", u"Help Topics"};
  kit::MenuItem mnusenderrorrpt{HelpMenu, u"mnusenderrorrpt", u"Send Error Report"};
  kit::MenuItem WebsiteMenu{HelpMenu, u"WebsiteMenu", u"Website"};
  kit::MenuItem AboutMenu{HelpMenu, u"AboutMenu", u"About Corvane for Windows ..."};

  kit::Menu TrayMenu{*this, u"TrayMenu", u"TrayMenu"};
  kit::MenuItem mnuOpen{TrayMenu, u"mnuOpen", u"&Open Status Indicator"};
  kit::MenuItem mnuLaunch{TrayMenu, u"mnuLaunch", u"&Launch Online Backup"};
  kit::MenuItem mnuBackupNow{TrayMenu, u"mnuBackupNow", u"Backup Now"};
  kit::MenuItem mnuChangePassword{TrayMenu, u"mnuChangePassword", u"Update Password"};
  kit::MenuItem mnuManSchJob{TrayMenu, u"mnuManSchJob", u"Manage all the Scheduled Jobs"};
  kit::MenuItem mnuenablesch{TrayMenu, u"mnuenablesch", kEnableAllJobs};
  kit::MenuItem mnustprunjob{TrayMenu, u"mnustprunjob", u"Stop running scheduled job"};
  kit::MenuItem WebMang{TrayMenu, u"WebMang", u"&Web Management"};
  kit::MenuItem mnusenderrorreport{TrayMenu, u"mnusenderrorreport", u"Send Error Report"};
  kit::MenuItem mnuviewlog{TrayMenu, u"mnuviewlog", u"&View log"};
  kit::MenuItem mnuShutdown{TrayMenu, u"mnuShutdown", u"&Shutdown Indicator"};

 protected:
  void Form_Load() override;
  void Form_QueryUnload(int& cancel, kit::UnloadMode mode) override;
  void Form_Resize() override;

 private:
  void BindEvents();
  void InstallMessageBox();
  void ResizeControls();
  void BringToFront(kit::Picture& frame);
  void SelectStatusTab();
  void ShowStatus(ServiceState state);
  void FramesByUpdateWaiting();
  void DrawFileName();
  void DrawTimeLeft();
  void UpdateTrayTip();
  Text TrayTip() const;
  void AddTrayIcon();
  void ShowTrayState(const Text& word);
  Text LogPath();
  void FillLogList(const std::vector<Text>& lines);
  bool SameRows(const std::vector<LogRow>& rows) const;
  void StartHelper(bool testRunning);
  long KillHelper();
  Text ReadErrVal();
  void WriteErrVal(const Text& value);
  bool HasCredentials();
  void PlaceSliderTip();
  Text ReadLimit(const Text& key);
  void Shutdown(bool killDailyTimer);
  void Sleep(std::uint32_t ms);
  int Ask(long code, int icon, int buttons);

  frame::AppState& app_;
  kit::Ui& ui_;
  MonitorScreens* screens_;  // null: the window alone, its items open nothing
  TrayIcon tray_;
  std::function<void(unsigned)> terminate_;
  std::function<platform::UiHandle()> windowHandle_;
  std::uintptr_t dailyTimer_ = 0;
  bool dragging_ = false;
  bool loading_ = false;
  // Set while the program itself sets the Auto-Pause box, whose Click would otherwise
  // write the limits back.
  bool settingCheck_ = false;
  bool installedBox_ = false;
  kit::Layout keptGeometry_;
  // What the window needs below the log list to show it whole.
  double belowLog_ = 0;
};

}  // namespace monitor
