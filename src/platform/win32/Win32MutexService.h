#pragma once
#include "platform/Mutex.h"

namespace platform {

class Win32MutexService : public IMutexService {
 public:
  Created CreateMutex(const Text& name, bool initialOwner) noexcept override;
  bool CloseHandle(std::uintptr_t handle) noexcept override;
  bool ReleaseMutex(std::uintptr_t handle) noexcept override;
};

}  // namespace platform
