#include "notify/frmBKErrNotify.h"

#include "frame/Logs.h"
#include "kit/Design.h"
#include "kit/ToolTips.h"
#include "kit/WindowLook.h"
#include "notify/MissedBackup.h"
#include "notify/NoticeLook.h"
#include "notify/NoticeTips.h"

namespace notify {

namespace {

constexpr char16_t kHelpTopic[] = u"QVWINHelp.chm::/Corvane_Tray_Icon/Using_Tray_Icon.htm";
constexpr kit::Color kLinkColor = 0x00C06000;  // a link's blue

}  // namespace

frmBKErrNotify::frmBKErrNotify(frame::AppState& app, kit::Ui& ui,
                               std::function<void()> openErrorReport)
    : Form(u"frmBKErrNotify", {0, 0, 5400, 2850}, u"Scheduled job status"),
      app_(app),
      ui_(ui),
      openErrorReport_(std::move(openErrorReport)) {
  LookAsNotice(*this, Picture1, Picture2);
  SetKeyPreview(true);
  SetTipTexts(kNoticeTips);
  PicFailedJob.SetCaption(u"Scheduled backups have not been taking place");
  Label3.SetFontBold(true);
  Label3.SetForeColor(kit::kWhite);
  Label2.SetWordWrap(true);
  lblLink.SetForeColor(kLinkColor);
  lblLink.SetRole(kit::Role::PushButton);
  lblLink.SetControlPointer(kit::MousePointer::Hand);

  using S = frmBKErrNotify;
  kit::Design(*this, ui)
      .TabOrder({&lblLink, &cancel, &Picture1, &Picture2})
      .Press(cancel, &S::cancel_Click)
      .Click(lblLink, &S::lblLink_Click)
      .Press(Picture1, &S::Picture1_Click)
      .Press(Picture2, &S::Picture2_Click)
      .Key(kit::KeyStroke::Up, kit::kEscape, &S::cancel_Click)
      .Key(kit::KeyStroke::Up, kit::Alt('C'), &S::cancel_Click)
      .Drag({this, &lblCapbar})
      .Hover({&cancel})
      // The Close button's tip is the one of the job-end notice, on purpose.
      .TipsOf(u"bkupjobnotify", {&cancel});
}

void frmBKErrNotify::Form_Load() {
  // What shows where no reason gave a text.
  Label2.SetCaption(
      u"The scheduled backup has not taken place for the past    day(s). For assistance, email "
      u"us at " +
      SupportAddress(app_) + u" or send the ");
  kit::clsRounder().RoundForm(*this, ui_.TwipsPerPixelX(), ui_.TwipsPerPixelY());
  SetPictureKey(u"qv_dsktp_notification");
  kit::ApplySkin(cancel, kit::kSkinNormal);
  kit::SetFormFrame(*this, false);
  SetHeight(2850);
  SetWidth(5400);
  kit::PlaceBottomRight(*this, kit::GetWorkArea(*app_.platform.system, true));
  kit::ResizeControl(*this, ui_.TwipsPerPixelX());
}

void frmBKErrNotify::Form_Unload(int&) { ui_.Tips().Remove(); }

void frmBKErrNotify::SetNotice(const std::optional<Text>& text, bool plainLayout) {
  if (text) Label2.SetCaption(*text);
  if (plainLayout) {
    Label2.SetTop(1000);
    Label2.SetHeight(810);
    lblLink.SetTop(lblLink.Top() - 275);
  }
}

void frmBKErrNotify::cancel_Click() { Unload(); }

void frmBKErrNotify::lblLink_Click() {
  Unload();
  if (openErrorReport_) openErrorReport_();
}

void frmBKErrNotify::Picture1_Click() { kit::ShowHelpFile(app_, *this, kHelpTopic); }

void frmBKErrNotify::Picture2_Click() { Unload(); }

}  // namespace notify
