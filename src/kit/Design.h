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
// Each event of each control is bound once: a second binding of the same event (in
// this chain, by another chain, or by hand before it) throws std::logic_error when the
// form is built, so that no binding silently replaces another.
//
// See docs/kit.md for the whole recipe of a screen.
#include <functional>
#include <initializer_list>
#include <map>
#include <memory>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "base/Text.h"

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

// The faces of picture buttons drawn as a picture each: a base name with one suffix
// for each face ("edit" with "_gen", "_ove", "_dwn", "_dis" gives edit_gen ...). A
// disabled picture shows its disabled face whatever is asked. The screen holds one
// (its table of buttons) and `Design::Faces` binds the pointer and the focus to it.
enum class Face { Normal, Over, Down };

struct FaceSuffixes {
  Text normal;
  Text over;
  Text down;
  Text disabled;
};

class PictureFaces {
 public:
  struct Entry {
    Picture* picture;
    Text base;
  };
  PictureFaces(std::vector<Entry> entries, FaceSuffixes suffixes)
      : entries_(std::move(entries)), suffixes_(std::move(suffixes)) {}

  // Shows `face` on `picture`; a picture outside the table is left alone.
  void Show(Picture& picture, Face face) const {
    for (const Entry& e : entries_) {
      if (e.picture != &picture) continue;
      const Text& suffix = !picture.Enabled()   ? suffixes_.disabled
                           : face == Face::Over ? suffixes_.over
                           : face == Face::Down ? suffixes_.down
                                                : suffixes_.normal;
      const Text want = e.base + suffix;
      if (picture.PictureKey() != want) picture.SetPictureKey(want);
    }
  }
  // Every picture but `keep` (none when null) back to its normal face.
  void ShowNormalBut(const Control* keep) const {
    for (const Entry& e : entries_)
      if (e.picture != keep) Show(*e.picture, Face::Normal);
  }
  bool Holds(const Control& control) const {
    for (const Entry& e : entries_)
      if (e.picture == &control) return true;
    return false;
  }
  const std::vector<Entry>& Entries() const { return entries_; }

 private:
  std::vector<Entry> entries_;
  FaceSuffixes suffixes_;
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
    if (plan.press) Twice(control, "press");
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
    Bind(control, control.on.Click, "Click", Call(handler));
    return Enter(control, handler);
  }

  // A key while `control` has the focus (the arrows on a slider).
  Design& KeyWhile(const Control& control, KeyStroke stroke, kit::Key key, Handler handler) {
    return AddKey({stroke, key, &control, nullptr, Call(handler)});
  }

  // Enter (and Space) while `control` has the focus runs `handler`; the mouse is left
  // as it is. For a control whose keyboard press means something else than a click.
  Design& Enter(Control& control, Handler handler) {
    return AddKey({KeyStroke::Down, kEnter, &control, nullptr, Call(handler)});
  }

  // A key of the form: with KeyPreview it is seen whichever control has the focus;
  // without, only while no control has it.
  Design& Key(KeyStroke stroke, kit::Key key, Handler handler) {
    return AddKey({stroke, key, nullptr, nullptr, Call(handler)});
  }

  // A key of the form that holds only until `control` has had the focus once.
  Design& KeyUntilFocused(KeyStroke stroke, kit::Key key, const Control& control, Handler handler) {
    return AddKey({stroke, key, nullptr, &control, Call(handler)});
  }

  // A right button up on any of these shows its balloon tip (the text under
  // "form.control"); any other button up takes an open tip away. A tip of the form
  // goes when the form unloads, its control's window with it.
  Design& Tips(std::initializer_list<Control*> controls) { return TipsOf({}, controls); }

  // The same, with the text under "`form`.control" of another form: a control that
  // shows another screen's tip for the same button.
  Design& TipsOf(const Text& form, std::initializer_list<Control*> controls) {
    for (Control* c : controls) {
      Plan& plan = *PlanFor(*c);
      if (plan.tip) Twice(*c, "tip");
      plan.tip = true;
      if (!form.empty()) plan.tipKey = form + u"." + c->Name();
      Install(*c);
    }
    if (!tipsGoWithForm_) {
      tipsGoWithForm_ = true;
      form_.AddUnloadHook([ui = &ui_, f = &form_] { ui->Tips().RemoveOf(*f); });
    }
    return *this;
  }

  // A left button down on any of these moves the window with the pointer.
  Design& Drag(std::initializer_list<Control*> strips) {
    for (Control* strip : strips) {
      Bind(*strip, strip->on.MouseDown, "MouseDown", [f = &form_](const MouseArgs& a) {
        if (a.button == kLeftButton) f->BeginDrag();
      });
    }
    return *this;
  }

  // The pointer over one of these skinned buttons (or its label) shows it in its
  // hover skin and the others of the form's hover group normal; over the form, all
  // normal. A disabled button keeps its skin. `normalSkin` and `hoverSkin` name the
  // screen's own pictures for the two states (empty: the kit's buttons). Every Hover
  // and Faces of one chain make one group.
  Design& Hover(std::initializer_list<PictureButton*> buttons, const Text& normalSkin = {},
                const Text& hoverSkin = {}) {
    HoverGroup& group = Group();
    for (PictureButton* b : buttons) {
      group.buttons.push_back({b, normalSkin, hoverSkin});
      auto move = [g = hover_, b](const MouseArgs&) { g->Light(b); };
      Bind(*b, b->on.MouseMove, "MouseMove", move);
      Bind(b->Lbl(), b->Lbl().on.MouseMove, "MouseMove", move);
    }
    return *this;
  }

  // Picture buttons with a face per state: the left button down shows the pressed
  // face; the pointer over one shows its hover face and the other pictures normal
  // (the skinned buttons of the group are left as they are); the focus shows the
  // hover face and its loss the normal one. The pointer over the form, or over a
  // skinned button of the group, puts every picture back to normal.
  Design& Faces(const PictureFaces& faces) { return BindFaces(faces, true); }

  // The same pictures with the pointer alone: the hover face under it, the normal one
  // elsewhere; a press or the focus leaves the face as it is.
  Design& HoverFaces(const PictureFaces& faces) { return BindFaces(faces, false); }

  // Controls that cover the form (a background picture): the pointer over them puts
  // the hover group back to normal, as over the form itself.
  Design& HoverAway(std::initializer_list<Control*> areas) {
    Group();
    for (Control* area : areas) {
      Bind(*area, area->on.MouseMove, "MouseMove",
           [g = hover_](const MouseArgs&) { g->Light(nullptr); });
    }
    return *this;
  }

  // Any other event of a control bound to a handler of the screen.
  Design& On(std::function<void()>& slot, Handler handler) {
    if (slot && !bound_.contains(&slot) && !FormSlot(&slot))
      throw std::logic_error(Where(form_) + ": an event bound twice");
    Claim(&slot);
    slot = Call(handler);
    return *this;
  }
  template <class Arg>
  Design& On(std::function<void(Arg)>& slot, void (F::*handler)(Arg)) {
    if (slot && !bound_.contains(&slot) && !FormSlot(&slot))
      throw std::logic_error(Where(form_) + ": an event bound twice");
    Claim(&slot);
    slot = [f = &form_, handler](Arg a) { (f->*handler)(a); };
    return *this;
  }

 private:
  struct Plan {
    std::function<void()> press;
    PressButtons buttons = PressButtons::Left;
    bool tip = false;
    Text tipKey;  // empty: the control's own
  };

  struct HoverButton {
    PictureButton* button;
    Text normalSkin;
    Text hoverSkin;
  };

  // The skinned buttons and the picture faces that light up under the pointer.
  struct HoverGroup {
    std::vector<HoverButton> buttons;
    const PictureFaces* faces = nullptr;

    void Light(Control* over) const {
      const bool overPicture = faces != nullptr && over != nullptr && faces->Holds(*over);
      if (faces != nullptr) {
        if (overPicture) faces->Show(static_cast<Picture&>(*over), Face::Over);
        faces->ShowNormalBut(over);
      }
      if (overPicture) return;
      for (const HoverButton& h : buttons) {
        PictureButton& b = *h.button;
        if (b.SkinState() == kSkinDisabled || !b.Enabled()) continue;
        const int want = &b == over ? kSkinHover : kSkinNormal;
        if (b.SkinState() != want)
          ApplySkin(b, want, want == kSkinHover ? h.hoverSkin : h.normalSkin);
      }
    }
  };

  static std::string Where(const Control& control) { return base::ToUtf8(control.Name()); }

  [[noreturn]] void Twice(const Control& control, const char* what) {
    throw std::logic_error(Where(form_) + "." + Where(control) + ": " + what + " bound twice");
  }

  // The form's own events start bound to its designed handlers, which a binding may
  // replace once; a control's start empty.
  bool FormSlot(const void* slot) const {
    const auto* low = reinterpret_cast<const char*>(&form_.on);
    const auto* at = static_cast<const char*>(slot);
    return at >= low && at < low + sizeof(form_.on);
  }

  void Claim(const void* slot) { bound_.insert(slot); }

  template <class Slot, class Fn>
  void Bind(Control& control, Slot& slot, const char* event, Fn fn) {
    if (bound_.contains(&slot) || (slot && !FormSlot(&slot))) Twice(control, event);
    Claim(&slot);
    slot = std::move(fn);
  }

  Design& AddKey(KeyRule rule) {
    for (const KeyRule& r : form_.KeyRules()) {
      if (r.stroke == rule.stroke && r.key.code == rule.key.code && r.key.alt == rule.key.alt &&
          r.focus == rule.focus && r.untilFocused == rule.untilFocused) {
        throw std::logic_error(Where(form_) + ": a key bound twice" +
                               (rule.focus != nullptr ? " on " + Where(*rule.focus) : ""));
      }
    }
    form_.AddKey(std::move(rule));
    return *this;
  }

  Design& BindFaces(const PictureFaces& faces, bool pressAndFocus) {
    HoverGroup& group = Group();
    if (group.faces != nullptr) throw std::logic_error(Where(form_) + ": faces bound twice");
    group.faces = &faces;
    for (const PictureFaces::Entry& e : faces.Entries()) {
      Picture* p = e.picture;
      const PictureFaces* all = &faces;
      Bind(*p, p->on.MouseMove, "MouseMove", [g = hover_, p](const MouseArgs&) { g->Light(p); });
      if (!pressAndFocus) continue;
      Bind(*p, p->on.MouseDown, "MouseDown", [all, p](const MouseArgs& a) {
        if (a.button == kLeftButton) all->Show(*p, Face::Down);
      });
      Bind(*p, p->on.GotFocus, "GotFocus", [all, p] { all->Show(*p, Face::Over); });
      Bind(*p, p->on.LostFocus, "LostFocus", [all, p] { all->Show(*p, Face::Normal); });
    }
    return *this;
  }

  HoverGroup& Group() {
    if (!hover_) {
      hover_ = std::make_shared<HoverGroup>();
      Bind(form_, form_.on.MouseMove, "MouseMove",
           [g = hover_](const MouseArgs&) { g->Light(nullptr); });
    }
    return *hover_;
  }

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
    if (installed_.contains(&control)) return;
    installed_.insert(&control);
    Ui* ui = &ui_;
    Control* tool = &control;
    auto up = [plan, ui, tool](Control& source, const MouseArgs& a) {
      if (plan->tip) {
        if (plan->tipKey.empty()) {
          ui->Tips().ButtonMouseUp(source, a.button);
        } else {
          ui->Tips().ShowTip(a.button, FindTipText(tool->Owner().TipTexts(), plan->tipKey), *tool);
        }
      }
      if (!plan->press) return;
      const bool presses =
          plan->buttons == PressButtons::Left ? a.button == kLeftButton : a.button != kRightButton;
      if (presses) plan->press();
    };
    Bind(control, control.on.MouseUp, "MouseUp",
         [up, c = &control](const MouseArgs& a) { up(*c, a); });
    if (control.Kind() == ControlKind::PictureButton) {
      Label& label = static_cast<PictureButton&>(control).Lbl();
      Bind(label, label.on.MouseUp, "MouseUp", [up, l = &label](const MouseArgs& a) { up(*l, a); });
    }
  }

  F& form_;
  Ui& ui_;
  std::map<Control*, std::shared_ptr<Plan>> plans_;
  std::set<const Control*> installed_;
  std::set<const void*> bound_;
  std::shared_ptr<HoverGroup> hover_;
  bool tipsGoWithForm_ = false;
};

}  // namespace kit
