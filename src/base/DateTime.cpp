#include "base/DateTime.h"

namespace base {

namespace {
// Days from 1970-01-01 of a civil date (proleptic Gregorian).
std::int64_t DaysFromCivil(std::int64_t y, unsigned m, unsigned d) {
  y -= m <= 2;
  const std::int64_t era = (y >= 0 ? y : y - 399) / 400;
  const unsigned yoe = static_cast<unsigned>(y - era * 400);
  const unsigned doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
  const unsigned doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
  return era * 146097 + static_cast<std::int64_t>(doe) - 719468;
}

void CivilFromDays(std::int64_t z, int& y, int& m, int& d) {
  z += 719468;
  const std::int64_t era = (z >= 0 ? z : z - 146096) / 146097;
  const unsigned doe = static_cast<unsigned>(z - era * 146097);
  const unsigned yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
  const std::int64_t yy = static_cast<std::int64_t>(yoe) + era * 400;
  const unsigned doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
  const unsigned mp = (5 * doy + 2) / 153;
  d = static_cast<int>(doy - (153 * mp + 2) / 5 + 1);
  m = static_cast<int>(mp < 10 ? mp + 3 : mp - 9);
  y = static_cast<int>(yy + (m <= 2));
}

const std::int64_t kEpochOffset = DaysFromCivil(1899, 12, 30);

std::int64_t FloorDiv(std::int64_t a, std::int64_t b) {
  std::int64_t q = a / b;
  if ((a % b != 0) && ((a < 0) != (b < 0))) --q;
  return q;
}

Text Two(int v) {
  Text t;
  t.push_back(static_cast<char16_t>(u'0' + (v / 10) % 10));
  t.push_back(static_cast<char16_t>(u'0' + v % 10));
  return t;
}
Text Four(int v) { return PadLeft(FromNumber(v), 4, u'0'); }
}  // namespace

bool DateTime::IsLeapYear(int y) { return (y % 4 == 0 && y % 100 != 0) || y % 400 == 0; }

int DateTime::DaysInMonth(int y, int m) {
  static const int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  if (m < 1 || m > 12) return 0;
  return (m == 2 && IsLeapYear(y)) ? 29 : kDays[m - 1];
}

bool DateTime::IsValid(int y, int m, int d, int h, int mi, int s) {
  return y >= 100 && y <= 9999 && m >= 1 && m <= 12 && d >= 1 && d <= DaysInMonth(y, m) && h >= 0 &&
         h <= 23 && mi >= 0 && mi <= 59 && s >= 0 && s <= 59;
}

std::int64_t DateTime::DayNumber() const { return DaysFromCivil(year, month, day) - kEpochOffset; }

DateTime DateTime::FromDayNumber(std::int64_t days) {
  DateTime dt;
  CivilFromDays(days + kEpochOffset, dt.year, dt.month, dt.day);
  return dt;
}

std::int64_t DateTime::SecondsSinceEpoch() const {
  return DayNumber() * 86400 + hour * 3600 + minute * 60 + second;
}

DateTime DateTime::FromSeconds(std::int64_t s) {
  std::int64_t days = FloorDiv(s, 86400);
  std::int64_t rest = s - days * 86400;
  DateTime dt = FromDayNumber(days);
  dt.hour = static_cast<int>(rest / 3600);
  dt.minute = static_cast<int>((rest / 60) % 60);
  dt.second = static_cast<int>(rest % 60);
  return dt;
}

DateTime DateTime::AddSeconds(std::int64_t n) const { return FromSeconds(SecondsSinceEpoch() + n); }
DateTime DateTime::AddMinutes(std::int64_t n) const { return AddSeconds(n * 60); }
DateTime DateTime::AddHours(std::int64_t n) const { return AddSeconds(n * 3600); }
DateTime DateTime::AddDays(std::int64_t n) const { return AddSeconds(n * 86400); }

DateTime DateTime::AddMonths(int n) const {
  DateTime dt = *this;
  int total = year * 12 + (month - 1) + n;
  dt.year = total / 12;
  dt.month = total % 12 + 1;
  int last = DaysInMonth(dt.year, dt.month);
  if (dt.day > last) dt.day = last;
  return dt;
}

DateTime DateTime::DateOnly() const {
  DateTime dt = *this;
  dt.hour = dt.minute = dt.second = 0;
  return dt;
}

int DateTime::Weekday() const {
  // 1899-12-30 was a Saturday (7).
  std::int64_t d = DayNumber();
  std::int64_t w = ((d % 7) + 7) % 7;  // 0 = Saturday
  return static_cast<int>((w + 6) % 7) + 1;
}

std::int64_t DateTime::DaysBetween(const DateTime& a, const DateTime& b) {
  return b.DayNumber() - a.DayNumber();
}

Text FormatFileDate(const DateTime& dt) {
  return Two(dt.month) + u"-" + Two(dt.day) + u"-" + Four(dt.year) + u" " + FromNumber(dt.hour) +
         u":" + Two(dt.minute) + u":" + Two(dt.second);
}

Text FormatSortKey(const DateTime& dt) {
  return Four(dt.year) + Two(dt.month) + Two(dt.day) + Two(dt.hour) + Two(dt.minute);
}

Text FormatStamp(const DateTime& dt, TextView ds, TextView ts) {
  return Two(dt.month) + Text(ds) + Two(dt.day) + Text(ds) + Four(dt.year) + u" " + Two(dt.hour) +
         Text(ts) + Two(dt.minute) + Text(ts) + Two(dt.second);
}

std::optional<DateTime> ParseFileDate(TextView text) {
  Text t = Trim(text);
  std::vector<int> nums;
  std::vector<char16_t> seps;
  size_t i = 0;
  while (i < t.size()) {
    if (t[i] < u'0' || t[i] > u'9') return std::nullopt;
    int v = 0, digits = 0;
    while (i < t.size() && t[i] >= u'0' && t[i] <= u'9') {
      v = v * 10 + (t[i] - u'0');
      if (++digits > 4) return std::nullopt;
      ++i;
    }
    nums.push_back(v);
    if (i < t.size()) {
      seps.push_back(t[i]);
      ++i;
      while (seps.back() == u' ' && i < t.size() && t[i] == u' ') ++i;
      if (i == t.size()) return std::nullopt;
    }
  }
  if (nums.size() != 3 && nums.size() != 5 && nums.size() != 6) return std::nullopt;
  char16_t ds = seps.empty() ? u'-' : seps[0];
  if (ds != u'-' && ds != u'/' && ds != u'.') return std::nullopt;
  if (seps.size() >= 2 && seps[1] != ds) return std::nullopt;
  if (nums.size() > 3) {
    if (seps[2] != u' ') return std::nullopt;
    for (size_t k = 3; k < seps.size(); ++k)
      if (seps[k] != u':') return std::nullopt;
  }
  DateTime dt;
  dt.month = nums[0];
  dt.day = nums[1];
  dt.year = nums[2];
  if (nums.size() > 3) {
    dt.hour = nums[3];
    dt.minute = nums[4];
    dt.second = nums.size() > 5 ? nums[5] : 0;
  }
  if (!DateTime::IsValid(dt.year, dt.month, dt.day, dt.hour, dt.minute, dt.second))
    return std::nullopt;
  return dt;
}

}  // namespace base
