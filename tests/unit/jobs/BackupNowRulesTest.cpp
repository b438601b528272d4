// Backup Now: the menu's lists by mode and their messages, then the action's fixed
// order of checks and the immediate record it leaves.
#include "jobs/BackupNowRules.h"

#include "JobsFixture.h"
#include "jobstore/DBaction.h"

namespace jobstest {
namespace {

using A = kit::ScriptedUi::Answer;
using jobs::BackupNowEnd;
using jobstore::BackupNowOutcome;

class BackupNowTest : public JobsTest {
 protected:
  BackupNowTest() { SetIni(u"UserName", u"jsmith"); }
  void PutSets(const std::vector<Text>& lines) { PutLines(Common(u"BacksetData.txt"), lines); }
  BackupNowOutcome Prepare() { return jobs::PrepareBackupNow(app, prompts); }
  jobs::BackupNowClickResult Run() { return jobs::cmdBackupNow_Click(app, prompts, 10); }
  void Choose(long row) { app.Store.LstBackupSet.SelectedRow = row; }
};

TEST_F(BackupNowTest, MirrorModeRunsASetTwiceRefused) {
  PutSets({u"Documents\b1\b2", u"Photos\b1", u"autobkupqvwin\b1"});
  PutSchedule(u"0", {kDocs});
  // The list and the record are the job store's; here the action's ends and the
  // screen's state around them.
  ASSERT_EQ(Prepare(), BackupNowOutcome::Show);
  EXPECT_TRUE(app.Store.BackupNowMode);
  auto first = Run();
  EXPECT_EQ(first.end, BackupNowEnd::Close);
  EXPECT_TRUE(first.recordAdded);
  EXPECT_EQ(Asked().size(), 1u);
  EXPECT_EQ(jobstore::ParseScheduleLine(Schedule().back()).record.BackupSetName, u"Documents");
  EXPECT_EQ(app.Store.ChosenDestination, u"My Corvane/");
  EXPECT_TRUE(app.Jobs.empty());

  // The same set again: refused, the screen stays in front.
  ASSERT_EQ(Prepare(), BackupNowOutcome::Show);
  auto second = Run();
  EXPECT_EQ(second.end, BackupNowEnd::Front);
  EXPECT_FALSE(second.recordAdded);
}

TEST_F(BackupNowTest, ARecordThatCannotBeWrittenIsToldAndTheScreenStays) {
  PutSets({u"Documents\b1"});
  PutSchedule(u"0", {kDocs});
  const auto before = Schedule();
  ASSERT_EQ(Prepare(), BackupNowOutcome::Show);
  fake.fs.SetSpaceLeft(0);
  const auto result = Run();
  EXPECT_FALSE(result.recordAdded);
  EXPECT_EQ(result.end, BackupNowEnd::Front);
  EXPECT_EQ(Asked(), std::vector<Text>{u"Unable to schedule the record immediately. Reason : "
                                       u"There is not enough space on the disk."});
  EXPECT_EQ(Schedule(), before);
}

// The list's own messages (each mode's) reach the user through the screen's boxes.
TEST_F(BackupNowTest, TheMenusMessagesReachTheUser) {
  EXPECT_EQ(Prepare(), BackupNowOutcome::Close);
  EXPECT_EQ(Asked(), std::vector<Text>{Msg(16)});
  EXPECT_EQ(ui.UnansweredCount(), 1);  // the OK box closed, as nobody pressed OK
}

TEST_F(BackupNowTest, TheOrderOfTheChecks) {
  PutSets({u"QVSQLServerBksetPay\b1", u"Photos\b1"});
  // The plug-in comes first, even before the disabled jobs.
  SetIni(u"DisableAllSchdulers", u"1");
  ASSERT_EQ(Prepare(), BackupNowOutcome::Show);
  EXPECT_EQ(Run().end, BackupNowEnd::Stay);
  EXPECT_EQ(Asked(), std::vector<Text>{Msg(500)});
  // Disabled, the answer No: nothing is written and the screen comes to the front.
  Choose(2);
  ui.Queue(A::No());
  EXPECT_EQ(Run().end, BackupNowEnd::Front);
  EXPECT_EQ(Asked().back(), Msg(6));
  EXPECT_FALSE(fake.fs.FileExists(app.ScheduleFilePath));
  EXPECT_EQ(frame::ReadSetting(app, u"DisableAllSchdulers"), u"1");
  // Yes enables them and goes on.
  ui.Queue(A::Yes());
  EXPECT_EQ(Run().end, BackupNowEnd::Close);
  EXPECT_EQ(frame::ReadSetting(app, u"DisableAllSchdulers"), u"0");
  EXPECT_EQ(Schedule().size(), 2u);
  // No row chosen: nothing; an empty list: its message.
  ASSERT_EQ(Prepare(), BackupNowOutcome::Show);
  Choose(0);
  EXPECT_EQ(Run().end, BackupNowEnd::Stay);
  app.Store.LstBackupSet.Clear();
  const size_t before = Asked().size();
  Run();
  EXPECT_EQ(Asked().size(), before + 1);
  EXPECT_EQ(Asked().back(), Msg(4));
}

TEST_F(BackupNowTest, ARowWithoutAName) {
  // A set line without its separator gives a row with no name.
  PutSets({u"NoSeparator", u"Photos\b1"});
  ASSERT_EQ(Prepare(), BackupNowOutcome::Show);
  ASSERT_EQ(app.Store.LstBackupSet.Rows[0].Name, u"");
  EXPECT_EQ(Run().end, BackupNowEnd::Stay);
  EXPECT_EQ(Asked(), std::vector<Text>{Msg(3)});
  EXPECT_FALSE(fake.fs.FileExists(app.ScheduleFilePath));
}

}  // namespace
}  // namespace jobstest
