#pragma once
// String values under HKEY_LOCAL_MACHINE and HKEY_CURRENT_USER.
#include "platform/Registry.h"

namespace platform {

class Win32Registry : public IRegistry {
 public:
  std::optional<Text> ReadString(RegRoot root, const Text& key, const Text& name,
                                 std::size_t maxBytes) noexcept override;
  bool WriteString(RegRoot root, const Text& key, const Text& name, const Text& value,
                   unsigned long access) noexcept override;
  bool DeleteValue(RegRoot root, const Text& key, const Text& name) noexcept override;
};

}  // namespace platform
