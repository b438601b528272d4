#include <gtest/gtest.h>

#include "AccountFixture.h"
#include "account/VersionInventory.h"

using base::Text;

namespace {

class VersionInventoryTest : public ::testing::Test, public testkit::AccountFixture {
 protected:
  void Version(const Text& file, platform::FileVersion v) {
    fake.versions.versions[base::ToLower(u"c:\\prog\\" + file)] = v;
  }
  const Text kHead = u"\r\nRelease Date                                  02/08/2013";
};

TEST_F(VersionInventoryTest, FourFilesShowInTheirColumnsAndTheOtherTwoNever) {
  EXPECT_EQ(account::BuildVersionList(app, u"C:\\prog"), kHead);  // none of them yet
  Version(u"QVMonitor.exe", {9, 5, 0, 5});
  Version(u"CorvaneForWindows_955.exe", {9, 5, 5, 1});
  Version(u"QVWinSrv.dll", {1, 2, 3, 4});
  Version(u"QVBackground_955.exe", {9, 5, 5, 2});
  Version(u"QVPatch.dll", {1, 0, 0, 0});
  Version(u"QVWINHelp.chm", {1, 0, 0, 0});
  EXPECT_EQ(account::BuildVersionList(app, u"C:\\prog"),
            kHead + u"\r\nCorvaneForWindows_955.exe9.5.5.1" +        // 25 - 25 = no blank
                u"\r\nQVWinSrv.dll" + Text(28, u' ') + u"1.2.3.4" +  // 40 - 12
                u"\r\nQVBackground_955.exe" + Text(11, u' ') + u"9.5.5.2" + u"\r\nQVMonitor.exe" +
                Text(25, u' ') + u"9.5.0.5");
}

TEST_F(VersionInventoryTest, NoVersionOrNoColumnDropsTheLine) {
  Text list;
  account::AddVersionLine(list, u"C:\\prog\\QVMonitor.exe", u"N/A");
  account::AddVersionLine(list, u"C:\\prog\\SomeOtherProgramWithALongName.exe", u"1.0.0.0");
  account::AddVersionLine(list, u"C:\\prog\\QVPatch.dll", u"1.0.0.0");
  EXPECT_EQ(list, u"");
  account::AddVersionLine(list, u"C:\\a\\b\\BEACON.OCX", u"2.0.0.1");
  EXPECT_EQ(list, u"\r\nBEACON.OCX" + Text(15, u' ') + u"2.0.0.1");
  EXPECT_EQ(account::GetVersionInfo(app, u"C:\\prog\\none.exe"), u"N/A");
}

TEST_F(VersionInventoryTest, TitleLineCarriesMajorMinorAndRevision) {
  fake.system.programFolder = u"C:\\prog";
  Version(u"QVMonitor.exe", {9, 5, 0, 5});
  EXPECT_EQ(account::AboutTitleLine(app), u"Corvane for Windows - Version 9.5.5");
}

}  // namespace
