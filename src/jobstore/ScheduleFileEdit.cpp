#include "jobstore/DBaction.h"

#include "base/Guarded.h"
#include "base/Text.h"
#include "base/Utf16.h"
#include "frame/Logs.h"
#include "jobstore/DBactionWrites.h"
#include "platform/TextFile.h"
#include "platform/WholeFile.h"

namespace jobstore {

using platform::TextFile;

namespace {
platform::IFileSystem& Fs(AppState& app) { return *app.platform.fs; }
}  // namespace

// Traces a write that failed with the system's reason, or that had to go in place.
void TraceWrite(AppState& app, const WriteResult& result, const Text& path, const Text& procedure) {
  if (!result.ok) {
    app.LastWriteFailure = result.reason;
    base::ErrorInfo error;
    error.number = 0;
    error.description = result.reason + u" (" + path + u")";
    TraceMonitorError(app, error, procedure);
  } else if (result.inPlace) {
    frame::WriteTrace(app, u"Written in place, the file is held by another program: " + path);
  }
}

WriteResult Unreadable(AppState& app, const Text& path) {
  Text why = Fs(app).LastErrorText();
  return WriteResult::Failure(why.empty() ? u"The file could not be read: " + path : why);
}

// Every rewritten line goes to the trace. The block is appended in one go: the bytes are
// those of one trace line per schedule line, but a rewrite of thousands of records does
// not open the trace thousands of times.
void TraceContent(AppState& app, const std::vector<Text>& lines) {
  if (lines.empty()) return;
  Text block;
  for (const Text& line : lines) {
    if (!block.empty()) block += u"\r\n";
    block += base::Trim(u"Content of backupset Monitor ," + line);
  }
  frame::AppendLine(app, app.CommonFile(u"SerTraceFile.txt"), block);
}

ScheduleFileEdit::ScheduleFileEdit(AppState& app) : app_(app) {
  auto& fs = Fs(app);
  if (!fs.FileExists(app.ScheduleFilePath)) return;
  bytes_ = ReadWhole(app, app.ScheduleFilePath);
  if (!bytes_) readFailure_ = Unreadable(app, app.ScheduleFilePath);
}

std::vector<Text> ScheduleFileEdit::Lines() const {
  if (!bytes_) return {};
  return TextFile::SplitLines(base::DecodeUtf16Le(*bytes_).units);
}

void ScheduleFileEdit::Delete(const Text& recordNo) {
  // As DB_DeleteRecord: nothing for an empty number or an absent file; otherwise the
  // first line stays whatever it holds, lines without a separator go.
  if (recordNo.empty() || !bytes_) return;
  std::vector<Text> lines = Lines();
  std::vector<Text> kept;
  kept.reserve(lines.size() + 1);
  size_t first = 0;
  if (!lines.empty()) {
    kept.push_back(lines[0]);
    first = 1;
  }
  for (size_t i = first; i < lines.size(); ++i) {
    auto key = KeyOfLine(lines[i]);
    if (key && *key != recordNo) kept.push_back(std::move(lines[i]));
  }
  recordCount_ = static_cast<long>(kept.size()) - (first ? 1 : 0);
  bytes_ = TextFile::Encode(kept);
  rewritten_ = kept;
  changed_ = true;
}

void ScheduleFileEdit::Append(const Text& line) {
  // As DB_WriteFirstLine and DB_WriteRecord: an absent file starts as its mark; a first
  // line that is not one character costs every record; the line goes at the end.
  if (!bytes_) bytes_ = std::string(base::kUtf16Bom);
  std::vector<Text> lines = Lines();
  const Text first = lines.empty() ? Text() : lines[0];
  if (first.size() != 1) bytes_ = TextFile::Encode({u"0"});
  bytes_->append(base::EncodeUtf16Le(line + u"\r\n"));
  appended_ = true;
  changed_ = true;
}

void ScheduleFileEdit::Put(ScheduleRecord& record, bool bNoSch) {
  Delete(record.RecordNo);
  // Moved in as a Text: the optimised Windows build (g++ 12) takes the literal's
  // assignment here for an overlapping copy and warns (-Wrestrict) where none is.
  record.EngineFlag = Text(u"0");
  if (!bNoSch) Append(BuildScheduleLine(record));
}

WriteResult ScheduleFileEdit::Commit(const Text& procedure) {
  if (readFailure_) {
    TraceWrite(app_, *readFailure_, app_.ScheduleFilePath, procedure);
    return *readFailure_;
  }
  if (!changed_) return WriteResult::Success();
  WriteResult result = platform::WriteWholeFile(Fs(app_), app_.ScheduleFilePath, *bytes_);
  TraceWrite(app_, result, app_.ScheduleFilePath, procedure);
  if (result.ok && recordCount_) app_.RecordCount = *recordCount_;
  TraceContent(app_, rewritten_);
  if (appended_) frame::WriteTrace(app_, u"Exit DB_WriteRecord Monitor ");
  return result;
}

}  // namespace jobstore
