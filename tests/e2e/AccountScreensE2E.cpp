// The account and support screens on the real monitor: the feedback report opens from
// the tray menu with the account filled in, Update Password from the tray menu refuses
// a blank name. (About's inventory on real windows is the kit's e2e_about.)
#include <gtest/gtest.h>

#include <string>

#include "MonitorFixture.h"

namespace e2e {
namespace {

class AccountScreensE2E : public MonitorTest {
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
  // The message a message box shows (a short one stands in its small label).
  std::wstring BoxText(HWND box) {
    std::wstring text;
    WaitUntil(
        [&] {
          text = Describe(FindByName(box, L"lblSmallText")).text;
          if (text.empty()) text = Describe(FindByName(box, L"lblText")).text;
          return !text.empty();
        },
        Ms{5000});
    return text;
  }
  std::wstring TextOf(HWND control) {
    wchar_t buffer[4096] = {};
    SendMessageTimeoutW(control, WM_GETTEXT, 4096, reinterpret_cast<LPARAM>(buffer),
                        SMTO_ABORTIFHUNG, 5000, nullptr);
    return buffer;
  }
};

TEST_F(AccountScreensE2E, FeedbackReportOpensFromTheTrayMenuWithTheAccountFilledIn) {
  ASSERT_TRUE(WriteUtf16File(Folder().CommonFile(L"qvwin.ini"),
                             {L"[Corvane]", L"UserName=mary", L"EmailUserName=mary@example.com"}));
  Process* p = StartAndWait(L"");
  ASSERT_NE(p, nullptr);
  auto w = MainWindow(p->Pid());
  ASSERT_TRUE(w);
  // Send Error Report, the ninth item of the tray menu.
  ASSERT_TRUE(PostTrayMouse(w->hwnd, WM_RBUTTONUP));
  ASSERT_TRUE(ChooseMenuItemByArrows(p->Pid(), 9));
  HWND report = Screen(p->Pid(), L"frmErrorReport");
  ASSERT_NE(report, nullptr) << "the feedback report did not open";
  EXPECT_EQ(TextOf(FindByName(report, L"txtFromName")), L"mary");
  EXPECT_EQ(TextOf(FindByName(report, L"txtFrom")), L"mary@example.com");
  EXPECT_EQ(TextOf(FindByName(report, L"txtSubject")), L"Corvane for Windows user feedback");
  Shot("feedback-report");
  ASSERT_TRUE(ClickControl(FindByName(report, L"cmdExit")));
  EXPECT_TRUE(WaitUntil([&] { return !IsWindow(report) || !IsWindowVisible(report); }));
}

TEST_F(AccountScreensE2E, UpdatePasswordFromTheTrayRefusesABlankName) {
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
  EXPECT_EQ(BoxText(box), L"Enter your Corvane username.");
  Shot("refusal");
}

}  // namespace
}  // namespace e2e
