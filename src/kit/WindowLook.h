#pragma once
// The common look of the small forms: rounded outline, frameless window, skinned
// buttons, placement in the corner of the work area, the correction above 96 dots per
// inch, and the help file. All of it is model: the renderer applies what the form
// then says (Region, Frameless, picture keys, layout).
#include <cstdint>
#include <functional>
#include <span>

#include "frame/AppState.h"
#include "kit/Controls.h"
#include "kit/Form.h"
#include "platform/SystemInfo.h"

namespace kit {

// Rounding to a whole number with halves to the even one, as the platform converts
// a fraction to an integer (2.5 -> 2, 3.5 -> 4).
long RoundHalfEven(double value);

// ---- Outline ------------------------------------------------------------------

class clsRounder {
 public:
  // The forms whose outline is 1 pixel narrower than the others' 1.25.
  static bool IsNamedForm(TextView formName);
  // Gives the form its outline: CreateRoundRectRgn(0, 0, width + 1.25, height + 0.75,
  // 5, 5) in pixels, the sums rounded; 1.0 instead of 1.25 for the named forms.
  RoundRegion RoundForm(Form& form, int twipsPerPixelX, int twipsPerPixelY);
};

// ---- Frame --------------------------------------------------------------------

inline constexpr std::uint32_t kFrameStyleBits = 0x00C30000u;  // title bar, min and max box
inline constexpr std::uint32_t kStyleSysMenu = 0x00080000u;
inline constexpr std::uint32_t kStyleMaximizeBox = 0x00010000u;
inline constexpr std::uint32_t kStyleMinimizeBox = 0x00020000u;
inline constexpr std::uint32_t kStyleCaption = 0x00C00000u;
inline constexpr std::uint32_t kFramePosFlags = 548;  // frame changed, no move/size/Z order

struct FrameChange {
  std::uint32_t clearBits = 0;
  std::uint32_t addBits = 0;
  std::uint32_t posFlags = kFramePosFlags;
};

// Without a frame (showFrame false): the caption is kept aside and the frame bits
// cleared. With a frame: the bits the form's design flags call for are added and the
// kept caption comes back. The form records the state; the renderer applies the bits.
FrameChange SetFormFrame(Form& form, bool showFrame);

// ---- Skin ---------------------------------------------------------------------

inline constexpr int kSkinNormal = 0;
inline constexpr int kSkinHover = 1;
inline constexpr int kSkinDisabled = 2;

// "button_enb" for normal and disabled, "button_ovr" for hover; "" for an unknown state.
Text StandardSkinKey(int state);

// Sets the picture of a skinned button for a state (the standard key when `key` is
// empty) unless it already holds it, so that mouse moves do not repaint it again and
// again; the label takes its colour (white when hovered, else its own) and its
// enabled state (off only when disabled). An unknown state changes nothing.
void ApplySkin(Picture& picture, Label& label, int state, const Text& key = {});
void ApplySkin(PictureButton& button, int state, const Text& key = {});

// ---- Work area and placement -------------------------------------------------

struct WorkArea {
  double left = 0;
  double top = 0;
  double width = 0;
  double height = 0;
};

// The desktop's work area in pixels, or in twips (times the screen's twips per pixel).
WorkArea GetWorkArea(platform::ISystemInfo& system, bool inTwips);
// Puts the form's bottom right corner on that of the work area (same units as the form).
void PlaceBottomRight(Form& form, const WorkArea& area);

// ---- Scaling above 96 dots per inch ------------------------------------------

// A control that keeps some of its values through the scaling (`index` -1 for a
// control outside an array).
struct ResizeKeep {
  Text name;
  int index = -1;
  bool left = false;
  bool top = false;
  bool width = false;
  bool height = false;
};

// Dots per inch from the twips per pixel: 1440 / twipsPerPixel.
double DotsPerInch(int twipsPerPixel);

// At more than 96 dots per inch divides the form's width and height and every
// control's left, top, width and height (menus, timers and image lists excepted)
// by dpi / 96, so that the design keeps its size in pixels; then runs the form's own
// specials with the factor. At 96 or fewer nothing happens. True when it scaled.
bool ResizeControl(Form& form, int twipsPerPixelX, std::span<const ResizeKeep> keeps = {},
                   const std::function<void(double factor)>& specials = {});

// ---- Help -----------------------------------------------------------------------

// Opens a help topic ("QVWINHelp.chm::/Main_Window/Menu_Bar/Log.htm") through the
// platform's help, with its lines in the trace.
void ShowHelpFile(frame::AppState& app, const Form& window, const Text& topic);

}  // namespace kit
