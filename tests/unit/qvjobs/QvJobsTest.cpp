// qvjobs over a fake disk: each command against what the job store does.
#include "QvJobsFixture.h"
#include "platform/TextFile.h"

namespace qvjobs {
namespace {

using ::testing::AnyOf;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

const Text kSchedule = u"C:\\QV\\QVCOMMON\\scheduleData.txt";

Text Line(const Text& no, const Text& name, const Text& next, const Text& key, const Text& days,
          const Text& mailMode, const Text& mail) {
  return base::Replace(no + u"|" + name + u"|" + next + u"|03-18-2013 15:02:33|My Corvane/|4|2|1|" +
                           mail + u"||||0|1|" + mailMode + u"|" + key + u"|jsmith|1|0|" + days,
                       u"|", u"\b\b");
}
Text Rec(const Text& no, const Text& name, const Text& next, const Text& key, const Text& days) {
  return Line(no, name, next, key, days, u"3", u"a@b.c;d@e.f");
}
// A record without mail, due at 03-25-2013 6:41:00 unless it runs already.
Text Quiet(const Text& no, const Text& name, const Text& key, const Text& days,
           const Text& mailMode = u"0", const Text& mail = u"") {
  return Line(no, name, u"03-25-2013 6:41:00", key, days, mailMode, mail);
}

const Text kDocs = Rec(u"3", u"Docs", u"03-25-2013 6:41:00", u"201303250641", u"2");
// In progress.
const Text kPhotos = Rec(u"5", u"Photos", u"03-19-2013 9:00:00", u"000000000000", u"17");

class QvJobsTest : public QvJobsFixture {
 protected:
  QvJobsTest() { fake.clock.now = base::DateTime{2013, 3, 18, 10, 15, 20}; }  // a Monday
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
};

TEST_F(QvJobsTest, ListShowsTheRecordsAsLoaded) {
  Put({u"1", Rec(u"3", u"Caf\u00E9", u"03-25-2013 6:41:00", u"201303250641", u""), u"no separator",
       Rec(u"7", u"B", u"03-20-2013 6:41:00", u"201303200641", u"246")});
  EXPECT_EQ(Run({"list"}), kExitOk);
  // The weekly record's empty Days is shown repaired; the separator-less line is no record.
  EXPECT_EQ(
      out,
      "3|Caf\xC3\xA9|03-25-2013 6:41:00|03-18-2013 15:02:33|4|201303250641|2|jsmith|3|a@b.c;d@e.f\n"
      "7|B|03-20-2013 6:41:00|03-18-2013 15:02:33|4|201303200641|246|jsmith|3|a@b.c;d@e.f\n");
  EXPECT_EQ(err, "");
  EXPECT_EQ(Run({"next"}), kExitOk);
  EXPECT_EQ(out, "1 7\n");
  EXPECT_EQ(Run({"--root", "C:\\QV\\", "state"}), kExitOk);
  EXPECT_EQ(out, "1\n");
}

TEST_F(QvJobsTest, MissingOrDamagedFilesGiveWhatTheLoadGives) {
  EXPECT_EQ(Run({"--root", "D:\\Nowhere", "list"}), kExitOk);
  EXPECT_EQ(out, "");
  EXPECT_EQ(Run({"--root", "D:\\Nowhere", "next"}), kExitOk);
  EXPECT_EQ(out, "0 \n");
  EXPECT_EQ(Run({"--root", "D:\\Nowhere", "state"}), kExitOk);
  EXPECT_EQ(out, "\n");
  fake.fs.PutFile(kSchedule, std::string("\xFF\xFE\x00\xD8\x0A", 5));
  EXPECT_EQ(Run({"list"}), kExitOk);
  EXPECT_EQ(out, "");
}

TEST_F(QvJobsTest, ChangingCommands) {
  const Text a = Quiet(u"1", u"A", u"201303250641", u"2");
  const Text c = Quiet(u"4", u"C", u"201303250641", u"2");
  Put({u"0", a, Quiet(u"2", u"B", u"201303250641", u"2"), c});
  EXPECT_EQ(Run({"new-number"}), kExitOk);
  EXPECT_EQ(out, "3\n");
  // Delete is the job list's action: its question, answered yes by default.
  EXPECT_EQ(Run({"delete", "2"}), kExitOk);
  EXPECT_EQ(out, "Are you sure you want to delete the scheduled record?\n");
  EXPECT_EQ(Run({"new-number"}), kExitOk);
  EXPECT_EQ(out, "2\n");
  EXPECT_EQ(Run({"set-state", "2"}), kExitOk);
  EXPECT_EQ(Lines(), (std::vector<Text>{u"2", a, c}));
}

// The walk itself is the job store's; here each choice option reaches its box and the
// result is printed in the command's form.
TEST_F(QvJobsTest, PlanGivesWhatTheEditorWouldStore) {
  EXPECT_EQ(Run({"plan", "--time", "9:00:00", "--days", "2,3,4,5,6"}), kExitOk);
  EXPECT_EQ(out, "03-19-2013 9:00:00|23456|6|201303190900\n");
  EXPECT_EQ(Run({"plan", "--time", "9:30:00", "--hourly"}), kExitOk);
  EXPECT_EQ(out, "03-18-2013 11:15:20|Hourly|0|201303181115\n");
  EXPECT_EQ(
      Run({"--now", "01-31-2013 12:00:00", "plan", "--monthly", "01-31-2013", "--time", "8:00:00"}),
      kExitOk);
  EXPECT_EQ(out, "02-28-2013 8:00:00|Monthly|0|201302280800\n");
  EXPECT_EQ(Run({"plan", "--time", "0:00:00", "--immediate"}), kExitOk);
  EXPECT_EQ(out, "03-18-2013 10:15:20|Immediate|1|201303181015\n");
}

TEST_F(QvJobsTest, BadArgumentsGiveOneUsageLineAndTwoAndChangeNothing) {
  Put({u"0", Quiet(u"1", u"A", u"201303250641", u"2")});
  const auto before = Lines();
  const std::vector<std::vector<std::string>> bad = {
      {},
      {"bogus"},
      {"--root"},
      {"--when", "x", "list"},
      {"--now", "13-45-2013 1:00:00", "list"},
      {"list", "extra"},
      {"delete"},
      {"backup-now"},
      {"stop", "1"},
      {"--os-major", "-5", "jobs"},
      {"--answer", "maybe", "jobs"},
      {"--answer"},
      {"set-state"},
      {"plan", "--days", "2"},
      {"plan", "--time", "25:00:00", "--hourly"},
      {"plan", "--time", "9:00:00"},
      {"plan", "--time", "9:00:00", "--hourly", "--immediate"},
      {"plan", "--time", "9:00:00", "--days", "1,,2"},
      {"plan", "--time", "9:00:00", "--monthly", "02-30-2013"},
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
  };
  for (const auto& args : bad) {
    EXPECT_EQ(Run(args), kExitUsage) << (args.empty() ? "" : args[0]) << " " << args.size();
    EXPECT_EQ(out, "");
    EXPECT_THAT(err, StartsWith("qvjobs: "));
    EXPECT_THAT(err, HasSubstr("usage: qvjobs"));
    EXPECT_EQ(err.find('\n'), err.size() - 1) << err;
  }
  EXPECT_EQ(Lines(), before);
}

TEST_F(QvJobsTest, JobsAreTheRowsOfTheJobList) {
  Put({u"1", kDocs, kPhotos, Rec(u"6", u"Bare", u"", u"201303250641", u"2")});
  EXPECT_EQ(Run({"jobs"}), kExitOk);
  EXPECT_EQ(out,
            "Docs|03-25-2013 6:41:00|Weekly||My Corvane/|201303250641|3|jsmith|Monday\n"
            "Photos|03-19-2013 9:00:00|Weekly|In Progress|My Corvane/|000000000000|5|jsmith|"
            "Sunday,Saturday\n"
            "Bare||||||||\n"
            "Scheduled backup (username : jsmith) for the Backup set : 'Photos' is in progress.\n");
}

TEST_F(QvJobsTest, ActionsPrintTheScreensMessagesAndSayWhetherTheyWrote) {
  Put({u"1", kDocs, kPhotos});
  EXPECT_EQ(Run({"run-now", "3"}), kExitOk);
  EXPECT_EQ(out,
            "A record has been added for immediate backup/restore.\n"
            "This operation should commence within a few minutes.\n\n"
            "Click the 'Refresh' button to get the updated status on this backup/restore job.\n");
  EXPECT_EQ(Run({"run-now", "4"}), 1);
  EXPECT_EQ(out, "");
  EXPECT_THAT(err, HasSubstr("no job row"));
  EXPECT_EQ(Run({"--answer", "no", "delete", "3"}), 1);

  EXPECT_EQ(Run({"stop"}), kExitOk);
  EXPECT_EQ(out,
            "A scheduled job is in progress.\nDo you want to stop the transfer? \n"
            "The scheduled job will stop shortly.\n");
  EXPECT_EQ(Run({"stop"}), 1);
  // The engine did not take the stop up: stop completely clears it after its wait.
  EXPECT_EQ(Run({"stop-completely"}), kExitOk);
  EXPECT_EQ(out, "");
  EXPECT_EQ(fake.clock.sleptMs, 9000u);
  EXPECT_EQ(Lines()[0], u"0");
}

TEST_F(QvJobsTest, AWriteThatFailsExitsOneWithTheReasonAndNoSuccessLine) {
  Put({u"1", kDocs, kPhotos});
  const std::string before = fake.fs.Bytes(kSchedule);
  fake.fs.SetSpaceLeft(0);
  const std::vector<std::vector<std::string>> writers = {
      {"run-now", "3"},
      {"delete", "3"},
      {"stop"},
      {"set-state", "2"},
      {"edit", "3", "--time", "9:00:00", "--daily"}};
  for (const auto& args : writers) {
    EXPECT_EQ(Run(args), 1) << args[0];
    EXPECT_THAT(out,
                Not(AnyOf(HasSubstr("A record has been added"), HasSubstr("will stop shortly"))));
    EXPECT_EQ(err, "qvjobs: could not write: There is not enough space on the disk.\n");
  }
  EXPECT_EQ(fake.fs.Bytes(kSchedule), before);

  fake.fs.SetSpaceLeft(std::nullopt);
  EXPECT_EQ(Run({"set-state", "2"}), kExitOk);
  EXPECT_EQ(err, "");
}

TEST_F(QvJobsTest, BackupNowAndThePlugInOffer) {
  fake.profile.WriteString(u"Corvane", u"UserName", u"jsmith", u"C:\\QV\\QVCOMMON\\qvwin.ini");
  fake.fs.PutFile(u"C:\\QV\\QVCOMMON\\BacksetData.txt",
                  testkit::Utf16File({u"Docs\b1", u"QVExchBrick Mon\b1"}));
  EXPECT_EQ(Run({"backup-now", "Docs"}), kExitOk);
  EXPECT_EQ(out,
            "You have successfully set up an immediate backup of your scheduled Backup set "
            "'Docs'. You may check its status from the system tray.\n");
  EXPECT_EQ(Run({"--os-major", "5", "backup-now", "QVExchBrick Mon"}), 1);
  EXPECT_THAT(err, HasSubstr("/qvwin/downloads/AddOnPackSetup.exe (not opened)"));
  EXPECT_TRUE(fake.shell.executed.empty());
  EXPECT_EQ(Run({"backup-now", "Nowhere"}), 1);
}

// qvjobs edit: the editor's rules without the screen. The rules themselves are the
// editor model's; here the options become the screen's clicks.
using QvJobsEditTest = QvJobsTest;

TEST_F(QvJobsEditTest, OptionsChangeThatJobOnlyAndOptionsNotGivenKeepWhatTheEditorShowed) {
  Put({u"0", Quiet(u"1", u"A", u"201303250641", u"2"), Quiet(u"2", u"B", u"201303200641", u"4"),
       Quiet(u"5", u"C", u"201303250641", u"2", u"2", u"x@y.com;z@w.org")});
  EXPECT_EQ(Run({"edit", "1", "--time", "11:30:00", "--hourly"}), 0);
  EXPECT_EQ(out, "");
  EXPECT_EQ(Run({"edit", "5", "--time", "9:00:00", "--days", "2,4"}), 0);
  // Every row is written again in the editor's order; only the edited ones changed.
  EXPECT_EQ(
      List(),
      "1|A|03-18-2013 11:30:00|03-18-2013 10:15:20|0|201303181130|Hourly|jsmith|0|\n"
      "2|B|03-25-2013 6:41:00|03-18-2013 15:02:33|4|201303200641|4|jsmith|0|\n"
      "5|C|03-20-2013 9:00:00|03-18-2013 10:15:20|0|201303200900|24|jsmith|2|x@y.com;z@w.org\n");
  EXPECT_EQ(Run({"edit", "5", "--time", "9:00:00", "--daily", "--no-mail", "--desktop", "1"}), 0);
  EXPECT_THAT(
      List(),
      HasSubstr("5|C|03-19-2013 9:00:00|03-18-2013 10:15:20|3|201303190900|1234567|jsmith|0|\n"));
  EXPECT_EQ(Setting(u"desktopnotify"), u"1");
  EXPECT_EQ(Setting(u"MISSEDBACKUP"), u"0");
}

TEST_F(QvJobsEditTest, QuestionsAreAnsweredByTheAnswerOptionAndARefusalKeepsTheFile) {
  Put({u"0", Quiet(u"1", u"A", u"201303250641", u"2")});
  const auto before = Lines();
  EXPECT_EQ(Run({"edit", "1", "--time", "9:00:00", "--hourly", "--mail", "me@.com", "--notify",
                 "always"}),
            1);
  EXPECT_EQ(out, "Enter your valid email address.\n");
  EXPECT_EQ(Lines(), before);
  fake.profile.WriteString(u"Corvane", u"DisableAllSchdulers", u"1",
                           u"C:\\QV\\QVCOMMON\\qvwin.ini");
  // --answer no gives every question No: the cut-off is not set, the jobs stay held.
  EXPECT_EQ(Run({"--answer", "no", "edit", "1", "--time", "9:00:00", "--monthly", "03-30-2013",
                 "--cutoff", "23:00:00"}),
            0);
  EXPECT_THAT(out, StartsWith("All your scheduled backup/ restore jobs are disabled"));
  EXPECT_THAT(out, HasSubstr("\nYou have set '23:00:00' as the cut-off time"));
  EXPECT_EQ(Setting(u"CUTOFFTIME"), u"0");
  EXPECT_EQ(Setting(u"DisableAllSchdulers"), u"1");
  EXPECT_EQ(Run({"--answer", "yes", "edit", "1", "--time", "9:00:00", "--immediate", "--cutoff",
                 "23:00:00"}),
            0);
  EXPECT_EQ(Setting(u"CUTOFFTIME"), u"23:00:00");
  EXPECT_EQ(Setting(u"DisableAllSchdulers"), u"0");
}

// --none unchecks the last frequency as a user would: an hourly job leaves the file, a
// weekly one stays as a daily job, and a job in progress is left alone.
TEST_F(QvJobsEditTest, NoneAndNoDaysAndAJobInProgress) {
  Put({u"1", Quiet(u"1", u"A", u"000000000000", u"2"),
       Quiet(u"2", u"B", u"201303250641", u"Hourly"), Quiet(u"3", u"C", u"201303200641", u"23456"),
       Quiet(u"4", u"D", u"201303250641", u"2")});
  EXPECT_EQ(Run({"edit", "1", "--time", "9:00:00", "--hourly"}), 1);
  EXPECT_EQ(Run({"edit", "2", "--time", "9:00:00", "--none"}), 0);
  EXPECT_EQ(Run({"edit", "3", "--time", "9:00:00", "--none"}), 0);
  EXPECT_EQ(Run({"edit", "4", "--time", "9:00:00", "--days", ""}), 0);
  EXPECT_EQ(List(),
            "1|A|03-25-2013 6:41:00|03-18-2013 15:02:33|4|000000000000|2|jsmith|0|\n"
            "3|C|03-19-2013 9:00:00|03-18-2013 10:15:20|3|201303190900|1234567|jsmith|0|\n"
            "4|D|03-19-2013 9:00:00|03-18-2013 10:15:20|3|201303190900|1234567|jsmith|0|\n");
}

TEST_F(QvJobsEditTest, AFrequencyChangeOfAPluginSetOffersTheDownloadWhenItsFilesAreMissing) {
  Put({u"0", Quiet(u"1", u"QVSQLServerBkSet1", u"201303250641", u"2")});
  EXPECT_EQ(Run({"--os-major", "5", "edit", "1", "--time", "9:00:00", "--hourly"}), 0);
  EXPECT_THAT(out, HasSubstr("Download and install the 'Advanced Backup plug-in'"));
  EXPECT_THAT(err, HasSubstr("not opened"));
}

}  // namespace
}  // namespace qvjobs
