#pragma once
// Profile files through the platform's own functions.
#include "platform/Profile.h"

namespace platform {

class Win32Profile : public IProfile {
 public:
  Text GetString(const Text& section, const Text& key, const Text& defaultValue,
                 std::size_t bufferChars, const Text& file) noexcept override;
  bool WriteString(const Text& section, const std::optional<Text>& key,
                   const std::optional<Text>& value, const Text& file) noexcept override;
  unsigned long LastError() noexcept override { return lastError_; }

 private:
  unsigned long lastError_ = 0;
};

}  // namespace platform
