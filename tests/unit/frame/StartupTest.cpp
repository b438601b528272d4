#include <gtest/gtest.h>

#include "frame/Logs.h"
#include "frame/Settings.h"
#include "frame/Startup.h"
#include "testkit/FrameFixture.h"

using base::Text;
using frame::MainResult;
using testkit::FrameFixture;

namespace {

struct RecordingSteps : frame::IStartupSteps {
  void CreateEngines(frame::AppState&) override { calls.push_back("engines"); }
  void LoadMonitorWindow(frame::AppState& app) override {
    calls.push_back("load");
    userAtLoad = app.UserName;
  }
  void ApplyGeometry(frame::AppState&, std::optional<long> w, std::optional<long> h,
                     std::optional<long> t, std::optional<long> l) override {
    calls.push_back("geometry");
    geometry = {w, h, t, l};
  }
  void HideFromTaskBar(frame::AppState&) override { calls.push_back("hide"); }
  void ShowFromTaskBar(frame::AppState&) override { calls.push_back("show"); }
  void ShowLogInWindow(frame::AppState&) override { calls.push_back("log"); }

  std::vector<std::string> calls;
  std::vector<std::optional<long>> geometry;
  Text userAtLoad;
};

const std::vector<std::string> kShown{"engines", "load", "show", "log"};

// A monitor process about to start, with its settings written as the test wants them.
struct Process : FrameFixture {
  void SetIni(const Text& section, const Text& key, const Text& value) {
    AddCommon();
    fake.profile.WriteString(section, key, value, Common(u"qvwin.ini"));
  }
  RecordingSteps steps;
};

class StartupTest : public ::testing::Test, public Process {};

// Main in a process of its own, started with this command line and these places.
struct Started : Process {
  explicit Started(const Text& commandLine, std::vector<std::pair<Text, Text>> places = {}) {
    fake.system.commandLine = commandLine;
    for (const auto& [key, value] : places) SetIni(u"LDPI", key, value);
    EXPECT_EQ(frame::Main(app, steps), MainResult::Run);
  }
};

TEST_F(StartupTest, OnlyTheExactWordMinHidesTheWindow) {
  SetIni(u"Corvane", u"UserName", u"jsmith");
  fake.system.commandLine = u"Min";
  ASSERT_EQ(frame::Main(app, steps), MainResult::Run);
  EXPECT_EQ(steps.calls, (std::vector<std::string>{"engines", "load", "hide", "log"}));
  EXPECT_EQ(steps.userAtLoad, u"jsmith");
  EXPECT_EQ(Trace(), std::vector<Text>{u"HideFromTaskBar called from the Monitor."});
  EXPECT_EQ(app.ScheduleFilePath, u"C:\\QV\\QVCOMMON\\scheduleData.txt");
  EXPECT_EQ(fake.fs.CurrentFolder(), u"C:\\QV");

  for (Text word : {u"min", u"Min ", u"other"}) EXPECT_EQ(Started(word).steps.calls, kShown);
}

TEST_F(StartupTest, SecondInstanceEndsSilentlyAndLeavesTheFirstAlone) {
  ASSERT_EQ(frame::Main(app, steps), MainResult::Run);

  platform::FakePlatform second(fake.mutex.Kernel());
  second.system.programFolder = u"C:\\QV";
  second.fs.AddFolders(u"C:\\QV");
  frame::AppState app2(second.Get());
  RecordingSteps steps2;
  EXPECT_EQ(frame::Main(app2, steps2), MainResult::AlreadyRunning);
  EXPECT_TRUE(steps2.calls.empty());
  EXPECT_EQ(second.mutex.calls, (std::vector<std::string>{"create", "close", "release"}));
  EXPECT_TRUE(second.fs.Bytes(u"C:\\QV\\QVCOMMON\\SerTraceFile.txt").empty());
  EXPECT_EQ(fake.mutex.Kernel()->openCounts[frame::kInstanceMutexName], 1);
}

TEST_F(StartupTest, MutexOfAnotherUserAndPreviousInstanceAlsoEndTheStart) {
  fake.mutex.Kernel()->otherUsersObjects.insert(frame::kInstanceMutexName);
  EXPECT_EQ(frame::Main(app, steps), MainResult::AlreadyRunning);
  EXPECT_TRUE(steps.calls.empty());

  FrameFixture f;
  RecordingSteps s;
  f.fake.system.previousInstance = true;
  EXPECT_EQ(frame::Main(f.app, s), MainResult::AlreadyRunning);
  EXPECT_TRUE(s.calls.empty());
  EXPECT_EQ(f.Trace(), std::vector<Text>{
                           u"There is an instance of this Monitor application already running."});
}

// Without a check file the permission is proved on the trace, which starts afresh;
// with one, on that file, which fails the start when it cannot be written.
TEST_F(StartupTest, ThePermissionCheckWritesTheCheckFileOrEmptiesTheTrace) {
  EXPECT_TRUE(frame::WritePermissionCheck(app));  // neither file: nothing to prove
  EXPECT_FALSE(fake.fs.FileExists(Common(u"SerTraceFile.txt")));

  fake.fs.PutFile(Common(u"SerTraceFile.txt"),
                  base::EncodeUtf16Le(base::Utf16Content{true, u"old line\r\nolder\r\n", {}}));
  ASSERT_EQ(frame::Main(app, steps), MainResult::Run);
  EXPECT_EQ(Trace(), (std::vector<Text>{u"Write Permission check",
                                        u"ShowFromTaskBar called from the Monitor."}));

  fake.fs.PutFile(u"C:\\QV\\PermCheck.dat", "x");
  EXPECT_TRUE(frame::WritePermissionCheck(app));
  EXPECT_EQ(Lines(u"C:\\QV\\PermCheck.dat"), std::vector<Text>{u"Write Permission check"});
  EXPECT_EQ(Trace().size(), 2u) << "the trace is kept";
  fake.fs.SetLocked(u"C:\\QV\\PermCheck.dat", true);
  RecordingSteps again;
  EXPECT_EQ(frame::Main(app, again), MainResult::NoWritePermission);
  EXPECT_TRUE(again.calls.empty());
}

TEST_F(StartupTest, DataRootFollowsTheOsNameProvider) {
  fake.system.environment[u"USERPROFILE"] = u"C:\\Users\\jo";
  fake.fs.AddFolders(u"C:\\Users\\jo\\AppData\\Local");
  fake.osName.name = u"VISTA";
  EXPECT_EQ(frame::SettleDataRoot(app), u"C:\\Users\\jo\\AppData\\Local\\Corvane");
  EXPECT_TRUE(fake.fs.FolderExists(u"C:\\Users\\jo\\AppData\\Local\\Corvane"));

  for (std::optional<Text> name : {std::optional<Text>(u"Windows 10"),
                                   std::optional<Text>(u"Vista "), std::optional<Text>()}) {
    fake.osName.name = name;
    EXPECT_EQ(frame::SettleDataRoot(app), u"C:\\QV");
  }
}

TEST_F(StartupTest, GeometryIsAppliedOnlyWhenAllFourKeysAreThere) {
  const Started three(u"", {{u"MonWidth", u"7000"}, {u"MonHeight", u"5000"}, {u"MonTop", u"100"}});
  EXPECT_EQ(three.steps.calls, kShown);
  const Started four(u"", {{u"MonWidth", u"7000"},
                           {u"MonHeight", u"5000.5"},
                           {u"MonTop", u"x"},
                           {u"MonLeft", u" 20 "}});
  EXPECT_EQ(four.steps.calls,
            (std::vector<std::string>{"engines", "load", "geometry", "show", "log"}));
  EXPECT_EQ(four.steps.geometry, (std::vector<std::optional<long>>{7000, 5000, std::nullopt, 20}));
}

TEST_F(StartupTest, APlaceTooLargeForANumberIsPassedOverOnItsOwn) {
  const Started huge(u"", {{u"MonWidth", u"99999999999999999999999"},
                           {u"MonHeight", u"-99999999999999999999"},
                           {u"MonTop", u"9223372036854775807"},
                           {u"MonLeft", u"-30"}});
  EXPECT_EQ(huge.steps.geometry,
            (std::vector<std::optional<long>>{std::nullopt, std::nullopt, std::nullopt, -30}));
}

TEST_F(StartupTest, BacksetPathPrefersTheCommonFile) {
  app.UserName = u" jo ";
  frame::SetBacksetFilePath(app);
  EXPECT_EQ(app.BacksetFilePath, u"C:\\QV\\QVCOMMON\\jo\\BacksetData.txt");
  fake.fs.PutFile(Common(u"BacksetData.txt"), "");
  frame::SetBacksetFilePath(app);
  EXPECT_EQ(app.BacksetFilePath, u"C:\\QV\\QVCOMMON\\BacksetData.txt");
}

TEST_F(StartupTest, FailingStepDoesNotStopMain) {
  struct Throwing : RecordingSteps {
    void LoadMonitorWindow(frame::AppState& a) override {
      RecordingSteps::LoadMonitorWindow(a);
      throw std::runtime_error("no window");
    }
  } throwing;
  EXPECT_EQ(frame::Main(app, throwing), MainResult::Run);
  EXPECT_EQ(throwing.calls, kShown);
}

}  // namespace
