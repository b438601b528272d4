#pragma once
// What a UI host is told about a window and its controls, and what it reports back.
// Plain values only: the screen kit describes its forms in these terms and the
// Windows host turns them into real windows, so the host never sees a form and the
// forms never see a window handle. Sizes and positions are twips (1440 to the inch)
// as the design gives them; the host maps them to pixels with its own scale.
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "base/DateTime.h"
#include "base/Text.h"

namespace platform {

using base::Text;

// Windows, controls, tips and tray icons are named by the host's own numbers. 0 is
// never a valid handle.
using UiHandle = std::uint32_t;

// 0x00BBGGRR as the platform keeps colours; the default leaves the system's colour
// (and, for a label or picture, lets what lies below show through).
using UiColor = std::uint32_t;
inline constexpr UiColor kUiDefaultColor = 0xFFFFFFFFu;

// Twips. A window's rectangle is on the screen and is its outer size; a control's is
// in the client area of its container (the window, or a picture that holds it).
struct UiRect {
  double left = 0;
  double top = 0;
  double width = 0;
  double height = 0;
  bool operator==(const UiRect&) const = default;
};

enum class UiKind : int {
  Label,
  Picture,
  PictureButton,  // a skinned button: a picture face with its label control inside
  CheckBox,
  OptionButton,
  TextBox,
  ListView,
  ProgressBar,
  DatePicker,
  ComboBox,  // a drop-down list to choose one entry from
};

// What a control is to the user and to a screen reader; the host gives its window
// the class, styles and accessible role that say so.
enum class UiRole : int {
  None,
  StaticText,
  Graphic,
  Pane,
  PushButton,
  Indicator,
  Slider,
  CheckBox,
  RadioButton,
  Text,
  List,
  ProgressBar,
  DatePicker,
  ComboBox,
  Window,
};

enum class UiAlign : int { Left = 0, Right = 1, Center = 2 };

struct UiFont {
  double size = 0;  // points; 0 is the standard size of the forms
  bool bold = false;
  bool operator==(const UiFont&) const = default;
};

struct UiListColumn {
  Text caption;
  double width = 0;  // twips; 0 hides the column
  bool operator==(const UiListColumn&) const = default;
};

struct UiListRow {
  Text text;
  std::vector<Text> subItems;
  bool checked = false;
  bool selected = false;
  UiColor foreColor = kUiDefaultColor;
  Text image;  // the small picture before the text, by image key; "" for none
  bool operator==(const UiListRow&) const = default;
};

// The rows of a list that stay with the program (a list of very many rows): the host is
// told their number and asks for a cell when it draws it or is asked for it. Rows and
// columns count from 0 here, as the platform's list does; a cell outside the rows is "".
class UiListSource {
 public:
  virtual ~UiListSource() = default;
  virtual Text Cell(int row0, int column0) const = 0;
};

enum class UiDateFormat : int { LongDate = 0, ShortDate = 1, Time = 2, Custom = 3 };

// One control. Every field is always filled; a kind reads the fields that mean
// something for it.
// The platform's pointer numbers; Hand is the hand of the product's pointer list (a
// custom pointer to the platform).
enum class UiPointer : int { Default = 0, Hourglass = 11, Hand = 99 };

struct UiControl {
  UiKind kind = UiKind::Label;
  Text name;  // the design's name, "cmdButton(1)" for an element of an array
  UiRole role = UiRole::StaticText;
  bool tabStop = false;  // Tab stops on it (the kit moves the focus; the host shows it)
  UiRect rect;
  bool visible = true;
  bool enabled = true;
  // The window text: a label's or check box's caption, a text box's text, the
  // caption of a skinned button's label. Screen readers and outside tests read it.
  Text caption;
  Text toolTip;                            // the platform's plain hover tip; "" for none
  UiPointer pointer = UiPointer::Default;  // over this control
  UiColor foreColor = kUiDefaultColor;
  UiColor backColor = kUiDefaultColor;
  UiFont font;

  // Label
  UiAlign align = UiAlign::Left;
  bool wordWrap = false;
  // Picture, PictureButton: the picture by image key ("" draws nothing); the skin
  // state of a button (0 normal, 1 hover, 2 disabled).
  Text pictureKey;
  int skinState = 0;
  // CheckBox 0, 1, 2 (greyed); OptionButton 0, 1
  int check = 0;
  // ProgressBar
  double min = 0;
  double max = 100;
  double value = 0;
  UiColor barColor = kUiDefaultColor;
  // TextBox
  int maxLength = 0;
  char16_t passwordChar = 0;
  bool locked = false;
  bool multiLine = false;
  // ListView; rows in the order they stand
  std::vector<UiListColumn> columns;
  std::vector<UiListRow> rows;
  // With a source the rows stay with the program: `rows` is empty, `rowCount` rows are
  // asked of the source, and `selectedRow` (from 1; 0 for none) is the selection.
  std::shared_ptr<const UiListSource> rowSource;
  int rowCount = 0;
  int selectedRow = 0;
  bool checkboxes = false;
  bool fullRowSelect = true;
  bool hideSelection = false;
  // The row (from 1) last asked to be made visible; 0 for none. A change with
  // UiChange::Scroll asks the host to scroll it into view, as little as needed.
  int visibleRow = 0;
  // ComboBox: the entries, and the chosen one (-1 for none)
  std::vector<Text> items;
  int listIndex = -1;
  // DatePicker
  base::DateTime date;
  UiDateFormat dateFormat = UiDateFormat::ShortDate;
  Text customFormat;
  bool upDown = false;
};

// A menu entry; caption "-" is a separator. Ids are the caller's and never 0.
struct UiMenuItem {
  std::uint32_t id = 0;
  Text caption;
  bool enabled = true;
  bool checked = false;
  bool visible = true;
  std::vector<UiMenuItem> children;
  bool operator==(const UiMenuItem&) const = default;
};

// The outline of a window in pixels: CreateRoundRectRgn's arguments.
struct UiRegion {
  long left = 0;
  long top = 0;
  long right = 0;
  long bottom = 0;
  long ellipseWidth = 0;
  long ellipseHeight = 0;
  bool operator==(const UiRegion&) const = default;
};

struct UiWindow {
  Text name;  // the form's name
  Text caption;
  UiRect rect;
  bool visible = false;
  bool enabled = true;
  // Without a frame the window has no title bar and no minimise or maximise box;
  // with one, the flags say which of the system menu and the boxes it has.
  bool frameless = false;
  bool controlBox = true;
  bool minButton = true;
  bool maxButton = true;
  Text pictureKey;  // background picture; "" for a plain background
  UiColor backColor = kUiDefaultColor;
  Text iconPath;  // an .ico file; "" for the program's own icon
  std::optional<UiRegion> region;
  UiPointer pointer = UiPointer::Default;
  // Centred on the work area when first shown (the platform's start-up positions 1
  // and 2), else where `rect` says.
  bool centerOnShow = false;
  // Above every window that is not; and shown without taking the activation (the
  // keyboard stays with the program the user is in).
  bool topmost = false;
  bool showNoActivate = false;
  std::vector<UiMenuItem> menuBar;  // the menus shown in the bar; empty for no bar
};

// What changed, so that the host touches only that part of a real window.
enum class UiChange : std::uint32_t {
  None = 0,
  Layout = 1u << 0,
  Caption = 1u << 1,
  Visible = 1u << 2,
  Enabled = 1u << 3,
  Value = 1u << 4,
  Picture = 1u << 5,
  Items = 1u << 6,
  Style = 1u << 7,
  Menu = 1u << 10,
  Scroll = 1u << 11,  // scroll a list so that its `visibleRow` shows
  All = 0xFFFFFFFFu,
};
constexpr UiChange operator|(UiChange a, UiChange b) {
  return static_cast<UiChange>(static_cast<std::uint32_t>(a) | static_cast<std::uint32_t>(b));
}
constexpr bool Has(UiChange set, UiChange one) {
  return (static_cast<std::uint32_t>(set) & static_cast<std::uint32_t>(one)) != 0;
}

struct UiTextSize {
  double width = 0;   // twips
  double height = 0;  // twips
};

// ---- Events -----------------------------------------------------------------------

enum class UiMouse : int { Down, Up, Move, Click, DblClick };

// Buttons and shift states carry the platform's numbers (1 left, 2 right, 4 middle;
// shift 1, ctrl 2, alt 4), as the design's handlers compare them.
struct UiMouseEvent {
  UiMouse what = UiMouse::Move;
  int button = 0;
  int shift = 0;
  double x = 0;  // twips, in the control's own client area
  double y = 0;
};

enum class UiKey : int { Down, Up, Press };

struct UiKeyEvent {
  UiKey what = UiKey::Down;
  int keyCode = 0;  // virtual key (letters in upper case) for Down and Up; the character for Press
  int shift = 0;
};

enum class UiListWhat : int { RowClick, RowCheck, ColumnClick };

struct UiListEvent {
  UiListWhat what = UiListWhat::RowClick;
  int index = 0;  // 1-based row, or 1-based column for ColumnClick
  bool checked = false;
};

// The host reports the user's doings to one of these per window. The host changes
// no state of its own on input: a check box click, a row selected or a close request
// is told here, and the new state comes back by an update (or the window is
// destroyed). Everything happens on the one UI thread, and a handler may destroy the
// very window that reported.
class IUiEvents {
 public:
  virtual ~IUiEvents() = default;
  // `control` 0 is the window itself.
  virtual void OnMouse(UiHandle window, UiHandle control, const UiMouseEvent& e) {}
  // False swallows the key: the control that has the focus never sees it.
  virtual bool OnKey(UiHandle window, const UiKeyEvent& e) { return true; }
  // A check box or option button was clicked.
  virtual void OnClick(UiHandle window, UiHandle control) {}
  virtual void OnTextChanged(UiHandle window, UiHandle control, const Text& text) {}
  virtual void OnDateChanged(UiHandle window, UiHandle control, const base::DateTime& value) {}
  virtual void OnList(UiHandle window, UiHandle control, const UiListEvent& e) {}
  // The user chose entry `index` (from 0) of a combo box.
  virtual void OnSelect(UiHandle window, UiHandle control, int index) {}
  // A control received the keyboard focus.
  virtual void OnFocus(UiHandle window, UiHandle control) {}
  // The window became (or stopped being) the program's active window.
  virtual void OnActivate(UiHandle window, bool active) {}
  // The user asked to close the window (system menu, Alt+F4). The host does not close
  // it: the model decides and destroys it, or not.
  virtual void OnCloseRequest(UiHandle window) {}
  // The window was minimised, or restored from the taskbar.
  virtual void OnMinimized(UiHandle window, bool minimized) {}
  // The user moved or sized the window; the new outer rectangle.
  virtual void OnMoved(UiHandle window, const UiRect& rect) {}
  virtual void OnMenu(UiHandle window, std::uint32_t itemId) {}
};

// ---- Tips and tray ------------------------------------------------------------------

// One message sent to a new tip window, by the platform's number (the tooltip
// messages of the design, which the host maps to their wide forms).
struct UiTipMessage {
  unsigned message = 0;
  std::int64_t wParam = 0;
  std::int64_t lParam = 0;
  bool operator==(const UiTipMessage&) const = default;
};

struct UiTip {
  UiHandle tool = 0;  // the control (or window) the tip belongs to
  Text windowClass;   // "tooltips_class32"
  std::uint32_t style = 0;
  std::uint32_t toolFlags = 0;
  Text text;
  Text title;
  int icon = 0;
  std::optional<Text> fontName;
  double fontSize = 0;
  std::vector<UiTipMessage> messages;  // in the order they are sent
};

struct UiTrayIcon {
  // The window that receives the icon's mouse messages; 0 for the host's own hidden
  // window.
  UiHandle owner = 0;
  // A picture key ("tray_running", looked up as <key>.ico in the image folder) or an
  // .ico file (a path, absolute or under the image folder).
  Text icon;
  Text tip;  // cut to what the shell takes (63 units)
};

// The callback message of the design's tray record, and the mouse messages it
// carries that the design acts on.
inline constexpr unsigned kTrayCallbackMessage = 2025;
inline constexpr int kTrayLeftDoubleClick = 515;
inline constexpr int kTrayRightButtonUp = 517;
// The keyboard on the icon (the shell's focus in the notification area): Enter or
// Space, and the context-menu key or Shift+F10. The host reports both as this one
// event; a selection that came from a mouse click is not reported as it.
inline constexpr int kTrayKeyboardMenu = 0x7B;  // the context-menu message's number
// What became of a balloon shown from the icon.
inline constexpr int kTrayBalloonShown = 0x402;
inline constexpr int kTrayBalloonTimeout = 0x404;
inline constexpr int kTrayBalloonClicked = 0x405;

// A balloon from the notification-area icon (the shell's own).
enum class UiBalloonIcon : int { None = 0, Info = 1, Warning = 2, Error = 3 };
struct UiTrayBalloon {
  Text title;  // cut to what the shell takes (63 units)
  Text text;   // cut to 255 units
  UiBalloonIcon icon = UiBalloonIcon::Info;
  bool operator==(const UiTrayBalloon&) const = default;
};

}  // namespace platform
