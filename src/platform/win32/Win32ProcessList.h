#pragma once
#include "platform/ProcessList.h"

namespace platform {

class Win32ProcessList : public IProcessList {
 public:
  bool EnumProcessIds(std::uint32_t byteCount, std::vector<std::uint32_t>& ids,
                      std::uint32_t& bytesReturned) noexcept override;
  OsHandle OpenProcess(std::uint32_t access, bool inheritHandle,
                       std::uint32_t processId) noexcept override;
  bool EnumModules(OsHandle process, std::uint32_t tableBytes,
                   std::uintptr_t& firstModule) noexcept override;
  Text ModuleFileName(OsHandle process, std::uintptr_t module, std::uint32_t size,
                      std::uint32_t bufferChars) noexcept override;
  OsHandle CreateSnapshot(std::uint32_t flags, std::uint32_t processId) noexcept override;
  bool ProcessFirst(OsHandle snapshot, std::uint32_t entrySize,
                    SnapshotEntry& entry) noexcept override;
  bool ProcessNext(OsHandle snapshot, std::uint32_t entrySize,
                   SnapshotEntry& entry) noexcept override;
  bool TerminateProcess(OsHandle process, std::uint32_t exitCode) noexcept override;
  bool CloseHandle(OsHandle handle) noexcept override;
  std::uint64_t ProcessStartTime(std::uint32_t processId) noexcept override;
  OsHandle FindWindowByTitle(const Text& title) noexcept override;
  bool PostMessageA(OsHandle window, std::uint32_t message, std::uintptr_t wParam,
                    std::intptr_t lParam) noexcept override;
};

}  // namespace platform
