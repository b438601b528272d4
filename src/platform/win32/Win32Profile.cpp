#include "platform/win32/Win32Text.h"
#include "platform/win32/Win32Profile.h"

#include <algorithm>
#include <vector>

#include "platform/WholeFile.h"
#include "platform/win32/Win32FileSystem.h"

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
  return NoThrow(false, [&] {
    // The platform's function makes the change on a copy beside the file, and the copy
    // then takes the file's place in one step: the engine reads the old settings or
    // the new, and a full disk leaves the old ones.
    Win32FileSystem fs;
    const Text copy = TemporaryFileFor(file);
    auto before = fs.ReadAll(file);
    fs.DeleteFile(copy);
    if (before && !fs.WriteAll(copy, *before)) {
      lastError_ = ::GetLastError();
      fs.DeleteFile(copy);
      return false;
    }
    ::SetLastError(0);
    BOOL ok = ::WritePrivateProfileStringW(Wide(section), key ? Wide(*key) : nullptr,
                                           value ? Wide(*value) : nullptr, Wide(copy));
    DWORD error = ok ? 0 : ::GetLastError();
    // Drops the platform's cached copy of the file before it is renamed.
    ::WritePrivateProfileStringW(nullptr, nullptr, nullptr, Wide(copy));
    auto after = ok ? fs.ReadAll(copy) : std::nullopt;
    if (ok && key && value && after && after->empty()) {
      // A key was written and the copy holds nothing: the platform's function lost its
      // write (on a full disk under Wine it answers success with an empty file). The
      // file keeps what it had; a missing one is not created empty.
      ok = FALSE;
      error = ERROR_WRITE_FAULT;
    }
    if (!ok || !after || after == before) {
      // Failed, or nothing changed (a missing file is then not created).
      fs.DeleteFile(copy);
      lastError_ = error;
      return ok != FALSE;
    }
    WriteResult written = WriteWholeFile(fs, file, *after);
    fs.DeleteFile(copy);
    // The disk's own reason is what the settings trace gives.
    lastError_ = written ? 0 : fs.LastErrorNumber();
    if (!written && lastError_ == 0) lastError_ = ERROR_WRITE_FAULT;
    return written.ok;
  });
}

}  // namespace platform
