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

  // The monitor window of a process, also while hidden.
  std::optional<WindowInfo> MainWindow(DWORD pid, Ms timeout = kWait);

  Lines Trace(const ProgramFolder& folder);
  bool WaitForTraceLine(const ProgramFolder& folder, const std::wstring& line, Ms timeout = kWait);

  // A screenshot named after the test; the path is written to the test's log.
  void Shot(const std::string& what);

  // Starts the monitor and waits for its window, also while hidden; pid_ and main_
  // name them from then on. Null when it did not come up.
  HWND OpenMonitor(const std::wstring& arguments);
  // The controls of the monitor's windows, by their design names.
  std::wstring Text(HWND window, const wchar_t* name);  // "<no control>" when there is none
  bool Shown(HWND window, const wchar_t* name);
  void Press(HWND window, const wchar_t* name);  // a click; fails the test without the control
  // Item `n` of the tray menu, chosen by arrows (separators passed over).
  void TrayItem(int n);
  // A top-level window of the monitor, other than its main window, once one holds the
  // control `name` (a screen) or shows a text starting with `text` (a message box).
  HWND WaitForScreen(const std::wstring& name, Ms timeout = kWait);
  // A top-level window of the monitor by its own design name (a form, "MesgBox").
  HWND WaitForDesign(const std::wstring& name, Ms timeout = kWait);
  HWND WaitForBox(const std::wstring& text, Ms timeout = kWait);
  // Clicks the box's control (or its button `index`: 0 is Yes or OK) and waits for it to go.
  void Answer(HWND box, const std::wstring& control);
  void Answer(HWND box, int index) {
    Answer(box, L"lbl_cmdButton(" + std::to_wstring(index) + L")");
  }

  DWORD pid_ = 0;
  HWND main_ = nullptr;

 private:
  std::string TestName() const;

  std::list<std::unique_ptr<ProgramFolder>> folders_;
  std::list<Process> processes_;
};

}  // namespace e2e
