#pragma once
#include <cstdint>
#include <vector>

#include "base/Text.h"

namespace platform {

using base::Text;

struct DialUpConnection {
  std::uintptr_t handle = 0;
  Text entryName;
};

class IDialUp {
 public:
  virtual ~IDialUp() = default;
  virtual std::vector<DialUpConnection> Connections() = 0;
  virtual bool HangUp(std::uintptr_t handle) = 0;
};

}  // namespace platform
