#pragma once
#include "base/Text.h"

namespace platform {

using base::Text;

class IShell {
 public:
  virtual ~IShell() = default;
  // Opens a document or URL with its associated program; the platform's result
  // (above 32 on success, 2 for a missing file).
  virtual long Open(const Text& target) = 0;
  // Starts a command line; `hidden` starts it without a window. True when it started.
  virtual bool Run(const Text& commandLine, bool hidden) = 0;
};

}  // namespace platform
