#pragma once
// Drives a program's windows from another process the way a user and the shell would:
// finds its windows (hidden ones too), reads their state and posts the messages that
// clicks, the close box and the notification area would send.
//
// Every wait takes a timeout: under Wine a fault usually hangs instead of failing, and
// a test that waits forever takes the whole run with it.
#include <windows.h>

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace e2e {

using Ms = std::chrono::milliseconds;
inline constexpr Ms kWait{15000};

struct WindowInfo {
  HWND hwnd = nullptr;
  DWORD pid = 0;
  std::wstring className;
  std::wstring text;
  bool visible = false;
  int check = -1;  // BST_* of a button, -1 for any other class
  RECT rect{};     // screen coordinates

  long Width() const { return rect.right - rect.left; }
  long Height() const { return rect.bottom - rect.top; }
};

// Empty strings and a zero pid match anything. Title and class compare exactly.
struct WindowQuery {
  std::wstring title;
  std::wstring className;
  DWORD pid = 0;
  bool visibleOnly = false;
};

WindowInfo Describe(HWND hwnd);
std::vector<WindowInfo> FindTopLevel(const WindowQuery& query);
// Every descendant, in Z order per parent; WM_GETTEXT works across processes.
std::vector<WindowInfo> ListChildren(HWND parent);

// The design name the monitor's host puts on each of its windows ("QvName" atom);
// readable from another process.
std::wstring DesignName(HWND hwnd);
// The descendant of `parent` with that design name, or null.
HWND FindByName(HWND parent, const std::wstring& name);
// A left click as the control's window gets it (button down and up, posted).
bool ClickControl(HWND control);
// The position of a progress bar.
int ProgressPosition(HWND bar);

// Polls `done` until it answers true or `timeout` has passed; true when it did.
bool WaitUntil(const std::function<bool()>& done, Ms timeout = kWait, Ms poll = Ms{50});
std::optional<WindowInfo> WaitForWindow(const WindowQuery& query, Ms timeout = kWait);
bool WaitForVisible(HWND hwnd, bool visible, Ms timeout = kWait);

bool Post(HWND hwnd, UINT message, WPARAM wp = 0, LPARAM lp = 0);
// What the shell posts for a mouse event on a notification-area icon.
inline constexpr UINT kTrayCallback = 2025;
bool PostTrayMouse(HWND hwnd, UINT mouseMessage, UINT callback = kTrayCallback);

// Popup menus are windows of class #32768. Under Wine their items live in the
// tracking process only, so a menu is driven by keys posted to its window, which the
// owner's menu loop picks up from its queue.
inline constexpr wchar_t kMenuClass[] = L"#32768";
std::optional<WindowInfo> WaitForPopupMenu(DWORD pid, Ms timeout = kWait);
bool WaitForNoPopupMenu(DWORD pid, Ms timeout = kWait);
// The item whose underlined letter is `key`.
bool ChooseMenuItemByMnemonic(DWORD pid, wchar_t key, Ms timeout = kWait);
// The item `downs` places down from no selection (1 is the first item; separators are
// passed over), chosen by keys: Home, downs - 1 times Down, then Enter.
bool ChooseMenuItemByArrows(DWORD pid, int downs, Ms timeout = kWait);
bool DismissMenu(DWORD pid, Ms timeout = kWait);

}  // namespace e2e
