// qvsoakprobe: what the long run under Wine (soak-wine.sh) does inside the prefix.
//
//   qvsoakprobe sample EXE        one line of the process named EXE:
//                                 pid working-set-KB private-KB handles gdi user threads
//                                 ("none" when it does not run)
//   qvsoakprobe kill EXE          ends every process named EXE (TerminateProcess)
//   qvsoakprobe taskbar           broadcasts "TaskbarCreated", as a restarted shell does
//   qvsoakprobe screen N          chooses the Nth item of the monitor's tray menu, waits
//                                 for the screen it opens and closes it again
//   qvsoakprobe close             closes every shown window of the monitor but its own
//                                 (notices, message boxes, screens)
//
// Exit 0 when it did what was asked, 1 when not (said on standard error), 2 on a bad
// argument. Each wait has a timeout: a hung monitor must not hang the soak.
#include <windows.h>
// Before the toolhelp and process headers, which need the types of windows.h.
#include <psapi.h>
#include <tlhelp32.h>

#include <algorithm>
#include <cstdio>
#include <cwchar>
#include <string>
#include <vector>

#include "Driver.h"
#include "platform/win32/Win32Handles.h"

namespace {

using e2e::Ms;

constexpr wchar_t kFormClass[] = L"QvForm";
constexpr wchar_t kMainTitle[] = L"Corvane for Windows Monitor";
constexpr wchar_t kMainDesign[] = L"frmQVWinService";
constexpr wchar_t kMonitorExe[] = L"QVMonitor.exe";

struct ProcessEntry {
  DWORD pid = 0;
  DWORD threads = 0;
};

std::vector<ProcessEntry> ProcessesNamed(const wchar_t* exe) {
  std::vector<ProcessEntry> found;
  platform::win32::UniqueHandle held(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
  if (!held) return found;
  const HANDLE snapshot = held.Get();
  PROCESSENTRY32W entry{};
  entry.dwSize = sizeof entry;
  for (BOOL more = Process32FirstW(snapshot, &entry); more; more = Process32NextW(snapshot, &entry))
    if (_wcsicmp(entry.szExeFile, exe) == 0)
      found.push_back({entry.th32ProcessID, entry.cntThreads});
  return found;
}

struct HandleEntry {  // SYSTEM_HANDLE_TABLE_ENTRY_INFO
  USHORT process;
  USHORT backTrace;
  UCHAR type;
  UCHAR attributes;
  USHORT value;
  PVOID object;
  ULONG access;
};

// The handles a process holds, from the system's handle table: GetProcessHandleCount
// answers 0 under Wine, this table does not. -1 when the table cannot be read.
long HandleCount(DWORD pid) {
  struct Table {  // SYSTEM_HANDLE_INFORMATION
    ULONG count;
    HandleEntry entries[1];
  };
  using Query = LONG(WINAPI*)(ULONG, PVOID, ULONG, PULONG);
  auto query = reinterpret_cast<Query>(reinterpret_cast<void*>(
      GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "NtQuerySystemInformation")));
  if (query == nullptr) return -1;
  std::vector<unsigned char> buffer(1 << 16);
  for (int tries = 0; tries < 12; ++tries) {
    ULONG needed = 0;
    const LONG status = query(16, buffer.data(), static_cast<ULONG>(buffer.size()), &needed);
    if (status == static_cast<LONG>(0xC0000004)) {  // the buffer is too small
      buffer.resize(std::max<size_t>(buffer.size() * 2, needed + 4096));
      continue;
    }
    if (status != 0) return -1;
    const auto* table = reinterpret_cast<const Table*>(buffer.data());
    long mine = 0;
    for (ULONG i = 0; i < table->count; ++i)
      mine += table->entries[i].process == static_cast<USHORT>(pid);
    return mine;
  }
  return -1;
}

int Sample(const wchar_t* exe) {
  const std::vector<ProcessEntry> found = ProcessesNamed(exe);
  if (found.empty()) {
    std::printf("none\n");
    return 0;
  }
  const ProcessEntry& p = found.front();
  platform::win32::UniqueHandle held(
      OpenProcess(PROCESS_QUERY_INFORMATION | PROCESS_VM_READ, FALSE, p.pid));
  const HANDLE process = held.Get();
  if (process == nullptr) {
    std::fprintf(stderr, "qvsoakprobe: cannot open process %lu (%lu)\n", p.pid, GetLastError());
    return 1;
  }
  PROCESS_MEMORY_COUNTERS_EX memory{};
  memory.cb = sizeof memory;
  GetProcessMemoryInfo(process, reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&memory), sizeof memory);
  const DWORD gdi = GetGuiResources(process, GR_GDIOBJECTS);
  const DWORD user = GetGuiResources(process, GR_USEROBJECTS);
  std::printf("%lu %llu %llu %ld %lu %lu %lu\n", p.pid,
              static_cast<unsigned long long>(memory.WorkingSetSize / 1024),
              static_cast<unsigned long long>(memory.PrivateUsage / 1024), HandleCount(p.pid), gdi,
              user, p.threads);
  return 0;
}

int Kill(const wchar_t* exe) {
  int ended = 0;
  for (const ProcessEntry& p : ProcessesNamed(exe)) {
    platform::win32::UniqueHandle process(
        OpenProcess(PROCESS_TERMINATE | SYNCHRONIZE, FALSE, p.pid));
    if (process && TerminateProcess(process.Get(), 1)) {
      WaitForSingleObject(process.Get(), 10000);
      ++ended;
    }
  }
  std::printf("ended %d\n", ended);
  return 0;
}

int Taskbar() {
  const UINT message = RegisterWindowMessageW(L"TaskbarCreated");
  if (message == 0 || !PostMessageW(HWND_BROADCAST, message, 0, 0)) {
    std::fprintf(stderr, "qvsoakprobe: TaskbarCreated not broadcast (%lu)\n", GetLastError());
    return 1;
  }
  return 0;
}

// The monitor's shown windows other than its own window.
std::vector<HWND> OtherWindows(DWORD pid) {
  std::vector<HWND> found;
  for (const e2e::WindowInfo& w : e2e::FindTopLevel({L"", kFormClass, pid, true}))
    if (e2e::DesignName(w.hwnd) != kMainDesign) found.push_back(w.hwnd);
  return found;
}

// Closes them the way a user does: the close box, then Escape for one that stays.
bool CloseOthers(DWORD pid) {
  return e2e::WaitUntil(
      [&] {
        const std::vector<HWND> open = OtherWindows(pid);
        for (HWND w : open) {
          e2e::Post(w, WM_CLOSE);
          e2e::Post(w, WM_KEYDOWN, VK_ESCAPE, 0);
        }
        return open.empty();
      },
      Ms{20000}, Ms{500});
}

const e2e::WindowInfo* Monitor(std::vector<e2e::WindowInfo>& found) {
  found = e2e::FindTopLevel({kMainTitle, kFormClass, 0, false});
  for (const e2e::WindowInfo& w : found)
    if (e2e::DesignName(w.hwnd) == kMainDesign) return &w;
  return nullptr;
}

int Screen(int item) {
  std::vector<e2e::WindowInfo> found;
  const e2e::WindowInfo* main = Monitor(found);
  if (main == nullptr) {
    std::fprintf(stderr, "qvsoakprobe: no monitor window\n");
    return 1;
  }
  const DWORD pid = main->pid;
  CloseOthers(pid);
  if (!e2e::PostTrayMouse(main->hwnd, WM_RBUTTONUP) || !e2e::ChooseMenuItemByArrows(pid, item)) {
    e2e::DismissMenu(pid, Ms{2000});
    std::fprintf(stderr, "qvsoakprobe: the tray menu did not take item %d\n", item);
    return 1;
  }
  std::wstring opened;
  e2e::WaitUntil(
      [&] {
        const std::vector<HWND> open = OtherWindows(pid);
        if (!open.empty()) opened = e2e::DesignName(open.front());
        return !open.empty();
      },
      Ms{15000}, Ms{100});
  // Let it draw and take a tick or two of the monitor's.
  Sleep(1500);
  const bool closed = CloseOthers(pid);
  std::printf("item %d opened %ls%s\n", item, opened.empty() ? L"nothing" : opened.c_str(),
              closed ? "" : " and did not close");
  return opened.empty() || !closed ? 1 : 0;
}

int Close() {
  std::vector<e2e::WindowInfo> found;
  const e2e::WindowInfo* main = Monitor(found);
  if (main == nullptr) return 0;
  const size_t open = OtherWindows(main->pid).size();
  const bool closed = CloseOthers(main->pid);
  std::printf("closed %zu\n", open);
  return closed ? 0 : 1;
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
  const std::wstring command = argc > 1 ? argv[1] : L"";
  if (command == L"sample" && argc == 3) return Sample(argv[2]);
  if (command == L"kill" && argc == 3) return Kill(argv[2]);
  if (command == L"taskbar" && argc == 2) return Taskbar();
  if (command == L"screen" && argc == 3) return Screen(_wtoi(argv[2]));
  if (command == L"close" && argc == 2) return Close();
  if (command == L"monitor" && argc == 2) return Sample(kMonitorExe);
  std::fprintf(stderr,
               "usage: qvsoakprobe sample EXE | kill EXE | taskbar | screen N | close | monitor\n");
  return 2;
}
