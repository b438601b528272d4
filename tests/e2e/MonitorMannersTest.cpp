// The monitor window for a user without a mouse or with a screen reader, seen from
// outside as such a user's tools see it: Tab through the window and a message box with
// the real keyboard, Enter on the button that has the focus, the tray menu from the
// keyboard, what each control is to the platform's accessibility (window text, class,
// style, and the accessible role). High contrast and a larger scale are the kit's
// end-to-end tests' (the host draws every form alike).
#include <gtest/gtest.h>

#include <oleacc.h>
#include <shellapi.h>

#include <string>
#include <vector>

#include "Desktop.h"
#include "MonitorFixture.h"

namespace e2e {
namespace {

constexpr wchar_t kDisableQuestion[] =
    L"If you select this option, all your scheduled jobs will be stopped.\r\nDo you want to "
    L"proceed?";

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
  HWND Box() {
    HWND found = nullptr;
    WaitUntil([&] {
      for (const WindowInfo& w : FindTopLevel({L"", kMonitorClass, pid_, true})) {
        if (DesignName(w.hwnd) == L"MesgBox") found = w.hwnd;
      }
      return found != nullptr;
    });
    return found;
  }
  std::wstring DisableSetting() {
    return ReadIni(Folder().CommonFile(L"qvwin.ini"), L"Corvane", L"DisableAllSchdulers");
  }
};

TEST_F(MonitorMannersTest, TabReachesEveryButtonInOrderAndEnterPressesTheFocusedOne) {
  HWND w = OpenInFront();
  ASSERT_NE(w, nullptr);
  std::vector<std::wstring> order;
  for (int i = 0; i < 10; ++i) order.push_back(FocusedAfter(w, VK_TAB));
  EXPECT_EQ(order,
            (std::vector<std::wstring>{L"pic_Status", L"cmdDetails", L"btnRefresh", L"btnLogFile",
                                       L"btnStopTransfer", L"chkbandwidth", L"PictSliderKnob1",
                                       L"lstLog", L"Picture1", L"btnClose"}));
  Shot("focus-on-close");
  EXPECT_EQ(FocusedAfter(w, VK_TAB, true), L"Picture1") << "Shift+Tab goes back";
  // Enter on the Details tab shows the details pane.
  while (DesignName(FocusOf(w)) != L"cmdDetails" && order.size() < 40) {
    order.push_back(FocusedAfter(w, VK_TAB));
  }
  ASSERT_EQ(DesignName(FocusOf(w)), L"cmdDetails");
  TypeKey(VK_RETURN);
  EXPECT_TRUE(WaitUntil([&] { return IsWindowVisible(FindByName(w, L"FrameDetails")) != FALSE; }))
      << "Enter on the Details tab did not show its pane";
  // Space on the close picture hides the window, as a click does.
  while (DesignName(FocusOf(w)) != L"btnClose" && order.size() < 60)
    order.push_back(FocusedAfter(w, VK_TAB));
  TypeKey(VK_SPACE);
  EXPECT_TRUE(WaitForVisible(w, false)) << "Space on Close did not hide the window";
}

TEST_F(MonitorMannersTest, AMessageBoxIsAnsweredByTabAndEnter) {
  HWND w = OpenInFront();
  ASSERT_NE(w, nullptr);
  TrayItem(6);  // Disable all scheduled jobs
  HWND box = Box();
  ASSERT_NE(box, nullptr) << "the question did not come";
  SetForegroundWindow(box);
  WaitUntil([&] { return GetForegroundWindow() == box; });
  // The focus starts on Yes, what Enter means; Tab goes to No, to the close picture, round.
  EXPECT_EQ(DesignName(FocusOf(box)), L"cmdButton(0)");
  EXPECT_EQ(FocusedAfter(box, VK_TAB), L"cmdButton(1)");
  Shot("box-focus-on-no");
  EXPECT_EQ(FocusedAfter(box, VK_TAB), L"MsgClose");
  EXPECT_EQ(FocusedAfter(box, VK_TAB), L"cmdButton(0)");
  EXPECT_EQ(FocusedAfter(box, VK_TAB), L"cmdButton(1)");
  TypeKey(VK_RETURN);  // No
  ASSERT_TRUE(WaitUntil([&] { return !IsWindow(box) || !IsWindowVisible(box); }));
  EXPECT_NE(DisableSetting(), L"1") << "Enter on No answered Yes";

  TrayItem(6);  // Disable all scheduled jobs
  box = Box();
  ASSERT_NE(box, nullptr);
  SetForegroundWindow(box);
  WaitUntil([&] { return GetForegroundWindow() == box; });
  TypeKey(VK_RETURN);  // the focus is on Yes
  ASSERT_TRUE(WaitUntil([&] { return DisableSetting() == L"1"; }))
      << "Enter on Yes did not answer Yes";
}

TEST_F(MonitorMannersTest, TheTrayMenuOpensFromTheKeyboardOnTheIcon) {
  Process* p = StartAndWait(L"Min");
  ASSERT_NE(p, nullptr);
  auto w = MainWindow(p->Pid());
  ASSERT_TRUE(w);
  // What the shell sends for Enter on the icon (version 4), and for the context-menu key.
  ASSERT_TRUE(PostTrayMouse(w->hwnd, NIN_KEYSELECT));
  ASSERT_TRUE(WaitForPopupMenu(p->Pid())) << "Enter on the icon opened no menu";
  ASSERT_TRUE(DismissMenu(p->Pid()));
  ASSERT_TRUE(WaitForNoPopupMenu(p->Pid()));
  ASSERT_TRUE(PostTrayMouse(w->hwnd, WM_CONTEXTMENU));
  ASSERT_TRUE(WaitForPopupMenu(p->Pid())) << "the context-menu key on the icon opened no menu";
  ASSERT_TRUE(DismissMenu(p->Pid()));
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
  const Control controls[] = {
      {L"btnRefresh", L"Button", BS_OWNERDRAW, L"Refresh", ROLE_SYSTEM_PUSHBUTTON},
      {L"btnLogFile", L"Button", BS_OWNERDRAW, L"View log file", ROLE_SYSTEM_PUSHBUTTON},
      {L"btnStopTransfer", L"Button", BS_OWNERDRAW, L"Stop transfer", ROLE_SYSTEM_PUSHBUTTON},
      {L"btnClose", L"Button", BS_OWNERDRAW, L"Close", ROLE_SYSTEM_PUSHBUTTON},
      {L"Picture1", L"Button", BS_OWNERDRAW, L"Help", ROLE_SYSTEM_PUSHBUTTON},
      {L"pic_Status", L"Button", BS_OWNERDRAW, L"Status", ROLE_SYSTEM_PUSHBUTTON},
      {L"cmdDetails", L"Button", BS_OWNERDRAW, L"Details", ROLE_SYSTEM_PUSHBUTTON},
      {L"chkbandwidth", L"Button", BS_3STATE, L"Auto Pause (Bandwidth used)",
       ROLE_SYSTEM_CHECKBUTTON},
      {L"lblStatus", L"Static", SS_OWNERDRAW, L"Running", ROLE_SYSTEM_STATICTEXT},
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
