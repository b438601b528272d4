// The two forms over their rules: what the user sees after the activation, the
// picture buttons, the list's input, the keys, and Backup Now's columns by mode.
#include "jobs/frmBackupNow.h"
#include "jobs/frmManageScheduledJobs.h"

#include "JobsFixture.h"
#include "jobstore/DBaction.h"
#include "kit/ToolTips.h"

namespace jobstest {
namespace {

using A = kit::ScriptedUi::Answer;

class ManageScreenTest : public JobsTest {
 protected:
  void Open() { ui.Show(form); }
  jobs::frmManageScheduledJobs form{app, ui};
};

TEST_F(ManageScreenTest, WhatTheActivationShows) {
  PutSchedule(u"1", {kDocs, kRunning});
  Open();
  // Placed with its bottom right corner on the work area's (1280 x 760 pixels).
  EXPECT_EQ(form.GetLayout().left, 1280 * 15 - 10125);
  EXPECT_EQ(form.GetLayout().top, 760 * 15 - 7800);
  // The rows, their status and the line under the list are the list rules'; the form
  // shows them, with the first row selected.
  ASSERT_EQ(form.Sch_list_lv.Count(), 2);
  EXPECT_EQ(form.Sch_list_lv.CellText(2, 3), u"In Progress");
  EXPECT_EQ(form.Sch_list_lv.SelectedIndex(), 1);
  EXPECT_NE(form.lblMsgProgres.Caption(), u"");
  EXPECT_TRUE(form.Pic_Edit.Enabled());
  EXPECT_TRUE(form.Timer1.Running());
}

TEST_F(ManageScreenTest, AnEmptyScheduleLeavesOnlyRefreshAndClose) {
  Open();
  EXPECT_EQ(form.Sch_list_lv.Count(), 0);
  for (kit::Picture* b : {&form.Pic_Edit, &form.Pic_Delete, &form.Pic_Imme, &form.Pic_Sttrf})
    EXPECT_FALSE(b->Enabled()) << U8(b->Name());
  EXPECT_EQ(form.Pic_Sttrf.PictureKey(), u"stop_dis");
  EXPECT_TRUE(form.Pic_Refresh.Enabled());
  // A job appears; the refresh shows it, but the buttons wait for a click or activation.
  PutSchedule(u"0", {kDocs});
  form.Pic_Refresh.RaiseMouseUp({kit::kLeftButton});
  EXPECT_EQ(form.Sch_list_lv.Count(), 1);
  form.Sch_list_lv.UserClickRow(1);
  EXPECT_EQ(form.Pic_Edit.PictureKey(), u"edit_gen");
}

TEST_F(ManageScreenTest, PictureButtons) {
  PutSchedule(u"0", {kDocs, kRunning});
  Open();
  // The right button shows the tip and runs nothing; the middle one runs the action.
  form.Pic_Imme.RaiseMouseUp({kit::kRightButton});
  EXPECT_TRUE(ui.Questions().empty());
  ASSERT_NE(ui.Tips().Balloon(), nullptr);
  form.Pic_Imme.RaiseMouseUp({kit::kMiddleButton});
  EXPECT_EQ(Asked(), std::vector<Text>{Msg(564)});
  EXPECT_EQ(form.Sch_list_lv.Count(), 3);
  // Stop completely acts on the platform's click.
  form.Pic_Stcomp.RaiseMouseUp({kit::kLeftButton});
  EXPECT_EQ(fake.clock.sleptMs, 0u);
  form.Pic_Stcomp.RaiseClick();
  EXPECT_EQ(fake.clock.sleptMs, 9000u);
}

// The plug-in's download is opened through the shell with the job list's window as
// its owner.
TEST_F(ManageScreenTest, ThePluginDownloadIsOwnedByTheScreen) {
  PutSchedule(u"0",
              {Rec{u"4", u"QVORACLEBkset", u"03-25-2013 6:41:00", u"201303250641", u"2", u"4"}});
  Open();
  form.Sch_list_lv.UserClickRow(1);
  ui.Queue(A::Ok());
  form.Pic_Edit.RaiseMouseUp({kit::kLeftButton});
  ASSERT_EQ(fake.shell.executed.size(), 1u);
  EXPECT_NE(fake.shell.executed[0].ownerWindow, 0u);
  EXPECT_EQ(fake.shell.executed[0].ownerWindow, ui.NativeWindowOf(form));
}

TEST_F(ManageScreenTest, TheListsInputAndTheTimer) {
  PutSchedule(u"1", {kDocs, kRunning});
  Open();
  form.Sch_list_lv.UserClickRow(2);
  EXPECT_EQ(form.List().SelectedRow, 2);
  kit::KeyArgs del{46, 0};
  form.Sch_list_lv.SetFocus();
  form.DeliverKeyUp(del);
  EXPECT_EQ(Asked(), std::vector<Text>{Msg(296)});
  // The engine ends the job; a minute later the list says so by itself.
  PutSchedule(u"0", {kDocs, kRunning});
  form.Timer1.Fire();
  EXPECT_EQ(form.Sch_list_lv.CellText(2, 3), u"");
  EXPECT_EQ(form.Sch_list_lv.SelectedIndex(), 2);
  // Enter on the list does not close the screen; Escape does.
  kit::KeyArgs enter{13, 0};
  form.DeliverKeyDown(enter);
  EXPECT_TRUE(form.IsLoaded());
  kit::KeyArgs esc{27, 0};
  form.DeliverKeyUp(esc);
  EXPECT_FALSE(form.IsLoaded());
}

class BackupNowScreenTest : public JobsTest {
 protected:
  BackupNowScreenTest() {
    SetIni(u"UserName", u"jsmith");
    PutLines(Common(u"BacksetData.txt"), {u"Documents\b1", u"Photos\b1"});
  }
};

TEST_F(BackupNowScreenTest, MirrorModeFromTheMenuToTheRecord) {
  ui.OnShow(u"frmBackupNow", [&](kit::Form& f) {
    auto& screen = static_cast<jobs::frmBackupNow&>(f);
    EXPECT_EQ(screen.LstBackupSet.Column(1).width, 5940);
    EXPECT_EQ(screen.LstBackupSet.Column(2).width, 0);
    ASSERT_EQ(screen.LstBackupSet.Count(), 2);
    EXPECT_TRUE(screen.LstBackupSet.Item(1).Selected());
    screen.LstBackupSet.UserClickRow(2);
    kit::KeyArgs altB{'B', kit::kAltMask};
    screen.DeliverKeyUp(altB);
    EXPECT_FALSE(screen.IsLoaded());
  });
  EXPECT_TRUE(jobs::ShowBackupNow(app, ui, {}).shown);
  ASSERT_EQ(ui.ShownForms().size(), 2u);  // the screen, then the message box
  EXPECT_EQ(jobstore::ParseScheduleLine(Schedule().back()).record.BackupSetName, u"Photos");
}

TEST_F(BackupNowScreenTest, RelativePathModeAndASecondBackupNow) {
  SetIni(u"MIRROR", u"0");
  Rec office = kDocs;
  office.dest = u"Office/";
  PutSchedule(u"0", {office});
  std::vector<bool> loadedAfterPress;
  ui.OnShow(u"frmBackupNow", [&](kit::Form& f) {
    auto& screen = static_cast<jobs::frmBackupNow&>(f);
    EXPECT_EQ(screen.LstBackupSet.Column(1).width, 2550);
    EXPECT_EQ(screen.LstBackupSet.Column(2).width, 3400);
    EXPECT_EQ(screen.LstBackupSet.Item(1).SubItem(1), u"Office/");
    screen.cmdBackupNow.RaiseMouseUp({kit::kLeftButton});
    loadedAfterPress.push_back(screen.IsLoaded());
  });
  jobs::ShowBackupNow(app, ui, {});
  jobs::ShowBackupNow(app, ui, {});
  // The first added the record and closed; the second was refused and stayed.
  EXPECT_EQ(loadedAfterPress, (std::vector<bool>{false, true}));
  EXPECT_EQ(Asked().size(), 2u);
  EXPECT_EQ(Schedule().size(), 3u);
  EXPECT_EQ(jobstore::ParseScheduleLine(Schedule().back()).record.Destination, u"Office/");
  EXPECT_EQ(app.Store.ChosenDestination, u"Office/");
}

}  // namespace
}  // namespace jobstest
