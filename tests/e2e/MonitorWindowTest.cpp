// The monitor window as the user sees it beside the simulated engine: the status it
// shows for both engine forms and a transfer drawn in its pane. Controls are found by
// their design names. (The menus' items, the stop's and the service stop's questions and
// web management are the unit tests'; a stop reaching the engine is the job list's test.)
#include <windows.h>
#include <commctrl.h>

#include "JobScreens.h"

namespace e2e {
namespace {

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
  bool WaitForText(HWND window, const wchar_t* name, const std::wstring& text, Ms timeout = kWait) {
    return WaitUntil([&] { return Text(window, name) == text; }, timeout);
  }

  Lines Kept() { return TraceAfter(kKept); }
  bool WaitForKept(size_t count, Ms timeout = Ms{60000}) {
    return WaitUntil([&] { return Kept().size() >= count; }, timeout);
  }
  // The engine's process runs (and the monitor says so) a moment before its window is up.
  bool EngineWindowUp() {
    return WaitForWindow(WindowQuery{L"QVBackground", L"", 0, false}).has_value();
  }
};

TEST_F(MonitorWindowTest, BackgroundEngineIsStartedShownRunningAndTheTabsSwitchPanes) {
  // A word left at "1" by an engine that is gone.
  Schedule(L"1", {LaterJob()});
  ASSERT_TRUE(WriteUtf16File(Folder().CommonFile(L"QVWServiceLog.txt"),
                             {L"Error       : 11/20/2026 10:05:00 : line 5"}));
  HWND w = OpenMonitor(L"");
  ASSERT_NE(w, nullptr);
  EXPECT_TRUE(WaitForText(w, L"lblStatus", L"Running")) << Utf8(Text(w, L"lblStatus"));
  EXPECT_TRUE(EngineWindowUp()) << "the load did not start the background engine";
  EXPECT_EQ(Word(), L"0") << "the stale word was not cleared";
  EXPECT_TRUE(Shown(w, L"FrameNormal"));
  EXPECT_FALSE(Shown(w, L"FrameProgress"));
  EXPECT_FALSE(Shown(w, L"FrameDetails"));
  // The log reaches the list; which lines it holds is the log view's unit tests'.
  EXPECT_EQ(RowCount(FindByName(w, L"lstLog")), 1);
  Shot("idle");

  Press(w, L"cmdDetails");
  EXPECT_TRUE(WaitUntil([&] { return Shown(w, L"FrameDetails") && !Shown(w, L"FrameNormal"); }));
  Shot("details");
}

TEST_F(MonitorWindowTest, ServiceFormIsStartedByTheServiceManagerAndShownRunning) {
  ASSERT_TRUE(
      WriteUtf16File(Folder().CommonFile(L"QVDetails.ini"), {L"[Corvane]", L"Type=service"}));
  RegisteredService service(Folder().Root() / kServiceExe, L"demand");
  ASSERT_TRUE(service.Ok());
  HWND w = OpenMonitor(L"");
  ASSERT_NE(w, nullptr);
  EXPECT_TRUE(WaitForText(w, L"lblStatus", L"Running")) << Utf8(Text(w, L"lblStatus"));

  const UniqueServiceHandle s = OpenNamedService(L"QVWin Service", SERVICE_QUERY_STATUS);
  ASSERT_TRUE(s);
  EXPECT_TRUE(WaitForServiceState(s.Get(), SERVICE_RUNNING))
      << "the load did not start the service";
  // Both programs are kept running, whichever form is installed.
  EXPECT_TRUE(EngineWindowUp());
}

TEST_F(MonitorWindowTest, ATransferIsDrawnInThePaneAndItsEndBringsBackTheIdlePane) {
  Schedule(L"0", {ImmediateJob()});
  // Four seconds between calls: time enough for a Refresh to draw each before the next.
  // The scripted call, then two generated calls a file: the third call is the first
  // file's second, and the job ends after the fifth.
  Scenario({L"files = 2", L"steps = 2", L"step_ms = 4000", L"[call]",
            L"sFileName = C:\\Data\\Tom & Jerry.avi"});
  HWND w = OpenMonitor(L"");
  ASSERT_NE(w, nullptr);

  // The first call, its file name in the label.
  ASSERT_TRUE(WaitForKept(1));
  Tick();
  ASSERT_TRUE(WaitUntil([&] { return Shown(w, L"FrameProgress") && !Shown(w, L"FrameNormal"); }))
      << "the pane did not come up";
  EXPECT_TRUE(WaitUntil([&] {
    return Text(w, L"txtRsyncFileName1").find(L"Tom && Jerry.avi") != std::wstring::npos;
  })) << Utf8(Text(w, L"txtRsyncFileName1"));

  // A generated call: a label and a bar from the values the monitor kept (which part shows
  // which value, and how, is the pane's unit tests').
  ASSERT_TRUE(WaitForKept(3));
  Tick();
  std::wstring kept;
  ASSERT_TRUE(WaitUntil([&] {
    kept = Kept().back();
    return Text(w, L"txtRsyncTimeElapsed") == Field(kept, L"timeelapsed");
  })) << Utf8(kept);
  EXPECT_EQ(ProgressPosition(FindByName(w, L"prgbarRsyncfile1")),
            std::stoi(Field(kept, L"iFileProg")));
  Shot("transfer");

  // "?stop": the next tick returns to the idle pane.
  ASSERT_TRUE(WaitForSimLine(L"job 5 ended files=2 result=GREEN"));
  Tick();
  EXPECT_TRUE(WaitUntil([&] { return Shown(w, L"FrameNormal") && !Shown(w, L"FrameProgress"); }))
      << "the idle pane did not come back";
}

}  // namespace
}  // namespace e2e
