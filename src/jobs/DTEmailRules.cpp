#include "jobs/DTEmailRules.h"

#include <algorithm>
#include <set>

#include "base/Guarded.h"
#include "frame/Logs.h"
#include "frame/Settings.h"
#include "jobstore/DBaction.h"
#include "jobstore/NextRun.h"
#include "jobstore/SystemDate.h"
#include "kit/MesgBox.h"
#include "frame/MessageTable.h"

namespace jobs {

namespace {

constexpr char16_t kEnableAllQuestion[] =
    u"All your scheduled backup/ restore jobs are disabled as of now. Do you want to enable "
    u"them?";

int Ask(ScheduleEditor& ed, const Text& text, int icon, int buttons) {
  return ed.host.message ? ed.host.message(text, icon, buttons) : kit::kResultClosed;
}

int CheckedDays(const EditorChoices& c) {
  return static_cast<int>(std::count(c.timing.chkBox.begin(), c.timing.chkBox.end(), true));
}

base::DateTime AtTimeOf(const base::DateTime& day, const base::DateTime& time) {
  base::DateTime d = day.DateOnly();
  d.hour = time.hour;
  d.minute = time.minute;
  d.second = time.second;
  return d;
}

}  // namespace

void FrequencyClick(AppState& app, ScheduleEditor& ed, EditorChoices& c, FrequencyControl which) {
  auto& t = c.timing;
  const bool on = which == FrequencyControl::Immediate ? t.chkImmediate
                  : which == FrequencyControl::Hourly  ? t.optHourly
                                                       : t.optMonthly;
  if (which == FrequencyControl::Immediate) t.bImmediate = on;
  if (on) {
    // One frequency at a time: the others and the days go (ClearChoices).
    t.chkImmediate = which == FrequencyControl::Immediate;
    t.optHourly = which == FrequencyControl::Hourly;
    t.optMonthly = which == FrequencyControl::Monthly;
    t.chkDaily = false;
    t.chkBox.fill(false);
    c.chkDailyCaption = kDailyCaption;
    t.bImmediate = t.chkImmediate;
    if (which == FrequencyControl::Immediate) {
      c.DTPickerEnabled = false;
      t.DTPicker = AtTimeOf(t.DTPicker, app.platform.clock->Now());
    } else {
      c.DTPickerEnabled = true;
      // A new frequency gets a new suggested start, on its first allowed day.
      base::Guarded([&] { jobstore::set_RecommendedTime(app, t); },
                    frame::TraceFailure(app, u"Error Reason :",
                                        u"in procedure set_RecommendedTime of Form frmDTEmail"));
    }
    ed.bRowCleared = false;
  } else {
    if (which == FrequencyControl::Immediate) c.DTPickerEnabled = true;
    // Unchecking the only choice clears the row: saving takes the job out.
    if (c.NoFrequency()) ed.bRowCleared = true;
  }
  if (base::Trim(frame::ReadSetting(app, u"DisableAllSchdulers")) == u"1" &&
      Ask(ed, kEnableAllQuestion, kit::kIconQuestion, kit::kButtonsYesNo) == kit::kResultYes)
    frame::WriteSetting(app, u"DisableAllSchdulers", u"0");
  if (ed.host.pluginRule) ed.host.pluginRule(ed.Identity.BackupSetName);
}

void DayClick(ScheduleEditor& ed, EditorChoices& c) {
  auto& t = c.timing;
  t.chkImmediate = false;
  t.optHourly = false;
  t.optMonthly = false;
  t.bImmediate = false;
  c.DTPickerEnabled = true;
  t.chkDaily = CheckedDays(c) == 7;
  c.chkDailyCaption = t.chkDaily ? kDailyCaption : kWeekDaysCaption;
  if (!c.NoFrequency()) ed.bRowCleared = false;
}

void DailyClick(ScheduleEditor& ed, EditorChoices& c) {
  c.timing.chkBox.fill(c.timing.chkDaily);
  DayClick(ed, c);
}

void MailClick(AppState& app, EditorChoices& c) {
  if (c.ChkEmailNotification) {
    c.txtEmailEnabled = true;
    c.optAlways = true;
    c.optFailure = false;
    const Text fallback = frame::ReadSetting(app, u"EmailUserName");
    if (base::InStr(fallback, u"@") > 0) c.txtEmailNotification = base::Trim(fallback);
  } else {
    c.txtEmailEnabled = false;
    c.optAlways = false;
    c.optFailure = false;
    c.txtEmailNotification.clear();
  }
}

Text CutoffQuestion(AppState& app, const Text& time) {
  return frame::GetMessage(app, 547) + time + frame::GetMessage(app, 548);
}

void CutoffClick(AppState& app, ScheduleEditor& ed, EditorChoices& c) {
  if (!c.chkCutoffTime) {
    c.DTPCutoffTimeEnabled = false;
    return;
  }
  c.DTPCutoffTimeEnabled = true;
  const Text time = jobstore::FormatDate(c.DTPCutoffTime, u"H:mm:ss", jobstore::LocaleOf(app));
  if (Ask(ed, CutoffQuestion(app, time), kit::kIconQuestion, kit::kButtonsYesNo) == kit::kResultYes)
    return;
  c.chkCutoffTime = false;
  c.DTPCutoffTimeEnabled = false;
  c.DTPCutoffTime = c.DTPCutoffTime.DateOnly();
}

Text DailyCaptionFor(const EditorChoices& c) { return c.chkDailyCaption; }

ChoiceEnables EnablesFor(const EditorChoices& c) {
  ChoiceEnables e;
  const bool chosen = !c.NoFrequency();
  e.DTPMonthly = c.timing.optMonthly;
  e.DTPicker = chosen && !c.timing.chkImmediate;
  e.ChkEmailNotification = chosen;
  e.chkdesktop = chosen;
  e.chkCutoffTime = chosen;
  return e;
}

Text ScreenDate(AppState& app, const Text& fileDate) {
  const jobstore::LocaleFormats locale = jobstore::LocaleOf(app);
  Text value = fileDate;
  if (base::ToUpper(base::Left(base::Trim(frame::ReadSetting(app, u"DateFormat")), 1)) != u"D")
    value = jobstore::ReformatDate(value, jobstore::kFileDatePattern, locale);
  auto parsed = jobstore::ParseSystemDate(value, locale);
  if (!parsed) return value;
  return jobstore::FormatDate(*parsed, base::ToLower(locale.shortDateFormat) + u" H:nn:ss", locale);
}

Text DaysColumn(const jobstore::ScheduleRecord& r) {
  if (base::IsBlank(r.Days)) {
    long long index = 0;
    base::ParseLong(base::Trim(r.FrequencyIndex), index);
    return jobstore::GetFreNameFromIndex(static_cast<long>(index));
  }
  return jobstore::DayNamesFromDays(r.Days);
}

Text StatusFor(const Text& stateLine) {
  if (stateLine == u"1") return u"In Progress";
  if (stateLine == u"2") return u"Stopping";
  return Text();
}

std::vector<EditorRow> EditorRows(AppState& app, const ScheduleEditor& ed, long nextJobIndex) {
  std::vector<EditorRow> rows;
  std::set<Text> shown;
  const Text state = jobstore::Readfirstline(app, app.ScheduleFilePath);
  for (size_t i = 0; i < ed.TempJobs.size(); ++i) {
    const jobstore::ScheduleRecord& r = ed.TempJobs[i];
    if (r.RecordNo.empty() || base::EqualsNoCase(r.Days, kNoSchedule)) continue;
    if (!shown.insert(r.RecordNo).second) continue;
    long long freq = 0;
    base::ParseLong(base::Trim(r.FrequencyIndex), freq);
    rows.push_back(
        {u"QV_" + r.RecordNo,
         r.BackupSetName,
         {ScreenDate(app, r.NextRun), jobstore::GetFreNameFromIndex(static_cast<long>(freq)),
          static_cast<long>(i) == nextJobIndex ? StatusFor(state) : Text(), r.Destination,
          r.SortKey, r.RecordNo, r.UserName, DaysColumn(r)}});
  }
  return rows;
}

Text CurrentJobNo(AppState& app, long nextJobIndex) {
  const Text state = jobstore::Readfirstline(app, app.ScheduleFilePath);
  if (StatusFor(state).empty() || nextJobIndex < 0 ||
      static_cast<size_t>(nextJobIndex) >= app.Jobs.size())
    return Text();
  return app.Jobs[static_cast<size_t>(nextJobIndex)].RecordNo;
}

void ClearDays(EditorChoices& c) {
  c.timing.chkBox.fill(false);
  c.timing.chkDaily = false;
  c.chkDailyCaption = kDailyCaption;
}

void ForgetDeletedJob(AppState& app, ScheduleEditor& ed, const Text& recordNo) {
  if (!jobstore::CheckRecordNo(app, recordNo))
    std::erase_if(ed.TempJobs, [&](const auto& r) { return r.RecordNo == recordNo; });
}

}  // namespace jobs
