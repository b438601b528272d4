// The service manager and the process list, call for call, as the engine control
// uses them: the fakes must answer the way Windows does, so that what the engine
// tests prove with the fakes holds on the real system.
#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <thread>

#include "Targets.h"
#include "engine/ProcessScan.h"
#include "frame/AppState.h"
#include "platform/fake/FakeEngineServices.h"
#include "platform/fake/FakePlatform.h"

#if QV_HAVE_WIN32
#include <windows.h>

#include <cstring>
#include <filesystem>

#include "SimPrograms.h"
#include "platform/win32/Win32ProcessList.h"
#include "platform/win32/Win32ServiceManager.h"
#endif

namespace contract {
namespace {

using platform::ScHandle;
using platform::ServiceStatus;

constexpr unsigned long kErrorInsufficientBuffer = 122;
constexpr unsigned long kErrorAlreadyRunning = 1056;
constexpr unsigned long kErrorServiceDisabled = 1058;
constexpr unsigned long kErrorServiceDoesNotExist = 1060;
constexpr unsigned long kErrorServiceNotActive = 1062;

// Waits for a condition that a real system reaches in its own time.
bool Eventually(const std::function<bool()>& done, int ms = 15000) {
  for (int waited = 0; waited < ms; waited += 50) {
    if (done()) return true;
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  }
  return done();
}

// ---- service manager ---------------------------------------------------------

// A world with one service of its own: registered, stopped, started on demand.
class ServiceWorld {
 public:
  virtual ~ServiceWorld() = default;
  virtual platform::IServiceManager& Sm() = 0;
  virtual Text Name() const = 0;
  virtual bool Ready() const { return true; }
  virtual void SetStartType(unsigned long type) = 0;
};

class FakeServiceWorld : public ServiceWorld {
 public:
  FakeServiceWorld() { sm_.Add(Name()); }
  platform::IServiceManager& Sm() override { return sm_; }
  Text Name() const override { return u"QV Contract Service"; }
  void SetStartType(unsigned long type) override { sm_.Find(Name())->startType = type; }

 private:
  platform::FakeServiceManager sm_;
};

#if QV_HAVE_WIN32
const wchar_t* W(const Text& t) { return reinterpret_cast<const wchar_t*>(t.c_str()); }

// The build tree's path as this program sees it under Wine (the root is drive Z:).
std::filesystem::path BuiltProgram(const char* path) {
  std::wstring p(path, path + std::strlen(path));
  if (!p.empty() && p[0] == L'/') p = L"Z:" + p;
  for (wchar_t& c : p)
    if (c == L'/') c = L'\\';
  return p;
}

// Runs a command line and waits for it; its exit code, or -1.
long RunAndWait(std::wstring line) {
  STARTUPINFOW si{};
  si.cb = sizeof(si);
  PROCESS_INFORMATION pi{};
  if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, CREATE_NO_WINDOW, nullptr,
                      nullptr, &si, &pi))
    return -1;
  WaitForSingleObject(pi.hProcess, 30000);
  DWORD code = 0;
  GetExitCodeProcess(pi.hProcess, &code);
  CloseHandle(pi.hThread);
  CloseHandle(pi.hProcess);
  return static_cast<long>(code);
}

std::filesystem::path TempFolder(const std::wstring& name) {
  wchar_t temp[MAX_PATH] = {};
  GetTempPathW(MAX_PATH, temp);
  auto folder = std::filesystem::path(temp) / (name + std::to_wstring(GetCurrentProcessId()));
  std::error_code ec;
  std::filesystem::create_directories(folder, ec);
  return folder;
}

// The simulated engine's service program, registered under a name of this run by
// `sc create`, from a folder of its own.
class Win32ServiceWorld : public ServiceWorld {
 public:
  Win32ServiceWorld() {
    name_ = u"QV Contract " + base::FromNumber(GetCurrentProcessId());
    folder_ = TempFolder(L"qvcontract-svc-");
    const auto exe = folder_ / L"QVWin Service_955.exe";
    std::error_code ec;
    std::filesystem::copy_file(BuiltProgram(QV_SIM_SERVICE_EXE), exe,
                               std::filesystem::copy_options::overwrite_existing, ec);
    const long rc = RunAndWait(L"sc create \"" + std::wstring(W(name_)) + L"\" binPath= \"" +
                               exe.wstring() + L"\" start= demand");
    ready_ = !ec && rc == 0;
  }
  ~Win32ServiceWorld() override {
    platform::Win32ServiceManager sm;
    if (ScHandle m = sm.OpenSCManagerW(Text(), u"ServicesActive", platform::kScManagerAllAccess)) {
      if (ScHandle s = sm.OpenServiceW(m, name_, platform::kServiceAllAccess)) {
        ServiceStatus st;
        sm.ControlService(s, platform::kServiceControlStop, st);
        Eventually([&] { return sm.QueryServiceStatus(s, st) && st.currentState == 1; });
        sm.CloseServiceHandle(s);
      }
      sm.CloseServiceHandle(m);
    }
    RunAndWait(L"sc delete \"" + std::wstring(W(name_)) + L"\"");
    std::error_code ec;
    std::filesystem::remove_all(folder_, ec);
  }
  platform::IServiceManager& Sm() override { return sm_; }
  Text Name() const override { return name_; }
  bool Ready() const override { return ready_; }
  // Wine's sc has no "config": the start type is set through the API itself.
  void SetStartType(unsigned long type) override {
    SC_HANDLE m = OpenSCManagerW(nullptr, nullptr, SC_MANAGER_ALL_ACCESS);
    SC_HANDLE s = m ? OpenServiceW(m, W(name_), SERVICE_ALL_ACCESS) : nullptr;
    if (s)
      ChangeServiceConfigW(s, SERVICE_NO_CHANGE, type, SERVICE_NO_CHANGE, nullptr, nullptr,
                           nullptr, nullptr, nullptr, nullptr, nullptr);
    if (s) CloseServiceHandle(s);
    if (m) CloseServiceHandle(m);
  }

 private:
  platform::Win32ServiceManager sm_;
  Text name_;
  std::filesystem::path folder_;
  bool ready_ = false;
};
#endif

using ServiceTarget = Target<ServiceWorld>;

std::vector<ServiceTarget> ServiceTargets() {
  std::vector<ServiceTarget> t = {{"fake", [] { return std::make_unique<FakeServiceWorld>(); }}};
#if QV_HAVE_WIN32
  t.push_back({"win32", [] { return std::make_unique<Win32ServiceWorld>(); }});
#endif
  return t;
}

class ServiceManagerContract : public ::testing::TestWithParam<ServiceTarget> {
 protected:
  void SetUp() override {
    world_ = GetParam().make();
    ASSERT_TRUE(world_->Ready()) << "the service could not be registered";
  }
  void TearDown() override {
    auto& sm = world_->Sm();
    for (ScHandle h : {service_, manager_})
      if (h) sm.CloseServiceHandle(h);
  }
  platform::IServiceManager& Sm() { return world_->Sm(); }
  // Opens the manager of ServicesActive and the world's service with full access.
  void Open(unsigned long managerAccess = platform::kScManagerAllAccess,
            unsigned long serviceAccess = platform::kServiceAllAccess) {
    manager_ = Sm().OpenSCManagerW(Text(), u"ServicesActive", managerAccess);
    ASSERT_NE(manager_, 0u);
    service_ = Sm().OpenServiceW(manager_, world_->Name(), serviceAccess);
    ASSERT_NE(service_, 0u);
  }
  unsigned long State() {
    ServiceStatus st;
    return Sm().QueryServiceStatus(service_, st) ? st.currentState : 0;
  }
  bool ReachesState(unsigned long state) { return Eventually([&] { return State() == state; }); }

  std::unique_ptr<ServiceWorld> world_;
  ScHandle manager_ = 0;
  ScHandle service_ = 0;
};

TEST_P(ServiceManagerContract, AnUnknownServiceCannotBeOpened) {
  manager_ = Sm().OpenSCManagerW(Text(), u"ServicesActive", platform::kGenericRead);
  ASSERT_NE(manager_, 0u);
  EXPECT_EQ(Sm().OpenServiceW(manager_, u"QV No Such Service 7781", platform::kServiceQueryStatus),
            0u);
  EXPECT_EQ(Sm().LastError(), kErrorServiceDoesNotExist);
}

TEST_P(ServiceManagerContract, ReadAccessQueriesTheStatus) {
  Open(platform::kGenericRead, platform::kServiceQueryStatus);
  ServiceStatus st;
  ASSERT_TRUE(Sm().QueryServiceStatus(service_, st));
  EXPECT_EQ(st.currentState, 1u);
}

TEST_P(ServiceManagerContract, ConfigurationIsAskedForInTwoSteps) {
  Open(platform::kScManagerAllAccess, platform::kGenericRead);
  unsigned long needed = 0, type = 99;
  EXPECT_FALSE(Sm().QueryServiceConfigA(service_, 0, needed, type));
  EXPECT_EQ(Sm().LastError(), kErrorInsufficientBuffer);
  ASSERT_GT(needed, 36u);  // the structure and its strings
  unsigned long again = 0;
  ASSERT_TRUE(Sm().QueryServiceConfigA(service_, needed, again, type));
  EXPECT_EQ(type, 3u);  // on demand
  world_->SetStartType(platform::kServiceDisabled);
  ASSERT_TRUE(Sm().QueryServiceConfigA(service_, needed, again, type));
  EXPECT_EQ(type, 4u);
}

TEST_P(ServiceManagerContract, StartPauseContinueStop) {
  Open();
  ASSERT_TRUE(Sm().StartServiceA(service_));
  EXPECT_TRUE(ReachesState(4));
  EXPECT_FALSE(Sm().StartServiceA(service_));
  EXPECT_EQ(Sm().LastError(), kErrorAlreadyRunning);
  ServiceStatus st;
  EXPECT_TRUE(Sm().ControlService(service_, platform::kServiceControlPause, st));
  EXPECT_TRUE(ReachesState(7));
  EXPECT_TRUE(Sm().ControlService(service_, platform::kServiceControlContinue, st));
  EXPECT_TRUE(ReachesState(4));
  EXPECT_TRUE(Sm().ControlService(service_, platform::kServiceControlStop, st));
  EXPECT_TRUE(ReachesState(1));
  EXPECT_FALSE(Sm().ControlService(service_, platform::kServiceControlStop, st));
  EXPECT_EQ(Sm().LastError(), kErrorServiceNotActive);
}

TEST_P(ServiceManagerContract, ADisabledServiceDoesNotStart) {
  world_->SetStartType(platform::kServiceDisabled);
  Open();
  EXPECT_FALSE(Sm().StartServiceA(service_));
  EXPECT_EQ(Sm().LastError(), kErrorServiceDisabled);
  EXPECT_EQ(State(), 1u);
}

INSTANTIATE_TEST_SUITE_P(All, ServiceManagerContract, ::testing::ValuesIn(ServiceTargets()),
                         TargetName());

// ---- process list ------------------------------------------------------------

// A world where the test can start a program of a given file name that lives until
// its window (of a given title) is closed.
class ProcessWorld {
 public:
  virtual ~ProcessWorld() = default;
  virtual platform::IProcessList& List() = 0;
  // The process id, 0 when it could not be started.
  virtual std::uint32_t StartChild(const Text& exeName, const Text& title) = 0;
  virtual bool Exited(std::uint32_t pid) = 0;
  virtual long PlatformId() = 0;
};

class FakeProcessWorld : public ProcessWorld {
 public:
  platform::IProcessList& List() override { return list_; }
  std::uint32_t StartChild(const Text& exeName, const Text& title) override {
    const std::uint32_t pid = next_ += 4;
    list_.Add(pid, u"C:\\Users\\Tester\\Temp\\" + exeName);
    list_.windows[title] = pid * 16;
    list_.windowOwners[pid * 16] = pid;
    return pid;
  }
  bool Exited(std::uint32_t pid) override { return !list_.Running(pid); }
  long PlatformId() override { return 2; }

 private:
  platform::FakeProcessList list_;
  std::uint32_t next_ = 100;
};

#if QV_HAVE_WIN32
class Win32ProcessWorld : public ProcessWorld {
 public:
  Win32ProcessWorld() : folder_(TempFolder(L"qvcontract-proc-")) {}
  ~Win32ProcessWorld() override {
    for (HANDLE h : children_) {
      TerminateProcess(h, 1);
      WaitForSingleObject(h, 5000);
      ::CloseHandle(h);
    }
    std::error_code ec;
    std::filesystem::remove_all(folder_, ec);
  }
  platform::IProcessList& List() override { return list_; }
  std::uint32_t StartChild(const Text& exeName, const Text& title) override {
    const auto exe = folder_ / std::wstring(W(exeName));
    std::error_code ec;
    std::filesystem::copy_file(BuiltProgram(QV_SIM_BACKGROUND_EXE), exe,
                               std::filesystem::copy_options::overwrite_existing, ec);
    if (ec) return 0;
    std::wstring line = L"\"" + exe.wstring() + L"\" --title " + std::wstring(W(title));
    STARTUPINFOW si{};
    si.cb = sizeof(si);
    PROCESS_INFORMATION pi{};
    if (!CreateProcessW(exe.c_str(), line.data(), nullptr, nullptr, FALSE, 0, nullptr,
                        folder_.c_str(), &si, &pi))
      return 0;
    ::CloseHandle(pi.hThread);
    children_.push_back(pi.hProcess);
    pids_.push_back(pi.dwProcessId);
    // Ready once its window is there.
    Eventually([&] { return FindWindowW(nullptr, W(title)) != nullptr; }, 10000);
    return pi.dwProcessId;
  }
  bool Exited(std::uint32_t pid) override {
    for (size_t i = 0; i < pids_.size(); ++i)
      if (pids_[i] == pid) return WaitForSingleObject(children_[i], 0) == WAIT_OBJECT_0;
    return false;
  }
  long PlatformId() override { return 2; }

 private:
  platform::Win32ProcessList list_;
  std::filesystem::path folder_;
  std::vector<HANDLE> children_;
  std::vector<std::uint32_t> pids_;
};
#endif

using ProcessTarget = Target<ProcessWorld>;

std::vector<ProcessTarget> ProcessTargets() {
  std::vector<ProcessTarget> t = {{"fake", [] { return std::make_unique<FakeProcessWorld>(); }}};
#if QV_HAVE_WIN32
  t.push_back({"win32", [] { return std::make_unique<Win32ProcessWorld>(); }});
#endif
  return t;
}

class ProcessListContract : public ::testing::TestWithParam<ProcessTarget> {
 protected:
  void SetUp() override {
    world_ = GetParam().make();
    stamp_ = base::FromNumber(std::chrono::steady_clock::now().time_since_epoch().count() % 1000000);
  }
  Text Unique(const char16_t* stem) { return Text(stem) + stamp_; }
  std::unique_ptr<ProcessWorld> world_;
  Text stamp_;
};

TEST_P(ProcessListContract, ListHoldsAStartedProgramWithItsModulePath) {
  const Text exe = Unique(u"QVContractChild") + u".exe";
  const std::uint32_t pid = world_->StartChild(exe, Unique(u"QVContractWindow"));
  ASSERT_NE(pid, 0u);
  auto& list = world_->List();
  std::vector<std::uint32_t> ids;
  std::uint32_t returned = 0;
  ASSERT_TRUE(list.EnumProcessIds(4096, ids, returned));
  ASSERT_EQ(returned % 4, 0u);
  bool listed = false;
  for (std::uint32_t i = 0; i < returned / 4; ++i) listed |= ids[i] == pid;
  EXPECT_TRUE(listed);

  const platform::OsHandle h = list.OpenProcess(engine::kListQueryAccess, false, pid);
  ASSERT_NE(h, 0u);
  std::uintptr_t module = 0;
  ASSERT_TRUE(list.EnumModules(h, engine::kModuleTableBytes, module));
  const Text name = list.ModuleFileName(h, module, engine::kModuleNameSize,
                                        engine::kModuleNameBufferChars);
  EXPECT_EQ(name.size(), engine::kModuleNameBufferChars);  // the whole buffer comes back
  EXPECT_EQ(engine::ProgramTail(name), base::ToLower(exe));
  EXPECT_TRUE(list.CloseHandle(h));
}

TEST_P(ProcessListContract, ATooSmallArrayComesBackFull) {
  world_->StartChild(Unique(u"QVContractA") + u".exe", Unique(u"QVContractA"));
  std::vector<std::uint32_t> ids;
  std::uint32_t returned = 0;
  ASSERT_TRUE(world_->List().EnumProcessIds(4, ids, returned));
  EXPECT_EQ(returned, 4u);
}

TEST_P(ProcessListContract, AProcessThatIsNotThereCannotBeOpened) {
  EXPECT_EQ(world_->List().OpenProcess(engine::kListKillAccess, false, 0x7FFFFFF0u), 0u);
}

TEST_P(ProcessListContract, TheEngineScanFindsAndEndsTheProgramByName) {
  const Text exe = Unique(u"QVContractEngine") + u".exe";
  const std::uint32_t pid = world_->StartChild(exe, Unique(u"QVContractEngineWindow"));
  ASSERT_NE(pid, 0u);
  frame::AppState app = [&]() -> frame::AppState {
    static platform::FakePlatform fakes;  // only the process list is used
    return frame::AppState(fakes.Get());
  }();
  app.platform.processes = &world_->List();
  const Text mixedCase = base::ToUpper(exe);
  EXPECT_EQ(engine::ScanForProgram(app, mixedCase, false, world_->PlatformId()), 1);
  EXPECT_FALSE(world_->Exited(pid));
  EXPECT_EQ(engine::ScanForProgram(app, mixedCase, true, world_->PlatformId()), 1);
  EXPECT_TRUE(Eventually([&] { return world_->Exited(pid); }));
  EXPECT_EQ(engine::ScanForProgram(app, exe, false, world_->PlatformId()), 0);
}

TEST_P(ProcessListContract, ACloseMessageEndsTheProgramOfThatWindow) {
  const Text title = Unique(u"QVContractClose");
  const std::uint32_t pid = world_->StartChild(Unique(u"QVContractClose") + u".exe", title);
  ASSERT_NE(pid, 0u);
  auto& list = world_->List();
  EXPECT_EQ(list.FindWindowByTitle(Unique(u"QVNoSuchWindow")), 0u);
  const platform::OsHandle window = list.FindWindowByTitle(title);
  ASSERT_NE(window, 0u);
  EXPECT_TRUE(list.PostMessageA(window, 16, 0, 0));
  EXPECT_TRUE(Eventually([&] { return world_->Exited(pid); }));
  // A null window is the caller's own queue: the post succeeds and ends nothing.
  const std::uint32_t other = world_->StartChild(Unique(u"QVContractStays") + u".exe",
                                                 Unique(u"QVContractStays"));
  EXPECT_TRUE(list.PostMessageA(0, 16, 0, 0));
  EXPECT_FALSE(world_->Exited(other));
}

INSTANTIATE_TEST_SUITE_P(All, ProcessListContract, ::testing::ValuesIn(ProcessTargets()),
                         TargetName());

}  // namespace
}  // namespace contract
