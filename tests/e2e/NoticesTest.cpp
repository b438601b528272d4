// The notices the tick brings up by itself, on the real program beside the simulated
// engine: the job-end notification from the file the engine leaves, the missed-backup
// notice from a user's keys, and the dial-up window with Wine's remote-access calls.
// Each comes up, answers and does one thing; their texts and rules are the unit tests'.
#include <windows.h>

#include <algorithm>
#include <ctime>

#include "Desktop.h"
#include "EngineSupport.h"

namespace e2e {
namespace {

constexpr wchar_t kErrNoticeTitle[] = L"Scheduled job status";
constexpr wchar_t kDialupTitle[] = L"Corvane Monitor- Dialup disconnection.";
constexpr wchar_t kLongSet[] = L"Photos & Music of the family, summer holidays 2026";

// The local date `days` from now (back when negative).
std::tm InDays(int days) {
  const std::time_t t = std::time(nullptr) + static_cast<std::time_t>(days) * 86400;
  std::tm tm{};
  localtime_s(&tm, &t);
  tm.tm_mon += 1;
  tm.tm_year += 1900;
  return tm;
}

// The day `days` ago as the user's keys hold it.
std::wstring DateFailed(int days) {
  const std::tm d = InDays(-days);
  wchar_t text[16];
  swprintf(text, 16, L"%04d%02d%02d", d.tm_year, d.tm_mon, d.tm_mday);
  return text;
}

// A daily job two days ahead, the one the notification names as the next.
std::wstring NextJob() {
  const std::tm d = InDays(2);
  wchar_t next[32], key[16];
  swprintf(next, 32, L"%02d-%02d-%04d 6:30:00", d.tm_mon, d.tm_mday, d.tm_year);
  swprintf(key, 16, L"%04d%02d%02d0630", d.tm_year, d.tm_mon, d.tm_mday);
  return Job(L"9", L"Music", next, L"3", key, L"1234567");
}

// The user's regional formats of the prefix set to Germany's for the life of the
// object, as the Control Panel writes them (HKCU\Control Panel\International), and put
// back after. Wine takes the locale itself from the host's, which has no de_DE here,
// but honours these values of the user as Windows does.
struct GermanFormats {
  static constexpr wchar_t kKey[] = L"Control Panel\\International";
  UserSetting shortDate{kKey, L"sShortDate", std::wstring(L"dd.MM.yyyy")};
  UserSetting date{kKey, L"sDate", std::wstring(L".")};
  UserSetting timeFormat{kKey, L"sTimeFormat", std::wstring(L"HH:mm:ss")};
  UserSetting time{kKey, L"sTime", std::wstring(L":")};
  UserSetting am{kKey, L"s1159", std::wstring()};
  UserSetting pm{kKey, L"s2359", std::wstring()};
};

class NoticesTest : public EngineMonitorTest {
 protected:
  void Settings(const Lines& extra) {
    std::error_code ec;
    std::filesystem::create_directories(Folder().Common() / L"jsmith", ec);
    Lines ini{L"[Corvane]", L"UserName=jsmith"};
    ini.insert(ini.end(), extra.begin(), extra.end());
    ASSERT_TRUE(WriteUtf16File(Folder().CommonFile(L"qvwin.ini"), ini));
  }
  // A top-level window of the monitor with this title, once it is shown.
  std::optional<WindowInfo> WaitForNotice(const wchar_t* title, Ms timeout = Ms{30000}) {
    return WaitForWindow(WindowQuery{title, kMonitorClass, pid_, true}, timeout);
  }
  // The notice sits in the bottom right corner of the work area.
  void ExpectInTheCorner(const WindowInfo& w) {
    RECT area{};
    ASSERT_TRUE(SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0));
    EXPECT_NEAR(w.rect.right, area.right, 2);
    EXPECT_NEAR(w.rect.bottom, area.bottom, 2);
  }
  // The lines of the activity log with the message `text` (after their kind and stamp).
  int Logged(const std::wstring& text) {
    const Lines log = ReadTextFile(Folder().CommonFile(L"QVWServiceLog.txt")).value_or(Lines{});
    return std::count_if(log.begin(), log.end(),
                         [&](auto& l) { return l.ends_with(L" : " + text); });
  }
};

TEST_F(NoticesTest, AJobThatEndsBringsUpTheNotificationAtTheNextTick) {
  Settings({L"TotalSpace=2048M", L"UsedSpace=512M"});
  ASSERT_TRUE(WriteUtf16File(Folder().Common() / L"jsmith" / L"qvwinserver.ini",
                             {L"[Corvane]", L"ACCTYPE=QVSYNC"}));
  Schedule(L"0", {ImmediateJob(kLongSet), NextJob()});
  Scenario({L"files = 2", L"steps = 2", L"step_ms = 100"});
  ASSERT_NE(OpenMonitor(L""), nullptr);

  ASSERT_TRUE(WaitForSimLine(L"job 5 ended files=2 result=GREEN"));
  auto notice = WaitForNotice(kJobNoticeTitle, Ms{25000});
  ASSERT_TRUE(notice) << "no notification within a tick";
  HWND n = notice->hwnd;
  EXPECT_FALSE(std::filesystem::exists(Folder().CommonFile(L"qvwincurjobname.txt")));
  EXPECT_NE(GetForegroundWindow(), n) << "the notice took the keyboard";
  // The wrap is measured with the real font; the texts themselves are the unit tests'.
  const std::wstring set = Text(n, L"bkupjobname");
  EXPECT_NE(set.find(L"\r\n"), std::wstring::npos) << "not wrapped: " << Utf8(set);
  EXPECT_EQ(ProgressPosition(FindByName(n, L"QVDiskPBar")), 25);  // the quota, on the form
  Shot("green");

  Press(n, L"lbl_cancel");
  EXPECT_TRUE(WaitUntil([&] { return !IsWindow(n) || !IsWindowVisible(n); }));
}

// "Next Transfer Time" takes the user's own time format: on a 24-hour clock without
// AM/PM markers, 6:30 in the morning reads "06:30:00", not "6:30:00".
TEST_F(NoticesTest, TheNextTransferTimeFollowsTheUsersTimeFormat) {
  GermanFormats german;  // without it, the time would read "6:30:00 AM"
  Settings({L"DESKNOTIFYICON=Green"});
  Schedule(L"0", {NextJob()});
  ASSERT_NE(OpenMonitor(L""), nullptr);
  ASSERT_TRUE(
      WriteUtf16File(Folder().CommonFile(L"qvwincurjobname.txt"), {L"Documents", L"3", L"jsmith"}));
  auto notice = WaitForNotice(kJobNoticeTitle, Ms{25000});
  ASSERT_TRUE(notice);
  const std::tm d = InDays(2);
  wchar_t expected[64];
  swprintf(expected, 64, L"Next Transfer Time: %02d.%02d.%04d 06:30:00", d.tm_mday, d.tm_mon,
           d.tm_year);
  EXPECT_EQ(Text(notice->hwnd, L"lblnxtbkupTime"), expected);
  Shot("german-time");
}

TEST_F(NoticesTest, ViewLogOnARedResultOpensTheSessionLogAboveTheNotice) {
  Settings({L"DESKNOTIFYICON=Red"});
  Schedule(L"0", {NextJob()});
  ASSERT_NE(OpenMonitor(L""), nullptr);
  ASSERT_TRUE(WriteUtf16File(Folder().CommonFile(L"qvwincurjobname.txt"),
                             {L"Documents & Mail", L"3", L"jsmith"}));
  auto notice = WaitForNotice(kJobNoticeTitle, Ms{25000});
  ASSERT_TRUE(notice);
  HWND n = notice->hwnd;
  Shot("red");
  // View Log opens the Session Log in front of the notice, which stays behind it.
  Press(n, L"lbl_viewbkuplog");
  auto log = WaitForNotice(L"Session Log", Ms{15000});
  ASSERT_TRUE(log) << "View Log opened no Session Log";
  EXPECT_TRUE(IsWindowVisible(n));
  // The notice follows the log in the order of the top-level windows.
  EXPECT_TRUE(WaitUntil([&] {
    HWND w = log->hwnd;
    while (w != nullptr && w != n) w = GetWindow(w, GW_HWNDNEXT);
    return w == n;
  })) << "the notice covers the log";
  Shot("view-log");
}

TEST_F(NoticesTest, TheMissedBackupNoticeComesUpAndClearsTheUsersKeys) {
  Schedule(L"0", {NextJob()});
  Settings({L"NotifyUsers=<<jsmith"});
  ASSERT_TRUE(WriteUtf16File(Folder().Common() / L"jsmith" / L"qvwinserver.ini",
                             {L"[Corvane]", L"NoofDays=7", L"Notify_Err=1",
                              L"DateFailed=" + DateFailed(12), L"Notifymsg=MISSEDBACKUP"}));
  ASSERT_NE(OpenMonitor(L""), nullptr);
  auto notice = WaitForNotice(kErrNoticeTitle, Ms{25000});
  ASSERT_TRUE(notice);
  ExpectInTheCorner(*notice);
  EXPECT_EQ(ReadIni(Folder().CommonFile(L"qvwin.ini"), L"Corvane", L"NotifyUsers"), L"");
  EXPECT_EQ(ReadIni(Folder().Common() / L"jsmith" / L"qvwinserver.ini", L"Corvane", L"Notify_Err"),
            L"0");
  Shot("missed-backup");
}

// The countdown runs on the real timer; its end does what Disconnect does at once
// (the unit tests count the thirty firings to it), so the test presses Disconnect
// once the caption has counted instead of waiting half a minute.
TEST_F(NoticesTest, TheDialupWindowFindsNoConnectionCountsDownAndLogsOut) {
  Schedule(L"0", {NextJob()});
  ASSERT_NE(OpenMonitor(L""), nullptr);
  ASSERT_TRUE(WriteAnsiFile(Folder().CommonFile(L"DialupDisconnect.txt"),
                            {L"Documents", L"Schedule 11-15-2026  05-02-33.txt"}));
  auto window = WaitForNotice(kDialupTitle, Ms{25000});
  ASSERT_TRUE(window);
  HWND d = window->hwnd;
  EXPECT_EQ(Text(d, L"ISPname"), L"No active connections found");
  // The countdown runs: "Disconnecting(" and what is left of the 30 firings.
  EXPECT_TRUE(WaitUntil([&] {
    const std::wstring caption = Text(d, L"lbl_Disconnect");
    return caption.rfind(L"Disconnecting(", 0) == 0 && caption != L"Disconnecting(29)";
  })) << "the countdown stood still";
  Shot("dialup");
  // Closed well before the firings still to come could end it: the press did it.
  const std::wstring caption = Text(d, L"lbl_Disconnect");
  const size_t open = caption.find(L'(');
  const int left = open == std::wstring::npos ? 0 : _wtoi(caption.c_str() + open + 1);
  ASSERT_GT(left, 4) << Utf8(caption);
  Press(d, L"lbl_Disconnect");
  ASSERT_TRUE(WaitUntil([&] { return !IsWindow(d) || !IsWindowVisible(d); },
                        std::min(kWait, Ms{(left - 2) * 950})))
      << "Disconnect did not end the window";
  EXPECT_EQ(Logged(L"Unable to find active dial-up connection"), 1);
  EXPECT_EQ(Logged(L"Successfully logged out"), 1);
}

}  // namespace
}  // namespace e2e
