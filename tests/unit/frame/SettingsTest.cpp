#include <gtest/gtest.h>

#include "frame/Settings.h"
#include "testkit/FrameFixture.h"

using base::Text;
using platform::RegRoot;
using testkit::CommonFixture;

namespace {

class SettingsTest : public ::testing::Test, public CommonFixture {
 protected:
  Text Ini(const Text& section, const Text& key) {
    return fake.profile.GetString(section, key, u"", 4096, Common(u"qvwin.ini"));
  }
};

TEST_F(SettingsTest, GeometryKeysKeepOneSectionPerResolution) {
  fake.system.twipsPerPixel = 15;  // 96 dpi
  frame::WriteSetting(app, u"MonWidth", u"7000");
  fake.system.twipsPerPixel = 12;  // 120 dpi
  frame::WriteSetting(app, u"monwidth", u"9000");

  EXPECT_EQ(Ini(u"LDPI", u"MonWidth"), u"7000");
  EXPECT_EQ(Ini(u"NDPI", u"MonWidth"), u"9000");
  EXPECT_EQ(frame::ReadSetting(app, u"MonWidth"), u"9000");
  fake.system.twipsPerPixel = 15;
  EXPECT_EQ(frame::ReadSetting(app, u"MONWIDTH"), u"7000");
  EXPECT_EQ(Ini(u"Corvane", u"MonWidth"), u"");
}

TEST_F(SettingsTest, DateFormatIsWrittenToTheGeneralSectionButReadFromItsOwn) {
  frame::WriteSetting(app, u"DateFormat", u"D");
  EXPECT_EQ(Ini(u"Corvane", u"DateFormat"), u"D");
  EXPECT_EQ(frame::ReadSetting(app, u"DateFormat"), u"");
  fake.profile.WriteString(u"DateFormat", Text(u"DateFormat"), Text(u"M"), Common(u"qvwin.ini"));
  EXPECT_EQ(frame::ReadSetting(app, u"dateformat"), u"M");
}

TEST_F(SettingsTest, EmptyValueDeletesTheKeyAndLongValuesAreCut) {
  frame::WriteSetting(app, u"NotifyUsers", u"a<<b");
  frame::WriteSetting(app, u"NotifyUsers", u"");
  EXPECT_EQ(fake.fs.Bytes(Common(u"qvwin.ini")).find("NotifyUsers"), std::string::npos);

  frame::WriteSetting(app, u"WebMessage", Text(1500, u'x'));
  EXPECT_EQ(frame::ReadSetting(app, u"WebMessage").size(), 1023u);
}

TEST_F(SettingsTest, SecureFlagGoesThroughTheSecureStore) {
  struct Store : frame::ISecureStore {
    Text ReadSecure(const Text& k) override { return u"read:" + k; }
    platform::WriteResult WriteSecure(const Text& k, const Text& v) override {
      written = k + u"=" + v;
      return platform::WriteResult::Success();
    }
    Text written;
  } store;
  app.secureStore = &store;
  frame::WriteSetting(app, u"jsmith", u"pw", true);
  EXPECT_EQ(store.written, u"jsmith=pw");
  EXPECT_EQ(frame::ReadSetting(app, u"jsmith", true), u"read:jsmith");
  EXPECT_FALSE(fake.fs.FileExists(Common(u"qvwin.ini")));
}

TEST_F(SettingsTest, AccountKeysComeFromDetailsOrPerUserFile) {
  fake.profile.WriteString(u"Corvane", Text(u"Type"), Text(u"exe"), Common(u"QVDetails.ini"));
  fake.fs.AddFolders(Common(u"jsmith"));
  fake.profile.WriteString(u"Corvane", Text(u"NoofDays"), Text(u"3"),
                           Common(u"jsmith\\qvwinserver.ini"));
  app.UserName = u" jsmith ";
  EXPECT_EQ(frame::ReadAccountKey(app, u"Corvane", u"Type", false), u"exe");
  EXPECT_EQ(frame::ReadAccountKey(app, u"Corvane", u"NoofDays", true), u"3");
  EXPECT_EQ(frame::ReadAccountKey(app, u"Corvane", u"NoofDays", true, u"other"), u"");
}

// A user's file lies in the folder named by the user: a name that would lead out of
// QVCOMMON reads nothing and writes nothing there, and the write is traced.
TEST_F(SettingsTest, AUserNameThatWouldLeaveItsFolderIsNoPath) {
  fake.fs.AddFolders(u"C:\\QV\\evil");
  fake.profile.WriteString(u"Corvane", Text(u"NoofDays"), Text(u"3"),
                           Common(u"..\\evil\\qvwinserver.ini"));
  for (const Text& name : {Text(u"..\\evil"), Text(u" x/y"), Text(u"C:evil"), Text(u"a..b")}) {
    EXPECT_FALSE(frame::StaysInItsFolder(name)) << testkit::U8(name);
    EXPECT_EQ(frame::ReadAccountKey(app, u"Corvane", u"NoofDays", true, name), u"");
    frame::WriteAccountKey(app, u"Corvane", u"WebManage", u"1", name);
  }
  EXPECT_EQ(fake.profile.GetString(u"Corvane", u"WebManage", u"<none>", 64,
                                   Common(u"..\\evil\\qvwinserver.ini")),
            u"<none>");
  EXPECT_FALSE(fake.fs.FolderExists(Common(u"x/y")));
  EXPECT_EQ(Trace().size(), 4u);
  for (const Text& name : {Text(u"jsmith"), Text(u" j.smith "), Text(u"")})
    EXPECT_TRUE(frame::StaysInItsFolder(name)) << testkit::U8(name);
}

TEST_F(SettingsTest, EngineTypeFromDetailsFileBeatsTheRegistry) {
  EXPECT_EQ(frame::EngineIsService(app), 0);  // nothing anywhere
  fake.registry.WriteString(RegRoot::LocalMachine, u"Software\\QVWin", u"Type",
                            Text(u"Service\0junk", 12), 0x20006);
  EXPECT_EQ(frame::EngineIsService(app), 1);  // registry, cut at the NUL

  fake.profile.WriteString(u"Corvane", Text(u"Type"), Text(u"exe"), Common(u"QVDetails.ini"));
  EXPECT_EQ(frame::EngineIsService(app), 0);  // a non-empty file value wins

  fake.profile.WriteString(u"Corvane", Text(u"Type"), Text(u"\"SERVICE \""),
                           Common(u"QVDetails.ini"));
  EXPECT_EQ(frame::EngineIsService(app), 1);  // capitals and a trailing blank
}

TEST_F(SettingsTest, RunValueLivesUnderTheMachineBeforeVersionSix) {
  for (unsigned long major : {5ul, 10ul}) {
    fake.system.major = major;
    RegRoot root = major < 6 ? RegRoot::LocalMachine : RegRoot::CurrentUser;
    EXPECT_EQ(frame::IsInRun(app), 0);
    frame::AddToRun(app);
    EXPECT_EQ(fake.registry.ReadString(root, frame::kRunKey, frame::kRunValue, 2048),
              Text(u"C:\\QV\\QVMonitor.exe Min"));
    EXPECT_EQ(frame::IsInRun(app), 1);
    frame::RemoveFromRun(app);
    EXPECT_EQ(frame::IsInRun(app), 0);
  }
  fake.registry.WriteString(RegRoot::CurrentUser, frame::kRunKey, frame::kRunValue,
                            Text(u"  \0x", 4), 0x20006);
  EXPECT_EQ(frame::IsInRun(app), 0);  // blanks before the NUL count as absent
}

}  // namespace
