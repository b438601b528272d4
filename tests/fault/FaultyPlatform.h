#pragma once
// Decorators over every platform interface that make calls fail, as a FaultPlan
// decides, in the ways the interface can fail on Windows. Each passes a call through
// to the implementation it wraps unless the plan says otherwise. They live with the
// tests: the shipped program never links them.
//
// Adding a call to an interface means one line here: ask the plan with the call's
// name and the kinds it can meet, and say what each kind returns.
#include <functional>
#include <memory>

#include "fault/FaultPlan.h"
#include "platform/Platform.h"

namespace fault {

using base::Text;

class FaultyFileSystem : public platform::IFileSystem {
 public:
  FaultyFileSystem(platform::IFileSystem& inner, FaultPlan& plan) : in_(inner), plan_(plan) {}
  bool FileExists(const Text& path) override;
  bool FolderExists(const Text& path) override;
  bool CreateFolder(const Text& path) override;
  bool DeleteFile(const Text& path) override;
  bool DeleteFileWithoutForce(const Text& path) override;
  std::optional<std::string> ReadAll(const Text& path) override;
  std::optional<std::string> ReadRange(const Text& path, std::uint64_t offset,
                                       std::size_t count) override;
  std::optional<std::uint64_t> FileSize(const Text& path) override;
  bool WriteAll(const Text& path, std::string_view bytes) override;
  bool Append(const Text& path, std::string_view bytes) override;
  bool WriteFlushed(const Text& path, std::string_view bytes) override;
  ReplaceResult Replace(const Text& from, const Text& to, bool evenReadOnly) override;
  bool Truncate(const Text& path, std::uint64_t size) override;
  Text LastErrorText() override;
  std::vector<platform::FileEntry> List(const Text& folder, const Text& pattern) override;
  bool SetCurrentFolder(const Text& path) override;

  // Told of every write the program tried, whole, whether or not it was let through.
  std::function<void(const Text& path, std::string_view bytes)> onWrite;

 private:
  platform::IFileSystem& in_;
  FaultPlan& plan_;
};

class FaultyProfile : public platform::IProfile {
 public:
  FaultyProfile(platform::IProfile& inner, FaultPlan& plan) : in_(inner), plan_(plan) {}
  Text GetString(const Text& section, const Text& key, const Text& defaultValue,
                 std::size_t bufferChars, const Text& file) override;
  bool WriteString(const Text& section, const std::optional<Text>& key,
                   const std::optional<Text>& value, const Text& file) override;
  unsigned long LastError() override;

 private:
  platform::IProfile& in_;
  FaultPlan& plan_;
  unsigned long injectedError_ = 0;
};

class FaultyRegistry : public platform::IRegistry {
 public:
  FaultyRegistry(platform::IRegistry& inner, FaultPlan& plan) : in_(inner), plan_(plan) {}
  std::optional<Text> ReadString(platform::RegRoot root, const Text& key, const Text& name,
                                 std::size_t maxBytes) override;
  bool WriteString(platform::RegRoot root, const Text& key, const Text& name, const Text& value,
                   unsigned long access) override;
  bool DeleteValue(platform::RegRoot root, const Text& key, const Text& name) override;

 private:
  platform::IRegistry& in_;
  FaultPlan& plan_;
};

// Now and TickMs cannot fail; a sleep can stall far beyond what was asked.
class FaultyClock : public platform::IClock {
 public:
  FaultyClock(platform::IClock& inner, FaultPlan& plan) : in_(inner), plan_(plan) {}
  base::DateTime Now() override { return in_.Now(); }
  std::uint64_t TickMs() override { return in_.TickMs(); }
  void Sleep(std::uint32_t ms) override;

 private:
  platform::IClock& in_;
  FaultPlan& plan_;
};

class FaultyMutex : public platform::IMutexService {
 public:
  FaultyMutex(platform::IMutexService& inner, FaultPlan& plan) : in_(inner), plan_(plan) {}
  Created CreateMutex(const Text& name, bool initialOwner) override;
  bool CloseHandle(std::uintptr_t handle) override;
  bool ReleaseMutex(std::uintptr_t handle) override;

 private:
  platform::IMutexService& in_;
  FaultPlan& plan_;
};

class FaultySystemInfo : public platform::ISystemInfo {
 public:
  FaultySystemInfo(platform::ISystemInfo& inner, FaultPlan& plan) : in_(inner), plan_(plan) {}
  unsigned long PlatformId() override { return in_.PlatformId(); }
  unsigned long MajorVersion() override { return in_.MajorVersion(); }
  unsigned long MinorVersion() override { return in_.MinorVersion(); }
  unsigned long BuildNumber() override { return in_.BuildNumber(); }
  int TwipsPerPixelX() override { return in_.TwipsPerPixelX(); }
  int TwipsPerPixelY() override { return in_.TwipsPerPixelY(); }
  platform::Rect WorkArea() override;
  platform::Rect Screen() override;
  Text ComputerName() override;
  Text SystemFolder() override;
  Text ProgramFolder() override { return in_.ProgramFolder(); }
  Text ProgramFileName() override { return in_.ProgramFileName(); }
  Text CommandLine() override { return in_.CommandLine(); }
  std::optional<Text> Environment(const Text& name) override;
  bool PreviousInstanceRunning() override { return in_.PreviousInstanceRunning(); }

 private:
  platform::ISystemInfo& in_;
  FaultPlan& plan_;
};

class FaultyShell : public platform::IShell {
 public:
  FaultyShell(platform::IShell& inner, FaultPlan& plan) : in_(inner), plan_(plan) {}
  long Open(const Text& target) override;
  bool Run(const Text& commandLine, bool hidden) override;
  long Execute(std::uintptr_t ownerWindow, const Text& verb, const Text& file,
               const Text& parameters, const Text& folder, int showCommand) override;

 private:
  platform::IShell& in_;
  FaultPlan& plan_;
};

class FaultyLocale : public platform::ILocale {
 public:
  FaultyLocale(platform::ILocale& inner, FaultPlan& plan) : in_(inner), plan_(plan) {}
  Text DateSeparator() override { return Item("ILocale::DateSeparator", in_.DateSeparator()); }
  Text TimeSeparator() override { return Item("ILocale::TimeSeparator", in_.TimeSeparator()); }
  Text DecimalSeparator() override {
    return Item("ILocale::DecimalSeparator", in_.DecimalSeparator());
  }
  Text ThousandsSeparator() override {
    return Item("ILocale::ThousandsSeparator", in_.ThousandsSeparator());
  }
  Text ShortDateFormat() override {
    return Item("ILocale::ShortDateFormat", in_.ShortDateFormat());
  }
  Text TimeFormat() override { return Item("ILocale::TimeFormat", in_.TimeFormat()); }
  Text AmSymbol() override { return Item("ILocale::AmSymbol", in_.AmSymbol()); }
  Text PmSymbol() override { return Item("ILocale::PmSymbol", in_.PmSymbol()); }

 private:
  Text Item(const char* site, Text value);
  platform::ILocale& in_;
  FaultPlan& plan_;
};

class FaultyProcessList : public platform::IProcessList {
 public:
  FaultyProcessList(platform::IProcessList& inner, FaultPlan& plan) : in_(inner), plan_(plan) {}
  bool EnumProcessIds(std::uint32_t byteCount, std::vector<std::uint32_t>& ids,
                      std::uint32_t& bytesReturned) override;
  platform::OsHandle OpenProcess(std::uint32_t access, bool inheritHandle,
                                 std::uint32_t processId) override;
  bool EnumModules(platform::OsHandle process, std::uint32_t tableBytes,
                   std::uintptr_t& firstModule) override;
  Text ModuleFileName(platform::OsHandle process, std::uintptr_t module, std::uint32_t size,
                      std::uint32_t bufferChars) override;
  platform::OsHandle CreateSnapshot(std::uint32_t flags, std::uint32_t processId) override;
  bool ProcessFirst(platform::OsHandle snapshot, std::uint32_t entrySize,
                    platform::SnapshotEntry& entry) override;
  bool ProcessNext(platform::OsHandle snapshot, std::uint32_t entrySize,
                   platform::SnapshotEntry& entry) override;
  bool TerminateProcess(platform::OsHandle process, std::uint32_t exitCode) override;
  bool CloseHandle(platform::OsHandle handle) override;
  std::uint64_t ProcessStartTime(std::uint32_t processId) override;
  platform::OsHandle FindWindowByTitle(const Text& title) override;
  bool PostMessageA(platform::OsHandle window, std::uint32_t message, std::uintptr_t wParam,
                    std::intptr_t lParam) override;

 private:
  platform::IProcessList& in_;
  FaultPlan& plan_;
};

class FaultyServiceManager : public platform::IServiceManager {
 public:
  FaultyServiceManager(platform::IServiceManager& inner, FaultPlan& plan)
      : in_(inner), plan_(plan) {}
  platform::ScHandle OpenSCManagerW(const Text& machineName, const Text& databaseName,
                                    unsigned long access) override;
  platform::ScHandle OpenServiceW(platform::ScHandle manager, const Text& serviceName,
                                  unsigned long access) override;
  bool QueryServiceStatus(platform::ScHandle service, platform::ServiceStatus& status) override;
  bool QueryServiceConfigA(platform::ScHandle service, unsigned long bufferBytes,
                           unsigned long& bytesNeeded, unsigned long& startType) override;
  bool StartServiceA(platform::ScHandle service) override;
  bool ControlService(platform::ScHandle service, unsigned long control,
                      platform::ServiceStatus& status) override;
  bool CloseServiceHandle(platform::ScHandle handle) override;
  bool ServiceInstalled(const Text& serviceName) override;
  unsigned long LastError() override;

 private:
  bool Failed(unsigned long error);
  platform::IServiceManager& in_;
  FaultPlan& plan_;
  unsigned long injectedError_ = 0;
};

class FaultyDialUp : public platform::IDialUp {
 public:
  FaultyDialUp(platform::IDialUp& inner, FaultPlan& plan) : in_(inner), plan_(plan) {}
  platform::DialUpListing Connections() override;
  unsigned long HangUp(std::uintptr_t handle) override;

 private:
  platform::IDialUp& in_;
  FaultPlan& plan_;
};

class FaultySound : public platform::ISound {
 public:
  FaultySound(platform::ISound& inner, FaultPlan& plan) : in_(inner), plan_(plan) {}
  bool PlayAlias(const Text& alias) override;

 private:
  platform::ISound& in_;
  FaultPlan& plan_;
};

class FaultyOsName : public platform::IOsNameProvider {
 public:
  FaultyOsName(platform::IOsNameProvider& inner, FaultPlan& plan) : in_(inner), plan_(plan) {}
  std::optional<Text> OsName() override;

 private:
  platform::IOsNameProvider& in_;
  FaultPlan& plan_;
};

class FaultySettingsProvider : public platform::ISettingsProvider {
 public:
  FaultySettingsProvider(platform::ISettingsProvider& inner, FaultPlan& plan)
      : in_(inner), plan_(plan) {}
  Text GetSetting(const Text& key, long a, long b) override;

 private:
  platform::ISettingsProvider& in_;
  FaultPlan& plan_;
};

// The account and feedback objects are not a noexcept boundary: creating them and
// every call may throw, besides failing in their own ways.
class FaultyNetwork : public platform::INetworkObjects {
 public:
  FaultyNetwork(platform::INetworkObjects& inner, FaultPlan& plan) : in_(inner), plan_(plan) {}
  std::unique_ptr<platform::ILoginObject> CreateLoginObject(
      const platform::ServiceEndpoints& endpoints) override;
  std::unique_ptr<platform::IHttpObject> CreateHttpObject(
      const platform::ServiceEndpoints& endpoints) override;

 private:
  platform::INetworkObjects& in_;
  FaultPlan& plan_;
};

class FaultyFileVersions : public platform::IFileVersions {
 public:
  FaultyFileVersions(platform::IFileVersions& inner, FaultPlan& plan) : in_(inner), plan_(plan) {}
  std::optional<platform::FileVersion> Read(const Text& path) override;

 private:
  platform::IFileVersions& in_;
  FaultPlan& plan_;
};

class FaultyLocaleInfo : public platform::ILocaleInfo {
 public:
  FaultyLocaleInfo(platform::ILocaleInfo& inner, FaultPlan& plan) : in_(inner), plan_(plan) {}
  unsigned long Id(platform::LocaleSource source) override;
  std::optional<Text> Item(platform::LocaleSource source, unsigned long item) override;

 private:
  platform::ILocaleInfo& in_;
  FaultPlan& plan_;
};

class FaultyHelp : public platform::IHelp {
 public:
  FaultyHelp(platform::IHelp& inner, FaultPlan& plan) : in_(inner), plan_(plan) {}
  bool Show(const Text& helpFile, const Text& topic) override;

 private:
  platform::IHelp& in_;
  FaultPlan& plan_;
};

class FaultyUiHost;

// A platform whose every service is the decorated one of `inner` (a service `inner`
// lacks stays null). The UI host is decorated too (FaultyUiHost.h).
class FaultyPlatform {
 public:
  FaultyPlatform(platform::Platform& inner, FaultPlan& plan);
  ~FaultyPlatform();
  platform::Platform& Get() { return p_; }
  FaultyFileSystem& Files() { return *fs_; }
  FaultyUiHost& Ui() { return *ui_; }

 private:
  platform::Platform p_;
  std::unique_ptr<FaultyFileSystem> fs_;
  std::unique_ptr<FaultyUiHost> ui_;
  std::vector<std::shared_ptr<void>> keep_;
};

}  // namespace fault
