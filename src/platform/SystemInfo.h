#pragma once
#include <optional>

#include "base/Text.h"

namespace platform {

using base::Text;

struct Rect {
  long left = 0, top = 0, right = 0, bottom = 0;
  long Width() const { return right - left; }
  long Height() const { return bottom - top; }
};

class ISystemInfo {
 public:
  virtual ~ISystemInfo() = default;
  virtual unsigned long PlatformId() = 0;  // 2 = NT family
  virtual unsigned long MajorVersion() = 0;
  virtual unsigned long MinorVersion() = 0;
  virtual unsigned long BuildNumber() = 0;
  virtual int TwipsPerPixelX() = 0;  // 1440 / logical dots per inch
  virtual int TwipsPerPixelY() = 0;
  virtual Rect WorkArea() = 0;  // pixels
  virtual Rect Screen() = 0;    // pixels
  virtual Text ComputerName() = 0;
  virtual Text ProgramFolder() = 0;    // folder of the running program, no trailing '\'
  virtual Text ProgramFileName() = 0;  // "QVMonitor.exe"
  virtual Text SystemFolder() = 0;     // the system's own programs ("C:\Windows\system32")
  virtual Text CommandLine() = 0;      // the arguments only, as given
  virtual std::optional<Text> Environment(const Text& name) = 0;
  // Whether another process of this same program file runs in this logon session.
  virtual bool PreviousInstanceRunning() = 0;
};

}  // namespace platform
