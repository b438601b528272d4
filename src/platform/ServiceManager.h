#pragma once
// The service control manager, call for call. The engine objects compose these the
// way the engine has always been driven (which access for which operation, the
// database name, the two-step configuration query), so the interface passes those
// values through instead of choosing them.
#include <cstdint>

#include "base/Text.h"

namespace platform {

using base::Text;

using ScHandle = std::uintptr_t;  // 0: no handle

// Access rights and codes as the service manager numbers them.
inline constexpr unsigned long kGenericRead = 0x80000000UL;
inline constexpr unsigned long kScManagerAllAccess = 0xF003FUL;
inline constexpr unsigned long kServiceQueryStatus = 0x0004UL;
inline constexpr unsigned long kServiceAllAccess = 0xF01FFUL;
inline constexpr unsigned long kServiceControlStop = 1;
inline constexpr unsigned long kServiceControlPause = 2;
inline constexpr unsigned long kServiceControlContinue = 3;
inline constexpr unsigned long kServiceDisabled = 4;

struct ServiceStatus {
  unsigned long serviceType = 0;
  unsigned long currentState = 0;  // 1 stopped .. 7 paused
  unsigned long controlsAccepted = 0;
  unsigned long win32ExitCode = 0;
};

class IServiceManager {
 public:
  virtual ~IServiceManager() = default;
  // OpenSCManagerW; an empty machine name means this machine (a null pointer).
  virtual ScHandle OpenSCManagerW(const Text& machineName, const Text& databaseName,
                                  unsigned long access) = 0;
  // OpenServiceW.
  virtual ScHandle OpenServiceW(ScHandle manager, const Text& serviceName,
                                unsigned long access) = 0;
  virtual bool QueryServiceStatus(ScHandle service, ServiceStatus& status) = 0;
  // QueryServiceConfigA into a buffer of `bufferBytes` (none when 0). False with
  // `bytesNeeded` set when the buffer is too small; `startType` is filled on success.
  virtual bool QueryServiceConfigA(ScHandle service, unsigned long bufferBytes,
                                   unsigned long& bytesNeeded, unsigned long& startType) = 0;
  // StartServiceA without arguments.
  virtual bool StartServiceA(ScHandle service) = 0;
  virtual bool ControlService(ScHandle service, unsigned long control, ServiceStatus& status) = 0;
  virtual bool CloseServiceHandle(ScHandle handle) = 0;
  // False only when the system surely has no service of this name: it is not among the
  // installed services' keys in the registry (one registry lookup, where the calls
  // above each go to the service manager). A service that is installed or may be is true.
  virtual bool ServiceInstalled(const Text& serviceName) = 0;
  // The error of the last failed call on this thread.
  virtual unsigned long LastError() = 0;
};

}  // namespace platform
