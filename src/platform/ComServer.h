#pragma once
// Serving the engine's progress callback class. The COM shell converts the wire
// arguments and hands them to an IMonitorCallback that the logic provides; the
// rules of what is kept live with the logic, not here.
#include <functional>
#include <memory>

#include "base/Text.h"

namespace platform {

using base::Text;

// One UpdateMonitor call as it arrived, in the wire order. The by-reference values
// are copied in; the callback's changes are not sent back (the engine ignores them).
struct UpdateMonitorArgs {
  Text sFileName;
  double dFileSize = 0;
  double dTotalFilesize = 0;
  double dfileBuff = 0;
  double dTotalBuffer = 0;
  Text sTrfRate;
  short iFileProg = 0;
  short iTotalProg = 0;
  float StartTime = 0;
  Text timeelapsed;
  Text TimeRemaining;
  short engNumber = 0;
  short preCall = 0;   // optional; 0 when left out
  long sBkStatus = 0;  // optional; 0 when left out
};

// One instance of the class IMonitor as the engine sees it.
class IMonitorCallback {
 public:
  virtual ~IMonitorCallback() = default;
  virtual double GetTransferRate() = 0;
  virtual void SetTransferRate(double value) = 0;
  // The result travels back in a variant as a 16-bit integer.
  virtual short UpdateMonitor(const UpdateMonitorArgs& args) = 0;
  virtual Text GetProperTime(long lTimeValue) = 0;
};

using MonitorCallbackFactory = std::function<std::unique_ptr<IMonitorCallback>()>;

class IComServer {
 public:
  virtual ~IComServer() = default;
  // Writes the class, its program id, interface and type library for the present user.
  virtual bool RegisterServer() = 0;
  // Makes the running program the server of the class: each instance a client
  // creates comes from `factory`. Calls arrive on the registering thread.
  virtual bool RegisterClassObject(MonitorCallbackFactory factory) = 0;
  virtual void RevokeClassObject() = 0;
};

}  // namespace platform
