#include "account/AboutQVWIN.h"

#include "kit/Branding.h"
#include "kit/Design.h"
#include "kit/ToolTips.h"
#include "kit/WindowLook.h"
#include "account/AccountScreens.h"
#include "account/VersionInventory.h"

namespace account {

namespace {
// OK's own skins, normal and lit.
constexpr const char16_t* kOkNormal = u"button_OK_enb";
constexpr const char16_t* kOkHover = u"button_OK_ovr";
}  // namespace

AboutQVWIN::AboutQVWIN(frame::AppState& app, kit::Ui& ui)
    : Form(u"AboutQVWIN", {0, 0, 6750, 4950}, u"About Corvane for Windows"), app_(app), ui_(ui) {
  SetKeyPreview(true);
  imglogo.SetCaption(u"Corvane for Windows");
  lblshortclose.SetToolTipText(u"Close");
  lblshortclose.SetRole(kit::Role::PushButton);
  LblAppCaption.SetFontBold(true);
  LblAppCaption.SetForeColor(kit::kWhite);
  lblshortclose.SetForeColor(kit::kWhite);
  Label1.SetFontBold(true);
  txtVersionList.SetMultiLine(true);
  txtVersionList.SetLocked(true);

  using S = AboutQVWIN;
  kit::Design(*this, ui)
      .TabOrder({&lblcopy, &txtVersionList, &lblshortclose})
      .Press(lblcopy, &S::lblcopy_Click)
      .Press(lblshortclose, &S::lblshortclose_Click)
      .Key(kit::KeyStroke::Up, kit::Alt('O'), &S::lblcopy_Click)
      .Key(kit::KeyStroke::Up, kit::kEscape, &S::lblcopy_Click)
      .Key(kit::KeyStroke::Down, kit::kEnter, &S::lblcopy_Click)
      .Drag({this, &lblCapbar, &LblAppCaption})
      // OK has a face of its own, narrower than the standard buttons': the pointer
      // over it (or its label) shows it lit, anywhere else (the background picture
      // covers the form) normal.
      .Hover({&lblcopy}, kOkNormal, kOkHover)
      .HoverAway({&picbkgrd});
}

void AboutQVWIN::Form_Load() {
  kit::ApplySkin(lblcopy, kit::kSkinNormal, kOkNormal);
  picbkgrd.SetPictureKey(app_.AppTitle != kit::kDefaultAppTitle ? u"qv_cust_about_us"
                                                                : u"qv_about_us");
  imglogo.SetPictureKey(u"qv_logo_monitor");
  txtVersionList.SetText(BuildVersionList(app_, app_.ProgramFolder));
  Label1.SetCaption(AboutTitleLine(app_));
  kit::SetFormFrame(*this, false);
  if (app_.platform.system != nullptr)
    kit::PlaceBottomRight(*this, kit::GetWorkArea(*app_.platform.system, true));
  kit::clsRounder().RoundForm(*this, ui_.TwipsPerPixelX(), ui_.TwipsPerPixelY());
  // The OK button keeps its height through the scaling.
  const kit::ResizeKeep keeps[] = {{u"lblcopy", -1, false, false, false, true},
                                   {u"cmbFrequency", -1, false, false, false, true}};
  kit::ResizeControl(*this, ui_.TwipsPerPixelX(), keeps);
}

void AboutQVWIN::Form_Unload(int&) { ui_.Tips().Remove(); }

void AboutQVWIN::lblcopy_Click() { Unload(); }

void AboutQVWIN::lblshortclose_Click() { Unload(); }

AboutResult ShowAbout(frame::AppState& app, kit::Ui& ui, const AboutArgs&) {
  AboutQVWIN form(app, ui);
  ui.ShowModal(form);
  return {.shown = true};
}

}  // namespace account
