// The session files: names to rows, the listing's order, rows back to names, view and
// delete, on a fake disk.
#include <gtest/gtest.h>

#include <random>
#include <tuple>

#include "kit/Form.h"
#include "kit/ListView.h"
#include "sessions/SessionFiles.h"
#include "sessions/SessionPager.h"
#include "testkit/FrameFixture.h"
#include "testkit/SessionInsertion.h"

namespace sessions {
namespace {

using testkit::U8;

const Text kFolder = u"C:\\QV\\QVCOMMON\\Session";

class SessionFilesTest : public ::testing::Test, protected testkit::FrameFixture {
 protected:
  SessionFilesTest() { SetUpSessionList(list); }

  void Folder() { fake.fs.AddFolders(kFolder); }
  void Put(const Text& name) {
    Folder();
    fake.fs.PutFile(kFolder + u"\\" + name, "log");
  }
  bool Exists(const Text& name) { return fake.fs.FileExists(kFolder + u"\\" + name); }
  // The list holding the rows of these names, in this order.
  void Rows(const std::vector<Text>& names) {
    FindSessionFiles(app, list, names, 1, static_cast<int>(names.size()));
  }

  kit::Form holder{u"frmSessionLog"};
  kit::ListView list{holder, u"LstSessionLogView", {}};
};

TEST_F(SessionFilesTest, TheWordTellsTheKindItsDescriptionAndIcon) {
  const struct {
    Text word, description;
    int icon;
  } kinds[] = {
      {u"Backup", u"Interactive Backup ", kIconBackup},
      {u"Restore", u"Interactive Restore ", kIconRestore},
      {u"Continuous_Backup", u"Continuous Backup", kIconBackup},
      // Words compare with regard to case; an unknown one has no description or icon.
      {u"backup", u"", kIconNone},
  };
  for (const auto& k : kinds) {
    auto row = SessionRowOf(app, k.word + u" 11-15-2026  05-02-33.txt");
    ASSERT_TRUE(row) << U8(k.word);
    EXPECT_EQ(row->description, k.description) << U8(k.word);
    EXPECT_EQ(row->icon, k.icon) << U8(k.word);
    EXPECT_EQ(row->startTime, u" 11-15-2026  05-02-33") << U8(k.word);
    EXPECT_EQ(row->sortKey, u"202611150502") << U8(k.word);
  }
  EXPECT_FALSE(SessionRowOf(app, u"Backup.txt"));
}

TEST_F(SessionFilesTest, TheListingPassesOverPluginsFoldersAndNamesWithoutABlank) {
  EXPECT_TRUE(ListSessionFiles(app).empty());  // no folder
  Put(u"Backup 11-15-2026  05-02-33.txt");
  Put(u"QVSystemState 11-16-2026  05-02-33.txt");
  Put(u"QVSharePoint 11-16-2026  05-02-33.txt");
  Put(u"notes.txt");
  Put(u"Archive 11-14-2026  09-00-00.txt");
  fake.fs.AddFolders(kFolder + u"\\Restore 11-17-2026  05-02-33");
  const std::vector<Text> names = ListSessionFiles(app);
  EXPECT_EQ(names, (std::vector<Text>{u"Backup 11-15-2026  05-02-33.txt",
                                      u"Archive 11-14-2026  09-00-00.txt"}));
  // The unknown word is listed, without an icon.
  Rows(names);
  ASSERT_EQ(list.Count(), 2);
  EXPECT_EQ(list.Item(2).IconKey(), u"");
  EXPECT_EQ(list.Item(1).IconKey(), u"session_backup");
}

TEST_F(SessionFilesTest, NewestFirstAndOfOneMinuteTheOneFoundLaterFirst) {
  // The fake disk lists by name: Backup, then Schedule.
  Put(u"Schedule 11-15-2026  05-02-10.txt");
  Put(u"Backup 11-15-2026  05-02-50.txt");
  Put(u"Schedule 01-02-2027  00-00-00.txt");
  Put(u"Schedule 12-31-2025  23-59-59.txt");
  const std::vector<Text> names = ListSessionFiles(app);
  EXPECT_EQ(names, (std::vector<Text>{
                       u"Schedule 01-02-2027  00-00-00.txt",
                       u"Schedule 11-15-2026  05-02-10.txt",  // found last of the minute
                       u"Backup 11-15-2026  05-02-50.txt",    // found first: seconds do not count
                       u"Schedule 12-31-2025  23-59-59.txt",
                   }));
  // The two share the minute's key, which leaves the seconds out.
  EXPECT_EQ(ListingKeyOf(app, names[2]), u"202611150502");
}

TEST_F(SessionFilesTest, AFilterFlagStopsTheListingAndAdmitsOnlyItsPrefixAsRows) {
  Put(u"Backup 11-15-2026  05-02-33.txt");
  Put(u"QVSystemState 11-16-2026  05-02-33.txt");
  SessionFilter filter;
  filter.bShowSystemState = true;
  EXPECT_TRUE(ListSessionFiles(app, filter).empty());
  auto row = SessionRowOf(app, u"QVSystemState 11-16-2026  05-02-33.txt", filter);
  ASSERT_TRUE(row);
  EXPECT_EQ(row->description, u"System State Backup");
  EXPECT_EQ(row->icon, kIconBackup);
  EXPECT_FALSE(SessionRowOf(app, u"Backup 11-15-2026  05-02-33.txt", filter));
  EXPECT_FALSE(SessionRowOf(app, u"QVOracleLog 11-16-2026  05-02-33.txt", filter));
  filter = {};
  filter.bShowSharePoint = true;
  EXPECT_EQ(SessionRowOf(app, u"QVSharePoint 11-16-2026  05-02-33.txt", filter)->description,
            u"SharePoint Server Backup-Restore");
}

TEST_F(SessionFilesTest, EveryKnownRowLeadsBackToItsFileSaveTheTwoExceptions) {
  const Text time = u" 11-15-2026  05-02-33";
  for (const Text word :
       {u"Backup", u"Restore", u"Schedule", u"Automatic_Sync", u"Delete", u"Trash_Delete",
        u"Empty_Trash", u"Create_Directory", u"Rename", u"Move_to_Original", u"Sync"}) {
    const Text name = word + time + u".txt";
    auto row = SessionRowOf(app, name);
    EXPECT_EQ(SessionFileNameOf(row->description, row->startTime, NameFor::View), name);
    EXPECT_EQ(SessionFileNameOf(row->description, row->startTime, NameFor::Delete), name);
  }
  for (const PluginPrefix& p : PluginPrefixes()) {
    const Text name = p.prefix + time + u".txt";
    const Text viewed = SessionFileNameOf(p.description, time, NameFor::View);
    const Text deleted = SessionFileNameOf(p.description, time, NameFor::Delete);
    EXPECT_EQ(viewed, name);
    // Deleting does not know the SharePoint logs: the words after the first blank.
    EXPECT_EQ(deleted, Text(p.prefix) == u"QVSharePoint"
                           ? u"Server Backup-Restore 11-15-2026  05-02-33.txt"
                           : name);
  }
  // A continuous backup: deleting doubles the fixed time, viewing looks for a Backup.
  const Text start = u" 11-15-2026  00-00-00";
  EXPECT_EQ(SessionFileNameOf(u"Continuous Backup", start, NameFor::Delete),
            u"Continuous_Backup 11-15-2026  00-00-00  00-00-00.txt");
  EXPECT_EQ(SessionFileNameOf(u"Continuous Backup", start, NameFor::View),
            u"Backup 11-15-2026  00-00-00.txt");
  // An unknown word's row: an empty description.
  EXPECT_EQ(SessionFileNameOf(u"", time, NameFor::View), u" 11-15-2026  05-02-33.txt");
}

TEST_F(SessionFilesTest, ViewOpensAnExistingFileThroughTheShellAndOpenWithOn31) {
  Put(u"Schedule 11-15-2026  05-02-33.txt");
  Rows({u"Schedule 11-15-2026  05-02-33.txt", u"Archive 11-15-2026  05-02-33.txt"});
  GetSessionFileSelected_View(app, list, 0);  // nothing selected
  GetSessionFileSelected_View(app, list, 2);  // the unknown word finds no file
  EXPECT_TRUE(fake.shell.executed.empty());

  GetSessionFileSelected_View(app, list, 1);
  const Text path = u"C:\\QV\\QVCOMMON\\Session\\Schedule 11-15-2026  05-02-33.txt";
  ASSERT_EQ(fake.shell.executed.size(), 1u);
  const auto& run = fake.shell.executed[0];
  EXPECT_EQ(std::tie(run.ownerWindow, run.verb, run.file, run.parameters, run.showCommand),
            std::make_tuple(std::uintptr_t{0}, Text(u"open"), path, Text(), 1));
  EXPECT_TRUE(fake.shell.runs.empty());

  // "Open with" comes from the system folder by its full path, never by a bare name
  // that the program's or the current folder could answer.
  fake.shell.executeResult = 31;
  GetSessionFileSelected_View(app, list, 1);
  ASSERT_EQ(fake.shell.runs.size(), 1u);
  EXPECT_EQ(fake.shell.runs[0].first,
            u"\"C:\\Windows\\system32\\RUNDLL32.EXE\" shell32.dll,OpenAs_RunDLL " + path);
  EXPECT_FALSE(fake.shell.runs[0].second);
  // A system that cannot name its folder gets no "Open with" at all.
  fake.system.systemFolder.clear();
  GetSessionFileSelected_View(app, list, 1);
  EXPECT_EQ(fake.shell.runs.size(), 1u);
}

TEST_F(SessionFilesTest, ViewOfAContinuousBackupRowOpensTheBackupOfThatTime) {
  Put(u"Continuous_Backup 11-15-2026  00-00-00.txt");
  Rows({u"Continuous_Backup 11-15-2026  00-00-00.txt"});
  GetSessionFileSelected_View(app, list, 1);
  EXPECT_TRUE(fake.shell.executed.empty());
  Put(u"Backup 11-15-2026  00-00-00.txt");
  GetSessionFileSelected_View(app, list, 1);
  ASSERT_EQ(fake.shell.executed.size(), 1u);
  EXPECT_EQ(platform::FileNameOf(fake.shell.executed[0].file), u"Backup 11-15-2026  00-00-00.txt");
}

TEST_F(SessionFilesTest, DeleteRemovesACheckedRowFirstThenItsFileWhenItCan) {
  const std::vector<Text> names = {u"Schedule 11-15-2026  05-02-33.txt",
                                   u"Continuous_Backup 11-14-2026  00-00-00.txt",
                                   u"Restore 11-13-2026  01-00-00.txt"};
  for (const Text& n : names) Put(n);
  Rows(names);
  EXPECT_FALSE(GetSessionFileSelected_Delete(app, list, 1));  // not checked
  EXPECT_EQ(list.Count(), 3);

  for (int i = 1; i <= 3; ++i) list.Item(i).SetChecked(true);
  // Deleted without force: a read-only file stays, and the failure is traced.
  fake.fs.SetReadOnly(kFolder + u"\\" + names[2], true);
  EXPECT_TRUE(GetSessionFileSelected_Delete(app, list, 3));
  EXPECT_TRUE(
      TraceMentions(u"Error Reason :Permission denied in procedure "
                    u"GetSessionFileSelected_Delete of Class Module TreeViewControl"));
  EXPECT_TRUE(GetSessionFileSelected_Delete(app, list, 2));  // the name finds no file
  EXPECT_TRUE(GetSessionFileSelected_Delete(app, list, 1));
  EXPECT_EQ(list.Count(), 0);
  EXPECT_FALSE(Exists(names[0]));
  EXPECT_TRUE(Exists(names[1]));
  EXPECT_TRUE(Exists(names[2]));
  // The next listing brings back the rows whose files stayed.
  EXPECT_EQ(ListSessionFiles(app), (std::vector<Text>{names[1], names[2]}));

  EXPECT_FALSE(GetSessionFileSelected_Delete(app, list, 1));  // an empty list
  Rows({names[1]});
  EXPECT_FALSE(GetSessionFileSelected_Delete(app, list, 5));
  EXPECT_TRUE(
      TraceMentions(u"in procedure GetSessionFileSelected_Delete of Class Module TreeViewControl"));
}

TEST_F(SessionFilesTest, TheWalkLetsTheUserInterfaceThroughAsItGoes) {
  Folder();
  for (int i = 0; i < 600; ++i)
    fake.fs.PutFile(kFolder + u"\\Schedule 11-15-2026  05-" +
                        base::PadLeft(base::FromNumber(i % 60), 2, u'0') + u"-" +
                        base::FromNumber(i) + u".txt",
                    "");
  int turns = 0;
  EXPECT_EQ(ListSessionFiles(app, {}, [&] { ++turns; }).size(), 600u);
  EXPECT_EQ(turns, 600 / kFilesPerTurn);
}

// Random folders: what the fast listing gives is what the design's insertion gives,
// for any order of finding, with many sessions in one minute and odd names among them.
TEST_F(SessionFilesTest, TheFastOrderIsTheInsertionOrderForRandomFolders) {
  std::mt19937 random(20261125);
  const Text words[] = {u"Backup", u"Restore", u"Schedule", u"Sync", u"Archive", u"QVx", u""};
  auto pick = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
  auto two = [&](int n) { return base::PadLeft(base::FromNumber(pick(n)), 2, u'0'); };
  for (int round = 0; round < 200; ++round) {
    std::vector<SessionEntry> found;
    const int count = pick(120);
    for (int i = 0; i < count; ++i) {
      Text name = words[pick(7)] + u" " + two(3) + u"-" + two(3) + u"-202" +
                  base::FromNumber(pick(3)) + u"  " + two(3) + u"-" + two(3) + u"-" + two(60) +
                  u".txt";
      if (pick(10) == 0)
        name = name.substr(0, static_cast<size_t>(pick(static_cast<int>(name.size()))) + 1);
      if (name.find(u' ') == Text::npos) continue;
      found.push_back({ListingKeyOf(app, name), name});
    }
    ASSERT_EQ(NewestFirst(found), testkit::InsertionNewestFirst(found)) << "round " << round;
  }
}

}  // namespace
}  // namespace sessions
