// The window in the tray: the icon and its two mouse messages, hiding and showing,
// closing, the two shutdowns with the stored geometry, and the effects of the items.
#include <gtest/gtest.h>

#include "kit/MesgBox.h"
#include "frame/MessageTable.h"
#include "kit/ToolTips.h"
#include "MonitorFixture.h"

namespace {

using base::Text;
using monitortest::MonitorFormTest;

class TrayMenuTest : public MonitorFormTest {
 protected:
  platform::UiHandle Icon() {
    EXPECT_EQ(fake.ui.trayIcons.size(), 1u);
    return fake.ui.trayIcons.empty() ? 0 : fake.ui.trayIcons.begin()->first;
  }
  const platform::UiTrayIcon& IconState() { return fake.ui.trayIcons.begin()->second.state; }
  Text Stored(const Text& section, const Text& key) {
    return Ini(section, key, Common(u"qvwin.ini"));
  }
  std::vector<Text> ActivityLog() { return Lines(Common(u"QVWServiceLog.txt")); }
};

TEST_F(TrayMenuTest, TheIconCarriesTheTipOfTheTitle) {
  Open();
  Icon();
  EXPECT_EQ(IconState().tip, u"Corvane for Windows Monitor");
  form.reset();
  EXPECT_TRUE(fake.ui.trayIcons.empty());  // a window that goes takes its icon along

  fake.fs.AddFolders(u"C:\\QV\\images");
  fake.fs.PutFile(u"C:\\QV\\images\\Config.txt", "Title=Acme Backup\nSecond=x\n");
  Open();
  EXPECT_EQ(app.AppTitle, u"Acme Backup");
  EXPECT_EQ(IconState().tip, u"QVMonitor");
  EXPECT_EQ(form->mnuLaunch.Caption(), u"Launch Acme Backup");
}

// View > Details grows the window down to the log; Hide shrinks it; each item enables
// the other.
TEST_F(TrayMenuTest, ViewAndHideDetailsSizeTheWindowAndEnableEachOther) {
  Open();
  EXPECT_FALSE(form->mnuHideDetails.Enabled());
  EXPECT_TRUE(form->mnuViewDetails.Enabled());
  form->mnuViewDetails.Choose();
  EXPECT_TRUE(form->mnuHideDetails.Enabled());
  EXPECT_FALSE(form->mnuViewDetails.Enabled());
  EXPECT_GT(form->Height(), form->lstLog.Top() + form->lstLog.Height());
  form->mnuHideDetails.Choose();
  EXPECT_TRUE(form->mnuViewDetails.Enabled());
  EXPECT_LT(form->Height(), form->lstLog.Top() + form->lstLog.Height());
}

// The double click and Open Status Indicator show the window normal even when it is
// visible: minimised or behind other programs, it comes back restored and in front.
TEST_F(TrayMenuTest, TheIconAndOpenShowTheWindowRestoredOnTheStatusTab) {
  Open();
  form->HideFromTaskBar();
  form->cmdDetails.RaiseClick();
  fake.ui.FireTray(Icon(), platform::kTrayLeftDoubleClick);
  EXPECT_TRUE(form->Visible());
  EXPECT_TRUE(form->StatusTabSelected());
  EXPECT_EQ(form->cmdDetails.PictureKey(), monitor::kTabDetails);
  EXPECT_TRUE(form->FrameNormal.Visible());

  form->SetWindowState(kit::kWindowMinimized);
  fake.ui.FireTray(Icon(), platform::kTrayLeftDoubleClick);
  EXPECT_TRUE(ui.ShownForms().back().normal) << "the visible window was not shown normal";
  EXPECT_EQ(form->WindowState(), kit::kWindowNormal);
  // Hidden while minimised, then opened from the menu.
  form->SetWindowState(kit::kWindowMinimized);
  form->HideFromTaskBar();
  form->mnuOpen.Choose();
  EXPECT_TRUE(form->Visible());
  EXPECT_TRUE(ui.ShownForms().back().normal);
  EXPECT_EQ(form->WindowState(), kit::kWindowNormal);

  form->HideFromTaskBar();
  Call(u"a.txt", 100, 1000, 10, 10, 1, 1);
  fake.ui.FireTray(Icon(), platform::kTrayLeftDoubleClick);
  EXPECT_TRUE(form->FrameProgress.Visible());  // an update waits: the transfer pane
}

TEST_F(TrayMenuTest, TheHoldKeyIsReadBeforeTheMenuAndTheItemAsksBeforeHoldingAllJobs) {
  Open();
  Text captionAtPopup;
  ui.OnPopup(u"TrayMenu", [&](kit::Menu&) { captionAtPopup = form->mnuenablesch.Caption(); });
  Setting(u"DisableAllSchdulers", u"1");
  fake.ui.FireTray(Icon(), platform::kTrayRightButtonUp);
  EXPECT_EQ(captionAtPopup, u"Enable all the Scheduled jobs");
  Setting(u"DisableAllSchdulers", u"0");
  fake.ui.FireTray(Icon(), platform::kTrayRightButtonUp);
  EXPECT_EQ(captionAtPopup, u"Disable all the Scheduled jobs");
  EXPECT_EQ(ui.Popups(), (std::vector<Text>{u"TrayMenu", u"TrayMenu"}));
  fake.ui.FireTray(Icon(), 512);  // a mere move does nothing
  EXPECT_EQ(ui.Popups().size(), 2u);

  // Holding all jobs asks first; releasing them does not.
  Setting(u"DisableAllSchdulers", u"");
  form->mnuenablesch.SetCaption(u"disable ALL the scheduled jobs");  // compared without case
  ui.Queue(kit::ScriptedUi::Answer::No());
  form->mnuenablesch.Choose();
  EXPECT_EQ(Get(u"DisableAllSchdulers"), u"");
  ASSERT_EQ(ui.Questions().size(), 1u);
  EXPECT_EQ(ui.Questions()[0].text, frame::GetMessage(app, 20));

  ui.Queue(kit::ScriptedUi::Answer::Yes());
  form->mnuenablesch.Choose();
  EXPECT_EQ(Get(u"DisableAllSchdulers"), u"1");
  EXPECT_EQ(form->mnuenablesch.Caption(), u"Enable all the Scheduled jobs");
  EXPECT_TRUE(TraceHas(u"'Disable all the Scheduled jobs' option is selected."));
  ASSERT_EQ(ActivityLog().size(), 1u);
  EXPECT_EQ(
      ActivityLog()[0],
      u"Information : 11/15/2026 05:25:27 : 'Disable all the Scheduled jobs' option is selected.");

  form->mnuenablesch.Choose();
  EXPECT_EQ(ui.Questions().size(), 2u);  // no question to release them
  EXPECT_EQ(Get(u"DisableAllSchdulers"), u"0");
  EXPECT_EQ(form->mnuenablesch.Caption(), u"Disable all the Scheduled jobs");
  EXPECT_TRUE(TraceHas(u"'Enable all the Scheduled jobs' option is selected."));
}

TEST_F(TrayMenuTest, ClosingHidesStoresThePlaceAndTheOpenItemBringsItBack) {
  Open();
  ui.Show(*form);
  form->Move(1500, 900, 7500, 6000);
  EXPECT_FALSE(form->Unload(kit::UnloadMode::ControlMenu));
  EXPECT_TRUE(form->IsLoaded());
  EXPECT_FALSE(form->Visible());
  EXPECT_TRUE(form->mnuOpen.Enabled());
  EXPECT_EQ(Stored(u"LDPI", u"MonLeft"), u"1500");
  EXPECT_EQ(Stored(u"LDPI", u"MonTop"), u"900");
  EXPECT_EQ(Stored(u"LDPI", u"MonWidth"), u"7500");
  EXPECT_EQ(Stored(u"LDPI", u"MonHeight"), u"6000");

  form->cmdDetails.RaiseClick();
  form->mnuOpen.Choose();
  EXPECT_TRUE(form->Visible());
  EXPECT_TRUE(form->StatusTabSelected());
  EXPECT_TRUE(form->FrameNormal.Visible());
  EXPECT_FALSE(form->mnustprunjob.Enabled());
  EXPECT_FALSE(form->mnuOpen.Enabled());

  form->btnClose.RaiseClick();  // the close picture hides the same way
  EXPECT_FALSE(form->Visible());
  EXPECT_TRUE(form->IsLoaded());
}

// The window menu's shutdown stores a visible place and stops the daily timer; the
// tray's keeps the timer, and a minimised or hidden place is not stored.
TEST_F(TrayMenuTest, BothShutdownsEndTheProgramAndTakeTheIcon) {
  // Hidden in the tray, the window's place is not stored either.
  Open();
  ASSERT_FALSE(form->Visible());
  form->Move(100, 200, 7000, 6000);
  form->mnuShutdown.Choose();
  EXPECT_EQ(Stored(u"LDPI", u"MonLeft"), u"");
  form.reset();
  for (const bool fromTray : {true, false}) {
    SCOPED_TRACE(fromTray ? "tray" : "window menu");
    Open();
    ui.Show(*form);
    form->Move(100, 200, 7000, 6000);
    if (fromTray) form->SetWindowState(kit::kWindowMinimized);  // as the renderer tells
    const auto daily = form->DailyTimer();
    ASSERT_EQ(fake.ui.timers.count(daily), 1u);
    terminated.clear();
    (fromTray ? form->mnuShutdown : form->ShutDownMenu).Choose();
    EXPECT_EQ(terminated, (std::vector<unsigned>{0}));
    EXPECT_EQ(Stored(u"LDPI", u"MonLeft"), fromTray ? u"" : u"100");
    EXPECT_EQ(fake.ui.timers.count(daily), fromTray ? 1u : 0u);
    EXPECT_TRUE(fake.ui.trayIcons.empty());
    form.reset();
  }
}

TEST_F(TrayMenuTest, StartAutoWritesOrRemovesTheRunValue) {
  Open();
  EXPECT_FALSE(form->StartAuto.Checked());
  form->cmdDetails.RaiseClick();  // the box lies on the Details pane
  form->StartAuto.UserClick();
  EXPECT_EQ(frame::IsInRun(app), 1);
  form->StartAuto.UserClick();
  EXPECT_EQ(frame::IsInRun(app), 0);

  frame::AddToRun(app);
  Open();  // the load shows the value without writing it
  EXPECT_TRUE(form->StartAuto.Checked());
}

TEST_F(TrayMenuTest, EachItemOpensItsScreenThroughItsHook) {
  Open();
  form->mnuBackupNow.Choose();
  form->mnuChangePassword.Choose();  // no user name: nothing at all
  EXPECT_EQ(log, (std::vector<std::string>{"open BackupNow"}));
  Account(u"mary", u"pw");
  app.UserName = u"mary";
  form->mnuChangePassword.Choose();
  EXPECT_EQ(log.back(), "open UpdatePassword");
  // The tray's "View log" opens the Session Log; the activity log file stays with the
  // View > Log > View item and the window's log button.
  form->mnuviewlog.Choose();
  EXPECT_EQ(log.back(), "open SessionLog");
  EXPECT_TRUE(fake.shell.executed.empty());
}

}  // namespace
