#pragma once
// The real monitor on a data folder that refuses every write, beside the simulated engine:
// the steps shared by the full-disk and the read-only tests. Each action that writes shows
// its failure or goes back to what is stored, no file changes by a byte, and the monitor
// keeps answering; once writes are taken again the same actions go through.
// The data folder is a mount made by full-disk-e2e.sh, which watches the program folder
// for the test's requests ("want-<step>") and answers each with "<step>-ready" or
// "<step>-failed" (holding the reason).
#include <cstdio>
#include <cstdlib>
#include <map>

#include "JobScreens.h"
#include "platform/win32/Win32Handles.h"

namespace e2e {

inline bool Holds(const std::string& bytes, const std::string& ascii) {
  std::string wide;
  for (char c : ascii) wide += std::string{c, 0};
  return bytes.find(ascii) != std::string::npos || bytes.find(wide) != std::string::npos;
}

// Every file under the data folder (by its path there) and its bytes, but for the filler
// and the trace (whose appends may still fit in the last page the disk gave it; it is
// checked for whole lines).
inline std::map<std::wstring, std::string> FolderBytes(const std::filesystem::path& folder) {
  std::map<std::wstring, std::string> files;
  std::error_code ec;
  for (auto it = std::filesystem::recursive_directory_iterator(folder, ec);
       !ec && it != std::filesystem::recursive_directory_iterator(); it.increment(ec)) {
    const std::wstring name = it->path().filename().wstring();
    if (it->is_regular_file(ec) && name != L"filler" && name != L"SerTraceFile.txt")
      files[it->path().lexically_relative(folder).wstring()] = FileBytes(it->path());
  }
  return files;
}

// The state word as the engine puts it: the same two bytes overwritten in place, which
// a full disk still allows (no new space is taken).
inline bool PutWordInPlace(const std::filesystem::path& schedule, wchar_t word) {
  const platform::win32::UniqueHandle file(
      CreateFileW(schedule.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                  OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file) return false;
  const char bytes[2] = {static_cast<char>(word), 0};
  DWORD put = 0;
  return SetFilePointer(file.Get(), 2, nullptr, FILE_BEGIN) == 2 &&
         WriteFile(file.Get(), bytes, 2, &put, nullptr) && put == 2;
}

// True when `w` and every visible window in it have nothing left to paint.
inline bool NothingToPaint(HWND w) {
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

class RefusedWritesTest : public JobScreensTest {
 protected:
  // The data folder stops taking writes, and takes them again.
  virtual void Refuse() = 0;
  virtual void Allow() = 0;
  // The state word put as the engine puts it, while writes are refused.
  virtual void PutWord(wchar_t word) = 0;

  // The link to the mounted data goes before the program folder is removed, which would
  // otherwise go through it into the data (and stand on the password folder's mount).
  void TearDown() override {
    AskScript(L"unlink");
    JobScreensTest::TearDown();
  }

  // Asks the script for `step` on the mounted data and waits for its answer.
  bool AskScript(const std::wstring& step) {
    const auto root = Folder().Root();
    const auto ready = root / (step + L"-ready"), failed = root / (step + L"-failed");
    std::error_code ec;
    std::filesystem::remove(ready, ec);
    std::filesystem::remove(failed, ec);
    if (!WriteAnsiFile(root / (L"want-" + step), {L"1"})) return false;
    WaitUntil(
        [&] { return std::filesystem::exists(ready, ec) || std::filesystem::exists(failed, ec); },
        Ms{20000});
    if (std::filesystem::exists(ready, ec)) return true;
    ADD_FAILURE() << "the script did not make " << Utf8(step) << ": "
                  << (std::filesystem::exists(failed, ec)
                          ? FileBytes(failed)
                          : "no answer (run from full-disk-e2e.sh)");
    return false;
  }

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
  static int Check(HWND box) { return Describe(box).check; }
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
  HWND ApplyPassword() {
    TrayItem(4);
    HWND form = WaitForScreen(L"txtPassword");
    EXPECT_NE(form, nullptr) << "Update Password opened nothing";
    if (form == nullptr) return nullptr;
    Type(FindByName(form, L"txtUserName"), L"goodone");
    Type(FindByName(form, L"txtPassword"), kPassword);
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
  static int LeftOf(HWND w) { return Describe(w).rect.left; }
  std::filesystem::path Store() { return Folder().Common() / L"goodone" / L"goodone.txt"; }

  // What every check compares with.
  void Snapshot() {
    before_ = FolderBytes(Folder().Common());
    traceBefore_ = FileBytes(Folder().Trace());
  }
  // Nothing changed, the trace gained whole lines only, the monitor answers.
  void Unchanged(const std::string& after) {
    EXPECT_EQ(FolderBytes(Folder().Common()), before_) << "after " << after;
    const std::string trace = FileBytes(Folder().Trace());
    EXPECT_EQ(trace.substr(0, traceBefore_.size()), traceBefore_) << "after " << after;
    EXPECT_TRUE(trace.size() >= 4 &&
                trace.compare(trace.size() - 4, 4, std::string("\r\0\n\0", 4)) == 0)
        << "half a line in the trace after " << after;
    EXPECT_TRUE(Answers(main_)) << "after " << after;
  }
  // The box that says `text` and a reason; pictured, answered, and nothing changed.
  void Refused(const std::wstring& text, const std::string& shot) {
    HWND box = WaitForBox(text);
    EXPECT_NE(box, nullptr) << "no box saying " << Utf8(text);
    if (box == nullptr) return;
    std::wstring said;
    for (const WindowInfo& c : ListChildren(box))
      if (c.text.rfind(text, 0) == 0) said = c.text;
    EXPECT_GT(said.size(), text.size()) << "no reason after " << Utf8(text);
    std::printf("%s: %s\n", shot.c_str(), Utf8(said).c_str());
    PaintedShot(shot);
    Answer(box, 0);
    Unchanged(shot);
  }

  // The monitor started shown (the Auto-Pause box and the slider are on its window), the
  // job list open on the rows of the mounted data.
  void StartOnTheMount() {
    ASSERT_TRUE(AskScript(L"disk"));
    ASSERT_NE(OpenMonitor(L""), nullptr);
    screen_ = OpenJobList();
    ASSERT_NE(screen_, nullptr);
    list_ = FindByName(screen_, L"Sch_list_lv");
    ASSERT_TRUE(WaitUntil([&] { return RowCount(list_) >= 2; }));
    autoPause_ = FindByName(main_, L"chkbandwidth");
    knob_ = FindByName(main_, L"PictSliderKnob1");
    ASSERT_TRUE(autoPause_ && knob_);
    checked_ = Check(autoPause_);
    knobAt_ = LeftOf(knob_);
    storeBefore_ = FileBytes(Store());
    ASSERT_FALSE(storeBefore_.empty());
  }

  // Run now, delete, stop, stop completely, the Auto-Pause box, the slider, Update
  // Password and the editor's save, each refused; the editor is left open. (Backup Now
  // adds its record through the same write as run now.)
  void EveryWriteRefused() {
    Refuse();
    if (HasFatalFailure()) return;
    Snapshot();

    ASSERT_TRUE(SelectRow(list_, 0));
    Press(screen_, L"Pic_Imme");
    Refused(L"Unable to schedule the record immediately. Reason : ", "run-now-refused");

    ASSERT_NO_FATAL_FAILURE(DeleteRow(screen_, list_, 0));
    Refused(L"Unable to delete the record. Reason : ", "delete-refused");

    // Stop on the running job: asked, then not told that it will stop.
    PutWord(L'1');
    Snapshot();
    Press(screen_, L"Pic_Refresh");
    int running = -1;
    ASSERT_TRUE(WaitUntil([&] { return (running = RowWith(list_, 3, L"In Progress")) >= 0; }));
    ASSERT_TRUE(SelectRow(list_, running));
    Press(screen_, L"Pic_Sttrf");
    HWND ask = WaitForBox(L"A scheduled job is in progress.");
    ASSERT_NE(ask, nullptr);
    Answer(ask, 0);
    EXPECT_EQ(WaitForBox(L"The scheduled job will stop shortly.", Ms{3000}), nullptr)
        << "a stop that was never written was told as done";
    Unchanged("stop");  // the word "1" with every other byte

    // Stop completely on a stop the engine did not take up: the screen waits its nine
    // seconds, the "0" cannot be written, the word stays.
    PutWord(L'2');
    Snapshot();
    ASSERT_TRUE(SelectRow(list_, 0));
    Press(screen_, L"Pic_Stcomp");
    Sleep(1000);
    EXPECT_TRUE(WaitUntil([&] { return Answers(screen_); }, Ms{30000}));
    Unchanged("stop-completely");  // the word "2" with every other byte
    PutWord(L'0');
    Snapshot();

    // The Auto-Pause box and the slider go back to what is stored.
    ASSERT_TRUE(ClickControl(autoPause_));
    Settle(main_);
    EXPECT_EQ(Check(autoPause_), checked_) << "the box shows a choice that was not stored";
    Unchanged("auto-pause");
    DragKnob(knob_, -60);
    Settle(main_);
    EXPECT_EQ(LeftOf(knob_), knobAt_) << "the slider shows a limit that was not stored";
    PaintedShot("slider-refused");
    Unchanged("slider");

    // Update Password proves the account, then cannot write (the settings' copy is the
    // first write to be refused): it says why, stays open, and the earlier password stays.
    HWND updatePassword = ApplyPassword();
    ASSERT_NE(updatePassword, nullptr);
    Refused(L"The new password could not be stored. Reason : ", "update-password-refused");
    EXPECT_TRUE(StillThere(updatePassword)) << "Update Password closed on a failure";
    PostMessageW(updatePassword, WM_CLOSE, 0, 0);
    ASSERT_TRUE(WaitUntil([&] { return !StillThere(updatePassword); }));

    editor_ = OpenEditorOn(list_, 0);
    ASSERT_NE(editor_, nullptr);
    ASSERT_NO_FATAL_FAILURE(MakeHourly(editor_));
    Press(editor_, L"Sch_Start4_Next");
    Refused(L"The changes to the schedule could not be saved. Reason : ", "save-refused");
    EXPECT_TRUE(StillThere(editor_)) << "the editor closed on a failure";
  }

  // Once writes are taken again: the same save goes through, and so do the box and the
  // slider.
  void TheSameWritesGoThrough() {
    Press(editor_, L"Sch_Start4_Next");
    EXPECT_TRUE(WaitUntil([&] { return !StillThere(editor_); }))
        << "the save with writes taken again left the editor open";
    EXPECT_NE(FolderBytes(Folder().Common()).at(L"scheduleData.txt"),
              before_.at(L"scheduleData.txt"));
    ASSERT_TRUE(ClickControl(autoPause_));
    Settle(main_);
    EXPECT_NE(Check(autoPause_), checked_) << "the box did not change with writes taken again";
    const auto settings = Folder().CommonFile(L"qvwin.ini");
    const std::wstring limit = ReadIni(settings, L"Corvane", L"BANDWIDTHPAUSE");
    DragKnob(knob_, -60);
    Settle(main_);
    EXPECT_NE(LeftOf(knob_), knobAt_) << "the slider did not move with writes taken again";
    // The limit is stored when the knob is let go, which may come after the moves shown.
    EXPECT_TRUE(WaitUntil([&] {
      return ReadIni(settings, L"Corvane", L"BANDWIDTHPAUSE") != limit;
    })) << "the slider's limit was not stored";
  }

  // The same Apply stores the password, says so and closes; the password is in no file
  // of the data folder and not in the trace.
  void PasswordStored() {
    HWND updatePassword = ApplyPassword();
    HWND updated = WaitForBox(L"You have successfully updated the password");
    ASSERT_NE(updated, nullptr) << "Apply did not say the password was updated";
    Answer(updated, 0);
    EXPECT_TRUE(WaitUntil([&] { return !StillThere(updatePassword); }));
    EXPECT_NE(FileBytes(Store()), storeBefore_);
    NoPasswordAnywhere();
    EXPECT_TRUE(Answers(main_));
  }
  void NoPasswordAnywhere() {
    for (const auto& [file, bytes] : FolderBytes(Folder().Common()))
      EXPECT_FALSE(Holds(bytes, "Right#Pass")) << "the password is in " << Utf8(file);
    EXPECT_FALSE(Holds(FileBytes(Folder().Trace()), "Right#Pass")) << "the password is traced";
  }

  static constexpr wchar_t kPassword[] = L"Right#Pass123456";
  HWND screen_ = nullptr, list_ = nullptr, editor_ = nullptr;
  HWND autoPause_ = nullptr, knob_ = nullptr;
  int checked_ = 0, knobAt_ = 0;
  std::map<std::wstring, std::string> before_;
  std::string traceBefore_, storeBefore_;
};

}  // namespace e2e
