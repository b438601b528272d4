#include "MonitorFixture.h"

namespace e2e {

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
    FAIL() << "another monitor runs (" << Utf8(p.image) << ", pid " << p.pid
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

std::optional<WindowInfo> MonitorTest::MainWindow(DWORD pid, Ms timeout) {
  return WaitForWindow(WindowQuery{kMonitorTitle, kMonitorClass, pid, false}, timeout);
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

HWND MonitorTest::OpenMonitor(const std::wstring& arguments) {
  Process* p = StartAndWait(arguments);
  if (p == nullptr) return nullptr;
  pid_ = p->Pid();
  auto w = MainWindow(pid_);
  main_ = w ? w->hwnd : nullptr;
  return main_;
}

std::wstring MonitorTest::Text(HWND window, const wchar_t* name) {
  HWND c = FindByName(window, name);
  return c ? Describe(c).text : L"<no control>";
}

bool MonitorTest::Shown(HWND window, const wchar_t* name) {
  HWND c = FindByName(window, name);
  return c != nullptr && IsWindowVisible(c);
}

void MonitorTest::Press(HWND window, const wchar_t* name) {
  HWND c = FindByName(window, name);
  ASSERT_NE(c, nullptr) << "no control " << Utf8(name);
  ASSERT_TRUE(ClickControl(c)) << Utf8(name);
}

void MonitorTest::TrayItem(int n) {
  ASSERT_TRUE(PostTrayMouse(main_, WM_RBUTTONUP));
  ASSERT_TRUE(ChooseMenuItemByArrows(pid_, n));
}

namespace {

// The first top-level window of `pid` but `main` for which `match` holds, once there is one.
template <class Match>
HWND WaitForOther(DWORD pid, HWND main, Ms timeout, Match match) {
  HWND found = nullptr;
  WaitUntil(
      [&] {
        for (const WindowInfo& w : FindTopLevel(WindowQuery{L"", kMonitorClass, pid, true}))
          if (w.hwnd != main && match(w.hwnd)) found = w.hwnd;
        return found != nullptr;
      },
      timeout);
  return found;
}

}  // namespace

HWND MonitorTest::WaitForScreen(const std::wstring& name, Ms timeout) {
  return WaitForOther(pid_, main_, timeout, [&](HWND w) { return FindByName(w, name) != nullptr; });
}

HWND MonitorTest::WaitForDesign(const std::wstring& name, Ms timeout) {
  return WaitForOther(pid_, main_, timeout, [&](HWND w) { return DesignName(w) == name; });
}

HWND MonitorTest::WaitForBox(const std::wstring& text, Ms timeout) {
  return WaitForOther(pid_, main_, timeout, [&](HWND w) {
    for (const WindowInfo& c : ListChildren(w))
      if (c.text.rfind(text, 0) == 0) return true;
    return false;
  });
}

void MonitorTest::Answer(HWND box, const std::wstring& control) {
  HWND button = FindByName(box, control);
  ASSERT_NE(button, nullptr) << Utf8(control);
  ASSERT_TRUE(ClickControl(button));
  ASSERT_TRUE(WaitUntil([&] { return !IsWindow(box) || !IsWindowVisible(box); }))
      << "the box stayed up";
}

}  // namespace e2e
