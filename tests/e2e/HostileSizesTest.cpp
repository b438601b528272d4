// Sizes no user means to make, against the running monitor beside the simulated engine:
// one progress call whose file name is a megabyte, a job-end request whose set name is a
// megabyte, and a valid schedule of 200,000 records (50 MB) opened in Manage Scheduled
// Jobs. Throughout each, a watcher asks the monitor window for WM_NULL every 100 ms: the
// window must answer every one within 2 s.
#include <windows.h>
#include <commctrl.h>
#include <objbase.h>
#include <oleauto.h>
#include <psapi.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <thread>

#include "EngineSupport.h"
#include "JobScreens.h"
#include "QVMonitor_h.h"

namespace e2e {
namespace {

using Clock = std::chrono::steady_clock;

constexpr wchar_t kMonitorClsid[] = L"{1984E5BD-394A-449B-A09A-6648BCB1AF6F}";
constexpr Ms kAnswerLimit{2000};
constexpr size_t kMegabyte = 1u << 20;

// Asks a window for WM_NULL again and again on a thread of its own, and keeps the
// longest wait for an answer and the largest working set of the
// window's process.
class Watcher {
 public:
  explicit Watcher(HWND window) : window_(window) {
    DWORD pid = 0;
    GetWindowThreadProcessId(window, &pid);
    process_.Reset(OpenProcess(PROCESS_QUERY_INFORMATION | PROCESS_VM_READ, FALSE, pid));
    thread_ = std::thread([this] { Run(); });
  }
  ~Watcher() { Stop(); }
  void Stop() {
    stop_ = true;
    if (thread_.joinable()) thread_.join();
    process_.Reset();
  }
  double PeakWorkingSetMb() const { return peakWorkingSet_ / 1048576.0; }
  // The window answered every question, and each within the limit.
  void ExpectAnswered(const char* what) const {
    std::printf("%s: %d asked, %d unanswered, longest wait %lld ms, peak working set %.1f MB\n",
                what, asked_.load(), unanswered_.load(), longest_.load(), PeakWorkingSetMb());
    EXPECT_GT(asked_.load(), 10);
    EXPECT_EQ(unanswered_.load(), 0);
    EXPECT_LT(longest_.load(), kAnswerLimit.count());
  }

 private:
  void Run() {
    while (!stop_) {
      const auto start = Clock::now();
      DWORD_PTR result = 0;
      const bool answered =
          SendMessageTimeoutW(window_, WM_NULL, 0, 0, SMTO_NORMAL,
                              static_cast<UINT>(kAnswerLimit.count()), &result) != 0;
      const long long waited = std::chrono::duration_cast<Ms>(Clock::now() - start).count();
      ++asked_;
      if (!answered) ++unanswered_;
      if (waited > longest_) longest_ = waited;
      PROCESS_MEMORY_COUNTERS m{};
      if (process_ && GetProcessMemoryInfo(process_.Get(), &m, sizeof(m)))
        peakWorkingSet_ = std::max<size_t>(peakWorkingSet_, m.WorkingSetSize);
      Sleep(100);
    }
  }

  HWND window_;
  platform::win32::UniqueHandle process_;
  std::thread thread_;
  std::atomic<bool> stop_{false};
  std::atomic<long long> longest_{0};
  std::atomic<int> unanswered_{0};
  std::atomic<int> asked_{0};
  std::atomic<size_t> peakWorkingSet_{0};
};

std::wstring Unwrapped(std::wstring text) {
  text.erase(
      std::remove_if(text.begin(), text.end(), [](wchar_t c) { return c == L'\r' || c == L'\n'; }),
      text.end());
  return text;
}

std::wstring Doubled(const std::wstring& text) {
  std::wstring out;
  for (wchar_t c : text) {
    out += c;
    if (c == L'&') out += c;
  }
  return out;
}

using HostileSizesTest = EngineMonitorTest;

TEST_F(HostileSizesTest, AProgressCallWithAMegabyteFileNameIsDrawnWrappedWithoutAFreeze) {
  Schedule(L"0");
  ASSERT_NO_FATAL_FAILURE(StartServingMonitor());
  // Folders of a name with "&" in it, down to a megabyte.
  std::wstring name = L"C:\\Data\\";
  while (name.size() < kMegabyte) name += L"Tom & Jerry folder\\";
  name += L"end.bin";

  // The window open from the tray, so that the label is drawn too.
  ASSERT_TRUE(PostTrayMouse(main_, WM_LBUTTONDBLCLK));
  ASSERT_TRUE(WaitForVisible(main_, true));
  ASSERT_TRUE(SUCCEEDED(CoInitializeEx(nullptr, COINIT_MULTITHREADED)));
  {
    CLSID clsid{};
    ASSERT_EQ(CLSIDFromString(kMonitorClsid, &clsid), S_OK);
    platform::win32::ComPtr<_IMonitor> monitor;
    ASSERT_EQ(
        CoCreateInstance(clsid, nullptr, CLSCTX_LOCAL_SERVER, IID__IMonitor, monitor.OutVoid()),
        S_OK);
    Watcher watcher(main_);
    using platform::win32::UniqueBstr;
    UniqueBstr file(SysAllocStringLen(name.data(), static_cast<UINT>(name.size())));
    UniqueBstr rate(SysAllocString(L"1 MB/s"));
    UniqueBstr elapsed(SysAllocString(L"00:00:10"));
    UniqueBstr left(SysAllocString(L"00:01:00"));
    // The call takes them by pointer; the holders keep them.
    BSTR fileArg = file.Get(), rateArg = rate.Get(), elapsedArg = elapsed.Get(),
         leftArg = left.Get();
    double size = 3e6, total = 6e6, done = 1e6, totalDone = 2e6;
    short fileProg = 33, totalProg = 33, engine = 1, pre = 0;
    float started = 0;
    VARIANT result;
    VariantInit(&result);
    EXPECT_EQ(monitor->UpdateMonitor(&fileArg, &size, &total, &done, &totalDone, &rateArg,
                                     &fileProg, &totalProg, &started, &elapsedArg, &leftArg,
                                     &engine, &pre, 1, &result),
              S_OK);
    Tick();
    std::wstring shown;
    EXPECT_TRUE(WaitUntil(
        [&] {
          shown = Text(main_, L"txtRsyncFileName1");
          return shown.size() > kMegabyte;
        },
        Ms{20000}));
    Shot("megabyte-file-name");
    // A tick of the timer after it, with the same stored call.
    Sleep(11000);
    watcher.Stop();
    watcher.ExpectAnswered("megabyte file name");
    // The label: the kind in front, "&" doubled, broken into lines by width.
    // Compared whole, told by sizes: a megabyte in a failure message helps nobody.
    const std::wstring expected = L"[Full Backup] " + Doubled(name);
    EXPECT_TRUE(Unwrapped(shown) == expected)
        << "shown " << Unwrapped(shown).size() << " units, expected " << expected.size()
        << "; shown starts " << Utf8(shown.substr(0, 80));
    EXPECT_GT(std::count(shown.begin(), shown.end(), L'\n'), 1000);
  }
  CoUninitialize();
}

TEST_F(HostileSizesTest, AJobEndRequestWithAMegabyteSetNameOpensTheNoticeWithoutAFreeze) {
  Schedule(L"0");
  ASSERT_NO_FATAL_FAILURE(StartServingMonitor());
  std::wstring set;
  while (set.size() < kMegabyte) set += L"Photos & Music ";
  ASSERT_TRUE(WriteUtf16File(Folder().CommonFile(L"qvwincurjobname.txt"), {set, L"5", L"jsmith"}));

  Watcher watcher(main_);
  Tick();
  auto notice = WaitForWindow(WindowQuery{kJobNoticeTitle, kMonitorClass, pid_, true}, Ms{20000});
  if (notice) Shot("megabyte-set-name");
  Sleep(notice ? 11000 : 0);  // and the next tick of the timer
  watcher.Stop();
  ASSERT_TRUE(notice) << "no notification";
  watcher.ExpectAnswered("megabyte set name");
  EXPECT_FALSE(std::filesystem::exists(Folder().CommonFile(L"qvwincurjobname.txt")));
  const std::wstring shown = Text(notice->hwnd, L"bkupjobname");
  EXPECT_TRUE(Unwrapped(shown) == Doubled(set))
      << "shown " << Unwrapped(shown).size() << " units, expected " << Doubled(set).size()
      << "; shown starts " << Utf8(shown.substr(0, 80));
  EXPECT_NE(shown.find(L"\r\n"), std::wstring::npos) << "not wrapped";
}

// One record of the demo data's form, far in the future so that the engine leaves it.
std::wstring DemoRecord(int no) {
  const std::wstring n = std::to_wstring(no);
  const std::wstring minute = (no % 60 < 10 ? L"0" : L"") + std::to_wstring(no % 60);
  // clang-format off
  return Record({n, L"Documents " + n, L"01-02-2099 6:" + minute + L":00", L"11-20-2026 9:15:00",
                 L"My Corvane/", L"3", L"2", L"1", L"demo.user@example.com", L"", L"", L"", L"0",
                 L"1", L"3", L"2099010206" + minute, L"jsmith", L"1", L"0", L"1234567"});
  // clang-format on
}

TEST_F(HostileSizesTest, TheJobListOpensTwoHundredThousandRecordsInTenSeconds) {
  constexpr int kRecords = 200000;
  std::error_code ec;
  std::filesystem::create_directories(Folder().Common(), ec);
  {
    std::wstring text =
        L"\xFEFF"
        L"0\r\n";
    text.reserve(size_t{52} << 20);
    for (int i = 1; i <= kRecords; ++i) text += DemoRecord(i) + L"\r\n";
    std::ofstream out(Folder().CommonFile(L"scheduleData.txt"), std::ios::binary);
    out.write(reinterpret_cast<const char*>(text.data()),
              static_cast<std::streamsize>(text.size() * sizeof(wchar_t)));
    ASSERT_TRUE(out.good());
  }
  const auto bytes = std::filesystem::file_size(Folder().CommonFile(L"scheduleData.txt"));
  ASSERT_GT(bytes, size_t{48} << 20);

  ASSERT_NO_FATAL_FAILURE(StartServingMonitor());
  Watcher watcher(main_);
  ASSERT_TRUE(PostTrayMouse(main_, WM_RBUTTONUP));
  ASSERT_TRUE(ChooseMenuItemByArrows(pid_, 5));
  const auto chosen = Clock::now();
  HWND list = nullptr;
  const bool filled = WaitUntil(
      [&] {
        for (const WindowInfo& w : FindTopLevel(WindowQuery{L"", kMonitorClass, pid_, true}))
          if (w.hwnd != main_ && list == nullptr) list = FindByName(w.hwnd, L"Sch_list_lv");
        return list != nullptr && RowCount(list) == kRecords;
      },
      Ms{60000}, Ms{100});
  const auto opened = std::chrono::duration_cast<Ms>(Clock::now() - chosen);
  if (filled) Shot("job-list-200000");
  Sleep(2000);  // it goes on answering once open
  watcher.Stop();
  std::printf("opened in %lld ms\n", static_cast<long long>(opened.count()));
  ASSERT_TRUE(filled) << "the list has " << (list ? RowCount(list) : -1) << " rows";
  EXPECT_LT(opened.count(), 10000);
  EXPECT_LT(watcher.PeakWorkingSetMb(), 200.0);
  watcher.ExpectAnswered("job list of 200,000 records");
  // The rows are the file's, in its order, to the last.
  EXPECT_EQ(CellText(list, 0, 0), L"Documents 1");
  EXPECT_EQ(CellText(list, kRecords - 1, 0), L"Documents 200000");
}

}  // namespace
}  // namespace e2e
