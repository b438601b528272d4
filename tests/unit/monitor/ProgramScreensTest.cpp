// The program's screens behind the monitor's menu hooks: the job list and Backup Now.
#include <gtest/gtest.h>

#include "kit/MessageTable.h"
#include "kit/ScriptedUi.h"
#include "monitor/ProgramScreens.h"
#include "support/FrameFixture.h"

namespace {

TEST(ProgramScreensTest, TheMenusOpenTheJobScreens) {
  testkit::FrameFixture fx;
  fx.fake.fs.AddFolders(u"C:\\QV\\QVCOMMON");
  kit::ScriptedUi ui;
  monitor::ProgramScreens screens(fx.app, ui);
  fx.app.Store.BackupNowMode = true;
  bool sawList = false;
  ui.OnShow(u"frmManageScheduledJobs", [&](kit::Form& f) {
    sawList = f.Caption() == u"Manage Scheduled Jobs";
    EXPECT_FALSE(fx.app.Store.BackupNowMode);
  });
  EXPECT_TRUE(screens.OpenManageScheduledJobs());
  EXPECT_TRUE(sawList);
  ASSERT_EQ(ui.ShownForms().size(), 1u);
  EXPECT_TRUE(ui.ShownForms()[0].modal);
  // Backup Now in mirror mode without a set file: its message and no screen.
  EXPECT_TRUE(screens.OpenBackupNow());
  ASSERT_EQ(ui.Questions().size(), 1u);
  EXPECT_EQ(ui.Questions()[0].text, kit::GetMessage(fx.app, 16));
  EXPECT_EQ(ui.ShownForms().back().name, u"MesgBox");
}

}  // namespace
