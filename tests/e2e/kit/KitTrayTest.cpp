// The notification-area icon and popup menus of the Windows host with Wine's shell:
// the icon is there after an add (the shell takes a change to it), its mouse messages
// reach the program, it comes back when the taskbar is created again, and a popup
// menu opened from it returns the item chosen with the keyboard.
#include <gtest/gtest.h>

#include <atomic>
#include <thread>

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

TEST_F(KitTrayTest, TheIconIsAddedTellsItsMouseMessagesAndGoes) {
  std::vector<int> events;
  const platform::UiHandle icon = host.AddTrayIcon(
      {0, u"tray_running", u"Corvane for Windows Monitor"}, [&](int e) { events.push_back(e); });
  ASSERT_NE(icon, 0u);
  EXPECT_TRUE(PumpUntil(host, [&] { return ShellHasIcon(); })) << "the shell has no icon";

  // The design's numbers, as the shell (or a test) posts them.
  PostMessageW(host.HostWindow(), platform::kTrayCallbackMessage, 0, platform::kTrayRightButtonUp);
  PostMessageW(host.HostWindow(), platform::kTrayCallbackMessage, 0,
               MAKELPARAM(platform::kTrayLeftDoubleClick, 0));
  EXPECT_TRUE(PumpUntil(host, [&] { return events.size() >= 2; }));
  EXPECT_EQ(events,
            (std::vector<int>{platform::kTrayRightButtonUp, platform::kTrayLeftDoubleClick}));

  host.ModifyTrayIcon(icon, {0, u"tray_stopped", u"QVMonitor"});
  EXPECT_TRUE(ShellHasIcon());
  host.RemoveTrayIcon(icon);
  EXPECT_TRUE(PumpUntil(host, [&] { return !ShellHasIcon(); })) << "the icon stayed";
}

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
}

TEST_F(KitTrayTest, APopupMenuReturnsTheItemChosenWithTheKeyboard) {
  const std::vector<platform::UiMenuItem> items = {
      {101, u"&Open Status Indicator", true, false, true, {}},
      {102, u"Disabled item", false, false, true, {}},
      {0, u"-", true, false, true, {}},
      {103, u"&Shutdown Indicator", true, false, true, {}},
  };
  // The menu holds this thread in its own loop; the keys come from another.
  std::atomic<bool> stop{false};
  std::thread keys([&] {
    HWND menu = nullptr;
    for (int i = 0; i < 200 && !stop && menu == nullptr; ++i) {
      std::this_thread::sleep_for(Ms{25});
      menu = FindWindowW(L"#32768", nullptr);
      if (menu != nullptr && !IsWindowVisible(menu)) menu = nullptr;
    }
    if (menu == nullptr) return;
    PostMessageW(menu, WM_CHAR, L's', 0);  // the item of that underlined letter
  });
  std::uintptr_t rescue = host.StartTimer(10000, [] {
    if (HWND menu = FindWindowW(L"#32768", nullptr)) PostMessageW(menu, WM_KEYDOWN, VK_ESCAPE, 0);
  });
  const std::uint32_t chosen = host.PopupMenu(0, items);
  stop = true;
  keys.join();
  host.StopTimer(rescue);
  EXPECT_EQ(chosen, 103u);
}

}  // namespace
}  // namespace kit_e2e
