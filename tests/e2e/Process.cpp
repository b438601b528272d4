#include "Process.h"

#include <tlhelp32.h>

#include <algorithm>
#include <cwctype>
#include <utility>

namespace e2e {

Process::Process(Process&& other) noexcept { *this = std::move(other); }

Process& Process::operator=(Process&& other) noexcept {
  if (this != &other) {
    Terminate();
    process_ = std::move(other.process_);
    outputRead_ = std::move(other.outputRead_);
    pid_ = std::exchange(other.pid_, 0);
  }
  return *this;
}

Process::~Process() { Terminate(); }

std::optional<Process> Process::Start(const std::filesystem::path& exe,
                                      const std::wstring& arguments,
                                      const std::filesystem::path& workingFolder,
                                      bool captureOutput) {
  std::wstring commandLine = L"\"" + exe.wstring() + L"\"";
  if (!arguments.empty()) commandLine += L" " + arguments;

  // Standard handles on the NUL device: a child that inherited the test's output would
  // keep ctest waiting for the end of that output as long as it (or a program it started,
  // like the engine) runs.
  SECURITY_ATTRIBUTES sa{sizeof(sa), nullptr, TRUE};
  const DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE;
  platform::win32::UniqueHandle nulIn(
      CreateFileW(L"NUL", GENERIC_READ, share, &sa, OPEN_EXISTING, 0, nullptr));
  platform::win32::UniqueHandle nulOut(
      CreateFileW(L"NUL", GENERIC_WRITE, share, &sa, OPEN_EXISTING, 0, nullptr));
  STARTUPINFOW si{};
  si.cb = sizeof(si);
  si.dwFlags = STARTF_USESTDHANDLES;
  si.hStdInput = nulIn.Get();
  si.hStdOutput = si.hStdError = nulOut.Get();
  platform::win32::UniqueHandle writeEnd;
  Process p;
  if (captureOutput) {
    if (!CreatePipe(p.outputRead_.Out(), writeEnd.Out(), &sa, 0)) return std::nullopt;
    SetHandleInformation(p.outputRead_.Get(), HANDLE_FLAG_INHERIT, 0);
    si.hStdOutput = writeEnd.Get();
    si.hStdError = writeEnd.Get();
  }
  PROCESS_INFORMATION pi{};
  BOOL ok = CreateProcessW(exe.c_str(), commandLine.data(), nullptr, nullptr, TRUE, 0, nullptr,
                           workingFolder.empty() ? nullptr : workingFolder.c_str(), &si, &pi);
  writeEnd.Reset();
  if (!ok) return std::nullopt;
  platform::win32::UniqueHandle thread(pi.hThread);
  p.process_.Reset(pi.hProcess);
  p.pid_ = pi.dwProcessId;
  return p;
}

bool Process::Running() const {
  return process_ && WaitForSingleObject(process_.Get(), 0) == WAIT_TIMEOUT;
}

std::optional<DWORD> Process::WaitExit(Ms timeout) {
  if (!process_) return std::nullopt;
  if (WaitForSingleObject(process_.Get(), static_cast<DWORD>(timeout.count())) != WAIT_OBJECT_0)
    return std::nullopt;
  DWORD code = 0;
  if (!GetExitCodeProcess(process_.Get(), &code)) return std::nullopt;
  return code;
}

void Process::Terminate() {
  if (!Running()) return;
  TerminateProcess(process_.Get(), 1);
  WaitForSingleObject(process_.Get(), 10000);
}

std::string Process::Output() {
  std::string out;
  if (!outputRead_) return out;
  char buffer[4096];
  DWORD got = 0;
  while (ReadFile(outputRead_.Get(), buffer, sizeof(buffer), &got, nullptr) && got > 0)
    out.append(buffer, got);
  return out;
}

std::vector<ProcessEntry> FindProcesses(const std::wstring& exeName) {
  std::vector<ProcessEntry> found;
  platform::win32::UniqueHandle snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
  if (!snapshot) return found;
  PROCESSENTRY32W entry{};
  entry.dwSize = sizeof(entry);
  for (BOOL more = Process32FirstW(snapshot.Get(), &entry); more;
       more = Process32NextW(snapshot.Get(), &entry)) {
    if (!exeName.empty() && _wcsicmp(entry.szExeFile, exeName.c_str()) != 0) continue;
    ProcessEntry e{entry.th32ProcessID, {}};
    platform::win32::UniqueHandle h(OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, e.pid));
    wchar_t path[MAX_PATH * 2] = {};
    DWORD size = MAX_PATH * 2;
    if (h && QueryFullProcessImageNameW(h.Get(), 0, path, &size)) e.image.assign(path, size);
    found.push_back(std::move(e));
  }
  return found;
}

int TerminateProcessesUnder(const std::filesystem::path& folder, const std::wstring& exeName) {
  auto lower = [](std::wstring s) {
    std::transform(s.begin(), s.end(), s.begin(), [](wchar_t c) { return std::towlower(c); });
    return s;
  };
  const std::wstring prefix = lower((folder / L"").wstring());
  const DWORD self = GetCurrentProcessId();
  int ended = 0;
  for (const auto& p : FindProcesses(exeName)) {
    if (p.pid == self || p.image.empty() || lower(p.image).rfind(prefix, 0) != 0) continue;
    platform::win32::UniqueHandle h(OpenProcess(PROCESS_TERMINATE | SYNCHRONIZE, FALSE, p.pid));
    if (h && TerminateProcess(h.Get(), 1)) {
      WaitForSingleObject(h.Get(), 10000);
      ++ended;
    }
  }
  return ended;
}

}  // namespace e2e
