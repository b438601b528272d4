#include "notify/NextJob.h"

#include <vector>

#include "base/Guarded.h"
#include "frame/Settings.h"
#include "jobstore/DBaction.h"
#include "jobstore/SystemDate.h"
#include "kit/LabelText.h"
#include "kit/WindowLook.h"

namespace notify {

namespace {

std::int64_t FloorDiv(std::int64_t a, std::int64_t b) {
  std::int64_t q = a / b;
  if ((a % b != 0) && ((a < 0) != (b < 0))) --q;
  return q;
}

Text Number(std::int64_t n) { return base::FromNumber(n); }

// A count of years rounded to one decimal (halves to the even one), without a
// trailing ".0".
Text Years(double years, TextView decimalSeparator) {
  const long tenths = kit::RoundHalfEven(years * 10);
  Text out = Number(tenths / 10);
  if (tenths % 10 != 0) out += Text(decimalSeparator) + Number(tenths % 10);
  return out;
}

// Two or four digits of the sort key as a number; anything else is no date.
int Digits(TextView key, std::size_t start1, std::size_t count) {
  long long value = 0;
  const Text part = base::Mid(key, start1, count);
  if (part.size() != count || !base::ParseLong(part, value) ||
      part.find_first_not_of(u"0123456789") != Text::npos)
    throw base::Failure(13, "Type mismatch");
  return static_cast<int>(value);
}

// The seconds of the next-run text, read month first (a day-first text is turned
// round first); 0 when the text makes no date.
int SecondsOf(const Text& nextRunText, const Text& dateFormat) {
  Text text = nextRunText;
  if (base::ToUpper(base::Left(dateFormat, 1)) == u"D") {
    const std::vector<Text> parts = base::Split(text, u"-");
    if (parts.size() >= 3) {
      text = parts[1] + u"-" + parts[0];
      for (std::size_t i = 2; i < parts.size(); ++i) text += u"-" + parts[i];
    }
  }
  const auto date = base::ParseFileDate(text);
  return date ? date->second : 0;
}

}  // namespace

DateDiffs DateDiff(const base::DateTime& from, const base::DateTime& to) {
  const std::int64_t a = from.SecondsSinceEpoch();
  const std::int64_t b = to.SecondsSinceEpoch();
  DateDiffs d;
  d.days = to.DayNumber() - from.DayNumber();
  d.hours = FloorDiv(b, 3600) - FloorDiv(a, 3600);
  d.minutes = FloorDiv(b, 60) - FloorDiv(a, 60);
  d.seconds = b - a;
  return d;
}

NextJobStatus NextJobStatusLine(const base::DateTime& now, const base::DateTime& next,
                                TextView decimalSeparator) {
  const DateDiffs diff = DateDiff(now, next);
  const Text in = kStartsIn;
  if (diff.days > 1) {
    if (diff.days >= 365) {
      const double perYear = now.year % 4 == 0 ? 366.0 : 365.0;
      const double years = static_cast<double>(diff.days) / perYear;
      if (kit::RoundHalfEven(years * 10) >= 10)
        return {in + Years(years, decimalSeparator) + u" year(s)"};
    }
    return {in + Number(diff.days) + u" day(s)"};
  }
  if (diff.hours == 24) return {in + u"1 day"};
  if (diff.hours > 1) return {in + Number(diff.hours) + u" hour(s)"};
  if (diff.minutes > 1) {
    if (diff.minutes == 60) return {in + u"1 hour(s)"};
    return {in + Number(diff.minutes) + u" minute(s)"};
  }
  if (diff.seconds == 60) return {in + u"1 minute(s)"};
  return {kStartsImmediately, false};
}

NextJobView ComposeNextJob(const Text& setName, const Text& nextRunText, const Text& sortKey,
                           const Text& dateFormat, const base::DateTime& now,
                           TextView decimalSeparator) {
  NextJobView view;
  if (nextRunText.empty() || sortKey == jobstore::kImmediateKey) {
    view.status = sortKey == jobstore::kImmediateKey ? kStartsImmediately : kNoScheduledJob;
    return view;
  }
  base::DateTime next;
  next.year = Digits(sortKey, 1, 4);
  next.month = Digits(sortKey, 5, 2);
  next.day = Digits(sortKey, 7, 2);
  next.hour = Digits(sortKey, 9, 2);
  next.minute = Digits(sortKey, 11, 2);
  next.second = SecondsOf(nextRunText, dateFormat);
  if (!base::DateTime::IsValid(next.year, next.month, next.day, next.hour, next.minute,
                               next.second))
    throw base::Failure(380, "Invalid property value");
  view.nextRun = next;
  const NextJobStatus status = NextJobStatusLine(now, next, decimalSeparator);
  view.status = status.text;
  view.showLines = status.withTime;
  view.setName = base::Replace(setName, u"&", u"&&");
  return view;
}

NextJobView ReadNextJob(frame::AppState& app) {
  std::vector<jobstore::ScheduleRecord> records;
  const long first = jobstore::DB_ReadSchdata(app, Text(), records, false);
  Text setName, nextRun, sortKey;
  if (first >= 0 && static_cast<std::size_t>(first) < records.size()) {
    setName = records[first].BackupSetName;
    nextRun = records[first].NextRun;
    sortKey = records[first].SortKey;
  }
  Text dateFormat;
  if (auto* provider = app.platform.settingsProvider)
    dateFormat = provider->GetSetting(u"DateFormat", 0, 0);
  const Text decimal = app.platform.locale ? app.platform.locale->DecimalSeparator() : Text(u".");
  return ComposeNextJob(setName, nextRun, sortKey, dateFormat, app.platform.clock->Now(), decimal);
}

Text NextTransferTimeText(frame::AppState& app, const base::DateTime& next) {
  const jobstore::LocaleFormats locale = jobstore::LocaleOf(app);
  // As the system shows a date: its short form, a blank, the time by the locale's own
  // time format (a 24-hour locale has no AM or PM to tell the hours apart).
  return jobstore::FormatDate(next, locale.shortDateFormat, locale) + u" " +
         jobstore::FormatTimePicture(next, locale.timeFormat, locale);
}

std::optional<QuotaFigures> QuotaFiguresOf(const Text& totalSpace, const Text& usedSpace,
                                           const Text& accountType) {
  auto missing = [](const Text& v) { return v.empty() || v == u"0"; };
  if (missing(totalSpace) || missing(usedSpace)) return std::nullopt;
  auto megabytes = [](const Text& v) {
    const std::size_t m = v.find(u'M');
    return base::LeadingNumber(m == Text::npos ? TextView(v) : TextView(v).substr(0, m));
  };
  QuotaFigures f;
  f.totalMegabytes = megabytes(totalSpace);
  f.usedMegabytes = megabytes(usedSpace);
  const double t = f.totalMegabytes;
  const double u = f.usedMegabytes;
  if (t != 0) f.percent = u >= t ? 100.0 : u / t * 100;
  f.usedBytes = static_cast<double>(kit::RoundHalfEven(u * 1024 * 1024));
  if (accountType == u"QVSYNC") f.totalBytes = t * 1024 * 1024;
  if (accountType == u"QVWIN") f.totalBytes = t * 1000 * 1000;
  return f;
}

QuotaView ComposeQuota(frame::AppState& app, const Text& totalSpace, const Text& usedSpace,
                       const Text& accountType) {
  QuotaView view;
  const std::optional<QuotaFigures> f = QuotaFiguresOf(totalSpace, usedSpace, accountType);
  if (!f) return view;
  if (f->percent) {
    view.barValue = *f->percent;
    view.barColor = f->usedMegabytes >= f->totalMegabytes ? kQuotaFullColor : kQuotaColor;
  }
  if (f->totalBytes) {
    // The used space is told in 1024s for both kinds; the total as its kind counts.
    view.label = kit::GetProperSizeValue(app, f->usedBytes, false) + u" Out of " +
                 kit::GetProperSizeValue(app, *f->totalBytes, accountType == u"QVWIN");
  }
  view.visible = true;
  return view;
}

QuotaView ReadQuota(frame::AppState& app) {
  return ComposeQuota(app, frame::ReadSetting(app, u"TotalSpace"),
                      frame::ReadSetting(app, u"UsedSpace"),
                      frame::ReadAccountKey(app, u"Corvane", u"ACCTYPE", true));
}

std::optional<QuotaFigures> ReadQuotaFigures(frame::AppState& app) {
  return QuotaFiguresOf(frame::ReadSetting(app, u"TotalSpace"),
                        frame::ReadSetting(app, u"UsedSpace"),
                        frame::ReadAccountKey(app, u"Corvane", u"ACCTYPE", true));
}

}  // namespace notify
