#include "kit/Ui.h"

#include "kit/MesgBox.h"
#include "kit/ToolTips.h"

namespace kit {

Ui::Ui(TipBackend* tipBackend) : tips_(std::make_unique<TipService>(tipBackend)) {}

Ui::~Ui() = default;

MesgBox& Ui::Box() {
  if (!box_) box_ = std::make_unique<MesgBox>();
  return *box_;
}

int Ui::MessageBox(const Text& text, int icon, int buttons, const Text& title) {
  return Box().ShowMessage(*this, text, icon, buttons, title);
}

TipService& Ui::Tips() { return *tips_; }

Form* Ui::KeptScreen(TextView name) const {
  for (const auto& form : kept_) {
    if (form->Name() == name) return form.get();
  }
  return nullptr;
}

Form& Ui::KeepScreen(std::unique_ptr<Form> form) {
  kept_.push_back(std::move(form));
  return *kept_.back();
}

}  // namespace kit
