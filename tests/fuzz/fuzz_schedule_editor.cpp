// Any editor choices and mail text over any scheduleData.txt, through the list, clicks and save.
#include "FuzzInput.h"
#include "jobs/DTEmailRules.h"
#include "jobs/ScheduleEditorModel.h"
#include "jobstore/DBaction.h"

using base::Text;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 8) return 0;
  const std::uint8_t kind = data[0], days = data[1], mailFlags = data[2], pick = data[3];
  const int hour = data[4] % 24, minute = data[5] % 60;
  const std::size_t mailLength = data[6] % 64;
  const std::uint8_t answer = data[7];
  std::string rest(reinterpret_cast<const char*>(data) + 8, size - 8);
  const std::string mailBytes = rest.substr(0, std::min(mailLength, rest.size()));
  const std::string fileBytes = rest.substr(mailBytes.size());

  fuzz::Monitor fx;
  fx.AddCommon();
  frame::AppState& app = fx.app;
  auto& fake = fx.fake;
  fake.clock.now = base::DateTime{2013, 3, 18, 15, 2, 33};
  fake.fs.PutFile(app.ScheduleFilePath, fileBytes);

  jobs::ScheduleEditor ed;
  jobs::EditorChoices c;
  ed.host.message = [&](const Text&, int, int) { return answer % 2 ? 6 : 7; };
  jobs::LoadEditorSettings(app, c);
  const long nextJob = jobstore::DB_ReadSchdata(app, Text(), app.Jobs, false);
  jobs::LoadTempJobs(app, ed);

  const std::vector<jobs::EditorRow> rows = jobs::EditorRows(app, ed, nextJob);
  for (std::size_t i = 0; i < rows.size(); ++i)
    for (std::size_t j = 0; j < i; ++j) FUZZ_CHECK(rows[j].key != rows[i].key);
  jobs::CurrentJobNo(app, nextJob);
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

  const std::vector<Text> before = fx.Lines(app.ScheduleFilePath);
  if (!jobs::Sch_Start4_Next_Click(app, ed, c).saved)
    FUZZ_CHECK(fx.Lines(app.ScheduleFilePath) == before);
  std::vector<jobstore::ScheduleRecord> reloaded;
  jobstore::DB_ReadSchdata(app, Text(), reloaded, false);
  return 0;
}
