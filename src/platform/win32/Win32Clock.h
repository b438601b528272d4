#pragma once
#include "platform/Clock.h"

namespace platform {

class Win32Clock : public IClock {
 public:
  base::DateTime Now() noexcept override;
  std::uint64_t TickMs() noexcept override;
  void Sleep(std::uint32_t ms) noexcept override;
};

}  // namespace platform
