#include "platform/win32/Win32Text.h"
#include "platform/win32/Win32ProcessList.h"
#include "platform/win32/Win32Handles.h"

#include <psapi.h>
#include <tlhelp32.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

// The API's macros would rename the interface's methods.
#undef Process32First
#undef Process32Next

namespace platform {

using win32::FromWide;
using win32::NoThrow;
using win32::Wide;

namespace {

HANDLE H(OsHandle handle) { return reinterpret_cast<HANDLE>(handle); }
OsHandle FromH(HANDLE handle) {
  return handle == INVALID_HANDLE_VALUE ? 0 : reinterpret_cast<OsHandle>(handle);
}

// The snapshot entry in the single-byte form, in a buffer that holds the size the
// caller claims (the size field may say more than the structure has).
bool SnapshotStep(OsHandle snapshot, std::uint32_t entrySize, SnapshotEntry& entry, bool first) {
  return NoThrow(false, [&] {
    std::vector<unsigned long long> buffer(
        (std::max<std::size_t>(entrySize, sizeof(tagPROCESSENTRY32)) + 7) / 8);
    auto* e = reinterpret_cast<tagPROCESSENTRY32*>(buffer.data());
    e->dwSize = entrySize;
    const BOOL ok = first ? ::Process32First(H(snapshot), e) : ::Process32Next(H(snapshot), e);
    if (!ok) return false;
    entry.processId = e->th32ProcessID;
    const char* name = e->szExeFile;
    const std::size_t n = strnlen(name, sizeof(e->szExeFile));
    // ANSI names: bytes of the system code page; the engine's names are plain ASCII.
    int units = ::MultiByteToWideChar(CP_ACP, 0, name, static_cast<int>(n), nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(units), L'\0');
    if (units > 0) ::MultiByteToWideChar(CP_ACP, 0, name, static_cast<int>(n), wide.data(), units);
    entry.exeFile = FromWide(wide.c_str(), wide.size());
    return true;
  });
}

}  // namespace

bool Win32ProcessList::EnumProcessIds(std::uint32_t byteCount, std::vector<std::uint32_t>& ids,
                                      std::uint32_t& bytesReturned) noexcept {
  return NoThrow(false, [&] {
    ids.assign(byteCount / 4, 0);
    DWORD returned = 0;
    if (!::K32EnumProcesses(reinterpret_cast<DWORD*>(ids.data()), byteCount, &returned))
      return false;
    bytesReturned = returned;
    return true;
  });
}

OsHandle Win32ProcessList::OpenProcess(std::uint32_t access, bool inheritHandle,
                                       std::uint32_t processId) noexcept {
  return reinterpret_cast<OsHandle>(::OpenProcess(access, inheritHandle ? TRUE : FALSE, processId));
}

bool Win32ProcessList::EnumModules(OsHandle process, std::uint32_t tableBytes,
                                   std::uintptr_t& firstModule) noexcept {
  return NoThrow(false, [&] {
    std::vector<HMODULE> table((tableBytes + sizeof(HMODULE) - 1) / sizeof(HMODULE) + 1);
    DWORD needed = 0;
    if (!::K32EnumProcessModules(H(process), table.data(), tableBytes, &needed)) return false;
    firstModule = reinterpret_cast<std::uintptr_t>(table[0]);
    return true;
  });
}

Text Win32ProcessList::ModuleFileName(OsHandle process, std::uintptr_t module, std::uint32_t size,
                                      std::uint32_t bufferChars) noexcept {
  return NoThrow(Text(), [&] {
    std::vector<wchar_t> buffer(std::max(bufferChars, size) + 1, L'\0');
    ::K32GetModuleFileNameExW(H(process), reinterpret_cast<HMODULE>(module), buffer.data(), size);
    return FromWide(buffer.data(), bufferChars);
  });
}

OsHandle Win32ProcessList::CreateSnapshot(std::uint32_t flags, std::uint32_t processId) noexcept {
  return FromH(::CreateToolhelp32Snapshot(flags, processId));
}

bool Win32ProcessList::ProcessFirst(OsHandle snapshot, std::uint32_t entrySize,
                                    SnapshotEntry& entry) noexcept {
  return SnapshotStep(snapshot, entrySize, entry, true);
}

bool Win32ProcessList::ProcessNext(OsHandle snapshot, std::uint32_t entrySize,
                                   SnapshotEntry& entry) noexcept {
  return SnapshotStep(snapshot, entrySize, entry, false);
}

bool Win32ProcessList::TerminateProcess(OsHandle process, std::uint32_t exitCode) noexcept {
  return ::TerminateProcess(H(process), exitCode) != FALSE;
}

// The interface's close, called for a handle its caller owns: no holder here.
bool Win32ProcessList::CloseHandle(OsHandle handle) noexcept {
  return ::CloseHandle(H(handle)) != FALSE;
}

std::uint64_t Win32ProcessList::ProcessStartTime(std::uint32_t processId) noexcept {
  const win32::UniqueHandle process(
      ::OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, processId));
  if (!process) return 0;
  FILETIME created{}, exited{}, kernel{}, user{};
  std::uint64_t start = 0;
  if (::GetProcessTimes(process.Get(), &created, &exited, &kernel, &user))
    start = (static_cast<std::uint64_t>(created.dwHighDateTime) << 32) | created.dwLowDateTime;
  return start;
}

OsHandle Win32ProcessList::FindWindowByTitle(const Text& title) noexcept {
  return NoThrow<OsHandle>(0, [&] {
    // The single-byte call, as the engine's window has always been looked up.
    std::string narrow(title.begin(), title.end());
    return reinterpret_cast<OsHandle>(::FindWindowA(nullptr, narrow.c_str()));
  });
}

bool Win32ProcessList::PostMessageA(OsHandle window, std::uint32_t message, std::uintptr_t wParam,
                                    std::intptr_t lParam) noexcept {
  return ::PostMessageA(reinterpret_cast<HWND>(window), message, wParam, lParam) != FALSE;
}

}  // namespace platform
