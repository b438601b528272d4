#include "Driver.h"

#include "platform/win32/Win32Handles.h"

#include <commctrl.h>

#include <cstdio>
#include <thread>

namespace e2e {

namespace {

// A test program that ends abnormally under Wine takes its buffered output with it, and
// ctest's log then shows no word of the failure: every driver program writes unbuffered.
[[maybe_unused]] const bool kUnbufferedOutput = [] {
  std::setvbuf(stdout, nullptr, _IONBF, 0);
  return true;
}();

std::wstring ClassOf(HWND hwnd) {
  wchar_t name[256] = {};
  int n = GetClassNameW(hwnd, name, 256);
  return std::wstring(name, n > 0 ? n : 0);
}

// WM_GETTEXT rather than GetWindowTextW: the latter does not ask a window of another
// process for the text of its controls.
std::wstring TextOf(HWND hwnd) {
  DWORD_PTR length = 0;
  if (!SendMessageTimeoutW(hwnd, WM_GETTEXTLENGTH, 0, 0, SMTO_ABORTIFHUNG, 2000, &length))
    return {};
  std::wstring text(length + 1, L'\0');
  DWORD_PTR got = 0;
  if (!SendMessageTimeoutW(hwnd, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()),
                           SMTO_ABORTIFHUNG, 2000, &got))
    return {};
  text.resize(got < text.size() ? got : text.size() - 1);
  return text;
}

int CheckOf(HWND hwnd, const std::wstring& className) {
  if (_wcsicmp(className.c_str(), L"Button") != 0) return -1;
  DWORD_PTR state = 0;
  if (!SendMessageTimeoutW(hwnd, BM_GETCHECK, 0, 0, SMTO_ABORTIFHUNG, 2000, &state)) return -1;
  return static_cast<int>(state);
}

bool Matches(const WindowInfo& w, const WindowQuery& q) {
  if (q.pid && w.pid != q.pid) return false;
  if (!q.className.empty() && w.className != q.className) return false;
  if (!q.title.empty() && w.text != q.title) return false;
  return !q.visibleOnly || w.visible;
}

struct Collect {
  const WindowQuery* query;
  std::vector<WindowInfo>* out;
};

BOOL CALLBACK CollectTopLevel(HWND hwnd, LPARAM lp) {
  auto* c = reinterpret_cast<Collect*>(lp);
  WindowInfo info = Describe(hwnd);
  if (Matches(info, *c->query)) c->out->push_back(std::move(info));
  return TRUE;
}

BOOL CALLBACK CollectChild(HWND hwnd, LPARAM lp) {
  reinterpret_cast<std::vector<WindowInfo>*>(lp)->push_back(Describe(hwnd));
  return TRUE;
}

// The keys as one run that nothing can fall into. Wine moves a menu's selection on
// every mouse move it sees, to the item under the pointer or to none: a window that
// appears under the pointer gets a mouse move of its own (a tray menu opens right
// there), which comes whenever the menu's thread reads the display. The menu loop
// takes posted messages before input, so the keys go in while that thread is held:
// it finds all of them at once and no mouse move between two of them.
bool PostKeys(HWND menu, const std::vector<WPARAM>& keys) {
  const DWORD tid = GetWindowThreadProcessId(menu, nullptr);
  platform::win32::UniqueHandle thread(OpenThread(THREAD_SUSPEND_RESUME, FALSE, tid));
  const bool held = thread && SuspendThread(thread.Get()) != static_cast<DWORD>(-1);
  bool ok = true;
  // The last key ends the menu (Enter, Escape): the menu acts on its press and goes at
  // once, so it is sent as a press only; that the menu took it shows by its going.
  for (size_t i = 0; i < keys.size(); ++i) {
    ok = ok && Post(menu, WM_KEYDOWN, keys[i], 1);
    if (i + 1 < keys.size()) ok = ok && Post(menu, WM_KEYUP, keys[i], 0xC0000001);
  }
  if (held) ResumeThread(thread.Get());
  return ok;
}

}  // namespace

WindowInfo Describe(HWND hwnd) {
  WindowInfo info;
  info.hwnd = hwnd;
  GetWindowThreadProcessId(hwnd, &info.pid);
  info.className = ClassOf(hwnd);
  info.text = TextOf(hwnd);
  info.visible = IsWindowVisible(hwnd) != FALSE;
  info.check = CheckOf(hwnd, info.className);
  GetWindowRect(hwnd, &info.rect);
  return info;
}

std::vector<WindowInfo> FindTopLevel(const WindowQuery& query) {
  std::vector<WindowInfo> found;
  Collect c{&query, &found};
  EnumWindows(&CollectTopLevel, reinterpret_cast<LPARAM>(&c));
  return found;
}

std::vector<WindowInfo> ListChildren(HWND parent) {
  std::vector<WindowInfo> found;
  EnumChildWindows(parent, &CollectChild, reinterpret_cast<LPARAM>(&found));
  return found;
}

bool WaitUntil(const std::function<bool()>& done, Ms timeout, Ms poll) {
  const auto end = std::chrono::steady_clock::now() + timeout;
  for (;;) {
    if (done()) return true;
    if (std::chrono::steady_clock::now() >= end) return false;
    std::this_thread::sleep_for(poll);
  }
}

std::optional<WindowInfo> WaitForWindow(const WindowQuery& query, Ms timeout) {
  std::optional<WindowInfo> found;
  WaitUntil(
      [&] {
        auto all = FindTopLevel(query);
        if (!all.empty()) found = all.front();
        return found.has_value();
      },
      timeout);
  return found;
}

bool WaitForVisible(HWND hwnd, bool visible, Ms timeout) {
  return WaitUntil([&] { return IsWindow(hwnd) && (IsWindowVisible(hwnd) != FALSE) == visible; },
                   timeout);
}

bool Post(HWND hwnd, UINT message, WPARAM wp, LPARAM lp) {
  return PostMessageW(hwnd, message, wp, lp) != FALSE;
}

bool PostTrayMouse(HWND hwnd, UINT mouseMessage, UINT callback) {
  // The icon identifier goes in wParam; the monitor's icon is number 0.
  return Post(hwnd, callback, 0, static_cast<LPARAM>(mouseMessage));
}

std::optional<WindowInfo> WaitForPopupMenu(DWORD pid, Ms timeout) {
  return WaitForWindow(WindowQuery{L"", kMenuClass, pid, true}, timeout);
}

bool WaitForNoPopupMenu(DWORD pid, Ms timeout) {
  return WaitUntil([&] { return FindTopLevel({L"", kMenuClass, pid, true}).empty(); }, timeout);
}

std::wstring DesignName(HWND hwnd) {
  auto atom = static_cast<ATOM>(reinterpret_cast<UINT_PTR>(GetPropW(hwnd, L"QvName")));
  if (atom == 0) return {};
  wchar_t name[256] = {};
  UINT n = GlobalGetAtomNameW(atom, name, 256);
  return std::wstring(name, n);
}

HWND FindByName(HWND parent, const std::wstring& name) {
  for (const WindowInfo& w : ListChildren(parent)) {
    if (DesignName(w.hwnd) == name) return w.hwnd;
  }
  return nullptr;
}

bool ClickControl(HWND control) {
  const LPARAM at = MAKELPARAM(2, 2);
  return Post(control, WM_LBUTTONDOWN, MK_LBUTTON, at) && Post(control, WM_LBUTTONUP, 0, at);
}

int ProgressPosition(HWND bar) {
  DWORD_PTR pos = 0;
  if (!SendMessageTimeoutW(bar, PBM_GETPOS, 0, 0, SMTO_ABORTIFHUNG, 5000, &pos)) return -1;
  return static_cast<int>(pos);
}

bool ChooseMenuItemByMnemonic(DWORD pid, wchar_t key, Ms timeout) {
  auto menu = WaitForPopupMenu(pid, timeout);
  if (!menu) return false;
  if (!Post(menu->hwnd, WM_CHAR, static_cast<WPARAM>(key), 1)) return false;
  return WaitForNoPopupMenu(pid, timeout);
}

bool ChooseMenuItemByArrows(DWORD pid, int downs, Ms timeout) {
  auto menu = WaitForPopupMenu(pid, timeout);
  if (!menu) return false;
  if (downs < 1) return false;
  // Home takes the first item whatever the pointer has selected; the downs go on from
  // there.
  std::vector<WPARAM> keys{VK_HOME};
  keys.insert(keys.end(), static_cast<size_t>(downs - 1), VK_DOWN);
  keys.push_back(VK_RETURN);
  if (!PostKeys(menu->hwnd, keys)) return false;
  return WaitForNoPopupMenu(pid, timeout);
}

bool DismissMenu(DWORD pid, Ms timeout) {
  auto menu = WaitForPopupMenu(pid, timeout);
  if (!menu) return false;
  if (!PostKeys(menu->hwnd, {VK_ESCAPE})) return false;
  return WaitForNoPopupMenu(pid, timeout);
}

}  // namespace e2e
