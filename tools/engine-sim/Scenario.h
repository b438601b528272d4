#pragma once
// What a test asks of the simulated engine: how a job's transfer goes, and exact
// UpdateMonitor calls to make before the generated ones. Read from "engine-sim.ini"
// beside the program; every key is optional.
#include <string>
#include <string_view>
#include <vector>

#include "platform/ComServer.h"

namespace enginesim {

enum class Via { Vtable, Dispatch };

// One exact call: the arguments, whether the two optionals go along, and how.
struct ScriptedCall {
  platform::UpdateMonitorArgs args;
  bool withOptionals = true;
  Via via = Via::Vtable;
};

struct Scenario {
  unsigned pollMs = 500;      // how often the schedule is looked at
  unsigned files = 3;         // simulated files per job
  double fileSize = 3000000;  // bytes per file
  unsigned steps = 4;         // calls per file
  unsigned stepMs = 150;      // pause between two calls
  double stepSeconds = 20;    // transfer time a step stands for (the clock the calls show)
  long bkStatus = 1;          // sBkStatus of the generated calls
  bool withOptionals = true;  // false: preCall and sBkStatus are left out
  Via via = Via::Vtable;
  std::u16string result = u"GREEN";   // DESKNOTIFYICON at the end of a job
  std::u16string timeLeft;            // TimeRemaining of generated calls; empty: estimated
  std::vector<ScriptedCall> calls;    // made first, in order
  std::vector<std::string> problems;  // lines that were not understood
};

// "key = value" lines; "#" or ";" start a comment line; "[call]" starts an exact call
// whose fields follow (the argument names of UpdateMonitor, plus "via" and "optionals").
Scenario ParseScenario(std::string_view text);

// The plausible call the simulator makes at `step` of `steps` of file `file` (0-based).
platform::UpdateMonitorArgs GeneratedCall(const Scenario& s, unsigned file, unsigned step,
                                          double elapsedSeconds);

}  // namespace enginesim
