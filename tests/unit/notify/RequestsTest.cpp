// The engine's request files and the names the notices keep.
#include <gtest/gtest.h>

#include <tuple>

#include "base/Utf16.h"
#include "notify/Requests.h"
#include "testkit/FrameFixture.h"

namespace {

using base::Text;

class RequestsTest : public ::testing::Test, public testkit::CommonFixture {
 protected:
  Text JobFile() { return Common(notify::kJobRequestFile); }
  Text DialupFile() { return Common(notify::kDialupRequestFile); }
  // The job's log, its session file and the account kept.
  using Names = std::tuple<Text, Text, Text>;
  Names Kept(const notify::KeptNames& kept) {
    return {app.CurrentLogName, app.CurrentSessionFile, kept.accountName};
  }
};

TEST_F(RequestsTest, TheJobRequestIsUtf16WithTheSecondLineDroppedAndABadOneKeepsTheNames) {
  using Kind = notify::JobRequest::Kind;
  EXPECT_EQ(notify::ReadJobRequest(app), std::nullopt);
  platform::TextFile::WriteLines(fake.fs, JobFile(), {u"Photos & Music", u"ignored", u"alice"});
  auto request = notify::ReadJobRequest(app);
  ASSERT_TRUE(request);
  EXPECT_EQ(request->kind, Kind::Names);
  EXPECT_EQ(request->jobName, u"Photos & Music");
  EXPECT_EQ(request->accountName, u"alice");
  EXPECT_TRUE(fake.fs.FileExists(JobFile()));  // reading leaves it; the notice deletes it
  // Without a byte-order mark it is UTF-16 all the same.
  fake.fs.WriteAll(JobFile(), base::EncodeUtf16Le(base::TextView(u"A\r\n\r\nbob\r\n")));
  EXPECT_EQ(notify::ReadJobRequest(app)->accountName, u"bob");

  // Empty, short and locked requests keep the names.
  notify::KeptNames kept{u"bob"};
  app.CurrentLogName = u"Earlier";
  fake.fs.WriteAll(JobFile(), "");
  EXPECT_EQ(notify::ReadJobRequest(app)->kind, Kind::Empty);
  fake.fs.WriteAll(JobFile(), std::string(base::kUtf16Bom));  // only the mark: empty too
  EXPECT_EQ(notify::ReadJobRequest(app)->kind, Kind::Empty);
  notify::KeepNames(app, kept, *notify::ReadJobRequest(app));
  fake.fs.WriteAll(JobFile(), base::EncodeUtf16Le(base::TextView(u"Solo\r\nsecond\r\n")));
  EXPECT_EQ(notify::ReadJobRequest(app)->kind, Kind::Unusable);
  notify::KeepNames(app, kept, *notify::ReadJobRequest(app));
  fake.fs.SetLocked(JobFile(), true);
  EXPECT_EQ(notify::ReadJobRequest(app)->kind, Kind::Unusable);
  EXPECT_EQ(app.CurrentLogName, u"Earlier");
  EXPECT_EQ(kept.accountName, u"bob");
  // A request with its three lines names the job's log and keeps its session file.
  app.CurrentSessionFile = u"S.txt";
  fake.fs.SetLocked(JobFile(), false);
  platform::TextFile::WriteLines(fake.fs, JobFile(), {u"Mail", u"", u"alice"});
  notify::KeepNames(app, kept, *notify::ReadJobRequest(app));
  EXPECT_EQ(Kept(kept), Names(u"Mail", u"S.txt", u"alice"));
}

// Line 1 is the job's log, line 2 its session file: the process's current names.
TEST_F(RequestsTest, TheDialupRequestIsPlainTextOfUpToTwoLines) {
  notify::KeptNames kept{u"bob"};
  app.CurrentLogName = u"Earlier";
  app.CurrentSessionFile = u"old.txt";
  EXPECT_EQ(notify::ReadDialupRequest(app), std::nullopt);
  fake.fs.WriteAll(DialupFile(), "Caf\xE9 set\r\nSchedule 11-15-2026  05-02-33.txt\r\n");
  auto request = notify::ReadDialupRequest(app);
  ASSERT_TRUE(request);
  notify::KeepNames(app, kept, *request);
  EXPECT_EQ(Kept(kept), Names(u"Caf\u00E9 set", u"Schedule 11-15-2026  05-02-33.txt", u"bob"));
  fake.fs.WriteAll(DialupFile(), "one\r\n");
  notify::KeepNames(app, kept, *notify::ReadDialupRequest(app));
  EXPECT_EQ(Kept(kept), Names(u"one", u"", u"bob"));
  fake.fs.WriteAll(DialupFile(), "");
  notify::KeepNames(app, kept, *notify::ReadDialupRequest(app));
  EXPECT_EQ(Kept(kept), Names(u"", u"", u""));  // an empty file clears the account too
}

TEST(RequestRulesTest, ResultPicturesDefaultSetAndAmpersands) {
  EXPECT_TRUE(notify::ResultPicturesFor(u"red").failed);
  EXPECT_FALSE(notify::ResultPicturesFor(u"Red").success);
  EXPECT_TRUE(notify::ResultPicturesFor(u"GrEeN").success);
  EXPECT_FALSE(notify::ResultPicturesFor(u"GrEeN").failed);
  for (const Text& other : {Text(), Text(u"YELLOW"), Text(u" RED")}) {
    EXPECT_FALSE(notify::ResultPicturesFor(other).failed);
    EXPECT_FALSE(notify::ResultPicturesFor(other).success);
  }
  EXPECT_TRUE(notify::IsDefaultSet(u"DEFAULT BACKUPSET"));
  EXPECT_TRUE(notify::IsDefaultSet(u"Default BackupSet"));
  EXPECT_FALSE(notify::IsDefaultSet(u"Default BackupSet 2"));
  EXPECT_EQ(notify::LabelText(u"A&B && C"), u"A&&B &&&& C");
}

}  // namespace
