// The next-run rules: a schedule choice becomes NextRun, Days, FrequencyIndex and
// SortKey. "Now" is fixed on the fake clock; 2013-03-18 was a Monday.
#include <deque>

#include "JobStoreFixture.h"
#include "jobstore/NextRun.h"

namespace jobstore::test {
namespace {

using base::DateTime;

class NextRunTest : public JobStoreTest {
 protected:
  void Now(int y, int mo, int d, int h, int mi, int s) {
    fake.clock.now = DateTime{y, mo, d, h, mi, s};
  }
  ScheduleChoice Days(std::initializer_list<int> days, int h, int mi, int s = 0) {
    ScheduleChoice c;
    for (int d : days) c.chkBox[static_cast<size_t>(d - 1)] = true;
    c.DTPicker = DateTime{2013, 1, 1, h, mi, s};
    return c;
  }
  // Scripted draws for the suggested times.
  static std::function<double()> Draws(std::deque<double> values) {
    auto q = std::make_shared<std::deque<double>>(std::move(values));
    return [q] {
      double v = q->front();
      q->pop_front();
      return v;
    };
  }
};

TEST_F(NextRunTest, SortKeyTakesYearMonthDayHourMinute) {
  EXPECT_EQ(Sch_SortBuildDate(app, u"03-05-2013 9:07:44"), u"201303050907");
  fake.locale.timeSeparator = u".";
  EXPECT_EQ(Sch_SortBuildDate(app, u"03-05-2013 9.07.44"), u"201303050907");
  // What does not read as a date is cut all the same, by the ":" it shows.
  fake.locale.timeSeparator = u":";
  EXPECT_EQ(Sch_SortBuildDate(app, u"xx-yy-zzzz 7:5"), u"zzzzxxyy0705");
  EXPECT_EQ(Sch_SortBuildDate(app, u""), u"0000");
}

// The day walk of a weekly or daily choice: from the present minute on, the first day
// checked; midnight means one second past it; nothing checked means today.
TEST_F(NextRunTest, TheWalkToTheFirstCheckedDay) {
  struct Case {
    DateTime now;
    std::initializer_list<int> days;
    int h, mi, s;
    const char16_t* next;
  } const cases[] = {
      {{2013, 3, 18, 10, 15, 20}, {2}, 10, 30, 0, u"03-18-2013 10:30:00"},  // a Monday
      {{2013, 3, 18, 10, 15, 20}, {2}, 10, 15, 0, u"03-18-2013 10:15:00"},  // the same minute
      {{2013, 3, 18, 10, 15, 20}, {2}, 10, 14, 59, u"03-25-2013 10:14:59"},
      {{2013, 3, 18, 10, 15, 20}, {2, 3}, 9, 0, 0, u"03-19-2013 9:00:00"},  // passed: tomorrow on
      {{2013, 3, 18, 10, 15, 20}, {1}, 9, 0, 0, u"03-24-2013 9:00:00"},
      {{2013, 3, 18, 23, 59, 30}, {1, 2, 3, 4, 5, 6, 7}, 0, 0, 0, u"03-19-2013 0:00:01"},
      {{2013, 3, 18, 23, 59, 30}, {1, 2, 3, 4, 5, 6, 7}, 23, 59, 59, u"03-18-2013 23:59:59"},
      {{2013, 12, 31, 23, 59, 0}, {3}, 23, 0, 0, u"01-07-2014 23:00:00"},  // over the year's end
      {{2012, 2, 28, 20, 0, 0}, {4}, 6, 0, 0, u"02-29-2012 6:00:00"},
      {{2013, 2, 28, 20, 0, 0}, {6}, 6, 0, 0, u"03-01-2013 6:00:00"},
      {{2013, 3, 18, 10, 0, 0}, {}, 7, 5, 9, u"03-18-2013 7:05:09"},
  };
  for (const Case& k : cases) {
    fake.clock.now = k.now;
    auto choice = Days(k.days, k.h, k.mi, k.s);
    EXPECT_EQ(Sch_Build_Date(app, choice), k.next);
  }
  // The list's own builder keeps the picker's date, with the same midnight rule.
  auto midnight = Days({1, 2, 3, 4, 5, 6, 7}, 0, 0, 0);
  EXPECT_EQ(Build_Date(app, midnight), u"01-01-2013 0:00:01");
  auto late = Days({1, 2, 3, 4, 5, 6, 7}, 23, 59, 59);
  EXPECT_EQ(Build_Date(app, late), u"01-01-2013 23:59:59");
  auto none = Days({}, 7, 5, 9);
  EXPECT_EQ(DaysAdd(app, none, u"", u"7:05:09"), u"");
  EXPECT_EQ(DaysAdd(app, none, u"Immediate", u"7:05:09"), u"");
}

TEST_F(NextRunTest, HourlyFollowsTheClockOncePassed) {
  Now(2013, 3, 18, 10, 15, 20);
  ScheduleChoice c = Days({}, 9, 30);
  c.optHourly = true;
  c.DTPicker = DateTime{2013, 1, 1, 10, 45, 0};
  EXPECT_EQ(Sch_Build_Date(app, c), u"03-18-2013 10:45:00");
  // An hour past 23:30 is tomorrow.
  Now(2013, 2, 28, 23, 30, 0);
  c.DTPicker = DateTime{2013, 1, 1, 9, 0, 0};
  EXPECT_EQ(Sch_Build_Date(app, c), u"03-01-2013 0:30:00");
}

TEST_F(NextRunTest, MonthlyAddsOneCalendarMonthOnceOnly) {
  Now(2013, 1, 31, 12, 0, 0);
  ScheduleChoice c = Days({}, 8, 0);
  c.optMonthly = true;
  c.DTPMonthly = DateTime{2013, 1, 31, 0, 0, 0};
  EXPECT_EQ(Sch_Build_Date(app, c), u"02-28-2013 8:00:00");  // month-end rule
  c.DTPMonthly = DateTime{2012, 1, 31, 0, 0, 0};
  EXPECT_EQ(Sch_Build_Date(app, c), u"02-29-2012 8:00:00");  // leap year, still in the past
  c.DTPMonthly = DateTime{2013, 1, 31, 0, 0, 0};
  c.DTPicker = DateTime{2013, 1, 1, 12, 0, 59};
  EXPECT_EQ(Sch_Build_Date(app, c), u"01-31-2013 12:00:59");  // same minute stands
}

TEST_F(NextRunTest, ImmediateTakesThePresentMoment) {
  Now(2013, 3, 18, 10, 15, 20);
  ScheduleChoice c = Days({}, 3, 0);
  c.chkImmediate = true;
  c.bImmediate = true;
  // The screen path of Sch_Build_Date moves the picker to the present.
  EXPECT_EQ(Sch_Build_Date(app, c), u"03-18-2013 10:15:20");
  EXPECT_EQ(c.DTPicker, (DateTime{2013, 1, 1, 10, 15, 20}));
}

TEST_F(NextRunTest, FrequencyOfTheStoredDays) {
  Now(2013, 3, 18, 10, 0, 0);
  struct Case {
    std::initializer_list<int> days;
    const char16_t* storedDays;
    const char16_t* index;
  } cases[] = {{{1, 2, 3, 4, 5, 6, 7}, u"1234567", u"3"},
               {{1, 7}, u"17", u"7"},
               {{5}, u"5", u"4"},
               {{1, 2, 4}, u"124", u"0"}};
  for (const Case& k : cases) {
    ScheduleChoice c = Days(k.days, 11, 0);
    Timing t = PlanTiming(app, c);
    EXPECT_EQ(t.Days, k.storedDays);
    EXPECT_EQ(t.FrequencyIndex, k.index) << U8(t.Days);
    EXPECT_EQ(t.SortKey, Sch_SortBuildDate(app, t.NextRun));
  }
  Text out;
  EXPECT_EQ(GetFrequencyFromDays(u"Hourly", u"", out), u"");
  EXPECT_EQ(out, u"MTF");
  EXPECT_EQ(GetFrequencyFromDays(u"8", u"", out), u"");
}

TEST_F(NextRunTest, CaptionOfTheChoice) {
  ScheduleChoice c = Days({1, 3, 7}, 0, 0);
  EXPECT_EQ(GetDayChkBoxCaption(c), u"1,3,7");
  c.chkImmediate = true;
  EXPECT_EQ(GetDayChkBoxCaption(c), u"Immediate");
  c.optHourly = true;
  EXPECT_EQ(GetDayChkBoxCaption(c), u"Hourly");
  c.optMonthly = true;
  EXPECT_EQ(GetDayChkBoxCaption(c), u"Monthly");
  EXPECT_EQ(GetDayChkBoxCaption(ScheduleChoice{}), u"");
}

// The time takes the system's separator; "0:00:00" is only recognised with a ":"
// system, so midnight stays midnight here.
TEST_F(NextRunTest, WithADotSeparatorMidnightStaysMidnight) {
  fake.locale.timeSeparator = u".";
  Now(2013, 3, 18, 10, 15, 20);
  auto midnight = Days({2}, 0, 0, 0);
  EXPECT_EQ(Sch_Build_Date(app, midnight), u"03-25-2013 0.00.00");
}

TEST_F(NextRunTest, SuggestedTimesFollowTheDraws) {
  Now(2013, 3, 18, 3, 0, 0);
  ScheduleChoice c;
  // Minute 0.5*60+1 = 31; hour 0.25*12+1 = 4 AM: still ahead.
  c.random = Draws({0.5, 0.25});
  EXPECT_EQ(RecommendedTimeDefault(app, c), u"03-18-2013 4:31:00");
  // Hour 12 becomes 11 PM.
  c.random = Draws({0.99, 0.999});
  EXPECT_EQ(RecommendedTimeDefault(app, c), u"03-18-2013 23:59:00");
  // Minute 1; hour 1 AM has passed while 6:01 has not: a new hour from
  // the present hour + 1 up to 6.
  c.random = Draws({0.0, 0.0, 0.5});
  EXPECT_EQ(RecommendedTimeDefault(app, c), u"03-18-2013 5:01:00");
  // Both passed: tomorrow.
  Now(2013, 3, 31, 8, 0, 0);
  c.random = Draws({0.1, 0.3});
  EXPECT_EQ(RecommendedTimeDefault(app, c), u"04-01-2013 4:07:00");
  EXPECT_EQ(c.DTPicker, (DateTime{2013, 4, 1, 4, 7, 0}));
}

TEST_F(NextRunTest, ChangedFrequencySuggestsOnTheFirstAllowedDay) {
  Now(2013, 3, 18, 8, 0, 0);           // Monday
  ScheduleChoice c = Days({5}, 9, 0);  // Thursdays
  c.random = Draws({0.5, 0.25});       // 4:31 AM
  EXPECT_EQ(set_RecommendedTime(app, c), (DateTime{2013, 3, 21, 4, 31, 0}));
  c.random = Draws({0.5, 0.75});  // 10 PM takes today
  EXPECT_EQ(set_RecommendedTime(app, c), (DateTime{2013, 3, 18, 22, 31, 0}));
  // Without a script the draw comes from a clock-seeded source and stays in range.
  c.random = nullptr;
  for (int i = 0; i < 50; ++i) {
    fake.clock.tick += 17;
    DateTime t = set_RecommendedTime(app, c);
    EXPECT_TRUE(t.minute >= 1 && t.minute <= 59);
    EXPECT_TRUE(t.hour <= 6 || t.hour >= 19) << t.hour;
  }
}

TEST(DayNames, ColumnTextAndTheMondayFirstNames) {
  EXPECT_EQ(DayNamesFromDays(u"23456"), u"Monday,Tuesday,Wednesday,Thursday,Friday");
  EXPECT_EQ(DayNamesFromDays(u"IMMEDIATE"), u"IMMEDIATE");
  EXPECT_EQ(DayNamesFromDays(u"1x9"), u"Sunday");
  EXPECT_EQ(GetScheduledForDay(u"1"), u"Monday");
  EXPECT_EQ(GetScheduledForDay(u"7"), u"Sunday");
  EXPECT_EQ(GetScheduledForDay(u"0"), u"");
  EXPECT_EQ(GetScheduledForDay(u"12"), u"");
}

TEST_F(NextRunTest, TraceLinesOfTheDateBuilders) {
  Now(2013, 3, 18, 10, 0, 0);
  auto c = Days({2}, 11, 0);
  Sch_Build_Date(app, c);
  Build_Date(app, c);
  auto trace = Trace();
  ASSERT_EQ(trace.size(), 4u);
  EXPECT_EQ(trace[0], u"Enter Sch_Build_Date 01-01-2013 11:00:00");
  EXPECT_EQ(trace[1], u"Exit Sch_Build_Date 03-18-2013 11:00:00");
  EXPECT_EQ(trace[2], u"Enter Build_Date Smart");
  EXPECT_EQ(trace[3], u"Exit Sch_Build_Date");
}

}  // namespace
}  // namespace jobstore::test
