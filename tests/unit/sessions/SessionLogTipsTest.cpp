// The Session Log's balloon tips as the user gets them: a right click on each of its
// buttons and on Select All puts up that control's text on the host.
#include <gtest/gtest.h>

#include "kit/HostedUi.h"
#include "sessions/frmSessionLog.h"
#include "testkit/FrameFixture.h"
#include "testkit/HostTips.h"

namespace {

using base::Text;

struct SessionLogTipsTest : ::testing::Test, testkit::CommonFixture {
  SessionLogTipsTest() {
    fake.fs.AddFolders(Common(u"Session"));
    fake.fs.PutFile(Common(u"Session\\Backup 01-02-2027  10-00-00.txt"), "log");
  }
  kit::HostedUi ui{fake.ui};
  sessions::frmSessionLog form{app, ui};
};

TEST_F(SessionLogTipsTest, EachControlShowsItsOwnTextOnTheRightClick) {
  ui.Show(form);
  struct Case {
    Text clicked, tool, text;
  } const cases[] = {
      {u"lbl_cmdView", u"cmdView",
       u"View the log file of the selected \r\nbackup or restore session "},
      {u"lbl_cmdDelete", u"cmdDelete",
       u"Delete the log file of the selected backup \r\nor restore session"},
      {u"lbl_cmdCloseSessionLog", u"cmdCloseSessionLog", u"Exit this screen"},
      {u"chkSelectAll", u"chkSelectAll",
       u"Select all the backup and restore \r\nsession log entries "},
  };
  const platform::UiHandle window = fake.ui.FindForm(u"frmSessionLog");
  for (const Case& c : cases) {
    SCOPED_TRACE(base::ToUtf8(c.clicked));
    const auto tip = testkit::RightClickTip(fake.ui, u"frmSessionLog", c.clicked);
    ASSERT_TRUE(tip.has_value());
    EXPECT_EQ(tip->text, c.text);
    EXPECT_EQ(tip->tool, fake.ui.FindControl(window, c.tool));
  }
  // The tip goes with the screen.
  EXPECT_TRUE(form.Unload());
  EXPECT_TRUE(fake.ui.tips.empty());
}

}  // namespace
