#pragma once
// The small controls of the screen kit. Each is plain state; setters that change
// nothing do not count as a change. Where the platform raises an event on a change
// made by the program (a check box's Click, a text box's Change), so do these: the
// design's screens depend on it (see the flags that guard against it).
#include <initializer_list>
#include <memory>
#include <optional>
#include <stdexcept>
#include <vector>

#include "base/DateTime.h"
#include "kit/Control.h"

namespace kit {

enum class Alignment : int { Left = 0, Right = 1, Center = 2 };

class Label : public Control {
 public:
  Label(Parent parent, Text name, Layout layout, Text caption = {});
  Label(Parent parent, Text name, int index, Layout layout, Text caption = {});

  // An auto-sized label takes the size of its text (measured by the renderer, or by
  // kit::AutoSize in portable code); with WordWrap only its height follows.
  bool AutoSize() const { return s_.autoSize; }
  void SetAutoSize(bool v);
  bool WordWrap() const { return s_.wordWrap; }
  void SetWordWrap(bool v);
  Alignment TextAlignment() const { return s_.alignment; }
  void SetTextAlignment(Alignment v);

  void SaveDesign() override;
  void RestoreDesign() override;

 private:
  struct State {
    bool autoSize = false;
    bool wordWrap = false;
    Alignment alignment = Alignment::Left;
  } s_, design_;
};

// A picture or image control; pictures come from an image list by key (or a file).
// A picture can hold other controls (see Parent).
class Picture : public Control {
 public:
  Picture(Parent parent, Text name, Layout layout, Text pictureKey = {});
  Picture(Parent parent, Text name, int index, Layout layout, Text pictureKey = {});

  const Text& PictureKey() const { return s_.pictureKey; }
  void SetPictureKey(const Text& key);

  void SaveDesign() override;
  void RestoreDesign() override;

 protected:
  Picture(Parent parent, ControlKind kind, Text name, int index, Layout layout);

 private:
  struct State {
    Text pictureKey;
  } s_, design_;
};

// A skinned button: a picture with a label on top of it named "lbl_" + its name
// (same index). The text of the button is the label's caption; the label is a
// control of its own (it has its own events) held inside the picture.
class PictureButton : public Picture {
 public:
  PictureButton(Parent parent, Text name, Layout layout, Text caption = {});
  PictureButton(Parent parent, Text name, int index, Layout layout, Text caption = {});
  // With the label's own layout, relative to the button.
  PictureButton(Parent parent, Text name, int index, Layout layout, Text caption,
                Layout labelLayout);

  Label& Lbl() { return label_; }
  const Label& Lbl() const { return label_; }

  // 0 normal, 1 hover, 2 disabled (see ApplySkin).
  int SkinState() const { return skin_.state; }
  void SetSkinState(int state);

  void SaveDesign() override;
  void RestoreDesign() override;

 private:
  static Layout DefaultLabelLayout(const Layout& button);

  struct State {
    int state = 0;
  } skin_, skinDesign_;
  Label label_;
};

class CheckBox : public Control {
 public:
  CheckBox(Parent parent, Text name, Layout layout, Text caption = {});
  CheckBox(Parent parent, Text name, int index, Layout layout, Text caption = {});

  // 0 unchecked, 1 checked, 2 greyed. A change raises Click, as the platform does
  // also for a change made by the program.
  int Value() const { return value_; }
  void SetValue(int v);
  bool Checked() const { return value_ == 1; }
  // What a renderer calls for the user's click: toggles when input is accepted.
  void UserClick();

  void SaveDesign() override;
  void RestoreDesign() override;

 private:
  int value_ = 0;
  int design_ = 0;
};

// Option buttons with the same container form one group: setting one clears the
// others. Setting one to true raises its Click.
class OptionButton : public Control {
 public:
  OptionButton(Parent parent, Text name, Layout layout, Text caption = {});
  OptionButton(Parent parent, Text name, int index, Layout layout, Text caption = {});

  bool Value() const { return value_; }
  void SetValue(bool v);
  void UserClick();

  void SaveDesign() override;
  void RestoreDesign() override;

 private:
  void SetQuietly(bool v);
  bool value_ = false;
  bool design_ = false;
};

class TextBox : public Control {
 public:
  TextBox(Parent parent, Text name, Layout layout, Text text = {});
  TextBox(Parent parent, Text name, int index, Layout layout, Text text = {});

  // The text is held as the control's caption; a change raises Change.
  const Text& GetText() const { return Caption(); }
  void SetText(const Text& v);

  // Limits what the user types (the renderer applies it); text set by the program
  // is taken whole, as the platform's edit control does.
  int MaxLength() const { return s_.maxLength; }  // 0 = no limit
  void SetMaxLength(int v);
  char16_t PasswordChar() const { return s_.passwordChar; }  // 0 = none
  void SetPasswordChar(char16_t v);
  bool Locked() const { return s_.locked; }
  void SetLocked(bool v);
  bool MultiLine() const { return s_.multiLine; }
  void SetMultiLine(bool v);

  void SaveDesign() override;
  void RestoreDesign() override;

 private:
  struct State {
    int maxLength = 0;
    char16_t passwordChar = 0;
    bool locked = false;
    bool multiLine = false;
  } s_, design_;
};

class ProgressBar : public Control {
 public:
  ProgressBar(Parent parent, Text name, Layout layout);

  double Min() const { return s_.min; }
  double Max() const { return s_.max; }
  void SetRange(double min, double max);
  double Value() const { return s_.value; }
  // Held within Min..Max: a value outside stands at the nearer end.
  void SetValue(double v);
  Color BarColor() const { return s_.barColor; }
  void SetBarColor(Color c);

  void SaveDesign() override;
  void RestoreDesign() override;

 private:
  struct State {
    double min = 0;
    double max = 100;
    double value = 0;
    Color barColor = kDefaultColor;
  } s_, design_;
};

enum class DateFormat : int { LongDate = 0, ShortDate = 1, Time = 2, Custom = 3 };

// The date and time picker. The text it shows is the renderer's (regional formats);
// the value and format are the model.
class DatePicker : public Control {
 public:
  DatePicker(Parent parent, Text name, Layout layout);

  const base::DateTime& Value() const { return s_.value; }
  // A change raises Change.
  void SetValue(const base::DateTime& v);
  DateFormat Format() const { return s_.format; }
  void SetFormat(DateFormat f);
  const Text& CustomFormat() const { return s_.customFormat; }
  void SetCustomFormat(const Text& f);
  bool UpDown() const { return s_.upDown; }
  void SetUpDown(bool v);

  void SaveDesign() override;
  void RestoreDesign() override;

 private:
  struct State {
    base::DateTime value;
    DateFormat format = DateFormat::ShortDate;
    Text customFormat;
    bool upDown = false;
  } s_, design_;
};

// A drop-down list the user chooses one entry from (the platform's combo box with
// the list style). Entries count from 0 and no choice is -1, as the design's
// ListIndex does. A change of the choice raises Click, also when the program makes
// it, as the platform does.
class ComboBox : public Control {
 public:
  ComboBox(Parent parent, Text name, Layout layout);

  void AddItem(const Text& text);
  void Clear();
  int ListCount() const { return static_cast<int>(s_.items.size()); }
  // Entry `i`; "" outside the list.
  Text List(int i) const;
  const std::vector<Text>& Items() const { return s_.items; }
  int ListIndex() const { return s_.index; }
  // -1 clears the choice; an index outside the list throws std::out_of_range.
  void SetListIndex(int i);
  // The text of the chosen entry, "" for none.
  Text GetText() const { return List(s_.index); }
  // What a renderer calls when the user chose entry `i`.
  void UserSelect(int i);

  void SaveDesign() override;
  void RestoreDesign() override;

 private:
  struct State {
    std::vector<Text> items;
    int index = -1;
  } s_, design_;
};

// A timer of the form. The renderer runs it while the form is loaded, the timer
// enabled and the interval above 0; a test calls Fire.
class Timer : public Control {
 public:
  Timer(Parent parent, Text name, unsigned intervalMs = 0, bool enabled = true);

  unsigned Interval() const { return interval_; }
  void SetInterval(unsigned ms);
  bool Running() const;
  // Raises the Timer event when the timer runs.
  void Fire();

  void SaveDesign() override;
  void RestoreDesign() override;

 private:
  unsigned interval_ = 0;
  unsigned design_ = 0;
};

// Pictures by key; the source is a file name or resource name for the renderer.
class ImageList : public Control {
 public:
  ImageList(Parent parent, Text name);

  struct Entry {
    Text key;
    Text source;
  };
  void Add(const Text& key, const Text& source);
  bool Has(TextView key) const;
  std::optional<Text> Source(TextView key) const;
  const std::vector<Entry>& Entries() const { return entries_; }

 private:
  std::vector<Entry> entries_;
};

// A control array of the design ("cmdButton(0..2)"): elements share the name and
// carry their index. An index outside the array throws std::out_of_range, which
// the handler's last-resort guard reports as the platform would.
template <class T>
class ControlArray {
 public:
  ControlArray(Parent parent, Text name, std::initializer_list<Layout> layouts)
      : parent_(parent), name_(std::move(name)) {
    for (const Layout& l : layouts) Add(l);
  }

  T& Add(const Layout& layout) {
    items_.push_back(std::make_unique<T>(parent_, name_, static_cast<int>(items_.size()), layout));
    return *items_.back();
  }

  T& operator()(int index) { return *items_.at(Checked(index)); }
  const T& operator()(int index) const { return *items_.at(Checked(index)); }
  int Count() const { return static_cast<int>(items_.size()); }
  bool Contains(int index) const { return index >= 0 && index < Count(); }
  const Text& Name() const { return name_; }

 private:
  static std::size_t Checked(int index) {
    if (index < 0) throw std::out_of_range("control array index");
    return static_cast<std::size_t>(index);
  }
  Parent parent_;
  Text name_;
  std::vector<std::unique_ptr<T>> items_;
};

}  // namespace kit
