#include "jobs/frmDTEmail.h"

#include "base/Guarded.h"
#include "frame/Logs.h"
#include "jobstore/BackupSets.h"
#include "jobstore/DBaction.h"
#include "jobs/JobPrompts.h"
#include "jobs/PluginRules.h"
#include "jobstore/NextRun.h"
#include "kit/Design.h"
#include "kit/MesgBox.h"
#include "frame/MessageTable.h"
#include "kit/WindowLook.h"

namespace jobs {

DTEmailResult ShowDTEmail(frame::AppState& app, kit::Ui& ui, const DTEmailArgs& args) {
  DTEmailResult result;
  base::Guarded(
      [&] {
        frmDTEmail form(app, ui);
        form.Load();
        // The job list's opening: the global list and the temporary array from the
        // file, the selected job shown, then the screen.
        jobstore::DB_ReadSchdata(app, Text(), app.Jobs, false);
        LoadTempJobs(app, form.Editor());
        form.Sch_ShowSelectedRecord(args.recordNo);
        result.shown = true;
        ui.ShowModal(form);
      },
      frame::TraceFailure(app, u"Error Reason :", u"in procedure Form_Load of Form frmDTEmail"));
  return result;
}

frmDTEmail::frmDTEmail(frame::AppState& app, kit::Ui& ui)
    : Form(u"frmDTEmail", {0, 0, 10200, 7440}, u"Schedule"), app_(app), ui_(ui) {
  SetKeyPreview(true);
  SetStartUpPosition(kit::StartUpPosition::CenterScreen);
  lblCapbar.SetFontBold(true);
  Pic_Delete.SetCaption(u"Delete");
  Pic_Refresh.SetCaption(u"Refresh");
  Pic_Sttrf.SetCaption(u"Stop");
  DTPicker.SetFormat(kit::DateFormat::Time);
  DTPicker.SetUpDown(true);
  DTPCutoffTime.SetFormat(kit::DateFormat::Time);
  DTPCutoffTime.SetUpDown(true);
  DTPMonthly.SetFormat(kit::DateFormat::ShortDate);
  SchData_DTP.SetVisible(false);
  DTPickerTmp.SetVisible(false);
  Sch_Start4_Cancel.SetVisible(false);
  for (int i = 0; i < 7; ++i) {
    chkBox(i).SetCaption(kDayNames[i]);
    chkBox(i).SetVisible(false);
    lblDay(i).SetCaption(kDayNames[i]);
    DayButtonAt(i).SetCaption(kDayNames[i]);
  }

  using S = frmDTEmail;
  kit::Design(*this, ui)
      .TabOrder({&Sch_list_lv,     &Pic_Delete,           &Pic_Refresh,
                 &Pic_Sttrf,       &pic_Sun_Day,          &Pic_Mon_Day,
                 &Pic_Tue_Day,     &Pic_Wed_Day,          &Pic_Thu_Day,
                 &Pic_Fri_Day,     &Pic_Sat_Day,          &chkDaily,
                 &optHourly,       &optMonthly,           &chkImmediate,
                 &DTPicker,        &DTPMonthly,           &chkCutoffTime,
                 &DTPCutoffTime,   &ChkEmailNotification, &txtEmailNotification,
                 &optAlways,       &chkdesktop,           &chkMissedBackup,
                 &Sch_Start4_Next, &DTEmail_help,         &DTEmail_Close})
      .Press(Sch_Start4_Next, &S::Sch_Start4_Next_Click)
      .Press(DTEmail_Close, &S::Sch_Start4_Next_Click)
      .Press(lblClose, &S::Sch_Start4_Cancel_Click)
      .Press(DTEmail_help, &S::DTEmail_help_Click)
      .Press(Pic_Delete, &S::Pic_Delete_Click)
      .Press(Pic_Refresh, &S::Pic_Refresh_Click)
      .Press(Pic_Sttrf, &S::Pic_Sttrf_Click)
      .Press(pic_Sun_Day, &S::DayButton<0>)
      .Press(Pic_Mon_Day, &S::DayButton<1>)
      .Press(Pic_Tue_Day, &S::DayButton<2>)
      .Press(Pic_Wed_Day, &S::DayButton<3>)
      .Press(Pic_Thu_Day, &S::DayButton<4>)
      .Press(Pic_Fri_Day, &S::DayButton<5>)
      .Press(Pic_Sat_Day, &S::DayButton<6>)
      .On(chkBox(0).on.Click, &S::DayBox_Click<0>)
      .On(chkBox(1).on.Click, &S::DayBox_Click<1>)
      .On(chkBox(2).on.Click, &S::DayBox_Click<2>)
      .On(chkBox(3).on.Click, &S::DayBox_Click<3>)
      .On(chkBox(4).on.Click, &S::DayBox_Click<4>)
      .On(chkBox(5).on.Click, &S::DayBox_Click<5>)
      .On(chkBox(6).on.Click, &S::DayBox_Click<6>)
      .On(chkDaily.on.Click, &S::chkDaily_Click)
      .On(optHourly.on.Click, &S::optHourly_Click)
      .On(optMonthly.on.Click, &S::optMonthly_Click)
      .On(chkImmediate.on.Click, &S::chkImmediate_Click)
      .On(ChkEmailNotification.on.Click, &S::ChkEmailNotification_Click)
      .On(chkCutoffTime.on.Click, &S::chkCutoffTime_Click)
      .On(Sch_list_lv.on.ItemClick, &S::Sch_list_lv_ItemClick)
      .KeyWhile(Sch_list_lv, kit::KeyStroke::Down, kit::kDelete, &S::Sch_list_lv_Delete)
      .Key(kit::KeyStroke::Up, kit::kEscape, &S::Sch_Start4_Cancel_Click)
      .Key(kit::KeyStroke::Up, kit::Alt('C'), &S::Sch_Start4_Next_Click)
      .Drag({this, &lblCapbar})
      .Hover({&Sch_Start4_Next})
      // The pointer over a picture button shows its "_ove" picture, over the form all
      // go back to "_gen"; a disabled one keeps "_dis".
      .HoverFaces(pictures_);

  ed_.host.message = [this](const Text& text, int icon, int buttons) {
    return Ask(text, icon, buttons);
  };
  ed_.host.focusMail = [this] { txtEmailNotification.SetFocus(); };
  // The main button's save asks for the unload before its rows are written; the screen
  // goes when they are, since the job list under it reads the file once active again.
  ed_.host.unloadScreen = [this] {
    if (saving_)
      unloadAsked_ = true;
    else if (IsLoaded())
      Unload();
  };
  ed_.host.pluginRule = [this](const Text& setName) {
    UiPrompts prompts(app_, ui_, this);  // as the job list's edit applies it
    return PluginRuleAllows(app_, prompts, PluginPlace::Edit, setName, GetWinMajorVersion(app_));
  };
}

int frmDTEmail::Ask(const Text& text, int icon, int buttons) {
  return ui_.MessageBox(text, icon, buttons, app_.AppTitle);
}

kit::Picture& frmDTEmail::DayButtonAt(int index) {
  kit::Picture* const buttons[] = {&pic_Sun_Day, &Pic_Mon_Day, &Pic_Tue_Day, &Pic_Wed_Day,
                                   &Pic_Thu_Day, &Pic_Fri_Day, &Pic_Sat_Day};
  return *buttons[index];
}

// ---- Loading and showing -------------------------------------------------------

void frmDTEmail::Form_Load() {
  base::Guarded(
      [&] {
        ed_.TempJobs.clear();
        Sch_list_lv.ClearColumns();
        for (const auto& [caption, width] : kEditorColumns) Sch_list_lv.AddColumn(caption, width);
        Sch_list_lv.SetSortKey(5);
        Sch_list_lv.SetSorted(true);
        kit::ApplySkin(Sch_Start4_Next, kit::kSkinNormal);
        kit::SetFormFrame(*this, false);
        kit::clsRounder().RoundForm(*this, ui_.TwipsPerPixelX(), ui_.TwipsPerPixelY());
        lblCapbar.SetCaption(app_.AppTitle);
        ed_.bRowCleared = false;
        ed_.bInRowChange = false;
        bInternal_ = false;
        SetIconPath(u"qv_sch4");
        RefreshDayButtons();
        c_.timing.DTPicker = app_.platform.clock->Now().AddMinutes(1);
        c_.timing.DTPMonthly = app_.platform.clock->Now();
        jobstore::RecommendedTimeDefault(app_, c_.timing);
        jobstore::Sch_LoadMailidList(app_, nullptr);
        LoadEditorSettings(app_, c_);
        // The cut-off's click rule stays silent while the stored value is shown.
        loading_ = true;
        Push();
        loading_ = false;
        EnableChoices();
        kit::ResizeControl(*this, ui_.TwipsPerPixelX());
      },
      frame::TraceFailure(app_, u"Error Reason :", u"in procedure Form_Load of Form frmDTEmail"));
}

void frmDTEmail::Form_Activate() {
  if (shownOnce_) return;
  shownOnce_ = true;
  ed_.bRowCleared = false;
  bInternal_ = false;
  if (!app_.platform.fs->FileExists(app_.ScheduleFilePath)) {
    CheckForRecords();
    return;
  }
  nextJobIndex_ = jobstore::DB_ReadSchdata(app_, Text(), app_.Jobs, false);
  if (!ed_.bRowCleared) FillList();
  const bool any = app_.RecordCount != 0;
  SetPictureEnabled(Pic_Delete, u"del", any);
  SetPictureEnabled(Pic_Refresh, u"ref", any);
  SetPictureEnabled(Pic_Sttrf, u"stop", any);
}

void frmDTEmail::Form_Unload(int&) { ui_.Tips().Remove(); }

void frmDTEmail::SetPictureEnabled(kit::Picture& picture, const Text& stem, bool enabled) {
  picture.SetPictureKey(stem + (enabled ? u"_gen" : u"_dis"));
  picture.SetEnabled(enabled);
}

void frmDTEmail::CheckForRecords() {
  base::Guarded(
      [&] {
        if (app_.RecordCount != 0) return;
        SetPictureEnabled(Pic_Delete, u"del", false);
        SetPictureEnabled(Pic_Sttrf, u"stop", false);
      },
      [&](const base::ErrorInfo& e) {
        frame::WriteTrace(app_, u"Error in CheckForRecords method " + e.description);
      });
}

// ---- Controls and choices ------------------------------------------------------

void frmDTEmail::Gather() {
  auto& t = c_.timing;
  for (int i = 0; i < 7; ++i) t.chkBox[static_cast<size_t>(i)] = chkBox(i).Checked();
  t.chkDaily = chkDaily.Checked();
  t.optHourly = optHourly.Checked();
  t.optMonthly = optMonthly.Checked();
  t.chkImmediate = chkImmediate.Checked();
  t.DTPicker = DTPicker.Value();
  t.DTPMonthly = DTPMonthly.Value();
  c_.DTPickerEnabled = DTPicker.Enabled();
  c_.chkCutoffTime = chkCutoffTime.Checked();
  c_.DTPCutoffTime = DTPCutoffTime.Value();
  c_.DTPCutoffTimeEnabled = DTPCutoffTime.Enabled();
  c_.ChkEmailNotification = ChkEmailNotification.Checked();
  c_.txtEmailNotification = txtEmailNotification.GetText();
  c_.txtEmailEnabled = txtEmailNotification.Enabled();
  c_.optAlways = optAlways.Value();
  c_.optFailure = optFailure.Value();
  c_.chkdesktop = chkdesktop.Checked();
  c_.chkMissedBackup = chkMissedBackup.Checked();
}

void frmDTEmail::Push() {
  const bool was = bInternal_;
  bInternal_ = true;
  const auto& t = c_.timing;
  for (int i = 0; i < 7; ++i) chkBox(i).SetValue(t.chkBox[static_cast<size_t>(i)] ? 1 : 0);
  chkDaily.SetValue(t.chkDaily ? 1 : 0);
  chkDaily.SetCaption(DailyCaptionFor(c_));
  optHourly.SetValue(t.optHourly ? 1 : 0);
  optMonthly.SetValue(t.optMonthly ? 1 : 0);
  chkImmediate.SetValue(t.chkImmediate ? 1 : 0);
  DTPicker.SetValue(t.DTPicker);
  DTPMonthly.SetValue(t.DTPMonthly);
  DTPCutoffTime.SetValue(c_.DTPCutoffTime);
  DTPCutoffTime.SetEnabled(c_.DTPCutoffTimeEnabled);
  chkCutoffTime.SetValue(c_.chkCutoffTime ? 1 : 0);
  ChkEmailNotification.SetValue(c_.ChkEmailNotification ? 1 : 0);
  txtEmailNotification.SetText(c_.txtEmailNotification);
  txtEmailNotification.SetEnabled(c_.txtEmailEnabled);
  txtEmailNotification.SetBackColor(c_.txtEmailEnabled ? kMailEnabledColor : kMailDisabledColor);
  lblEx.SetEnabled(c_.txtEmailEnabled);
  optAlways.SetEnabled(c_.txtEmailEnabled);
  optFailure.SetEnabled(c_.txtEmailEnabled);
  if (c_.optAlways) optAlways.SetValue(true);
  if (c_.optFailure) optFailure.SetValue(true);
  if (!c_.optAlways && !c_.optFailure) {
    optAlways.SetValue(false);
    optFailure.SetValue(false);
  }
  chkdesktop.SetValue(c_.chkdesktop ? 1 : 0);
  chkMissedBackup.SetValue(c_.chkMissedBackup ? 1 : 0);
  bInternal_ = was;
}

void frmDTEmail::EnableChoices() {
  const ChoiceEnables e = EnablesFor(c_);
  DTPMonthly.SetEnabled(e.DTPMonthly);
  DTPicker.SetEnabled(e.DTPicker && c_.DTPickerEnabled);
  ChkEmailNotification.SetEnabled(e.ChkEmailNotification);
  chkdesktop.SetEnabled(e.chkdesktop);
  chkCutoffTime.SetEnabled(e.chkCutoffTime);
}

void frmDTEmail::RefreshDayButtons() {
  for (int i = 0; i < 7; ++i) {
    kit::Picture& button = DayButtonAt(i);
    button.SetPictureKey(!button.Enabled() ? u"dis" : chkBox(i).Checked() ? u"checked" : u"gen");
  }
}

void frmDTEmail::AfterChoice() {
  Push();
  EnableChoices();
  RefreshDayButtons();
  UpdateSelectedRow();
}

// ---- The list ------------------------------------------------------------------

void frmDTEmail::FillList() {
  base::IgnoreFailure([&] {
    kit::ListItem* selected = Sch_list_lv.SelectedItem();
    Text keep = selected ? selected->SubItem(6) : ed_.Identity.RecordNo;
    Sch_list_lv.ClearRows();
    for (const EditorRow& r : EditorRows(app_, ed_, nextJobIndex_)) {
      kit::ListItem& row = Sch_list_lv.AddRow(r.name, r.key);
      for (int i = 1; i <= static_cast<int>(r.cells.size()); ++i)
        row.SetSubItem(i, r.cells[static_cast<size_t>(i - 1)]);
    }
    SelectRecord(keep);
  });
}

void frmDTEmail::SelectRecord(const Text& recordNo) {
  if (kit::ListItem* row = Sch_list_lv.FindKey(u"QV_" + recordNo)) row->SetSelected(true);
}

int frmDTEmail::GetListNoFromRecNo(const Text& recordNo) {
  int place = 0;
  base::Guarded(
      [&] {
        for (int i = 1; i <= Sch_list_lv.Count(); ++i)
          if (Sch_list_lv.Item(i).SubItem(6) == recordNo) place = i;
      },
      [&](const base::ErrorInfo& e) {
        frame::WriteTrace(app_, u"Error in GetListNoFromRecNo method " + e.description);
      });
  return place;
}

void frmDTEmail::Sch_ShowSelectedRecord(const Text& recordNo) {
  if (!ShowRecordChoices(app_, ed_, recordNo, c_)) return;
  lblBkSetName.SetCaption(BackupSetLabel(ed_.Identity.BackupSetName));
  Push();
  EnableChoices();
  RefreshDayButtons();
}

void frmDTEmail::Sch_list_lv_ItemClick(kit::ListItem& item) {
  ed_.bInRowChange = true;
  const Text previous = ed_.Identity.RecordNo;
  const Text next = item.SubItem(6);
  Gather();
  bool left = true;
  if (!ed_.bRowCleared)
    left = SaveSelection(app_, ed_, c_, Text());
  else if (Sch_list_lv.Count() > 0)
    left = SaveSelection(app_, ed_, c_, previous);
  Push();
  if (!left) {
    // The old row stays selected until its choices pass.
    SelectRecord(previous);
    ed_.bInRowChange = false;
    return;
  }
  ed_.bRowCleared = false;
  FillList();
  Sch_ShowSelectedRecord(next);
  SelectRecord(next);
  if (kit::ListItem* row = Sch_list_lv.FindKey(u"QV_" + next)) row->EnsureVisible();
  ed_.bInRowChange = false;
}

void frmDTEmail::UpdateSelectedRow() {
  base::IgnoreFailure([&] {
    long long number = 0;
    base::ParseLong(ed_.Identity.RecordNo, number);
    if (Sch_list_lv.Count() == 0 || number <= 0 ||
        ed_.Identity.RecordNo == CurrentJobNo(app_, nextJobIndex_))
      return;
    const int place = GetListNoFromRecNo(ed_.Identity.RecordNo);
    if (place == 0) return;
    jobstore::ScheduleChoice choice = c_.timing;
    kit::ListItem& row = Sch_list_lv.Item(place);
    row.SetSubItem(8, jobstore::DayNamesFromDays(jobstore::GetDayChkBoxCaption(choice)));
    row.SetSubItem(1, ScreenDate(app_, jobstore::Sch_Build_Date(app_, choice)));
  });
}

// ---- Rules of the choices ------------------------------------------------------

void frmDTEmail::FrequencyRule(FrequencyControl which, const Text& procedure) {
  if (bInternal_) return;
  base::Guarded(
      [&] {
        Gather();
        FrequencyClick(app_, ed_, c_, which);
        AfterChoice();
      },
      frame::TraceFailure(app_, u"Error Reason :", procedure));
}

void frmDTEmail::chkImmediate_Click() {
  FrequencyRule(FrequencyControl::Immediate, u"in procedure Pic_Imme_Click of Form SchedulerFrm");
}
void frmDTEmail::optHourly_Click() {
  FrequencyRule(FrequencyControl::Hourly, u"in procedure optHourly_Click from form frmDTEmail");
}
void frmDTEmail::optMonthly_Click() {
  FrequencyRule(FrequencyControl::Monthly, u"in procedure optmonthly_Click from form frmDTEmail");
}

void frmDTEmail::chkDaily_Click() {
  if (bInternal_) return;
  Gather();
  DailyClick(ed_, c_);
  AfterChoice();
}

void frmDTEmail::chkBox_Click(int index) {
  if (bInternal_) return;
  Gather();
  DayClick(ed_, c_);
  AfterChoice();
}

void frmDTEmail::DayButton_Click(int index) {
  chkBox(index).SetValue(chkBox(index).Checked() ? 0 : 1);
  RefreshDayButtons();
}

void frmDTEmail::ChkEmailNotification_Click() {
  if (bInternal_) return;
  Gather();
  MailClick(app_, c_);
  Push();
}

void frmDTEmail::chkCutoffTime_Click() {
  if (bInternal_ || loading_) return;
  Gather();
  CutoffClick(app_, ed_, c_);
  Push();
}

// ---- Keys and buttons ----------------------------------------------------------

void frmDTEmail::Sch_list_lv_Delete() {
  kit::ListItem* row = Sch_list_lv.SelectedItem();
  if (!row) return;
  const Text name = row->GetText();
  if (!row->SubItem(3).empty()) {
    Ask(frame::GetMessage(app_, base::EqualsNoCase(name, u"Restore Itemset") ? 297 : 296),
        kit::kIconWarning, kit::kButtonsOk);
    return;
  }
  if (Ask(frame::GetMessage(app_, 298), kit::kIconQuestion, kit::kButtonsYesNo) != kit::kResultYes)
    return;
  if (ScheduleRecord* temp = TempRow(ed_, row->SubItem(6))) temp->Days = kDeleted;
  WriteTempRows(app_, ed_);
  LoadTempJobs(app_, ed_);
  FillList();
}

bool frmDTEmail::ShowSelectedRecord() {
  bool found = false;
  base::Guarded(
      [&] {
        kit::ListItem* row = Sch_list_lv.SelectedItem();
        if (!row || row->SubItem(6).empty()) return;
        jobstore::DB_ReadSchdata(app_, Text(), app_.Jobs, false);
        const long index = jobstore::GetIndexFromRecordNo(app_, row->SubItem(6));
        if (index == -1) {
          Ask(frame::GetMessage(app_, 300), kit::kIconInfo, kit::kButtonsOk);
          FillList();
          return;
        }
        jobstore::setRecordIndex(app_, index);
        found = true;
      },
      [&](const base::ErrorInfo& e) {
        frame::WriteTrace(app_, u"Error in  ShowSelectedRecord method " + e.description);
      });
  return found;
}

void frmDTEmail::DeleteRecord() {
  frame::WriteTrace(app_, u"Enter DeleteRecord");
  kit::ListItem* row = Sch_list_lv.SelectedItem();
  if (!row) {
    if (Sch_list_lv.Count() > 0) Ask(frame::GetMessage(app_, 299), kit::kIconInfo, kit::kButtonsOk);
    CheckForRecords();
    return;
  }
  const Text recordNo = row->SubItem(6);
  if (!row->SubItem(3).empty()) {
    Ask(base::EqualsNoCase(row->GetText(), kRestoreSet) ? Text(kDeleteRestoreUnderway)
                                                        : frame::GetMessage(app_, 296),
        kit::kIconWarning, kit::kButtonsOk);
    return;
  }
  nextJobIndex_ = jobstore::DB_ReadSchdata(app_, Text(), app_.Jobs, false);
  FillList();
  if (Ask(frame::GetMessage(app_, 26), kit::kIconQuestion, kit::kButtonsYesNo) == kit::kResultYes) {
    // The write traces its own failure; the list is read again either way.
    static_cast<void>(jobstore::DB_DeleteRecord(app_, recordNo, app_.ScheduleFilePath));
    nextJobIndex_ = jobstore::DB_ReadSchdata(app_, Text(), app_.Jobs, false);
    // Only the global list is read again: the edits of the other rows wait in the
    // temporary array for the main button.
    ForgetDeletedJob(app_, ed_, recordNo);
    FillList();
  }
  CheckForRecords();
  frame::WriteTrace(app_, u"Exit DeleteRecord");
}

void frmDTEmail::Pic_Delete_Click() {
  base::Guarded(
      [&] {
        kit::ListItem* row = Sch_list_lv.SelectedItem();
        if (row && row->GetText() == kAutomatedSet &&
            Ask(frame::GetMessage(app_, 326), kit::kIconQuestion, kit::kButtonsOkCancel) !=
                kit::kResultOk)
          return;
        DeleteRecord();
        ClearDays(c_);
        Push();
        RefreshDayButtons();
        CheckForRecords();
      },
      frame::TraceFailure(app_, u"Error Reason :",
                          u"in procedure Pic_Delete_Click of Form SchedulerFrm"));
}

void frmDTEmail::Pic_Refresh_Click() {
  base::Guarded(
      [&] {
        nextJobIndex_ = jobstore::DB_ReadSchdata(app_, Text(), app_.Jobs, false);
        FillList();
        CheckForRecords();
      },
      frame::TraceFailure(app_, u"Error Reason :",
                          u"in procedure Pic_Refresh_Click of Form SchedulerFrm"));
}

void frmDTEmail::Pic_Sttrf_Click() {
  base::Guarded(
      [&] {
        if (Sch_list_lv.SelectedItem() && !ShowSelectedRecord()) return;
        kit::ListItem* row = Sch_list_lv.SelectedItem();
        if (row && row->SubItem(3) == u"In Progress") {
          StopTransfer();
          return;
        }
        const bool restore = row && base::EqualsNoCase(row->GetText(), kRestoreSet);
        Ask(frame::GetMessage(app_, restore ? 330 : 329), kit::kIconInfo, kit::kButtonsOk);
      },
      frame::TraceFailure(app_, u"Error Reason :",
                          u"in procedure Pic_sttrf_Click of Form SchedulerFrm"));
}

void frmDTEmail::StopTransfer() {
  frame::WriteTrace(app_, u"Enter Stop Transfer");
  Pic_Refresh_Click();
  kit::ListItem* row = Sch_list_lv.SelectedItem();
  if (row && row->SubItem(3) == u"In Progress") {
    if (Ask(kStopQuestion, kit::kIconQuestion, kit::kButtonsYesNo) == kit::kResultYes &&
        jobstore::ReadStateLine(app_, app_.ScheduleFilePath) == u"1" &&
        jobstore::SetStateWord(app_, app_.ScheduleFilePath, u"2")) {
      Ask(frame::GetMessage(app_, 305), kit::kIconInfo, kit::kButtonsOk);
      Pic_Refresh_Click();
    }
  }
  frame::WriteTrace(app_, u"Exit StopTransfer");
}

void frmDTEmail::Sch_Start4_Next_Click() {
  Gather();
  saving_ = true;
  unloadAsked_ = false;
  const SaveOutcome saved = jobs::Sch_Start4_Next_Click(app_, ed_, c_);
  saving_ = false;
  if (saved.writeFailed) unloadAsked_ = false;  // nothing was saved: the screen stays
  if (unloadAsked_ && IsLoaded()) Unload();
  if (IsLoaded()) Push();
}

void frmDTEmail::Sch_Start4_Cancel_Click() {
  base::Guarded([&] { Unload(); },
                frame::TraceFailure(app_, u"Error Reason :",
                                    u"in procedure Sch_Start4_Cancel_Click of Form frmDTEmail"));
}

void frmDTEmail::DTEmail_help_Click() { kit::ShowHelpFile(app_, *this, kHelpTopic); }

}  // namespace jobs
