// The system's date formatting and reading that the job store's rules go through.
#include <gtest/gtest.h>

#include "jobstore/SystemDate.h"

namespace jobstore {
namespace {

using base::DateTime;

TEST(SystemDate, PatternsUseTheLocaleSeparators) {
  LocaleFormats us;
  DateTime dt{2013, 3, 5, 9, 7, 4};
  EXPECT_EQ(FormatDate(dt, u"mm-dd-yyyy H:mm:ss", us), u"03-05-2013 9:07:04");
  EXPECT_EQ(FormatDate(dt, u"mm/dd/yyyy hh:mm:ss", us), u"03/05/2013 09:07:04");
  EXPECT_EQ(FormatDate(dt, u"H:mm", us), u"9:07");
  LocaleFormats fi{u".", u".", u"d.M.yyyy"};
  EXPECT_EQ(FormatDate(dt, u"mm-dd-yyyy H:mm:ss", fi), u"03-05-2013 9.07.04");
  EXPECT_EQ(FormatDate(dt, u"m/d/yy", fi), u"3.5.13");
  DateTime pm{2013, 3, 5, 0, 30, 0};
  EXPECT_EQ(FormatDate(pm, u"hh:mm AMPM", us), u"12:30 AM");
  pm.hour = 13;
  EXPECT_EQ(FormatDate(pm, u"h:mm AM/PM", us), u"1:30 PM");
}

TEST(SystemDate, ReadingFollowsTheLocaleOrderWithTheOtherAsFallback) {
  LocaleFormats us;
  LocaleFormats uk{u"/", u":", u"dd/MM/yyyy"};
  LocaleFormats iso{u"-", u":", u"yyyy-MM-dd"};
  EXPECT_EQ(ParseSystemDate(u"03-05-2013 9:07:44", us), (DateTime{2013, 3, 5, 9, 7, 44}));
  EXPECT_EQ(ParseSystemDate(u"03-05-2013 9:07:44", uk), (DateTime{2013, 5, 3, 9, 7, 44}));
  EXPECT_EQ(ParseSystemDate(u"03-25-2013", uk), (DateTime{2013, 3, 25, 0, 0, 0}));
  EXPECT_EQ(ParseSystemDate(u"25/03/2013", us), (DateTime{2013, 3, 25, 0, 0, 0}));
  EXPECT_EQ(ParseSystemDate(u"2013-03-05 23:59", us), (DateTime{2013, 3, 5, 23, 59, 0}));
  EXPECT_EQ(ParseSystemDate(u"13.3.5", iso), (DateTime{2013, 3, 5, 0, 0, 0}));
  EXPECT_EQ(ParseSystemDate(u"3/5/99  1:02:03 PM", us), (DateTime{1999, 3, 5, 13, 2, 3}));
  EXPECT_EQ(ParseSystemDate(u"12:00:00 AM", us), (DateTime{1899, 12, 30, 0, 0, 0}));
  for (const char16_t* bad :
       {u"", u"  ", u"02-30-2013", u"13-13-2013", u"1-2", u"03-05-2013 24:00", u"03-05-2013 9:60",
        u"03-05-2013 0:00 PM", u"03-05-2013 x", u"03-05-2013 1:2:3 4", u"12345-1-1", u"1--2-2013"})
    EXPECT_FALSE(ParseSystemDate(bad, us)) << base::ToUtf8(bad);
}

TEST(SystemDate, ReformatKeepsWhatIsNoDate) {
  LocaleFormats us;
  EXPECT_EQ(ReformatDate(u"3-5-2013 06:07:08", u"mm-dd-yyyy H:mm:ss", us), u"03-05-2013 6:07:08");
  EXPECT_EQ(ReformatDate(u"next week", u"mm-dd-yyyy H:mm:ss", us), u"next week");
  EXPECT_EQ(ReformatDate(u"", u"H:mm", us), u"");
}

}  // namespace
}  // namespace jobstore
