#include "jobstore/NextRun.h"

#include <random>

#include "base/Guarded.h"
#include "frame/Logs.h"
#include "jobstore/DBaction.h"
#include "jobstore/SystemDate.h"

namespace jobstore {

namespace {

const char16_t* const kDayNames[] = {u"Sunday",   u"Monday", u"Tuesday", u"Wednesday",
                                     u"Thursday", u"Friday", u"Saturday"};

bool IsDigit(char16_t c) { return c >= u'0' && c <= u'9'; }

// The characters between the hour and the minutes of a formatted time.
Text TimeSeparatorIn(const Text& formatted) {
  size_t i = 0;
  while (i < formatted.size() && !IsDigit(formatted[i])) ++i;
  while (i < formatted.size() && IsDigit(formatted[i])) ++i;
  Text separator;
  while (i < formatted.size() && !IsDigit(formatted[i])) separator.push_back(formatted[i++]);
  return separator;
}

Text TwoDigits(Text part) {
  if (part.size() == 1) part.insert(part.begin(), u'0');
  return part;
}

base::DateTime At(const base::DateTime& day, int hour, int minute, int second) {
  base::DateTime dt = day.DateOnly();
  dt.hour = hour;
  dt.minute = minute;
  dt.second = second;
  return dt;
}

int To24(int hour, bool pm) {
  if (pm) return hour == 12 ? 12 : hour + 12;
  return hour == 12 ? 0 : hour;
}

// Every suggestion starts a fresh generator from the clock, so two editors opened
// in the same second suggest the same time, as they always have.
std::function<double()> RandomSource(AppState& app, const ScheduleChoice& choice) {
  if (choice.random) return choice.random;
  auto* clock = app.platform.clock;
  std::uint64_t seed =
      clock ? clock->TickMs() ^ static_cast<std::uint64_t>(clock->Now().SecondsSinceEpoch()) : 0;
  auto engine = std::make_shared<std::mt19937_64>(seed);
  return [engine] { return std::uniform_real_distribution<double>(0.0, 1.0)(*engine); };
}

int Draw(const std::function<double()>& random, double span, double base) {
  return static_cast<int>(span * random() + base);
}

// Steps 1 to 8 of the suggestion; `amDay` gives the day of an AM candidate.
base::DateTime Suggest(AppState& app, const std::function<double()>& random,
                       const base::DateTime& amDay) {
  const base::DateTime now = app.platform.clock->Now();
  const base::DateTime today = now.DateOnly();

  int minute = Draw(random, 60, 1);
  if (minute > 59) minute = 59;
  if (minute == 0) minute = 10;
  const base::DateTime early = At(today, 6, minute, 0);

  int hour = Draw(random, 12, 1);
  bool pm = false;
  if (hour > 6 || hour == 12) {
    pm = true;
    if (hour == 12) hour = 11;
  }
  base::DateTime t = At(pm ? today : amDay, To24(hour, pm), minute, 0);
  if (t >= now) return t;
  if (early < now) return t.AddDays(1);

  const int from = now.hour + 1;
  hour = Draw(random, 6 - from + 1, from);
  if (hour >= 13) {
    pm = true;
    hour -= 12;
    if (hour == 6) hour = 5;
  } else {
    pm = hour >= 12;
  }
  return At(today, To24(hour, pm) % 24, minute, 0);
}

}  // namespace

Text Sch_SortBuildDate(AppState& app, const Text& date) {
  Text key;
  base::Guarded(
      [&] {
        const LocaleFormats locale = LocaleOf(app);
        // The system's time separator is learnt from how it writes a time.
        const Text separator = TimeSeparatorIn(ReformatDate(date, u"H:mm", locale));
        const std::vector<Text> parts = base::Split(date, separator);
        Text hour = parts.empty() ? Text(u"0") : base::Trim(base::Right(parts[0], 2));
        Text minutes = parts.size() < 2 ? Text(u"0") : base::Trim(parts[1]);
        key = base::Mid(date, 7, 4) + base::Mid(date, 1, 2) + base::Mid(date, 4, 2) +
              TwoDigits(hour) + TwoDigits(minutes);
      },
      [&](const base::ErrorInfo& e) {
        key.clear();
        frame::WriteTrace(app, u"Error in Sch_SortBuildDate " + e.description);
      });
  return key;
}

Text GetDayChkBoxCaption(const ScheduleChoice& choice) {
  if (choice.optMonthly) return u"Monthly";
  if (choice.optHourly) return u"Hourly";
  if (choice.chkImmediate) return u"Immediate";
  Text caption;
  for (size_t i = 0; i < choice.chkBox.size(); ++i)
    if (choice.chkBox[i]) caption += base::FromNumber(static_cast<long long>(i) + 1) + u",";
  if (base::EndsWith(caption, u",")) caption.pop_back();
  return caption;
}

Text DaysAdd(AppState& app, const ScheduleChoice& choice, const Text& days, const Text& time) {
  const LocaleFormats locale = LocaleOf(app);
  const base::DateTime now = app.platform.clock->Now();
  const Text nowKey = Sch_SortBuildDate(app, FormatDate(now, kFileDatePattern, locale));
  // Same minute is not passed: only a greater present key counts.
  auto passed = [&](const Text& candidate) { return nowKey > Sch_SortBuildDate(app, candidate); };
  auto dateText = [&](const base::DateTime& d) { return FormatDate(d, u"mm-dd-yyyy", locale); };

  if (base::EqualsNoCase(days, u"Monthly")) {
    Text candidate = dateText(choice.DTPMonthly) + u" " + time;
    if (passed(candidate)) candidate = dateText(choice.DTPMonthly.AddMonths(1)) + u" " + time;
    return candidate;
  }
  const Text today = dateText(now) + u" " + time;
  if (base::EqualsNoCase(days, u"Hourly")) {
    if (passed(today)) return FormatDate(now.AddHours(1), kFileDatePattern, locale);
    return today;
  }

  const base::DateTime start = passed(today) ? now.AddDays(1) : now;
  const std::vector<Text> entries = base::Split(days, u",");
  auto matches = [&](const base::DateTime& day) {
    const Text weekday = base::FromNumber(day.Weekday());
    for (const Text& entry : entries)
      if (!base::IsBlank(entry) && base::Trim(entry) == weekday) return true;
    return false;
  };
  if (matches(start))
    return base::Left(FormatDate(start, kFileDatePattern, locale), 10) + u" " + time;
  for (int round = 1; round <= 7; ++round) {
    const base::DateTime day = start.AddDays(round);
    if (matches(day)) return dateText(day) + u" " + time;
  }
  return Text();
}

Text getcheckboxdate(AppState& app, const ScheduleChoice& choice, bool bZeroHour) {
  const LocaleFormats locale = LocaleOf(app);
  // A job set for midnight runs one second past it.
  const Text time = bZeroHour ? FormatDate(At(choice.DTPicker, 0, 0, 1), u"H:mm:ss", locale)
                              : FormatDate(choice.DTPicker, u"H:mm:ss", locale);
  return DaysAdd(app, choice, GetDayChkBoxCaption(choice), time);
}

Text Sch_Build_Date(AppState& app, ScheduleChoice& choice) {
  const LocaleFormats locale = LocaleOf(app);
  frame::WriteTrace(
      app, u"Enter Sch_Build_Date " + FormatDate(choice.DTPicker, kFileDatePattern, locale));
  const base::DateTime now = app.platform.clock->Now();
  if (choice.bImmediate) choice.DTPicker = At(choice.DTPicker, now.hour, now.minute, now.second);
  const Text time = FormatDate(choice.DTPicker, u"H:mm:ss", locale);
  Text result = getcheckboxdate(app, choice, base::Trim(time) == u"0:00:00");
  if (result.empty()) result = FormatDate(now, u"mm-dd-yyyy", locale) + u" " + time;
  frame::WriteTrace(app, u"Exit Sch_Build_Date " + result);
  return result;
}

Text GetFrequencyFromDays(const Text& days, const Text& /*nextRun*/, Text& out) {
  out = u"MTF";
  if (base::EqualsNoCase(days, u"1234567")) return u"Daily";
  if (base::EqualsNoCase(days, u"17")) return u"WeekEnd (Sun & Sat)";
  if (base::EqualsNoCase(days, u"23456")) return u"Weekdays (Mon - Fri)";
  if (days.size() == 1 && days[0] >= u'1' && days[0] <= u'7') return u"Weekly";
  // Other sets of days, "Hourly" and "Monthly" have no name: their index is 0.
  return Text();
}

Text Build_Date(AppState& app, const ScheduleChoice& choice) {
  frame::WriteTrace(app, u"Enter Build_Date Smart");
  const LocaleFormats locale = LocaleOf(app);
  Text result;
  if (FormatDate(choice.DTPicker, u"H:mm:ss", locale) == u"0:00:00")
    result = FormatDate(choice.DTPicker, u"mm-dd-yyyy", locale) + u" 0:00:01";
  else
    result = FormatDate(choice.DTPicker, kFileDatePattern, locale);
  frame::WriteTrace(app, u"Exit Sch_Build_Date");
  return result;
}

Text RecommendedTimeDefault(AppState& app, ScheduleChoice& choice) {
  const base::DateTime today = app.platform.clock->Now().DateOnly();
  choice.DTPicker = Suggest(app, RandomSource(app, choice), today);
  return Build_Date(app, choice);
}

base::DateTime set_RecommendedTime(AppState& app, ScheduleChoice& choice) {
  const LocaleFormats locale = LocaleOf(app);
  base::DateTime amDay = app.platform.clock->Now().DateOnly();
  // An early-morning suggestion goes on the first day the present selection allows.
  if (auto first = ParseSystemDate(getcheckboxdate(app, choice, false), locale))
    amDay = first->DateOnly();
  choice.DTPicker = Suggest(app, RandomSource(app, choice), amDay);
  return choice.DTPicker;
}

Text DayNamesFromDays(const Text& days) {
  if (base::EqualsNoCase(days, u"Hourly") || base::EqualsNoCase(days, u"Monthly") ||
      base::EqualsNoCase(days, u"Immediate"))
    return days;
  Text names;
  for (char16_t c : days) {
    if (c < u'1' || c > u'7') continue;
    if (!names.empty()) names += u",";
    names += kDayNames[c - u'1'];
  }
  return names;
}

Text GetScheduledForDay(const Text& digit) {
  static const char16_t* const kMondayFirst[] = {u"Monday", u"Tuesday",  u"Wednesday", u"Thursday",
                                                 u"Friday", u"Saturday", u"Sunday"};
  if (digit.size() == 1 && digit[0] >= u'1' && digit[0] <= u'7')
    return kMondayFirst[digit[0] - u'1'];
  return Text();
}

Timing PlanTiming(AppState& app, ScheduleChoice& choice) {
  Timing t;
  if (choice.bImmediate) {
    t.NextRun = FormatDate(app.platform.clock->Now(), kFileDatePattern, LocaleOf(app));
    t.FrequencyIndex = u"1";
    t.Days = u"Immediate";
  } else {
    t.NextRun = Sch_Build_Date(app, choice);
    t.Days = base::Replace(GetDayChkBoxCaption(choice), u",", u"");
    Text unused;
    t.FrequencyIndex =
        base::FromNumber(GetFrequencyIndex(GetFrequencyFromDays(t.Days, t.NextRun, unused)));
  }
  t.SortKey = Sch_SortBuildDate(app, t.NextRun);
  return t;
}

}  // namespace jobstore
