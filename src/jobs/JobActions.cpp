#include "jobs/JobActions.h"

#include <optional>
#include <stdexcept>

#include "base/Guarded.h"
#include "frame/Logs.h"
#include "frame/Settings.h"
#include "jobs/PluginRules.h"
#include "jobstore/DBaction.h"
#include "jobstore/ScheduleReader.h"
#include "kit/MesgBox.h"
#include "frame/MessageTable.h"

namespace jobs {

namespace {

constexpr char16_t kDisableKey[] = u"DisableAllSchdulers";

Text Where(const Text& procedure) {
  return u"in procedure " + procedure + u" of Form SchedulerFrm";
}

bool IsAutomatedJob(const JobRow& row) { return row.Name() == kAutomatedJob; }

}  // namespace

int RecordNumberOf(const Text& text) {
  long long value = 0;
  if (!base::ParseLong(base::Trim(text), value)) throw base::Failure(13, "Type mismatch");
  if (value < -32768 || value > 32767) throw base::Failure(6, "Overflow");
  return static_cast<int>(value);
}

int JobActions::Ask(long code, int icon, int buttons) {
  return prompts_.Ask(frame::GetMessage(app_, code), icon, buttons);
}

// The jobs are disabled: the question whether to enable them. The answer does not stop
// the action; it only decides whether the setting is written.
bool JobActions::AskToEnableJobs(long code) {
  if (frame::ReadSetting(app_, kDisableKey) != u"1") return false;
  if (Ask(code, kit::kIconQuestion, kit::kButtonsYesNo) != kit::kResultYes) return false;
  frame::WriteSetting(app_, kDisableKey, u"0");
  return true;
}

// --- Edit -------------------------------------------------------------------------

void JobActions::Pic_Edit_Click() {
  base::Guarded(
      [&] {
        app_.Store.BackupNowMode = false;
        if (list_.SelectedRow > 0) EditRow();
      },
      frame::TraceFailure(app_, u"Error Reason :", Where(u"Pic_Edit_Click")));
}

void JobActions::Sch_list_lv_DblClick() {
  base::Guarded([&] { EditRow(); },
                frame::TraceFailure(app_, u"Error in dbl click on scheduler list Reason : "));
}

void JobActions::EditRow() {
  if (list_.SelectedRow > 0) {
    const JobRow* row = list_.Row(list_.SelectedRow);
    if (row == nullptr) throw std::out_of_range("Invalid property value");
    if (!PluginRuleAllows(app_, prompts_, PluginPlace::Edit, row->Name(), majorVersion_)) return;
  }
  app_.Store.BackupNowMode = false;
  if (!list_.HasRows() || list_.SelectedRow <= 0) return;
  AskToEnableJobs(22);
  const JobRow* row = list_.Row(list_.SelectedRow);
  if (row == nullptr) throw std::out_of_range("Invalid property value");
  if (!row->Status().empty()) {
    Ask(23, kit::kIconError, kit::kButtonsOk);
    return;
  }
  const Text recordNo = row->Number();
  if (openEditor_) openEditor_(recordNo);
}

void JobActions::ShowSelectedRecord() {
  base::Guarded(
      [&] {
        if (!list_.HasRows()) return;
        const JobRow* row = list_.Selected();
        if (row == nullptr) throw std::out_of_range("Invalid property value");
        const int number = RecordNumberOf(row->Number());
        LoadJobs(app_, list_);
        const long index = list_.IndexOfRecord(base::FromNumber(number));
        if (index == -1) {
          Ask(28, kit::kIconInfo, kit::kButtonsOk);
          FillListView(app_, list_);
        } else {
          jobstore::setRecordIndex(app_, index);
        }
      },
      frame::TraceFailure(app_, u"Error in  ShowSelectedRecord method Reason : "));
}

void JobActions::Sch_list_lv_KeyUp(int keyCode) {
  base::Guarded(
      [&] {
        if (!list_.HasRows()) return;
        const JobRow* row = list_.Selected();
        const bool automated = row != nullptr && IsAutomatedJob(*row);
        if (keyCode == 13 && list_.SelectedRow > 0 && !automated) {
          ShowSelectedRecord();
        } else if (keyCode == 46 && list_.SelectedRow > 0 && !automated) {
          DeleteRecord();
        } else if (keyCode == 46 && automated) {
          if (Ask(33, kit::kIconInfo, kit::kButtonsOkCancel) == kit::kResultOk) DeleteRecord();
        }
        if (!list_.HasRows()) SetButtons(list_, false);
      },
      frame::TraceFailure(app_, u"Error in keyup event of scheduler list Reason : "));
}

// --- Delete -------------------------------------------------------------------------

void JobActions::Pic_Delete_Click() {
  base::Guarded(
      [&] {
        app_.Store.BackupNowMode = false;
        if (list_.HasRows() && list_.SelectedRow >= 1) {
          const JobRow* row = list_.Selected();
          if (row == nullptr) throw std::out_of_range("Invalid property value");
          if (!IsAutomatedJob(*row)) {
            DeleteRecord();
          } else if (Ask(24, kit::kIconInfo, kit::kButtonsOkCancel) == kit::kResultOk) {
            DeleteRecord();
          }
        }
        if (!list_.HasRows()) SetButtons(list_, false);
      },
      frame::TraceFailure(app_, u"Error Reason :", Where(u"Pic_Delete_Click")));
}

void JobActions::DeleteRecord() {
  frame::WriteTrace(app_, u"Enter DeleteRecord");
  bool traceEnd = true;
  base::Guarded(
      [&] {
        if (list_.SelectedRow < 1) {
          if (list_.HasRows()) Ask(27, kit::kIconInfo, kit::kButtonsOk);
          return;
        }
        // The number is read before the reload: a job that moves in the list meanwhile
        // is still the right one.
        Text recordNo;
        if (const JobRow* row = list_.Selected()) {
          recordNo = row->Number();
          if (!row->Status().empty()) {
            if (!base::EqualsNoCase(row->Name(), kRestoreJob))
              Ask(296, kit::kIconWarning, kit::kButtonsOk);
            else
              prompts_.Ask(
                  u"The scheduled job can not be deleted as the restore operation is "
                  u"underway.",
                  kit::kIconWarning, kit::kButtonsOk);
            traceEnd = false;
            return;
          }
        }
        LoadJobs(app_, list_);
        FillListView(app_, list_);
        if (Ask(26, kit::kIconQuestion, kit::kButtonsYesNo) != kit::kResultYes) return;
        jobstore::RequireWritten(jobstore::DB_DeleteRecord(app_, recordNo, app_.ScheduleFilePath));
        LoadJobs(app_, list_);
        FillListView(app_, list_);
      },
      [&](const base::ErrorInfo& e) {
        frame::TraceError(app_, u"Unable to delete the record. Reason : ", e);
        prompts_.Ask(u"Unable to delete the record. Reason : " + e.description, kit::kIconError,
                     kit::kButtonsOk);
      });
  if (!traceEnd) return;
  CheckForRecords(app_, list_);
  frame::WriteTrace(app_, u"Exit DeleteRecord");
}

// --- Run now ------------------------------------------------------------------------

void JobActions::Pic_Imme_Click() {
  base::Guarded(
      [&] {
        if (list_.HasRows() && list_.SelectedRow > 0) {
          const JobRow* row = list_.Selected();
          if (row == nullptr) throw std::out_of_range("Invalid property value");
          if (!PluginRuleAllows(app_, prompts_, PluginPlace::RunNow, row->Name(), majorVersion_))
            return;
        }
        app_.Store.BackupNowMode = false;
        AskToEnableJobs(35);
        if (list_.HasRows() && list_.Selected() != nullptr)
          ScheduleImmediate(RecordNumberOf(list_.Selected()->Number()));
      },
      frame::TraceFailure(app_, u"Error Reason :", Where(u"Pic_Imme_Click")));
}

void JobActions::ScheduleImmediate(int recordNo) {
  base::Guarded(
      [&] {
        const JobRow* row = list_.Selected();
        if (row != nullptr && !row->Status().empty()) {
          Ask(37, kit::kIconWarning, kit::kButtonsOk);
          return;
        }
        LoadJobs(app_, list_);
        // One immediate job at a time, whichever set it is for.
        for (const JobRow& r : list_.Jobs()) {
          if (r.RecordNo() == u"0" || r.SortKey() == jobstore::kImmediateKey) {
            Ask(38, kit::kIconWarning, kit::kButtonsOk);
            return;
          }
        }
        // The list keeps rows only: the one record the new job copies is read again.
        const Text number = base::FromNumber(recordNo);
        std::optional<jobstore::ScheduleRecord> found;
        if (list_.IndexOfRecord(number) > 0) found = jobstore::FindScheduleRecord(app_, number);
        if (!found) throw std::out_of_range("Subscript out of range");
        const jobstore::ScheduleRecord& source = *found;

        // The date in the system's short form and the time as "hh:mm AMPM": not the
        // file's usual form, and the engine expects it so.
        const jobstore::LocaleFormats locale = jobstore::LocaleOf(app_);
        const base::DateTime now = app_.platform.clock->Now();
        const Text when = jobstore::FormatDate(now, locale.shortDateFormat, locale) + u" " +
                          jobstore::FormatDate(now, u"hh:mm AMPM", locale);
        jobstore::ScheduleRecord r;
        r.RecordNo = u"0";
        r.BackupSetName = source.BackupSetName;
        r.NextRun = when;
        r.CreatedOn = when;
        r.SortKey = jobstore::kImmediateKey;
        r.FrequencyIndex = u"1";
        r.Destination = source.Destination;
        r.JobKind = source.JobKind;
        r.Reserved14 = source.Reserved14;
        r.Compression = source.Compression;
        r.MailAddresses = source.MailAddresses;
        r.Reserved10 = source.Reserved10;
        r.Reserved11 = source.Reserved11;
        r.Reserved12 = source.Reserved12;
        r.Encryption = source.Encryption;
        r.MailMode = source.MailMode;
        r.UserName = source.UserName;
        r.Password = source.Password;
        jobstore::RequireWritten(jobstore::DB_WriteSchdata(app_, r, false));
        LoadJobs(app_, list_);
        FillListView(app_, list_);
        Ask(564, kit::kIconInfo, kit::kButtonsOk);
      },
      [&](const base::ErrorInfo& e) {
        frame::TraceError(app_, u"Unable to schedule the record immediately. Reason : ", e);
        prompts_.Ask(u"Unable to schedule the record immediately. Reason : " + e.description,
                     kit::kIconError, kit::kButtonsOk);
      });
}

// --- Stop -----------------------------------------------------------------------------

void JobActions::Pic_Sttrf_Click() {
  base::Guarded(
      [&] {
        Text status;
        if (list_.HasRows() && list_.SelectedRow >= 1) {
          const JobRow* row = list_.Selected();
          if (row == nullptr) throw std::out_of_range("Invalid property value");
          status = row->Status();
        }
        if (status == kStatusInProgress)
          StopTransfer();
        else
          Ask(36, kit::kIconInfo, kit::kButtonsOk);
      },
      frame::TraceFailure(app_, u"Error Reason :", Where(u"Pic_sttrf_Click")));
}

void JobActions::StopTransfer() {
  frame::WriteTrace(app_, u"Enter Stop Transfer");
  bool traceEnd = true;
  base::Guarded(
      [&] {
        const JobRow* row = list_.Selected();
        if (row == nullptr) return;
        if (row->Status() == kStatusInProgress &&
            Ask(29, kit::kIconQuestion, kit::kButtonsYesNo) != kit::kResultYes) {
          traceEnd = false;
          return;
        }
        const Text path = app_.CommonFile(u"scheduleData.txt");
        if (!app_.platform.fs->FileExists(path)) return;
        // A state other than "1" is a job that has just ended: nothing to stop.
        if (jobstore::ReadStateLine(app_, path) != u"1") return;
        jobstore::RequireWritten(jobstore::SetStateWord(app_, path, u"2"));
        Ask(30, kit::kIconInfo, kit::kButtonsOk);
        RefreshListView(app_, list_);
      },
      frame::TraceFailure(app_, u"Error in StopTransfer.Reason: "));
  if (traceEnd) frame::WriteTrace(app_, u"Exit StopTransfer");
}

void JobActions::Pic_Stcomp_Click() {
  base::Guarded(
      [&] {
        if (list_.HasRows() && list_.SelectedRow > 0) ClearStopTransfer();
      },
      frame::TraceFailure(app_, u"Error Reason :", Where(u"Pic_Stcomp_Click")));
}

void JobActions::ClearStopTransfer() {
  frame::WriteTrace(app_, u"Enter Clear Stop Transfer");
  base::Guarded(
      [&] {
        RefreshListView(app_, list_);
        const Text path = app_.CommonFile(u"scheduleData.txt");
        if (!app_.platform.fs->FileExists(path)) return;
        // The screen stands still meanwhile: a stop the engine did not take up in these
        // seconds is cleared by the monitor itself.
        app_.platform.clock->Sleep(kClearStopWaitMs);
        if (jobstore::ReadStateLine(app_, path) != u"2") return;
        jobstore::RequireWritten(jobstore::SetStateWord(app_, path, u"0"));
        RefreshListView(app_, list_);
      },
      frame::TraceFailure(app_, u"Error in Clear Stop completely, Reason:"));
  frame::WriteTrace(app_, u"Exit Clear Stop Transfer");
}

}  // namespace jobs
