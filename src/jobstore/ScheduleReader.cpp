#include "jobstore/ScheduleReader.h"

#include "frame/KeepAnswering.h"
#include "frame/Logs.h"
#include "frame/Settings.h"
#include "jobstore/DBaction.h"

namespace jobstore {

RecordMaker::RecordMaker(frame::AppState& app) : app_(app), locale_(LocaleOf(app)) {}

bool RecordMaker::Make(base::TextView line, ScheduleRecord& record) {
  // Reading qvwin.ini again for every record would only matter if the application changed
  // the date form in the moment of one load, and it cost more than all the rest of a load.
  DateRule rule = [this](const Text& value, int position) {
    if (position == 3 && !dateFormat_) dateFormat_ = frame::ReadSetting(app_, u"DateFormat");
    return ApplyDateFormat(value, dateFormat_.value_or(Text()), locale_);
  };
  ParsedLine parsed = ParseScheduleLine(line, rule);
  if (!parsed.hasSeparator) return false;
  record = std::move(parsed.record);
  if (!parsed.oldForm) RepairDays(record, locale_);
  return true;
}

ScheduleReader::ScheduleReader(frame::AppState& app, std::size_t pieceBytes)
    : app_(app), lines_(*app.platform.fs, app.ScheduleFilePath, pieceBytes), maker_(app) {}

bool ScheduleReader::Next(ScheduleRecord& record) {
  if (finished_) return false;
  for (;;) {
    std::optional<Text> line = lines_.Next();
    if (lines_.TakePieceRead() || lineNo_ % 256 == 0) frame::KeepAnswering(app_);
    if (!line) {
      Finish();
      return false;
    }
    if (lineNo_++ == 0) continue;  // the state line
    if (maker_.Make(*line, record)) {
      ++count_;
      return true;
    }
    ++passed_;
  }
}

void ScheduleReader::Finish() {
  finished_ = true;
  if (lines_.CutShort())
    frame::WriteTrace(app_, u"The file could not be read to its end: " + app_.ScheduleFilePath);
  // Every load passes over the same damaged lines again (the tick loads every ten
  // seconds): the trace hears of them when their number changes.
  long& told = app_.Store.PassedOverLines;
  if (passed_ == told) return;
  told = passed_;
  if (passed_ > 0)
    frame::WriteTrace(app_, u"Lines without a field separator passed over: " +
                                base::FromNumber(passed_) + u" in " + app_.ScheduleFilePath);
}

std::optional<ScheduleRecord> FindScheduleRecord(frame::AppState& app, const Text& recordNo) {
  ScheduleReader reader(app);
  ScheduleRecord record;
  while (reader.Next(record))
    if (record.RecordNo == recordNo) return record;
  return std::nullopt;
}

}  // namespace jobstore
