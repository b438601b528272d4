#pragma once
// Backup Now: the sets that may be run at once, one of which the user turns into an
// immediate job. The menu's collection and the action are the form-free BackupNowRules;
// the rows are the job store's LstBackupSet, whose selected row is this form's
// nSelectedRow.
#include "frame/AppState.h"
#include "jobs/BackupNowRules.h"
#include "jobs/JobPrompts.h"
#include "kit/Controls.h"
#include "kit/Form.h"
#include "kit/ListView.h"
#include "kit/Ui.h"

namespace jobs {

// mnuBackupNow_Click: collects the sets by the MIRROR setting and shows the screen
// modally when there are any (otherwise the list's message, or nothing at all).
struct BackupNowArgs {};
struct BackupNowResult {
  jobstore::BackupNowOutcome outcome = jobstore::BackupNowOutcome::Close;
  bool shown = false;
};
BackupNowResult ShowBackupNow(frame::AppState& app, kit::Ui& ui, const BackupNowArgs& args);

class frmBackupNow : public kit::Form {
 public:
  frmBackupNow(frame::AppState& app, kit::Ui& ui);

  void cmdBackupNow_Click();
  void cmdClose_Click();
  void LstBackupSet_ItemClick(kit::ListItem& item);

  kit::Label lblCapbar{*this, u"lblCapbar", {0, 0, 6900, 510}};
  kit::Label lblTitle{*this, u"lblTitle", {180, 120, 4500, 300}, u"Backup Now"};
  kit::Label lblClose{*this, u"lblClose", {6480, 105, 270, 270}, u"X"};
  kit::Picture imgBackupNow{*this, u"imgBackupNow", {300, 720, 480, 480}, u"qv_backup_imm"};
  kit::Label Label1{*this,
                    u"Label1",
                    {960, 780, 5640, 450},
                    u"Select the Backup set that you want to back up now."};
  kit::ListView LstBackupSet{*this, u"LstBackupSet", {300, 1380, 6300, 2400}};
  kit::PictureButton cmdBackupNow{*this, u"cmdBackupNow", {3720, 4020, 1350, 345}, u"&Backup Now"};
  kit::PictureButton cmdClose{*this, u"cmdClose", {5250, 4020, 1350, 345}, u"&Close"};

 protected:
  void Form_Load() override;
  void Form_Activate() override;
  void Form_Unload(int& cancel) override;

 private:
  void FillRows();

  frame::AppState& app_;
  kit::Ui& ui_;
  UiPrompts prompts_;
};

}  // namespace jobs
