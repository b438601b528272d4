#include "MonitorFixture.h"

namespace e2e {

namespace {

std::string Narrow(const std::wstring& w) {
  int n = WideCharToMultiByte(CP_UTF8, 0, w.data(), static_cast<int>(w.size()), nullptr, 0, nullptr,
                              nullptr);
  std::string s(static_cast<size_t>(n), '\0');
  WideCharToMultiByte(CP_UTF8, 0, w.data(), static_cast<int>(w.size()), s.data(), n, nullptr,
                      nullptr);
  return s;
}

}  // namespace

std::string MonitorTest::TestName() const {
  const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
  std::string name = std::string(info->test_suite_name()) + "." + info->name();
  for (auto& c : name)
    if (c == '/') c = '_';
  return name;
}

void MonitorTest::SetUp() {
  // A monitor that an earlier, killed run left behind would hold the mutex.
  int ended = TerminateProcessesUnder(RunsFolder());
  if (ended) std::printf("ended %d program(s) left by an earlier run\n", ended);
  for (const auto& p : FindProcesses(kMonitorExe))
    FAIL() << "another monitor runs (" << Narrow(p.image) << ", pid " << p.pid
           << ") and holds the single-instance mutex";

  folders_.push_back(std::make_unique<ProgramFolder>(TestName()));
  ASSERT_TRUE(Folder().Ok()) << Folder().Error();
  ASSERT_TRUE(WriteAnsiFile(Folder().PermCheck(), {}));
}

void MonitorTest::TearDown() {
  if (HasFailure()) {
    Shot("FAILED");
    for (auto& f : folders_) {
      f->Keep();
      std::printf("kept for a look: %s\n", f->Root().string().c_str());
    }
  }
  for (auto& p : processes_) p.Terminate();
  processes_.clear();
  // Also what the monitors started from their folders (the engine).
  for (auto& f : folders_) TerminateProcessesUnder(f->Root());
  folders_.clear();
}

ProgramFolder& MonitorTest::AnotherFolder(const std::string& suffix) {
  folders_.push_back(std::make_unique<ProgramFolder>(TestName() + "-" + suffix));
  auto& f = *folders_.back();
  EXPECT_TRUE(f.Ok()) << f.Error();
  EXPECT_TRUE(WriteAnsiFile(f.PermCheck(), {}));
  return f;
}

Process* MonitorTest::Start(const std::wstring& arguments, ProgramFolder* folder) {
  ProgramFolder& f = folder ? *folder : Folder();
  auto p = Process::Start(f.Exe(), arguments, f.Root());
  EXPECT_TRUE(p.has_value()) << "CreateProcessW failed for " << f.Exe().string() << ", error "
                             << GetLastError();
  if (!p) return nullptr;
  processes_.push_back(std::move(*p));
  return &processes_.back();
}

Process* MonitorTest::StartAndWait(const std::wstring& arguments, ProgramFolder* folder) {
  ProgramFolder& f = folder ? *folder : Folder();
  Process* p = Start(arguments, &f);
  if (!p) return nullptr;
  bool ready = WaitUntil([&] {
    Lines trace = Trace(f);
    return CountLine(trace, kShowLine) + CountLine(trace, kHideLine) > 0 || !p->Running();
  });
  EXPECT_TRUE(ready) << "the monitor wrote neither start-up line within the timeout";
  EXPECT_TRUE(p->Running()) << "the monitor ended during start-up";
  return p;
}

void MonitorTest::Kill(Process* p) {
  if (p) p->Terminate();
}

std::optional<WindowInfo> MonitorTest::MainWindow(DWORD pid, Ms timeout) {
  return WaitForWindow(WindowQuery{kMonitorTitle, kMonitorClass, pid, false}, timeout);
}

std::vector<WindowInfo> MonitorTest::AllMonitorWindows() {
  return FindTopLevel(WindowQuery{kMonitorTitle, kMonitorClass, 0, false});
}

Lines MonitorTest::Trace(const ProgramFolder& folder) {
  return ReadTextFile(folder.Trace()).value_or(Lines{});
}

bool MonitorTest::WaitForTraceLine(const ProgramFolder& folder, const std::wstring& line,
                                   Ms timeout) {
  return WaitUntil([&] { return CountLine(Trace(folder), line) > 0; }, timeout);
}

void MonitorTest::Shot(const std::string& what) {
  auto path = Screenshot(TestName() + "-" + what);
  if (path) std::printf("screenshot: %s\n", path->c_str());
}

}  // namespace e2e
