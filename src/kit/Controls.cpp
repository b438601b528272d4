#include "kit/Controls.h"

#include <algorithm>

#include "kit/Form.h"

namespace kit {

// ---- Label -------------------------------------------------------------------

Label::Label(Parent parent, Text name, Layout layout, Text caption)
    : Label(parent, std::move(name), -1, layout, std::move(caption)) {}

Label::Label(Parent parent, Text name, int index, Layout layout, Text caption)
    : Control(parent, ControlKind::Label, std::move(name), index, layout, std::move(caption)) {}

void Label::SetAutoSize(bool v) {
  if (s_.autoSize == v) return;
  s_.autoSize = v;
  Touch(Aspect::Style);
}

void Label::SetWordWrap(bool v) {
  if (s_.wordWrap == v) return;
  s_.wordWrap = v;
  Touch(Aspect::Style);
}

void Label::SetTextAlignment(Alignment v) {
  if (s_.alignment == v) return;
  s_.alignment = v;
  Touch(Aspect::Style);
}

void Label::SaveDesign() {
  Control::SaveDesign();
  design_ = s_;
}

void Label::RestoreDesign() {
  Control::RestoreDesign();
  s_ = design_;
}

// ---- Picture -----------------------------------------------------------------

Picture::Picture(Parent parent, Text name, Layout layout, Text pictureKey)
    : Picture(parent, std::move(name), -1, layout, std::move(pictureKey)) {}

Picture::Picture(Parent parent, Text name, int index, Layout layout, Text pictureKey)
    : Control(parent, ControlKind::Picture, std::move(name), index, layout) {
  s_.pictureKey = std::move(pictureKey);
}

Picture::Picture(Parent parent, ControlKind kind, Text name, int index, Layout layout)
    : Control(parent, kind, std::move(name), index, layout) {}

void Picture::SetPictureKey(const Text& key) {
  if (s_.pictureKey == key) return;
  s_.pictureKey = key;
  Touch(Aspect::Picture);
}

void Picture::SaveDesign() {
  Control::SaveDesign();
  design_ = s_;
}

void Picture::RestoreDesign() {
  Control::RestoreDesign();
  s_ = design_;
}

// ---- PictureButton -----------------------------------------------------------

PictureButton::PictureButton(Parent parent, Text name, Layout layout, Text caption)
    : PictureButton(parent, std::move(name), -1, layout, std::move(caption)) {}

PictureButton::PictureButton(Parent parent, Text name, int index, Layout layout, Text caption)
    : PictureButton(parent, name, index, layout, std::move(caption), DefaultLabelLayout(layout)) {}

PictureButton::PictureButton(Parent parent, Text name, int index, Layout layout, Text caption,
                             Layout labelLayout)
    : Picture(parent, ControlKind::PictureButton, name, index, layout),
      label_(Parent(static_cast<Control&>(*this)), u"lbl_" + name, index, labelLayout,
             std::move(caption)) {
  label_.SetTextAlignment(Alignment::Center);
}

Layout PictureButton::DefaultLabelLayout(const Layout& button) {
  // One line of the standard font, centred on the picture.
  constexpr double kLine = 225;
  double top = button.height > kLine ? (button.height - kLine) / 2 : 0;
  return {0, top, button.width, std::min(kLine, button.height)};
}

void PictureButton::SetSkinState(int state) {
  if (skin_.state == state) return;
  skin_.state = state;
  Touch(Aspect::Picture);
}

void PictureButton::SaveDesign() {
  Picture::SaveDesign();
  skinDesign_ = skin_;
}

void PictureButton::RestoreDesign() {
  Picture::RestoreDesign();
  skin_ = skinDesign_;
}

// ---- CheckBox ----------------------------------------------------------------

CheckBox::CheckBox(Parent parent, Text name, Layout layout, Text caption)
    : CheckBox(parent, std::move(name), -1, layout, std::move(caption)) {}

CheckBox::CheckBox(Parent parent, Text name, int index, Layout layout, Text caption)
    : Control(parent, ControlKind::CheckBox, std::move(name), index, layout, std::move(caption)) {}

void CheckBox::SetValue(int v) {
  if (v < 0 || v > 2) throw std::invalid_argument("check box value");
  if (value_ == v) return;
  value_ = v;
  Touch(Aspect::Value);
  Invoke(on.Click);
}

void CheckBox::UserClick() {
  if (!AcceptsInput()) return;
  SetValue(value_ == 1 ? 0 : 1);
}

void CheckBox::SaveDesign() {
  Control::SaveDesign();
  design_ = value_;
}

void CheckBox::RestoreDesign() {
  Control::RestoreDesign();
  value_ = design_;
}

// ---- OptionButton ------------------------------------------------------------

OptionButton::OptionButton(Parent parent, Text name, Layout layout, Text caption)
    : OptionButton(parent, std::move(name), -1, layout, std::move(caption)) {}

OptionButton::OptionButton(Parent parent, Text name, int index, Layout layout, Text caption)
    : Control(parent, ControlKind::OptionButton, std::move(name), index, layout,
              std::move(caption)) {}

void OptionButton::SetQuietly(bool v) {
  if (value_ == v) return;
  value_ = v;
  Touch(Aspect::Value);
}

void OptionButton::SetValue(bool v) {
  if (value_ == v) return;
  if (v) {
    for (Control* c : Owner().Controls()) {
      if (c != this && c->Kind() == ControlKind::OptionButton && c->Container() == Container()) {
        static_cast<OptionButton*>(c)->SetQuietly(false);
      }
    }
  }
  SetQuietly(v);
  if (v) Invoke(on.Click);
}

void OptionButton::UserClick() {
  if (AcceptsInput()) SetValue(true);
}

void OptionButton::SaveDesign() {
  Control::SaveDesign();
  design_ = value_;
}

void OptionButton::RestoreDesign() {
  Control::RestoreDesign();
  value_ = design_;
}

// ---- TextBox -----------------------------------------------------------------

TextBox::TextBox(Parent parent, Text name, Layout layout, Text text)
    : TextBox(parent, std::move(name), -1, layout, std::move(text)) {}

TextBox::TextBox(Parent parent, Text name, int index, Layout layout, Text text)
    : Control(parent, ControlKind::TextBox, std::move(name), index, layout, std::move(text)) {}

void TextBox::SetText(const Text& v) {
  if (v == Caption()) return;
  SetCaption(v);
  Invoke(on.Change);
}

void TextBox::SetMaxLength(int v) {
  if (s_.maxLength == v) return;
  s_.maxLength = v < 0 ? 0 : v;
  Touch(Aspect::Style);
}

void TextBox::SetPasswordChar(char16_t v) {
  if (s_.passwordChar == v) return;
  s_.passwordChar = v;
  Touch(Aspect::Style);
}

void TextBox::SetLocked(bool v) {
  if (s_.locked == v) return;
  s_.locked = v;
  Touch(Aspect::Style);
}

void TextBox::SetMultiLine(bool v) {
  if (s_.multiLine == v) return;
  s_.multiLine = v;
  Touch(Aspect::Style);
}

void TextBox::SaveDesign() {
  Control::SaveDesign();
  design_ = s_;
}

void TextBox::RestoreDesign() {
  Control::RestoreDesign();
  s_ = design_;
}

// ---- ProgressBar -------------------------------------------------------------

ProgressBar::ProgressBar(Parent parent, Text name, Layout layout)
    : Control(parent, ControlKind::ProgressBar, std::move(name), -1, layout) {}

void ProgressBar::SetRange(double min, double max) {
  if (max < min) std::swap(min, max);
  if (s_.min == min && s_.max == max) return;
  s_.min = min;
  s_.max = max;
  s_.value = std::clamp(s_.value, min, max);
  Touch(Aspect::Value);
}

void ProgressBar::SetValue(double v) {
  v = std::clamp(v, s_.min, s_.max);
  if (s_.value == v) return;
  s_.value = v;
  Touch(Aspect::Value);
}

void ProgressBar::SetBarColor(Color c) {
  if (s_.barColor == c) return;
  s_.barColor = c;
  Touch(Aspect::Style);
}

void ProgressBar::SaveDesign() {
  Control::SaveDesign();
  design_ = s_;
}

void ProgressBar::RestoreDesign() {
  Control::RestoreDesign();
  s_ = design_;
}

// ---- DatePicker --------------------------------------------------------------

DatePicker::DatePicker(Parent parent, Text name, Layout layout)
    : Control(parent, ControlKind::DatePicker, std::move(name), -1, layout) {}

void DatePicker::SetValue(const base::DateTime& v) {
  if (s_.value == v) return;
  s_.value = v;
  Touch(Aspect::Value);
  Invoke(on.Change);
}

void DatePicker::SetFormat(DateFormat f) {
  if (s_.format == f) return;
  s_.format = f;
  Touch(Aspect::Style);
}

void DatePicker::SetCustomFormat(const Text& f) {
  if (s_.customFormat == f) return;
  s_.customFormat = f;
  Touch(Aspect::Style);
}

void DatePicker::SetUpDown(bool v) {
  if (s_.upDown == v) return;
  s_.upDown = v;
  Touch(Aspect::Style);
}

void DatePicker::SaveDesign() {
  Control::SaveDesign();
  design_ = s_;
}

void DatePicker::RestoreDesign() {
  Control::RestoreDesign();
  s_ = design_;
}

// ---- Timer -------------------------------------------------------------------

Timer::Timer(Parent parent, Text name, unsigned intervalMs, bool enabled)
    : Control(parent, ControlKind::Timer, std::move(name), -1, {}), interval_(intervalMs) {
  SetVisible(false);
  SetEnabled(enabled);
}

void Timer::SetInterval(unsigned ms) {
  if (interval_ == ms) return;
  interval_ = ms;
  Touch(Aspect::Value);
}

bool Timer::Running() const { return Enabled() && interval_ > 0 && Owner().IsLoaded(); }

void Timer::Fire() {
  if (Running()) Invoke(on.Timer);
}

void Timer::SaveDesign() {
  Control::SaveDesign();
  design_ = interval_;
}

void Timer::RestoreDesign() {
  Control::RestoreDesign();
  interval_ = design_;
}

// ---- ImageList ---------------------------------------------------------------

ImageList::ImageList(Parent parent, Text name)
    : Control(parent, ControlKind::ImageList, std::move(name), -1, {}) {
  SetVisible(false);
}

void ImageList::Add(const Text& key, const Text& source) {
  for (Entry& e : entries_) {
    if (base::EqualsNoCase(e.key, key)) {
      if (e.source == source) return;
      e.source = source;
      Touch(Aspect::Items);
      return;
    }
  }
  entries_.push_back({key, source});
  Touch(Aspect::Items);
}

bool ImageList::Has(TextView key) const { return Source(key).has_value(); }

std::optional<Text> ImageList::Source(TextView key) const {
  for (const Entry& e : entries_) {
    if (base::EqualsNoCase(e.key, key)) return e.source;
  }
  return std::nullopt;
}

}  // namespace kit

namespace kit {

// ---- ComboBox ------------------------------------------------------------------

ComboBox::ComboBox(Parent parent, Text name, Layout layout)
    : Control(parent, ControlKind::ComboBox, std::move(name), -1, layout) {}

void ComboBox::AddItem(const Text& text) {
  s_.items.push_back(text);
  Touch(Aspect::Items);
}

void ComboBox::Clear() {
  if (s_.items.empty() && s_.index == -1) return;
  s_.items.clear();
  s_.index = -1;
  Touch(Aspect::Items | Aspect::Value);
}

Text ComboBox::List(int i) const {
  if (i < 0 || i >= ListCount()) return Text();
  return s_.items[static_cast<std::size_t>(i)];
}

void ComboBox::SetListIndex(int i) {
  if (i < -1 || i >= ListCount()) throw std::out_of_range("combo box index");
  if (s_.index == i) return;
  s_.index = i;
  Touch(Aspect::Value);
  Invoke(on.Click);
}

void ComboBox::UserSelect(int i) {
  if (!AcceptsInput() || i < 0 || i >= ListCount()) return;
  SetListIndex(i);
}

void ComboBox::SaveDesign() {
  Control::SaveDesign();
  design_ = s_;
}

void ComboBox::RestoreDesign() {
  s_ = design_;
  Control::RestoreDesign();
  Touch(Aspect::Items | Aspect::Value);
}

}  // namespace kit
