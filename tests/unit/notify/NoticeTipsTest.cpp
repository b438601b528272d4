// The notices' balloon tips as the user gets them: a right click on each button puts
// up that button's text on the host, the error notice's Close borrowing the job-end
// notice's.
#include <gtest/gtest.h>

#include "kit/HostedUi.h"
#include "notify/Notices.h"
#include "notify/bkupjobnotify.h"
#include "notify/frmBKErrNotify.h"
#include "testkit/FrameFixture.h"
#include "testkit/HostTips.h"

namespace {

using base::Text;

struct NoticeTipsTest : ::testing::Test, testkit::CommonFixture {
  kit::HostedUi ui{fake.ui};
  notify::Notices notices{app, ui, notify::NoticeHooks{[] {}, [] {}, [] { return 0.0; }}};
};

TEST_F(NoticeTipsTest, EachButtonShowsItsOwnTextOnTheRightClick) {
  ui.Show(notices.JobNotice());
  ui.Show(notices.ErrNotice());
  struct Case {
    Text form, clicked, tool, text;
  } const cases[] = {
      // A skinned button is clicked on its label; the tip is the button's.
      {u"bkupjobnotify", u"lbl_viewbkuplog", u"viewbkuplog",
       u"View the log of the scheduled \r\nbackup /restore jobs"},
      {u"bkupjobnotify", u"lbl_cancel", u"cancel", u"Exit this screen"},
      {u"bkupjobnotify", u"cancel", u"cancel", u"Exit this screen"},
      {u"frmBKErrNotify", u"lbl_cancel", u"cancel", u"Exit this screen"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(base::ToUtf8(c.form + u"." + c.clicked));
    const auto tip = testkit::RightClickTip(fake.ui, c.form, c.clicked);
    ASSERT_TRUE(tip.has_value());
    EXPECT_EQ(tip->text, c.text);
    EXPECT_EQ(tip->tool, fake.ui.FindControl(fake.ui.FindForm(c.form), c.tool));
  }
}

}  // namespace
