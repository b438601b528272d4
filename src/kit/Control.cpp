#include "kit/Control.h"

#include "kit/Form.h"

namespace kit {

const char* KindName(ControlKind kind) {
  switch (kind) {
    case ControlKind::Form: return "Form";
    case ControlKind::Label: return "Label";
    case ControlKind::Picture: return "Picture";
    case ControlKind::PictureButton: return "PictureButton";
    case ControlKind::CheckBox: return "CheckBox";
    case ControlKind::OptionButton: return "OptionButton";
    case ControlKind::TextBox: return "TextBox";
    case ControlKind::ListView: return "ListView";
    case ControlKind::ProgressBar: return "ProgressBar";
    case ControlKind::DatePicker: return "DatePicker";
    case ControlKind::Timer: return "Timer";
    case ControlKind::Menu: return "Menu";
    case ControlKind::MenuItem: return "MenuItem";
    case ControlKind::ImageList: return "ImageList";
    case ControlKind::ComboBox: return "ComboBox";
  }
  return "?";
}

const char* RoleName(Role role) {
  switch (role) {
    case Role::None: return "none";
    case Role::StaticText: return "static text";
    case Role::Graphic: return "graphic";
    case Role::Pane: return "pane";
    case Role::PushButton: return "push button";
    case Role::Indicator: return "indicator";
    case Role::Slider: return "slider";
    case Role::CheckBox: return "check box";
    case Role::RadioButton: return "radio button";
    case Role::Text: return "text";
    case Role::List: return "list";
    case Role::ProgressBar: return "progress bar";
    case Role::DatePicker: return "date picker";
    case Role::ComboBox: return "combo box";
    case Role::Window: return "window";
  }
  return "?";
}

Parent::Parent(Form& f) : form(&f) {}
Parent::Parent(Control& c) : form(&c.Owner()), container(&c) {}

Control::Control(Parent parent, ControlKind kind, Text name, int index, Layout layout, Text caption)
    : kind_(kind),
      name_(std::move(name)),
      index_(index),
      form_(parent.form),
      container_(parent.container) {
  common_.layout = layout;
  common_.caption = std::move(caption);
  form_->Register(*this);
}

Control::Control(Form& self, Text name, Layout layout, Text caption)
    : kind_(ControlKind::Form), name_(std::move(name)), form_(&self) {
  common_.layout = layout;
  common_.caption = std::move(caption);
}

Control::~Control() {
  if (kind_ != ControlKind::Form && form_ != nullptr) form_->Unregister(*this);
}

Text Control::FullName() const {
  if (index_ < 0) return name_;
  return name_ + u"(" + base::FromNumber(index_) + u")";
}

void Control::Touch(Aspect aspect) {
  ++revision_;
  form_->Notify(*this, aspect);
}

void Control::SetLayout(const Layout& layout) {
  if (common_.layout == layout) return;
  Layout before = common_.layout;
  common_.layout = layout;
  Touch(Aspect::Layout);
  OnLayoutChanged(before);
}

void Control::Move(double left, double top, double width, double height) {
  SetLayout({left, top, width, height});
}
void Control::SetLeft(double v) {
  Layout l = common_.layout;
  l.left = v;
  SetLayout(l);
}
void Control::SetTop(double v) {
  Layout l = common_.layout;
  l.top = v;
  SetLayout(l);
}
void Control::SetWidth(double v) {
  Layout l = common_.layout;
  l.width = v;
  SetLayout(l);
}
void Control::SetHeight(double v) {
  Layout l = common_.layout;
  l.height = v;
  SetLayout(l);
}

void Control::SetVisible(bool v) {
  if (common_.visible == v) return;
  common_.visible = v;
  Touch(kind_ == ControlKind::Form ? Aspect::Visible | Aspect::Lifecycle : Aspect::Visible);
}

void Control::SetEnabled(bool v) {
  if (common_.enabled == v) return;
  common_.enabled = v;
  Touch(Aspect::Enabled);
}

void Control::SetCaption(const Text& v) {
  if (common_.caption == v) return;
  common_.caption = v;
  Touch(Aspect::Caption);
}

void Control::SetToolTipText(const Text& v) {
  if (common_.toolTipText == v) return;
  common_.toolTipText = v;
  Touch(Aspect::Caption);
}

void Control::SetForeColor(Color v) {
  if (common_.foreColor == v) return;
  common_.foreColor = v;
  Touch(Aspect::Style);
}

void Control::SetBackColor(Color v) {
  if (common_.backColor == v) return;
  common_.backColor = v;
  Touch(Aspect::Style);
}

void Control::SetControlPointer(MousePointer p) {
  if (common_.pointer == p) return;
  common_.pointer = p;
  Touch(Aspect::Style);
}

void Control::SetFontSize(double v) {
  if (common_.fontSize == v) return;
  common_.fontSize = v;
  Touch(Aspect::Style);
}

void Control::SetFontBold(bool v) {
  if (common_.fontBold == v) return;
  common_.fontBold = v;
  Touch(Aspect::Style);
}

void Control::SetFocus() {
  if (kind_ == ControlKind::Form) return;
  form_->SetActiveControl(this);
}

bool Control::HasFocus() const { return form_->ActiveControl() == this; }

Role Control::Role() const {
  if (role_) return *role_;
  switch (kind_) {
    case ControlKind::Form: return Role::Window;
    case ControlKind::Label: return Role::StaticText;
    case ControlKind::Picture:
      for (const Control* c : form_->Controls()) {
        if (c->container_ == this) return Role::Pane;
      }
      return Role::Graphic;
    case ControlKind::PictureButton: return Role::PushButton;
    case ControlKind::CheckBox: return Role::CheckBox;
    case ControlKind::OptionButton: return Role::RadioButton;
    case ControlKind::TextBox: return Role::Text;
    case ControlKind::ListView: return Role::List;
    case ControlKind::ProgressBar: return Role::ProgressBar;
    case ControlKind::DatePicker: return Role::DatePicker;
    case ControlKind::ComboBox: return Role::ComboBox;
    case ControlKind::Timer:
    case ControlKind::Menu:
    case ControlKind::MenuItem:
    case ControlKind::ImageList: return Role::None;
  }
  return Role::None;
}

void Control::SetRole(kit::Role role) {
  if (role_ == role) return;
  role_ = role;
  Touch(Aspect::Style);
}

bool Control::TabStop() const {
  if (tabStop_) return *tabStop_;
  switch (Role()) {
    case Role::PushButton:
    case Role::Slider:
    case Role::CheckBox:
    case Role::RadioButton:
    case Role::Text:
    case Role::List:
    case Role::DatePicker:
    case Role::ComboBox: return true;
    default: return false;
  }
}

void Control::SetTabStop(bool v) {
  if (tabStop_ == v) return;
  tabStop_ = v;
  Touch(Aspect::Style);
}

bool Control::CanFocus() const {
  return kind_ != ControlKind::Form && TabStop() && AcceptsInput() && form_->Visible();
}

bool Control::AcceptsInput() const {
  // A form takes its own input while loaded; shown or not is the renderer's matter.
  if (kind_ == ControlKind::Form) return form_->IsLoaded() && Enabled();
  for (const Control* c = this; c != nullptr; c = c->container_) {
    if (!c->Visible() || !c->Enabled()) return false;
  }
  return form_->Enabled() && form_->IsLoaded();
}

void Control::ReportFailure(const base::ErrorInfo& error) noexcept { form_->Fail(*this, error); }

void Control::RaiseClick() {
  if (AcceptsInput()) Invoke(on.Click);
}
void Control::RaiseDblClick() {
  if (AcceptsInput()) Invoke(on.DblClick);
}
void Control::RaiseMouseDown(const MouseArgs& args) {
  if (AcceptsInput()) Invoke(on.MouseDown, args);
}
void Control::RaiseMouseUp(const MouseArgs& args) {
  if (AcceptsInput()) Invoke(on.MouseUp, args);
}
void Control::RaiseMouseMove(const MouseArgs& args) {
  if (AcceptsInput()) Invoke(on.MouseMove, args);
}
void Control::RaiseKeyDown(KeyArgs& args) {
  if (AcceptsInput()) Invoke(on.KeyDown, args);
}
void Control::RaiseKeyUp(KeyArgs& args) {
  if (AcceptsInput()) Invoke(on.KeyUp, args);
}
void Control::RaiseKeyPress(int& keyAscii) {
  if (AcceptsInput()) Invoke(on.KeyPress, keyAscii);
}
void Control::RaiseGotFocus() { Invoke(on.GotFocus); }
void Control::RaiseLostFocus() { Invoke(on.LostFocus); }
void Control::RaiseChange() { Invoke(on.Change); }

void Control::SaveDesign() {
  design_ = common_;
  designSaved_ = true;
}

void Control::RestoreDesign() {
  if (!designSaved_) return;
  Layout before = common_.layout;
  bool layoutChanged = !(before == design_.layout);
  common_ = design_;
  ++revision_;
  form_->Notify(
      *this, Aspect::Layout | Aspect::Caption | Aspect::Visible | Aspect::Enabled | Aspect::Style);
  if (layoutChanged && kind_ != ControlKind::Form) OnLayoutChanged(before);
}

}  // namespace kit
