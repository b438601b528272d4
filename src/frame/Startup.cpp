#include "frame/Startup.h"

#include <cmath>
#include <limits>

#include "base/Guarded.h"
#include "frame/Logs.h"
#include "frame/Settings.h"
#include "frame/StartupTimes.h"
#include "platform/TextFile.h"

namespace frame {

Text SettleDataRoot(AppState& app) {
  auto& p = app.platform;
  std::optional<Text> osName;
  if (p.osName) osName = p.osName->OsName();
  if (osName && base::ToLower(*osName) == u"vista") {
    Text profile = p.system->Environment(u"USERPROFILE").value_or(Text());
    app.DataRoot = profile + u"\\AppData\\Local\\Corvane";
    if (!p.fs->FolderExists(app.DataRoot)) p.fs->CreateFolder(app.DataRoot);
  } else {
    app.DataRoot = app.ProgramFolder;
  }
  return app.DataRoot;
}

int RemoveLeftoverWrites(AppState& app) {
  int removed = 0;
  base::IgnoreFailure([&] {
    auto& fs = *app.platform.fs;
    const Text common = app.CommonFolder();
    if (!fs.FolderExists(common)) return;
    // The files written whole live in QVCOMMON and in the users' folders under it.
    removed += platform::RemoveLeftoverTemporaries(fs, common);
    for (const auto& entry : fs.List(common, u"*")) {
      if (entry.isFolder && entry.name != u"." && entry.name != u"..")
        removed += platform::RemoveLeftoverTemporaries(fs, common + u"\\" + entry.name);
    }
  });
  if (removed > 0)
    WriteTrace(app, u"Removed " + base::FromNumber(static_cast<long long>(removed)) +
                        u" unfinished write(s) left by an earlier run.");
  return removed;
}

bool WritePermissionCheck(AppState& app) {
  bool ok = true;
  base::Guarded(
      [&] {
        auto& fs = *app.platform.fs;
        Text candidate = app.ProgramFolder + u"\\PermCheck.dat";
        if (!fs.FileExists(candidate)) candidate = app.CommonFile(u"SerTraceFile.txt");
        if (fs.FileExists(candidate))
          ok = platform::TextFile::WriteLines(fs, candidate, {u"Write Permission check"}).ok;
      },
      [&](const base::ErrorInfo&) { ok = false; });
  return ok;
}

bool InstanceGuard(AppState& app) {
  auto& mutex = *app.platform.mutex;
  auto created = mutex.CreateMutex(kInstanceMutexName, true);
  app.MonitorMutexHandle = created.handle;
  if (created.lastError == platform::kErrorAlreadyExists ||
      created.lastError == platform::kErrorAccessDenied) {
    // Closed first and released after, as it always was; the release finds no handle.
    mutex.CloseHandle(created.handle);
    mutex.ReleaseMutex(created.handle);
    return false;
  }
  return true;
}

void SetBacksetFilePath(AppState& app) {
  Text common = app.CommonFile(u"BacksetData.txt");
  if (app.platform.fs->FileExists(common)) {
    app.BacksetFilePath = common;
  } else {
    app.BacksetFilePath = app.CommonFile(base::Trim(app.UserName) + u"\\BacksetData.txt");
  }
}

namespace {

std::optional<long> ToTwips(const Text& value) {
  if (!base::IsNumeric(value)) return std::nullopt;
  // Halves go to the even neighbour, as the conversion of the stored text always did.
  const double twips = std::nearbyint(base::LeadingNumber(value));
  // A number beyond what a long holds converts to nothing, like one that is no number.
  constexpr double kLimit = -static_cast<double>(std::numeric_limits<long>::min());
  if (!(twips >= -kLimit && twips < kLimit)) return std::nullopt;
  return static_cast<long>(twips);
}

void RestoreGeometry(AppState& app, IStartupSteps& steps) {
  Text width = ReadSetting(app, u"MonWidth");
  Text height = ReadSetting(app, u"MonHeight");
  Text top = ReadSetting(app, u"MonTop");
  Text left = ReadSetting(app, u"MonLeft");
  if (base::IsBlank(width) || base::IsBlank(height) || base::IsBlank(top) || base::IsBlank(left))
    return;
  steps.ApplyGeometry(app, ToTwips(width), ToTwips(height), ToTwips(top), ToTwips(left));
}

}  // namespace

MainResult Main(AppState& app, IStartupSteps& steps) {
  auto& p = app.platform;
  if (app.ProgramFolder.empty()) app.ProgramFolder = p.system->ProgramFolder();

  MarkStartup(app, u"Main");
  SettleDataRoot(app);
  MarkStartup(app, u"data root settled");
  app.ScheduleFilePath = app.CommonFile(u"scheduleData.txt");
  app.ServiceLogPath = app.CommonFile(u"QVWServiceLog.txt");
  app.MailFilePath = app.CommonFile(u"Mailid.txt");
  RemoveLeftoverWrites(app);

  if (!WritePermissionCheck(app)) return MainResult::NoWritePermission;
  MarkStartup(app, u"write permission checked");

  p.fs->SetCurrentFolder(app.ProgramFolder);

  if (!InstanceGuard(app)) return MainResult::AlreadyRunning;
  if (p.system->PreviousInstanceRunning()) {
    WriteTrace(app, u"There is an instance of this Monitor application already running.");
    return MainResult::AlreadyRunning;
  }

  MarkStartup(app, u"single instance");
  base::IgnoreFailure([&] { steps.CreateEngines(app); });
  MarkStartup(app, u"engines created");
  app.UserName = ReadSetting(app, u"UserName");
  SetBacksetFilePath(app);

  MarkStartup(app, u"user and backup sets read");
  base::IgnoreFailure([&] { steps.LoadMonitorWindow(app); });
  MarkStartup(app, u"window loaded");

  bool minimised = p.system->CommandLine() == u"Min";
  base::IgnoreFailure([&] { RestoreGeometry(app, steps); });
  if (minimised) {
    base::IgnoreFailure([&] { steps.HideFromTaskBar(app); });
    WriteTrace(app, u"HideFromTaskBar called from the Monitor.");
  } else {
    base::IgnoreFailure([&] { steps.ShowFromTaskBar(app); });
    MarkStartup(app, u"window shown");
    WriteTrace(app, u"ShowFromTaskBar called from the Monitor.");
  }
  base::IgnoreFailure([&] { steps.ShowLogInWindow(app); });
  MarkStartup(app, u"log view filled");
  return MainResult::Run;
}

}  // namespace frame
