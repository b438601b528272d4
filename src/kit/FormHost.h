#pragma once
// Puts kit forms on a platform UI host. For each attached form it keeps one window
// alive while the form is loaded, describes the form and its controls in the host's
// neutral terms, follows every change through the form's change listener (only the
// aspect that changed is sent), runs the form's timers on the host's timers, and
// turns what the host reports back (mouse, keys, clicks, list and text changes,
// close requests, menu choices) into the form's own events. A screen is then one
// class with its layout and handlers: nothing here knows any particular form.
#include <functional>
#include <map>
#include <memory>
#include <vector>

#include "kit/Form.h"
#include "platform/UiHost.h"

namespace kit {

class Menu;
class MenuItem;

class FormHost : private platform::IUiEvents {
 public:
  explicit FormHost(platform::IUiHost& host);
  ~FormHost() override;
  FormHost(const FormHost&) = delete;
  FormHost& operator=(const FormHost&) = delete;

  // Starts following the form (a second call does nothing). A loaded form gets its
  // window at once; a form destroyed while followed takes its window with it. The
  // form's change listener, drag handler and gone handler become the host's.
  void Attach(Form& form);
  // Stops following it; its window goes.
  void Detach(Form& form);
  // Where the failures of the attached forms go: an exception that escaped one of their
  // handlers, or the host while it drew a change. The program writes them to the trace.
  void SetFailureSink(Form::FailureSink sink) { failureSink_ = std::move(sink); }
  void DetachAll();
  bool IsAttached(const Form& form) const;

  // Loads the form if needed, shows it, and returns once it is unloaded or hidden.
  void ShowModal(Form& form);
  // Loads the form if needed and shows it.
  void Show(Form& form);
  // The same, then the platform's normal show: restored and in front.
  void ShowNormal(Form& form);
  // Pops up one of the form's menus at the pointer; the chosen item raises Click
  // before this returns.
  void PopupMenu(Form& form, Menu& menu);

  // The host's handles; 0 when the form has no window or the control none.
  platform::UiHandle WindowOf(const Form& form) const;
  platform::UiHandle HandleOf(const Control& control) const;

  // The neutral description of a form or a control as it stands.
  static platform::UiWindow Describe(const Form& form);
  static platform::UiControl Describe(const Control& control);
  // The same; `meanwhile` is called every few thousand rows of a list, so that long
  // descriptions can let the host answer other programs.
  static platform::UiControl Describe(const Control& control,
                                      const std::function<void()>& meanwhile);
  // Whether a control of this kind becomes a window of its own.
  static bool Rendered(ControlKind kind);
  // The id a menu item carries to the host: its place among the form's controls.
  static std::uint32_t MenuId(const Form& form, const Control& item);

 private:
  struct Tracked;

  Tracked* Find(const Form& form) const;
  Tracked* FindWindow(platform::UiHandle window) const;
  Control* ControlOf(Tracked& t, platform::UiHandle control) const;

  void OnChange(Tracked& t, Control& control, Aspect aspect);
  void Build(Tracked& t);
  void TearDown(Tracked& t);
  void Forget(Tracked& t);
  void UpdateMenus(Tracked& t);
  void SyncTimers(Tracked& t);
  void SyncTimer(Tracked& t, Control& timer);

  // platform::IUiEvents
  void OnMouse(platform::UiHandle window, platform::UiHandle control,
               const platform::UiMouseEvent& e) override;
  bool OnKey(platform::UiHandle window, const platform::UiKeyEvent& e) override;
  void OnClick(platform::UiHandle window, platform::UiHandle control) override;
  void OnTextChanged(platform::UiHandle window, platform::UiHandle control,
                     const Text& text) override;
  void OnDateChanged(platform::UiHandle window, platform::UiHandle control,
                     const base::DateTime& value) override;
  void OnList(platform::UiHandle window, platform::UiHandle control,
              const platform::UiListEvent& e) override;
  void OnSelect(platform::UiHandle window, platform::UiHandle control, int index) override;
  void OnFocus(platform::UiHandle window, platform::UiHandle control) override;
  void OnActivate(platform::UiHandle window, bool active) override;
  void OnCloseRequest(platform::UiHandle window) override;
  void OnMoved(platform::UiHandle window, const platform::UiRect& rect) override;
  void OnMinimized(platform::UiHandle window, bool minimized) override;
  void OnMenu(platform::UiHandle window, std::uint32_t itemId) override;

  platform::IUiHost& host_;
  std::vector<std::unique_ptr<Tracked>> tracked_;
  Form::FailureSink failureSink_;
};

// A form's or control's place as the host takes it.
platform::UiRect ToRect(const Layout& l);

}  // namespace kit
