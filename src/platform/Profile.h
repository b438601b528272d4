#pragma once
// Profile (ini) files with the platform's semantics: sections and keys without regard
// to case, blanks around keys and values ignored, a value in matching quotes unquoted,
// the value cut to the caller's buffer (bufferChars - 1 units), a null key deleting
// the section and a null value the key, UTF-16 files staying UTF-16.
#include <optional>

#include "base/Text.h"

namespace platform {

using base::Text;

class IProfile {
 public:
  virtual ~IProfile() = default;
  virtual Text GetString(const Text& section, const Text& key, const Text& defaultValue,
                         std::size_t bufferChars, const Text& file) = 0;
  // False on failure; LastError() then holds the platform's error number.
  virtual bool WriteString(const Text& section, const std::optional<Text>& key,
                           const std::optional<Text>& value, const Text& file) = 0;
  virtual unsigned long LastError() = 0;
};

}  // namespace platform
