// Reading scheduleData.txt: the record's cut, the tail rules, the repairs and the
// choice of the next job.
#include "JobStoreFixture.h"

namespace jobstore::test {
namespace {

using ReadTest = JobStoreTest;

// Each field back in its place: a field read into the wrong member is written back
// into the wrong place.
TEST_F(ReadTest, WorkedRecordLoadsAndWritesBackByteForByte) {
  PutSchedule({u"0", kWorkedLine});
  EXPECT_EQ(Load(), 0);
  ASSERT_EQ(app.Jobs.size(), 1u);
  EXPECT_EQ(app.RecordCount, 1);
  ScheduleRecord r = app.Jobs[0];
  EXPECT_EQ(r.BackupSetName, u"Documents");
  EXPECT_EQ(r.Days, u"1234567");
  r.Password = u"secret";  // never reaches the file: position 18 is always "1"
  r.EngineFlag = u"7";     // the writer always stores "0"
  PutSchedule({u"0"});
  static_cast<void>(DB_WriteSchdata(app, r, false));
  EXPECT_EQ(ScheduleBytes(), Utf16File({u"0", kWorkedLine}));
}

TEST_F(ReadTest, OldFormLineKeepsDaysEmptyAndEngineFlagTakesTheRest) {
  // Twenty fields with "ûû": no Days field is known to old lines.
  const Text line = Line(
      {{0, u"4"}, {1, u"Mail"}, {5, u"4"}, {7, u"0"}, {8, u"a@b.com"}, {14, u"3"}, {17, u"pw"}}, 20,
      kU);
  PutSchedule({u"0", line});
  Load();
  ASSERT_EQ(app.Jobs.size(), 1u);
  const ScheduleRecord& r = app.Jobs[0];
  EXPECT_EQ(r.MailAddresses, u"a@b.com");
  EXPECT_EQ(r.MailMode, u"3");
  EXPECT_EQ(r.SortKey, u"201303250641");
  EXPECT_EQ(r.Password, u"pw");
  EXPECT_EQ(r.EngineFlag, u"0" + kU + u"1234567");
  EXPECT_EQ(r.Days, u"");  // frequency 4 would repair a new-form line; old form is left alone
}

TEST_F(ReadTest, OldSeparatorIsLookedForFirstEvenInANewFormLine) {
  // A set name holding "ûû" makes the whole line read in the old form.
  Text line = Join({u"5", u"Caf\u00FB\u00FBe", u"x"}, kB);
  PutSchedule({u"0", line});
  Load();
  ASSERT_EQ(app.Jobs.size(), 1u);
  EXPECT_EQ(app.Jobs[0].RecordNo, u"5\b\bCaf");
  EXPECT_EQ(*KeyOfLine(line), u"5\b\bCaf");
}

TEST_F(ReadTest, ShortRecordsTakeTheDefaultsOfTheTail) {
  auto cut = [](const Text& no, std::size_t count) {
    return Line({{0, no}, {1, u"A"}, {7, u"0"}, {13, u""}, {16, u"bob"}, {17, u"pw"}, {18, u"9"}},
                count);
  };
  PutSchedule({u"0", cut(u"1", 16), cut(u"2", 17), cut(u"3", 18), cut(u"4", 19),
               u"6\b\bB\b\b03-25-2013 6:41:00"});
  Load();
  ASSERT_EQ(app.Jobs.size(), 5u);
  auto& j = app.Jobs;
  // Days is repaired from the frequency index 3.
  auto tail = [](const ScheduleRecord& r) {
    return std::vector<Text>{r.SortKey, r.UserName, r.Password, r.EngineFlag, r.Days};
  };
  EXPECT_EQ(tail(j[0]), (std::vector<Text>{u"201303250641", u"", u"", u"0", u"1234567"}));
  EXPECT_EQ(tail(j[1]), (std::vector<Text>{u"201303250641", u"bob", u"", u"0", u"1234567"}));
  EXPECT_EQ(tail(j[2]), (std::vector<Text>{u"201303250641", u"bob", u"pw", u"0", u"1234567"}));
  EXPECT_EQ(tail(j[3]), (std::vector<Text>{u"201303250641", u"bob", u"pw", u"9", u"1234567"}));
  // Three fields: the third takes the rest, everything after stays empty.
  EXPECT_EQ(j[4].NextRun, u"03-25-2013 6:41:00");
  EXPECT_EQ(j[4].CreatedOn, u"");
  EXPECT_EQ(j[4].SortKey, u"");
  EXPECT_EQ(j[4].EngineFlag, u"0");
}

// A line without a field separator is no record: the load passes over it, whatever it
// holds (a word, a blank line, stray bytes, one letter five million times).
TEST_F(ReadTest, LinesWithoutSeparatorAreIgnored) {
  const Text a = kWorkedLine;
  const Text b = Rec(u"14", u"Photos", u"201303190641");
  Text junk;
  for (char16_t ch = 0x20; ch < 0x2000; ch += 37) junk += ch == 0x08 ? u'x' : ch;
  PutSchedule({u"1", u"garbage line", a, u"", junk, Text(5u << 19, u'Q'), b});
  EXPECT_EQ(DB_NumberOfRecord(app, SchedulePath()), 6);  // it counts lines
  EXPECT_EQ(Load(), 1);
  ASSERT_EQ(app.Jobs.size(), 2u);
  EXPECT_EQ(GetIndexFromRecordNo(app, u"14"), 2);
}

TEST_F(ReadTest, NoFileGivesNothing) {
  app.Jobs.resize(2);  // what an earlier load left
  EXPECT_EQ(Load(), 0);
  EXPECT_TRUE(app.Jobs.empty());
  EXPECT_EQ(DB_NumberOfRecord(app, SchedulePath()), 0);
  std::vector<Text> lines{u"stale"};
  EXPECT_FALSE(DB_ReadRecord(app, u"", SchedulePath(), lines));
  EXPECT_TRUE(lines.empty());
}

TEST_F(ReadTest, CountSkipsTheStateLineOnlyOfTheScheduleFile) {
  PutSchedule({u"0", kWorkedLine});
  fake.fs.PutFile(Common(u"Mailid.txt"), Utf16File({u"a@b.com", u"c@d.com"}));
  // The path is compared upper-cased.
  EXPECT_EQ(DB_NumberOfRecord(app, base::ToUpper(SchedulePath())), 1);
  EXPECT_EQ(DB_NumberOfRecord(app, Common(u"Mailid.txt")), 2);
  std::vector<Text> lines;
  EXPECT_TRUE(DB_ReadRecord(app, u"", Common(u"Mailid.txt"), lines));
  EXPECT_EQ(lines, (std::vector<Text>{u"a@b.com", u"c@d.com"}));
}

TEST_F(ReadTest, ReadRecordByKeyKeepsTheStateLineAndFindsTheFirstMatch) {
  Text other = Join({u"7", u"Second"}, kB);
  Text dup = Join({u"7", u"Third"}, kU);
  PutSchedule({u" 2 ", u"7", other, dup});
  std::vector<Text> lines;
  EXPECT_TRUE(DB_ReadRecord(app, u"7", SchedulePath(), lines));
  EXPECT_EQ(lines, std::vector<Text>{other});
  EXPECT_EQ(app.StateLine, u"2");

  EXPECT_FALSE(DB_ReadRecord(app, u"8", SchedulePath(), lines));
  EXPECT_EQ(lines, std::vector<Text>{u""});

  // The keyed load sizes the list to one and leaves the global count alone.
  app.RecordCount = 42;
  DB_ReadSchdata(app, u"7", app.Jobs, false);
  ASSERT_EQ(app.Jobs.size(), 1u);
  EXPECT_EQ(app.Jobs[0].BackupSetName, u"Second");
  EXPECT_EQ(app.RecordCount, 42);
}

TEST_F(ReadTest, SmallestKeyWinsAndATieKeepsTheEarlierRecord) {
  auto rec = [](const Text& no, const Text& key) {
    return Line({{0, no}, {1, u"S" + no}, {15, key}, {16, u"u"}});
  };
  PutSchedule({u"0", rec(u"1", u"201303250641"), rec(u"2", u"201303200641"),
               rec(u"3", u"201303200641"), rec(u"4", u"300012121504")});
  EXPECT_EQ(Load(), 1);

  PutSchedule({u"0", rec(u"1", u"201303250641"), rec(u"2", kImmediateKey), rec(u"3", kRunningKey)});
  EXPECT_EQ(Load(), 2);  // a running job sorts before an immediate one

  // Keys at or above the search start never win: the first record is the answer.
  PutSchedule({u"0", rec(u"1", u"300012121503"), rec(u"2", u"399912121503")});
  EXPECT_EQ(Load(), 0);
}

TEST_F(ReadTest, DaysRepairFollowsTheFrequencyName) {
  auto rec = [](const Text& no, const Text& name, const Text& freq, const Text& days) {
    return Line({{0, no}, {1, name}, {2, u"03-20-2013 6:41:00"}, {5, freq}, {19, days}});
  };
  PutSchedule({u"0", rec(u"1", u"A", u"1", u""), rec(u"2", u"A", u"2", u""),
               rec(u"3", u"A", u"3", u"  "), rec(u"4", u"A", u"4", u""), rec(u"5", u"A", u"5", u""),
               rec(u"6", u"A", u"6", u""), rec(u"7", u"A", u"7", u""), rec(u"8", u"A", u"0", u""),
               rec(u"9", u" ", u"3", u""), rec(u"10", u"A", u"4", u"246")});
  Load();
  ASSERT_EQ(app.Jobs.size(), 10u);
  const std::vector<Text> expected = {u"IMMEDIATE", u"Hourly", u"1234567",
                                      u"4",  // 03-20-2013 was a Wednesday
                                      u"Monthly",   u"23456",  u"",        u"", u"", u"246"};
  for (size_t i = 0; i < expected.size(); ++i) EXPECT_EQ(app.Jobs[i].Days, expected[i]) << i;
}

TEST_F(ReadTest, DateFormatRuleReadsDatesInTheSystemOrder) {
  PutSchedule({u"0", Line({{0, u"1"}, {2, u"3-5-2013 06:07:08"}, {15, u"201303050607"}})});

  // No setting: the text passes through the system's formatting in its own order.
  Load();
  EXPECT_EQ(app.Jobs[0].NextRun, u"03-05-2013 6:07:08");

  // "D..." (any case of the first letter): the text as it stands.
  SetIni(u"DateFormat", u"DateFormat", u"dd/mm/yyyy");
  Load();
  EXPECT_EQ(app.Jobs[0].NextRun, u"3-5-2013 06:07:08");

  // A day-first system reads 3-5 as the 3rd of May; its time separator shows too.
  SetIni(u"DateFormat", u"DateFormat", u"M");
  fake.locale.shortDateFormat = u"dd.MM.yyyy";
  fake.locale.timeSeparator = u".";
  Load();
  EXPECT_EQ(app.Jobs[0].NextRun, u"05-03-2013 6.07.08");
  EXPECT_EQ(app.Jobs[0].CreatedOn, u"03-18-2013 15.02.33");  // 18 is no month: read month first
}

TEST_F(ReadTest, UnreadableTextIsKeptAsItStands) {
  Text line = Join({u"1", u"A", u"soon", u"", u"My Corvane/", u"4"}, kB);
  PutSchedule({u"0", line});
  Load();
  EXPECT_EQ(app.Jobs[0].NextRun, u"soon");
  EXPECT_EQ(app.Jobs[0].Days, u"");  // a weekly job without a readable date gets no day
}

TEST_F(ReadTest, StateLineReaders) {
  EXPECT_EQ(ReadStateLine(app, SchedulePath()), u"");
  EXPECT_EQ(Readfirstline(app, SchedulePath()), u"0");
  PutSchedule({});
  EXPECT_EQ(ReadStateLine(app, SchedulePath()), u"0");
  PutSchedule({u"   ", kWorkedLine});
  EXPECT_EQ(ReadStateLine(app, SchedulePath()), u"0");
  PutSchedule({u" 2 ", kWorkedLine});
  EXPECT_EQ(ReadStateLine(app, SchedulePath()), u"2");
  PutSchedule({u"10"});  // damaged, but the reader tells what is there
  EXPECT_EQ(Readfirstline(app, SchedulePath()), u"10");
}

TEST(FrequencyNames, IndexKnowsSevenNamesButTheNameOnlySix) {
  EXPECT_EQ(GetFrequencyIndex(u"WeekEnd (Sun & Sat)"), 7);
  EXPECT_EQ(GetFrequencyIndex(u"weekly"), 0);
  EXPECT_EQ(GetFreNameFromIndex(6), u"Weekdays (Mon - Fri)");
  EXPECT_EQ(GetFreNameFromIndex(7), u"");
}

}  // namespace
}  // namespace jobstore::test
