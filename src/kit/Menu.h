#pragma once
// Menus of a form as a model: a Menu is a top-level entry (of the menu bar, or a
// popup when it is hidden there), a MenuItem an entry below it; an item with items
// below it is a submenu. Caption "-" is a separator. Items keep their declaration
// order. The renderer builds real menus from Children() and keeps them in step
// through the change listener; a chosen item raises its Click.
#include <vector>

#include "kit/Control.h"

namespace kit {

class MenuItem : public Control {
 public:
  MenuItem(MenuItem& parent, Text name, Text caption);

  MenuItem* ParentItem() const { return parent_; }
  const std::vector<MenuItem*>& Children() const { return children_; }
  bool IsSeparator() const { return Caption() == u"-"; }

  bool Checked() const { return checked_; }
  void SetChecked(bool v);

  // The user chose the item: raises Click when it and its parents are enabled and
  // visible.
  void Choose();

  void SaveDesign() override;
  void RestoreDesign() override;

 protected:
  MenuItem(Form& form, ControlKind kind, Text name, Text caption);

 private:
  MenuItem* parent_ = nullptr;
  std::vector<MenuItem*> children_;
  bool checked_ = false;
  bool designChecked_ = false;
};

class Menu : public MenuItem {
 public:
  Menu(Form& form, Text name, Text caption);
};

}  // namespace kit
