#pragma once
// Running processes. Filled in with the engine control work.
#include <cstdint>
#include <vector>

#include "base/Text.h"

namespace platform {

using base::Text;

struct ProcessEntry {
  std::uint32_t pid = 0;
  Text exeName;   // file name as the snapshot gives it
  Text fullPath;  // module path, empty when the process could not be opened
};

class IProcessList {
 public:
  virtual ~IProcessList() = default;
  // By module enumeration (EnumProcesses/EnumProcessModules/GetModuleFileNameExW).
  virtual std::vector<ProcessEntry> EnumerateByModules() = 0;
  // By snapshot (CreateToolhelp32Snapshot/Process32First/Next).
  virtual std::vector<ProcessEntry> EnumerateBySnapshot() = 0;
  virtual bool Terminate(std::uint32_t pid, unsigned exitCode) = 0;
};

}  // namespace platform
