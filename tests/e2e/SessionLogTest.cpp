// The Session Log on real windows: opened from the tray menu's "View log", paged
// through 120 made-up sessions, a session opened with the shell, a checked session
// deleted from the disk, and the time the screen takes to open on 10,000 sessions
// (printed as a figure). That the engine's own session files are listed is the
// engine callback test's (the file it writes) and the listing's unit tests'.
#include <windows.h>
#include <commctrl.h>

#include <chrono>

#include <cstdio>
#include <filesystem>
#include <fstream>

#include "JobScreens.h"

namespace e2e {
namespace {

// Session n: one a day back from 01-01-2027 (so session 1 is the newest), Backup and
// Restore in turn; beyond 3650 they share days and differ by the minute.
std::wstring SessionName(int n) {
  SYSTEMTIME st{};
  st.wYear = 2027;
  st.wMonth = 1;
  st.wDay = 1;
  st = AddMinutes(st, -(n % 3650 + 1) * 24 * 60);
  wchar_t name[96];
  swprintf(name, 96, L"%ls %02u-%02u-%04u  %02d-%02d-00.txt", n % 2 ? L"Backup" : L"Restore",
           st.wMonth, st.wDay, st.wYear, 10 + n / 3650 / 60, n / 3650 % 60);
  return name;
}

// Beside the folder's simulated engine, which the monitor starts at its load.
class SessionLogTest : public EngineMonitorTest {
 protected:
  std::filesystem::path Sessions() { return Folder().Common() / L"Session"; }
  void MakeSessions(int count) {
    std::filesystem::create_directories(Sessions());
    for (int n = 1; n <= count; ++n) std::ofstream(Sessions() / SessionName(n)) << "session " << n;
  }
  // Chooses "&View log" on the tray menu (starting the monitor first when it is not
  // up yet); the screen's window.
  HWND OpenFromTray() {
    // Each step says when it is the one that failed: a run under load once ended here
    // with no word of which.
    auto failed = [](const char* step) -> HWND {
      ADD_FAILURE() << step;
      return nullptr;
    };
    if (main_ == nullptr && OpenMonitor(L"") == nullptr) return failed("the monitor did not start");
    if (!PostTrayMouse(main_, WM_RBUTTONUP) || !WaitForPopupMenu(pid_))
      return failed("a right click on the tray icon showed no menu");
    chosen_ = std::chrono::steady_clock::now();
    if (!ChooseMenuItemByMnemonic(pid_, L'v')) return failed("the menu did not close on V");
    HWND screen = WaitForDesign(L"frmSessionLog");
    return screen != nullptr ? screen : failed("no Session Log window within the wait");
  }
  bool WaitForRange(HWND screen, const std::wstring& text) {
    return WaitUntil([&] { return Text(screen, L"lblDispItems") == text; });
  }
  HWND List(HWND screen) { return FindByName(screen, L"LstSessionLogView"); }
  // A left click on a row of the list (from 0), `x` pixels from its left.
  void ClickList(HWND screen, int x, int rowIndex0) {
    HWND list = List(screen);
    RECT row{};
    row.left = LVIR_BOUNDS;
    ASSERT_TRUE(SendRemote(list, LVM_GETITEMRECT, static_cast<WPARAM>(rowIndex0), row));
    const LPARAM at = MAKELPARAM(x, (row.top + row.bottom) / 2);
    Post(list, WM_LBUTTONDOWN, MK_LBUTTON, at);
    Post(list, WM_LBUTTONUP, 0, at);
  }
  bool Checked(HWND screen, int rowIndex0) {
    DWORD_PTR state = 0;
    SendMessageTimeoutW(List(screen), LVM_GETITEMSTATE, rowIndex0, LVIS_STATEIMAGEMASK,
                        SMTO_ABORTIFHUNG, 5000, &state);
    return ((state & LVIS_STATEIMAGEMASK) >> 12) == 2;
  }
  std::chrono::steady_clock::time_point chosen_;
};

// The page buttons, View and Delete work on real windows; the pager's and the listing's
// rules are their unit tests'.
TEST_F(SessionLogTest, PagesViewAndDeleteFromTheTrayMenu) {
  MakeSessions(120);
  HWND screen = OpenFromTray();
  ASSERT_NE(screen, nullptr) << "View log opened no Session Log";
  ASSERT_TRUE(WaitForRange(screen, L"1 to 50 of 120")) << Utf8(Text(screen, L"lblDispItems"));
  EXPECT_EQ(RowCount(List(screen)), 50);
  Shot("page-one");
  Press(screen, L"lblNext");
  ASSERT_TRUE(WaitForRange(screen, L"51 to 100 of 120"));
  Press(screen, L"lblBack");
  ASSERT_TRUE(WaitForRange(screen, L"1 to 50 of 120")) << Utf8(Text(screen, L"lblDispItems"));

  // The newest session, selected by a click on its start time, then View Details, which
  // reaches the shell with the file.
  ClickList(screen, 120, 0);
  Press(screen, L"cmdView");
  ASSERT_TRUE(WaitForTraceLine(Folder(), L"Exit Trf_ViewFile"))
      << "View Details did not open the session";
  EXPECT_EQ(CountLine(Trace(Folder()), L"Enter cmdView_Click()of frmSessionLog form"), 1);
  Shot("viewed");

  // Its check mark, then Delete Log: the file goes, the page is loaded again.
  ClickList(screen, 8, 0);
  ASSERT_TRUE(WaitUntil([&] { return Checked(screen, 0); })) << "no check mark";
  Press(screen, L"cmdDelete");
  ASSERT_TRUE(WaitForRange(screen, L"1 to 50 of 119"));
  EXPECT_FALSE(std::filesystem::exists(Sessions() / SessionName(1)));
  EXPECT_TRUE(std::filesystem::exists(Sessions() / SessionName(2)));
  Shot("after-delete");
}

// How long the screen takes to open on 10,000 sessions, from the menu's choice to the
// range text of the first page (polled every 50 ms). A figure for the notes, not a limit.
TEST_F(SessionLogTest, OpensOnTenThousandSessions) {
  std::filesystem::create_directories(Sessions());
  for (int n = 1; n <= 10000; ++n) {
    platform::win32::UniqueHandle f(CreateFileW((Sessions() / SessionName(n)).c_str(),
                                                GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                                FILE_ATTRIBUTE_NORMAL, nullptr));
    ASSERT_TRUE(f) << n;
  }
  HWND screen = OpenFromTray();
  ASSERT_NE(screen, nullptr);
  ASSERT_TRUE(WaitForRange(screen, L"1 to 50 of 10000"));
  const auto ms = std::chrono::duration_cast<std::chrono::milliseconds>(
                      std::chrono::steady_clock::now() - chosen_)
                      .count();
  std::printf("figure: the Session Log showed 1 to 50 of 10000 %lld ms after View log\n",
              static_cast<long long>(ms));
  Shot("ten-thousand");
}

}  // namespace
}  // namespace e2e
