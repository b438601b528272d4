#include "platform/win32/Win32Text.h"
#include "platform/win32/Win32Locale.h"

#include <vector>

namespace platform {
namespace {

Text Info(LCTYPE type) noexcept {
  return win32::NoThrow(Text(), [type] {
    int needed = ::GetLocaleInfoW(LOCALE_USER_DEFAULT, type, nullptr, 0);
    if (needed <= 0) return Text();
    std::vector<wchar_t> buffer(static_cast<std::size_t>(needed));
    int got = ::GetLocaleInfoW(LOCALE_USER_DEFAULT, type, buffer.data(), needed);
    if (got <= 0) return Text();
    return win32::FromWide(buffer.data(), static_cast<std::size_t>(got - 1));  // no terminator
  });
}

}  // namespace

Text Win32Locale::DateSeparator() noexcept { return Info(LOCALE_SDATE); }
Text Win32Locale::TimeSeparator() noexcept { return Info(LOCALE_STIME); }
Text Win32Locale::DecimalSeparator() noexcept { return Info(LOCALE_SDECIMAL); }
Text Win32Locale::ThousandsSeparator() noexcept { return Info(LOCALE_STHOUSAND); }
Text Win32Locale::ShortDateFormat() noexcept { return Info(LOCALE_SSHORTDATE); }
Text Win32Locale::TimeFormat() noexcept { return Info(LOCALE_STIMEFORMAT); }
Text Win32Locale::AmSymbol() noexcept { return Info(LOCALE_S1159); }
Text Win32Locale::PmSymbol() noexcept { return Info(LOCALE_S2359); }

}  // namespace platform
