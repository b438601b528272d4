#include "kit/Form.h"

#include <algorithm>

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
  Touch(Aspect::Focus);
  if (before != nullptr) before->RaiseLostFocus();
  if (control != nullptr) control->RaiseGotFocus();
}

void Form::SetKeyPreview(bool v) {
  if (keyPreview_ == v) return;
  keyPreview_ = v;
  Touch(Aspect::Style);
}

void Form::DeliverKeyDown(KeyArgs& args) {
  Control* target =
      activeControl_ != nullptr && activeControl_->AcceptsInput() ? activeControl_ : nullptr;
  if (keyPreview_ || target == nullptr) RaiseKeyDown(args);
  if (target != nullptr && args.keyCode != 0) target->RaiseKeyDown(args);
}

void Form::DeliverKeyUp(KeyArgs& args) {
  Control* target =
      activeControl_ != nullptr && activeControl_->AcceptsInput() ? activeControl_ : nullptr;
  if (keyPreview_ || target == nullptr) RaiseKeyUp(args);
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
