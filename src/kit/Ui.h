#pragma once
// The screen service every form talks to: opening forms (modally or not), popup
// menus, letting events through, the screen's scale and text measure, the product's
// message box, and the balloon tips. The Win32 renderer implements it with real
// windows; kit::ScriptedUi implements it for tests.
#include <memory>
#include <vector>

#include "kit/Form.h"
#include "kit/TextMeasure.h"

namespace kit {

class Menu;
class MesgBox;
class TipService;
class TipBackend;

class Ui {
 public:
  // `tipBackend` creates the real tip windows; null keeps the tips a model only.
  explicit Ui(TipBackend* tipBackend = nullptr);
  virtual ~Ui();
  Ui(const Ui&) = delete;
  Ui& operator=(const Ui&) = delete;

  // Loads the form if needed, shows it and returns once it is unloaded or hidden.
  // Timers and callbacks keep running meanwhile.
  virtual void ShowModal(Form& form) = 0;
  // Loads the form if needed and shows it; returns at once.
  virtual void Show(Form& form) = 0;
  // Shows the form as the platform's normal show does, restored if it was minimised,
  // and brings it in front with the focus, even when it was visible already.
  virtual void ShowNormal(Form& form) = 0;
  // Pops up a menu of the form at the pointer; a chosen item raises its Click
  // before this returns.
  virtual void PopupMenu(Form& form, Menu& menu) = 0;
  // Lets pending messages through.
  virtual void DoEvents() = 0;
  // The platform's handle of a loaded form's window (an HWND on Windows), for a
  // call that names the form as owner; 0 when it has none.
  virtual std::uintptr_t NativeWindowOf(const Form& form) { return 0; }
  // 1440 divided by the screen's dots per inch (15 at 96).
  virtual int TwipsPerPixelX() = 0;
  virtual int TwipsPerPixelY() = 0;
  virtual const TextMeasure& Measure() = 0;

  // The product's message box: one MesgBox form, used again and again. `title` is,
  // everywhere, the application title (AppState::AppTitle). Returns the result
  // code (6 Yes, 7 No, 0 OK, 2 Cancel, 3 closed, 4 Retry, 5 Ignore).
  int MessageBox(const Text& text, int icon, int buttons, const Text& title);
  MesgBox& Box();

  // The balloon tip in use and the older plain tip.
  TipService& Tips();

  // Screens shown not modally live as long as the Ui, one under each form name: the
  // one kept under `name` (null when none is), and keeping a new one.
  Form* KeptScreen(TextView name) const;
  Form& KeepScreen(std::unique_ptr<Form> form);

 private:
  std::unique_ptr<MesgBox> box_;
  std::vector<std::unique_ptr<Form>> kept_;
  std::unique_ptr<TipService> tips_;
};

}  // namespace kit
