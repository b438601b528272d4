#include "jobstore/DBaction.h"

#include <algorithm>
#include <iterator>

#include "base/Guarded.h"
#include "base/Utf16.h"
#include "frame/Logs.h"
#include "frame/Settings.h"
#include "jobstore/DBactionWrites.h"
#include "jobstore/ScheduleReader.h"
#include "platform/TextFile.h"

namespace jobstore {

namespace {

using platform::TextFile;

constexpr char16_t kModule[] = u"of Module DBaction";

platform::IFileSystem& Fs(AppState& app) { return *app.platform.fs; }

// Paths are compared the way the design does it: upper-cased, nothing else.
bool IsScheduleFile(AppState& app, const Text& path) {
  return base::ToUpper(path) == base::ToUpper(app.ScheduleFilePath);
}

// Nothing is locked against the engine, so a read can end early when the engine
// rewrites the file at that moment. Written back, such a read would cut a record in two
// and drop the records behind it: a file not read whole is left as it is, and the trace
// says so.
void TraceCutRead(AppState& app, const Text& path) {
  frame::WriteTrace(app, u"The file changed while it was read and is left as it is: " + path);
}

}  // namespace

// The bytes of a file that is to be written back as they are, or nullopt when fewer came
// than the file holds or its size is not known.
std::optional<std::string> ReadWhole(AppState& app, const Text& path) {
  auto& fs = Fs(app);
  auto bytes = fs.ReadAll(path);
  if (!bytes) return std::nullopt;
  const auto size = fs.FileSize(path);
  if (size && *size == bytes->size()) return bytes;
  // Without the file's size nothing says the read was whole: better no change than a
  // rewrite of half a file.
  if (!size)
    frame::WriteTrace(app,
                      u"The size of the file could not be read and it is left as it is: " + path);
  else
    TraceCutRead(app, path);
  return std::nullopt;
}

// The lines of a file that is to be written back line by line, or nullopt when the read
// was cut: fewer bytes than the file holds. A last line without its line end is no
// sign of a cut read: other programs write such files, and they are rewritten as read.
namespace {

std::optional<std::vector<Text>> ReadLinesWhole(AppState& app, const Text& path) {
  auto bytes = ReadWhole(app, path);
  if (!bytes) return std::nullopt;
  return TextFile::SplitLines(base::DecodeUtf16Le(*bytes).units);
}

}  // namespace

void TraceMonitorError(AppState& app, const base::ErrorInfo& error, const Text& procedure) {
  frame::TraceError(app, u"Error Reason Monitor :", error,
                    u"in procedure " + procedure + u" " + kModule);
}

namespace {

const char16_t* const kFrequencyNames[] = {u"Once",
                                           u"Hourly",
                                           u"Daily",
                                           u"Weekly",
                                           u"Monthly",
                                           u"Weekdays (Mon - Fri)",
                                           u"WeekEnd (Sun & Sat)"};

}  // namespace

// --- Reading --------------------------------------------------------------------

long DB_NumberOfRecord(AppState& app, const Text& path) {
  long count = 0;
  base::Guarded(
      [&] {
        auto lines = TextFile::CountLines(Fs(app), path);
        if (!lines) return;
        count = static_cast<long>(*lines);
        if (count > 0 && IsScheduleFile(app, path)) --count;
      },
      [&](const base::ErrorInfo& e) {
        frame::TraceError(app, u"Error in fn DB_NumberOfRecord of Monitor, Reason : ", e);
      });
  return count;
}

bool DB_ReadRecord(AppState& app, const Text& key, const Text& path, std::vector<Text>& lines) {
  bool found = false;
  base::Guarded(
      [&] {
        lines.clear();
        auto all = TextFile::ReadLines(Fs(app), path);
        if (!all) return;
        const bool schedule = IsScheduleFile(app, path);
        if (key.empty()) {
          size_t first = (schedule && !all->empty()) ? 1 : 0;
          lines.assign(std::make_move_iterator(all->begin() + static_cast<std::ptrdiff_t>(first)),
                       std::make_move_iterator(all->end()));
          found = !lines.empty();
          return;
        }
        if (schedule) app.StateLine = all->empty() ? Text() : base::Trim((*all)[0]);
        for (const Text& line : *all) {
          auto lineKey = KeyOfLine(line);
          if (lineKey && *lineKey == key) {
            lines.assign(1, line);
            found = true;
            return;
          }
        }
        lines.assign(1, Text());
      },
      [&](const base::ErrorInfo& e) {
        frame::TraceError(app, u"Error in DB_ReadRecord monitor ", e);
      });
  return found;
}

long DB_ReadSchdata(AppState& app, const Text& key, std::vector<ScheduleRecord>& records,
                    bool warn) {
  JobStoreState& store = app.Store;
  long smallestIndex = 0;
  Text smallestKey = kSearchStartKey;
  const Text chosen = base::ToUpper(store.ChosenSetName);
  auto consider = [&](const ScheduleRecord& r, size_t at) {
    if (r.SortKey < smallestKey) {
      smallestKey = r.SortKey;
      smallestIndex = static_cast<long>(at);
    }
    if (store.BackupNowMode && base::ToUpper(r.BackupSetName) == chosen &&
        r.SortKey == kImmediateKey)
      store.ImmediateFound = true;
  };

  if (key.empty()) {
    // Every record of the file, read a piece at a time. A line without a separator is no
    // record: it is passed over, the records close up behind it and the count says how
    // many were read.
    records.clear();
    store.ImmediateFound = false;
    ScheduleReader reader(app);
    ScheduleRecord r;
    while (reader.Next(r)) {
      consider(r, records.size());
      records.push_back(std::move(r));
    }
    app.RecordCount = reader.Count();
  } else {
    records.assign(1, ScheduleRecord());
    std::vector<Text> lines;
    const bool read = DB_ReadRecord(app, key, app.ScheduleFilePath, lines);
    store.ImmediateFound = false;
    if (read) {
      RecordMaker maker(app);
      if (!lines.empty() && maker.Make(lines[0], records[0])) consider(records[0], 0);
    }
  }

  if (store.BackupNowMode && warn) {
    if (store.ImmediateFound) {
      ShowMessage(app,
                  u"You have already set up an immediate backup job for this Backup set '" +
                      store.ChosenSetName + u"'.",
                  kIconInformation);
    } else if (const BackupNowRow* row = store.LstBackupSet.Selected()) {
      // It tells the user itself whether the job could be set up.
      static_cast<void>(DB_AddImmediateRecord(app, records, static_cast<long>(records.size()) + 1,
                                              row->RecordNo));
    }
  }
  return smallestIndex;
}

long GetIndexFromRecordNo(AppState& app, const Text& recordNo) {
  long index = -1;
  base::Guarded(
      [&] {
        for (size_t i = 0; i < app.Jobs.size(); ++i) {
          if (app.Jobs[i].RecordNo == recordNo) {
            index = static_cast<long>(i) + 1;
            return;
          }
        }
      },
      [&](const base::ErrorInfo& e) {
        frame::TraceError(app, u"Error Reason Monitor :", e,
                          u"in procedure GetIndexFromRecordNo of Class Module Scheduler");
      });
  return index;
}

bool CheckRecordNo(AppState& app, const Text& recordNo) {
  return std::any_of(app.Jobs.begin(), app.Jobs.end(),
                     [&](const ScheduleRecord& r) { return r.RecordNo == recordNo; });
}

bool CheckRecordInProgress(AppState& app, const Text& recordNo) {
  return std::any_of(app.Jobs.begin(), app.Jobs.end(), [&](const ScheduleRecord& r) {
    return r.RecordNo == recordNo && r.SortKey == kRunningKey;
  });
}

bool CheckEnumStatus(const std::vector<Text>& list, const Text& value) {
  return std::find(list.begin(), list.end(), value) != list.end();
}

Text Readfirstline(AppState& app, const Text& path) {
  // The tick asks for the state word every ten seconds: only the first line is read.
  auto line = TextFile::ReadFirstLine(Fs(app), path);
  if (!line) return u"0";
  Text first = base::Trim(*line);
  return first.empty() ? Text(u"0") : first;
}

Text ReadStateLine(AppState& app, const Text& path) {
  if (!Fs(app).FileExists(path)) return Text();
  return Readfirstline(app, path);
}

int GetFrequencyIndex(const Text& name) {
  for (int i = 0; i < 7; ++i)
    if (name == kFrequencyNames[i]) return i + 1;
  return 0;
}

Text GetFreNameFromIndex(long index) {
  // Only 1 to 6 have a name here: a weekend job shows an empty Frequency column.
  if (index >= 1 && index <= 6) return kFrequencyNames[index - 1];
  return Text();
}

void setRecordIndex(AppState& app, long index) { app.Store.RecordIndex = index; }

Text EncodeField(const Text& text) { return text; }
Text DecodeField(const Text& text) { return text; }

// --- Writing --------------------------------------------------------------------

void RequireWritten(const WriteResult& result) {
  if (!result) throw base::Failure(0, base::ToUtf8(result.reason));
}

WriteResult DB_WriteSchdata(AppState& app, ScheduleRecord& record, bool bNoSch, bool /*spare*/) {
  WriteResult result = WriteResult::Failure(Text());
  base::Guarded(
      [&] {
        // The delete and the append are made on the content in memory and reach the
        // file in one write: the other programs never see the file without the record,
        // and the bytes are those the two steps give one after the other.
        ScheduleFileEdit edit(app);
        edit.Put(record, bNoSch);
        result = edit.Commit(u"DB_WriteSchdata");
      },
      [&](const base::ErrorInfo& e) {
        TraceMonitorError(app, e, u"DB_WriteSchdata");
        result = WriteResult::Failure(e.description);
      });
  return result;
}

WriteResult DB_DeleteRecord(AppState& app, const Text& recordNo, const Text& path) {
  WriteResult result = WriteResult::Success();
  base::Guarded(
      [&] {
        auto& fs = Fs(app);
        if (recordNo.empty() || !fs.FileExists(path)) return;
        auto lines = ReadLinesWhole(app, path);
        if (!lines) {
          result = Unreadable(app, path);
          TraceWrite(app, result, path, u"DB_DeleteRecord");
          return;
        }
        std::vector<Text> kept;
        kept.reserve(lines->size() + 1);
        size_t first = 0;
        const bool keepStateLine = IsScheduleFile(app, path) && !lines->empty();
        if (keepStateLine) {
          kept.push_back((*lines)[0]);
          first = 1;
        }
        for (size_t i = first; i < lines->size(); ++i) {
          auto key = KeyOfLine((*lines)[i]);
          if (key && *key != recordNo) kept.push_back(std::move((*lines)[i]));
        }
        result = DB_WriteLines(app, kept, path, static_cast<long>(kept.size()));
        if (result.ok) app.RecordCount = static_cast<long>(kept.size()) - (keepStateLine ? 1 : 0);
        TraceWrite(app, result, path, u"DB_DeleteRecord");
      },
      [&](const base::ErrorInfo& e) {
        TraceMonitorError(app, e, u"DB_DeleteRecord");
        result = WriteResult::Failure(e.description);
      });
  return result;
}

WriteResult DB_WriteFirstLine(AppState& app) {
  WriteResult result = WriteResult::Success();
  base::Guarded(
      [&] {
        auto& fs = Fs(app);
        const Text& path = app.ScheduleFilePath;
        if (!fs.FileExists(path)) result = TextFile::Create(fs, path, false);
        if (!result) return TraceWrite(app, result, path, u"DB_WriteFirstLine");
        auto lines = ReadLinesWhole(app, path);
        if (!lines) return;  // what cannot be read is not thrown away
        const Text first = lines->empty() ? Text() : (*lines)[0];
        // A first line that is not one character costs the whole file: that is how
        // the other programs expect a damaged file to be mended.
        if (first.size() != 1) result = TextFile::WriteLines(fs, path, {u"0"});
        TraceWrite(app, result, path, u"DB_WriteFirstLine");
      },
      [&](const base::ErrorInfo& e) {
        TraceMonitorError(app, e, u"DB_WriteFirstLine");
        result = WriteResult::Failure(e.description);
      });
  return result;
}

WriteResult DB_WriteRecord(AppState& app, const Text& line, const Text& path) {
  WriteResult result = TextFile::AppendLine(Fs(app), path, line);
  TraceWrite(app, result, path, u"DB_WriteRecord");
  frame::WriteTrace(app, u"Exit DB_WriteRecord Monitor ");
  return result;
}

WriteResult DB_WriteLines(AppState& app, const std::vector<Text>& lines, const Text& path,
                          long count) {
  const size_t n = std::min(lines.size(), static_cast<size_t>(std::max(0L, count)));
  std::vector<Text> out(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(n));
  WriteResult result = TextFile::WriteLines(Fs(app), path, out);
  TraceContent(app, out);
  return result;
}

WriteResult SetStateWord(AppState& app, const Text& path, const Text& value) {
  auto& fs = Fs(app);
  base::Utf16Content content;
  if (fs.FileExists(path)) {
    auto bytes = ReadWhole(app, path);
    if (!bytes) {
      WriteResult unread = Unreadable(app, path);
      TraceWrite(app, unread, path, u"SetStateWord");
      return unread;
    }
    content = base::DecodeUtf16Le(*bytes);
  } else {
    content.units = u"0\r\n";
  }
  // Only the first character is replaced; the rest of the file goes back as it was.
  content.units = base::Trim(value) + base::Mid(content.units, 2);
  content.hasBom = true;
  WriteResult result = platform::WriteWholeFile(fs, path, base::EncodeUtf16Le(content));
  TraceWrite(app, result, path, u"SetStateWord");
  return result;
}

long DB_GetNewSchRecordNo(AppState& app, long /*count*/) {
  long result = 1;
  base::Guarded(
      [&] {
        auto lines = TextFile::ReadLines(Fs(app), app.ScheduleFilePath);
        if (!lines) return;
        std::vector<double> numbers;
        numbers.reserve(lines->size());
        for (const Text& line : *lines)
          if (auto key = KeyOfLine(line)) numbers.push_back(base::LeadingNumber(*key));
        std::sort(numbers.begin(), numbers.end());
        long candidate = 1;
        for (double n : numbers) {
          if (n == 0) continue;
          if (n != static_cast<double>(candidate)) break;
          ++candidate;
        }
        result = candidate;
      },
      [&](const base::ErrorInfo& e) { TraceMonitorError(app, e, u"DB_GetNewSchRecordNo"); });
  return result;
}

WriteResult DB_AddImmediateRecord(AppState& app, std::vector<ScheduleRecord>& records, long count,
                                  const Text& sourceRecordNo) {
  ScheduleRecord r;
  r.RecordNo = base::FromNumber(DB_GetNewSchRecordNo(app, count));
  if (const BackupNowRow* row = app.Store.LstBackupSet.Selected())
    r.BackupSetName = base::Trim(row->Name);
  const Text now = NowText(app);
  r.CreatedOn = now;
  r.NextRun = now;
  r.SortKey = kImmediateKey;
  r.FrequencyIndex = u"1";
  r.Compression = frame::ReadSetting(app, u"COMP");
  if (r.Compression.empty()) r.Compression = u"0";
  if (auto* provider = app.platform.settingsProvider)
    r.Encryption = provider->GetSetting(u"ENCON" + app.UserName, 0, 0);
  if (r.Encryption.empty()) r.Encryption = u"0";
  r.Reserved11.clear();

  if (sourceRecordNo != u"-1") {
    for (const ScheduleRecord& source : app.Jobs) {
      if (source.RecordNo != sourceRecordNo) continue;
      r.Destination = source.Destination;
      r.JobKind = source.JobKind;
      r.Reserved14 = source.Reserved14;
      r.UserName = source.UserName;
      r.Password = source.Password;
      r.MailMode = source.MailMode;
      r.MailAddresses = source.MailAddresses;
      r.Reserved12 = source.Reserved12;
      break;
    }
  } else {
    r.UserName = frame::ReadSetting(app, u"UserName");
    r.Password = frame::ReadSetting(app, r.UserName, true);
    r.Destination = kDefaultDestination;
    r.JobKind = u"1";
    r.Reserved14 = u"1";
  }

  const size_t at = static_cast<size_t>(std::max(1L, count)) - 1;
  if (records.size() <= at) records.resize(at + 1);
  records[at] = r;
  // Days stays empty in the file; every load repairs it to "IMMEDIATE".
  WriteResult written = DB_WriteSchdata(app, records[at], false);
  if (!written) {
    // Nobody is told that a job was set up when it is not in the file.
    ShowMessage(app, Text(kCouldNotScheduleText) + written.reason, kIconCritical);
    return written;
  }
  ShowMessage(app,
              u"You have successfully set up an immediate backup of your scheduled Backup set '" +
                  r.BackupSetName + u"'. You may check its status from the system tray.",
              kIconInformation);
  return written;
}

Text NowText(AppState& app) {
  const LocaleFormats locale = LocaleOf(app);
  const base::DateTime now = app.platform.clock->Now();
  return FormatDate(now, u"mm-dd-yyyy", locale) + u" " + FormatDate(now, u"H:mm:ss", locale);
}

int ShowMessage(AppState& app, const Text& text, int icon) {
  if (!app.Store.ShowMessage) return 0;
  return app.Store.ShowMessage(text, icon, kButtonsOk);
}

}  // namespace jobstore
