#pragma once
#include <optional>

#include "base/Text.h"

namespace platform {

using base::Text;

enum class RegRoot { LocalMachine, CurrentUser };

class IRegistry {
 public:
  virtual ~IRegistry() = default;
  // A string value, read whole (callers cut at the first NUL themselves); nullopt
  // when the key or value is absent. `maxBytes` is the caller's buffer: longer data fails.
  virtual std::optional<Text> ReadString(RegRoot root, const Text& key, const Text& name,
                                         std::size_t maxBytes = 2048) = 0;
  // Creates the key when missing (access as given, 0x20006 = KEY_WRITE by default).
  virtual bool WriteString(RegRoot root, const Text& key, const Text& name, const Text& value,
                           unsigned long access = 0x20006) = 0;
  virtual bool DeleteValue(RegRoot root, const Text& key, const Text& name) = 0;
};

}  // namespace platform
