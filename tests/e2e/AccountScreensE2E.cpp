// The account and support screens on the real monitor: the feedback report opens from
// the tray menu with the account filled in, Update Password from the tray menu refuses
// a blank name. (About's inventory on real windows is the kit's e2e_about; what the
// screens check and write is their unit tests'.)
#include <gtest/gtest.h>

#include <string>

#include "MonitorFixture.h"

namespace e2e {
namespace {

using AccountScreensE2E = MonitorTest;

TEST_F(AccountScreensE2E, FeedbackReportAndUpdatePasswordOpenFromTheTrayMenuAndAnswer) {
  ASSERT_TRUE(WriteUtf16File(Folder().CommonFile(L"qvwin.ini"), {L"[Corvane]", L"UserName=mary"}));
  ASSERT_NE(OpenMonitor(L""), nullptr);
  TrayItem(9);  // Send Error Report
  HWND report = WaitForDesign(L"frmErrorReport");
  ASSERT_NE(report, nullptr) << "the feedback report did not open";
  EXPECT_EQ(Text(report, L"txtFromName"), L"mary");
  Shot("feedback-report");
  Press(report, L"cmdExit");
  EXPECT_TRUE(WaitUntil([&] { return !IsWindow(report) || !IsWindowVisible(report); }));

  TrayItem(4);  // Update Password
  HWND form = WaitForDesign(L"frmUpdatePassword");
  ASSERT_NE(form, nullptr) << "Update Password did not open";
  Shot("update-password");
  Press(form, L"cmdUpdate");  // with a blank name
  EXPECT_NE(WaitForBox(L"Enter your Corvane username."), nullptr)
      << "Apply with a blank name asked nothing";
  Shot("refusal");
}

}  // namespace
}  // namespace e2e
