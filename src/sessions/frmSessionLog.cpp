#include "sessions/frmSessionLog.h"

#include <memory>

#include "base/Guarded.h"
#include "frame/Logs.h"
#include "kit/Design.h"
#include "kit/MesgBox.h"
#include "kit/WindowLook.h"
#include "sessions/SessionLogTips.h"

namespace sessions {

namespace {

constexpr char16_t kButtonSkin[] = u"button_med_enb";
constexpr char16_t kButtonHoverSkin[] = u"button_med_ovr";

Text Where(const char16_t* procedure) {
  return Text(u"in procedure ") + procedure + u" of Form frmSessionLog";
}

}  // namespace

void ShowSessionLog(frame::AppState& app, kit::Ui& ui) {
  kit::Form* form = ui.KeptScreen(u"frmSessionLog");
  if (form == nullptr) form = &ui.KeepScreen(std::make_unique<frmSessionLog>(app, ui));
  ui.Show(*form);
}

frmSessionLog::frmSessionLog(frame::AppState& app, kit::Ui& ui, SessionFilter filter)
    : Form(u"frmSessionLog", {0, 0, 10125, 7800}, u"Session Log"),
      app_(app),
      ui_(ui),
      filter_(filter) {
  SetStartUpPosition(kit::StartUpPosition::CenterScreen);
  SetKeyPreview(true);
  lblTitle.SetFontBold(true);
  lblTitle.SetForeColor(kit::kWhite);
  lblTitleInfo.SetWordWrap(true);
  lblDispItems.SetTextAlignment(kit::Alignment::Right);
  chkCancelCheckChange.SetVisible(false);
  SetUpSessionList(LstSessionLogView);
  // Names for a screen reader, where a picture has no text of its own.
  lblHelp.SetCaption(u"Help");
  lblClose.SetCaption(u"Close");
  lblBack.SetCaption(u"Previous page");
  lblNext.SetCaption(u"Next page");
  imgTitleinfo.SetCaption(u"Session logs");

  using S = frmSessionLog;
  SetTipTexts(kSessionLogTips);
  kit::Design(*this, ui)
      .TabOrder({&LstSessionLogView, &chkSelectAll, &lblBack, &lblNext, &cmdView, &cmdDelete,
                 &cmdCloseSessionLog, &lblHelp, &lblClose})
      .Press(cmdView, &S::cmdView_Click)
      .Press(cmdDelete, &S::cmdDelete_Click)
      .Press(cmdCloseSessionLog, &S::cmdCloseSessionLog_Click)
      .Press(lblClose, &S::cmdCloseSessionLog_Click)
      .Press(lblNext, &S::lblNext_Click)
      .Press(lblBack, &S::lblBack_Click)
      .Press(lblHelp, &S::lblHelp_Click)
      .Key(kit::KeyStroke::Up, kit::Alt('V'), &S::cmdView_Click)
      .Key(kit::KeyStroke::Up, kit::Alt('D'), &S::cmdDelete_Click)
      .Key(kit::KeyStroke::Up, kit::Alt('C'), &S::cmdCloseSessionLog_Click)
      .Key(kit::KeyStroke::Down, kit::kEnter, &S::cmdCloseSessionLog_Click)
      .Tips({&cmdView, &cmdDelete, &cmdCloseSessionLog, &chkSelectAll})
      .Drag({this, &lblCapbar, &lblTitle})
      .On(chkSelectAll.on.Click, &S::chkSelectAll_Click)
      .On(LstSessionLogView.on.DblClick, &S::LstSessionLogView_DblClick)
      .On(LstSessionLogView.on.ColumnClick, &S::LstSessionLogView_ColumnClick)
      .On(LstSessionLogView.on.ItemCheck, &S::LstSessionLogView_ItemCheck)
      // The buttons light up under the pointer in their own skin; over the form all go
      // back (the design's Form_MouseMove).
      .Hover({&cmdView, &cmdDelete, &cmdCloseSessionLog}, kButtonSkin, kButtonHoverSkin);
}

void frmSessionLog::Form_Load() {
  base::Guarded(
      [&] {
        SetPictureKey(u"bg_auto");
        imgTitleinfo.SetPictureKey(u"qv_logs");
        for (kit::PictureButton* b : {&cmdView, &cmdDelete, &cmdCloseSessionLog})
          kit::ApplySkin(*b, kit::kSkinNormal, kButtonSkin);
        LoadFirstPage();
        SetButtonsFor(false);
        kit::ResizeControl(*this, ui_.TwipsPerPixelX());
        kit::SetFormFrame(*this, false);
        kit::clsRounder().RoundForm(*this, ui_.TwipsPerPixelX(), ui_.TwipsPerPixelY());
      },
      frame::TraceFailure(app_, u"Error Reason :", Where(u"Form_Load")));
}

void frmSessionLog::Form_Unload(int&) { ui_.Tips().Remove(); }

void frmSessionLog::ListSessionFiles() {
  EnumSessionFileList.clear();
  // The walk lets the user interface through as it goes.
  EnumSessionFileList = sessions::ListSessionFiles(app_, filter_, [this] { ui_.DoEvents(); });
}

void frmSessionLog::FindSessionFiles(int nStartIdx, int nEndIdx) {
  sessions::FindSessionFiles(app_, LstSessionLogView, EnumSessionFileList, nStartIdx, nEndIdx,
                             filter_);
}

void frmSessionLog::LoadFirstPage() {
  ListSessionFiles();
  Apply(pager.Load(Count()));
}

void frmSessionLog::Apply(const PageStep& step) {
  if (step.find) FindSessionFiles(step.from, step.to);
  lblDispItems.SetCaption(step.range);
  if (step.next) {
    lblNext.SetPictureKey(step.next->picture);
    if (step.next->enabled) lblNext.SetEnabled(*step.next->enabled);
  }
  if (step.back) {
    lblBack.SetPictureKey(step.back->picture);
    if (step.back->enabled) lblBack.SetEnabled(*step.back->enabled);
  }
  base::Guarded([&] { SortListview(LstSessionLogView); },
                frame::TraceFailure(app_, u"Error Reason :", Where(u"SortListview")));
}

void frmSessionLog::SetButtonsFor(bool afterDelete) {
  const bool none = Count() < 1;
  const int skin = none ? kit::kSkinDisabled : kit::kSkinNormal;
  kit::ApplySkin(cmdView, skin, kButtonSkin);
  kit::ApplySkin(cmdDelete, skin, kButtonSkin);
  // Only a delete switches the buttons off with their skin: after a plain load a click
  // on an empty screen still tells that there is nothing to act on.
  if (!afterDelete) return;
  for (kit::Control* c : std::initializer_list<kit::Control*>{&cmdView, &cmdView.Lbl(), &cmdDelete,
                                                              &cmdDelete.Lbl(), &chkSelectAll})
    c->SetEnabled(!none);
}

void frmSessionLog::lblNext_Click() { Apply(pager.Next(Count())); }

void frmSessionLog::lblBack_Click() { Apply(pager.Back(Count())); }

void frmSessionLog::lblHelp_Click() { kit::ShowHelpFile(app_, *this, kSessionLogTopic); }

void frmSessionLog::cmdView_Click() {
  frame::WriteTrace(app_, u"Enter cmdView_Click()of frmSessionLog form");
  kit::ListView& list = LstSessionLogView;
  if (list.Count() == 0) {
    ui_.MessageBox(kNothingToView, kit::kIconInfo, kit::kButtonsOk, app_.AppTitle);
  } else if (list.SelectedIndex() == 0) {
    ui_.MessageBox(kSelectToView, kit::kIconInfo, kit::kButtonsOk, app_.AppTitle);
  } else {
    const int selected = list.SelectedIndex();
    GetSessionFileSelected_View(app_, list, selected);
    base::IgnoreFailure([&] { list.Item(selected).SetSelected(true); });
  }
  frame::WriteTrace(app_, u"Exit cmdView_Click()of frmSessionLog form");
}

void frmSessionLog::LstSessionLogView_DblClick() {
  base::Guarded([&] { cmdView_Click(); },
                frame::TraceFailure(app_, u"Error Reason :", Where(u"LstSessionLogView_DblClick")));
}

void frmSessionLog::cmdDelete_Click() {
  frame::WriteTrace(app_, u"Enter cmdDelete_Click() of frmSessionLog form");
  base::Guarded(
      [&] {
        kit::ListView& list = LstSessionLogView;
        bool deleted = false;
        if (list.Count() > 0) {
          // From the last row up, the count asked anew as rows go; no question first.
          for (int i = list.Count(); i >= 1; --i) {
            if (i <= list.Count() && list.Item(i).Checked()) {
              GetSessionFileSelected_Delete(app_, list, i);
              deleted = true;
            }
          }
        } else {
          deleted = true;
        }
        if (deleted) {
          LoadFirstPage();
          if (chkSelectAll.Value() == 1) chkSelectAll.SetValue(0);
        } else {
          ui_.MessageBox(kSelectToDelete, kit::kIconInfo, kit::kButtonsOk, app_.AppTitle);
        }
        SetButtonsFor(true);
      },
      frame::TraceFailure(app_, u"Error Reason :", Where(u"cmdDelete_Click")));
  // The design's closing line reads "Enter" too.
  frame::WriteTrace(app_, u"Enter cmdDelete_Click()of frmSessionLog form");
}

void frmSessionLog::LstSessionLogView_ColumnClick(int column) {
  base::Guarded(
      [&] { ColumnClickSort(LstSessionLogView, column); },
      frame::TraceFailure(app_, u"Error Reason :", Where(u"LstSessionLogView_ColumnClick")));
}

void frmSessionLog::chkSelectAll_Click() {
  base::Guarded(
      [&] {
        if (!bSelectAllActive) {
          // The program's own change of the box: the rows stay as the user left them.
          bSelectAllActive = true;
          return;
        }
        if (LstSessionLogView.Count() > 0) CheckAllRows(LstSessionLogView, chkSelectAll.Checked());
      },
      frame::TraceFailure(app_, u"Error Reason :", Where(u"chkSelectAll_Click")));
}

void frmSessionLog::LstSessionLogView_ItemCheck(kit::ListItem& item) {
  base::Guarded(
      [&] {
        const bool all = CheckMarkChanged(LstSessionLogView, item);
        bSelectAllActive = all;
        chkSelectAll.SetValue(all ? 1 : 0);
      },
      frame::TraceFailure(app_, u"Error in checkbox operation of session log"));
}

void frmSessionLog::cmdCloseSessionLog_Click() {
  base::Guarded([&] { Unload(); },
                frame::TraceFailure(app_, u"Error Reason :", Where(u"cmdCloseSessionLog_Click")));
}

}  // namespace sessions
