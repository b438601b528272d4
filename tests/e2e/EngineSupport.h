#pragma once
// What the tests that run the simulated engine beside the monitor share: schedule
// records, the service registration, and the clean-up of Wine's COM leftovers.
#include <windows.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include <cstdio>
#include <list>

#include "MonitorFixture.h"
#include "base/Text.h"

namespace e2e {

inline std::wstring Record(const std::vector<std::wstring>& fields) {
  std::wstring line;
  for (size_t i = 0; i < fields.size(); ++i) line += (i ? L"\b\b" : L"") + fields[i];
  return line;
}

// A record as the schedule file holds it, of user jsmith: job `no` of set `name`, its next
// run `next` and sort key `key`, frequency index `index` and days `days`.
inline std::wstring Job(const std::wstring& no, const std::wstring& name, const std::wstring& next,
                        const std::wstring& index, const std::wstring& key,
                        const std::wstring& days,
                        const std::wstring& created = L"01-01-2020 4:00:00") {
  return Record({no,  name, next, created, L"My Corvane/", index, L"2",      L"0", L"",  L"",
                 L"", L"",  L"0", L"1",    L"0",           key,   L"jsmith", L"1", L"0", days});
}

// Record 5: an immediate job ("Once", the immediate key).
inline std::wstring ImmediateJob(const std::wstring& name = L"Documents") {
  return Job(L"5", name, L"11-15-2026 5:00:00", L"1", L"000000010000", L"", L"11-15-2026 4:00:00");
}

// Record 7: a daily job whose time has long come.
inline std::wstring DailyJob() {
  return Job(L"7", L"Pictures", L"01-02-2020 6:30:00", L"3", L"202001020630", L"1234567");
}

inline std::wstring After(const std::wstring& line, const std::wstring& prefix) {
  const size_t at = line.find(prefix);
  return at == std::wstring::npos ? std::wstring() : line.substr(at + prefix.size());
}

using platform::win32::UniqueServiceHandle;

// The service `name` of the service manager, with `access`; none when either cannot open.
inline UniqueServiceHandle OpenNamedService(const wchar_t* name, DWORD access) {
  const UniqueServiceHandle m(OpenSCManagerW(nullptr, nullptr, SC_MANAGER_CONNECT));
  return UniqueServiceHandle(m ? OpenServiceW(m.Get(), name, access) : nullptr);
}
// True once the service is in `state` (SERVICE_STOPPED, SERVICE_RUNNING).
inline bool WaitForServiceState(SC_HANDLE s, DWORD state) {
  return WaitUntil([&] {
    SERVICE_STATUS st{};
    return QueryServiceStatus(s, &st) && st.dwCurrentState == state;
  });
}

// Wine's COM keeps the class object of a server that was killed (not ended through
// its Shutdown) and hands it to later clients, who then cannot reach it. Restarting
// the COM service forgets such leftovers of earlier tests.
inline void ForgetKilledServers() {
  const UniqueServiceHandle s = OpenNamedService(L"RpcSs", SERVICE_ALL_ACCESS);
  if (!s) return;
  SERVICE_STATUS st{};
  if (ControlService(s.Get(), SERVICE_CONTROL_STOP, &st))
    WaitForServiceState(s.Get(), SERVICE_STOPPED);
  StartServiceW(s.Get(), 0, nullptr);
  WaitForServiceState(s.Get(), SERVICE_RUNNING);
}

// Registers (and on destruction stops and deletes) "QVWin Service" for the simulated
// service program of a program folder, with `sc create` as an installer would.
class RegisteredService {
 public:
  RegisteredService(const std::filesystem::path& exe, const std::wstring& start) {
    // The service manager may still hold the name of a service deleted a moment ago (by
    // the test before, or another test program): it is free once that deletion is done.
    const std::wstring create =
        L"create \"QVWin Service\" binPath= \"" + exe.wstring() + L"\" start= " + start;
    ok_ = WaitUntil([&] { return Run(create) == 0; });
  }
  ~RegisteredService() {
    if (const UniqueServiceHandle s = OpenNamedService(L"QVWin Service", SERVICE_ALL_ACCESS)) {
      SERVICE_STATUS st{};
      ControlService(s.Get(), SERVICE_CONTROL_STOP, &st);
      WaitForServiceState(s.Get(), SERVICE_STOPPED);
    }
    Run(L"delete \"QVWin Service\"");
  }
  bool Ok() const { return ok_; }

 private:
  // The system's sc.exe with `arguments`; its exit code.
  static DWORD Run(const std::wstring& arguments) {
    wchar_t system[MAX_PATH] = {};
    GetSystemDirectoryW(system, MAX_PATH);
    auto sc = Process::Start(std::filesystem::path(system) / L"sc.exe", arguments, {});
    return sc ? sc->WaitExit(Ms{30000}).value_or(1) : 1;
  }
  bool ok_ = false;
};

inline constexpr wchar_t kArrived[] = L"UpdateMonitor arrived: ";
inline constexpr wchar_t kKept[] = L"UpdateMonitor kept: ";
inline constexpr wchar_t kSimLog[] = L"engine-sim.log";
inline constexpr wchar_t kBackgroundExe[] = L"QVBackground_955.exe";
inline constexpr wchar_t kServiceExe[] = L"QVWin Service_955.exe";
// The job-end notification's caption.
inline constexpr wchar_t kJobNoticeTitle[] = L"werwe werwerwerwer werwe rwerw 1234";

inline base::Text AsText(const std::filesystem::path& p) {
  const std::wstring w = p.wstring();
  return base::Text(reinterpret_cast<const char16_t*>(w.c_str()), w.size());
}

// A monitor beside the simulated engine, both from the test's program folder; the
// monitor traces every progress call (QV_TRACE_UPDATES=1).
class EngineMonitorTest : public MonitorTest {
 protected:
  void SetUp() override {
    ForgetKilledServers();
    SetEnvironmentVariableW(L"QV_TRACE_UPDATES", L"1");
    MonitorTest::SetUp();
  }
  void TearDown() override {
    if (HasFailure()) {
      for (const auto& l : SimLog()) std::printf("sim: %s\n", Utf8(l).c_str());
      for (const auto& l : Trace(Folder()))
        if (l.rfind(L"UpdateMonitor", 0) == 0 || l.find(L"got a call") != std::wstring::npos)
          std::printf("monitor: %s\n", Utf8(l).c_str());
    }
    for (auto& p : engines_) p.Terminate();
    engines_.clear();
    MonitorTest::TearDown();
    SetEnvironmentVariableW(L"QV_TRACE_UPDATES", nullptr);
  }

  // The state word and the records of the schedule file.
  void Schedule(const std::wstring& word, const Lines& records = {}) {
    std::error_code ec;
    std::filesystem::create_directories(Folder().Common(), ec);
    Lines lines{word};
    lines.insert(lines.end(), records.begin(), records.end());
    ASSERT_TRUE(WriteUtf16File(Folder().CommonFile(L"scheduleData.txt"), lines));
  }
  void Scenario(const Lines& lines) {
    ASSERT_TRUE(WriteAnsiFile(Folder().Root() / L"engine-sim.ini", lines));
  }
  // The monitor serves the class before its window's load starts the engine: its
  // registration names this folder's program, and the class object follows at once.
  // pid_ and main_ name it from then on.
  void StartServingMonitor() {
    ASSERT_NE(OpenMonitor(L"Min"), nullptr);
    const std::wstring expected = L"\"" + Folder().Exe().wstring() + L"\"";
    ASSERT_TRUE(WaitUntil([&] {
      wchar_t value[1024] = {};
      DWORD bytes = sizeof(value);
      return RegGetValueW(HKEY_CLASSES_ROOT,
                          L"CLSID\\{1984E5BD-394A-449B-A09A-6648BCB1AF6F}\\LocalServer32", nullptr,
                          RRF_RT_REG_SZ, nullptr, value, &bytes) == ERROR_SUCCESS &&
             _wcsicmp(value, expected.c_str()) == 0;
    }));
    Sleep(500);
  }
  // The tick at once: the Refresh button runs it out of turn.
  void Tick() { Press(main_, L"btnRefresh"); }
  void StartBackgroundEngine() {
    auto p = Process::Start(Folder().Root() / kBackgroundExe, L"", Folder().Root());
    ASSERT_TRUE(p.has_value());
    engines_.push_back(std::move(*p));
  }

  Lines SimLog() { return ReadTextFile(Folder().CommonFile(kSimLog)).value_or(Lines{}); }
  // True once a line of the simulator's log starts with `line` (its numbers may follow).
  bool WaitForSimLine(const std::wstring& line, Ms timeout = Ms{60000}) {
    return WaitUntil(
        [&] {
          const Lines log = SimLog();
          return std::any_of(log.begin(), log.end(),
                             [&](auto& l) { return l.rfind(line, 0) == 0; });
        },
        timeout);
  }
  // The calls as the simulator sent them, without its outcome; the outcomes apart.
  Lines Sent(Lines* outcomes = nullptr) {
    Lines sent;
    for (const auto& l : SimLog()) {
      if (l.rfind(L"sent ", 0) != 0) continue;
      std::wstring call = After(l, kArrived);
      const size_t hr = call.rfind(L" hr=");
      if (outcomes) outcomes->push_back(call.substr(hr + 1));
      sent.push_back(call.substr(0, hr));
    }
    return sent;
  }
  Lines TraceAfter(const std::wstring& prefix) {
    Lines out;
    for (const auto& l : Trace(Folder()))
      if (l.rfind(prefix, 0) == 0) out.push_back(l.substr(prefix.size()));
    return out;
  }
  Lines ScheduleLines() {
    return ReadTextFile(Folder().CommonFile(L"scheduleData.txt")).value_or(Lines{});
  }
  std::wstring Word() {
    const Lines lines = ScheduleLines();
    return lines.empty() ? L"<none>" : lines[0];
  }
  // Every call the simulator sent arrived, in order, exactly as it was sent.
  void ExpectSentArrived(size_t count) {
    Lines outcomes;
    const Lines sent = Sent(&outcomes);
    const Lines arrived = TraceAfter(kArrived);
    EXPECT_EQ(sent.size(), count);
    EXPECT_EQ(sent, arrived);
    for (const auto& o : outcomes) EXPECT_EQ(o, L"hr=0x00000000 result=1");
  }

  std::list<Process> engines_;
};

}  // namespace e2e
