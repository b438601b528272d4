#include "account/frmErrorReport.h"

#include "frame/Settings.h"
#include "kit/Design.h"
#include "kit/ToolTips.h"
#include "kit/WindowLook.h"
#include "account/FeedbackReport.h"
#include "account/AccountScreens.h"
#include "account/AccountTips.h"

namespace account {

frmErrorReport::frmErrorReport(frame::AppState& app, kit::Ui& ui)
    : Form(u"frmErrorReport", {0, 0, 8625, 6330}, u"Send Error Report"), app_(app), ui_(ui) {
  SetKeyPreview(true);
  imgTitleinfo.SetCaption(u"Feedback");
  lblTitle.SetFontBold(true);
  lblTitle.SetForeColor(kit::kWhite);
  txtFromName.SetToolTipText(u"Corvane username");
  txtFrom.SetToolTipText(u"Corvane Email address");
  txtTroubleTicket.SetToolTipText(u"Trouble Ticket No");
  txtTo.SetToolTipText(u"Corvane support");
  txtMsg.SetMultiLine(true);
  for (kit::Control* hidden : std::initializer_list<kit::Control*>{
           &txtTo, &txtServer, &txtToName, &txtAttach, &fraOptions, &txtQty, &cmdBrowse, &cmdReset,
           &lblServer, &lblToName, &lblAttach, &lblTo, &lstStatus})
    hidden->SetVisible(false);

  using S = frmErrorReport;
  SetTipTexts(kAccountTips);
  kit::Design(*this, ui)
      .TabOrder({&txtFromName, &txtFrom, &txtContactNumber, &txtTroubleTicket, &txtSubject, &txtMsg,
                 &cmdSend, &cmdExit})
      .Press(cmdSend, &S::cmdSend_Click)
      .Press(cmdExit, &S::cmdExit_Click)
      .Press(cmdReset, &S::cmdReset_Click)
      .Key(kit::KeyStroke::Up, kit::Alt('S'), &S::cmdSend_Click)
      .Key(kit::KeyStroke::Up, kit::Alt('C'), &S::cmdExit_Click)
      .Key(kit::KeyStroke::Up, kit::kEscape, &S::cmdExit_Click)
      .On(txtTroubleTicket.on.Change, &S::txtTroubleTicket_Change)
      .On(txtQty.on.KeyPress, &S::txtQty_KeyPress)
      .Tips({&cmdSend, &cmdExit})
      .Drag({this, &lblCapbar, &lblTitle})
      .Hover({&cmdSend, &cmdExit});
}

void frmErrorReport::Form_Load() {
  picbkgrd.SetPictureKey(u"qv_medium");
  imgTitleinfo.SetPictureKey(u"qv_feedback");
  kit::ApplySkin(cmdExit, kit::kSkinNormal);
  kit::ApplySkin(cmdSend, kit::kSkinNormal);
  lblProgress.SetCaption(Text());
  lblProgress.SetVisible(false);
  FillUserFields();
  kit::SetFormFrame(*this, false);
  SetHeight(6330);
  SetWidth(8625);
  if (app_.platform.system != nullptr)
    kit::PlaceBottomRight(*this, kit::GetWorkArea(*app_.platform.system, true));
  kit::clsRounder().RoundForm(*this, ui_.TwipsPerPixelX(), ui_.TwipsPerPixelY());
  kit::ResizeControl(*this, ui_.TwipsPerPixelX());
  const TicketLabel ticket = TroubleTicketLabel(ui_.TwipsPerPixelX());
  Label3.SetCaption(ticket.caption);
  if (!ticket.toolTip.empty()) Label3.SetToolTipText(ticket.toolTip);
}

void frmErrorReport::Form_Unload(int&) { ui_.Tips().Remove(); }

void frmErrorReport::FillUserFields() {
  txtFromName.SetText(frame::ReadSetting(app_, u"UserName"));
  const Text mail = frame::ReadSetting(app_, u"EmailUserName");
  if (mail.find(u'@') != Text::npos) txtFrom.SetText(mail);
}

void frmErrorReport::txtTroubleTicket_Change() {
  txtSubject.SetText(TicketSubject(txtTroubleTicket.GetText()));
}

void frmErrorReport::txtQty_KeyPress(int& keyAscii) {
  if (keyAscii >= 32 && (keyAscii < '0' || keyAscii > '9')) keyAscii = 0;
}

void frmErrorReport::ClearTextBoxesOnForm() {
  for (kit::Control* c : Controls())
    if (c->Kind() == kit::ControlKind::TextBox) static_cast<kit::TextBox*>(c)->SetText(Text());
}

void frmErrorReport::cmdReset_Click() {
  ClearTextBoxesOnForm();
  lblProgress.SetCaption(Text());
  FillUserFields();
}

void frmErrorReport::cmdSend_Click() {
  // The send lets events through while it reads the logs and uploads: a second
  // press then would start a send inside the running one.
  if (sending_) return;
  sending_ = true;
  struct EndOfSend {
    bool& flag;
    ~EndOfSend() { flag = false; }
  } endOfSend{sending_};
  SendHooks hooks;
  hooks.letEventsRun = [this] { ui_.DoEvents(); };
  hooks.progressText = [this](const Text& text) { lblProgress.SetCaption(text); };
  hooks.showProgress = [this] { lblProgress.SetVisible(true); };
  hooks.setBusy = [this](bool on) {
    kit::ApplySkin(cmdSend, on ? kit::kSkinDisabled : kit::kSkinNormal);
    SetPointer(on ? kit::MousePointer::Hourglass : kit::MousePointer::Default);
  };
  hooks.focusFrom = [this] { txtFrom.SetFocus(); };
  hooks.focusMessage = [this] { txtMsg.SetFocus(); };
  hooks.focusForm = [this] { SetFocus(); };
  const ReportFields fields{txtFromName.GetText(), txtFrom.GetText(), txtContactNumber.GetText(),
                            txtSubject.GetText(), txtMsg.GetText()};
  sendFailed_ = SendReport(app_, ui_, fields, hooks) == SendOutcome::Failed;
}

void frmErrorReport::cmdExit_Click() { Unload(); }

ErrorReportResult ShowErrorReport(frame::AppState& app, kit::Ui& ui, const ErrorReportArgs&) {
  frmErrorReport form(app, ui);
  ui.ShowModal(form);
  return {.shown = true, .sendFailed = form.SendFailed()};
}

void ShowErrorReportModeless(frame::AppState& app, kit::Ui& ui) {
  kit::Form* form = ui.KeptScreen(u"frmErrorReport");
  if (form == nullptr) form = &ui.KeepScreen(std::make_unique<frmErrorReport>(app, ui));
  ui.Show(*form);
}

}  // namespace account
