// The simulated engine against the running monitor: the progress calls over COM
// (by vtable and by IDispatch, with and without the optionals), the engine objects
// starting and ending the background program, and a start of the monitor by COM. (The
// stop word reaching the engine is the job list's test, the service form started by the
// monitor's load the monitor window's, the service control the engine control's unit
// tests' and the service manager's contract.) The monitor runs with QV_TRACE_UPDATES=1,
// so its trace shows each call as it arrived and what it kept; the simulator's log shows
// what was sent.
#include <objbase.h>
#include <oleauto.h>

#include <algorithm>
#include <memory>

#include "EngineSupport.h"
#include "QVMonitor_h.h"
#include "engine/BackGroundService.h"
#include "engine/EngineObjects.h"
#include "engine/NTService.h"
#include "frame/AppState.h"
#include "platform/win32/Win32Platform.h"

namespace e2e {
namespace {

class EngineCallbackTest : public EngineMonitorTest {};

TEST_F(EngineCallbackTest, BackgroundEngineCallsTheMonitorThroughTheVtable) {
  Schedule(L"0", {ImmediateJob()});
  Scenario({L"files = 2", L"steps = 3", L"step_ms = 100", L"bk_status = 2"});
  StartServingMonitor();
  StartBackgroundEngine();
  ASSERT_TRUE(WaitForSimLine(L"job 5 ended files=2 result=GREEN"));

  ExpectSentArrived(7);
  const Lines kept = TraceAfter(kKept);
  ASSERT_EQ(kept.size(), 7u);
  EXPECT_EQ(kept[5],
            L"sFileName=[C:\\Users\\Public\\Documents\\Report 2.docx] dFileSize=[3e+06] "
            L"dTotalFilesize=[6e+06] dTotalBuffer=[6e+06] sTrfRate=[48 KB/s] iFileProg=[100] "
            L"iTotalProg=[100] timeelapsed=[00:02:00] TimeRemaining=[00:00:00] engNumber=[1] "
            L"sBkStatus=[2] UpdateWaiting=[1] StopSeen=[0] PaneFlag=[1]");
  // "?stop" keeps the last values and says the transfer is over.
  EXPECT_EQ(After(kept[6], L"sBkStatus=[2] "), L"UpdateWaiting=[0] StopSeen=[1] PaneFlag=[1]");

  // What the engine leaves at the end of a job.
  EXPECT_EQ(Word(), L"0");
  EXPECT_EQ(ScheduleLines().size(), 1u) << "the job that ran once is gone";
  EXPECT_EQ(ReadTextFile(Folder().CommonFile(L"qvwincurjobname.txt")).value_or(Lines{}),
            (Lines{L"Documents", L"5", L"jsmith"}));
  EXPECT_EQ(ReadIni(Folder().CommonFile(L"qvwin.ini"), L"Corvane", L"DESKNOTIFYICON"), L"GREEN");
  int sessions = 0;
  std::error_code ec;
  for (const auto& e : std::filesystem::directory_iterator(Folder().Common() / L"Session", ec))
    sessions += e.path().filename().wstring().rfind(L"Schedule ", 0) == 0;
  EXPECT_EQ(sessions, 1);
  const Lines activity = ReadTextFile(Folder().CommonFile(L"QVWServiceLog.txt")).value_or(Lines{});
  EXPECT_TRUE(std::any_of(activity.begin(), activity.end(), [](const std::wstring& l) {
    return l.rfind(L"Information : ", 0) == 0 &&
           l.find(L" : Scheduled backup of 'Documents' started") != std::wstring::npos;
  }));
}

TEST_F(EngineCallbackTest, DispatchAndVtableWithAndWithoutOptionalsAndRefusedCalls) {
  Schedule(L"0", {ImmediateJob()});
  // The scenario file's lines, a call's settings on one line.
  // clang-format off
  Scenario({L"files = 0", L"step_ms = 50",
            L"[call]", L"sFileName = C:\\a.txt", L"via = dispatch", L"preCall = 7", L"sBkStatus = 3",
            L"[call]", L"sFileName = C:\\b.txt", L"via = dispatch", L"optionals = no", L"sBkStatus = 3",
            L"[call]", L"sFileName = C:\\c.txt", L"via = vtable", L"optionals = no", L"sBkStatus = 4",
            L"[call]", L"sFileName = C:\\bad.bin", L"dfileBuff = -5", L"StartTime = 0.25",
            L"TimeRemaining = 0:01:00", L"sTrfRate = 1 MB/s",
            // clang-format on
            L"[call]", L"sFileName = C:\\d.txt", L"TimeRemaining = 13:00:00", L"via = dispatch"});
  StartServingMonitor();
  StartBackgroundEngine();
  ASSERT_TRUE(WaitForSimLine(L"job 5 ended files=0 result=GREEN"));

  ExpectSentArrived(6);
  const Lines arrived = TraceAfter(kArrived);
  ASSERT_EQ(arrived.size(), 6u);
  EXPECT_NE(arrived[0].find(L"preCall=[7] sBkStatus=[3]"), std::wstring::npos);
  EXPECT_NE(arrived[1].find(L"preCall=[0] sBkStatus=[0]"), std::wstring::npos);  // left out
  EXPECT_NE(arrived[2].find(L"preCall=[0] sBkStatus=[0]"), std::wstring::npos);

  // The refused call keeps nothing (the kept line repeats the last), the next is kept
  // again; how a call is refused, traced and filtered is the callback's unit tests'.
  const Lines kept = TraceAfter(kKept);
  ASSERT_EQ(kept.size(), 6u);
  EXPECT_EQ(kept[3], kept[2]);
  EXPECT_NE(kept[4].find(L"sFileName=[C:\\d.txt]"), std::wstring::npos);
}

TEST_F(EngineCallbackTest, BackgroundEngineIsStartedStoppedAndEndedByTheEngineObjects) {
  Schedule(L"0", {L""});
  // The background program is started relative to the current folder, which the
  // monitor sets to its program folder.
  wchar_t previous[MAX_PATH] = {};
  GetCurrentDirectoryW(MAX_PATH, previous);
  ASSERT_TRUE(SetCurrentDirectoryW(Folder().Root().c_str()));
  platform::Win32Platform win32;
  frame::AppState app(win32.Get());
  app.ScheduleFilePath = AsText(Folder().CommonFile(L"scheduleData.txt"));
  auto serviceEngine = std::make_shared<engine::NTService>(app);
  auto background = std::make_shared<engine::BackGroundService>(app);
  app.ServiceEngine = serviceEngine;
  app.BackgroundEngine = background;

  // The stop by the close message is the process list's contract test; the daily timer
  // ends the real program between transfers (when is its unit tests').
  EXPECT_EQ(background->GetServiceStatus(), u"Stopped");
  background->ServiceStart();
  ASSERT_TRUE(WaitUntil([&] { return background->GetServiceStatus() == u"Running"; }));
  EXPECT_TRUE(WaitForSimLine(L"started"));
  engine::TimerProc(app);
  EXPECT_TRUE(WaitUntil([&] { return background->GetServiceStatus() == u"Stopped"; }));
  SetCurrentDirectoryW(previous);
  TerminateProcessesUnder(Folder().Root(), kBackgroundExe);
}

// ---- started by COM -------------------------------------------------------------

TEST_F(EngineCallbackTest, ComStartsTheMonitorIntoTheTrayAndASecondStartStepsAside) {
  // Register this folder's monitor as the server, as an installer would.
  Process* reg = Start(L"/RegServer");
  ASSERT_TRUE(reg);
  EXPECT_EQ(reg->WaitExit(), std::optional<DWORD>(0));
  EXPECT_TRUE(FindProcesses(kMonitorExe).empty());

  ASSERT_TRUE(SUCCEEDED(CoInitializeEx(nullptr, COINIT_MULTITHREADED)));
  {
    CLSID clsid{};
    ASSERT_EQ(CLSIDFromProgID(L"QVMonitor.IMonitor", &clsid), S_OK);
    platform::win32::ComPtr<_IMonitor> monitor;
    ASSERT_EQ(
        CoCreateInstance(clsid, nullptr, CLSCTX_LOCAL_SERVER, IID__IMonitor, monitor.OutVoid()),
        S_OK);
    auto running = FindProcesses(kMonitorExe);
    ASSERT_EQ(running.size(), 1u);
    EXPECT_TRUE(WaitForTraceLine(Folder(), kHideLine)) << "a start by COM goes into the tray";
    auto window = MainWindow(running[0].pid);
    ASSERT_TRUE(window.has_value());
    EXPECT_FALSE(IsWindowVisible(window->hwnd));

    // Another start by COM while it runs ends at once and leaves the first alone.
    Process* second = Start(L"-Embedding");
    ASSERT_TRUE(second);
    EXPECT_EQ(second->WaitExit(), std::optional<DWORD>(0));
    EXPECT_EQ(FindProcesses(kMonitorExe).size(), 1u);
  }
  CoUninitialize();
  TerminateProcessesUnder(Folder().Root(), kMonitorExe);
}

}  // namespace
}  // namespace e2e
