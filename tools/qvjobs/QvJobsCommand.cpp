#include "QvJobsCommand.h"

#include <optional>

#include "frame/AppState.h"
#include "frame/Settings.h"
#include "frame/Startup.h"
#include "jobstore/DBaction.h"
#include "jobstore/NextRun.h"
#include "QvJobsSessions.h"

namespace qvjobs {

namespace {

using base::Text;

constexpr char kUsage[] =
    "usage: qvjobs [--root DATAROOT] [--now \"mm-dd-yyyy H:mm:ss\"] "
    "list | next | state | set-state VALUE | delete RECORDNO | new-number | "
    "plan --time H:mm:ss (--days D[,D...] | --hourly | --monthly mm-dd-yyyy | --immediate) | "
    "sessions [--page N]";

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

class Command {
 public:
  Command(const std::vector<std::string>& args, platform::Platform& platform, const Text& cwd)
      : args_(args), platform_(platform), root_(cwd) {}

  int Run(std::string& out) {
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
      End();
      SetPaths(app, root_);
      jobstore::DB_ReadSchdata(app, Text(), app.Jobs, false);
      for (const auto& r : app.Jobs)
        out +=
            Line(base::Join({r.RecordNo, r.BackupSetName, r.NextRun, r.CreatedOn, r.FrequencyIndex,
                             r.SortKey, r.Days, r.UserName, r.MailMode, r.MailAddresses},
                            u"|"));
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
      jobstore::SetStateWord(app, app.ScheduleFilePath, value);
    } else if (name == "delete") {
      Text recordNo = Take("delete needs a RECORDNO");
      End();
      SetPaths(app, root_);
      jobstore::DB_DeleteRecord(app, recordNo, app.ScheduleFilePath);
    } else if (name == "new-number") {
      End();
      SetPaths(app, root_);
      out += Line(base::FromNumber(jobstore::DB_GetNewSchRecordNo(app, app.RecordCount)));
    } else if (name == "plan") {
      jobstore::ScheduleChoice choice = ParsePlan(*p.clock);
      SetPaths(app, root_);
      jobstore::Timing t = jobstore::PlanTiming(app, choice);
      out += Line(base::Join({t.NextRun, t.Days, t.FrequencyIndex, t.SortKey}, u"|"));
    } else if (name == "sessions") {
      const int page = ParsePage();
      SetPaths(app, root_);
      out += SessionsPage(app, page);
    } else {
      throw UsageError{"unknown command '" + name + "'"};
    }
    return kExitOk;
  }

 private:
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
      } else {
        throw UsageError{"unknown option '" + option + "'"};
      }
    }
  }

  jobstore::ScheduleChoice ParsePlan(platform::IClock& clock) {
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

  // "--page N", N a whole number from 1; 1 without it.
  int ParsePage() {
    long long page = 1;
    if (pos_ < args_.size() && args_[pos_] == "--page") {
      ++pos_;
      const Text value = Take("--page needs a number");
      bool digits = !value.empty() && value.size() <= 9;
      for (char16_t c : value) digits = digits && c >= u'0' && c <= u'9';
      if (!digits || !base::ParseLong(value, page) || page < 1)
        throw UsageError{"--page takes a page number from 1"};
    }
    End();
    return static_cast<int>(page);
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
  std::optional<base::DateTime> now_;
};

}  // namespace

int RunQvJobs(const std::vector<std::string>& args, platform::Platform& platform,
              const Text& currentFolder, std::string& out, std::string& err) {
  try {
    return Command(args, platform, currentFolder).Run(out);
  } catch (const UsageError& e) {
    out.clear();
    err = "qvjobs: " + e.reason + "; " + kUsage + "\n";
    return kExitUsage;
  }
}

}  // namespace qvjobs
