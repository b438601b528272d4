#pragma once
// The windowing host: message loop, timers, real windows for the screen kit's
// forms (described by UiProtocol.h), modal loops, popup menus, tips, the
// notification-area icon and text measuring. The Windows host makes real windows;
// the fake records what it was told and lets a test play the user.
#include <cstdint>
#include <functional>
#include <vector>

#include "base/Text.h"
#include "platform/UiProtocol.h"

namespace platform {

using base::Text;

class IUiHost {
 public:
  virtual ~IUiHost() = default;

  // ---- Loop and timers ----
  // Runs the message loop until Quit; returns the exit code.
  virtual int RunMessageLoop() = 0;
  virtual void Quit(int exitCode) = 0;
  // Lets pending messages through (timers, callbacks, painting, input).
  virtual void DoEvents() = 0;
  // Answers only what other programs sent to the windows (a WM_NULL asking whether the
  // program hangs, a screen reader's question); no timer, input or callback runs. For
  // long work on the one thread, which must not be entered again from inside.
  virtual void AnswerOtherPrograms() {}
  // Timers may fire again while an earlier tick is still running (when that tick
  // lets events through or shows a modal box), as the design expects.
  virtual std::uintptr_t StartTimer(std::uint32_t intervalMs, std::function<void()> onTick) = 0;
  virtual void StopTimer(std::uintptr_t id) = 0;
  // The platform's own Yes/No question; true for Yes. Only for a program that has no
  // screen kit (the product asks through its own message box).
  virtual bool AskYesNo(const Text& text, const Text& title) = 0;
  virtual void SetFailureSink(std::function<void(const Text& line)> sink) {}

  // ---- Screen ----
  // 1440 divided by the screen's dots per inch (15 at 96, 12 at 120).
  virtual int TwipsPerPixelX() = 0;
  virtual int TwipsPerPixelY() = 0;
  // The size a label would take for `text` in `font`; with wrapWidth above 0 broken
  // into lines of at most that width, as a word-wrapping label does. "&" marks a
  // hot key, as in a label.
  virtual UiTextSize MeasureText(const Text& text, const UiFont& font, double wrapWidth) = 0;

  // ---- Windows ----
  // A new, hidden or shown, top-level window; its input is told to `events`, which
  // must outlive the window. 0 on failure.
  virtual UiHandle CreateForm(const UiWindow& window, IUiEvents& events) = 0;
  virtual void UpdateForm(UiHandle window, const UiWindow& state, UiChange changes) = 0;
  // Destroys the window and all its controls; ends its modal loop.
  virtual void DestroyForm(UiHandle window) = 0;
  // The platform's own handle of the window (an HWND on Windows), for a call that
  // names an owner window; 0 when there is none.
  virtual std::uintptr_t NativeWindow(UiHandle window) { return 0; }
  // A control on the window, or inside `container` (a picture or skinned button of
  // the same window; 0 for the window itself). Controls are stacked in the order
  // they are created: a later one lies above an earlier one.
  virtual UiHandle CreateControl(UiHandle window, UiHandle container, const UiControl& control) = 0;
  virtual void UpdateControl(UiHandle control, const UiControl& state, UiChange changes) = 0;
  // Gives the keyboard focus to a control (0: the window itself).
  virtual void FocusControl(UiHandle window, UiHandle control) = 0;
  // Shows the window modally and returns when EndModal is called for it or it is
  // destroyed. The program's other windows take no input meanwhile; timers, calls
  // from other programs and painting go on. Loops nest.
  virtual void RunModal(UiHandle window) = 0;
  virtual void EndModal(UiHandle window) = 0;
  // Shows the window as the platform's normal show does (a minimised or maximised
  // window is restored to its place and size) and brings it in front of the other
  // programs' windows with the activation and the keyboard, whether or not it was
  // visible already.
  virtual void ShowNormal(UiHandle window) = 0;
  // Moves the window with the pointer while the left button is held, as a caption
  // strip does.
  virtual void BeginDrag(UiHandle window) = 0;
  // Pops up a menu at the pointer and returns the id of the chosen item, 0 for none.
  // `window` (0 for the host's own) owns the menu.
  virtual std::uint32_t PopupMenu(UiHandle window, const std::vector<UiMenuItem>& items) = 0;

  // ---- Tips ----
  // A tip window over a control, built as the tip describes. 0 on failure.
  virtual UiHandle CreateTip(const UiTip& tip) = 0;
  virtual void DestroyTip(UiHandle tip) = 0;
  // Tracks an on-demand tip to a client point (pixels) of `control` and shows it.
  virtual void TrackTip(UiHandle tip, long x, long y, UiHandle control) = 0;
  // The older plain tip at the pointer; one at a time.
  virtual void ShowPlainTip(const Text& text) = 0;
  virtual void HidePlainTip() = 0;

  // ---- Notification area ----
  // Adds an icon; `onEvent` gets the mouse message of each callback (515 left double
  // click, 517 right button up, ...). The host puts the icon back when the taskbar is
  // created again and retries an add the shell refused. 0 on failure.
  virtual UiHandle AddTrayIcon(const UiTrayIcon& icon,
                               std::function<void(int mouseMessage)> onEvent) = 0;
  virtual void ModifyTrayIcon(UiHandle icon, const UiTrayIcon& state) = 0;
  virtual void RemoveTrayIcon(UiHandle icon) = 0;
  // Shows a balloon from the icon; its fate comes back through the icon's onEvent
  // (kTrayBalloonShown, kTrayBalloonClicked, kTrayBalloonTimeout).
  virtual void ShowTrayBalloon(UiHandle icon, const UiTrayBalloon& balloon) = 0;
};

}  // namespace platform
