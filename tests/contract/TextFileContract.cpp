// UTF-16 text files by lines, over every file system.
#include <gtest/gtest.h>

#include "Targets.h"
#include "base/Utf16.h"
#include "platform/TextFile.h"

namespace contract {
namespace {

using platform::TextFile;

std::string Utf16(base::TextView units) { return base::EncodeUtf16Le(units); }

class TextFileContract : public FsContract {};

// Create makes an empty file with its byte-order mark and keeps one that is there;
// lines go out with CR LF, WriteLines replaces the whole file.
TEST_P(TextFileContract, CreateAppendAndWriteLines) {
  Text file = Path(u"log.txt");
  ASSERT_TRUE(TextFile::Create(fs(), file, false));
  EXPECT_EQ(fs().ReadAll(file), "\xFF\xFE");
  ASSERT_TRUE(TextFile::AppendLine(fs(), file, u"Information : one"));
  ASSERT_TRUE(TextFile::Create(fs(), file, false));
  ASSERT_TRUE(TextFile::AppendLine(fs(), file, u""));
  ASSERT_TRUE(TextFile::AppendLine(fs(), file, u"\u00e9\u20ac\u0416 \U0001F600"));
  EXPECT_EQ(fs().ReadAll(file),
            "\xFF\xFE" + Utf16(u"Information : one\r\n\r\n\u00e9\u20ac\u0416 \U0001F600\r\n"));
  EXPECT_EQ(TextFile::ReadLines(fs(), file),
            (std::vector<Text>{u"Information : one", u"", u"\u00e9\u20ac\u0416 \U0001F600"}));
  ASSERT_TRUE(TextFile::Create(fs(), file, true));
  EXPECT_EQ(fs().ReadAll(file), "\xFF\xFE") << "overwrite empties it";
  ASSERT_TRUE(TextFile::WriteLines(fs(), file, {u"0", u"a", u"b"}));
  ASSERT_TRUE(TextFile::WriteLines(fs(), file, {u"1"}));
  EXPECT_EQ(fs().ReadAll(file), "\xFF\xFE" + Utf16(u"1\r\n"));
}

// The log separator goes into a UTF-16 file as single bytes. A reader gets the
// units those bytes make, and writing back what it read reproduces the file.
TEST_P(TextFileContract, SingleByteRunInTheMiddleSurvivesARoundTrip) {
  Text file = Path(u"QVWServiceLog.txt");
  const std::string separator = std::string(104, '_') + "\r\n";
  ASSERT_TRUE(TextFile::AppendLine(fs(), file, u"Success     : logged out "));
  ASSERT_TRUE(TextFile::AppendBytes(fs(), file, separator));
  ASSERT_TRUE(TextFile::AppendLine(fs(), file, u"next"));
  std::string original = *fs().ReadAll(file);
  EXPECT_EQ(original,
            "\xFF\xFE" + Utf16(u"Success     : logged out \r\n") + separator + Utf16(u"next\r\n"));

  auto lines = TextFile::ReadLines(fs(), file);
  ASSERT_TRUE(lines);
  ASSERT_EQ(lines->size(), 2u);
  // 106 bytes make 53 units: 52 pairs of '_' and one of CR LF read the other way round.
  EXPECT_EQ((*lines)[1], Text(52, char16_t{0x5F5F}) + char16_t{0x0A0D} + u"next");

  Text copy = Path(u"copy.txt");
  ASSERT_TRUE(TextFile::WriteLines(fs(), copy, *lines));
  EXPECT_EQ(fs().ReadAll(copy), original);
}

// Without a byte-order mark the file is still UTF-16; an odd last byte is left out.
TEST_P(TextFileContract, FileWithoutMarkOrWithAnOddByteCountIsReadAsUtf16) {
  Text file = Path(u"nobom.txt");
  ASSERT_TRUE(fs().WriteAll(file, Utf16(u"x=1\r\ny\n")));
  EXPECT_EQ(TextFile::ReadLines(fs(), file), (std::vector<Text>{u"x=1", u"y"}));
  EXPECT_EQ(TextFile::ReadLines(fs(), Path(u"absent.txt")), std::nullopt);
  Text odd = Path(u"odd.txt");
  ASSERT_TRUE(TextFile::AppendLine(fs(), odd, u"a"));
  ASSERT_TRUE(TextFile::AppendBytes(fs(), odd, "_"));
  EXPECT_EQ(TextFile::ReadText(fs(), odd), Text(u"a\r\n"));
}

// The first line and the count of lines, read without making every line, agree with
// ReadLines on every way a file can end and on a first line longer than one piece.
TEST_P(TextFileContract, FirstLineAndCountAgreeWithReadLines) {
  const Text longLine(5000, u'x');
  const std::vector<std::string> contents = {
      "",
      "\xFF\xFE",
      "\xFF\xFE" + Utf16(u"0\r\n1\b\bSet\r\n"),
      "\xFF\xFE" + Utf16(u" 1 \r\nno end"),
      Utf16(u"2\nlone\n\n"),
      "\xFF\xFE" + Utf16(u"\r\n\r\n"),
      "\xFF\xFE" + Utf16(u"only\r") + "z",
      "\xFF\xFE" + Utf16(longLine + u"\r\nsecond\r\n"),
      "\xFF\xFE" + Utf16(longLine + longLine),
  };
  const Text file = Path(u"scheduleData.txt");
  for (const std::string& bytes : contents) {
    ASSERT_TRUE(fs().WriteAll(file, bytes));
    const auto lines = TextFile::ReadLines(fs(), file);
    ASSERT_TRUE(lines.has_value());
    EXPECT_EQ(TextFile::CountLines(fs(), file), lines->size()) << bytes.size() << " bytes";
    EXPECT_EQ(TextFile::ReadFirstLine(fs(), file), lines->empty() ? Text() : lines->front())
        << bytes.size() << " bytes";
  }
  EXPECT_EQ(TextFile::ReadFirstLine(fs(), Path(u"missing.txt")), std::nullopt);
  EXPECT_EQ(TextFile::CountLines(fs(), Path(u"missing.txt")), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(All, TextFileContract, ::testing::ValuesIn(FileSystemTargets()),
                         TargetName());

}  // namespace
}  // namespace contract
