#include "reference/bkupjobnotify.h"

#include "kit/Design.h"
#include "kit/WindowLook.h"

namespace reference {

namespace {

// A screen's tip texts live beside it, in its folder.
constexpr kit::TipText kTips[] = {
    {u"bkupjobnotify.viewbkuplog",
     u"<br>View the log of the scheduled <br>backup /restore jobs<br>"},
    {u"bkupjobnotify.cancel", u"<br>Exit this screen<br>"},
};

}  // namespace

// doc:constructor
bkupjobnotify::bkupjobnotify(kit::Ui& ui, platform::ISystemInfo& system)
    : Form(u"bkupjobnotify", {0, 0, 6750, 4050}, u"Desktop notification"),
      ui_(ui),
      system_(system) {
  // A notice comes up over the other windows and leaves the keyboard where it was.
  SetTopMost(true);
  SetShowWithoutActivation(true);
  SetKeyPreview(true);
  // Names for a screen reader, where a picture has no text of its own.
  Picture1.SetCaption(u"Help");
  Picture2.SetCaption(u"Close");
  PicSuccessJob.SetCaption(u"The job succeeded");
  Label1.SetFontBold(true);
  Label1.SetForeColor(kit::kWhite);
  QVDiskPBar.SetBarColor(0x0DDF27);

  using S = bkupjobnotify;
  SetTipTexts(kTips);
  kit::Design(*this, ui)
      .TabOrder({&viewbkuplog, &cancel, &Picture1, &Picture2})
      .Press(viewbkuplog, &S::viewbkuplog_Click)
      .Press(cancel, &S::cancel_Click)
      .Press(Picture1, &S::Picture1_Click)
      .Press(Picture2, &S::Picture2_Click)
      .Key(kit::KeyStroke::Up, kit::kEscape, &S::cancel_Click)
      .Key(kit::KeyStroke::Up, kit::Alt('C'), &S::cancel_Click)
      .Key(kit::KeyStroke::Up, kit::Alt('V'), &S::viewbkuplog_Click)
      // Enter anywhere else views the log, until that button has had the focus once.
      .KeyUntilFocused(kit::KeyStroke::Down, kit::kEnter, viewbkuplog, &S::viewbkuplog_Click)
      .Tips({&viewbkuplog, &cancel})
      .Drag({this, &Label1, &lblCapbar})
      .Hover({&viewbkuplog, &cancel});
}
// doc:end

// doc:load
void bkupjobnotify::Form_Load() {
  SetPictureKey(u"qv_desk_notify");
  kit::ApplySkin(cancel, kit::kSkinNormal);
  kit::ApplySkin(viewbkuplog, kit::kSkinNormal);
  kit::SetFormFrame(*this, false);
  kit::clsRounder().RoundForm(*this, ui_.TwipsPerPixelX(), ui_.TwipsPerPixelY());
  kit::PlaceBottomRight(*this, kit::GetWorkArea(system_, true));
}

void bkupjobnotify::Form_Unload(int&) { ui_.Tips().Remove(); }
// doc:end

void bkupjobnotify::viewbkuplog_Click() { ++viewLogRequests; }

void bkupjobnotify::cancel_Click() { Unload(); }

void bkupjobnotify::Picture1_Click() { ++helpRequests; }

void bkupjobnotify::Picture2_Click() { Unload(); }

}  // namespace reference
