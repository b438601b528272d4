// qvjobs edit over a fake disk: the editor's rules without the screen.
#include <gtest/gtest.h>

#include "QvJobsCommand.h"
#include "base/Utf16.h"
#include "platform/TextFile.h"
#include "platform/fake/FakePlatform.h"
#include "testkit/TextFiles.h"

namespace qvjobs {
namespace {

using base::Text;

const Text kSchedule = u"C:\\QV\\QVCOMMON\\scheduleData.txt";

Text Rec(const Text& no, const Text& name, const Text& key, const Text& days,
         const Text& mailMode = u"0", const Text& mail = u"") {
  return base::Join({no,
                     name,
                     u"03-25-2013 6:41:00",
                     u"03-18-2013 15:02:33",
                     u"My Corvane/",
                     u"4",
                     u"2",
                     u"1",
                     mail,
                     u"",
                     u"",
                     u"",
                     u"0",
                     u"1",
                     mailMode,
                     key,
                     u"jsmith",
                     u"1",
                     u"0",
                     days},
                    u"\b\b");
}

class QvJobsEditTest : public ::testing::Test {
 protected:
  QvJobsEditTest() {
    fake.fs.AddFolders(testkit::kCommonFolder);
    fake.clock.now = base::DateTime{2013, 3, 18, 10, 15, 20};  // a Monday
  }
  int Run(std::vector<std::string> args) {
    out.clear();
    err.clear();
    return RunQvJobs(args, fake.Get(), u"C:\\QV", out, err);
  }
  void Put(const std::vector<Text>& lines) {
    fake.fs.PutFile(kSchedule, testkit::Utf16File(lines));
  }
  std::vector<Text> Lines() {
    return platform::TextFile::ReadLines(fake.fs, kSchedule).value_or(std::vector<Text>{});
  }
  std::string List() {
    Run({"list"});
    return out;
  }
  Text Setting(const Text& key) {
    return fake.profile.GetString(u"Corvane", key, Text(), 1024, u"C:\\QV\\QVCOMMON\\qvwin.ini");
  }

  platform::FakePlatform fake;
  std::string out, err;
};

TEST_F(QvJobsEditTest, WeeklyToHourlyChangesThatJobOnly) {
  Put({u"0", Rec(u"1", u"A", u"201303250641", u"2"), Rec(u"2", u"B", u"201303200641", u"4")});
  EXPECT_EQ(Run({"edit", "1", "--time", "11:30:00", "--hourly"}), 0);
  EXPECT_EQ(out, "");
  // Every row is written again in the editor's order; only the edited one changed.
  EXPECT_EQ(List(),
            "1|A|03-18-2013 11:30:00|03-18-2013 10:15:20|0|201303181130|Hourly|jsmith|0|\n"
            "2|B|03-25-2013 6:41:00|03-18-2013 15:02:33|4|201303200641|4|jsmith|0|\n");
}

TEST_F(QvJobsEditTest, OptionsNotGivenKeepWhatTheEditorShowed) {
  Put({u"0", Rec(u"5", u"A", u"201303250641", u"2", u"2", u"x@y.com;z@w.org")});
  EXPECT_EQ(Run({"edit", "5", "--time", "9:00:00", "--days", "2,4"}), 0);
  EXPECT_EQ(
      List(),
      "5|A|03-20-2013 9:00:00|03-18-2013 10:15:20|0|201303200900|24|jsmith|2|x@y.com;z@w.org\n");
  EXPECT_EQ(Run({"edit", "5", "--time", "9:00:00", "--daily", "--no-mail", "--desktop", "1"}), 0);
  EXPECT_EQ(List(),
            "5|A|03-19-2013 9:00:00|03-18-2013 10:15:20|3|201303190900|1234567|jsmith|0|\n");
  EXPECT_EQ(Setting(u"desktopnotify"), u"1");
  EXPECT_EQ(Setting(u"MISSEDBACKUP"), u"0");
}

TEST_F(QvJobsEditTest, RefusedMailPrintsTheMessageAndKeepsTheFile) {
  Put({u"0", Rec(u"1", u"A", u"201303250641", u"2")});
  const auto before = Lines();
  EXPECT_EQ(Run({"edit", "1", "--time", "9:00:00", "--hourly", "--mail", "me@.com", "--notify",
                 "always"}),
            1);
  EXPECT_EQ(out, "Enter your valid email address.\n");
  EXPECT_EQ(Lines(), before);
  EXPECT_EQ(Run({"edit", "1", "--time", "9:00:00", "--hourly", "--mail", "a@b.com;a@b.com,A@B.COM",
                 "--notify", "failure"}),
            0);
  EXPECT_EQ(List(),
            "1|A|03-18-2013 11:15:20|03-18-2013 10:15:20|0|201303181115|Hourly|jsmith|2|a@b.com\n");
}

TEST_F(QvJobsEditTest, QuestionsAreAnsweredByTheAnswerOption) {
  Put({u"0", Rec(u"1", u"A", u"201303250641", u"2")});
  fake.profile.WriteString(u"Corvane", u"DisableAllSchdulers", u"1",
                           u"C:\\QV\\QVCOMMON\\qvwin.ini");
  // --answer no gives every question No: the cut-off is not set, the jobs stay held.
  EXPECT_EQ(Run({"--answer", "no", "edit", "1", "--time", "9:00:00", "--monthly", "03-30-2013",
                 "--cutoff", "23:00:00"}),
            0);
  EXPECT_EQ(out,
            "All your scheduled backup/ restore jobs are disabled as of now. Do you want to enable "
            "them?\n"
            "You have set '23:00:00' as the cut-off time for the scheduled backup/restore "
            "operation. This may terminate the scheduled job before it is complete.\n"
            "\n"
            "Do you want to proceed?\n");
  EXPECT_EQ(Setting(u"CUTOFFTIME"), u"0");
  EXPECT_EQ(Setting(u"DisableAllSchdulers"), u"1");
  EXPECT_EQ(Run({"--answer", "yes", "edit", "1", "--time", "9:00:00", "--immediate", "--cutoff",
                 "23:00:00"}),
            0);
  EXPECT_EQ(Setting(u"CUTOFFTIME"), u"23:00:00");
  EXPECT_EQ(Setting(u"DisableAllSchdulers"), u"0");
  // Immediate takes the present moment as its key.
  EXPECT_EQ(List(),
            "1|A|03-18-2013 10:15:20|03-18-2013 10:15:20|1|201303181015|Immediate|jsmith|0|\n");
}

TEST_F(QvJobsEditTest, NoneRemovesTheJobAndAJobInProgressIsLeftAlone) {
  Put({u"1", Rec(u"1", u"A", u"000000000000", u"2"), Rec(u"2", u"B", u"201303250641", u"Hourly")});
  EXPECT_EQ(Run({"edit", "1", "--time", "9:00:00", "--hourly"}), 1);
  EXPECT_EQ(Run({"edit", "2", "--time", "9:00:00", "--none"}), 0);
  EXPECT_EQ(Lines(), (std::vector<Text>{u"1", Rec(u"1", u"A", u"000000000000", u"2")}));
}

// An empty day list unchecks every day as a user would: the job stays, as a daily one.
TEST_F(QvJobsEditTest, NoDaysSavesTheJobAsDaily) {
  Put({u"0", Rec(u"1", u"A", u"201303250641", u"2"), Rec(u"2", u"B", u"201303200641", u"23456")});
  EXPECT_EQ(Run({"edit", "1", "--time", "9:00:00", "--days", ""}), 0);
  EXPECT_EQ(Run({"edit", "2", "--time", "9:00:00", "--none"}), 0);
  EXPECT_EQ(List(),
            "1|A|03-19-2013 9:00:00|03-18-2013 10:15:20|3|201303190900|1234567|jsmith|0|\n"
            "2|B|03-19-2013 9:00:00|03-18-2013 10:15:20|3|201303190900|1234567|jsmith|0|\n");
}

TEST_F(QvJobsEditTest, BadArgumentsExitWithTwoAndChangeNothing) {
  Put({u"0", Rec(u"1", u"A", u"201303250641", u"2")});
  const auto before = Lines();
  for (const std::vector<std::string>& args : std::vector<std::vector<std::string>>{
           {"edit"},
           {"edit", "1", "--hourly"},
           {"edit", "1", "--time", "25:00:00", "--hourly"},
           {"edit", "1", "--time", "9:00:00"},
           {"edit", "1", "--time", "9:00:00", "--hourly", "--daily"},
           {"edit", "1", "--time", "9:00:00", "--days", "8"},
           {"edit", "1", "--time", "9:00:00", "--hourly", "--mail", "a@b.c"},
           {"edit", "1", "--time", "9:00:00", "--hourly", "--no-mail", "--notify", "always"},
           {"edit", "1", "--time", "9:00:00", "--hourly", "--desktop", "2"},
           {"edit", "1", "--time", "9:00:00", "--hourly", "--cutoff", "1:00:00", "--no-cutoff"},
           {"edit", "x", "--time", "9:00:00", "--hourly"},
           {"edit", "4", "--time", "9:00:00", "--hourly"},
           {"--answer", "maybe", "edit", "1", "--time", "9:00:00", "--hourly"}}) {
    EXPECT_EQ(Run(args), 2) << args.size();
    EXPECT_EQ(out, "");
    EXPECT_NE(err.find("usage: qvjobs"), std::string::npos);
  }
  EXPECT_EQ(Lines(), before);
}

TEST_F(QvJobsEditTest, AFrequencyChangeOfAPluginSetOffersTheDownloadWhenItsFilesAreMissing) {
  Put({u"0", Rec(u"1", u"QVSQLServerBkSet1", u"201303250641", u"2")});
  EXPECT_EQ(Run({"--os-major", "5", "edit", "1", "--time", "9:00:00", "--hourly"}), 0);
  EXPECT_NE(out.find("Download and install the 'Advanced Backup plug-in'"), std::string::npos)
      << out;
  EXPECT_NE(err.find("not opened"), std::string::npos) << err;
  // A set of no plug-in class asks nothing.
  Put({u"0", Rec(u"1", u"Documents", u"201303250641", u"2")});
  EXPECT_EQ(Run({"--os-major", "5", "edit", "1", "--time", "9:00:00", "--hourly"}), 0);
  EXPECT_EQ(out, "");
  EXPECT_EQ(err, "");
}

}  // namespace
}  // namespace qvjobs
