// BacksetData.txt, Mailid.txt and the Backup Now list.
#include "JobStoreFixture.h"
#include "jobstore/BackupSets.h"

namespace jobstore::test {
namespace {

using SetsTest = JobStoreTest;

Text Set(const Text& name) { return name + u"\bC:\\data\b1\b0"; }

Text Job(const Text& no, const Text& name, const Text& dest, const Text& user) {
  return Line({{0, no}, {1, name}, {4, dest}, {16, user}});
}

TEST_F(SetsTest, MirrorListLeavesOutTheSpecialSetsAndDuplicates) {
  SetIni(u"Corvane", u"UserName", u"jsmith");
  fake.fs.PutFile(app.BacksetFilePath,
                  Utf16File({Set(u"Docs"), Set(u"restore itemset"), Set(u"AUTOEXCHANGE01"),
                             Set(u"AutoBkupQVWin"), u"plain line", u"   ", Set(u"DOCS"),
                             Set(u"Default BackupSet"), u"other plain"}));
  EXPECT_EQ(FillBackupNowList(app), BackupNowOutcome::Show);
  EXPECT_TRUE(app.Store.MirrorMode);
  const auto& list = app.Store.LstBackupSet;
  ASSERT_EQ(list.Rows.size(), 3u);
  EXPECT_EQ(list.Rows[0], (BackupNowRow{u"Docs", u"My Corvane/", u"jsmith", u"-1"}));
  EXPECT_EQ(list.Rows[1].Name, u"");  // a line without a name: the first one only
  EXPECT_EQ(list.Rows[2].Name, u"Default BackupSet");
  EXPECT_EQ(list.SelectedRow, 1);
  EXPECT_EQ(app.Store.BackupSetList.size(), 6u);
}

TEST_F(SetsTest, MirrorModeMessages) {
  // No set file at all.
  EXPECT_EQ(FillBackupNowList(app), BackupNowOutcome::Close);
  // A set file holding only sets that are never offered.
  fake.fs.PutFile(app.BacksetFilePath, Utf16File({Set(u"autobkupqvwin")}));
  SetIni(u"Corvane", u"MIRROR", u" 1 ");
  EXPECT_EQ(FillBackupNowList(app), BackupNowOutcome::Close);
  ASSERT_EQ(messages.size(), 2u);
  EXPECT_EQ(messages[0],
            u"Create a Backup set for backup using the Corvane for Windows application.");
  EXPECT_EQ(messages[1],
            u"Create a Backup set using the Corvane for Windows application for backup.");
}

TEST_F(SetsTest, RelativeListOneRowPerSetDestinationAndUser) {
  SetIni(u"Corvane", u"MIRROR", u"0");
  app.UserName = u"JSmith";
  PutSchedule({u"0", Job(u"4", u"Docs", u"My Corvane/", u"jsmith"),
               Job(u"7", u" docs ", u"my corvane/", u"JSMITH "),
               Job(u"8", u"Docs", u"Other/", u"jsmith"), Job(u"9", u"Docs", u"Other/", u"bob"),
               Job(u"10", u"Restore ItemSet", u"My Corvane/", u"jsmith"),
               Job(u"11", u"  ", u"My Corvane/", u"jsmith")});
  app.Store.BackupNowMode = true;
  EXPECT_EQ(FillBackupNowList(app), BackupNowOutcome::Show);
  EXPECT_FALSE(app.Store.MirrorMode);
  EXPECT_FALSE(app.Store.BackupNowMode);
  EXPECT_EQ(app.Store.LstBackupSet.Rows,
            (std::vector<BackupNowRow>{{u"Docs", u"My Corvane/", u"jsmith", u"4"},
                                       {u"Docs", u"Other/", u"jsmith", u"8"}}));
}

TEST_F(SetsTest, RelativeModeWithoutScheduleOrWithOthersJobs) {
  SetIni(u"Corvane", u"MIRROR", u"relative");
  EXPECT_EQ(FillBackupNowList(app), BackupNowOutcome::Nothing);
  EXPECT_TRUE(messages.empty());
  PutSchedule({u"0", Job(u"1", u"Docs", u"My Corvane/", u"bob")});
  EXPECT_EQ(FillBackupNowList(app), BackupNowOutcome::Close);
  ASSERT_EQ(messages.size(), 1u);
  EXPECT_EQ(messages[0],
            u"No scheduled data available. You can use the 'Backup now' option in 'Relative "
            u"Path' mode only for the Backup sets that have already been scheduled.");
}

TEST_F(SetsTest, MailListReadsUniqueAddresses) {
  fake.fs.PutFile(app.MailFilePath,
                  Utf16File({u"a@x.com", u"A@X.COM", u"b@y.org", u"", u"a@x.com"}));
  std::vector<Text> shown;
  Sch_LoadMailidList(app, &shown);
  EXPECT_EQ(app.Store.MailIdList, (std::vector<Text>{u"a@x.com", u"b@y.org", u""}));
  EXPECT_EQ(shown, (std::vector<Text>{u"a@x.com", u"b@y.org"}));
}

TEST_F(SetsTest, MailListOnAScreenWithoutTheControlStopsAtTheFirstRow) {
  fake.fs.PutFile(app.MailFilePath, Utf16File({u"a@x.com"}));
  Sch_LoadMailidList(app, nullptr);
  EXPECT_EQ(app.Store.MailIdList, std::vector<Text>{u"a@x.com"});
  EXPECT_EQ(Trace().back(),
            u"Error Reason :Object doesn't support this property or method in procedure "
            u"Sch_LoadMailidList of Class Module Scheduler");
}

TEST_F(SetsTest, SavingAnAddressKeepsTenAndNeverReachesTheFile) {
  std::vector<Text> ten;
  for (int i = 0; i < 10; ++i) ten.push_back(u"u" + base::FromNumber(i) + u"@x.com");
  fake.fs.PutFile(app.MailFilePath, Utf16File(ten));
  const std::string before = fake.fs.Bytes(app.MailFilePath);
  Sch_LoadMailidList(app, nullptr);

  Sch_SaveMailid(app, u"new@x.com");
  auto& list = app.Store.MailIdList;
  ASSERT_EQ(list.size(), 10u);
  EXPECT_EQ(list.front(), u"new@x.com");
  EXPECT_EQ(list.back(), u"u9@x.com");
  EXPECT_EQ(std::count(list.begin(), list.end(), u"u0@x.com"), 0);

  Sch_SaveMailid(app, u"new@x.com");  // present exactly: nothing changes but the write
  Sch_SaveMailid(app, u"");
  EXPECT_EQ(list.size(), 10u);
  EXPECT_EQ(list.front(), u"new@x.com");

  // Present in another case: the first entry goes all the same, nothing is added.
  Sch_SaveMailid(app, u" U5@X.COM ");
  EXPECT_EQ(list.size(), 9u);
  EXPECT_EQ(list.front(), u"u1@x.com");

  // The write goes to the program folder joined with the full path: the file stays.
  EXPECT_EQ(fake.fs.Bytes(app.MailFilePath), before);
  auto trace = Trace();
  EXPECT_NE(std::find(trace.begin(), trace.end(), u"Content of backupset Monitor ,u1@x.com"),
            trace.end());
}

TEST_F(SetsTest, WriteBackdataReversesTheCollection) {
  fake.fs.AddFolders(u"C:\\QV\\lists");
  DB_WriteBackdata(app, {u"c", u"b", u"a"}, u"lists\\m.txt");
  EXPECT_EQ(Lines(u"C:\\QV\\lists\\m.txt"), (std::vector<Text>{u"a", u"b", u"c"}));
}

}  // namespace
}  // namespace jobstore::test
