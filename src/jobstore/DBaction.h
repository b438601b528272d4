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
#include "platform/WholeFile.h"

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
// Every writer gives back whether its write reached the disk, with the system's reason
// when not (traced here as well); the file then keeps its previous bytes. A whole file
// is written all or nothing and an append is whole or absent (platform/WholeFile.h).
using platform::WriteResult;

// What the reason of a run-now or Backup Now record that could not be written follows.
inline constexpr char16_t kCouldNotScheduleText[] =
    u"Unable to schedule the record immediately. Reason : ";

// For the screens' actions: a write that failed ends the action in its handler, which
// tells the user the reason, so the success message is never reached.
void RequireWritten(const WriteResult& result);

// Changes to scheduleData.txt made in memory and written once: each Put is the delete
// and the append of DB_WriteSchdata, and Commit writes the bytes that those steps,
// done on the file one after the other, would have left there.
class ScheduleFileEdit {
 public:
  explicit ScheduleFileEdit(AppState& app);
  // Delete the record's number, EngineFlag "0", then (unless bNoSch) append its line.
  void Put(ScheduleRecord& record, bool bNoSch);
  // Writes when anything changed; traces as the single steps do.
  [[nodiscard]] WriteResult Commit(const Text& procedure);
  // The content as it stands now; nullopt for an absent (or unreadable) file.
  const std::optional<std::string>& Bytes() const { return bytes_; }

 private:
  std::vector<Text> Lines() const;
  void Delete(const Text& recordNo);
  void Append(const Text& line);

  AppState& app_;
  std::optional<std::string> bytes_;
  std::optional<WriteResult> readFailure_;
  std::optional<long> recordCount_;
  std::vector<Text> rewritten_;  // the lines of the last delete, for the trace
  bool appended_ = false;
  bool changed_ = false;
};

// Delete, then (unless bNoSch) append the record at the end, in one write. EngineFlag
// becomes "0".
[[nodiscard]] WriteResult DB_WriteSchdata(AppState& app, ScheduleRecord& record, bool bNoSch,
                                          bool spare = false);
[[nodiscard]] WriteResult DB_DeleteRecord(AppState& app, const Text& recordNo, const Text& path);
[[nodiscard]] WriteResult DB_WriteFirstLine(AppState& app);
[[nodiscard]] WriteResult DB_WriteRecord(AppState& app, const Text& line, const Text& path);
[[nodiscard]] WriteResult DB_WriteLines(AppState& app, const std::vector<Text>& lines,
                                        const Text& path, long count);
[[nodiscard]] WriteResult SetStateWord(AppState& app, const Text& path, const Text& value);
long DB_GetNewSchRecordNo(AppState& app, long count);
// Makes the Backup Now record of the selected row at records[count - 1] and writes it;
// says so, or that it could not be written and why.
// `sourceRecordNo` is the row's hidden column: "-1" for a set without a job.
[[nodiscard]] WriteResult DB_AddImmediateRecord(AppState& app, std::vector<ScheduleRecord>& records,
                                                long count, const Text& sourceRecordNo);

// The present moment as the job store writes it: "mm-dd-yyyy H:mm:ss" through the locale.
Text NowText(AppState& app);
// Sends a message through the installed callback (0 when there is none).
int ShowMessage(AppState& app, const Text& text, int icon);

}  // namespace jobstore
