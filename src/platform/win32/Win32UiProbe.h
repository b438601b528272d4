#pragma once
// Reads back, through the platform's own calls, what a window or control of the
// Windows UI host shows, and plays the user the way the platform would (a click
// message, a choice in a combo box, a close from the system menu). For the UI host's
// contract tests, which describe the host once and check the fake and this one alike.
#include <vector>

#include "base/Text.h"
#include "platform/UiProtocol.h"

namespace platform {
class Win32UiHost;
}

namespace platform::win32 {

struct ProbeState {
  bool exists = false;
  bool visible = false;
  bool enabled = false;
  bool focused = false;
  bool active = false;
  bool topmost = false;
  base::Text text;
  int check = 0;
  std::vector<base::Text> items;
  int listIndex = -1;
  std::vector<bool> rowImages;
  std::vector<bool> rowsInView;  // a list's rows: whether each lies in the visible page
  // The accessible role number and name a screen reader gets in this process.
  long role = 0;
  base::Text name;
  bool focusable = false;
};

class UiProbe {
 public:
  explicit UiProbe(Win32UiHost& host) : host_(host) {}
  ProbeState Read(UiHandle windowOrControl);
  void Click(UiHandle control);
  void Select(UiHandle combo, int index);
  void RequestClose(UiHandle window);
  void Activate(UiHandle window);

 private:
  Win32UiHost& host_;
};

}  // namespace platform::win32
