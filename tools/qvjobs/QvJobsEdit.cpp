#include "QvJobsEdit.h"

#include <array>
#include <optional>

#include "base/DateTime.h"
#include "jobs/DTEmailRules.h"
#include "jobs/ScheduleEditorModel.h"
#include "jobstore/BackupSets.h"
#include "jobstore/DBaction.h"
#include "jobstore/NextRun.h"
#include "kit/MesgBox.h"

namespace qvjobs {

namespace {

using base::Text;

struct Bad {
  std::string reason;
};

enum class Frequency { None, Days, Daily, Hourly, Monthly, Immediate, Cleared };

struct EditOptions {
  Text recordNo;
  base::DateTime time;
  Frequency frequency = Frequency::None;
  std::array<bool, 7> days{};
  base::DateTime monthlyDate;
  std::optional<Text> mail;  // set: --mail; empty optional with noMail: --no-mail
  bool noMail = false;
  bool notifyAlways = true;
  bool notifyGiven = false;
  std::optional<base::DateTime> cutoff;
  bool noCutoff = false;
  std::optional<bool> desktop;
  std::optional<bool> missed;
};

bool AllDigits(const Text& t) {
  if (t.empty()) return false;
  for (char16_t ch : t)
    if (ch < u'0' || ch > u'9') return false;
  return true;
}

// "H:mm:ss", one or two digits each.
base::DateTime ParseClock(const Text& text, const char* option) {
  const auto parts = base::Split(text, u":");
  int v[3] = {0, 0, 0};
  bool ok = parts.size() == 3;
  for (size_t i = 0; ok && i < 3; ++i) {
    ok = AllDigits(parts[i]) && parts[i].size() <= 2;
    long long n = 0;
    if (ok) base::ParseLong(parts[i], n);
    v[i] = static_cast<int>(n);
  }
  if (!ok || v[0] > 23 || v[1] > 59 || v[2] > 59) throw Bad{std::string(option) + " takes H:mm:ss"};
  base::DateTime t;
  t.hour = v[0];
  t.minute = v[1];
  t.second = v[2];
  return t;
}

bool ParseFlag(const Text& text, const char* option) {
  if (text == u"0") return false;
  if (text == u"1") return true;
  throw Bad{std::string(option) + " takes 0 or 1"};
}

EditOptions Parse(const std::vector<std::string>& args) {
  EditOptions o;
  size_t pos = 0;
  auto take = [&](const char* missing) {
    if (pos >= args.size()) throw Bad{missing};
    return base::FromUtf8(args[pos++]);
  };
  o.recordNo = take("edit needs a RECORDNO");
  if (!AllDigits(o.recordNo)) throw Bad{"edit takes a record number"};
  bool timeGiven = false;
  int kinds = 0;
  while (pos < args.size()) {
    const std::string option = args[pos++];
    if (option == "--time") {
      o.time = ParseClock(take("--time needs H:mm:ss"), "--time");
      timeGiven = true;
    } else if (option == "--days") {
      ++kinds;
      o.frequency = Frequency::Days;
      const Text list = take("--days needs day digits");
      // An empty list: every day unchecked, as a user can leave them.
      for (const Text& d : list.empty() ? std::vector<Text>{} : base::Split(list, u",")) {
        if (d.size() != 1 || d[0] < u'1' || d[0] > u'7')
          throw Bad{"--days takes digits 1 (Sunday) to 7 (Saturday) separated by commas"};
        o.days[static_cast<size_t>(d[0] - u'1')] = true;
      }
    } else if (option == "--daily") {
      ++kinds;
      o.frequency = Frequency::Daily;
    } else if (option == "--hourly") {
      ++kinds;
      o.frequency = Frequency::Hourly;
    } else if (option == "--monthly") {
      ++kinds;
      o.frequency = Frequency::Monthly;
      const Text date = take("--monthly needs mm-dd-yyyy");
      auto d = base::ParseFileDate(date);
      if (!d || base::InStr(date, u" ") > 0) throw Bad{"--monthly takes mm-dd-yyyy"};
      o.monthlyDate = *d;
    } else if (option == "--immediate") {
      ++kinds;
      o.frequency = Frequency::Immediate;
    } else if (option == "--none") {
      ++kinds;
      o.frequency = Frequency::Cleared;
    } else if (option == "--mail") {
      o.mail = take("--mail needs ADDRESSES");
    } else if (option == "--notify") {
      const Text how = take("--notify needs always or failure");
      if (how != u"always" && how != u"failure") throw Bad{"--notify takes always or failure"};
      o.notifyAlways = how == u"always";
      o.notifyGiven = true;
    } else if (option == "--no-mail") {
      o.noMail = true;
    } else if (option == "--cutoff") {
      o.cutoff = ParseClock(take("--cutoff needs H:mm:ss"), "--cutoff");
    } else if (option == "--no-cutoff") {
      o.noCutoff = true;
    } else if (option == "--desktop") {
      o.desktop = ParseFlag(take("--desktop needs 0 or 1"), "--desktop");
    } else if (option == "--missed") {
      o.missed = ParseFlag(take("--missed needs 0 or 1"), "--missed");
    } else {
      throw Bad{"unknown edit option '" + option + "'"};
    }
  }
  if (!timeGiven) throw Bad{"edit needs --time H:mm:ss"};
  if (kinds != 1)
    throw Bad{
        "edit needs exactly one of --days, --daily, --hourly, --monthly, --immediate, --none"};
  if (o.noMail && (o.mail || o.notifyGiven))
    throw Bad{"--no-mail goes without --mail and --notify"};
  if (o.mail.has_value() != o.notifyGiven) throw Bad{"--mail and --notify go together"};
  if (o.cutoff && o.noCutoff) throw Bad{"--cutoff and --no-cutoff exclude each other"};
  return o;
}

base::DateTime OnDay(const base::DateTime& day, const base::DateTime& time) {
  return base::DateTime{day.year, day.month, day.day, time.hour, time.minute, time.second};
}

// What the user's clicks would do, control by control: a control whose value does not
// change is not clicked.
void ApplyFrequency(frame::AppState& app, jobs::ScheduleEditor& ed, jobs::EditorChoices& c,
                    const EditOptions& o) {
  auto& t = c.timing;
  auto click = [&](bool& box, jobs::FrequencyControl which) {
    if (box) return;
    box = true;
    jobs::FrequencyClick(app, ed, c, which);
  };
  switch (o.frequency) {
    case Frequency::Days:
      if (t.chkBox == o.days && !t.chkImmediate && !t.optHourly && !t.optMonthly) break;
      t.chkBox = o.days;
      jobs::DayClick(ed, c);
      break;
    case Frequency::Daily:
      if (t.chkDaily) break;
      t.chkDaily = true;
      jobs::DailyClick(ed, c);
      break;
    case Frequency::Hourly: click(t.optHourly, jobs::FrequencyControl::Hourly); break;
    case Frequency::Monthly:
      t.DTPMonthly = o.monthlyDate;
      click(t.optMonthly, jobs::FrequencyControl::Monthly);
      break;
    case Frequency::Immediate: click(t.chkImmediate, jobs::FrequencyControl::Immediate); break;
    case Frequency::Cleared: {
      // The chosen control is unchecked; the row is then cleared and saving removes it.
      const bool immediate = t.chkImmediate, hourly = t.optHourly, monthly = t.optMonthly;
      c.SetFrequency(Text());
      if (immediate)
        jobs::FrequencyClick(app, ed, c, jobs::FrequencyControl::Immediate);
      else if (hourly)
        jobs::FrequencyClick(app, ed, c, jobs::FrequencyControl::Hourly);
      else if (monthly)
        jobs::FrequencyClick(app, ed, c, jobs::FrequencyControl::Monthly);
      else
        jobs::DayClick(ed, c);
      break;
    }
    case Frequency::None: break;
  }
}

void Apply(frame::AppState& app, jobs::ScheduleEditor& ed, jobs::EditorChoices& c,
           const EditOptions& o) {
  ApplyFrequency(app, ed, c, o);
  if (c.DTPickerEnabled) c.timing.DTPicker = OnDay(c.timing.DTPicker, o.time);

  if (o.mail) {
    if (!c.ChkEmailNotification) {
      c.ChkEmailNotification = true;
      jobs::MailClick(app, c);
    }
    c.txtEmailNotification = *o.mail;
    c.optAlways = o.notifyAlways;
    c.optFailure = !o.notifyAlways;
  } else if (o.noMail && c.ChkEmailNotification) {
    c.ChkEmailNotification = false;
    jobs::MailClick(app, c);
  }

  if (o.cutoff) {
    c.DTPCutoffTime = OnDay(c.DTPCutoffTime, *o.cutoff);
    if (!c.chkCutoffTime) {
      c.chkCutoffTime = true;
      jobs::CutoffClick(app, ed, c);
    }
  } else if (o.noCutoff && c.chkCutoffTime) {
    c.chkCutoffTime = false;
    jobs::CutoffClick(app, ed, c);
  }
  if (o.desktop) c.chkdesktop = *o.desktop;
  if (o.missed) c.chkMissedBackup = *o.missed;
}

std::string Lines(const Text& text) {
  std::string out;
  for (const Text& line : base::Split(base::Replace(text, u"\r\n", u"\n"), u"\n"))
    out += base::ToUtf8(line) + "\n";
  return out;
}

}  // namespace

int RunEdit(frame::AppState& app, const EditRequest& request, std::string& out,
            std::string& usage) {
  EditOptions o;
  try {
    o = Parse(request.args);
  } catch (const Bad& bad) {
    usage = bad.reason;
    return 2;
  }

  jobs::ScheduleEditor ed;
  jobs::EditorChoices c;
  ed.host.message = [&](const Text& text, int, int buttons) {
    out += Lines(text);
    if (buttons == kit::kButtonsYesNo) return request.answerYes ? kit::kResultYes : kit::kResultNo;
    return kit::kResultOk;
  };
  ed.host.pluginRule = request.pluginRule;

  // The screen's loading: a suggested start time, the addresses, the global settings.
  c.timing.DTPicker = app.platform.clock->Now().AddMinutes(1);
  jobstore::RecommendedTimeDefault(app, c.timing);
  jobstore::Sch_LoadMailidList(app, nullptr);
  jobs::LoadEditorSettings(app, c);
  // The job list's opening of the editor on the record.
  jobstore::DB_ReadSchdata(app, Text(), app.Jobs, false);
  jobs::LoadTempJobs(app, ed);
  if (!jobs::ShowRecordChoices(app, ed, o.recordNo, c)) {
    usage = "no job " + base::ToUtf8(o.recordNo) + " in the schedule";
    return 2;
  }

  Apply(app, ed, c, o);
  const jobs::SaveOutcome saved = jobs::Sch_Start4_Next_Click(app, ed, c);
  if (saved.writeFailed) return kExitRefused;  // the caller gives the reason
  if (!saved.saved) return kExitRefused;
  for (const Text& no : saved.skipped)
    if (no == o.recordNo) return kExitRefused;
  return 0;
}

}  // namespace qvjobs
