// Start-up of the real QVMonitor.exe: the single instance, the command-line word, the
// write-permission check on the trace, the stored geometry and the engine type.
#include <gtest/gtest.h>

#include "MonitorFixture.h"

namespace e2e {
namespace {

using StartupTest = MonitorTest;

TEST_F(StartupTest, SecondStartExitsSilentlyAndLeavesTheFirstAlone) {
  Process* first = StartAndWait(L"");
  ASSERT_NE(first, nullptr);
  auto window = MainWindow(first->Pid());
  ASSERT_TRUE(window);
  ASSERT_TRUE(window->visible);

  // "Min" would hide a window if the second start reached that far; a copy in another
  // folder has another data root, and the mutex still is the machine's one.
  ProgramFolder& other = AnotherFolder("other");
  for (auto [args, folder] : {std::pair<std::wstring, ProgramFolder*>{L"Min", &Folder()},
                              std::pair<std::wstring, ProgramFolder*>{L"", &other}}) {
    Process* second = Start(args, folder);
    ASSERT_NE(second, nullptr);
    auto code = second->WaitExit();
    ASSERT_TRUE(code) << "the second monitor is still running";
    EXPECT_EQ(*code, 0u);
  }
  EXPECT_FALSE(std::filesystem::exists(other.Trace())) << "the second start traced its start-up";

  ASSERT_TRUE(first->Running());
  auto windows = AllMonitorWindows();
  ASSERT_EQ(windows.size(), 1u);
  EXPECT_EQ(windows[0].hwnd, window->hwnd);
  EXPECT_TRUE(windows[0].visible);
  EXPECT_EQ(windows[0].text, kMonitorTitle);
  EXPECT_TRUE(EqualRect(&windows[0].rect, &window->rect));
  Lines trace = Trace(Folder());
  EXPECT_EQ(CountLine(trace, kShowLine), 1);
  EXPECT_EQ(CountLine(trace, kHideLine), 0);
  Shot("first-still-shown");
}

// The word as Windows hands it over: "Min" hides; the other spellings are the unit
// tests' (the command line's parsing is portable).
TEST_F(StartupTest, TheWordMinStartsHidden) {
  Process* p = StartAndWait(L"Min");
  ASSERT_NE(p, nullptr);
  auto window = MainWindow(p->Pid());
  ASSERT_TRUE(window);
  EXPECT_EQ(window->text, kMonitorTitle);
  EXPECT_FALSE(window->visible);
  Lines trace = Trace(Folder());
  EXPECT_EQ(CountLine(trace, kHideLine), 1);
  EXPECT_EQ(CountLine(trace, kShowLine), 0);
}

TEST_F(StartupTest, WithoutPermCheckDatAnOldTraceKeepsOnlyThisRunsLines) {
  ASSERT_TRUE(std::filesystem::remove(Folder().PermCheck()));
  ASSERT_TRUE(WriteUtf16File(Folder().Trace(), {L"Enter old run", L"Exit old run",
                                                L"ShowFromTaskBar called from the Monitor."}));
  // The old trace holds a start-up line too, so only a truncated trace tells that this
  // run has got that far.
  Process* p = Start(L"");
  ASSERT_NE(p, nullptr);
  Lines trace;
  EXPECT_TRUE(WaitUntil([&] {
    trace = Trace(Folder());
    return !trace.empty() && trace.front() == kPermissionLine && CountLine(trace, kShowLine) > 0;
  })) << "the trace was not emptied, or this run's start-up line never came";
  ASSERT_FALSE(trace.empty());
  EXPECT_EQ(CountLine(trace, L"Enter old run"), 0);
  EXPECT_EQ(CountLine(trace, L"Exit old run"), 0);
  EXPECT_EQ(CountLine(trace, kShowLine), 1);
  EXPECT_EQ(CountLine(trace, kPermissionLine), 1);
  EXPECT_TRUE(StartsWithUtf16Bom(Folder().Trace()));
  EXPECT_FALSE(std::filesystem::exists(Folder().PermCheck()));
}

// Geometry keys in twips at 96 dpi (15 twips a pixel), section LDPI.
struct Geometry {
  const wchar_t* width;
  const wchar_t* height;
  const wchar_t* top;
  const wchar_t* left;
};

class GeometryTest : public MonitorTest {
 protected:
  // The outer rectangle of the window after a start with these keys in qvwin.ini.
  RECT StartWith(const Geometry* g) {
    Lines ini = {L"[Corvane]", L"UserName=e2e"};
    if (g) {
      ini.push_back(L"[LDPI]");
      if (g->width) ini.push_back(std::wstring(L"MonWidth=") + g->width);
      if (g->height) ini.push_back(std::wstring(L"MonHeight=") + g->height);
      if (g->top) ini.push_back(std::wstring(L"MonTop=") + g->top);
      if (g->left) ini.push_back(std::wstring(L"MonLeft=") + g->left);
    }
    EXPECT_TRUE(WriteUtf16File(Folder().CommonFile(L"qvwin.ini"), ini));
    std::filesystem::remove(Folder().Trace());
    Process* p = StartAndWait(L"");
    RECT r{};
    if (!p) return r;
    if (auto w = MainWindow(p->Pid())) r = w->rect;
    Kill(p);
    return r;
  }
};

TEST_F(GeometryTest, ThreeOfTheFourKeysLeaveTheDesignedSize) {
  const RECT designed = StartWith(nullptr);
  ASSERT_GT(designed.right - designed.left, 0);

  // All four: the window takes them, so the cases below could see a change.
  const Geometry all{L"9000", L"6000", L"1500", L"3000"};
  const RECT placed = StartWith(&all);
  EXPECT_EQ(placed.left, 200);
  EXPECT_EQ(placed.top, 100);
  EXPECT_EQ(placed.right - placed.left, 600);
  EXPECT_EQ(placed.bottom - placed.top, 400);

  // One key missing: the designed size (the other partial cases are the unit tests').
  const Geometry partial{L"9000", L"6000", L"1500", nullptr};
  const RECT r = StartWith(&partial);
  EXPECT_EQ(r.right - r.left, designed.right - designed.left);
  EXPECT_NE(r.left, 200);
}

// The engine type as start-up takes it, from QVDetails.ini and HKLM\Software\QVWin.
class EngineTypeTest : public MonitorTest {
 protected:
  void SetUp() override {
    MonitorTest::SetUp();
    saved_ = ReadRegistryType();
  }
  void TearDown() override {
    WriteRegistryType(saved_);
    MonitorTest::TearDown();
  }

  static std::optional<std::wstring> ReadRegistryType() {
    wchar_t buffer[1024] = {};
    DWORD size = sizeof(buffer);
    if (RegGetValueW(HKEY_LOCAL_MACHINE, L"Software\\QVWin", L"Type", RRF_RT_REG_SZ, nullptr,
                     buffer, &size) != ERROR_SUCCESS)
      return std::nullopt;
    return std::wstring(buffer);
  }

  static void WriteRegistryType(const std::optional<std::wstring>& value) {
    platform::win32::UniqueKey held;
    if (RegCreateKeyExW(HKEY_LOCAL_MACHINE, L"Software\\QVWin", 0, nullptr, 0, KEY_SET_VALUE,
                        nullptr, held.Out(), nullptr) != ERROR_SUCCESS) {
      static_cast<void>(held.Detach());  // not opened: nothing to close
      ADD_FAILURE() << "cannot open HKLM\\Software\\QVWin";
      return;
    }
    const HKEY key = held.Get();
    if (value)
      RegSetValueExW(key, L"Type", 0, REG_SZ, reinterpret_cast<const BYTE*>(value->c_str()),
                     static_cast<DWORD>((value->size() + 1) * sizeof(wchar_t)));
    else
      RegDeleteValueW(key, L"Type");
  }

  std::string Probe() {
    const auto probe = RunsFolder().parent_path() / L"e2e_enginetype.exe";
    auto p =
        Process::Start(probe, L"\"" + Folder().Root().wstring() + L"\"", Folder().Root(), true);
    if (!p) return "cannot start " + probe.string();
    if (!p->WaitExit()) return "the probe did not end";
    std::string out = p->Output();
    while (!out.empty() && (out.back() == '\n' || out.back() == '\r')) out.pop_back();
    return out;
  }

 private:
  std::optional<std::wstring> saved_;
};

TEST_F(EngineTypeTest, TypeInQVDetailsBeatsTheRegistry) {
  struct Case {
    std::optional<std::wstring> file;  // nothing: no QVDetails.ini at all
    std::optional<std::wstring> registry;
    bool service;
  };
  const Case cases[] = {
      {L"exe", L"service", false},        // a non-empty file value wins
      {L"SERVICE ", std::nullopt, true},  // capitals and a trailing blank
      {L"Service", L"exe", true},
      {L"", L"service", true},  // empty in the file: the registry decides
      {std::nullopt, L" Service", true},
      {std::nullopt, L"exe", false},
      {std::nullopt, std::nullopt, false},
  };
  for (const auto& c : cases) {
    const auto details = Folder().CommonFile(L"QVDetails.ini");
    std::filesystem::remove(details);
    if (c.file) {
      ASSERT_TRUE(WriteUtf16File(details, {L"[Corvane]", L"Type=" + *c.file}));
    }
    WriteRegistryType(c.registry);
    const std::string expected = c.service ? "EngineIsService=1 ActiveEngine=NTService"
                                           : "EngineIsService=0 ActiveEngine=BackGroundService";
    EXPECT_EQ(Probe(), expected) << "file " << (c.file ? "set" : "absent") << ", registry "
                                 << (c.registry ? "set" : "absent");
  }
}

}  // namespace
}  // namespace e2e
