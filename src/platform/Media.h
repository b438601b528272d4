#pragma once
// Sounds and the help file.
#include "base/Text.h"

namespace platform {

using base::Text;

class ISound {
 public:
  virtual ~ISound() = default;
  // A system sound by alias, asynchronously; false when it could not be started.
  virtual bool PlayAlias(const Text& alias) = 0;
};

class IHelp {
 public:
  virtual ~IHelp() = default;
  // Opens the compiled help file at a topic; false when the help could not be shown.
  virtual bool Show(const Text& helpFile, const Text& topic) = 0;
};

}  // namespace platform
