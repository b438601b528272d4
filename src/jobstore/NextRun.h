#pragma once
// How a schedule choice on the editor becomes the stored NextRun, Days, FrequencyIndex
// and SortKey, and how a start time is suggested for a new job. The clock and the
// regional formats come from the platform, so the same choice gives the same result
// wherever "now" and the separators are the same.
#include <array>
#include <functional>

#include "base/DateTime.h"
#include "base/Text.h"
#include "frame/AppState.h"

namespace jobstore {

using base::Text;
using frame::AppState;

// What the rules read from the editor's controls. The editor fills it; the rules
// that "show" a time write it back into DTPicker.
struct ScheduleChoice {
  std::array<bool, 7> chkBox{};  // day buttons, index 0 = Sunday .. 6 = Saturday
  bool chkDaily = false;
  bool optHourly = false;
  bool optMonthly = false;
  bool chkImmediate = false;
  base::DateTime DTPicker;    // the time picker (its date part is the picker's too)
  base::DateTime DTPMonthly;  // the date picker of a monthly job
  bool bImmediate = false;    // the job under edit is an immediate one
  // A uniform source in [0, 1) for the suggested times; empty: one seeded from the clock.
  std::function<double()> random;
};

// What the editor stores for a choice.
struct Timing {
  Text NextRun;
  Text Days;
  Text FrequencyIndex;
  Text SortKey;

  bool operator==(const Timing&) const = default;
};

Text Sch_SortBuildDate(AppState& app, const Text& date);
Text Sch_Build_Date(AppState& app, ScheduleChoice& choice);
Text getcheckboxdate(AppState& app, const ScheduleChoice& choice, bool bZeroHour);
Text DaysAdd(AppState& app, const ScheduleChoice& choice, const Text& days, const Text& time);
Text GetDayChkBoxCaption(const ScheduleChoice& choice);
// Sets `out` to "MTF", which nothing reads; `nextRun` is not consulted.
Text GetFrequencyFromDays(const Text& days, const Text& nextRun, Text& out);
Text Build_Date(AppState& app, const ScheduleChoice& choice);
Text RecommendedTimeDefault(AppState& app, ScheduleChoice& choice);
base::DateTime set_RecommendedTime(AppState& app, ScheduleChoice& choice);
Text DayNamesFromDays(const Text& days);
// Its own numbering: 1 = Monday .. 7 = Sunday.
Text GetScheduledForDay(const Text& digit);

// The timing fields the editor fills when it saves a row: the present moment for an
// immediate job, otherwise the next allowed run of the chosen days.
Timing PlanTiming(AppState& app, ScheduleChoice& choice);

}  // namespace jobstore
