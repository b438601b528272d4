#include "jobs/frmManageScheduledJobs.h"

#include "base/Guarded.h"
#include "frame/Logs.h"
#include "jobs/PluginRules.h"
#include "kit/Design.h"
#include "kit/ToolTips.h"
#include "kit/WindowLook.h"
#include "jobs/JobTips.h"

namespace jobs {

namespace {

constexpr char16_t kDisabled[] = u"_dis";

Text Where(const Text& procedure) {
  return u"in procedure " + procedure + u" of Form SchedulerFrm";
}

}  // namespace

ManageScheduledJobsResult ShowManageScheduledJobs(frame::AppState& app, kit::Ui& ui,
                                                  const ManageScheduledJobsArgs& args) {
  frmManageScheduledJobs form(app, ui, args.openEditor);
  ui.ShowModal(form);
  return {.shown = true};
}

frmManageScheduledJobs::frmManageScheduledJobs(frame::AppState& app, kit::Ui& ui,
                                               OpenEditorFn openEditor)
    : Form(u"frmManageScheduledJobs", {0, 0, 10125, 7800}, u"Manage Scheduled Jobs"),
      app_(app),
      ui_(ui),
      prompts_(app, ui, this),
      actions_(app, list_, prompts_, GetWinMajorVersion(app), std::move(openEditor)) {
  // Names for a screen reader, where a picture has no text of its own.
  Pic_Edit.SetCaption(u"Edit");
  Pic_Delete.SetCaption(u"Delete");
  Pic_Imme.SetCaption(u"Run now");
  Pic_Sttrf.SetCaption(u"Stop");
  Pic_Stcomp.SetCaption(u"Stop completely");
  Pic_Refresh.SetCaption(u"Refresh");
  Sch_Help.SetCaption(u"Help");
  Sch_Close.SetCaption(u"Close");
  Image3.SetCaption(u"Scheduled jobs");
  lblCaption.SetFontBold(true);
  lblCaption.SetForeColor(kit::kWhite);
  lblClose.SetCaption(u"");
  DTPicker.SetVisible(false);
  Sch_list_lv.SetFullRowSelect(true);
  Sch_list_lv.SetHideSelection(false);
  Sch_list_lv.SetToolTipText(u"Items scheduled for backup/restore");
  Sch_list_lv.SetRowOwner(this);
  // Escape and Alt+C close whatever has the focus.
  SetKeyPreview(true);
  list_.changed = [this] { Mirror(); };

  using S = frmManageScheduledJobs;
  using kit::KeyStroke;
  constexpr auto kAll = kit::PressButtons::AllButRight;
  SetTipTexts(kJobTips);
  kit::Design(*this, ui)
      .TabOrder({&Sch_list_lv, &Pic_Edit, &Pic_Delete, &Pic_Imme, &Pic_Sttrf, &Pic_Stcomp,
                 &Pic_Refresh, &SchcmdClose, &Sch_Help, &Sch_Close})
      // The picture buttons act when a button other than the right one comes up;
      // stop completely acts on a plain click.
      .Press(Pic_Edit, &S::Pic_Edit_Click, kAll)
      .Press(Pic_Delete, &S::Pic_Delete_Click, kAll)
      .Press(Pic_Imme, &S::Pic_Imme_Click, kAll)
      .Press(Pic_Sttrf, &S::Pic_Sttrf_Click, kAll)
      .Press(Pic_Refresh, &S::Pic_Refresh_Click, kAll)
      .Click(Pic_Stcomp, &S::Pic_Stcomp_Click)
      .Press(SchcmdClose, &S::SchcmdClose_Click, kAll)
      .Press(Sch_Close, &S::SchcmdClose_Click)
      .Press(lblClose, &S::SchcmdClose_Click)
      .Press(Sch_Help, &S::Sch_Help_Click)
      .Press(lblHelp, &S::Sch_Help_Click)
      .Tips({&Pic_Edit, &Pic_Delete, &Pic_Imme, &Pic_Sttrf, &Pic_Refresh, &SchcmdClose})
      .Key(KeyStroke::Up, kit::kEscape, &S::SchcmdClose_Click)
      .Key(KeyStroke::Up, kit::Alt('C'), &S::SchcmdClose_Click)
      .Key(KeyStroke::Down, kit::kEnter, &S::Form_EnterDown)
      .Drag({&lblCapbar, &lblCaption})
      .On(Timer1.on.Timer, &S::Timer1_Timer)
      .On(Sch_list_lv.on.RowClick, &S::Sch_list_lv_ItemClick)
      .On(Sch_list_lv.on.DblClick, &S::Sch_list_lv_DblClick)
      .On(Sch_list_lv.on.KeyUp, &S::Sch_list_lv_KeyUp)
      // The six picture buttons behave alike: pressed picture under the left button,
      // hover picture under the pointer and with the focus (the others back to normal);
      // over the close button or the form every picture goes back to normal.
      .Faces(pictures_)
      .Hover({&SchcmdClose});
}

// The table counts from 1 in the order of the button numbers; 0 keeps none.
void frmManageScheduledJobs::ResetButtonImages(int under) {
  const auto& all = pictures_.Entries();
  const bool known = under >= 1 && under <= static_cast<int>(all.size());
  pictures_.ShowNormalBut(known ? all[static_cast<size_t>(under) - 1].picture : nullptr);
}

void frmManageScheduledJobs::SetColumnHeaders() {
  Sch_list_lv.ClearColumns();
  for (const JobColumnSpec& c : kJobColumns) Sch_list_lv.AddColumn(c.caption, c.width);
}

int frmManageScheduledJobs::RowCount() const { return static_cast<int>(list_.Count()); }

// Sort-key terms: 0 is the row's text, the first column.
Text frmManageScheduledJobs::RowCell(int row1, int sub) const {
  const JobRow* row = list_.Row(row1);
  return row == nullptr ? Text() : row->Cell(sub + 1);
}

// The list view, the line under it and the buttons as the JobList says. The list view
// asks the JobList for its cells; it is told when the rows were rebuilt and which row is
// marked, in one piece of news.
void frmManageScheduledJobs::Mirror() {
  kit::ListView::Batch batch(Sch_list_lv);
  if (mirroredFills_ != list_.fills) {
    mirroredFills_ = list_.fills;
    Sch_list_lv.RowsChanged();
  }
  const bool marked = list_.markedRow >= 1 && list_.markedRow <= Sch_list_lv.Count();
  Sch_list_lv.SelectRow(marked ? static_cast<int>(list_.markedRow) : 0);
  lblMsgProgres.SetCaption(list_.lblMsgProgres);
  for (kit::Picture* b : {&Pic_Edit, &Pic_Delete, &Pic_Imme, &Pic_Sttrf}) {
    b->SetEnabled(list_.buttonsEnabled);
    const bool disabledPicture = base::EndsWith(b->PictureKey(), kDisabled);
    if (!list_.buttonsEnabled || disabledPicture) pictures_.Show(*b, kit::Face::Normal);
  }
}

void frmManageScheduledJobs::Form_Load() {
  SetPictureKey(u"bg_auto");
  SetColumnHeaders();
  kit::ApplySkin(SchcmdClose, kit::kSkinNormal);
  app_.Store.BackupNowMode = false;
  kit::SetFormFrame(*this, false);
  kit::clsRounder().RoundForm(*this, ui_.TwipsPerPixelX(), ui_.TwipsPerPixelY());
  ResetButtonImages(0);
  SetCaption(u"Manage Scheduled Jobs");
  if (app_.platform.system != nullptr)
    kit::PlaceBottomRight(*this, kit::GetWorkArea(*app_.platform.system, true));
  kit::ResizeControl(*this, ui_.TwipsPerPixelX());
}

void frmManageScheduledJobs::Form_Activate() {
  base::Guarded(
      [&] {
        ActivateJobList(app_, list_);
        // From the first activation on, column 1 bears its other caption.
        Sch_list_lv.SetColumnCaption(kColBackupset, kActivatedFirstCaption);
      },
      frame::TraceFailure(app_, u"Error Reason :", Where(u"Form_Activate")));
}

void frmManageScheduledJobs::Form_Unload(int&) {
  base::Guarded([&] { ui_.Tips().Remove(); },
                frame::TraceFailure(app_, u"Error Reason :", Where(u"Form_Unload")));
}

void frmManageScheduledJobs::Pic_Edit_Click() {
  pictures_.Show(Pic_Edit, kit::Face::Over);
  actions_.Pic_Edit_Click();
}

void frmManageScheduledJobs::Pic_Delete_Click() {
  pictures_.Show(Pic_Delete, kit::Face::Over);
  actions_.Pic_Delete_Click();
}

void frmManageScheduledJobs::Pic_Imme_Click() {
  pictures_.Show(Pic_Imme, kit::Face::Over);
  actions_.Pic_Imme_Click();
}

void frmManageScheduledJobs::Pic_Sttrf_Click() {
  pictures_.Show(Pic_Sttrf, kit::Face::Over);
  actions_.Pic_Sttrf_Click();
}

void frmManageScheduledJobs::Pic_Stcomp_Click() {
  actions_.Pic_Stcomp_Click();
  pictures_.Show(Pic_Stcomp, kit::Face::Normal);
}

void frmManageScheduledJobs::Pic_Refresh_Click() {
  pictures_.Show(Pic_Refresh, kit::Face::Over);
  base::Guarded(
      [&] {
        app_.Store.BackupNowMode = false;
        RefreshSteps(app_, list_, false);
      },
      frame::TraceFailure(app_, u"Error Reason :", Where(u"Pic_Refresh_Click")));
}

void frmManageScheduledJobs::Timer1_Timer() {
  base::Guarded([&] { RefreshSteps(app_, list_, true); },
                frame::TraceFailure(app_, u"Error Reason :", Where(u"Timer1_Timer")));
}

void frmManageScheduledJobs::Sch_list_lv_ItemClick(int row1) { ClickRow(app_, list_, row1); }

void frmManageScheduledJobs::Sch_list_lv_DblClick() { actions_.Sch_list_lv_DblClick(); }

void frmManageScheduledJobs::Sch_list_lv_KeyUp(kit::KeyArgs& args) {
  actions_.Sch_list_lv_KeyUp(args.keyCode);
}

void frmManageScheduledJobs::Sch_Help_Click() { kit::ShowHelpFile(app_, *this, kJobListHelpTopic); }

void frmManageScheduledJobs::SchcmdClose_Click() { CloseScreen(); }

// Enter closes only when the form itself receives it: no control has the focus.
void frmManageScheduledJobs::Form_EnterDown() {
  if (ActiveControl() == nullptr) CloseScreen();
}

void frmManageScheduledJobs::CloseScreen() { Unload(kit::UnloadMode::Code); }

}  // namespace jobs
