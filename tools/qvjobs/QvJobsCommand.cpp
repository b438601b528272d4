#include "QvJobsCommand.h"

#include <algorithm>
#include <optional>

#include "JsonWriter.h"
#include "QvJobsEdit.h"
#include "QvJobsStatus.h"

#include "base/Guarded.h"
#include "frame/AppState.h"
#include "jobs/BackupNowRules.h"
#include "jobs/JobActions.h"
#include "jobs/JobListRules.h"
#include "jobs/PluginRules.h"
#include "frame/Settings.h"
#include "frame/Startup.h"
#include "jobstore/DBaction.h"
#include "jobstore/NextRun.h"
#include "platform/ReadOnlyFiles.h"
#include "QvJobsSessions.h"

namespace qvjobs {

namespace {

using base::Text;

constexpr char kUsage[] =
    "usage: qvjobs [--root DATAROOT] [--now \"mm-dd-yyyy H:mm:ss\"] [--os-major N] "
    "[--answer yes|no] "
    "list [--json] | next | state | set-state VALUE | delete RECORDNO | new-number | "
    "plan --time H:mm:ss (--days D[,D...] | --hourly | --monthly mm-dd-yyyy | --immediate) "
    "[--json] | jobs [--json] | status [--json] [--max-age DAYS] | run-now RECORDNO | stop | "
    "stop-completely | backup-now SETNAME | "
    "edit RECORDNO --time H:mm:ss (--days D[,D...] | --daily | --hourly | --monthly mm-dd-yyyy "
    "| --immediate | --none) [--mail ADDRESSES --notify always|failure | --no-mail] "
    "[--cutoff H:mm:ss | --no-cutoff] [--desktop 0|1] [--missed 0|1] | sessions [--page N] "
    "[--json]";

// The major version of the plug-in rule where the system cannot say (a build that is
// not running on Windows).
constexpr unsigned long kDefaultOsMajor = 10;

struct UsageError {
  std::string reason;
};

// A clock that stays where --now put it, for scripts that need repeatable answers.
class FixedClock : public platform::IClock {
 public:
  FixedClock(base::DateTime now, platform::IClock* real) : now_(now), real_(real) {}
  base::DateTime Now() override { return now_; }
  std::uint64_t TickMs() override { return real_ ? real_->TickMs() : 0; }
  void Sleep(std::uint32_t ms) override {
    if (real_) real_->Sleep(ms);
  }

 private:
  base::DateTime now_;
  platform::IClock* real_;
};

Text StripTrailingSeparators(Text path) {
  while (path.size() > 1 && (path.back() == u'\\' || path.back() == u'/')) path.pop_back();
  return path;
}

void SetPaths(frame::AppState& app, const Text& root) {
  app.DataRoot = StripTrailingSeparators(root);
  app.ScheduleFilePath = app.CommonFile(u"scheduleData.txt");
  app.ServiceLogPath = app.CommonFile(u"QVWServiceLog.txt");
  app.MailFilePath = app.CommonFile(u"Mailid.txt");
  frame::RemoveLeftoverWrites(app);
  app.UserName = frame::ReadSetting(app, u"UserName");
  frame::SetBacksetFilePath(app);
}

// "H:mm:ss" (one or two digits each) as a time of day.
std::optional<base::DateTime> ParseTime(const Text& text) {
  auto parts = base::Split(text, u":");
  if (parts.size() != 3) return std::nullopt;
  int values[3];
  for (int i = 0; i < 3; ++i) {
    const Text& p = parts[static_cast<size_t>(i)];
    if (p.empty() || p.size() > 2) return std::nullopt;
    for (char16_t c : p)
      if (c < u'0' || c > u'9') return std::nullopt;
    long long v = 0;
    base::ParseLong(p, v);
    values[i] = static_cast<int>(v);
  }
  if (values[0] > 23 || values[1] > 59 || values[2] > 59) return std::nullopt;
  base::DateTime t;
  t.hour = values[0];
  t.minute = values[1];
  t.second = values[2];
  return t;
}

std::string Line(const Text& text) { return base::ToUtf8(text) + "\n"; }

// The screens' messages on standard output, one line per line of text, every question
// answered alike. The plug-in's download is named on standard error, never opened.
class ConsolePrompts : public jobs::JobPrompts {
 public:
  ConsolePrompts(std::string& out, std::string& err, bool yes) : out_(out), err_(err), yes_(yes) {}
  int Ask(const Text& text, int icon, int buttons) override {
    for (const Text& line : base::Split(base::Replace(text, u"\r\n", u"\n"), u"\n"))
      out_ += Line(line);
    switch (buttons) {
      case kit::kButtonsYesNo: return yes_ ? kit::kResultYes : kit::kResultNo;
      case kit::kButtonsOkCancel: return yes_ ? kit::kResultOk : kit::kResultCancel;
      default: return kit::kResultOk;
    }
  }
  void OpenDownload(const Text& url) override {
    err_ += "qvjobs: the plug-in's installer is at " + base::ToUtf8(url) + " (not opened)\n";
  }

 private:
  std::string& out_;
  std::string& err_;
  bool yes_;
};

// The cells of a "jobs" row: the list's, with the record's NextRun in place of the
// shown date.
std::vector<Text> JobCells(const jobs::JobRow& row) {
  std::vector<Text> cells = row.Cells();
  cells.resize(jobs::kJobColumnCount);
  cells[jobs::kColNextTransfer - 1] = row.NextRun();
  return cells;
}

// The columns' captions in lower camel case, as --json names them.
constexpr const char* kJobKeys[jobs::kJobColumnCount] = {
    "backupRestoreSet", "nextTransfer", "frequency", "status",       "destination",
    "dataSort",         "no",           "userName",  "scheduledDays"};

// "jobs": the rows, then the line under the list when it has text. As JSON only the rows.
void PrintJobs(const jobs::JobList& list, bool json, std::string& out) {
  if (json) {
    JsonWriter j;
    j.BeginArray();
    for (const jobs::JobRow& row : list.rows) {
      const std::vector<Text> cells = JobCells(row);
      j.BeginObject();
      for (std::size_t i = 0; i < cells.size(); ++i)
        j.Key(kJobKeys[i]).String(base::TextView(cells[i]));
      j.EndObject();
    }
    out += j.EndArray().Document();
    return;
  }
  for (const jobs::JobRow& row : list.rows) out += Line(base::Join(JobCells(row), u"|"));
  if (!list.lblMsgProgres.empty()) out += Line(list.lblMsgProgres);
}

// Rows of named text columns, as "a|b|c" lines or as a JSON array of objects.
std::string Rows(const std::vector<const char*>& keys, const std::vector<std::vector<Text>>& rows,
                 bool json) {
  if (!json) {
    std::string out;
    for (const auto& row : rows) out += Line(base::Join(row, u"|"));
    return out;
  }
  JsonWriter j;
  j.BeginArray();
  for (const auto& row : rows) {
    j.BeginObject();
    for (std::size_t i = 0; i < keys.size() && i < row.size(); ++i)
      j.Key(keys[i]).String(base::TextView(row[i]));
    j.EndObject();
  }
  return j.EndArray().Document();
}

// The command word of a command line: the first word that is not a global option or
// its value; "" when there is none.
std::string CommandWord(const std::vector<std::string>& args) {
  for (std::size_t i = 0; i < args.size(); ++i) {
    const std::string& a = args[i];
    if (a == "--root" || a == "--now" || a == "--os-major" || a == "--answer") {
      ++i;
      continue;
    }
    if (a.rfind("--", 0) == 0) continue;
    return a;
  }
  return {};
}
class Command {
 public:
  Command(const std::vector<std::string>& args, platform::Platform& platform, const Text& cwd,
          const Text& programFolder)
      : args_(args), platform_(platform), root_(cwd), programFolder_(programFolder) {}

  int Run(std::string& out, std::string& err) {
    ParseGlobals();
    if (pos_ >= args_.size()) throw UsageError{"no command given"};
    const std::string name = args_[pos_++];

    platform::Platform p = platform_;
    std::optional<FixedClock> fixed;
    if (now_) {
      fixed.emplace(*now_, platform_.clock);
      p.clock = &*fixed;
    }
    frame::AppState app(p);

    if (name == "list") {
      const bool json = TakeJson();
      End();
      SetPaths(app, root_);
      jobstore::DB_ReadSchdata(app, Text(), app.Jobs, false);
      std::vector<std::vector<Text>> rows;
      for (const auto& r : app.Jobs)
        rows.push_back({r.RecordNo, r.BackupSetName, r.NextRun, r.CreatedOn, r.FrequencyIndex,
                        r.SortKey, r.Days, r.UserName, r.MailMode, r.MailAddresses});
      out += Rows({"recordNo", "backupSetName", "nextRun", "createdOn", "frequencyIndex", "sortKey",
                   "days", "userName", "mailMode", "mailAddresses"},
                  rows, json);
    } else if (name == "status") {
      return RunStatus(p, out, err);
    } else if (name == "next") {
      End();
      SetPaths(app, root_);
      long index = jobstore::DB_ReadSchdata(app, Text(), app.Jobs, false);
      Text recordNo;
      if (index >= 0 && static_cast<size_t>(index) < app.Jobs.size())
        recordNo = app.Jobs[static_cast<size_t>(index)].RecordNo;
      out += Line(base::FromNumber(index) + u" " + recordNo);
    } else if (name == "state") {
      End();
      SetPaths(app, root_);
      out += Line(jobstore::ReadStateLine(app, app.ScheduleFilePath));
    } else if (name == "set-state") {
      Text value = Take("set-state needs a VALUE");
      End();
      SetPaths(app, root_);
      if (!jobstore::SetStateWord(app, app.ScheduleFilePath, value)) return WriteFailed(app, err);
    } else if (IsAction(name)) {
      return RunAction(name, app, out, err);
    } else if (name == "new-number") {
      End();
      SetPaths(app, root_);
      out += Line(base::FromNumber(jobstore::DB_GetNewSchRecordNo(app, app.RecordCount)));
    } else if (name == "jobs") {
      const bool json = TakeJson();
      End();
      SetPaths(app, root_);
      jobs::JobList list;
      jobs::ActivateJobList(app, list);
      PrintJobs(list, json, out);
    } else if (name == "plan") {
      bool json = false;
      jobstore::ScheduleChoice choice = ParsePlan(*p.clock, json);
      SetPaths(app, root_);
      jobstore::Timing t = jobstore::PlanTiming(app, choice);
      out += Rows({"nextRun", "days", "frequencyIndex", "sortKey"},
                  {{t.NextRun, t.Days, t.FrequencyIndex, t.SortKey}}, json);
    } else if (name == "edit") {
      EditRequest request{
          std::vector<std::string>(args_.begin() + static_cast<long>(pos_), args_.end()),
          answerYes_,
          {}};
      pos_ = args_.size();
      SetPaths(app, root_);
      // The plug-in rule of a frequency change, as the job list's edit applies it.
      const unsigned long major = PluginSetting(app);
      ConsolePrompts prompts(out, err, answerYes_);
      request.pluginRule = [&](const Text& setName) {
        return jobs::PluginRuleAllows(app, prompts, jobs::PluginPlace::Edit, setName, major);
      };
      std::string reason;
      const int code = RunEdit(app, request, out, reason);
      if (code == kExitUsage) throw UsageError{reason};
      if (!app.LastWriteFailure.empty()) return WriteFailed(app, err);
      return code;
    } else if (name == "sessions") {
      bool json = false;
      const int page = ParsePage(json);
      SetPaths(app, root_);
      out += json ? SessionsPageJson(app, page) : SessionsPage(app, page);
    } else {
      throw UsageError{"unknown command '" + name + "'"};
    }
    return kExitOk;
  }

 private:
  // A write that did not reach the disk: its reason on standard error, exit 1.
  static int WriteFailed(frame::AppState& app, std::string& err) {
    Text reason = app.LastWriteFailure.empty() ? Text(u"the file could not be written")
                                               : app.LastWriteFailure;
    err += "qvjobs: could not write: " + base::ToUtf8(reason) + "\n";
    return kExitRefused;
  }

  // The program folder and the major version the plug-in rule tests by.
  unsigned long PluginSetting(frame::AppState& app) {
    app.ProgramFolder = !programFolder_.empty()       ? programFolder_
                        : platform_.system != nullptr ? platform_.system->ProgramFolder()
                                                      : app.DataRoot;
    return osMajor_                      ? *osMajor_
           : platform_.system != nullptr ? jobs::GetWinMajorVersion(app)
                                         : kDefaultOsMajor;
  }

  static bool IsAction(const std::string& name) {
    return name == "run-now" || name == "stop" || name == "stop-completely" || name == "delete" ||
           name == "backup-now";
  }

  // One action of the job list or of Backup Now, on the row the argument names, with
  // the screens' own code. Exit 0 when the schedule file changed, 1 otherwise.
  int RunAction(const std::string& name, frame::AppState& app, std::string& out, std::string& err) {
    Text argument;
    if (name == "run-now" || name == "delete")
      argument = Take((name + " needs a RECORDNO").c_str());
    if (name == "backup-now") argument = Take("backup-now needs a SETNAME");
    End();
    SetPaths(app, root_);
    const unsigned long major = PluginSetting(app);
    ConsolePrompts prompts(out, err, answerYes_);
    auto& fs = *platform_.fs;
    const auto before = fs.ReadAll(app.ScheduleFilePath);

    if (name == "backup-now") {
      if (jobs::PrepareBackupNow(app, prompts) != jobstore::BackupNowOutcome::Show)
        return kExitRefused;
      auto& list = app.Store.LstBackupSet;
      list.SelectedRow = 0;
      for (size_t i = 0; i < list.Rows.size() && list.SelectedRow == 0; ++i)
        if (list.Rows[i].Name == argument) list.SelectedRow = static_cast<long>(i) + 1;
      for (size_t i = 0; i < list.Rows.size() && list.SelectedRow == 0; ++i)
        if (base::EqualsNoCase(list.Rows[i].Name, argument))
          list.SelectedRow = static_cast<long>(i) + 1;
      if (list.SelectedRow == 0) {
        err += "qvjobs: Backup Now offers no set named '" + base::ToUtf8(argument) + "'\n";
        return kExitRefused;
      }
      jobs::cmdBackupNow_Click(app, prompts, major);
    } else {
      jobs::JobList list;
      jobs::ActivateJobList(app, list);
      jobs::JobActions actions(app, list, prompts, major);
      long row = list.SelectedRow;
      if (name == "run-now" || name == "delete") {
        if (!jobs::GetListNoFromRecNo(app, list, argument)) {
          err += "qvjobs: no job row has the number " + base::ToUtf8(argument) + "\n";
          return kExitRefused;
        }
        row = list.SelectedRow;
      } else if (name == "stop") {
        for (long r = 1; r <= list.Count(); ++r)
          if (list.Row(r)->Status() == jobs::kStatusInProgress) row = r;
      }
      jobs::ClickRow(app, list, row);
      if (name == "run-now") actions.Pic_Imme_Click();
      if (name == "delete") actions.Pic_Delete_Click();
      if (name == "stop") actions.Pic_Sttrf_Click();
      if (name == "stop-completely") actions.Pic_Stcomp_Click();
    }
    if (!app.LastWriteFailure.empty()) return WriteFailed(app, err);
    return fs.ReadAll(app.ScheduleFilePath) != before ? kExitOk : kExitRefused;
  }

  void ParseGlobals() {
    while (pos_ < args_.size() && args_[pos_].rfind("--", 0) == 0) {
      const std::string option = args_[pos_++];
      if (option == "--root") {
        root_ = Take("--root needs a folder");
        if (root_.empty()) throw UsageError{"--root needs a folder"};
      } else if (option == "--now") {
        Text value = Take("--now needs a date");
        now_ = base::ParseFileDate(value);
        if (!now_ || base::Split(base::Trim(value), u" ").size() != 2)
          throw UsageError{"--now takes \"mm-dd-yyyy H:mm:ss\""};
      } else if (option == "--os-major") {
        const Text value = Take("--os-major needs a number");
        long long major = 0;
        if (value.empty() || value.size() > 4 || !base::ParseLong(value, major) || major < 0 ||
            value.find_first_not_of(u"0123456789") != Text::npos)
          throw UsageError{"--os-major takes a number"};
        osMajor_ = static_cast<unsigned long>(major);
      } else if (option == "--answer") {
        const Text value = Take("--answer needs yes or no");
        if (value != u"yes" && value != u"no") throw UsageError{"--answer takes yes or no"};
        answerYes_ = value == u"yes";
      } else {
        throw UsageError{"unknown option '" + option + "'"};
      }
    }
  }

  jobstore::ScheduleChoice ParsePlan(platform::IClock& clock, bool& json) {
    jobstore::ScheduleChoice choice;
    std::optional<base::DateTime> time;
    int kinds = 0;
    while (pos_ < args_.size()) {
      const std::string option = args_[pos_++];
      if (option == "--time") {
        time = ParseTime(Take("--time needs H:mm:ss"));
        if (!time) throw UsageError{"--time takes H:mm:ss"};
      } else if (option == "--days") {
        ++kinds;
        const Text list = Take("--days needs day digits");
        for (const Text& d : base::Split(list, u",")) {
          if (d.size() != 1 || d[0] < u'1' || d[0] > u'7')
            throw UsageError{"--days takes digits 1 (Sunday) to 7 (Saturday) separated by commas"};
          choice.chkBox[static_cast<size_t>(d[0] - u'1')] = true;
        }
        if (list.empty()) throw UsageError{"--days needs day digits"};
      } else if (option == "--hourly") {
        ++kinds;
        choice.optHourly = true;
      } else if (option == "--monthly") {
        ++kinds;
        const Text date = Take("--monthly needs mm-dd-yyyy");
        auto d = base::ParseFileDate(date);
        if (!d || base::InStr(date, u" ") > 0) throw UsageError{"--monthly takes mm-dd-yyyy"};
        choice.optMonthly = true;
        choice.DTPMonthly = *d;
      } else if (option == "--immediate") {
        ++kinds;
        choice.chkImmediate = true;
        choice.bImmediate = true;
      } else if (option == "--json") {
        json = true;
      } else {
        throw UsageError{"unknown plan option '" + option + "'"};
      }
    }
    if (!time) throw UsageError{"plan needs --time H:mm:ss"};
    if (kinds != 1)
      throw UsageError{"plan needs exactly one of --days, --hourly, --monthly, --immediate"};
    // The time picker shows today at the chosen time, as on the editor.
    const base::DateTime today = clock.Now();
    choice.DTPicker =
        base::DateTime{today.year, today.month, today.day, time->hour, time->minute, time->second};
    return choice;
  }

  // "--page N", N a whole number from 1; 1 without it. "--json" before or after it.
  int ParsePage(bool& json) {
    long long page = 1;
    json = TakeJson();
    if (pos_ < args_.size() && args_[pos_] == "--page") {
      ++pos_;
      const Text value = Take("--page needs a number");
      if (!WholeNumber(value, page) || page < 1)
        throw UsageError{"--page takes a page number from 1"};
    }
    json = TakeJson() || json;
    End();
    return static_cast<int>(page);
  }

  // Up to nine digits and nothing else.
  static bool WholeNumber(const Text& value, long long& number) {
    bool digits = !value.empty() && value.size() <= 9;
    for (char16_t c : value) digits = digits && c >= u'0' && c <= u'9';
    return digits && base::ParseLong(value, number);
  }

  // A "--json" at the present place, taken.
  bool TakeJson() {
    if (pos_ < args_.size() && args_[pos_] == "--json") {
      ++pos_;
      return true;
    }
    return false;
  }

  // status [--json] [--max-age DAYS]: reads through files that refuse every write, so
  // that nothing under the data root changes, not a trace line nor a cleared key.
  int RunStatus(platform::Platform& p, std::string& out, std::string& err) {
    bool json = false;
    long long maxAge = kDefaultMaxAgeDays;
    while (pos_ < args_.size()) {
      const std::string option = args_[pos_++];
      if (option == "--json") {
        json = true;
      } else if (option == "--max-age") {
        if (!WholeNumber(Take("--max-age needs a number of days"), maxAge))
          throw UsageError{"--max-age takes a whole number of days"};
      } else {
        throw UsageError{"unexpected argument '" + option + "'"};
      }
    }
    if (!p.fs || !p.profile) throw UsageError{"no file system to read"};
    platform::ReadOnlyFileSystem files(*p.fs);
    platform::ReadOnlyProfile profile(*p.profile);
    platform::Platform readOnly = p;
    readOnly.fs = &files;
    readOnly.profile = &profile;
    frame::AppState app(readOnly);
    SetPaths(app, root_);
    // Whatever the files hold, the check answers: a failure nobody foresaw is UNKNOWN.
    MachineStatus status;
    base::Guarded([&] { status = ReadMachineStatus(app, static_cast<long>(maxAge)); },
                  [&](const base::ErrorInfo& e) {
                    status = UnknownStatus(u"the state could not be read: " + e.description);
                  });
    out += json ? StatusJson(status) : StatusText(status);
    for (const Text& note : status.notes) err += "qvjobs: " + base::ToUtf8(note) + "\n";
    for (const Text& path : files.Refused())
      err += "qvjobs: a write was refused: " + base::ToUtf8(path) + "\n";
    for (const Text& key : profile.Refused())
      err += "qvjobs: a write was refused: " + base::ToUtf8(key) + "\n";
    return static_cast<int>(status.state);
  }

  Text Take(const char* missing) {
    if (pos_ >= args_.size()) throw UsageError{missing};
    return base::FromUtf8(args_[pos_++]);
  }

  void End() {
    if (pos_ < args_.size()) throw UsageError{"unexpected argument '" + args_[pos_] + "'"};
  }

  const std::vector<std::string>& args_;
  platform::Platform& platform_;
  size_t pos_ = 0;
  Text root_;
  Text programFolder_;
  std::optional<base::DateTime> now_;
  std::optional<unsigned long> osMajor_;
  bool answerYes_ = true;
};

}  // namespace

int RunQvJobs(const std::vector<std::string>& args, platform::Platform& platform,
              const Text& currentFolder, std::string& out, std::string& err,
              const Text& programFolder) {
  try {
    return Command(args, platform, currentFolder, programFolder).Run(out, err);
  } catch (const UsageError& e) {
    out.clear();
    err = "qvjobs: " + e.reason + "; " + kUsage + "\n";
    if (CommandWord(args) != "status") return kExitUsage;
    // A monitoring check answers UNKNOWN to a command line it cannot follow.
    const MachineStatus unknown = UnknownStatus(u"bad argument: " + base::FromUtf8(e.reason));
    const bool json = std::find(args.begin(), args.end(), "--json") != args.end();
    out = json ? StatusJson(unknown) : StatusText(unknown);
    return static_cast<int>(CheckState::Unknown);
  }
}

}  // namespace qvjobs
