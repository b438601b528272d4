#include "platform/win32/Win32Text.h"
#include "platform/win32/Win32Profile.h"

#include <algorithm>
#include <vector>

namespace platform {

using win32::FromWide;
using win32::NoThrow;
using win32::Wide;

Text Win32Profile::GetString(const Text& section, const Text& key, const Text& defaultValue,
                             std::size_t bufferChars, const Text& file) noexcept {
  return NoThrow(Text(), [&] {
    // The caller's buffer size is passed on as it is: the cut to bufferChars - 1 and
    // the way a quoted value is cut are the platform's.
    std::vector<wchar_t> buffer(bufferChars + 1, L'\0');
    DWORD size = static_cast<DWORD>(std::min<std::size_t>(bufferChars, 0x7FFFFFFF));
    ::SetLastError(0);
    DWORD got = ::GetPrivateProfileStringW(Wide(section), Wide(key), Wide(defaultValue),
                                           buffer.data(), size, Wide(file));
    lastError_ = ::GetLastError();
    return FromWide(buffer.data(), std::min<std::size_t>(got, bufferChars));
  });
}

bool Win32Profile::WriteString(const Text& section, const std::optional<Text>& key,
                               const std::optional<Text>& value, const Text& file) noexcept {
  ::SetLastError(0);
  BOOL ok = ::WritePrivateProfileStringW(Wide(section), key ? Wide(*key) : nullptr,
                                         value ? Wide(*value) : nullptr, Wide(file));
  // On success the platform leaves whatever its inner calls set; only a failure counts.
  lastError_ = ok ? 0 : ::GetLastError();
  return ok != FALSE;
}

}  // namespace platform
