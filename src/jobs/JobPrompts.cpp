#include "jobs/JobPrompts.h"

#include "kit/Ui.h"

namespace jobs {

int UiPrompts::Ask(const Text& text, int icon, int buttons) {
  return ui_.MessageBox(text, icon, buttons, app_.AppTitle);
}

void UiPrompts::OpenDownload(const Text& url) {
  // The result is not looked at: without a connection the browser tells its own error.
  if (app_.platform.shell != nullptr) {
    const std::uintptr_t owner = owner_ != nullptr ? ui_.NativeWindowOf(*owner_) : 0;
    app_.platform.shell->Execute(owner, u"open", url, Text(), Text(), 2);
  }
}

int KitIconOf(int storeIcon) {
  switch (storeIcon) {
    case jobstore::kIconCritical: return kit::kIconError;
    case jobstore::kIconQuestion: return kit::kIconQuestion;
    case jobstore::kIconExclamation: return kit::kIconWarning;
    default: return kit::kIconInfo;
  }
}

int KitButtonsOf(int storeButtons) {
  switch (storeButtons) {
    case 1: return kit::kButtonsOkCancel;
    case 4: return kit::kButtonsYesNo;
    default: return kit::kButtonsOk;
  }
}

StoreMessagesTo::StoreMessagesTo(frame::AppState& app, JobPrompts& prompts)
    : app_(app), saved_(app.Store.ShowMessage) {
  app_.Store.ShowMessage = [&prompts](const Text& text, int icon, int buttons) {
    return prompts.Ask(text, KitIconOf(icon), KitButtonsOf(buttons));
  };
}

StoreMessagesTo::~StoreMessagesTo() { app_.Store.ShowMessage = std::move(saved_); }

}  // namespace jobs
