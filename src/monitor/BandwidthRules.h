#pragma once
// The bandwidth slider's rules, without the window: the percent a stored limit reads
// as, where the knob stands for a percent and what a knob's place means, which limit
// the check box puts in force, and what the slider rule shows in each of its passes.
#include <optional>

#include "base/Text.h"

namespace monitor {

using base::Text;

// The settings of qvwin.ini: the two limits and the Auto-Pause box.
inline constexpr char16_t kPlainLimitKey[] = u"BANDWIDTH";
inline constexpr char16_t kPausedLimitKey[] = u"BANDWIDTHPAUSE";
inline constexpr char16_t kAutoPauseKey[] = u"AUTOPAUSECHECK";

// The knob may overrun the right end of the slider's box by this much.
inline constexpr double kKnobSlackTwips = 25;

// A stored limit as the slider takes it: its leading number, rounded half to even
// ("55.5" is 56, "abc" is 0).
long LimitPercent(const Text& stored);
// A limit as read for the slider rule, trimmed: an empty one is "100".
Text LimitOrFull(const Text& trimmed);
// The limit that the slider edits: the one for an active user when Auto-Pause is on.
const char16_t* LimitKey(bool autoPause);

// The slider in twips: the box's left edge and width, the knob's width.
struct SliderGeometry {
  double boxLeft = 0;
  double boxWidth = 0;
  double knobWidth = 0;
};
// Where the knob's left edge stands for a percent.
double KnobLeft(const SliderGeometry& g, long percent);
// Where a drag by dx takes a knob whose left edge is at `knobLeft`; nullopt when that
// would leave the box (at the right end, the slack aside), so the knob stays.
std::optional<double> DraggedKnobLeft(const SliderGeometry& g, double knobLeft, double dx);
// The percent the knob's place means, rounded half to even; the slack lets it pass 100.
long KnobPercent(const SliderGeometry& g, double knobLeft);

// The slider rule runs at load and twice in a tick that draws an update.
enum class SliderPass { Load, First, Second };
enum class SliderLimit { Leave, Plain, Paused };
struct SliderChoice {
  SliderLimit limit = SliderLimit::Leave;
  std::optional<bool> pauseMessage;  // show or hide LabelPauseMsg; nullopt leaves it
  bool operator==(const SliderChoice&) const = default;
};
// Which limit the slider shows once the check box is set from AUTOPAUSECHECK, by the
// engine's BackupIdleState ("1" idle; "0" or empty active; at load taken as empty) and,
// in the second pass, the kind of transfer (1 to 4 are backups, which are throttled).
SliderChoice ChooseSliderLimit(SliderPass pass, bool autoPauseChecked, const Text& idleState,
                               long transferKind);

}  // namespace monitor
