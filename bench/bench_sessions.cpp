// The Session Log's listing on folders of 1,000, 10,000 and 100,000 session files:
// the walk (each name's kind checked and its key computed) and the order, newest first,
// with the names in the order the file system gives them (by name, as NTFS does) and
// in the reverse. Beside it, the design's insertion into a sorted array on the same
// names (10,000, both orders): what the listing once cost. And one page of 50 rows
// put on the list, which is all the list control ever holds.
//
// The folder is in memory (a file system that answers the listing from a prepared
// vector), so the figures are the listing's own cost, not the disk's.
#include <benchmark/benchmark.h>

#include <algorithm>

#include "base/DateTime.h"
#include "frame/AppState.h"
#include "kit/Form.h"
#include "kit/ListView.h"
#include "platform/fake/FakePlatform.h"
#include "sessions/SessionFiles.h"
#include "sessions/SessionPager.h"
#include "testkit/SessionInsertion.h"

namespace {

using base::Text;

// A session folder that only lists.
class ListingOnly : public platform::FakeFileSystem {
 public:
  bool FolderExists(const Text&) override { return true; }
  std::vector<platform::FileEntry> List(const Text&, const Text&) override { return entries; }
  std::vector<platform::FileEntry> entries;
};

// `count` sessions, one every 47 minutes back from the end of 2026, of the kinds an
// engine writes most, listed as NTFS lists them (by name, without regard to case) or
// in the reverse of that.
std::vector<platform::FileEntry> Folder(int count, bool reverse) {
  static const char16_t* const kWords[] = {u"Schedule", u"Schedule", u"Schedule", u"Backup",
                                           u"Restore",  u"Sync",     u"Delete"};
  std::vector<platform::FileEntry> entries;
  base::DateTime when{2026, 12, 31, 23, 0, 0};
  auto two = [](int v) { return base::PadLeft(base::FromNumber(v), 2, u'0'); };
  for (int i = 0; i < count; ++i) {
    when = when.AddMinutes(-47);
    platform::FileEntry e;
    e.name = Text(kWords[i % 7]) + u" " + two(when.month) + u"-" + two(when.day) + u"-" +
             base::FromNumber(when.year) + u"  " + two(when.hour) + u"-" + two(when.minute) + u"-" +
             two(when.second) + u".txt";
    entries.push_back(std::move(e));
  }
  std::sort(entries.begin(), entries.end(), [](const auto& a, const auto& b) {
    return base::ToLower(a.name) < base::ToLower(b.name);
  });
  if (reverse) std::reverse(entries.begin(), entries.end());
  return entries;
}

struct Program {
  explicit Program(int count, bool reverse) : app(platform.Get()) {
    platform.Get().fs = &folder;
    folder.entries = Folder(count, reverse);
    app.DataRoot = u"C:\\QV";
  }
  platform::FakePlatform platform;
  ListingOnly folder;
  frame::AppState app;
};

void BM_ListSessionFiles(benchmark::State& state) {
  Program p(static_cast<int>(state.range(0)), state.range(1) != 0);
  for (auto _ : state) {
    std::vector<Text> names = sessions::ListSessionFiles(p.app);
    benchmark::DoNotOptimize(names.data());
  }
  state.SetLabel(state.range(1) ? "reverse order" : "file-system order");
}
BENCHMARK(BM_ListSessionFiles)
    ->ArgsProduct({{1000, 10000, 100000}, {0, 1}})
    ->Unit(benchmark::kMillisecond);

// The two halves of the listing on 100,000 names: the walk (kinds and keys) and the order.
void BM_Walk(benchmark::State& state) {
  Program p(static_cast<int>(state.range(0)), false);
  for (auto _ : state) benchmark::DoNotOptimize(sessions::WalkSessionFolder(p.app, {}).data());
}
BENCHMARK(BM_Walk)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

void BM_NewestFirst(benchmark::State& state) {
  Program p(static_cast<int>(state.range(0)), false);
  const std::vector<sessions::SessionEntry> walked = sessions::WalkSessionFolder(p.app, {});
  for (auto _ : state) benchmark::DoNotOptimize(sessions::NewestFirst(walked).data());
}
BENCHMARK(BM_NewestFirst)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

// The design's plain insertion on the same walk.
void BM_DesignInsertion(benchmark::State& state) {
  Program p(static_cast<int>(state.range(0)), state.range(1) != 0);
  for (auto _ : state) {
    std::vector<Text> names = testkit::InsertionNewestFirst(sessions::WalkSessionFolder(p.app, {}));
    benchmark::DoNotOptimize(names.data());
  }
  state.SetLabel(state.range(1) ? "reverse order" : "file-system order");
}
BENCHMARK(BM_DesignInsertion)->ArgsProduct({{10000}, {0, 1}})->Unit(benchmark::kMillisecond);

// One page of 50 rows built on the list and sorted, from 100,000 names in memory.
void BM_ShowPage(benchmark::State& state) {
  Program p(100000, false);
  const std::vector<Text> names = sessions::ListSessionFiles(p.app);
  kit::Form holder(u"frmSessionLog");
  kit::ListView list(holder, u"LstSessionLogView", {});
  sessions::SetUpSessionList(list);
  sessions::SessionPager pager;
  sessions::PageStep step = pager.Load(static_cast<int>(names.size()));
  for (auto _ : state) {
    sessions::ShowPage(p.app, list, names, step);
    benchmark::DoNotOptimize(list.Count());
  }
}
BENCHMARK(BM_ShowPage)->Unit(benchmark::kMicrosecond);

}  // namespace
