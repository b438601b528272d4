// qvjobs sessions: the Session Log's pages as text, against the screen itself.
#include <algorithm>
#include <fstream>

#include "QvJobsFixture.h"
#include "platform/TextFile.h"
#include "platform/portable/PortableFileSystem.h"
#include "platform/portable/PortableProfile.h"
#include "platform/portable/PortableServices.h"
#include "testkit/TempDir.h"
#include "unit/sessions/MadeSessions.h"

namespace qvjobs {
namespace {

using ::testing::HasSubstr;

const Text kFolder = u"C:\\QV\\QVCOMMON\\Session";

class QvJobsSessionsTest : public QvJobsFixture {
 protected:
  // n made-up sessions, with an unknown word and a Continuous_Backup among them.
  void Files(int count) {
    fake.fs.AddFolders(kFolder);
    for (int n = 1; n <= count; ++n) {
      const Text word = n == 3 ? u"Archive" : n == 4 ? u"Continuous_Backup" : u"";
      fake.fs.PutFile(kFolder + u"\\" + testsessions::MadeSession(n, word), "");
    }
  }
  int Lines() { return static_cast<int>(std::count(out.begin(), out.end(), '\n')); }
};

TEST_F(QvJobsSessionsTest, TheFirstPageWithItsCellsAsTheListHoldsThem) {
  Files(5);
  ASSERT_EQ(Run({"sessions"}), kExitOk);
  EXPECT_EQ(out,
            "1 to 5 of 5\n"
            " 12-31-2026  10-00-00|Interactive Backup |202612311000\n"
            " 12-30-2026  10-00-00|Interactive Restore |202612301000\n"
            " 12-29-2026  10-00-00||202612291000\n"
            " 12-28-2026  10-00-00|Continuous Backup|202612281000\n"
            " 12-27-2026  10-00-00|Interactive Backup |202612271000\n");
  EXPECT_EQ(err, "");
}

// A page in the middle, as Next shows it, and the last one.
TEST_F(QvJobsSessionsTest, APageOfTheScreensPager) {
  Files(120);
  ASSERT_EQ(Run({"--root", "C:\\QV", "sessions", "--page", "2"}), kExitOk);
  EXPECT_EQ(out.substr(0, out.find('\n')), "51 to 100 of 120");
  EXPECT_EQ(Lines(), 51);
  EXPECT_EQ(out.substr(out.find('\n') + 1, 22), " 11-11-2026  10-00-00|");  // session 51
  ASSERT_EQ(Run({"sessions", "--page", "4"}), kExitOk);
  EXPECT_EQ(out.substr(0, out.find('\n')), "101 to 120 of 120");  // Next is off on page 3
  EXPECT_EQ(Lines(), 21);
}

TEST_F(QvJobsSessionsTest, NoFolderIsAnEmptyRangeAndABadPageAUsageError) {
  ASSERT_EQ(Run({"sessions"}), kExitOk);
  EXPECT_EQ(out, "\n");
  for (std::vector<std::string> bad : {std::vector<std::string>{"sessions", "--page", "0"},
                                       {"sessions", "--page", "x"},
                                       {"sessions", "--page"},
                                       {"sessions", "2"}}) {
    EXPECT_EQ(Run(bad), kExitUsage);
    EXPECT_EQ(out, "");
    EXPECT_THAT(err, HasSubstr("sessions [--page N]"));
  }
}

#ifndef _WIN32
// On Linux a file name is bytes: one that is not UTF-8 cannot be made text, and the
// listing must go on without it.
TEST(QvJobsSessionsOnDisk, ANameThatIsNotTextIsPassedOverAndTraced) {
  testkit::TempDir root;
  const auto folder = root.Path() / "QVCOMMON" / "Session";
  std::filesystem::create_directories(folder);
  for (const char* name :
       {"Backup 12-31-2026  10-00-00.txt", "Backup \xFF\xFE 12-30-2026  10-00-00.txt",
        "Restore 12-29-2026  10-00-00.txt"})
    std::ofstream(folder / name).put('\n');

  platform::PortableFileSystem fs;
  platform::PortableProfile profile(fs);
  platform::PortableClock clock;
  platform::PortableLocale locale;
  platform::Platform p;
  p.fs = &fs;
  p.profile = &profile;
  p.clock = &clock;
  p.locale = &locale;
  std::string out, err;
  ASSERT_EQ(RunQvJobs({"sessions"}, p, root.TextPath(), out, err), kExitOk);
  EXPECT_EQ(out,
            "1 to 2 of 2\n"
            " 12-31-2026  10-00-00|Interactive Backup |202612311000\n"
            " 12-29-2026  10-00-00|Interactive Restore |202612291000\n");

  const auto trace =
      platform::TextFile::ReadLines(fs, root.TextPath() + u"/QVCOMMON/SerTraceFile.txt");
  ASSERT_TRUE(trace.has_value());
  EXPECT_NE(std::find(trace->begin(), trace->end(),
                      u"Session file passed over, its name is not text : Backup \uFFFD\uFFFD "
                      u"12-30-2026  10-00-00.txt"),
            trace->end());
}
#endif

}  // namespace
}  // namespace qvjobs
