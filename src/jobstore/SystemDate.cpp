#include "jobstore/SystemDate.h"

#include <vector>

#include "frame/AppState.h"

namespace jobstore {

namespace {

bool IsDigit(char16_t c) { return c >= u'0' && c <= u'9'; }

Text Number(int value, size_t width) {
  return base::PadLeft(base::FromNumber(value), width, u'0');
}

// How many times `c` repeats from `i` on.
size_t RunOf(TextView text, size_t i, char16_t c) {
  size_t n = 0;
  while (i + n < text.size() && text[i + n] == c) ++n;
  return n;
}

bool HasAmPm(TextView pattern) {
  return base::InStrNoCase(pattern, u"AMPM") > 0 || base::InStrNoCase(pattern, u"AM/PM") > 0;
}

// Numbers of a chunk split at any of `separators`; nullopt when anything else is in it.
std::optional<std::vector<Text>> Numbers(TextView chunk, TextView separators) {
  std::vector<Text> parts(1);
  for (char16_t c : chunk) {
    if (IsDigit(c)) {
      parts.back().push_back(c);
    } else if (separators.find(c) != TextView::npos) {
      if (parts.back().empty()) return std::nullopt;
      parts.emplace_back();
    } else {
      return std::nullopt;
    }
  }
  if (parts.back().empty()) return std::nullopt;
  for (const auto& p : parts)
    if (p.size() > 4) return std::nullopt;
  return parts;
}

int ToInt(const Text& digits) {
  int v = 0;
  for (char16_t c : digits) v = v * 10 + (c - u'0');
  return v;
}

// "MDY", "DMY" or "YMD" from a short-date pattern such as "M/d/yyyy" or "dd.MM.yyyy".
Text DateOrder(TextView shortDate) {
  size_t d = Text::npos, m = Text::npos, y = Text::npos;
  for (size_t i = 0; i < shortDate.size(); ++i) {
    char16_t c = shortDate[i];
    if ((c == u'd' || c == u'D') && d == Text::npos) d = i;
    if ((c == u'M' || c == u'm') && m == Text::npos) m = i;
    if ((c == u'y' || c == u'Y') && y == Text::npos) y = i;
  }
  if (y < m && y < d) return u"YMD";
  if (d < m) return u"DMY";
  return u"MDY";
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
  auto nums = Numbers(chunk, separators);
  if (!nums || nums->size() != 3) return std::nullopt;
  const auto& n = *nums;
  Text order = DateOrder(locale.shortDateFormat);
  if (n[0].size() >= 3) order = u"YMD";
  if (order == u"YMD") return MakeDate(ToInt(n[0]), n[0].size(), ToInt(n[1]), ToInt(n[2]));
  int first = ToInt(n[0]), second = ToInt(n[1]);
  bool dayFirst = order == u"DMY";
  auto dt = dayFirst ? MakeDate(ToInt(n[2]), n[2].size(), second, first)
                     : MakeDate(ToInt(n[2]), n[2].size(), first, second);
  if (dt) return dt;
  // A text that makes no date in the system's order is tried the other way round.
  return dayFirst ? MakeDate(ToInt(n[2]), n[2].size(), first, second)
                  : MakeDate(ToInt(n[2]), n[2].size(), second, first);
}

bool ReadTimePart(TextView chunk, const LocaleFormats& locale, int& h, int& m, int& s) {
  Text separators = u":" + locale.timeSeparator;
  auto nums = Numbers(chunk, separators);
  if (!nums || nums->size() < 2 || nums->size() > 3) return false;
  h = ToInt((*nums)[0]);
  m = ToInt((*nums)[1]);
  s = nums->size() > 2 ? ToInt((*nums)[2]) : 0;
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
    if (base::StartsWith(base::ToUpper(pattern.substr(i, 5)), u"AM/PM")) {
      out += dt.hour < 12 ? locale.am : locale.pm;
      i += 5;
      continue;
    }
    if (base::StartsWith(base::ToUpper(pattern.substr(i, 4)), u"AMPM")) {
      out += dt.hour < 12 ? locale.am : locale.pm;
      i += 4;
      continue;
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

std::optional<base::DateTime> ParseSystemDate(TextView text, const LocaleFormats& locale) {
  std::vector<Text> chunks;
  for (const Text& piece : base::Split(base::Trim(text), u" "))
    if (!piece.empty()) chunks.push_back(piece);
  if (chunks.empty()) return std::nullopt;

  // A trailing AM or PM turns a twelve-hour time into the day's hour.
  int half = 0;  // 0 none, 1 AM, 2 PM
  const Text& last = chunks.back();
  if (base::EqualsNoCase(last, u"AM") || (!locale.am.empty() && base::EqualsNoCase(last, locale.am)))
    half = 1;
  else if (base::EqualsNoCase(last, u"PM") ||
           (!locale.pm.empty() && base::EqualsNoCase(last, locale.pm)))
    half = 2;
  if (half) chunks.pop_back();
  if (chunks.empty() || chunks.size() > 2) return std::nullopt;

  base::DateTime result;  // 12-30-1899 0:00:00
  const Text* timeChunk = nullptr;
  if (chunks.size() == 2) {
    auto date = ReadDatePart(chunks[0], locale);
    if (!date) return std::nullopt;
    result = *date;
    timeChunk = &chunks[1];
  } else if (int h = 0, m = 0, s = 0;
             LooksLikeTime(chunks[0], locale) && ReadTimePart(chunks[0], locale, h, m, s)) {
    timeChunk = &chunks[0];
  } else {
    auto date = ReadDatePart(chunks[0], locale);
    if (!date) return std::nullopt;
    result = *date;
  }
  if (timeChunk) {
    int h = 0, m = 0, s = 0;
    if (!ReadTimePart(*timeChunk, locale, h, m, s)) return std::nullopt;
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
