#pragma once
// Other programs: the process list, call for call, and the top-level windows of
// other programs that the engine control posts to. The engine's process scan
// decides access rights, table and buffer sizes; the interface passes them through.
#include <cstdint>
#include <optional>
#include <vector>

#include "base/Text.h"

namespace platform {

using base::Text;

using OsHandle = std::uintptr_t;  // 0: no handle

// One entry of a process snapshot (Process32First/Process32Next).
struct SnapshotEntry {
  std::uint32_t processId = 0;
  Text exeFile;  // as the snapshot gives it, possibly with a path
};

class IProcessList {
 public:
  virtual ~IProcessList() = default;

  // EnumProcesses with an array of `byteCount` / 4 entries. `bytesReturned` is what the
  // call reports; the ids filled are the first bytesReturned / 4.
  virtual bool EnumProcessIds(std::uint32_t byteCount, std::vector<std::uint32_t>& ids,
                              std::uint32_t& bytesReturned) = 0;
  virtual OsHandle OpenProcess(std::uint32_t access, bool inheritHandle,
                               std::uint32_t processId) = 0;
  // EnumProcessModules with a module table of `tableBytes`; the first module on success.
  virtual bool EnumModules(OsHandle process, std::uint32_t tableBytes,
                           std::uintptr_t& firstModule) = 0;
  // GetModuleFileNameExW with `size` characters allowed into a buffer of `bufferChars`;
  // the whole buffer comes back (the caller cuts at the NUL).
  virtual Text ModuleFileName(OsHandle process, std::uintptr_t module, std::uint32_t size,
                              std::uint32_t bufferChars) = 0;
  // CreateToolhelp32Snapshot(flags, processId).
  virtual OsHandle CreateSnapshot(std::uint32_t flags, std::uint32_t processId) = 0;
  // Process32First/Process32Next with the entry's size field set to `entrySize`.
  virtual bool ProcessFirst(OsHandle snapshot, std::uint32_t entrySize, SnapshotEntry& entry) = 0;
  virtual bool ProcessNext(OsHandle snapshot, std::uint32_t entrySize, SnapshotEntry& entry) = 0;
  virtual bool TerminateProcess(OsHandle process, std::uint32_t exitCode) = 0;
  virtual bool CloseHandle(OsHandle handle) = 0;
  // When the process began (OpenProcess for limited query, GetProcessTimes), in the
  // system's units; 0 when it cannot be told: no such process, or one this user may not
  // ask. A process id that comes back with another start time is another process.
  virtual std::uint64_t ProcessStartTime(std::uint32_t processId) = 0;

  // FindWindowA without a class name; 0 when there is no such window.
  virtual OsHandle FindWindowByTitle(const Text& title) = 0;
  // PostMessageA; a null window is passed on as it is.
  virtual bool PostMessageA(OsHandle window, std::uint32_t message, std::uintptr_t wParam,
                            std::intptr_t lParam) = 0;
};

}  // namespace platform
