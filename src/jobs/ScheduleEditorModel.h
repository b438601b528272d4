#pragma once
// The schedule editor without its screen: the temporary array of rows, the scratch
// record and the identity of the row under edit, the checks before a row is left or
// saved, and what a save writes to scheduleData.txt. It reads the screen through
// EditorChoices, the plain state of the editor's controls, so the screen (frmDTEmail)
// and the command line (qvjobs edit) run the same rules. See docs/schedule-editor.md.
#include <functional>
#include <vector>

#include "base/DateTime.h"
#include "base/Text.h"
#include "frame/AppState.h"
#include "jobstore/NextRun.h"
#include "jobstore/ScheduleRecord.h"

namespace jobs {

using base::Text;
using frame::AppState;
using jobstore::ScheduleRecord;

// Days words of rows that are to leave the file; neither ever reaches it.
inline constexpr char16_t kNoSchedule[] = u"No Schedule";
inline constexpr char16_t kDeleted[] = u"Deleted";

// Mail modes of a record.
inline constexpr char16_t kMailNone[] = u"0";
inline constexpr char16_t kMailOnFailure[] = u"2";
inline constexpr char16_t kMailAlways[] = u"3";

// The captions of chkDaily.
inline constexpr char16_t kDailyCaption[] = u" Daily Schedule";
inline constexpr char16_t kWeekDaysCaption[] = u" Week-Day(s)";

// The result of a mail check that passed.
inline constexpr int kMailValid = 100;

// What the editor's controls hold. The screen copies its controls in and out; the
// command line sets the ones its options name.
struct EditorChoices {
  // chkBox, chkDaily, optHourly, optMonthly, chkImmediate, DTPicker, DTPMonthly and
  // bImmediate, as the next-run rules read them.
  jobstore::ScheduleChoice timing;
  // " Daily Schedule" or " Week-Day(s)": the day rules and the showing of a row set it.
  Text chkDailyCaption = kDailyCaption;
  bool DTPickerEnabled = true;
  bool chkCutoffTime = false;
  base::DateTime DTPCutoffTime;
  bool DTPCutoffTimeEnabled = false;
  bool ChkEmailNotification = false;
  Text txtEmailNotification;
  bool txtEmailEnabled = false;
  bool optAlways = false;
  bool optFailure = false;
  bool chkdesktop = false;
  bool chkMissedBackup = false;

  // No frequency at all: no day, not daily, hourly, monthly or immediate.
  bool NoFrequency() const;
  // Exactly the frequency of a Days word (digits, "Hourly", "Monthly", "Immediate").
  // The caption of chkDaily is " Daily Schedule", or " Week-Day(s)" for digits that
  // check fewer than seven days.
  void SetFrequency(const Text& days);
};

// The identity of the row under edit, copied when the row is shown.
struct EditorIdentity {
  Text RecordNo;
  Text Destination;
  Text BackupSetName;
  Text UserName;
  Text Password;
  Text Compression;
  Text Encryption;
  Text Reserved14;
};

// What the rules ask of whoever shows them: a message (the result is the button
// pressed), the focus on the mail box, and the end of the screen.
struct EditorHost {
  std::function<int(const Text& text, int icon, int buttons)> message;
  std::function<void()> focusMail;
  std::function<void()> unloadScreen;
  // The plug-in presence rule for the row's set on a change of frequency; empty
  // where there is none to run (the command line).
  std::function<bool(const Text& setName)> pluginRule;
};

struct ScheduleEditor {
  std::vector<ScheduleRecord> TempJobs;  // the temporary array: the editor's rows
  ScheduleRecord Scratch;                // filled from the screen by Sch_Filldata_Start6
  EditorIdentity Identity;
  bool bRowCleared = false;   // the present row's choices were all cleared
  bool bInRowChange = false;  // the list is changing row
  EditorHost host;
};

// What the main button's action did to the file.
struct SaveOutcome {
  bool saved = false;         // the checks passed and the rows were written
  bool wroteEdited = false;   // the row under edit was among them
  std::vector<Text> written;  // record numbers written, in order
  std::vector<Text> removed;  // record numbers taken out of the file
  std::vector<Text> skipped;  // rows left alone: gone from the file, or in progress
  // The file could not be written: it keeps what it had, `reason` says why, and the
  // user has been told; the screen stays open.
  bool writeFailed = false;
  Text reason;
};

// What the editor says before the reason when its rows could not be written.
inline constexpr char16_t kCouldNotSaveText[] =
    u"The changes to the schedule could not be saved. Reason : ";

// ---- Small rules ---------------------------------------------------------------

// The message of an error code, shown through the host; "" (and nothing shown) for a
// code without one.
Text QVWinError(AppState& app, ScheduleEditor& ed, long code);
// The text of an error code, without showing it.
Text QVWinErrorText(AppState& app, long code);
// An "@", not followed by ".", and a "." somewhere after the character behind it.
bool ValidMailAddress(const Text& address);
// Trimmed and upper-cased comparison.
bool FindInList(const std::vector<Text>& list, const Text& value);
// Splits addresses at ";" and "," into `list` (trimmed, each once).
bool RemoveDuplicateMailID(AppState& app, const Text& addresses, std::vector<Text>& list,
                           bool bNoCheck);
// 100 when the addresses pass, 104 when there are none, 105 when one is malformed.
int Sch_Mail_validate(AppState& app, const EditorChoices& c);
// "Backup/Restore set name - '<name>'" with "&" doubled.
Text BackupSetLabel(const Text& setName);

// ---- The editor's rows ---------------------------------------------------------

// Fills the temporary array from the file (DB_ReadSchdata with an empty key).
void LoadTempJobs(AppState& app, ScheduleEditor& ed);
// The global settings the screen shows at loading: desktopnotify, MISSEDBACKUP,
// CUTOFFTIME (the present time and disabled when there is none).
void LoadEditorSettings(AppState& app, EditorChoices& c);
// The row's choices onto the controls and its identity into the editor. False when
// the record is not in the temporary array (nothing changes then).
bool ShowRecordChoices(AppState& app, ScheduleEditor& ed, const Text& recordNo, EditorChoices& c);
// The date of a monthly job as the date picker takes it: the present month first,
// then the day (the present day when that month has no such day), then the year.
base::DateTime MonthlyPickerDate(const base::DateTime& now, const base::DateTime& nextRun);

// ---- Saving --------------------------------------------------------------------

void Sch_Filldata_Start6(AppState& app, ScheduleEditor& ed, EditorChoices& c);
void SaveTempSchdata(ScheduleEditor& ed, const Text& recordNo);
bool Schwiz_validate_Start4(AppState& app, ScheduleEditor& ed, EditorChoices& c, bool bPreventCheck,
                            const Text& recordNo);
bool SaveSelection(AppState& app, ScheduleEditor& ed, EditorChoices& c, const Text& recordNo);
// The main button: checks the present row and writes every row of the temporary array.
SaveOutcome Sch_Start4_Next_Click(AppState& app, ScheduleEditor& ed, EditorChoices& c);
// Writes every row of the temporary array that is still in the file and not in
// progress: rows marked "No Schedule" or "Deleted" leave the file, the others are
// written again (each moves to the file's end). The Delete key uses it as it is.
SaveOutcome WriteTempRows(AppState& app, ScheduleEditor& ed);
// Writes the scratch record on its own.
void Add_Wizard_Member(AppState& app, ScheduleEditor& ed);
// Stores CUTOFFTIME from the cut-off controls ("0" without).
void StoreCutoff(AppState& app, const EditorChoices& c);

// The temporary row of a record number, or null.
ScheduleRecord* TempRow(ScheduleEditor& ed, const Text& recordNo);

}  // namespace jobs
