// The driver against windows of its own, on a second thread with its own message loop
// (as another program's windows would be), so that a fault of the driver does not pass
// for a fault of the monitor.
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <future>
#include <thread>

#include "Driver.h"

namespace e2e {
namespace {

constexpr wchar_t kClass[] = L"QvE2eDriverProbe";
constexpr UINT kShowMenu = WM_APP + 1;
constexpr UINT kShowLater = WM_APP + 2;

// A top-level window with a few controls, run on its own thread.
class ProbeWindow {
 public:
  explicit ProbeWindow(const wchar_t* title, bool visible = true) {
    std::promise<HWND> made;
    auto ready = made.get_future();
    thread_ = std::thread([this, title, visible, &made] { Run(title, visible, made); });
    hwnd_ = ready.get();
  }
  ~ProbeWindow() {
    PostMessageW(hwnd_, WM_CLOSE, 0, 0);
    thread_.join();
  }
  HWND Hwnd() const { return hwnd_; }
  int LastCommand() const { return command_.load(); }

 private:
  static LRESULT CALLBACK Proc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) {
    auto* self = reinterpret_cast<ProbeWindow*>(GetWindowLongPtrW(hwnd, GWLP_USERDATA));
    switch (msg) {
      case WM_COMMAND:
        if (self) self->command_ = LOWORD(wp);
        return 0;
      case kShowMenu: {
        HMENU menu = CreatePopupMenu();
        AppendMenuW(menu, MF_STRING, 11, L"&First");
        AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
        AppendMenuW(menu, MF_STRING, 12, L"&Second");
        AppendMenuW(menu, MF_STRING, 13, L"&Third");
        SetForegroundWindow(hwnd);
        TrackPopupMenu(menu, TPM_RIGHTBUTTON, 100, 100, 0, hwnd, nullptr);
        DestroyMenu(menu);
        return 0;
      }
      case kShowLater: SetTimer(hwnd, 1, static_cast<UINT>(wp), nullptr); return 0;
      case WM_TIMER:
        KillTimer(hwnd, 1);
        ShowWindow(hwnd, SW_SHOWNOACTIVATE);
        return 0;
      case WM_DESTROY: PostQuitMessage(0); return 0;
    }
    return DefWindowProcW(hwnd, msg, wp, lp);
  }

  void Run(const wchar_t* title, bool visible, std::promise<HWND>& made) {
    WNDCLASSW wc{};
    wc.lpfnWndProc = &Proc;
    wc.hInstance = GetModuleHandleW(nullptr);
    wc.lpszClassName = kClass;
    RegisterClassW(&wc);
    HWND hwnd = CreateWindowExW(0, kClass, title, WS_OVERLAPPEDWINDOW, 50, 60, 300, 200, nullptr,
                                nullptr, wc.hInstance, nullptr);
    SetWindowLongPtrW(hwnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    HWND check = CreateWindowExW(0, L"BUTTON", L"Alpha", WS_CHILD | WS_VISIBLE | BS_AUTOCHECKBOX,
                                 10, 10, 100, 20, hwnd, nullptr, wc.hInstance, nullptr);
    SendMessageW(check, BM_SETCHECK, BST_CHECKED, 0);
    CreateWindowExW(0, L"BUTTON", L"Beta", WS_CHILD | WS_VISIBLE | WS_DISABLED, 10, 40, 100, 20,
                    hwnd, nullptr, wc.hInstance, nullptr);
    CreateWindowExW(0, L"STATIC", L"Gamma", WS_CHILD, 10, 70, 100, 20, hwnd, nullptr, wc.hInstance,
                    nullptr);
    if (visible) ShowWindow(hwnd, SW_SHOWNOACTIVATE);
    made.set_value(hwnd);
    MSG msg;
    while (GetMessageW(&msg, nullptr, 0, 0) > 0) {
      TranslateMessage(&msg);
      DispatchMessageW(&msg);
    }
  }

  HWND hwnd_ = nullptr;
  std::thread thread_;
  std::atomic<int> command_{0};
};

const WindowInfo* Child(const std::vector<WindowInfo>& children, const wchar_t* text) {
  for (const auto& c : children)
    if (c.text == text) return &c;
  return nullptr;
}

TEST(Driver, ListsChildrenWithClassTextVisibilityEnabledAndCheck) {
  ProbeWindow probe(L"e2e probe children");
  auto children = ListChildren(probe.Hwnd());
  ASSERT_EQ(children.size(), 3u);

  const WindowInfo* alpha = Child(children, L"Alpha");
  ASSERT_NE(alpha, nullptr);
  EXPECT_EQ(_wcsicmp(alpha->className.c_str(), L"Button"), 0);
  EXPECT_EQ(alpha->check, BST_CHECKED);
  EXPECT_TRUE(alpha->visible && alpha->enabled);

  const WindowInfo* beta = Child(children, L"Beta");
  ASSERT_NE(beta, nullptr);
  EXPECT_EQ(beta->check, BST_UNCHECKED);
  EXPECT_FALSE(beta->enabled);

  const WindowInfo* gamma = Child(children, L"Gamma");
  ASSERT_NE(gamma, nullptr);
  EXPECT_EQ(gamma->check, -1);
  EXPECT_FALSE(gamma->visible);
}

TEST(Driver, FindsHiddenTopLevelWindowsAndFiltersThem) {
  ProbeWindow shown(L"e2e probe shown");
  ProbeWindow hidden(L"e2e probe hidden", false);
  const DWORD self = GetCurrentProcessId();

  auto all = FindTopLevel(WindowQuery{L"", kClass, self, false});
  EXPECT_EQ(all.size(), 2u);
  auto visible = FindTopLevel(WindowQuery{L"", kClass, self, true});
  ASSERT_EQ(visible.size(), 1u);
  EXPECT_EQ(visible[0].hwnd, shown.Hwnd());

  auto byTitle = FindTopLevel(WindowQuery{L"e2e probe hidden", L"", 0, false});
  ASSERT_EQ(byTitle.size(), 1u);
  EXPECT_FALSE(byTitle[0].visible);
  EXPECT_EQ(byTitle[0].pid, self);
  EXPECT_EQ(byTitle[0].rect.left, 50);
  EXPECT_EQ(byTitle[0].Width(), 300);

  EXPECT_TRUE(FindTopLevel(WindowQuery{L"e2e probe shown", L"", self + 4, false}).empty());
}

TEST(Driver, WaitsSeeLateChangesAndEndAtTheirTimeout) {
  ProbeWindow probe(L"e2e probe late", false);
  PostMessageW(probe.Hwnd(), kShowLater, 300, 0);
  EXPECT_TRUE(WaitForVisible(probe.Hwnd(), true, Ms{5000}));

  const auto start = std::chrono::steady_clock::now();
  EXPECT_FALSE(WaitForWindow(WindowQuery{L"no such window", L"", 0, false}, Ms{400}));
  EXPECT_FALSE(WaitForVisible(probe.Hwnd(), false, Ms{300}));
  const auto took = std::chrono::steady_clock::now() - start;
  EXPECT_GE(took, Ms{700});
  EXPECT_LT(took, Ms{5000});
}

TEST(Driver, ChoosesPopupMenuItemsByArrowsAndMnemonics) {
  ProbeWindow probe(L"e2e probe menu");
  const DWORD self = GetCurrentProcessId();

  // The pointer rests on the first item, where the menu opens: Wine selects what is
  // under it, and the arrows must count from the top all the same. The separator is
  // passed over by the arrows: two downs reach the second item.
  ASSERT_TRUE(SetCursorPos(120, 110));
  PostMessageW(probe.Hwnd(), kShowMenu, 0, 0);
  ASSERT_TRUE(ChooseMenuItemByArrows(self, 2));
  EXPECT_TRUE(WaitUntil([&] { return probe.LastCommand() == 12; }, Ms{5000}));

  PostMessageW(probe.Hwnd(), kShowMenu, 0, 0);
  ASSERT_TRUE(ChooseMenuItemByMnemonic(self, L't'));
  EXPECT_TRUE(WaitUntil([&] { return probe.LastCommand() == 13; }, Ms{5000}));

  PostMessageW(probe.Hwnd(), kShowMenu, 0, 0);
  ASSERT_TRUE(DismissMenu(self));
  std::this_thread::sleep_for(Ms{200});
  EXPECT_EQ(probe.LastCommand(), 13);
}

}  // namespace
}  // namespace e2e
