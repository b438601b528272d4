// The job list as FillListView builds it: the cells, the one status, the line under
// the list, the selection and the buttons.
#include "jobs/JobListRules.h"

#include "JobsFixture.h"

namespace jobstest {
namespace {

using jobs::JobList;

class JobListTest : public JobsTest {
 protected:
  void Refresh() { jobs::RefreshListView(app, list); }
  JobList list;
};

const Rec kWeekend{u"7", u"Weekend", u"03-23-2013 8:00:00", u"201303230800", u"17", u"7"};

TEST_F(JobListTest, TheRowsAndTheOneStatus) {
  PutSchedule(u"1", {kDocs, kRunning, kWeekend});
  Refresh();
  ASSERT_EQ(list.Count(), 3);
  EXPECT_EQ(list.NextJobIndex, 1);
  const std::vector<Text> docs = {u"Documents", u"3/25/2013",   u"Weekly",
                                  u"",          u"My Corvane/", u"201303250641",
                                  u"3",         u"jsmith",      u"Monday"};
  EXPECT_EQ(list.rows[0].Cells(), docs);
  // The job with the smallest key is the one running; the line under the list names it.
  EXPECT_EQ(list.rows[1].Status(), u"In Progress");
  EXPECT_EQ(list.lblMsgProgres,
            u"Scheduled backup (username : mary) for the Backup set : 'Photos' is in progress.");
  EXPECT_EQ(list.rows[0].Status() + list.rows[2].Status(), u"");
  EXPECT_EQ(list.SelectedRow, 1);
  EXPECT_EQ(list.markedRow, 1);
}

TEST_F(JobListTest, StateWordsTwoAndZero) {
  PutSchedule(u"2", {kDocs, kRunning});
  Refresh();
  EXPECT_EQ(list.rows[1].Status(), u"Stopping");
  EXPECT_EQ(list.lblMsgProgres, u"");
  // "0" with the running key: no status anywhere.
  PutSchedule(u"0", {kDocs, kRunning});
  Refresh();
  EXPECT_EQ(list.rows[0].Status() + list.rows[1].Status(), u"");
  EXPECT_EQ(list.lblMsgProgres, u"");
  // A stale "1" shows on whatever job sorts first now.
  PutSchedule(u"1", {kDocs, kWeekend});
  Refresh();
  EXPECT_EQ(list.rows[1].Status(), u"In Progress");
  EXPECT_EQ(list.rows[0].Status(), u"");
}

TEST_F(JobListTest, EmptyNextRunAndBadDates) {
  Rec bare{u"9", u"Bare"};
  bare.next = u"";
  Rec bad{u"10", u"Bad", u"someday"};
  PutSchedule(u"1", {bare, bad, kDocs});
  Refresh();
  ASSERT_EQ(list.Count(), 3);
  // The name only: no cells, no number, and so no status even if it sorted first.
  EXPECT_EQ(list.rows[0].Cells(), std::vector<Text>{u"Bare"});
  EXPECT_EQ(list.rows[0].Number(), u"");
  // A NextRun that is no date ends its row after the name; the next row is filled.
  EXPECT_EQ(list.rows[1].Cells(), std::vector<Text>{u"Bad"});
  EXPECT_TRUE(TraceMentions(u"in procedure FillListView of Form SchedulerFrm"));
  EXPECT_EQ(list.rows[2].Number(), u"3");
}

TEST_F(JobListTest, TheDisplayFollowsTheSystemsShortDate) {
  PutSchedule(u"0", {kDocs});
  fake.locale.shortDateFormat = u"dd.MM.yyyy";
  fake.locale.dateSeparator = u".";
  Refresh();
  EXPECT_EQ(list.rows[0].Cell(jobs::kColNextTransfer), u"25.03.2013");
  // A day-first system that keeps the file's dates as stored (DateFormat "D..."): the
  // record's date goes through the file's form before it is read, so the 5th of March
  // shows as such and not as the 3rd of May.
  fake.profile.WriteString(u"DateFormat", u"DateFormat", u"dd-mm-yyyy", Common(u"qvwin.ini"));
  PutSchedule(u"0", {Rec{u"4", u"March", u"03-05-2013 6:41:00", u"201303050641"}});
  Refresh();
  EXPECT_EQ(list.rows[0].Cell(jobs::kColNextTransfer), u"05.03.2013");
}

TEST_F(JobListTest, SelectionSurvivesARebuildAndAStaleOneIsTraced) {
  PutSchedule(u"0", {kDocs, kRunning, kWeekend});
  Refresh();
  jobs::ClickRow(app, list, 3);
  EXPECT_EQ(list.SelectedRow, 3);
  Refresh();
  EXPECT_EQ(list.markedRow, 3);
  // Deleted elsewhere: row 3 is gone, the fill cannot mark it and says so in the trace.
  PutSchedule(u"0", {kDocs, kRunning});
  int told = 0;
  list.changed = [&] { ++told; };
  Refresh();
  EXPECT_EQ(list.Count(), 2);
  EXPECT_EQ(list.markedRow, 0);
  EXPECT_EQ(list.SelectedRow, 3);
  EXPECT_GE(told, 1);  // the screen still saw the new rows
  // The fill itself traces it; nothing reaches the caller's handler.
  EXPECT_FALSE(TraceMentions(u"in procedure RefreshListView of Form SchedulerFrm"));
}

TEST_F(JobListTest, ButtonsFollowTheList) {
  PutSchedule(u"0", {kDocs});
  // A refresh does not enable them; the activation and a click on a row do.
  Refresh();
  EXPECT_FALSE(list.buttonsEnabled);
  jobs::ActivateJobList(app, list);
  EXPECT_TRUE(list.buttonsEnabled);
  list.buttonsEnabled = false;
  jobs::ClickRow(app, list, 1);
  EXPECT_TRUE(list.buttonsEnabled);
  app.Store.BackupNowMode = true;
  PutSchedule(u"0", {});
  Refresh();
  EXPECT_FALSE(app.Store.BackupNowMode);
  EXPECT_EQ(list.Count(), 0);
  EXPECT_FALSE(list.buttonsEnabled);
  EXPECT_EQ(list.SelectedRow, 1);  // a row number kept, even of an empty list
  // No file at all: no rows either.
  fake.fs.DeleteFile(app.ScheduleFilePath);
  Refresh();
  EXPECT_EQ(list.Count(), 0);
}

TEST_F(JobListTest, RowOfARecordNumber) {
  PutSchedule(u"0", {kDocs, kRunning});
  Refresh();
  EXPECT_TRUE(jobs::GetListNoFromRecNo(app, list, u"5"));
  EXPECT_EQ(list.SelectedRow, 2);
  EXPECT_FALSE(jobs::GetListNoFromRecNo(app, list, u"4"));
  EXPECT_EQ(list.SelectedRow, 2);
}

}  // namespace
}  // namespace jobstest
