// Main with the monitor window: load, stored geometry, hidden in the tray with "Min"
// or shown, the log list filled; and the window on a UI host.
#include <gtest/gtest.h>

#include "frame/Startup.h"
#include "frame/Settings.h"
#include "kit/HostedUi.h"
#include "kit/ScriptedUi.h"
#include "program/MonitorProgram.h"
#include "testkit/FrameFixture.h"

namespace {

using base::Text;

class MonitorProgramTest : public ::testing::Test, public testkit::CommonFixture {};

// Which word hides the window and which place counts is StartupTest's; here the real
// window follows it, with its log list filled even while hidden.
TEST_F(MonitorProgramTest, TheWindowIsHiddenOrShownInItsStoredPlaceWithTheLogFilled) {
  const struct {
    Text word, top;
    bool visible;
    kit::Layout layout;
  } cases[] = {{u"Min", u"300", false, {450, 300, 8000, 6500}},
               {u"min", u"", true, {1200, 1200, 7440, 4860}}};  // a partial place: the design's
  for (const auto& c : cases) {
    SCOPED_TRACE(base::ToUtf8(c.word));
    testkit::CommonFixture fx;
    fx.fake.system.commandLine = c.word;
    for (const auto& [key, value] : {std::pair<Text, Text>{u"MonWidth", u"8000"},
                                     {u"MonHeight", u"6500"},
                                     {u"MonTop", c.top},
                                     {u"MonLeft", u"450"}})
      frame::WriteSetting(fx.app, key, value);
    platform::TextFile::WriteLines(
        fx.fake.fs, u"C:\\QV\\QVCOMMON\\QVWServiceLog.txt",
        {u"Information : 11/15/2026 05:25:27 : one", u"Error       : 11/15/2026 05:25:28 : two"});
    kit::ScriptedUi ui;
    program::MonitorProgram program(fx.app, ui);
    ASSERT_EQ(frame::Main(fx.app, program), frame::MainResult::Run);
    auto& w = program.Window();
    EXPECT_TRUE(w.IsLoaded());
    EXPECT_EQ(w.Visible(), c.visible);
    if (!c.visible) {
      EXPECT_TRUE(w.mnuOpen.Enabled());
    }
    EXPECT_EQ(w.GetLayout(), c.layout);
    EXPECT_EQ(w.lstLog.Count(), 2);
    EXPECT_EQ(fx.fake.ui.trayIcons.size(), 1u);
    ASSERT_TRUE(fx.app.ActiveEngine);  // the real engine objects over the fakes
    EXPECT_EQ(w.lblStatus.Caption(), u"Stopped");
  }
}

TEST_F(MonitorProgramTest, OnAHostTheWindowOwnsTheTrayIconAndWhatEscapesItsHandlersIsTraced) {
  fake.system.commandLine = u"Min";
  kit::HostedUi hosted(fake.ui);
  unsigned ended = 99;
  {
    program::MonitorProgram program(app, hosted);
    program.SetTerminate([&](unsigned code) { ended = code; });
    ASSERT_EQ(frame::Main(app, program), frame::MainResult::Run);
    const platform::UiHandle window = fake.ui.FindForm(u"frmQVWinService");
    ASSERT_NE(window, 0u);
    EXPECT_FALSE(fake.ui.forms.at(window).state.visible);
    // The menu bar holds the three menus; the tray menu is a popup.
    EXPECT_EQ(fake.ui.forms.at(window).state.menuBar.size(), 3u);
    // The tick runs on a host timer of ten seconds even with the window hidden.
    bool tick = false;
    for (const auto& [id, t] : fake.ui.timers) tick = tick || t.intervalMs == 10000;
    EXPECT_TRUE(tick);

    ASSERT_EQ(fake.ui.trayIcons.size(), 1u);
    const platform::UiHandle icon = fake.ui.trayIcons.begin()->first;
    EXPECT_EQ(fake.ui.trayIcons.begin()->second.state.owner, window);
    // What escapes a screen's handler on the host is traced, and the program runs on.
    program.Window().mnuOpen.on.Click = [] { throw std::runtime_error("the menu broke"); };
    EXPECT_NO_THROW(program.Window().mnuOpen.RaiseClick());
    EXPECT_TRUE(TraceMentions(u"the menu broke"));
    EXPECT_TRUE(TraceMentions(u"in procedure mnuOpen of Form frmQVWinService"));
    fake.ui.popupChoices.push_back(
        kit::FormHost::MenuId(program.Window(), program.Window().mnuShutdown));
    fake.ui.FireTray(icon, platform::kTrayRightButtonUp);
    EXPECT_EQ(ended, 0u);
    EXPECT_TRUE(fake.ui.trayIcons.empty());
  }
  EXPECT_EQ(fake.ui.FindForm(u"frmQVWinService"), 0u);
}

}  // namespace
