#include "platform/win32/Win32SupportInfo.h"

#include "platform/win32/Win32Text.h"
// Win32Text.h brings <windows.h> first.
#include <winver.h>

#include <cstring>
#include <vector>

namespace platform {

std::optional<FileVersion> Win32FileVersions::Read(const Text& path) noexcept {
  return win32::NoThrow(std::optional<FileVersion>(), [&]() -> std::optional<FileVersion> {
    DWORD handle = 0;
    const DWORD size = GetFileVersionInfoSizeW(win32::Wide(path), &handle);
    if (size == 0) return std::nullopt;
    std::vector<unsigned char> buffer(size);
    if (!GetFileVersionInfoW(win32::Wide(path), 0, size, buffer.data())) return std::nullopt;
    void* block = nullptr;
    UINT length = 0;
    if (!VerQueryValueW(buffer.data(), L"\\", &block, &length) || block == nullptr ||
        length < sizeof(VS_FIXEDFILEINFO))
      return std::nullopt;
    VS_FIXEDFILEINFO info;
    std::memcpy(&info, block, sizeof(info));
    return FileVersion{HIWORD(info.dwFileVersionMS), LOWORD(info.dwFileVersionMS),
                       HIWORD(info.dwFileVersionLS), LOWORD(info.dwFileVersionLS)};
  });
}

unsigned long Win32LocaleInfo::Id(LocaleSource source) noexcept {
  return source == LocaleSource::SystemLanguage ? GetSystemDefaultLangID() : GetUserDefaultLCID();
}

std::optional<Text> Win32LocaleInfo::Item(LocaleSource source, unsigned long item) noexcept {
  return win32::NoThrow(std::optional<Text>(), [&]() -> std::optional<Text> {
    const LCID locale = static_cast<LCID>(Id(source));
    const int size = GetLocaleInfoW(locale, item, nullptr, 0);
    if (size <= 0) return std::nullopt;
    std::vector<wchar_t> buffer(static_cast<std::size_t>(size));
    const int got = GetLocaleInfoW(locale, item, buffer.data(), size);
    if (got <= 0) return std::nullopt;
    return win32::FromWide(buffer.data(), static_cast<std::size_t>(got));
  });
}

}  // namespace platform
