#pragma once
#include <cstdint>

#include "base/DateTime.h"

namespace platform {

class IClock {
 public:
  virtual ~IClock() = default;
  virtual base::DateTime Now() = 0;          // local time, whole seconds
  virtual std::uint64_t TickMs() = 0;        // monotonic milliseconds
  virtual void Sleep(std::uint32_t ms) = 0;  // blocks the caller's thread
};

}  // namespace platform
