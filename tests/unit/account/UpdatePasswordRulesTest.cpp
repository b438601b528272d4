#include <gtest/gtest.h>

#include "AccountFixture.h"
#include "kit/MesgBox.h"
#include "account/UpdatePasswordRules.h"

using account::ApplyOutcome;
using base::Text;
using kit::ScriptedUi;

namespace {

class UpdatePasswordRulesTest : public ::testing::Test, public testkit::AccountFixture {
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
    return account::ApplyPassword(app, ui, user, password, hooks);
  }

  account::PasswordScreenHooks hooks;
  std::vector<std::string> events;
};

// Whatever is refused before or instead of the proof asks the account service nothing
// and stores nothing, even where the account would have taken the password.
TEST_F(UpdatePasswordRulesTest, RefusalsBeforeTheProofStoreNothing) {
  using A = ScriptedUi::Answer;
  struct Case {
    Text user, password;
    A answer;
    ApplyOutcome outcome;
    Text message;
    std::vector<std::string> events;
  } const cases[] = {
      {u"   ", u"pw", A::Ok(), ApplyOutcome::MissingUserName, Msg(39), {"focus user"}},
      {u"mary", u"  ", A::Ok(), ApplyOutcome::MissingPassword, Msg(40), {"focus password"}},
      {u"mary", u"0123456789abcdef", A::No(), ApplyOutcome::NotConfirmed, Msg(41), {}},
      {u"mary",
       u"caf\u00E9 au lait",
       A::Ok(),
       ApplyOutcome::NotStorable,
       account::kPasswordAlphabetMessage,
       {"focus password"}},
  };
  std::vector<Case> all(std::begin(cases), std::end(cases));
  for (const char16_t* name : {u"..\\mary", u"mary/x", u"C:mary", u"ma..ry"})
    all.push_back({name,
                   u"secret",
                   A::Ok(),
                   ApplyOutcome::NameLeavesFolder,
                   account::kUserNameFolderMessage,
                   {"focus user"}});
  for (const Case& c : all) {
    SCOPED_TRACE(testkit::U8(c.user + u" / " + c.password));
    fake.network.goodAccounts[base::Trim(c.user)] = base::Trim(c.password);
    events.clear();
    const std::size_t asked = ui.Questions().size();
    ui.Queue(c.answer);
    EXPECT_EQ(Apply(c.user, c.password), c.outcome);
    EXPECT_EQ(ui.Questions().size(), asked + 1);
    EXPECT_EQ(Texts().back(), c.message);
    EXPECT_EQ(events, c.events);
  }
  EXPECT_EQ(ui.Questions()[0].icon, 0);
  EXPECT_TRUE(fake.network.logins.empty());
  EXPECT_TRUE(fake.network.requests.empty());
  EXPECT_EQ(frame::ReadSetting(app, u"UserName"), u"");
  EXPECT_FALSE(fake.fs.FileExists(Common(u"mary\\mary.txt")));
}

TEST_F(UpdatePasswordRulesTest, SeventeenCharactersAreProvedAndStoredCutToSixteen) {
  ui.Queue({ScriptedUi::Answer::Yes(), ScriptedUi::Answer::Ok()});
  EXPECT_EQ(Apply(u"  mary ", u" 0123456789abcdefg "), ApplyOutcome::Updated);
  ASSERT_EQ(fake.network.logins.size(), 1u);
  EXPECT_EQ(fake.network.logins[0], (std::pair<Text, Text>{u"mary", u"0123456789abcdef"}));
  EXPECT_EQ(Texts(), (std::vector<Text>{Msg(41), Msg(48)}));
  EXPECT_EQ(ui.Questions()[0].icon, 1);
  EXPECT_EQ(ui.Questions()[0].buttons, 2);
  EXPECT_EQ(events, (std::vector<std::string>{"busy", "normal", "close"}));
  // What the engine reads: the name in qvwin.ini and the scrambled value file.
  EXPECT_EQ(frame::ReadSetting(app, u"UserName"), u"mary");
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
  fake.network.statusReplies.push_back({u"OK", u"Expired on 01-02-2013"});
  ui.Queue({ScriptedUi::Answer::Yes(), ScriptedUi::Answer::Ok(), ScriptedUi::Answer::Yes(),
            ScriptedUi::Answer::Ok()});
  EXPECT_EQ(Apply(u"joe", u"pw"), ApplyOutcome::Refused);
  EXPECT_EQ(Apply(u"joe", u"pw"), ApplyOutcome::Refused);
  ASSERT_EQ(ui.Questions().size(), 4u);
  EXPECT_EQ(Texts()[1], u"Unable to connect to Corvane. Reason : account 'joe' has been canceled.");
  EXPECT_EQ(Texts()[3], u"Unable to connect to Corvane. Reason : account 'joe' has expired.");
  EXPECT_EQ(ui.Questions()[3].icon, 3);
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

TEST_F(UpdatePasswordRulesTest, TheStoreWritesNoFileOutsideItsFolderAndDotsApartAreAName) {
  frame::WriteSetting(app, u"..\\mary", u"secret", true);
  EXPECT_FALSE(fake.fs.FileExists(u"C:\\QV\\mary\\mary.txt"));
  EXPECT_FALSE(fake.fs.FileExists(Common(u"..\\mary\\..\\mary.txt")));
  EXPECT_FALSE(fake.fs.FolderExists(Common(u"..\\mary")));
  fake.network.goodAccounts[u"mary.ann"] = u"secret";
  ui.Queue(ScriptedUi::Answer::Yes());
  EXPECT_EQ(Apply(u"mary.ann", u"secret"), ApplyOutcome::Updated);
  EXPECT_EQ(frame::ReadSetting(app, u"mary.ann", true), u"secret");
}

// The store keeps eight bits of a character shifted by a key letter of its place: what
// the form lets through must come back as it was proved, in every place of the password.
TEST_F(UpdatePasswordRulesTest, EveryCharacterTheFormTakesIsStoredAsItWasProved) {
  std::vector<char16_t> units;
  for (char32_t c = 1; c < 0x250; ++c) units.push_back(static_cast<char16_t>(c));
  for (char16_t c : {0x20AC, 0x4E2D, 0xD800, 0xFFFD, 0xFFFF}) units.push_back(c);
  std::size_t taken = 0, refused = 0;
  for (std::size_t n = 0; n < units.size(); ++n) {
    Text password = u"Pw3k9Qz7Lm2Xc8Vb";
    password[n % password.size()] = units[n];
    const Text proved = base::Trim(password);
    fake.network.goodAccounts[u"mary"] = proved;
    fake.fs.DeleteFile(Common(u"mary\\mary.txt"));
    const std::size_t logins = fake.network.logins.size();
    ui.Queue(ScriptedUi::Answer::Yes());
    const ApplyOutcome outcome = Apply(u"mary", password);
    if (fake.network.logins.size() == logins) {
      ++refused;
      EXPECT_FALSE(fake.fs.FileExists(Common(u"mary\\mary.txt"))) << "unit " << int(units[n]);
      continue;
    }
    ++taken;
    ASSERT_EQ(outcome, ApplyOutcome::Updated) << "unit " << int(units[n]);
    EXPECT_EQ(fake.network.logins.back().second, proved);
    EXPECT_EQ(frame::ReadSetting(app, u"mary", true), proved)
        << "unit " << int(units[n]) << " at place " << n % password.size() + 1;
  }
  // What a password is typed with on any keyboard layout's base keys is taken.
  EXPECT_GE(taken, std::size_t{u'~' - u' ' + 1});
  EXPECT_EQ(taken + refused, units.size());
}

}  // namespace
