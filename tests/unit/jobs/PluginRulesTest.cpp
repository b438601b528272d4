// The plug-in presence rule: classes by name, the files each place and version asks
// for, the message and the download offer.
#include "jobs/PluginRules.h"

#include "JobsFixture.h"

namespace jobstest {
namespace {

using jobs::PluginPlace;
using jobs::SetClass;

// The fake disk, with the files asked about counted.
class CountingFs : public platform::FakeFileSystem {
 public:
  explicit CountingFs(platform::FakeFileSystem& disk) : disk_(disk) {}
  bool FileExists(const Text& path) override {
    asked.push_back(path);
    return disk_.FileExists(path);
  }
  std::vector<Text> asked;

 private:
  platform::FakeFileSystem& disk_;
};

class PluginRulesTest : public JobsTest {
 protected:
  bool Allows(PluginPlace place, const Text& name, unsigned long major) {
    return jobs::PluginRuleAllows(app, prompts, place, name, major);
  }
  void Remove(const Text& file) { fake.fs.DeleteFile(u"C:\\QV\\" + file); }
};

TEST_F(PluginRulesTest, ClassesByName) {
  EXPECT_EQ(jobs::ClassOfSet(u"QVExchangeServerBkset"), SetClass::MailServer);
  EXPECT_EQ(jobs::ClassOfSet(u"qvexchangeserverbkset"), SetClass::MailServer);
  // The mail-server name is compared whole: with a digit behind it, it is no class.
  EXPECT_EQ(jobs::ClassOfSet(u"QVExchangeServerBkset2"), SetClass::None);
  EXPECT_EQ(jobs::ClassOfSet(u"QVExchBrick Monday"), SetClass::BrickLevel);
  EXPECT_EQ(jobs::ClassOfSet(u"qvsqlserverbksetPayroll"), SetClass::Database);
  EXPECT_EQ(jobs::ClassOfSet(u"QVORACLEBkset1"), SetClass::Oracle);
  EXPECT_EQ(jobs::ClassOfSet(u"QVSystemstateBkset"), SetClass::SystemState);
  EXPECT_EQ(jobs::ClassOfSet(u"QVSystemstateBkset Daily"), SetClass::None);
  EXPECT_EQ(jobs::ClassOfSet(u"Documents"), SetClass::None);
}

TEST_F(PluginRulesTest, TheTableOfPlacesAndVersions) {
  struct Row {
    PluginPlace place;
    unsigned long major;
    size_t files;
    bool brick, sysState;
    long message;
  };
  const Row table[] = {
      {PluginPlace::RunNow, 5, 10, true, false, 34},
      {PluginPlace::RunNow, 6, 10, false, true, 501},
      {PluginPlace::Edit, 5, 10, true, false, 21},
      {PluginPlace::Edit, 10, 10, false, true, 502},
      {PluginPlace::BackupNow, 5, 8, false, false, 5},
      {PluginPlace::BackupNow, 6, 10, false, true, 500},
  };
  for (const Row& r : table) {
    const jobs::PluginRow row = jobs::PluginRowFor(r.place, r.major);
    auto has = [&](const Text& f) {
      for (const char16_t* x : row.files)
        if (f == x) return true;
      return false;
    };
    SCOPED_TRACE(r.message);
    EXPECT_EQ(row.files.size(), r.files);
    EXPECT_EQ(has(u"MailBrickRun.exe"), r.brick);
    EXPECT_EQ(has(u"MailStoreRun2010.exe"), r.brick);
    EXPECT_EQ(has(u"SysStateRun64.exe"), r.sysState);
    EXPECT_EQ(has(u"SysStateRun32.exe"), r.sysState);
    EXPECT_TRUE(has(u"MailStoreRestore64.dll"));
    EXPECT_EQ(row.testsSystemState, r.major >= 6);
    EXPECT_EQ(row.messageCode, r.message);
  }
  // The texts: 501 ends in a blank, 21 lacks the one after "plug-in'".
  EXPECT_EQ(Msg(501), Msg(34) + u" ");
  EXPECT_EQ(Msg(500), Msg(34));
  EXPECT_NE(base::InStr(Msg(21), u"plug-in'for"), 0u);
}

TEST_F(PluginRulesTest, BrickLevelSetOnBothVersions) {
  InstallPlugin();
  Remove(u"MailBrickRun.exe");
  // Version 5: run now needs the brick-level program.
  EXPECT_FALSE(Allows(PluginPlace::RunNow, u"QVExchBrick Monday", 5));
  ASSERT_EQ(ui.Questions().size(), 1u);
  EXPECT_EQ(ui.Questions()[0].text, Msg(34));
  EXPECT_EQ(ui.Questions()[0].icon, kit::kIconInfo);
  EXPECT_EQ(ui.Questions()[0].buttons, kit::kButtonsOk);
  // Closed by its close picture: no download.
  EXPECT_TRUE(prompts.downloads.empty());
  // Version 6 does not ask for it, Backup Now on version 5 neither.
  EXPECT_TRUE(Allows(PluginPlace::RunNow, u"QVExchBrick Monday", 6));
  EXPECT_TRUE(Allows(PluginPlace::BackupNow, u"QVExchBrick Monday", 5));
  // But version 6 needs the system-state programs for every class.
  Remove(u"SysStateRun64.exe");
  ui.Queue(kit::ScriptedUi::Answer::Ok());
  EXPECT_FALSE(Allows(PluginPlace::Edit, u"QVExchBrick Monday", 6));
  ASSERT_EQ(ui.Questions().size(), 2u);
  EXPECT_EQ(ui.Questions()[1].text, Msg(502));
  ASSERT_EQ(prompts.downloads.size(), 1u);
  EXPECT_EQ(prompts.downloads[0], u"http://www.corvane.com/qvwin/downloads/AddOnPackSetup.exe");
}

TEST_F(PluginRulesTest, SystemStateAndPlainSets) {
  // No file at all: a set of no class never asks, the system state only from 6 on.
  EXPECT_TRUE(Allows(PluginPlace::RunNow, u"Documents", 10));
  EXPECT_TRUE(Allows(PluginPlace::RunNow, u"QVSystemstateBkset", 5));
  EXPECT_TRUE(Allows(PluginPlace::RunNow, u"QVExchangeServerBkset1", 10));
  EXPECT_TRUE(ui.Questions().empty());
  EXPECT_FALSE(Allows(PluginPlace::BackupNow, u"QVSystemstateBkset", 6));
  ASSERT_EQ(ui.Questions().size(), 1u);
  EXPECT_EQ(ui.Questions()[0].text, Msg(500));
  InstallPlugin();
  EXPECT_TRUE(Allows(PluginPlace::BackupNow, u"QVSystemstateBkset", 6));
}

TEST_F(PluginRulesTest, EveryFileIsTestedAndTheServerIsASetting) {
  // No short cut: with the first file missing the others are still looked for.
  InstallPlugin();
  Remove(u"SqlAgentLib.dll");
  CountingFs counting(fake.fs);
  app.platform.fs = &counting;
  EXPECT_FALSE(Allows(PluginPlace::RunNow, u"qvsqlserverbksetX", 10));
  app.platform.fs = &fake.fs;
  ASSERT_EQ(counting.asked.size(), 10u);
  EXPECT_EQ(counting.asked[0], u"C:\\QV\\SysStateRun64.exe");
  SetIni(jobs::kDownloadServerKey, u"https://downloads.example.test/");
  ui.Queue(kit::ScriptedUi::Answer::Ok());
  EXPECT_FALSE(Allows(PluginPlace::RunNow, u"qvsqlserverbksetX", 10));
  ASSERT_EQ(prompts.downloads.size(), 1u);
  EXPECT_EQ(prompts.downloads[0],
            u"https://downloads.example.test/qvwin/downloads/AddOnPackSetup.exe");
}

TEST_F(PluginRulesTest, TheScreenOpensTheDownloadThroughTheShell) {
  jobs::UiPrompts real(app, ui);
  ui.Queue(kit::ScriptedUi::Answer::Ok());
  EXPECT_FALSE(jobs::PluginRuleAllows(app, real, PluginPlace::BackupNow, u"QVORACLEBkset", 5));
  ASSERT_EQ(fake.shell.executed.size(), 1u);
  EXPECT_EQ(fake.shell.executed[0].verb, u"open");
  EXPECT_EQ(fake.shell.executed[0].file,
            u"http://www.corvane.com/qvwin/downloads/AddOnPackSetup.exe");
  EXPECT_EQ(fake.shell.executed[0].parameters, u"");
  EXPECT_EQ(fake.shell.executed[0].showCommand, 2);
}

}  // namespace
}  // namespace jobstest
