// The schedule read a piece at a time: the lines must be those of the whole-file read
// wherever the pieces end, and the records those the load makes.
#include "jobstore/ScheduleReader.h"

#include "JobStoreFixture.h"
#include "platform/TextFile.h"
#include "platform/fake/FakeFileSystem.h"

namespace jobstore::test {
namespace {

using platform::TextFile;
using platform::TextLineReader;

std::string Units(const Text& text) { return base::EncodeUtf16Le(text); }

std::vector<Text> AllLines(TextLineReader& reader) {
  std::vector<Text> lines;
  while (auto line = reader.Next()) lines.push_back(*line);
  return lines;
}

// Pieces of every size from one byte up end inside a unit, between CR and LF, inside a
// surrogate pair and inside the byte-order mark; the lines must not notice.
TEST(TextLineReader, GivesTheWholeReadsLinesWhereverThePiecesEnd) {
  const Text longLine(700, u'x');
  const std::vector<std::string> contents = {
      "\xFF",
      "\xFF\xFE" + Units(u"0\r\n1\b\bSet\r\n2\b\bMore\r\nno end"),
      Units(u"no mark\nlone\n\nafter blank\r\n"),
      "\xFF\xFE" + Units(u"\r\n\r\n\r\r\n"),
      "\xFF\xFE" + Units(u"cr alone\rstays\r\n") + "z",  // an odd last byte is no unit
      "\xFF\xFE" + Units(u"\U0001F600 \u00FB\u00FB \u20AC\r\n\U0001F4BE\r\nend\U0001F600"),
      "\xFF\xFE" + Units(longLine + u"\r\n" + longLine + u"\r\n" + longLine),
      Units(u"\uFEFF") + "\xFE\xFF" + Units(u"mark read as a unit\r\n"),
  };
  platform::FakeFileSystem fs;
  fs.AddFolders(u"C:\\QV");
  const Text path = u"C:\\QV\\lines.txt";
  for (const std::string& bytes : contents) {
    fs.PutFile(path, bytes);
    const auto expected = TextFile::ReadLines(fs, path);
    ASSERT_TRUE(expected.has_value());
    for (std::size_t piece : {1, 2, 3, 4, 5, 7, 8, 64, 1401, 1 << 20}) {
      TextLineReader reader(fs, path, piece);
      EXPECT_EQ(AllLines(reader), *expected) << bytes.size() << " bytes in pieces of " << piece;
      EXPECT_FALSE(reader.Unreadable() || reader.CutShort());
      EXPECT_EQ(reader.Next(), std::nullopt) << "lines after the end";
    }
  }
}

// A file system whose reads of a range fail from the `failFrom`th call on.
class FailingRanges : public platform::FakeFileSystem {
 public:
  std::optional<std::string> ReadRange(const Text& path, std::uint64_t offset,
                                       std::size_t count) override {
    if (++calls >= failFrom) return std::nullopt;
    return FakeFileSystem::ReadRange(path, offset, count);
  }
  int calls = 0;
  int failFrom = 1000;
};

TEST(TextLineReader, AMissingFileAndAReadThatStopsHalfWay) {
  FailingRanges fs;
  fs.AddFolders(u"C:\\QV");
  TextLineReader missing(fs, u"C:\\QV\\missing.txt", 8);
  EXPECT_EQ(missing.Next(), std::nullopt);
  EXPECT_TRUE(missing.Unreadable());
  EXPECT_FALSE(missing.CutShort());

  // Pieces of 8 bytes: the mark and "one\r" come with the first piece, "\n" and "two"
  // with the second; the third fails half way through "two...".
  fs.PutFile(u"C:\\QV\\cut.txt", "\xFF\xFE" + Units(u"one\r\ntwo words\r\nthree\r\n"));
  fs.calls = 0;
  fs.failFrom = 3;
  TextLineReader cut(fs, u"C:\\QV\\cut.txt", 8);
  EXPECT_EQ(AllLines(cut), std::vector<Text>{u"one"}) << "the unfinished line must be dropped";
  EXPECT_TRUE(cut.CutShort());
  EXPECT_FALSE(cut.Unreadable());
}

class ScheduleReaderTest : public JobStoreTest {
 protected:
  std::vector<ScheduleRecord> ReadAll(std::size_t piece) {
    ScheduleReader reader(app, piece);
    std::vector<ScheduleRecord> records;
    ScheduleRecord r;
    while (reader.Next(r)) records.push_back(r);
    passed = reader.PassedOver();
    EXPECT_EQ(reader.Count(), static_cast<long>(records.size()));
    return records;
  }
  int TracedPassings() {
    int n = 0;
    for (const Text& line : Trace())
      n += line.find(u"Lines without a field separator passed over") != Text::npos;
    return n;
  }
  long passed = 0;
};

TEST_F(ScheduleReaderTest, RecordsAsTheLoadCutsThemAndDamagedLinesPassedOverOnce) {
  // The first line is the state word whatever it holds, even a record's form.
  PutSchedule({Rec(u"9", u"State"), Rec(u"1", u"A\u00E9\U0001F600"), u"stray words", u"",
               Join({u"2", u"Old", u"03-25-2013 6:41:00"}, kU), Rec(u"3", u"C")});
  for (std::size_t piece : {3, 64, 1 << 20}) {
    const auto records = ReadAll(piece);
    ASSERT_EQ(records.size(), 3u) << "pieces of " << piece;
    EXPECT_EQ(records[0].BackupSetName, u"A\u00E9\U0001F600");
    EXPECT_EQ(records[1].NextRun, u"03-25-2013 6:41:00");
    EXPECT_EQ(passed, 2);
  }
  // Told once; the same damage again is not told at every load.
  EXPECT_EQ(TracedPassings(), 1);
  EXPECT_TRUE(TraceMentions(u"passed over: 2 in " + SchedulePath()));
  // One more damaged line is news; a mended file says nothing.
  PutSchedule({u"0", Rec(u"1"), u"x", u"y", u"z"});
  ReadAll(64);
  EXPECT_EQ(TracedPassings(), 2);
  PutSchedule({u"0", Rec(u"1")});
  ReadAll(64);
  EXPECT_EQ(TracedPassings(), 2);
}

TEST_F(ScheduleReaderTest, TheLoadAndTheSearchForOneRecordAgree) {
  PutSchedule({u"1", Rec(u"4", u"Four", u"201303250641"), u"damaged",
               Rec(u"7", u"Seven", u"000000000000"), Rec(u"7", u"Second seven")});
  EXPECT_EQ(Load(), 1);
  ASSERT_EQ(app.Jobs.size(), 3u);
  EXPECT_EQ(app.RecordCount, 3);
  const auto seven = FindScheduleRecord(app, u"7");
  ASSERT_TRUE(seven.has_value());
  EXPECT_EQ(*seven, app.Jobs[1]);  // the first of that number
  EXPECT_EQ(FindScheduleRecord(app, u"5"), std::nullopt);
  fake.fs.DeleteFile(SchedulePath());
  EXPECT_EQ(FindScheduleRecord(app, u"7"), std::nullopt);
}

}  // namespace
}  // namespace jobstore::test
