#pragma once
// The job list of Manage Scheduled Jobs without its form: the nine columns, the rows
// that FillListView builds from the job array, the selected row, the line under the
// list and the state of the action buttons. The form mirrors a JobList into its list
// view after every change; tools/qvjobs reads the same rows.
//
// A job's state is never stored with the job: the list tells it from the state word at
// the head of the schedule file and the rule that the record with the smallest SortKey
// is the one running, so at most one row shows a status.
#include <cstdint>
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

enum class JobStatus : unsigned char { None, InProgress, Stopping };

// One row of the list, held compactly: a list may have hundreds of thousands of rows and
// the list view asks for a cell only when it draws it. The texts of a row stand one after
// the other in one string; the status is one of three words and the day names follow
// from the record's day digits, so both are made when asked for. A row is all the list
// keeps of its record: the record's number and key stay with it also when the row shows
// the name alone.
class JobRow {
 public:
  JobRow() = default;
  // A row with its name only (a record without NextRun, or one whose fill failed).
  explicit JobRow(const Text& name, const Text& nextRun = {}, const Text& recordNo = {},
                  const Text& sortKey = {});
  // A filled row: every column, the status aside.
  struct Filled {
    Text name, nextTransfer, frequency, destination, dataSort, number, userName, days, nextRun;
  };
  explicit JobRow(const Filled& f);

  // Cell of column `column` (1-based); "" where the row has none.
  Text Cell(int column) const;
  // The cells in column order; the name alone for a row without NextRun.
  std::vector<Text> Cells() const;
  bool HasCells() const { return filled_; }
  Text Name() const { return Piece(kName); }
  Text Status() const { return Cell(kColStatus); }
  Text Number() const { return filled_ ? Piece(kNumber) : Text(); }
  // The record's RecordNo and SortKey, whether or not the row shows them.
  Text RecordNo() const { return Piece(kNumber); }
  Text SortKey() const { return Piece(kDataSort); }
  // The record's NextRun as the file gave it (the command line shows it as it stands).
  Text NextRun() const { return Piece(kNextRun); }
  void SetStatus(JobStatus s) { status_ = s; }

 private:
  enum PieceIndex : unsigned char {
    kName,
    kNextTransfer,
    kFrequency,
    kDestination,
    kDataSort,
    kNumber,
    kUserName,
    kDays,
    kNextRun,
    kPieces
  };
  void Append(PieceIndex i, const Text& piece);
  Text Piece(PieceIndex i) const;

  Text text_;
  std::uint32_t ends_[kPieces] = {};
  JobStatus status_ = JobStatus::None;
  bool filled_ = false;
};

// The list holds no ScheduleRecord: its load reads the schedule a record at a time and
// keeps of each the row it shows, so the rows are the job array in the list's own form,
// one row per record in the file's order. An action that needs more of a record reads
// that record again.
struct JobList {
  // The rows shown, as the last fill made them.
  std::vector<JobRow> rows;
  // The rows of the last load, until a fill makes them the list (`loadedFresh`).
  std::vector<JobRow> loaded;
  bool loadedFresh = false;
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
  // The job array in the list's form: the last load's rows.
  const std::vector<JobRow>& Jobs() const { return loadedFresh ? loaded : rows; }
  // The 1-based place in Jobs() of the first row of record `recordNo`, -1 when none is.
  long IndexOfRecord(const Text& recordNo) const;
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

// BackupNowMode false, then the schedule loaded afresh as DB_ReadSchdata loads it (empty
// key, no warning), straight into rows: a row per record without its status, and the
// index of the next job kept. The record count is the job store's; the global job array
// is left empty, so that no second copy of a large schedule stays behind.
void LoadJobs(frame::AppState& app, JobList& list);

// The "Next Transfer" text of a NextRun: read as a date (through the file's form first
// when the system's short date starts with a day) and written in the system's short
// date form, as the hidden date control gives it. Throws when it is no date.
Text NextTransferText(const Text& nextRun, const jobstore::LocaleFormats& locale);

// Makes the loaded rows the list: the status of the next job, the line under the list,
// the selection and the buttons. A stored SelectedRow beyond the last row cannot
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
