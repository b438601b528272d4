#pragma once
// Backup Now without its form: the menu item's collection of the sets that may be run
// (by the MIRROR setting: the sets of BacksetData.txt, or the scheduled jobs in
// Relative Path mode) and cmdBackupNow_Click, which turns the chosen row into an
// immediate record in scheduleData.txt. The rows live in the job store's
// AppState::Store.LstBackupSet, whose SelectedRow is the form's nSelectedRow.
#include "base/Text.h"
#include "frame/AppState.h"
#include "jobs/JobPrompts.h"
#include "jobstore/BackupSets.h"

namespace jobs {

using base::Text;

// The column widths of LstBackupSet by mode (twips).
struct BackupNowWidths {
  double name, destination, userName, recordNumber;
};
BackupNowWidths BackupNowColumnWidths(bool mirrorMode);

// mnuBackupNow_Click up to the showing of the screen: Show when the list has rows
// (row 1 selected), otherwise the list's message was shown (Close) or, in Relative Path
// mode without a schedule file, nothing happened at all (Nothing).
jobstore::BackupNowOutcome PrepareBackupNow(frame::AppState& app, JobPrompts& prompts);

// What the screen does after cmdBackupNow_Click.
enum class BackupNowEnd {
  Stay,   // refused or nothing chosen: the screen stays as it is
  Front,  // the screen is brought to the front and stays
  Close,  // the screen unloads
};
struct BackupNowClickResult {
  BackupNowEnd end = BackupNowEnd::Stay;
  bool recordAdded = false;  // an immediate record was written
};
// cmdBackupNow_Click in its fixed order of checks; `majorVersion` for the plug-in rule.
BackupNowClickResult cmdBackupNow_Click(frame::AppState& app, JobPrompts& prompts,
                                        unsigned long majorVersion);

}  // namespace jobs
