// The service manager and the process list, call for call, as the engine control
// uses them: the fakes must answer the way Windows does, so that what the engine
// tests prove with the fakes holds on the real system.
#include <gtest/gtest.h>

#include <algorithm>
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
#include <cstring>
#include <filesystem>

#include "SimPrograms.h"
#include "platform/win32/Win32ProcessList.h"
#include "platform/win32/Win32ServiceManager.h"
#include "platform/win32/Win32Shell.h"
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
};

class FakeServiceWorld : public ServiceWorld {
 public:
  explicit FakeServiceWorld(const Text& startWord) {
    platform::FakeServiceManager::Service s;
    s.startType = startWord == u"disabled" ? platform::kServiceDisabled : 3;
    sm_.Add(Name(), s);
  }
  platform::IServiceManager& Sm() override { return sm_; }
  Text Name() const override { return u"QV Contract Service"; }

 private:
  platform::FakeServiceManager sm_;
};

#if QV_HAVE_WIN32
std::filesystem::path FsPath(const Text& windowsPath) {
  return std::filesystem::path(base::ToUtf8(windowsPath));
}

// A folder of its own under the temporary folder, as a Windows path.
Text TempFolder(const Text& stem) {
  std::error_code ec;
  const auto folder = std::filesystem::temp_directory_path(ec) / base::ToUtf8(stem + Stamp());
  std::filesystem::create_directories(folder, ec);
  return base::FromUtf8(folder.string());
}

// Copies a program of the build tree, whose path the Windows program sees under Z:.
bool CopyProgram(const char* built, const Text& to) {
  std::error_code ec;
  std::filesystem::copy_file(FsPath(u"Z:" + base::Replace(base::FromUtf8(built), u"/", u"\\")),
                             FsPath(to), std::filesystem::copy_options::overwrite_existing, ec);
  return !ec;
}

// The simulated engine's service program, registered under a name of this run by
// `sc create`, from a folder of its own. Wine's sc has no "config", so the start type
// is given at creation.
class Win32ServiceWorld : public ServiceWorld {
 public:
  explicit Win32ServiceWorld(const Text& startWord) {
    name_ = u"QV Contract " + Stamp();
    folder_ = TempFolder(u"qvcontract-svc-");
    const Text exe = folder_ + u"\\QVWin Service_955.exe";
    if (!CopyProgram(QV_SIM_SERVICE_EXE, exe)) return;
    shell_.Run(u"sc create \"" + name_ + u"\" binPath= \"" + exe + u"\" start= " + startWord, true);
    ready_ = Eventually([&] { return Exists(); });
  }
  ~Win32ServiceWorld() override {
    if (ScHandle m = sm_.OpenSCManagerW(Text(), u"ServicesActive", platform::kScManagerAllAccess)) {
      if (ScHandle s = sm_.OpenServiceW(m, name_, platform::kServiceAllAccess)) {
        ServiceStatus st;
        sm_.ControlService(s, platform::kServiceControlStop, st);
        Eventually([&] { return sm_.QueryServiceStatus(s, st) && st.currentState == 1; });
        sm_.CloseServiceHandle(s);
      }
      sm_.CloseServiceHandle(m);
    }
    shell_.Run(u"sc delete \"" + name_ + u"\"", true);
    Eventually([&] { return !Exists(); });
    std::error_code ec;
    for (int i = 0; i < 20 && std::filesystem::exists(FsPath(folder_), ec); ++i) {
      std::filesystem::remove_all(FsPath(folder_), ec);
      std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
  }
  platform::IServiceManager& Sm() override { return sm_; }
  Text Name() const override { return name_; }
  bool Ready() const override { return ready_; }

 private:
  bool Exists() {
    bool found = false;
    if (ScHandle m = sm_.OpenSCManagerW(Text(), u"ServicesActive", platform::kGenericRead)) {
      if (ScHandle s = sm_.OpenServiceW(m, name_, platform::kServiceQueryStatus)) {
        found = true;
        sm_.CloseServiceHandle(s);
      }
      sm_.CloseServiceHandle(m);
    }
    return found;
  }

  platform::Win32ServiceManager sm_;
  platform::Win32Shell shell_;
  Text name_;
  Text folder_;
  bool ready_ = false;
};
#endif

// A target makes a world whose service starts as the word of `sc create` says.
using ServiceTarget = Target<ServiceWorld, const Text&>;

std::vector<ServiceTarget> ServiceTargets() {
  std::vector<ServiceTarget> t = {
      {"fake", [](const Text& w) { return std::make_unique<FakeServiceWorld>(w); }}};
#if QV_HAVE_WIN32
  t.push_back({"win32", [](const Text& w) { return std::make_unique<Win32ServiceWorld>(w); }});
#endif
  return t;
}

class ServiceManagerContract : public ::testing::TestWithParam<ServiceTarget> {
 protected:
  void Make(const Text& startWord) {
    world_ = GetParam().make(startWord);
    ASSERT_TRUE(world_->Ready()) << "the service could not be registered";
  }
  void TearDown() override {
    if (!world_) return;
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
  bool ReachesState(unsigned long state) {
    return Eventually([&] { return State() == state; });
  }
  // The start type, asked for in two steps: the size of the answer, then the answer.
  unsigned long StartType() {
    unsigned long needed = 0, again = 0, type = 99;
    EXPECT_FALSE(Sm().QueryServiceConfigA(service_, 0, needed, type));
    EXPECT_EQ(Sm().LastError(), kErrorInsufficientBuffer);
    EXPECT_GT(needed, 36u);  // the structure and its strings
    EXPECT_TRUE(Sm().QueryServiceConfigA(service_, needed, again, type));
    return type;
  }

  std::unique_ptr<ServiceWorld> world_;
  ScHandle manager_ = 0;
  ScHandle service_ = 0;
};

TEST_P(ServiceManagerContract, OnlyAnInstalledServiceIsTakenForInstalledAndOpened) {
  ASSERT_NO_FATAL_FAILURE(Make(u"demand"));
  EXPECT_TRUE(Sm().ServiceInstalled(world_->Name()));
  EXPECT_FALSE(Sm().ServiceInstalled(u"QV No Such Service 7781"));
  // Read access is enough to query the status; an unknown name cannot be opened.
  Open(platform::kGenericRead, platform::kServiceQueryStatus);
  ServiceStatus st;
  ASSERT_TRUE(Sm().QueryServiceStatus(service_, st));
  EXPECT_EQ(st.currentState, 1u);
  EXPECT_EQ(Sm().OpenServiceW(manager_, u"QV No Such Service 7781", platform::kServiceQueryStatus),
            0u);
  EXPECT_EQ(Sm().LastError(), kErrorServiceDoesNotExist);
}

TEST_P(ServiceManagerContract, StartPauseContinueStop) {
  ASSERT_NO_FATAL_FAILURE(Make(u"demand"));
  Open();
  EXPECT_EQ(StartType(), 3u);
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
  ASSERT_NO_FATAL_FAILURE(Make(u"disabled"));
  Open();
  EXPECT_EQ(StartType(), 4u);
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

 private:
  platform::FakeProcessList list_;
  std::uint32_t next_ = 100;
};

#if QV_HAVE_WIN32
// Copies of the simulated background program, started through the shell under file
// names of the test's choosing, found again through the process list.
class Win32ProcessWorld : public ProcessWorld {
 public:
  Win32ProcessWorld() : folder_(TempFolder(u"qvcontract-proc-")) {}
  ~Win32ProcessWorld() override {
    for (std::uint32_t pid : pids_) {
      if (platform::OsHandle h = list_.OpenProcess(1, false, pid)) {
        list_.TerminateProcess(h, 1);
        list_.CloseHandle(h);
      }
    }
    Eventually(
        [&] { return std::all_of(pids_.begin(), pids_.end(), [&](auto p) { return Exited(p); }); },
        5000);
    std::error_code ec;
    std::filesystem::remove_all(FsPath(folder_), ec);
  }
  platform::IProcessList& List() override { return list_; }
  std::uint32_t StartChild(const Text& exeName, const Text& title) override {
    const Text exe = folder_ + u"\\" + exeName;
    if (!CopyProgram(QV_SIM_BACKGROUND_EXE, exe)) return 0;
    if (shell_.Execute(0, u"open", exe, u"--title " + title, folder_, 0) <= 32) return 0;
    if (!Eventually([&] { return list_.FindWindowByTitle(title) != 0; }, 10000)) return 0;
    const std::uint32_t pid = PidOf(exe);
    if (pid) pids_.push_back(pid);
    return pid;
  }
  bool Exited(std::uint32_t pid) override {
    const auto ids = Ids();
    return std::find(ids.begin(), ids.end(), pid) == ids.end();
  }

 private:
  std::vector<std::uint32_t> Ids() {
    std::vector<std::uint32_t> ids;
    std::uint32_t returned = 0;
    if (!list_.EnumProcessIds(65536, ids, returned)) return {};
    ids.resize(returned / 4);
    return ids;
  }
  std::uint32_t PidOf(const Text& exe) {
    for (std::uint32_t id : Ids()) {
      platform::OsHandle h = list_.OpenProcess(engine::kListQueryAccess, false, id);
      if (!h) continue;
      std::uintptr_t module = 0;
      Text name;
      if (list_.EnumModules(h, engine::kModuleTableBytes, module))
        name = base::CutAtNul(list_.ModuleFileName(h, module, 500, 520));
      list_.CloseHandle(h);
      if (base::EqualsNoCase(name, exe)) return id;
    }
    return 0;
  }

  platform::Win32ProcessList list_;
  platform::Win32Shell shell_;
  Text folder_;
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
    stamp_ = Stamp();
  }
  Text Unique(const char16_t* stem) { return Text(stem) + stamp_; }
  std::unique_ptr<ProcessWorld> world_;
  Text stamp_;
};

// The list holds a started program with its module path; its start time tells it from
// a program started again under the same id.
TEST_P(ProcessListContract, AStartTimeTellsProcessesApartAndTheScanSeesARestart) {
  const Text exe = Unique(u"QVContractTimed") + u".exe";
  const std::uint32_t pid = world_->StartChild(exe, Unique(u"QVContractTimedA"));
  ASSERT_NE(pid, 0u);
  auto& list = world_->List();
  std::vector<std::uint32_t> ids;
  std::uint32_t returned = 0;
  ASSERT_TRUE(list.EnumProcessIds(4096, ids, returned));
  ASSERT_EQ(returned % 4, 0u);
  EXPECT_EQ(std::count(ids.begin(), ids.begin() + returned / 4, pid), 1);

  const platform::OsHandle h = list.OpenProcess(engine::kListQueryAccess, false, pid);
  ASSERT_NE(h, 0u);
  std::uintptr_t module = 0;
  ASSERT_TRUE(list.EnumModules(h, engine::kModuleTableBytes, module));
  const Text name =
      list.ModuleFileName(h, module, engine::kModuleNameSize, engine::kModuleNameBufferChars);
  EXPECT_EQ(name.size(), engine::kModuleNameBufferChars);  // the whole buffer comes back
  EXPECT_EQ(engine::ProgramTail(name), base::ToLower(exe));
  EXPECT_TRUE(list.CloseHandle(h));

  // An array too small comes back full; a process that is not there cannot be opened.
  ASSERT_TRUE(list.EnumProcessIds(4, ids, returned));
  EXPECT_EQ(returned, 4u);
  EXPECT_EQ(list.OpenProcess(engine::kListKillAccess, false, 0x7FFFFFF0u), 0u);

  const std::uint64_t started = list.ProcessStartTime(pid);
  EXPECT_NE(started, 0u);
  EXPECT_EQ(list.ProcessStartTime(pid), started);
  EXPECT_EQ(list.ProcessStartTime(0x7FFFFFF0u), 0u);

  platform::FakePlatform fakes;  // only the process list is used
  frame::AppState app(fakes.Get());
  app.platform.processes = &list;
  const long nt = 2;  // the NT family
  // The name is matched in any case; a scan that is not to end it leaves it running.
  EXPECT_EQ(engine::ScanForProgram(app, base::ToUpper(exe), false, nt), 1);
  EXPECT_FALSE(world_->Exited(pid));
  EXPECT_EQ(engine::ScanForProgram(app, exe, false, nt, engine::ScanAccess::QueryOnly), 1);
  EXPECT_EQ(engine::ScanForProgram(app, base::ToUpper(exe), true, nt), 1);  // ends it
  ASSERT_TRUE(Eventually([&] { return world_->Exited(pid); }));
  EXPECT_EQ(engine::ScanForProgram(app, exe, false, nt, engine::ScanAccess::QueryOnly), 0);
  // Started again (perhaps under the same id): the next scan finds it.
  const std::uint32_t second = world_->StartChild(exe, Unique(u"QVContractTimedB"));
  ASSERT_NE(second, 0u);
  EXPECT_NE(list.ProcessStartTime(second), started);
  EXPECT_EQ(engine::ScanForProgram(app, exe, false, nt, engine::ScanAccess::QueryOnly), 1);
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
  const std::uint32_t other =
      world_->StartChild(Unique(u"QVContractStays") + u".exe", Unique(u"QVContractStays"));
  EXPECT_TRUE(list.PostMessageA(0, 16, 0, 0));
  EXPECT_FALSE(world_->Exited(other));
}

INSTANTIATE_TEST_SUITE_P(All, ProcessListContract, ::testing::ValuesIn(ProcessTargets()),
                         TargetName());

}  // namespace
}  // namespace contract
