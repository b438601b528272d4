#include "monitor/BandwidthRules.h"

#include "kit/WindowLook.h"

namespace monitor {

long LimitPercent(const Text& stored) { return kit::RoundHalfEven(base::LeadingNumber(stored)); }

Text LimitOrFull(const Text& trimmed) { return trimmed.empty() ? Text(u"100") : trimmed; }

const char16_t* LimitKey(bool autoPause) { return autoPause ? kPausedLimitKey : kPlainLimitKey; }

double KnobLeft(const SliderGeometry& g, long percent) {
  return g.boxLeft + (g.boxWidth - g.knobWidth) * percent / 100.0;
}

std::optional<double> DraggedKnobLeft(const SliderGeometry& g, double knobLeft, double dx) {
  if (knobLeft + dx >= g.boxLeft &&
      knobLeft + g.knobWidth + dx <= g.boxLeft + g.boxWidth + kKnobSlackTwips)
    return knobLeft + dx;
  return std::nullopt;
}

long KnobPercent(const SliderGeometry& g, double knobLeft) {
  return kit::RoundHalfEven((knobLeft - g.boxLeft) * 100 / (g.boxWidth - g.knobWidth));
}

SliderChoice ChooseSliderLimit(SliderPass pass, bool autoPauseChecked, const Text& idleState,
                               long transferKind) {
  SliderChoice choice;
  if (!autoPauseChecked) {
    choice.limit = SliderLimit::Plain;
    if (pass == SliderPass::First) choice.pauseMessage = false;
    return choice;
  }
  // At load the window opens with the limit for an active user; the engine's idle
  // state is first consulted by the tick.
  const Text idle = pass == SliderPass::Load ? Text() : idleState;
  if (idle == u"1") {
    choice.limit = SliderLimit::Plain;
    choice.pauseMessage = false;
  } else if (idle.empty() || idle == u"0") {
    choice.limit = SliderLimit::Paused;
    if (pass == SliderPass::First) {
      choice.pauseMessage = true;
    } else if (pass == SliderPass::Second) {
      choice.pauseMessage = transferKind >= 1 && transferKind <= 4;
    }
  }
  return choice;
}

}  // namespace monitor
