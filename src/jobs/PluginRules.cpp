#include "jobs/PluginRules.h"

#include <iterator>

#include "frame/Settings.h"
#include "kit/MesgBox.h"
#include "frame/MessageTable.h"

namespace jobs {

namespace {

// The plug-in's files, the first eight the base group.
constexpr const char16_t* kBaseGroup[] = {u"SqlAgentLib.dll",      u"SqlAgentRun.exe",
                                          u"MailStoreLib.dll",     u"MailStoreRun.exe",
                                          u"MailStoreLib64.dll",   u"MailStoreRun64.exe",
                                          u"MailStoreRestore.dll", u"MailStoreRestore64.dll"};
constexpr char16_t kBrickRun[] = u"MailBrickRun.exe";
constexpr char16_t kRun2010[] = u"MailStoreRun2010.exe";
constexpr char16_t kSysState32[] = u"SysStateRun32.exe";
constexpr char16_t kSysState64[] = u"SysStateRun64.exe";

constexpr unsigned long kVersionLimit = 6;

}  // namespace

SetClass ClassOfSet(const Text& setName) {
  const Text name = base::ToLower(setName);
  if (name == u"qvexchangeserverbkset") return SetClass::MailServer;
  if (base::StartsWith(name, u"qvexchbrick")) return SetClass::BrickLevel;
  if (base::StartsWith(name, u"qvsqlserverbkset")) return SetClass::Database;
  if (base::StartsWith(name, u"qvoraclebkset")) return SetClass::Oracle;
  if (name == u"qvsystemstatebkset") return SetClass::SystemState;
  return SetClass::None;
}

PluginRow PluginRowFor(PluginPlace place, unsigned long majorVersion) {
  PluginRow row;
  const bool newer = majorVersion >= kVersionLimit;
  row.testsSystemState = newer;
  if (newer) {
    row.files = {kSysState64, kSysState32};
    row.files.insert(row.files.end(), std::begin(kBaseGroup), std::end(kBaseGroup));
  } else {
    row.files.assign(std::begin(kBaseGroup), std::end(kBaseGroup));
    // Backup Now on an older system asks for the base group only.
    if (place != PluginPlace::BackupNow) {
      row.files.push_back(kBrickRun);
      row.files.push_back(kRun2010);
    }
  }
  switch (place) {
    case PluginPlace::RunNow: row.messageCode = newer ? 501 : 34; break;
    case PluginPlace::Edit: row.messageCode = newer ? 502 : 21; break;
    case PluginPlace::BackupNow: row.messageCode = newer ? 500 : 5; break;
  }
  return row;
}

Text DownloadAddress(frame::AppState& app) {
  Text server = base::Trim(frame::ReadSetting(app, kDownloadServerKey));
  if (server.empty()) server = kDefaultDownloadServer;
  while (!server.empty() && server.back() == u'/') server.pop_back();
  return server + kInstallerPath;
}

bool AppFileExists(frame::AppState& app, const Text& name) {
  return app.platform.fs != nullptr &&
         app.platform.fs->FileExists(app.ProgramFolder + u"\\" + name);
}

unsigned long GetWinMajorVersion(frame::AppState& app) {
  return app.platform.system != nullptr ? app.platform.system->MajorVersion() : 0;
}

bool PluginRuleAllows(frame::AppState& app, JobPrompts& prompts, PluginPlace place,
                      const Text& setName, unsigned long majorVersion) {
  const SetClass kind = ClassOfSet(setName);
  if (kind == SetClass::None) return true;
  const PluginRow row = PluginRowFor(place, majorVersion);
  if (kind == SetClass::SystemState && !row.testsSystemState) return true;

  // All of them, so that the trace of the file system shows every test.
  bool all = true;
  for (const char16_t* file : row.files) all = AppFileExists(app, file) && all;
  if (all) return true;

  if (prompts.Ask(frame::GetMessage(app, row.messageCode), kit::kIconInfo, kit::kButtonsOk) ==
      kit::kResultOk)
    prompts.OpenDownload(DownloadAddress(app));
  return false;
}

}  // namespace jobs
