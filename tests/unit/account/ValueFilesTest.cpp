#include <gtest/gtest.h>

#include "frame/Settings.h"
#include "support/FrameFixture.h"
#include "support/ValueFiles.h"

using base::Text;
using support::ValueKind;
using testkit::FrameFixture;

namespace {

class ValueFilesTest : public ::testing::Test, public FrameFixture {
 protected:
  ValueFilesTest() { fake.fs.AddFolders(app.CommonFolder()); }
};

TEST_F(ValueFilesTest, ScrambleUsesKeyFromItsSecondLetterAndWrapsAfterSeven) {
  EXPECT_EQ(support::Encrypt(app, u"Ab"), (Text{char16_t(142), char16_t(184)}));
  // Eight letters take the key positions 2..7, 1, 2: M V R X Q D K M.
  const Text key = u"MVRXQDKM";
  Text scrambled = support::Encrypt(app, u"aaaaaaaa");
  ASSERT_EQ(scrambled.size(), 8u);
  for (size_t i = 0; i < 8; ++i) EXPECT_EQ(scrambled[i], char16_t((u'a' + key[i]) & 0xFF)) << i;
}

TEST_F(ValueFilesTest, ScrambleRoundTripsPrintableTextAndBlankIsEmpty) {
  for (Text pw : {Text(u"Secret#2026"), Text(u"x"), Text(u"~~~~~~~~~~~~~~~")}) {
    EXPECT_EQ(support::Decrypt(app, support::Encrypt(app, pw)), pw) << testkit::U8(pw);
  }
  EXPECT_EQ(support::Encrypt(app, u"   "), u"");
  EXPECT_EQ(support::Decrypt(app, u"  "), u"");
}

TEST_F(ValueFilesTest, OverflowingCharacterStopsTheScrambleWithATraceLine) {
  Text text = u"ab";
  text.push_back(char16_t(0x7FF0));  // plus a key letter leaves the 16-bit range
  text += u"cd";
  Text out = support::Encrypt(app, text);
  EXPECT_EQ(out, support::Encrypt(app, u"ab"));
  EXPECT_EQ(Lines(Common(u"SerTraceFile.txt")),
            std::vector<Text>{u"Error encrypting Reason: Overflow  6"});
}

TEST_F(ValueFilesTest, ValueFileHoldsOneTrimmedLineAndIsReplacedNotAppended) {
  support::WriteValueFile(app, u" jo ", u"  first  ", ValueKind::Password);
  support::WriteValueFile(app, u"jo", u"second", ValueKind::Password);
  EXPECT_EQ(Lines(Common(u"jo\\jo.txt")), std::vector<Text>{u"second"});
  EXPECT_EQ(support::ReadValueFile(app, u"jo", ValueKind::Password), u"second");

  support::WriteValueFile(app, u"jo", u"C:\\temp", ValueKind::TempPath);
  EXPECT_EQ(Lines(Common(u"jo\\QVTemppath.txt")), std::vector<Text>{u"C:\\temp"});
}

TEST_F(ValueFilesTest, BlankFileFallsBackToRegistryValueNamedByScrambledKey) {
  support::WriteValueFile(app, u"jo", support::Encrypt(app, u"   "), ValueKind::Password);
  EXPECT_EQ(Lines(Common(u"jo\\jo.txt")), std::vector<Text>{u""});

  Text name = support::Encrypt(app, u"jo");
  fake.system.major = 10;
  fake.registry.WriteString(platform::RegRoot::CurrentUser, u"Software\\QVWIN", name, u" stored ",
                            0x20006);
  EXPECT_EQ(support::ReadValueFile(app, u"jo", ValueKind::Password), u"stored");

  fake.system.major = 5;  // the machine's key before version six
  EXPECT_EQ(support::ReadValueFile(app, u"jo", ValueKind::Password), u"");
  fake.registry.WriteString(platform::RegRoot::LocalMachine, u"Software\\QVWIN", u"SYSSTATE",
                            u"D:\\state", 0x20006);
  EXPECT_EQ(support::ReadValueFile(app, u"nobody", ValueKind::SystemStatePath), u"D:\\state");
}

TEST_F(ValueFilesTest, SecureSettingStoresScrambledPasswordAndNeverLogsIt) {
  support::SecureValueStore store(app);
  app.secureStore = &store;
  frame::WriteSetting(app, u"jo", u"Pa55word", true);
  EXPECT_EQ(frame::ReadSetting(app, u"jo", true), u"Pa55word");
  EXPECT_EQ(Lines(Common(u"jo\\jo.txt")), std::vector<Text>{support::Encrypt(app, u"Pa55word")});
  for (const Text& log : {Common(u"SerTraceFile.txt"), app.ServiceLogPath})
    EXPECT_EQ(Units(log).find(u"Pa55word"), Text::npos);
}

}  // namespace
