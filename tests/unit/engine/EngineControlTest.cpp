#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#include "engine/BackGroundService.h"
#include "engine/EngineNames.h"
#include "engine/EngineObjects.h"
#include "engine/NTService.h"
#include "platform/ServiceManager.h"
#include "testkit/FrameFixture.h"

using base::Text;
using engine::BackGroundService;
using engine::NTService;
using platform::FakeServiceManager;
using testkit::FrameFixture;

namespace {

class EngineControlTest : public ::testing::Test, public FrameFixture {
 protected:
  // Every query and control closes the handles it opened, whatever happened.
  void TearDown() override { EXPECT_EQ(fake.services.OpenHandles(), 0); }
  void AddService(unsigned long state, unsigned long startType = 2) {
    FakeServiceManager::Service s;
    s.state = state;
    s.startType = startType;
    fake.services.Add(u"QVWin Service", s);
  }
  FakeServiceManager::Service& Service() { return *fake.services.Find(u"QVWin Service"); }
  std::vector<std::string>& Calls() { return fake.services.calls; }
  void SetEngineType(const Text& type) {
    AddCommon();
    fake.profile.WriteString(u"Corvane", Text(u"Type"), type, Common(u"QVDetails.ini"));
  }
};

TEST_F(EngineControlTest, StatusQueriesWithReadAccessAndNamesEveryState) {
  const char16_t* words[] = {u"Stopped",          u"Start Pending", u"Stop Pending", u"Running",
                             u"Continue Pending", u"Pause Pending", u"Paused"};
  NTService service(app);
  for (unsigned long state = 1; state <= 7; ++state) {
    AddService(state);
    EXPECT_EQ(service.GetServiceStatus(), words[state - 1]) << state;
  }
  AddService(8);
  EXPECT_EQ(service.GetServiceStatus(), u"");
  EXPECT_EQ(Calls()[0], "OpenSCManagerW(,ServicesActive,0x80000000)");
  EXPECT_EQ(Calls()[1], "OpenServiceW(QVWin Service,0x4)");
}

TEST_F(EngineControlTest, WithoutServiceOrManagerTheStatusIsEmptyAndNothingIsAsked) {
  NTService service(app);
  EXPECT_FALSE(service.Installed());
  EXPECT_EQ(service.GetServiceStatus(), u"");
  service.ServiceStart();
  service.ServiceStop();
  EXPECT_TRUE(Calls().empty());
  AddService(1);
  fake.services.managerFails = true;
  EXPECT_EQ(service.GetServiceStatus(), u"");
  fake.services.managerFails = false;
  fake.services.queryFails = true;
  EXPECT_EQ(service.GetServiceStatus(), u"");
  fake.services.queryFails = false;
  // Installed while the monitor runs: the next call finds it.
  EXPECT_TRUE(service.Installed());
  EXPECT_EQ(service.GetServiceStatus(), u"Stopped");
  service.ServiceStart();
  EXPECT_EQ(service.GetServiceStatus(), u"Running");

  fake.Get().services = nullptr;  // no service manager at all: a trace line, no crash
  EXPECT_EQ(service.GetServiceStatus(), u"");
  ASSERT_FALSE(Trace().empty());
  EXPECT_EQ(Trace().back(), u"Error Monitor Object variable or With block variable not set");
}

TEST_F(EngineControlTest, ControlsUseFullAccessAndTheirCodes) {
  AddService(4);
  NTService service(app);
  service.ServicePause();
  EXPECT_EQ(Service().state, 7u);
  service.ServiceResume();
  EXPECT_EQ(Service().state, 4u);
  service.ServiceStop();
  EXPECT_EQ(Service().state, 1u);
  service.ServiceStart();
  EXPECT_EQ(Service().state, 4u);
  // Each control opens the service with full access.
  EXPECT_EQ(std::count(Calls().begin(), Calls().end(), "OpenServiceW(QVWin Service,0xf01ff)"), 4);
}

TEST_F(EngineControlTest, StartTypeAsksTwiceForTheConfiguration) {
  AddService(1, 3);
  Service().configBytes = 233;
  NTService service(app);
  EXPECT_EQ(service.GetServiceStartupType(), 3);
  EXPECT_EQ(std::count(Calls().begin(), Calls().end(), "QueryServiceConfigA(233)"), 1);
  fake.services.managerFails = true;
  EXPECT_EQ(service.GetServiceStartupType(), 0);
}

TEST_F(EngineControlTest, DisabledServiceGetsOneRepairCommandPerObject) {
  AddService(1, 4);
  fake.system.computerName = u"BOX7";
  NTService active(app), serviceEngine(app);

  active.ServiceStart();
  active.ServiceStart();
  ASSERT_EQ(fake.shell.runs.size(), 1u);
  EXPECT_EQ(fake.shell.runs[0].first, u"SC \"\\\\BOX7\" config \"QVWin Service\" start= auto");
  EXPECT_TRUE(fake.shell.runs[0].second);  // without a window
  EXPECT_TRUE(active.ConfigRepairIssued());
  // The start is still tried (the command is not awaited) and fails on the disabled service.
  EXPECT_EQ(std::count(Calls().begin(), Calls().end(), "StartService"), 2);
  EXPECT_EQ(Service().state, 1u);

  serviceEngine.ServiceStart();  // another object may issue it once too
  EXPECT_EQ(fake.shell.runs.size(), 2u);
}

TEST_F(EngineControlTest, NoRepairWithoutComputerNameOrWhenEnabled) {
  AddService(1, 4);
  fake.system.computerName = u"";
  NTService service(app);
  service.ServiceStart();
  EXPECT_TRUE(fake.shell.runs.empty());
  EXPECT_FALSE(service.ConfigRepairIssued());

  fake.system.computerName = u"ABCDEFGHIJKLMNOP";  // 16 characters do not fit the buffer
  EXPECT_EQ(service.GetCompName(), u"");
  service.ServiceStart();
  EXPECT_TRUE(fake.shell.runs.empty());

  fake.system.computerName = u"BOX";
  Service().startType = 2;
  service.ServiceStart();
  EXPECT_TRUE(fake.shell.runs.empty());
  EXPECT_EQ(Service().state, 4u);
}

TEST_F(EngineControlTest, BackgroundFormStartsHiddenAndStopsByCloseMessage) {
  BackGroundService bg(app);
  bg.ServiceStart();
  ASSERT_EQ(fake.shell.executed.size(), 1u);
  EXPECT_EQ(fake.shell.executed[0].file, u"QVBackground_955.exe");
  EXPECT_EQ(fake.shell.executed[0].showCommand, 0);  // hidden

  bg.ServiceStop();  // no such window: the close goes to a null window
  fake.processes.windows[u"QVBackground"] = 0x777;
  bg.ServiceStop();
  std::vector<std::string> expected = {"FindWindow(QVBackground)", "PostMessageA(0,16,0,0)",
                                       "FindWindow(QVBackground)", "PostMessageA(1911,16,0,0)"};
  EXPECT_EQ(fake.processes.calls, expected);
}

TEST_F(EngineControlTest, BackgroundStatusComesFromTheProcessList) {
  BackGroundService bg(app);
  EXPECT_EQ(bg.GetServiceStatus(), u"Stopped");
  fake.processes.Add(40, u"C:\\Somewhere\\qvbackground_955.EXE");
  EXPECT_EQ(bg.GetServiceStatus(), u"Running");
  // The status check never kills and opens for query only.
  EXPECT_TRUE(fake.processes.Running(40));
  EXPECT_NE(
      std::find(fake.processes.calls.begin(), fake.processes.calls.end(), "OpenProcess(1040,0,40)"),
      fake.processes.calls.end());

  fake.Get().processes = nullptr;  // the check itself fails
  EXPECT_EQ(bg.GetServiceStatus(), u"Unknown");
  EXPECT_EQ(Trace().back(),
            u"Unable to read the background exe status, Reason : Object variable or With block "
            u"variable not set");
}

TEST_F(EngineControlTest, BackgroundFormOffersNoPauseNorServiceQueries) {
  BackGroundService bg(app);
  engine::EngineObject& late = bg;
  for (const auto& call : std::vector<std::function<void()>>{
           [&] { late.ServicePause(); }, [&] { late.ServiceResume(); },
           [&] { late.GetServiceStartupType(); }, [&] { late.GetCompName(); }}) {
    try {
      call();
      ADD_FAILURE() << "offered";
    } catch (const base::Failure& f) {
      EXPECT_EQ(f.Number(), 438);
    }
  }
}

TEST_F(EngineControlTest, MainCreatesThreeObjectsWithTheActiveOneByType) {
  SetEngineType(u"SERVICE ");
  engine::CreateEngines(app);
  ASSERT_TRUE(app.ServiceEngine && app.BackgroundEngine && app.ActiveEngine);
  EXPECT_TRUE(app.ServiceEngine->IsService());
  EXPECT_FALSE(app.BackgroundEngine->IsService());
  EXPECT_TRUE(app.ActiveEngine->IsService());
  EXPECT_NE(app.ActiveEngine, app.ServiceEngine);

  SetEngineType(u"exe");
  engine::CreateEngines(app);
  EXPECT_FALSE(app.ActiveEngine->IsService());
  EXPECT_NE(app.ActiveEngine, app.BackgroundEngine);
}

}  // namespace
