// Web management: the helper started, watched and stopped at load, in the tick and
// from its menu item, by WebManage, ErrVal and WebMessage.
#include <gtest/gtest.h>

#include <algorithm>

#include "kit/MesgBox.h"
#include "frame/MessageTable.h"
#include "MonitorFixture.h"

namespace {

using base::Text;
using monitortest::MonitorFormTest;

const Text kHelper = u"C:\\QV\\Corvane_Web.exe";

// A shell that tells when it is asked to start the helper.
struct HelperShell : platform::FakeShell {
  long Execute(std::uintptr_t owner, const Text& verb, const Text& file, const Text& parameters,
               const Text& folder, int show) override {
    if (file == kHelper) onHelper();
    return FakeShell::Execute(owner, verb, file, parameters, folder, show);
  }
  std::function<void()> onHelper;
};

class WebManagementTest : public MonitorFormTest {
 protected:
  // The helper, once started, runs and leaves the ErrVal the test chose.
  WebManagementTest() {
    fake.Get().shell = &shell;
    fake.fs.PutFile(kHelper, "MZ");
    shell.onHelper = [this] {
      fake.processes.Add(nextPid++, kHelper);
      if (leaves) fake.profile.WriteString(u"OLWA", Text(u"ErrVal"), *leaves, Common(u"qvwin.ini"));
    };
  }
  Text WebManage() { return Ini(u"Corvane", u"WebManage", Common(u"mary\\qvwinserver.ini")); }
  void SetWebManage(const Text& v) {
    fake.fs.AddFolders(Common(u"mary"));
    fake.profile.WriteString(u"Corvane", Text(u"WebManage"), v, Common(u"mary\\qvwinserver.ini"));
  }
  Text ErrVal() { return Ini(u"OLWA", u"ErrVal", Common(u"qvwin.ini")); }
  std::ptrdiff_t HelperStarts() {
    return std::ranges::count(shell.executed, kHelper, &platform::FakeShell::Execution::file);
  }
  bool HelperRuns() {
    for (const auto& p : fake.processes.processes)
      if (p.modulePath == kHelper && fake.processes.Running(p.pid)) return true;
    return false;
  }
  // Unchecked, stored off and the helper ended.
  bool TurnedOff() { return !form->WebMang.Checked() && WebManage() == u"0" && !HelperRuns(); }
  HelperShell shell;
  std::optional<Text> leaves;
  std::uint32_t nextPid = 300;
};

TEST_F(WebManagementTest, WithoutAPasswordOrAHelperNothingStarts) {
  Setting(u"UserName", u"mary");
  Open();
  form->Progress.Fire();
  EXPECT_FALSE(form->WebMang.Checked());
  form->WebMang.Choose();
  ASSERT_EQ(ui.Questions().size(), 1u);
  EXPECT_EQ(ui.Questions()[0].text, frame::GetMessage(app, 72));
  EXPECT_EQ(HelperStarts(), 0);

  // With a password but no helper program the item stays on.
  Account(u"mary", u"secret");
  fake.fs.DeleteFile(kHelper);
  form.reset();
  Open();
  form->Progress.Fire();
  EXPECT_TRUE(form->WebMang.Checked());
  EXPECT_EQ(HelperStarts(), 0);
}

TEST_F(WebManagementTest, AnUndecidedSettingCountsAsOnAndTheTickWritesIt) {
  Account(u"mary", u"secret");
  Open();  // the load starts the helper
  EXPECT_TRUE(form->WebMang.Checked());
  ASSERT_EQ(HelperStarts(), 1);
  EXPECT_EQ(shell.executed[0].verb, u"open");
  EXPECT_EQ(shell.executed[0].showCommand, 0);
  EXPECT_EQ(ErrVal(), u"0");  // written before the start
  EXPECT_EQ(WebManage(), u"");

  const auto slept = fake.clock.sleptMs;
  form->Progress.Fire();
  EXPECT_EQ(WebManage(), u"1");
  EXPECT_EQ(HelperStarts(), 1);  // it runs already
  EXPECT_GE(fake.clock.sleptMs - slept, 2000u);
  EXPECT_EQ(Get(u"WebMessage"), u"0");
}

TEST_F(WebManagementTest, ASettingOfZeroKillsAtLoadAndOnlyUnchecksInTheTick) {
  Account(u"mary", u"secret");
  SetWebManage(u" 0 ");
  fake.processes.Add(77, kHelper);
  Open();
  EXPECT_FALSE(form->WebMang.Checked());
  EXPECT_FALSE(fake.processes.Running(77));
  fake.processes.Add(78, kHelper);
  form->WebMang.SetChecked(true);
  form->Progress.Fire();
  EXPECT_FALSE(form->WebMang.Checked());
  EXPECT_TRUE(fake.processes.Running(78));
}

TEST_F(WebManagementTest, ACanceledAccountTurnsTheFeatureOffAndIsLogged) {
  Account(u"mary", u"secret");
  leaves = u"-3";  // a further refusal, told like the cancelled account
  Open();
  form->Progress.Fire();
  EXPECT_TRUE(TurnedOff());
  const Text text = frame::GetMessage(app, 278);
  EXPECT_TRUE(TraceHas(text));
  // The tick slept two seconds for the helper before the line was written.
  EXPECT_EQ(Lines(app.ServiceLogPath),
            std::vector<Text>{u"Error       : 11/15/2026 05:25:29 : " + text});
  EXPECT_TRUE(ui.Questions().empty());  // no box in the tick for this one
}

TEST_F(WebManagementTest, AFailedLoginIsToldOnceNotEveryTick) {
  Account(u"mary", u"secret");
  Open();
  fake.profile.WriteString(u"OLWA", Text(u"ErrVal"), Text(u"-1"), Common(u"qvwin.ini"));
  leaves = u"-1";
  form->Progress.Fire();
  ASSERT_EQ(ui.Questions().size(), 1u);
  EXPECT_EQ(ui.Questions()[0].text, frame::GetMessage(app, 277));
  EXPECT_EQ(ui.Questions()[0].title, u"Corvane for Windows");
  EXPECT_EQ(Get(u"WebMessage"), u"1");
  EXPECT_TRUE(TurnedOff());

  SetWebManage(u"1");  // the user turns it on again elsewhere
  form->Progress.Fire();
  EXPECT_EQ(ui.Questions().size(), 1u);  // told already
  EXPECT_EQ(Lines(app.ServiceLogPath).size(), 1u);
  EXPECT_TRUE(form->WebMang.Checked());
  EXPECT_EQ(Get(u"WebMessage"), u"1");
}

TEST_F(WebManagementTest, TheItemTurnsTheFeatureOnAndWatchesTheLogin) {
  Account(u"mary", u"secret");
  SetWebManage(u"0");
  Open();
  fake.processes.Add(90, kHelper);  // an old helper is ended before the new one
  leaves = u"0";
  form->WebMang.Choose();
  EXPECT_FALSE(fake.processes.Running(90));
  EXPECT_EQ(HelperStarts(), 1);
  EXPECT_TRUE(form->WebMang.Checked());
  EXPECT_EQ(WebManage(), u"1");

  // Off again, after the question.
  ui.Queue(kit::ScriptedUi::Answer::No());
  form->WebMang.Choose();
  EXPECT_TRUE(form->WebMang.Checked());
  ui.Queue(kit::ScriptedUi::Answer::Yes());
  form->WebMang.Choose();
  EXPECT_EQ(ui.Questions().back().text, frame::GetMessage(app, 74));
  EXPECT_TRUE(TurnedOff());

  // A refused login (the answers are tabled in WebHelperAnswerTest) is shown and leaves
  // the feature off.
  leaves = u"-2";
  ui.Queue(kit::ScriptedUi::Answer::Ok());
  form->WebMang.Choose();
  EXPECT_TRUE(TurnedOff());
  EXPECT_EQ(ui.Questions().back().text, frame::GetMessage(app, 278));
}

}  // namespace
