#pragma once
// The system's date formatting and date reading, as the job store's rules use them:
// a pattern such as "mm-dd-yyyy H:mm:ss" is written with the locale's time separator
// in place of ":" and its date separator in place of "/", and a date text is read in
// the locale's own order of day and month. This is why a stored date survives a load
// unchanged on a month-first system but not necessarily elsewhere.
#include <optional>

#include "base/DateTime.h"
#include "base/Text.h"

namespace frame {
struct AppState;
}

namespace jobstore {

using base::Text;
using base::TextView;

struct LocaleFormats {
  Text dateSeparator = u"/";
  Text timeSeparator = u":";
  Text shortDateFormat = u"M/d/yyyy";
  Text timeFormat = u"h:mm:ss tt";  // the system's time picture, see FormatTimePicture
  Text am = u"AM";
  Text pm = u"PM";
};

// The platform's regional formats; a program without a locale service gets the defaults.
LocaleFormats LocaleOf(frame::AppState& app);

// Pattern letters: yyyy yy, m mm (minutes right after an hour, else month), d dd,
// h hh H HH, n nn (minutes), s ss, AMPM / AM/PM (switches the hour to twelve). ":" and "/"
// become the locale's separators; everything else is copied.
Text FormatDate(const base::DateTime& dt, TextView pattern, const LocaleFormats& locale);

// A time written by the system's own time picture (the locale's time format), as the
// system writes a date's time: h hh (twelve-hour clock) H HH (24-hour), m mm, s ss,
// t (the marker's first letter) tt (the whole AM or PM marker), text between single
// quotes as it stands ('' is one quote); anything else is copied. An empty picture
// is "h:mm:ss tt".
Text FormatTimePicture(const base::DateTime& dt, TextView picture, const LocaleFormats& locale);

// Reads "date", "date time" or "time" the way the system reads a date text: the three
// date numbers in the locale's order (a four-digit first number means year first), the
// other order of day and month when the first makes no date, two-digit years below 30
// in this century. Time parts are separated by ":" or the locale's separator, with an
// optional AM/PM. A time alone falls on 12-30-1899.
std::optional<base::DateTime> ParseSystemDate(TextView text, const LocaleFormats& locale);

// The system's formatting of a text: a text that reads as a date is written in
// `pattern`; any other text comes back as it stands.
Text ReformatDate(TextView text, TextView pattern, const LocaleFormats& locale);

}  // namespace jobstore
