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

// Each place and system version asks for its own files: one of them missing either
// passes or stops the action with that place's message (closed, no download).
TEST_F(PluginRulesTest, EachPlaceAndVersionAsksForItsFiles) {
  struct Case {
    PluginPlace place;
    unsigned long major;
    const char16_t* set;
    const char16_t* missing;
    long message;  // 0: allowed
  } const cases[] = {
      {PluginPlace::RunNow, 5, u"QVExchBrick Monday", u"MailBrickRun.exe", 34},
      {PluginPlace::RunNow, 6, u"QVExchBrick Monday", u"MailBrickRun.exe", 0},
      {PluginPlace::RunNow, 6, u"qvsqlserverbksetX", u"SysStateRun64.exe", 501},
      {PluginPlace::RunNow, 10, u"Documents", u"SqlAgentLib.dll", 0},
      {PluginPlace::Edit, 5, u"QVExchBrick Monday", u"MailStoreRun2010.exe", 21},
      {PluginPlace::Edit, 6, u"QVExchBrick Monday", u"SysStateRun64.exe", 502},
      {PluginPlace::Edit, 10, u"QVORACLEBkset1", u"SysStateRun32.exe", 502},
      {PluginPlace::BackupNow, 5, u"QVExchBrick Monday", u"MailBrickRun.exe", 0},
      {PluginPlace::BackupNow, 5, u"QVORACLEBkset1", u"MailStoreRestore64.dll", 5},
      {PluginPlace::BackupNow, 5, u"QVSystemstateBkset", u"SysStateRun32.exe", 0},
      {PluginPlace::BackupNow, 6, u"QVSystemstateBkset", u"SysStateRun32.exe", 500},
  };
  for (const Case& k : cases) {
    SCOPED_TRACE(U8(Text(k.set) + u" without " + k.missing + u" on ") + std::to_string(k.major));
    InstallPlugin();
    Remove(k.missing);
    const size_t asked = ui.Questions().size();
    EXPECT_EQ(Allows(k.place, k.set, k.major), k.message == 0);
    ASSERT_EQ(ui.Questions().size(), asked + (k.message == 0 ? 0 : 1));
    if (k.message == 0) continue;
    EXPECT_EQ(ui.Questions().back().text, Msg(k.message));
    EXPECT_EQ(ui.Questions().back().icon, kit::kIconInfo);
    EXPECT_EQ(ui.Questions().back().buttons, kit::kButtonsOk);
  }
  EXPECT_TRUE(prompts.downloads.empty());
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

}  // namespace
}  // namespace jobstest
