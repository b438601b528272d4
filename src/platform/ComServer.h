#pragma once
// Serving the engine's progress callback class. Filled in with the engine control work.
#include "base/Text.h"

namespace platform {

class IComServer {
 public:
  virtual ~IComServer() = default;
  // Registers the type library and class per user, and the running class object.
  virtual bool Register() = 0;
  virtual void Revoke() = 0;
};

}  // namespace platform
