#pragma once
// What the Windows UI host keeps per window, control, tip and tray icon. Private to
// the host's sources.
#include "platform/win32/Win32UiHost.h"

#include <commctrl.h>
#include <shellapi.h>

namespace platform {

// Ids of the host window's own timers; the caller's timers count up from 1.
inline constexpr UINT_PTR kTrayRetryTimer = 0x7FFF0001;
// Posted to wake a modal loop whose end came from outside a message.
inline constexpr UINT kWakeMessage = WM_APP + 0x51;
// The window property that carries a window's design name as a global atom.
inline constexpr wchar_t kNameProperty[] = L"QvName";
inline constexpr wchar_t kFormClass[] = L"QvForm";
inline constexpr wchar_t kHostClass[] = L"QvUiHost";

// A window's design name as a global atom, so that another process can read it.
inline void SetName(HWND hwnd, const Text& name) {
  if (name.empty()) return;
  ATOM atom = GlobalAddAtomW(win32::Wide(base::Left(name, 255)));
  if (atom != 0) SetPropW(hwnd, kNameProperty, reinterpret_cast<HANDLE>(static_cast<UINT_PTR>(atom)));
}

inline void DropName(HWND hwnd) {
  auto atom = static_cast<ATOM>(reinterpret_cast<UINT_PTR>(RemovePropW(hwnd, kNameProperty)));
  if (atom != 0) GlobalDeleteAtom(atom);
}

struct Win32UiHost::FormRec {
  UiHandle handle = 0;
  HWND hwnd = nullptr;
  IUiEvents* events = nullptr;
  UiWindow state;
  RECT applied{};        // the outer rectangle last put on the window, pixels
  std::optional<UiRegion> appliedRegion;
  HMENU menuBar = nullptr;
  HICON bigIcon = nullptr;
  HICON smallIcon = nullptr;
  std::vector<UiHandle> controls;  // in the order they were made
  UiHandle pendingFocus = 0;       // asked for while the window was hidden
  bool dead = false;
  bool modalEnded = false;
  int modalDepth = 0;
  bool applying = false;  // our own SetWindowPos: not the user's move
  bool centered = false;  // the start-up position was applied
};

struct Win32UiHost::ControlRec {
  UiHandle handle = 0;
  UiHandle window = 0;
  UiHandle container = 0;
  HWND hwnd = nullptr;
  UiControl state;
  bool dead = false;
  int updating = 0;  // the host itself is changing the window: no reports
  int pressed = 0;   // mouse buttons that went down on this control
  bool captured = false;
  bool rowClickSent = false;  // the selection change of this click was already told
  HBRUSH backdrop = nullptr;  // what lies below a check box or option button
  HBITMAP backdropBitmap = nullptr;
  DWORD createdStyle = 0;     // style bits that only a new window can change
  // What the list view shows now, to change only what differs.
  std::vector<UiListColumn> shownColumns;
  std::vector<UiListRow> shownRows;
  bool listBuilt = false;
};

struct Win32UiHost::TipRec {
  HWND hwnd = nullptr;
  HWND toolHwnd = nullptr;
  UiTip tip;
  HFONT font = nullptr;
  bool placed = false;         // a balloon: shown by tracking, where PlaceBalloon puts it
  std::int64_t visibleMs = 0;  // how long it stays
  std::uintptr_t hideTimer = 0;
  HBITMAP backdrop = nullptr;  // what lay below the balloon
  HRGN outline = nullptr;      // the balloon's shape, in its window
};

struct Win32UiHost::TrayRec {
  UiHandle handle = 0;
  UiTrayIcon state;
  std::function<void(int)> onEvent;
  NOTIFYICONDATAW data{};
  HICON icon = nullptr;
  bool iconOwned = false;  // loaded from a file, so destroyed with the record
  bool added = false;
};

}  // namespace platform
