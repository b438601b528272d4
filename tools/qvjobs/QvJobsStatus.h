#pragma once
// `qvjobs status`: one read-only look at a machine for monitoring systems and scripts.
// What it reports is what the monitor's own rules make of the data root (the job
// list's state, the next-job and quota lines, the missed-backup walk, the session
// files), judged as a monitoring check: exit 0 OK, 1 WARNING, 2 CRITICAL, 3 UNKNOWN.
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/Text.h"
#include "frame/AppState.h"
#include "notify/MissedBackup.h"
#include "notify/NextJob.h"

namespace qvjobs {

using base::Text;

enum class CheckState : int { Ok = 0, Warning = 1, Critical = 2, Unknown = 3 };
const char* CheckStateWord(CheckState state);  // "OK", "WARNING", "CRITICAL", "UNKNOWN"

inline constexpr long kDefaultMaxAgeDays = 7;

struct MachineStatus {
  CheckState state = CheckState::Unknown;
  Text summary;
  bool known = false;  // false: UNKNOWN, and nothing below was read

  Text engineKind;                    // "service" or "background"
  std::optional<bool> engineRunning;  // none where the system cannot tell
  struct InProgress {
    Text set;
    Text user;
    bool stopping = false;
  };
  std::optional<InProgress> inProgress;
  struct NextJob {
    Text set;
    Text nextRun;  // as the schedule file gives it
  };
  std::optional<NextJob> nextJob;
  long jobCount = 0;
  bool jobsHeld = false;
  std::vector<notify::MissedBackupNotice> missed;  // every account that is due
  std::optional<notify::QuotaFigures> quota;
  std::optional<Text> lastResult;  // "failure", "success"
  long sessionCount = 0;
  struct Session {
    Text start;        // the "Start Time" of the list, as the file's name gives it
    Text description;  // the "Description" of the list, trimmed
  };
  std::optional<Session> newestBackup;
  std::optional<std::int64_t> ageDays;
  long maxAgeDays = kDefaultMaxAgeDays;

  // What was passed over on the way (an account whose keys make no sense), for the
  // command's standard error.
  std::vector<Text> notes;
};

// The quota's whole percentage (the bar's value rounded down, so it is at 90 exactly
// when the bar is).
std::optional<std::int64_t> QuotaPercent(const MachineStatus& status);

// The session words that are backups: "Backup", "Schedule", "Continuous_Backup".
bool IsBackupSessionWord(const Text& word);

// The first place under the data root that is needed and cannot be read (the root,
// QVCOMMON, the schedule, the settings, an account's file); none when all can be.
std::optional<Text> UnreadablePlace(frame::AppState& app);

// Reads everything and judges it. `app` has its paths set; its platform should not
// write (the command gives it read-only files). The clock's present time is "now".
MachineStatus ReadMachineStatus(frame::AppState& app, long maxAgeDays);

// The state and the summary from what was read.
void Judge(MachineStatus& status);

MachineStatus UnknownStatus(const Text& summary);

// The first line "CORVANE <STATE> - <summary>[ | perfdata]" and one "name: value"
// line per item; or the JSON object.
std::string StatusText(const MachineStatus& status);
std::string StatusJson(const MachineStatus& status);

}  // namespace qvjobs
