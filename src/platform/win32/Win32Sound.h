#pragma once
// System sounds by alias (PlaySoundA with SND_ALIAS | SND_ASYNC): it does not wait.
#include "platform/Media.h"

namespace platform {

class Win32Sound : public ISound {
 public:
  bool PlayAlias(const Text& alias) noexcept override;
};

}  // namespace platform
