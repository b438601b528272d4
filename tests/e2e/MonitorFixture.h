#pragma once
// The base of every test that starts QVMonitor.exe: a fresh program folder per test,
// the monitor started from it, and no monitor left running afterwards. The
// single-instance mutex is machine-wide, so these tests run one at a time (ctest
// resource lock) and each ends everything it started.
#include <gtest/gtest.h>

#include <list>
#include <memory>
#include <string>

#include "Driver.h"
#include "Files.h"
#include "Process.h"
#include "ProgramFolder.h"
#include "Screenshot.h"

namespace e2e {

inline constexpr wchar_t kMonitorExe[] = L"QVMonitor.exe";
inline constexpr wchar_t kMonitorClass[] = L"QvForm";
inline constexpr wchar_t kMonitorTitle[] = L"Corvane for Windows Monitor";
inline constexpr wchar_t kShowLine[] = L"ShowFromTaskBar called from the Monitor.";
inline constexpr wchar_t kHideLine[] = L"HideFromTaskBar called from the Monitor.";
inline constexpr wchar_t kPermissionLine[] = L"Write Permission check";

class MonitorTest : public ::testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  // The test's program folder, made in SetUp; with PermCheck.dat, as installed.
  ProgramFolder& Folder() { return *folders_.front(); }
  // One more program folder, named after the test and `suffix`.
  ProgramFolder& AnotherFolder(const std::string& suffix);

  // Starts the monitor of `folder` (the test's own by default) from its program folder;
  // fails the test when it cannot start.
  Process* Start(const std::wstring& arguments, ProgramFolder* folder = nullptr);
  // Starts it and waits until Main has shown or hidden the window (its trace line).
  Process* StartAndWait(const std::wstring& arguments, ProgramFolder* folder = nullptr);
  // Ends a monitor the hard way, so the next start of the test finds no mutex.
  void Kill(Process* p);

  // The monitor window of a process, also while hidden.
  std::optional<WindowInfo> MainWindow(DWORD pid, Ms timeout = kWait);
  std::vector<WindowInfo> AllMonitorWindows();

  Lines Trace(const ProgramFolder& folder);
  bool WaitForTraceLine(const ProgramFolder& folder, const std::wstring& line, Ms timeout = kWait);

  // A screenshot named after the test; the path is written to the test's log.
  void Shot(const std::string& what);

 private:
  std::string TestName() const;

  std::list<std::unique_ptr<ProgramFolder>> folders_;
  std::list<Process> processes_;
};

}  // namespace e2e
