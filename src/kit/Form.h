#pragma once
// A form: a window of the design with its named controls. A screen derives from it,
// declares its controls as members under the design's names (each member registers
// itself here, in declaration order), binds the controls' event slots to its
// handlers, and overrides the Form_ handlers it needs. See docs/kit.md.
#include <functional>
#include <optional>
#include <vector>

#include "kit/Control.h"
#include "kit/Keys.h"
#include "kit/TipTable.h"

namespace kit {

// Why a form is asked to unload, in the platform's numbers.
enum class UnloadMode : int {
  ControlMenu = 0,  // the user closed the window
  Code = 1,         // the program unloads it
  AppWindows = 2,   // the session ends
  TaskManager = 3,
  FormOwner = 4,
};

// Where a window first appears, in the platform's numbers: where its layout says, or
// centred (the renderer knows the screen).
enum class StartUpPosition : int {
  Manual = 0,
  CenterOwner = 1,
  CenterScreen = 2,
  WindowsDefault = 3
};

// The outline a renderer gives the window, in pixels: a rectangle with rounded
// corners of the given ellipse (CreateRoundRectRgn's arguments).
struct RoundRegion {
  long left = 0;
  long top = 0;
  long right = 0;
  long bottom = 0;
  long ellipseWidth = 0;
  long ellipseHeight = 0;
  bool operator==(const RoundRegion&) const = default;
};

inline constexpr int kWindowNormal = 0;
inline constexpr int kWindowMinimized = 1;

class Form : public Control {
 public:
  explicit Form(Text name, Layout layout = {}, Text caption = {});
  ~Form() override;

  // All controls in declaration order (a skinned button's label follows its picture).
  const std::vector<Control*>& Controls() const { return controls_; }
  // By name, without regard to case as the platform's collection does; `index` -1
  // for a control outside an array. Null when absent.
  Control* Find(TextView name, int index = -1) const;

  // Lifecycle. Load raises Form_Load once until the next Unload; a form loaded again
  // starts from its design state, as the platform recreates controls. Unload asks
  // Form_QueryUnload and Form_Unload, either of which can cancel; it answers whether
  // the form is gone.
  bool IsLoaded() const { return loaded_; }
  void Load();
  bool Unload(UnloadMode mode = UnloadMode::Code);
  // Hides without unloading (a modal show also ends here).
  void Hide() { SetVisible(false); }
  // Whether the user minimised the window (kWindowMinimized) or not (kWindowNormal);
  // the renderer (or a test) tells.
  int WindowState() const { return windowState_; }
  void SetWindowState(int state) { windowState_ = state; }
  // The renderer (or a test) tells the form it became the active window.
  void RaiseActivate();
  void RaiseDeactivate();

  Control* ActiveControl() const { return activeControl_; }
  void SetActiveControl(Control* control);

  // With KeyPreview the form sees keys before the focused control.
  bool KeyPreview() const { return keyPreview_; }
  void SetKeyPreview(bool v);
  // Every key the user gives the window comes through here, in this order:
  //  1. the rules of the focused control (AddKey with a focus control; Space on a
  //     control counts as its Enter);
  //  2. the form, with KeyPreview or when no control has the focus: its rules, then
  //     its designed handler (Form_KeyDown, ...);
  //  3. the focused control's own handler;
  //  4. the kit's navigation for a key nobody swallowed: Tab and Shift+Tab move the
  //     focus along the tab order, the arrows move within an option group.
  // A rule or handler swallows a key by setting keyCode (keyAscii) to 0; a rule that
  // runs always swallows it.
  void DeliverKeyDown(KeyArgs& args);
  void DeliverKeyUp(KeyArgs& args);
  void DeliverKeyPress(int& keyAscii);

  // The form's key rules (see kit/Keys.h), declared once, usually in the constructor.
  void AddKey(KeyRule rule);
  const std::vector<KeyRule>& KeyRules() const { return keyRules_; }

  // Tab order: the controls named here first, in this order, then every other tab
  // stop top to bottom, left to right by where it stands on the form. An option
  // group is one stop: its chosen button (the first when none is).
  void SetTabOrder(std::vector<Control*> order);
  std::vector<Control*> TabOrder() const;
  // Moves the focus to the next control of the tab order that can take it (the
  // previous one with `backward`), round the end; false when none can.
  bool FocusNext(bool backward = false);

  MousePointer Pointer() const { return pointer_; }
  void SetPointer(MousePointer p);
  StartUpPosition StartUp() const { return startUp_; }
  void SetStartUpPosition(StartUpPosition p);
  // Icon file of the window; empty for the program's own.
  const Text& IconPath() const { return iconPath_; }
  void SetIconPath(const Text& path);
  // Background picture by image key.
  const Text& PictureKey() const { return pictureKey_; }
  void SetPictureKey(const Text& key);

  // Frame flags of the design (what the frame routine puts back) and the stripped
  // state with the caption that was kept aside.
  bool ControlBox() const { return controlBox_; }
  bool MinButton() const { return minButton_; }
  bool MaxButton() const { return maxButton_; }
  void SetFrameFlags(bool controlBox, bool minButton, bool maxButton);
  bool Frameless() const { return frameless_; }
  const Text& KeptCaption() const { return keptCaption_; }
  void SetFrameless(bool frameless, const Text& keptCaption);

  // Asks the renderer to move the window with the pointer: the design's drag strips
  // do this on a left button down (the renderer releases the capture and sends a
  // caption hit). Counted, so that tests can see it.
  void BeginDrag();
  int DragRequests() const { return dragRequests_; }
  void SetDragHandler(std::function<void()> handler) { dragHandler_ = std::move(handler); }

  // Run, in the order given, each time the form has unloaded (after Form_Unload let it
  // go): what lives with the form's windows goes with them.
  void AddUnloadHook(std::function<void()> hook) { unloadHooks_.push_back(std::move(hook)); }

  // Told once when the form object is destroyed, so that a renderer that follows
  // it lets go (the form's controls are already gone by then).
  void SetGoneHandler(std::function<void(Form&)> handler) { goneHandler_ = std::move(handler); }

  // A window that stays above the others, and one that comes up without taking
  // the keyboard from the program the user is in (a notice on the desktop).
  bool TopMost() const { return topMost_; }
  void SetTopMost(bool v);
  bool ShowWithoutActivation() const { return showNoActivate_; }
  void SetShowWithoutActivation(bool v);

  // The balloon tip texts of the form's controls (see kit::Design::Tips): the table of
  // the screen's folder.
  TipTable TipTexts() const { return tipTexts_; }
  void SetTipTexts(TipTable table) { tipTexts_ = table; }

  const std::optional<RoundRegion>& Region() const { return region_; }
  void SetRegion(const std::optional<RoundRegion>& region);

  // Every change of the form or of one of its controls is reported here.
  using ChangeListener = std::function<void(Control&, Aspect)>;
  void SetChangeListener(ChangeListener listener) { listener_ = std::move(listener); }
  // Grows with every change anywhere on the form.
  std::uint64_t ChangeCount() const { return changeCount_; }

  // Where an exception that escaped a handler goes (the renderer writes the trace).
  using FailureSink = std::function<void(Control&, const base::ErrorInfo&)>;
  void SetFailureSink(FailureSink sink) { failureSink_ = std::move(sink); }
  int FailureCount() const { return failureCount_; }
  const base::ErrorInfo& LastFailure() const { return lastFailure_; }

  void SaveDesign() override;
  void RestoreDesign() override;

 protected:
  // The design's form events, under their names. Defaults do nothing.
  virtual void Form_Load() {}
  virtual void Form_Activate() {}
  virtual void Form_Deactivate() {}
  virtual void Form_Resize() {}
  virtual void Form_QueryUnload(int& cancel, UnloadMode mode) {}
  virtual void Form_Unload(int& cancel) {}
  virtual void Form_Click() {}
  virtual void Form_DblClick() {}
  virtual void Form_MouseDown(const MouseArgs& args) {}
  virtual void Form_MouseUp(const MouseArgs& args) {}
  virtual void Form_MouseMove(const MouseArgs& args) {}
  virtual void Form_KeyDown(KeyArgs& args) {}
  virtual void Form_KeyUp(KeyArgs& args) {}
  virtual void Form_KeyPress(int& keyAscii) {}

  void OnLayoutChanged(const Layout& before) override;

 private:
  friend class Control;
  void Register(Control& control);
  void Unregister(Control& control);
  void Notify(Control& control, Aspect aspect);
  void Fail(Control& control, const base::ErrorInfo& error) noexcept;
  // Runs one of the form's own handlers so that nothing thrown leaves it.
  bool RunKeyRules(KeyStroke stroke, KeyArgs& args, bool focused);
  void Navigate(KeyArgs& args);
  // Space on a focused control with an Enter rule: swallowed on its way down, the rule
  // run (`act`) on its way up. True when it was such a key.
  bool SpaceAsEnter(Control* target, KeyArgs& args, bool act);
  template <class Fn>
  void Shield(Fn&& fn) noexcept {
    try {
      fn();
    } catch (...) {
      Fail(*this, base::DescribeCurrentException());
    }
  }

  std::vector<Control*> controls_;
  bool loaded_ = false;
  int windowState_ = 0;
  bool everLoaded_ = false;
  bool unloading_ = false;
  bool keyPreview_ = false;
  Control* activeControl_ = nullptr;
  MousePointer pointer_ = MousePointer::Default;
  StartUpPosition startUp_ = StartUpPosition::Manual;
  Text iconPath_;
  Text pictureKey_;
  bool controlBox_ = true;
  bool minButton_ = true;
  bool maxButton_ = true;
  bool frameless_ = false;
  Text keptCaption_;
  std::optional<RoundRegion> region_;
  TipTable tipTexts_;
  bool topMost_ = false;
  bool showNoActivate_ = false;
  std::vector<KeyRule> keyRules_;
  std::vector<Control*> tabOrder_;
  int dragRequests_ = 0;
  std::function<void()> dragHandler_;
  std::function<void(Form&)> goneHandler_;

  struct FormDesign {
    bool keyPreview = false;
    Text iconPath;
    Text pictureKey;
  } design_;

  ChangeListener listener_;
  std::vector<std::function<void()>> unloadHooks_;
  std::uint64_t changeCount_ = 0;
  FailureSink failureSink_;
  int failureCount_ = 0;
  base::ErrorInfo lastFailure_;
};

}  // namespace kit
