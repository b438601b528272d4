#include "platform/win32/Win32Text.h"
#include "platform/win32/Win32SystemInfo.h"

#include <tlhelp32.h>

#include <vector>

#include "platform/portable/CommandLine.h"
#include "platform/win32/Win32Handles.h"

namespace platform {
namespace {

using win32::FromWide;
using win32::NoThrow;
using win32::Wide;

OSVERSIONINFOEXW Version() {
  OSVERSIONINFOEXW info{};
  info.dwOSVersionInfoSize = sizeof(info);
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
  ::GetVersionExW(reinterpret_cast<OSVERSIONINFOW*>(&info));
#pragma GCC diagnostic pop
  return info;
}

int TwipsPerPixel(int capability) {
  win32::WindowDC screen(nullptr);
  if (!screen) return 15;
  const int dpi = ::GetDeviceCaps(screen.Get(), capability);
  return dpi > 0 ? 1440 / dpi : 15;
}

// The full path of this program's file; "" when it cannot be had.
Text ModulePath() {
  std::vector<wchar_t> buffer(MAX_PATH);
  for (;;) {
    DWORD got = ::GetModuleFileNameW(nullptr, buffer.data(), static_cast<DWORD>(buffer.size()));
    if (got == 0) return Text();
    if (got < buffer.size()) return FromWide(buffer.data(), got);
    if (buffer.size() >= 32768) return Text();
    buffer.resize(buffer.size() * 2);
  }
}

std::size_t LastSeparator(const Text& path) { return path.find_last_of(u"\\/"); }

Text ProcessImagePath(DWORD pid) {
  win32::UniqueHandle process(::OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, pid));
  if (!process) return Text();
  std::vector<wchar_t> buffer(32768);
  DWORD size = static_cast<DWORD>(buffer.size());
  Text path;
  if (::QueryFullProcessImageNameW(process.Get(), 0, buffer.data(), &size))
    path = FromWide(buffer.data(), size);
  return path;
}

}  // namespace

unsigned long Win32SystemInfo::PlatformId() noexcept { return Version().dwPlatformId; }
unsigned long Win32SystemInfo::MajorVersion() noexcept { return Version().dwMajorVersion; }
unsigned long Win32SystemInfo::MinorVersion() noexcept { return Version().dwMinorVersion; }
unsigned long Win32SystemInfo::BuildNumber() noexcept { return Version().dwBuildNumber; }

int Win32SystemInfo::TwipsPerPixelX() noexcept { return TwipsPerPixel(LOGPIXELSX); }
int Win32SystemInfo::TwipsPerPixelY() noexcept { return TwipsPerPixel(LOGPIXELSY); }

Rect Win32SystemInfo::WorkArea() noexcept {
  RECT rc{};
  if (!::SystemParametersInfoW(SPI_GETWORKAREA, 0, &rc, 0)) return Screen();
  return Rect{rc.left, rc.top, rc.right, rc.bottom};
}

Rect Win32SystemInfo::Screen() noexcept {
  return Rect{0, 0, ::GetSystemMetrics(SM_CXSCREEN), ::GetSystemMetrics(SM_CYSCREEN)};
}

Text Win32SystemInfo::ComputerName() noexcept {
  return NoThrow(Text(), [] {
    wchar_t buffer[MAX_COMPUTERNAME_LENGTH + 1] = {};
    DWORD size = MAX_COMPUTERNAME_LENGTH + 1;
    if (!::GetComputerNameW(buffer, &size)) return Text();
    return FromWide(buffer, size);
  });
}

Text Win32SystemInfo::ProgramFolder() noexcept {
  return NoThrow(Text(), [] {
    Text path = ModulePath();
    std::size_t sep = LastSeparator(path);
    return sep == Text::npos ? Text() : path.substr(0, sep);
  });
}

Text Win32SystemInfo::ProgramFileName() noexcept {
  return NoThrow(Text(), [] {
    Text path = ModulePath();
    std::size_t sep = LastSeparator(path);
    return sep == Text::npos ? path : path.substr(sep + 1);
  });
}

Text Win32SystemInfo::SystemFolder() noexcept {
  return NoThrow(Text(), [] {
    wchar_t buffer[MAX_PATH + 1] = {};
    const UINT length = ::GetSystemDirectoryW(buffer, MAX_PATH + 1);
    if (length == 0 || length > MAX_PATH) return Text();
    return FromWide(buffer, length);
  });
}

Text Win32SystemInfo::CommandLine() noexcept {
  return NoThrow(Text(), [] { return ArgumentsOf(FromWide(::GetCommandLineW()), ModulePath()); });
}

std::optional<Text> Win32SystemInfo::Environment(const Text& name) noexcept {
  return NoThrow(std::optional<Text>(), [&]() -> std::optional<Text> {
    std::vector<wchar_t> buffer(256);
    for (;;) {
      ::SetLastError(0);
      DWORD got =
          ::GetEnvironmentVariableW(Wide(name), buffer.data(), static_cast<DWORD>(buffer.size()));
      if (got == 0) {
        if (::GetLastError() == ERROR_ENVVAR_NOT_FOUND) return std::nullopt;
        return Text();
      }
      if (got < buffer.size()) return FromWide(buffer.data(), got);
      buffer.resize(got + 1);  // `got` is the size needed, terminator included
    }
  });
}

bool Win32SystemInfo::PreviousInstanceRunning() noexcept {
  return NoThrow(false, [] {
    Text self = ModulePath();
    if (self.empty()) return false;
    DWORD selfPid = ::GetCurrentProcessId();
    DWORD selfSession = 0;
    if (!::ProcessIdToSessionId(selfPid, &selfSession)) return false;

    win32::UniqueHandle snapshot(::CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
    if (!snapshot) return false;
    bool found = false;
    PROCESSENTRY32W entry{};
    entry.dwSize = sizeof(entry);
    for (BOOL more = ::Process32FirstW(snapshot.Get(), &entry); more && !found;
         more = ::Process32NextW(snapshot.Get(), &entry)) {
      if (entry.th32ProcessID == selfPid) continue;
      DWORD session = 0;
      if (!::ProcessIdToSessionId(entry.th32ProcessID, &session) || session != selfSession)
        continue;
      Text path = ProcessImagePath(entry.th32ProcessID);
      found = !path.empty() &&
              ::CompareStringOrdinal(Wide(path), static_cast<int>(path.size()), Wide(self),
                                     static_cast<int>(self.size()), TRUE) == CSTR_EQUAL;
    }
    return found;
  });
}

}  // namespace platform
