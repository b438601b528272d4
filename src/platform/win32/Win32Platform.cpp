#include "platform/win32/Win32Platform.h"

namespace platform {

Win32Platform::Win32Platform() {
  platform_.fs = &fs;
  platform_.profile = &profile;
  platform_.registry = &registry;
  platform_.clock = &clock;
  platform_.mutex = &mutex;
  platform_.system = &system;
  platform_.shell = &shell;
  platform_.locale = &locale;
  platform_.osName = &osName;
  platform_.processes = &processes;
  platform_.services = &services;
  platform_.ui = &ui;
  platform_.network = &network;
  platform_.versions = &versions;
  platform_.localeInfo = &localeInfo;
  platform_.dialUp = &dialUp;
  platform_.sound = &sound;
}

}  // namespace platform
