// Manage Scheduled Jobs and Backup Now on real windows, beside the simulated engine:
// opened from the tray menu, the rows of the file, the running job's status, its stop
// reaching the file and the engine (what run now and delete write is the job actions'
// unit tests'; the refused-writes test presses them on real windows), Backup Now's record
// (run now's write) taken by the engine; the schedule editor opened by a double click on a row, a
// weekly job made hourly, and the editor's save killed at each step.
#include <filesystem>

#include "JobScreens.h"

namespace e2e {
namespace {

TEST_F(JobScreensTest, TheJobListShowsTheRunningJobAndItsStopReachesTheEngine) {
  Schedule(L"0", {LaterJob(), LaterJob(L"4", L"Photos"), DailyJob()});
  // A file takes four seconds and the job far longer than the screens below, however
  // slowly they come: only the stop ends it.
  Scenario({L"files = 100", L"steps = 4", L"step_ms = 1000"});
  ASSERT_NE(OpenMonitor(L"Min"), nullptr);

  // The job due runs, and the list (the file's rows; how each cell is made is the screen's
  // unit tests') says so.
  ASSERT_TRUE(WaitForSimLine(L"job 7 Pictures starts"));
  HWND screen = OpenJobList();
  ASSERT_NE(screen, nullptr);
  HWND list = FindByName(screen, L"Sch_list_lv");
  ASSERT_TRUE(
      WaitUntil([&] { return RowCount(list) == 3 && CellText(list, 2, 3) == L"In Progress"; }));
  Shot("job-list-in-progress");

  // Stop on the running row: "2", and the engine ends after the file under way.
  ASSERT_TRUE(SelectRow(list, 2));
  Press(screen, L"Pic_Sttrf");
  HWND ask = WaitForBox(L"A scheduled job is in progress.");
  ASSERT_NE(ask, nullptr);
  EXPECT_EQ(Word(), L"1");
  Answer(ask, 0);
  HWND told = WaitForBox(L"The scheduled job will stop shortly.");
  ASSERT_NE(told, nullptr);
  Answer(told, 0);
  // The word is not read back here: by the time the box is seen the engine may have
  // taken the "2" up after its file and written "0". Only the monitor writes "2", so the
  // engine stopping on it is the proof that it was written.
  ASSERT_TRUE(WaitForSimLine(L"stop word seen after file"));
  ASSERT_TRUE(WaitForSimLine(L"job 7 stopped"));

  Close(screen);
}

// Record 3: a weekly job (Wednesdays at 6:15) whose next run is far away.
std::wstring WeeklyJob() {
  return Job(L"3", L"Documents", L"01-07-2099 6:15:00", L"4", L"209901070615", L"4");
}

void PostKey(HWND w, WORD vk) {
  Post(w, WM_KEYDOWN, vk, 1);
  Post(w, WM_KEYUP, vk, static_cast<LPARAM>(0xC0000001));
}

// A double click on the weekly job's row opens the editor on it; made hourly at the next
// minute and closed with the main button, the job's line changes as the rules say, the
// other lines stay as they were, the list shows it, and the engine runs it then.
TEST_F(JobScreensTest, DoubleClickEditsAWeeklyJobIntoAnHourlyOne) {
  SYSTEMTIME now{};
  GetLocalTime(&now);
  // At 23:59 the next minute is tomorrow's, which the hourly rule counts as passed.
  if (now.wHour == 23 && now.wMinute == 59) Sleep((61 - now.wSecond) * 1000u);
  const std::wstring music = LaterJob(), weekly = WeeklyJob(), photos = LaterJob(L"4", L"Photos");
  Schedule(L"0", {music, weekly, photos});
  ASSERT_NE(OpenMonitor(L"Min"), nullptr);
  HWND screen = OpenJobList();
  ASSERT_NE(screen, nullptr);
  HWND list = FindByName(screen, L"Sch_list_lv");
  ASSERT_TRUE(WaitUntil([&] { return RowCount(list) == 3; }));

  HWND editor = OpenEditorOn(list, 1);
  ASSERT_NE(editor, nullptr);
  HWND picker = FindByName(editor, L"DTPicker");
  ASSERT_NE(picker, nullptr);
  // The editor stands on the job of the row: its time (what else it shows is its unit
  // tests').
  auto shown = PickerTime(picker);
  ASSERT_TRUE(shown.has_value());
  EXPECT_EQ(shown->wHour * 100 + shown->wMinute, 615);
  Shot("editor-weekly");

  ASSERT_NO_FATAL_FAILURE(MakeHourly(editor));
  // The new frequency brought a suggested start time: the arrow keys go from there.
  shown = PickerTime(picker);
  ASSERT_TRUE(shown.has_value());

  // The new time: the next minute, set on the picker's fields with the arrow keys (the
  // hour field takes a click at its left end).
  GetLocalTime(&now);
  now.wSecond = 0;
  now.wMilliseconds = 0;
  const SYSTEMTIME at = AddMinutes(now, 1);
  RECT box{};
  GetClientRect(picker, &box);
  const LPARAM hourField = MAKELPARAM(6, box.bottom / 2);
  ASSERT_TRUE(Post(picker, WM_LBUTTONDOWN, MK_LBUTTON, hourField));
  ASSERT_TRUE(Post(picker, WM_LBUTTONUP, 0, hourField));
  for (int i = 0; i < (at.wHour - shown->wHour + 24) % 24; ++i) PostKey(picker, VK_UP);
  PostKey(picker, VK_RIGHT);
  for (int i = 0; i < (at.wMinute - shown->wMinute + 60) % 60; ++i) PostKey(picker, VK_UP);
  EXPECT_TRUE(WaitUntil([&] {
    auto t = PickerTime(picker);
    return t && t->wHour == at.wHour && t->wMinute == at.wMinute && t->wSecond == 0;
  })) << "the picker did not take "
      << at.wHour << ":" << at.wMinute;
  Shot("editor-hourly");

  Press(editor, L"Sch_Start4_Next");
  ASSERT_TRUE(WaitUntil([&] { return !IsWindow(editor) || !IsWindowVisible(editor); }))
      << "the main button left the editor open";

  // The file: the other jobs' lines as they were, in their place; the job hourly at the
  // time the picker took (the rest of the hourly rule is the editor's unit tests').
  const Lines file = ScheduleLines();
  ASSERT_EQ(file.size(), 4u);
  EXPECT_EQ(file, (Lines{L"0", music, file[2], photos}));
  const auto after = Fields(file[2]);
  ASSERT_EQ(after.size(), 20u) << Utf8(file[2]);
  EXPECT_EQ(after[0], L"3");
  EXPECT_EQ(after[2], FileDate(at));
  EXPECT_EQ(after[19], L"Hourly");

  // Back on the list, which reads the file again.
  ASSERT_TRUE(WaitUntil([&] { return CellText(list, 1, 8) == L"Hourly"; }));
  EXPECT_EQ(CellText(list, 1, 5), SortKey(at));
  Shot("list-after-save");
  Close(screen);

  // The engine runs the job at its new time, not before, and keeps it hourly.
  ASSERT_TRUE(WaitForSimLine(L"job 3 Documents starts", Ms{150000}));
  SYSTEMTIME seen{};
  GetLocalTime(&seen);
  EXPECT_GE(SortKey(seen), SortKey(at));
  EXPECT_TRUE(WaitForSimLine(L"job 3 next " + FileDate(AddMinutes(at, 60))));
}

// Backup Now from the tray: the sets of the file, one chosen, its record waits in the
// schedule while a slow job keeps the engine busy, and the engine takes it next. (The
// plug-in refusal, the second Backup Now and the relative-path mode are the screen's
// unit tests.)
TEST_F(JobScreensTest, BackupNowAddsARecordTheEngineTakesNext) {
  Schedule(L"0", {DailyJob(), LaterJob()});
  Scenario({L"files = 6", L"steps = 4", L"step_ms = 1000"});
  ASSERT_TRUE(
      WriteUtf16File(Folder().CommonFile(L"qvwin.ini"), {L"[Corvane]", L"UserName=jsmith"}));
  ASSERT_TRUE(WriteUtf16File(Folder().CommonFile(L"BacksetData.txt"),
                             {L"Documents\b1", L"QVSQLServerBksetPay\b1"}));
  ASSERT_NE(OpenMonitor(L"Min"), nullptr);
  ASSERT_TRUE(WaitForSimLine(L"job 7 Pictures starts"));

  TrayItem(3);
  HWND screen = WaitForScreen(L"LstBackupSet");
  ASSERT_NE(screen, nullptr) << "Backup Now opened nothing";
  HWND list = FindByName(screen, L"LstBackupSet");
  ASSERT_TRUE(WaitUntil([&] { return RowCount(list) == 2; }));
  Shot("backup-now-mirror");
  ASSERT_TRUE(SelectRow(list, 0));
  Press(screen, L"lbl_cmdBackupNow");
  HWND done = WaitForBox(L"You have successfully set up an immediate backup");
  ASSERT_NE(done, nullptr);
  Answer(done, 0);
  EXPECT_TRUE(WaitForSimLine(L"job 1 Documents starts", Ms{90000}));
}

int Temporaries(const std::filesystem::path& folder) {
  int n = 0;
  std::error_code ec;
  for (const auto& entry : std::filesystem::directory_iterator(folder, ec))
    if (entry.path().extension() == L".qvtmp") ++n;
  return n;
}

// The monitor stopped at one step of the editor's save (QV_WRITE_PAUSE) and ended there
// with TerminateProcess: before the replace the schedule is the old bytes and the
// temporary file lies beside it, after it the schedule is the saved one; the next start
// removes the temporary file and leaves the schedule alone.
TEST_F(JobScreensTest, KilledAtEachStepOfTheEditorsSave) {
  const std::wstring music = LaterJob(), weekly = WeeklyJob(), photos = LaterJob(L"4", L"Photos");
  const struct {
    const wchar_t* step;
    const wchar_t* file;
    bool replaced;
  } points[] = {{L"written", L"scheduleData.txt.qvtmp", false},
                {L"replacing", L"scheduleData.txt", false},
                {L"replaced", L"scheduleData.txt", true}};
  const auto schedule = Folder().CommonFile(L"scheduleData.txt");
  const auto marker = Folder().Root() / L"paused";
  for (const auto& point : points) {
    SCOPED_TRACE(Utf8(point.step));
    Schedule(L"0", {music, weekly, photos});
    const std::string old = FileBytes(schedule);
    std::filesystem::remove(marker);
    const std::wstring pause =
        std::wstring(point.step) + L"|" + point.file + L"|" + marker.wstring();
    SetEnvironmentVariableW(L"QV_WRITE_PAUSE", pause.c_str());
    HWND monitor = OpenMonitor(L"Min");
    SetEnvironmentVariableW(L"QV_WRITE_PAUSE", nullptr);
    ASSERT_NE(monitor, nullptr);

    HWND screen = OpenJobList();
    ASSERT_NE(screen, nullptr);
    HWND list = FindByName(screen, L"Sch_list_lv");
    ASSERT_TRUE(WaitUntil([&] { return RowCount(list) == 3; }));
    HWND editor = OpenEditorOn(list, 1);
    ASSERT_NE(editor, nullptr);
    ASSERT_NO_FATAL_FAILURE(MakeHourly(editor));
    Press(editor, L"Sch_Start4_Next");
    ASSERT_TRUE(WaitUntil([&] { return std::filesystem::exists(marker); }, Ms{20000}))
        << "the save never reached the step";
    TerminateProcessesUnder(Folder().Root());

    const std::string got = FileBytes(schedule);
    if (point.replaced) {
      const Lines file = ScheduleLines();
      ASSERT_EQ(file.size(), 4u);
      EXPECT_EQ(file, (Lines{L"0", music, file[2], photos}));
      const auto fields = Fields(file[2]);
      ASSERT_EQ(fields.size(), 20u);
      EXPECT_EQ(fields[19], L"Hourly");
      EXPECT_EQ(Temporaries(Folder().Common()), 0);
    } else {
      EXPECT_EQ(got, old) << "the schedule changed before its replace";
      EXPECT_EQ(Temporaries(Folder().Common()), 1);
    }

    // The next start clears up what the killed one left, and only that (its trace alone
    // tells when it has).
    std::filesystem::remove(Folder().Trace());
    ASSERT_NE(StartAndWait(L"Min"), nullptr);
    if (!point.replaced) {
      EXPECT_TRUE(
          WaitForTraceLine(Folder(), L"Removed 1 unfinished write(s) left by an earlier run."));
    }
    EXPECT_EQ(Temporaries(Folder().Common()), 0);
    EXPECT_EQ(FileBytes(schedule), got);
    TerminateProcessesUnder(Folder().Root());
  }
}

}  // namespace
}  // namespace e2e
