#pragma once
// DBaction: every access to scheduleData.txt. The file is shared without locks by the
// monitor, the main application and the engine, so each operation opens, works and
// closes, and the odd behaviours below are the ones the other two programs expect.
#include <functional>
#include <optional>
#include <vector>

#include "base/Text.h"
#include "frame/AppState.h"
#include "jobstore/ScheduleRecord.h"
#include "jobstore/SystemDate.h"

namespace jobstore {

using base::Text;
using base::TextView;
using frame::AppState;

// Field separators: older files use "ûû", the writer always puts two U+0008.
inline constexpr char16_t kOldSeparator[] = u"\u00FB\u00FB";
inline constexpr char16_t kSeparator[] = u"\u0008\u0008";
inline constexpr size_t kFieldCount = 20;

// SortKey values that are not dates.
inline constexpr char16_t kRunningKey[] = u"000000000000";
inline constexpr char16_t kImmediateKey[] = u"000000010000";
inline constexpr char16_t kSearchStartKey[] = u"300012121503";  // above any real key, never stored

inline constexpr char16_t kDefaultDestination[] = u"My Corvane/";
inline constexpr char16_t kFileDatePattern[] = u"mm-dd-yyyy H:mm:ss";

// Where a line's first separator stands: "ûû" wins over U+0008 wherever they are.
struct SeparatorHit {
  size_t position = 0;  // 0-based index of the separator's first unit
  bool oldForm = false;
  TextView separator;
};
std::optional<SeparatorHit> FindSeparator(TextView line);
// The text before the first separator (the record number); nullopt for a line without one.
std::optional<Text> KeyOfLine(TextView line);

// The reader's cut of one line. `dateRule` is called for positions 3 and 4 (in that
// order) and returns what memory keeps. Days is not repaired here.
struct ParsedLine {
  ScheduleRecord record;
  bool hasSeparator = false;
  bool oldForm = false;
};
using DateRule = std::function<Text(const Text& value, int position)>;
ParsedLine ParseScheduleLine(TextView line, const DateRule& dateRule = {});
// The writer's line: the twenty fields in file order with U+0008 pairs between them,
// UserName through EncodeField, the literal "1" in place of the password.
Text BuildScheduleLine(const ScheduleRecord& record);

// The DateFormat rule for a stored NextRun/CreatedOn: with a setting starting "D"/"d"
// the text stands; otherwise it passes through the system's date formatting.
Text ApplyDateFormat(const Text& value, const Text& dateFormatSetting, const LocaleFormats& locale);
// The in-memory repair of an empty Days from FrequencyIndex (new-form lines only).
void RepairDays(ScheduleRecord& record, const LocaleFormats& locale);

// --- Reading --------------------------------------------------------------------
long DB_NumberOfRecord(AppState& app, const Text& path);
bool DB_ReadRecord(AppState& app, const Text& key, const Text& path, std::vector<Text>& lines);
// Loads the schedule into `records` and returns the 0-based index of the smallest SortKey.
long DB_ReadSchdata(AppState& app, const Text& key, std::vector<ScheduleRecord>& records,
                    bool warn);
long GetIndexFromRecordNo(AppState& app, const Text& recordNo);  // 1-based, -1 when absent
bool CheckRecordNo(AppState& app, const Text& recordNo);
bool CheckRecordInProgress(AppState& app, const Text& recordNo);
bool CheckEnumStatus(const std::vector<Text>& list, const Text& value);
Text Readfirstline(AppState& app, const Text& path);
Text ReadStateLine(AppState& app, const Text& path);
int GetFrequencyIndex(const Text& name);
Text GetFreNameFromIndex(long index);
void setRecordIndex(AppState& app, long index);
// The place of a scrambler for UserName and Password; the text passes as it stands.
Text EncodeField(const Text& text);
Text DecodeField(const Text& text);

// --- Writing --------------------------------------------------------------------
// Delete, then (unless bNoSch) append the record at the end. EngineFlag becomes "0".
void DB_WriteSchdata(AppState& app, ScheduleRecord& record, bool bNoSch, bool spare = false);
void DB_DeleteRecord(AppState& app, const Text& recordNo, const Text& path);
void DB_WriteFirstLine(AppState& app);
void DB_WriteRecord(AppState& app, const Text& line, const Text& path);
void DB_WriteLines(AppState& app, const std::vector<Text>& lines, const Text& path, long count);
void SetStateWord(AppState& app, const Text& path, const Text& value);
long DB_GetNewSchRecordNo(AppState& app, long count);
// Makes the Backup Now record of the selected row at records[count - 1] and writes it.
// `sourceRecordNo` is the row's hidden column: "-1" for a set without a job.
void DB_AddImmediateRecord(AppState& app, std::vector<ScheduleRecord>& records, long count,
                           const Text& sourceRecordNo);

// The present moment as the job store writes it: "mm-dd-yyyy H:mm:ss" through the locale.
Text NowText(AppState& app);
// Sends a message through the installed callback (0 when there is none).
int ShowMessage(AppState& app, const Text& text, int icon);

}  // namespace jobstore
