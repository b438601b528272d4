#include "QvJobsStatus.h"

#include <cmath>

#include "JsonWriter.h"
#include "base/Guarded.h"
#include "engine/EngineObjects.h"
#include "frame/Settings.h"
#include "jobs/JobListRules.h"
#include "notify/Requests.h"
#include "sessions/SessionFiles.h"

namespace qvjobs {

namespace {

constexpr char16_t kRunningWord[] = u"Running";

Text Number(std::int64_t n) { return base::FromNumber(n); }

Text Quoted(const Text& text) { return u"'" + text + u"'"; }

std::optional<Text> Unreadable(platform::IFileSystem& fs, const Text& path) {
  // A folder where a file belongs cannot be read as one either.
  if (fs.FolderExists(path)) return path;
  if (fs.FileExists(path) && !fs.ReadAll(path)) return path;
  return std::nullopt;
}

Text UserFile(frame::AppState& app, const Text& user) {
  return app.CommonFile(base::Trim(user) + u"\\qvwinserver.ini");
}

// The engine's kind by the start-up's rule, and on a system that can tell (the process
// list and the service manager are there) whether it runs, asked as the tick asks.
void ReadEngine(frame::AppState& app, MachineStatus& status) {
  status.engineKind = frame::EngineIsService(app) == 1 ? u"service" : u"background";
  if (!app.platform.processes || !app.platform.services) return;
  base::Guarded(
      [&] {
        engine::CreateEngines(app);
        if (app.ActiveEngine)
          status.engineRunning = app.ActiveEngine->GetServiceStatus() == kRunningWord;
      },
      [&](const base::ErrorInfo& e) {
        status.notes.push_back(u"the engine's state could not be read: " + e.description);
      });
}

// The job list's rows tell the job in progress (the state word and the smallest key),
// how many jobs there are, and the next job: the row that sorts first, by the next-job
// line's rules. The schedule is read once, by the list.
void ReadJobs(frame::AppState& app, MachineStatus& status) {
  jobs::JobList list;
  base::Guarded([&] { jobs::ActivateJobList(app, list); },
                [&](const base::ErrorInfo& e) {
                  status.notes.push_back(u"the job list stopped half way: " + e.description);
                });
  for (const jobs::JobRow& row : list.rows)
    if (!base::IsBlank(row.RecordNo()) || !base::IsBlank(row.Name())) ++status.jobCount;
  for (const jobs::JobRow& row : list.rows) {
    const Text word = row.Status();
    if (word.empty()) continue;
    status.inProgress = MachineStatus::InProgress{row.Name(), row.Cell(jobs::kColUserName),
                                                  word == jobs::kStatusStopping};
    break;
  }
  const auto index = static_cast<std::size_t>(list.NextJobIndex);
  if (status.jobCount == 0 || index >= list.rows.size()) return;
  const jobs::JobRow& first = list.rows[index];
  Text dateFormat;
  if (auto* provider = app.platform.settingsProvider)
    dateFormat = provider->GetSetting(u"DateFormat", 0, 0);
  const Text decimal = app.platform.locale ? app.platform.locale->DecimalSeparator() : Text(u".");
  // A key that makes no date (the running job's) gives no next job, as on the notice.
  base::IgnoreFailure([&] {
    const notify::NextJobView view =
        notify::ComposeNextJob(first.Name(), first.NextRun(), first.SortKey(), dateFormat,
                               app.platform.clock->Now(), decimal);
    if (view.status != notify::kNoScheduledJob)
      status.nextJob = MachineStatus::NextJob{first.Name(), first.NextRun()};
  });
}

// The missed-backup walk over every account of the list, without its clearing steps.
void ReadMissed(frame::AppState& app, MachineStatus& status) {
  const base::DateTime now = app.platform.clock->Now();
  for (const Text& entry : notify::NotifyEntries(frame::ReadSetting(app, u"NotifyUsers"))) {
    base::Guarded(
        [&] {
          if (auto notice = notify::DueNotice(app, entry, now)) status.missed.push_back(*notice);
        },
        [&](const base::ErrorInfo& e) {
          status.notes.push_back(u"the missed-backup state of the account " + Quoted(entry) +
                                 u" was passed over: " + e.description);
        });
  }
}

void ReadSessions(frame::AppState& app, MachineStatus& status) {
  const std::vector<Text> names = sessions::ListSessionFiles(app);
  status.sessionCount = static_cast<long>(names.size());
  for (const Text& name : names) {
    const std::size_t blank = name.find(u' ');
    if (blank == Text::npos || !IsBackupSessionWord(name.substr(0, blank))) continue;
    const auto row = sessions::SessionRowOf(app, name);
    if (!row) continue;
    status.newestBackup =
        MachineStatus::Session{base::Trim(row->startTime), base::Trim(row->description)};
    if (auto day = base::ParseFileDate(base::Left(status.newestBackup->start, 10)))
      status.ageDays = base::DateTime::DaysBetween(*day, app.platform.clock->Now());
    break;
  }
}

Text MissedSummary(const notify::MissedBackupNotice& notice) {
  Text text =
      u"no backup for " + Number(notice.days) + u" day(s) for the account " + Quoted(notice.user);
  const notify::ReasonOfNotice why = notify::ReasonOf(notice.reason);
  if (why.kind == notify::MissedReason::NoSetData)
    return text + u": " + notify::NoItemsSentence(why.setName);
  if (why.kind == notify::MissedReason::NoScheduleJob)
    return text + u": " + notify::kNoScheduleSentence;
  return text + u".";
}

Text YesNo(bool value) { return value ? u"yes" : u"no"; }

std::string Line(const Text& text) { return base::ToUtf8(text) + "\n"; }

}  // namespace

const char* CheckStateWord(CheckState state) {
  switch (state) {
    case CheckState::Ok: return "OK";
    case CheckState::Warning: return "WARNING";
    case CheckState::Critical: return "CRITICAL";
    case CheckState::Unknown: break;
  }
  return "UNKNOWN";
}

std::optional<std::int64_t> QuotaPercent(const MachineStatus& status) {
  if (!status.quota || !status.quota->percent) return std::nullopt;
  return static_cast<std::int64_t>(std::floor(*status.quota->percent));
}

bool IsBackupSessionWord(const Text& word) {
  return word == u"Backup" || word == u"Schedule" || word == u"Continuous_Backup";
}

std::optional<Text> UnreadablePlace(frame::AppState& app) {
  platform::IFileSystem& fs = *app.platform.fs;
  for (const Text& folder : {app.DataRoot, app.CommonFolder()})
    if (!fs.FolderExists(folder)) return folder;
  std::vector<Text> files = {app.ScheduleFilePath, app.CommonFile(u"qvwin.ini"),
                             app.CommonFile(u"QVDetails.ini")};
  if (!base::IsBlank(app.UserName)) files.push_back(UserFile(app, app.UserName));
  for (const Text& entry : notify::NotifyEntries(frame::ReadSetting(app, u"NotifyUsers")))
    files.push_back(UserFile(app, entry));
  for (const Text& file : files)
    if (auto place = Unreadable(fs, file)) return place;
  return std::nullopt;
}

MachineStatus ReadMachineStatus(frame::AppState& app, long maxAgeDays) {
  MachineStatus status;
  status.maxAgeDays = maxAgeDays;
  if (auto place = UnreadablePlace(app)) {
    status = UnknownStatus(u"cannot read " + *place);
    status.maxAgeDays = maxAgeDays;
    return status;
  }
  status.known = true;
  ReadEngine(app, status);
  ReadJobs(app, status);
  status.jobsHeld = base::Trim(frame::ReadSetting(app, u"DisableAllSchdulers")) == u"1";
  ReadMissed(app, status);
  status.quota = notify::ReadQuotaFigures(app);
  const notify::ResultPictures result =
      notify::ResultPicturesFor(frame::ReadSetting(app, u"DESKNOTIFYICON"));
  if (result.failed) status.lastResult = u"failure";
  if (result.success) status.lastResult = u"success";
  ReadSessions(app, status);
  Judge(status);
  return status;
}

void Judge(MachineStatus& s) {
  if (!s.known) {
    s.state = CheckState::Unknown;
    return;
  }
  const bool tooOld = s.ageDays ? *s.ageDays > s.maxAgeDays : s.jobCount > 0;
  if (!s.missed.empty() || s.jobCount == 0 || tooOld) {
    s.state = CheckState::Critical;
    if (!s.missed.empty())
      s.summary = MissedSummary(s.missed.front());
    else if (s.jobCount == 0)
      s.summary = notify::kNoScheduledJob;
    else if (s.newestBackup)
      s.summary = u"the newest backup session is " + Number(*s.ageDays) + u" day(s) old (" +
                  s.newestBackup->start + u")";
    else
      s.summary = u"no backup session found";
    return;
  }
  const auto percent = QuotaPercent(s);
  const bool quotaFull = percent && *percent >= 90;
  const bool failed = s.lastResult == Text(u"failure");
  if (s.jobsHeld || quotaFull || failed) {
    s.state = CheckState::Warning;
    if (s.jobsHeld)
      s.summary = u"all scheduled jobs are held";
    else if (quotaFull)
      s.summary = u"quota " + Number(*percent) + u"% used";
    else
      s.summary = u"the last job failed";
    return;
  }
  s.state = CheckState::Ok;
  if (s.inProgress)
    s.summary = u"job " + Quoted(s.inProgress->set) +
                (s.inProgress->stopping ? u" stopping" : u" in progress");
  else if (s.nextJob)
    s.summary = u"next job " + Quoted(s.nextJob->set) + u" at " + s.nextJob->nextRun;
  else
    s.summary = Number(s.jobCount) + u" job(s) scheduled";
}

MachineStatus UnknownStatus(const Text& summary) {
  MachineStatus status;
  status.state = CheckState::Unknown;
  status.summary = summary;
  return status;
}

std::string StatusText(const MachineStatus& s) {
  std::string first =
      std::string("CORVANE ") + CheckStateWord(s.state) + " - " + base::ToUtf8(s.summary);
  std::vector<Text> perf;
  if (const auto percent = QuotaPercent(s))
    perf.push_back(u"quota=" + Number(*percent) + u"%;90;100;0;100");
  if (s.ageDays) perf.push_back(u"age=" + Number(*s.ageDays) + u"d;;" + Number(s.maxAgeDays));
  if (!perf.empty()) first += " | " + base::ToUtf8(base::Join(perf, u" "));
  std::string out = first + "\n";
  if (!s.known) return out;

  out += Line(u"engine: " + s.engineKind + u", running: " +
              (s.engineRunning ? YesNo(*s.engineRunning) : Text(u"unknown")));
  out += Line(u"job in progress: " +
              (s.inProgress ? Quoted(s.inProgress->set) + u" for " + Quoted(s.inProgress->user) +
                                  (s.inProgress->stopping ? u" (stopping)" : u"")
                            : Text(u"none")));
  out += Line(u"next job: " +
              (s.nextJob ? Quoted(s.nextJob->set) + u" at " + s.nextJob->nextRun : Text(u"none")));
  out += Line(u"jobs held: " + YesNo(s.jobsHeld));
  std::vector<Text> missed;
  for (const auto& m : s.missed)
    missed.push_back(Quoted(m.user) + u" " + Number(m.days) + u" day(s)" +
                     (m.reason.empty() ? Text() : u" " + m.reason));
  out += Line(u"missed backups: " + (missed.empty() ? Text(u"none") : base::Join(missed, u", ")));
  Text quota = u"none";
  if (s.quota) {
    const auto percent = QuotaPercent(s);
    quota = (percent ? Number(*percent) + u"%" : Text(u"unknown %")) + u" (" +
            Number(static_cast<std::int64_t>(s.quota->usedBytes)) + u" bytes used" +
            (s.quota->totalBytes ? u" of " + Number(static_cast<std::int64_t>(*s.quota->totalBytes))
                                 : Text()) +
            u")";
  }
  out += Line(u"quota: " + quota);
  out += Line(u"last result: " + s.lastResult.value_or(u"unknown"));
  out += Line(u"sessions: " + Number(s.sessionCount) +
              (s.newestBackup ? u", newest backup " + Quoted(s.newestBackup->description) +
                                    u" at " + s.newestBackup->start
                              : Text(u", no backup session")));
  out += Line(u"backup age: " + (s.ageDays ? Number(*s.ageDays) + u" day(s)" : Text(u"unknown")));
  return out;
}

std::string StatusJson(const MachineStatus& s) {
  JsonWriter j;
  j.BeginObject();
  j.Key("status").String(base::FromUtf8(CheckStateWord(s.state)));
  j.Key("summary").String(base::TextView(s.summary));
  if (!s.known) {
    for (const char* key : {"engine", "inProgress", "nextJob", "jobsHeld", "missed", "quota",
                            "lastResult", "sessions"})
      j.Key(key).Null();
    return j.EndObject().Document();
  }
  j.Key("engine").BeginObject();
  j.Key("kind").String(base::TextView(s.engineKind));
  j.Key("running").BoolOrNull(s.engineRunning);
  j.EndObject();
  j.Key("inProgress");
  if (s.inProgress) {
    j.BeginObject();
    j.Key("set").String(base::TextView(s.inProgress->set));
    j.Key("user").String(base::TextView(s.inProgress->user));
    j.Key("stopping").Bool(s.inProgress->stopping);
    j.EndObject();
  } else {
    j.Null();
  }
  j.Key("nextJob");
  if (s.nextJob) {
    j.BeginObject();
    j.Key("set").String(base::TextView(s.nextJob->set));
    j.Key("nextRun").String(base::TextView(s.nextJob->nextRun));
    j.EndObject();
  } else {
    j.Null();
  }
  j.Key("jobsHeld").Bool(s.jobsHeld);
  j.Key("missed").BeginArray();
  for (const auto& m : s.missed) {
    j.BeginObject();
    j.Key("user").String(base::TextView(m.user));
    j.Key("reason").String(base::TextView(m.reason));
    j.Key("days").Number(static_cast<std::int64_t>(m.days));
    j.Key("text").StringOrNull(m.text);
    j.EndObject();
  }
  j.EndArray();
  j.Key("quota");
  if (s.quota) {
    j.BeginObject();
    j.Key("usedBytes").Number(s.quota->usedBytes);
    j.Key("totalBytes").NumberOrNull(s.quota->totalBytes);
    j.Key("percent").NumberOrNull(QuotaPercent(s));
    j.EndObject();
  } else {
    j.Null();
  }
  j.Key("lastResult").StringOrNull(s.lastResult);
  j.Key("sessions").BeginObject();
  j.Key("count").Number(static_cast<std::int64_t>(s.sessionCount));
  j.Key("newestBackup");
  if (s.newestBackup) {
    j.BeginObject();
    j.Key("start").String(base::TextView(s.newestBackup->start));
    j.Key("description").String(base::TextView(s.newestBackup->description));
    j.EndObject();
  } else {
    j.Null();
  }
  j.Key("ageDays").NumberOrNull(s.ageDays);
  j.EndObject();
  return j.EndObject().Document();
}

}  // namespace qvjobs
