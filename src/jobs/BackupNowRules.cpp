#include "jobs/BackupNowRules.h"

#include <stdexcept>

#include "base/Guarded.h"
#include "frame/Logs.h"
#include "frame/Settings.h"
#include "frame/Startup.h"
#include "jobs/PluginRules.h"
#include "jobstore/DBaction.h"
#include "kit/MesgBox.h"
#include "frame/MessageTable.h"

namespace jobs {

BackupNowWidths BackupNowColumnWidths(bool mirrorMode) {
  if (mirrorMode) return {5940, 0, 0, 0};
  return {2550, 3400, 0, 0};
}

jobstore::BackupNowOutcome PrepareBackupNow(frame::AppState& app, JobPrompts& prompts) {
  jobstore::BackupNowOutcome outcome = jobstore::BackupNowOutcome::Close;
  StoreMessagesTo messages(app, prompts);
  base::Guarded(
      [&] {
        jobstore::JobStoreState& store = app.Store;
        store.BackupSetList.clear();
        store.LstBackupSet.Clear();
        app.Jobs.clear();
        store.BackupNowMode = true;
        // The mode (MIRROR) is read by the list's filling, which follows at once.
        app.UserName = frame::ReadSetting(app, u"UserName");
        frame::SetBacksetFilePath(app);
        outcome = jobstore::FillBackupNowList(app);
        // The list's reader may have loaded the jobs in normal mode; the screen watches.
        store.BackupNowMode = true;
        if (outcome == jobstore::BackupNowOutcome::Show) store.LstBackupSet.SelectedRow = 1;
      },
      frame::TraceFailure(app, u"Could not continue the operation, Error, reason : "));
  return outcome;
}

BackupNowClickResult cmdBackupNow_Click(frame::AppState& app, JobPrompts& prompts,
                                        unsigned long majorVersion) {
  BackupNowClickResult result;
  StoreMessagesTo messages(app, prompts);
  base::Guarded(
      [&] {
        jobstore::JobStoreState& store = app.Store;
        jobstore::BackupNowList& list = store.LstBackupSet;
        const bool hasRows = !list.Rows.empty();
        store.ChosenSetName.clear();
        if (hasRows && list.SelectedRow != 0) {
          const jobstore::BackupNowRow* row = list.Selected();
          if (row == nullptr) throw std::out_of_range("Invalid property value");
          if (!PluginRuleAllows(app, prompts, PluginPlace::BackupNow, row->Name, majorVersion))
            return;
        }
        if (!hasRows) {
          prompts.Ask(frame::GetMessage(app, 4), kit::kIconInfo, kit::kButtonsOk);
          return;
        }
        if (frame::ReadSetting(app, u"DisableAllSchdulers") == u"1") {
          if (prompts.Ask(frame::GetMessage(app, 6), kit::kIconQuestion, kit::kButtonsYesNo) !=
              kit::kResultYes) {
            // Here, and only here, the jobs stay disabled and nothing is run.
            result.end = BackupNowEnd::Front;
            return;
          }
          frame::WriteSetting(app, u"DisableAllSchdulers", u"0");
        }
        if (list.SelectedRow == 0) return;
        const jobstore::BackupNowRow* row = list.Selected();
        if (row == nullptr) throw std::out_of_range("Invalid property value");
        if (row->Name.empty()) {
          prompts.Ask(frame::GetMessage(app, 3), kit::kIconInfo, kit::kButtonsOk);
          return;
        }
        store.ChosenSetName = row->Name;
        store.ChosenDestination =
            store.MirrorMode ? Text(jobstore::kDefaultDestination) : row->Destination;
        // This load either finds an immediate job of the set already in the file and
        // says so, or adds the record and says that.
        store.BackupNowMode = true;
        app.LastWriteFailure.clear();
        app.RecordCount = jobstore::DB_ReadSchdata(app, Text(), app.Jobs, true);
        // A record that could not be written was told as such: the screen stays for another try.
        const bool notWritten = !store.ImmediateFound && !app.LastWriteFailure.empty();
        result.recordAdded = !store.ImmediateFound && !notWritten;
        store.BackupSetList.clear();
        app.Jobs.clear();
        result.end = store.ImmediateFound || notWritten ? BackupNowEnd::Front : BackupNowEnd::Close;
      },
      frame::TraceFailure(app, u"Error Reason :",
                          u"in procedure cmdBackupNow_Click of Form frmBackupNow"));
  return result;
}

}  // namespace jobs
