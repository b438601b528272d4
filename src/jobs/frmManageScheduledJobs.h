#pragma once
// Manage Scheduled Jobs: every job of scheduleData.txt with its next transfer and
// state, and the buttons that edit, delete, run now and stop a job. The list and the
// actions are the form-free JobListRules and JobActions; this form shows a JobList and
// passes the user's input on.
#include "frame/AppState.h"
#include "jobs/JobActions.h"
#include "jobs/JobListRules.h"
#include "jobs/JobPrompts.h"
#include "kit/Controls.h"
#include "kit/Design.h"
#include "kit/Form.h"
#include "kit/ListView.h"
#include "kit/Ui.h"

namespace jobs {

// What the program hands to the screen: the editor, which is another screen's.
struct ManageScheduledJobsArgs {
  OpenEditorFn openEditor;
};
struct ManageScheduledJobsResult {
  bool shown = false;
};
// Opens the screen modally; returns once it is closed.
ManageScheduledJobsResult ShowManageScheduledJobs(frame::AppState& app, kit::Ui& ui,
                                                  const ManageScheduledJobsArgs& args);

inline constexpr unsigned kJobListRefreshMs = 60000;
inline constexpr char16_t kJobListHelpTopic[] =
    u"QVWINHelp.chm::/Corvane_Tray_Icon/Using_Tray_Icon.htm";

// The list view holds no rows of its own: it asks the JobList for the cells it draws, so
// a schedule of many thousand jobs is held once by the screen.
class frmManageScheduledJobs : public kit::Form, private kit::ListRows {
 public:
  frmManageScheduledJobs(frame::AppState& app, kit::Ui& ui, OpenEditorFn openEditor = {});

  // The handlers, under the design's names.
  void Pic_Edit_Click();
  void Pic_Delete_Click();
  void Pic_Imme_Click();
  void Pic_Sttrf_Click();
  void Pic_Stcomp_Click();
  void Pic_Refresh_Click();
  void Sch_Help_Click();
  void SchcmdClose_Click();
  void Form_EnterDown();
  void Timer1_Timer();
  void Sch_list_lv_ItemClick(int row1);
  void Sch_list_lv_DblClick();
  void Sch_list_lv_KeyUp(kit::KeyArgs& args);
  // The pictures of the buttons: all to normal but button `under` (1 edit, 3 delete,
  // 4 run now, 5 stop, 6 refresh; 0 none), which the caller lights itself.
  void ResetButtonImages(int under);

  const JobList& List() const { return list_; }
  JobActions& Actions() { return actions_; }

  kit::Label lblCapbar{*this, u"lblCapbar", {0, 0, 10125, 510}};
  kit::Label lblCaption{*this, u"lblCaption", {180, 120, 6000, 300}, u"Manage Scheduled Jobs"};
  kit::Picture Sch_Help{*this, u"Sch_Help", {9360, 135, 240, 240}, u"qv_small_help"};
  kit::Picture Sch_Close{*this, u"Sch_Close", {9660, 135, 240, 240}, u"qv_small_close"};
  kit::Picture Image3{*this, u"Image3", {300, 660, 480, 480}, u"qv_backup_imm"};
  kit::Label lblMess1{*this,
                      u"lblMess1",
                      {900, 690, 8900, 255},
                      u"Your scheduled backup and restore jobs, with the date of each job's next "
                      u"transfer."};
  kit::Picture imgibArrow1{*this, u"imgibArrow1", {900, 960, 120, 120}};
  kit::Label Label8{*this,
                    u"Label8",
                    {1080, 930, 8700, 255},
                    u"Select a job to edit, delete, run now or stop it."};
  kit::ListView Sch_list_lv{*this, u"Sch_list_lv", {300, 1260, 9525, 4140}};
  kit::Label lblMsgProgres{*this, u"lblMsgProgres", {300, 5490, 9525, 255}};
  kit::Picture Pic_Edit{*this, u"Pic_Edit", {300, 5940, 480, 480}, u"edit_gen"};
  kit::Picture Pic_Delete{*this, u"Pic_Delete", {900, 5940, 480, 480}, u"del_gen"};
  kit::Picture Pic_Imme{*this, u"Pic_Imme", {1500, 5940, 480, 480}, u"imme_gen"};
  kit::Picture Pic_Sttrf{*this, u"Pic_Sttrf", {2100, 5940, 480, 480}, u"stop_gen"};
  kit::Picture Pic_Stcomp{*this, u"Pic_Stcomp", {2700, 5940, 480, 480}, u"stcomp_gen"};
  kit::Picture Pic_Refresh{*this, u"Pic_Refresh", {3300, 5940, 480, 480}, u"ref_gen"};
  kit::Label lblHelp{*this, u"lblHelp", {300, 7140, 1200, 255}, u"&Help"};
  kit::Label lblClose{*this, u"lblClose", {1500, 7140, 1200, 255}};
  kit::PictureButton SchcmdClose{*this, u"SchcmdClose", {8475, 7050, 1350, 345}, u"&Close"};
  kit::DatePicker DTPicker{*this, u"DTPicker", {0, 0, 0, 0}};
  kit::Timer Timer1{*this, u"Timer1", kJobListRefreshMs};

 protected:
  void Form_Load() override;
  void Form_Activate() override;
  void Form_Unload(int& cancel) override;

 private:
  int RowCount() const override;
  Text RowCell(int row1, int sub) const override;
  void SetColumnHeaders();
  void Mirror();
  void CloseScreen();

  frame::AppState& app_;
  kit::Ui& ui_;
  JobList list_;
  UiPrompts prompts_;
  JobActions actions_;
  unsigned long mirroredFills_ = 0;
  // The picture buttons in the order ResetButtonImages numbers them ("edit" gives
  // edit_gen, edit_ove, edit_dwn, edit_dis).
  kit::PictureFaces pictures_{{{&Pic_Edit, u"edit"},
                               {&Pic_Stcomp, u"stcomp"},
                               {&Pic_Delete, u"del"},
                               {&Pic_Imme, u"imme"},
                               {&Pic_Sttrf, u"stop"},
                               {&Pic_Refresh, u"ref"}},
                              {u"_gen", u"_ove", u"_dwn", u"_dis"}};
};

}  // namespace jobs
