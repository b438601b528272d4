// The texts of the transfer pane: sizes, the status line, the file name and its
// wrapping, the time left.
#include <gtest/gtest.h>

#include <limits>

#include "monitor/PaneText.h"
#include "testkit/FrameFixture.h"

namespace {

using base::Text;
using monitor::GetProperSizeValue;
using testkit::U8;

class PaneTextTest : public ::testing::Test, public testkit::FrameFixture {
 protected:
  Text Size(double v, bool decimal = false) { return GetProperSizeValue(app, v, decimal); }
};

TEST_F(PaneTextTest, SizesFollowTheBinaryThresholdsWithTheFallThroughAt1024) {
  EXPECT_EQ(Size(1024), u"0.00");  // passes every strict test: no unit
  EXPECT_EQ(Size(1023), u"1,023.00 B");
  EXPECT_EQ(Size(0), u"0.00 B");
  EXPECT_EQ(Size(1025), u"1.00 KB");
  EXPECT_EQ(Size(1048576), u"1,024.00 KB");
  EXPECT_EQ(Size(1048577), u"1.00 MB");
  EXPECT_EQ(Size(1073741824), u"1,024.00 MB");
  EXPECT_EQ(Size(1073741824.0 * 1536), u"1,536.00 GB");
}

TEST_F(PaneTextTest, TheDecimalFlagChangesOnlyTheDivisor) {
  EXPECT_EQ(Size(1500000, true), u"1.50 MB");
  EXPECT_EQ(Size(1024, true), u"0.00");
  EXPECT_EQ(Size(1048576, true), u"1,048.58 KB");  // still below the binary MB threshold
  EXPECT_EQ(Size(2e9, true), u"2.00 GB");
}

TEST_F(PaneTextTest, NumbersTakeTheRegionalSeparators) {
  fake.locale.decimalSeparator = u",";
  fake.locale.thousandsSeparator = u".";
  EXPECT_EQ(Size(1023), u"1.023,00 B");
  EXPECT_EQ(Size(1073741824.0 * 1234567), u"1.234.567,00 GB");
  fake.locale.thousandsSeparator = u"\u00A0";
  EXPECT_EQ(Size(1023 * 1048576.0), u"1\u00A0023,00 MB");
  EXPECT_EQ(monitor::FormatTwoDecimals(-1234.567, &fake.locale), u"-1\u00A0234,57");
  EXPECT_EQ(monitor::FormatTwoDecimals(-0.001, &fake.locale), u"0,00");
}

TEST_F(PaneTextTest, AFailedConversionGivesZeroKilobytesAndATraceLine) {
  EXPECT_EQ(Size(std::numeric_limits<double>::infinity()), u"0 KB");
  auto trace = Lines(Common(u"SerTraceFile.txt"));
  ASSERT_EQ(trace.size(), 1u);
  EXPECT_EQ(trace[0], u"Error in GetProperSizeValue Overflow");
}

TEST_F(PaneTextTest, StatusLineWithAndWithoutTotalAndRate) {
  engine::TransferUpdate t;
  t.dTotalBuffer = 1536;
  t.dTotalFilesize = 1048577;
  t.sTrfRate = u"12 KB/s";
  EXPECT_EQ(monitor::TransferStatusLine(app, t), u"Status : 1.50 KB out of 1.00 MB (12 KB/s)");
  t.dTotalFilesize = 0;
  EXPECT_EQ(monitor::TransferStatusLine(app, t), u"Status : 1.50 KB Transferred (12 KB/s)");
  t.sTrfRate.clear();
  EXPECT_EQ(monitor::TransferStatusLine(app, t), u"Status : 1.50 KB Transferred");
}

TEST_F(PaneTextTest, FileNameCarriesItsKindAndShowsAmpersandsAsTheyStand) {
  engine::TransferUpdate t;
  t.sFileName = u"C:\\Tom & Jerry\\a&&b.doc";
  t.sBkStatus = 1;
  EXPECT_EQ(monitor::FileNameWithKind(t), u"[Full Backup] C:\\Tom && Jerry\\a&&&&b.doc");
  t.sBkStatus = 2;
  EXPECT_EQ(monitor::FileNameWithKind(t), u"[Incremental Backup] C:\\Tom && Jerry\\a&&&&b.doc");
  for (long kind : {0L, 3L, 4L, 7L}) {
    t.sBkStatus = kind;
    EXPECT_EQ(monitor::FileNameWithKind(t), u"C:\\Tom && Jerry\\a&&&&b.doc") << kind;
  }
}

TEST_F(PaneTextTest, TimeLeftIsFilteredAgainOnDrawing) {
  engine::TransferUpdate t;
  t.dTotalFilesize = 500.0 * 1048576;
  t.TimeRemaining = u"";
  EXPECT_EQ(monitor::TimeLeftForPane(t), Text());
  t.TimeRemaining = u"5";  // no colon: left as it is
  EXPECT_EQ(monitor::TimeLeftForPane(t), std::nullopt);
  t.TimeRemaining = u":10:00";
  EXPECT_EQ(monitor::TimeLeftForPane(t), std::nullopt);
  t.TimeRemaining = u"13:00:00";
  EXPECT_EQ(monitor::TimeLeftForPane(t), Text());
  t.TimeRemaining = u"1:10:00";
  EXPECT_EQ(monitor::TimeLeftForPane(t), Text(u"1:10:00"));
  t.TimeRemaining = u"2:10:00";  // 500 MB cannot take two hours
  EXPECT_EQ(monitor::TimeLeftForPane(t), Text());
  t.dTotalFilesize = 1.5 * 1073741824;
  EXPECT_EQ(monitor::TimeLeftForPane(t), Text(u"2:10:00"));
  t.dTotalFilesize = 0;  // unknown total: left as it is
  EXPECT_EQ(monitor::TimeLeftForPane(t), std::nullopt);
}

}  // namespace
