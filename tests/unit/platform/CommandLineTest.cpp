#include "platform/portable/CommandLine.h"

#include <gtest/gtest.h>

namespace {

using platform::ArgumentsOf;

constexpr char16_t kInstalled[] = u"C:\\Program Files\\Corvane for Windows\\QVMonitor.exe";

// The Run value is the program's path and " Min", unquoted; the installer puts the
// program under a folder with blanks in its name.
TEST(ArgumentsOf, TheRunValuesUnquotedPathWithBlanksIsSkippedWhole) {
  EXPECT_EQ(ArgumentsOf(base::Text(kInstalled) + u" Min", kInstalled), u"Min");
  EXPECT_EQ(ArgumentsOf(base::Text(kInstalled), kInstalled), u"");
  EXPECT_EQ(ArgumentsOf(base::Text(kInstalled) + u" \t min word ", kInstalled), u"min word ");
  // The system may hand the path over in other letter case than the module's name.
  EXPECT_EQ(ArgumentsOf(u"c:\\PROGRAM FILES\\Corvane For Windows\\qvmonitor.EXE Min", kInstalled),
            u"Min");
}

TEST(ArgumentsOf, APathThatOnlyBeginsLikeTheProgramsIsNotTheProgram) {
  // "...QVMonitor.exeX" is another name: the first word is cut at the blank as before.
  EXPECT_EQ(ArgumentsOf(base::Text(kInstalled) + u"X Min", kInstalled),
            u"Files\\Corvane for Windows\\QVMonitor.exeX Min");
  EXPECT_EQ(ArgumentsOf(u"C:\\Program Min", kInstalled), u"Min");
}

TEST(ArgumentsOf, QuotedAndBareNamesKeepTheirForms) {
  EXPECT_EQ(ArgumentsOf(u"\"" + base::Text(kInstalled) + u"\" Min", kInstalled), u"Min");
  EXPECT_EQ(ArgumentsOf(u"\"C:\\a b\\x.exe\"Min", kInstalled), u"Min");
  EXPECT_EQ(ArgumentsOf(u"QVMonitor.exe\tMin", kInstalled), u"Min");
  EXPECT_EQ(ArgumentsOf(u"\"C:\\unterminated Min", kInstalled), u"");
  // Without a module path (it could not be had) only the first word is the name.
  EXPECT_EQ(ArgumentsOf(u"C:\\QV\\QVMonitor.exe Min", u""), u"Min");
  EXPECT_EQ(ArgumentsOf(u"", kInstalled), u"");
}

}  // namespace
