#include "fault/MonitorSoak.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <sstream>

#include "base/Guarded.h"
#include "base/Utf16.h"
#include "engine/EngineNames.h"
#include "engine/MonitorCallback.h"
#include "fault/FaultyPlatform.h"
#include "fault/FaultyUiHost.h"
#include "fault/LiveBlocks.h"
#include "frame/AppState.h"
#include "frame/Logs.h"
#include "frame/Settings.h"
#include "frame/Startup.h"
#include "kit/FormHost.h"
#include "kit/HostedUi.h"
#include "program/MonitorProgram.h"
#include "platform/TextFile.h"
#include "platform/fake/FakePlatform.h"
#include "account/ValueFiles.h"

namespace fault {

namespace {

using base::Text;
using platform::UiHandle;

const Text kRoot = u"C:\\QV";
const Text kCommon = u"C:\\QV\\QVCOMMON";
const Text kUser = u"jsmith";
const Text kSets[] = {u"Documents", u"Default BackupSet", u"Photos & Music"};

Text Common(const Text& name) { return kCommon + u"\\" + name; }

// What IgnoreFailure passed over during the present step, by description.
std::string ignoredSeen;
void NoteIgnored(const base::ErrorInfo& error) noexcept {
  base::IgnoreFailure([&] { ignoredSeen += base::ToUtf8(error.description) + "\n"; });
}

// One schedule line as the application writes it: twenty fields.
Text RecordLine(int no, const Text& set, const Text& key) {
  // clang-format off
  const Text fields[20] = {base::FromNumber(static_cast<long long>(no)), set,
                           u"03-25-2027 6:41:00", u"03-18-2026 15:02:33", u"My Corvane/", u"4",
                           u"2", u"1", u"a@b.c", u"", u"", u"", u"0", u"1", u"3", key, kUser,
                           u"1", u"0", u"2"};
  // clang-format on
  Text line;
  for (int i = 0; i < 20; ++i) {
    if (i) line += u"\b\b";
    line += fields[i];
  }
  return line;
}

// The program as one process: its state, its screens, its callback object.
struct Process {
  Process(platform::Platform& p, platform::IUiHost& host)
      : app(p), secure(app), ui(host), program(app, ui), callback(app) {
    app.secureStore = &secure;
  }
  frame::AppState app;
  account::SecureValueStore secure;
  kit::HostedUi ui;
  program::MonitorProgram program;
  engine::MonitorCallback callback;
};

class Soak {
 public:
  explicit Soak(const SoakOptions& o)
      : opt_(o), plan_(o.seed, o.probability), faulty_(fake_.Get(), plan_) {
    if (!o.shortWrites) plan_.LeaveOut(Fault::Short);
    password_ = u"Zq7#pw" + base::FromNumber(static_cast<long long>(o.seed % 100000)) + u"!";
    result_.seed = o.seed;
    faulty_.Files().onWrite = [this](const Text& path, std::string_view bytes) {
      if (base::EndsWith(base::ToLower(path), u"sertracefile.txt")) traceSeen_.append(bytes);
    };
    // What escapes a window message or a tick goes to the trace, as in the program.
    fake_.ui.SetFailureSink([this](const Text& line) {
      if (process_) frame::WriteTrace(process_->app, line);
    });
    base::SetIgnoredFailureObserver(&NoteIgnored);
  }
  ~Soak() { base::SetIgnoredFailureObserver(nullptr); }

  SoakResult Run();

 private:
  void SetUpDisk();
  void Start();
  void Step();
  void Tick();
  void EngineCalls();
  void JobEnd();
  void DialUpRequest();
  void MissedBackupKeys();
  void EngineChanges();
  void ScheduleByOthers();
  void TrayChoice();
  void WindowPlay();
  void Monkey(UiHandle window, int depth);
  void PlayOn(UiHandle window, int depth);
  void Check(const char* step);
  void CheckPassword();
  void ClearRecords();
  void KeepLogsSmall();
  void Finding(const std::string& what) { ++result_.findings[what]; }
  template <class Body>
  void Entry(const char* what, Body&& body) {
    try {
      body();
    } catch (...) {
      const base::ErrorInfo e = base::DescribeCurrentException();
      Finding(std::string("escaped ") + what + ": " + base::ToUtf8(e.description));
    }
  }

  std::uint64_t Pick(std::uint64_t n) { return plan_.Pick(n); }
  bool Chance(int percent) { return static_cast<int>(Pick(100)) < percent; }
  Text HostileText();
  Text FieldText();
  void WriteUnits(const Text& path, const std::vector<Text>& lines) {
    platform::TextFile::WriteLines(fake_.fs, path, lines);
  }
  // The schedule's lines as the engine reads them, at least its state word.
  std::vector<Text> ScheduleLines();
  // A key of the engine's profile file `file` in the common folder, as the engine sets it.
  void Put(const char16_t* key, const Text& value, const Text& file = u"qvwin.ini") {
    fake_.profile.WriteString(u"Corvane", Text(key), value, Common(file));
  }

  SoakOptions opt_;
  platform::FakePlatform fake_;
  FaultPlan plan_;
  FaultyPlatform faulty_;
  std::unique_ptr<Process> process_;
  SoakResult result_;
  Text password_;
  std::string traceSeen_;
  std::map<std::uintptr_t, std::uint64_t> due_;
  std::uint64_t simMs_ = 0;
  int depth_ = 0;
  int nextRecord_ = 10;
  bool transferring_ = false;
  int sessionFiles_ = 0;
  long ticksWithout_ = 0;
  std::vector<std::int64_t> samples_;
  const char* step_ = "start";
};

Text Soak::HostileText() {
  switch (Pick(6)) {
    case 0: return Text();
    case 1: return Text(20000 + Pick(20000), u'W');
    case 2: return u"\x00e9\x4e2d\xd83d\xde00 & | \b\b \r\n tab\t";
    case 3: return Text(1, static_cast<char16_t>(0xD800));  // a lone surrogate
    case 4: return u"-1";
    default: return u"Set " + base::FromNumber(static_cast<long long>(Pick(1000)));
  }
}

// Hostile, but what the application could put in one field: no separator, no line end.
Text Soak::FieldText() {
  Text t = HostileText();
  std::erase_if(t, [](char16_t c) { return c == u'\b' || c == u'\r' || c == u'\n'; });
  return t;
}

void Soak::SetUpDisk() {
  fake_.system.programFolder = kRoot;
  fake_.system.commandLine = opt_.seed % 2 ? u"Min" : u"";
  fake_.system.environment[u"TEMP"] = u"C:\\Temp";
  fake_.system.environment[u"USERPROFILE"] = u"C:\\Users\\jsmith";
  fake_.osName.name = u"Windows 10";
  for (const Text& folder :
       {Common(u"logs"), Common(u"Session"), Common(kUser), Text(u"C:\\Temp"), kRoot + u"\\images"})
    fake_.fs.AddFolders(folder);
  fake_.services.Add(engine::kServiceName);
  fake_.processes.Add(4242, kRoot + u"\\" + engine::kBackgroundProgram);
  fake_.network.goodAccounts[kUser] = password_;
  fake_.settings.values[u"DateFormat"] = u"MM/dd/yyyy";
  fake_.dialUp.connections.push_back({0x77, u"Office line", u"modem", u"Modem 1"});

  Put(u"UserName", kUser);
  Put(u"TotalSpace", u"10240");
  Put(u"UsedSpace", u"2048");
  Put(u"Type", opt_.seed % 3 == 0 ? u"service" : u"exe", u"QVDetails.ini");
  WriteUnits(Common(u"scheduleData.txt"),
             {u"0", RecordLine(1, kSets[0], u"202703250641"),
              RecordLine(2, kSets[1], u"202704010900"), RecordLine(3, kSets[2], u"202704021200")});
  WriteUnits(Common(u"BacksetData.txt"),
             {kSets[0] + u"\bC:\\data\b1\b0", kSets[1] + u"\bC:\\Users\b1\b0",
              kSets[2] + u"\bD:\\media\b1\b0"});
  WriteUnits(Common(u"Mailid.txt"), {u"a@b.c"});
  WriteUnits(Common(u"QVWServiceLog.txt"),
             {u"Information : 11/15/2026 05:25:27 : Backup started",
              u"Success     : 11/15/2026 05:35:27 : Backup finished"});
}

void Soak::Start() {
  // A start that the faults end at once (it could not write, or the guard failed) ends
  // the process without a word; the user starts it again. The third try runs clean.
  for (int attempt = 0; attempt < 3; ++attempt) {
    process_.reset();
    fake_.mutex.Kernel()->openCounts.clear();  // the ended process's mutex is gone
    due_.clear();
    plan_.SetEnabled(attempt < 2);
    process_ = std::make_unique<Process>(faulty_.Get(), faulty_.Ui());
    process_->program.SetTerminate([this](unsigned) { Finding("a shutdown item was chosen"); });
    if (attempt == 0) {
      // The password the user once gave, in the scrambled store.
      plan_.SetEnabled(false);
      process_->app.DataRoot = kRoot;
      process_->secure.WriteSecure(kUser, password_);
      plan_.SetEnabled(true);
    }
    frame::MainResult started = frame::MainResult::NoWritePermission;
    Entry("Main", [&] { started = frame::Main(process_->app, process_->program); });
    plan_.SetEnabled(true);
    Check("start");
    if (started == frame::MainResult::Run) return;
    ++result_.restarts;
  }
}

void Soak::Tick() {
  step_ = "tick";
  simMs_ += 10000;
  fake_.clock.tick += 10000;
  fake_.clock.now = fake_.clock.now.AddSeconds(10);
  bool progress = false;
  // Every timer of the program that is due, the progress tick among them.
  std::vector<std::uintptr_t> ids;
  for (const auto& [id, t] : fake_.ui.timers) {
    if (t.intervalMs == 10000) progress = true;
    auto [it, added] =
        due_.emplace(id, simMs_ + t.intervalMs - (t.intervalMs == 10000 ? 10000 : 0));
    if (it->second <= simMs_) ids.push_back(id);
  }
  for (std::uintptr_t id : ids) {
    auto t = fake_.ui.timers.find(id);
    if (t == fake_.ui.timers.end()) continue;
    due_[id] = simMs_ + std::max<std::uint32_t>(t->second.intervalMs, 1);
    fake_.ui.FireTimer(id);
  }
  // A timer the system refused is asked for again at the window's next change; a tick
  // missing for ten minutes of the program's life is lost.
  ticksWithout_ = progress ? 0 : ticksWithout_ + 1;
  if (ticksWithout_ == 60) Finding("the progress tick does not run");
  ++result_.ticks;
}

void Soak::EngineCalls() {
  step_ = "engine call";
  const int n = 1 + static_cast<int>(Pick(5));
  for (int i = 0; i < n; ++i) {
    platform::UpdateMonitorArgs a;
    if (transferring_ && Chance(15)) {
      a.sFileName = Chance(50) ? u"?stop" : u"?STOP";
      transferring_ = false;
    } else {
      transferring_ = true;
      a.sFileName = Chance(3) ? Text(65536 + Pick(1000), u'f')
                              : u"C:\\data\\file" +
                                    base::FromNumber(static_cast<long long>(Pick(100))) + u".doc";
      a.dFileSize = Chance(3) ? -1.0 : static_cast<double>(Pick(1ull << 40));
      a.dTotalFilesize = Chance(2) ? std::numeric_limits<double>::quiet_NaN()
                                   : static_cast<double>(Pick(1ull << 45));
      a.dfileBuff = static_cast<double>(Pick(1000000));
      a.dTotalBuffer = Chance(2) ? std::numeric_limits<double>::infinity() : 1e6;
      a.sTrfRate = Chance(3) ? HostileText() : u"1.2 MB/s";
      a.iFileProg = static_cast<short>(Pick(130)) - 10;
      a.iTotalProg = static_cast<short>(Pick(130)) - 10;
      a.StartTime = static_cast<float>(Pick(100000));
      a.timeelapsed = Chance(3) ? HostileText() : u"0:01:10";
      a.TimeRemaining = Chance(3) ? HostileText() : u"0:05:00";
      a.engNumber = static_cast<short>(Pick(3));
      a.preCall = static_cast<short>(Pick(2));
      a.sBkStatus = static_cast<long>(Pick(7)) - 1;
    }
    Entry("the progress call", [&] { process_->callback.UpdateMonitor(a); });
    if (Chance(10)) {
      Entry("the time call",
            [&] { process_->callback.GetProperTime(static_cast<long>(Pick(400000)) - 1000); });
    }
  }
}

std::vector<Text> Soak::ScheduleLines() {
  auto lines = platform::TextFile::ReadLines(fake_.fs, Common(u"scheduleData.txt"))
                   .value_or(std::vector<Text>{});
  if (lines.empty()) lines.push_back(u"0");
  return lines;
}

void Soak::JobEnd() {
  step_ = "job end";
  const Text set = Chance(5) ? HostileText() : kSets[Pick(3)];
  auto lines = ScheduleLines();
  lines[0] = u"0";
  WriteUnits(Common(u"scheduleData.txt"), lines);
  const Text result = Chance(50) ? u"GREEN" : u"RED";
  Put(u"DESKNOTIFYICON", result);
  const Text session = u"Session" + base::FromNumber(static_cast<long long>(sessionFiles_++ % 8)) +
                       u"_" + kSets[Pick(3)] + u".txt";
  WriteUnits(Common(u"Session\\" + session),
             {u"Information : 11/15/2026 05:25:27 : Backup of " + set + u" started",
              u"Success     : 11/15/2026 05:35:27 : Backup completed"});
  switch (Pick(4)) {
    case 0: fake_.fs.PutFile(Common(u"qvwincurjobname.txt"), ""); break;
    case 1: WriteUnits(Common(u"qvwincurjobname.txt"), {set}); break;
    default: WriteUnits(Common(u"qvwincurjobname.txt"), {set, u"x", kUser}); break;
  }
}

void Soak::DialUpRequest() {
  step_ = "dial-up request";
  if (fake_.dialUp.connections.empty())
    fake_.dialUp.connections.push_back({0x77, u"Office line", u"modem", u"Modem 1"});
  std::string text = base::ToUtf8(kSets[Pick(3)]) + "\r\nSession1_" + "Documents.txt\r\n";
  if (Chance(10)) text = std::string(30000, 'D');
  fake_.fs.PutFile(Common(u"DialupDisconnect.txt"), text);
}

void Soak::MissedBackupKeys() {
  step_ = "missed backup";
  const Text server = kUser + u"\\qvwinserver.ini";
  Put(u"NotifyUsers", Chance(80) ? kUser : kUser + u"<<other");
  const Text days[] = {u"3", u"0", u"abc", u"99999999999", u"-2"};
  Put(u"NoofDays", days[Pick(5)], server);
  Put(u"Notify_Err", Chance(50) ? u"1" : u"0", server);
  Put(u"DateFailed", Chance(80) ? u"11/10/2026" : u"not a date", server);
  Put(u"Notifymsg", Chance(10) ? HostileText() : Text(u"Backup failed"), server);
}

void Soak::EngineChanges() {
  step_ = "engine";
  auto* service = fake_.services.Find(engine::kServiceName);
  if (service != nullptr) service->state = 1 + static_cast<unsigned long>(Pick(7));
  // The engine comes back when it is gone; one that runs dies more often than not.
  if (fake_.processes.processes.empty())
    fake_.processes.Add(4242 + static_cast<std::uint32_t>(Pick(100)),
                        kRoot + u"\\" + engine::kBackgroundProgram);
  else if (!Chance(30))
    fake_.processes.processes.clear();
}

void Soak::ScheduleByOthers() {
  step_ = "schedule by others";
  auto lines = ScheduleLines();
  switch (Pick(4)) {
    case 0: lines[0] = Chance(50) ? u"1" : u"2"; break;
    case 1:
      if (lines.size() < 12)
        lines.push_back(RecordLine(
            nextRecord_++, Chance(10) ? FieldText() : kSets[Pick(3)],
            u"2027" + base::FromNumber(100000000LL + static_cast<long long>(Pick(99999999)))));
      break;
    case 2:
      if (lines.size() > 2)
        lines.erase(lines.begin() + 1 + static_cast<long>(Pick(lines.size() - 1)));
      break;
    default: lines[0] = u"0"; break;
  }
  for (Text& l : lines)
    if (l.find(u'\b') == Text::npos && l.size() != 1) l = u"0";
  WriteUnits(Common(u"scheduleData.txt"), lines);
}

void Soak::TrayChoice() {
  step_ = "tray";
  auto& w = process_->program.Window();
  kit::MenuItem* items[] = {
      &w.mnuOpen,      &w.mnuLaunch,    &w.mnuBackupNow, &w.mnuChangePassword,  &w.mnuManSchJob,
      &w.mnuenablesch, &w.mnustprunjob, &w.WebMang,      &w.mnusenderrorreport, &w.mnuviewlog};
  if (fake_.ui.trayIcons.empty()) return;
  const UiHandle icon = fake_.ui.trayIcons.begin()->first;
  if (Chance(10)) {
    fake_.ui.FireTray(icon, platform::kTrayLeftDoubleClick);
    return;
  }
  fake_.ui.popupChoices.clear();
  fake_.ui.popupChoices.push_back(kit::FormHost::MenuId(w, *items[Pick(std::size(items))]));
  fake_.ui.FireTray(icon, Chance(80) ? platform::kTrayRightButtonUp : platform::kTrayKeyboardMenu);
  fake_.ui.popupChoices.clear();
}

void Soak::WindowPlay() {
  step_ = "window";
  const UiHandle window = fake_.ui.FindForm(u"frmQVWinService");
  if (window != 0) PlayOn(window, 0);
}

// A few random inputs on one window, the way a user clicks around.
void Soak::PlayOn(UiHandle window, int depth) {
  const int actions = 1 + static_cast<int>(Pick(6));
  for (int i = 0; i < actions; ++i) {
    auto form = fake_.ui.forms.find(window);
    if (form == fake_.ui.forms.end()) return;
    platform::IUiEvents* events = form->second.events;
    std::vector<UiHandle> controls;
    for (const auto& [h, c] : fake_.ui.controls)
      if (c.window == window && c.state.visible && c.state.enabled) controls.push_back(h);
    const auto what = Pick(10);
    if (what == 0 && depth > 0) {
      Entry("a close request", [&] { events->OnCloseRequest(window); });
      continue;
    }
    if (what == 1) {
      // A menu item of the window's bar, except the shutdown ones.
      std::vector<std::uint32_t> ids;
      std::function<void(const std::vector<platform::UiMenuItem>&)> walk =
          [&](const std::vector<platform::UiMenuItem>& items) {
            for (const auto& m : items) {
              if (m.caption.find(u"Shutdown") != Text::npos) continue;
              if (m.children.empty() && m.enabled) ids.push_back(m.id);
              walk(m.children);
            }
          };
      walk(form->second.state.menuBar);
      if (!ids.empty()) {
        const std::uint32_t id = ids[Pick(ids.size())];
        Entry("a menu item", [&] { events->OnMenu(window, id); });
      }
      continue;
    }
    if (what == 2) {
      const int keys[] = {13, 27, 9, 32, 37, 39, 46, 'A'};
      const int key = keys[Pick(std::size(keys))];
      Entry("a key", [&] {
        if (events->OnKey(window, {platform::UiKey::Down, key, static_cast<int>(Pick(3))}))
          events->OnKey(window, {platform::UiKey::Up, key, 0});
      });
      continue;
    }
    if (what == 3 && depth > 0 && Chance(30)) {
      Tick();  // the tick goes on under a modal screen
      continue;
    }
    if (controls.empty()) continue;
    const UiHandle h = controls[Pick(controls.size())];
    const platform::UiControl c = fake_.ui.controls.at(h).state;
    Entry("an input", [&] {
      switch (c.kind) {
        case platform::UiKind::CheckBox:
        case platform::UiKind::OptionButton: events->OnClick(window, h); break;
        case platform::UiKind::TextBox: {
          Text text = c.passwordChar != 0 ? (Chance(70) ? password_ : HostileText())
                                          : (Chance(20) ? HostileText() : Text(u"a@b.c"));
          events->OnTextChanged(window, h, text);
          break;
        }
        case platform::UiKind::ListView: {
          const auto kind = static_cast<platform::UiListWhat>(Pick(3));
          const auto& shown = fake_.ui.controls.at(h);
          const int rows = shown.RowCount();
          const int index = static_cast<int>(Pick(static_cast<std::uint64_t>(rows) + 2));
          // What the list draws is asked of the screen, as the Windows host asks.
          static_cast<void>(shown.Cell(index - 1, static_cast<int>(Pick(10))));
          events->OnList(window, h, {kind, index, Chance(50)});
          if (kind == platform::UiListWhat::RowClick && Chance(30))
            events->OnMouse(window, h, {platform::UiMouse::DblClick, 1, 0, 10, 10});
          break;
        }
        case platform::UiKind::ComboBox:
          events->OnSelect(window, h, static_cast<int>(Pick(c.items.size() + 1)) - 1 + 0);
          break;
        case platform::UiKind::DatePicker:
          events->OnDateChanged(window, h,
                                fake_.clock.now.AddDays(static_cast<long>(Pick(60)) - 30));
          break;
        default:
          events->OnMouse(window, h, {platform::UiMouse::Down, 1, 0, 5, 5});
          if (fake_.ui.controls.count(h))
            events->OnMouse(window, h, {platform::UiMouse::Up, 1, 0, 5, 5});
          break;
      }
    });
  }
}

// The user at a modal screen: a few inputs, then the screen is left however it ends.
void Soak::Monkey(UiHandle window, int depth) {
  if (depth > 3) return;  // deeper boxes are closed by their loop's end
  ++depth_;
  PlayOn(window, depth);
  auto form = fake_.ui.forms.find(window);
  if (form != fake_.ui.forms.end() && Chance(60)) {
    platform::IUiEvents* events = form->second.events;
    Entry("a close request", [&] { events->OnCloseRequest(window); });
  }
  --depth_;
}

void Soak::KeepLogsSmall() {
  // The engine's own log grows without end in the field; the soak keeps its last lines
  // so that what the view shows, and so holds, stays the same size.
  auto log = platform::TextFile::ReadLines(fake_.fs, Common(u"QVWServiceLog.txt"));
  if (log && log->size() > 40) {
    std::vector<Text> tail(log->end() - 20, log->end());
    WriteUnits(Common(u"QVWServiceLog.txt"), tail);
  }
  fake_.fs.PutFile(Common(u"SerTraceFile.txt"), base::kUtf16Bom);
}

void Soak::ClearRecords() {
  auto clear = [](auto&... records) { (records.clear(), ...); };
  auto& ui = fake_.ui;
  auto& net = fake_.network;
  clear(ui.calls, ui.popups, ui.balloons, ui.questions, ui.dragRequests, ui.failures,
        fake_.processes.calls, fake_.processes.terminated, fake_.services.calls, fake_.mutex.calls,
        fake_.shell.opened, fake_.shell.runs, fake_.shell.executed, fake_.sound.played,
        fake_.dialUp.hangUps, net.logins, net.requests, net.mails, net.endpointsSeen);
}

void Soak::CheckPassword() {
  const std::string wide = base::EncodeUtf16Le(password_);
  const std::string narrow = base::ToUtf8(password_);
  const Text store = account::ValueFilePath(process_->app, kUser, account::ValueKind::Password);
  std::vector<Text> folders{u"C:"};
  while (!folders.empty()) {
    const Text folder = folders.back();
    folders.pop_back();
    for (const auto& e : fake_.fs.List(folder, u"*")) {
      const Text path = folder + u"\\" + e.name;
      if (e.isFolder) {
        folders.push_back(path);
        continue;
      }
      if (base::EqualsNoCase(path, store)) continue;
      const std::string b = fake_.fs.Bytes(path);
      if (b.find(wide) != std::string::npos || b.find(narrow) != std::string::npos)
        Finding("the password stands in " + base::ToUtf8(path));
    }
  }
}

void Soak::Check(const char* step) {
  const bool was = plan_.Enabled();
  plan_.SetEnabled(false);
  for (const Text& line : fake_.ui.failures)
    Finding(std::string("escaped the host's handling during ") + step + ": " + base::ToUtf8(line));
  fake_.ui.failures.clear();
  for (const ThrownFault& t : plan_.TakeThrown()) {
    ++result_.thrown;
    // "#12" must not be found in "#123": the marker is followed by " at".
    const std::string marker = t.marker + " at ";
    if (traceSeen_.find(base::EncodeUtf16Le(base::FromUtf8(marker))) != std::string::npos) {
      ++result_.thrownTraced;
    } else if (ignoredSeen.find(marker) != std::string::npos) {
      ++result_.thrownPassedOver;
    } else {
      Finding("lost: an exception of " + t.site + " during " + step);
    }
  }
  traceSeen_.clear();
  ignoredSeen.clear();
  // The schedule file, where there is one, is whole.
  for (const std::string& problem : ScheduleProblems(fake_.fs.Bytes(Common(u"scheduleData.txt"))))
    Finding("schedule file: " + problem);
  if (process_) CheckPassword();
  if (fake_.services.OpenHandles() != 0) Finding("a service manager handle left open");
  if (fake_.processes.OpenHandles() != 0) Finding("a process handle left open");
  if (fake_.network.liveObjects != 0) Finding("an account or report object left alive");
  ClearRecords();
  plan_.SetEnabled(was);
}

void Soak::Step() {
  const auto roll = Pick(100);
  if (roll < 50) {
    Tick();
  } else if (roll < 62) {
    EngineCalls();
  } else if (roll < 67) {
    JobEnd();
  } else if (roll < 70) {
    DialUpRequest();
  } else if (roll < 73) {
    MissedBackupKeys();
  } else if (roll < 76) {
    EngineChanges();
  } else if (roll < 79) {
    ScheduleByOthers();
  } else if (roll < 94) {
    TrayChoice();
  } else {
    WindowPlay();
  }
  ++result_.steps;
  Check(step_);
}

SoakResult Soak::Run() {
  SetUpDisk();
  fake_.ui.onModal = [this](UiHandle window) { Monkey(window, depth_ + 1); };
  Start();
  const long warmup = std::max(opt_.ticks / 5, 1L);
  long lastSample = -1;
  while (result_.ticks < opt_.ticks) {
    Step();
    if (result_.ticks % 200 == 0) KeepLogsSmall();
    if (result_.ticks >= warmup && result_.ticks % opt_.memorySample == 0 &&
        result_.ticks != lastSample) {
      lastSample = result_.ticks;
      samples_.push_back(LiveBlocks());
    }
  }
  // Memory: the lowest count of the early samples after warm-up against the lowest of
  // the late ones. What the program holds between two ticks must not creep up.
  if (samples_.size() >= 4) {
    const std::size_t half = samples_.size() / 2;
    result_.liveEarly =
        static_cast<long>(*std::min_element(samples_.begin(), samples_.begin() + half));
    result_.liveLate =
        static_cast<long>(*std::min_element(samples_.begin() + half, samples_.end()));
    if (result_.liveLate > result_.liveEarly + 200) Finding("live allocations grow after warm-up");
  }
  process_.reset();
  result_.calls = plan_.Calls();
  result_.faults = plan_.Total();
  for (int k = 0; k < kFaultKinds; ++k) result_.byKind[k] = plan_.Count(static_cast<Fault>(k));
  result_.bySite = plan_.BySite();
  return result_;
}

}  // namespace

std::vector<std::string> ScheduleProblems(const std::string& bytes) {
  std::vector<std::string> problems;
  const base::Text units = base::DecodeUtf16Le(bytes).units;
  if (bytes.size() % 2 != 0) problems.push_back("an odd byte at its end");
  if (!units.empty() && (units.size() < 2 || units.substr(units.size() - 2) != u"\r\n"))
    problems.push_back("the last line is not whole");
  const auto lines = platform::TextFile::SplitLines(units);
  std::map<Text, int> numbers;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const Text& l = lines[i];
    if (i == 0) {
      if (l.size() != 1) problems.push_back("the first line is not a state word");
      continue;
    }
    std::size_t separators = 0;
    for (std::size_t p = l.find(u"\b\b"); p != Text::npos; p = l.find(u"\b\b", p + 2)) ++separators;
    if (separators != 19) {
      problems.push_back("a record that is not whole");
      continue;
    }
    if (++numbers[l.substr(0, l.find(u"\b\b"))] == 2)
      problems.push_back("one record twice (two versions)");
  }
  return problems;
}

SoakResult RunSoak(const SoakOptions& options) {
  Soak soak(options);
  return soak.Run();
}

std::string Describe(const SoakResult& r) {
  std::ostringstream out;
  out << "seed " << r.seed << ": " << r.ticks << " ticks, " << r.steps << " steps, " << r.calls
      << " platform calls, " << r.faults << " faults (";
  for (int k = 0; k < kFaultKinds; ++k)
    out << (k ? ", " : "") << FaultName(static_cast<Fault>(k)) << " " << r.byKind[k];
  out << "), " << r.thrown << " exceptions (" << r.thrownTraced << " traced, " << r.thrownPassedOver
      << " passed over on purpose), " << r.restarts << " restarts, live blocks " << r.liveEarly
      << " -> " << r.liveLate << ", " << r.findings.size() << " findings\n";
  for (const auto& [what, count] : r.findings)
    out << "  finding (" << count << "x): " << what << "\n";
  return out.str();
}

}  // namespace fault
