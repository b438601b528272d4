// The monitor as the user meets it after start-up: closing the window hides it, the
// notification-area icon brings it back (restored: the host sees the window minimised),
// its menu opens from the mouse and the keyboard, and only the tray menu's Shutdown ends it,
// storing the place of a visible window (which place is stored when is the tray menu's unit
// tests').
#include <gtest/gtest.h>

#include <string>

#include "MonitorFixture.h"  // <windows.h> before <shellapi.h>

#include <shellapi.h>

namespace e2e {
namespace {

// Geometry is stored in twips; the test prefix runs at 96 dpi, 15 twips a pixel.
constexpr long kTwips = 15;

class TrayTest : public MonitorTest {
 protected:
  std::wstring Stored(const wchar_t* key) {
    return ReadIni(Folder().CommonFile(L"qvwin.ini"), L"LDPI", key);
  }
  static std::wstring Twips(long pixels) { return std::to_wstring(pixels * kTwips); }

  // Shutdown Indicator from the tray menu; the monitor ends with code 0.
  void ShutdownFromTray(Process* p, HWND w) {
    ASSERT_TRUE(PostTrayMouse(w, WM_RBUTTONUP));
    ASSERT_TRUE(ChooseMenuItemByMnemonic(p->Pid(), L's'));
    auto code = p->WaitExit();
    ASSERT_TRUE(code) << "Shutdown Indicator did not end the monitor";
    EXPECT_EQ(*code, 0u);
  }
};

// What the user sees after a double click on the icon: the window itself, not
// minimised, and the one in front with the keyboard.
bool RestoredInFront(HWND w) {
  return IsWindowVisible(w) && !IsIconic(w) && GetForegroundWindow() == w;
}

TEST_F(TrayTest, TheIconBringsTheWindowBackRestoredAndInFrontOfAnotherProgramsWindow) {
  Process* p = StartAndWait(L"");
  ASSERT_NE(p, nullptr);
  auto w = MainWindow(p->Pid());
  ASSERT_TRUE(w && w->visible);
  ShowWindowAsync(w->hwnd, SW_MINIMIZE);
  ASSERT_TRUE(WaitUntil([&] { return IsIconic(w->hwnd) != FALSE; }));
  Shot("minimised");

  ASSERT_TRUE(PostTrayMouse(w->hwnd, WM_LBUTTONDBLCLK));
  EXPECT_TRUE(WaitUntil([&] { return RestoredInFront(w->hwnd); }))
      << "iconic " << IsIconic(w->hwnd) << ", in front " << (GetForegroundWindow() == w->hwnd);
  Shot("restored");

  // Minimised, then closed (hidden while minimised): it still comes back restored.
  ShowWindowAsync(w->hwnd, SW_MINIMIZE);
  ASSERT_TRUE(WaitUntil([&] { return IsIconic(w->hwnd) != FALSE; }));
  ASSERT_TRUE(Post(w->hwnd, WM_CLOSE));
  ASSERT_TRUE(WaitForVisible(w->hwnd, false));
  ASSERT_TRUE(PostTrayMouse(w->hwnd, WM_LBUTTONDBLCLK));
  EXPECT_TRUE(WaitUntil([&] { return RestoredInFront(w->hwnd); }))
      << "iconic " << IsIconic(w->hwnd) << ", in front " << (GetForegroundWindow() == w->hwnd);

  // Another program's window over the monitor's, with the keyboard.
  wchar_t system[MAX_PATH] = {};
  ASSERT_GT(GetSystemDirectoryW(system, MAX_PATH), 0u);
  auto other = Process::Start(std::filesystem::path(system) / L"notepad.exe", L"",
                              std::filesystem::path(system));
  ASSERT_TRUE(other) << "notepad did not start";
  auto pad = WaitForWindow({L"", L"Notepad", other->Pid(), true});
  ASSERT_TRUE(pad) << "no notepad window";
  const WindowInfo restored = Describe(w->hwnd);
  const RECT& r = restored.rect;
  SetWindowPos(pad->hwnd, HWND_TOP, r.left - 20, r.top - 20, restored.Width() + 40,
               restored.Height() + 40, SWP_SHOWWINDOW);
  SetForegroundWindow(pad->hwnd);
  ASSERT_TRUE(WaitUntil([&] { return GetForegroundWindow() == pad->hwnd; }));
  const POINT middle{(r.left + r.right) / 2, (r.top + r.bottom) / 2};
  ASSERT_EQ(GetAncestor(WindowFromPoint(middle), GA_ROOT), pad->hwnd);
  Shot("covered");

  ASSERT_TRUE(PostTrayMouse(w->hwnd, WM_LBUTTONDBLCLK));
  EXPECT_TRUE(WaitUntil([&] { return RestoredInFront(w->hwnd); }))
      << "the foreground window is still "
      << (GetForegroundWindow() == pad->hwnd ? "notepad's" : "another");
  EXPECT_TRUE(WaitUntil([&] { return GetAncestor(WindowFromPoint(middle), GA_ROOT) == w->hwnd; }))
      << "the monitor's window is not on top at its middle";
  Shot("in-front");
  other->Terminate();
  EXPECT_TRUE(p->Running());
}

TEST_F(TrayTest, TrayMenuFromTheMouseOrKeyboardOpensTheHiddenWindowAndEscapeChoosesNothing) {
  Process* p = StartAndWait(L"Min");
  ASSERT_NE(p, nullptr);
  auto w = MainWindow(p->Pid());
  ASSERT_TRUE(w);
  ASSERT_FALSE(w->visible);

  // What the shell sends for Enter on the icon (version 4) and for the context-menu key,
  // then a right click. The keyboard's come first: within a double-click time after a
  // mouse-up, WM_CONTEXTMENU is the shell's echo of that click and opens nothing.
  for (const UINT event : {UINT{NIN_KEYSELECT}, UINT{WM_CONTEXTMENU}, UINT{WM_RBUTTONUP}}) {
    ASSERT_TRUE(PostTrayMouse(w->hwnd, event));
    ASSERT_TRUE(WaitForPopupMenu(p->Pid())) << "tray event " << event << " opened no menu";
    if (event == WM_RBUTTONUP) Shot("menu");
    ASSERT_TRUE(DismissMenu(p->Pid()));
  }
  EXPECT_FALSE(p->WaitExit(Ms{500}).has_value());
  EXPECT_FALSE(IsWindowVisible(w->hwnd));

  // "&Open Status Indicator" is the first item, enabled while the window is hidden.
  ASSERT_TRUE(PostTrayMouse(w->hwnd, WM_RBUTTONUP));
  ASSERT_TRUE(ChooseMenuItemByArrows(p->Pid(), 1));
  EXPECT_TRUE(WaitForVisible(w->hwnd, true)) << "Open Status Indicator did not show the window";
  EXPECT_TRUE(p->Running());
}

TEST_F(TrayTest, ShutdownFromTheTrayMenuEndsTheProgramAndStoresTheVisiblePlace) {
  Process* p = StartAndWait(L"");
  ASSERT_NE(p, nullptr);
  auto w = MainWindow(p->Pid());
  ASSERT_TRUE(w && w->visible);
  ASSERT_TRUE(
      SetWindowPos(w->hwnd, nullptr, 240, 120, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE));
  ASSERT_TRUE(WaitUntil([&] { return Describe(w->hwnd).rect.left == 240; }));
  const WindowInfo moved = Describe(w->hwnd);

  ShutdownFromTray(p, w->hwnd);
  EXPECT_EQ(Stored(L"MonLeft"), L"3600");
  EXPECT_EQ(Stored(L"MonTop"), L"1800");
  EXPECT_EQ(Stored(L"MonWidth"), Twips(moved.Width()));
  EXPECT_EQ(Stored(L"MonHeight"), Twips(moved.Height()));

  // The next start takes the stored place.
  std::filesystem::remove(Folder().Trace());
  Process* again = StartAndWait(L"");
  ASSERT_NE(again, nullptr);
  auto w2 = MainWindow(again->Pid());
  ASSERT_TRUE(w2);
  EXPECT_TRUE(EqualRect(&w2->rect, &moved.rect));
}

}  // namespace
}  // namespace e2e
