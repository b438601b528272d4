#include "platform/fake/FakeEngineServices.h"

#include <algorithm>
#include <cstdio>

namespace platform {

namespace {

constexpr unsigned long kErrorInvalidHandle = 6;
constexpr unsigned long kErrorInsufficientBuffer = 122;
constexpr unsigned long kErrorAlreadyRunning = 1056;
constexpr unsigned long kErrorServiceDisabled = 1058;
constexpr unsigned long kErrorServiceNotActive = 1062;
constexpr unsigned long kErrorServiceDoesNotExist = 1060;

std::string Hex(unsigned long v) {
  char buf[24];
  std::snprintf(buf, sizeof buf, "0x%lx", v);
  return buf;
}

}  // namespace

void FakeServiceManager::Add(const Text& name) { Add(name, Service()); }

void FakeServiceManager::Add(const Text& name, const Service& service) {
  services_[base::ToLower(name)] = service;
}

FakeServiceManager::Service* FakeServiceManager::Find(const Text& name) {
  auto it = services_.find(base::ToLower(name));
  return it == services_.end() ? nullptr : &it->second;
}

FakeServiceManager::Service* FakeServiceManager::ServiceOf(ScHandle handle) {
  auto it = handles_.find(handle);
  if (it == handles_.end() || it->second.manager) return nullptr;
  return Find(it->second.service);
}

ScHandle FakeServiceManager::OpenSCManagerW(const Text& machineName, const Text& databaseName,
                                            unsigned long access) {
  calls.push_back("OpenSCManagerW(" + base::ToUtf8(machineName) + "," + base::ToUtf8(databaseName) +
                  "," + Hex(access) + ")");
  if (managerFails) {
    lastError_ = 5;
    return 0;
  }
  ScHandle h = next_++;
  handles_[h] = {true, Text(), access};
  return h;
}

ScHandle FakeServiceManager::OpenServiceW(ScHandle manager, const Text& serviceName,
                                          unsigned long access) {
  calls.push_back("OpenServiceW(" + base::ToUtf8(serviceName) + "," + Hex(access) + ")");
  auto it = handles_.find(manager);
  if (it == handles_.end() || !it->second.manager) {
    lastError_ = kErrorInvalidHandle;
    return 0;
  }
  if (!Find(serviceName)) {
    lastError_ = kErrorServiceDoesNotExist;
    return 0;
  }
  ScHandle h = next_++;
  handles_[h] = {false, base::ToLower(serviceName), access};
  return h;
}

bool FakeServiceManager::QueryServiceStatus(ScHandle service, ServiceStatus& status) {
  calls.push_back("QueryServiceStatus");
  Service* s = ServiceOf(service);
  if (!s || queryFails) {
    lastError_ = kErrorInvalidHandle;
    return false;
  }
  status.serviceType = 0x10;
  status.currentState = s->state;
  return true;
}

bool FakeServiceManager::QueryServiceConfigA(ScHandle service, unsigned long bufferBytes,
                                             unsigned long& bytesNeeded, unsigned long& startType) {
  calls.push_back("QueryServiceConfigA(" + std::to_string(bufferBytes) + ")");
  Service* s = ServiceOf(service);
  if (!s) {
    lastError_ = kErrorInvalidHandle;
    return false;
  }
  if (bufferBytes < s->configBytes) {
    bytesNeeded = s->configBytes;
    lastError_ = kErrorInsufficientBuffer;
    return false;
  }
  startType = s->startType;
  return true;
}

bool FakeServiceManager::StartServiceA(ScHandle service) {
  calls.push_back("StartService");
  Service* s = ServiceOf(service);
  if (!s) {
    lastError_ = kErrorInvalidHandle;
    return false;
  }
  if (s->startType == kServiceDisabled) {
    lastError_ = kErrorServiceDisabled;
    return false;
  }
  if (s->state != 1) {
    lastError_ = kErrorAlreadyRunning;
    return false;
  }
  s->state = s->stateAfterStart;
  return true;
}

bool FakeServiceManager::ControlService(ScHandle service, unsigned long control,
                                        ServiceStatus& status) {
  calls.push_back("ControlService(" + std::to_string(control) + ")");
  Service* s = ServiceOf(service);
  if (!s) {
    lastError_ = kErrorInvalidHandle;
    return false;
  }
  if (s->state == 1) {
    lastError_ = kErrorServiceNotActive;
    return false;
  }
  if (control == kServiceControlStop) s->state = 1;
  if (control == kServiceControlPause) s->state = 7;
  if (control == kServiceControlContinue) s->state = 4;
  status.currentState = s->state;
  return true;
}

bool FakeServiceManager::CloseServiceHandle(ScHandle handle) {
  auto it = handles_.find(handle);
  calls.push_back(it != handles_.end() && it->second.manager ? "CloseServiceHandle(manager)"
                                                             : "CloseServiceHandle(service)");
  if (it == handles_.end()) {
    lastError_ = kErrorInvalidHandle;
    return false;
  }
  handles_.erase(it);
  return true;
}

void FakeProcessList::Add(std::uint32_t pid, const Text& modulePath, bool openable) {
  processes.push_back({pid, modulePath, Text(), openable});
}

bool FakeProcessList::Running(std::uint32_t pid) const {
  return std::any_of(processes.begin(), processes.end(),
                     [&](const Process& p) { return p.pid == pid; });
}

const FakeProcessList::Process* FakeProcessList::ProcessOf(OsHandle handle) const {
  auto it = handles_.find(handle);
  if (it == handles_.end() || it->second.snapshot) return nullptr;
  for (const Process& p : processes)
    if (p.pid == it->second.pid) return &p;
  return nullptr;
}

bool FakeProcessList::EnumProcessIds(std::uint32_t byteCount, std::vector<std::uint32_t>& ids,
                                     std::uint32_t& bytesReturned) {
  calls.push_back("EnumProcessIds(" + std::to_string(byteCount) + ")");
  const std::size_t room = byteCount / 4;
  ids.assign(room, 0);
  std::size_t n = std::min(room, processes.size());
  for (std::size_t i = 0; i < n; ++i) ids[i] = processes[i].pid;
  bytesReturned = static_cast<std::uint32_t>(n * 4);
  return true;
}

OsHandle FakeProcessList::OpenProcess(std::uint32_t access, bool inheritHandle,
                                      std::uint32_t processId) {
  calls.push_back("OpenProcess(" + std::to_string(access) + "," + (inheritHandle ? "1" : "0") +
                  "," + std::to_string(processId) + ")");
  for (const Process& p : processes) {
    if (p.pid == processId && p.openable) {
      OsHandle h = next_++;
      handles_[h] = {false, processId, 0};
      return h;
    }
  }
  return 0;
}

bool FakeProcessList::EnumModules(OsHandle process, std::uint32_t tableBytes,
                                  std::uintptr_t& firstModule) {
  calls.push_back("EnumModules(" + std::to_string(tableBytes) + ")");
  if (modulesFail || !ProcessOf(process)) return false;
  firstModule = 0x400000;
  return true;
}

Text FakeProcessList::ModuleFileName(OsHandle process, std::uintptr_t module, std::uint32_t size,
                                     std::uint32_t bufferChars) {
  calls.push_back("ModuleFileName(" + std::to_string(size) + "," + std::to_string(bufferChars) +
                  ")");
  Text buffer(bufferChars, u'\0');
  const Process* p = ProcessOf(process);
  if (!p || module == 0) return buffer;
  // Like the real call: at most size - 1 characters and a NUL within `size`.
  const std::size_t n = std::min<std::size_t>(p->modulePath.size(), size ? size - 1 : 0);
  std::copy_n(p->modulePath.begin(), std::min<std::size_t>(n, buffer.size()), buffer.begin());
  return buffer;
}

OsHandle FakeProcessList::CreateSnapshot(std::uint32_t flags, std::uint32_t processId) {
  calls.push_back("CreateSnapshot(" + std::to_string(flags) + "," + std::to_string(processId) +
                  ")");
  if (snapshotFails) return 0;
  OsHandle h = next_++;
  handles_[h] = {true, 0, 0};
  return h;
}

bool FakeProcessList::ProcessFirst(OsHandle snapshot, std::uint32_t entrySize,
                                   SnapshotEntry& entry) {
  calls.push_back("ProcessFirst(" + std::to_string(entrySize) + ")");
  auto it = handles_.find(snapshot);
  if (it == handles_.end() || !it->second.snapshot) return false;
  it->second.cursor = 0;
  return Advance(it->second, entry);
}

bool FakeProcessList::ProcessNext(OsHandle snapshot, std::uint32_t entrySize,
                                  SnapshotEntry& entry) {
  calls.push_back("ProcessNext(" + std::to_string(entrySize) + ")");
  auto it = handles_.find(snapshot);
  if (it == handles_.end() || !it->second.snapshot) return false;
  return Advance(it->second, entry);
}

bool FakeProcessList::Advance(HandleInfo& snapshot, SnapshotEntry& entry) {
  if (snapshot.cursor >= processes.size()) return false;
  const Process& p = processes[snapshot.cursor++];
  entry.processId = p.pid;
  entry.exeFile = p.snapshotName.empty() ? p.modulePath : p.snapshotName;
  return true;
}

bool FakeProcessList::TerminateProcess(OsHandle process, std::uint32_t exitCode) {
  calls.push_back("TerminateProcess(" + std::to_string(exitCode) + ")");
  const Process* p = ProcessOf(process);
  if (!p) return false;
  const std::uint32_t pid = p->pid;
  terminated.push_back(pid);
  processes.erase(std::remove_if(processes.begin(), processes.end(),
                                 [&](const Process& q) { return q.pid == pid; }),
                  processes.end());
  return true;
}

bool FakeProcessList::CloseHandle(OsHandle handle) {
  calls.push_back("CloseHandle");
  return handles_.erase(handle) > 0;
}

std::uint64_t FakeProcessList::ProcessStartTime(std::uint32_t processId) {
  for (Process& p : processes) {
    if (p.pid != processId) continue;
    if (p.started == 0) p.started = ++lastStart_;
    return p.started;
  }
  return 0;
}

OsHandle FakeProcessList::FindWindowByTitle(const Text& title) {
  calls.push_back("FindWindow(" + base::ToUtf8(title) + ")");
  auto it = windows.find(title);
  return it == windows.end() ? 0 : it->second;
}

bool FakeProcessList::PostMessageA(OsHandle window, std::uint32_t message, std::uintptr_t wParam,
                                   std::intptr_t lParam) {
  calls.push_back("PostMessageA(" + std::to_string(window) + "," + std::to_string(message) + "," +
                  std::to_string(wParam) + "," + std::to_string(lParam) + ")");
  // A null window posts to the caller's own queue, where a close means nothing.
  if (window == 0) return true;
  auto owner = windowOwners.find(window);
  if (message == 16 && owner != windowOwners.end()) {
    const std::uint32_t pid = owner->second;
    processes.erase(std::remove_if(processes.begin(), processes.end(),
                                   [&](const Process& q) { return q.pid == pid; }),
                    processes.end());
    for (auto it = windows.begin(); it != windows.end();)
      it = it->second == window ? windows.erase(it) : std::next(it);
    windowOwners.erase(owner);
  }
  return true;
}

}  // namespace platform
