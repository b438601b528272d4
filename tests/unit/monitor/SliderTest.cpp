// The bandwidth slider: the rule in its load, first and second passes against each
// idle state the engine leaves, dragging the knob, and the Auto-Pause box.
#include <gtest/gtest.h>

#include <tuple>

#include "MonitorFixture.h"

namespace {

using base::Text;
using monitor::frmQVWinService;
using monitortest::MonitorFormTest;
using monitortest::U8;
using Pass = frmQVWinService::SliderPass;

class SliderTest : public MonitorFormTest {
 protected:
  void Limits(const Text& autoPause, const Text& plain, const Text& paused) {
    Setting(u"AUTOPAUSECHECK", autoPause);
    Setting(u"BANDWIDTH", plain);
    Setting(u"BANDWIDTHPAUSE", paused);
  }
  void Idle(const Text& state) {
    fake.profile.WriteString(u"AUTOPAUSE", Text(u"BackupIdleState"), state,
                             Common(u"AutoPause.ini"));
  }
  long Shown() { return static_cast<long>(form->sliderBandwidth.Value()); }
  bool Message() { return form->LabelPauseMsg.Visible(); }
};

TEST_F(SliderTest, AtLoadTheStoredLimitIsShownAndTheIdleFileIsNotConsulted) {
  Limits(u"1", u"40", u"70");
  Idle(u"1");
  Open();
  EXPECT_TRUE(form->chkbandwidth.Checked());
  EXPECT_EQ(Shown(), 70);  // the limit for an active user, whatever the engine says
  // The box's Click did not write the limits back while the rule set it.
  EXPECT_EQ(Get(u"BANDWIDTHPAUSE"), u"70");
}

// The rule's choices are tabled in BandwidthRulesTest; here the window applies them: the
// limit it shows and the message, set, hidden or left as it stood.
TEST_F(SliderTest, EachPassShowsTheLimitAndTheMessageTheRuleChooses) {
  Limits(u"1", u"40", u"70");
  Open();
  // The pass, the idle state, the message before, the limit shown and the message after.
  const std::tuple<Pass, Text, bool, long, bool> cases[] = {
      {Pass::First, u"1", true, 40, false},  // an idle user: the plain limit
      {Pass::First, u"", false, 70, true},   // an active one: the paused limit
      {Pass::Second, u"2", true, 5, true},   // another state leaves slider and message
  };
  app.Transfer.sBkStatus = 1;
  for (const auto& [pass, idle, messageBefore, shown, message] : cases) {
    Idle(idle);
    form->PlaceSlider(5);
    form->LabelPauseMsg.SetVisible(messageBefore);
    form->SliderRule(pass);
    EXPECT_EQ(Shown(), shown) << U8(idle);
    EXPECT_EQ(Message(), message) << U8(idle);
  }
  Setting(u"AUTOPAUSECHECK", u"0");
  Setting(u"BANDWIDTH", u" 25 ");  // as the stored limit reads
  form->SliderRule(Pass::First);
  EXPECT_EQ(Shown(), 25);
}

TEST_F(SliderTest, DraggingMovesTheKnobWithinTheBoxAndItsSlack) {
  Limits(u"0", u"50", u"");
  Open();
  auto& knob = form->PictSliderKnob1;
  const double boxLeft = form->PictSliderBox1.Left();
  const double range = form->PictSliderBox1.Width() - knob.Width();
  knob.RaiseMouseDown({kit::kLeftButton});
  EXPECT_TRUE(form->Dragging());
  EXPECT_TRUE(form->lblSlider1Tooltip.Visible());
  EXPECT_EQ(form->lblSlider1Tooltip.Caption(), u"50%");

  knob.RaiseMouseMove({kit::kLeftButton, 0, range / 10});
  EXPECT_DOUBLE_EQ(knob.Left(), boxLeft + range * 0.6);
  EXPECT_EQ(form->lablBandWidth.Caption(), u"60%");
  EXPECT_EQ(form->lblSlider1Tooltip.Caption(), u"60%");
  EXPECT_EQ(Shown(), 60);
  EXPECT_DOUBLE_EQ(form->lblSlider1Tooltip.Left() + form->lblSlider1Tooltip.Width() / 2,
                   knob.Left() + knob.Width() / 2);

  // Into the slack past the right end (its stops are BandwidthRulesTest's): the figure
  // passes 100, the slider keeps 100; a move beyond the stops leaves the knob.
  knob.RaiseMouseMove({kit::kLeftButton, 0, boxLeft + range + 25 - knob.Left()});
  EXPECT_EQ(form->lablBandWidth.Caption(), u"101%");
  EXPECT_EQ(Shown(), 100);
  const double atEnd = knob.Left();
  knob.RaiseMouseMove({kit::kLeftButton, 0, boxLeft - knob.Left() - 1});
  EXPECT_DOUBLE_EQ(knob.Left(), atEnd);

  knob.RaiseMouseUp({kit::kLeftButton});
  EXPECT_FALSE(form->Dragging());
  EXPECT_FALSE(form->lblSlider1Tooltip.Visible());
  EXPECT_EQ(Get(u"BANDWIDTH"), u"100");
  EXPECT_EQ(form->lablBandWidth.Caption(), u"100%");

  const double before = knob.Left();
  knob.RaiseMouseMove({0, 0, -300});  // not dragging: nothing moves
  EXPECT_DOUBLE_EQ(knob.Left(), before);
}

// With the focus on the knob the arrows move the limit a point at a time and store it.
TEST_F(SliderTest, TheArrowsMoveTheLimitAndKeepIt) {
  Setting(u"BANDWIDTH", u"50");
  Open();
  ui.Show(*form);
  form->PictSliderKnob1.SetFocus();
  const auto down = [&](int key) {
    kit::KeyArgs a{key, 0};
    form->DeliverKeyDown(a);
  };
  down(kit::kKeyRight);
  down(kit::kKeyRight);
  EXPECT_EQ(Get(u"BANDWIDTH"), u"52");
  EXPECT_EQ(form->lablBandWidth.Caption(), u"52%");
  for (int i = 0; i < 60; ++i) down(kit::kKeyLeft);
  EXPECT_EQ(Get(u"BANDWIDTH"), u"0") << "the limit stops at the slider's end";
}

TEST_F(SliderTest, WithAutoPauseOnADragSavesThePauseLimitWhicheverIsShown) {
  Limits(u"1", u"40", u"70");
  Idle(u"1");
  Open();
  form->SliderRule(Pass::First);
  ASSERT_EQ(Shown(), 40);  // the user is idle: the plain limit is the one shown
  auto& knob = form->PictSliderKnob1;
  const double range = form->PictSliderBox1.Width() - knob.Width();
  knob.RaiseMouseDown({kit::kLeftButton});
  knob.RaiseMouseMove({kit::kLeftButton, 0, -range / 5});
  knob.RaiseMouseUp({kit::kLeftButton});
  EXPECT_EQ(Get(u"BANDWIDTHPAUSE"), u"20");
  EXPECT_EQ(Get(u"BANDWIDTH"), u"40");
}

TEST_F(SliderTest, TheCheckBoxSwitchesLimitKeyAndMessage) {
  Limits(u"", u"40", u"");
  Open();
  form->chkbandwidth.UserClick();  // on, with no pause limit yet
  EXPECT_EQ(Shown(), 100);
  EXPECT_EQ(Get(u"BANDWIDTHPAUSE"), u"100");
  EXPECT_EQ(Get(u"AUTOPAUSECHECK"), u"1");
  EXPECT_TRUE(Message());

  Setting(u"BANDWIDTHPAUSE", u"30");
  form->chkbandwidth.UserClick();  // off
  EXPECT_EQ(Shown(), 40);
  EXPECT_EQ(Get(u"AUTOPAUSECHECK"), u"0");
  EXPECT_FALSE(Message());
  form->chkbandwidth.UserClick();  // on again: the stored pause limit
  EXPECT_EQ(Shown(), 30);
  EXPECT_EQ(Get(u"BANDWIDTHPAUSE"), u"30");
}

TEST_F(SliderTest, TheCaptionLosesItsHyphenAndTheLongMessageMovesAboveNinetySixDpi) {
  Open();
  EXPECT_EQ(form->chkbandwidth.Caption(), u"Auto Pause (Bandwidth used)");
  EXPECT_EQ(form->LabelPauseMsg.Caption(), monitor::kPauseMessage);

  kit::ScriptedUi large(12);  // 120 dots per inch
  monitor::frmQVWinService scaled(app, large);
  scaled.Load();
  EXPECT_EQ(scaled.LabelPauseMsg.Caption(), monitor::kPauseMessageShort);
  EXPECT_EQ(scaled.LabelPauseMsg.ToolTipText(), monitor::kPauseMessage);
  EXPECT_DOUBLE_EQ(scaled.lstLog.Top(), form->lstLog.Top() / 1.25);
  EXPECT_DOUBLE_EQ(scaled.Width(), form->Width() / 1.25);
}

}  // namespace
