#pragma once
// Local calendar date and time, as the product keeps it in its files
// ("mm-dd-yyyy H:mm:ss") and compares it (sort keys, whole-day differences).
#include <compare>
#include <cstdint>
#include <optional>

#include "base/Text.h"

namespace base {

struct DateTime {
  int year = 1899;
  int month = 12;
  int day = 30;
  int hour = 0;
  int minute = 0;
  int second = 0;

  static bool IsLeapYear(int year);
  static int DaysInMonth(int year, int month);
  static bool IsValid(int year, int month, int day, int hour = 0, int minute = 0, int second = 0);

  // Days since 1899-12-30, the day count of the platform's date serials.
  std::int64_t DayNumber() const;
  static DateTime FromDayNumber(std::int64_t days);
  std::int64_t SecondsSinceEpoch() const;  // epoch 1899-12-30 00:00:00
  static DateTime FromSeconds(std::int64_t seconds);

  DateTime AddSeconds(std::int64_t n) const;
  DateTime AddMinutes(std::int64_t n) const;
  DateTime AddHours(std::int64_t n) const;
  DateTime AddDays(std::int64_t n) const;
  // Calendar months; a day past the new month's end becomes its last day (Jan 31 + 1 = Feb 28/29).
  DateTime AddMonths(int n) const;
  DateTime DateOnly() const;

  int Weekday() const;  // 1 = Sunday .. 7 = Saturday
  // Whole calendar days from a to b, times of day ignored.
  static std::int64_t DaysBetween(const DateTime& a, const DateTime& b);

  auto operator<=>(const DateTime&) const = default;
};

// "mm-dd-yyyy H:mm:ss", the form of dates in the shared files.
Text FormatFileDate(const DateTime& dt);
// "yyyymmddHHMM", twelve digits compared as text.
Text FormatSortKey(const DateTime& dt);
// "mm/dd/yyyy hh:mm:ss" with the locale's separators in place of "/" and ":".
Text FormatStamp(const DateTime& dt, TextView dateSeparator, TextView timeSeparator);

// Reads "m-d-yyyy h:m:s" (also with "/" or "." between date parts, with or without
// the time part, one or two digit fields). Fails on anything else or an impossible date.
std::optional<DateTime> ParseFileDate(TextView text);

}  // namespace base
