// The activity log view: the newest twenty lines read from the file's end, the parse
// of a line, and the list. That the tail always gives the lines the whole file gives,
// whatever the bytes, is the activity log fuzz target's check.
#include <gtest/gtest.h>

#include "kit/FormHost.h"
#include "monitor/LogView.h"
#include "MonitorFixture.h"

namespace {

using base::Text;
using monitor::ParseLogLine;
using monitor::ReadNewestLines;
using monitortest::MonitorFormTest;
using monitortest::U8;

const Text kLog = u"C:\\QV\\QVCOMMON\\QVWServiceLog.txt";

class LogViewTest : public MonitorFormTest {
 protected:
  void Log(const std::vector<Text>& lines) { platform::TextFile::WriteLines(fake.fs, kLog, lines); }
  std::vector<Text> Rows() {
    std::vector<Text> rows;
    for (int i = 1; i <= form->lstLog.Count(); ++i) rows.push_back(form->lstLog.Item(i).SubItem(2));
    return rows;
  }
};

TEST(LogLineParse, KindWordStampAndMessageByPosition) {
  using monitor::LogRow;
  // The blank in front of the colon is dropped.
  EXPECT_EQ(
      ParseLogLine(u"Error       : 11/15/2026 05:25:27 : Could not reach the server"),
      (LogRow{u"Error      ", u" 11/15/2026 05:25:27 ", u" Could not reach the server", true}));
  // A trailing CR goes.
  EXPECT_EQ(ParseLogLine(u"Information : 11/15/2026 05:25:27 : Backup started\r"),
            (LogRow{u"Information", u" 11/15/2026 05:25:27 ", u" Backup started", false}));
  EXPECT_FALSE(ParseLogLine(u"no colon in this line"));
  EXPECT_EQ(ParseLogLine(u":x"), LogRow{});  // nothing before the colon
}

TEST_F(LogViewTest, TheNewestTwentyComeNewestFirstAndOnlyAnEmptyFileEmptiesTheList) {
  LogLines(50);
  Open();
  form->ShowLogInWindow();
  ASSERT_EQ(form->lstLog.Count(), 20);
  EXPECT_EQ(form->lstLog.Item(1).SubItem(2), u" line 50");
  EXPECT_EQ(form->lstLog.Item(20).SubItem(2), u" line 31");
  fake.fs.DeleteFile(kLog);
  form->ShowLogInWindow();
  EXPECT_EQ(form->lstLog.Count(), 20);  // no file: the list stays as it was
  fake.fs.PutFile(kLog, base::kUtf16Bom);
  form->ShowLogInWindow();
  EXPECT_EQ(form->lstLog.Count(), 0);
}

TEST_F(LogViewTest, BlankAndNulLinesAreSkippedAndLinesTrimmed) {
  Log({u"Information : 11/15/2026 05:25:27 : first", u"   ", u"",
       Text(u"Error       : 11/15/2026 05:25:27 : second") + u'\0' + u"junk after the NUL",
       u"  Success     : 11/15/2026 05:25:27 : third  "});
  auto newest = ReadNewestLines(fake.fs, kLog);
  ASSERT_TRUE(newest);
  ASSERT_EQ(newest->size(), 3u);
  EXPECT_EQ((*newest)[0], u"Success     : 11/15/2026 05:25:27 : third");
  EXPECT_EQ((*newest)[1], u"Error       : 11/15/2026 05:25:27 : second");
}

TEST_F(LogViewTest, RowsGoBelowTheOldOnesAndAFullerListIsFilledAgain) {
  Log({u"Information : 11/15/2026 05:25:27 : a", u"Information : 11/15/2026 05:25:27 : b"});
  Open();
  form->ShowLogInWindow();
  form->lstLog.UserClickRow(2);
  form->ShowLogInWindow();  // four rows would be more than two lines: filled again
  EXPECT_EQ(Rows(), (std::vector<Text>{u" b", u" a"}));
  EXPECT_EQ(form->lstLog.SelectedIndex(), 2);

  // One old row, and of three new lines one without a colon: 1 + 2 rows is not more
  // than the three lines, so the old row stays on top.
  Log({u"Information : 11/15/2026 05:25:27 : only"});
  form->mnuClearlog_Click();
  form->ShowLogInWindow();
  Log({u"Information : 11/15/2026 05:25:27 : x", u"no colon",
       u"Information : 11/15/2026 05:25:27 : y"});
  form->ShowLogInWindow();
  EXPECT_EQ(Rows(), (std::vector<Text>{u" only", u" y", u" x"}));
}

TEST_F(LogViewTest, AnUnchangedLogLeavesTheListAsItIsAndErrorsAreRed) {
  Log({u"Information : 11/15/2026 05:25:27 : a", u"Error       : 11/15/2026 05:25:27 : b"});
  Open();
  form->ShowLogInWindow();
  form->lstLog.UserClickRow(1);
  const auto revision = form->lstLog.Revision();
  form->ShowLogInWindow();
  EXPECT_EQ(form->lstLog.Revision(), revision);
  EXPECT_EQ(form->lstLog.SelectedIndex(), 1);

  platform::TextFile::AppendLine(fake.fs, kLog, u"Information : 11/15/2026 05:25:29 : c");
  form->ShowLogInWindow();
  EXPECT_EQ(Rows(), (std::vector<Text>{u" c", u" b", u" a"}));
  EXPECT_EQ(form->lstLog.SelectedIndex(), 1);
  // An error is red, down to what the host is told.
  EXPECT_EQ(form->lstLog.Item(1).ForeColor(), kit::kDefaultColor);
  const platform::UiControl described = kit::FormHost::Describe(form->lstLog);
  ASSERT_EQ(described.rows.size(), 3u);
  EXPECT_EQ(described.rows[1].foreColor, 255u);
  EXPECT_EQ(described.rows[1].subItems[0], u" 11/15/2026 05:25:27 ");
}

// The next reading fills the list again although the file is as it was.
TEST_F(LogViewTest, ClearEmptiesTheListNotTheFile) {
  Log({u"Information : 11/15/2026 05:25:27 : kept"});
  Open();
  form->ShowLogInWindow();
  const std::string before = fake.fs.Bytes(kLog);
  form->mnuClearlog.Choose();
  EXPECT_EQ(form->lstLog.Count(), 0);
  EXPECT_EQ(fake.fs.Bytes(kLog), before);
  form->ShowLogInWindow();
  EXPECT_EQ(form->lstLog.Count(), 1);
}

TEST_F(LogViewTest, OpenLogCreatesAMissingFileAndTracesAShellFailure) {
  Open();
  fake.profile.WriteString(u"Corvane", Text(u"SessionFile"), Text(u"C:\\QV\\QVCOMMON\\sess.txt"),
                           Common(u"QVDetails.ini"));
  form->btnLogFile.RaiseClick();
  EXPECT_EQ(fake.fs.Bytes(u"C:\\QV\\QVCOMMON\\sess.txt"), std::string(base::kUtf16Bom));
  ASSERT_EQ(fake.shell.executed.size(), 1u);
  EXPECT_EQ(fake.shell.executed[0].verb, u"open");
  EXPECT_EQ(fake.shell.executed[0].file, u"C:\\QV\\QVCOMMON\\sess.txt");
  EXPECT_EQ(app.SessionFilePath, u"C:\\QV\\QVCOMMON\\sess.txt");

  fake.shell.executeResult = 31;
  form->mnuOpenlog.Choose();
  EXPECT_TRUE(TraceHas(u"Error while opening the Session log file."));
  EXPECT_TRUE(TraceHas(u"Reason : 31"));
}

TEST_F(LogViewTest, TheEveryFifthLinePauseComesFourTimesForTwentyLines) {
  LogLines(60);
  int pauses = 0;
  // A tiny chunk makes the reader go back many times; the pause still comes once per
  // fifth line taken.
  auto newest = ReadNewestLines(
      fake.fs, kLog, 20, [&] { ++pauses; }, 8);
  ASSERT_TRUE(newest);
  EXPECT_EQ(newest->size(), 20u);
  EXPECT_EQ(pauses, 4);
}

TEST_F(LogViewTest, OnlyTheEndOfALargeLogIsRead) {
  // A counting file system: the reader must not touch the bulk of the file.
  struct Counting : platform::FakeFileSystem {
    std::optional<std::string> ReadAll(const Text& path) override {
      if (!inRange) ++readAll;
      return FakeFileSystem::ReadAll(path);
    }
    std::optional<std::string> ReadRange(const Text& path, std::uint64_t offset,
                                         std::size_t count) override {
      bytesRead += count;
      inRange = true;  // the fake disk serves a range from the whole file
      auto bytes = FakeFileSystem::ReadRange(path, offset, count);
      inRange = false;
      return bytes;
    }
    bool inRange = false;
    int readAll = 0;
    std::uint64_t bytesRead = 0;
  } disk;
  disk.AddFolders(u"C:\\QV\\QVCOMMON");
  std::string big(base::kUtf16Bom);
  const std::string line =
      base::EncodeUtf16Le(base::TextView(u"Information : 11/15/2026 05:25:27 : a line\r\n"));
  for (int i = 0; i < 100000; ++i) big += line;
  disk.PutFile(kLog, big);
  auto newest = ReadNewestLines(disk, kLog);
  ASSERT_TRUE(newest);
  EXPECT_EQ(newest->size(), 20u);
  EXPECT_EQ(disk.readAll, 0);
  EXPECT_LT(disk.bytesRead, 40000u);
}

}  // namespace
