// Changing scheduleData.txt: update, delete, the state line, record numbers and the
// Backup Now record.
#include "JobStoreFixture.h"

namespace jobstore::test {
namespace {

using WriteTest = JobStoreTest;

TEST_F(WriteTest, UpdateWithNoScheduleOnlyRemoves) {
  PutSchedule({u"0", Rec(u"1"), Rec(u"2"), u"loose text", Rec(u"3")});
  ScheduleRecord r = Numbered(u"2");
  static_cast<void>(DB_WriteSchdata(app, r, true));
  // A line without a separator is lost at the rewrite, as the design has it.
  EXPECT_EQ(ScheduleBytes(), Utf16File({u"0", Rec(u"1"), Rec(u"3")}));
  EXPECT_EQ(app.RecordCount, 2);
  EXPECT_EQ(r.EngineFlag, u"0");
}

TEST_F(WriteTest, DeleteComparesTheWholeNumberAndKeepsAnyFirstLine) {
  PutSchedule({u"garbage first", Rec(u"1"), Rec(u"12"), Rec(u"121"), Rec(u"12", u"Twice")});
  static_cast<void>(DB_DeleteRecord(app, u"12", SchedulePath()));
  EXPECT_EQ(ScheduleLines(), (std::vector<Text>{u"garbage first", Rec(u"1"), Rec(u"121")}));

  // Nothing happens for an empty number or an absent file.
  std::string before = ScheduleBytes();
  static_cast<void>(DB_DeleteRecord(app, u"", SchedulePath()));
  EXPECT_EQ(ScheduleBytes(), before);
  static_cast<void>(DB_DeleteRecord(app, u"1", Common(u"none.txt")));
  EXPECT_FALSE(fake.fs.FileExists(Common(u"none.txt")));
}

TEST_F(WriteTest, DeleteOnAnotherFileHasNoStateLine) {
  Text path = Common(u"other.txt");
  fake.fs.PutFile(path, Utf16File({Join({u"1", u"a"}, kB), Join({u"2", u"b"}, kB), u"x"}));
  static_cast<void>(DB_DeleteRecord(app, u"1", path));
  EXPECT_EQ(Lines(path), std::vector<Text>{Join({u"2", u"b"}, kB)});
}

TEST_F(WriteTest, FirstLineIsMadeWhenMissingAndLeftAloneWhenGood) {
  static_cast<void>(DB_WriteFirstLine(app));
  EXPECT_EQ(ScheduleBytes(), Utf16File({u"0"}));

  PutSchedule({u"2", Rec(u"1")});
  std::string good = ScheduleBytes();
  int writes = fake.fs.WriteCount();
  static_cast<void>(DB_WriteFirstLine(app));
  EXPECT_EQ(ScheduleBytes(), good);
  EXPECT_EQ(fake.fs.WriteCount(), writes);

  PutSchedule({u"", Rec(u"1")});
  static_cast<void>(DB_WriteFirstLine(app));
  EXPECT_EQ(ScheduleBytes(), Utf16File({u"0"}));
}

// That the word changes the first unit and nothing else is the schedule fuzz target's
// check on every file of its corpus.
TEST_F(WriteTest, StateWordOnAMissingFileAndOfTwoCharacters) {
  PutSchedule({u"1", Rec(u"1")});
  static_cast<void>(SetStateWord(app, SchedulePath(), u" 2 "));
  EXPECT_EQ(ScheduleLines()[0], u"2");

  fake.fs.DeleteFile(SchedulePath());
  static_cast<void>(SetStateWord(app, SchedulePath(), u"2"));
  EXPECT_EQ(ScheduleBytes(), Utf16File({u"2"}));

  // A value of two characters makes the state line two long: the caller's business.
  static_cast<void>(SetStateWord(app, SchedulePath(), u"21"));
  EXPECT_EQ(ScheduleLines(), std::vector<Text>{u"21"});
}

TEST_F(WriteTest, NewNumberIsTheFirstGapAmongPositiveNumbers) {
  EXPECT_EQ(DB_GetNewSchRecordNo(app, 0), 1);  // no file
  PutSchedule({u"0", Rec(u"0"), Rec(u"3"), Rec(u"1"), Rec(u"2"), u"17 no separator"});
  EXPECT_EQ(DB_GetNewSchRecordNo(app, 4), 4);  // the Run-now "0" is not in the way
  PutSchedule({u"0", Rec(u"2"), Rec(u"3")});
  EXPECT_EQ(DB_GetNewSchRecordNo(app, 2), 1);  // deleted numbers come back
  // A number that reads only in part counts by its leading digits; text counts as 0.
  PutSchedule({u"0", Rec(u"1x"), Rec(u"abc"), Rec(u" 2")});
  EXPECT_EQ(DB_GetNewSchRecordNo(app, 3), 3);
}

class ImmediateTest : public JobStoreTest {
 protected:
  ImmediateTest() {
    app.Store.BackupNowMode = true;
    fake.settings.values[u"ENCONjsmith"] = u"1";
    SetIni(u"Corvane", u"COMP", u"1");
  }
  void Choose(const Text& set, const Text& source) {
    app.Store.ChosenSetName = set;
    app.Store.LstBackupSet.Rows = {{u" " + set + u" ", u"X/", u"u", source}};
    app.Store.LstBackupSet.SelectedRow = 1;
  }
};

TEST_F(ImmediateTest, RecordFromASourceJobCopiesItsIdentity) {
  const Text source = Bars(
      u"3|Docs|03-25-2013 6:41:00|03-18-2013 15:02:33|Dest/|3|2|0|m@x.com|r10|r11|r12|0|r14|3|"
      u"201303250641|bob|pw|0|1234567");
  PutSchedule({u"0", source});
  Choose(u"Docs", u"3");
  DB_ReadSchdata(app, u"", app.Jobs, true);

  EXPECT_EQ(messages.size(), 1u);  // its text is qvjobs backup-now's output
  EXPECT_EQ(ScheduleLines(),
            (std::vector<Text>{
                u"0", source,
                Bars(Text(u"1|Docs|03-18-2013 15:02:33|03-18-2013 15:02:33|Dest/|1|2|1|m@x.com|||"
                          u"r12|1|r14|3|") +
                     kImmediateKey + u"|bob|1|0|")}));
  ASSERT_EQ(app.Jobs.size(), 2u);
  EXPECT_FALSE(app.Store.ImmediateFound);

  // The next load finds it, repairs its Days and says so instead of adding another.
  messages.clear();
  EXPECT_EQ(DB_ReadSchdata(app, u"", app.Jobs, true), 1);
  EXPECT_TRUE(app.Store.ImmediateFound);
  EXPECT_EQ(app.Jobs[1].Days, u"IMMEDIATE");
  ASSERT_EQ(messages.size(), 1u);
  EXPECT_EQ(messages[0],
            u"You have already set up an immediate backup job for this Backup set 'Docs'.");
  EXPECT_EQ(ScheduleLines().size(), 3u);
}

TEST_F(ImmediateTest, RecordWithoutSourceTakesTheAccountDefaults) {
  SetIni(u"Corvane", u"UserName", u"jsmith");
  SetIni(u"Corvane", u"COMP", u"");
  fake.settings.values.clear();
  PutSchedule({u"0", Rec(u"1", u"docs", kImmediateKey)});
  Choose(u"Music", u"-1");
  DB_ReadSchdata(app, u"", app.Jobs, true);
  auto lines = ScheduleLines();
  ASSERT_EQ(lines.size(), 3u);
  EXPECT_EQ(lines[2],
            Bars(Text(u"2|Music|03-18-2013 15:02:33|03-18-2013 15:02:33|My Corvane/|1|1|0|||"
                      u"||0|1||") +
                 kImmediateKey + u"|jsmith|1|0|"));
}

TEST_F(ImmediateTest, SameSetInAnyCaseIsFoundAndNothingIsAdded) {
  PutSchedule({u"0", Rec(u"1", u"DOCS", kImmediateKey)});
  Choose(u"docs", u"-1");
  DB_ReadSchdata(app, u"", app.Jobs, true);
  EXPECT_TRUE(app.Store.ImmediateFound);
  EXPECT_EQ(ScheduleLines().size(), 2u);
}

TEST_F(ImmediateTest, NoWarningsOrNoSelectionOrNoModeAddsNothing) {
  PutSchedule({u"0", Rec(u"1")});
  std::string before = ScheduleBytes();
  Choose(u"Docs", u"-1");
  DB_ReadSchdata(app, u"", app.Jobs, false);
  app.Store.LstBackupSet.SelectedRow = 0;
  DB_ReadSchdata(app, u"", app.Jobs, true);
  app.Store.LstBackupSet.SelectedRow = 1;
  app.Store.BackupNowMode = false;
  DB_ReadSchdata(app, u"", app.Jobs, true);
  EXPECT_EQ(ScheduleBytes(), before);
  EXPECT_TRUE(messages.empty());
}

TEST_F(WriteTest, ImmediateRecordUsesTheLocaleTimeSeparator) {
  fake.locale.timeSeparator = u".";
  app.Store.LstBackupSet.Rows = {{u"Docs", u"", u"", u"-1"}};
  app.Store.LstBackupSet.SelectedRow = 1;
  static_cast<void>(DB_AddImmediateRecord(app, app.Jobs, 1, u"-1"));
  ASSERT_EQ(app.Jobs.size(), 1u);
  EXPECT_EQ(app.Jobs[0].NextRun, u"03-18-2013 15.02.33");
  EXPECT_EQ(app.Jobs[0].RecordNo, u"1");
}

}  // namespace
}  // namespace jobstore::test

namespace jobstore::test {
namespace {

// A disk whose reads end early, as when the engine rewrites the file while it is read.
class CuttingFileSystem : public platform::FakeFileSystem {
 public:
  std::optional<std::string> ReadAll(const Text& path) override {
    auto bytes = FakeFileSystem::ReadAll(path);
    if (bytes && cutAt < bytes->size()) bytes->resize(cutAt);
    return bytes;
  }
  std::optional<std::uint64_t> FileSize(const Text& path) override {
    if (sizeUnknown) return std::nullopt;
    return FakeFileSystem::FileSize(path);
  }
  std::size_t cutAt = std::string::npos;
  bool sizeUnknown = false;
};

class TornReadTest : public JobStoreTest {
 protected:
  TornReadTest() {
    cutting.AddFolders(u"C:\\QV\\QVCOMMON");
    fake.Get().fs = &cutting;
    const Text second =
        Join({u"13", u"Photos"}, kB) + kWorkedLine.substr(kWorkedLine.find(kB + u"03-25-2013"));
    whole = Utf16File({u"0", kWorkedLine, second});
    cutting.PutFile(SchedulePath(), whole);
  }
  CuttingFileSystem cutting;
  std::string whole;
};

TEST_F(TornReadTest, AScheduleReadShortIsNotWrittenBackAndTheTraceSaysSo) {
  // Cut inside the second record, right after a line end, and inside a unit: each is left
  // alone.
  const std::size_t cuts[] = {whole.size() - 40, 2 + 2 * (2 + 1 + kWorkedLine.size() + 2),
                              whole.size() - 41};
  for (std::size_t cut : cuts) {
    cutting.cutAt = cut;
    static_cast<void>(DB_DeleteRecord(app, u"12", SchedulePath()));
    static_cast<void>(SetStateWord(app, SchedulePath(), u"2"));
    static_cast<void>(DB_WriteFirstLine(app));
    EXPECT_EQ(cutting.Bytes(SchedulePath()), whole) << "cut at " << cut;
  }
  // A short read whose file size cannot be asked for is no whole read either.
  cutting.sizeUnknown = true;
  static_cast<void>(DB_DeleteRecord(app, u"12", SchedulePath()));
  static_cast<void>(SetStateWord(app, SchedulePath(), u"2"));
  EXPECT_EQ(cutting.Bytes(SchedulePath()), whole);
  cutting.sizeUnknown = false;

  int traced = 0, sizeUnknown = 0;
  cutting.cutAt = std::string::npos;
  const auto trace = platform::TextFile::ReadLines(cutting, Common(u"SerTraceFile.txt"));
  ASSERT_TRUE(trace);
  for (const Text& l : *trace) {
    traced += l == u"The file changed while it was read and is left as it is: " + SchedulePath();
    sizeUnknown +=
        l == u"The size of the file could not be read and it is left as it is: " + SchedulePath();
  }
  EXPECT_EQ(traced, 9);
  EXPECT_EQ(sizeUnknown, 2);

  // Read whole, the same calls do their work.
  static_cast<void>(DB_DeleteRecord(app, u"12", SchedulePath()));
  static_cast<void>(SetStateWord(app, SchedulePath(), u"2"));
  const auto lines = platform::TextFile::ReadLines(cutting, SchedulePath()).value();
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[0], u"2");
  EXPECT_EQ(lines[1].substr(0, 4), u"13\b\b");
}

}  // namespace
}  // namespace jobstore::test
