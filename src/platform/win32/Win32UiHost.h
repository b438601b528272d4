#pragma once
// The UI host with real windows: every form a top-level window, every control a
// child window whose window text is its caption (screen readers and tests in other
// processes read it there; the design name is kept as a global atom in the window
// property "QvName"). Labels, pictures and skinned buttons are owner-drawn from the
// image folder's pictures and paint what lies below them, so they look transparent;
// the other controls are the platform's own (check boxes, option buttons, edit
// boxes, list views, date pickers, progress bars). See docs/kit.md.
//
// One thread: everything is called and reported on the thread that made the host,
// and the loops here (RunMessageLoop, RunModal, DoEvents) are the ones that deliver
// keys to the forms.
#include "platform/win32/Win32Text.h"

#include <commctrl.h>

#include <functional>
#include <map>
#include <tuple>
#include <memory>
#include <vector>

#include "platform/UiHost.h"
#include "platform/win32/Win32Handles.h"
#include "platform/win32/Win32Pictures.h"

namespace platform {

class Win32UiHost : public IUiHost {
 public:
  // `imageFolder`: where the pictures and icons lie; "" for the images folder beside
  // the program.
  explicit Win32UiHost(Text imageFolder = {});
  ~Win32UiHost() override;
  Win32UiHost(const Win32UiHost&) = delete;
  Win32UiHost& operator=(const Win32UiHost&) = delete;

  int RunMessageLoop() override;
  void Quit(int exitCode) override;
  void DoEvents() override;
  void AnswerOtherPrograms() override;
  std::uintptr_t StartTimer(std::uint32_t intervalMs, std::function<void()> onTick) override;
  void StopTimer(std::uintptr_t id) override;
  bool AskYesNo(const Text& text, const Text& title) override;
  // A failure that escaped the handling of a message is told here, one line each;
  // the message then goes to the platform's default procedure (a close request
  // excepted: the window stays until the model destroys it).
  void SetFailureSink(std::function<void(const Text& line)> sink) override {
    failureSink_ = std::move(sink);
  }

  // The forms are described in twips for the screen they were designed on, 96 dots
  // per inch: the host draws every window at its own screen's real scale (fonts,
  // pictures, layout), so the forms' own scaling has nothing left to correct.
  static constexpr int kDesignTwipsPerPixel = 15;
  int TwipsPerPixelX() override { return kDesignTwipsPerPixel; }
  int TwipsPerPixelY() override { return kDesignTwipsPerPixel; }
  UiTextSize MeasureText(const Text& text, const UiFont& font, double wrapWidth) override;

  UiHandle CreateForm(const UiWindow& window, IUiEvents& events) override;
  void UpdateForm(UiHandle window, const UiWindow& state, UiChange changes) override;
  void DestroyForm(UiHandle window) override;
  std::uintptr_t NativeWindow(UiHandle window) override;
  UiHandle CreateControl(UiHandle window, UiHandle container, const UiControl& control) override;
  void UpdateControl(UiHandle control, const UiControl& state, UiChange changes) override;
  void FocusControl(UiHandle window, UiHandle control) override;
  void RunModal(UiHandle window) override;
  void EndModal(UiHandle window) override;
  void ShowNormal(UiHandle window) override;
  void BeginDrag(UiHandle window) override;
  std::uint32_t PopupMenu(UiHandle window, const std::vector<UiMenuItem>& items) override;

  UiHandle CreateTip(const UiTip& tip) override;
  void DestroyTip(UiHandle tip) override;
  void TrackTip(UiHandle tip, long x, long y, UiHandle control) override;
  void ShowPlainTip(const Text& text) override;
  void HidePlainTip() override;

  UiHandle AddTrayIcon(const UiTrayIcon& icon, std::function<void(int)> onEvent) override;
  void ModifyTrayIcon(UiHandle icon, const UiTrayIcon& state) override;
  void RemoveTrayIcon(UiHandle icon) override;
  void ShowTrayBalloon(UiHandle icon, const UiTrayBalloon& balloon) override;

  // For tests and the program's own glue: the real windows behind the handles.
  HWND WindowHandle(UiHandle windowOrControl) const;
  HWND TipHandle(UiHandle tip) const;
  HWND HostWindow() { return Started(); }
  win32::Pictures& Images() { return *pictures_; }
  // The dots per inch a window is drawn at now (0 for an unknown handle).
  int WindowDpi(UiHandle window) const;
  // The desktop's look as the host last read it.
  bool HighContrast() const { return highContrast_; }
  bool LightTaskbar() const { return lightTaskbar_; }
  // The notification area: whether the shell shows the icon, how many balloons were
  // put on it, and the icon file it shows.
  bool TrayIconShown(UiHandle icon) const;
  int TrayBalloonsShown(UiHandle icon) const;
  Text TrayIconFile(UiHandle icon) const;

 private:
  struct FormRec;
  struct ControlRec;
  struct TipRec;
  struct TrayRec;

  // The classes and the hidden host window are made on first use, so that a program
  // that never shows a window (a tool, a test) has none.
  HWND Started();

  // Message plumbing
  static LRESULT CALLBACK HostProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) noexcept;
  static LRESULT CALLBACK FormProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) noexcept;
  static LRESULT CALLBACK ControlProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp, UINT_PTR id,
                                      DWORD_PTR self) noexcept;
  static LRESULT CALLBACK TipProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp, UINT_PTR id,
                                  DWORD_PTR self) noexcept;
  LRESULT OnHostMessage(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp);
  LRESULT OnFormMessage(FormRec& f, UINT msg, WPARAM wp, LPARAM lp);
  LRESULT OnControlMessage(ControlRec& c, UINT msg, WPARAM wp, LPARAM lp);
  // Notifications a parent (a form or a container control) receives for its children.
  bool OnParentMessage(UINT msg, WPARAM wp, LPARAM lp, LRESULT& result);
  // Keys go to the form before the window that has the focus; false: swallowed.
  bool PreTranslate(MSG& msg);
  void Pump(MSG& msg);
  bool Mouse(FormRec& f, ControlRec* c, HWND hwnd, UINT msg, WPARAM wp, LPARAM lp);
  // Writes the failure of the exception being handled to the sink: what was being
  // handled (`what`, the message, the window's design name) and the description.
  void ReportFailure(const Text& what, UINT msg, HWND hwnd) noexcept;

  // Windows and controls
  FormRec* Form(UiHandle h) const;
  ControlRec* Control(UiHandle h) const;
  FormRec* FormOf(HWND hwnd) const;
  ControlRec* ControlOf(HWND hwnd) const;
  HWND CreateControlWindow(ControlRec& c);
  void ApplyControl(ControlRec& c, UiChange changes);
  void ApplyForm(FormRec& f, UiChange changes);
  void ApplyFrame(FormRec& f);
  void ApplyMenuBar(FormRec& f);
  void BuildMenuBar(FormRec& f);
  void ApplyList(ControlRec& c, bool force);
  void ApplyOwnedRows(ControlRec& c);
  void FillDisplayInfo(ControlRec& c, LVITEMW& item);
  void ApplyComboItems(ControlRec& c);
  // The index of a row's picture in the list's image list (added on first use).
  int RowImage(ControlRec& c, const Text& key);
  void Repaint(ControlRec& c);
  // Twips to a window's pixels at `dpi` and back; a region or tip point the forms
  // give in the design's pixels, to the window's.
  static RECT PixelRect(const UiRect& r, int dpi);
  static UiRect TwipsRect(const RECT& r, int dpi);
  static long Scaled(long designPixels, int dpi);
  int DpiOf(const ControlRec& c) const;
  // A form moved to a screen of another scale (or told so): everything is laid out,
  // lettered and pictured anew at `dpi`, in `suggested` when the system gives one.
  void Rescale(FormRec& f, int dpi, const RECT* suggested);
  // Reads the desktop's look again and redraws what depends on it.
  void ApplyTheme();
  RECT RectInForm(const ControlRec& c) const;
  bool ShownInForm(const ControlRec& c) const;
  void Bury(std::unique_ptr<FormRec> f);
  // Frees the records of destroyed windows once no message is being handled.
  void Sweep();
  void SetOthersEnabled(FormRec& modal, bool enable, std::vector<HWND>& changed);

  // Painting
  // Paints the form's background and, unless backgroundOnly, every drawn control in
  // stacking order up to and including `upTo` (all when null), in form coordinates.
  void PaintScene(FormRec& f, HDC dc, const RECT& clip, const ControlRec* upTo, bool backgroundOnly,
                  bool upToPressed = false);
  void PaintControl(ControlRec& c, HDC dc, const RECT& r, bool pressed);
  void PaintSkinned(ControlRec& c, HDC dc, const RECT& r, bool pressed);
  // High contrast: the system's colours and faces, no skin.
  void PaintHighContrast(ControlRec& c, HDC dc, const RECT& r, bool pressed);
  void PaintOwnerDrawn(ControlRec& c, HDC dc, const RECT& client, bool pressed);
  HBRUSH Backdrop(ControlRec& c);
  // Paints what lay behind the window into its cut-away corners (where the window
  // keeps no region); `origin` is where the drawing stands in the window.
  void PaintBehindOutline(FormRec& f, HDC dc, POINT origin);
  HFONT Font(const UiFont& font, int dpi);

  // Tips, hover tips and tray
  void SetHoverTip(ControlRec& c);
  // Tells the tips of `tool` of a pointer message that arrived at `from` (a window
  // over the tool), in the tool's coordinates.
  void RelayToTips(HWND tool, HWND from, UINT msg, WPARAM wp, LPARAM lp);
  // Shows a balloon clear of the window its tool is on, the stem at `stemX`.
  void PlaceBalloon(UiHandle h, TipRec& t, long stemX);
  void RemoveHoverTip(HWND tool);
  void ApplyTray(TrayRec& t, DWORD message);
  // Loads the icon of the record's state again (the taskbar's theme or scale changed).
  void ReloadTrayIcon(TrayRec& t);
  int TrayDpi();
  void RetryTray();
  void TrayCallback(HWND owner, WPARAM wp, LPARAM lp);
  win32::UniqueMenu BuildMenu(const std::vector<UiMenuItem>& items, bool popup);
  void Recreate(ControlRec& c);

  HINSTANCE instance_ = nullptr;
  win32::UniqueWindow hostHwnd_;
  int dpi_ = 96;  // the screen's when the host started: a new window's until it knows its own
  bool highContrast_ = false;
  bool lightTaskbar_ = false;
  UINT taskbarCreated_ = 0;
  std::unique_ptr<win32::Pictures> pictures_;

  UiHandle next_ = 1;
  std::map<UiHandle, std::unique_ptr<FormRec>> forms_;
  std::map<UiHandle, std::unique_ptr<ControlRec>> controls_;
  std::map<HWND, UiHandle> byHwnd_;
  std::vector<std::unique_ptr<FormRec>> graveyard_;
  std::vector<std::unique_ptr<ControlRec>> controlGraveyard_;
  int depth_ = 0;  // messages being handled; records die only when it is back to 0
  UiHandle lastActive_ = 0;
  std::map<UiHandle, int> formPressed_;  // mouse buttons down on a form itself

  std::map<std::uintptr_t, std::function<void()>> timers_;
  std::uintptr_t nextTimer_ = 1;

  std::map<std::tuple<int, bool, int>, win32::UniqueFont> fonts_;  // points/100, bold, dpi
  // Where text is measured, made once: the screen's DC got and given back for every one
  // of the many pieces of a long name is a round trip to the window system each time.
  win32::UniqueDC measureDc_;

  std::map<UiHandle, std::unique_ptr<TipRec>> tips_;
  win32::UniqueWindow plainTip_;
  win32::UniqueWindow hoverTip_;  // the plain hover tips of controls that have a tip text

  std::map<UiHandle, std::unique_ptr<TrayRec>> tray_;
  int trayRetries_ = 0;
  // The icon whose keyboard event is being handled: a menu it opens goes at the icon.
  TrayRec* keyboardTray_ = nullptr;

  std::function<void(const Text&)> failureSink_;
};

}  // namespace platform
