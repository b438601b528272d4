#pragma once
// What the About window and the feedback report ask of the system: the version
// resource of a file and the items of the regional settings.
#include <array>
#include <cstdint>
#include <optional>

#include "base/Text.h"

namespace platform {

using base::Text;

// The four numbers of a file's fixed version information: the high and low halves of
// the most and of the least significant word of the file version.
using FileVersion = std::array<std::uint16_t, 4>;

class IFileVersions {
 public:
  virtual ~IFileVersions() = default;
  // nullopt when the file is missing, has no version resource, or a step fails.
  virtual std::optional<FileVersion> Read(const Text& path) = 0;
};

enum class LocaleSource {
  UserDefault,    // the locale of GetUserDefaultLCID
  SystemLanguage  // the language id of GetSystemDefaultLangID
};

class ILocaleInfo {
 public:
  virtual ~ILocaleInfo() = default;
  // The locale or language id itself.
  virtual unsigned long Id(LocaleSource source) = 0;
  // GetLocaleInfoW of one item (the platform's item number), asked first for the size
  // and then for the text; nullopt when either call fails. Not yet cut at NUL.
  virtual std::optional<Text> Item(LocaleSource source, unsigned long item) = 0;
};

}  // namespace platform
