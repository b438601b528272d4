#include "engine/ProcessScan.h"

#include <algorithm>

#include "base/Guarded.h"
#include "frame/Logs.h"

namespace engine {

namespace {

// A byte count that no real process table needs; the doubling stops there even if a
// platform kept reporting a full array.
constexpr std::uint32_t kByteCountLimit = 1u << 24;

platform::IProcessList& Processes(AppState& app) {
  if (!app.platform.processes)
    throw base::Failure(91, "Object variable or With block variable not set");
  return *app.platform.processes;
}

long ScanSnapshot(AppState& app, const Text& target, bool killIt) {
  platform::IProcessList& list = Processes(app);
  const platform::OsHandle snapshot = list.CreateSnapshot(kSnapshotProcesses, 0);
  if (snapshot == 0) return 0;
  long found = 0;
  platform::SnapshotEntry entry;
  for (bool more = list.ProcessFirst(snapshot, kProcessEntrySize, entry); more;
       more = list.ProcessNext(snapshot, kProcessEntrySize, entry)) {
    if (ProgramTail(entry.exeFile) != target) continue;
    if (killIt) {
      const platform::OsHandle process =
          list.OpenProcess(kSnapshotKillAccess, true, entry.processId);
      if (process != 0) {
        list.TerminateProcess(process, 0);
        list.CloseHandle(process);
      }
    }
    found = 1;
    break;
  }
  list.CloseHandle(snapshot);
  return found;
}

long ScanList(AppState& app, const Text& target, bool killIt, ScanAccess access) {
  platform::IProcessList& list = Processes(app);
  std::uint32_t byteCount = kFirstByteCount;
  std::uint32_t returned = kFirstReturnedCount;
  std::vector<std::uint32_t> ids;
  // Grow until the array has room to spare: a full array may have left processes out.
  while (byteCount <= returned && byteCount < kByteCountLimit) {
    byteCount *= 2;
    std::uint32_t got = returned;
    if (list.EnumProcessIds(byteCount, ids, got)) returned = got;
  }
  const std::size_t count = std::min<std::size_t>(returned / 4, ids.size());
  const std::uint32_t openAccess =
      access == ScanAccess::CanKill ? kListKillAccess : kListQueryAccess;
  for (std::size_t i = 0; i < count; ++i) {
    const platform::OsHandle process = list.OpenProcess(openAccess, false, ids[i]);
    if (process == 0) continue;  // other users' and protected processes
    bool match = false;
    std::uintptr_t module = 0;
    if (list.EnumModules(process, kModuleTableBytes, module)) {
      const Text name =
          list.ModuleFileName(process, module, kModuleNameSize, kModuleNameBufferChars);
      match = ProgramTail(name) == target;
    }
    if (match && killIt && access == ScanAccess::CanKill) list.TerminateProcess(process, 0);
    list.CloseHandle(process);
    if (match) return 1;
  }
  return 0;
}

}  // namespace

Text ProgramTail(TextView path) {
  Text name = base::ToLower(base::CutAtNul(path));
  const size_t backslash = name.rfind(u'\\');
  if (backslash != Text::npos) name = name.substr(backslash + 1);
  const size_t slash = name.rfind(u'/');
  if (slash != Text::npos) name = name.substr(slash + 1);
  return name;
}

long ScanForProgram(AppState& app, const Text& programName, bool killIt, long platformId,
                    ScanAccess access) {
  const Text target = base::ToLower(programName);
  if (platformId == kPlatformWindows)
    return ScanSnapshot(app, target, killIt && access == ScanAccess::CanKill);
  if (platformId == kPlatformNt) return ScanList(app, target, killIt, access);
  return 0;
}

long IsExeRunningAutomatic(AppState& app, const Text& name, bool KillIt) {
  long result = 0;
  base::Guarded(
      [&] {
        const long platformId =
            app.platform.system ? static_cast<long>(app.platform.system->PlatformId()) : 0;
        result = ScanForProgram(app, name, KillIt, platformId);
      },
      [&](const base::ErrorInfo& e) {
        frame::TraceError(app, u"Error in IsExeRunningAutomatic, Reason : ", e);
      });
  return result;
}

}  // namespace engine
