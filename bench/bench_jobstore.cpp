// The job store's costs that grow with the schedule: a load, an update (which rewrites
// the whole file and traces every line), a new record number, and the load plus full
// rewrite that every save on the editor costs. On the real disk, in a fresh folder.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <random>

#include "base/Utf16.h"
#include "frame/AppState.h"
#include "jobstore/DBaction.h"
#include "PortableBundle.h"

namespace {

using base::Text;

class Store {
 public:
  explicit Store(int records) : app_(services_.platform) {
    folder_ = std::filesystem::temp_directory_path() /
              ("qv-bench-jobstore-" + std::to_string(std::random_device{}()));
    std::filesystem::create_directories(folder_ / "QVCOMMON");
    const std::u16string root = folder_.u16string();
    app_.DataRoot = Text(root.begin(), root.end());
    app_.ScheduleFilePath = app_.CommonFile(u"scheduleData.txt");

    std::string bytes(base::kUtf16Bom);
    bytes += base::EncodeUtf16Le(u"0\r\n");
    for (int i = 1; i <= records; ++i) {
      const Text no = base::FromNumber(i);
      bytes += base::EncodeUtf16Le(
          // A record as the file holds it, field after field.
          // clang-format off
          base::Join({no, u"Set " + no, u"03-25-2013 6:41:00", u"03-18-2013 15:02:33",
                      u"My Corvane/", u"3", u"2", u"1", u"someone@example.com", u"", u"", u"",
                      u"0", u"1", u"3", u"2013032506" + base::PadLeft(base::FromNumber(i % 60), 2, u'0'),
                      u"jsmith", u"1", u"0", u"1234567"},
                     // clang-format on
                     jobstore::kSeparator) +
          u"\r\n");
    }
    original_ = bytes;
    Reset();
  }
  ~Store() {
    std::error_code ec;
    std::filesystem::remove_all(folder_, ec);
  }

  // The schedule as generated and an empty trace, so runs do not grow the disk.
  void Reset() {
    services_.fs.WriteAll(app_.ScheduleFilePath, original_);
    services_.fs.DeleteFile(app_.CommonFile(u"SerTraceFile.txt"));
  }
  frame::AppState& App() { return app_; }

 private:
  bench::PortableBundle services_;
  frame::AppState app_;
  std::filesystem::path folder_;
  std::string original_;
};

void BM_Load(benchmark::State& state) {
  Store store(static_cast<int>(state.range(0)));
  auto& app = store.App();
  for (auto _ : state) {
    long next = jobstore::DB_ReadSchdata(app, Text(), app.Jobs, false);
    benchmark::DoNotOptimize(next);
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void BM_Update(benchmark::State& state) {
  Store store(static_cast<int>(state.range(0)));
  auto& app = store.App();
  jobstore::DB_ReadSchdata(app, Text(), app.Jobs, false);
  jobstore::ScheduleRecord r = app.Jobs[app.Jobs.size() / 2];
  for (auto _ : state) {
    static_cast<void>(jobstore::DB_WriteSchdata(app, r, false));
    state.PauseTiming();
    store.Reset();
    state.ResumeTiming();
  }
}

void BM_NewNumber(benchmark::State& state) {
  Store store(static_cast<int>(state.range(0)));
  auto& app = store.App();
  for (auto _ : state) benchmark::DoNotOptimize(jobstore::DB_GetNewSchRecordNo(app, 0));
}

// What one save costs: load the list, then replace a record (a full rewrite).
void BM_LoadAndRewrite(benchmark::State& state) {
  Store store(static_cast<int>(state.range(0)));
  auto& app = store.App();
  for (auto _ : state) {
    jobstore::DB_ReadSchdata(app, Text(), app.Jobs, false);
    jobstore::ScheduleRecord r = app.Jobs.front();
    static_cast<void>(jobstore::DB_WriteSchdata(app, r, false));
    state.PauseTiming();
    store.Reset();
    state.ResumeTiming();
  }
}

}  // namespace

BENCHMARK(BM_Load)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Update)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_NewNumber)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_LoadAndRewrite)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
