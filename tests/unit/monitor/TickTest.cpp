// The ten-second tick: its order and flags with scripted progress calls, what it draws
// on the transfer pane, and the Refresh that runs it out of turn.
#include <gtest/gtest.h>

#include "MonitorFixture.h"

namespace {

using base::Text;
using TickTest = monitortest::MonitorFormTest;

TEST_F(TickTest, StepsRunInTheirOrderAndLeaveTheFlagsAsDesigned) {
  EngineType(u"service");
  LogLines(3);
  Open();
  ui.Show(*form);
  form->lstLog.ClearRows();
  backgroundEngine->steady = u"Stopped";
  backgroundEngine->startSettles = false;

  // What each later step finds when its turn comes.
  struct Seen {
    bool updateWaiting;
    int rows;
    Text status;
    bool stopMenu;
    Text paneFlag;
  };
  std::map<std::string, Seen> seen;
  screens.onStep = [&](const std::string& step) {
    seen[step] = {app.UpdateWaiting, form->lstLog.Count(), form->lblStatus.Caption(),
                  form->StoptransferMenu.Enabled(), app.PaneFlag};
  };

  Call(u"C:\\docs\\a.txt", 2048, 4096, 1024, 50, 25, 1);
  ASSERT_TRUE(app.UpdateWaiting);
  ASSERT_EQ(app.PaneFlag, u"1");
  form->Progress.Fire();

  EXPECT_EQ(log, (std::vector<std::string>{
                     "senddesktopnotify", "Dialupdisconnect", "service.status", "background.status",
                     "background.start", "background.status", "CheckMissedBackup"}));
  // 14 cleared the update before 17; 16 filled the list; 19 came after 18.
  EXPECT_FALSE(seen["senddesktopnotify"].updateWaiting);
  EXPECT_EQ(seen["senddesktopnotify"].rows, 3);
  EXPECT_EQ(seen["Dialupdisconnect"].status, u"Running");
  EXPECT_EQ(seen["CheckMissedBackup"].status, u"Stopped");
  // 10 enabled the stop item; 22 comes after 21 and leaves a live file's flag alone.
  EXPECT_TRUE(seen["CheckMissedBackup"].stopMenu);
  EXPECT_EQ(seen["CheckMissedBackup"].paneFlag, u"1");
  EXPECT_EQ(app.PaneFlag, u"1");
  EXPECT_TRUE(app.TransferSeen);
  EXPECT_FALSE(app.StopSeen);
  EXPECT_TRUE(form->mnustprunjob.Enabled());  // 2 saw the waiting update
  EXPECT_TRUE(form->FrameProgress.Visible());

  // The next tick has nothing waiting: the stop item of the tray goes off at step 2.
  form->Progress.Fire();
  EXPECT_FALSE(form->mnustprunjob.Enabled());
}

TEST_F(TickTest, TheTickDrawsTheStoredUpdateOnThePane) {
  Open();
  Call(u"C:\\Tom & Jerry\\" + Text(40, u'x') + u".doc", 1536, 3.0 * 1048576, 1048576, 40, 33, 2, 1,
       u"1:10:00");
  form->Progress.Fire();
  // The texts' formats are PaneTextTest's; here, that each reaches its place.
  auto& f = *form;
  EXPECT_EQ(f.lblRsyncTransferStatus.Caption(), u"Status : 1,024.00 KB out of 3.00 MB (1.2 MB/s)");
  EXPECT_EQ(f.txtRsyncfilesize1.Caption(), u"1.50 KB");
  EXPECT_EQ(f.txtRsyncTimeElapsed.Caption(), u"0:01:10");
  EXPECT_EQ(f.txtRsyncTimeLeft.Caption(), u"1:10:00");
  EXPECT_DOUBLE_EQ(f.prgbarRsyncfile1.Value(), 40);
  EXPECT_DOUBLE_EQ(f.PrgbarRsyncTotal.Value(), 33);
  const Text name = f.txtRsyncFileName1.Caption();
  EXPECT_NE(name.find(u"\r\n"), Text::npos);  // broken to the label's width
  EXPECT_EQ(base::Replace(name, u"\r\n", u""),
            u"[Incremental Backup] C:\\Tom && Jerry\\" + Text(40, u'x') + u".doc");
  EXPECT_EQ(Tray().tip, u"Corvane for Windows Monitor - 33% transferred");

  // No total, no file number: no total bar, no file name or size.
  Call(u"b.txt", 10, 0, 500, 1, 0, 1, 0, u"5:00:00");
  form->Progress.Fire();
  EXPECT_FALSE(f.PrgbarRsyncTotal.Visible());
  EXPECT_FALSE(f.txtRsyncFileName1.Visible());
  EXPECT_FALSE(f.txtRsyncfilesize1.Visible());
  EXPECT_EQ(f.lblRsyncTransferStatus.Caption(), u"Status : 500.00 B Transferred (1.2 MB/s)");
  EXPECT_EQ(f.txtRsyncTimeLeft.Caption(), u"1:10:00");  // total 0: the time left stays
  EXPECT_EQ(Tray().tip, u"Corvane for Windows Monitor");
}

TEST_F(TickTest, ARestoreIsNotThrottledSoTheBandwidthControlsHide) {
  Setting(u"AUTOPAUSECHECK", u"1");
  Open();
  const kit::Control* throttling[] = {&form->chkbandwidth, &form->PictSliderBox1,
                                      &form->PictSliderKnob1, &form->lablBandWidth,
                                      &form->LabelPauseMsg};
  for (const long kind : {0, 3}) {  // a restore, then a backup
    Call(u"b.txt", 100, 1000, 10, 10, 1, kind);
    form->Progress.Fire();
    for (const kit::Control* c : throttling)
      EXPECT_EQ(c->Visible(), kind != 0) << monitortest::U8(c->Name());
  }
}

TEST_F(TickTest, StopAndAnUpdateWithoutAFileReturnTheIdlePaneOnlyOnTheStatusTab) {
  Open();
  Call(u"a.txt", 100, 1000, 10, 10, 1, 1);
  form->Progress.Fire();
  form->cmdDetails.RaiseClick();
  ASSERT_TRUE(form->FrameDetails.Visible());
  StopCall();  // the flags it sets are the callback's tests
  form->Progress.Fire();
  EXPECT_TRUE(form->FrameDetails.Visible());
  EXPECT_EQ(form->pic_Status.PictureKey(), monitor::kTabStatus);
  EXPECT_FALSE(form->StoptransferMenu.Enabled());
  EXPECT_FALSE(app.TransferSeen);

  Call(u"a.txt", 100, 1000, 10, 10, 1, 1);
  form->pic_Status.RaiseClick();
  form->Progress.Fire();
  ASSERT_TRUE(form->FrameProgress.Visible());
  StopCall();
  form->Progress.Fire();
  EXPECT_TRUE(form->FrameNormal.Visible());
  EXPECT_FALSE(form->FrameProgress.Visible());
  EXPECT_EQ(form->cmdDetails.PictureKey(), monitor::kTabDetails);

  // An update without a file ends in the Status tab routine, which takes the tab back.
  form->cmdDetails.RaiseClick();
  ASSERT_EQ(app.PaneFlag, u"2");
  Call(u"", 0, 1000, 0, 0, 0, 1);  // sets the flag to 1
  form->Progress.Fire();
  EXPECT_EQ(app.PaneFlag, u"0");
  EXPECT_TRUE(form->StatusTabSelected());
  EXPECT_TRUE(form->FrameNormal.Visible());  // the update was drawn: nothing is waiting
}

TEST_F(TickTest, RefreshDrawsTheWaitingUpdateSoTheNextTickSkipsTheDrawing) {
  Open();
  Call(u"a.txt", 100, 1000, 10, 10, 1, 1);
  form->btnRefresh.RaiseClick();
  EXPECT_FALSE(app.UpdateWaiting);
  EXPECT_EQ(form->Pointer(), kit::MousePointer::Default);
  app.Transfer.dTotalBuffer = 999;  // changed without a call: not drawn
  form->Progress.Fire();
  EXPECT_EQ(form->lblRsyncTransferStatus.Caption(),
            u"Status : 10.00 B out of 1,000.00 B (1.2 MB/s)");
  EXPECT_EQ(app.SessionFilePath, app.ServiceLogPath);
}

TEST_F(TickTest, WithNoUpdateEverOnlyTheLaterStepsRun) {
  LogLines(2);
  Open();
  ui.Show(*form);
  form->Progress.Fire();
  EXPECT_FALSE(app.TransferSeen);
  EXPECT_EQ(form->lblRsyncTransferStatus.Caption(), u"");
  EXPECT_TRUE(form->FrameNormal.Visible());
  EXPECT_EQ(log.front(), "senddesktopnotify");
  EXPECT_EQ(log.back(), "CheckMissedBackup");
  // A background engine without a transfer: the tick leaves the log list alone.
  EXPECT_EQ(form->lstLog.Count(), 0);
  EngineType(u"service");
  form->Progress.Fire();
  EXPECT_EQ(form->lstLog.Count(), 2);
  // A hidden window's list is not refreshed.
  form->lstLog.ClearRows();
  form->Hide();
  form->Progress.Fire();
  EXPECT_EQ(form->lstLog.Count(), 0);
}

TEST_F(TickTest, TheDailyTimerRunsOnlyForABackgroundEngine) {
  Open();
  EXPECT_NE(form->DailyTimer(), 0u);
  EngineType(u"service");
  monitor::frmQVWinService second(app, ui);
  second.Load();
  EXPECT_EQ(second.DailyTimer(), 0u);
}

}  // namespace
