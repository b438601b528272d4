#pragma once
// BacksetData.txt (the sets the main application defined; read only here) and
// Mailid.txt (the notification addresses last used), and the Backup Now list that
// is filled from either the sets or the scheduled jobs.
#include <vector>

#include "base/Text.h"
#include "frame/AppState.h"

namespace jobstore {

using base::Text;
using frame::AppState;

inline constexpr size_t kMaxMailIds = 10;

// What the Backup Now screen does after its list was filled.
enum class BackupNowOutcome {
  Show,     // rows are there: show the screen
  Close,    // a message was shown; the screen closes
  Nothing,  // Relative Path mode without a schedule file: no screen, no message
};

Text GetBackSetName(AppState& app, const Text& line);
BackupNowOutcome DB_ReadBackdata(AppState& app);
BackupNowOutcome DB_Relative_ReadBackdata(AppState& app);
// The MIRROR choice: "1" or empty is mirror mode (the sets file), anything else is
// Relative Path mode (the scheduled jobs).
BackupNowOutcome FillBackupNowList(AppState& app);

void DB_ReadMaildata(AppState& app, std::vector<Text>& list, const Text& path);
// `lstMailAdd` is the form's address list; a screen without one passes null.
void Sch_LoadMailidList(AppState& app, std::vector<Text>* lstMailAdd);
void Sch_SaveMailid(AppState& app, const Text& address);
void DB_WriteBackdata(AppState& app, const std::vector<Text>& list, const Text& fileName);

}  // namespace jobstore
