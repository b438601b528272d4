#include <gtest/gtest.h>

#include "AccountFixture.h"
#include "kit/WindowLook.h"
#include "account/AboutQVWIN.h"
#include "account/AccountScreens.h"
#include "account/FeedbackReport.h"
#include "account/frmErrorReport.h"
#include "account/frmUpdatePassword.h"
#include "account/UpdatePasswordRules.h"
#include "account/VersionInventory.h"

using base::Text;
using kit::ScriptedUi;

namespace {

class AccountScreensTest : public ::testing::Test, public testkit::AccountFixture {
 protected:
  static void Key(kit::Form& form, int code, int shift = 0) {
    kit::KeyArgs down{code, shift};
    form.DeliverKeyDown(down);
    kit::KeyArgs up{code, shift};
    form.DeliverKeyUp(up);
  }
};

TEST_F(AccountScreensTest, UpdatePasswordResetsOnEscAndStaysOpen) {
  account::frmUpdatePassword form(app, ui);
  ui.Show(form);
  form.txtUserName.SetText(u"mary");
  form.txtPassword.SetText(u"secret");
  Key(form, kit::kKeyEscape);
  EXPECT_TRUE(form.IsLoaded());
  EXPECT_EQ(form.txtUserName.GetText(), u"");
  EXPECT_EQ(form.txtPassword.GetText(), u"");
  EXPECT_EQ(form.ActiveControl(), &form.txtUserName);
  form.txtPassword.SetText(u"x");
  Key(form, 'R', kit::kAltMask);
  EXPECT_EQ(form.txtPassword.GetText(), u"");
  // Alt+A applies: with nothing typed, the user name is asked for first.
  ui.Queue(ScriptedUi::Answer::Ok());
  Key(form, 'A', kit::kAltMask);
  EXPECT_EQ(Texts(), std::vector<Text>{Msg(39)});
  form.Picture2.RaiseMouseUp({kit::kLeftButton});
  EXPECT_FALSE(form.IsLoaded());
}

TEST_F(AccountScreensTest, UpdatePasswordRefusesACharacterTheStoreCannotHold) {
  account::frmUpdatePassword form(app, ui);
  ui.Show(form);
  form.txtPassword.SetText(u"abc");
  EXPECT_TRUE(ui.Questions().empty());
  // A paste (or a key) that brings in a letter outside the alphabet: the box keeps
  // what it can store and says why.
  ui.Queue(ScriptedUi::Answer::Ok());
  form.txtPassword.SetText(u"abc\u00E9d\u20AC");
  EXPECT_EQ(form.txtPassword.GetText(), u"abcd");
  EXPECT_EQ(Texts(), std::vector<Text>{account::kPasswordAlphabetMessage});
  EXPECT_EQ(ui.Questions()[0].title, app.AppTitle);
  EXPECT_EQ(form.ActiveControl(), &form.txtPassword);
}

TEST_F(AccountScreensTest, UpdatePasswordAppliedByTheFormStoresAndCloses) {
  BackupSets(2);
  fake.network.goodAccounts[u"mary"] = u"newpass";
  ui.Queue({ScriptedUi::Answer::Yes(), ScriptedUi::Answer::Ok()});
  ui.OnShow(u"frmUpdatePassword", [](kit::Form& f) {
    auto& form = static_cast<account::frmUpdatePassword&>(f);
    form.txtUserName.SetText(u"mary");
    form.txtPassword.SetText(u"newpass");
    form.cmdUpdate.RaiseMouseUp({kit::kLeftButton});
    EXPECT_FALSE(form.IsLoaded());
  });
  EXPECT_TRUE(account::ShowUpdatePassword(app, ui, {}).shown);
  EXPECT_EQ(frame::ReadSetting(app, u"mary", true), u"newpass");
}

TEST_F(AccountScreensTest, ErrorReportLoadsTheUserAndFollowsTheTicket) {
  frame::WriteSetting(app, u"UserName", u"mary");
  frame::WriteSetting(app, u"EmailUserName", u"no address");
  account::frmErrorReport form(app, ui);
  ui.Show(form);
  EXPECT_EQ(form.txtFromName.GetText(), u"mary");
  EXPECT_EQ(form.txtFrom.GetText(), u"");
  EXPECT_FALSE(form.lblProgress.Visible());
  EXPECT_EQ(form.Label3.ToolTipText(), u"");
  form.txtTroubleTicket.SetText(u"4711");
  EXPECT_EQ(form.txtSubject.GetText(), account::TicketSubject(u"4711"));

  form.txtFrom.SetText(u"mary@example.com");
  form.txtMsg.SetText(u"It stopped.");
  form.cmdSend.RaiseMouseUp({kit::kLeftButton});
  ASSERT_EQ(fake.network.mails.size(), 1u);
  EXPECT_TRUE(form.lblProgress.Visible());
  EXPECT_EQ(form.lblProgress.Caption(), u"Feedback report has been sent successfully.");
  EXPECT_EQ(form.cmdSend.SkinState(), kit::kSkinNormal);
  EXPECT_EQ(form.Pointer(), kit::MousePointer::Default);
  Key(form, kit::kKeyEscape);
  EXPECT_FALSE(form.IsLoaded());
}

TEST_F(AccountScreensTest, ErrorReportSendIsNotStartedAgainWhileItRuns) {
  frame::WriteSetting(app, u"EmailUserName", u"mary@example.com");
  account::frmErrorReport form(app, ui);
  ui.Show(form);
  form.txtMsg.SetText(u"It stopped.");
  int pressesDuringUpload = 0;
  fake.network.duringUpload = [&] {
    if (pressesDuringUpload++ > 0) return;  // only the first upload: a nested one would recurse
    form.cmdSend.RaiseMouseUp({kit::kLeftButton});
    Key(form, 'S', kit::kAltMask);
  };
  form.cmdSend.RaiseMouseUp({kit::kLeftButton});
  EXPECT_EQ(fake.network.mails.size(), 1u) << "a send started inside the running one";
  // Once it has ended, Send works again.
  Key(form, 'S', kit::kAltMask);
  EXPECT_EQ(fake.network.mails.size(), 2u);
}

TEST_F(AccountScreensTest, ErrorReportAboveNinetySixDpiShortensTheTicketLabel) {
  ScriptedUi large(12);
  frame::WriteSetting(app, u"EmailUserName", u"mary@example.com");
  account::frmErrorReport form(app, large);
  large.Show(form);
  EXPECT_EQ(form.Label3.Caption(), u"Trouble Ticket ...");
  EXPECT_EQ(form.Label3.ToolTipText(), u"Trouble Ticket No  (If created already)");
  EXPECT_EQ(form.txtFrom.GetText(), u"mary@example.com");
}

TEST_F(AccountScreensTest, AboutListsTheFilesAndClosesByEsc) {
  app.ProgramFolder = u"C:\\QV";
  fake.versions.versions[u"c:\\qv\\qvmonitor.exe"] = {9, 5, 0, 5};
  account::AboutQVWIN form(app, ui);
  ui.Show(form);
  EXPECT_EQ(form.txtVersionList.GetText(), account::BuildVersionList(app, u"C:\\QV"));
  Key(form, kit::kKeyEscape);
  EXPECT_FALSE(form.IsLoaded());
}

}  // namespace
