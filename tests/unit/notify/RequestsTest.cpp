// The engine's request files and the names the notices keep.
#include <gtest/gtest.h>

#include "base/Utf16.h"
#include "notify/Requests.h"
#include "support/FrameFixture.h"

namespace {

using base::Text;

class RequestsTest : public ::testing::Test, public testkit::FrameFixture {
 protected:
  RequestsTest() { fake.fs.AddFolders(u"C:\\QV\\QVCOMMON"); }
  Text JobFile() { return Common(notify::kJobRequestFile); }
  Text DialupFile() { return Common(notify::kDialupRequestFile); }
};

TEST_F(RequestsTest, TheJobRequestIsUtf16WithTheSecondLineDropped) {
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
}

TEST_F(RequestsTest, EmptyShortAndLockedRequestsKeepTheNames) {
  using Kind = notify::JobRequest::Kind;
  notify::KeptNames kept{u"Earlier", u"bob", u""};
  fake.fs.WriteAll(JobFile(), "");
  EXPECT_EQ(notify::ReadJobRequest(app)->kind, Kind::Empty);
  fake.fs.WriteAll(JobFile(), std::string(base::kUtf16Bom));  // only the mark: empty too
  EXPECT_EQ(notify::ReadJobRequest(app)->kind, Kind::Empty);
  notify::KeepNames(kept, *notify::ReadJobRequest(app));
  fake.fs.WriteAll(JobFile(), base::EncodeUtf16Le(base::TextView(u"Solo\r\nsecond\r\n")));
  EXPECT_EQ(notify::ReadJobRequest(app)->kind, Kind::Unusable);
  notify::KeepNames(kept, *notify::ReadJobRequest(app));
  fake.fs.SetLocked(JobFile(), true);
  EXPECT_EQ(notify::ReadJobRequest(app)->kind, Kind::Unusable);
  EXPECT_EQ(kept.jobName, u"Earlier");
  EXPECT_EQ(kept.accountName, u"bob");
}

TEST_F(RequestsTest, TheDialupRequestIsPlainTextOfUpToTwoLines) {
  notify::KeptNames kept{u"Earlier", u"bob", u"old"};
  EXPECT_EQ(notify::ReadDialupRequest(app), std::nullopt);
  fake.fs.WriteAll(DialupFile(), "Caf\xE9 set\r\nsecond\r\n");
  auto request = notify::ReadDialupRequest(app);
  ASSERT_TRUE(request);
  notify::KeepNames(kept, *request);
  EXPECT_EQ(kept.jobName, u"Caf\u00E9 set");
  EXPECT_EQ(kept.dialupSecondLine, u"second");
  EXPECT_EQ(kept.accountName, u"bob");

  fake.fs.WriteAll(DialupFile(), "one\r\n");
  notify::KeepNames(kept, *notify::ReadDialupRequest(app));
  EXPECT_EQ(kept.jobName, u"one");
  EXPECT_EQ(kept.dialupSecondLine, u"");
  EXPECT_EQ(kept.accountName, u"bob");

  fake.fs.WriteAll(DialupFile(), "");
  notify::KeepNames(kept, *notify::ReadDialupRequest(app));
  EXPECT_EQ(kept.jobName, u"");
  EXPECT_EQ(kept.accountName, u"");  // an empty file clears the account too
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
