// The real monitor on a full disk, beside the simulated engine: every action that writes
// shows its failure or goes back to what is stored, no file changes by a byte, and the
// monitor keeps answering; with space again the same actions go through.
// Run only from full-disk-e2e.sh, which mounts the small disk and links it in as the
// program folder's QVCOMMON: it is its own program, outside the discovered tests.
#include <cstdlib>
#include <map>

#include "JobScreens.h"

namespace e2e {
namespace {

bool Holds(const std::string& bytes, const std::string& ascii) {
  std::string wide;
  for (char c : ascii) wide += std::string{c, 0};
  return bytes.find(ascii) != std::string::npos || bytes.find(wide) != std::string::npos;
}

// Every file of the data folder and its bytes, but for the filler and the trace (whose
// appends may still fit in the last page the disk gave it; it is checked for whole lines).
std::map<std::wstring, std::string> FolderBytes(const std::filesystem::path& folder,
                                                const std::wstring& except) {
  std::map<std::wstring, std::string> files;
  std::error_code ec;
  for (const auto& entry : std::filesystem::directory_iterator(folder, ec)) {
    const std::wstring name = entry.path().filename().wstring();
    if (entry.is_regular_file(ec) && name != except && name != L"SerTraceFile.txt")
      files[name] = FileBytes(entry.path());
  }
  return files;
}

// Writes `path` until the disk refuses more; true when it was refused.
bool FillDisk(const std::filesystem::path& path) {
  platform::win32::UniqueHandle file(CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr,
                                                 CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file) return false;
  const HANDLE h = file.Get();
  std::string block(4096, 'x');
  DWORD put = 0;
  bool refused = false;
  for (int i = 0; i < 4096 && !refused; ++i)
    refused = !WriteFile(h, block.data(), static_cast<DWORD>(block.size()), &put, nullptr) ||
              put < block.size();
  // The last few bytes, one by one.
  for (int i = 0; i < 4096 && refused; ++i)
    if (!WriteFile(h, block.data(), 1, &put, nullptr) || put == 0) break;
  return refused;
}

// The state word as the engine puts it: the same two bytes overwritten in place, which
// a full disk still allows (no new space is taken).
bool PutWordInPlace(const std::filesystem::path& schedule, wchar_t word) {
  platform::win32::UniqueHandle file(CreateFileW(schedule.c_str(), GENERIC_WRITE,
                                                 FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                                 OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file) return false;
  const HANDLE h = file.Get();
  const char bytes[2] = {static_cast<char>(word), 0};
  DWORD put = 0;
  const bool ok = SetFilePointer(h, 2, nullptr, FILE_BEGIN) == 2 &&
                  WriteFile(h, bytes, 2, &put, nullptr) && put == 2;
  return ok;
}

// True when `w` and every visible window in it have nothing left to paint.
bool NothingToPaint(HWND w) {
  if (GetUpdateRect(w, nullptr, FALSE)) return false;
  bool clean = true;
  EnumChildWindows(
      w,
      [](HWND child, LPARAM p) -> BOOL {
        if (!IsWindowVisible(child) || !GetUpdateRect(child, nullptr, FALSE)) return TRUE;
        *reinterpret_cast<bool*>(p) = false;
        return FALSE;
      },
      reinterpret_cast<LPARAM>(&clean));
  return clean;
}

class FullDiskTest : public JobScreensTest {
 protected:
  bool Answers(HWND w) {
    DWORD_PTR r = 0;
    return SendMessageTimeoutW(w, WM_NULL, 0, 0, SMTO_ABORTIFHUNG, 5000, &r) != 0;
  }
  // The screenshot once no window of the monitor has anything left to paint, and the
  // monitor has answered twice since.
  void PaintedShot(const std::string& what) {
    const bool painted = WaitUntil([&] {
      for (const WindowInfo& w : FindTopLevel(WindowQuery{L"", kMonitorClass, pid_, true}))
        if (!NothingToPaint(w.hwnd)) return false;
      return true;
    });
    EXPECT_TRUE(painted) << "a window of the monitor never painted before " << what;
    Answers(main_);
    Sleep(100);
    Answers(main_);
    Shot(what);
  }
  HWND StillThere(HWND screen) { return IsWindow(screen) && IsWindowVisible(screen) ? screen : 0; }
  int Check(HWND box) {
    DWORD_PTR state = 0;
    SendMessageTimeoutW(box, BM_GETCHECK, 0, 0, SMTO_ABORTIFHUNG, 5000, &state);
    return static_cast<int>(state);
  }
  // The knob of the bandwidth slider dragged `dx` pixels (to the left when negative).
  void DragKnob(HWND knob, int dx) {
    Post(knob, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(4, 4));
    const int step = dx < 0 ? -8 : 8;
    for (int moved = step; std::abs(moved) <= std::abs(dx); moved += step)
      Post(knob, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(static_cast<WORD>(4 + moved), 4));
    Post(knob, WM_LBUTTONUP, 0, MAKELPARAM(static_cast<WORD>(4 + dx), 4));
  }
  // Time for the monitor to take what was posted to it, and its answer after that.
  void Settle(HWND w) {
    for (int i = 0; i < 3; ++i) {
      Sleep(200);
      Answers(w);
    }
  }
  // Update Password from the tray, the account's name and `password` typed in, Apply and
  // the question answered Yes; the screen.
  HWND ApplyPassword(const std::wstring& password) {
    TrayItem(4);
    HWND form = WaitForScreen(L"txtPassword");
    EXPECT_NE(form, nullptr) << "Update Password opened nothing";
    if (form == nullptr) return nullptr;
    Type(FindByName(form, L"txtUserName"), L"goodone");
    Type(FindByName(form, L"txtPassword"), password);
    Press(form, L"cmdUpdate");
    HWND ask = WaitForBox(L"Do you want to update the password");
    EXPECT_NE(ask, nullptr) << "Apply asked nothing";
    if (ask != nullptr) Answer(ask, 0);
    return form;
  }
  void Type(HWND edit, const std::wstring& text) {
    ASSERT_NE(edit, nullptr);
    SendMessageTimeoutW(edit, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()),
                        SMTO_ABORTIFHUNG, 5000, nullptr);
  }
  int LeftOf(HWND w) {
    RECT r{};
    GetWindowRect(w, &r);
    return r.left;
  }
};

TEST_F(FullDiskTest, EveryWriteIsRefusedHonestlyAndGoesThroughWithSpaceAgain) {
  const auto root = Folder().Root();
  ASSERT_TRUE(WriteAnsiFile(root / L"want-full-disk", {L"1"}));
  ASSERT_TRUE(
      WaitUntil([&] { return std::filesystem::exists(root / L"full-disk-ready"); }, Ms{20000}))
      << "no small disk came: this test runs from full-disk-e2e.sh";
  // Shown, not minimised: the Auto-Pause box and the slider are on the monitor window.
  Process* monitor = StartAndWait(L"");
  ASSERT_NE(monitor, nullptr);
  pid_ = monitor->Pid();
  auto mainWindow = MainWindow(pid_);
  ASSERT_TRUE(mainWindow.has_value());
  main_ = mainWindow->hwnd;
  HWND screen = OpenJobList();
  ASSERT_NE(screen, nullptr);
  HWND list = FindByName(screen, L"Sch_list_lv");
  ASSERT_TRUE(WaitUntil([&] { return RowCount(list) >= 2; }));

  const auto schedule = Folder().CommonFile(L"scheduleData.txt");
  const auto filler = Folder().CommonFile(L"filler");
  ASSERT_TRUE(FillDisk(filler)) << "the disk took 16 MB: it is not the small one";
  auto before = FolderBytes(Folder().Common(), L"filler");
  const std::string traceBefore = FileBytes(Folder().Trace());
  // Nothing changed, the trace gained whole lines only, the monitor answers.
  auto unchanged = [&](const std::string& after) {
    EXPECT_EQ(FolderBytes(Folder().Common(), L"filler"), before) << "after " << after;
    const std::string trace = FileBytes(Folder().Trace());
    EXPECT_EQ(trace.substr(0, traceBefore.size()), traceBefore) << "after " << after;
    EXPECT_TRUE(trace.size() >= 4 &&
                trace.compare(trace.size() - 4, 4, std::string("\r\0\n\0", 4)) == 0)
        << "half a line in the trace after " << after;
    EXPECT_TRUE(Answers(main_)) << "after " << after;
  };
  auto refused = [&](const std::wstring& text, const std::string& shot) {
    HWND box = WaitForBox(text);
    EXPECT_NE(box, nullptr) << "no box saying " << Utf8(text);
    if (box == nullptr) return;
    PaintedShot(shot);
    Answer(box, 0);
    unchanged(shot);
  };

  ASSERT_TRUE(SelectRow(list, 0));
  Press(screen, L"Pic_Imme");
  refused(L"Unable to schedule the record immediately. Reason : ", "run-now-refused");

  ASSERT_TRUE(SelectRow(list, 0));
  Press(screen, L"Pic_Delete");
  HWND sure = WaitForBox(L"Are you sure you want to delete the scheduled record?");
  ASSERT_NE(sure, nullptr);
  Answer(sure, 0);
  refused(L"Unable to delete the record. Reason : ", "delete-refused");

  // Stop on the running job: asked, then not told that it will stop.
  ASSERT_TRUE(PutWordInPlace(schedule, L'1'));
  before = FolderBytes(Folder().Common(), L"filler");
  Press(screen, L"Pic_Refresh");
  int running = -1;
  ASSERT_TRUE(WaitUntil([&] { return (running = RowWith(list, 3, L"In Progress")) >= 0; }));
  ASSERT_TRUE(SelectRow(list, running));
  Press(screen, L"Pic_Sttrf");
  HWND ask = WaitForBox(L"A scheduled job is in progress.");
  ASSERT_NE(ask, nullptr);
  Answer(ask, 0);
  EXPECT_EQ(WaitForBox(L"The scheduled job will stop shortly.", Ms{3000}), nullptr)
      << "a stop that was never written was told as done";
  unchanged("stop");
  EXPECT_EQ(Word(), L"1");

  // Stop completely on a stop the engine did not take up: the screen waits its nine
  // seconds, the "0" cannot be written, the word stays.
  ASSERT_TRUE(PutWordInPlace(schedule, L'2'));
  before = FolderBytes(Folder().Common(), L"filler");
  ASSERT_TRUE(SelectRow(list, 0));
  Press(screen, L"Pic_Stcomp");
  Sleep(1000);
  EXPECT_TRUE(WaitUntil([&] { return Answers(screen); }, Ms{30000}));
  unchanged("stop-completely");
  EXPECT_EQ(Word(), L"2");
  ASSERT_TRUE(PutWordInPlace(schedule, L'0'));
  before = FolderBytes(Folder().Common(), L"filler");

  TrayItem(3);
  HWND backupNow = WaitForScreen(L"LstBackupSet");
  ASSERT_NE(backupNow, nullptr) << "Backup Now opened nothing";
  HWND sets = FindByName(backupNow, L"LstBackupSet");
  ASSERT_TRUE(WaitUntil([&] { return RowCount(sets) >= 1; }));
  ASSERT_TRUE(SelectRow(sets, 0));
  Press(backupNow, L"lbl_cmdBackupNow");
  refused(L"Unable to schedule the record immediately. Reason : ", "backup-now-refused");
  EXPECT_TRUE(StillThere(backupNow)) << "Backup Now closed on a failure";
  Press(backupNow, L"lbl_cmdClose");
  ASSERT_TRUE(WaitUntil([&] { return !StillThere(backupNow); }));

  // The Auto-Pause box and the slider go back to what is stored.
  HWND autoPause = FindByName(main_, L"chkbandwidth");
  HWND knob = FindByName(main_, L"PictSliderKnob1");
  ASSERT_TRUE(autoPause && knob);
  const int checked = Check(autoPause);
  ASSERT_TRUE(ClickControl(autoPause));
  Settle(main_);
  EXPECT_EQ(Check(autoPause), checked) << "the box shows a choice that was not stored";
  unchanged("auto-pause");
  const int knobAt = LeftOf(knob);
  DragKnob(knob, -60);
  Settle(main_);
  EXPECT_EQ(LeftOf(knob), knobAt) << "the slider shows a limit that was not stored";
  PaintedShot("slider-refused");
  unchanged("slider");

  // Update Password proves the account, then cannot write (the settings' copy is the
  // first write to be refused): it says why, stays open, and the earlier password stays.
  const auto store = Folder().Common() / L"goodone" / L"goodone.txt";
  const std::string storeBefore = FileBytes(store);
  ASSERT_FALSE(storeBefore.empty());
  const std::wstring password = L"Right#Pass123456";
  HWND updatePassword = ApplyPassword(password);
  ASSERT_NE(updatePassword, nullptr);
  refused(L"The new password could not be stored. Reason : ", "update-password-refused");
  EXPECT_TRUE(StillThere(updatePassword)) << "Update Password closed on a failure";
  EXPECT_EQ(FileBytes(store), storeBefore);
  PostMessageW(updatePassword, WM_CLOSE, 0, 0);
  ASSERT_TRUE(WaitUntil([&] { return !StillThere(updatePassword); }));

  ASSERT_TRUE(DoubleClickRow(list, 0));
  HWND editor = WaitForScreen(L"optHourly");
  ASSERT_NE(editor, nullptr) << "the double click opened no editor";
  HWND hourly = FindByName(editor, L"optHourly");
  ASSERT_TRUE(ClickControl(hourly));
  ASSERT_TRUE(WaitUntil([&] { return Describe(hourly).check == BST_CHECKED; }));
  Press(editor, L"Sch_Start4_Next");
  refused(L"The changes to the schedule could not be saved. Reason : ", "save-refused");
  EXPECT_TRUE(StillThere(editor)) << "the editor closed on a failure";

  // Space again: the same save goes through, and so do the box and the slider.
  ASSERT_TRUE(std::filesystem::remove(filler));
  Press(editor, L"Sch_Start4_Next");
  EXPECT_TRUE(WaitUntil([&] { return !StillThere(editor); }))
      << "the save with space again left the editor open";
  EXPECT_NE(FolderBytes(Folder().Common(), L"filler").at(L"scheduleData.txt"),
            before.at(L"scheduleData.txt"));
  ASSERT_TRUE(ClickControl(autoPause));
  Settle(main_);
  EXPECT_NE(Check(autoPause), checked) << "the box did not change with space on the disk";
  DragKnob(knob, -60);
  Settle(main_);
  EXPECT_NE(LeftOf(knob), knobAt) << "the slider did not move with space on the disk";
  EXPECT_NE(FolderBytes(Folder().Common(), L"filler").at(L"qvwin.ini"), before.at(L"qvwin.ini"));

  // And the same Apply stores the password, says so and closes.
  updatePassword = ApplyPassword(password);
  HWND updated = WaitForBox(L"You have successfully updated the password");
  ASSERT_NE(updated, nullptr) << "Apply with space again did not say it was updated";
  Answer(updated, 0);
  EXPECT_TRUE(WaitUntil([&] { return !StillThere(updatePassword); }));
  EXPECT_NE(FileBytes(store), storeBefore);
  EXPECT_FALSE(Holds(FileBytes(store), "Right#Pass"));
  for (const auto& [file, bytes] : FolderBytes(Folder().Common(), L""))
    EXPECT_FALSE(Holds(bytes, "Right#Pass")) << "the password is in " << Utf8(file);
  EXPECT_FALSE(Holds(FileBytes(Folder().Trace()), "Right#Pass")) << "the password is traced";
  EXPECT_TRUE(Answers(main_));
}

}  // namespace
}  // namespace e2e
