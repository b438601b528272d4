#pragma once
// Programs started by a test: started with CreateProcessW, waited for with a timeout,
// and never left running after the test, whatever happened in it.
#include <windows.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "Driver.h"
#include "platform/win32/Win32Handles.h"

namespace e2e {

class Process {
 public:
  Process() = default;
  Process(Process&& other) noexcept;
  Process& operator=(Process&& other) noexcept;
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;
  ~Process();  // terminates the program if it still runs

  // `arguments` is the command line after the quoted program path, as the program
  // will see it ("" gives the bare path). Empty result when CreateProcessW failed.
  static std::optional<Process> Start(const std::filesystem::path& exe,
                                      const std::wstring& arguments,
                                      const std::filesystem::path& workingFolder,
                                      bool captureOutput = false);

  DWORD Pid() const { return pid_; }
  bool Running() const;
  // The exit code, or nothing when the program is still running after `timeout`.
  std::optional<DWORD> WaitExit(Ms timeout = kWait);
  void Terminate();
  // What the program wrote to stdout and stderr (when captured); call after it ended.
  std::string Output();

 private:
  platform::win32::UniqueHandle process_;
  platform::win32::UniqueHandle outputRead_;
  DWORD pid_ = 0;
};

struct ProcessEntry {
  DWORD pid = 0;
  std::wstring image;  // full path, as the system gives it
};

// Processes whose image file is named `exeName` (case-insensitive; empty: all).
std::vector<ProcessEntry> FindProcesses(const std::wstring& exeName);
// Ends every process whose image lies under `folder` (of any name, or named `exeName`): the
// monitor, and the engine it starts beside itself from its program folder. Returns how many.
int TerminateProcessesUnder(const std::filesystem::path& folder, const std::wstring& exeName = L"");

}  // namespace e2e
