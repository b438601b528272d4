#include "platform/win32/Win32Text.h"
#include "platform/win32/Win32ServiceManager.h"
#include "platform/win32/Win32Handles.h"

#include <winsvc.h>

#include <string>
#include <vector>

namespace platform {

using win32::NoThrow;
using win32::Wide;

namespace {

SC_HANDLE H(ScHandle handle) { return reinterpret_cast<SC_HANDLE>(handle); }
ScHandle FromH(SC_HANDLE handle) { return reinterpret_cast<ScHandle>(handle); }

void Copy(const SERVICE_STATUS& from, ServiceStatus& to) {
  to.serviceType = from.dwServiceType;
  to.currentState = from.dwCurrentState;
  to.controlsAccepted = from.dwControlsAccepted;
  to.win32ExitCode = from.dwWin32ExitCode;
}

}  // namespace

ScHandle Win32ServiceManager::OpenSCManagerW(const Text& machineName, const Text& databaseName,
                                             unsigned long access) noexcept {
  return FromH(::OpenSCManagerW(machineName.empty() ? nullptr : Wide(machineName),
                                Wide(databaseName), access));
}

ScHandle Win32ServiceManager::OpenServiceW(ScHandle manager, const Text& serviceName,
                                           unsigned long access) noexcept {
  return FromH(::OpenServiceW(H(manager), Wide(serviceName), access));
}

bool Win32ServiceManager::QueryServiceStatus(ScHandle service, ServiceStatus& status) noexcept {
  SERVICE_STATUS s{};
  if (!::QueryServiceStatus(H(service), &s)) return false;
  Copy(s, status);
  return true;
}

bool Win32ServiceManager::QueryServiceConfigA(ScHandle service, unsigned long bufferBytes,
                                              unsigned long& bytesNeeded,
                                              unsigned long& startType) noexcept {
  return NoThrow(false, [&] {
    // Aligned storage for the structure and the strings that follow it.
    std::vector<unsigned long long> buffer((bufferBytes + 7) / 8 + 1);
    auto* config = bufferBytes ? reinterpret_cast<QUERY_SERVICE_CONFIGA*>(buffer.data()) : nullptr;
    DWORD needed = 0;
    if (!::QueryServiceConfigA(H(service), config, bufferBytes, &needed)) {
      bytesNeeded = needed;
      return false;
    }
    startType = config ? config->dwStartType : 0;
    return true;
  });
}

bool Win32ServiceManager::StartServiceA(ScHandle service) noexcept {
  return ::StartServiceA(H(service), 0, nullptr) != FALSE;
}

bool Win32ServiceManager::ControlService(ScHandle service, unsigned long control,
                                         ServiceStatus& status) noexcept {
  SERVICE_STATUS s{};
  if (!::ControlService(H(service), control, &s)) return false;
  Copy(s, status);
  return true;
}

// The interface's close, called for a handle its caller owns: no holder here.
bool Win32ServiceManager::CloseServiceHandle(ScHandle handle) noexcept {
  return ::CloseServiceHandle(H(handle)) != FALSE;
}

bool Win32ServiceManager::ServiceInstalled(const Text& serviceName) noexcept {
  return NoThrow(true, [&] {
    // The service manager keeps each installed service under this key; the lookup
    // leaves the thread's last error as the service calls set it.
    const DWORD lastError = ::GetLastError();
    const std::wstring key =
        L"SYSTEM\\CurrentControlSet\\Services\\" + std::wstring(Wide(serviceName));
    LSTATUS status = ERROR_SUCCESS;
    {
      // The key is closed before the last error is put back.
      win32::UniqueKey handle;
      status = ::RegOpenKeyExW(HKEY_LOCAL_MACHINE, key.c_str(), 0, KEY_QUERY_VALUE, handle.Out());
    }
    ::SetLastError(lastError);
    return status != ERROR_FILE_NOT_FOUND;
  });
}

unsigned long Win32ServiceManager::LastError() noexcept { return ::GetLastError(); }

}  // namespace platform
