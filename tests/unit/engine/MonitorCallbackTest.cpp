#include <gtest/gtest.h>

#include "engine/MonitorCallback.h"
#include "frame/Logs.h"
#include "testkit/FrameFixture.h"

using base::Text;
using engine::FilterTimeLeft;
using platform::UpdateMonitorArgs;
using testkit::FrameFixture;

namespace {

constexpr double kGiB = 1073741824.0;

UpdateMonitorArgs Call(const Text& file = u"C:\\Data\\report.doc") {
  UpdateMonitorArgs a;
  a.sFileName = file;
  a.dFileSize = 2048;
  a.dTotalFilesize = 4 * kGiB;
  a.dfileBuff = 1024;
  a.dTotalBuffer = 1.5 * kGiB;
  a.sTrfRate = u"512 KB/s";
  a.iFileProg = 50;
  a.iTotalProg = 37;
  a.StartTime = 1.5f;
  a.timeelapsed = u"00:10:00";
  a.TimeRemaining = u"2:10:00";
  a.engNumber = 1;
  a.sBkStatus = 2;
  return a;
}

class MonitorCallbackTest : public ::testing::Test, public FrameFixture {};

TEST(TimeLeftTest, FilterKeepsClearsOrLeavesTheOldValue) {
  EXPECT_EQ(FilterTimeLeft(u"", 100), Text());
  EXPECT_EQ(FilterTimeLeft(u"13:00:00", 0), Text());  // too long whatever the size
  // A gigabyte for each hour after the first.
  EXPECT_EQ(FilterTimeLeft(u"2:00:00", kGiB - 1), Text());
  EXPECT_EQ(FilterTimeLeft(u"2:00:00", kGiB), Text(u"2:00:00"));
  EXPECT_EQ(FilterTimeLeft(u"1:59:00", 1), Text(u"1:59:00"));
  EXPECT_EQ(FilterTimeLeft(u"12:00:00", 11 * kGiB), Text(u"12:00:00"));
  // No usable hour part, or no total to judge by: the stored value stays.
  EXPECT_EQ(FilterTimeLeft(u"5 min", 1e12), std::nullopt);
  EXPECT_EQ(FilterTimeLeft(u":30", 1e12), std::nullopt);
  EXPECT_EQ(FilterTimeLeft(u"2:10:00", 0), std::nullopt);
  EXPECT_EQ(FilterTimeLeft(u"99999999999999999999:00", 0), Text());
  EXPECT_EQ(FilterTimeLeft(u"-3:00:00", 5), Text(u"-3:00:00"));
}

TEST_F(MonitorCallbackTest, GetProperTimeGivesTwoDigitParts) {
  EXPECT_EQ(engine::GetProperTime(app, 3909), u"01:05:09");
  EXPECT_EQ(engine::GetProperTime(app, 36000 + 600 + 10), u"10:10:10");
  EXPECT_EQ(engine::GetProperTime(app, 100 * 3600), u"100:00:00");
}

TEST_F(MonitorCallbackTest, AnAcceptedCallIsKeptForTheTick) {
  app.StopSeen = true;
  EXPECT_EQ(engine::UpdateMonitor(app, Call()), 1);
  // What the tick draws of it is TickTest's.
  EXPECT_EQ(app.Transfer.sFileName, u"C:\\Data\\report.doc");
  EXPECT_EQ(app.Transfer.TimeRemaining, u"2:10:00");
  EXPECT_TRUE(app.UpdateWaiting);
  EXPECT_FALSE(app.StopSeen);
  EXPECT_EQ(app.PaneFlag, u"1");
  EXPECT_TRUE(Trace().empty());
}

TEST_F(MonitorCallbackTest, TimeLeftFilterAndOptionalStatusOnLaterCalls) {
  engine::UpdateMonitor(app, Call());
  UpdateMonitorArgs a = Call();
  a.TimeRemaining = u"later";  // no hour part: the last good value stays
  a.sBkStatus = 0;             // left out by the engine
  engine::UpdateMonitor(app, a);
  EXPECT_EQ(app.Transfer.TimeRemaining, u"2:10:00");
  EXPECT_EQ(app.Transfer.sBkStatus, 0);
}

TEST_F(MonitorCallbackTest, StopWordInAnyCaseEndsTheTransferAndKeepsNothing) {
  engine::UpdateMonitor(app, Call());
  UpdateMonitorArgs a = Call(u"?StOp");
  a.dFileSize = -1;  // not looked at
  EXPECT_EQ(engine::UpdateMonitor(app, a), 1);
  EXPECT_TRUE(app.StopSeen);
  EXPECT_FALSE(app.UpdateWaiting);
  EXPECT_EQ(app.PaneFlag, u"1");
  EXPECT_EQ(app.Transfer.sFileName, u"C:\\Data\\report.doc");
  EXPECT_TRUE(Trace().empty());
  EXPECT_FALSE(engine::IsStopWord(u"?stop "));
  EXPECT_FALSE(engine::IsStopWord(u"stop"));
}

TEST_F(MonitorCallbackTest, ANegativeSizeIsRefusedWithOneTraceLine) {
  engine::UpdateMonitor(app, Call());
  app.UpdateWaiting = false;
  UpdateMonitorArgs a = Call(u"C:\\Data\\bad.bin");
  a.dfileBuff = -5;
  a.dTotalBuffer = 1234.5;
  a.StartTime = 0.25f;
  a.TimeRemaining = u"0:01:00";
  a.sTrfRate = u"1 MB/s";
  engine::UpdateMonitor(app, a);
  EXPECT_EQ(app.Transfer.sFileName, u"C:\\Data\\report.doc");
  EXPECT_FALSE(app.UpdateWaiting);  // not touched
  EXPECT_EQ(app.PaneFlag, u"1");
  const Text expected = frame::MonitorTraceLine(
      frame::LogStamp(app),
      u"got a call C:\\Data\\bad.bin 2048 4294967296 -5 1234.5 1 MB/s 0.250:01:00", 0);
  ASSERT_EQ(Trace().size(), 1u);
  EXPECT_EQ(Trace()[0], expected);

  for (auto field : {&UpdateMonitorArgs::dFileSize, &UpdateMonitorArgs::dTotalFilesize,
                     &UpdateMonitorArgs::dTotalBuffer}) {
    UpdateMonitorArgs b = Call(u"neg");
    b.*field = -0.5;
    engine::UpdateMonitor(app, b);
  }
  EXPECT_EQ(Trace().size(), 4u);
  EXPECT_EQ(app.Transfer.sFileName, u"C:\\Data\\report.doc");
}

TEST(NumberTextTest, WritesNumbersTheWayTheEngineTextConversionDoes) {
  EXPECT_EQ(engine::NumberText(-5, 15), u"-5");
  EXPECT_EQ(engine::NumberText(1234.5, 15), u"1234.5");
  EXPECT_EQ(engine::NumberText(1234.5, 15, u","), u"1234,5");
  EXPECT_EQ(engine::NumberText(1e20, 15), u"1E+20");
  EXPECT_EQ(engine::NumberText(123456789012345.0, 15), u"123456789012345");
  EXPECT_EQ(engine::NumberText(0.1f, 7), u"0.1");
  EXPECT_EQ(engine::NumberText(1e-5, 15), u"1E-05");
}

TEST_F(MonitorCallbackTest, TheClassKeepsItsRateAndTracesCallsOnlyWhenAsked) {
  engine::MonitorCallback quiet(app);
  quiet.SetTransferRate(12.5);
  EXPECT_EQ(quiet.UpdateMonitor(Call()), 1);
  EXPECT_TRUE(Trace().empty());

  fake.system.environment[u"QV_TRACE_UPDATES"] = u"1";
  engine::MonitorCallback traced(app);
  EXPECT_EQ(traced.GetTransferRate(), 0);  // each instance has its own
  UpdateMonitorArgs a = Call(u"C:\\x y.txt");
  a.dFileSize = 0.1;
  a.preCall = 3;
  traced.UpdateMonitor(a);
  auto lines = Trace();
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[0],
            u"UpdateMonitor arrived: sFileName=[C:\\x y.txt] dFileSize=[0.1] "
            u"dTotalFilesize=[4294967296] dfileBuff=[1024] dTotalBuffer=[1610612736] "
            u"sTrfRate=[512 KB/s] iFileProg=[50] iTotalProg=[37] StartTime=[1.5] "
            u"timeelapsed=[00:10:00] TimeRemaining=[2:10:00] engNumber=[1] preCall=[3] "
            u"sBkStatus=[2]");
  EXPECT_TRUE(base::EndsWith(lines[1], u"UpdateWaiting=[1] StopSeen=[0] PaneFlag=[1]"));
}

}  // namespace
