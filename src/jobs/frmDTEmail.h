#pragma once
// The schedule editor: the list of scheduled jobs beside the schedule of the selected
// one. Selecting a row shows its choices, a change of a choice shows at once in the
// row, and the main button saves every row. The rules without the form are in
// ScheduleEditorModel (checks and saving) and DTEmailRules (the click rules); the
// form copies its controls into EditorChoices, runs a rule and copies them back.
#include "frame/AppState.h"
#include "jobs/DTEmailRules.h"
#include "jobs/ScheduleEditorModel.h"
#include "kit/Controls.h"
#include "kit/Design.h"
#include "kit/Form.h"
#include "kit/ListView.h"
#include "kit/Ui.h"

namespace jobs {

// Opens the editor modally on the row whose "No." is `recordNo`, as the job list does.
struct DTEmailArgs {
  base::Text recordNo;
};
struct DTEmailResult {
  bool shown = false;  // false when loading the screen failed (traced)
};
DTEmailResult ShowDTEmail(frame::AppState& app, kit::Ui& ui, const DTEmailArgs& args);

class frmDTEmail : public kit::Form {
 public:
  frmDTEmail(frame::AppState& app, kit::Ui& ui);

  ScheduleEditor& Editor() { return ed_; }
  const EditorChoices& Choices() const { return c_; }
  long NextJobIndex() const { return nextJobIndex_; }
  bool InternalChange() const { return bInternal_; }

  // Public operations.
  void Sch_ShowSelectedRecord(const Text& recordNo);
  void StopTransfer();

  // Handlers, under the design's names.
  void Sch_list_lv_ItemClick(kit::ListItem& item);
  void Sch_list_lv_Delete();
  void chkImmediate_Click();
  void optHourly_Click();
  void optMonthly_Click();
  void chkDaily_Click();
  void chkBox_Click(int index);
  template <int D>
  void DayBox_Click() {
    chkBox_Click(D);
  }
  // The seven day buttons are one button told once: each toggles its day.
  void DayButton_Click(int index);
  template <int D>
  void DayButton() {
    DayButton_Click(D);
  }
  void ChkEmailNotification_Click();
  void chkCutoffTime_Click();
  void Pic_Delete_Click();
  void Pic_Refresh_Click();
  void Pic_Sttrf_Click();
  void Sch_Start4_Next_Click();
  void Sch_Start4_Cancel_Click();
  void DTEmail_help_Click();

  // ---- Controls, in twips ----------------------------------------------------------
  kit::Label lblCapbar{*this, u"lblCapbar", {180, 105, 7600, 300}};
  kit::Label lblClose{*this, u"lblClose", {8100, 105, 700, 255}, u"Cancel"};
  kit::Label DTEmail_help{*this, u"DTEmail_help", {8850, 105, 600, 255}, u"Help"};
  kit::Label DTEmail_Close{*this, u"DTEmail_Close", {9500, 105, 600, 255}, u"Close"};
  kit::Label lblListTitle{
      *this, u"lblListTitle", {180, 570, 6000, 255}, u"Items scheduled for backup/restore"};
  kit::ListView Sch_list_lv{*this, u"Sch_list_lv", {180, 870, 9840, 2040}};
  kit::Picture Pic_Delete{*this, u"Pic_Delete", {180, 3000, 480, 480}, u"del_gen"};
  kit::Picture Pic_Refresh{*this, u"Pic_Refresh", {720, 3000, 480, 480}, u"ref_gen"};
  kit::Picture Pic_Sttrf{*this, u"Pic_Sttrf", {1260, 3000, 480, 480}, u"stop_gen"};
  kit::Label lblBkSetName{*this, u"lblBkSetName", {1920, 3120, 8100, 255}};

  kit::ControlArray<kit::CheckBox> chkBox{*this,
                                          u"chkBox",
                                          {{180, 3660, 1300, 255},
                                           {1560, 3660, 1300, 255},
                                           {2940, 3660, 1300, 255},
                                           {4320, 3660, 1300, 255},
                                           {5700, 3660, 1300, 255},
                                           {7080, 3660, 1300, 255},
                                           {8460, 3660, 1300, 255}}};
  kit::Picture pic_Sun_Day{*this, u"pic_Sun_Day", {180, 3660, 240, 240}, u"gen"};
  kit::Picture Pic_Mon_Day{*this, u"Pic_Mon_Day", {1560, 3660, 240, 240}, u"gen"};
  kit::Picture Pic_Tue_Day{*this, u"Pic_Tue_Day", {2940, 3660, 240, 240}, u"gen"};
  kit::Picture Pic_Wed_Day{*this, u"Pic_Wed_Day", {4320, 3660, 240, 240}, u"gen"};
  kit::Picture Pic_Thu_Day{*this, u"Pic_Thu_Day", {5700, 3660, 240, 240}, u"gen"};
  kit::Picture Pic_Fri_Day{*this, u"Pic_Fri_Day", {7080, 3660, 240, 240}, u"gen"};
  kit::Picture Pic_Sat_Day{*this, u"Pic_Sat_Day", {8460, 3660, 240, 240}, u"gen"};
  kit::ControlArray<kit::Label> lblDay{*this,
                                       u"lblDay",
                                       {{480, 3660, 1000, 255},
                                        {1860, 3660, 1000, 255},
                                        {3240, 3660, 1000, 255},
                                        {4620, 3660, 1000, 255},
                                        {6000, 3660, 1000, 255},
                                        {7380, 3660, 1000, 255},
                                        {8760, 3660, 1000, 255}}};

  kit::CheckBox chkDaily{*this, u"chkDaily", {180, 4050, 2200, 255}, kDailyCaption};
  kit::CheckBox optHourly{*this, u"optHourly", {2520, 4050, 2000, 255}, u"Hourly Schedule"};
  kit::CheckBox optMonthly{*this, u"optMonthly", {4620, 4050, 2000, 255}, u"Monthly Schedule"};
  kit::CheckBox chkImmediate{
      *this, u"chkImmediate", {6720, 4050, 3300, 255}, u"Start the job immediately"};
  kit::Label lblStartTime{*this, u"lblStartTime", {180, 4500, 1200, 255}, u"Start time"};
  kit::DatePicker DTPicker{*this, u"DTPicker", {1440, 4440, 1560, 330}};
  kit::Label lblMonthDay{*this, u"lblMonthDay", {3240, 4500, 1300, 255}, u"Day of month"};
  kit::DatePicker DTPMonthly{*this, u"DTPMonthly", {4620, 4440, 1800, 330}};
  kit::DatePicker SchData_DTP{*this, u"SchData_DTP", {0, 0, 1500, 300}};
  kit::DatePicker DTPickerTmp{*this, u"DTPickerTmp", {0, 0, 1500, 300}};
  kit::CheckBox chkCutoffTime{*this, u"chkCutoffTime", {6720, 4500, 1500, 255}, u"Cut-off Time"};
  kit::DatePicker DTPCutoffTime{*this, u"DTPCutoffTime", {8280, 4440, 1740, 330}};

  kit::CheckBox ChkEmailNotification{
      *this, u"ChkEmailNotification", {180, 5010, 2200, 255}, u"Email Notification"};
  kit::TextBox txtEmailNotification{*this, u"txtEmailNotification", {2520, 4965, 7500, 330}};
  kit::Label lblEx{
      *this,
      u"lblEx",
      {2520, 5340, 7500, 255},
      u"Separate addresses with \",\" or \";\", e.g. jsmith@example.com;admin@example.com"};
  kit::OptionButton optAlways{*this, u"optAlways", {2520, 5640, 2000, 255}, u"Notify always"};
  kit::OptionButton optFailure{*this, u"optFailure", {4620, 5640, 2200, 255}, u"Notify on failure"};
  kit::CheckBox chkdesktop{*this,
                           u"chkdesktop",
                           {180, 6060, 9840, 255},
                           u"Notify me on the desktop when the scheduled job is complete"};
  kit::CheckBox chkMissedBackup{
      *this,
      u"chkMissedBackup",
      {180, 6390, 9840, 255},
      u"Start the missed scheduled backup when the computer is turned on"};

  kit::PictureButton Sch_Start4_Next{*this, u"Sch_Start4_Next", {8520, 6900, 1500, 345}, u"&Close"};
  kit::PictureButton Sch_Start4_Cancel{*this, u"Sch_Start4_Cancel", {6900, 6900, 1500, 345}};

 protected:
  void Form_Load() override;
  void Form_Activate() override;
  void Form_Unload(int& cancel) override;

 private:
  // Controls into the choices and back; the way back is a program change (bInternal).
  void Gather();
  void Push();
  void AfterChoice();
  void FrequencyRule(FrequencyControl which, const Text& procedure);

  void FillList();
  int GetListNoFromRecNo(const Text& recordNo);
  void CheckForRecords();
  bool ShowSelectedRecord();
  void DeleteRecord();
  void UpdateSelectedRow();
  void EnableChoices();
  void RefreshDayButtons();
  void SelectRecord(const Text& recordNo);
  kit::Picture& DayButtonAt(int index);
  void SetPictureEnabled(kit::Picture& picture, const Text& stem, bool enabled);
  int Ask(const Text& text, int icon, int buttons);

  frame::AppState& app_;
  kit::Ui& ui_;
  ScheduleEditor ed_;
  EditorChoices c_;
  bool bInternal_ = false;
  bool loading_ = false;
  bool shownOnce_ = false;
  bool saving_ = false;       // the main button's save is under way
  bool unloadAsked_ = false;  // and asked for the unload
  long nextJobIndex_ = 0;
  // The picture buttons follow the pointer alone ("del" gives del_gen, del_ove and
  // del_dis; they have no pressed face).
  kit::PictureFaces pictures_{
      {{&Pic_Delete, u"del"}, {&Pic_Refresh, u"ref"}, {&Pic_Sttrf, u"stop"}},
      {u"_gen", u"_ove", u"_gen", u"_dis"}};
};

}  // namespace jobs
