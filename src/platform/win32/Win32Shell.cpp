#include "platform/win32/Win32Text.h"
#include "platform/win32/Win32Shell.h"

#include <shellapi.h>

#include <algorithm>
#include <cstdint>
#include <vector>

#include "platform/win32/Win32Handles.h"

namespace platform {

using win32::NoThrow;
using win32::Wide;

long Win32Shell::Open(const Text& target) noexcept {
  HINSTANCE result =
      ::ShellExecuteW(nullptr, L"open", Wide(target), nullptr, nullptr, SW_SHOWNORMAL);
  return static_cast<long>(reinterpret_cast<std::intptr_t>(result));
}

long Win32Shell::Execute(std::uintptr_t ownerWindow, const Text& verb, const Text& file,
                         const Text& parameters, const Text& folder, int showCommand) noexcept {
  HINSTANCE result = ::ShellExecuteW(reinterpret_cast<HWND>(ownerWindow), Wide(verb), Wide(file),
                                     Wide(parameters), Wide(folder), showCommand);
  return static_cast<long>(reinterpret_cast<std::intptr_t>(result));
}

bool Win32Shell::Run(const Text& commandLine, bool hidden) noexcept {
  return NoThrow(false, [&] {
    // CreateProcessW may write into the command line, so it gets its own copy.
    std::vector<wchar_t> line(commandLine.size() + 1, L'\0');
    std::copy(commandLine.begin(), commandLine.end(), line.begin());
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    DWORD flags = 0;
    if (hidden) {
      startup.dwFlags = STARTF_USESHOWWINDOW;
      startup.wShowWindow = SW_HIDE;
      flags = CREATE_NO_WINDOW;
    }
    PROCESS_INFORMATION process{};
    if (!::CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, flags, nullptr, nullptr,
                          &startup, &process))
      return false;
    // The program runs on its own: its handles are given back at once.
    win32::UniqueHandle processHandle(process.hProcess);
    win32::UniqueHandle threadHandle(process.hThread);
    return true;
  });
}

}  // namespace platform
