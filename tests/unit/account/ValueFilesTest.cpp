#include <gtest/gtest.h>

#include "frame/Settings.h"
#include "testkit/FrameFixture.h"
#include "account/ValueFiles.h"

using account::ValueKind;
using base::Text;
using testkit::FrameFixture;

namespace {

class ValueFilesTest : public ::testing::Test, public FrameFixture {
 protected:
  ValueFilesTest() { fake.fs.AddFolders(app.CommonFolder()); }
};

TEST_F(ValueFilesTest, ScrambleUsesKeyFromItsSecondLetterAndWrapsAfterSeven) {
  EXPECT_EQ(account::Encrypt(app, u"Ab"), (Text{char16_t(142), char16_t(184)}));
  // Eight letters take the key positions 2..7, 1, 2: M V R X Q D K M.
  const Text key = u"MVRXQDKM";
  Text scrambled = account::Encrypt(app, u"aaaaaaaa");
  ASSERT_EQ(scrambled.size(), 8u);
  for (size_t i = 0; i < 8; ++i) EXPECT_EQ(scrambled[i], char16_t((u'a' + key[i]) & 0xFF)) << i;
  // Round trips of every character are the password store's test.
  EXPECT_EQ(account::Encrypt(app, u"   "), u"");
  EXPECT_EQ(account::Decrypt(app, u"  "), u"");
}

TEST_F(ValueFilesTest, OverflowingCharacterStopsTheScrambleWithATraceLine) {
  Text text = u"ab";
  text.push_back(char16_t(0x7FF0));  // plus a key letter leaves the 16-bit range
  text += u"cd";
  Text out = account::Encrypt(app, text);
  EXPECT_EQ(out, account::Encrypt(app, u"ab"));
  EXPECT_EQ(Lines(Common(u"SerTraceFile.txt")),
            std::vector<Text>{u"Error encrypting Reason: Overflow  6"});
}

TEST_F(ValueFilesTest, ValueFileHoldsOneTrimmedLineAndIsReplacedNotAppended) {
  EXPECT_TRUE(account::WriteValueFile(app, u" jo ", u"  first  ", ValueKind::Password));
  EXPECT_TRUE(account::WriteValueFile(app, u"jo", u"second", ValueKind::Password));
  EXPECT_EQ(Lines(Common(u"jo\\jo.txt")), std::vector<Text>{u"second"});
  EXPECT_EQ(account::ReadValueFile(app, u"jo", ValueKind::Password), u"second");

  EXPECT_TRUE(account::WriteValueFile(app, u"jo", u"C:\\temp", ValueKind::TempPath));
  EXPECT_EQ(Lines(Common(u"jo\\QVTemppath.txt")), std::vector<Text>{u"C:\\temp"});
}

TEST_F(ValueFilesTest, BlankFileFallsBackToRegistryValueNamedByScrambledKey) {
  EXPECT_TRUE(
      account::WriteValueFile(app, u"jo", account::Encrypt(app, u"   "), ValueKind::Password));
  EXPECT_EQ(Lines(Common(u"jo\\jo.txt")), std::vector<Text>{u""});

  Text name = account::Encrypt(app, u"jo");
  fake.system.major = 10;
  fake.registry.WriteString(platform::RegRoot::CurrentUser, u"Software\\QVWIN", name, u" stored ",
                            0x20006);
  EXPECT_EQ(account::ReadValueFile(app, u"jo", ValueKind::Password), u"stored");

  fake.system.major = 5;  // the machine's key before version six
  EXPECT_EQ(account::ReadValueFile(app, u"jo", ValueKind::Password), u"");
  fake.registry.WriteString(platform::RegRoot::LocalMachine, u"Software\\QVWIN", u"SYSSTATE",
                            u"D:\\state", 0x20006);
  EXPECT_EQ(account::ReadValueFile(app, u"nobody", ValueKind::SystemStatePath), u"D:\\state");
}

TEST_F(ValueFilesTest, SecureSettingStoresScrambledPasswordAndNeverLogsIt) {
  account::SecureValueStore store(app);
  app.secureStore = &store;
  frame::WriteSetting(app, u"jo", u"Pa55word", true);
  EXPECT_EQ(frame::ReadSetting(app, u"jo", true), u"Pa55word");
  EXPECT_EQ(Lines(Common(u"jo\\jo.txt")), std::vector<Text>{account::Encrypt(app, u"Pa55word")});
  for (const Text& log : {Common(u"SerTraceFile.txt"), app.ServiceLogPath})
    EXPECT_EQ(Units(log).find(u"Pa55word"), Text::npos);
}

}  // namespace
