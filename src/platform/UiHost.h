#pragma once
// The windowing host: message loop, timers and the notification-area icon. The form
// renderer joins it with the screen kit; what the start-up needs is here already.
#include <cstdint>
#include <functional>

#include "base/Text.h"

namespace platform {

using base::Text;

class IUiHost {
 public:
  virtual ~IUiHost() = default;
  // Runs the message loop until Quit; returns the exit code.
  virtual int RunMessageLoop() = 0;
  virtual void Quit(int exitCode) = 0;
  // Lets pending messages through (timers, callbacks, painting).
  virtual void DoEvents() = 0;
  virtual std::uintptr_t StartTimer(std::uint32_t intervalMs, std::function<void()> onTick) = 0;
  virtual void StopTimer(std::uintptr_t id) = 0;
  // A plain question with Yes/No; true for Yes. Used until the product's own box exists.
  virtual bool AskYesNo(const Text& text, const Text& title) = 0;
};

}  // namespace platform
