#include "kit/ToolTips.h"

#include "kit/Controls.h"
#include "kit/Form.h"

namespace kit {

Text FindTipText(TipTable table, TextView key) {
  for (const TipText& e : table) {
    if (base::EqualsNoCase(e.key, key)) return e.text;
  }
  return Text();
}

Text CutTipText(TextView text) {
  TextView rest = text.substr(std::min<std::size_t>(4, text.size()));
  rest.remove_suffix(std::min<std::size_t>(4, rest.size()));
  return base::Replace(rest, u"<br>", u"\r\n");
}

// ---- CBalloonToolTip ------------------------------------------------------------

CBalloonToolTip::~CBalloonToolTip() { Destroy(); }

std::uint32_t CBalloonToolTip::ToolFlags() const {
  if (centered_) return popupOnDemand_ ? 35u : 19u;
  return popupOnDemand_ ? 289u : 17u;
}

TipPlan CBalloonToolTip::Plan(const Control& window) const {
  TipPlan plan;
  plan.parent = &window;
  if (style_ == 1) plan.style |= kTipStyleBalloon;
  plan.toolFlags = ToolFlags();
  plan.text = tipText_;
  plan.title = title_;
  plan.icon = icon_;
  plan.font = tipFont_;
  plan.messages.push_back({kTtmSetMaxTipWidth, 0, kTipMaxWidthPixels});
  plan.messages.push_back({kTtmAddTool, 0, 0});
  if (!title_.empty() || icon_ != 0) plan.messages.push_back({kTtmSetTitle, icon_, 0});
  if (backColor_) plan.messages.push_back({kTtmSetTipBkColor, *backColor_, 0});
  if (foreColor_) plan.messages.push_back({kTtmSetTipTextColor, *foreColor_, 0});
  if (tipFont_) plan.messages.push_back({kWmSetFont, 0, 1});
  plan.messages.push_back({kTtmSetDelayTime, 2, visibleTime_});
  plan.messages.push_back({kTtmSetDelayTime, 3, delayTime_});
  return plan;
}

void CBalloonToolTip::CreateToolTip(const Control& window) {
  if (created_) Destroy();
  parent_ = &window;
  handle_ = backend_ != nullptr ? backend_->Create(Plan(window)) : 0;
  created_ = true;
}

void CBalloonToolTip::Show(long x, long y, const Control& window) {
  if (created_ && backend_ != nullptr && handle_ != 0) backend_->Track(handle_, x, y, window);
}

void CBalloonToolTip::Destroy() {
  if (!created_) return;
  if (backend_ != nullptr && handle_ != 0) backend_->Destroy(handle_);
  handle_ = 0;
  created_ = false;
}

// ---- TipService -----------------------------------------------------------------

void TipService::Remove() {
  if (plain_) {
    if (backend_ != nullptr) backend_->DestroyPlain();
    plain_.reset();
  }
  balloon_.reset();
  tipForm_ = nullptr;
}

void TipService::RemoveOf(const Form& form) {
  if (tipForm_ == &form) Remove();
}

void TipService::ShowTip(int button, const Text& text, const Control& window, bool plainMode) {
  if (button != kRightButton) {
    Remove();
    return;
  }
  tipForm_ = &window.Owner();
  if (plainMode) {
    plain_ = PlainTip{CutTipText(text)};
    if (backend_ != nullptr) backend_->ShowPlain(plain_->text);
    return;
  }
  // The new tip replaces the old one, whose window goes with it.
  balloon_.reset();
  balloon_ = std::make_unique<CBalloonToolTip>(backend_);
  balloon_->SetStyle(1);
  balloon_->SetDelayTime(0);
  balloon_->SetTipText(CutTipText(text));
  balloon_->SetPopupOnDemand(false);
  balloon_->SetVisibleTime(60000);
  balloon_->CreateToolTip(window);
}

Text TipService::KeyFor(const Control& control) {
  const Control* tool = &control;
  if (control.Kind() == ControlKind::Label && control.Container() != nullptr &&
      control.Container()->Kind() == ControlKind::PictureButton) {
    tool = control.Container();
  }
  return tool->Owner().Name() + u"." + tool->Name();
}

void TipService::ButtonMouseUp(const Control& control, int button) {
  const Control* tool = &control;
  if (control.Kind() == ControlKind::Label && control.Container() != nullptr &&
      control.Container()->Kind() == ControlKind::PictureButton) {
    tool = control.Container();
  }
  ShowTip(button, FindTipText(tool->Owner().TipTexts(), KeyFor(control)), *tool);
}

}  // namespace kit
