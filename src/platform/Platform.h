#pragma once
// All platform services in one bundle, handed by reference to the logic. Services
// a program does not use may stay null; the logic checks before it calls.
#include "platform/ClosedObjects.h"
#include "platform/Clock.h"
#include "platform/ComServer.h"
#include "platform/DialUp.h"
#include "platform/FileSystem.h"
#include "platform/Locale.h"
#include "platform/Media.h"
#include "platform/Mutex.h"
#include "platform/ProcessList.h"
#include "platform/Profile.h"
#include "platform/Registry.h"
#include "platform/ServiceManager.h"
#include "platform/Shell.h"
#include "platform/SupportInfo.h"
#include "platform/SystemInfo.h"
#include "platform/UiHost.h"

namespace platform {

struct Platform {
  IFileSystem* fs = nullptr;
  IProfile* profile = nullptr;
  IRegistry* registry = nullptr;
  IClock* clock = nullptr;
  IMutexService* mutex = nullptr;
  ISystemInfo* system = nullptr;
  IShell* shell = nullptr;
  ILocale* locale = nullptr;
  IProcessList* processes = nullptr;
  IServiceManager* services = nullptr;
  IUiHost* ui = nullptr;
  IComServer* com = nullptr;
  IDialUp* dialUp = nullptr;
  ISound* sound = nullptr;
  IHelp* help = nullptr;
  IOsNameProvider* osName = nullptr;
  ISettingsProvider* settingsProvider = nullptr;
  INetworkObjects* network = nullptr;
  IFileVersions* versions = nullptr;
  ILocaleInfo* localeInfo = nullptr;
};

}  // namespace platform
