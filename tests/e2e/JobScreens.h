#pragma once
// The job screens seen from outside: the cells of another process's list view, its
// selection and double click, the schedule's fields, and the base of the tests that
// open Manage Scheduled Jobs, Backup Now and the schedule editor beside the engine.
#include <windows.h>
#include <commctrl.h>

#include <cstddef>
#include <cwchar>
#include <functional>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "EngineSupport.h"
#include "MonitorFixture.h"

namespace e2e {

// Record 9: a daily job whose next run is far away, so the engine leaves it alone.
inline std::wstring LaterJob(const std::wstring& no = L"9", const std::wstring& name = L"Music") {
  return Job(no, name, L"01-02-2099 6:30:00", L"3", L"209901020630", L"1234567");
}

inline int RowCount(HWND list) {
  DWORD_PTR rows = 0;
  if (!SendMessageTimeoutW(list, LVM_GETITEMCOUNT, 0, 0, SMTO_ABORTIFHUNG, 5000, &rows)) return -1;
  return static_cast<int>(rows);
}

// Sends `message` to a window of another process with `data` placed in that process's
// memory, and reads `data` back from there afterwards; `place` may first point fields of
// `data` into that copy, given its address there.
template <typename T>
inline bool SendRemote(HWND w, UINT message, WPARAM wp, T& data,
                       const std::function<void(T&, char*)>& place = nullptr) {
  DWORD pid = 0;
  GetWindowThreadProcessId(w, &pid);
  platform::win32::UniqueHandle process(
      OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, pid));
  const HANDLE p = process.Get();
  if (p == nullptr) return false;
  auto* remote =
      static_cast<char*>(VirtualAllocEx(p, nullptr, sizeof(T), MEM_COMMIT, PAGE_READWRITE));
  bool ok = false;
  if (remote != nullptr) {
    if (place) place(data, remote);
    DWORD_PTR r = 0;
    ok = WriteProcessMemory(p, remote, &data, sizeof(T), nullptr) &&
         SendMessageTimeoutW(w, message, wp, reinterpret_cast<LPARAM>(remote), SMTO_ABORTIFHUNG,
                             5000, &r) != 0 &&
         ReadProcessMemory(p, remote, &data, sizeof(T), nullptr);
    VirtualFreeEx(p, remote, 0, MEM_RELEASE);
  }
  return ok;
}

// The text of a cell of another process's list view (row and column from 0).
inline std::wstring CellText(HWND list, int row, int column) {
  struct Cell {
    LVITEMW item;
    wchar_t text[512];
  } cell{};
  cell.item.iSubItem = column;
  cell.item.cchTextMax = 512;
  if (!SendRemote<Cell>(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), cell,
                        [](Cell& c, char* at) {
                          c.item.pszText = reinterpret_cast<wchar_t*>(at + offsetof(Cell, text));
                        }))
    return L"<no answer>";
  return std::wstring(cell.text, wcsnlen(cell.text, 512));
}

// Selects row `row` (from 0) as a click would: the list tells the selection change.
inline bool SelectRow(HWND list, int row) {
  LVITEMW item{};
  item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
  item.state = LVIS_SELECTED | LVIS_FOCUSED;
  return SendRemote(list, LVM_SETITEMSTATE, static_cast<WPARAM>(row), item);
}

// A double click on row `row` (from 0) as the list gets it from the mouse.
inline bool DoubleClickRow(HWND list, int row) {
  RECT r{};
  r.left = LVIR_LABEL;
  if (!SendRemote(list, LVM_GETITEMRECT, static_cast<WPARAM>(row), r)) return false;
  const LPARAM at = MAKELPARAM(r.left + 6, (r.top + r.bottom) / 2);
  return Post(list, WM_LBUTTONDOWN, MK_LBUTTON, at) && Post(list, WM_LBUTTONUP, 0, at) &&
         Post(list, WM_LBUTTONDBLCLK, MK_LBUTTON, at) && Post(list, WM_LBUTTONUP, 0, at);
}

// The row (from 0) whose cell `column` holds `text`, or -1.
inline int RowWith(HWND list, int column, const std::wstring& text) {
  for (int row = 0; row < RowCount(list); ++row)
    if (CellText(list, row, column) == text) return row;
  return -1;
}

inline std::optional<SYSTEMTIME> PickerTime(HWND picker) {
  SYSTEMTIME t{};
  if (!SendRemote(picker, DTM_GETSYSTEMTIME, 0, t)) return std::nullopt;
  return t;
}

inline SYSTEMTIME AddMinutes(SYSTEMTIME t, int minutes) {
  FILETIME f{};
  SystemTimeToFileTime(&t, &f);
  ULARGE_INTEGER u{};
  u.LowPart = f.dwLowDateTime;
  u.HighPart = f.dwHighDateTime;
  u.QuadPart += static_cast<ULONGLONG>(minutes) * 60 * 10000000;
  f.dwLowDateTime = u.LowPart;
  f.dwHighDateTime = u.HighPart;
  FileTimeToSystemTime(&f, &t);
  return t;
}

// "mm-dd-yyyy H:mm:ss", as the schedule file writes a moment, and the sort key of it.
inline std::wstring FileDate(const SYSTEMTIME& t) {
  wchar_t b[32];
  swprintf(b, 32, L"%02u-%02u-%04u %u:%02u:%02u", t.wMonth, t.wDay, t.wYear, t.wHour, t.wMinute,
           t.wSecond);
  return b;
}
inline std::wstring SortKey(const SYSTEMTIME& t) {
  wchar_t b[16];
  swprintf(b, 16, L"%04u%02u%02u%02u%02u", t.wYear, t.wMonth, t.wDay, t.wHour, t.wMinute);
  return b;
}

inline std::vector<std::wstring> Fields(const std::wstring& line) {
  std::vector<std::wstring> fields;
  size_t from = 0;
  for (size_t at; (at = line.find(L"\b\b", from)) != std::wstring::npos; from = at + 2)
    fields.push_back(line.substr(from, at - from));
  fields.push_back(line.substr(from));
  return fields;
}

class JobScreensTest : public EngineMonitorTest {
 protected:
  // Tray item 5: Manage all the Scheduled Jobs.
  HWND OpenJobList() {
    TrayItem(5);
    HWND screen = WaitForScreen(L"Sch_list_lv");
    EXPECT_NE(screen, nullptr) << "Manage all the Scheduled Jobs opened nothing";
    return screen;
  }
  // Delete on row `row` (from 0), its question answered Yes.
  void DeleteRow(HWND screen, HWND list, int row) {
    ASSERT_TRUE(SelectRow(list, row));
    Press(screen, L"Pic_Delete");
    HWND sure = WaitForBox(L"Are you sure you want to delete the scheduled record?");
    ASSERT_NE(sure, nullptr);
    Answer(sure, 0);
  }
  // The schedule editor opened by a double click on row `row` of the job list.
  HWND OpenEditorOn(HWND list, int row) {
    EXPECT_TRUE(DoubleClickRow(list, row));
    HWND editor = WaitForScreen(L"optHourly");
    EXPECT_NE(editor, nullptr) << "the double click opened no editor";
    return editor;
  }
  void MakeHourly(HWND editor) {
    HWND hourly = FindByName(editor, L"optHourly");
    ASSERT_TRUE(ClickControl(hourly));
    ASSERT_TRUE(WaitUntil([&] { return Describe(hourly).check == BST_CHECKED; }));
  }
  void Close(HWND screen) {
    Press(screen, L"Sch_Close");
    ASSERT_TRUE(WaitUntil([&] { return !IsWindow(screen) || !IsWindowVisible(screen); }));
  }
};

}  // namespace e2e
