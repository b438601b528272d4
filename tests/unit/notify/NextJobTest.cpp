// The next-job line, row by row at the borders of its table, and the quota rule.
#include <gtest/gtest.h>

#include "base/Guarded.h"
#include "jobstore/DBaction.h"
#include "frame/Settings.h"
#include "notify/NextJob.h"
#include "testkit/FrameFixture.h"

namespace {

using base::DateTime;
using base::Text;
using testkit::U8;

Text Line(DateTime now, DateTime next, base::TextView decimal = u".") {
  return notify::NextJobStatusLine(now, next, decimal).text;
}

Text In(const Text& rest) { return Text(notify::kStartsIn) + rest; }

TEST(NextJobTest, SecondsAndMinutesAtTheirBorders) {
  // 90 seconds away, inside one minute boundary: n is 1, s is 90.
  EXPECT_EQ(Line({2026, 11, 15, 10, 0, 15}, {2026, 11, 15, 10, 1, 45}), notify::kStartsImmediately);
  EXPECT_EQ(Line({2026, 11, 15, 10, 0, 30}, {2026, 11, 15, 10, 1, 30}), In(u"1 minute(s)"));
  EXPECT_EQ(Line({2026, 11, 15, 10, 0, 59}, {2026, 11, 15, 10, 2, 0}), In(u"2 minute(s)"));
  EXPECT_EQ(Line({2026, 11, 15, 10, 0, 0}, {2026, 11, 15, 10, 59, 0}), In(u"59 minute(s)"));
  // A job that should have started already starts immediately.
  EXPECT_EQ(Line({2026, 11, 15, 10, 0, 0}, {2026, 11, 14, 10, 0, 0}), notify::kStartsImmediately);
}

TEST(NextJobTest, HoursTheSixtyMinuteCaseAndTheOneDayCase) {
  // One hour boundary crossed: h is 1, so the minutes speak, and 60 of them is an hour.
  EXPECT_EQ(Line({2026, 11, 15, 10, 0, 0}, {2026, 11, 15, 11, 0, 0}), In(u"1 hour(s)"));
  EXPECT_EQ(Line({2026, 11, 15, 10, 30, 0}, {2026, 11, 15, 11, 10, 0}), In(u"40 minute(s)"));
  EXPECT_EQ(Line({2026, 11, 15, 0, 0, 0}, {2026, 11, 15, 23, 59, 0}), In(u"23 hour(s)"));
  EXPECT_EQ(Line({2026, 11, 15, 0, 0, 0}, {2026, 11, 16, 0, 0, 0}), In(u"1 day"));
  // 25 hours on the next day: d is 1, so the hours speak.
  EXPECT_EQ(Line({2026, 11, 15, 0, 0, 0}, {2026, 11, 16, 1, 0, 0}), In(u"25 hour(s)"));
  // Across two midnights it is days, even when fewer than 48 hours.
  EXPECT_EQ(Line({2026, 11, 15, 23, 0, 0}, {2026, 11, 17, 0, 0, 0}), In(u"2 day(s)"));
}

TEST(NextJobTest, DaysAndYearsWithTheLeapYearDivisor) {
  EXPECT_EQ(Line({2026, 1, 1, 0, 0, 0}, {2026, 12, 31, 0, 0, 0}), In(u"364 day(s)"));
  // In a year divisible by 4 a year has 366 days: 366 of them are one year.
  EXPECT_EQ(Line({2028, 1, 1, 9, 0, 0}, {2029, 1, 1, 9, 0, 0}), In(u"1 year(s)"));
  // Elsewhere 365: 400 days are 1.1 years, with the locale's decimal mark.
  EXPECT_EQ(Line({2026, 1, 1, 9, 0, 0}, {2027, 2, 5, 9, 0, 0}), In(u"1.1 year(s)"));
  EXPECT_EQ(Line({2026, 1, 1, 9, 0, 0}, {2027, 2, 5, 9, 0, 0}, u","), In(u"1,1 year(s)"));
  // 365 days in a leap year are 0.997 years, which rounds to one.
  EXPECT_EQ(Line({2028, 1, 1, 9, 0, 0}, {2028, 12, 31, 9, 0, 0}), In(u"1 year(s)"));
}

TEST(NextJobTest, ComposeTakesTheKeyForTheTimeAndTheTextForTheSeconds) {
  const DateTime now{2026, 11, 15, 10, 0, 15};
  auto view = notify::ComposeNextJob(u"Docs & Mail", u"11-15-2026 10:01:45", u"202611151001", u"",
                                     now, u".");
  EXPECT_EQ(view.status, notify::kStartsImmediately);  // 90 seconds
  EXPECT_FALSE(view.showLines);
  // A day-first text is turned round before its seconds are taken.
  view = notify::ComposeNextJob(u"Docs & Mail", u"16-11-2026 9:30:07", u"202611160930",
                                u"DD-MM-YYYY", now, u".");
  EXPECT_EQ(view.status, In(u"23 hour(s)"));
  EXPECT_TRUE(view.showLines);
  EXPECT_EQ(view.setName, u"Docs && Mail");
  EXPECT_EQ(view.nextRun, (DateTime{2026, 11, 16, 9, 30, 7}));

  view = notify::ComposeNextJob(u"A", u"", u"202611160930", u"", now, u".");
  EXPECT_EQ(view.status, notify::kNoScheduledJob);
  EXPECT_FALSE(view.showLines);
  view =
      notify::ComposeNextJob(u"A", u"11-15-2026 10:00:00", jobstore::kImmediateKey, u"", now, u".");
  EXPECT_EQ(view.status, notify::kStartsImmediately);
  EXPECT_FALSE(view.showLines);
  EXPECT_THROW(notify::ComposeNextJob(u"A", u"x", u"2026xx160930", u"", now, u"."), base::Failure);
  EXPECT_THROW(notify::ComposeNextJob(u"A", u"x", u"202613160930", u"", now, u"."), base::Failure);
}

class QuotaTest : public ::testing::Test, public testkit::FrameFixture {};

TEST_F(QuotaTest, TheTotalIsBinaryForSyncAccountsAndDecimalForTheOthers) {
  auto sync = notify::ComposeQuota(app, u"2048M", u"1024M", u"QVSYNC");
  EXPECT_TRUE(sync.visible);
  EXPECT_EQ(sync.barValue, 50);
  EXPECT_EQ(sync.barColor, notify::kQuotaColor);
  EXPECT_EQ(sync.label, Text(u"1,024.00 MB Out of 2.00 GB"));
  // The same numbers for the other kind: the total in thousands, the used in 1024s.
  auto win = notify::ComposeQuota(app, u"2048M", u"1024M", u"QVWIN");
  EXPECT_EQ(win.label, Text(u"1,024.00 MB Out of 2.05 GB"));
  // An unknown kind leaves the label as it was but shows the bar.
  auto other = notify::ComposeQuota(app, u"2048M", u"1024M", u"OTHER");
  EXPECT_TRUE(other.visible);
  EXPECT_EQ(other.label, std::nullopt);
  EXPECT_EQ(other.barValue, 50);
}

TEST_F(QuotaTest, FullAndMissingQuotas) {
  auto full = notify::ComposeQuota(app, u"100M", u"150.5M", u"QVSYNC");
  EXPECT_EQ(full.barValue, 100);
  EXPECT_EQ(full.barColor, notify::kQuotaFullColor);
  EXPECT_EQ(full.label, Text(u"150.50 MB Out of 100.00 MB"));
  for (auto [total, used] :
       {std::pair<Text, Text>{u"", u"5M"}, {u"0", u"5M"}, {u"5M", u""}, {u"5M", u"0"}}) {
    EXPECT_FALSE(notify::ComposeQuota(app, total, used, u"QVSYNC").visible) << U8(total);
  }
  // A total of no megabytes leaves the bar alone.
  auto none = notify::ComposeQuota(app, u"0M", u"5M", u"QVSYNC");
  EXPECT_TRUE(none.visible);
  EXPECT_EQ(none.barValue, std::nullopt);
}

// The time of the next transfer is shown as the system shows a date: the short date,
// then the time in the locale's own time format.
class NextTransferTimeTest : public ::testing::Test, public testkit::FrameFixture {};

TEST_F(NextTransferTimeTest, TheLocalesTimeFormatDecidesTheClock) {
  const DateTime afternoon{2026, 11, 15, 17, 2, 0};
  const DateTime morning{2026, 11, 5, 9, 7, 5};
  // The United States' format, as it has always read.
  EXPECT_EQ(notify::NextTransferTimeText(app, afternoon), u"11/15/2026 5:02:00 PM");
  EXPECT_EQ(notify::NextTransferTimeText(app, {2026, 11, 15, 0, 30, 0}), u"11/15/2026 12:30:00 AM");

  // A 24-hour locale without AM/PM markers.
  fake.locale.shortDateFormat = u"dd.MM.yyyy";
  fake.locale.dateSeparator = u".";
  fake.locale.timeFormat = u"HH:mm:ss";
  fake.locale.am = fake.locale.pm = u"";
  EXPECT_EQ(notify::NextTransferTimeText(app, afternoon), u"15.11.2026 17:02:00");
  EXPECT_EQ(notify::NextTransferTimeText(app, morning), u"05.11.2026 09:07:05");

  // Markers in front, single-letter markers, other separators and quoted text.
  fake.locale.shortDateFormat = u"yyyy/M/d";
  fake.locale.dateSeparator = u"/";
  fake.locale.am = u"AM";
  fake.locale.pm = u"PM";
  fake.locale.timeFormat = u"tt h:mm:ss";
  EXPECT_EQ(notify::NextTransferTimeText(app, afternoon), u"2026/11/15 PM 5:02:00");
  fake.locale.timeFormat = u"H.mm' h' t";
  EXPECT_EQ(notify::NextTransferTimeText(app, morning), u"2026/11/5 9.07 h A");
  fake.locale.timeFormat = u"hh:mm:ss";
  EXPECT_EQ(notify::NextTransferTimeText(app, afternoon), u"2026/11/15 05:02:00");
}

}  // namespace
