#include "platform/win32/Win32Text.h"
#include "platform/win32/Win32MutexService.h"

namespace platform {

IMutexService::Created Win32MutexService::CreateMutex(const Text& name,
                                                      bool initialOwner) noexcept {
  // The error is read right after the call: "already exists" comes with a valid handle.
  ::SetLastError(0);
  HANDLE h = ::CreateMutexW(nullptr, initialOwner ? TRUE : FALSE, win32::Wide(name));
  Created result;
  result.lastError = ::GetLastError();
  result.handle = reinterpret_cast<std::uintptr_t>(h);
  return result;
}

// The interface's close, called for a handle its caller owns: no holder here.
bool Win32MutexService::CloseHandle(std::uintptr_t handle) noexcept {
  return ::CloseHandle(reinterpret_cast<HANDLE>(handle)) != FALSE;
}

bool Win32MutexService::ReleaseMutex(std::uintptr_t handle) noexcept {
  return ::ReleaseMutex(reinterpret_cast<HANDLE>(handle)) != FALSE;
}

}  // namespace platform
