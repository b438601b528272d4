#pragma once
// The process scan by which the monitor tells whether an engine program (or the web
// helper) runs, and ends it. Only the file name counts: a program of that name in
// any folder and in any mix of capitals is taken for the engine.
#include <cstdint>

#include "base/Text.h"
#include "frame/AppState.h"

namespace engine {

using base::Text;
using base::TextView;
using frame::AppState;

// The values the scan has always passed to the platform.
inline constexpr std::uint32_t kSnapshotProcesses = 2;  // TH32CS_SNAPPROCESS
inline constexpr std::uint32_t kProcessEntrySize = 546;
inline constexpr std::uint32_t kSnapshotKillAccess = 1025;  // terminate + query information
inline constexpr std::uint32_t kListKillAccess = 1041;      // terminate + query + read memory
inline constexpr std::uint32_t kListQueryAccess = 1040;     // query + read memory
inline constexpr std::uint32_t kFirstByteCount = 8;
inline constexpr std::uint32_t kFirstReturnedCount = 96;
inline constexpr std::uint32_t kModuleTableBytes = 200;
inline constexpr std::uint32_t kModuleNameSize = 500;
inline constexpr std::uint32_t kModuleNameBufferChars = 520;

// Platform ids of GetVersionEx: 1 is the old consumer line (snapshot), 2 the NT line.
inline constexpr long kPlatformWindows = 1;
inline constexpr long kPlatformNt = 2;

// Lower case, cut at the NUL, then what follows the last "\" and of that the last "/".
Text ProgramTail(TextView path);

enum class ScanAccess { CanKill, QueryOnly };

// 1 when a process of `programName` runs, else 0. With killIt the first one found
// is terminated. `platformId` chooses the path; any other id answers 0. Failures of
// the platform calls are passed over; only a missing service throws.
long ScanForProgram(AppState& app, const Text& programName, bool killIt, long platformId,
                    ScanAccess access = ScanAccess::CanKill);

// The scan for a name given by the caller, with its own platform test.
long IsExeRunningAutomatic(AppState& app, const Text& name, bool KillIt);

}  // namespace engine
