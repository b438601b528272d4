// The actions of the job list: their order of checks, their messages and what each
// writes to the schedule file.
#include "jobs/JobActions.h"

#include "JobsFixture.h"
#include "jobstore/DBaction.h"

namespace jobstest {
namespace {

using A = kit::ScriptedUi::Answer;

const Rec kAuto{u"6", u"autobkupqvwin", u"03-20-2013 6:00:00", u"201303200600", u"1234567", u"3"};

class JobActionsTest : public JobsTest {
 protected:
  JobActionsTest()
      : actions(app, list, prompts, 10, [this](const Text& no) { edited.push_back(no); }) {}
  // The screen as the user sees it: loaded and activated, row `row` clicked.
  void Open(long row = 1) {
    jobs::ActivateJobList(app, list);
    if (row > 0) jobs::ClickRow(app, list, row);
  }

  jobs::JobList list;
  std::vector<Text> edited;
  jobs::JobActions actions;
};

TEST_F(JobActionsTest, RunNowAddsOneImmediateRecord) {
  PutSchedule(u"1", {kDocs, kRunning});
  Open(1);
  // Another row is in progress, the selected one is not: the record is added.
  actions.Pic_Imme_Click();
  EXPECT_EQ(Asked(), std::vector<Text>{Msg(564)});
  // The source job keeps its line, moved nowhere. The new record runs (and was made) at
  // the system's short date and "hh:mm AMPM", as the engine expects from this button.
  Rec added{u"0", u"Documents", u"3/18/2013 03:02 PM", u"000000010000", u"", u"1"};
  added.created = added.next;
  EXPECT_EQ(Schedule(), (std::vector<Text>{u"1", kDocs.Line(), kRunning.Line(), added.Line()}));
  EXPECT_EQ(list.Count(), 3);
}

TEST_F(JobActionsTest, RunNowRefusals) {
  // A Backup Now record of another set is an immediate job too.
  Rec backupNow{u"4", u"Other", u"03-18-2013 15:00:00", u"000000010000", u""};
  PutSchedule(u"1", {kDocs, kRunning, backupNow});
  Open(2);
  actions.Pic_Imme_Click();  // the selected row is in progress
  EXPECT_EQ(Asked(), std::vector<Text>{Msg(37)});
  jobs::ClickRow(app, list, 1);
  actions.Pic_Imme_Click();
  EXPECT_EQ(Asked().back(), Msg(38));
  EXPECT_EQ(ui.Questions().back().icon, kit::kIconWarning);
  // A plug-in set without its files: the offer, and nothing else is asked.
  SetIni(u"DisableAllSchdulers", u"1");
  PutSchedule(u"0", {Rec{u"8", u"QVSQLServerBksetPay"}});
  Open(1);
  ui.Queue(A::Ok());
  actions.Pic_Imme_Click();
  EXPECT_EQ(Asked().back(), Msg(501));
  EXPECT_EQ(prompts.downloads.size(), 1u);
  EXPECT_EQ(Schedule().size(), 2u);
  EXPECT_EQ(frame::ReadSetting(app, u"DisableAllSchdulers"), u"1");
}

TEST_F(JobActionsTest, DisabledJobsAreAskedAboutButRunAnyway) {
  SetIni(u"DisableAllSchdulers", u"1");
  PutSchedule(u"0", {kDocs});
  Open(1);
  ui.Queue(A::No());
  actions.Pic_Imme_Click();
  ASSERT_EQ(Asked().size(), 2u);
  EXPECT_EQ(Asked()[0], Msg(35));
  EXPECT_EQ(Asked()[1], Msg(564));
  EXPECT_EQ(frame::ReadSetting(app, u"DisableAllSchdulers"), u"1");
  EXPECT_EQ(Schedule().size(), 3u);
}

TEST_F(JobActionsTest, RunNowOnARowWithoutANumberIsTraced) {
  Rec bare{u"9", u"Bare"};
  bare.next = u"";
  PutSchedule(u"0", {bare});
  Open(1);
  actions.Pic_Imme_Click();
  EXPECT_TRUE(Asked().empty());
  EXPECT_TRUE(TraceMentions(u"in procedure Pic_Imme_Click of Form SchedulerFrm"));
  EXPECT_EQ(Schedule().size(), 2u);
}

TEST_F(JobActionsTest, DeleteAsksAfterAReloadAndDeletesTheNumberReadBefore) {
  PutSchedule(u"0", {kDocs, kAuto});
  Open(1);
  // Meanwhile the engine moved a job in front of it.
  PutSchedule(u"0", {kRunning, kDocs, kAuto});
  std::vector<long> fills;
  ui.Queue(A::Yes());
  list.changed = [&] { fills.push_back(list.Count()); };
  actions.Pic_Delete_Click();
  EXPECT_EQ(Asked(), std::vector<Text>{Msg(26)});
  EXPECT_EQ(ui.Questions()[0].icon, kit::kIconQuestion);
  // The user saw the three jobs of the file behind the question, then the two left.
  ASSERT_GE(fills.size(), 2u);
  EXPECT_EQ(fills.front(), 3);
  EXPECT_EQ(fills.back(), 2);
  EXPECT_EQ(Schedule(), (std::vector<Text>{u"0", kRunning.Line(), kAuto.Line()}));
}

TEST_F(JobActionsTest, DeleteOfTheAutomatedJobAndAnswersNo) {
  PutSchedule(u"0", {kDocs, kAuto});
  Open(2);
  ui.Queue(A::Cancel());
  actions.Pic_Delete_Click();
  EXPECT_EQ(Asked(), std::vector<Text>{Msg(24)});
  EXPECT_EQ(ui.Questions()[0].buttons, kit::kButtonsOkCancel);
  ui.Queue({A::Ok(), A::No()});
  actions.Pic_Delete_Click();
  EXPECT_EQ(Asked().back(), Msg(26));
  EXPECT_EQ(Schedule().size(), 3u);
  // The Delete key on the automated row asks the same with its own number.
  ui.Queue({A::Ok(), A::Yes()});
  actions.Sch_list_lv_KeyUp(46);
  EXPECT_EQ(Asked()[3], Msg(33));
  EXPECT_EQ(Schedule(), (std::vector<Text>{u"0", kDocs.Line()}));
}

TEST_F(JobActionsTest, DeleteIsRefusedForAnyStatus) {
  PutSchedule(u"2", {kDocs, kRunning});
  Open(2);  // "Stopping"
  actions.Pic_Delete_Click();
  EXPECT_EQ(Asked(), std::vector<Text>{Msg(296)});
  EXPECT_EQ(ui.Questions()[0].icon, kit::kIconWarning);
  Rec restore = kRunning;
  restore.name = u"RESTORE ITEMSET";
  PutSchedule(u"1", {kDocs, restore});
  Open(2);
  actions.Pic_Delete_Click();
  EXPECT_EQ(Asked().back(),
            u"The scheduled job can not be deleted as the restore operation is underway.");
  EXPECT_EQ(Schedule().size(), 3u);
}

// The selected row is beyond the last one after a refill: the fill traces its own
// failure and the list stands without a selection; the action itself goes on and the
// user sees no box from the fill.
TEST_F(JobActionsTest, AFillBeyondTheLastRowIsNoErrorOfTheAction) {
  const Rec a{u"3", u"Alpha"}, b{u"7", u"Beta"}, c{u"8", u"Gamma"};
  PutSchedule(u"0", {a, b, c});
  Open(3);
  ui.Queue(A::Yes());
  actions.Pic_Delete_Click();
  EXPECT_EQ(Asked(), std::vector<Text>{Msg(26)});
  EXPECT_EQ(Schedule(), (std::vector<Text>{u"0", a.Line(), b.Line()}));
  EXPECT_EQ(list.Count(), 2);

  // Run now on the bottom row of a list that shrank: the record is added and told.
  PutSchedule(u"0", {a, b, c});
  Open(3);
  PutSchedule(u"0", {c});
  actions.Pic_Imme_Click();
  EXPECT_EQ(Asked().back(), Msg(564));
  EXPECT_EQ(Schedule().size(), 3u);
  for (const Text& asked : Asked()) EXPECT_EQ(base::InStr(asked, u"Unable to"), 0u) << U8(asked);
}

TEST_F(JobActionsTest, StopWritesTwoOnlyOverOne) {
  PutSchedule(u"1", {kDocs, kRunning});
  Open(1);
  actions.Pic_Sttrf_Click();  // not the running row
  EXPECT_EQ(Asked(), std::vector<Text>{Msg(36)});
  jobs::ClickRow(app, list, 2);
  ui.Queue(A::No());
  actions.Pic_Sttrf_Click();
  EXPECT_EQ(Asked().back(), Msg(29));
  EXPECT_EQ(Schedule()[0], u"1");
  ui.Queue(A::Yes());
  actions.Pic_Sttrf_Click();
  EXPECT_EQ(Asked().back(), Msg(30));
  EXPECT_EQ(Schedule()[0], u"2");
  EXPECT_EQ(list.rows[1].Status(), u"Stopping");
  // The list still says "In Progress" but the engine already has "2": nothing more.
  PutSchedule(u"1", {kDocs, kRunning});
  jobs::RefreshListView(app, list);
  PutSchedule(u"2", {kDocs, kRunning});
  const size_t before = Asked().size();
  ui.Queue(A::Yes());
  actions.Pic_Sttrf_Click();
  EXPECT_EQ(Asked().size(), before + 1);  // the question only
  EXPECT_EQ(Schedule()[0], u"2");
}

TEST_F(JobActionsTest, StopCompletelyClearsAnUntakenStopAfterNineSeconds) {
  PutSchedule(u"2", {kDocs, kRunning});
  Open(1);
  actions.Pic_Stcomp_Click();
  EXPECT_EQ(fake.clock.sleptMs, 9000u);
  EXPECT_EQ(Schedule()[0], u"0");
  EXPECT_EQ(list.rows[1].Status(), u"");
  EXPECT_TRUE(Asked().empty());
  // Over a running job nothing changes after the wait.
  PutSchedule(u"1", {kDocs, kRunning});
  actions.Pic_Stcomp_Click();
  EXPECT_EQ(fake.clock.sleptMs, 18000u);
  EXPECT_EQ(Schedule()[0], u"1");
}

TEST_F(JobActionsTest, EditChecksThenOpensTheEditor) {
  SetIni(u"DisableAllSchdulers", u"1");
  PutSchedule(u"1", {kDocs, kRunning});
  Open(2);
  ui.Queue(A::No());
  actions.Pic_Edit_Click();
  EXPECT_EQ(Asked(), (std::vector<Text>{Msg(22), Msg(23)}));
  EXPECT_EQ(ui.Questions()[1].icon, kit::kIconError);
  EXPECT_TRUE(edited.empty());
  jobs::ClickRow(app, list, 1);
  ui.Queue(A::Yes());
  actions.Sch_list_lv_DblClick();
  EXPECT_EQ(edited, std::vector<Text>{u"3"});
  EXPECT_EQ(frame::ReadSetting(app, u"DisableAllSchdulers"), u"0");
  // A plug-in set is refused before any other question.
  PutSchedule(u"0", {Rec{u"8", u"QVExchBrick Mon"}});
  Open(1);
  const size_t before = Asked().size();
  actions.Pic_Edit_Click();
  EXPECT_EQ(Asked().size(), before + 1);
  EXPECT_EQ(Asked().back(), Msg(502));
  EXPECT_EQ(edited.size(), 1u);
}

TEST_F(JobActionsTest, EnterFindsTheJobAgain) {
  PutSchedule(u"0", {kDocs, kRunning});
  Open(2);
  actions.Sch_list_lv_KeyUp(13);
  EXPECT_EQ(app.Store.RecordIndex, 2);
  EXPECT_TRUE(edited.empty());  // Enter opens nothing
  PutSchedule(u"0", {kDocs});
  actions.ShowSelectedRecord();
  EXPECT_EQ(Asked(), std::vector<Text>{Msg(28)});
  EXPECT_EQ(list.Count(), 1);
}

TEST_F(JobActionsTest, AFullDiskIsToldAndNothingClaimsSuccess) {
  PutSchedule(u"1", {kDocs, kRunning});
  const auto before = Schedule();
  Open(1);
  fake.fs.SetSpaceLeft(0);
  const Text full = u"There is not enough space on the disk.";

  actions.Pic_Imme_Click();
  EXPECT_EQ(Asked(),
            std::vector<Text>{u"Unable to schedule the record immediately. Reason : " + full});
  EXPECT_EQ(ui.Questions().back().icon, kit::kIconError);

  ui.Queue(A::Yes());
  actions.Pic_Delete_Click();
  EXPECT_EQ(Asked().back(), u"Unable to delete the record. Reason : " + full);

  jobs::ClickRow(app, list, 2);
  ui.Queue(A::Yes());
  actions.Pic_Sttrf_Click();
  EXPECT_EQ(Asked().back(), Msg(29)) << "the question, never \"will stop shortly\"";

  EXPECT_EQ(Schedule(), before);
  EXPECT_TRUE(fake.fs.List(Common(u""), u"*.qvtmp").empty());

  // Room again: the next action goes through.
  fake.fs.SetSpaceLeft(std::nullopt);
  jobs::ClickRow(app, list, 1);
  actions.Pic_Imme_Click();
  EXPECT_EQ(Asked().back(), Msg(564));
  EXPECT_EQ(Schedule().size(), before.size() + 1);
}

}  // namespace
}  // namespace jobstest
