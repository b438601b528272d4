#include "jobs/frmBackupNow.h"

#include "base/Guarded.h"
#include "frame/Logs.h"
#include "jobs/PluginRules.h"
#include "kit/Design.h"
#include "kit/ToolTips.h"
#include "jobstore/DBaction.h"
#include "kit/WindowLook.h"
#include "jobs/JobTips.h"

namespace jobs {

namespace {

constexpr kit::Color kHeaderColor = 0x00756C0D;

Text Where(const Text& procedure) {
  return u"in procedure " + procedure + u" of Form frmBackupNow";
}

}  // namespace

BackupNowResult ShowBackupNow(frame::AppState& app, kit::Ui& ui, const BackupNowArgs&) {
  UiPrompts prompts(app, ui);
  BackupNowResult result{.outcome = PrepareBackupNow(app, prompts)};
  if (result.outcome == jobstore::BackupNowOutcome::Show) {
    frmBackupNow form(app, ui);
    ui.ShowModal(form);
    result.shown = true;
  }
  return result;
}

frmBackupNow::frmBackupNow(frame::AppState& app, kit::Ui& ui)
    : Form(u"frmBackupNow", {0, 0, 6900, 4650}, u"Backup Now"),
      app_(app),
      ui_(ui),
      prompts_(app, ui, this) {
  SetKeyPreview(true);
  // The header band in the colour of the job screens' skin, under the white title.
  lblCapbar.SetBackColor(kHeaderColor);
  lblTitle.SetFontBold(true);
  lblTitle.SetForeColor(kit::kWhite);
  lblClose.SetForeColor(kit::kWhite);
  lblClose.SetCaption(u"X");
  imgBackupNow.SetCaption(u"Backup Now");
  LstBackupSet.SetFullRowSelect(true);
  LstBackupSet.SetHideSelection(false);

  using S = frmBackupNow;
  using kit::KeyStroke;
  constexpr auto kAll = kit::PressButtons::AllButRight;
  SetTipTexts(kJobTips);
  kit::Design(*this, ui)
      .TabOrder({&LstBackupSet, &cmdBackupNow, &cmdClose})
      .Press(cmdBackupNow, &S::cmdBackupNow_Click, kAll)
      .Press(cmdClose, &S::cmdClose_Click, kAll)
      .Press(lblClose, &S::cmdClose_Click)
      .Tips({&cmdBackupNow, &cmdClose})
      .Key(KeyStroke::Up, kit::Alt('B'), &S::cmdBackupNow_Click)
      .Key(KeyStroke::Up, kit::kEscape, &S::cmdClose_Click)
      .Key(KeyStroke::Up, kit::Alt('C'), &S::cmdClose_Click)
      .Key(KeyStroke::Down, kit::kEnter, &S::cmdBackupNow_Click)
      .Drag({&lblCapbar, &lblTitle})
      .Hover({&cmdBackupNow, &cmdClose})
      .On(LstBackupSet.on.ItemClick, &S::LstBackupSet_ItemClick);
}

void frmBackupNow::FillRows() {
  const jobstore::BackupNowList& list = app_.Store.LstBackupSet;
  LstBackupSet.ClearRows();
  for (const jobstore::BackupNowRow& row : list.Rows) {
    kit::ListItem& item = LstBackupSet.AddRow(row.Name);
    item.SetSubItem(1, row.Destination);
    item.SetSubItem(2, row.UserName);
    item.SetSubItem(3, row.RecordNo);
  }
}

void frmBackupNow::Form_Load() {
  // The columns at their design widths, then the widths of the mode.
  LstBackupSet.ClearColumns();
  LstBackupSet.AddColumn(u"Backup set name", 1454.17);
  LstBackupSet.AddColumn(u"Destination", 2729.2);
  LstBackupSet.AddColumn(u"User Name", 1695.12);
  LstBackupSet.AddColumn(u"Record Number", 0);
  kit::ApplySkin(cmdBackupNow, kit::kSkinNormal);
  kit::ApplySkin(cmdClose, kit::kSkinNormal);
  app_.Store.ChosenDestination = jobstore::kDefaultDestination;
  const BackupNowWidths widths = BackupNowColumnWidths(app_.Store.MirrorMode);
  LstBackupSet.SetColumnWidth(1, widths.name);
  LstBackupSet.SetColumnWidth(2, widths.destination);
  LstBackupSet.SetColumnWidth(3, widths.userName);
  LstBackupSet.SetColumnWidth(4, widths.recordNumber);
  FillRows();
  SetCaption(u"Backup Now");
  kit::SetFormFrame(*this, false);
  if (app_.platform.system != nullptr)
    kit::PlaceBottomRight(*this, kit::GetWorkArea(*app_.platform.system, true));
  kit::ResizeControl(*this, ui_.TwipsPerPixelX());
  kit::clsRounder().RoundForm(*this, ui_.TwipsPerPixelX(), ui_.TwipsPerPixelY());
}

void frmBackupNow::Form_Activate() {
  if (LstBackupSet.Count() == 0) return;
  LstBackupSet.Item(1).SetSelected(true);
  app_.Store.LstBackupSet.SelectedRow = 1;
}

void frmBackupNow::LstBackupSet_ItemClick(kit::ListItem& item) {
  app_.Store.LstBackupSet.SelectedRow = item.Index();
}

void frmBackupNow::cmdBackupNow_Click() {
  const BackupNowClickResult result =
      jobs::cmdBackupNow_Click(app_, prompts_, GetWinMajorVersion(app_));
  if (result.end == BackupNowEnd::Close) Unload(kit::UnloadMode::Code);
}

void frmBackupNow::cmdClose_Click() { Unload(kit::UnloadMode::Code); }

void frmBackupNow::Form_Unload(int&) {
  base::Guarded([&] { ui_.Tips().Remove(); },
                frame::TraceFailure(app_, u"Error Reason :", Where(u"Form_Unload")));
}

}  // namespace jobs
