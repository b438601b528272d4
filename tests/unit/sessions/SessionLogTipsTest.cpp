// The Session Log's balloon tips as the user gets them: a right click on each of its
// buttons and on Select All puts up that control's text on the host.
#include <gtest/gtest.h>

#include <set>

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

// The texts are the tip table's; here each control's right click shows a tip of its
// own on that control.
TEST_F(SessionLogTipsTest, EachControlShowsItsOwnTipOnTheRightClick) {
  ui.Show(form);
  const std::pair<Text, Text> cases[] = {{u"lbl_cmdView", u"cmdView"},
                                         {u"lbl_cmdDelete", u"cmdDelete"},
                                         {u"lbl_cmdCloseSessionLog", u"cmdCloseSessionLog"},
                                         {u"chkSelectAll", u"chkSelectAll"}};
  const platform::UiHandle window = fake.ui.FindForm(u"frmSessionLog");
  std::set<Text> texts;
  for (const auto& [clicked, tool] : cases) {
    SCOPED_TRACE(base::ToUtf8(clicked));
    const auto tip = testkit::RightClickTip(fake.ui, u"frmSessionLog", clicked);
    ASSERT_TRUE(tip.has_value());
    EXPECT_FALSE(tip->text.empty());
    texts.insert(tip->text);
    EXPECT_EQ(tip->tool, fake.ui.FindControl(window, tool));
  }
  EXPECT_EQ(texts.size(), std::size(cases));
  // The tip goes with the screen.
  EXPECT_TRUE(form.Unload());
  EXPECT_TRUE(fake.ui.tips.empty());
}

}  // namespace
