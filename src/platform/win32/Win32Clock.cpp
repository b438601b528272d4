#include "platform/win32/Win32Text.h"
#include "platform/win32/Win32Clock.h"

namespace platform {

base::DateTime Win32Clock::Now() noexcept {
  SYSTEMTIME st{};
  ::GetLocalTime(&st);
  return base::DateTime{st.wYear, st.wMonth, st.wDay, st.wHour, st.wMinute, st.wSecond};
}

std::uint64_t Win32Clock::TickMs() noexcept { return ::GetTickCount64(); }

void Win32Clock::Sleep(std::uint32_t ms) noexcept { ::Sleep(ms); }

}  // namespace platform
