#include "jobstore/SystemDate.h"

#include "frame/AppState.h"

namespace jobstore {

namespace {

bool IsDigit(char16_t c) { return c >= u'0' && c <= u'9'; }

Text Number(int value, size_t width) { return base::PadLeft(base::FromNumber(value), width, u'0'); }

// How many times `c` repeats from `i` on.
size_t RunOf(TextView text, size_t i, char16_t c) {
  size_t n = 0;
  while (i + n < text.size() && text[i + n] == c) ++n;
  return n;
}

bool HasAmPm(TextView pattern) {
  return base::InStrNoCase(pattern, u"AMPM") > 0 || base::InStrNoCase(pattern, u"AM/PM") > 0;
}

// Up to four numbers of a chunk split at any of `separators`; false when anything
// else is in it or a number has more than four digits.
struct Numbers {
  int value[4] = {};
  size_t digits[4] = {};
  size_t count = 0;
};

bool ReadNumbers(TextView chunk, TextView separators, Numbers& n) {
  n = Numbers();
  size_t current = 0;  // digits of the number being read
  for (char16_t c : chunk) {
    if (IsDigit(c)) {
      if (current == 0) {
        if (n.count == 4) return false;
        ++n.count;
      }
      if (++current > 4) return false;
      n.value[n.count - 1] = n.value[n.count - 1] * 10 + (c - u'0');
      n.digits[n.count - 1] = current;
    } else if (separators.find(c) != TextView::npos) {
      if (current == 0) return false;
      current = 0;
    } else {
      return false;
    }
  }
  return current != 0;
}

// "MDY", "DMY" or "YMD" from a short-date pattern such as "M/d/yyyy" or "dd.MM.yyyy".
enum class Order { MDY, DMY, YMD };
Order DateOrder(TextView shortDate) {
  size_t d = Text::npos, m = Text::npos, y = Text::npos;
  for (size_t i = 0; i < shortDate.size(); ++i) {
    char16_t c = shortDate[i];
    if ((c == u'd' || c == u'D') && d == Text::npos) d = i;
    if ((c == u'M' || c == u'm') && m == Text::npos) m = i;
    if ((c == u'y' || c == u'Y') && y == Text::npos) y = i;
  }
  if (y < m && y < d) return Order::YMD;
  if (d < m) return Order::DMY;
  return Order::MDY;
}

std::optional<base::DateTime> MakeDate(int year, size_t yearDigits, int month, int day) {
  if (yearDigits <= 2) year += year < 30 ? 2000 : 1900;
  if (!base::DateTime::IsValid(year, month, day)) return std::nullopt;
  base::DateTime dt;
  dt.year = year;
  dt.month = month;
  dt.day = day;
  dt.hour = dt.minute = dt.second = 0;
  return dt;
}

std::optional<base::DateTime> ReadDatePart(TextView chunk, const LocaleFormats& locale) {
  Text separators = u"-/." + locale.dateSeparator;
  Numbers n;
  if (!ReadNumbers(chunk, separators, n) || n.count != 3) return std::nullopt;
  Order order = DateOrder(locale.shortDateFormat);
  if (n.digits[0] >= 3) order = Order::YMD;
  const int year = n.value[2];
  const size_t yearDigits = n.digits[2];
  if (order == Order::YMD) return MakeDate(n.value[0], n.digits[0], n.value[1], n.value[2]);
  const int first = n.value[0], second = n.value[1];
  const bool dayFirst = order == Order::DMY;
  auto dt = dayFirst ? MakeDate(year, yearDigits, second, first)
                     : MakeDate(year, yearDigits, first, second);
  if (dt) return dt;
  // A text that makes no date in the system's order is tried the other way round.
  return dayFirst ? MakeDate(year, yearDigits, first, second)
                  : MakeDate(year, yearDigits, second, first);
}

bool ReadTimePart(TextView chunk, const LocaleFormats& locale, int& h, int& m, int& s) {
  Text separators = u":" + locale.timeSeparator;
  Numbers n;
  if (!ReadNumbers(chunk, separators, n) || n.count < 2 || n.count > 3) return false;
  h = n.value[0];
  m = n.value[1];
  s = n.count > 2 ? n.value[2] : 0;
  return h <= 23 && m <= 59 && s <= 59;
}

bool LooksLikeTime(TextView chunk, const LocaleFormats& locale) {
  if (chunk.find(u':') != TextView::npos) return true;
  return !locale.timeSeparator.empty() && chunk.find(locale.timeSeparator) != TextView::npos &&
         chunk.find(u'-') == TextView::npos && chunk.find(u'/') == TextView::npos;
}

}  // namespace

LocaleFormats LocaleOf(frame::AppState& app) {
  LocaleFormats formats;
  if (auto* locale = app.platform.locale) {
    formats.dateSeparator = locale->DateSeparator();
    formats.timeSeparator = locale->TimeSeparator();
    formats.shortDateFormat = locale->ShortDateFormat();
    formats.timeFormat = locale->TimeFormat();
    formats.am = locale->AmSymbol();
    formats.pm = locale->PmSymbol();
  }
  return formats;
}

Text FormatDate(const base::DateTime& dt, TextView pattern, const LocaleFormats& locale) {
  const bool twelve = HasAmPm(pattern);
  Text out;
  bool afterHour = false;
  size_t i = 0;
  while (i < pattern.size()) {
    char16_t c = pattern[i];
    if (c == u'A' || c == u'a') {
      const Text ahead = base::ToUpper(pattern.substr(i, 5));
      size_t len = base::StartsWith(ahead, u"AM/PM") ? 5 : base::StartsWith(ahead, u"AMPM") ? 4 : 0;
      if (len) {
        out += dt.hour < 12 ? locale.am : locale.pm;
        i += len;
        continue;
      }
    }
    size_t run = RunOf(pattern, i, c);
    switch (c) {
      case u'y':
      case u'Y':
        out += run >= 3 ? Number(dt.year, 4) : Number(dt.year % 100, 2);
        afterHour = false;
        break;
      case u'm':
      case u'M':
        out += Number(afterHour ? dt.minute : dt.month, run >= 2 ? 2 : 1);
        afterHour = false;
        break;
      case u'n':
      case u'N':
        out += Number(dt.minute, run >= 2 ? 2 : 1);
        afterHour = false;
        break;
      case u'd':
      case u'D':
        out += Number(dt.day, run >= 2 ? 2 : 1);
        afterHour = false;
        break;
      case u'h':
      case u'H': {
        int hour = dt.hour;
        if (twelve) hour = hour % 12 == 0 ? 12 : hour % 12;
        out += Number(hour, run >= 2 ? 2 : 1);
        afterHour = true;
        break;
      }
      case u's':
      case u'S':
        out += Number(dt.second, run >= 2 ? 2 : 1);
        afterHour = false;
        break;
      case u':':
        // The separator does not break the tie between an hour and its minutes.
        for (size_t k = 0; k < run; ++k) out += locale.timeSeparator;
        break;
      case u'/':
        for (size_t k = 0; k < run; ++k) out += locale.dateSeparator;
        afterHour = false;
        break;
      default:
        out.append(run, c);
        if (c != u' ') afterHour = false;
        break;
    }
    i += run;
  }
  return out;
}

Text FormatTimePicture(const base::DateTime& dt, TextView picture, const LocaleFormats& locale) {
  if (picture.empty()) picture = u"h:mm:ss tt";
  Text out;
  size_t i = 0;
  while (i < picture.size()) {
    const char16_t c = picture[i];
    if (c == u'\'') {
      // Quoted text; a doubled quote inside stands for one quote.
      ++i;
      while (i < picture.size()) {
        if (picture[i] == u'\'') {
          if (i + 1 < picture.size() && picture[i + 1] == u'\'') {
            out += u'\'';
            i += 2;
            continue;
          }
          ++i;
          break;
        }
        out += picture[i++];
      }
      continue;
    }
    const size_t run = RunOf(picture, i, c);
    switch (c) {
      case u'h': out += Number(dt.hour % 12 == 0 ? 12 : dt.hour % 12, run >= 2 ? 2 : 1); break;
      case u'H': out += Number(dt.hour, run >= 2 ? 2 : 1); break;
      case u'm': out += Number(dt.minute, run >= 2 ? 2 : 1); break;
      case u's': out += Number(dt.second, run >= 2 ? 2 : 1); break;
      case u't': {
        const Text& marker = dt.hour < 12 ? locale.am : locale.pm;
        out += run >= 2 ? marker : marker.substr(0, 1);
        break;
      }
      default: out.append(run, c); break;
    }
    i += run;
  }
  return out;
}

std::optional<base::DateTime> ParseSystemDate(TextView text, const LocaleFormats& locale) {
  // At most three blank-separated chunks: date, time, AM/PM.
  TextView chunks[3];
  size_t count = 0;
  size_t i = 0;
  while (i < text.size()) {
    while (i < text.size() && text[i] == u' ') ++i;
    if (i == text.size()) break;
    size_t start = i;
    while (i < text.size() && text[i] != u' ') ++i;
    if (count == 3) return std::nullopt;
    chunks[count++] = text.substr(start, i - start);
  }
  if (count == 0) return std::nullopt;

  // A trailing AM or PM turns a twelve-hour time into the day's hour.
  int half = 0;  // 0 none, 1 AM, 2 PM
  const TextView last = chunks[count - 1];
  if (base::EqualsNoCase(last, u"AM") ||
      (!locale.am.empty() && base::EqualsNoCase(last, locale.am)))
    half = 1;
  else if (base::EqualsNoCase(last, u"PM") ||
           (!locale.pm.empty() && base::EqualsNoCase(last, locale.pm)))
    half = 2;
  if (half) --count;
  if (count == 0 || count > 2) return std::nullopt;

  base::DateTime result;  // 12-30-1899 0:00:00
  int h = 0, m = 0, s = 0;
  bool hasTime = false;
  if (count == 2) {
    auto date = ReadDatePart(chunks[0], locale);
    if (!date || !ReadTimePart(chunks[1], locale, h, m, s)) return std::nullopt;
    result = *date;
    hasTime = true;
  } else if (LooksLikeTime(chunks[0], locale) && ReadTimePart(chunks[0], locale, h, m, s)) {
    hasTime = true;
  } else {
    auto date = ReadDatePart(chunks[0], locale);
    if (!date) return std::nullopt;
    result = *date;
  }
  if (hasTime) {
    if (half) {
      if (h < 1 || h > 12) return std::nullopt;
      h = h % 12 + (half == 2 ? 12 : 0);
    }
    result.hour = h;
    result.minute = m;
    result.second = s;
  } else if (half) {
    return std::nullopt;
  }
  return result;
}

Text ReformatDate(TextView text, TextView pattern, const LocaleFormats& locale) {
  auto dt = ParseSystemDate(text, locale);
  if (!dt) return Text(text);
  return FormatDate(*dt, pattern, locale);
}

}  // namespace jobstore
