// The account and support screens on the real monitor: About from the Help menu lists
// the staged files with the versions the build gave them, the feedback report opens
// from the Help menu, and Update Password from the tray menu refuses a blank name.
#include <gtest/gtest.h>

#include <string>

#include "MonitorFixture.h"

namespace e2e {
namespace {

class SupportScreensE2E : public MonitorTest {
 protected:
  // A top-level window of the monitor by its design name.
  HWND Screen(DWORD pid, const std::wstring& name) {
    HWND found = nullptr;
    WaitUntil([&] {
      for (const WindowInfo& w : FindTopLevel({L"", kMonitorClass, pid, true}))
        if (DesignName(w.hwnd) == name) found = w.hwnd;
      return found != nullptr;
    });
    return found;
  }
  // An item of the window's menu bar: the menu's place and the item's place in it.
  bool ChooseFromMenuBar(HWND window, int menu, int item) {
    HMENU bar = GetMenu(window);
    HMENU sub = bar ? GetSubMenu(bar, menu) : nullptr;
    const UINT id = sub ? GetMenuItemID(sub, item) : static_cast<UINT>(-1);
    return id != static_cast<UINT>(-1) && PostCommand(window, static_cast<WORD>(id));
  }
  std::wstring TextOf(HWND control) {
    wchar_t buffer[4096] = {};
    SendMessageTimeoutW(control, WM_GETTEXT, 4096, reinterpret_cast<LPARAM>(buffer),
                        SMTO_ABORTIFHUNG, 5000, nullptr);
    return buffer;
  }
};

TEST_F(SupportScreensE2E, AboutListsTheStagedProgramsWithTheirVersions) {
  Process* p = StartAndWait(L"");
  ASSERT_NE(p, nullptr);
  auto w = MainWindow(p->Pid());
  ASSERT_TRUE(w);
  ASSERT_TRUE(ChooseFromMenuBar(w->hwnd, 2, 3)) << "Help > About not found";
  HWND about = Screen(p->Pid(), L"AboutQVWIN");
  ASSERT_NE(about, nullptr) << "About did not open";
  const std::wstring list = TextOf(FindByName(about, L"txtVersionList"));
  EXPECT_NE(list.find(L"Release Date                                  02/08/2013"), std::wstring::npos);
  EXPECT_NE(list.find(L"QVMonitor.exe" + std::wstring(25, L' ') + L"9.5.0.5"), std::wstring::npos)
      << std::string(list.begin(), list.end());
  EXPECT_NE(list.find(L"QVBackground_955.exe" + std::wstring(11, L' ') + L"9.5.0.5"),
            std::wstring::npos);
  // Not staged, so not listed.
  EXPECT_EQ(list.find(L"QVWinSrv.dll"), std::wstring::npos);
  EXPECT_EQ(TextOf(FindByName(about, L"Label1")), L"Corvane for Windows - Version 9.5.5");
  Shot("about");
  ASSERT_TRUE(ClickControl(FindByName(about, L"lblcopy")));
  EXPECT_TRUE(WaitUntil([&] { return !IsWindow(about) || !IsWindowVisible(about); }));
}

TEST_F(SupportScreensE2E, FeedbackReportOpensFromTheHelpMenuWithTheAccountFilledIn) {
  ASSERT_TRUE(WriteUtf16File(Folder().CommonFile(L"qvwin.ini"),
                             {L"[Corvane]", L"UserName=mary", L"EmailUserName=mary@example.com"}));
  Process* p = StartAndWait(L"");
  ASSERT_NE(p, nullptr);
  auto w = MainWindow(p->Pid());
  ASSERT_TRUE(w);
  ASSERT_TRUE(ChooseFromMenuBar(w->hwnd, 2, 1)) << "Help > Send Error Report not found";
  HWND report = Screen(p->Pid(), L"frmErrorReport");
  ASSERT_NE(report, nullptr) << "the feedback report did not open";
  EXPECT_EQ(TextOf(FindByName(report, L"txtFromName")), L"mary");
  EXPECT_EQ(TextOf(FindByName(report, L"txtFrom")), L"mary@example.com");
  EXPECT_EQ(TextOf(FindByName(report, L"txtSubject")), L"Corvane for Windows user feedback");
  Shot("feedback-report");
  ASSERT_TRUE(ClickControl(FindByName(report, L"cmdExit")));
  EXPECT_TRUE(WaitUntil([&] { return !IsWindow(report) || !IsWindowVisible(report); }));
}

TEST_F(SupportScreensE2E, UpdatePasswordFromTheTrayRefusesABlankName) {
  ASSERT_TRUE(WriteUtf16File(Folder().CommonFile(L"qvwin.ini"), {L"[Corvane]", L"UserName=mary"}));
  Process* p = StartAndWait(L"Min");
  ASSERT_NE(p, nullptr);
  auto w = MainWindow(p->Pid());
  ASSERT_TRUE(w);
  ASSERT_TRUE(PostTrayMouse(w->hwnd, WM_RBUTTONUP));
  ASSERT_TRUE(ChooseMenuItemByArrows(p->Pid(), 4));
  HWND form = Screen(p->Pid(), L"frmUpdatePassword");
  ASSERT_NE(form, nullptr) << "Update Password did not open";
  Shot("update-password");
  ASSERT_TRUE(ClickControl(FindByName(form, L"cmdUpdate")));
  HWND box = Screen(p->Pid(), L"MesgBox");
  ASSERT_NE(box, nullptr) << "Apply with a blank name asked nothing";
  EXPECT_EQ(TextOf(FindByName(box, L"lblText")), L"Enter your Corvane username.");
  Shot("refusal");
}

}  // namespace
}  // namespace e2e
