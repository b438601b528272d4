// The program's screens behind the monitor's menu hooks and the notices' links.
#include <gtest/gtest.h>

#include "kit/ScriptedUi.h"
#include "frame/Settings.h"
#include "program/ProgramScreens.h"
#include "notify/Notices.h"
#include "notify/frmBKErrNotify.h"
#include "testkit/FrameFixture.h"

namespace {

// What each screen does is its folder's tests'; here, that each hook opens its screen,
// modally or beside the monitor.
TEST(ProgramScreensTest, TheMenusOpenTheirScreens) {
  testkit::CommonFixture fx;
  kit::ScriptedUi ui;
  program::ProgramScreens screens(fx.app, ui);
  screens.OpenManageScheduledJobs();
  ASSERT_EQ(ui.ShownForms().size(), 1u);
  EXPECT_EQ(ui.ShownForms()[0].name, u"frmManageScheduledJobs");
  EXPECT_TRUE(ui.ShownForms()[0].modal);
  screens.OpenSessionLog();
  EXPECT_EQ(ui.ShownForms().back().name, u"frmSessionLog");
  EXPECT_FALSE(ui.ShownForms().back().modal);
}

// The missed-backup notice's link: the notice goes and the feedback report comes up
// beside the monitor, not modally, with the hand over the link.
TEST(ProgramScreensTest, TheMissedBackupLinkOpensTheReportNotModally) {
  testkit::FrameFixture fx;
  fx.fake.fs.AddFolders(u"C:\\QV\\QVCOMMON\\alice");
  fx.fake.clock.now = {2026, 11, 15, 10, 0, 0};
  kit::ScriptedUi ui;
  program::ProgramScreens screens(fx.app, ui);
  frame::WriteSetting(fx.app, u"NotifyUsers", u"<<alice");
  const base::Text file = fx.Common(u"alice\\qvwinserver.ini");
  fx.fake.profile.WriteString(u"Corvane", u"Notify_Err", u"1", file);
  fx.fake.profile.WriteString(u"Corvane", u"DateFailed", u"20261101", file);
  screens.CheckMissedBackup();
  notify::frmBKErrNotify& notice = screens.Notices().ErrNotice();
  ASSERT_TRUE(notice.Visible());
  EXPECT_EQ(notice.lblLink.ControlPointer(), kit::MousePointer::Hand);
  notice.lblLink.RaiseClick();
  kit::Form* report = ui.KeptScreen(u"frmErrorReport");
  ASSERT_NE(report, nullptr);
  EXPECT_TRUE(report->Visible());
  EXPECT_EQ(ui.ShownForms().back().name, u"frmErrorReport");
  EXPECT_FALSE(ui.ShownForms().back().modal);
}

}  // namespace
