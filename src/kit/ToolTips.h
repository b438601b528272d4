#pragma once
// Balloon tips of the skinned buttons: they come up on a right button up, not on
// hovering, and go away on any other click. The tip is a model here (what window to
// create, with which flags, and which messages in which order); a TipBackend of the
// renderer makes the real window from it.
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "kit/Control.h"
#include "kit/TipTable.h"

namespace kit {

// What a tip shows of a table text: its first four and its last four units dropped
// (the "<br>" marks all but one of the texts start and end with; that one loses four
// letters all the same, as it always has), every inner "<br>" a line break.
Text CutTipText(TextView text);

struct TipFontInfo {
  Text name;
  double size = 0;
  bool operator==(const TipFontInfo&) const = default;
};

// One message the renderer sends to the new tip window.
struct TipMessage {
  unsigned message = 0;
  std::int64_t wParam = 0;
  std::int64_t lParam = 0;
  bool operator==(const TipMessage&) const = default;
};

inline constexpr unsigned kTtmSetMaxTipWidth = 1048;
inline constexpr unsigned kTtmAddTool = 1028;
inline constexpr unsigned kTtmSetTitle = 1056;
inline constexpr unsigned kTtmSetTipBkColor = 1044;
inline constexpr unsigned kTtmSetTipTextColor = 1043;
inline constexpr unsigned kWmSetFont = 48;
inline constexpr unsigned kTtmSetDelayTime = 1027;
inline constexpr unsigned kTtmTrackPosition = 1042;
inline constexpr unsigned kTtmTrackActivate = 1041;
inline constexpr std::uint32_t kTipStyleBase = 0x80000003u;  // popup, always tip, no prefix
inline constexpr std::uint32_t kTipStyleBalloon = 0x40u;
inline constexpr long kTipMaxWidthPixels = 500;

// Everything needed to create one tip window over `parent`.
struct TipPlan {
  const Control* parent = nullptr;  // the tool: its window and its client area
  Text windowClass = u"tooltips_class32";
  std::uint32_t style = kTipStyleBase;
  std::uint32_t toolFlags = 17;
  Text text;
  Text title;
  int icon = 0;
  std::optional<TipFontInfo> font;
  std::vector<TipMessage> messages;  // in the order they are sent
};

// The renderer's side: real tip windows. Handles are the renderer's own; 0 failed.
class TipBackend {
 public:
  virtual ~TipBackend() = default;
  virtual std::uintptr_t Create(const TipPlan& plan) = 0;
  virtual void Destroy(std::uintptr_t tip) = 0;
  // Track position (client point of `window` turned into a screen point) and activate.
  virtual void Track(std::uintptr_t tip, long x, long y, const Control& window) = 0;
  // The older plain tip: shows `text` at the pointer, or removes it.
  virtual void ShowPlain(const Text& text) = 0;
  virtual void DestroyPlain() = 0;
};

class CBalloonToolTip {
 public:
  explicit CBalloonToolTip(TipBackend* backend = nullptr) : backend_(backend) {}
  ~CBalloonToolTip();
  CBalloonToolTip(const CBalloonToolTip&) = delete;
  CBalloonToolTip& operator=(const CBalloonToolTip&) = delete;

  // Properties, in the order of the class. Colours and font count as set once given.
  long VisibleTime() const { return visibleTime_; }  // ms the tip stays
  void SetVisibleTime(long ms) { visibleTime_ = ms; }
  long DelayTime() const { return delayTime_; }  // ms before it opens
  void SetDelayTime(long ms) { delayTime_ = ms; }
  int Icon() const { return icon_; }  // 0 none, 1 info, 2 warning, 3 error
  void SetIcon(int icon) { icon_ = icon; }
  const std::optional<TipFontInfo>& TipFont() const { return tipFont_; }
  void SetTipFont(const TipFontInfo& font) { tipFont_ = font; }
  const std::optional<Color>& ForeColor() const { return foreColor_; }
  void SetForeColor(Color c) { foreColor_ = c; }
  const Text& Title() const { return title_; }
  void SetTitle(const Text& t) { title_ = t; }
  bool PopupOnDemand() const { return popupOnDemand_; }  // opens only by Show
  void SetPopupOnDemand(bool v) { popupOnDemand_ = v; }
  const std::optional<Color>& BackColor() const { return backColor_; }
  void SetBackColor(Color c) { backColor_ = c; }
  const Text& TipText() const { return tipText_; }
  void SetTipText(const Text& t) { tipText_ = t; }
  int style() const { return style_; }  // 0 standard, 1 balloon
  void SetStyle(int s) { style_ = s; }
  bool Centered() const { return centered_; }  // centred on the tool
  void SetCentered(bool v) { centered_ = v; }

  // The tool flags: 17 plain, 19 centred, 289 on demand, 35 both.
  std::uint32_t ToolFlags() const;
  // The window to create and its messages, from the properties as they stand.
  TipPlan Plan(const Control& window) const;

  // Destroys a tip window that exists, then creates the tip over `window`.
  void CreateToolTip(const Control& window);
  // Shows an on-demand tip at a client point of `window`.
  void Show(long x, long y, const Control& window);
  void Destroy();

  bool Created() const { return created_; }
  const Control* ParentWindow() const { return parent_; }
  // The platform's packing of a screen point into one number.
  static long PackPoint(long x, long y) { return x + y * 65536; }

 private:
  TipBackend* backend_;
  long visibleTime_ = 0;
  long delayTime_ = 0;
  int icon_ = 0;
  std::optional<TipFontInfo> tipFont_;
  std::optional<Color> foreColor_;
  Text title_;
  bool popupOnDemand_ = false;
  std::optional<Color> backColor_;
  Text tipText_;
  int style_ = 0;
  bool centered_ = false;

  bool created_ = false;
  std::uintptr_t handle_ = 0;
  const Control* parent_ = nullptr;
};

// The older tip, shown at the pointer's position.
struct PlainTip {
  Text text;
};

// The program's two tip references and ShowTip. There is at most one tip on the
// screen.
class TipService {
 public:
  explicit TipService(TipBackend* backend = nullptr) : backend_(backend) {}

  // Button 2 (right): a new balloon tip with the cut text over `window` (or, in the
  // plain mode, the older tip at the pointer). Any other button: both tips go.
  void ShowTip(int button, const Text& text, const Control& window, bool plainMode = false);
  // A mouse button up on a skinned button (or on its lbl_ label): the right button
  // shows the tip of "form.button"; any other removes an open tip.
  void ButtonMouseUp(const Control& control, int button);
  // Removes whatever tip is up (a left click, a form click, an unload).
  void Remove();
  // Removes the tip if it stands over a control of `form` (the form is unloading).
  void RemoveOf(const Form& form);

  // The tip key of a control: the form's name, a point and the control's name; a
  // skinned button's label answers for its button.
  static Text KeyFor(const Control& control);

  const CBalloonToolTip* Balloon() const { return balloon_.get(); }
  const PlainTip* Plain() const { return plain_ ? &*plain_ : nullptr; }

 private:
  TipBackend* backend_;
  std::unique_ptr<CBalloonToolTip> balloon_;
  std::optional<PlainTip> plain_;
  const Form* tipForm_ = nullptr;  // the form of the control the tip stands over
};

}  // namespace kit
