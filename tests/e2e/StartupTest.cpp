// Start-up of the real QVMonitor.exe: a second start, from the same program folder or
// another, ends silently and leaves the first alone (the machine's mutex). What start-up
// reads and writes (the word, the stored geometry, the engine type, the permission check
// on the trace) is start-up's unit tests'; every test here and beside reads the trace it
// writes.
#include <gtest/gtest.h>

#include "MonitorFixture.h"

namespace e2e {
namespace {

using StartupTest = MonitorTest;

TEST_F(StartupTest, SecondStartExitsSilentlyAndLeavesTheFirstAlone) {
  Process* first = StartAndWait(L"");
  ASSERT_NE(first, nullptr);
  auto window = MainWindow(first->Pid());
  ASSERT_TRUE(window);
  ASSERT_TRUE(window->visible);

  // "Min" would hide a window if the second start reached that far; a copy in another
  // folder has another data root, and the mutex still is the machine's one.
  ProgramFolder& other = AnotherFolder("other");
  for (auto [args, folder] : {std::pair<std::wstring, ProgramFolder*>{L"Min", &Folder()},
                              std::pair<std::wstring, ProgramFolder*>{L"", &other}}) {
    Process* second = Start(args, folder);
    ASSERT_NE(second, nullptr);
    auto code = second->WaitExit();
    ASSERT_TRUE(code) << "the second monitor is still running";
    EXPECT_EQ(*code, 0u);
  }
  EXPECT_FALSE(std::filesystem::exists(other.Trace())) << "the second start traced its start-up";

  ASSERT_TRUE(first->Running());
  auto windows = FindTopLevel(WindowQuery{kMonitorTitle, kMonitorClass, 0, false});
  ASSERT_EQ(windows.size(), 1u);
  EXPECT_EQ(windows[0].hwnd, window->hwnd);
  EXPECT_TRUE(windows[0].visible);
  EXPECT_TRUE(EqualRect(&windows[0].rect, &window->rect));
  Lines trace = Trace(Folder());
  EXPECT_EQ(CountLine(trace, kShowLine), 1);
  EXPECT_EQ(CountLine(trace, kHideLine), 0);
  Shot("first-still-shown");
}

}  // namespace
}  // namespace e2e
