#pragma once
// The product's closed OS-name object, reached by its ProgID through IDispatch.
#include "platform/ClosedObjects.h"

namespace platform {

class Win32OsNameProvider : public IOsNameProvider {
 public:
  // nullopt when the object is not registered (the normal case outside a full
  // installation) or when any step of the call fails.
  std::optional<Text> OsName() noexcept override;
};

}  // namespace platform
