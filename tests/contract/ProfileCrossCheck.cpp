// The portable profile against the platform's own functions, side by side under
// Wine: every scenario starts from the same bytes in two files, runs the same calls
// on both, and compares every answer and, after every call, the files byte for byte.
// Each side also reads what the other one wrote.
#include <gtest/gtest.h>

#if QV_HAVE_WIN32

#include <variant>

#include "Targets.h"
#include "base/Utf16.h"
#include "platform/portable/PortableProfile.h"
#include "platform/win32/Win32FileSystem.h"
#include "platform/win32/Win32Profile.h"
#include "testkit/TempDir.h"

namespace contract {
namespace {

struct Write {
  Text section;
  std::optional<Text> key;
  std::optional<Text> value;
};
struct Read {
  Text section;
  Text key;
  Text def = u"dflt";
  std::size_t buffer = 1024;
};
using Step = std::variant<Write, Read>;

struct Scenario {
  std::string name;
  std::optional<std::string> initial;  // nullopt: the file does not exist
  std::vector<Step> steps;
};

void PrintTo(const Scenario& scenario, std::ostream* out) { *out << scenario.name; }

using namespace std::string_literals;

std::string U16(base::TextView t) { return "\xFF\xFE" + base::EncodeUtf16Le(t); }

std::vector<Scenario> Scenarios() {
  const std::string messy =
      "; comment\r\n\r\n\r\n[A]\r\n  x = 1  \r\nnoeq\r\n\r\n\t y\t=\t2\t\r\n[B] junk\r\nz=3\r\n"
      "[C\r\nq=4\r\n[A]\r\nw=5\r\nlast=6";
  return {
      {"NewFileSectionsAndKeys",
       std::nullopt,
       {Write{u"S1", u"k1", u"v1"}, Write{u"S2", u"k2", u"v2"}, Write{u"s1", u"K3", u"v3"},
        Write{u"S1", u"K1", u"new"}, Read{u"s1", u"k1"}, Write{u"S1", u"k1", std::nullopt},
        Write{u"s2", std::nullopt, std::nullopt}, Write{u"  Sp  ", u"  key  ", u"  val  "},
        Read{u"Sp", u"key"}, Write{u"Sp", u"key", u"val2"}, Write{u"Sp", u"e", u""},
        Read{u"Sp", u"e"}, Write{u"", u"top", u"t"}, Read{u"", u"top"}}},
      {"MessyFile",
       messy,
       {Read{u"A", u"x"}, Read{u"a", u"Y"}, Read{u"A", u"noeq"}, Read{u"B", u"z"},
        Read{u"B", u"[C"}, Read{u"A", u"q"}, Read{u"A", u"w"}, Read{u"", u"; comment"},
        Write{u"A", u"x", u"1"}, Write{u"A", u"x", u"11"}, Write{u"A", u"w", u"55"},
        Write{u"A", u"new", u"n"}, Write{u"D", u"d", u"dd"},
        Write{u"A", std::nullopt, std::nullopt}, Write{u"A", u"w", std::nullopt},
        Write{u"A", u"last", std::nullopt}, Read{u"A", u"last"}}},
      {"QuotesCutsAndDefaults",
       std::string("[Q]\r\na=\"abc\"\r\nb='abc'\r\nc=\"abc'\r\nd=\"\r\ne=\"\"\r\nf= \" x \" \r\n"
                   "g=\"abcdef\"\r\nh=abcdef\r\ni=''\r\nj=\"a\"\"\r\nlong=") +
           std::string(1500, 'L') + "\r\nqlong=\"" + std::string(1100, 'Q') + "\"\r\n",
       {Read{u"Q", u"a"},
        Read{u"Q", u"b"},
        Read{u"Q", u"c"},
        Read{u"Q", u"d"},
        Read{u"Q", u"e"},
        Read{u"Q", u"f"},
        Read{u"Q", u"g", u"", 4},
        Read{u"Q", u"g", u"", 6},
        Read{u"Q", u"g", u"", 7},
        Read{u"Q", u"g", u"", 8},
        Read{u"Q", u"g", u"", 9},
        Read{u"Q", u"h", u"", 1},
        Read{u"Q", u"i", u"", 1},
        Read{u"Q", u"i", u"", 2},
        Read{u"Q", u"j"},
        Read{u"Q", u"long"},
        Read{u"Q", u"qlong"},
        Read{u"Q", u"zz", u"def  "},
        Read{u"Q", u"zz", u"  "},
        Read{u"Q", u"zz", u"\"dq\" "},
        Read{u"Q", u"zz", u"'q'", 2},
        Read{u"Q", u"zz", u"'q'", 3},
        Read{u"Q", u"zz", u"  ' '  "},
        Read{u"Q", u"zz", u"longdefault", 5},
        Read{u"Q", u"zz", u"", 0}}},
      {"MissingFileReadsAndDeletes",
       std::nullopt,
       {Read{u"S", u"k", u"\"dq\" "}, Write{u"S", u"k", std::nullopt},
        Write{u"S", std::nullopt, std::nullopt}, Write{u"", u"k1", u"v"}}},
      {"DeletesThatFindNothing",
       std::string("[S]\r\n\r\nk=1\r\nj=1\r\n[T]\r\nx=1\r\n"),
       {Write{u"S", u"zz", std::nullopt}, Write{u"Q", std::nullopt, std::nullopt},
        Write{u"S ", std::nullopt, std::nullopt}, Write{u" S", u"k", std::nullopt},
        Write{u"S", u" k ", std::nullopt}, Write{u"s", u"K", std::nullopt},
        Write{u"t", std::nullopt, std::nullopt}}},
      {"Utf16LittleEndian",
       U16(u"[S]\r\nk=\u00e9\u0416\r\n[\u0416]\r\n\u0444=1\r\n"),
       {Read{u"S", u"k"}, Read{u"\u0416", u"\u0444"}, Read{u"\u0436", u"\u0424"},
        Write{u"S", u"k2", u"\u20ac\u0141\U0001F600"}, Write{u"\u0416", u"\u0444", u"2"},
        Write{u"New", u"x", u"\xD800y"}, Read{u"S", u"k2"}}},
      {"Utf16OddLengthAndBigEndian",
       "\xFF\xFE[\0S\0]\0\r\0\n\0k\0=\0v\0\r\0\n\0X"s,
       {Read{u"S", u"k"}, Write{u"S", u"k", u"w"}}},
      {"Utf16BigEndian",
       "\xFE\xFF\0[\0S\0]\0\r\0\n\0k\0=\0v\0\r\0\n"s,
       {Read{u"S", u"k"}, Write{u"S", u"k", u"w\u00e9"}}},
      {"Utf8WithBom",
       std::string(
           "\xEF\xBB\xBF[S]\r\nk=\xC3\xA9\r\na=x\xE2\x82y\r\nb=\xC0\xAFz\r\nc=\xED\xA0\x80w\r\n"
           "d=\xF0\x9F\x98\x80\r\ne=\xF4\x90\x80\x80\r\nf=\x80\x80q\r\n"),
       {Read{u"S", u"k"}, Read{u"S", u"a"}, Read{u"S", u"b"}, Read{u"S", u"c"}, Read{u"S", u"d"},
        Read{u"S", u"e"}, Read{u"S", u"f"}, Write{u"S", u"g", u"\u20ac\xD800x\xDC00"}}},
      {"AnsiCodePage",
       std::string("[S]\r\nk=\xE9\x80\x81\x8D\x8F\x90\x9D\r\n"),
       {Read{u"S", u"k"},
        Write{u"S", u"j", u"\u00e9\u20ac\u0141\u03b1\u0416\u4e2d\U0001F600\u2013\uFF21\u0081?"},
        Read{u"S", u"j"}}},
      {"CaseFolding",
       std::string("[\xC9t\xE9]\r\nK\xC9=1\r\n[Abc]\r\nKey=2\r\n"),
       {Read{u"\u00c9T\u00e9", u"k\u00c9"}, Read{u"\u00e9t\u00e9", u"K\u00c9"},
        Read{u"aBC", u"kEY"}, Write{u"\u00e9t\u00e9", u"x", u"1"}, Write{u"ABC", u"KEY", u"3"}}},
      {"LineEndingsAndOddBlanks",
       std::string("[S]\rk=1\rj=2\n\nm=\xA0v\xA0\r\n\x1A\x1Aq\x1A=\x0Bw\x0C\r\n=a\r\n=b\r\nz=9"),
       {Read{u"S", u"k"}, Read{u"S", u"j"}, Read{u"S", u"m"}, Read{u"S", u"q"}, Read{u"S", u""},
        Read{u"S", u"z"}, Write{u"S", u"z", u"10"}}},
      {"HeadersAndNuls",
       "[ a]b ] x\r\nk=1\r\n[\tT\t]\r\nk=2\r\n[]\r\nx=1\r\n[S]\r\nn=a\0bc\r\n"s,
       {Read{u"a]b", u"k"}, Read{u"T", u"k"}, Read{u"", u"x"}, Read{u"S", u"n"},
        Write{u"S", u"n2", u"v"}}},
      {"ValuesThatLookLikeSyntax",
       std::string("[S]\r\nk=1\r\n"),
       {Write{u"S", u"a=b", u"v"}, Write{u"S", u"a=b", u"v"}, Read{u"S", u"a"},
        Write{u"S", u"\tk", u"\t x\t"}, Write{u"S", u"new", u"\r\nx\r\n"}, Read{u"S", u"new"},
        Write{u"S", u"[X]", u"1"}, Read{u"X", u"=1"}, Write{u"S", u"nul", u"a\0b"s}}},
      {"EmptyFile", std::string(), {Read{u"S", u"k"}, Write{u"S", u"k", u"v"}}},
      // Blanks are trimmed off a header's name before the NUL cuts it short.
      {"NulInsideAHeader",
       "[S\t\0x\t]\r\nk=1\r\n[T \0]\r\nj=2\r\n"s,
       {Read{u"S", u"k"}, Read{u"T", u"j"}, Write{u"S", u"k", u"v"}, Read{u"S", u"k"},
        Write{u"S", u"k", u"w"}, Read{u"S", u"k"}, Write{u"T", u"j", u"3"}}},
      // The rewrite drops the tab, and the file then begins with what reads as a mark.
      // A further write into that half-ANSI, half-UTF-16 file is not repeatable on the
      // platform (one run in many leaves a stray byte), so the scenario stops here.
      {"AnsiLineThatBecomesAMark",
       "\t\xFE\xFFk=1\r\n"s,
       {Write{u"S", u"k", u"v"}, Read{u"S", u"k"}}},
  };
}

// The platform's functions keep a cache of the last files they used, checked by the
// file's time. Files are therefore never reused: each call of the cross reads gets
// a copy of its own.
class ProfileCrossCheck : public ::testing::TestWithParam<Scenario> {
 protected:
  Text NewPath(std::u16string_view tag) {
    return dir_.TextPath() + u"\\" + Text(tag) + base::FromUtf8(std::to_string(counter_++)) +
           u".ini";
  }
  Text CopyOf(const Text& file) {
    Text copy = NewPath(u"copy");
    if (auto bytes = fs_.ReadAll(file)) fs_.WriteAll(copy, *bytes);
    return copy;
  }

  testkit::TempDir dir_;
  platform::Win32FileSystem fs_;
  platform::Win32Profile real_;
  platform::PortableProfile portable_{fs_};
  int counter_ = 0;
};

TEST_P(ProfileCrossCheck, PortableMatchesThePlatform) {
  const Scenario& scenario = GetParam();
  Text realFile = NewPath(u"real");
  Text portableFile = NewPath(u"portable");
  if (scenario.initial) {
    ASSERT_TRUE(fs_.WriteAll(realFile, *scenario.initial));
    ASSERT_TRUE(fs_.WriteAll(portableFile, *scenario.initial));
  }
  int index = 0;
  for (const Step& step : scenario.steps) {
    SCOPED_TRACE("step " + std::to_string(index++));
    if (const Write* w = std::get_if<Write>(&step)) {
      bool realOk = real_.WriteString(w->section, w->key, w->value, realFile);
      bool portableOk = portable_.WriteString(w->section, w->key, w->value, portableFile);
      EXPECT_EQ(portableOk, realOk);
      if (!realOk) {
        EXPECT_EQ(portable_.LastError(), real_.LastError());
      }
    } else {
      const Read& r = std::get<Read>(step);
      Text expected = real_.GetString(r.section, r.key, r.def, r.buffer, realFile);
      EXPECT_EQ(portable_.GetString(r.section, r.key, r.def, r.buffer, portableFile), expected)
          << base::ToUtf8(expected);
      // Each side reads the other's file.
      if (fs_.FileExists(realFile) || fs_.FileExists(portableFile)) {
        EXPECT_EQ(portable_.GetString(r.section, r.key, r.def, r.buffer, CopyOf(realFile)),
                  expected);
        EXPECT_EQ(real_.GetString(r.section, r.key, r.def, r.buffer, CopyOf(portableFile)),
                  expected);
      }
    }
    EXPECT_EQ(fs_.FileExists(portableFile), fs_.FileExists(realFile));
    EXPECT_EQ(ShowBytes(fs_.ReadAll(portableFile).value_or("<none>")),
              ShowBytes(fs_.ReadAll(realFile).value_or("<none>")));
  }
}

INSTANTIATE_TEST_SUITE_P(Wine, ProfileCrossCheck, ::testing::ValuesIn(Scenarios()),
                         [](const auto& info) { return info.param.name; });

}  // namespace
}  // namespace contract

#endif
