// The second floor of the start-up benchmark: what the monitor's window is made of,
// without anything the monitor does. The DLLs the monitor loads before its window (the
// common controls in their themed version, COM, the type-library and theme calls), the
// same manifest, and one window holding as many child windows of the same classes as
// the monitor's window has (owner-drawn labels and pictures, check boxes, progress
// bars, a report list with its columns), each subclassed as the screen kit does; then
// one notification-area icon. Nothing read, nothing registered.
#include <windows.h>
#include <commctrl.h>
#include <objbase.h>
#include <oleauto.h>
#include <uxtheme.h>

#include <initializer_list>

#include "FloorTray.h"
#include "platform/win32/Win32Handles.h"

namespace {

LRESULT CALLBACK Subclassed(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp, UINT_PTR, DWORD_PTR) {
  return DefSubclassProc(hwnd, msg, wp, lp);
}

enum class Kind { Plain, Bar, List };

struct Child {
  const wchar_t* cls;
  DWORD style;
  int count;
  Kind kind = Kind::Plain;
};

// The monitor's window: its controls by class, in the numbers the window has.
constexpr Child kChildren[] = {
    {L"STATIC", SS_OWNERDRAW | SS_NOTIFY, 13},
    {L"BUTTON", BS_OWNERDRAW, 13},
    {L"BUTTON", BS_3STATE, 2},
    {PROGRESS_CLASSW, PBS_SMOOTH, 3, Kind::Bar},
    {WC_LISTVIEWW, LVS_REPORT | LVS_SINGLESEL | LVS_SHOWSELALWAYS, 1, Kind::List},
};

}  // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR, int show) {
  INITCOMMONCONTROLSEX icc{sizeof(icc), ICC_WIN95_CLASSES | ICC_DATE_CLASSES | ICC_BAR_CLASSES |
                                            ICC_LISTVIEW_CLASSES | ICC_PROGRESS_CLASS |
                                            ICC_STANDARD_CLASSES};
  InitCommonControlsEx(&icc);
  const HRESULT com = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  HWND window = MakeFloorWindow(instance, L"FloorControls", L"Floor controls", COLOR_BTNFACE,
                                WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, 500, 360);
  int id = 1, y = 0;
  for (const Child& child : kChildren) {
    for (int i = 0; i < child.count; ++i, ++id, y = (y + 10) % 300) {
      HWND c =
          CreateWindowExW(0, child.cls, L"", WS_CHILD | WS_VISIBLE | child.style, 10, y, 200,
                          child.kind == Kind::List ? 100 : 20, window,
                          reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), instance, nullptr);
      SetWindowSubclass(c, Subclassed, 1, 0);
      if (child.kind == Kind::List) {
        for (const wchar_t* title : {L"Type", L"Time", L"Message"}) {
          LVCOLUMNW column{};
          column.mask = LVCF_TEXT | LVCF_WIDTH;
          column.cx = 80;
          column.pszText = const_cast<wchar_t*>(title);
          ListView_InsertColumn(c, 99, &column);
        }
      }
      if (child.kind == Kind::Bar) SetWindowTheme(c, L" ", L" ");
    }
  }
  // The automation allocator, used once as the monitor uses it before its window.
  platform::win32::UniqueBstr(SysAllocString(L"Floor controls")).Reset();
  RunInTray(window, L"Floor controls", show);
  if (SUCCEEDED(com)) CoUninitialize();
  return 0;
}
