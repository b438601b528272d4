// The engine's status on the window: words to lights, captions and menu states, the
// rounds that keep both engine programs running, the tray icon, and the Start, Stop
// and Pause items.
#include <gtest/gtest.h>

#include <tuple>

#include "kit/MesgBox.h"
#include "frame/MessageTable.h"
#include "MonitorFixture.h"

namespace {

using base::Text;
using monitortest::MonitorFormTest;
using monitortest::U8;

class StatusTest : public MonitorFormTest {
 protected:
  // The light, the word, whether Start, Pause and Stop are on, and Pause's caption.
  using Shown = std::tuple<Text, Text, bool, bool, bool, Text>;
  Shown Now() {
    auto& f = *form;
    return {f.TrafficLights1.PictureKey(),
            f.lblStatus.Caption(),
            f.Start.Enabled(),
            f.Pause.Enabled(),
            f.Stop.Enabled(),
            f.Pause.Caption()};
  }
};

TEST_F(StatusTest, EachSettledWordHasItsLightCaptionAndMenus) {
  EngineType(u"service");  // so that Pause keeps what the word gives it
  Open();
  backgroundEngine->startSettles = false;
  // In this order: Pause is left as it was when paused, and Stop leaves its caption.
  const std::pair<Text, Shown> words[] = {
      {u"Running", {u"light_green", u"Running", false, true, true, u"Pause Service"}},
      {u"Paused", {u"light_amber", u"Paused", false, true, true, u"Resume Service"}},
      {u"Stopped", {u"light_red", u"Stopped", true, false, false, u"Resume Service"}},
  };
  for (const auto& [steady, shown] : words) {
    backgroundEngine->steady = steady;
    form->Indicate_ServiceStatus();
    EXPECT_EQ(Now(), shown) << U8(steady);
  }
  // What the light's colour says, in words, for a screen reader and high contrast.
  EXPECT_EQ(form->TrafficLights1.Caption(), u"Service status: Stopped");
  form->Set_Stopping();
  EXPECT_EQ(Now(), Shown(u"light_amber", u"Stopping", false, false, false, u"Resume Service"));
  form->lblStatus.SetCaption(u"before");
  form->Pause.SetVisible(false);
  form->Set_Resume();  // leaves the word and whether Pause is on, and shows Pause
  EXPECT_EQ(Now(), Shown(u"light_green", u"before", false, false, true, u"Pause Service"));
  EXPECT_TRUE(form->Pause.Visible());
}

// An unknown, pending or miswritten word is no settled word: all 200 rounds run, each
// starting the engine and sleeping 100 ms after the start and 100 ms before the next round.
TEST_F(StatusTest, AnUnsettledWordRunsTheTwoHundredRoundsWithTheirSleeps) {
  EngineType(u"service");
  Open();
  backgroundEngine->startSettles = false;
  for (const Text word : {u"running", u""}) {
    backgroundEngine->steady = word;
    backgroundEngine->starts = 0;
    const int queried = backgroundEngine->statusCalls;
    const auto slept = fake.clock.sleptMs;
    form->Indicate_ServiceStatus();
    EXPECT_EQ(backgroundEngine->starts, 200) << U8(word);
    EXPECT_EQ(backgroundEngine->statusCalls - queried, 400);
    EXPECT_GE(fake.clock.sleptMs - slept, 200u * 200u);
    EXPECT_EQ(form->lblStatus.Caption(), word.empty() ? Text(u"Unknown") : word);
  }
  // No answer at all: everything off.
  EXPECT_EQ(Now(), Shown(u"light_amber", u"Unknown", false, false, false, u"Pause Service"));
}

TEST_F(StatusTest, BothEnginesAreStartedUnlessTheServiceIsNotInstalled) {
  Open();
  serviceEngine->steady = u"Stopped";
  backgroundEngine->words = {u"Stopped"};  // then Running once started
  form->Indicate_ServiceStatus();
  EXPECT_EQ(log, (std::vector<std::string>{"service.status", "service.start", "service.status",
                                           "background.status", "background.start",
                                           "background.status"}));
  EXPECT_EQ(form->lblStatus.Caption(), u"Running");  // the background program's word
  form->Indicate_ServiceStatus();
  EXPECT_EQ(serviceEngine->starts, 1);  // settled by the first start

  // Not installed: neither started nor waited for.
  serviceEngine->steady = u"";
  serviceEngine->installed = false;
  log.clear();
  const auto slept = fake.clock.sleptMs;
  form->Indicate_ServiceStatus();
  EXPECT_EQ(log, (std::vector<std::string>{"service.status", "background.status"}));
  EXPECT_EQ(fake.clock.sleptMs, slept);
}

// Cleared by what the engine says before the rounds start it; the rule is the stop word's.
TEST_F(StatusTest, AStaleWordOfAStoppedEngineIsCleared) {
  Open();
  StateWord(u"1");
  backgroundEngine->words = {u"Stopped"};  // what the active engine says first
  form->Indicate_ServiceStatus();
  EXPECT_EQ(Lines(app.ScheduleFilePath)[0], u"0");
}

TEST_F(StatusTest, ABackgroundEngineNeverOffersPauseAServiceOffersStopTransfer) {
  Open();  // no Type: a background engine
  form->StoptransferMenu.SetEnabled(false);
  form->Indicate_ServiceStatus();
  EXPECT_EQ(form->lblStatus.Caption(), u"Running");
  EXPECT_FALSE(form->Pause.Enabled());
  EXPECT_FALSE(form->StoptransferMenu.Enabled());
  EngineType(u"Service ");  // taken as a service, read again on every run
  form->Indicate_ServiceStatus();
  EXPECT_TRUE(form->Pause.Enabled());
  EXPECT_TRUE(form->StoptransferMenu.Enabled());
}

TEST_F(StatusTest, TheTrayIconFollowsTheBackgroundWordUnlessBranded) {
  Open();
  EXPECT_EQ(Tray().icon, u"tray_running");
  backgroundEngine->steady = u"Stopped";
  backgroundEngine->startSettles = false;
  form->Indicate_ServiceStatus();
  EXPECT_EQ(Tray().icon, u"tray_stopped");
  // The shell hears of the icon only when it changes, not at every tick.
  const int told = fake.ui.trayModifies;
  form->Indicate_ServiceStatus();
  EXPECT_EQ(fake.ui.trayModifies, told);

  const Text branded = u"C:\\QV\\images\\MonitorIcon.ico";
  fake.fs.AddFolders(u"C:\\QV\\images");
  fake.fs.PutFile(branded, "ico");
  form->Indicate_ServiceStatus();
  EXPECT_EQ(Tray().icon, branded);
  EXPECT_EQ(form->picTrayicon.PictureKey(), branded);
  backgroundEngine->steady = u"Running";
  form->Indicate_ServiceStatus();
  EXPECT_EQ(Tray().icon, branded);  // the same in every state
}

TEST_F(StatusTest, StartShowsTheWaitingLightStartsTheActiveEngineAndLooksAgain) {
  Open();
  backgroundEngine->steady = u"Stopped";
  backgroundEngine->startSettles = false;
  form->Indicate_ServiceStatus();
  backgroundEngine->startSettles = true;
  std::vector<Text> lights;
  form->SetChangeListener([&](kit::Control& c, kit::Aspect a) {
    if (&c == &form->TrafficLights1 && kit::Has(a, kit::Aspect::Picture))
      lights.push_back(form->TrafficLights1.PictureKey());
  });
  const auto slept = fake.clock.sleptMs;
  log.clear();
  form->Start.Choose();
  ASSERT_FALSE(lights.empty());
  EXPECT_EQ(lights.front(), u"light_off");
  EXPECT_EQ(lights.back(), u"light_green");
  EXPECT_EQ(log.front(), "background.start");  // the active engine, before any query
  EXPECT_GE(fake.clock.sleptMs - slept, 400u);
  EXPECT_EQ(form->lblStatus.Caption(), u"Running");
}

// Whether a transfer runs, and the question over it, are the stop word's; the item only
// leaves the engine running then.
TEST_F(StatusTest, StopAsksAboutARunningTransferAndNeverStopsTheEngineThen) {
  Open();
  StateWord(u"1");
  ui.Queue({kit::ScriptedUi::Answer::No(), kit::ScriptedUi::Answer::Yes(),
            kit::ScriptedUi::Answer::Ok()});
  log.clear();
  form->Stop.Choose();  // No
  form->Stop.Choose();  // Yes: the transfer is asked to stop
  EXPECT_EQ(ui.Questions().size(), 3u);
  EXPECT_EQ(form->lblStatus.Caption(), u"Stopping");
  EXPECT_TRUE(log.empty());  // no stop and no status round

  StateWord(u"0");
  form->Indicate_ServiceStatus();  // the status run gives Stop back
  log.clear();
  form->Stop.Choose();
  EXPECT_EQ(log.front(), "background.stop");
  EXPECT_EQ(form->lblStatus.Caption(), u"Running");  // restarted by the status run
}

TEST_F(StatusTest, PauseIsRefusedWhileTheFileDoesNotStartWithZero) {
  EngineType(u"service");
  app.ActiveEngine = app.ServiceEngine;
  Open();
  StateWord(u"0");  // written with its byte-order mark: the first byte is not "0"
  form->Pause.Choose();
  ASSERT_EQ(ui.Questions().size(), 1u);
  EXPECT_EQ(ui.Questions()[0].text, frame::GetMessage(app, 17));
  EXPECT_EQ(ui.Questions()[0].buttons, kit::kButtonsOk);

  fake.fs.DeleteFile(app.ScheduleFilePath);
  backgroundEngine->steady = u"Paused";  // the word shown is the background program's
  log.clear();
  form->Pause.Choose();
  EXPECT_EQ(log.front(), "service.pause");
  EXPECT_EQ(form->Pause.Caption(), u"Resume Service");
  backgroundEngine->steady = u"Running";
  log.clear();
  form->Pause.Choose();
  EXPECT_EQ(log.front(), "service.resume");
  EXPECT_EQ(form->Pause.Caption(), u"Pause Service");
}

}  // namespace
