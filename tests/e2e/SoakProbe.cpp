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
//   qvsoakprobe handles EXE       every handle of the process named EXE: the type number
//                                 of the handle table, the type's name, the object's name
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
#include <optional>
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

// The entries of the system's handle table that belong to `pid`; nothing when the table
// cannot be read.
std::optional<std::vector<HandleEntry>> HandlesOf(DWORD pid) {
  struct Table {  // SYSTEM_HANDLE_INFORMATION
    ULONG count;
    HandleEntry entries[1];
  };
  using Query = LONG(WINAPI*)(ULONG, PVOID, ULONG, PULONG);
  auto query = reinterpret_cast<Query>(reinterpret_cast<void*>(
      GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "NtQuerySystemInformation")));
  if (query == nullptr) return std::nullopt;
  std::vector<unsigned char> buffer(1 << 16);
  for (int tries = 0; tries < 12; ++tries) {
    ULONG needed = 0;
    const LONG status = query(16, buffer.data(), static_cast<ULONG>(buffer.size()), &needed);
    if (status == static_cast<LONG>(0xC0000004)) {  // the buffer is too small
      buffer.resize(std::max<size_t>(buffer.size() * 2, needed + 4096));
      continue;
    }
    if (status != 0) return std::nullopt;
    const auto* table = reinterpret_cast<const Table*>(buffer.data());
    std::vector<HandleEntry> mine;
    for (ULONG i = 0; i < table->count; ++i)
      if (table->entries[i].process == static_cast<USHORT>(pid)) mine.push_back(table->entries[i]);
    return mine;
  }
  return std::nullopt;
}

// The handles a process holds, from the system's handle table: GetProcessHandleCount
// answers 0 under Wine, this table does not. -1 when the table cannot be read.
long HandleCount(DWORD pid) {
  const auto handles = HandlesOf(pid);
  return handles ? static_cast<long>(handles->size()) : -1;
}

// Each handle a process holds: its type and the name of its object, one a line, from a
// copy of the handle; to tell whose a handle is.
int ListHandles(const wchar_t* exe) {
  const std::vector<ProcessEntry> found = ProcessesNamed(exe);
  if (found.empty()) return 1;
  const DWORD pid = found.front().pid;
  using QueryObject = LONG(WINAPI*)(HANDLE, ULONG, PVOID, ULONG, PULONG);
  auto queryObject = reinterpret_cast<QueryObject>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "NtQueryObject")));
  const auto handles = HandlesOf(pid);
  if (!queryObject || !handles) return 1;
  platform::win32::UniqueHandle held(OpenProcess(PROCESS_DUP_HANDLE, FALSE, pid));
  if (!held) return 1;
  const HANDLE process = held.Get();
  // The text of a UNICODE_STRING at the start of what NtQueryObject wrote.
  auto text = [](const std::vector<unsigned char>& info) {
    const USHORT bytes = *reinterpret_cast<const USHORT*>(info.data());
    const wchar_t* chars = *reinterpret_cast<wchar_t* const*>(info.data() + sizeof(void*));
    return chars ? std::wstring(chars, bytes / sizeof(wchar_t)) : std::wstring();
  };
  for (const HandleEntry& e : *handles) {
    HANDLE copy = nullptr;
    std::wstring type = L"?", name;
    if (DuplicateHandle(process, reinterpret_cast<HANDLE>(static_cast<ULONG_PTR>(e.value)),
                        GetCurrentProcess(), &copy, 0, FALSE, DUPLICATE_SAME_ACCESS)) {
      const platform::win32::UniqueHandle heldCopy(copy);
      std::vector<unsigned char> info(4096);
      if (queryObject(copy, 2, info.data(), static_cast<ULONG>(info.size()), nullptr) == 0)
        type = text(info);
      if (queryObject(copy, 1, info.data(), static_cast<ULONG>(info.size()), nullptr) == 0)
        name = text(info);
    }
    std::printf("%u %ls %ls\n", e.type, type.c_str(), name.c_str());
  }
  return 0;
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
  if (command == L"handles" && argc == 3) return ListHandles(argv[2]);
  std::fprintf(stderr,
               "usage: qvsoakprobe sample EXE | kill EXE | taskbar | screen N | close | monitor"
               " | handles EXE\n");
  return 2;
}
