#include "engine/ProcessScan.h"

#include <algorithm>
#include <vector>

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
  ProcessScanMemo& memo = app.ProcessScans;
  std::uint32_t byteCount = kFirstByteCount;
  std::uint32_t returned = kFirstReturnedCount;
  // An array that had room to spare last time is tried first: the list it gives is the
  // one the doubling from the smallest size would end with.
  if (memo.byteCount > kFirstByteCount && memo.byteCount < kByteCountLimit)
    byteCount = returned = memo.byteCount / 2;
  std::vector<std::uint32_t> ids;
  // Grow until the array has room to spare: a full array may have left processes out.
  while (byteCount <= returned && byteCount < kByteCountLimit) {
    byteCount *= 2;
    std::uint32_t got = returned;
    if (list.EnumProcessIds(byteCount, ids, got)) returned = got;
  }
  memo.byteCount = byteCount;
  const std::size_t count = std::min<std::size_t>(returned / 4, ids.size());
  const std::uint32_t openAccess =
      access == ScanAccess::CanKill ? kListKillAccess : kListQueryAccess;
  const bool kills = killIt && access == ScanAccess::CanKill;

  // A process met before (the same id and start time) keeps its name and whether it
  // could be opened; only a walk that may end a process opens every one again. A name
  // that could not be read is not kept: a process that is still starting has no
  // modules yet.
  std::vector<ProcessScanMemo::Known> known;
  long found = 0;
  for (std::size_t i = 0; i < count && found == 0; ++i) {
    const std::uint64_t start = kills ? 0 : list.ProcessStartTime(ids[i]);
    if (start != 0) {
      auto met = std::find_if(memo.known.begin(), memo.known.end(), [&](const auto& k) {
        return k.processId == ids[i] && k.start == start && k.openAccess == openAccess;
      });
      if (met != memo.known.end()) {
        known.push_back(*met);
        if (met->opened && met->tail == target) found = 1;
        continue;
      }
    }
    const platform::OsHandle process = list.OpenProcess(openAccess, false, ids[i]);
    if (process == 0) {  // other users' and protected processes
      if (start != 0) known.push_back({ids[i], start, openAccess, false, Text()});
      continue;
    }
    std::uintptr_t module = 0;
    if (list.EnumModules(process, kModuleTableBytes, module)) {
      const Text tail = ProgramTail(
          list.ModuleFileName(process, module, kModuleNameSize, kModuleNameBufferChars));
      if (start != 0 && !tail.empty()) known.push_back({ids[i], start, openAccess, true, tail});
      if (tail == target) found = 1;
    }
    if (found == 1 && kills) list.TerminateProcess(process, 0);
    list.CloseHandle(process);
  }
  // What this walk met, and what it did not reach of the last one's, for the next walk.
  if (!kills) {
    for (const auto& k : memo.known) {
      const bool listed =
          std::find(ids.begin(), ids.begin() + count, k.processId) != ids.begin() + count;
      const bool seen = std::any_of(known.begin(), known.end(),
                                    [&](const auto& n) { return n.processId == k.processId; });
      if (listed && !seen) known.push_back(k);
    }
    memo.known = std::move(known);
  }
  return found;
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
