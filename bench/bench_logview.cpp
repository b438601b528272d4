// The activity log view's step of the tick on a small and on a very large log: the
// window's ShowLogInWindow (newest 20 lines, parsed into the list) with the log as the
// list already shows it and with the list to be filled, and the reader alone, beside
// the whole-file read the view used to do. On the real disk, in a fresh
// folder. The window's own pauses (2 ms per row, 1 ms per fifth line) go to a clock
// that only counts them, so the figures are the cost of the file and the list.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <random>

#include "base/Utf16.h"
#include "frame/AppState.h"
#include "kit/ScriptedUi.h"
#include "monitor/LogView.h"
#include "monitor/frmQVWinService.h"
#include "platform/fake/FakeEngineServices.h"
#include "platform/fake/FakeServices.h"
#include "platform/portable/PortableFileSystem.h"
#include "platform/portable/PortableProfile.h"

namespace {

using base::Text;

constexpr std::uint64_t kSmall = 1024;
constexpr std::uint64_t kLarge = 100ull * 1024 * 1024;

// A log of about `bytes` bytes as engine and monitor write it: typed lines, now and
// then the single-byte separator of a session's end.
std::filesystem::path MakeLog(const std::filesystem::path& folder, std::uint64_t bytes) {
  const auto path = folder / ("QVWServiceLog-" + std::to_string(bytes) + ".txt");
  std::ofstream out(path, std::ios::binary);
  out << base::kUtf16Bom;
  std::uint64_t written = 2;
  std::mt19937 rng(7);
  const char16_t* kinds[] = {u"Information : ", u"Success     : ", u"Error       : "};
  std::string block;
  for (long i = 0; written < bytes; ++i) {
    Text line = Text(kinds[rng() % 3]) + u"11/15/2026 05:25:27 : file " + base::FromNumber(i) +
                u" of the backup set was sent\r\n";
    std::string encoded = base::EncodeUtf16Le(line);
    if (i % 500 == 499) encoded += std::string(104, '_') + "\r\n";
    if (written + encoded.size() > bytes && written > 2) break;
    block += encoded;
    written += encoded.size();
    if (block.size() > (1u << 20)) {
      out << block;
      block.clear();
    }
  }
  out << block;
  return path;
}

class Fixture {
 public:
  static Fixture& Get() {
    static Fixture f;
    return f;
  }
  ~Fixture() {
    form.reset();
    std::error_code ec;
    std::filesystem::remove_all(folder_, ec);
  }

  Text PathOf(std::uint64_t size) {
    const std::u16string p = logs_.at(size).u16string();
    return Text(p.begin(), p.end());
  }
  platform::PortableFileSystem fs;
  std::unique_ptr<monitor::frmQVWinService> form;
  frame::AppState& App() { return app_; }

 private:
  Fixture() : profile_(fs), app_(Bundle()) {
    folder_ = std::filesystem::temp_directory_path() /
              ("qv-bench-logview-" + std::to_string(std::random_device{}()));
    std::filesystem::create_directories(folder_ / "QVCOMMON");
    const std::u16string root = folder_.u16string();
    app_.ProgramFolder = app_.DataRoot = Text(root.begin(), root.end());
    app_.ServiceLogPath = app_.CommonFile(u"QVWServiceLog.txt");
    for (std::uint64_t size : {kSmall, kLarge}) logs_[size] = MakeLog(folder_, size);
    form = std::make_unique<monitor::frmQVWinService>(app_, ui_);
    form->Load();
  }
  platform::Platform& Bundle() {
    platform_.fs = &fs;
    platform_.profile = &profile_;
    platform_.clock = &clock_;
    platform_.system = &system_;
    platform_.locale = &locale_;
    platform_.ui = &host_;
    platform_.registry = &registry_;
    platform_.shell = &shell_;
    platform_.processes = &processes_;
    platform_.services = &services_;
    return platform_;
  }

  platform::PortableProfile profile_;
  platform::FakeClock clock_;
  platform::FakeSystemInfo system_;
  platform::FakeLocale locale_;
  platform::FakeUiHost host_;
  platform::FakeRegistry registry_;
  platform::FakeShell shell_;
  platform::FakeProcessList processes_;
  platform::FakeServiceManager services_;
  platform::Platform platform_;
  frame::AppState app_;
  kit::ScriptedUi ui_;
  std::filesystem::path folder_;
  std::map<std::uint64_t, std::filesystem::path> logs_;
};

void BM_TickLogStep(benchmark::State& state) {
  Fixture& f = Fixture::Get();
  f.App().SessionFilePath = f.PathOf(static_cast<std::uint64_t>(state.range(0)));
  for (auto _ : state) {
    f.form->ShowLogInWindow();
    benchmark::DoNotOptimize(f.form->lstLog.Count());
  }
  state.counters["rows"] = f.form->lstLog.Count();
}
BENCHMARK(BM_TickLogStep)->Arg(kSmall)->Arg(kLarge)->Unit(benchmark::kMicrosecond);

// The same step when the list has to be filled (as after a change of the log or a
// Clear): the rows are parsed and added every time.
void BM_TickLogStepFillingTheList(benchmark::State& state) {
  Fixture& f = Fixture::Get();
  f.App().SessionFilePath = f.PathOf(static_cast<std::uint64_t>(state.range(0)));
  for (auto _ : state) {
    state.PauseTiming();
    f.form->lstLog.ClearRows();
    state.ResumeTiming();
    f.form->ShowLogInWindow();
    benchmark::DoNotOptimize(f.form->lstLog.Count());
  }
  state.counters["rows"] = f.form->lstLog.Count();
}
BENCHMARK(BM_TickLogStepFillingTheList)->Arg(kSmall)->Arg(kLarge)->Unit(benchmark::kMicrosecond);

void BM_ReadNewestLines(benchmark::State& state) {
  Fixture& f = Fixture::Get();
  const Text path = f.PathOf(static_cast<std::uint64_t>(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(monitor::ReadNewestLines(f.fs, path));
}
BENCHMARK(BM_ReadNewestLines)->Arg(kSmall)->Arg(kLarge)->Unit(benchmark::kMicrosecond);

// The whole-file read, for comparison only.
void BM_ReadNewestLinesWholeFile(benchmark::State& state) {
  Fixture& f = Fixture::Get();
  const Text path = f.PathOf(static_cast<std::uint64_t>(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(monitor::ReadNewestLinesWhole(f.fs, path));
}
BENCHMARK(BM_ReadNewestLinesWholeFile)->Arg(kSmall)->Arg(kLarge)->Unit(benchmark::kMillisecond);

}  // namespace
