#include "platform/win32/Win32UiHost.h"
#include "platform/win32/Win32Handles.h"
#include "platform/win32/Win32UiProbe.h"

#include <commctrl.h>
#include <oleacc.h>

#include <string>

namespace platform::win32 {

namespace {

Text TextOf(HWND hwnd) {
  // WM_GETTEXT: GetWindowText does not ask an edit or combo box of another program.
  const LRESULT n = SendMessageW(hwnd, WM_GETTEXTLENGTH, 0, 0);
  std::wstring buffer(static_cast<std::size_t>(n) + 1, L'\0');
  const LRESULT got =
      SendMessageW(hwnd, WM_GETTEXT, buffer.size(), reinterpret_cast<LPARAM>(buffer.data()));
  return FromWide(buffer.data(), static_cast<std::size_t>(got));
}

std::wstring ClassOf(HWND hwnd) {
  wchar_t name[64] = {};
  GetClassNameW(hwnd, name, 64);
  return name;
}

void ReadAccessible(HWND hwnd, ProbeState& seen) {
  ComPtr<IAccessible> acc;
  if (FAILED(
          AccessibleObjectFromWindow(hwnd, OBJID_CLIENT, __uuidof(IAccessible), acc.OutVoid())) ||
      !acc)
    return;
  VARIANT self;
  self.vt = VT_I4;
  self.lVal = CHILDID_SELF;
  VARIANT role;
  VariantInit(&role);
  if (SUCCEEDED(acc->get_accRole(self, &role)) && role.vt == VT_I4) seen.role = role.lVal;
  VARIANT state;
  VariantInit(&state);
  if (SUCCEEDED(acc->get_accState(self, &state)) && state.vt == VT_I4)
    seen.focusable = (state.lVal & STATE_SYSTEM_FOCUSABLE) != 0;
  UniqueBstr name;
  if (SUCCEEDED(acc->get_accName(self, name.Out())) && name)
    seen.name = FromWide(name.Get(), SysStringLen(name.Get()));
}

}  // namespace

ProbeState UiProbe::Read(UiHandle h) {
  ProbeState seen;
  HWND hwnd = host_.WindowHandle(h);
  if (hwnd == nullptr || !IsWindow(hwnd)) return seen;
  seen.exists = true;
  seen.visible = IsWindowVisible(hwnd) != FALSE;
  seen.enabled = IsWindowEnabled(hwnd) != FALSE;
  seen.focused = GetFocus() == hwnd;
  seen.active = GetActiveWindow() == hwnd;
  seen.topmost = (GetWindowLongPtrW(hwnd, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0;
  seen.text = TextOf(hwnd);
  const std::wstring cls = ClassOf(hwnd);
  if (cls == L"Button") {
    const LRESULT check = SendMessageW(hwnd, BM_GETCHECK, 0, 0);
    seen.check = check == BST_CHECKED ? 1 : check == BST_INDETERMINATE ? 2 : 0;
  } else if (cls == L"ComboBox") {
    const LRESULT count = SendMessageW(hwnd, CB_GETCOUNT, 0, 0);
    for (LRESULT i = 0; i < count; ++i) {
      const LRESULT len = SendMessageW(hwnd, CB_GETLBTEXTLEN, i, 0);
      std::wstring item(static_cast<std::size_t>(len < 0 ? 0 : len) + 1, L'\0');
      SendMessageW(hwnd, CB_GETLBTEXT, i, reinterpret_cast<LPARAM>(item.data()));
      seen.items.push_back(FromWide(item.c_str()));
    }
    seen.listIndex = static_cast<int>(SendMessageW(hwnd, CB_GETCURSEL, 0, 0));
  } else if (cls == WC_LISTVIEWW) {
    const int count = ListView_GetItemCount(hwnd);
    const int top = ListView_GetTopIndex(hwnd);
    const int page = ListView_GetCountPerPage(hwnd);
    for (int i = 0; i < count; ++i) {
      seen.rowsInView.push_back(i >= top && i < top + page);
      wchar_t text[512] = {};
      LVITEMW item{};
      item.mask = LVIF_TEXT | LVIF_IMAGE;
      item.iItem = i;
      item.pszText = text;
      item.cchTextMax = 512;
      ListView_GetItem(hwnd, &item);
      seen.items.push_back(FromWide(text));
      seen.rowImages.push_back(item.iImage >= 0);
    }
  }
  ReadAccessible(hwnd, seen);
  return seen;
}

void UiProbe::Click(UiHandle control) {
  if (HWND hwnd = host_.WindowHandle(control)) SendMessageW(hwnd, BM_CLICK, 0, 0);
}

void UiProbe::Select(UiHandle combo, int index) {
  HWND hwnd = host_.WindowHandle(combo);
  if (hwnd == nullptr) return;
  // The user's choice: the list shows it, then the parent hears of it.
  SendMessageW(hwnd, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
  SendMessageW(GetParent(hwnd), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(hwnd), CBN_SELCHANGE),
               reinterpret_cast<LPARAM>(hwnd));
}

void UiProbe::RequestClose(UiHandle window) {
  if (HWND hwnd = host_.WindowHandle(window)) SendMessageW(hwnd, WM_CLOSE, 0, 0);
}

void UiProbe::Activate(UiHandle window) {
  HWND hwnd = host_.WindowHandle(window);
  if (hwnd == nullptr) return;
  SetForegroundWindow(hwnd);
  SetActiveWindow(hwnd);
}

}  // namespace platform::win32
