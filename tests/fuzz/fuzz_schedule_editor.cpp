// Arbitrary choices and mail texts through the schedule editor's list, its clicks, its
// checks and its save, over arbitrary bytes as scheduleData.txt. Beyond "no crash, no
// hang": the list shows each numbered job once, the running job is one of the file's,
// the file still loads afterwards, a refused check leaves it as it was, and a job in
// progress keeps its line.
#include <string>
#include <vector>

#include "FuzzInput.h"
#include "base/Utf16.h"
#include "frame/AppState.h"
#include "jobs/DTEmailRules.h"
#include "jobs/ScheduleEditorModel.h"
#include "jobstore/DBaction.h"
#include "platform/TextFile.h"
#include "platform/fake/FakePlatform.h"

namespace {

using base::Text;

std::vector<Text> LinesOf(platform::FakeFileSystem& fs, const Text& path) {
  return platform::TextFile::ReadLines(fs, path).value_or(std::vector<Text>{});
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 8) return 0;
  const std::uint8_t kind = data[0], days = data[1], mailFlags = data[2], pick = data[3];
  const int hour = data[4] % 24, minute = data[5] % 60;
  const std::size_t mailLength = data[6] % 64;
  const std::uint8_t answer = data[7];
  std::string rest(reinterpret_cast<const char*>(data) + 8, size - 8);
  const std::string mailBytes = rest.substr(0, std::min(mailLength, rest.size()));
  const std::string fileBytes = rest.substr(mailBytes.size());

  platform::FakePlatform fake;
  frame::AppState app(fake.Get());
  fake.fs.AddFolders(u"C:\\QV\\QVCOMMON");
  app.ProgramFolder = u"C:\\QV";
  app.DataRoot = u"C:\\QV";
  app.ScheduleFilePath = u"C:\\QV\\QVCOMMON\\scheduleData.txt";
  app.MailFilePath = u"C:\\QV\\QVCOMMON\\Mailid.txt";
  fake.clock.now = base::DateTime{2013, 3, 18, 15, 2, 33};
  fake.fs.PutFile(app.ScheduleFilePath, fileBytes);

  jobs::ScheduleEditor ed;
  jobs::EditorChoices c;
  ed.host.message = [&](const Text&, int, int) { return answer % 2 ? 6 : 7; };
  jobs::LoadEditorSettings(app, c);
  const long nextJob = jobstore::DB_ReadSchdata(app, Text(), app.Jobs, false);
  jobs::LoadTempJobs(app, ed);

  // The list shows each numbered job once, keyed by its number.
  const std::vector<jobs::EditorRow> rows = jobs::EditorRows(app, ed, nextJob);
  FUZZ_CHECK(rows.size() <= ed.TempJobs.size());
  for (std::size_t i = 0; i < rows.size(); ++i) {
    for (std::size_t j = 0; j < i; ++j) FUZZ_CHECK(rows[j].key != rows[i].key);
    bool known = false;
    for (const auto& r : ed.TempJobs)
      known = known || (!r.RecordNo.empty() && rows[i].key == u"QV_" + r.RecordNo);
    FUZZ_CHECK(known);
  }
  const Text running = jobs::CurrentJobNo(app, nextJob);
  if (!running.empty()) {
    bool known = false;
    for (const auto& r : app.Jobs) known = known || r.RecordNo == running;
    FUZZ_CHECK(known);
  }
  if (!ed.TempJobs.empty()) {
    const Text no = ed.TempJobs[pick % ed.TempJobs.size()].RecordNo;
    jobs::ShowRecordChoices(app, ed, no, c);
  }

  auto& t = c.timing;
  switch (kind % 8) {
    case 0:
      for (int i = 0; i < 7; ++i) t.chkBox[static_cast<size_t>(i)] = (days >> i) & 1;
      jobs::DayClick(ed, c);
      break;
    case 1:
      t.optHourly = !t.optHourly;
      jobs::FrequencyClick(app, ed, c, jobs::FrequencyControl::Hourly);
      break;
    case 2:
      t.optMonthly = !t.optMonthly;
      t.DTPMonthly = base::DateTime{2013, 1 + days % 12, 1 + days % 31, 0, 0, 0};
      if (!base::DateTime::IsValid(t.DTPMonthly.year, t.DTPMonthly.month, t.DTPMonthly.day))
        t.DTPMonthly.day = 1;
      jobs::FrequencyClick(app, ed, c, jobs::FrequencyControl::Monthly);
      break;
    case 3:
      t.chkImmediate = !t.chkImmediate;
      jobs::FrequencyClick(app, ed, c, jobs::FrequencyControl::Immediate);
      break;
    case 4: c.SetFrequency(Text()); break;
    case 5:
      c.ChkEmailNotification = days & 1;
      jobs::MailClick(app, c);
      break;
    case 6:
      c.chkCutoffTime = days & 1;
      jobs::CutoffClick(app, ed, c);
      break;
    default: t.chkDaily = !t.chkDaily; jobs::DailyClick(ed, c);
  }
  t.DTPicker = base::DateTime{2013, 3, 18, hour, minute, 0};
  c.ChkEmailNotification = mailFlags & 1;
  c.txtEmailEnabled = mailFlags & 2;
  c.optAlways = mailFlags & 4;
  c.optFailure = !c.optAlways && (mailFlags & 8);
  c.txtEmailNotification = base::DecodeUtf16Le(mailBytes).units;
  c.chkCutoffTime = mailFlags & 16;
  c.DTPCutoffTime = base::DateTime{2013, 3, 18, minute % 24, hour, 0};

  const std::vector<Text> before = LinesOf(fake.fs, app.ScheduleFilePath);
  const jobs::SaveOutcome out = jobs::Sch_Start4_Next_Click(app, ed, c);
  const std::vector<Text> after = LinesOf(fake.fs, app.ScheduleFilePath);
  if (!out.saved) FUZZ_CHECK(after == before);

  // The file loads again, and every running job that was in it is still there as it was.
  std::vector<jobstore::ScheduleRecord> reloaded;
  jobstore::DB_ReadSchdata(app, Text(), reloaded, false);
  for (std::size_t i = 1; i < before.size(); ++i) {
    const jobstore::ParsedLine p = jobstore::ParseScheduleLine(before[i]);
    if (!p.hasSeparator || p.record.SortKey != jobstore::kRunningKey || p.record.RecordNo.empty())
      continue;
    // Only a job whose number is its own, in a file whose state line is sound (a
    // longer one empties the file at the next append), is sure to keep its line.
    std::size_t sameNumber = 0;
    for (std::size_t j = 1; j < before.size(); ++j)
      if (jobstore::KeyOfLine(before[j]) == p.record.RecordNo) ++sameNumber;
    if (before[0].size() != 1 || sameNumber != 1) continue;
    bool kept = false;
    for (std::size_t j = 1; j < after.size(); ++j) kept = kept || after[j] == before[i];
    FUZZ_CHECK(kept);
  }
  return 0;
}
