#pragma once
// Version resources (GetFileVersionInfoSizeW, GetFileVersionInfoW, VerQueryValueW) and
// the regional items (GetLocaleInfoW of the user's locale or the system's language).
#include "platform/SupportInfo.h"

namespace platform {

class Win32FileVersions : public IFileVersions {
 public:
  std::optional<FileVersion> Read(const Text& path) noexcept override;
};

class Win32LocaleInfo : public ILocaleInfo {
 public:
  unsigned long Id(LocaleSource source) noexcept override;
  std::optional<Text> Item(LocaleSource source, unsigned long item) noexcept override;
};

}  // namespace platform
