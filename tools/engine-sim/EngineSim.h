#pragma once
// The simulated engine's work loop, shared by its two installed forms: it looks at
// scheduleData.txt, runs what is due the way the engine does, and calls the running
// monitor's IMonitor class during the transfer.
#include <windows.h>

#include <atomic>

namespace enginesim {

struct Control {
  std::atomic<bool> quit{false};    // the program is ending: leave at once
  std::atomic<bool> paused{false};  // the service is paused: start nothing new
};

// Runs until control.quit. Call on a thread of its own.
void RunEngine(Control& control) noexcept;

}  // namespace enginesim
