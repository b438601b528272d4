#pragma once
// The job list of Manage Scheduled Jobs without its form: the nine columns, the rows
// that FillListView builds from the job array, the selected row, the line under the
// list and the state of the action buttons. The form mirrors a JobList into its list
// view after every change; tools/qvjobs reads the same rows.
//
// A job's state is never stored with the job: the list tells it from the state word at
// the head of the schedule file and the rule that the record with the smallest SortKey
// is the one running, so at most one row shows a status.
#include <functional>
#include <vector>

#include "base/Text.h"
#include "frame/AppState.h"
#include "jobstore/SystemDate.h"

namespace jobs {

using base::Text;

// Columns of Sch_list_lv, 1-based as the design counts them.
enum JobColumn : int {
  kColBackupset = 1,
  kColNextTransfer = 2,
  kColFrequency = 3,
  kColStatus = 4,
  kColDestination = 5,
  kColDataSort = 6,
  kColNo = 7,
  kColUserName = 8,
  kColDays = 9,
};
inline constexpr int kJobColumnCount = 9;

struct JobColumnSpec {
  const char16_t* caption;
  double width;  // twips; 0 hides the column
};
inline constexpr JobColumnSpec kJobColumns[kJobColumnCount] = {{u"Backupset", 1200.19},
                                                               {u"Next Transfer", 1500.09},
                                                               {u"Frequency", 0},
                                                               {u"Status", 1230.24},
                                                               {u"Destination", 1710},
                                                               {u"DataSort", 0},
                                                               {u"No.", 0},
                                                               {u"User Name", 1440},
                                                               {u"Scheduled day(s)", 2440}};
// Column 1's caption from the first activation on.
inline constexpr char16_t kActivatedFirstCaption[] = u"Backup/Restore set";

inline constexpr char16_t kStatusInProgress[] = u"In Progress";
inline constexpr char16_t kStatusStopping[] = u"Stopping";
// The automated job of the main application's file selection wizard (exact case).
inline constexpr char16_t kAutomatedJob[] = u"autobkupqvwin";
// The name of a restore job (any case).
inline constexpr char16_t kRestoreJob[] = u"Restore ItemSet";

struct JobRow {
  // The cells in column order; a record without NextRun has its name only.
  std::vector<Text> cells;
  // The record's NextRun as the file gave it (the command line shows it as it stands).
  Text nextRun;

  // Cell of column `column` (1-based); "" where the row has none.
  Text Cell(int column) const {
    const size_t i = static_cast<size_t>(column - 1);
    return column >= 1 && i < cells.size() ? cells[i] : Text();
  }
  const Text& Name() const { return cells.front(); }
  Text Status() const { return Cell(kColStatus); }
  Text Number() const { return Cell(kColNo); }
};

struct JobList {
  std::vector<JobRow> rows;
  Text lblMsgProgres;
  // Result of the last load: 0-based index of the record with the smallest SortKey.
  long NextJobIndex = 0;
  // 1-based row the user last clicked; 0 until one is. It is a row number, not a record
  // number, and survives a rebuild.
  long SelectedRow = 0;
  // The row shown selected; 0 for none.
  long markedRow = 0;
  // Pic_Edit, Pic_Delete, Pic_Imme and Pic_Sttrf.
  bool buttonsEnabled = false;
  // Counts the fills, so that a screen rebuilds its rows only when they were rebuilt.
  unsigned long fills = 0;
  // Told after every fill (also one that failed half way) and every change of the
  // buttons, so that a screen can mirror the list.
  std::function<void()> changed;

  long Count() const { return static_cast<long>(rows.size()); }
  bool HasRows() const { return !rows.empty(); }
  // Row `row1` (1-based), or null.
  const JobRow* Row(long row1) const {
    return row1 >= 1 && row1 <= Count() ? &rows[static_cast<size_t>(row1 - 1)] : nullptr;
  }
  const JobRow* Selected() const { return Row(SelectedRow); }
  void Changed() const {
    if (changed) changed();
  }
};

// BackupNowMode false, then the job array loaded afresh (empty key, no warning) and the
// index of the next job kept.
void LoadJobs(frame::AppState& app, JobList& list);

// The "Next Transfer" text of a NextRun: read as a date (through the file's form first
// when the system's short date starts with a day) and written in the system's short
// date form, as the hidden date control gives it. Throws when it is no date.
Text NextTransferText(const Text& nextRun, const jobstore::LocaleFormats& locale);

// Rebuilds the rows from the job array. A stored SelectedRow beyond the last row cannot
// be marked: the fill traces that itself ("in procedure FillListView") and the list
// stands without a selection; nothing reaches the caller. A row whose NextRun is no date
// keeps its name only; the failure is traced and the next row is filled.
void FillListView(frame::AppState& app, JobList& list);

// Gives the buttons the state of an empty list.
void CheckForRecords(frame::AppState& app, JobList& list);
void SetButtons(JobList& list, bool enabled);

// The full refresh: load, fill, the empty-list check; with `disableWhenEmpty` the four
// buttons are disabled once more when the list has no rows (the timer's refresh does
// that; Pic_Refresh_Click and the focus do not). Throws what a step threw.
void RefreshSteps(frame::AppState& app, JobList& list, bool disableWhenEmpty);
// The list's part of Form_Activate: BackupNowMode false, load, fill, and the buttons
// enabled when the job array has records, disabled when the list has no rows.
void ActivateJobList(frame::AppState& app, JobList& list);
// RefreshListView with its handler.
void RefreshListView(frame::AppState& app, JobList& list);

// The row whose "No." cell is `recordNo`: stored in SelectedRow; false when none is.
bool GetListNoFromRecNo(frame::AppState& app, JobList& list, const Text& recordNo);

// A click on row `row1`.
void ClickRow(frame::AppState& app, JobList& list, long row1);

}  // namespace jobs
