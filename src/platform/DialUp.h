#pragma once
// The remote-access service: the dial-up connections that are up, and hanging one up.
#include <cstdint>
#include <vector>

#include "base/Text.h"

namespace platform {

using base::Text;

struct DialUpConnection {
  std::uintptr_t handle = 0;
  Text entryName;
  Text deviceType;
  Text deviceName;
};

// What a listing found. The service is asked first with room for one entry: it answers
// that it needs a larger buffer (603) when connections are up, or that there are none.
// Then it is asked again with a buffer of the size it named.
struct DialUpListing {
  bool none = false;        // the first call found no connection
  unsigned long error = 0;  // the second call's failure, 0 when it listed
  std::vector<DialUpConnection> connections;
};

inline constexpr unsigned long kErrorBufferTooSmall = 603;

class IDialUp {
 public:
  virtual ~IDialUp() = default;
  virtual DialUpListing Connections() = 0;
  // 0 when the line was hung up, else the service's error number.
  virtual unsigned long HangUp(std::uintptr_t handle) = 0;
};

}  // namespace platform
