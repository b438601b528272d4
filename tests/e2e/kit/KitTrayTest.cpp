// The notification-area icon of the Windows host with Wine's shell: the shell has it
// after an add, it comes back when the taskbar is created again, and goes with a
// remove. (Its mouse messages and its menu are driven on the real monitor by the tray's
// end-to-end tests.)
#include <gtest/gtest.h>

#include "KitSupport.h"  // <windows.h> first
#include <shellapi.h>
#include "platform/win32/Win32UiHost.h"

namespace kit_e2e {
namespace {

class KitTrayTest : public ::testing::Test {
 protected:
  platform::Win32UiHost host{ImageFolder()};

  // Whether the shell knows the icon: it accepts a change only to an icon it has.
  bool ShellHasIcon(UINT id = 0) {
    NOTIFYICONDATAW data{};
    data.cbSize = sizeof(data);
    data.hWnd = host.HostWindow();
    data.uID = id;
    data.uFlags = NIF_TIP;
    wcscpy(data.szTip, L"Corvane for Windows Monitor");
    return Shell_NotifyIconW(NIM_MODIFY, &data) != FALSE;
  }
};

TEST_F(KitTrayTest, AShellThatStartsAgainGetsTheIconBack) {
  const platform::UiHandle icon = host.AddTrayIcon({0, u"tray_running", u"QVMonitor"}, [](int) {});
  ASSERT_TRUE(PumpUntil(host, [&] { return ShellHasIcon(); }));
  // As if the shell had restarted: it forgets the icon and says the taskbar is new.
  NOTIFYICONDATAW data{};
  data.cbSize = sizeof(data);
  data.hWnd = host.HostWindow();
  data.uID = 0;
  ASSERT_TRUE(Shell_NotifyIconW(NIM_DELETE, &data));
  ASSERT_FALSE(ShellHasIcon());
  PostMessageW(host.HostWindow(), RegisterWindowMessageW(L"TaskbarCreated"), 0, 0);
  EXPECT_TRUE(PumpUntil(host, [&] { return ShellHasIcon(); })) << "the icon did not come back";
  host.RemoveTrayIcon(icon);
  EXPECT_TRUE(PumpUntil(host, [&] { return !ShellHasIcon(); })) << "the icon stayed";
}

}  // namespace
}  // namespace kit_e2e
