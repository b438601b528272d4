#include <gtest/gtest.h>

#include "frame/Logs.h"
#include "testkit/FrameFixture.h"

using base::Text;
using testkit::FrameFixture;

namespace {

class LogsTest : public ::testing::Test, public FrameFixture {};

const Text kStamp = u"11/15/2026 05:25:27";

TEST_F(LogsTest, ActivityLineGoesToJobLogAndActivityLogWithLocaleStamp) {
  fake.locale.dateSeparator = u".";
  fake.locale.timeSeparator = u"-";
  frame::WriteActivityLog(app, u"Could not reach the server", frame::kError);

  // A UTF-16 file with its byte-order mark and CR LF.
  const std::string expected =
      testkit::Utf16File({u"Error       : 11.15.2026 05-25-27 : Could not reach the server"});
  EXPECT_EQ(fake.fs.Bytes(app.ServiceLogPath), expected);
  EXPECT_EQ(fake.fs.Bytes(Common(u"logs\\.txt")), expected);
  EXPECT_FALSE(fake.fs.FolderExists(Common(u"Session")));
}

TEST_F(LogsTest, SessionFileGetsTheLineOnlyWhileNamed) {
  app.CurrentLogName = u"Job1";
  app.CurrentSessionFile = u"S1.txt";
  frame::WriteActivityLog(app, u"Started", frame::kInformation);
  EXPECT_EQ(Lines(Common(u"Session\\S1.txt")).size(), 1u);
  EXPECT_EQ(Lines(Common(u"logs\\Job1.txt")).front(), u"Information : " + kStamp + u" : Started");
}

TEST_F(LogsTest, BlankMessageAndUnknownTypeLeaveEmptyLinesAndAMessageIsCutAtNul) {
  frame::WriteActivityLog(app, u"   ", frame::kSuccess);
  frame::WriteActivityLog(app, u"text", 7);
  frame::WriteActivityLog(app, Text(u"abc\0def", 7), frame::kSuccess);
  const std::vector<Text> expected{u"", u"", u"Success     : " + kStamp + u" : abc"};
  EXPECT_EQ(Lines(app.ServiceLogPath), expected);
  EXPECT_EQ(Lines(Common(u"logs\\.txt")), expected);
}

TEST_F(LogsTest, LoggedOutWithBlankAddsSingleByteSeparatorToActivityAndJobLogOnly) {
  // Without the trailing blank the last eleven characters differ: no separator.
  frame::WriteActivityLog(app, u"user logged out", frame::kInformation);
  EXPECT_EQ(fake.fs.Bytes(app.ServiceLogPath).find('_'), std::string::npos);

  app.CurrentSessionFile = u"S.txt";
  frame::WriteActivityLog(app, u"user logged out ", frame::kInformation);
  frame::WriteTrace(app, u"trace line");
  const std::string separator = std::string(104, '_') + "\r\n";
  for (const Text& path : {app.ServiceLogPath, Common(u"logs\\.txt")})
    EXPECT_TRUE(fake.fs.Bytes(path).ends_with(separator)) << testkit::U8(path);
  EXPECT_EQ(fake.fs.Bytes(Common(u"Session\\S.txt")).find('_'), std::string::npos);
  EXPECT_EQ(fake.fs.Bytes(Common(u"SerTraceFile.txt")).find("__"), std::string::npos);

  // The separator's bytes pair up into units; the line after it still ends normally.
  frame::WriteActivityLog(app, u"next", frame::kInformation);
  const auto lines = Lines(app.ServiceLogPath);
  ASSERT_EQ(lines.size(), 3u);
  EXPECT_EQ(lines[2].substr(0, 52), Text(52, char16_t(0x5F5F)));
  EXPECT_TRUE(base::EndsWith(lines[2], u" : next"));
}

TEST_F(LogsTest, TraceCreatesFolderAndFileWithMarkAndTrimsLine) {
  EXPECT_FALSE(fake.fs.FolderExists(app.CommonFolder()));
  frame::WriteTrace(app, u"  Enter Main  ");
  EXPECT_EQ(fake.fs.Bytes(Common(u"SerTraceFile.txt")), testkit::Utf16File({u"Enter Main"}));
}

TEST_F(LogsTest, MonitorTraceKindsAndTwoBlanksBehindTheColon) {
  frame::WriteMonitorTrace(app, u"refused", frame::kError);
  frame::WriteMonitorTrace(app, u"ignored", 3);
  EXPECT_EQ(Trace(),
            (std::vector<Text>{u"Error       (QVMonitor) : " + kStamp + u" :  refused", u""}));
}

TEST_F(LogsTest, UnwritableLogLosesTheLineSilently) {
  fake.fs.AddFolders(Common(u"logs"));
  fake.fs.PutFile(app.ServiceLogPath, "\xFF\xFE");
  fake.fs.SetLocked(app.ServiceLogPath, true);
  frame::WriteActivityLog(app, u"lost", frame::kInformation);
  EXPECT_EQ(Lines(Common(u"logs\\.txt")).size(), 1u);
}

// The engine writes the same trace: it makes the file (with its line) right after this
// process found it missing, before this process's own write.
class EngineMakesTheFileMeanwhile : public platform::FakeFileSystem {
 public:
  std::optional<std::uint64_t> FileSize(const Text& path) override {
    auto size = FakeFileSystem::FileSize(path);
    if (!size && path == watched) PutFile(path, testkit::Utf16File({u"Engine's line"}));
    return size;
  }
  Text watched;
};

TEST_F(LogsTest, ALogTheEngineMakesMeanwhileKeepsItsLines) {
  EngineMakesTheFileMeanwhile disk;
  fake.Get().fs = &disk;
  disk.AddFolders(testkit::kCommonFolder);
  disk.watched = Common(u"SerTraceFile.txt");
  frame::WriteTrace(app, u"HideFromTaskBar called from the Monitor.");
  const auto lines =
      platform::TextFile::ReadLines(disk, disk.watched).value_or(std::vector<Text>{});
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[0], u"Engine's line");
  EXPECT_TRUE(base::EndsWith(lines[1], u"HideFromTaskBar called from the Monitor."));
}

}  // namespace
