// The schedule editor's model: the mail checks, the error table, the capture of a row
// and what the main button writes to scheduleData.txt.
#include "DTEmailFixture.h"
#include "jobs/DTEmailRules.h"
#include "frame/MessageTable.h"

namespace jobs::test {
namespace {

using jobstore::ScheduleRecord;

base::DateTime At(int h, int m, int s) { return base::DateTime{2013, 3, 18, h, m, s}; }

// The codes of the table show their text in a box; other codes show nothing.
TEST_F(EditorTest, ErrorTableShowsItsTextsAndNothingForOtherCodes) {
  for (long code : {101L, 106L, 203L, 206L}) EXPECT_NE(QVWinError(app, ed, code), u"") << code;
  ASSERT_EQ(shown.size(), 4u);
  EXPECT_EQ(shown[1], QVWinErrorText(app, 106));
  for (long code : {0L, 100L, 102L, 107L, 200L, 207L, 999L})
    EXPECT_EQ(QVWinError(app, ed, code), u"");
  EXPECT_EQ(shown.size(), 4u);
}

TEST_F(EditorTest, MailShapesAndDuplicates) {
  EXPECT_TRUE(ValidMailAddress(u"a@b.com"));
  EXPECT_TRUE(ValidMailAddress(u"@b.com"));   // nothing before the "@" passes
  EXPECT_FALSE(ValidMailAddress(u"a@.com"));  // "." right behind the "@"
  EXPECT_FALSE(ValidMailAddress(u"a@bcom"));  // no "." behind it
  EXPECT_FALSE(ValidMailAddress(u"a.b@c"));   // a "." before the "@" does not count
  EXPECT_FALSE(ValidMailAddress(u"ab.com"));

  std::vector<Text> list;
  EXPECT_TRUE(RemoveDuplicateMailID(app, u" a@b.com;c@d.org , A@B.COM,, ", list, false));
  EXPECT_EQ(list, (std::vector<Text>{u"a@b.com", u"c@d.org"}));
  EXPECT_TRUE(FindInList(list, u"  C@D.ORG "));
  std::vector<Text> untouched;
  EXPECT_TRUE(RemoveDuplicateMailID(app, u"x@y.z", untouched, true));
  EXPECT_TRUE(untouched.empty());
}

TEST_F(EditorTest, MailValidationCodesAndTrace) {
  c.ChkEmailNotification = true;
  auto code = [&](const Text& text) {
    c.txtEmailNotification = text;
    return Sch_Mail_validate(app, c);
  };
  EXPECT_EQ(code(u"a@b.com;c@d.org"), 100);
  EXPECT_EQ(code(u"a@b.com,c@.org"), 105);
  EXPECT_EQ(code(u"   "), 104);
  EXPECT_TRUE(TraceHas(u"Exit Sch_Mail_validate 104"));
  c.ChkEmailNotification = false;
  EXPECT_EQ(code(u"not an address"), 100);
}

TEST_F(EditorTest, MailOnButEmptyAsksAndKeepsTheRow) {
  PutSchedule({u"0", Row{u"1"}.Line(), Row{u"2"}.Line()});
  Open(u"1");
  const ScheduleRecord before = *TempRow(ed, u"1");
  c.ChkEmailNotification = true;
  c.txtEmailEnabled = true;
  c.txtEmailNotification = u"  ";
  EXPECT_FALSE(SaveSelection(app, ed, c, Text()));
  ASSERT_EQ(shown.size(), 1u);
  EXPECT_EQ(shown[0], u"Enter your valid email address to receive notifications.");
  EXPECT_EQ(mailFocus, 1);
  EXPECT_EQ(*TempRow(ed, u"1"), before);
  EXPECT_EQ(unloads, 0);

  // A malformed address is refused with the table's message, and the main button
  // writes nothing.
  const auto fileBefore = ScheduleLines();
  c.txtEmailNotification = u"someone@.com";
  SaveOutcome out = Sch_Start4_Next_Click(app, ed, c);
  EXPECT_FALSE(out.saved);
  EXPECT_EQ(shown.back(), u"Enter your valid email address.");
  EXPECT_EQ(ScheduleLines(), fileBefore);
}

TEST_F(EditorTest, OneAddressThreeTimesEndsAsOne) {
  PutSchedule({u"0", Row{u"1"}.Line()});
  Open(u"1");
  c.ChkEmailNotification = true;
  c.txtEmailEnabled = true;
  c.optFailure = true;
  c.txtEmailNotification = u"me@home.net;me@home.net,ME@HOME.NET";
  ASSERT_TRUE(Sch_Start4_Next_Click(app, ed, c).saved);
  EXPECT_EQ(c.txtEmailNotification, u"me@home.net");
  const ScheduleRecord r = InFile(u"1");
  EXPECT_EQ(r.MailAddresses, u"me@home.net");
  EXPECT_EQ(r.MailMode, u"2");
  // Two addresses are kept with ";" in the file and "," in the box.
  Open(u"1");
  c.txtEmailNotification = u"b@c.de ; me@home.net";
  c.optAlways = true;
  ASSERT_TRUE(Sch_Start4_Next_Click(app, ed, c).saved);
  EXPECT_EQ(c.txtEmailNotification, u"b@c.de,me@home.net");
  EXPECT_EQ(InFile(u"1").MailAddresses, u"b@c.de;me@home.net");
  EXPECT_EQ(InFile(u"1").MailMode, u"3");
}

TEST_F(EditorTest, ASaveThatCannotBeWrittenKeepsTheScreenAndEveryJob) {
  PutSchedule({u"0", Row{u"1"}.Line(), Row{u"2"}.Line()});
  Open(u"1");
  const auto fileBefore = ScheduleLines();
  fake.fs.SetSpaceLeft(0);
  const SaveOutcome out = Sch_Start4_Next_Click(app, ed, c);
  EXPECT_FALSE(out.saved);
  EXPECT_TRUE(out.writeFailed);
  EXPECT_EQ(ScheduleLines(), fileBefore);
  ASSERT_FALSE(shown.empty());
  EXPECT_EQ(shown.back(),
            u"The changes to the schedule could not be saved. Reason : There is not enough "
            u"space on the disk.");
  // The validation's own unload is deferred by the form; the save's never comes.
  EXPECT_LE(unloads, 1);
  fake.fs.SetSpaceLeft(std::nullopt);
  EXPECT_TRUE(Sch_Start4_Next_Click(app, ed, c).saved);
}

TEST_F(EditorTest, NoChoiceSavesAsDailyAndTracesTheFill) {
  PutSchedule(
      {u"0", Row{u"1", u"Docs", u"03-25-2013 6:41:00", u"0", u"201303250641", u"Hourly"}.Line()});
  Open(u"1");
  c.SetFrequency(Text());
  c.timing.DTPicker = At(16, 0, 0);
  ASSERT_TRUE(Sch_Start4_Next_Click(app, ed, c).saved);
  // Daily (Days "1234567", frequency 3), and created at the save (the fixed clock).
  EXPECT_EQ(ScheduleLines()[1],
            (Row{u"1", u"Docs", u"03-18-2013 16:00:00", u"3", u"201303181600"}.Line()));
  // The screen was unloaded by the check and again by the main button.
  EXPECT_EQ(unloads, 2);
}

TEST_F(EditorTest, ImmediateTakesThePresentNotTheSentinel) {
  PutSchedule({u"0", Row{u"1"}.Line()});
  Open(u"1");
  c.SetFrequency(u"Immediate");
  ASSERT_TRUE(Sch_Start4_Next_Click(app, ed, c).saved);
  EXPECT_EQ(
      ScheduleLines()[1],
      (Row{u"1", u"Docs", u"03-18-2013 15:02:33", u"1", u"201303181502", u"Immediate"}.Line()));
  EXPECT_FALSE(c.DTPickerEnabled);
}

TEST_F(EditorTest, SaveRewritesEveryRowInOrderAndChangesOnlyTheEditedOne) {
  Row one{u"1"}, two{u"2", u"Photos", u"03-20-2013 9:00:00", u"4", u"201303200900", u"4"},
      three{u"3",       u"Music", u"04-01-2013 2:00:00", u"0", u"201304010200",
            u"Monthly", u"3",     u"x@y.com;z@w.org"};
  PutSchedule({u"0", three.Line(), one.Line(), two.Line()});
  Open(u"2");
  EXPECT_TRUE(c.timing.chkBox[3]);
  EXPECT_FALSE(c.timing.chkDaily);
  c.SetFrequency(u"Hourly");
  c.timing.DTPicker = At(16, 30, 0);
  SaveOutcome out = Sch_Start4_Next_Click(app, ed, c);
  ASSERT_TRUE(out.saved);
  EXPECT_TRUE(out.wroteEdited);
  EXPECT_EQ(out.written, (std::vector<Text>{u"3", u"1", u"2"}));

  Row edited = two;
  edited.nextRun = u"03-18-2013 16:30:00";
  edited.freq = u"0";
  edited.key = u"201303181630";
  edited.days = u"Hourly";
  // CreatedOn is the moment of the save, which the fixture's rows already hold.
  EXPECT_EQ(ScheduleLines(), (std::vector<Text>{u"0", three.Line(), one.Line(), edited.Line()}));
}

TEST_F(EditorTest, JobInProgressAtSavingKeepsWhatTheFileHas) {
  Row one{u"1"}, two{u"2", u"Photos"};
  PutSchedule({u"0", one.Line(), two.Line()});
  Open(u"2");
  c.SetFrequency(u"Monthly");
  c.timing.DTPMonthly = base::DateTime{2013, 4, 2, 0, 0, 0};
  // Meanwhile the engine takes up job 2.
  Row running = two;
  running.key = u"000000000000";
  PutSchedule({u"1", one.Line(), running.Line()});
  SaveOutcome out = Sch_Start4_Next_Click(app, ed, c);
  ASSERT_TRUE(out.saved);
  EXPECT_FALSE(out.wroteEdited);
  EXPECT_EQ(out.skipped, (std::vector<Text>{u"2"}));
  EXPECT_EQ(ScheduleLines(), (std::vector<Text>{u"1", running.Line(), one.Line()}));
}

TEST_F(EditorTest, ClearedRowLeavesTheFileAndAGoneJobIsNotBroughtBack) {
  PutSchedule({u"0", Row{u"1"}.Line(), Row{u"2"}.Line(), Row{u"3"}.Line()});
  Open(u"1");
  c.SetFrequency(Text());
  ed.bRowCleared = true;
  // Job 3 went from the file after the editor was opened.
  PutSchedule({u"0", Row{u"1"}.Line(), Row{u"2"}.Line()});
  SaveOutcome out = Sch_Start4_Next_Click(app, ed, c);
  ASSERT_TRUE(out.saved);
  EXPECT_EQ(out.removed, (std::vector<Text>{u"1"}));
  EXPECT_EQ(out.skipped, (std::vector<Text>{u"3"}));
  EXPECT_EQ(ScheduleLines(), (std::vector<Text>{u"0", Row{u"2"}.Line()}));
}

TEST_F(EditorTest, EmptyFileSavesNothing) {
  PutSchedule({u"0"});
  LoadTempJobs(app, ed);
  EXPECT_TRUE(ed.TempJobs.empty());
  EXPECT_FALSE(ShowRecordChoices(app, ed, u"1", c));
  SaveOutcome out = Sch_Start4_Next_Click(app, ed, c);
  EXPECT_TRUE(out.written.empty());
  EXPECT_EQ(ScheduleLines(), (std::vector<Text>{u"0"}));
}

TEST_F(EditorTest, ShowingARecordSetsChoicesMailAndIdentity) {
  Row r{u"7",       u"Tom & Jerry", u"03-31-2013 6:41:00", u"0", u"201303310641",
        u"Monthly", u"3",           u"a@b.com;c@d.org"};
  PutSchedule({u"0", r.Line()});
  Open(u"7");
  EXPECT_EQ(ed.Identity.BackupSetName, u"Tom & Jerry");
  EXPECT_EQ(BackupSetLabel(ed.Identity.BackupSetName), u"Backup/Restore set name - 'Tom && Jerry'");
  EXPECT_TRUE(c.timing.optMonthly);
  EXPECT_EQ(c.timing.DTPicker.hour, 6);
  EXPECT_EQ(c.timing.DTPicker.minute, 41);
  EXPECT_TRUE(c.ChkEmailNotification && c.optAlways && !c.optFailure && c.txtEmailEnabled);
  EXPECT_EQ(c.txtEmailNotification, u"a@b.com;c@d.org");

  // Mode "0" clears the mail controls; an empty mode leaves them.
  Row quiet{u"8", u"Quiet", u"03-25-2013 6:41:00", u"4", u"201303250641", u"2", u""};
  Row off{u"9", u"Off", u"03-25-2013 6:41:00", u"4", u"201303250641", u"2", u"0"};
  PutSchedule({u"0", quiet.Line(), off.Line()});
  Open(u"8");
  EXPECT_TRUE(c.ChkEmailNotification);
  EXPECT_EQ(c.txtEmailNotification, u"a@b.com;c@d.org");
  EXPECT_TRUE(c.timing.chkBox[1]);
  EXPECT_FALSE(c.timing.optMonthly);
  Open(u"9");
  EXPECT_FALSE(c.ChkEmailNotification || c.optAlways || c.txtEmailEnabled);
  EXPECT_EQ(c.txtEmailNotification, u"");
}

TEST_F(EditorTest, MonthlyDayMissingFromThePresentMonthShowsThePresentDay) {
  const base::DateTime april10{2013, 4, 10, 9, 0, 0};
  EXPECT_EQ(MonthlyPickerDate(april10, base::DateTime{2013, 5, 31, 6, 0, 0}),
            (base::DateTime{2013, 4, 10, 9, 0, 0}));
  EXPECT_EQ(MonthlyPickerDate(april10, base::DateTime{2014, 5, 30, 6, 0, 0}),
            (base::DateTime{2014, 4, 30, 9, 0, 0}));
  const base::DateTime feb{2013, 2, 3, 0, 0, 0};
  EXPECT_EQ(MonthlyPickerDate(feb, base::DateTime{2012, 3, 29, 0, 0, 0}).day, 3);
}

TEST_F(EditorTest, SettingsAreStoredByTheChecks) {
  PutSchedule({u"0", Row{u"1"}.Line()});
  Open(u"1");
  c.chkCutoffTime = true;
  c.DTPCutoffTime = At(22, 15, 0);
  c.chkdesktop = true;
  c.chkMissedBackup = false;
  ASSERT_TRUE(SaveSelection(app, ed, c, Text()));
  EXPECT_EQ(frame::ReadSetting(app, u"CUTOFFTIME"), u"22:15:00");
  EXPECT_EQ(frame::ReadSetting(app, u"desktopnotify"), u"1");
  EXPECT_EQ(frame::ReadSetting(app, u"MISSEDBACKUP"), u"0");
  EditorChoices loaded;
  LoadEditorSettings(app, loaded);
  EXPECT_TRUE(loaded.chkCutoffTime && loaded.DTPCutoffTimeEnabled && loaded.chkdesktop);
  EXPECT_EQ(loaded.DTPCutoffTime.hour, 22);
  c.chkCutoffTime = false;
  StoreCutoff(app, c);
  EXPECT_EQ(frame::ReadSetting(app, u"CUTOFFTIME"), u"0");
  LoadEditorSettings(app, loaded);
  EXPECT_FALSE(loaded.chkCutoffTime || loaded.DTPCutoffTimeEnabled);
}

// The list's rows from the temporary array: records without a job have none, a number
// shows once, and only the next job carries the state line's status.
TEST_F(EditorTest, ListRowsLeaveOutRecordsWithoutAJob) {
  PutSchedule({u"2", Row{u"4", u"Photos"}.Line(), Row{u"6", u"Music"}.Line()});
  auto record = [](const Text& no, const Text& name, const Text& days) {
    ScheduleRecord r;
    r.RecordNo = no;
    r.BackupSetName = name;
    r.NextRun = u"03-20-2013 9:00:00";
    r.FrequencyIndex = u"4";
    r.SortKey = u"201303200900";
    r.Days = days;
    return r;
  };
  ed.TempJobs = {record(u"4", u"Photos", u"4"), record(u"5", u"Gone", u"no schedule"),
                 record(u"4", u"Again", u"1"), record(u"", u"Nameless", u"1"),
                 record(u"6", u"Music", u"")};
  const std::vector<EditorRow> rows = EditorRows(app, ed, 4);
  ASSERT_EQ(rows.size(), 2u);
  EXPECT_EQ(rows[0].key, u"QV_4");
  EXPECT_EQ(rows[0].name, u"Photos");
  EXPECT_EQ(rows[0].cells[0], u"3/20/2013 9:00:00");
  EXPECT_EQ(rows[0].cells[1], u"Weekly");
  EXPECT_EQ(rows[0].cells[2], u"");
  EXPECT_EQ(rows[0].cells[7], u"Wednesday");
  EXPECT_EQ(rows[1].key, u"QV_6");
  EXPECT_EQ(rows[1].cells[2], u"Stopping");
  EXPECT_EQ(rows[1].cells[5], u"6");
  EXPECT_EQ(rows[1].cells[7], u"Weekly") << "no days: the frequency's name";

  // The running job is the next one of the file while the word says so.
  const long next = jobstore::DB_ReadSchdata(app, Text(), app.Jobs, false);
  ASSERT_GE(next, 0);
  EXPECT_EQ(CurrentJobNo(app, next), app.Jobs[static_cast<size_t>(next)].RecordNo);
  PutSchedule({u"0", Row{u"4", u"Photos"}.Line(), Row{u"6", u"Music"}.Line()});
  EXPECT_EQ(CurrentJobNo(app, next), u"");
  EXPECT_EQ(CurrentJobNo(app, 7), u"");
}

}  // namespace
}  // namespace jobs::test
