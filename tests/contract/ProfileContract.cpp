// Profile files: what the platform's profile functions do, written once and run on
// the portable reader/writer (over the real disk and the fake one) and, under Wine,
// on the real functions. The expected bytes are what Wine's functions write.
#include <gtest/gtest.h>

#include "Targets.h"
#include "base/Utf16.h"

namespace contract {
namespace {

constexpr std::size_t kBuffer = 1024;  // what the product's callers pass

class ProfileContract : public ::testing::TestWithParam<ProfileTarget> {
 protected:
  void SetUp() override { world_ = GetParam().make(); }
  platform::IProfile& profile() { return world_->Profile(); }
  platform::IFileSystem& fs() { return world_->Files().Fs(); }
  Text Path(base::TextView name) { return world_->Files().Path(name); }

  // A file with the given bytes; its path.
  Text Put(base::TextView name, std::string_view bytes) {
    Text path = Path(name);
    EXPECT_TRUE(fs().WriteAll(path, bytes));
    return path;
  }
  Text Get(const Text& file, const Text& section, const Text& key, const Text& def = u"d",
           std::size_t buffer = kBuffer) {
    return profile().GetString(section, key, def, buffer, file);
  }
  bool Set(const Text& file, const Text& section, std::optional<Text> key,
           std::optional<Text> value) {
    return profile().WriteString(section, key, value, file);
  }
  std::string Bytes(const Text& file) { return fs().ReadAll(file).value_or("<missing>"); }

  std::unique_ptr<ProfileWorld> world_;
};

#define EXPECT_BYTES(file, expected) EXPECT_EQ(ShowBytes(Bytes(file)), ShowBytes(expected))

TEST_P(ProfileContract, NamesIgnoreCaseAndBlanksAroundNamesAndValues) {
  Text f = Put(u"a.ini",
               "[Corvane]\r\n  UserName =  alice  \r\n\t Tab\t=\tx y\t\r\n"
               "[  Spaced  ]\r\nk=1\r\n[Other] trailing words\r\nk=2\r\n");
  EXPECT_EQ(Get(f, u"corvane", u"USERNAME"), u"alice");
  EXPECT_EQ(Get(f, u" Corvane\t", u"\tusername "), u"alice") << "the request is trimmed too";
  EXPECT_EQ(Get(f, u"CORVANE", u"tab"), u"x y");
  EXPECT_EQ(Get(f, u"spaced", u"k"), u"1");
  EXPECT_EQ(Get(f, u"other", u"K"), u"2") << "text behind ']' is ignored";
}

TEST_P(ProfileContract, CaseIsFoldedForAsciiLettersOnly) {
  Text f = Put(u"case.ini", "[\xC9t\xE9]\r\nK\xC9=1\r\n");
  EXPECT_EQ(Get(f, u"\u00c9T\u00e9", u"k\u00c9"), u"1");
  EXPECT_EQ(Get(f, u"\u00e9t\u00e9", u"K\u00c9"), u"d");
}

TEST_P(ProfileContract, MissingFileSectionOrKeyGivesTheDefaultWithoutTrailingBlanks) {
  Text f = Put(u"m.ini", "[S]\r\nk=v\r\nnoequals\r\n");
  Text absent = Path(u"absent.ini");
  EXPECT_EQ(Get(absent, u"S", u"k", u"def  "), u"def");
  EXPECT_EQ(Get(f, u"T", u"k", u"def \t "), u"def \t") << "only blanks go";
  EXPECT_EQ(Get(f, u"S", u"x", u"   "), u" ") << "the first character always stays";
  EXPECT_EQ(Get(f, u"S", u"noequals", u""), u"") << "a line without '=' has no value";
  EXPECT_EQ(Get(f, u"S", u"x", u"\"quoted\" "), u"quoted") << "the default is unquoted too";
  EXPECT_FALSE(fs().FileExists(absent)) << "reading creates nothing";
}

TEST_P(ProfileContract, MatchingQuotesAreRemoved) {
  Text f = Put(u"q.ini",
               "[Q]\r\na=\"abc\"\r\nb='abc'\r\nc=\"abc'\r\nd=\"\r\ne=\"\"\r\nf= \" x \" \r\n"
               "g=\"a\"\"\r\n");
  EXPECT_EQ(Get(f, u"Q", u"a"), u"abc");
  EXPECT_EQ(Get(f, u"Q", u"b"), u"abc");
  EXPECT_EQ(Get(f, u"Q", u"c"), u"\"abc'");
  EXPECT_EQ(Get(f, u"Q", u"d"), u"\"");
  EXPECT_EQ(Get(f, u"Q", u"e"), u"");
  EXPECT_EQ(Get(f, u"Q", u"f"), u" x ");
  EXPECT_EQ(Get(f, u"Q", u"g"), u"a\"");
}

TEST_P(ProfileContract, ValueIsCutToTheBufferLessOne) {
  std::string longValue(1500, 'x');
  Text f = Put(u"long.ini", "[S]\r\nlong=" + longValue + "\r\nq=\"abcdef\"\r\nh=abcdef\r\n");
  EXPECT_EQ(Get(f, u"S", u"long"), Text(1023, u'x'));
  EXPECT_EQ(Get(f, u"S", u"h", u"", 4), u"abc");
  EXPECT_EQ(Get(f, u"S", u"h", u"", 1), u"");
  EXPECT_EQ(Get(f, u"S", u"missing", u"longdefault", 5), u"long");
  // A quoted value loses its closing quote by count: one that only just fits loses
  // a letter as well.
  EXPECT_EQ(Get(f, u"S", u"q", u"", 4), u"abc");
  EXPECT_EQ(Get(f, u"S", u"q", u"", 6), u"abcde");
  EXPECT_EQ(Get(f, u"S", u"q", u"", 7), u"abcde");
  EXPECT_EQ(Get(f, u"S", u"q", u"", 8), u"abcdef");
}

TEST_P(ProfileContract, OnlyTheFirstOfTwoSectionsOfOneNameIsRead) {
  Text f = Put(u"dup.ini", "[A]\r\nx=1\r\n[B]\r\n[a]\r\nx=2\r\ny=3\r\n");
  EXPECT_EQ(Get(f, u"A", u"x"), u"1");
  EXPECT_EQ(Get(f, u"A", u"y"), u"d");
}

TEST_P(ProfileContract, NewFileIsAnsiWithoutByteOrderMark) {
  Text f = Path(u"new.ini");
  ASSERT_TRUE(Set(f, u"S1", u"k1", u"v1"));
  EXPECT_BYTES(f, "[S1]\r\nk1=v1\r\n");
  ASSERT_TRUE(Set(f, u"S1", u"euro", u"\u00e9\u20ac\u0141\u03b1"));
  EXPECT_BYTES(f, "[S1]\r\nk1=v1\r\neuro=\xE9\x80La\r\n")
      << "Windows-1252, with look-alikes for what it lacks";
  EXPECT_EQ(Get(f, u"s1", u"EURO"), u"\u00e9\u20acLa");
}

TEST_P(ProfileContract, WritesKeepTheLayoutThePlatformGivesIt) {
  Text f = Path(u"layout.ini");
  ASSERT_TRUE(Set(f, u"S1", u"k1", u"v1"));
  ASSERT_TRUE(Set(f, u"S2", u"k2", u"v2"));
  EXPECT_BYTES(f, "[S1]\r\nk1=v1\r\n[S2]\r\nk2=v2\r\n") << "no blank line before a section";
  ASSERT_TRUE(Set(f, u"s1", u"K3", u"v3"));
  EXPECT_BYTES(f, "[S1]\r\nk1=v1\r\nK3=v3\r\n[S2]\r\nk2=v2\r\n") << "appended to its section";
  ASSERT_TRUE(Set(f, u"S1", u"K1", u"new"));
  EXPECT_BYTES(f, "[S1]\r\nk1=new\r\nK3=v3\r\n[S2]\r\nk2=v2\r\n") << "replaced in place";
  ASSERT_TRUE(Set(f, u"S2", u"empty", u""));
  EXPECT_BYTES(f, "[S1]\r\nk1=new\r\nK3=v3\r\n[S2]\r\nk2=v2\r\nempty=\r\n");
  ASSERT_TRUE(Set(f, u"  Sp  ", u"  key  ", u"  val  "));
  EXPECT_BYTES(f, "[S1]\r\nk1=new\r\nK3=v3\r\n[S2]\r\nk2=v2\r\nempty=\r\n[Sp  ]\r\nkey  =val  \r\n")
      << "leading blanks go, trailing ones stay until the next write";
  EXPECT_EQ(Get(f, u"Sp", u"key"), u"val");
}

TEST_P(ProfileContract, NullValueDeletesTheKeyAndNullKeyTheSection) {
  Text f = Put(u"del.ini", "[S]\r\nk=1\r\nj=2\r\n[T]\r\nx=1\r\n");
  ASSERT_TRUE(Set(f, u"s", u"K", std::nullopt));
  EXPECT_BYTES(f, "[S]\r\nj=2\r\n[T]\r\nx=1\r\n");
  ASSERT_TRUE(Set(f, u"t", std::nullopt, std::nullopt));
  EXPECT_BYTES(f, "[S]\r\nj=2\r\n");
  EXPECT_EQ(Get(f, u"T", u"x"), u"d");
}

TEST_P(ProfileContract, DeletingWhatIsNotThereChangesNothing) {
  std::string original = "[S]\r\n\r\nk=1\r\n";
  Text f = Put(u"keep.ini", original);
  EXPECT_TRUE(Set(f, u"S", u"zz", std::nullopt));
  EXPECT_TRUE(Set(f, u"Q", std::nullopt, std::nullopt));
  EXPECT_TRUE(Set(f, u"S ", std::nullopt, std::nullopt)) << "deletion does not trim names";
  EXPECT_TRUE(Set(f, u"S", u" k ", std::nullopt));
  EXPECT_BYTES(f, original);
  Text absent = Path(u"absent.ini");
  EXPECT_TRUE(Set(absent, u"S", u"k", std::nullopt));
  EXPECT_TRUE(Set(absent, u"S", std::nullopt, std::nullopt));
  EXPECT_FALSE(fs().FileExists(absent));
}

TEST_P(ProfileContract, WritingTheSameValueLeavesTheFileAlone) {
  std::string original = "; note\r\n\r\n[A]\r\n  x = 1  \r\n\r\n";
  Text f = Put(u"same.ini", original);
  ASSERT_TRUE(Set(f, u"A", u"x", u"1"));
  EXPECT_BYTES(f, original);
}

// A write puts the whole file out again: blank lines, blanks around names and
// values and text behind a section header are gone; lines without '=' stay.
TEST_P(ProfileContract, AWriteRewritesTheWholeFileTidily) {
  Text f = Put(u"messy.ini",
               "; comment\r\n\r\n[A]\r\n  x = 1  \r\nnoeq\r\n\r\n\r\n\t y\t=\t2\t\r\n"
               "[B] junk\r\nz=3\r\n[C\r\nq=4\r\n[A]\r\nw=5\nlast=6");
  ASSERT_TRUE(Set(f, u"A", u"x", u"11"));
  EXPECT_BYTES(f,
               "; comment\r\n[A]\r\nx=11\r\nnoeq\r\ny=2\r\n[B]\r\nz=3\r\n[C\r\nq=4\r\n"
               "[A]\r\nw=5\r\nlast=6\r\n");
  ASSERT_TRUE(Set(f, u"A", u"w", u"55")) << "goes to the first [A]";
  ASSERT_TRUE(Set(f, u"A", u"last", std::nullopt)) << "deletion looks on into the second";
  EXPECT_BYTES(f,
               "; comment\r\n[A]\r\nx=11\r\nnoeq\r\ny=2\r\nw=55\r\n[B]\r\nz=3\r\n[C\r\nq=4\r\n"
               "[A]\r\nw=5\r\n");
}

TEST_P(ProfileContract, KeysBeforeAnySectionBelongToTheEmptyName) {
  Text f = Put(u"top.ini", "k0=top\r\n[S]\r\nk=v\r\n");
  EXPECT_EQ(Get(f, u"", u"k0"), u"top");
  ASSERT_TRUE(Set(f, u"", u"k1", u"v"));
  EXPECT_BYTES(f, "k0=top\r\nk1=v\r\n[S]\r\nk=v\r\n");
}

TEST_P(ProfileContract, Utf16FileStaysUtf16WithItsByteOrderMark) {
  auto u16 = [](base::TextView t) { return base::EncodeUtf16Le(t); };
  Text f = Put(u"u16.ini", "\xFF\xFE" + u16(u"[S]\r\nname=\u00e9\u0416\r\n"));
  EXPECT_EQ(Get(f, u"S", u"name"), u"\u00e9\u0416");
  ASSERT_TRUE(Set(f, u"S", u"more", u"\u20ac\u0141\U0001F600"));
  ASSERT_TRUE(Set(f, u"\u0416", u"k", u"v"));
  EXPECT_BYTES(f, "\xFF\xFE" + u16(u"[S]\r\nname=\u00e9\u0416\r\nmore=\u20ac\u0141\U0001F600\r\n"
                                   u"[\u0416]\r\nk=v\r\n"));
  EXPECT_EQ(Get(f, u"S", u"more"), u"\u20ac\u0141\U0001F600");
  Text bomOnly = Put(u"bom.ini", "\xFF\xFE");
  ASSERT_TRUE(Set(bomOnly, u"S", u"k", u"w"));
  EXPECT_BYTES(bomOnly, "\xFF\xFE" + u16(u"[S]\r\nk=w\r\n"));
}

TEST_P(ProfileContract, Utf8FileWithByteOrderMarkStaysUtf8) {
  Text f = Put(u"u8.ini", "\xEF\xBB\xBF[S]\r\nk=\xC3\xA9\r\n");
  EXPECT_EQ(Get(f, u"S", u"k"), u"\u00e9");
  ASSERT_TRUE(Set(f, u"S", u"k2", u"\u20ac\u0141"));
  EXPECT_BYTES(f, "\xEF\xBB\xBF[S]\r\nk=\xC3\xA9\r\nk2=\xE2\x82\xAC\xC5\x81\r\n");
}

TEST_P(ProfileContract, AnsiFileKeepsItsBytes) {
  Text f = Put(u"ansi.ini", "[S]\r\nk=\xE9\x80\x81\r\n");
  EXPECT_EQ(Get(f, u"S", u"k"), u"\u00e9\u20ac\u0081");
  ASSERT_TRUE(Set(f, u"S", u"j", u"\u00fc"));
  EXPECT_BYTES(f, "[S]\r\nk=\xE9\x80\x81\r\nj=\xFC\r\n");
}

TEST_P(ProfileContract, MissingFolderFailsWithPathNotFound) {
  Text f = Path(u"NoSuchFolder\\x.ini");
  EXPECT_FALSE(Set(f, u"S", u"k", u"v"));
  EXPECT_EQ(profile().LastError(), 3u);
  EXPECT_EQ(Get(f, u"S", u"k", u"\"dq\" "), u"\"dq\"") << "the default as given, quotes kept";
}

INSTANTIATE_TEST_SUITE_P(All, ProfileContract, ::testing::ValuesIn(ProfileTargets()), TargetName());

}  // namespace
}  // namespace contract
