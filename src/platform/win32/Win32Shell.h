#pragma once
#include "platform/Shell.h"

namespace platform {

class Win32Shell : public IShell {
 public:
  long Open(const Text& target) noexcept override;
  bool Run(const Text& commandLine, bool hidden) noexcept override;
  long Execute(std::uintptr_t ownerWindow, const Text& verb, const Text& file,
               const Text& parameters, const Text& folder, int showCommand) noexcept override;
};

}  // namespace platform
