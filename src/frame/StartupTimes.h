#pragma once
// The start-up's own stopwatch, for the start-up benchmark (bench/startup.sh): when the
// environment variable QV_STARTUP_TIMES names a file, each step of Main and of the
// window's load is marked with the milliseconds since the process began, and the marks
// are written to that file (UTF-16, one "<ms> <step>" line each) once Main is done.
// Without the variable nothing is kept and nothing is written; the trace is never used.
#include <cstdint>
#include <utility>
#include <vector>

#include "base/Text.h"
#include "frame/AppState.h"

namespace frame {

inline constexpr base::TextView kStartupTimesVariable = u"QV_STARTUP_TIMES";

class StartupTimes {
 public:
  // `processAgeMs`: how long the process had run when this was made (its creation time
  // is known to the program's entry only).
  StartupTimes(AppState& app, std::uint64_t processAgeMs);
  bool Enabled() const { return !file_.empty(); }
  void Mark(base::TextView step);
  // The lines as they are written, for the file and its tests.
  std::vector<Text> Lines() const;
  void Write();

 private:
  AppState& app_;
  Text file_;
  std::uint64_t origin_ = 0;  // the clock's reading at the process's creation
  std::vector<std::pair<std::uint64_t, Text>> marks_;
};

// A mark when the program keeps times (AppState::startupTimes), else nothing.
void MarkStartup(AppState& app, base::TextView step);

}  // namespace frame
