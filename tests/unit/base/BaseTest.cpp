// The parsing and calendar code every file of the data root goes through.
#include <gtest/gtest.h>

#include "base/DateTime.h"
#include "base/Text.h"
#include "base/Utf16.h"

namespace {

using base::DateTime;
using base::Text;

TEST(FileDate, ReadsEveryWrittenFormAndRefusesImpossibleDates) {
  EXPECT_EQ(base::ParseFileDate(u"03-25-2013 6:41:00"), (DateTime{2013, 3, 25, 6, 41, 0}));
  EXPECT_EQ(base::ParseFileDate(u" 3/5/2013 "), (DateTime{2013, 3, 5, 0, 0, 0}));
  EXPECT_EQ(base::ParseFileDate(u"3.5.2013 23:59"), (DateTime{2013, 3, 5, 23, 59, 0}));
  EXPECT_EQ(base::ParseFileDate(u"02-29-2000 0:00:00"), (DateTime{2000, 2, 29, 0, 0, 0}));
  for (const char16_t* bad :
       {u"", u"02-29-2013", u"02-29-1900", u"13-01-2013", u"00-10-2013", u"04-31-2013",
        u"03-25-2013 24:00:00", u"03-25-2013 6:60:00", u"03-25-2013 6:41:61", u"03-25",
        u"03-25-2013x", u"03-25/2013", u"03-25-2013 6-41-00", u"-03-25-2013",
        u"03-25-2013 6:41:00:00", u"03-25-20130"}) {
    EXPECT_EQ(base::ParseFileDate(bad), std::nullopt) << base::ToUtf8(bad);
  }
  // What the product writes, it reads back.
  for (const DateTime& dt : {DateTime{2013, 3, 25, 6, 41, 0}, DateTime{1999, 12, 31, 23, 59, 59},
                             DateTime{2024, 2, 29, 12, 0, 5}}) {
    EXPECT_EQ(base::ParseFileDate(base::FormatFileDate(dt)), dt)
        << base::ToUtf8(FormatFileDate(dt));
  }
  EXPECT_EQ(base::FormatFileDate({2013, 3, 5, 6, 4, 0}), u"03-05-2013 6:04:00");
  EXPECT_EQ(base::FormatSortKey({2013, 3, 25, 6, 41, 59}), u"201303250641");
  EXPECT_EQ(base::FormatStamp({2013, 3, 5, 6, 4, 9}, u".", u"-"), u"03.05.2013 06-04-09");
}

TEST(Calendar, DayNumbersAreThePlatformsSerialsAndGoBothWays) {
  EXPECT_EQ((DateTime{1899, 12, 30}).DayNumber(), 0);
  EXPECT_EQ((DateTime{1900, 3, 1}).DayNumber(), 61);
  EXPECT_EQ((DateTime{2013, 3, 18}).DayNumber(), 41351);
  EXPECT_EQ(DateTime::FromDayNumber(-1), (DateTime{1899, 12, 29}));
  for (std::int64_t d = -800; d < 80000; d += 37) {
    EXPECT_EQ(DateTime::FromDayNumber(d).DayNumber(), d);
  }
  EXPECT_EQ((DateTime{2013, 3, 18}).Weekday(), 2);  // a Monday
  EXPECT_EQ((DateTime{2013, 3, 17}).Weekday(), 1);
  EXPECT_EQ((DateTime{2013, 3, 23}).Weekday(), 7);
  const DateTime t{2013, 3, 18, 15, 2, 33};
  EXPECT_EQ(DateTime::FromSeconds(t.SecondsSinceEpoch()), t);
}

TEST(Calendar, SumsCrossDaysMonthsAndYearsAndMonthEndsClamp) {
  EXPECT_EQ((DateTime{2012, 12, 31, 23, 59, 30}).AddSeconds(45), (DateTime{2013, 1, 1, 0, 0, 15}));
  EXPECT_EQ((DateTime{2013, 3, 1, 0, 30, 0}).AddMinutes(-31), (DateTime{2013, 2, 28, 23, 59, 0}));
  EXPECT_EQ((DateTime{2024, 2, 28, 22}).AddHours(3), (DateTime{2024, 2, 29, 1}));
  EXPECT_EQ((DateTime{2013, 12, 30}).AddDays(3), (DateTime{2014, 1, 2}));
  EXPECT_EQ((DateTime{2023, 1, 31, 8}).AddMonths(1), (DateTime{2023, 2, 28, 8}));
  EXPECT_EQ((DateTime{2024, 1, 31}).AddMonths(1), (DateTime{2024, 2, 29}));
  EXPECT_EQ((DateTime{2013, 11, 15}).AddMonths(2), (DateTime{2014, 1, 15}));
  EXPECT_EQ((DateTime{2013, 1, 15}).AddMonths(-1), (DateTime{2012, 12, 15}));
  EXPECT_EQ((DateTime{2013, 3, 31}).AddMonths(-13), (DateTime{2012, 2, 29}));
  // Whole calendar days: a minute over midnight is a day, 23 hours the same day none.
  EXPECT_EQ(DateTime::DaysBetween({2013, 3, 18, 23, 59}, {2013, 3, 19, 0, 1}), 1);
  EXPECT_EQ(DateTime::DaysBetween({2013, 3, 18, 0, 0}, {2013, 3, 18, 23, 0}), 0);
  EXPECT_EQ(DateTime::DaysBetween({2013, 3, 1}, {2013, 2, 1}), -28);
}

TEST(Numbers, ParseLongTakesOnlyWholeNumbersAndLeavesTheTargetOnFailure) {
  long long n = 7;
  EXPECT_TRUE(base::ParseLong(u" -12 ", n));
  EXPECT_EQ(n, -12);
  EXPECT_TRUE(base::ParseLong(u"+0042", n));
  EXPECT_EQ(n, 42);
  for (const char16_t* bad :
       {u"", u" ", u"+", u"-", u"1.0", u"12a", u"1 2", u"0x10", u"99999999999999999999"}) {
    n = 7;
    EXPECT_FALSE(base::ParseLong(bad, n)) << base::ToUtf8(bad);
    EXPECT_EQ(n, 7) << base::ToUtf8(bad);
  }
  // The leading number of a setting, as the old readers took it: blanks inside skipped.
  EXPECT_DOUBLE_EQ(base::LeadingNumber(u" 12.5 MB"), 12.5);
  EXPECT_DOUBLE_EQ(base::LeadingNumber(u"1 2 3x"), 123);
  EXPECT_DOUBLE_EQ(base::LeadingNumber(u"-3.2.1"), -3.2);
  EXPECT_DOUBLE_EQ(base::LeadingNumber(u"abc"), 0);
  EXPECT_DOUBLE_EQ(base::LeadingNumber(u"-"), 0);
  EXPECT_TRUE(base::IsNumeric(u" -1.5 "));
  EXPECT_FALSE(base::IsNumeric(u"."));
  EXPECT_FALSE(base::IsNumeric(u"1.2.3"));
}

TEST(Utf16, ContentComesBackByteForByteAndTextIsSplitAsWritten) {
  // An unpaired surrogate and a stray last byte survive a read and a write.
  const std::string bytes = std::string(base::kUtf16Bom) + std::string(
                                                               "A\0\x00\xD8"
                                                               "B\0"
                                                               "\x7F",
                                                               7);
  const base::Utf16Content c = base::DecodeUtf16Le(bytes);
  EXPECT_TRUE(c.hasBom);
  EXPECT_EQ(c.units, (Text{u'A', char16_t{0xD800}, u'B'}));
  ASSERT_TRUE(c.oddByte.has_value());
  EXPECT_EQ(base::EncodeUtf16Le(c), bytes);
  EXPECT_EQ(base::ToUtf8(c.units),
            "A\xEF\xBF\xBD"
            "B");
  EXPECT_EQ(base::FromUtf8(base::ToUtf8(u"\u00FB\U0001F600")), u"\u00FB\U0001F600");
  EXPECT_FALSE(base::DecodeUtf16Le(std::string_view("A\0", 2)).hasBom);

  EXPECT_EQ(base::Split(u"a\b\b\b\bb\b\b", u"\b\b"), (std::vector<Text>{u"a", u"", u"b", u""}));
  EXPECT_TRUE(base::Split(u"", u",").empty());
  EXPECT_EQ(base::Join(base::Split(u"x,,y,", u","), u","), u"x,,y,");
  EXPECT_EQ(base::Mid(u"abcdef", 5, 10), u"ef");
  EXPECT_EQ(base::Mid(u"abc", 9), u"");
  EXPECT_EQ(base::InStr(u"abcabc", u"c", 4), 6u);
  EXPECT_EQ(base::InStr(u"abc", u"x"), 0u);
}

}  // namespace
