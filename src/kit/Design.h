#pragma once
// How a screen declares what is data about it, once, in its constructor: the tab
// order, the controls the user presses and the handler each press runs, the keys,
// the balloon tips on a right click, the strips that drag the window, and the skinned
// buttons that light up under the pointer. Handlers are the screen's member functions
// under the design's names; nothing else binds them.
//
//   kit::Design(*this, ui)
//       .TabOrder({&viewbkuplog, &cancel})
//       .Press(viewbkuplog, &frmNotice::viewbkuplog_Click)   // mouse and Enter/Space
//       .Press(cancel, &frmNotice::cancel_Click)
//       .Key(kit::KeyStroke::Up, kit::kEscape, &frmNotice::cancel_Click)
//       .Key(kit::KeyStroke::Up, kit::Alt('V'), &frmNotice::viewbkuplog_Click)
//       .KeyUntilFocused(kit::KeyStroke::Down, kit::kEnter, viewbkuplog,
//                        &frmNotice::viewbkuplog_Click)
//       .Tips({&viewbkuplog, &cancel})
//       .Drag({&lblCapbar, &lblTitle})
//       .Hover({&viewbkuplog, &cancel});
//
// See docs/kit.md for the whole recipe of a screen.
#include <functional>
#include <initializer_list>
#include <map>
#include <memory>
#include <vector>

#include "kit/Controls.h"
#include "kit/Form.h"
#include "kit/Keys.h"
#include "kit/ToolTips.h"
#include "kit/Ui.h"
#include "kit/WindowLook.h"

namespace kit {

// Which mouse buttons press a control when they come up on it.
enum class PressButtons {
  Left,         // the left button only
  AllButRight,  // any button but the right one, whose release shows the tip
};

template <class F>
class Design {
 public:
  using Handler = void (F::*)();

  Design(F& form, Ui& ui) : form_(form), ui_(ui) {}

  // The controls Tab visits first, in this order (the rest follow by place).
  Design& TabOrder(std::vector<Control*> order) {
    form_.SetTabOrder(std::move(order));
    return *this;
  }

  // A control the user presses: a button up on it (or, for a skinned button, on its
  // label) and Enter while it has the focus (Space too) run `handler`. A picture
  // pressed this way becomes a push button to the system, a stop of the tab order.
  Design& Press(Control& control, Handler handler, PressButtons buttons = PressButtons::Left) {
    if (control.Kind() == ControlKind::Picture) control.SetRole(Role::PushButton);
    Plan& plan = *PlanFor(control);
    plan.press = Call(handler);
    plan.buttons = buttons;
    Install(control);
    return Enter(control, handler);
  }

  // A control that acts on the platform's click (a button up where it went down):
  // Click runs `handler`, and Enter or Space while it has the focus. A picture so
  // declared is a push button to the system.
  Design& Click(Control& control, Handler handler) {
    if (control.Kind() == ControlKind::Picture) control.SetRole(Role::PushButton);
    control.on.Click = Call(handler);
    return Enter(control, handler);
  }

  // A key while `control` has the focus (the arrows on a slider).
  Design& KeyWhile(const Control& control, KeyStroke stroke, kit::Key key, Handler handler) {
    form_.AddKey({stroke, key, &control, nullptr, Call(handler)});
    return *this;
  }

  // Enter (and Space) while `control` has the focus runs `handler`; the mouse is left
  // as it is. For a control whose keyboard press means something else than a click.
  Design& Enter(Control& control, Handler handler) {
    form_.AddKey({KeyStroke::Down, kEnter, &control, nullptr, Call(handler)});
    return *this;
  }

  // A key of the form: with KeyPreview it is seen whichever control has the focus;
  // without, only while no control has it.
  Design& Key(KeyStroke stroke, kit::Key key, Handler handler) {
    form_.AddKey({stroke, key, nullptr, nullptr, Call(handler)});
    return *this;
  }

  // A key of the form that holds only until `control` has had the focus once.
  Design& KeyUntilFocused(KeyStroke stroke, kit::Key key, const Control& control, Handler handler) {
    form_.AddKey({stroke, key, nullptr, &control, Call(handler)});
    return *this;
  }

  // A right button up on any of these shows its balloon tip (the text under
  // "form.control"); any other button up takes an open tip away.
  Design& Tips(std::initializer_list<Control*> controls) {
    for (Control* c : controls) {
      PlanFor(*c)->tip = true;
      Install(*c);
    }
    return *this;
  }

  // A left button down on any of these moves the window with the pointer.
  Design& Drag(std::initializer_list<Control*> strips) {
    for (Control* strip : strips) {
      strip->on.MouseDown = [f = &form_](const MouseArgs& a) {
        if (a.button == kLeftButton) f->BeginDrag();
      };
    }
    return *this;
  }

  // The pointer over one of these skinned buttons (or its label) shows it in its
  // hover skin and the others normal; over the form, all normal. A disabled button
  // keeps its skin.
  Design& Hover(std::initializer_list<PictureButton*> buttons) {
    auto group = std::make_shared<std::vector<PictureButton*>>(buttons);
    auto light = [group](PictureButton* over) {
      for (PictureButton* b : *group) {
        if (b->SkinState() == kSkinDisabled || !b->Enabled()) continue;
        const int want = b == over ? kSkinHover : kSkinNormal;
        if (b->SkinState() != want) ApplySkin(*b, want);
      }
    };
    for (PictureButton* b : *group) {
      b->on.MouseMove = [light, b](const MouseArgs&) { light(b); };
      b->Lbl().on.MouseMove = b->on.MouseMove;
    }
    form_.on.MouseMove = [light](const MouseArgs&) { light(nullptr); };
    return *this;
  }

  // Any other event of a control bound to a handler of the screen.
  Design& On(std::function<void()>& slot, Handler handler) {
    slot = Call(handler);
    return *this;
  }
  template <class Arg>
  Design& On(std::function<void(Arg)>& slot, void (F::*handler)(Arg)) {
    slot = [f = &form_, handler](Arg a) { (f->*handler)(a); };
    return *this;
  }

 private:
  struct Plan {
    std::function<void()> press;
    PressButtons buttons = PressButtons::Left;
    bool tip = false;
  };

  std::function<void()> Call(Handler handler) {
    return [f = &form_, handler] { (f->*handler)(); };
  }

  std::shared_ptr<Plan>& PlanFor(Control& control) {
    auto& plan = plans_[&control];
    if (!plan) plan = std::make_shared<Plan>();
    return plan;
  }

  // One mouse-up handler per control (and its label) does the tip and the press,
  // whichever of them the control was declared with.
  void Install(Control& control) {
    std::shared_ptr<Plan> plan = PlanFor(control);
    Ui* ui = &ui_;
    auto up = [plan, ui](Control& source, const MouseArgs& a) {
      if (plan->tip) ui->Tips().ButtonMouseUp(source, a.button);
      if (!plan->press) return;
      const bool presses =
          plan->buttons == PressButtons::Left ? a.button == kLeftButton : a.button != kRightButton;
      if (presses) plan->press();
    };
    control.on.MouseUp = [up, c = &control](const MouseArgs& a) { up(*c, a); };
    if (control.Kind() == ControlKind::PictureButton) {
      Label& label = static_cast<PictureButton&>(control).Lbl();
      label.on.MouseUp = [up, l = &label](const MouseArgs& a) { up(*l, a); };
    }
  }

  F& form_;
  Ui& ui_;
  std::map<Control*, std::shared_ptr<Plan>> plans_;
};

}  // namespace kit
