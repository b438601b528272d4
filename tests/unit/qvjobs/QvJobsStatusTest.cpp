// qvjobs status and the --json listings over a fake disk: each state and its first
// reason, the exact JSON, and a data root that is the same, byte for byte, afterwards.
#include "JsonWriter.h"
#include "QvJobsFixture.h"
#include "platform/ReadOnlyFiles.h"

namespace qvjobs {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

const Text kCommon = testkit::kCommonFolder;

using testkit::Utf16File;

Text Rec(const Text& no, const Text& name, const Text& next, const Text& key) {
  return base::Replace(no + u"|" + name + u"|" + next +
                           u"|11-01-2026 15:02:33|My Corvane/|3|2|1|||||0|1|0|" + key +
                           u"|bob|1|0|1234567",
                       u"|", u"\b\b");
}

class QvJobsStatusTest : public QvJobsFixture {
 protected:
  QvJobsStatusTest() {
    fake.fs.AddFolders(kCommon + u"\\Session");
    fake.fs.AddFolders(kCommon + u"\\bob");
    Schedule(u"0", {Rec(u"1", u"Documents", u"11-26-2026 6:41:00", u"202611260641"),
                    Rec(u"2", u"Photos", u"11-28-2026 22:00:00", u"202611282200")});
    Settings({});
    Session(u"Schedule 11-24-2026  06-41-00.txt");
  }
  void Schedule(const Text& state, std::vector<Text> records) {
    records.insert(records.begin(), state);
    fake.fs.PutFile(kCommon + u"\\scheduleData.txt", Utf16File(records));
  }
  void Settings(std::vector<Text> extra) {
    extra.insert(extra.begin(), {u"[Corvane]", u"UserName=bob"});
    fake.fs.PutFile(kCommon + u"\\qvwin.ini", Utf16File(extra));
  }
  void Account(const Text& user, std::vector<Text> keys) {
    fake.fs.AddFolders(kCommon + u"\\" + user);
    keys.insert(keys.begin(), u"[Corvane]");
    fake.fs.PutFile(kCommon + u"\\" + user + u"\\qvwinserver.ini", Utf16File(keys));
  }
  void Session(const Text& name) { fake.fs.PutFile(kCommon + u"\\Session\\" + name, "log"); }

  // Runs the command at 11-25-2026 19:30:00; no file may be written on the way.
  int Status(std::vector<std::string> extra = {}) {
    std::vector<std::string> args = {"--now", "11-25-2026 19:30:00", "status"};
    args.insert(args.end(), extra.begin(), extra.end());
    const int writes = fake.fs.WriteCount();
    const int code = Run(args);
    EXPECT_EQ(fake.fs.WriteCount(), writes) << "status wrote a file";
    return code;
  }
  std::string FirstLine() const { return out.substr(0, out.find('\n')); }
};

TEST(JsonWriterTest, EscapesWhatJsonRequiresAndEveryUnitOutsideAscii) {
  EXPECT_EQ(JsonString(u"a\"b\\c/d"), "\"a\\\"b\\\\c/d\"");
  EXPECT_EQ(JsonString(u"\b\f\n\r\t\u0001\u001f\u007f"),
            "\"\\b\\f\\n\\r\\t\\u0001\\u001f\\u007f\"");
  // é, a CJK letter and a character beyond the first plane (as its two surrogates).
  EXPECT_EQ(JsonString(u"Caf\u00e9 \u4e2d \U0001F600"), "\"Caf\\u00e9 \\u4e2d \\ud83d\\ude00\"");
  EXPECT_EQ(JsonString(Text(u"a\0b", 3)), "\"a\\u0000b\"");
}

// The commas, objects and nulls of a document are seen whole in status --json; what no
// status holds is a fraction and a number that is not finite.
TEST(JsonWriterTest, AFractionAndANumberThatIsNotFinite) {
  EXPECT_EQ(JsonWriter().BeginArray().Number(2.5).Number(1e300 * 1e300).EndArray().Document(),
            "[2.5,null]\n");
}

TEST(ReadOnlyFilesTest, ReadsGoThroughAndEveryWriteIsRefusedAndNamed) {
  platform::FakePlatform fake;
  fake.fs.AddFolders(u"C:\\R");
  fake.fs.PutFile(u"C:\\R\\a.ini", "[S]\r\nk=v\r\n");
  platform::ReadOnlyFileSystem fs(fake.fs);
  platform::ReadOnlyProfile profile(*fake.Get().profile);
  EXPECT_EQ(fs.ReadAll(u"C:\\R\\a.ini"), "[S]\r\nk=v\r\n");
  EXPECT_EQ(profile.GetString(u"S", u"k", u"", 1024, u"C:\\R\\a.ini"), u"v");
  EXPECT_FALSE(fs.WriteAll(u"C:\\R\\a.ini", "x"));
  EXPECT_FALSE(fs.Append(u"C:\\R\\t.txt", "x"));
  EXPECT_FALSE(fs.DeleteFile(u"C:\\R\\a.ini"));
  EXPECT_FALSE(fs.CreateFolder(u"C:\\R\\new"));
  EXPECT_FALSE(profile.WriteString(u"S", Text(u"k"), std::nullopt, u"C:\\R\\a.ini"));
  EXPECT_EQ(profile.LastError(), platform::ReadOnlyProfile::kRefusedError);
  EXPECT_EQ(fake.fs.WriteCount(), 0);
  EXPECT_EQ(fake.fs.Bytes(u"C:\\R\\a.ini"), "[S]\r\nk=v\r\n");
  EXPECT_FALSE(fake.fs.FolderExists(u"C:\\R\\new"));
  EXPECT_EQ(fs.Refused(),
            (std::vector<Text>{u"C:\\R\\a.ini", u"C:\\R\\t.txt", u"C:\\R\\a.ini", u"C:\\R\\new"}));
  EXPECT_EQ(profile.Refused(), std::vector<Text>{u"C:\\R\\a.ini [S] k"});
}

TEST_F(QvJobsStatusTest, OkNamesTheNextJobAndGivesEveryItem) {
  Settings({u"DESKNOTIFYICON=green", u"TotalSpace=1000M", u"UsedSpace=250M"});
  Account(u"bob", {u"ACCTYPE=QVWIN"});
  EXPECT_EQ(Status(), 0);
  EXPECT_EQ(out,
            "CORVANE OK - next job 'Documents' at 11-26-2026 6:41:00 | quota=25%;90;100;0;100 "
            "age=1d;;7\n"
            "engine: background, running: no\n"
            "job in progress: none\n"
            "next job: 'Documents' at 11-26-2026 6:41:00\n"
            "jobs held: no\n"
            "missed backups: none\n"
            "quota: 25% (262144000 bytes used of 1000000000)\n"
            "last result: success\n"
            "sessions: 1, newest backup 'Schedule' at 11-24-2026  06-41-00\n"
            "backup age: 1 day(s)\n");
  EXPECT_EQ(err, "");
  EXPECT_EQ(Status({"--json"}), 0);
  EXPECT_EQ(out,
            "{\"status\":\"OK\",\"summary\":\"next job 'Documents' at 11-26-2026 6:41:00\","
            "\"engine\":{\"kind\":\"background\",\"running\":false},\"inProgress\":null,"
            "\"nextJob\":{\"set\":\"Documents\",\"nextRun\":\"11-26-2026 6:41:00\"},"
            "\"jobsHeld\":false,\"missed\":[],"
            "\"quota\":{\"usedBytes\":262144000,\"totalBytes\":1000000000,\"percent\":25},"
            "\"lastResult\":\"success\",\"sessions\":{\"count\":1,\"newestBackup\":"
            "{\"start\":\"11-24-2026  06-41-00\",\"description\":\"Schedule\"},\"ageDays\":1}}\n");
}

TEST_F(QvJobsStatusTest, TheEngineOfTheInstalledKindAskedAsTheTickAsks) {
  // The fake system can tell: the background program runs from any folder.
  fake.processes.Add(40, u"C:\\Elsewhere\\QVBackground_955.exe");
  EXPECT_EQ(Status({"--json"}), 0);
  EXPECT_THAT(out, HasSubstr("\"engine\":{\"kind\":\"background\",\"running\":true}"));
  // A service engine that the service manager does not know is not running.
  fake.fs.PutFile(kCommon + u"\\QVDetails.ini", Utf16File({u"[Corvane]", u"Type=Service"}));
  EXPECT_EQ(Status(), 0);
  EXPECT_THAT(out, HasSubstr("\nengine: service, running: no\n"));
  // Where the system cannot tell (no process list), nothing is claimed.
  platform::Platform bare = fake.Get();
  bare.processes = nullptr;
  EXPECT_EQ(Run({"--now", "11-25-2026 19:30:00", "status"}, bare), 0);
  EXPECT_THAT(out, HasSubstr("\nengine: service, running: unknown\n"));
}

TEST_F(QvJobsStatusTest, EveryMissedAccountIsReportedAndItsKeysStay) {
  const std::string ann =
      Utf16File({u"[Corvane]", u"NoofDays=5", u"Notify_Err=1", u"DateFailed=20261115",
                 u"Notifymsg=NOBACUPSETDATA_Family pictures"});
  Settings({u"NotifyUsers=<<ann<<  <<carl<<dora<<erin"});
  fake.fs.AddFolders(kCommon + u"\\ann");
  fake.fs.PutFile(kCommon + u"\\ann\\qvwinserver.ini", ann);
  // Due: a failure of 150 days, which the tick would drop without a notice.
  Account(u"carl", {u"Notify_Err=1", u"DateFailed=20260628", u"Notifymsg=MISSEDBACKUP"});
  // Not due yet, and one whose NoofDays is no number: passed over and said so.
  Account(u"dora", {u"Notify_Err=1", u"DateFailed=20261124"});
  Account(u"erin", {u"NoofDays=week", u"Notify_Err=1", u"DateFailed=20200101"});

  EXPECT_EQ(Status(), 2);
  EXPECT_EQ(FirstLine(),
            "CORVANE CRITICAL - no backup for 10 day(s) for the account 'ann': There are no items "
            "found in the Backup set : 'Family pictures'. | age=1d;;7");
  EXPECT_THAT(
      out, HasSubstr("missed backups: 'ann' 10 day(s) NOBACUPSETDATA_Family pictures, 'carl' 150 "
                     "day(s) MISSEDBACKUP\n"));
  EXPECT_EQ(err,
            "qvjobs: the missed-backup state of the account 'erin' was passed over: Type "
            "mismatch\n");
  EXPECT_EQ(fake.fs.Bytes(kCommon + u"\\ann\\qvwinserver.ini"), ann);

  EXPECT_EQ(Status({"--json"}), 2);
  EXPECT_THAT(
      out, HasSubstr("\"missed\":[{\"user\":\"ann\",\"reason\":\"NOBACUPSETDATA_Family pictures\","
                     "\"days\":10,\"text\":\"The scheduled backup has not taken place for the past "
                     "10 day(s) for the account 'ann'.\\r\\n\\r\\nReason : There are no items"));
  EXPECT_THAT(
      out,
      HasSubstr("{\"user\":\"carl\",\"reason\":\"MISSEDBACKUP\",\"days\":150,\"text\":null}]"));
}

TEST_F(QvJobsStatusTest, CriticalWithoutJobsOrWithAnOldNewestBackup) {
  // Restores and other kinds do not count as backups.
  Session(u"Restore 11-25-2026  10-00-00.txt");
  EXPECT_EQ(Status({"--max-age", "0"}), 2);
  EXPECT_EQ(FirstLine(),
            "CORVANE CRITICAL - the newest backup session is 1 day(s) old (11-24-2026  06-41-00) | "
            "age=1d;;0");
  EXPECT_THAT(out, HasSubstr("sessions: 2, newest backup 'Schedule'"));

  fake.fs.DeleteFile(kCommon + u"\\Session\\Schedule 11-24-2026  06-41-00.txt");
  EXPECT_EQ(Status(), 2);
  EXPECT_EQ(FirstLine(), "CORVANE CRITICAL - no backup session found");
  EXPECT_EQ(Status({"--json"}), 2);
  EXPECT_THAT(out, HasSubstr("\"sessions\":{\"count\":1,\"newestBackup\":null,\"ageDays\":null}"));

  Schedule(u"0", {});
  EXPECT_EQ(Status(), 2);
  EXPECT_EQ(FirstLine(), "CORVANE CRITICAL - No scheduled backup/restore job(s)");
}

TEST_F(QvJobsStatusTest, WarningsInTheirOrder) {
  Settings(
      {u"DisableAllSchdulers=1", u"TotalSpace=1000M", u"UsedSpace=950M", u"DESKNOTIFYICON=RED"});
  EXPECT_EQ(Status(), 1);
  EXPECT_EQ(FirstLine(),
            "CORVANE WARNING - all scheduled jobs are held | quota=95%;90;100;0;100 age=1d;;7");
  Settings({u"TotalSpace=1000M", u"UsedSpace=1200M", u"DESKNOTIFYICON=Red"});
  EXPECT_EQ(Status(), 1);
  // Used beyond the total stands at 100, as the bar does; no ACCTYPE, no total in bytes.
  EXPECT_EQ(FirstLine(), "CORVANE WARNING - quota 100% used | quota=100%;90;100;0;100 age=1d;;7");
  EXPECT_THAT(out, HasSubstr("quota: 100% (1258291200 bytes used)\n"));
  Settings({u"TotalSpace=1000M", u"UsedSpace=899.9M", u"DESKNOTIFYICON=RED"});
  EXPECT_EQ(Status(), 1);
  EXPECT_EQ(FirstLine(),
            "CORVANE WARNING - the last job failed | quota=89%;90;100;0;100 age=1d;;7");
}

TEST_F(QvJobsStatusTest, TheJobInProgressByTheListsRule) {
  Schedule(u"2", {Rec(u"1", u"Documents", u"11-26-2026 6:41:00", u"202611260641"),
                  Rec(u"2", u"Photos", u"11-25-2026 19:00:00", u"000000000000")});
  EXPECT_EQ(Status(), 0);
  EXPECT_EQ(FirstLine(), "CORVANE OK - job 'Photos' stopping | age=1d;;7");
  EXPECT_THAT(out, HasSubstr("job in progress: 'Photos' for 'bob' (stopping)\nnext job: none\n"));
  EXPECT_EQ(Status({"--json"}), 0);
  EXPECT_THAT(out,
              HasSubstr("\"inProgress\":{\"set\":\"Photos\",\"user\":\"bob\",\"stopping\":true},"
                        "\"nextJob\":null"));
}

TEST_F(QvJobsStatusTest, UnknownForWhatCannotBeReadAndForABadArgument) {
  fake.fs.SetLocked(kCommon + u"\\scheduleData.txt", true);
  EXPECT_EQ(Status(), 3);
  EXPECT_EQ(out, "CORVANE UNKNOWN - cannot read C:\\QV\\QVCOMMON\\scheduleData.txt\n");
  EXPECT_EQ(Status({"--json"}), 3);
  EXPECT_EQ(out,
            "{\"status\":\"UNKNOWN\",\"summary\":\"cannot read "
            "C:\\\\QV\\\\QVCOMMON\\\\scheduleData.txt\",\"engine\":null,\"inProgress\":null,"
            "\"nextJob\":null,\"jobsHeld\":null,\"missed\":null,\"quota\":null,"
            "\"lastResult\":null,\"sessions\":null}\n");
  fake.fs.SetLocked(kCommon + u"\\scheduleData.txt", false);

  EXPECT_EQ(Status({"--max-age", "week"}), 3);
  EXPECT_EQ(out, "CORVANE UNKNOWN - bad argument: --max-age takes a whole number of days\n");
  EXPECT_THAT(err, HasSubstr("usage: qvjobs"));
  EXPECT_EQ(Run({"--now", "yesterday", "status", "--json"}), 3);
  EXPECT_THAT(out, StartsWith("{\"status\":\"UNKNOWN\",\"summary\":\"bad argument: --now takes"));
  EXPECT_EQ(Run({"--root", "D:\\Nowhere", "status"}), 3);
  EXPECT_EQ(out, "CORVANE UNKNOWN - cannot read D:\\Nowhere\n");
  // Other commands keep their own exit code for a bad argument.
  EXPECT_EQ(Run({"list", "--max-age"}), kExitUsage);
}

TEST_F(QvJobsStatusTest, ListingsAsJson) {
  EXPECT_EQ(Run({"list", "--json"}), 0);
  EXPECT_THAT(
      out,
      StartsWith("[{\"recordNo\":\"1\",\"backupSetName\":\"Documents\",\"nextRun\":\"11-26-2026 "
                 "6:41:00\",\"createdOn\":\"11-01-2026 15:02:33\",\"frequencyIndex\":\"3\","));
  EXPECT_THAT(out,
              HasSubstr("\"sortKey\":\"202611282200\",\"days\":\"1234567\",\"userName\":\"bob\","
                        "\"mailMode\":\"0\",\"mailAddresses\":\"\"}]\n"));
  EXPECT_EQ(Run({"jobs", "--json"}), 0);
  EXPECT_THAT(
      out, StartsWith("[{\"backupRestoreSet\":\"Documents\",\"nextTransfer\":\"11-26-2026 "
                      "6:41:00\",\"frequency\":\"Daily\",\"status\":\"\",\"destination\":\"My "
                      "Corvane/\",\"dataSort\":\"202611260641\",\"no\":\"1\",\"userName\":\"bob\","
                      "\"scheduledDays\":"));
  EXPECT_EQ(Run({"--now", "11-25-2026 19:30:00", "plan", "--time", "6:41:00", "--days",
                 "1,2,3,4,5,6,7", "--json"}),
            0);
  EXPECT_EQ(out,
            "[{\"nextRun\":\"11-26-2026 6:41:00\",\"days\":\"1234567\",\"frequencyIndex\":\"3\","
            "\"sortKey\":\"202611260641\"}]\n");
  EXPECT_EQ(Run({"sessions", "--json"}), 0);
  EXPECT_THAT(out, StartsWith("{\"range\":"));
  EXPECT_THAT(out, HasSubstr("\"rows\":[{\"startTime\":\" 11-24-2026  06-41-00\",\"description\":"
                             "\"Schedule \",\"sCol\":\"202611240641\"}]}\n"));
}

}  // namespace
}  // namespace qvjobs
