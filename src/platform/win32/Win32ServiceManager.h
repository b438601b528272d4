#pragma once
#include "platform/ServiceManager.h"

namespace platform {

class Win32ServiceManager : public IServiceManager {
 public:
  ScHandle OpenSCManagerW(const Text& machineName, const Text& databaseName,
                          unsigned long access) noexcept override;
  ScHandle OpenServiceW(ScHandle manager, const Text& serviceName,
                        unsigned long access) noexcept override;
  bool QueryServiceStatus(ScHandle service, ServiceStatus& status) noexcept override;
  bool QueryServiceConfigA(ScHandle service, unsigned long bufferBytes, unsigned long& bytesNeeded,
                           unsigned long& startType) noexcept override;
  bool StartServiceA(ScHandle service) noexcept override;
  bool ControlService(ScHandle service, unsigned long control,
                      ServiceStatus& status) noexcept override;
  bool CloseServiceHandle(ScHandle handle) noexcept override;
  bool ServiceInstalled(const Text& serviceName) noexcept override;
  unsigned long LastError() noexcept override;
};

}  // namespace platform
