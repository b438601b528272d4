#include "jobs/ScheduleEditorModel.h"

#include <algorithm>

#include "base/Guarded.h"
#include "frame/Logs.h"
#include "frame/Settings.h"
#include "jobstore/BackupSets.h"
#include "jobstore/DBaction.h"
#include "jobstore/SystemDate.h"
#include "kit/MesgBox.h"
#include "frame/MessageTable.h"

namespace jobs {

namespace {

constexpr char16_t kScheduler[] = u"of Class Module Scheduler";

Text InScheduler(const Text& procedure) { return u"in procedure " + procedure + u" " + kScheduler; }

int Show(ScheduleEditor& ed, const Text& text, int icon, int buttons) {
  return ed.host.message ? ed.host.message(text, icon, buttons) : kit::kResultClosed;
}

Text TimeText(AppState& app, const base::DateTime& t) {
  return jobstore::FormatDate(t, u"H:mm:ss", jobstore::LocaleOf(app));
}

base::DateTime WithTime(const base::DateTime& day, const base::DateTime& time) {
  base::DateTime d = day.DateOnly();
  d.hour = time.hour;
  d.minute = time.minute;
  d.second = time.second;
  return d;
}

const ScheduleRecord* GlobalRow(AppState& app, const Text& recordNo) {
  auto it = std::find_if(app.Jobs.begin(), app.Jobs.end(),
                         [&](const ScheduleRecord& r) { return r.RecordNo == recordNo; });
  return it == app.Jobs.end() ? nullptr : &*it;
}

}  // namespace

// ---- Choices -------------------------------------------------------------------

bool EditorChoices::NoFrequency() const {
  const bool anyDay =
      std::any_of(timing.chkBox.begin(), timing.chkBox.end(), [](bool b) { return b; });
  return !anyDay && !timing.chkImmediate && !timing.optMonthly && !timing.optHourly &&
         !timing.chkDaily;
}

void EditorChoices::SetFrequency(const Text& days) {
  timing.chkBox.fill(false);
  timing.chkDaily = false;
  timing.optHourly = false;
  timing.optMonthly = false;
  timing.chkImmediate = false;
  chkDailyCaption = kDailyCaption;
  const Text word = base::Trim(days);
  if (base::EqualsNoCase(word, u"Immediate")) {
    timing.chkImmediate = true;
  } else if (base::EqualsNoCase(word, u"Hourly")) {
    timing.optHourly = true;
  } else if (base::EqualsNoCase(word, u"Monthly")) {
    timing.optMonthly = true;
  } else {
    for (char16_t ch : word)
      if (ch >= u'1' && ch <= u'7') timing.chkBox[static_cast<size_t>(ch - u'1')] = true;
    timing.chkDaily =
        std::all_of(timing.chkBox.begin(), timing.chkBox.end(), [](bool b) { return b; });
    if (!timing.chkDaily) chkDailyCaption = kWeekDaysCaption;
  }
  timing.bImmediate = timing.chkImmediate;
  DTPickerEnabled = !timing.chkImmediate;
}

// ---- Small rules ---------------------------------------------------------------

Text QVWinErrorText(AppState& app, long code) {
  // The wizard's codes and the numbers of their texts in the message table.
  struct Entry {
    long code;
    long message;
  };
  static constexpr Entry kTable[] = {{101, 49}, {103, 50}, {104, 51}, {105, 52},
                                     {106, 53}, {108, 54}, {201, 55}, {202, 56},
                                     {203, 57}, {204, 58}, {205, 59}, {206, 60}};
  for (const Entry& e : kTable)
    if (e.code == code) return frame::GetMessage(app, e.message);
  return Text();
}

Text QVWinError(AppState& app, ScheduleEditor& ed, long code) {
  Text text;
  base::Guarded(
      [&] {
        text = QVWinErrorText(app, code);
        if (!text.empty()) Show(ed, text, kit::kIconWarning, kit::kButtonsOk);
      },
      frame::TraceFailure(app, u"Error Reason :", u"in procedure QVwinError of Module modGeneral"));
  return text;
}

bool ValidMailAddress(const Text& address) {
  const size_t at = base::InStr(address, u"@");
  if (at == 0) return false;
  if (base::Mid(address, at + 1, 1) == u".") return false;
  return base::InStr(address, u".", at + 2) > 0;
}

bool FindInList(const std::vector<Text>& list, const Text& value) {
  const Text wanted = base::ToUpper(base::Trim(value));
  return std::any_of(list.begin(), list.end(),
                     [&](const Text& t) { return base::ToUpper(base::Trim(t)) == wanted; });
}

bool RemoveDuplicateMailID(AppState& app, const Text& addresses, std::vector<Text>& list,
                           bool bNoCheck) {
  bool result = false;
  base::Guarded(
      [&] {
        const std::vector<Text> parts = base::Split(base::Replace(addresses, u";", u","), u",");
        if (bNoCheck) {
          result = true;
          return;
        }
        for (const Text& part : parts)
          if (!base::IsBlank(part) && !FindInList(list, part)) list.push_back(base::Trim(part));
        result = true;
      },
      [&](const base::ErrorInfo& e) {
        frame::WriteTrace(app, u"Error in function RemoveDuplicateFile " + e.description);
      });
  return result;
}

int Sch_Mail_validate(AppState& app, const EditorChoices& c) {
  frame::WriteTrace(app, u"Enter Sch_Mail_validate ");
  int result = kMailValid;
  base::Guarded(
      [&] {
        if (!c.ChkEmailNotification) return;
        const Text text = base::Replace(base::Trim(c.txtEmailNotification), u";", u",");
        const std::vector<Text> parts = base::Split(text, u",");
        if (parts.size() > 1) {
          std::vector<Text> seen;
          for (const Text& part : parts) {
            if (part.empty() || FindInList(seen, part)) continue;
            if (!ValidMailAddress(part)) {
              result = 105;
              return;
            }
            seen.push_back(part);
          }
        }
        if (text.empty())
          result = 104;
        else if (!ValidMailAddress(text))
          result = 105;
      },
      frame::TraceFailure(app, u"Error Reason :", InScheduler(u"Sch_Mail_validate")));
  frame::WriteTrace(app, u"Exit Sch_Mail_validate " + base::FromNumber(result));
  return result;
}

Text BackupSetLabel(const Text& setName) {
  return u"Backup/Restore set name - '" + base::Replace(setName, u"&", u"&&") + u"'";
}

// ---- Rows ----------------------------------------------------------------------

ScheduleRecord* TempRow(ScheduleEditor& ed, const Text& recordNo) {
  auto it = std::find_if(ed.TempJobs.begin(), ed.TempJobs.end(),
                         [&](const ScheduleRecord& r) { return r.RecordNo == recordNo; });
  return it == ed.TempJobs.end() ? nullptr : &*it;
}

void LoadTempJobs(AppState& app, ScheduleEditor& ed) {
  ed.TempJobs.clear();
  jobstore::DB_ReadSchdata(app, Text(), ed.TempJobs, false);
}

void LoadEditorSettings(AppState& app, EditorChoices& c) {
  const Text desktop = frame::ReadSetting(app, u"desktopnotify");
  if (!desktop.empty()) c.chkdesktop = base::LeadingNumber(desktop) != 0;
  const Text missed = frame::ReadSetting(app, u"MISSEDBACKUP");
  if (!missed.empty()) c.chkMissedBackup = base::LeadingNumber(missed) != 0;
  const Text cutoff = base::Trim(frame::ReadSetting(app, u"CUTOFFTIME"));
  const base::DateTime now = app.platform.clock->Now();
  if (cutoff.empty() || cutoff == u"0") {
    c.chkCutoffTime = false;
    c.DTPCutoffTime = now;
    c.DTPCutoffTimeEnabled = false;
    return;
  }
  c.chkCutoffTime = true;
  c.DTPCutoffTimeEnabled = true;
  if (auto t = jobstore::ParseSystemDate(cutoff, jobstore::LocaleOf(app)))
    c.DTPCutoffTime = WithTime(now, *t);
  else
    c.DTPCutoffTime = now;
}

base::DateTime MonthlyPickerDate(const base::DateTime& now, const base::DateTime& nextRun) {
  base::DateTime d = now;
  // Month, then day, then year, each refused when it makes no date.
  if (base::DateTime::IsValid(d.year, now.month, nextRun.day)) d.day = nextRun.day;
  if (base::DateTime::IsValid(nextRun.year, d.month, d.day)) d.year = nextRun.year;
  return d;
}

bool ShowRecordChoices(AppState& app, ScheduleEditor& ed, const Text& recordNo, EditorChoices& c) {
  const ScheduleRecord* row = TempRow(ed, recordNo);
  if (!row) return false;
  EditorIdentity& id = ed.Identity;
  id.RecordNo = row->RecordNo;
  id.Destination = row->Destination;
  id.BackupSetName = row->BackupSetName;
  id.UserName = row->UserName;
  id.Password = row->Password;
  const ScheduleRecord* global = GlobalRow(app, recordNo);
  id.Compression = global ? global->Compression : Text();
  id.Encryption = global ? global->Encryption : Text();
  id.Reserved14 = global ? global->Reserved14 : Text();

  const jobstore::LocaleFormats locale = jobstore::LocaleOf(app);
  const base::DateTime now = app.platform.clock->Now();
  const auto nextRun = jobstore::ParseSystemDate(row->NextRun, locale);
  if (nextRun) c.timing.DTPicker = WithTime(c.timing.DTPicker, *nextRun);

  if (!row->Days.empty()) {
    c.SetFrequency(row->Days);
    if (c.timing.optMonthly && nextRun) c.timing.DTPMonthly = MonthlyPickerDate(now, *nextRun);
  }

  const Text& mode = row->MailMode;
  if (mode.empty()) return true;
  if (mode == kMailAlways || mode == kMailOnFailure) {
    c.ChkEmailNotification = true;
    c.optAlways = mode == kMailAlways;
    c.optFailure = mode == kMailOnFailure;
    c.txtEmailNotification = row->MailAddresses;
    c.txtEmailEnabled = true;
  } else {
    c.ChkEmailNotification = false;
    c.optAlways = false;
    c.optFailure = false;
    c.txtEmailNotification.clear();
    c.txtEmailEnabled = false;
  }
  return true;
}

// ---- Saving --------------------------------------------------------------------

void StoreCutoff(AppState& app, const EditorChoices& c) {
  frame::WriteSetting(app, u"CUTOFFTIME",
                      c.chkCutoffTime ? base::Trim(TimeText(app, c.DTPCutoffTime)) : Text(u"0"));
}

void Sch_Filldata_Start6(AppState& app, ScheduleEditor& ed, EditorChoices& c) {
  frame::WriteTrace(app, u"Enter Sch_Filldata_Start6 ");
  base::Guarded(
      [&] {
        ScheduleRecord& s = ed.Scratch;
        const EditorIdentity& id = ed.Identity;
        s.RecordNo = id.RecordNo;
        s.Destination = id.Destination;
        s.BackupSetName = id.BackupSetName;
        s.UserName = id.UserName;
        s.Password = id.Password;
        s.Compression = id.Compression;
        s.Encryption = id.Encryption;
        s.Reserved14 = id.Reserved14;
        s.JobKind = u"2";
        const jobstore::Timing t = jobstore::PlanTiming(app, c.timing);
        s.NextRun = t.NextRun;
        s.FrequencyIndex = t.FrequencyIndex;
        s.Days = t.Days;
        s.CreatedOn = jobstore::NowText(app);
        s.SortKey = jobstore::Sch_SortBuildDate(app, s.NextRun);
        if (c.ChkEmailNotification) {
          s.MailAddresses = base::Replace(base::Trim(c.txtEmailNotification), u",", u";");
          if (c.optAlways)
            s.MailMode = kMailAlways;
          else if (c.optFailure)
            s.MailMode = kMailOnFailure;
        } else {
          s.MailAddresses.clear();
          s.MailMode = kMailNone;
        }
      },
      frame::TraceFailure(app, u"Error Reason :", InScheduler(u"Sch_Filldata_Start6")));
  frame::WriteTrace(app, u"Exit Sch_Filldata_Start6 ");
}

void SaveTempSchdata(ScheduleEditor& ed, const Text& recordNo) {
  const ScheduleRecord& s = ed.Scratch;
  ScheduleRecord* row = TempRow(ed, s.RecordNo);
  if (!row) return;
  row->RecordNo = s.RecordNo;
  row->BackupSetName = s.BackupSetName;
  row->NextRun = s.NextRun;
  row->CreatedOn = s.CreatedOn;
  row->FrequencyIndex = s.FrequencyIndex;
  row->Reserved14 = s.Reserved14;
  row->Encryption = s.Encryption;
  row->Destination = s.Destination;
  row->Reserved11 = s.Reserved11;
  row->MailMode = s.MailMode;
  row->MailAddresses = s.MailAddresses;
  row->Reserved12 = s.Reserved12;
  row->Compression = s.Compression;
  row->JobKind = s.JobKind;
  row->SortKey = s.SortKey;
  row->UserName = s.UserName;
  row->Password = s.Password;
  row->Reserved10.clear();
  row->EngineFlag = u"0";
  // The list passes the number of a row whose choices were cleared.
  row->Days = recordNo == s.RecordNo ? Text(kNoSchedule) : s.Days;
}

bool Schwiz_validate_Start4(AppState& app, ScheduleEditor& ed, EditorChoices& c, bool bPreventCheck,
                            const Text& recordNo) {
  if (c.timing.chkImmediate) {
    c.DTPickerEnabled = false;
    c.timing.DTPicker = WithTime(c.timing.DTPicker, app.platform.clock->Now());
    c.timing.bImmediate = true;
  } else {
    c.DTPickerEnabled = true;
    c.timing.bImmediate = false;
  }
  StoreCutoff(app, c);

  if (c.ChkEmailNotification && c.txtEmailEnabled && base::Trim(c.txtEmailNotification).empty()) {
    Show(ed, frame::GetMessage(app, 9), kit::kIconWarning, kit::kButtonsOk);
    if (ed.host.focusMail) ed.host.focusMail();
    return false;
  }
  if (!base::Trim(c.txtEmailNotification).empty()) {
    const int code = Sch_Mail_validate(app, c);
    if (code != kMailValid) {
      QVWinError(app, ed, code);
      return false;
    }
  }
  std::vector<Text> unique;
  RemoveDuplicateMailID(app, c.txtEmailNotification, unique, false);
  c.txtEmailNotification = base::Join(unique, u",");
  jobstore::Sch_SaveMailid(app, c.txtEmailNotification);

  frame::WriteSetting(app, u"desktopnotify", c.chkdesktop ? u"1" : u"0");
  frame::WriteSetting(app, u"MISSEDBACKUP", c.chkMissedBackup ? u"1" : u"0");
  jobstore::Sch_SaveMailid(app, c.txtEmailNotification);

  Sch_Filldata_Start6(app, ed, c);
  SaveTempSchdata(ed, recordNo);
  if (!bPreventCheck && recordNo.empty() && ed.host.unloadScreen) ed.host.unloadScreen();
  return true;
}

bool SaveSelection(AppState& app, ScheduleEditor& ed, EditorChoices& c, const Text& recordNo) {
  StoreCutoff(app, c);
  // A row left with no choice at all becomes daily.
  if (c.NoFrequency() && !ed.bRowCleared) c.timing.chkBox.fill(true);
  return Schwiz_validate_Start4(app, ed, c, ed.bInRowChange, recordNo);
}

SaveOutcome WriteTempRows(AppState& app, ScheduleEditor& ed) {
  SaveOutcome out;
  out.saved = true;
  // The file is the truth at this moment: a job the engine took up since the screen
  // was opened, or one that has gone, is left alone.
  jobstore::DB_ReadSchdata(app, Text(), app.Jobs, false);
  // All rows go into the file in one write: the engine never reads it with a job
  // missing, and a failure leaves every job as it was.
  jobstore::ScheduleFileEdit edit(app);
  for (ScheduleRecord& row : ed.TempJobs) {
    if (base::Trim(row.BackupSetName).empty()) continue;
    if (!jobstore::CheckRecordNo(app, row.RecordNo) ||
        jobstore::CheckRecordInProgress(app, row.RecordNo)) {
      out.skipped.push_back(row.RecordNo);
      continue;
    }
    // Neither word of a row that is to go ever reaches the file.
    const bool leaves =
        base::EqualsNoCase(row.Days, kNoSchedule) || base::EqualsNoCase(row.Days, kDeleted);
    edit.Put(row, leaves);
    (leaves ? out.removed : out.written).push_back(row.RecordNo);
    if (!leaves && row.RecordNo == ed.Identity.RecordNo) out.wroteEdited = true;
  }
  const jobstore::WriteResult written = edit.Commit(u"DB_WriteSchdata");
  if (!written) {
    SaveOutcome failed;
    failed.writeFailed = true;
    failed.reason = written.reason;
    if (ed.host.message)
      ed.host.message(Text(kCouldNotSaveText) + written.reason, kit::kIconError, kit::kButtonsOk);
    return failed;
  }
  return out;
}

SaveOutcome Sch_Start4_Next_Click(AppState& app, ScheduleEditor& ed, EditorChoices& c) {
  const Text present = ed.bRowCleared ? ed.Identity.RecordNo : Text();
  if (!SaveSelection(app, ed, c, present)) return SaveOutcome{};
  SaveOutcome out = WriteTempRows(app, ed);
  if (!out.writeFailed && ed.host.unloadScreen) ed.host.unloadScreen();
  return out;
}

void Add_Wizard_Member(AppState& app, ScheduleEditor& ed) {
  base::Guarded(
      [&] { jobstore::RequireWritten(jobstore::DB_WriteSchdata(app, ed.Scratch, false)); },
      frame::TraceFailure(app, u"Error Reason :", InScheduler(u"Add_Wizard_Member")));
}

}  // namespace jobs
