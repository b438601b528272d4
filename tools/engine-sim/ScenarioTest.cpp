#include <gtest/gtest.h>

#include "Scenario.h"

using enginesim::ParseScenario;
using enginesim::Via;

namespace {

TEST(ScenarioTest, ReadsSettingsAndExactCalls) {
  const auto s = ParseScenario(
      "# slow transfer\r\n"
      "files = 5\r\n"
      "FILE_SIZE=1000\n"
      "step_ms = 400\n"
      "optionals = no\n"
      "via = dispatch\n"
      "result = RED\n"
      "[call]\n"
      "sFileName = C:\\a b.txt\n"
      "dfileBuff = -5\n"
      "TimeRemaining = 13:00:00\n"
      "optionals = yes\n"
      "[CALL]\n"
      "sBkStatus = 0\n"
      "via = vtable\n");
  EXPECT_TRUE(s.problems.empty());
  EXPECT_EQ(s.files, 5u);
  EXPECT_EQ(s.fileSize, 1000);
  EXPECT_EQ(s.stepMs, 400u);
  EXPECT_FALSE(s.withOptionals);
  EXPECT_EQ(s.via, Via::Dispatch);
  EXPECT_EQ(s.result, u"RED");
  ASSERT_EQ(s.calls.size(), 2u);
  EXPECT_EQ(s.calls[0].args.sFileName, u"C:\\a b.txt");
  EXPECT_EQ(s.calls[0].args.dfileBuff, -5);
  EXPECT_EQ(s.calls[0].args.TimeRemaining, u"13:00:00");
  EXPECT_TRUE(s.calls[0].withOptionals);
  EXPECT_EQ(s.calls[0].via, Via::Dispatch);  // the scenario's way unless the call says
  EXPECT_EQ(s.calls[1].args.sBkStatus, 0);
  EXPECT_FALSE(s.calls[1].withOptionals);
  EXPECT_EQ(s.calls[1].via, Via::Vtable);
  // Fields a call does not name keep plausible values.
  EXPECT_EQ(s.calls[1].args.dFileSize, 1000);
  EXPECT_EQ(s.calls[1].args.engNumber, 1);
}

TEST(ScenarioTest, ReportsWhatItDoesNotUnderstand) {
  const auto s = ParseScenario("files = many\nspeed = 3\nno equals sign\n[call]\ndFileSize = x\n");
  EXPECT_EQ(s.files, 3u);
  EXPECT_EQ(s.problems.size(), 4u);
}

TEST(ScenarioTest, GeneratedCallsAddUpOverTheTransfer) {
  auto s = ParseScenario("files = 2\nfile_size = 1000\nsteps = 4\nbk_status = 2\n");
  const auto first = enginesim::GeneratedCall(s, 0, 1, 2.0);
  EXPECT_EQ(first.dfileBuff, 250);
  EXPECT_EQ(first.dTotalBuffer, 250);
  EXPECT_EQ(first.dTotalFilesize, 2000);
  EXPECT_EQ(first.iFileProg, 25);
  EXPECT_EQ(first.iTotalProg, 12);
  EXPECT_EQ(first.sBkStatus, 2);
  EXPECT_EQ(first.timeelapsed, u"00:00:02");
  EXPECT_EQ(first.TimeRemaining, u"00:00:14");  // 2 s for 250 bytes, 1750 to go
  const auto last = enginesim::GeneratedCall(s, 1, 4, 8.0);
  EXPECT_EQ(last.dTotalBuffer, 2000);
  EXPECT_EQ(last.iTotalProg, 100);
  EXPECT_EQ(last.TimeRemaining, u"00:00:00");
  EXPECT_NE(first.sFileName, last.sFileName);
  s.withOptionals = false;
  EXPECT_EQ(enginesim::GeneratedCall(s, 0, 1, 1).sBkStatus, 0);
}

}  // namespace
