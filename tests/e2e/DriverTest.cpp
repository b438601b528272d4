// The driver against windows of its own, on a second thread with its own message loop
// (as another program's windows would be): its filters and waits, whose faults would let
// a test of the monitor pass wrongly. (What it reads of a window and a menu item chosen
// wrongly fail the tests that read or chose them.)
#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <thread>

#include "Driver.h"

namespace e2e {
namespace {

constexpr wchar_t kClass[] = L"QvE2eDriverProbe";
constexpr UINT kShowLater = WM_APP + 1;

// A top-level window, run on its own thread.
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

 private:
  static LRESULT CALLBACK Proc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) {
    switch (msg) {
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
};

TEST(Driver, FindsAndFiltersHiddenWindowsAndItsWaitsSeeLateChangesAndEndAtTheirTimeout) {
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
  EXPECT_EQ(byTitle[0].hwnd, hidden.Hwnd());
  EXPECT_TRUE(FindTopLevel(WindowQuery{L"e2e probe shown", L"", self + 4, false}).empty());

  PostMessageW(hidden.Hwnd(), kShowLater, 300, 0);
  EXPECT_TRUE(WaitForVisible(hidden.Hwnd(), true, Ms{5000}));
  const auto start = std::chrono::steady_clock::now();
  EXPECT_FALSE(WaitForWindow(WindowQuery{L"no such window", L"", 0, false}, Ms{400}));
  EXPECT_FALSE(WaitForVisible(hidden.Hwnd(), false, Ms{300}));
  const auto took = std::chrono::steady_clock::now() - start;
  EXPECT_GE(took, Ms{700});
  EXPECT_LT(took, Ms{5000});
}

}  // namespace
}  // namespace e2e
