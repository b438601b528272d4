#pragma once
#include "platform/DialUp.h"
#include "platform/Media.h"

namespace platform {

// RasEnumConnectionsA and RasHangUpA, with the oldest entry layout (412 bytes in a
// 32-bit process), which every version of the service accepts.
class Win32DialUp : public IDialUp {
 public:
  DialUpListing Connections() noexcept override;
  unsigned long HangUp(std::uintptr_t handle) noexcept override;
};

// PlaySoundA with an alias, SND_ALIAS | SND_ASYNC: it does not wait.
class Win32Sound : public ISound {
 public:
  bool PlayAlias(const Text& alias) noexcept override;
};

}  // namespace platform
