#pragma once
// The UI hosts the UI contract runs against, each with the means to read back what a
// window or control shows and to play the user the platform's own way.
#include <functional>
#include <memory>
#include <vector>

#include "Targets.h"
#include "platform/UiHost.h"

namespace contract {

// What the platform shows of a window or control.
struct UiSeen {
  bool exists = false;
  bool visible = false;
  bool enabled = false;
  bool focused = false;  // has the keyboard focus
  bool active = false;   // the program's active window
  bool topmost = false;
  Text text;
  int check = 0;
  std::vector<Text> items = {};  // a combo box's entries, a list's row texts
  int listIndex = -1;
  std::vector<bool> rowImages = {};   // a list's rows: whether each shows a picture
  std::vector<bool> rowsInView = {};  // a list's rows: whether each lies in the visible page
};

class UiWorld {
 public:
  virtual ~UiWorld() = default;
  virtual platform::IUiHost& Host() = 0;
  virtual UiSeen Read(platform::UiHandle windowOrControl) = 0;
  // Lets what the host has pending happen.
  virtual void Pump() = 0;
  // The user clicks a check box or option, chooses an entry of a combo box, closes
  // a window from its system menu, brings a window to the front.
  virtual void Click(platform::UiHandle control) = 0;
  virtual void Select(platform::UiHandle combo, int index) = 0;
  virtual void RequestClose(platform::UiHandle window) = 0;
  virtual void Activate(platform::UiHandle window) = 0;
  // `fn` runs once inside the next modal loop.
  virtual void DuringModal(std::function<void()> fn) = 0;
  virtual bool TrayShown(platform::UiHandle icon) = 0;
  virtual int BalloonsShown(platform::UiHandle icon) = 0;
};

using UiTarget = Target<UiWorld>;
std::vector<UiTarget> UiTargets();

}  // namespace contract
