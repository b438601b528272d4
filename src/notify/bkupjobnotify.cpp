#include "notify/bkupjobnotify.h"

#include "base/Guarded.h"
#include "frame/KeepAnswering.h"
#include "frame/Logs.h"
#include "kit/Design.h"
#include "kit/LabelText.h"
#include "kit/WindowLook.h"
#include "notify/NextJob.h"
#include "notify/NoticeLook.h"
#include "notify/NoticeTips.h"

namespace notify {

namespace {

constexpr char16_t kHelpTopic[] = u"QVWINHelp.chm::/Corvane_Tray_Icon/Using_Tray_Icon.htm";

}  // namespace

bkupjobnotify::bkupjobnotify(frame::AppState& app, kit::Ui& ui, const KeptNames& names,
                             std::function<void()> openSessionLog,
                             std::function<double()> monitorLabelFontSize)
    : Form(u"bkupjobnotify", {0, 0, 6750, 4050}, u"Desktop notification"),
      app_(app),
      ui_(ui),
      names_(names),
      openSessionLog_(std::move(openSessionLog)),
      monitorLabelFontSize_(std::move(monitorLabelFontSize)) {
  LookAsNotice(*this, Picture1, Picture2);
  SetKeyPreview(true);
  PicSuccessJob.SetCaption(u"The job succeeded");
  PicFailedJob.SetCaption(u"The job failed");
  PicSuccessJob.SetVisible(false);
  PicFailedJob.SetVisible(false);
  lblTitle.SetFontBold(true);
  lblTitle.SetForeColor(kit::kWhite);
  schjobststus.SetFontBold(true);
  QVDiskPBar.SetRange(0, 100);
  QVDiskPBar.SetBarColor(kQuotaColor);
  lblTempDummy.SetAutoSize(true);
  lblTempDummy.SetVisible(false);
  for (kit::DatePicker* d : {&DTPcurrent, &DTPNextTrf, &DTPicker}) d->SetVisible(false);

  using S = bkupjobnotify;
  SetTipTexts(kNoticeTips);
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

void bkupjobnotify::Form_Load() {
  kit::clsRounder().RoundForm(*this, ui_.TwipsPerPixelX(), ui_.TwipsPerPixelY());
  SetPictureKey(u"qv_desk_notify");
  kit::ApplySkin(cancel, kit::kSkinNormal);
  kit::ApplySkin(viewbkuplog, kit::kSkinNormal);
  // The frame goes; the caption it had is kept aside under the window's own name.
  SetCaption(u"Desktop notification");
  kit::SetFormFrame(*this, false);
  SetHeight(4050);
  SetWidth(6750);
  kit::PlaceBottomRight(*this, kit::GetWorkArea(*app_.platform.system, true));
  kit::ResizeControl(*this, ui_.TwipsPerPixelX());
  // Nobody sees or reads this caption, the frame being gone; it has always been so.
  SetCaption(u"werwe werwerwerwer werwe rwerw 1234");
}

void bkupjobnotify::Form_Activate() { FillFromKept(); }

void bkupjobnotify::Form_Unload(int&) { ui_.Tips().Remove(); }

void bkupjobnotify::TakeMonitorFontSize() {
  if (!monitorLabelFontSize_) return;
  const double size = monitorLabelFontSize_();
  for (kit::Label* l : {&lblTempDummy, &bkupjobname, &lblnxtbkup}) l->SetFontSize(size);
}

Text bkupjobnotify::Wrapped(TextView text, double width) {
  const double size = lblTempDummy.FontSize();
  const bool bold = lblTempDummy.FontBold();
  const kit::TextMeasure& measure = ui_.Measure();
  std::size_t measured = 0;
  return kit::WrapLabelText(text, [&](TextView piece) {
    if (++measured % 256 == 0) frame::KeepAnswering(app_);
    return measure.Measure(piece, size, bold, 0).width <= width;
  });
}

void bkupjobnotify::SetSetName(const Text& name) {
  base::IgnoreFailure([&] {
    TakeMonitorFontSize();
    const double width = bkupjobname.Width();
    WrappedName& last = setName_;
    if (last.name != name || last.width != width || last.fontSize != lblTempDummy.FontSize() ||
        last.bold != lblTempDummy.FontBold()) {
      last = WrappedName{};  // a failure below leaves nothing half-kept
      Text caption = Wrapped(LabelText(name), width);
      last = {name, width, lblTempDummy.FontSize(), lblTempDummy.FontBold(), std::move(caption)};
    }
    bkupjobname.SetCaption(last.caption);
    lblTempDummy.SetCaption(u" ");
  });
}

void bkupjobnotify::FillFromKept() {
  SetSetName(app_.CurrentLogName);
  lblaccntname.SetCaption(names_.accountName);
  NextJobAndQuota();
}

void bkupjobnotify::NextJobAndQuota() {
  SetPointer(kit::MousePointer::Hourglass);
  base::Guarded(
      [&] {
        DTPcurrent.SetValue(app_.platform.clock->Now());
        const NextJobView next = ReadNextJob(app_);
        schjobststus.SetCaption(next.status);
        if (next.showLines) {
          DTPNextTrf.SetValue(next.nextRun);
          TakeMonitorFontSize();
          lblnxtbkup.SetCaption(kNextSetPrefix + Wrapped(next.setName, lblnxtbkup.Width()));
          lblTempDummy.SetCaption(u" ");
          lblnxtbkupTime.SetCaption(kNextTimePrefix + NextTransferTimeText(app_, next.nextRun));
        } else {
          lblnxtbkup.SetCaption(Text());
          lblnxtbkupTime.SetCaption(Text());
        }
        lblnxtbkup.SetVisible(next.showLines);
        lblnxtbkupTime.SetVisible(next.showLines);

        const QuotaView quota = ReadQuota(app_);
        if (quota.barValue) {
          QVDiskPBar.SetBarColor(quota.barColor);
          QVDiskPBar.SetValue(*quota.barValue);
        }
        if (quota.label) lblUserQuota.SetCaption(*quota.label);
        lblquota.SetVisible(quota.visible);
        lblUserQuota.SetVisible(quota.visible);
        QVDiskPBar.SetVisible(quota.visible);
      },
      frame::TraceFailure(app_, u"Error in NextJobAndQuota "));
  SetPointer(kit::MousePointer::Default);
}

void bkupjobnotify::viewbkuplog_Click() {
  // The Session Log opens in front of the notice, which stays open behind it: the
  // notice gives up its place above the other windows until the next job's end.
  SetTopMost(false);
  if (openSessionLog_) openSessionLog_();
}

void bkupjobnotify::cancel_Click() {
  // A request that came in while the notice was up goes with it.
  base::IgnoreFailure([&] {
    const Text request = app_.CommonFile(kJobRequestFile);
    if (app_.platform.fs->FileExists(request)) app_.platform.fs->DeleteFile(request);
  });
  Unload();
}

void bkupjobnotify::Picture1_Click() { kit::ShowHelpFile(app_, *this, kHelpTopic); }

void bkupjobnotify::Picture2_Click() { Unload(); }

}  // namespace notify
