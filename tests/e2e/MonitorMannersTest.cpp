// The monitor window for a user without a mouse or with a screen reader, seen from
// outside as such a user's tools see it: the real keyboard in the window and a message
// box, what each kind of control is to the platform's accessibility across processes
// (window text, class, style, and the accessible role). The tray menu from the keyboard
// is the tray test's; high contrast and a larger scale are the kit's end-to-end tests'
// (the host draws every form alike).
#include <gtest/gtest.h>

#include <oleacc.h>

#include <string>
#include <vector>

#include "Desktop.h"
#include "MonitorFixture.h"

namespace e2e {
namespace {

class MonitorMannersTest : public MonitorTest {
 protected:
  void SetUp() override {
    MonitorTest::SetUp();
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  }
  void TearDown() override {
    CoUninitialize();
    MonitorTest::TearDown();
  }

  // The monitor up, in front and with the keyboard.
  HWND OpenInFront() {
    HWND w = OpenMonitor(L"");
    if (w == nullptr) return nullptr;
    SetForegroundWindow(w);
    WaitUntil([&] { return GetForegroundWindow() == w; });
    return w;
  }
  // The design name of what has the keyboard's focus, after a key went by.
  std::wstring FocusedAfter(HWND top, WORD key, bool shift = false) {
    const HWND before = FocusOf(top);
    TypeKey(key, shift);
    WaitUntil([&] { return FocusOf(top) != before; }, Ms{3000});
    return DesignName(FocusOf(top));
  }
};

// The real keyboard reaches the window of another process and its message box; the
// order Tab takes and what Enter and Space mean are the monitor's and the box's unit tests'.
TEST_F(MonitorMannersTest, TheRealKeyboardMovesTheFocusAndPressesInTheWindowAndItsBox) {
  HWND w = OpenInFront();
  ASSERT_NE(w, nullptr);
  EXPECT_EQ(FocusedAfter(w, VK_TAB), L"pic_Status");
  EXPECT_EQ(FocusedAfter(w, VK_TAB), L"cmdDetails");
  EXPECT_EQ(FocusedAfter(w, VK_TAB), L"btnRefresh");
  EXPECT_EQ(FocusedAfter(w, VK_TAB, true), L"cmdDetails") << "Shift+Tab goes back";
  TypeKey(VK_RETURN);
  EXPECT_TRUE(WaitUntil([&] { return IsWindowVisible(FindByName(w, L"FrameDetails")) != FALSE; }))
      << "Enter on the Details tab did not show its pane";
  Shot("details-by-keyboard");

  TrayItem(6);  // Disable all scheduled jobs
  HWND box = WaitForDesign(L"MesgBox");
  ASSERT_NE(box, nullptr) << "the question did not come";
  SetForegroundWindow(box);
  WaitUntil([&] { return GetForegroundWindow() == box; });
  EXPECT_EQ(FocusedAfter(box, VK_TAB), L"cmdButton(1)");
  Shot("box-focus-on-no");
  TypeKey(VK_RETURN);
  ASSERT_TRUE(WaitUntil([&] { return !IsWindow(box) || !IsWindowVisible(box); }));
  EXPECT_NE(ReadIni(Folder().CommonFile(L"qvwin.ini"), L"Corvane", L"DisableAllSchdulers"), L"1")
      << "Enter on No answered Yes";
}

struct Control {
  const wchar_t* name;
  const wchar_t* className;
  DWORD styleType;  // the button or static type bits; ~0 where there are none
  const wchar_t* text;
  long role;
};

TEST_F(MonitorMannersTest, EachControlTellsAScreenReaderItsNameAndRole) {
  HWND w = OpenInFront();
  ASSERT_NE(w, nullptr);
  // One of each kind; the indicator's name is built from the state.
  const Control controls[] = {
      {L"btnRefresh", L"Button", BS_OWNERDRAW, L"Refresh", ROLE_SYSTEM_PUSHBUTTON},
      {L"chkbandwidth", L"Button", BS_3STATE, L"Auto Pause (Bandwidth used)",
       ROLE_SYSTEM_CHECKBUTTON},
      {L"TrafficLights1", L"Static", SS_OWNERDRAW, L"Service status: Running",
       ROLE_SYSTEM_INDICATOR},
      {L"lstLog", L"SysListView32", ~0u, L"", ROLE_SYSTEM_LIST},
      {L"PrgbarRsyncTotal", L"msctls_progress32", ~0u, L"", ROLE_SYSTEM_PROGRESSBAR},
  };
  // The status is read on the first tick: wait until it says so.
  ASSERT_TRUE(WaitUntil([&] { return Describe(FindByName(w, L"lblStatus")).text == L"Running"; }));
  for (const Control& c : controls) {
    SCOPED_TRACE(std::string(c.name, c.name + wcslen(c.name)));
    HWND h = FindByName(w, c.name);
    ASSERT_NE(h, nullptr);
    // What the platform's own proxies build from: class, style and window text.
    const WindowInfo info = Describe(h);
    EXPECT_EQ(info.className, c.className);
    if (c.styleType != ~0u) {
      const DWORD mask = info.className == L"Button" ? BS_TYPEMASK : SS_TYPEMASK;
      EXPECT_EQ(static_cast<DWORD>(GetWindowLongW(h, GWL_STYLE)) & mask, c.styleType);
    }
    if (*c.text != 0) {
      EXPECT_EQ(info.text, c.text);
    }
    // And the kit's own answer to a screen reader, which crosses processes too.
    platform::win32::ComPtr<IAccessible> acc;
    ASSERT_EQ(AccessibleObjectFromWindow(h, OBJID_CLIENT, __uuidof(IAccessible), acc.OutVoid()),
              S_OK);
    VARIANT self;
    self.vt = VT_I4;
    self.lVal = CHILDID_SELF;
    VARIANT role;
    VariantInit(&role);
    EXPECT_EQ(acc->get_accRole(self, &role), S_OK);
    EXPECT_EQ(role.lVal, c.role);
  }
}

}  // namespace
}  // namespace e2e
