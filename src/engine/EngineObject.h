#pragma once
// The common face of the two engine control classes. Callers reach the engine's
// operations by name without knowing which form is installed; an operation that a
// form does not offer fails the way a late-bound call to a missing member does
// (error 438), and the callers' ignore-and-go-on handling passes over it.
#include "base/Guarded.h"
#include "base/Text.h"
#include "engine/TransferUpdate.h"

namespace engine {

using base::Text;

inline constexpr long kNotSupportedError = 438;

class EngineObject {
 public:
  virtual ~EngineObject() = default;

  virtual Text GetServiceStatus() = 0;
  virtual void ServiceStart() = 0;
  virtual void ServiceStop() = 0;
  virtual void ServicePause() { NotOffered(); }
  virtual void ServiceResume() { NotOffered(); }
  virtual void StopTransfer() = 0;
  virtual bool StopTransferMsgBox() = 0;
  virtual Text getlabelstring() = 0;
  virtual long IsServiceExeRunning(bool KillIt) = 0;
  virtual long getVersion() = 0;
  virtual long getMajorVersion() = 0;
  virtual long GetServiceStartupType() { NotOffered(); }
  virtual Text GetCompName() { NotOffered(); }

  // False when a start could surely do nothing: the service form on a system without the
  // service. The background program can always be started.
  virtual bool Installed() { return true; }

  // True for the service form (what the class of ActiveEngine tells).
  virtual bool IsService() const = 0;

 protected:
  [[noreturn]] static void NotOffered() {
    throw base::Failure(kNotSupportedError, "Object doesn't support this property or method");
  }
};

}  // namespace engine
