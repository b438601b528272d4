#pragma once
// The base of every control of the screen kit: a named piece of plain state with a
// design layout in twips, a revision counter that a renderer watches, and event
// slots that the screen binds to its handlers. See docs/kit.md.
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "base/Guarded.h"
#include "base/Text.h"

namespace kit {

using base::Text;
using base::TextView;

// Position and size in twips (1440 to the inch), relative to the container.
// Fractions are kept: the design has widths such as 1200.19, and the scaling above
// 96 dots per inch divides every value.
struct Layout {
  double left = 0;
  double top = 0;
  double width = 0;
  double height = 0;
  bool operator==(const Layout&) const = default;
};

// Colours as the platform keeps them: 0x00BBGGRR. kDefaultColor leaves the system's.
using Color = std::uint32_t;
inline constexpr Color kDefaultColor = 0xFFFFFFFFu;
inline constexpr Color kWhite = 0x00FFFFFFu;
inline constexpr Color kBlack = 0x00000000u;

// The pointer over a window or a control, in the platform's numbers; Hand is the hand
// of the product's pointer list (a custom pointer to the platform).
enum class MousePointer : int { Default = 0, Hourglass = 11, Hand = 99 };

enum class ControlKind {
  Form,
  Label,
  Picture,
  PictureButton,
  CheckBox,
  OptionButton,
  TextBox,
  ListView,
  ProgressBar,
  DatePicker,
  Timer,
  Menu,
  MenuItem,
  ImageList,
  ComboBox,
};
const char* KindName(ControlKind kind);

// What a control is to the user and to a screen reader. A kind has its own (a label
// is static text, a list a list); a picture the user clicks to act is a push button,
// which also makes it a stop of the tab order.
enum class Role : int {
  None,        // not seen: timers, menus, image lists
  StaticText,  // labels
  Graphic,     // pictures that only show something
  Pane,        // pictures that hold other controls
  PushButton,  // skinned buttons and pictures that act
  Indicator,   // a picture whose colour says a state (a status light)
  Slider,      // a picture the user moves to set a value (the bandwidth knob)
  CheckBox,
  RadioButton,
  Text,  // text boxes
  List,
  ProgressBar,
  DatePicker,
  ComboBox,
  Window,  // the form
};
const char* RoleName(Role role);

// What changed, so that a renderer can update only that part of a real window.
enum class Aspect : std::uint32_t {
  Layout = 1u << 0,
  Caption = 1u << 1,  // caption, text, tooltip text
  Visible = 1u << 2,
  Enabled = 1u << 3,
  Value = 1u << 4,    // check state, option value, progress, date, timer interval
  Picture = 1u << 5,  // picture key, skin state, icon
  Items = 1u << 6,    // list columns and rows, menu children, image list entries
  Style = 1u << 7,    // colours, font, flags such as word wrap or borderless
  Focus = 1u << 8,
  Lifecycle = 1u << 9,  // form loaded, unloaded, shown, hidden
  Scroll = 1u << 11,    // a list asked to bring a row into view (once, at the asking)
};
constexpr Aspect operator|(Aspect a, Aspect b) {
  return static_cast<Aspect>(static_cast<std::uint32_t>(a) | static_cast<std::uint32_t>(b));
}
constexpr bool Has(Aspect set, Aspect one) {
  return (static_cast<std::uint32_t>(set) & static_cast<std::uint32_t>(one)) != 0;
}

// Mouse buttons and shift states carry the platform's numbers, as the design's
// handlers compare them ("button 2" is the right button, Alt is 4).
inline constexpr int kLeftButton = 1;
inline constexpr int kRightButton = 2;
inline constexpr int kMiddleButton = 4;
inline constexpr int kShiftMask = 1;
inline constexpr int kCtrlMask = 2;
inline constexpr int kAltMask = 4;

inline constexpr int kKeyTab = 9;
inline constexpr int kKeyReturn = 13;
inline constexpr int kKeyEscape = 27;
inline constexpr int kKeySpace = 32;
inline constexpr int kKeyLeft = 37;
inline constexpr int kKeyUp = 38;
inline constexpr int kKeyRight = 39;
inline constexpr int kKeyDown = 40;
inline constexpr int kKeyDelete = 46;

struct MouseArgs {
  int button = kLeftButton;
  int shift = 0;
  double x = 0;  // twips, in the control's own space
  double y = 0;
};

struct KeyArgs {
  int keyCode = 0;  // virtual key: letters are their upper-case code ('A' = 65)
  int shift = 0;
  bool Alt() const { return (shift & kAltMask) != 0; }
};

class ListItem;

// The events a control can raise. Only those that mean something for a kind are ever
// raised for it; unbound slots are skipped.
struct ControlEvents {
  std::function<void()> Click;
  std::function<void()> DblClick;
  std::function<void()> Change;
  std::function<void()> GotFocus;
  std::function<void()> LostFocus;
  std::function<void(const MouseArgs&)> MouseDown;
  std::function<void(const MouseArgs&)> MouseUp;
  std::function<void(const MouseArgs&)> MouseMove;
  // A handler may set keyCode (or keyAscii) to 0 to swallow the key.
  std::function<void(KeyArgs&)> KeyDown;
  std::function<void(KeyArgs&)> KeyUp;
  std::function<void(int& keyAscii)> KeyPress;
  std::function<void()> Timer;                   // Timer
  std::function<void(ListItem&)> ItemClick;      // ListView
  std::function<void(int row1)> RowClick;        // ListView whose rows are its owner's
  std::function<void(ListItem&)> ItemCheck;      // ListView
  std::function<void(int column1)> ColumnClick;  // ListView, 1-based column
};

class Form;
class Control;

// Where a control sits: on the form itself, or inside a container control (a picture
// that holds buttons, or a skinned button that holds its label).
struct Parent {
  Parent(Form& f);     // NOLINT(google-explicit-constructor): reads as the design does
  Parent(Control& c);  // NOLINT(google-explicit-constructor)
  Form* form = nullptr;
  Control* container = nullptr;
};

class Control {
 public:
  Control(Parent parent, ControlKind kind, Text name, int index, Layout layout, Text caption = {});
  virtual ~Control();
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  ControlKind Kind() const { return kind_; }
  const Text& Name() const { return name_; }
  int Index() const { return index_; }  // -1 unless the control is in an array
  // "cmdButton(1)" for an array element, else the name.
  Text FullName() const;
  Form& Owner() const { return *form_; }
  Control* Container() const { return container_; }

  const Layout& GetLayout() const { return common_.layout; }
  double Left() const { return common_.layout.left; }
  double Top() const { return common_.layout.top; }
  double Width() const { return common_.layout.width; }
  double Height() const { return common_.layout.height; }
  void SetLayout(const Layout& layout);
  void Move(double left, double top, double width, double height);
  void SetLeft(double v);
  void SetTop(double v);
  void SetWidth(double v);
  void SetHeight(double v);

  bool Visible() const { return common_.visible; }
  void SetVisible(bool v);
  bool Enabled() const { return common_.enabled; }
  void SetEnabled(bool v);
  const Text& Caption() const { return common_.caption; }
  void SetCaption(const Text& v);
  // The platform's plain hover tip (not the balloon tip of the skinned buttons).
  const Text& ToolTipText() const { return common_.toolTipText; }
  void SetToolTipText(const Text& v);
  // The pointer while it is over this control (a form's own is Form::Pointer).
  MousePointer ControlPointer() const { return common_.pointer; }
  void SetControlPointer(MousePointer p);
  Color ForeColor() const { return common_.foreColor; }
  void SetForeColor(Color v);
  // The colour the design gave; the skin returns a label to it.
  Color DesignForeColor() const { return designSaved_ ? design_.foreColor : common_.foreColor; }
  Color BackColor() const { return common_.backColor; }
  void SetBackColor(Color v);
  double FontSize() const { return common_.fontSize; }  // points; 0 = the form's
  void SetFontSize(double v);
  bool FontBold() const { return common_.fontBold; }
  void SetFontBold(bool v);
  const Text& Tag() const { return common_.tag; }
  void SetTag(const Text& v) { common_.tag = v; }

  // Gives the control the focus (the form's active control).
  void SetFocus();
  bool HasFocus() const;
  // Whether the control has had the focus since the form was loaded (some designed
  // keys stop at the form once a control has had it).
  bool EverFocused() const { return everFocused_; }

  // What the control is to the user: its role (by kind unless set), whether Tab
  // stops on it, and the name a screen reader says (the caption; a picture without
  // visible text carries a short caption that says what it does).
  kit::Role Role() const;
  void SetRole(kit::Role role);
  bool TabStop() const;
  void SetTabStop(bool v);
  // Whether it can take the focus now: a tab stop that accepts input.
  bool CanFocus() const;

  // Grows by one with every change of state; unchanged values do not count.
  std::uint64_t Revision() const { return revision_; }

  // Whether user input reaches the control: it and every container are visible and
  // enabled. A renderer never delivers input to such a control, and the Raise calls
  // for input below enforce the same, so tests cannot press a hidden button.
  bool AcceptsInput() const;

  ControlEvents on;

  // Raising events. Input events are dropped when the control does not accept input;
  // Change and Timer are raised as the state says. Nothing thrown by a handler
  // leaves these calls: it goes to the form's failure sink.
  void RaiseClick();
  void RaiseDblClick();
  void RaiseMouseDown(const MouseArgs& args);
  void RaiseMouseUp(const MouseArgs& args);
  void RaiseMouseMove(const MouseArgs& args);
  void RaiseKeyDown(KeyArgs& args);
  void RaiseKeyUp(KeyArgs& args);
  void RaiseKeyPress(int& keyAscii);
  void RaiseGotFocus();
  void RaiseLostFocus();
  void RaiseChange();

  // Design state: what a form gets back each time it is loaded again.
  virtual void SaveDesign();
  virtual void RestoreDesign();

 protected:
  // For the form itself, which is its own owner and has no container.
  Control(Form& self, Text name, Layout layout, Text caption);

  void Touch(Aspect aspect);
  // Called after the layout changed (the form raises its Resize from here).
  virtual void OnLayoutChanged(const Layout& before) {}

  template <class Slot, class... Args>
  void Invoke(const Slot& slot, Args&&... args) noexcept;
  void ReportFailure(const base::ErrorInfo& error) noexcept;

 private:
  struct Common {
    Layout layout;
    bool visible = true;
    bool enabled = true;
    Text caption;
    Text toolTipText;
    MousePointer pointer = MousePointer::Default;
    Color foreColor = kDefaultColor;
    Color backColor = kDefaultColor;
    double fontSize = 0;
    bool fontBold = false;
    Text tag;
  };

  ControlKind kind_;
  Text name_;
  int index_ = -1;
  Form* form_ = nullptr;
  Control* container_ = nullptr;
  Common common_;
  Common design_;
  bool designSaved_ = false;
  std::uint64_t revision_ = 0;
  bool everFocused_ = false;
  std::optional<kit::Role> role_;
  std::optional<bool> tabStop_;
  friend class Form;
};

template <class Slot, class... Args>
void Control::Invoke(const Slot& slot, Args&&... args) noexcept {
  if (!slot) return;
  try {
    slot(std::forward<Args>(args)...);
  } catch (...) {
    ReportFailure(base::DescribeCurrentException());
  }
}

}  // namespace kit
