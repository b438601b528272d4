#pragma once
// The plug-in presence rule: a backup set for a database, a mail server or the system
// state runs only when the optional plug-in's program files stand in the program
// folder. The rule is applied at three places (run now, edit, Backup Now), each with
// its own files and message by the system's major version; when a file is missing the
// user is offered the installer's download and the action ends.
#include <vector>

#include "base/Text.h"
#include "frame/AppState.h"
#include "jobs/JobPrompts.h"

namespace jobs {

using base::Text;

enum class PluginPlace {
  RunNow,     // Pic_Imme_Click
  Edit,       // double click on a row and Pic_Edit_Click
  BackupNow,  // cmdBackupNow_Click
};

enum class SetClass { None, MailServer, BrickLevel, Database, Oracle, SystemState };

// The class of a set by its name (compared lower-cased).
SetClass ClassOfSet(const Text& setName);

// What one place asks for on one major version.
struct PluginRow {
  bool testsSystemState = false;  // the four others are always tested
  std::vector<const char16_t*> files;
  long messageCode = 0;
};
PluginRow PluginRowFor(PluginPlace place, unsigned long majorVersion);

// The setting (in qvwin.ini) that names the download server, and its default.
inline constexpr char16_t kDownloadServerKey[] = u"DownloadServer";
inline constexpr char16_t kDefaultDownloadServer[] = u"http://www.corvane.com";
inline constexpr char16_t kInstallerPath[] = u"/qvwin/downloads/AddOnPackSetup.exe";
// The installer's web address: the download server (without a trailing "/") and the path.
Text DownloadAddress(frame::AppState& app);

// True when the program folder followed by "\" and `name` is a file.
bool AppFileExists(frame::AppState& app, const Text& name);
// The system's major version (dwMajorVersion); 0 when the system cannot say.
unsigned long GetWinMajorVersion(frame::AppState& app);

// The rule for the set `setName` at `place`: true to go on. Every required file is
// tested, with no short cut; when any is missing the row's message is shown
// (information, OK), on OK the download is offered, and the answer is false.
bool PluginRuleAllows(frame::AppState& app, JobPrompts& prompts, PluginPlace place,
                      const Text& setName, unsigned long majorVersion);

}  // namespace jobs
