#pragma once
#include "platform/DialUp.h"

namespace platform {

// RasEnumConnectionsA and RasHangUpA, with the oldest entry layout (412 bytes in a
// 32-bit process), which every version of the service accepts.
class Win32DialUp : public IDialUp {
 public:
  DialUpListing Connections() noexcept override;
  unsigned long HangUp(std::uintptr_t handle) noexcept override;
};

}  // namespace platform
