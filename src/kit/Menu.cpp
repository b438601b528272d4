#include "kit/Menu.h"

#include "kit/Form.h"

namespace kit {

MenuItem::MenuItem(MenuItem& parent, Text name, Text caption)
    : Control(parent.Owner(), ControlKind::MenuItem, std::move(name), -1, {}, std::move(caption)),
      parent_(&parent) {
  parent.children_.push_back(this);
}

MenuItem::MenuItem(Form& form, ControlKind kind, Text name, Text caption)
    : Control(form, kind, std::move(name), -1, {}, std::move(caption)) {}

void MenuItem::SetChecked(bool v) {
  if (checked_ == v) return;
  checked_ = v;
  Touch(Aspect::Value);
}

void MenuItem::Choose() {
  if (!Visible() || !Owner().IsLoaded()) return;
  // A popup menu is often hidden on the menu bar and still shown by PopupMenu, so
  // only the enabled state of the parents counts.
  for (const MenuItem* m = this; m != nullptr; m = m->parent_) {
    if (!m->Enabled()) return;
  }
  Invoke(on.Click);
}

void MenuItem::SaveDesign() {
  Control::SaveDesign();
  designChecked_ = checked_;
}

void MenuItem::RestoreDesign() {
  Control::RestoreDesign();
  checked_ = designChecked_;
}

Menu::Menu(Form& form, Text name, Text caption)
    : MenuItem(form, ControlKind::Menu, std::move(name), std::move(caption)) {}

}  // namespace kit
