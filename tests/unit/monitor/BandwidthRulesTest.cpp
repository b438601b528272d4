// The bandwidth slider's rules without the window: stored limits, the knob's
// arithmetic, and what the slider rule shows in each pass.
#include <gtest/gtest.h>

#include <utility>

#include "monitor/BandwidthRules.h"

namespace {

using base::Text;
using namespace monitor;

// The design's slider: a box of 2250 twips at 3060 with a knob 180 wide.
constexpr SliderGeometry kSlider{3060, 2250, 180};

TEST(BandwidthRules, AStoredLimitReadsAsItsLeadingNumberRoundedHalfToEven) {
  const std::pair<const char16_t*, long> stored[] = {
      {u"40", 40}, {u"55.5", 56}, {u"56.5", 56}, {u"70 percent", 70}, {u"abc", 0}};
  for (const auto& [text, percent] : stored) {
    EXPECT_EQ(LimitPercent(text), percent) << base::ToUtf8(text);
  }
  EXPECT_EQ(LimitOrFull(u""), u"100");
  EXPECT_EQ(LimitOrFull(u"35"), u"35");
}

TEST(BandwidthRules, EveryPercentHasAKnobPlaceThatReadsBackAsIt) {
  EXPECT_DOUBLE_EQ(KnobLeft(kSlider, 0), 3060);
  EXPECT_DOUBLE_EQ(KnobLeft(kSlider, 100), 3060 + 2250 - 180);
  for (long p = 0; p <= 100; ++p) EXPECT_EQ(KnobPercent(kSlider, KnobLeft(kSlider, p)), p) << p;
}

TEST(BandwidthRules, ADragStopsAtTheBoxOnTheLeftAndAtTheSlackOnTheRight) {
  EXPECT_EQ(DraggedKnobLeft(kSlider, 3100, -40), 3060.0);
  EXPECT_EQ(DraggedKnobLeft(kSlider, 3100, -41), std::nullopt);
  const double full = KnobLeft(kSlider, 100);
  EXPECT_EQ(DraggedKnobLeft(kSlider, full, kKnobSlackTwips), full + kKnobSlackTwips);
  EXPECT_EQ(DraggedKnobLeft(kSlider, full, kKnobSlackTwips + 1), std::nullopt);
  // In the slack the figure passes 100; the slider control keeps what it can hold.
  EXPECT_EQ(KnobPercent(kSlider, full + kKnobSlackTwips), 101);
}

TEST(BandwidthRules, TheSliderRuleByPassIdleStateAndKindOfTransfer) {
  using P = SliderPass;
  using L = SliderLimit;
  struct Case {
    P pass;
    bool autoPause;
    const char16_t* idle;
    long kind;
    SliderChoice want;
  };
  const Case cases[] = {
      // Auto-Pause off: the plain limit; only the first pass hides the message.
      {P::Load, false, u"", 1, {L::Plain, std::nullopt}},
      {P::First, false, u"0", 1, {L::Plain, false}},
      {P::Second, false, u"0", 1, {L::Plain, std::nullopt}},
      // At load the idle state counts as empty, whatever the engine wrote.
      {P::Load, true, u"1", 1, {L::Paused, std::nullopt}},
      // An idle user: the plain limit and no message.
      {P::First, true, u"1", 1, {L::Plain, false}},
      {P::Second, true, u"1", 3, {L::Plain, false}},
      // An active user: the paused limit; the message by pass, then by kind.
      {P::First, true, u"", 0, {L::Paused, true}},
      {P::Second, true, u"0", 4, {L::Paused, true}},
      {P::Second, true, u"0", 5, {L::Paused, false}},
      {P::Second, true, u"", 0, {L::Paused, false}},
      // Another state leaves slider and message alone.
      {P::First, true, u"2", 1, {L::Leave, std::nullopt}},
      {P::Second, true, u" 1", 1, {L::Leave, std::nullopt}},
  };
  for (const Case& c : cases) {
    const SliderChoice got = ChooseSliderLimit(c.pass, c.autoPause, c.idle, c.kind);
    EXPECT_EQ(got.limit, c.want.limit) << "case " << &c - cases;
    EXPECT_EQ(got.pauseMessage, c.want.pauseMessage) << "case " << &c - cases;
  }
}

}  // namespace
