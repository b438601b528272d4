// Arbitrary bytes as scheduleData.txt through load, update, delete, new number and the
// state word. Beyond "no crash, no hang", each write must leave a file that loads and
// holds exactly what the operation means: the other lines untouched, the record last.
#include <optional>
#include <string>
#include <vector>

#include "FuzzInput.h"
#include "base/Utf16.h"
#include "frame/AppState.h"
#include "jobstore/DBaction.h"
#include "jobstore/NextRun.h"
#include "platform/TextFile.h"
#include "platform/fake/FakePlatform.h"

namespace {

using base::Text;

std::vector<Text> LinesOf(platform::FakeFileSystem& fs, const Text& path) {
  return platform::TextFile::ReadLines(fs, path).value_or(std::vector<Text>{});
}

// A field that ends in a lone U+0008 or holds a pair reads differently once written
// between U+0008 pairs; only Days, the last field, may hold anything.
bool SplitsCleanly(const jobstore::ScheduleRecord& r) {
  for (const Text* f :
       {&r.RecordNo, &r.BackupSetName, &r.NextRun, &r.CreatedOn, &r.Destination, &r.FrequencyIndex,
        &r.JobKind, &r.Compression, &r.MailAddresses, &r.Reserved10, &r.Reserved11, &r.Reserved12,
        &r.Encryption, &r.Reserved14, &r.MailMode, &r.SortKey, &r.UserName, &r.EngineFlag}) {
    if (f->find(jobstore::kSeparator) != Text::npos) return false;
    if (!f->empty() && f->back() == u'\b') return false;
  }
  return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::uint8_t flags = data[0];
  const std::string bytes(reinterpret_cast<const char*>(data) + 1, size - 1);

  platform::FakePlatform fake;
  frame::AppState app(fake.Get());
  fake.fs.AddFolders(u"C:\\QV\\QVCOMMON");
  app.ProgramFolder = u"C:\\QV";
  app.DataRoot = u"C:\\QV";
  app.ScheduleFilePath = u"C:\\QV\\QVCOMMON\\scheduleData.txt";
  app.UserName = u"u";
  fake.clock.now = base::DateTime{2013, 3, 18, 10, 15, 20};
  if (flags & 1) fake.locale.timeSeparator = u".";
  if (flags & 2) fake.locale.shortDateFormat = u"dd/MM/yyyy";
  if (flags & 4)
    fake.profile.WriteString(u"DateFormat", Text(u"DateFormat"), Text(u"D"),
                             u"C:\\QV\\QVCOMMON\\qvwin.ini");
  if (flags & 8) {
    app.Store.BackupNowMode = true;
    app.Store.ChosenSetName = u"A";
    app.Store.LstBackupSet.Rows = {{u"A", u"", u"", (flags & 16) ? u"1" : u"-1"}};
    app.Store.LstBackupSet.SelectedRow = 1;
  }
  fake.fs.PutFile(app.ScheduleFilePath, bytes);

  long next = jobstore::DB_ReadSchdata(app, Text(), app.Jobs, (flags & 8) != 0);
  FUZZ_CHECK(next >= 0 && (app.Jobs.empty() || static_cast<size_t>(next) < app.Jobs.size()));
  jobstore::Sch_SortBuildDate(app, app.Jobs.empty() ? Text() : app.Jobs[0].NextRun);

  // The Backup Now load may have written a record (and mended the state line): load
  // again so that memory and file agree for the checks below.
  if (flags & 8) {
    app.Store.BackupNowMode = false;
    jobstore::DB_ReadSchdata(app, Text(), app.Jobs, false);
  }
  const std::vector<Text> before = LinesOf(fake.fs, app.ScheduleFilePath);
  long number = jobstore::DB_GetNewSchRecordNo(app, app.RecordCount);
  FUZZ_CHECK(number >= 1);

  // Update the record the flags point at (if the load made one), then check the file.
  // The load keeps only the lines with a separator: record `pick` is the pick-th of them.
  size_t pick = app.Jobs.empty() ? 0 : (flags >> 5) % app.Jobs.size();
  std::optional<jobstore::SeparatorHit> hit;
  for (size_t i = 1, seen = 0; i < before.size() && !hit; ++i) {
    auto found = jobstore::FindSeparator(before[i]);
    if (found && seen++ == pick) hit = found;
  }
  if (!app.Jobs.empty() && hit) {
    jobstore::ScheduleRecord r = app.Jobs[pick];
    const bool remove = (flags & 16) != 0;
    const bool goodState = !before.empty() && before[0].size() == 1;
    // With an empty number nothing is deleted, so nothing rewrites the file before the
    // append: a file that ends in half a unit or without a line end takes the new line
    // as it falls, as any appending writer would.
    const std::string raw = fake.fs.Bytes(app.ScheduleFilePath);
    const base::Utf16Content units = base::DecodeUtf16Le(raw);
    const bool cleanEnd =
        !units.oddByte && (units.units.empty() || base::EndsWith(units.units, u"\n"));
    const bool exact = !r.RecordNo.empty() || !goodState || cleanEnd || remove;
    static_cast<void>(jobstore::DB_WriteSchdata(app, r, remove));

    std::vector<Text> expected;
    if (!r.RecordNo.empty()) {
      if (!before.empty()) expected.push_back(before[0]);
      for (size_t i = 1; i < before.size(); ++i) {
        auto key = jobstore::KeyOfLine(before[i]);
        if (key && *key != r.RecordNo) expected.push_back(before[i]);
      }
    } else {
      expected = before;  // an empty number deletes nothing
    }
    if (!remove) {
      if (!goodState) expected = {u"0"};
      expected.push_back(jobstore::BuildScheduleLine(r));
    }
    if (exact) FUZZ_CHECK(LinesOf(fake.fs, app.ScheduleFilePath) == expected);

    // What was written loads again, and a record that came in the new form reads back
    // as written.
    std::vector<jobstore::ScheduleRecord> again;
    jobstore::DB_ReadSchdata(app, Text(), again, false);
    if (exact && !remove && !hit->oldForm && SplitsCleanly(r)) {
      jobstore::ParsedLine back = jobstore::ParseScheduleLine(expected.back());
      FUZZ_CHECK(back.hasSeparator);
      if (!back.oldForm) FUZZ_CHECK(jobstore::BuildScheduleLine(back.record) == expected.back());
    }
    static_cast<void>(
        jobstore::DB_DeleteRecord(app, app.Jobs.back().RecordNo, app.ScheduleFilePath));
  }

  // The state word changes the first unit and nothing else.
  const std::string current = fake.fs.Bytes(app.ScheduleFilePath);
  static_cast<void>(jobstore::SetStateWord(app, app.ScheduleFilePath, u"2"));
  const base::Utf16Content was = base::DecodeUtf16Le(current);
  const base::Utf16Content now = base::DecodeUtf16Le(fake.fs.Bytes(app.ScheduleFilePath));
  FUZZ_CHECK(now.units == u"2" + base::Mid(was.units, 2));
  FUZZ_CHECK(now.oddByte == was.oddByte);
  return 0;
}
