#pragma once
// Named kernel mutexes, for the single-instance rule.
#include <cstdint>

#include "base/Text.h"

namespace platform {

using base::Text;

inline constexpr unsigned long kErrorAlreadyExists = 183;
inline constexpr unsigned long kErrorAccessDenied = 5;

class IMutexService {
 public:
  struct Created {
    std::uintptr_t handle = 0;    // 0 when creation failed outright
    unsigned long lastError = 0;  // the error right after the call (183, 5, 0 ...)
  };
  virtual ~IMutexService() = default;
  virtual Created CreateMutex(const Text& name, bool initialOwner) = 0;
  virtual bool CloseHandle(std::uintptr_t handle) = 0;
  virtual bool ReleaseMutex(std::uintptr_t handle) = 0;
};

}  // namespace platform
