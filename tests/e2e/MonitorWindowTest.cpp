// The monitor window as the user sees it beside the simulated engine: the status it
// shows for both engine forms, a transfer drawn in its pane, the stop item of the tray
// menu reaching the engine. Controls are found by their design names. (The menus'
// other items, the service stop's question and web management are the unit tests'.)
#include <windows.h>
#include <commctrl.h>

#include "JobScreens.h"

namespace e2e {
namespace {

constexpr wchar_t kStopTransferQuestion[] = L"Do you want to stop the backup/restore operation?";
// The value between "name=[" and the next "]" of a kept line.
std::wstring Field(const std::wstring& kept, const std::wstring& name) {
  const std::wstring open = name + L"=[";
  const size_t at = kept.find(open);
  if (at == std::wstring::npos) return L"<none>";
  const size_t from = at + open.size();
  return kept.substr(from, kept.find(L']', from) - from);
}

class MonitorWindowTest : public EngineMonitorTest {
 protected:
  HWND Open(const std::wstring& arguments) { return OpenMonitor(arguments); }
  HWND Control(HWND window, const wchar_t* name) {
    HWND c = FindByName(window, name);
    EXPECT_NE(c, nullptr) << "no control " << Utf8(name);
    return c;
  }
  bool WaitForText(HWND window, const wchar_t* name, const std::wstring& text, Ms timeout = kWait) {
    return WaitUntil([&] { return Text(window, name) == text; }, timeout);
  }
  // The Refresh button runs the tick at once.
  void Refresh(HWND window) { Press(window, L"btnRefresh"); }

  Lines Kept() { return TraceAfter(kKept); }
  bool WaitForKept(size_t count, Ms timeout = Ms{60000}) {
    return WaitUntil([&] { return Kept().size() >= count; }, timeout);
  }
  bool EngineWindowUp() {
    return !FindTopLevel(WindowQuery{L"QVBackground", L"", 0, false}).empty();
  }
};

TEST_F(MonitorWindowTest, BackgroundEngineIsStartedShownRunningAndTheTabsSwitchPanes) {
  // A word left at "1" by an engine that is gone.
  Schedule(L"1", LaterJob());
  Lines log;
  for (int i = 1; i <= 25; ++i)
    log.push_back((i % 5 ? L"Information : 11/20/2026 10:" : L"Error       : 11/20/2026 10:") +
                  std::wstring(i < 10 ? L"0" : L"") + std::to_wstring(i) + L":00 : line " +
                  std::to_wstring(i));
  ASSERT_TRUE(WriteUtf16File(Folder().CommonFile(L"QVWServiceLog.txt"), log));
  HWND w = Open(L"");
  ASSERT_NE(w, nullptr);
  EXPECT_TRUE(WaitForText(w, L"lblStatus", L"Running")) << Utf8(Text(w, L"lblStatus"));
  EXPECT_TRUE(EngineWindowUp()) << "the load did not start the background engine";
  EXPECT_EQ(Word(), L"0") << "the stale word was not cleared";
  EXPECT_TRUE(Shown(w, L"FrameNormal"));
  EXPECT_FALSE(Shown(w, L"FrameProgress"));
  EXPECT_FALSE(Shown(w, L"FrameDetails"));
  EXPECT_EQ(Text(w, L"Label1"), kMonitorTitle);
  // The log list holds the 20 newest lines.
  HWND list = Control(w, L"lstLog");
  EXPECT_EQ(RowCount(list), 20);
  Shot("idle");

  Press(w, L"cmdDetails");
  EXPECT_TRUE(WaitUntil([&] { return Shown(w, L"FrameDetails") && !Shown(w, L"FrameNormal"); }));
  EXPECT_TRUE(Shown(w, L"StartAuto"));
  Shot("details");
}

TEST_F(MonitorWindowTest, ServiceFormIsStartedByTheServiceManagerAndShownRunning) {
  ASSERT_TRUE(
      WriteUtf16File(Folder().CommonFile(L"QVDetails.ini"), {L"[Corvane]", L"Type=service"}));
  RegisteredService service(Folder().Root() / kServiceExe, L"demand");
  ASSERT_TRUE(service.Ok());
  HWND w = Open(L"");
  ASSERT_NE(w, nullptr);
  EXPECT_TRUE(WaitForText(w, L"lblStatus", L"Running")) << Utf8(Text(w, L"lblStatus"));

  SC_HANDLE m = OpenSCManagerW(nullptr, nullptr, SC_MANAGER_CONNECT);
  ASSERT_NE(m, nullptr);
  SC_HANDLE s = OpenServiceW(m, L"QVWin Service", SERVICE_QUERY_STATUS);
  ASSERT_NE(s, nullptr);
  SERVICE_STATUS st{};
  EXPECT_TRUE(WaitUntil([&] {
    return QueryServiceStatus(s, &st) && st.dwCurrentState == SERVICE_RUNNING;
  })) << "the load did not start the service";
  CloseServiceHandle(s);
  CloseServiceHandle(m);
  // Both programs are kept running, whichever form is installed.
  EXPECT_TRUE(EngineWindowUp());
}

TEST_F(MonitorWindowTest, ATransferIsDrawnInThePaneAndItsEndBringsBackTheIdlePane) {
  Schedule(L"0", ImmediateJob());
  // Four seconds between calls: time enough for a Refresh to draw each before the next.
  // The scripted call, then two generated calls a file: the third call is the first
  // file's second, and the job ends after the fifth.
  Scenario({L"files = 2", L"steps = 2", L"step_ms = 4000", L"[call]",
            L"sFileName = C:\\Data\\Tom & Jerry.avi", L"TimeRemaining = 13:00:00"});
  HWND w = Open(L"");
  ASSERT_NE(w, nullptr);

  // The first call: its 13 hours left are not shown.
  ASSERT_TRUE(WaitForKept(1));
  Refresh(w);
  ASSERT_TRUE(WaitUntil([&] { return Shown(w, L"FrameProgress") && !Shown(w, L"FrameNormal"); }))
      << "the pane did not come up";
  EXPECT_TRUE(WaitUntil([&] {
    return Text(w, L"txtRsyncFileName1").find(L"Tom && Jerry.avi") != std::wstring::npos;
  })) << Utf8(Text(w, L"txtRsyncFileName1"));
  EXPECT_EQ(Text(w, L"txtRsyncFileName1").rfind(L"[Full Backup] C:\\Data\\Tom && Jerry.avi", 0),
            0u);
  EXPECT_EQ(Text(w, L"txtRsyncTimeLeft"), L"");

  // A generated call: every part of the pane from the values the monitor kept.
  ASSERT_TRUE(WaitForKept(3));
  Refresh(w);
  std::wstring kept;
  ASSERT_TRUE(WaitUntil([&] {
    kept = Kept().back();
    return Text(w, L"txtRsyncTimeElapsed") == Field(kept, L"timeelapsed");
  })) << Utf8(kept);
  EXPECT_NE(Text(w, L"txtRsyncFileName1").find(L"\\Report "), std::wstring::npos);
  EXPECT_EQ(Text(w, L"txtRsyncfilesize1"), L"2.86 MB");
  EXPECT_EQ(Text(w, L"txtRsyncTimeLeft"), Field(kept, L"TimeRemaining"));
  EXPECT_NE(Field(kept, L"TimeRemaining"), L"");
  const std::wstring status = Text(w, L"lblRsyncTransferStatus");
  EXPECT_EQ(status.rfind(L"Status : ", 0), 0u) << Utf8(status);
  EXPECT_NE(status.find(L" out of 5.72 MB (" + Field(kept, L"sTrfRate") + L")"), std::wstring::npos)
      << Utf8(status);
  EXPECT_EQ(ProgressPosition(Control(w, L"prgbarRsyncfile1")),
            std::stoi(Field(kept, L"iFileProg")));
  EXPECT_EQ(ProgressPosition(Control(w, L"PrgbarRsyncTotal")),
            std::stoi(Field(kept, L"iTotalProg")));
  EXPECT_TRUE(Shown(w, L"chkbandwidth"));
  Shot("transfer");

  // "?stop": the next tick returns to the idle pane.
  ASSERT_TRUE(WaitForSimLine(L"job 5 ended files=2 result=GREEN"));
  Refresh(w);
  EXPECT_TRUE(WaitUntil([&] { return Shown(w, L"FrameNormal") && !Shown(w, L"FrameProgress"); }))
      << "the idle pane did not come back";
}

TEST_F(MonitorWindowTest, StopTransferFromTheTrayMenuAsksAndTheEngineStops) {
  Schedule(L"0", DailyJob());
  Scenario({L"files = 5", L"steps = 4", L"step_ms = 1000"});
  HWND w = Open(L"Min");
  ASSERT_NE(w, nullptr);
  ASSERT_TRUE(WaitUntil(
      [&] {
        for (const auto& k : Kept())
          if (k.find(L"Report 2.docx] ") != std::wstring::npos) return true;
        return false;
      },
      Ms{60000}));
  // Let a tick take the transfer in, so that the stop items are on.
  Refresh(w);
  Sleep(1000);

  ASSERT_TRUE(PostTrayMouse(w, WM_RBUTTONUP));
  ASSERT_TRUE(WaitForPopupMenu(pid_));
  Shot("tray-menu");
  // "Stop running scheduled job" is the seventh item.
  ASSERT_TRUE(ChooseMenuItemByArrows(pid_, 7));
  HWND ask = WaitForBox(kStopTransferQuestion);
  ASSERT_NE(ask, nullptr) << "Stop running scheduled job did not ask";
  EXPECT_EQ(Word(), L"1") << "nothing is written before the answer";
  Answer(ask, 0);
  // The word is written once the box has gone, a moment after the test sees it go.
  EXPECT_TRUE(WaitUntil([&] { return Word() == L"2"; })) << Utf8(Word());

  ASSERT_TRUE(WaitUntil(
      [&] {
        for (const auto& l : SimLog())
          if (l.rfind(L"job 7 stopped files=", 0) == 0) return true;
        return false;
      },
      Ms{60000}));
  EXPECT_TRUE(WaitUntil([&] { return Word() == L"0"; }));
}

}  // namespace
}  // namespace e2e
