#pragma once
// Decorators over every platform interface that make calls fail, as a FaultPlan
// decides, in the ways the interface can fail on Windows. Each passes a call through
// to the implementation it wraps unless the plan says otherwise. They live with the
// tests: the shipped program never links them.
//
// Adding a call to an interface means one line here: ask the plan with the kinds the
// call can meet, and say what each kind returns (Faulty::Maybe when a failure is one
// result; the .cpp file when it is more than that). The plan knows the call by name.
#include <functional>
#include <memory>

#include "fault/FaultPlan.h"
#include "platform/Platform.h"

namespace fault {

using base::Text;

// An answer that can fail (none) or come back empty.
inline constexpr std::initializer_list<Fault> kErrorOrEmpty = {Fault::Error, Fault::Empty};

// The Windows file calls are noexcept: they fail by their results only. A failed
// existence test answers "not there"; a read can come back short (the other program
// was writing) or empty; a write can stop part way (a full disk) or not start.
class FaultyFileSystem : public Faulty<platform::IFileSystem> {
 public:
  using Faulty::Faulty;
  bool FileExists(const Text& path) override { return Maybe<&Interface::FileExists>(false, path); }
  bool FolderExists(const Text& path) override {
    return Maybe<&Interface::FolderExists>(false, path);
  }
  bool CreateFolder(const Text& path) override {
    return Maybe<&Interface::CreateFolder>(false, path);
  }
  bool DeleteFile(const Text& path) override { return Maybe<&Interface::DeleteFile>(false, path); }
  bool DeleteFileWithoutForce(const Text& path) override {
    return Maybe<&Interface::DeleteFileWithoutForce>(false, path);
  }
  std::optional<std::string> ReadAll(const Text& path) override {
    return Cut<&Interface::ReadAll>(kRead, std::optional<std::string>(), path);
  }
  std::optional<std::string> ReadRange(const Text& path, std::uint64_t offset,
                                       std::size_t count) override {
    return Cut<&Interface::ReadRange>(kRead, std::optional<std::string>(), path, offset, count);
  }
  std::optional<std::uint64_t> FileSize(const Text& path) override {
    return Maybe<&Interface::FileSize>(std::optional<std::uint64_t>(), path);
  }
  // A short write: the file was opened (and so truncated) and part of it went out; for
  // a flushed write, the disk filled part way or the flush failed after part of it.
  bool WriteAll(const Text& path, std::string_view bytes) override {
    return Write<&Interface::WriteAll>(path, bytes);
  }
  bool Append(const Text& path, std::string_view bytes) override {
    return Write<&Interface::Append>(path, bytes);
  }
  bool WriteFlushed(const Text& path, std::string_view bytes) override {
    return Write<&Interface::WriteFlushed, &Interface::WriteAll>(path, bytes);
  }
  // Refused outright. A file held by another program past the retry is written in
  // place, which is not all or nothing by design; the soak leaves that answer out, so
  // that its whole-records check holds (the in-place write has tests of its own).
  ReplaceResult Replace(const Text& from, const Text& to, bool evenReadOnly) override {
    return Maybe<&Interface::Replace>(ReplaceResult::Failed, from, to, evenReadOnly);
  }
  bool Truncate(const Text& path, std::uint64_t size) override {
    return Maybe<&Interface::Truncate>(false, path, size);
  }
  Text LastErrorText() override { return in_.LastErrorText(); }
  // FindNextFileW failing part way: the entries found so far.
  std::vector<platform::FileEntry> List(const Text& folder, const Text& pattern) override {
    return Cut<&Interface::List>({Fault::Empty, Fault::Short}, std::vector<platform::FileEntry>(),
                                 folder, pattern);
  }
  bool SetCurrentFolder(const Text& path) override {
    return Maybe<&Interface::SetCurrentFolder>(false, path);
  }

  // Told of every write the program tried, whole, whether or not it was let through.
  std::function<void(const Text& path, std::string_view bytes)> onWrite;

 private:
  // A read can fail, come back empty or come back short.
  static constexpr std::initializer_list<Fault> kRead = {Fault::Error, Fault::Short, Fault::Empty};
  // A write that can also stop part way: `Partial` puts out the bytes that went.
  template <auto Whole, auto Partial = Whole>
  bool Write(const Text& path, std::string_view bytes) {
    if (onWrite) onWrite(path, bytes);
    const auto fault = plan_.Draw(CallName<Whole>(), {Fault::Error, Fault::Short});
    if (fault == Fault::Error) return false;
    if (fault == Fault::Short) {
      (in_.*Partial)(path, bytes.substr(0, plan_.ShortLength(bytes.size())));
      return false;
    }
    return (in_.*Whole)(path, bytes);
  }
};

class FaultyProfile : public Faulty<platform::IProfile> {
 public:
  using Faulty::Faulty;
  // A file that cannot be opened gives the default; a buffer the platform filled only
  // in part gives a cut value.
  Text GetString(const Text& section, const Text& key, const Text& defaultValue,
                 std::size_t bufferChars, const Text& file) override {
    return Cut<&Interface::GetString>({Fault::Error, Fault::Short}, defaultValue, section, key,
                                      defaultValue, bufferChars, file);
  }
  // Access denied: the file is held by another program.
  bool WriteString(const Text& section, const std::optional<Text>& key,
                   const std::optional<Text>& value, const Text& file) override {
    return Failing<&Interface::WriteString>(5, 0, false, section, key, value, file);
  }
  unsigned long LastError() override { return LastErrorOr(in_.LastError()); }
};

class FaultyRegistry : public Faulty<platform::IRegistry> {
 public:
  using Faulty::Faulty;
  std::optional<Text> ReadString(platform::RegRoot root, const Text& key, const Text& name,
                                 std::size_t maxBytes) override {
    return Cut<&Interface::ReadString>(kErrorOrEmpty, std::optional<Text>(), root, key, name,
                                       maxBytes);
  }
  bool WriteString(platform::RegRoot root, const Text& key, const Text& name, const Text& value,
                   unsigned long access) override {
    return Maybe<&Interface::WriteString>(false, root, key, name, value, access);
  }
  bool DeleteValue(platform::RegRoot root, const Text& key, const Text& name) override {
    return Maybe<&Interface::DeleteValue>(false, root, key, name);
  }
};

// Now and TickMs cannot fail; a sleep can stall far beyond what was asked.
class FaultyClock : public Faulty<platform::IClock> {
 public:
  using Faulty::Faulty;
  base::DateTime Now() override { return in_.Now(); }
  std::uint64_t TickMs() override { return in_.TickMs(); }
  void Sleep(std::uint32_t ms) override {
    // The thread was not woken on time: the wait lasts a good deal longer.
    if (plan_.Draw("IClock::Sleep", {Fault::Timeout})) ms = ms * 10 + 1000;
    in_.Sleep(ms);
  }
};

class FaultyMutex : public Faulty<platform::IMutexService> {
 public:
  using Faulty::Faulty;
  Created CreateMutex(const Text& name, bool initialOwner) override {
    return Maybe<&Interface::CreateMutex>(Created{0, 5}, name, initialOwner);
  }
  bool CloseHandle(std::uintptr_t handle) override {
    return Closing<&Interface::CloseHandle>(handle);
  }
  bool ReleaseMutex(std::uintptr_t handle) override {
    return Maybe<&Interface::ReleaseMutex>(false, handle);
  }
};

class FaultySystemInfo : public Faulty<platform::ISystemInfo> {
 public:
  using Faulty::Faulty;
  unsigned long PlatformId() override { return in_.PlatformId(); }
  unsigned long MajorVersion() override { return in_.MajorVersion(); }
  unsigned long MinorVersion() override { return in_.MinorVersion(); }
  unsigned long BuildNumber() override { return in_.BuildNumber(); }
  int TwipsPerPixelX() override { return in_.TwipsPerPixelX(); }
  int TwipsPerPixelY() override { return in_.TwipsPerPixelY(); }
  platform::Rect WorkArea() override {
    return Maybe<&Interface::WorkArea>({Fault::Empty}, platform::Rect{});
  }
  platform::Rect Screen() override {
    return Maybe<&Interface::Screen>({Fault::Empty}, platform::Rect{});
  }
  Text ComputerName() override { return Maybe<&Interface::ComputerName>({Fault::Empty}, Text()); }
  Text SystemFolder() override { return Maybe<&Interface::SystemFolder>({Fault::Empty}, Text()); }
  Text ProgramFolder() override { return in_.ProgramFolder(); }
  Text ProgramFileName() override { return in_.ProgramFileName(); }
  Text CommandLine() override { return in_.CommandLine(); }
  std::optional<Text> Environment(const Text& name) override {
    return Cut<&Interface::Environment>(kErrorOrEmpty, std::optional<Text>(), name);
  }
  bool PreviousInstanceRunning() override { return in_.PreviousInstanceRunning(); }
};

class FaultyShell : public Faulty<platform::IShell> {
 public:
  using Faulty::Faulty;
  long Open(const Text& target) override {
    return Maybe<&Interface::Open>(2L, target);  // file not found
  }
  bool Run(const Text& commandLine, bool hidden) override {
    return Maybe<&Interface::Run>(false, commandLine, hidden);
  }
  long Execute(std::uintptr_t ownerWindow, const Text& verb, const Text& file,
               const Text& parameters, const Text& folder, int showCommand) override {
    return Maybe<&Interface::Execute>(31L, ownerWindow, verb, file, parameters, folder,
                                      showCommand);  // no association
  }
};

// GetLocaleInfoW failing leaves the buffer empty.
class FaultyLocale : public Faulty<platform::ILocale> {
 public:
  using Faulty::Faulty;
  Text DateSeparator() override { return Item<&Interface::DateSeparator>(); }
  Text TimeSeparator() override { return Item<&Interface::TimeSeparator>(); }
  Text DecimalSeparator() override { return Item<&Interface::DecimalSeparator>(); }
  Text ThousandsSeparator() override { return Item<&Interface::ThousandsSeparator>(); }
  Text ShortDateFormat() override { return Item<&Interface::ShortDateFormat>(); }
  Text TimeFormat() override { return Item<&Interface::TimeFormat>(); }
  Text AmSymbol() override { return Item<&Interface::AmSymbol>(); }
  Text PmSymbol() override { return Item<&Interface::PmSymbol>(); }

 private:
  template <auto Method>
  Text Item() {
    return Maybe<Method>({Fault::Empty}, Text());
  }
};

class FaultyProcessList : public Faulty<platform::IProcessList> {
 public:
  using Faulty::Faulty;
  bool EnumProcessIds(std::uint32_t byteCount, std::vector<std::uint32_t>& ids,
                      std::uint32_t& bytesReturned) override;
  platform::OsHandle OpenProcess(std::uint32_t access, bool inheritHandle,
                                 std::uint32_t processId) override {
    return Maybe<&Interface::OpenProcess>(platform::OsHandle{0}, access, inheritHandle, processId);
  }
  bool EnumModules(platform::OsHandle process, std::uint32_t tableBytes,
                   std::uintptr_t& firstModule) override {
    return Maybe<&Interface::EnumModules>(false, process, tableBytes, firstModule);
  }
  Text ModuleFileName(platform::OsHandle process, std::uintptr_t module, std::uint32_t size,
                      std::uint32_t bufferChars) override {
    return Cut<&Interface::ModuleFileName>({Fault::Empty, Fault::Short}, Text(), process, module,
                                           size, bufferChars);
  }
  platform::OsHandle CreateSnapshot(std::uint32_t flags, std::uint32_t processId) override {
    return Maybe<&Interface::CreateSnapshot>(platform::OsHandle{0}, flags, processId);
  }
  bool ProcessFirst(platform::OsHandle snapshot, std::uint32_t entrySize,
                    platform::SnapshotEntry& entry) override {
    return Maybe<&Interface::ProcessFirst>(false, snapshot, entrySize, entry);
  }
  bool ProcessNext(platform::OsHandle snapshot, std::uint32_t entrySize,
                   platform::SnapshotEntry& entry) override {
    return Maybe<&Interface::ProcessNext>(false, snapshot, entrySize, entry);
  }
  bool TerminateProcess(platform::OsHandle process, std::uint32_t exitCode) override {
    return Maybe<&Interface::TerminateProcess>(false, process, exitCode);
  }
  bool CloseHandle(platform::OsHandle handle) override {
    return Closing<&Interface::CloseHandle>(handle);
  }
  std::uint64_t ProcessStartTime(std::uint32_t processId) override {
    return Maybe<&Interface::ProcessStartTime>(std::uint64_t{0}, processId);
  }
  platform::OsHandle FindWindowByTitle(const Text& title) override {
    return Maybe<&Interface::FindWindowByTitle>(platform::OsHandle{0}, title);
  }
  bool PostMessageA(platform::OsHandle window, std::uint32_t message, std::uintptr_t wParam,
                    std::intptr_t lParam) override {
    return Maybe<&Interface::PostMessageA>(false, window, message, wParam, lParam);
  }
};

// A failed call leaves its error number for LastError, as the service manager does.
class FaultyServiceManager : public Faulty<platform::IServiceManager> {
 public:
  using Faulty::Faulty;
  platform::ScHandle OpenSCManagerW(const Text& machineName, const Text& databaseName,
                                    unsigned long access) override {
    return Failing<&Interface::OpenSCManagerW>(5, {}, platform::ScHandle{0}, machineName,
                                               databaseName, access);
  }
  platform::ScHandle OpenServiceW(platform::ScHandle manager, const Text& serviceName,
                                  unsigned long access) override {
    return Failing<&Interface::OpenServiceW>(5, {}, platform::ScHandle{0}, manager, serviceName,
                                             access);
  }
  bool QueryServiceStatus(platform::ScHandle service, platform::ServiceStatus& status) override {
    return Failing<&Interface::QueryServiceStatus>(6, {}, false, service, status);
  }
  bool QueryServiceConfigA(platform::ScHandle service, unsigned long bufferBytes,
                           unsigned long& bytesNeeded, unsigned long& startType) override {
    return Failing<&Interface::QueryServiceConfigA>(5, 0, false, service, bufferBytes, bytesNeeded,
                                                    startType);
  }
  // A start or a control can also wait out the service (1053: it did not answer in
  // time); a control can be refused (1052: not valid now).
  bool StartServiceA(platform::ScHandle service) override {
    return Failing<&Interface::StartServiceA>(5, 1053, false, service);
  }
  bool ControlService(platform::ScHandle service, unsigned long control,
                      platform::ServiceStatus& status) override {
    return Failing<&Interface::ControlService>(1052, 1053, false, service, control, status);
  }
  bool CloseServiceHandle(platform::ScHandle handle) override {
    return Closing<&Interface::CloseServiceHandle>(handle, 6);
  }
  // A registry lookup that fails cannot tell: the service may be there.
  bool ServiceInstalled(const Text& serviceName) override {
    return Maybe<&Interface::ServiceInstalled>(true, serviceName);
  }
  unsigned long LastError() override { return LastErrorOr(in_.LastError()); }
};

class FaultyDialUp : public Faulty<platform::IDialUp> {
 public:
  using Faulty::Faulty;
  platform::DialUpListing Connections() override;
  unsigned long HangUp(std::uintptr_t handle) override {
    return Maybe<&Interface::HangUp>(668UL, handle);  // the line dropped
  }
};

class FaultySound : public Faulty<platform::ISound> {
 public:
  using Faulty::Faulty;
  bool PlayAlias(const Text& alias) override { return Maybe<&Interface::PlayAlias>(false, alias); }
};

class FaultyOsName : public Faulty<platform::IOsNameProvider> {
 public:
  using Faulty::Faulty;
  std::optional<Text> OsName() override {
    return Cut<&Interface::OsName>(kErrorOrEmpty, std::optional<Text>());
  }
};

class FaultySettingsProvider : public Faulty<platform::ISettingsProvider> {
 public:
  using Faulty::Faulty;
  Text GetSetting(const Text& key, long a, long b) override {
    return Maybe<&Interface::GetSetting>({Fault::Empty}, Text(), key, a, b);
  }
};

// The account and feedback objects are not a noexcept boundary: creating them and
// every call may throw, besides failing in their own ways.
class FaultyNetwork : public Faulty<platform::INetworkObjects> {
 public:
  using Faulty::Faulty;
  std::unique_ptr<platform::ILoginObject> CreateLoginObject(
      const platform::ServiceEndpoints& endpoints) override;
  std::unique_ptr<platform::IHttpObject> CreateHttpObject(
      const platform::ServiceEndpoints& endpoints) override;
};

class FaultyFileVersions : public Faulty<platform::IFileVersions> {
 public:
  using Faulty::Faulty;
  std::optional<platform::FileVersion> Read(const Text& path) override {
    return Maybe<&Interface::Read>(std::optional<platform::FileVersion>(), path);
  }
};

class FaultyLocaleInfo : public Faulty<platform::ILocaleInfo> {
 public:
  using Faulty::Faulty;
  unsigned long Id(platform::LocaleSource source) override {
    return Maybe<&Interface::Id>({Fault::Empty}, 0UL, source);
  }
  std::optional<Text> Item(platform::LocaleSource source, unsigned long item) override {
    return Cut<&Interface::Item>(kErrorOrEmpty, std::optional<Text>(), source, item);
  }
};

class FaultyHelp : public Faulty<platform::IHelp> {
 public:
  using Faulty::Faulty;
  bool Show(const Text& helpFile, const Text& topic) override {
    return Maybe<&Interface::Show>(false, helpFile, topic);
  }
};

class FaultyUiHost;

// A platform whose every service is the decorated one of `inner` (a service `inner`
// lacks stays null). The UI host is decorated too (FaultyUiHost.h).
class FaultyPlatform {
 public:
  FaultyPlatform(platform::Platform& inner, FaultPlan& plan);
  platform::Platform& Get() { return p_; }
  FaultyFileSystem& Files() { return *fs_; }
  FaultyUiHost& Ui() { return *ui_; }

 private:
  platform::Platform p_;
  std::vector<std::shared_ptr<void>> keep_;
  FaultyFileSystem* fs_ = nullptr;
  FaultyUiHost* ui_ = nullptr;
};

}  // namespace fault
