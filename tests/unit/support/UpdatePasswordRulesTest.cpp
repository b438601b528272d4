#include <gtest/gtest.h>

#include "SupportFixture.h"
#include "kit/MesgBox.h"
#include "kit/MessageTable.h"
#include "support/UpdatePasswordRules.h"

using base::Text;
using kit::ScriptedUi;
using support::ApplyOutcome;

namespace {

class UpdatePasswordRulesTest : public ::testing::Test, public testkit::SupportFixture {
 protected:
  UpdatePasswordRulesTest() {
    hooks.focusUserName = [this] { events.push_back("focus user"); };
    hooks.focusPassword = [this] { events.push_back("focus password"); };
    hooks.setBusy = [this](bool on) { events.push_back(on ? "busy" : "normal"); };
    hooks.close = [this] { events.push_back("close"); };
    fake.network.goodAccounts[u"mary"] = u"0123456789abcdef";
    BackupSets(2);
  }
  ApplyOutcome Apply(const Text& user, const Text& password) {
    return support::ApplyPassword(app, ui, user, password, hooks);
  }
  std::vector<Text> Texts() {
    std::vector<Text> t;
    for (const auto& q : ui.Questions()) t.push_back(q.text);
    return t;
  }
  Text Msg(long code) { return kit::GetMessage(app, code); }

  support::PasswordScreenHooks hooks;
  std::vector<std::string> events;
};

TEST_F(UpdatePasswordRulesTest, BlankFieldsAreAskedForFirstAndNothingElseHappens) {
  EXPECT_EQ(Apply(u"   ", u"pw"), ApplyOutcome::MissingUserName);
  EXPECT_EQ(Apply(u"mary", u"  "), ApplyOutcome::MissingPassword);
  EXPECT_EQ(Texts(), (std::vector<Text>{Msg(39), Msg(40)}));
  EXPECT_EQ(ui.Questions()[0].icon, 0);
  EXPECT_EQ(events, (std::vector<std::string>{"focus user", "focus password"}));
  EXPECT_TRUE(fake.network.logins.empty());
}

TEST_F(UpdatePasswordRulesTest, SeventeenCharactersAreProvedAndStoredCutToSixteen) {
  ui.Queue({ScriptedUi::Answer::Yes(), ScriptedUi::Answer::Ok()});
  EXPECT_EQ(Apply(u"  mary ", u" 0123456789abcdefg "), ApplyOutcome::Updated);
  ASSERT_EQ(fake.network.logins.size(), 1u);
  EXPECT_EQ(fake.network.logins[0], (std::pair<Text, Text>{u"mary", u"0123456789abcdef"}));
  EXPECT_EQ(Texts(), (std::vector<Text>{Msg(41), Msg(48)}));
  EXPECT_EQ(ui.Questions()[0].icon, 1);
  EXPECT_EQ(ui.Questions()[0].buttons, 2);
  EXPECT_EQ(ui.UnansweredCount(), 0);
  EXPECT_EQ(events, (std::vector<std::string>{"busy", "normal", "close"}));
  // What the engine reads: the name in qvwin.ini and the scrambled value file.
  EXPECT_EQ(frame::ReadSetting(app, u"UserName"), u"mary");
  EXPECT_TRUE(fake.fs.FileExists(Common(u"mary\\mary.txt")));
  EXPECT_EQ(frame::ReadSetting(app, u"mary", true), u"0123456789abcdef");
  EXPECT_GE(ui.DoEventsCount(), 4);
}

TEST_F(UpdatePasswordRulesTest, APasswordThatCannotBeStoredIsNeverCalledUpdated) {
  frame::WriteSetting(app, u"UserName", u"john");
  const std::string ini = fake.fs.Bytes(Common(u"qvwin.ini"));
  // The name can be written, the password's folder cannot be made.
  fake.fs.FailCreateFolder(Common(u"mary"));
  ui.Queue({ScriptedUi::Answer::Yes(), ScriptedUi::Answer::Ok()});
  EXPECT_EQ(Apply(u"mary", u"0123456789abcdef"), ApplyOutcome::NotStored);
  ASSERT_EQ(Texts().size(), 2u);
  EXPECT_EQ(Texts()[1],
            u"The new password could not be stored. Reason : The system cannot find "
            u"the path specified.");
  EXPECT_EQ(ui.Questions()[1].icon, kit::kIconError);
  EXPECT_EQ(std::count(events.begin(), events.end(), "close"), 0) << "the screen stays";
  EXPECT_EQ(fake.fs.Bytes(Common(u"qvwin.ini")), ini) << "the name went back with its password";
  EXPECT_FALSE(fake.fs.FileExists(Common(u"mary\\mary.txt")));

  // A full disk: nothing is written at all.
  fake.fs.SetSpaceLeft(0);
  ui.Queue({ScriptedUi::Answer::Yes(), ScriptedUi::Answer::Ok()});
  EXPECT_EQ(Apply(u"mary", u"0123456789abcdef"), ApplyOutcome::NotStored);
  EXPECT_EQ(Texts().back(),
            u"The new password could not be stored. Reason : There is not enough space on the "
            u"disk.");
  EXPECT_EQ(fake.fs.Bytes(Common(u"qvwin.ini")), ini);
}

TEST_F(UpdatePasswordRulesTest, NoToTheQuestionLeavesEverythingAsItWas) {
  ui.Queue(ScriptedUi::Answer::No());
  EXPECT_EQ(Apply(u"mary", u"0123456789abcdef"), ApplyOutcome::NotConfirmed);
  EXPECT_TRUE(fake.network.logins.empty());
  EXPECT_TRUE(events.empty());
  EXPECT_EQ(frame::ReadSetting(app, u"UserName"), u"");
}

TEST_F(UpdatePasswordRulesTest, JobInProgressIsRefusedOnlyAfterAGoodProof) {
  JobInProgress();
  ui.Queue({ScriptedUi::Answer::Yes(), ScriptedUi::Answer::Ok()});
  EXPECT_EQ(Apply(u"mary", u"0123456789abcdef"), ApplyOutcome::JobInProgress);
  EXPECT_EQ(fake.network.logins.size(), 1u);
  EXPECT_EQ(Texts(), (std::vector<Text>{Msg(41), Msg(47)}));
  EXPECT_EQ(events, (std::vector<std::string>{"busy", "normal"}));
  EXPECT_EQ(frame::ReadSetting(app, u"UserName"), u"");

  // With a wrong password the job in progress is never reached.
  fake.network.statusReplies.push_back({u"OK", u"Active account"});
  ui.Queue({ScriptedUi::Answer::Yes(), ScriptedUi::Answer::Ok()});
  EXPECT_EQ(Apply(u"mary", u"wrong"), ApplyOutcome::Refused);
  EXPECT_EQ(Texts().back(), Msg(42));
  EXPECT_EQ(ui.Questions().back().icon, 3);
}

TEST_F(UpdatePasswordRulesTest, RefusalsSayWhyByTheAccountsState) {
  fake.network.statusReplies.push_back({u"OK", u"Cancelled on 01-02-2013"});
  fake.network.statusReplies.push_back({u"Cache Access Denied.", u"", 403});
  fake.network.statusReplies.push_back({u"OK", u"Expired on 01-02-2013"});
  ui.Queue({ScriptedUi::Answer::Yes(), ScriptedUi::Answer::Ok(), ScriptedUi::Answer::Yes(),
            ScriptedUi::Answer::Ok()});
  EXPECT_EQ(Apply(u"joe", u"pw"), ApplyOutcome::Refused);
  EXPECT_EQ(Apply(u"joe", u"pw"), ApplyOutcome::Refused);
  ASSERT_EQ(ui.Questions().size(), 4u);
  EXPECT_EQ(Texts()[1], u"Unable to connect to Corvane. Reason : account 'joe' has been canceled.");
  EXPECT_EQ(Texts()[3], u"Unable to connect to Corvane. Reason : account 'joe' has expired.");
  EXPECT_EQ(ui.Questions()[3].icon, 3);
  EXPECT_EQ(fake.network.requests.size(), 3u);  // the expired one behind the proxy's retry
  EXPECT_EQ(ui.UnansweredCount(), 0);
}

TEST_F(UpdatePasswordRulesTest, NoConnectionSaysNothingAndTooFewSetsWriteNothing) {
  ui.Queue(ScriptedUi::Answer::Yes());
  EXPECT_EQ(Apply(u"joe", u"pw"), ApplyOutcome::Refused);
  EXPECT_EQ(ui.Questions().size(), 1u);
  EXPECT_EQ(events, (std::vector<std::string>{"busy", "normal"}));

  BackupSets(1);
  ui.Queue(ScriptedUi::Answer::Yes());
  EXPECT_EQ(Apply(u"mary", u"0123456789abcdef"), ApplyOutcome::NoBackupSets);
  EXPECT_EQ(ui.Questions().size(), 2u);
  EXPECT_EQ(frame::ReadSetting(app, u"UserName"), u"");
  EXPECT_FALSE(fake.fs.FileExists(Common(u"mary\\mary.txt")));
}

}  // namespace
