#pragma once
#include <cstdint>

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
  // ShellExecuteW as it stands: owner window (0 for none), verb, file, parameters,
  // folder (empty texts as given) and show state; the platform's result.
  virtual long Execute(std::uintptr_t ownerWindow, const Text& verb, const Text& file,
                       const Text& parameters, const Text& folder, int showCommand) = 0;
};

}  // namespace platform
