#pragma once
// The portable services a benchmark's program state runs on: the disk, the profiles,
// the clock and the locale of this machine.
#include "platform/Platform.h"
#include "platform/portable/PortableFileSystem.h"
#include "platform/portable/PortableProfile.h"
#include "platform/portable/PortableServices.h"

namespace bench {

struct PortableBundle {
  PortableBundle() {
    platform.fs = &fs;
    platform.profile = &profile;
    platform.clock = &clock;
    platform.locale = &locale;
  }
  platform::PortableFileSystem fs;
  platform::PortableProfile profile{fs};
  platform::PortableClock clock;
  platform::PortableLocale locale;
  platform::Platform platform;
};

}  // namespace bench
