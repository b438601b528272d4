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

// Which controls have a tip is the screen's design; here a right click on a skinned
// button's caption puts the tip on the button, and the tip goes with the screen.
TEST_F(SessionLogTipsTest, TheCaptionsRightClickTipsTheButtonAndTheTipGoesWithTheScreen) {
  ui.Show(form);
  const auto tip = testkit::RightClickTip(fake.ui, u"frmSessionLog", u"lbl_cmdDelete");
  ASSERT_TRUE(tip.has_value());
  EXPECT_FALSE(tip->text.empty());
  EXPECT_EQ(tip->tool, fake.ui.FindControl(fake.ui.FindForm(u"frmSessionLog"), u"cmdDelete"));
  EXPECT_TRUE(form.Unload());
  EXPECT_TRUE(fake.ui.tips.empty());
}

}  // namespace
