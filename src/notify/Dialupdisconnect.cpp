#include "notify/Dialupdisconnect.h"

#include "base/Guarded.h"
#include "frame/Logs.h"
#include "kit/Design.h"
#include "kit/WindowLook.h"
#include "notify/Dialup.h"
#include "notify/NoticeLook.h"

namespace notify {

namespace {

constexpr char16_t kHelpTopic[] = u"QVWINHelp.chm::/Corvane_Tray_Icon/Using_Tray_Icon.htm";
// The wide button has this one face; under the pointer only its label turns white.
constexpr char16_t kWideButton[] = u"button_large200_enb";

}  // namespace

Dialupdisconnect::Dialupdisconnect(frame::AppState& app, kit::Ui& ui)
    : Form(u"Dialupdisconnect", {0, 0, 5400, 2850}, u"Corvane Monitor- Dialup disconnection."),
      app_(app),
      ui_(ui) {
  LookAsNotice(*this, Picture1, Picture2);
  Label3.SetFontBold(true);
  Label3.SetForeColor(kit::kWhite);
  ISPname.SetWordWrap(true);

  using S = Dialupdisconnect;
  kit::Design(*this, ui)
      .TabOrder({&Disconnect, &cancel, &Picture1, &Picture2})
      .Press(Disconnect, &S::Disconnect_Click)
      .Press(cancel, &S::cancel_Click)
      .Press(Picture1, &S::Picture1_Click)
      .Press(Picture2, &S::Picture2_Click)
      .Drag({this, &lblCapbar})
      .On(Disconnectcountdown.on.Timer, &S::Disconnectcountdown_Timer)
      // Both buttons light up under the pointer, each in its own skin.
      .Hover({&Disconnect}, kWideButton, kWideButton)
      .Hover({&cancel});
}

void Dialupdisconnect::Form_Load() {
  counter_ = 0;
  kit::ApplySkin(Disconnect, kit::kSkinNormal, kWideButton);
  kit::ApplySkin(cancel, kit::kSkinNormal);
  kit::clsRounder().RoundForm(*this, ui_.TwipsPerPixelX(), ui_.TwipsPerPixelY());
  SetPictureKey(u"qv_dsktp_notification");
  kit::SetFormFrame(*this, false);
  kit::PlaceBottomRight(*this, kit::GetWorkArea(*app_.platform.system, true));
  kit::ResizeControl(*this, ui_.TwipsPerPixelX());
  base::Guarded(
      [&] {
        if (auto text = ConnectionsText(app_)) ISPname.SetCaption(*text);
      },
      frame::TraceFailure(app_, u"Error Dialupdisconnect.Form_Load "));
}

void Dialupdisconnect::Disconnectcountdown_Timer() {
  ++counter_;
  Disconnect.Lbl().SetCaption(CountdownCaption(counter_));
  if (counter_ >= kCountdownFirings) {
    Disconnectcountdown.SetEnabled(false);
    DisconnectDialup(app_);
    Unload();
  }
}

void Dialupdisconnect::Disconnect_Click() {
  Disconnectcountdown.SetEnabled(false);
  DisconnectDialup(app_);
  Unload();
}

void Dialupdisconnect::cancel_Click() {
  Disconnectcountdown.SetEnabled(false);
  DialupCanceled(app_);
  Unload();
}

void Dialupdisconnect::Picture1_Click() { kit::ShowHelpFile(app_, *this, kHelpTopic); }

void Dialupdisconnect::Picture2_Click() { Unload(); }

}  // namespace notify
