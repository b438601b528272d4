#pragma once
#include "platform/Shell.h"

namespace platform {

class Win32Shell : public IShell {
 public:
  long Open(const Text& target) noexcept override;
  bool Run(const Text& commandLine, bool hidden) noexcept override;
};

}  // namespace platform
