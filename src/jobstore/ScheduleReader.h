#pragma once
// The records of scheduleData.txt one after another, read from the file a piece at a
// time. A schedule of hundreds of thousands of records is never held whole: the job list
// keeps only the compact row it shows of each, and an action reads its one record again.
#include <cstddef>
#include <optional>

#include "base/Text.h"
#include "frame/AppState.h"
#include "jobstore/ScheduleRecord.h"
#include "jobstore/SystemDate.h"
#include "platform/TextFile.h"

namespace jobstore {

// Turns one line into a record as the load does: cut into fields, NextRun and CreatedOn
// through the DateFormat rule, an empty Days repaired (new form only). The setting is
// read when the first record reaches its dates and kept for the rest of the load.
class RecordMaker {
 public:
  explicit RecordMaker(frame::AppState& app);
  // False for a line without a separator: no record.
  bool Make(base::TextView line, ScheduleRecord& record);

 private:
  frame::AppState& app_;
  LocaleFormats locale_;
  std::optional<base::Text> dateFormat_;
};

// The load of DB_ReadSchdata with an empty key, one record at a time: the state line is
// passed, and so is every line without a separator (one trace line says how many, when
// that number changed since the last load that told it). A file that cannot be read
// gives no record; one whose reading stops half way gives those before and is traced.
// The host answers other programs between pieces and every 256 lines.
class ScheduleReader {
 public:
  explicit ScheduleReader(frame::AppState& app,
                          std::size_t pieceBytes = platform::TextLineReader::kPieceBytes);
  // The next record; false after the last.
  bool Next(ScheduleRecord& record);
  // The records given so far.
  long Count() const { return count_; }
  // The lines without a separator passed over so far.
  long PassedOver() const { return passed_; }

 private:
  void Finish();

  frame::AppState& app_;
  platform::TextLineReader lines_;
  RecordMaker maker_;
  long lineNo_ = 0;
  long count_ = 0;
  long passed_ = 0;
  bool finished_ = false;
};

// The first record of the schedule whose RecordNo is `recordNo`, as the load makes it;
// nullopt when there is none.
std::optional<ScheduleRecord> FindScheduleRecord(frame::AppState& app, const base::Text& recordNo);

}  // namespace jobstore
