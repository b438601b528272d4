#pragma once
// In-memory services for tests. Each keeps its state in public members or small
// set-up calls, so a test can arrange the world and read back what was done.
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "platform/ClosedObjects.h"
#include "platform/Clock.h"
#include "platform/DialUp.h"
#include "platform/Locale.h"
#include "platform/Media.h"
#include "platform/Mutex.h"
#include "platform/Registry.h"
#include "platform/Shell.h"
#include "platform/SystemInfo.h"
#include "platform/fake/FakeUiHost.h"

namespace platform {

class FakeRegistry : public IRegistry {
 public:
  std::optional<Text> ReadString(RegRoot root, const Text& key, const Text& name,
                                 std::size_t maxBytes) override;
  bool WriteString(RegRoot root, const Text& key, const Text& name, const Text& value,
                   unsigned long access) override;
  bool DeleteValue(RegRoot root, const Text& key, const Text& name) override;

  bool HasKey(RegRoot root, const Text& key) const;
  std::set<std::pair<RegRoot, Text>> readOnlyKeys;  // writes there fail

 private:
  using KeyId = std::pair<RegRoot, Text>;
  std::map<KeyId, std::map<Text, Text>> keys_;
};

class FakeClock : public IClock {
 public:
  base::DateTime Now() override { return now; }
  std::uint64_t TickMs() override { return tick; }
  void Sleep(std::uint32_t ms) override;

  base::DateTime now{2026, 11, 15, 5, 25, 27};
  std::uint64_t tick = 1000;
  std::uint64_t sleptMs = 0;
};

// The kernel's table of named objects, shared by the programs of one test.
struct FakeKernel {
  std::map<Text, int> openCounts;
  std::set<Text> otherUsersObjects;  // names another logged-on user created
};

class FakeMutexService : public IMutexService {
 public:
  explicit FakeMutexService(std::shared_ptr<FakeKernel> kernel = std::make_shared<FakeKernel>())
      : kernel_(std::move(kernel)) {}
  Created CreateMutex(const Text& name, bool initialOwner) override;
  bool CloseHandle(std::uintptr_t handle) override;
  bool ReleaseMutex(std::uintptr_t handle) override;

  std::vector<std::string> calls;  // "create", "close", "release" in order
  std::shared_ptr<FakeKernel> Kernel() const { return kernel_; }

 private:
  std::shared_ptr<FakeKernel> kernel_;
  std::map<std::uintptr_t, Text> handles_;
  std::uintptr_t next_ = 0x100;
};

class FakeSystemInfo : public ISystemInfo {
 public:
  unsigned long PlatformId() override { return platformId; }
  unsigned long MajorVersion() override { return major; }
  unsigned long MinorVersion() override { return minor; }
  unsigned long BuildNumber() override { return build; }
  int TwipsPerPixelX() override { return twipsPerPixel; }
  int TwipsPerPixelY() override { return twipsPerPixel; }
  Rect WorkArea() override { return workArea; }
  Rect Screen() override { return screen; }
  Text ComputerName() override { return computerName; }
  Text ProgramFolder() override { return programFolder; }
  Text ProgramFileName() override { return programFileName; }
  Text SystemFolder() override { return systemFolder; }
  Text CommandLine() override { return commandLine; }
  std::optional<Text> Environment(const Text& name) override;
  bool PreviousInstanceRunning() override { return previousInstance; }

  unsigned long platformId = 2, major = 10, minor = 0, build = 19045;
  int twipsPerPixel = 15;
  Rect workArea{0, 0, 1280, 760};
  Rect screen{0, 0, 1280, 800};
  Text computerName = u"WORKSTATION";
  Text programFolder = u"C:\\Program Files\\Corvane";
  Text programFileName = u"QVMonitor.exe";
  Text systemFolder = u"C:\\Windows\\system32";
  Text commandLine;
  std::map<Text, Text> environment;
  bool previousInstance = false;
};

class FakeShell : public IShell {
 public:
  long Open(const Text& target) override {
    opened.push_back(target);
    return openResult;
  }
  bool Run(const Text& commandLine, bool hidden) override {
    runs.push_back({commandLine, hidden});
    return runResult;
  }
  long Execute(std::uintptr_t ownerWindow, const Text& verb, const Text& file,
               const Text& parameters, const Text& folder, int showCommand) override {
    executed.push_back({ownerWindow, verb, file, parameters, folder, showCommand});
    return executeResult;
  }
  struct Execution {
    std::uintptr_t ownerWindow;
    Text verb, file, parameters, folder;
    int showCommand;
  };
  std::vector<Text> opened;
  std::vector<std::pair<Text, bool>> runs;
  std::vector<Execution> executed;
  long executeResult = 42;
  long openResult = 42;
  bool runResult = true;
};

class FakeLocale : public ILocale {
 public:
  Text DateSeparator() override { return dateSeparator; }
  Text TimeSeparator() override { return timeSeparator; }
  Text DecimalSeparator() override { return decimalSeparator; }
  Text ThousandsSeparator() override { return thousandsSeparator; }
  Text ShortDateFormat() override { return shortDateFormat; }
  Text TimeFormat() override { return timeFormat; }
  Text AmSymbol() override { return am; }
  Text PmSymbol() override { return pm; }

  Text dateSeparator = u"/", timeSeparator = u":", decimalSeparator = u".",
       thousandsSeparator = u",", shortDateFormat = u"M/d/yyyy", timeFormat = u"h:mm:ss tt",
       am = u"AM", pm = u"PM";
};

class FakeOsNameProvider : public IOsNameProvider {
 public:
  std::optional<Text> OsName() override { return name; }
  std::optional<Text> name;  // nullopt: not registered
};

class FakeSettingsProvider : public ISettingsProvider {
 public:
  Text GetSetting(const Text& key, long, long) override {
    auto it = values.find(key);
    return it == values.end() ? Text() : it->second;
  }
  std::map<Text, Text> values;
};

// Scripted dial-up connections. A hang-up takes its connection off the list unless its
// handle is scripted to fail; each is recorded with the clock's tick at that moment.
class FakeDialUp : public IDialUp {
 public:
  explicit FakeDialUp(IClock* clock = nullptr) : clock_(clock) {}
  DialUpListing Connections() override;
  unsigned long HangUp(std::uintptr_t handle) override;

  std::vector<DialUpConnection> connections;
  unsigned long listError = 0;  // the second listing fails with it
  std::map<std::uintptr_t, unsigned long> hangUpErrors;
  struct HangUpCall {
    std::uintptr_t handle;
    std::uint64_t tickMs;
  };
  std::vector<HangUpCall> hangUps;
  int listings = 0;

 private:
  IClock* clock_;
};

class FakeSound : public ISound {
 public:
  bool PlayAlias(const Text& alias) override {
    played.push_back(alias);
    return true;
  }
  std::vector<Text> played;
};

}  // namespace platform
