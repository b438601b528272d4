#include "account/frmUpdatePassword.h"

#include "kit/Branding.h"
#include "kit/Design.h"
#include "kit/MesgBox.h"
#include "kit/ToolTips.h"
#include "kit/WindowLook.h"
#include "account/AccountScreens.h"
#include "account/UpdatePasswordRules.h"
#include "account/AccountTips.h"

namespace account {

namespace {
constexpr char16_t kHelpTopic[] = u"QVWINHelp.chm::/Corvane_Tray_Icon/Using_Tray_Icon.htm";
}  // namespace

frmUpdatePassword::frmUpdatePassword(frame::AppState& app, kit::Ui& ui)
    : Form(u"frmUpdatePassword", {0, 0, 5400, 2850}, u"Update Password"), app_(app), ui_(ui) {
  SetKeyPreview(true);
  Picture1.SetCaption(u"Help");
  Picture2.SetCaption(u"Close");
  Picture1.SetToolTipText(u"Help");
  Picture2.SetToolTipText(u"Close");
  lblTitle.SetFontBold(true);
  lblTitle.SetForeColor(kit::kWhite);
  lblLabels(0).SetCaption(u"Username");
  lblLabels(1).SetCaption(u"Password");
  txtUserName.SetToolTipText(u"Enter the username");
  txtPassword.SetToolTipText(u"Enter the password");
  txtPassword.SetPasswordChar(u'*');

  using S = frmUpdatePassword;
  SetTipTexts(kAccountTips);
  kit::Design(*this, ui)
      .TabOrder({&txtUserName, &txtPassword, &cmdUpdate, &cmdClear, &Picture1, &Picture2})
      .Press(cmdUpdate, &S::cmdUpdate_Click)
      .Press(cmdClear, &S::cmdClear_Click)
      .On(txtPassword.on.Change, &S::txtPassword_Change)
      .Press(Picture1, &S::Picture1_Click)
      .Press(Picture2, &S::Picture2_Click)
      .Key(kit::KeyStroke::Up, kit::Alt('A'), &S::cmdUpdate_Click)
      .Key(kit::KeyStroke::Up, kit::Alt('R'), &S::cmdClear_Click)
      // Esc clears the fields; it does not close the form.
      .Key(kit::KeyStroke::Up, kit::kEscape, &S::cmdClear_Click)
      // Enter anywhere else applies, until Apply has had the focus once.
      .KeyUntilFocused(kit::KeyStroke::Down, kit::kEnter, cmdUpdate, &S::cmdUpdate_Click)
      .Tips({&cmdClear, &cmdUpdate})
      .Drag({this, &lblCapbar})
      .Hover({&cmdUpdate, &cmdClear});
}

void frmUpdatePassword::Form_Load() {
  kit::clsRounder().RoundForm(*this, ui_.TwipsPerPixelX(), ui_.TwipsPerPixelY());
  SetPictureKey(u"qv_dsktp_notification");
  kit::ApplySkin(cmdClear, kit::kSkinNormal);
  kit::ApplySkin(cmdUpdate, kit::kSkinNormal);
  if (app_.AppTitle != kit::kDefaultAppTitle && app_.platform.fs != nullptr) {
    const kit::Branding branding =
        kit::ReadBranding(*app_.platform.fs, app_.ProgramFolder, app_.AppTitle);
    if (!branding.formIconPath.empty()) SetIconPath(branding.formIconPath);
  }
  kit::SetFormFrame(*this, false);
  SetHeight(2850);
  SetWidth(5400);
  if (app_.platform.system != nullptr)
    kit::PlaceBottomRight(*this, kit::GetWorkArea(*app_.platform.system, true));
  kit::ResizeControl(*this, ui_.TwipsPerPixelX());
}

void frmUpdatePassword::Form_Unload(int&) { ui_.Tips().Remove(); }

void frmUpdatePassword::cmdUpdate_Click() {
  PasswordScreenHooks hooks;
  hooks.focusUserName = [this] { txtUserName.SetFocus(); };
  hooks.focusPassword = [this] { txtPassword.SetFocus(); };
  hooks.setBusy = [this](bool on) {
    SetPointer(on ? kit::MousePointer::Hourglass : kit::MousePointer::Default);
  };
  hooks.close = [this] { Unload(); };
  ApplyPassword(app_, ui_, txtUserName.GetText(), txtPassword.GetText(), hooks);
}

void frmUpdatePassword::txtPassword_Change() {
  const Text typed = txtPassword.GetText();
  if (HoldsOnlyPasswordCharacters(typed)) return;
  // A character the store cannot hold, typed or pasted, does not stay in the box.
  Text kept;
  for (char16_t unit : typed)
    if (IsPasswordCharacter(unit)) kept.push_back(unit);
  txtPassword.SetText(kept);
  ui_.MessageBox(kPasswordAlphabetMessage, kit::kIconInfo, kit::kButtonsOk, app_.AppTitle);
  txtPassword.SetFocus();
}

void frmUpdatePassword::cmdClear_Click() {
  txtUserName.SetText(Text());
  txtPassword.SetText(Text());
  txtUserName.SetFocus();
}

void frmUpdatePassword::Picture1_Click() { kit::ShowHelpFile(app_, *this, kHelpTopic); }

void frmUpdatePassword::Picture2_Click() { Unload(); }

UpdatePasswordResult ShowUpdatePassword(frame::AppState& app, kit::Ui& ui,
                                        const UpdatePasswordArgs&) {
  frmUpdatePassword form(app, ui);
  ui.ShowModal(form);
  return {.shown = true};
}

}  // namespace account
