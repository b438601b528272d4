#pragma once
// The service control manager. Filled in with the engine control work.
#include <cstdint>
#include <optional>

#include "base/Text.h"

namespace platform {

using base::Text;

enum class ServiceControl : unsigned long { Stop = 1, Pause = 2, Continue = 3, Interrogate = 4 };

struct ServiceQuery {
  bool ok = false;
  unsigned long currentState = 0;  // SERVICE_STOPPED 1 .. SERVICE_PAUSED 7
  unsigned long lastError = 0;
};

class IServiceManager {
 public:
  virtual ~IServiceManager() = default;
  virtual ServiceQuery QueryStatus(const Text& serviceName) = 0;
  virtual std::optional<unsigned long> StartType(const Text& serviceName) = 0;
  virtual unsigned long Start(const Text& serviceName) = 0;  // 0 or the error number
  virtual unsigned long Control(const Text& serviceName, ServiceControl control) = 0;
};

}  // namespace platform
