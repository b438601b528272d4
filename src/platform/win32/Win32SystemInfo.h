#pragma once
#include "platform/SystemInfo.h"

namespace platform {

class Win32SystemInfo : public ISystemInfo {
 public:
  // The version as GetVersionExW reports it, which depends on the program's manifest:
  // without a supportedOS entry for Windows 10, Windows 10 says 6.2.
  unsigned long PlatformId() noexcept override;
  unsigned long MajorVersion() noexcept override;
  unsigned long MinorVersion() noexcept override;
  unsigned long BuildNumber() noexcept override;
  int TwipsPerPixelX() noexcept override;
  int TwipsPerPixelY() noexcept override;
  Rect WorkArea() noexcept override;
  Rect Screen() noexcept override;
  Text ComputerName() noexcept override;
  Text ProgramFolder() noexcept override;
  Text ProgramFileName() noexcept override;
  Text SystemFolder() noexcept override;
  Text CommandLine() noexcept override;
  std::optional<Text> Environment(const Text& name) noexcept override;
  bool PreviousInstanceRunning() noexcept override;
};

}  // namespace platform
