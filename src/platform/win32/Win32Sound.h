#pragma once
// System sounds by alias (PlaySoundW with SND_ALIAS | SND_ASYNC).
#include "platform/Media.h"

namespace platform {

class Win32Sound : public ISound {
 public:
  bool PlayAlias(const Text& alias) noexcept override;
};

}  // namespace platform
