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
  // The stored place: left, top, width, height.
  std::vector<Text> Place() {
    std::vector<Text> place;
    for (const Text key : {u"MonLeft", u"MonTop", u"MonWidth", u"MonHeight"})
      place.push_back(Ini(u"LDPI", key, Common(u"qvwin.ini")));
    return place;
  }
};

TEST_F(TrayMenuTest, TheIconCarriesTheTipOfTheTitle) {
  Open();
  form.reset();
  EXPECT_TRUE(fake.ui.trayIcons.empty());  // a window that goes takes its icon along

  fake.fs.AddFolders(u"C:\\QV\\images");
  fake.fs.PutFile(u"C:\\QV\\images\\Config.txt", "Title=Acme Backup\nSecond=x\n");
  Open();
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
  for (const bool fromMenu : {false, true}) {
    ui.Show(*form);
    form->cmdDetails.RaiseClick();
    form->SetWindowState(kit::kWindowMinimized);
    if (fromMenu) {
      form->HideFromTaskBar();  // the item is offered only while the window is hidden
      form->mnuOpen.Choose();
    } else {
      fake.ui.FireTray(TrayHandle(), platform::kTrayLeftDoubleClick);
    }
    EXPECT_TRUE(form->Visible());
    EXPECT_TRUE(ui.ShownForms().back().normal) << "shown minimised, from the menu: " << fromMenu;
    EXPECT_EQ(form->WindowState(), kit::kWindowNormal);
    EXPECT_TRUE(form->StatusTabSelected());
    EXPECT_EQ(form->cmdDetails.PictureKey(), monitor::kTabDetails);
    EXPECT_TRUE(form->FrameNormal.Visible());
  }
  form->HideFromTaskBar();
  Call(u"a.txt", 100, 1000, 10, 10, 1, 1);
  fake.ui.FireTray(TrayHandle(), platform::kTrayLeftDoubleClick);
  EXPECT_TRUE(form->Visible());
  EXPECT_TRUE(form->FrameProgress.Visible());  // an update waits: the transfer pane
}

TEST_F(TrayMenuTest, TheHoldKeyIsReadBeforeTheMenuAndTheItemAsksBeforeHoldingAllJobs) {
  Open();
  Text captionAtPopup;
  ui.OnPopup(u"TrayMenu", [&](kit::Menu&) { captionAtPopup = form->mnuenablesch.Caption(); });
  Setting(u"DisableAllSchdulers", u"1");
  fake.ui.FireTray(TrayHandle(), platform::kTrayRightButtonUp);
  EXPECT_EQ(captionAtPopup, u"Enable all the Scheduled jobs");
  Setting(u"DisableAllSchdulers", u"0");
  fake.ui.FireTray(TrayHandle(), platform::kTrayKeyboardMenu);  // the keyboard's way
  EXPECT_EQ(captionAtPopup, u"Disable all the Scheduled jobs");
  EXPECT_EQ(ui.Popups(), (std::vector<Text>{u"TrayMenu", u"TrayMenu"}));
  fake.ui.FireTray(TrayHandle(), 512);  // a mere move does nothing
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
  EXPECT_EQ(Lines(app.ServiceLogPath),
            std::vector<Text>{u"Information : 11/15/2026 05:25:27 : 'Disable all the Scheduled "
                              u"jobs' option is selected."});

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
  EXPECT_EQ(Place(), (std::vector<Text>{u"1500", u"900", u"7500", u"6000"}));

  form->mnuOpen.Choose();
  EXPECT_TRUE(form->Visible());
  EXPECT_FALSE(form->mnustprunjob.Enabled());
  EXPECT_FALSE(form->mnuOpen.Enabled());

  form->btnClose.SetFocus();  // Space presses the close picture: it hides the same way
  kit::KeyArgs down{kit::kKeySpace, 0}, up{kit::kKeySpace, 0};
  form->DeliverKeyDown(down);
  form->DeliverKeyUp(up);
  EXPECT_FALSE(form->Visible());
  EXPECT_TRUE(form->IsLoaded());
}

// The window menu's shutdown stores a visible place and stops the daily timer; the
// tray's keeps the timer, and a minimised or hidden place is not stored.
TEST_F(TrayMenuTest, BothShutdownsEndTheProgramAndTakeTheIcon) {
  enum { kHidden, kMinimised, kShown };
  for (const int window : {kHidden, kMinimised, kShown}) {
    Open();
    if (window != kHidden) ui.Show(*form);
    form->Move(100, 200, 7000, 6000);
    if (window == kMinimised) form->SetWindowState(kit::kWindowMinimized);  // as the renderer tells
    const auto daily = form->DailyTimer();
    ASSERT_EQ(fake.ui.timers.count(daily), 1u);
    terminated.clear();
    (window == kShown ? form->ShutDownMenu : form->mnuShutdown).Choose();
    EXPECT_EQ(terminated, (std::vector<unsigned>{0}));
    EXPECT_EQ(Place()[0], window == kShown ? u"100" : u"") << window;
    EXPECT_EQ(fake.ui.timers.count(daily), window == kShown ? 0u : 1u);
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
