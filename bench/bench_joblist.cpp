// The job list's refresh (what Timer1 does every minute and every action repeats): the
// schedule loaded from the real disk and the rows of Manage Scheduled Jobs built from
// it, alone and mirrored into the screen's list view, for 10, 100 and 1,000 jobs.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <random>

#include "base/Utf16.h"
#include "frame/AppState.h"
#include "jobs/JobListRules.h"
#include "jobs/frmManageScheduledJobs.h"
#include "jobstore/DBaction.h"
#include "kit/ScriptedUi.h"
#include "PortableBundle.h"

namespace {

using base::Text;

class Schedule {
 public:
  explicit Schedule(int records) : app_(services_.platform) {
    folder_ = std::filesystem::temp_directory_path() /
              ("qv-bench-joblist-" + std::to_string(std::random_device{}()));
    std::filesystem::create_directories(folder_ / "QVCOMMON");
    const std::u16string root = folder_.u16string();
    app_.DataRoot = Text(root.begin(), root.end());
    app_.ProgramFolder = app_.DataRoot;
    app_.ScheduleFilePath = app_.CommonFile(u"scheduleData.txt");
    std::string bytes(base::kUtf16Bom);
    bytes += base::EncodeUtf16Le(u"1\r\n");  // a job runs: one row gets its status
    for (int i = 1; i <= records; ++i) {
      const Text no = base::FromNumber(i);
      const Text minute = base::PadLeft(base::FromNumber(i % 60), 2, u'0');
      bytes += base::EncodeUtf16Le(base::Join({no,
                                               u"Set " + no,
                                               u"03-25-2013 6:" + minute + u":00",
                                               u"03-18-2013 15:02:33",
                                               u"My Corvane/",
                                               base::FromNumber(1 + i % 7),
                                               u"2",
                                               u"1",
                                               u"someone@example.com",
                                               u"",
                                               u"",
                                               u"",
                                               u"0",
                                               u"1",
                                               u"3",
                                               u"2013032506" + minute,
                                               u"jsmith",
                                               u"1",
                                               u"0",
                                               u"23456"},
                                              jobstore::kSeparator) +
                                   u"\r\n");
    }
    services_.fs.WriteAll(app_.ScheduleFilePath, bytes);
  }
  ~Schedule() {
    std::error_code ec;
    std::filesystem::remove_all(folder_, ec);
  }
  frame::AppState& App() { return app_; }

 private:
  bench::PortableBundle services_;
  frame::AppState app_;
  std::filesystem::path folder_;
};

// The load alone, for comparison: what the job store's reading costs of the refresh.
void BM_LoadOnly(benchmark::State& state) {
  Schedule schedule(static_cast<int>(state.range(0)));
  jobs::JobList list;
  for (auto _ : state) jobs::LoadJobs(schedule.App(), list);
}

// Load and fill, the rules alone.
void BM_RefreshRows(benchmark::State& state) {
  Schedule schedule(static_cast<int>(state.range(0)));
  jobs::JobList list;
  for (auto _ : state) {
    jobs::RefreshListView(schedule.App(), list);
    benchmark::DoNotOptimize(list.rows.data());
  }
  if (list.Count() != state.range(0)) state.SkipWithError("the list lost rows");
}

// The screen's Timer1: load, fill and the rows mirrored into the list view.
void BM_RefreshScreen(benchmark::State& state) {
  Schedule schedule(static_cast<int>(state.range(0)));
  kit::ScriptedUi ui;
  jobs::frmManageScheduledJobs form(schedule.App(), ui);
  ui.Show(form);
  for (auto _ : state) form.Timer1_Timer();
  if (form.Sch_list_lv.Count() != state.range(0)) state.SkipWithError("the list lost rows");
}

BENCHMARK(BM_LoadOnly)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RefreshRows)->Arg(10)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RefreshScreen)->Arg(10)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);

}  // namespace
