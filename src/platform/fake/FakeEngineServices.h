#pragma once
// The service manager and the process list in memory. Each records the calls it
// was given with their arguments, so a test can check which access, size and code
// the engine control asked for, and that every handle it opened was closed.
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "platform/ProcessList.h"
#include "platform/ServiceManager.h"

namespace platform {

class FakeServiceManager : public IServiceManager {
 public:
  struct Service {
    unsigned long state = 1;      // stopped
    unsigned long startType = 3;  // on demand
    unsigned long configBytes = 180;
    // The state a start leaves: 4 running, or 2 to stay pending.
    unsigned long stateAfterStart = 4;
  };

  ScHandle OpenSCManagerW(const Text& machineName, const Text& databaseName,
                          unsigned long access) override;
  ScHandle OpenServiceW(ScHandle manager, const Text& serviceName, unsigned long access) override;
  bool QueryServiceStatus(ScHandle service, ServiceStatus& status) override;
  bool QueryServiceConfigA(ScHandle service, unsigned long bufferBytes, unsigned long& bytesNeeded,
                           unsigned long& startType) override;
  bool StartServiceA(ScHandle service) override;
  bool ControlService(ScHandle service, unsigned long control, ServiceStatus& status) override;
  bool CloseServiceHandle(ScHandle handle) override;
  // A service the table has (not recorded among the calls).
  bool ServiceInstalled(const Text& serviceName) override { return Find(serviceName) != nullptr; }
  unsigned long LastError() override { return lastError_; }

  // Services by name (the manager compares names without regard to case).
  void Add(const Text& name);
  void Add(const Text& name, const Service& service);
  Service* Find(const Text& name);
  int OpenHandles() const { return static_cast<int>(handles_.size()); }

  bool managerFails = false;
  bool queryFails = false;
  // One line per call, e.g. "OpenSCManagerW(,ServicesActive,0x80000000)".
  std::vector<std::string> calls;

 private:
  struct HandleInfo {
    bool manager = false;
    Text service;  // lower case
    unsigned long access = 0;
  };
  Service* ServiceOf(ScHandle handle);
  std::map<Text, Service> services_;
  std::map<ScHandle, HandleInfo> handles_;
  ScHandle next_ = 0x1000;
  unsigned long lastError_ = 0;
};

class FakeProcessList : public IProcessList {
 public:
  struct Process {
    std::uint32_t pid = 0;
    Text modulePath;    // what GetModuleFileNameExW gives
    Text snapshotName;  // what the snapshot gives; the module path when empty
    bool openable = true;
    // When it began; given at the first question when 0, so that a process put in the
    // place of another under the same id is told apart.
    std::uint64_t started = 0;
  };

  bool EnumProcessIds(std::uint32_t byteCount, std::vector<std::uint32_t>& ids,
                      std::uint32_t& bytesReturned) override;
  OsHandle OpenProcess(std::uint32_t access, bool inheritHandle, std::uint32_t processId) override;
  bool EnumModules(OsHandle process, std::uint32_t tableBytes,
                   std::uintptr_t& firstModule) override;
  Text ModuleFileName(OsHandle process, std::uintptr_t module, std::uint32_t size,
                      std::uint32_t bufferChars) override;
  OsHandle CreateSnapshot(std::uint32_t flags, std::uint32_t processId) override;
  bool ProcessFirst(OsHandle snapshot, std::uint32_t entrySize, SnapshotEntry& entry) override;
  bool ProcessNext(OsHandle snapshot, std::uint32_t entrySize, SnapshotEntry& entry) override;
  bool TerminateProcess(OsHandle process, std::uint32_t exitCode) override;
  bool CloseHandle(OsHandle handle) override;
  // Not recorded among the calls. Also for a process that cannot be opened: the limited
  // query is allowed where opening to read it is not (other users' processes).
  std::uint64_t ProcessStartTime(std::uint32_t processId) override;
  OsHandle FindWindowByTitle(const Text& title) override;
  bool PostMessageA(OsHandle window, std::uint32_t message, std::uintptr_t wParam,
                    std::intptr_t lParam) override;

  void Add(std::uint32_t pid, const Text& modulePath, bool openable = true);
  bool Running(std::uint32_t pid) const;
  int OpenHandles() const { return static_cast<int>(handles_.size()); }

  std::vector<Process> processes;
  std::map<Text, OsHandle> windows;  // title -> window
  // The process that owns a window: a close message posted to it ends the process.
  std::map<OsHandle, std::uint32_t> windowOwners;
  bool snapshotFails = false;
  bool modulesFail = false;
  std::vector<std::uint32_t> terminated;
  std::vector<std::string> calls;  // e.g. "OpenProcess(1041,0,12)", "EnumProcessIds(16)"

 private:
  struct HandleInfo {
    bool snapshot = false;
    std::uint32_t pid = 0;
    std::size_t cursor = 0;
  };
  const Process* ProcessOf(OsHandle handle) const;
  bool Advance(HandleInfo& snapshot, SnapshotEntry& entry);
  std::map<OsHandle, HandleInfo> handles_;
  OsHandle next_ = 0x2000;
  std::uint64_t lastStart_ = 0;
};

}  // namespace platform
