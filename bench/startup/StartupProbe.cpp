// The start-up benchmark's hand inside Wine (bench/startup.sh):
//
//   bench_startup_probe window EXE [WORD]  start EXE, print the milliseconds until it has
//                                          a visible top-level window and its working set
//                                          two seconds later, then end it
//
// The time runs from just before CreateProcessW to the first look that finds a visible
// window of the new process, looked for every millisecond.
#include <windows.h>
#include <psapi.h>

#include <cstdio>
#include <string>

#include "platform/win32/Win32Handles.h"

namespace {

struct Search {
  DWORD pid;
  bool found;
};

BOOL CALLBACK LookAt(HWND window, LPARAM param) {
  auto* search = reinterpret_cast<Search*>(param);
  DWORD pid = 0;
  GetWindowThreadProcessId(window, &pid);
  if (pid == search->pid && IsWindowVisible(window)) {
    search->found = true;
    return FALSE;
  }
  return TRUE;
}

double Ms(LARGE_INTEGER from, LARGE_INTEGER to, LARGE_INTEGER frequency) {
  return 1000.0 * static_cast<double>(to.QuadPart - from.QuadPart) /
         static_cast<double>(frequency.QuadPart);
}

int Window(const std::wstring& exe, const std::wstring& word) {
  std::wstring folder = exe.substr(0, exe.find_last_of(L"\\/"));
  std::wstring line = L"\"" + exe + L"\"" + (word.empty() ? L"" : L" " + word);
  STARTUPINFOW si{};
  si.cb = sizeof(si);
  PROCESS_INFORMATION pi{};
  LARGE_INTEGER frequency, start, now;
  QueryPerformanceFrequency(&frequency);
  QueryPerformanceCounter(&start);
  if (!CreateProcessW(exe.c_str(), line.data(), nullptr, nullptr, FALSE, 0, nullptr, folder.c_str(),
                      &si, &pi)) {
    std::fprintf(stderr, "probe: cannot start %ls (%lu)\n", exe.c_str(), GetLastError());
    return 1;
  }
  const platform::win32::UniqueHandle process(pi.hProcess), thread(pi.hThread);
  Search search{pi.dwProcessId, false};
  double ms = -1;
  for (;;) {
    EnumWindows(LookAt, reinterpret_cast<LPARAM>(&search));
    QueryPerformanceCounter(&now);
    if (search.found) {
      ms = Ms(start, now, frequency);
      break;
    }
    if (Ms(start, now, frequency) > 30000 || WaitForSingleObject(process.Get(), 0) == 0) break;
    Sleep(1);
  }
  Sleep(2000);
  PROCESS_MEMORY_COUNTERS memory{};
  memory.cb = sizeof(memory);
  GetProcessMemoryInfo(process.Get(), &memory, sizeof(memory));
  std::printf("window_ms=%.1f working_set_kb=%zu\n", ms, memory.WorkingSetSize / 1024);
  TerminateProcess(process.Get(), 0);
  WaitForSingleObject(process.Get(), 10000);
  return ms < 0 ? 1 : 0;
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
  if (argc >= 3 && std::wstring(argv[1]) == L"window")
    return Window(argv[2], argc >= 4 ? argv[3] : L"");
  std::fprintf(stderr, "usage: bench_startup_probe window EXE [WORD]\n");
  return 2;
}
