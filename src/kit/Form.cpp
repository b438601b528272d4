#include "kit/Form.h"

#include <algorithm>
#include <cmath>

#include "kit/Controls.h"

namespace kit {

Form::Form(Text name, Layout layout, Text caption)
    : Control(*this, std::move(name), layout, std::move(caption)) {
  // A form is hidden until it is shown; the design's Form_ handlers receive the
  // form's own input through the same slots as any control.
  SetVisible(false);
  on.Click = [this] { Form_Click(); };
  on.DblClick = [this] { Form_DblClick(); };
  on.MouseDown = [this](const MouseArgs& a) { Form_MouseDown(a); };
  on.MouseUp = [this](const MouseArgs& a) { Form_MouseUp(a); };
  on.MouseMove = [this](const MouseArgs& a) { Form_MouseMove(a); };
  on.KeyDown = [this](KeyArgs& a) { Form_KeyDown(a); };
  on.KeyUp = [this](KeyArgs& a) { Form_KeyUp(a); };
  on.KeyPress = [this](int& k) { Form_KeyPress(k); };
}

Form::~Form() {
  // Members (the controls) are gone by now; nothing may call back but the gone handler.
  controls_.clear();
  // A destructor has no one to tell of a failing gone handler.
  if (goneHandler_) base::IgnoreFailure([&] { goneHandler_(*this); });
}

void Form::Register(Control& control) { controls_.push_back(&control); }

void Form::Unregister(Control& control) {
  auto it = std::find(controls_.begin(), controls_.end(), &control);
  if (it != controls_.end()) controls_.erase(it);
  std::erase(tabOrder_, &control);
  if (activeControl_ == &control) activeControl_ = nullptr;
}

Control* Form::Find(TextView name, int index) const {
  for (Control* c : controls_) {
    if (c->Index() == index && base::EqualsNoCase(c->Name(), name)) return c;
  }
  return nullptr;
}

void Form::Notify(Control& control, Aspect aspect) {
  ++changeCount_;
  if (!listener_) return;
  try {
    listener_(control, aspect);
  } catch (...) {
    Fail(control, base::DescribeCurrentException());
  }
}

void Form::Fail(Control& control, const base::ErrorInfo& error) noexcept {
  ++failureCount_;
  // A sink that fails in its turn has lost the line; the form goes on.
  base::IgnoreFailure([&] {
    lastFailure_ = error;
    if (failureSink_) failureSink_(control, error);
  });
}

void Form::Load() {
  if (loaded_) return;
  if (!everLoaded_) {
    SaveDesign();
    everLoaded_ = true;
  } else {
    RestoreDesign();
  }
  loaded_ = true;
  for (Control* c : controls_) c->everFocused_ = false;
  Touch(Aspect::Lifecycle);
  Shield([this] { Form_Load(); });
}

bool Form::Unload(UnloadMode mode) {
  if (!loaded_) return true;
  if (unloading_) return false;
  unloading_ = true;
  int cancel = 0;
  Shield([&] { Form_QueryUnload(cancel, mode); });
  if (cancel == 0) Shield([&] { Form_Unload(cancel); });
  unloading_ = false;
  if (cancel != 0) return false;
  loaded_ = false;
  activeControl_ = nullptr;
  SetVisible(false);
  Touch(Aspect::Lifecycle);
  for (const auto& hook : unloadHooks_) Shield(hook);
  return true;
}

void Form::RaiseActivate() {
  if (loaded_) Shield([this] { Form_Activate(); });
}

void Form::RaiseDeactivate() {
  if (loaded_) Shield([this] { Form_Deactivate(); });
}

void Form::SetActiveControl(Control* control) {
  if (activeControl_ == control) return;
  Control* before = activeControl_;
  activeControl_ = control;
  if (control != nullptr) control->everFocused_ = true;
  Touch(Aspect::Focus);
  if (before != nullptr) before->RaiseLostFocus();
  if (control != nullptr) control->RaiseGotFocus();
}

void Form::SetKeyPreview(bool v) {
  if (keyPreview_ == v) return;
  keyPreview_ = v;
  Touch(Aspect::Style);
}

bool KeyRule::Matches(KeyStroke s, const KeyArgs& args, const Control* active) const {
  if (s != stroke || !action) return false;
  if (args.keyCode != key.code || (key.alt && !args.Alt())) return false;
  if (focus != nullptr && focus != active) return false;
  if (untilFocused != nullptr && untilFocused->EverFocused()) return false;
  return true;
}

void Form::AddKey(KeyRule rule) { keyRules_.push_back(std::move(rule)); }

bool Form::RunKeyRules(KeyStroke stroke, KeyArgs& args, bool focused) {
  if (!loaded_ || !Enabled()) return false;
  const Control* active = activeControl_;
  for (std::size_t i = 0; i < keyRules_.size(); ++i) {
    // Copied: the action may add rules, or unload the form.
    const KeyRule rule = keyRules_[i];
    if ((rule.focus != nullptr) != focused || !rule.Matches(stroke, args, active)) continue;
    args.keyCode = 0;
    Shield([&] { rule.action(); });
    return true;
  }
  return false;
}

namespace {

// A control's own place on the form: its layout moved by every container's.
Layout OnForm(const Control& c) {
  Layout l = c.GetLayout();
  for (const Control* p = c.Container(); p != nullptr; p = p->Container()) {
    l.left += p->Left();
    l.top += p->Top();
  }
  return l;
}

// Controls whose tops differ by less than this stand on one line of the form.
constexpr double kLineTwips = 120;

}  // namespace

void Form::SetTabOrder(std::vector<Control*> order) {
  std::erase(order, nullptr);
  tabOrder_ = std::move(order);
}

std::vector<Control*> Form::TabOrder() const {
  std::vector<Control*> rest;
  for (Control* c : controls_) {
    if (c->TabStop() && std::find(tabOrder_.begin(), tabOrder_.end(), c) == tabOrder_.end())
      rest.push_back(c);
  }
  std::stable_sort(rest.begin(), rest.end(), [](const Control* a, const Control* b) {
    const Layout la = OnForm(*a);
    const Layout lb = OnForm(*b);
    if (std::abs(la.top - lb.top) >= kLineTwips) return la.top < lb.top;
    return la.left < lb.left;
  });
  std::vector<Control*> all;
  for (Control* c : tabOrder_) {
    if (c->TabStop()) all.push_back(c);
  }
  all.insert(all.end(), rest.begin(), rest.end());
  // An option group is one stop, where its first button stands in the order: the
  // chosen button, else that first one.
  std::vector<Control*> order;
  std::vector<const Control*> groupsDone;
  for (Control* c : all) {
    if (c->Kind() != ControlKind::OptionButton) {
      order.push_back(c);
      continue;
    }
    const Control* group = c->Container();
    if (std::find(groupsDone.begin(), groupsDone.end(), group) != groupsDone.end()) continue;
    groupsDone.push_back(group);
    Control* stop = c;
    for (Control* o : all) {
      if (o->Kind() == ControlKind::OptionButton && o->Container() == group &&
          static_cast<const OptionButton*>(o)->Value()) {
        stop = o;
        break;
      }
    }
    order.push_back(stop);
  }
  return order;
}

bool Form::FocusNext(bool backward) {
  const std::vector<Control*> order = TabOrder();
  const int n = static_cast<int>(order.size());
  if (n == 0) return false;
  int at = -1;
  for (int i = 0; i < n; ++i) {
    if (order[static_cast<std::size_t>(i)] == activeControl_) at = i;
  }
  // A focused option counts as its group's stop.
  if (at < 0 && activeControl_ != nullptr && activeControl_->Kind() == ControlKind::OptionButton) {
    for (int i = 0; i < n; ++i) {
      const Control* c = order[static_cast<std::size_t>(i)];
      if (c->Kind() == ControlKind::OptionButton && c->Container() == activeControl_->Container())
        at = i;
    }
  }
  for (int step = 1; step <= n; ++step) {
    int i =
        at < 0 ? (backward ? n - step : step - 1) : ((at + (backward ? -step : step)) % n + n) % n;
    Control* c = order[static_cast<std::size_t>(i)];
    if (c->CanFocus()) {
      SetActiveControl(c);
      return true;
    }
  }
  return false;
}

void Form::Navigate(KeyArgs& args) {
  if (args.keyCode == kKeyTab) {
    if ((args.shift & (kCtrlMask | kAltMask)) != 0) return;
    FocusNext((args.shift & kShiftMask) != 0);
    args.keyCode = 0;
    return;
  }
  Control* active = activeControl_;
  if (active == nullptr || active->Kind() != ControlKind::OptionButton || !active->AcceptsInput())
    return;
  const bool back = args.keyCode == kKeyLeft || args.keyCode == kKeyUp;
  const bool ahead = args.keyCode == kKeyRight || args.keyCode == kKeyDown;
  if (!back && !ahead) return;
  // The arrows go round the group in the order of the form, and choose as they go.
  std::vector<Control*> group;
  for (Control* c : controls_) {
    if (c->Kind() == ControlKind::OptionButton && c->Container() == active->Container())
      group.push_back(c);
  }
  const int n = static_cast<int>(group.size());
  const int at = static_cast<int>(std::find(group.begin(), group.end(), active) - group.begin());
  args.keyCode = 0;
  for (int step = 1; step < n; ++step) {
    Control* c = group[static_cast<std::size_t>(((at + (back ? -step : step)) % n + n) % n)];
    if (!c->AcceptsInput()) continue;
    SetActiveControl(c);
    static_cast<OptionButton*>(c)->UserClick();
    return;
  }
}

bool Form::SpaceAsEnter(Control* target, KeyArgs& args, bool act) {
  if (target == nullptr || args.keyCode != kKeySpace || args.shift != 0) return false;
  const KeyArgs enter{kKeyReturn, 0};
  for (std::size_t i = 0; i < keyRules_.size(); ++i) {
    const KeyRule rule = keyRules_[i];  // the action may change the rules
    if (rule.focus != target || !rule.Matches(rule.stroke, enter, target)) continue;
    args.keyCode = 0;
    if (act) Shield([&] { rule.action(); });
    return true;
  }
  return false;
}

void Form::DeliverKeyDown(KeyArgs& args) {
  Control* target =
      activeControl_ != nullptr && activeControl_->AcceptsInput() ? activeControl_ : nullptr;
  if (target != nullptr && RunKeyRules(KeyStroke::Down, args, true)) return;
  // Space on a control that answers Enter acts when it comes up, as a button does.
  if (SpaceAsEnter(target, args, false)) return;
  if (keyPreview_ || target == nullptr) {
    if (RunKeyRules(KeyStroke::Down, args, false)) return;
    RaiseKeyDown(args);
  }
  if (target != nullptr && args.keyCode != 0) target->RaiseKeyDown(args);
  if (args.keyCode != 0) Navigate(args);
}

void Form::DeliverKeyUp(KeyArgs& args) {
  Control* target =
      activeControl_ != nullptr && activeControl_->AcceptsInput() ? activeControl_ : nullptr;
  if (target != nullptr && RunKeyRules(KeyStroke::Up, args, true)) return;
  if (SpaceAsEnter(target, args, true)) return;
  if (keyPreview_ || target == nullptr) {
    if (RunKeyRules(KeyStroke::Up, args, false)) return;
    RaiseKeyUp(args);
  }
  if (target != nullptr && args.keyCode != 0) target->RaiseKeyUp(args);
}

void Form::DeliverKeyPress(int& keyAscii) {
  Control* target =
      activeControl_ != nullptr && activeControl_->AcceptsInput() ? activeControl_ : nullptr;
  if (keyPreview_ || target == nullptr) RaiseKeyPress(keyAscii);
  if (target != nullptr && keyAscii != 0) target->RaiseKeyPress(keyAscii);
}

void Form::SetPointer(MousePointer p) {
  if (pointer_ == p) return;
  pointer_ = p;
  Touch(Aspect::Style);
}

void Form::SetStartUpPosition(StartUpPosition p) {
  if (startUp_ == p) return;
  startUp_ = p;
  Touch(Aspect::Style);
}

void Form::SetIconPath(const Text& path) {
  if (iconPath_ == path) return;
  iconPath_ = path;
  Touch(Aspect::Picture);
}

void Form::SetPictureKey(const Text& key) {
  if (pictureKey_ == key) return;
  pictureKey_ = key;
  Touch(Aspect::Picture);
}

void Form::SetFrameFlags(bool controlBox, bool minButton, bool maxButton) {
  if (controlBox_ == controlBox && minButton_ == minButton && maxButton_ == maxButton) return;
  controlBox_ = controlBox;
  minButton_ = minButton;
  maxButton_ = maxButton;
  Touch(Aspect::Style);
}

void Form::SetFrameless(bool frameless, const Text& keptCaption) {
  if (frameless_ == frameless && keptCaption_ == keptCaption) return;
  frameless_ = frameless;
  keptCaption_ = keptCaption;
  Touch(Aspect::Style);
}

void Form::BeginDrag() {
  ++dragRequests_;
  if (dragHandler_) Shield([this] { dragHandler_(); });
}

void Form::SetTopMost(bool v) {
  if (topMost_ == v) return;
  topMost_ = v;
  Touch(Aspect::Style);
}

void Form::SetShowWithoutActivation(bool v) {
  if (showNoActivate_ == v) return;
  showNoActivate_ = v;
  Touch(Aspect::Style);
}

void Form::SetRegion(const std::optional<RoundRegion>& region) {
  if (region_ == region) return;
  region_ = region;
  Touch(Aspect::Style);
}

void Form::OnLayoutChanged(const Layout& before) {
  const Layout& now = GetLayout();
  if (!loaded_ || (now.width == before.width && now.height == before.height)) return;
  Shield([this] { Form_Resize(); });
}

void Form::SaveDesign() {
  Control::SaveDesign();
  design_ = {keyPreview_, iconPath_, pictureKey_};
  for (Control* c : controls_) c->SaveDesign();
}

void Form::RestoreDesign() {
  Control::RestoreDesign();
  keyPreview_ = design_.keyPreview;
  iconPath_ = design_.iconPath;
  pictureKey_ = design_.pictureKey;
  // The platform builds a new window: no focus, frame and outline as designed.
  activeControl_ = nullptr;
  frameless_ = false;
  keptCaption_.clear();
  region_.reset();
  pointer_ = MousePointer::Default;
  for (Control* c : controls_) c->RestoreDesign();
}

}  // namespace kit
