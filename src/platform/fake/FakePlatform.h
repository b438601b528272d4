#pragma once
// A whole platform of fakes for one program under test. Profile files are the
// portable reader and writer over the fake disk, so settings land in fake files
// that a test can inspect byte for byte.
#include <memory>

#include "platform/Platform.h"
#include "platform/fake/FakeEngineServices.h"
#include "platform/fake/FakeFileSystem.h"
#include "platform/fake/FakeServices.h"
#include "platform/fake/FakeSupport.h"
#include "platform/portable/PortableProfile.h"

namespace platform {

class FakePlatform {
 public:
  explicit FakePlatform(std::shared_ptr<FakeKernel> kernel = std::make_shared<FakeKernel>())
      : mutex(std::move(kernel)), dialUp(&clock), profile(fs) {
    p.fs = &fs;
    p.profile = &profile;
    p.registry = &registry;
    p.clock = &clock;
    p.mutex = &mutex;
    p.system = &system;
    p.shell = &shell;
    p.locale = &locale;
    p.ui = &ui;
    p.osName = &osName;
    p.settingsProvider = &settings;
    p.processes = &processes;
    p.services = &services;
    p.network = &network;
    p.versions = &versions;
    p.localeInfo = &localeInfo;
    p.dialUp = &dialUp;
    p.sound = &sound;
  }
  FakePlatform(const FakePlatform&) = delete;
  FakePlatform& operator=(const FakePlatform&) = delete;

  Platform& Get() { return p; }

  FakeFileSystem fs;
  FakeRegistry registry;
  FakeClock clock;
  FakeMutexService mutex;
  FakeSystemInfo system;
  FakeShell shell;
  FakeLocale locale;
  FakeUiHost ui;
  FakeOsNameProvider osName;
  FakeSettingsProvider settings;
  FakeProcessList processes;
  FakeServiceManager services;
  FakeNetwork network;
  FakeFileVersions versions;
  FakeLocaleInfo localeInfo;
  FakeDialUp dialUp;
  FakeSound sound;
  PortableProfile profile;

 private:
  Platform p;
};

}  // namespace platform
