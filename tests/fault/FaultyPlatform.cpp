#include "fault/FaultyPlatform.h"

#include "fault/FaultyUiHost.h"

namespace fault {

using platform::FileEntry;
using platform::OsHandle;
using platform::ScHandle;
using F = Fault;

// ---- Files ---------------------------------------------------------------------------
// The Windows file calls are noexcept: they fail by their results only. A failed
// existence test answers "not there"; a read can come back short (the other program
// was writing) or empty; a write can stop part way (a full disk) or not start.

bool FaultyFileSystem::FileExists(const Text& path) {
  if (plan_.Draw("IFileSystem::FileExists", {F::Error})) return false;
  return in_.FileExists(path);
}

bool FaultyFileSystem::FolderExists(const Text& path) {
  if (plan_.Draw("IFileSystem::FolderExists", {F::Error})) return false;
  return in_.FolderExists(path);
}

bool FaultyFileSystem::CreateFolder(const Text& path) {
  if (plan_.Draw("IFileSystem::CreateFolder", {F::Error})) return false;
  return in_.CreateFolder(path);
}

bool FaultyFileSystem::DeleteFile(const Text& path) {
  if (plan_.Draw("IFileSystem::DeleteFile", {F::Error})) return false;
  return in_.DeleteFile(path);
}

bool FaultyFileSystem::DeleteFileWithoutForce(const Text& path) {
  if (plan_.Draw("IFileSystem::DeleteFileWithoutForce", {F::Error})) return false;
  return in_.DeleteFileWithoutForce(path);
}

std::optional<std::string> FaultyFileSystem::ReadAll(const Text& path) {
  const auto fault = plan_.Draw("IFileSystem::ReadAll", {F::Error, F::Short, F::Empty});
  if (fault == F::Error) return std::nullopt;
  if (fault == F::Empty) return std::string();
  auto bytes = in_.ReadAll(path);
  if (fault == F::Short && bytes) bytes->resize(plan_.ShortLength(bytes->size()));
  return bytes;
}

std::optional<std::string> FaultyFileSystem::ReadRange(const Text& path, std::uint64_t offset,
                                                       std::size_t count) {
  const auto fault = plan_.Draw("IFileSystem::ReadRange", {F::Error, F::Short, F::Empty});
  if (fault == F::Error) return std::nullopt;
  if (fault == F::Empty) return std::string();
  auto bytes = in_.ReadRange(path, offset, count);
  if (fault == F::Short && bytes) bytes->resize(plan_.ShortLength(bytes->size()));
  return bytes;
}

std::optional<std::uint64_t> FaultyFileSystem::FileSize(const Text& path) {
  if (plan_.Draw("IFileSystem::FileSize", {F::Error})) return std::nullopt;
  return in_.FileSize(path);
}

bool FaultyFileSystem::WriteAll(const Text& path, std::string_view bytes) {
  if (onWrite) onWrite(path, bytes);
  const auto fault = plan_.Draw("IFileSystem::WriteAll", {F::Error, F::Short});
  if (fault == F::Error) return false;
  if (fault == F::Short) {
    // The file was opened (and so truncated) and part of it went out.
    in_.WriteAll(path, bytes.substr(0, plan_.ShortLength(bytes.size())));
    return false;
  }
  return in_.WriteAll(path, bytes);
}

bool FaultyFileSystem::Append(const Text& path, std::string_view bytes) {
  if (onWrite) onWrite(path, bytes);
  const auto fault = plan_.Draw("IFileSystem::Append", {F::Error, F::Short});
  if (fault == F::Error) return false;
  if (fault == F::Short) {
    in_.Append(path, bytes.substr(0, plan_.ShortLength(bytes.size())));
    return false;
  }
  return in_.Append(path, bytes);
}

bool FaultyFileSystem::WriteFlushed(const Text& path, std::string_view bytes) {
  if (onWrite) onWrite(path, bytes);
  const auto fault = plan_.Draw("IFileSystem::WriteFlushed", {F::Error, F::Short});
  if (fault == F::Error) return false;
  if (fault == F::Short) {
    // The disk filled part way, or the flush failed after part of it went out.
    in_.WriteAll(path, bytes.substr(0, plan_.ShortLength(bytes.size())));
    return false;
  }
  return in_.WriteFlushed(path, bytes);
}

platform::IFileSystem::ReplaceResult FaultyFileSystem::Replace(const Text& from, const Text& to,
                                                               bool evenReadOnly) {
  // Refused outright. A file held by another program past the retry is written in place,
  // which is not all or nothing by design; the soak leaves that answer out, so that its
  // whole-records check holds (the in-place write has tests of its own).
  if (plan_.Draw("IFileSystem::Replace", {F::Error})) return ReplaceResult::Failed;
  return in_.Replace(from, to, evenReadOnly);
}

bool FaultyFileSystem::Truncate(const Text& path, std::uint64_t size) {
  if (plan_.Draw("IFileSystem::Truncate", {F::Error})) return false;
  return in_.Truncate(path, size);
}

Text FaultyFileSystem::LastErrorText() { return in_.LastErrorText(); }

std::vector<FileEntry> FaultyFileSystem::List(const Text& folder, const Text& pattern) {
  const auto fault = plan_.Draw("IFileSystem::List", {F::Empty, F::Short});
  if (fault == F::Empty) return {};
  auto entries = in_.List(folder, pattern);
  // FindNextFileW failing part way: the entries found so far.
  if (fault == F::Short) entries.resize(plan_.ShortLength(entries.size()));
  return entries;
}

bool FaultyFileSystem::SetCurrentFolder(const Text& path) {
  if (plan_.Draw("IFileSystem::SetCurrentFolder", {F::Error})) return false;
  return in_.SetCurrentFolder(path);
}

// ---- Profile files -------------------------------------------------------------------

Text FaultyProfile::GetString(const Text& section, const Text& key, const Text& defaultValue,
                              std::size_t bufferChars, const Text& file) {
  // A file that cannot be opened gives the default; a buffer the platform filled
  // only in part gives a cut value.
  const auto fault = plan_.Draw("IProfile::GetString", {F::Error, F::Short});
  if (fault == F::Error) return defaultValue;
  Text value = in_.GetString(section, key, defaultValue, bufferChars, file);
  if (fault == F::Short) value.resize(plan_.ShortLength(value.size()));
  return value;
}

bool FaultyProfile::WriteString(const Text& section, const std::optional<Text>& key,
                                const std::optional<Text>& value, const Text& file) {
  if (plan_.Draw("IProfile::WriteString", {F::Error})) {
    injectedError_ = 5;  // access denied: the file is held by another program
    return false;
  }
  injectedError_ = 0;
  return in_.WriteString(section, key, value, file);
}

unsigned long FaultyProfile::LastError() {
  return injectedError_ != 0 ? injectedError_ : in_.LastError();
}

// ---- Registry ------------------------------------------------------------------------

std::optional<Text> FaultyRegistry::ReadString(platform::RegRoot root, const Text& key,
                                               const Text& name, std::size_t maxBytes) {
  const auto fault = plan_.Draw("IRegistry::ReadString", {F::Error, F::Empty});
  if (fault == F::Error) return std::nullopt;
  if (fault == F::Empty) return Text();
  return in_.ReadString(root, key, name, maxBytes);
}

bool FaultyRegistry::WriteString(platform::RegRoot root, const Text& key, const Text& name,
                                 const Text& value, unsigned long access) {
  if (plan_.Draw("IRegistry::WriteString", {F::Error})) return false;
  return in_.WriteString(root, key, name, value, access);
}

bool FaultyRegistry::DeleteValue(platform::RegRoot root, const Text& key, const Text& name) {
  if (plan_.Draw("IRegistry::DeleteValue", {F::Error})) return false;
  return in_.DeleteValue(root, key, name);
}

// ---- Clock, mutex, system ------------------------------------------------------------

void FaultyClock::Sleep(std::uint32_t ms) {
  // The thread was not woken on time: the wait lasts a good deal longer.
  if (plan_.Draw("IClock::Sleep", {F::Timeout})) ms = ms * 10 + 1000;
  in_.Sleep(ms);
}

platform::IMutexService::Created FaultyMutex::CreateMutex(const Text& name, bool initialOwner) {
  if (plan_.Draw("IMutexService::CreateMutex", {F::Error})) return {0, 5};
  return in_.CreateMutex(name, initialOwner);
}

bool FaultyMutex::CloseHandle(std::uintptr_t handle) {
  const bool ok = in_.CloseHandle(handle);
  return plan_.Draw("IMutexService::CloseHandle", {F::Error}) ? false : ok;
}

bool FaultyMutex::ReleaseMutex(std::uintptr_t handle) {
  if (plan_.Draw("IMutexService::ReleaseMutex", {F::Error})) return false;
  return in_.ReleaseMutex(handle);
}

platform::Rect FaultySystemInfo::WorkArea() {
  if (plan_.Draw("ISystemInfo::WorkArea", {F::Empty})) return {};
  return in_.WorkArea();
}

platform::Rect FaultySystemInfo::Screen() {
  if (plan_.Draw("ISystemInfo::Screen", {F::Empty})) return {};
  return in_.Screen();
}

Text FaultySystemInfo::ComputerName() {
  if (plan_.Draw("ISystemInfo::ComputerName", {F::Empty})) return Text();
  return in_.ComputerName();
}

Text FaultySystemInfo::SystemFolder() {
  if (plan_.Draw("ISystemInfo::SystemFolder", {F::Empty})) return Text();
  return in_.SystemFolder();
}

std::optional<Text> FaultySystemInfo::Environment(const Text& name) {
  const auto fault = plan_.Draw("ISystemInfo::Environment", {F::Error, F::Empty});
  if (fault == F::Error) return std::nullopt;
  if (fault == F::Empty) return Text();
  return in_.Environment(name);
}

// ---- Shell, locale -------------------------------------------------------------------

long FaultyShell::Open(const Text& target) {
  if (plan_.Draw("IShell::Open", {F::Error})) return 2;  // file not found
  return in_.Open(target);
}

bool FaultyShell::Run(const Text& commandLine, bool hidden) {
  if (plan_.Draw("IShell::Run", {F::Error})) return false;
  return in_.Run(commandLine, hidden);
}

long FaultyShell::Execute(std::uintptr_t ownerWindow, const Text& verb, const Text& file,
                          const Text& parameters, const Text& folder, int showCommand) {
  if (plan_.Draw("IShell::Execute", {F::Error})) return 31;  // no association
  return in_.Execute(ownerWindow, verb, file, parameters, folder, showCommand);
}

Text FaultyLocale::Item(const char* site, Text value) {
  // GetLocaleInfoW failing leaves the buffer empty.
  if (plan_.Draw(site, {F::Empty})) return Text();
  return value;
}

// ---- Process list --------------------------------------------------------------------

bool FaultyProcessList::EnumProcessIds(std::uint32_t byteCount, std::vector<std::uint32_t>& ids,
                                       std::uint32_t& bytesReturned) {
  const auto fault = plan_.Draw("IProcessList::EnumProcessIds", {F::Error, F::Empty, F::Short});
  if (fault == F::Error) {
    bytesReturned = 0;
    return false;
  }
  if (fault == F::Empty) {
    ids.clear();
    bytesReturned = 0;
    return true;
  }
  const bool ok = in_.EnumProcessIds(byteCount, ids, bytesReturned);
  if (fault == F::Short)
    bytesReturned = static_cast<std::uint32_t>(plan_.ShortLength(bytesReturned / 4) * 4);
  return ok;
}

OsHandle FaultyProcessList::OpenProcess(std::uint32_t access, bool inheritHandle,
                                        std::uint32_t processId) {
  if (plan_.Draw("IProcessList::OpenProcess", {F::Error})) return 0;
  return in_.OpenProcess(access, inheritHandle, processId);
}

bool FaultyProcessList::EnumModules(OsHandle process, std::uint32_t tableBytes,
                                    std::uintptr_t& firstModule) {
  if (plan_.Draw("IProcessList::EnumModules", {F::Error})) return false;
  return in_.EnumModules(process, tableBytes, firstModule);
}

Text FaultyProcessList::ModuleFileName(OsHandle process, std::uintptr_t module, std::uint32_t size,
                                       std::uint32_t bufferChars) {
  const auto fault = plan_.Draw("IProcessList::ModuleFileName", {F::Empty, F::Short});
  if (fault == F::Empty) return Text();
  Text name = in_.ModuleFileName(process, module, size, bufferChars);
  if (fault == F::Short) name.resize(plan_.ShortLength(name.size()));
  return name;
}

OsHandle FaultyProcessList::CreateSnapshot(std::uint32_t flags, std::uint32_t processId) {
  if (plan_.Draw("IProcessList::CreateSnapshot", {F::Error})) return 0;
  return in_.CreateSnapshot(flags, processId);
}

bool FaultyProcessList::ProcessFirst(OsHandle snapshot, std::uint32_t entrySize,
                                     platform::SnapshotEntry& entry) {
  if (plan_.Draw("IProcessList::ProcessFirst", {F::Error})) return false;
  return in_.ProcessFirst(snapshot, entrySize, entry);
}

bool FaultyProcessList::ProcessNext(OsHandle snapshot, std::uint32_t entrySize,
                                    platform::SnapshotEntry& entry) {
  if (plan_.Draw("IProcessList::ProcessNext", {F::Error})) return false;
  return in_.ProcessNext(snapshot, entrySize, entry);
}

bool FaultyProcessList::TerminateProcess(OsHandle process, std::uint32_t exitCode) {
  if (plan_.Draw("IProcessList::TerminateProcess", {F::Error})) return false;
  return in_.TerminateProcess(process, exitCode);
}

bool FaultyProcessList::CloseHandle(OsHandle handle) {
  // The handle is gone either way; only the answer can fail.
  const bool ok = in_.CloseHandle(handle);
  return plan_.Draw("IProcessList::CloseHandle", {F::Error}) ? false : ok;
}

std::uint64_t FaultyProcessList::ProcessStartTime(std::uint32_t processId) {
  if (plan_.Draw("IProcessList::ProcessStartTime", {F::Error})) return 0;
  return in_.ProcessStartTime(processId);
}

OsHandle FaultyProcessList::FindWindowByTitle(const Text& title) {
  if (plan_.Draw("IProcessList::FindWindowByTitle", {F::Error})) return 0;
  return in_.FindWindowByTitle(title);
}

bool FaultyProcessList::PostMessageA(OsHandle window, std::uint32_t message, std::uintptr_t wParam,
                                     std::intptr_t lParam) {
  if (plan_.Draw("IProcessList::PostMessageA", {F::Error})) return false;
  return in_.PostMessageA(window, message, wParam, lParam);
}

// ---- Service manager -----------------------------------------------------------------

bool FaultyServiceManager::Failed(unsigned long error) {
  injectedError_ = error;
  return false;
}

ScHandle FaultyServiceManager::OpenSCManagerW(const Text& machineName, const Text& databaseName,
                                              unsigned long access) {
  injectedError_ = 0;
  if (plan_.Draw("IServiceManager::OpenSCManagerW", {F::Error})) return Failed(5), 0;
  return in_.OpenSCManagerW(machineName, databaseName, access);
}

ScHandle FaultyServiceManager::OpenServiceW(ScHandle manager, const Text& serviceName,
                                            unsigned long access) {
  injectedError_ = 0;
  if (plan_.Draw("IServiceManager::OpenServiceW", {F::Error})) return Failed(5), 0;
  return in_.OpenServiceW(manager, serviceName, access);
}

bool FaultyServiceManager::QueryServiceStatus(ScHandle service, platform::ServiceStatus& status) {
  injectedError_ = 0;
  if (plan_.Draw("IServiceManager::QueryServiceStatus", {F::Error})) return Failed(6);
  return in_.QueryServiceStatus(service, status);
}

bool FaultyServiceManager::QueryServiceConfigA(ScHandle service, unsigned long bufferBytes,
                                               unsigned long& bytesNeeded,
                                               unsigned long& startType) {
  injectedError_ = 0;
  if (plan_.Draw("IServiceManager::QueryServiceConfigA", {F::Error})) {
    bytesNeeded = 0;
    return Failed(5);
  }
  return in_.QueryServiceConfigA(service, bufferBytes, bytesNeeded, startType);
}

bool FaultyServiceManager::StartServiceA(ScHandle service) {
  injectedError_ = 0;
  const auto fault = plan_.Draw("IServiceManager::StartServiceA", {F::Error, F::Timeout});
  if (fault == F::Error) return Failed(5);
  if (fault == F::Timeout) return Failed(1053);  // the service did not answer in time
  return in_.StartServiceA(service);
}

bool FaultyServiceManager::ControlService(ScHandle service, unsigned long control,
                                          platform::ServiceStatus& status) {
  injectedError_ = 0;
  const auto fault = plan_.Draw("IServiceManager::ControlService", {F::Error, F::Timeout});
  if (fault == F::Error) return Failed(1052);  // the control is not valid now
  if (fault == F::Timeout) return Failed(1053);
  return in_.ControlService(service, control, status);
}

bool FaultyServiceManager::CloseServiceHandle(ScHandle handle) {
  const bool ok = in_.CloseServiceHandle(handle);
  return plan_.Draw("IServiceManager::CloseServiceHandle", {F::Error}) ? Failed(6) : ok;
}

bool FaultyServiceManager::ServiceInstalled(const Text& serviceName) {
  // A registry lookup that fails cannot tell: the service may be there.
  if (plan_.Draw("IServiceManager::ServiceInstalled", {F::Error})) return true;
  return in_.ServiceInstalled(serviceName);
}

unsigned long FaultyServiceManager::LastError() {
  return injectedError_ != 0 ? injectedError_ : in_.LastError();
}

// ---- Dial-up, sound, closed objects --------------------------------------------------

platform::DialUpListing FaultyDialUp::Connections() {
  const auto fault = plan_.Draw("IDialUp::Connections", {F::Error, F::Empty});
  if (fault == F::Empty) return platform::DialUpListing{true, 0, {}};
  platform::DialUpListing listing = in_.Connections();
  if (fault == F::Error && !listing.none) {
    listing.error = 632;  // the structure size is wrong
    listing.connections.clear();
  }
  return listing;
}

unsigned long FaultyDialUp::HangUp(std::uintptr_t handle) {
  if (plan_.Draw("IDialUp::HangUp", {F::Error})) return 668;  // the connection dropped
  return in_.HangUp(handle);
}

bool FaultySound::PlayAlias(const Text& alias) {
  if (plan_.Draw("ISound::PlayAlias", {F::Error})) return false;
  return in_.PlayAlias(alias);
}

std::optional<Text> FaultyOsName::OsName() {
  const auto fault = plan_.Draw("IOsNameProvider::OsName", {F::Error, F::Empty});
  if (fault == F::Error) return std::nullopt;
  if (fault == F::Empty) return Text();
  return in_.OsName();
}

Text FaultySettingsProvider::GetSetting(const Text& key, long a, long b) {
  if (plan_.Draw("ISettingsProvider::GetSetting", {F::Empty})) return Text();
  return in_.GetSetting(key, a, b);
}

std::optional<platform::FileVersion> FaultyFileVersions::Read(const Text& path) {
  if (plan_.Draw("IFileVersions::Read", {F::Error})) return std::nullopt;
  return in_.Read(path);
}

unsigned long FaultyLocaleInfo::Id(platform::LocaleSource source) {
  if (plan_.Draw("ILocaleInfo::Id", {F::Empty})) return 0;
  return in_.Id(source);
}

std::optional<Text> FaultyLocaleInfo::Item(platform::LocaleSource source, unsigned long item) {
  const auto fault = plan_.Draw("ILocaleInfo::Item", {F::Error, F::Empty});
  if (fault == F::Error) return std::nullopt;
  if (fault == F::Empty) return Text();
  return in_.Item(source, item);
}

bool FaultyHelp::Show(const Text& helpFile, const Text& topic) {
  if (plan_.Draw("IHelp::Show", {F::Error})) return false;
  return in_.Show(helpFile, topic);
}

// ---- Network objects -----------------------------------------------------------------

namespace {

class FaultyLogin : public platform::ILoginObject {
 public:
  FaultyLogin(std::unique_ptr<platform::ILoginObject> inner, FaultPlan& plan)
      : in_(std::move(inner)), plan_(plan) {}
  bool Login(const Text& userName, const Text& password, long flags) override {
    const auto fault = plan_.Draw("ILoginObject::Login", {F::Error, F::Throw, F::Timeout});
    if (fault == F::Throw) plan_.Throw("ILoginObject::Login");
    if (fault) return false;
    return in_->Login(userName, password, flags);
  }

 private:
  std::unique_ptr<platform::ILoginObject> in_;
  FaultPlan& plan_;
};

class FaultyHttp : public platform::IHttpObject {
 public:
  FaultyHttp(std::unique_ptr<platform::IHttpObject> inner, FaultPlan& plan)
      : in_(std::move(inner)), plan_(plan) {}
  Text EncodeQueryValue(const Text& value, long flags) override {
    if (plan_.Draw("IHttpObject::EncodeQueryValue", {F::Throw}))
      plan_.Throw("IHttpObject::EncodeQueryValue");
    return in_->EncodeQueryValue(value, flags);
  }
  Text FilterLine(const Text& line) override {
    if (plan_.Draw("IHttpObject::FilterLine", {F::Throw})) plan_.Throw("IHttpObject::FilterLine");
    return in_->FilterLine(line);
  }
  Text Request(const Text& host, const Text& path, const Text& query, long mode, Text& status,
               long flags, RequestState& state) override {
    const auto fault =
        plan_.Draw("IHttpObject::Request", {F::Error, F::Throw, F::Short, F::Empty, F::Timeout});
    if (fault == F::Throw) plan_.Throw("IHttpObject::Request");
    if (fault == F::Error) {
      status = u"The server name or address could not be resolved";
      state.statusCode = 0;
      return Text();
    }
    if (fault == F::Timeout) {
      status = u"The operation timed out";
      state.statusCode = 0;
      return Text();
    }
    Text reply = in_->Request(host, path, query, mode, status, flags, state);
    if (fault == F::Empty) reply.clear();
    if (fault == F::Short) reply.resize(plan_.ShortLength(reply.size()));
    return reply;
  }
  void SendMail(const Text& to, const Text& subject, const Text& body, const Text& from, bool html,
                const MailEvents& events) override {
    const auto fault = plan_.Draw("IHttpObject::SendMail", {F::Error, F::Throw, F::Timeout});
    if (fault == F::Throw) plan_.Throw("IHttpObject::SendMail");
    if (fault) {
      if (events.onProgress) events.onProgress(25);
      if (events.onFailed)
        events.onFailed(fault == F::Timeout ? u"The operation timed out"
                                            : u"The connection with the server was reset");
      return;
    }
    in_->SendMail(to, subject, body, from, html, events);
  }

 private:
  std::unique_ptr<platform::IHttpObject> in_;
  FaultPlan& plan_;
};

}  // namespace

std::unique_ptr<platform::ILoginObject> FaultyNetwork::CreateLoginObject(
    const platform::ServiceEndpoints& endpoints) {
  const auto fault = plan_.Draw("INetworkObjects::CreateLoginObject", {F::Error, F::Throw});
  if (fault == F::Throw) plan_.Throw("INetworkObjects::CreateLoginObject");
  if (fault) return nullptr;
  auto inner = in_.CreateLoginObject(endpoints);
  if (!inner) return nullptr;
  return std::make_unique<FaultyLogin>(std::move(inner), plan_);
}

std::unique_ptr<platform::IHttpObject> FaultyNetwork::CreateHttpObject(
    const platform::ServiceEndpoints& endpoints) {
  const auto fault = plan_.Draw("INetworkObjects::CreateHttpObject", {F::Error, F::Throw});
  if (fault == F::Throw) plan_.Throw("INetworkObjects::CreateHttpObject");
  if (fault) return nullptr;
  auto inner = in_.CreateHttpObject(endpoints);
  if (!inner) return nullptr;
  return std::make_unique<FaultyHttp>(std::move(inner), plan_);
}

// ---- The bundle ----------------------------------------------------------------------

namespace {

// Wraps `service` when there is one; the decorator is kept alive by `keep`.
template <class Decorator, class Interface>
Interface* Wrap(Interface* service, FaultPlan& plan, std::vector<std::shared_ptr<void>>& keep) {
  if (service == nullptr) return nullptr;
  auto d = std::make_shared<Decorator>(*service, plan);
  keep.push_back(d);
  return d.get();
}

}  // namespace

FaultyPlatform::FaultyPlatform(platform::Platform& inner, FaultPlan& plan) : p_(inner) {
  if (inner.fs != nullptr) {
    fs_ = std::make_unique<FaultyFileSystem>(*inner.fs, plan);
    p_.fs = fs_.get();
  }
  if (inner.ui != nullptr) {
    ui_ = std::make_unique<FaultyUiHost>(*inner.ui, plan);
    p_.ui = ui_.get();
  }
  p_.profile = Wrap<FaultyProfile>(inner.profile, plan, keep_);
  p_.registry = Wrap<FaultyRegistry>(inner.registry, plan, keep_);
  p_.clock = Wrap<FaultyClock>(inner.clock, plan, keep_);
  p_.mutex = Wrap<FaultyMutex>(inner.mutex, plan, keep_);
  p_.system = Wrap<FaultySystemInfo>(inner.system, plan, keep_);
  p_.shell = Wrap<FaultyShell>(inner.shell, plan, keep_);
  p_.locale = Wrap<FaultyLocale>(inner.locale, plan, keep_);
  p_.processes = Wrap<FaultyProcessList>(inner.processes, plan, keep_);
  p_.services = Wrap<FaultyServiceManager>(inner.services, plan, keep_);
  p_.dialUp = Wrap<FaultyDialUp>(inner.dialUp, plan, keep_);
  p_.sound = Wrap<FaultySound>(inner.sound, plan, keep_);
  p_.help = Wrap<FaultyHelp>(inner.help, plan, keep_);
  p_.osName = Wrap<FaultyOsName>(inner.osName, plan, keep_);
  p_.settingsProvider = Wrap<FaultySettingsProvider>(inner.settingsProvider, plan, keep_);
  p_.network = Wrap<FaultyNetwork>(inner.network, plan, keep_);
  p_.versions = Wrap<FaultyFileVersions>(inner.versions, plan, keep_);
  p_.localeInfo = Wrap<FaultyLocaleInfo>(inner.localeInfo, plan, keep_);
  // The COM server is the Windows shell around the progress callback; natively the
  // harness plays the engine's calls into the callback itself (see MonitorSoak).
}

FaultyPlatform::~FaultyPlatform() = default;

}  // namespace fault
