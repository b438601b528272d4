// The decorators fail in the ways they say, as the seed says, and pass everything
// through otherwise.
#include <gtest/gtest.h>

#include "base/Guarded.h"
#include "base/Utf16.h"
#include "fault/FaultyPlatform.h"
#include "fault/MonitorSoak.h"
#include "platform/TextFile.h"
#include "platform/fake/FakePlatform.h"

namespace {

using base::Text;
using fault::Fault;
using fault::FaultPlan;

TEST(FaultPlanTest, TheSameSeedFailsTheSameCalls) {
  auto run = [](std::uint64_t seed) {
    FaultPlan plan(seed, 0.3);
    plan.SetEnabled(true);
    std::string trail;
    for (int i = 0; i < 200; ++i) {
      auto f = plan.Draw("site", {Fault::Error, Fault::Empty});
      trail += f ? fault::FaultName(*f)[0] : '.';
    }
    return trail;
  };
  EXPECT_EQ(run(7), run(7));
  EXPECT_NE(run(7), run(8));
}

class DecoratorTest : public ::testing::Test {
 protected:
  DecoratorTest() : plan(3, 1.0), faulty(fake.Get(), plan) {
    fake.fs.AddFolders(u"C:\\d");
    fake.fs.PutFile(u"C:\\d\\f.txt", "0123456789");
  }
  // Draws until the decorated call met `kind` (the plan picks among the call's kinds).
  template <class Call>
  void Until(Fault kind, Call&& call) {
    for (int i = 0; i < 200; ++i) {
      const auto before = plan.Count(kind);
      call();
      if (plan.Count(kind) > before) return;
    }
    FAIL() << "never met " << fault::FaultName(kind);
  }
  platform::FakePlatform fake;
  FaultPlan plan;
  fault::FaultyPlatform faulty;
};

// A decorator that passed a failure through would leave the soak's checks nothing to see.
TEST_F(DecoratorTest, FilesFailByResultShortAndEmpty) {
  platform::IFileSystem& fs = *faulty.Get().fs;
  plan.SetEnabled(true);
  std::optional<std::string> read;
  Until(Fault::Empty, [&] { read = fs.ReadAll(u"C:\\d\\f.txt"); });
  EXPECT_EQ(read, std::string());
  Until(Fault::Short, [&] { read = fs.ReadAll(u"C:\\d\\f.txt"); });
  ASSERT_TRUE(read);
  EXPECT_LT(read->size(), 10u);
  EXPECT_EQ(*read, std::string("0123456789").substr(0, read->size()));

  // A short write truncates and leaves a prefix; an error write leaves the file alone.
  bool ok = true;
  Until(Fault::Short, [&] { ok = fs.WriteAll(u"C:\\d\\f.txt", "abcdefghij"); });
  EXPECT_FALSE(ok);
  const std::string left = fake.fs.Bytes(u"C:\\d\\f.txt");
  EXPECT_LT(left.size(), 10u);
  EXPECT_EQ(left, std::string("abcdefghij").substr(0, left.size()));
  Until(Fault::Error, [&] { ok = fs.Append(u"C:\\d\\f.txt", "XYZ"); });
  EXPECT_FALSE(ok);
  EXPECT_EQ(fake.fs.Bytes(u"C:\\d\\f.txt"), left);
}

// A failed call leaves the error number that the program's handling goes by.
TEST_F(DecoratorTest, ServicesFailInTheirOwnWays) {
  platform::Platform& p = faulty.Get();
  plan.SetEnabled(true);
  Until(Fault::Error,
        [&] { p.profile->WriteString(u"S", Text(u"k"), Text(u"v"), u"C:\\d\\a.ini"); });
  EXPECT_EQ(p.profile->LastError(), 5u);
  Until(Fault::Timeout, [&] { p.services->StartServiceA(1); });
  EXPECT_EQ(p.services->LastError(), 1053u);
}

TEST_F(DecoratorTest, TheNetworkObjectsThrowWithAMarkedDescription) {
  plan.SetEnabled(true);
  platform::INetworkObjects& network = *faulty.Get().network;
  std::string description;
  Until(Fault::Throw, [&] {
    base::Guarded([&] { network.CreateHttpObject({}); },
                  [&](const base::ErrorInfo& e) { description = base::ToUtf8(e.description); });
  });
  const auto thrown = plan.TakeThrown();
  ASSERT_EQ(thrown.size(), 1u);
  EXPECT_EQ(thrown[0].site, "INetworkObjects::CreateHttpObject");
  EXPECT_EQ(description, thrown[0].marker + " at INetworkObjects::CreateHttpObject");
  EXPECT_TRUE(plan.TakeThrown().empty());
}

TEST(ScheduleRuleTest, APartialLineATornRecordAndTwoVersionsAreFound) {
  const Text whole =
      u"7\b\ba\b\bb\b\bc\b\bd\b\be\b\bf\b\bg\b\bh\b\bi\b\bj\b\bk\b\bl\b\bm\b\bn\b\bo\b\bp\b\bq\b\br"
      u"\b\bs";
  auto file = [](const Text& units) {
    return std::string(base::kUtf16Bom) + base::EncodeUtf16Le(units);
  };
  EXPECT_TRUE(fault::ScheduleProblems(file(u"0\r\n" + whole + u"\r\n")).empty());
  EXPECT_TRUE(fault::ScheduleProblems(file(u"")).empty());
  using V = std::vector<std::string>;
  EXPECT_EQ(fault::ScheduleProblems(file(u"0\r\n" + whole.substr(0, 20))),
            (V{"the last line is not whole", "a record that is not whole"}));
  EXPECT_EQ(fault::ScheduleProblems(file(u"0\r\n" + whole + u"\r\n" + whole + u"\r\n")),
            V{"one record twice (two versions)"});
  EXPECT_EQ(fault::ScheduleProblems(file(u"01\r\n")), V{"the first line is not a state word"});
  EXPECT_EQ(fault::ScheduleProblems(file(u"0\r\n") + "x"), V{"an odd byte at its end"});
}

// A disk whose existence test fails now and then for a file that is there.
class LyingDisk : public platform::FakeFileSystem {
 public:
  bool FileExists(const Text& path) override { return !lie && FakeFileSystem::FileExists(path); }
  bool lie = false;
};

TEST(TextFileOnFailingDisk, AFailedExistenceTestDoesNotMakeAFileThatIsThereAnew) {
  LyingDisk disk;
  disk.AddFolders(u"C:\\d");
  const Text path = u"C:\\d\\log.txt";
  ASSERT_TRUE(platform::TextFile::WriteLines(disk, path, {u"0", u"first"}));
  disk.lie = true;
  EXPECT_TRUE(platform::TextFile::AppendLine(disk, path, u"second"));
  EXPECT_TRUE(platform::TextFile::Create(disk, path, false));
  disk.lie = false;
  EXPECT_EQ(platform::TextFile::ReadLines(disk, path),
            (std::vector<Text>{u"0", u"first", u"second"}));
  // A file that is not there is still made, with its byte-order mark.
  EXPECT_TRUE(platform::TextFile::AppendLine(disk, u"C:\\d\\new.txt", u"one"));
  EXPECT_EQ(disk.Bytes(u"C:\\d\\new.txt").substr(0, 2), std::string(base::kUtf16Bom));
}

}  // namespace
