#pragma once
// How the job screens' rules speak to the user: every message and question of the
// job list, its actions and Backup Now goes through one JobPrompts. On a screen it is
// the product's message box; on the command line (tools/qvjobs) the text is printed
// and a fixed answer given. The download of the plug-in goes through it as well, so a
// command line can leave it unopened.
#include <cstdint>
#include <functional>

#include "base/Text.h"
#include "frame/AppState.h"
#include "kit/MesgBox.h"

namespace kit {
class Form;
class Ui;
}  // namespace kit

namespace jobs {

using base::Text;

class JobPrompts {
 public:
  virtual ~JobPrompts() = default;
  // A message box with the kit's icon and button codes (kit::kIconInfo, ...); the
  // result is the kit's (kit::kResultYes, kit::kResultClosed, ...).
  virtual int Ask(const Text& text, int icon, int buttons) = 0;
  // The plug-in's installer page, opened with the verb "open" and show state 2.
  virtual void OpenDownload(const Text& url) = 0;
};

// The prompts of a screen: the product's message box with the application title, and
// the shell for the download, with the screen's window as its owner.
class UiPrompts : public JobPrompts {
 public:
  UiPrompts(frame::AppState& app, kit::Ui& ui, const kit::Form* owner = nullptr)
      : app_(app), ui_(ui), owner_(owner) {}
  int Ask(const Text& text, int icon, int buttons) override;
  void OpenDownload(const Text& url) override;

 private:
  frame::AppState& app_;
  kit::Ui& ui_;
  const kit::Form* owner_;
};

// The job store shows its own messages (the Backup Now lists and the immediate
// record) through AppState::Store.ShowMessage with its own icon codes. While one of
// these lives, those messages go to `prompts`; the former receiver comes back after.
class StoreMessagesTo {
 public:
  StoreMessagesTo(frame::AppState& app, JobPrompts& prompts);
  ~StoreMessagesTo();
  StoreMessagesTo(const StoreMessagesTo&) = delete;
  StoreMessagesTo& operator=(const StoreMessagesTo&) = delete;

 private:
  frame::AppState& app_;
  jobstore::ShowMessageFn saved_;
};

// The job store's icon code (16, 32, 48, 64) and button code (0, 1, 4) as the kit's.
int KitIconOf(int storeIcon);
int KitButtonsOf(int storeButtons);

}  // namespace jobs
