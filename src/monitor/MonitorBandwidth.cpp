// The monitor window: the Auto-Pause box and the bandwidth slider.
#include "base/Guarded.h"
#include "frame/Settings.h"
#include "monitor/BandwidthRules.h"
#include "monitor/frmQVWinService.h"

#include <algorithm>
#include <cmath>

namespace monitor {

namespace {

SliderGeometry Geometry(const kit::Picture& box, const kit::Picture& knob) {
  return {box.Left(), box.Width(), knob.Width()};
}

}  // namespace

void frmQVWinService::PlaceSlider(long percent) {
  sliderBandwidth.SetValue(static_cast<double>(percent));
  lablBandWidth.SetCaption(base::FromNumber(percent) + u"%");
  PictSliderKnob1.SetLeft(KnobLeft(Geometry(PictSliderBox1, PictSliderKnob1), percent));
}

Text frmQVWinService::ReadLimit(const Text& key) {
  return LimitOrFull(base::Trim(frame::ReadSetting(app_, key)));
}

void frmQVWinService::SliderRule(SliderPass pass) {
  const Text autoPause = base::Trim(frame::ReadSetting(app_, kAutoPauseKey));
  settingCheck_ = true;
  base::IgnoreFailure([&] { chkbandwidth.SetValue(autoPause == u"1" ? 1 : 0); });
  settingCheck_ = false;
  if (pass == SliderPass::First) LabelPauseMsg.SetVisible(autoPause == u"1");
  const Text plain = ReadLimit(kPlainLimitKey);
  const Text paused = ReadLimit(kPausedLimitKey);

  const bool checked = chkbandwidth.Checked();
  // The engine's idle state matters only with Auto-Pause on, and is not read at load.
  Text idle;
  if (checked && pass != SliderPass::Load && app_.platform.profile != nullptr) {
    idle = app_.platform.profile->GetString(u"AUTOPAUSE", u"BackupIdleState", Text(),
                                            frame::kProfileBufferChars,
                                            app_.CommonFile(u"AutoPause.ini"));
  }
  const SliderChoice choice = ChooseSliderLimit(pass, checked, idle, app_.Transfer.sBkStatus);
  if (choice.limit == SliderLimit::Plain) PlaceSlider(LimitPercent(plain));
  if (choice.limit == SliderLimit::Paused) PlaceSlider(LimitPercent(paused));
  if (choice.pauseMessage) LabelPauseMsg.SetVisible(*choice.pauseMessage);
}

void frmQVWinService::chkbandwidth_Click() {
  if (settingCheck_) return;
  const bool on = chkbandwidth.Checked();
  const Text key = LimitKey(on);
  const Text limit = base::Trim(frame::ReadSetting(app_, key));
  if (!limit.empty()) {
    PlaceSlider(LimitPercent(limit));
  } else {
    PlaceSlider(100);
    frame::WriteSetting(app_, key,
                        base::FromNumber(static_cast<long long>(sliderBandwidth.Value())));
  }
  if (!frame::WriteSetting(app_, kAutoPauseKey, base::FromNumber(chkbandwidth.Value()))) {
    // Not stored (traced by the settings): the box and the slider show what is.
    const bool stored = base::Trim(frame::ReadSetting(app_, kAutoPauseKey)) == u"1";
    settingCheck_ = true;
    base::IgnoreFailure([&] { chkbandwidth.SetValue(stored ? 1 : 0); });
    settingCheck_ = false;
    PlaceSlider(LimitPercent(ReadLimit(LimitKey(stored))));
    return;
  }
  LabelPauseMsg.SetVisible(on);
}

void frmQVWinService::PlaceSliderTip() {
  lblSlider1Tooltip.SetLeft(PictSliderKnob1.Left() + PictSliderKnob1.Width() / 2 -
                            lblSlider1Tooltip.Width() / 2);
  lblSlider1Tooltip.SetTop(PictSliderKnob1.Top() - lblSlider1Tooltip.Height());
}

void frmQVWinService::PictSliderKnob1_MouseDown(const kit::MouseArgs&) {
  dragging_ = true;
  lblSlider1Tooltip.SetCaption(base::FromNumber(static_cast<long long>(sliderBandwidth.Value())) +
                               u"%");
  PlaceSliderTip();
  lblSlider1Tooltip.SetVisible(true);
}

void frmQVWinService::PictSliderKnob1_MouseMove(const kit::MouseArgs& a) {
  if (!dragging_) return;
  const SliderGeometry g = Geometry(PictSliderBox1, PictSliderKnob1);
  if (const auto left = DraggedKnobLeft(g, PictSliderKnob1.Left(), a.x))
    PictSliderKnob1.SetLeft(*left);
  // With the slack the figure can pass 100; the slider keeps what it can hold.
  const long rounded = KnobPercent(g, PictSliderKnob1.Left());
  sliderBandwidth.SetValue(static_cast<double>(rounded));
  const Text shown = base::FromNumber(rounded) + u"%";
  lablBandWidth.SetCaption(shown);
  lblSlider1Tooltip.SetCaption(shown);
  PlaceSliderTip();
}

void frmQVWinService::PictSliderKnob1_MouseUp(const kit::MouseArgs&) {
  dragging_ = false;
  lblSlider1Tooltip.SetVisible(false);
  const Text value = base::FromNumber(static_cast<long long>(sliderBandwidth.Value()));
  const Text key = LimitKey(chkbandwidth.Checked());
  if (!frame::WriteSetting(app_, key, value)) {
    // Not stored (traced by the settings): the slider goes back to the stored limit.
    PlaceSlider(LimitPercent(ReadLimit(key)));
    return;
  }
  lablBandWidth.SetCaption(value + u"%");
}

namespace {

// The limit one step of the keyboard gives, within the slider's ends.
long Stepped(double value, long step) {
  return std::clamp(static_cast<long>(std::lround(value)) + step, 0L, 100L);
}

}  // namespace

void frmQVWinService::SliderKeyLower() {
  PlaceSlider(Stepped(sliderBandwidth.Value(), -1));
  PictSliderKnob1_MouseUp({kit::kLeftButton});
}

void frmQVWinService::SliderKeyHigher() {
  PlaceSlider(Stepped(sliderBandwidth.Value(), 1));
  PictSliderKnob1_MouseUp({kit::kLeftButton});
}

}  // namespace monitor
