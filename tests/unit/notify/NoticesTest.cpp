// The three notices of the tick on the windowless kit: what brings each up, what it
// shows, and what its buttons do.
#include <gtest/gtest.h>

#include "frame/Settings.h"
#include "jobstore/DBaction.h"
#include "kit/LabelText.h"
#include "kit/ScriptedUi.h"
#include "notify/Dialup.h"
#include "notify/Dialupdisconnect.h"
#include "notify/NextJob.h"
#include "notify/Notices.h"
#include "notify/bkupjobnotify.h"
#include "notify/frmBKErrNotify.h"
#include "testkit/FrameFixture.h"

namespace {

using base::Text;
using testkit::U8;

class NoticesTest : public ::testing::Test, public testkit::CommonFixture {
 protected:
  NoticesTest() { fake.clock.now = {2026, 11, 15, 10, 0, 0}; }
  void Request(const std::vector<Text>& lines) {
    platform::TextFile::WriteLines(fake.fs, Common(notify::kJobRequestFile), lines);
  }
  bool RequestLeft() { return fake.fs.FileExists(Common(notify::kJobRequestFile)); }
  static Text ScheduleLine(Text set, Text next, Text key) {
    jobstore::ScheduleRecord r;
    r.BackupSetName = std::move(set);
    r.NextRun = std::move(next);
    r.SortKey = std::move(key);
    return jobstore::BuildScheduleLine(r);
  }

  kit::ScriptedUi ui;
  int sessionLogs = 0;
  int errorReports = 0;
  double monitorFontSize = 0;
  notify::Notices notices{app, ui,
                          notify::NoticeHooks{[this] { ++sessionLogs; }, [this] { ++errorReports; },
                                              [this] { return monitorFontSize; }}};
  notify::bkupjobnotify& job = notices.JobNotice();
  notify::frmBKErrNotify& err = notices.ErrNotice();
  notify::Dialupdisconnect& dialup = notices.DialupWindow();
};

TEST_F(NoticesTest, AGreenJobComesUpInTheCornerWithItsNamesAndIsConsumed) {
  notices.senddesktopnotify();  // no request: no window, no sound
  EXPECT_FALSE(job.IsLoaded());
  EXPECT_TRUE(fake.sound.played.empty());
  frame::WriteSetting(app, u"DESKNOTIFYICON", u"green");
  Request({u"Photos & Music", u"ignored", u"alice"});
  notices.senddesktopnotify();
  ASSERT_TRUE(job.Visible());
  EXPECT_FALSE(RequestLeft());
  EXPECT_EQ(fake.sound.played, (std::vector<Text>{u"SystemStart"}));
  EXPECT_EQ(job.bkupjobname.Caption(), u"Photos && Music");
  EXPECT_EQ(job.lblaccntname.Caption(), u"alice");
  EXPECT_TRUE(job.PicSuccessJob.Visible());
  EXPECT_FALSE(job.PicFailedJob.Visible());
  EXPECT_TRUE(job.ShowWithoutActivation()) << "the notice took the keyboard";
  EXPECT_DOUBLE_EQ(job.Left() + job.Width(), 1280 * 15);
  EXPECT_DOUBLE_EQ(job.Top() + job.Height(), 760 * 15);
  EXPECT_EQ(job.schjobststus.Caption(), notify::kNoScheduledJob);
  EXPECT_FALSE(job.lblnxtbkup.Visible());
  EXPECT_FALSE(job.QVDiskPBar.Visible());  // no quota keys

  frame::WriteSetting(app, u"DESKNOTIFYICON", u"red");
  Request({u"Docs", u"", u"alice"});
  notices.senddesktopnotify();
  EXPECT_TRUE(job.PicFailedJob.Visible());
  EXPECT_FALSE(job.PicSuccessJob.Visible());
}

TEST_F(NoticesTest, TheDefaultSetIsNotNamedAndAnEmptyRequestShowsTheNamesKept) {
  Request({u"DEFAULT BACKUPSET", u"", u"alice"});
  notices.senddesktopnotify();
  EXPECT_FALSE(job.bkupjobname.Visible());
  EXPECT_FALSE(job.Label1.Visible());
  Request({u"Mail", u"", u"bob"});
  notices.senddesktopnotify();
  EXPECT_TRUE(job.bkupjobname.Visible());
  EXPECT_TRUE(job.Label1.Visible());

  fake.fs.WriteAll(Common(notify::kJobRequestFile), "");
  notices.senddesktopnotify();
  EXPECT_FALSE(RequestLeft());
  EXPECT_TRUE(job.Visible());
  // The activation's work fills the set from the name kept from the last job.
  EXPECT_EQ(job.bkupjobname.Caption(), u"Mail");
  EXPECT_EQ(job.lblaccntname.Caption(), u"bob");
}

// The names are measured in the font size of the monitor window's label, copied first.
TEST_F(NoticesTest, TheNamesAreWrappedInTheMonitorWindowsLabelSize) {
  const Text name = u"Photos of the family summer holidays";
  Request({name, u"", u"bob"});
  notices.senddesktopnotify();
  const Text standard = job.bkupjobname.Caption();
  monitorFontSize = 14;
  Request({name, u"", u"bob"});
  notices.senddesktopnotify();
  for (const kit::Label* l : {&job.lblTempDummy, &job.bkupjobname, &job.lblnxtbkup})
    EXPECT_EQ(l->FontSize(), 14) << U8(l->Name());
  const auto wrap = [&](double size) {
    return kit::WrapLabelText(notify::LabelText(name), [&](base::TextView piece) {
      return ui.Measure().Measure(piece, size, false, 0).width <= job.bkupjobname.Width();
    });
  };
  EXPECT_EQ(job.bkupjobname.Caption(), wrap(14));
  EXPECT_EQ(standard, wrap(0));
  EXPECT_NE(wrap(14), wrap(0)) << "the sizes should break the name differently";
}

TEST_F(NoticesTest, CloseDropsAPendingRequestTheCornerPictureDoesNot) {
  Request({u"Mail", u"", u"bob"});
  notices.senddesktopnotify();
  Request({u"Next", u"", u"bob"});
  job.cancel.RaiseMouseUp({kit::kLeftButton});
  EXPECT_FALSE(job.IsLoaded());
  EXPECT_FALSE(RequestLeft());

  Request({u"Mail", u"", u"bob"});
  notices.senddesktopnotify();
  Request({u"Next", u"", u"bob"});
  job.Picture2.RaiseMouseUp({kit::kLeftButton});
  EXPECT_FALSE(job.IsLoaded());
  EXPECT_TRUE(RequestLeft());
  notices.senddesktopnotify();  // the next tick
  EXPECT_TRUE(job.Visible());
  EXPECT_EQ(job.bkupjobname.Caption(), u"Next");
}

TEST_F(NoticesTest, ViewLogOpensTheSessionLogAndTheNoticeStays) {
  Request({u"Mail", u"", u"bob"});
  notices.senddesktopnotify();
  ASSERT_TRUE(job.TopMost());
  job.viewbkuplog.RaiseMouseUp({kit::kLeftButton});
  EXPECT_EQ(sessionLogs, 1);
  EXPECT_TRUE(job.Visible());
  // The notice steps back so that the Session Log comes up in front of it.
  EXPECT_FALSE(job.TopMost());
  kit::KeyArgs altV{'V', kit::kAltMask};
  job.DeliverKeyUp(altV);
  EXPECT_EQ(sessionLogs, 2);
  // The next job's end brings it up over the other windows again.
  Request({u"Mail", u"", u"bob"});
  notices.senddesktopnotify();
  EXPECT_TRUE(job.TopMost());
  kit::KeyArgs esc{kit::kKeyEscape, 0};
  job.DeliverKeyUp(esc);
  EXPECT_FALSE(job.IsLoaded());
}

// The next job is the one that sorts first, whatever the order of the lines.
TEST_F(NoticesTest, TheNextJobAndQuotaLinesAreThoseOfTheMomentOfShowing) {
  platform::TextFile::WriteLines(
      fake.fs, app.ScheduleFilePath,
      {u"0", ScheduleLine(u"Later", u"11-17-2026 9:00:00", u"202611170900"),
       ScheduleLine(u"Photos & Music", u"11-15-2026 13:00:00", u"202611151300")});
  fake.fs.AddFolders(u"C:\\QV\\QVCOMMON\\alice");
  app.UserName = u"alice";
  frame::WriteSetting(app, u"TotalSpace", u"1000M");
  frame::WriteSetting(app, u"UsedSpace", u"1200M");
  frame::WriteAccountKey(app, u"Corvane", u"ACCTYPE", u"QVSYNC");
  Request({u"Mail", u"", u"alice"});
  notices.senddesktopnotify();
  EXPECT_EQ(job.schjobststus.Caption(), Text(notify::kStartsIn) + u"3 hour(s)");
  EXPECT_TRUE(job.lblnxtbkup.Visible());
  EXPECT_EQ(job.lblnxtbkup.Caption(), u"Next Backup/Restore Set:  Photos && Music");
  EXPECT_EQ(job.lblnxtbkupTime.Caption(), u"Next Transfer Time: 11/15/2026 1:00:00 PM");
  EXPECT_TRUE(job.QVDiskPBar.Visible());
  EXPECT_EQ(job.QVDiskPBar.BarColor(), notify::kQuotaFullColor);
  EXPECT_EQ(job.lblUserQuota.Caption(), u"1.17 GB Out of 1,000.00 MB");
}

TEST_F(NoticesTest, TheMissedBackupNoticeTellsTheReasonAndLinksToTheReport) {
  fake.fs.AddFolders(u"C:\\QV\\QVCOMMON\\alice");
  frame::WriteSetting(app, u"NotifyUsers", u"<<alice");
  const Text file = Common(u"alice\\qvwinserver.ini");
  fake.profile.WriteString(u"Corvane", Text(u"Notify_Err"), Text(u"1"), file);
  fake.profile.WriteString(u"Corvane", Text(u"DateFailed"), Text(u"20261101"), file);
  fake.profile.WriteString(u"Corvane", Text(u"Notifymsg"), Text(u"MISSEDBACKUP"), file);
  notices.CheckMissedBackup();
  ASSERT_TRUE(err.Visible());
  EXPECT_TRUE(base::StartsWith(
      err.Label2.Caption(),
      u"The scheduled backup has not taken place for the past 14 day(s) for the account 'alice'."))
      << U8(err.Label2.Caption());
  const double textTop = err.Label2.Top(), linkTop = err.lblLink.Top();
  err.lblLink.RaiseClick();
  EXPECT_FALSE(err.IsLoaded());
  EXPECT_EQ(errorReports, 1);

  // No reason: the plain text sits lower and the link moves up.
  frame::WriteSetting(app, u"NotifyUsers", u"<<alice");
  fake.profile.WriteString(u"Corvane", Text(u"Notify_Err"), Text(u"1"), file);
  fake.profile.WriteString(u"Corvane", Text(u"DateFailed"), Text(u"20261101"), file);
  notices.CheckMissedBackup();
  ASSERT_TRUE(err.Visible());
  EXPECT_GT(err.Label2.Top(), textTop);
  EXPECT_LT(err.lblLink.Top(), linkTop);
  err.cancel.RaiseMouseUp({kit::kLeftButton});
  EXPECT_FALSE(err.IsLoaded());
}

// The dial-up lines belong to the job that asked: its log under logs\ and its session
// file, named by the request's two lines.
TEST_F(NoticesTest, TheDialupWindowCountsDownAndHangsUpForTheJobThatAsked) {
  const Text session = u"Schedule 11-15-2026  05-02-33.txt";
  fake.dialUp.connections = {{0x11, u"Office", u"modem", u"USR 56k"}};
  fake.fs.WriteAll(Common(notify::kDialupRequestFile), "Mail\r\n" + U8(session) + "\r\n");
  notices.DialupCheck();
  ASSERT_TRUE(dialup.Visible());
  EXPECT_FALSE(fake.fs.FileExists(Common(notify::kDialupRequestFile)));
  EXPECT_TRUE(dialup.Disconnectcountdown.Running());
  for (int i = 0; i < 29; ++i) dialup.Disconnectcountdown.Fire();
  EXPECT_EQ(dialup.Disconnect.Lbl().Caption(), u"Disconnecting(1)");
  EXPECT_TRUE(dialup.IsLoaded());
  dialup.Disconnectcountdown.Fire();
  ASSERT_FALSE(dialup.IsLoaded());
  const std::vector<Text> expected{u"Successfully disconnected 'Office' connection",
                                   u"Successfully logged out", u""};
  EXPECT_EQ(Activity(), expected);
  EXPECT_EQ(Messages(Common(u"logs\\Mail.txt")), expected);
  EXPECT_EQ(Messages(Common(u"Session\\" + session)), expected);
  EXPECT_FALSE(fake.fs.FileExists(Common(u"logs\\.txt")));
}

TEST_F(NoticesTest, CloseAtTwentyNineHangsUpNothing) {
  fake.dialUp.connections = {{0x11, u"Office", u"modem", u"USR 56k"}};
  fake.fs.WriteAll(Common(notify::kDialupRequestFile), "");
  notices.DialupCheck();
  for (int i = 0; i < 29; ++i) dialup.Disconnectcountdown.Fire();
  dialup.cancel.RaiseMouseUp({kit::kLeftButton});
  EXPECT_FALSE(dialup.IsLoaded());
  EXPECT_TRUE(fake.dialUp.hangUps.empty());
  EXPECT_EQ(Activity(), (std::vector<Text>{u"Dial-up disconnection canceled",
                                           u"Successfully logged out", u""}));
  // Disconnect at once, and the corner picture that only closes.
  fake.fs.WriteAll(Common(notify::kDialupRequestFile), "");
  notices.DialupCheck();
  EXPECT_EQ(dialup.Counter(), 0);
  dialup.Disconnect.RaiseMouseUp({kit::kLeftButton});
  EXPECT_EQ(fake.dialUp.hangUps.size(), 1u);
  fake.fs.WriteAll(Common(notify::kDialupRequestFile), "");
  notices.DialupCheck();
  const std::size_t lines = Activity().size();
  dialup.Picture2.RaiseMouseUp({kit::kLeftButton});
  EXPECT_FALSE(dialup.IsLoaded());
  EXPECT_EQ(Activity().size(), lines);
}

}  // namespace
