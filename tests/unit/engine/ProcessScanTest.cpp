#include <gtest/gtest.h>

#include <algorithm>

#include "engine/BackGroundService.h"
#include "engine/EngineObject.h"
#include "engine/EngineObjects.h"
#include "engine/NTService.h"
#include "engine/ProcessScan.h"
#include "jobstore/DBaction.h"
#include "testkit/FrameFixture.h"

using base::Text;
using engine::ProgramTail;
using engine::ScanForProgram;
using testkit::FrameFixture;

namespace {

const Text kBackground = u"QVBackground_955.exe";

class ProcessScanTest : public ::testing::Test, public FrameFixture {
 protected:
  // Every scan closes what it opened, whatever it found.
  void TearDown() override { EXPECT_EQ(fake.processes.OpenHandles(), 0); }
  long Query() { return ScanForProgram(app, kBackground, false, 2, engine::ScanAccess::QueryOnly); }
  std::vector<std::string>& Calls() { return fake.processes.calls; }
  long Count(const std::string& call) { return std::count(Calls().begin(), Calls().end(), call); }
  std::vector<std::string> CallsStartingWith(const std::string& prefix) {
    std::vector<std::string> out;
    for (const auto& c : Calls())
      if (c.rfind(prefix, 0) == 0) out.push_back(c);
    return out;
  }
};

TEST(ProgramTailTest, KeepsTheLowerCasedFileNameAfterBothKindsOfSeparator) {
  EXPECT_EQ(ProgramTail(u"C:\\Program Files\\QV\\QVWin Service_955.EXE"), u"qvwin service_955.exe");
  EXPECT_EQ(ProgramTail(u"Z:\\a/b\\c/QVBackground_955.exe"), u"qvbackground_955.exe");
  EXPECT_EQ(ProgramTail(Text(u"x.exe\0garbage\\y.exe", 19)), u"x.exe");
  EXPECT_EQ(ProgramTail(u""), u"");
  EXPECT_EQ(ProgramTail(u"dir\\"), u"");
}

TEST_F(ProcessScanTest, FindsTheProgramInAnyFolderAndCaseAndKillsOnlyTheFirst) {
  fake.processes.Add(8, u"C:\\Windows\\explorer.exe");
  fake.processes.Add(12, u"D:\\elsewhere\\QVWIN SERVICE_955.exe");
  fake.processes.Add(16, u"C:\\QV\\QVWin Service_955.exe");
  EXPECT_EQ(ScanForProgram(app, u"QVWin Service_955.exe", false, 2), 1);
  EXPECT_TRUE(fake.processes.terminated.empty());

  EXPECT_EQ(ScanForProgram(app, u"QVWin Service_955.exe", true, 2), 1);
  EXPECT_EQ(fake.processes.terminated, std::vector<std::uint32_t>{12});
  EXPECT_TRUE(fake.processes.Running(16));
}

TEST_F(ProcessScanTest, PassesOverProcessesThatCannotBeOpened) {
  fake.processes.Add(8, u"C:\\QV\\QVBackground_955.exe", false);  // another user's
  EXPECT_EQ(ScanForProgram(app, kBackground, true, 2), 0);
  EXPECT_TRUE(fake.processes.terminated.empty());
}

TEST_F(ProcessScanTest, QueryOnlyScanOpensWithoutTheRightToEnd) {
  fake.processes.Add(8, u"C:\\QV\\QVBackground_955.exe");
  EXPECT_EQ(ScanForProgram(app, kBackground, true, 2, engine::ScanAccess::QueryOnly), 1);
  EXPECT_EQ(Count("OpenProcess(1040,0,8)"), 1);
  EXPECT_TRUE(fake.processes.Running(8));
}

TEST_F(ProcessScanTest, AWalkOpensOnlyTheProcessesItHasNotMetBefore) {
  for (std::uint32_t pid = 1; pid <= 9; ++pid) fake.processes.Add(pid * 4, u"C:\\w\\other.exe");
  fake.processes.Add(100, u"C:\\w\\locked.exe", false);
  EXPECT_EQ(Query(), 0);
  // 10 processes are 40 bytes: lists of 16 and 32 are full, 64 has room.
  EXPECT_EQ(
      CallsStartingWith("EnumProcessIds"),
      (std::vector<std::string>{"EnumProcessIds(16)", "EnumProcessIds(32)", "EnumProcessIds(64)"}));
  Calls().clear();
  EXPECT_EQ(Query(), 0);
  // One list, from the size that had room last time, and no process opened again.
  EXPECT_EQ(Calls(), std::vector<std::string>{"EnumProcessIds(64)"});

  // The engine starts: only it is opened, and it is found.
  fake.processes.Add(40, u"C:\\QV\\QVBackground_955.exe");
  Calls().clear();
  EXPECT_EQ(Query(), 1);
  EXPECT_EQ(CallsStartingWith("OpenProcess"), std::vector<std::string>{"OpenProcess(1040,0,40)"});
  EXPECT_EQ(Query(), 1);

  // It ends, and another program takes its id: the id's new start tells them apart.
  fake.processes.processes.pop_back();
  fake.processes.Add(40, u"C:\\w\\notepad.exe");
  EXPECT_EQ(Query(), 0);
  fake.processes.processes.pop_back();
  EXPECT_EQ(Query(), 0);
  // The list grows past its last size: it doubles again from there.
  for (std::uint32_t pid = 200; pid < 240; ++pid) fake.processes.Add(pid, u"C:\\w\\other.exe");
  fake.processes.Add(300, u"C:\\QV\\qvbackground_955.EXE");
  Calls().clear();
  EXPECT_EQ(Query(), 1);
  EXPECT_EQ(CallsStartingWith("EnumProcessIds"),
            (std::vector<std::string>{"EnumProcessIds(64)", "EnumProcessIds(128)",
                                      "EnumProcessIds(256)"}));
}

TEST_F(ProcessScanTest, ANameThatCouldNotBeReadIsReadAgainAndAKillOpensEveryProcess) {
  fake.processes.Add(8, u"C:\\QV\\QVBackground_955.exe");
  fake.processes.modulesFail = true;  // a program still starting has no modules yet
  EXPECT_EQ(ScanForProgram(app, kBackground, false, 2), 0);
  fake.processes.modulesFail = false;
  EXPECT_EQ(ScanForProgram(app, kBackground, false, 2), 1);
  Calls().clear();
  EXPECT_EQ(ScanForProgram(app, kBackground, true, 2), 1);
  EXPECT_EQ(Count("OpenProcess(1041,0,8)"), 1);
  EXPECT_EQ(fake.processes.terminated, std::vector<std::uint32_t>{8});
}

TEST_F(ProcessScanTest, SnapshotPathOnTheOldPlatformAndNoneOnAnyOther) {
  fake.processes.Add(8, u"C:\\WINDOWS\\EXPLORER.EXE");
  fake.processes.Add(12, u"C:\\QV\\QVBACKGROUND_955.EXE");
  fake.processes.Add(16, u"C:\\QV\\QVBackground_955.exe");
  EXPECT_EQ(ScanForProgram(app, kBackground, true, 1), 1);
  // The walk ends at the first match.
  std::vector<std::string> expected = {
      "CreateSnapshot(2,0)", "ProcessFirst(546)", "ProcessNext(546)", "OpenProcess(1025,1,12)",
      "TerminateProcess(0)", "CloseHandle",       "CloseHandle"};
  EXPECT_EQ(Calls(), expected);
  EXPECT_EQ(fake.processes.terminated, std::vector<std::uint32_t>{12});

  fake.processes.snapshotFails = true;
  EXPECT_EQ(ScanForProgram(app, kBackground, false, 1), 0);
  // Any other platform finds nothing and asks nothing.
  Calls().clear();
  EXPECT_EQ(ScanForProgram(app, kBackground, true, 3), 0);
  EXPECT_EQ(ScanForProgram(app, kBackground, true, 0), 0);
  EXPECT_TRUE(Calls().empty());
}

TEST_F(ProcessScanTest, EngineObjectsScanForTheirOwnProgramByPlatform) {
  fake.processes.Add(8, u"C:\\QV\\QVWin Service_955.exe");
  fake.processes.Add(12, u"C:\\QV\\QVBackground_955.exe");
  engine::NTService nt(app);
  engine::BackGroundService bg(app);
  fake.system.platformId = 2;
  EXPECT_EQ(nt.IsServiceExeRunning(false), 1);
  EXPECT_EQ(bg.IsServiceExeRunning(true), 1);
  EXPECT_EQ(fake.processes.terminated, std::vector<std::uint32_t>{12});
  EXPECT_EQ(bg.IsServiceExeRunning(false), 0);
  fake.system.platformId = 1;
  Calls().clear();
  EXPECT_EQ(nt.IsServiceExeRunning(true), 1);
  EXPECT_EQ(Calls().front(), "CreateSnapshot(2,0)");
  EXPECT_FALSE(fake.processes.Running(8));
}

TEST_F(ProcessScanTest, ScanForAGivenName) {
  fake.processes.Add(8, u"C:\\QV\\Corvane_Web.exe");
  EXPECT_EQ(engine::IsExeRunningAutomatic(app, u"Corvane_Web.exe", false), 1);
  EXPECT_EQ(engine::IsExeRunningAutomatic(app, u"corvane_web.EXE", true), 1);
  EXPECT_EQ(engine::IsExeRunningAutomatic(app, u"Corvane_Web.exe", false), 0);
  fake.Get().processes = nullptr;
  EXPECT_EQ(engine::IsExeRunningAutomatic(app, u"Corvane_Web.exe", false), 0);
}

class DailyTimerTest : public ProcessScanTest {
 protected:
  void SetUp() override {
    AddCommon();
    fake.processes.Add(8, u"C:\\QV\\QVWin Service_955.exe");
    fake.processes.Add(12, u"C:\\QV\\QVBackground_955.exe");
    engine::CreateEngines(app);
  }
};

TEST_F(DailyTimerTest, EndsBothEngineProgramsBetweenTransfers) {
  static_cast<void>(jobstore::SetStateWord(app, app.ScheduleFilePath, u"0"));
  const auto id = engine::StartDailyTimer(app);
  ASSERT_NE(id, 0u);
  EXPECT_EQ(fake.ui.timers.at(id).intervalMs, 86400000u);
  fake.ui.FireTimer(id);
  EXPECT_EQ(fake.processes.terminated, (std::vector<std::uint32_t>{8, 12}));
}

TEST_F(DailyTimerTest, LeavesARunningTransferAndAMissingFileAlone) {
  engine::TimerProc(app);  // no schedule file
  static_cast<void>(jobstore::SetStateWord(app, app.ScheduleFilePath, u"1"));
  ASSERT_EQ(jobstore::ReadStateLine(app, app.ScheduleFilePath), u"1");
  engine::TimerProc(app);
  static_cast<void>(jobstore::SetStateWord(app, app.ScheduleFilePath, u"2"));
  engine::TimerProc(app);
  EXPECT_TRUE(fake.processes.terminated.empty());
}

TEST_F(DailyTimerTest, OnlyABackgroundEngineGetsTheTimer) {
  fake.profile.WriteString(u"Corvane", Text(u"Type"), Text(u"service"), Common(u"QVDetails.ini"));
  EXPECT_EQ(engine::StartDailyTimer(app), 0u);
  EXPECT_TRUE(fake.ui.timers.empty());
}

}  // namespace
