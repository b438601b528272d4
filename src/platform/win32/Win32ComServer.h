#pragma once
// The out-of-process COM server of the class IMonitor: registration for the present
// user, and the class object through which the running monitor serves the engine.
#include <functional>
#include <memory>

#include "platform/ComServer.h"

namespace platform {

inline constexpr char16_t kMonitorProgId[] = u"QVMonitor.IMonitor";
inline constexpr char16_t kMonitorClsid[] = u"{1984E5BD-394A-449B-A09A-6648BCB1AF6F}";
inline constexpr char16_t kMonitorIid[] = u"{BC8E9D57-8867-4B16-893C-187BDF70108D}";
inline constexpr char16_t kMonitorLibid[] = u"{653BCEE0-0E83-4D03-8210-EA583DC816E1}";

// Where a failure inside a call of the engine is told, one line each.
using ComFailureSink = std::function<void(const Text& line)>;

class Win32ComServer : public IComServer {
 public:
  Win32ComServer() = default;
  ~Win32ComServer() override;
  Win32ComServer(const Win32ComServer&) = delete;
  Win32ComServer& operator=(const Win32ComServer&) = delete;

  bool RegisterServer() noexcept override;
  bool RegisterClassObject(MonitorCallbackFactory factory) noexcept override;
  void RevokeClassObject() noexcept override;
  // A call of the engine that fails inside answers as if nothing had been done, and
  // the failure is told here; also for the instances made before it was set.
  void SetFailureSink(ComFailureSink sink) { *failureSink_ = std::move(sink); }

 private:
  std::shared_ptr<ComFailureSink> failureSink_ = std::make_shared<ComFailureSink>();
  unsigned long cookie_ = 0;
  void* factory_ = nullptr;  // the class factory, held while registered
};

}  // namespace platform
