// The schedule editor's screen without windows: the list, the showing of a row, the
// click rules, the row change, the Delete key, the pictures and the main button.
#include "DTEmailFixture.h"
#include "jobs/frmDTEmail.h"
#include "frame/MessageTable.h"
#include "kit/ScriptedUi.h"

namespace jobs::test {
namespace {

using Answer = kit::ScriptedUi::Answer;

// Job 1, weekly on Wednesdays at nine.
const Text kWeekly = Row{u"1", u"Docs", u"03-20-2013 9:00:00", u"4", u"201303200900", u"4"}.Line();

class DTEmailScreen : public EditorTest {
 protected:
  // The job list's opening of the editor on a record, then the first showing.
  void OpenScreen(const Text& recordNo) { OpenScreen(form, recordNo); }
  void OpenScreen(frmDTEmail& screen, const Text& recordNo) {
    screen.Load();
    jobstore::DB_ReadSchdata(app, Text(), app.Jobs, false);
    LoadTempJobs(app, screen.Editor());
    screen.Sch_ShowSelectedRecord(recordNo);
    ui.Show(screen);
  }
  Text Cell(int row, int column) { return form.Sch_list_lv.Item(row).SubItem(column); }
  kit::ListItem& RowOf(const Text& no) { return *form.Sch_list_lv.FindKey(u"QV_" + no); }
  void Click(kit::Control& c) { c.RaiseMouseUp({kit::kLeftButton, 0, 0, 0}); }

  kit::ScriptedUi ui;
  frmDTEmail form{app, ui};
};

TEST_F(DTEmailScreen, ListShowsTheRowsAndOnlyTheNextJobHasAStatus) {
  PutSchedule(
      {u"1", Row{u"4", u"Photos", u"03-20-2013 9:00:00", u"4", u"201303200900", u"4"}.Line(),
       Row{u"2", u"Running", u"03-25-2013 6:41:00", u"3", u"000000000000"}.Line(),
       Row{u"7", u"Tom & Jerry", u"03-31-2013 6:41:00", u"0", u"201303310641", u"Monthly"}.Line()});
  OpenScreen(u"7");
  // The cells are the editor rows'; the list sorts them by the hidden key, the running
  // job first, and shows the record it was opened on.
  ASSERT_EQ(form.Sch_list_lv.Count(), 3);
  EXPECT_EQ(Cell(1, 6), u"2");
  EXPECT_EQ(Cell(1, 3), u"In Progress");
  EXPECT_TRUE(RowOf(u"7").Selected());
  EXPECT_TRUE(form.DTPMonthly.Enabled());
  EXPECT_EQ(form.DTPMonthly.Value().day, 31);
  EXPECT_EQ(form.Pic_Delete.PictureKey(), u"del_gen");
  EXPECT_TRUE(form.Pic_Sttrf.Enabled());
}

TEST_F(DTEmailScreen, EmptyFileDisablesThePictures) {
  PutSchedule({u"0"});
  form.Load();
  LoadTempJobs(app, form.Editor());
  ui.Show(form);
  EXPECT_EQ(form.Sch_list_lv.Count(), 0);
  EXPECT_EQ(form.Pic_Delete.PictureKey(), u"del_dis");
  EXPECT_FALSE(form.Pic_Delete.Enabled());
  EXPECT_EQ(form.Pic_Refresh.PictureKey(), u"ref_dis");
  EXPECT_FALSE(form.Pic_Sttrf.Enabled());
}

TEST_F(DTEmailScreen, DayButtonsAndTheDailyCaption) {
  PutSchedule({u"0", kWeekly});
  OpenScreen(u"1");
  EXPECT_EQ(form.Pic_Wed_Day.PictureKey(), u"checked");
  Click(form.Pic_Mon_Day);
  EXPECT_TRUE(form.chkBox(1).Checked());
  // The row shows the new days at once.
  EXPECT_EQ(RowOf(u"1").SubItem(8), u"Monday,Wednesday");
  for (kit::Picture* p : {&form.pic_Sun_Day, &form.Pic_Tue_Day, &form.Pic_Thu_Day,
                          &form.Pic_Fri_Day, &form.Pic_Sat_Day})
    Click(*p);
  EXPECT_TRUE(form.chkDaily.Checked());
  EXPECT_EQ(form.chkDaily.Caption(), u" Daily Schedule");
  // Unchecking Daily clears the days and the caption, nothing more: the row is not
  // marked cleared (and so is saved as daily).
  form.chkDaily.UserClick();
  EXPECT_EQ(form.Pic_Fri_Day.PictureKey(), u"gen");
  EXPECT_FALSE(form.chkBox(5).Checked());
  EXPECT_EQ(form.chkDaily.Caption(), u" Week-Day(s)");
  EXPECT_FALSE(form.Editor().bRowCleared);
}

// A weekly job whose only day is unchecked stays in the file, as a daily job; only the
// uncheck of the last frequency (hourly, monthly, immediate) takes a job out.
TEST_F(DTEmailScreen, UncheckingTheLastDayKeepsTheJobAsDaily) {
  PutSchedule(
      {u"0", kWeekly,
       Row{u"2", u"Other", u"03-25-2013 6:41:00", u"0", u"201303250641", u"Hourly"}.Line()});
  OpenScreen(u"1");
  Click(form.Pic_Wed_Day);
  EXPECT_FALSE(form.chkBox(3).Checked());
  EXPECT_FALSE(form.Editor().bRowCleared);
  // Leaving the row saves it as daily too, and the other row's hourly uncheck clears it.
  form.Sch_list_lv.UserClickRow(RowOf(u"2").Index());
  EXPECT_EQ(TempRow(form.Editor(), u"1")->Days, u"1234567");
  form.optHourly.UserClick();
  EXPECT_TRUE(form.Editor().bRowCleared);
}

TEST_F(DTEmailScreen, FrequencyClickAsksToEnableAndShowsInTheRow) {
  PutSchedule({u"0", kWeekly});
  frame::WriteSetting(app, u"DisableAllSchdulers", u"1");
  OpenScreen(u"1");
  ui.Queue(Answer::Yes());
  form.DTPicker.SetValue(base::DateTime{2013, 3, 18, 16, 30, 17});
  form.optHourly.UserClick();
  EXPECT_EQ(ui.Questions().size(), 1u);
  EXPECT_EQ(frame::ReadSetting(app, u"DisableAllSchdulers"), u"0");
  EXPECT_FALSE(form.chkBox(3).Checked());
  EXPECT_EQ(RowOf(u"1").SubItem(8), u"Hourly");
  // The new frequency took a suggested start (whole minutes), and the row shows its run.
  const base::DateTime suggested = form.DTPicker.Value();
  EXPECT_EQ(suggested.second, 0);
  EXPECT_NE(suggested.hour * 100 + suggested.minute, 1630);
  EXPECT_EQ(RowOf(u"1").SubItem(1).substr(0, 10), u"3/18/2013 ");

  form.chkImmediate.UserClick();
  EXPECT_FALSE(form.optHourly.Checked());
  EXPECT_FALSE(form.DTPicker.Enabled());
  form.chkImmediate.UserClick();
  EXPECT_TRUE(form.Editor().bRowCleared);
  EXPECT_FALSE(form.chkdesktop.Enabled());
}

TEST_F(DTEmailScreen, MailBoxAndCutoffRules) {
  PutSchedule({u"0", Row{u"1"}.Line()});
  frame::WriteSetting(app, u"EmailUserName", u" me@home.net ");
  OpenScreen(u"1");
  EXPECT_FALSE(form.txtEmailNotification.Enabled());
  EXPECT_EQ(form.txtEmailNotification.BackColor(), kMailDisabledColor);
  form.ChkEmailNotification.UserClick();
  EXPECT_TRUE(form.txtEmailNotification.Enabled());
  EXPECT_EQ(form.txtEmailNotification.BackColor(), kMailEnabledColor);
  EXPECT_EQ(form.txtEmailNotification.GetText(), u"me@home.net");
  EXPECT_TRUE(form.optAlways.Value());
  form.ChkEmailNotification.UserClick();
  EXPECT_EQ(form.txtEmailNotification.GetText(), u"");
  EXPECT_EQ(form.txtEmailNotification.BackColor(), kMailDisabledColor);

  form.DTPCutoffTime.SetValue(base::DateTime{2013, 3, 18, 23, 0, 0});
  ui.Queue(Answer::No());
  form.chkCutoffTime.UserClick();
  ASSERT_EQ(ui.Questions().size(), 1u);
  EXPECT_EQ(ui.Questions()[0].text,
            u"You have set '23:00:00' as the cut-off time for the scheduled backup/restore "
            u"operation. This may terminate the scheduled job before it is complete.\r\n\r\nDo "
            u"you want to proceed?");
  EXPECT_FALSE(form.chkCutoffTime.Checked());
  EXPECT_FALSE(form.DTPCutoffTime.Enabled());
  EXPECT_EQ(form.DTPCutoffTime.Value().hour, 0);
  EXPECT_EQ(ui.UnansweredCount(), 0);
}

TEST_F(DTEmailScreen, InvalidMailKeepsTheOldRow) {
  PutSchedule({u"0", Row{u"1", u"First"}.Line(),
               Row{u"2", u"Second", u"03-26-2013 6:41:00", u"3", u"201303260641"}.Line()});
  OpenScreen(u"1");
  form.ChkEmailNotification.UserClick();
  form.txtEmailNotification.SetText(u"me@home");
  ui.Queue(Answer::Ok());
  form.Sch_list_lv.UserClickRow(RowOf(u"2").Index());
  EXPECT_EQ(ui.Questions().size(), 1u);
  EXPECT_TRUE(RowOf(u"1").Selected());
  EXPECT_EQ(form.lblBkSetName.Caption(), u"Backup/Restore set name - 'First'");

  form.txtEmailNotification.SetText(u"me@home.net");
  form.Sch_list_lv.UserClickRow(RowOf(u"2").Index());
  EXPECT_EQ(form.lblBkSetName.Caption(), u"Backup/Restore set name - 'Second'");
  // The first row's choices went into the temporary array, not yet into the file.
  EXPECT_EQ(TempRow(form.Editor(), u"1")->MailAddresses, u"me@home.net");
  EXPECT_EQ(InFile(u"1").MailAddresses, u"");
}

// The job list under the editor reads the file again as soon as it is active, that is
// when the editor has gone: the main button unloads the screen only after every row is
// written, though its check asks for the unload before.
TEST_F(DTEmailScreen, MainButtonUnloadsOnlyWhenTheRowsAreWritten) {
  struct Watched : frmDTEmail {
    using frmDTEmail::frmDTEmail;
    std::function<void()> unloading;
    void Form_Unload(int& cancel) override {
      unloading();
      frmDTEmail::Form_Unload(cancel);
    }
  };
  PutSchedule({u"0", kWeekly, Row{u"2", u"Other"}.Line()});
  Watched screen{app, ui};
  std::vector<Text> daysAtUnload;
  screen.unloading = [&] { daysAtUnload = {InFile(u"1").Days, InFile(u"2").Days}; };
  OpenScreen(screen, u"1");
  screen.optHourly.UserClick();
  Click(screen.Sch_Start4_Next);
  EXPECT_FALSE(screen.IsLoaded());
  EXPECT_EQ(daysAtUnload, (std::vector<Text>{u"Hourly", u"1234567"}));
}

TEST_F(DTEmailScreen, DeleteKeyAndDeletePicture) {
  PutSchedule({u"1",
               Row{u"1", u"Restore ItemSet", u"03-18-2013 6:41:00", u"3", u"000000000000"}.Line(),
               Row{u"2", u"Other"}.Line(), Row{u"3", u"autobkupqvwin"}.Line()});
  OpenScreen(u"2");
  form.Sch_list_lv.UserClickRow(RowOf(u"1").Index());
  form.Sch_list_lv.SetFocus();
  kit::KeyArgs del{kit::kKeyDelete, 0};
  ui.Queue(Answer::Ok());
  form.DeliverKeyDown(del);
  ASSERT_EQ(ui.Questions().size(), 1u);
  EXPECT_EQ(ui.Questions()[0].text, frame::GetMessage(app, 297));

  form.Sch_list_lv.UserClickRow(RowOf(u"2").Index());
  ui.Queue(Answer::Yes());
  kit::KeyArgs del2{kit::kKeyDelete, 0};
  form.DeliverKeyDown(del2);
  EXPECT_EQ(ui.Questions().back().text, u"Do you want to delete the scheduled job?");
  EXPECT_EQ(InFile(u"2").RecordNo, u"");
  EXPECT_EQ(InFile(u"1").SortKey, u"000000000000");
  EXPECT_EQ(form.Sch_list_lv.FindKey(u"QV_2"), nullptr);

  // The automated job asks first; Cancel keeps it.
  form.Sch_list_lv.UserClickRow(RowOf(u"3").Index());
  ui.Queue(Answer::Cancel());
  Click(form.Pic_Delete);
  EXPECT_EQ(ui.Questions().back().text, frame::GetMessage(app, 326));
  EXPECT_EQ(InFile(u"3").RecordNo, u"3");
  EXPECT_EQ(ui.UnansweredCount(), 0);
}

// The Delete picture removes one job from the file; what the user changed on the other
// rows is still saved at Close, and the deleted job is not written back.
TEST_F(DTEmailScreen, DeletePictureKeepsTheEditsOfTheOtherRows) {
  PutSchedule({u"0", kWeekly, Row{u"2", u"Other"}.Line(), Row{u"3", u"Third"}.Line()});
  OpenScreen(u"1");
  form.optHourly.UserClick();
  form.DTPicker.SetValue(base::DateTime{2013, 3, 18, 16, 30, 0});
  form.Sch_list_lv.UserClickRow(RowOf(u"2").Index());
  ui.Queue(Answer::Yes());
  Click(form.Pic_Delete);
  EXPECT_EQ(ui.Questions().back().text, frame::GetMessage(app, 26));
  EXPECT_EQ(InFile(u"2").RecordNo, u"");
  Click(form.Sch_Start4_Next);
  EXPECT_FALSE(form.IsLoaded());
  EXPECT_EQ(InFile(u"1").SortKey, u"201303181630");
  EXPECT_EQ(InFile(u"2").RecordNo, u"");
  EXPECT_EQ(InFile(u"3").Days, u"1234567");
  EXPECT_EQ(ui.UnansweredCount(), 0);
}

TEST_F(DTEmailScreen, ShowDTEmailOpensModallyOnTheRecord) {
  PutSchedule({u"0", Row{u"1", u"First"}.Line(),
               Row{u"2", u"Second", u"03-20-2013 9:00:00", u"4", u"201303200900", u"4"}.Line()});
  kit::ScriptedUi modal;
  int scripted = 0;
  modal.OnShow(u"frmDTEmail", [&](kit::Form& f) {
    ++scripted;
    auto& screen = static_cast<frmDTEmail&>(f);
    EXPECT_TRUE(screen.Sch_list_lv.FindKey(u"QV_2")->Selected());
    screen.chkImmediate.UserClick();
    Click(screen.Sch_Start4_Next);
    EXPECT_FALSE(screen.IsLoaded());
  });
  EXPECT_TRUE(ShowDTEmail(app, modal, {.recordNo = u"2"}).shown);
  EXPECT_EQ(scripted, 1);
  EXPECT_EQ(InFile(u"2").Days, u"Immediate");
}

// The row the user moves to is brought into view (the host scrolls to the list's
// visible row): a long list does not leave the edited job out of sight.
TEST_F(DTEmailScreen, TheRowChangeBringsTheNewRowIntoView) {
  std::vector<Text> lines{u"0"};
  for (int i = 1; i <= 30; ++i) lines.push_back(Row{base::FromNumber(i), u"Set"}.Line());
  PutSchedule(lines);
  OpenScreen(u"1");
  form.Sch_list_lv.UserClickRow(RowOf(u"27").Index());
  // The list is filled again at the change: the row is looked for anew.
  EXPECT_TRUE(RowOf(u"27").Selected());
  EXPECT_NE(RowOf(u"1").Index(), RowOf(u"27").Index());
  EXPECT_EQ(form.Sch_list_lv.VisibleRow(), RowOf(u"27").Index());
}

// The automated job is known by its exact name; Cancel (lblClose) leaves the file as it
// was.
TEST_F(DTEmailScreen, SmallerRulesOfTheScreen) {
  const std::vector<Text> lines{u"0", Row{u"1", u"Job"}.Line(),
                                Row{u"13", u"AutoBkupQvWin"}.Line()};
  PutSchedule(lines);
  OpenScreen(u"1");
  form.Sch_list_lv.UserClickRow(RowOf(u"13").Index());
  ui.Queue(Answer::No());
  Click(form.Pic_Delete);
  EXPECT_EQ(ui.Questions().back().text, frame::GetMessage(app, 26));

  form.optHourly.UserClick();
  EXPECT_TRUE(form.lblClose.Visible());
  Click(form.lblClose);
  EXPECT_FALSE(form.IsLoaded());
  EXPECT_EQ(InFile(u"13").Days, u"1234567");
  EXPECT_EQ(ScheduleLines(), lines);
}

}  // namespace
}  // namespace jobs::test
