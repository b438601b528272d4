#pragma once
// One of each Windows service, and the bundle the logic is handed. Services that
// have no Windows implementation yet stay null in the bundle.
#include "platform/Platform.h"
#include "platform/win32/Win32Clock.h"
#include "platform/win32/Win32DialUp.h"
#include "platform/win32/Win32FileSystem.h"
#include "platform/win32/Win32Locale.h"
#include "platform/win32/Win32MutexService.h"
#include "platform/win32/Win32Network.h"
#include "platform/win32/Win32OsNameProvider.h"
#include "platform/win32/Win32ProcessList.h"
#include "platform/win32/Win32Profile.h"
#include "platform/win32/Win32Registry.h"
#include "platform/win32/Win32ServiceManager.h"
#include "platform/win32/Win32Shell.h"
#include "platform/win32/Win32Sound.h"
#include "platform/win32/Win32SupportInfo.h"
#include "platform/win32/Win32SystemInfo.h"
#include "platform/win32/Win32UiHost.h"

namespace platform {

class Win32Platform {
 public:
  Win32Platform();
  Win32Platform(const Win32Platform&) = delete;
  Win32Platform& operator=(const Win32Platform&) = delete;

  Platform& Get() { return platform_; }

  Win32FileSystem fs;
  Win32Profile profile;
  Win32Registry registry;
  Win32Clock clock;
  Win32MutexService mutex;
  Win32SystemInfo system;
  Win32Shell shell;
  Win32Locale locale;
  Win32OsNameProvider osName;
  Win32ProcessList processes;
  Win32ServiceManager services;
  Win32NetworkObjects network;
  Win32FileVersions versions;
  Win32LocaleInfo localeInfo;
  Win32DialUp dialUp;
  Win32Sound sound;
  Win32UiHost ui;  // makes its windows on first use

 private:
  Platform platform_;
};

}  // namespace platform
