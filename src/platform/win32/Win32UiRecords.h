#pragma once
// What the Windows UI host keeps per window, control, tip and tray icon. Private to
// the host's sources. What a record owns (its window, menu bar, icons, brushes,
// bitmaps, fonts, regions) it holds in the holders of Win32Handles.h.
#include "platform/win32/Win32UiHost.h"

#include <commctrl.h>
#include <shellapi.h>

#include "platform/win32/Win32Accessible.h"
#include "platform/win32/Win32Theme.h"

namespace platform {

// Ids of the host window's own timers; the caller's timers count up from 1.
inline constexpr UINT_PTR kTrayRetryTimer = 0x7FFF0001;
// Posted to wake a modal loop whose end came from outside a message.
inline constexpr UINT kWakeMessage = WM_APP + 0x51;
// Posted to a form whose menu bar changed while it had one (Win32UiShell.cpp).
inline constexpr UINT kApplyMenuMessage = WM_APP + 0x52;
// The window property that carries a window's design name as a global atom.
inline constexpr wchar_t kNameProperty[] = L"QvName";
inline constexpr wchar_t kFormClass[] = L"QvForm";
inline constexpr wchar_t kHostClass[] = L"QvUiHost";

// A window's design name as a global atom, so that another process can read it.
inline void SetName(HWND hwnd, const Text& name) {
  if (name.empty()) return;
  ATOM atom = GlobalAddAtomW(win32::Wide(base::Left(name, 255)));
  if (atom != 0)
    SetPropW(hwnd, kNameProperty, reinterpret_cast<HANDLE>(static_cast<UINT_PTR>(atom)));
}

inline void DropName(HWND hwnd) {
  auto atom = static_cast<ATOM>(reinterpret_cast<UINT_PTR>(RemovePropW(hwnd, kNameProperty)));
  if (atom != 0) GlobalDeleteAtom(atom);
}

// Controls the host draws itself (the others are the platform's own windows).
inline bool Drawn(UiKind kind) {
  return kind == UiKind::Label || kind == UiKind::Picture || kind == UiKind::PictureButton;
}
// The pointer's messages a form or control reports: moves, and downs, ups and double
// clicks of the three buttons (WM_MOUSEMOVE to WM_MBUTTONDBLCLK).
inline bool IsMouseMessage(UINT msg) { return msg >= WM_MOUSEMOVE && msg <= WM_MBUTTONDBLCLK; }
inline bool Checkable(UiKind kind) {
  return kind == UiKind::CheckBox || kind == UiKind::OptionButton;
}

struct Win32UiHost::FormRec {
  UiHandle handle = 0;
  // The menu bar and icons the window shows; declared before the window, so that a
  // record that still has its window lets it go first.
  win32::UniqueMenu menuBar;
  std::vector<UiMenuItem> shownMenu;  // what menuBar was built from
  bool menuPosted = false;            // a kApplyMenuMessage is on its way
  win32::UniqueIcon bigIcon;
  win32::UniqueIcon smallIcon;
  win32::UniqueWindow hwnd;
  IUiEvents* events = nullptr;
  UiWindow state;
  RECT applied{};  // the outer rectangle last put on the window, pixels
  std::optional<UiRegion> appliedRegion;
  std::vector<UiHandle> controls;  // in the order they were made
  UiHandle pendingFocus = 0;       // asked for while the window was hidden
  HWND activatedFrom = nullptr;    // the program's window that was active before it
  bool dead = false;
  bool modalEnded = false;
  int modalDepth = 0;
  bool applying = false;  // our own SetWindowPos: not the user's move
  bool centered = false;  // the start-up position was applied
  int dpi = 96;           // the scale the window is drawn at
  // Where the window system cannot show what lies behind a cut-away corner (Wine
  // paints it black), the window keeps no region: it paints the pixels outside its
  // outline from what the screen showed there before it came up.
  win32::UniqueRegion outline;  // the rounded outline, in the window's pixels
  win32::UniqueBitmap behind;   // the screen under the window, taken before showing
};

struct Win32UiHost::ControlRec {
  UiHandle handle = 0;
  UiHandle window = 0;
  UiHandle container = 0;
  win32::UniqueBrush backdrop;  // what lies below a check box or option button
  win32::UniqueBitmap backdropBitmap;
  // The small pictures of a list's rows (the list shares it, so it outlives the window).
  win32::UniqueImageList rowImages;
  win32::UniqueWindow hwnd;  // declared after what it paints with: it goes first
  UiControl state;
  bool dead = false;
  int updating = 0;  // the host itself is changing the window: no reports
  int pressed = 0;   // mouse buttons that went down on this control
  bool captured = false;
  bool rowClickSent = false;  // the selection change of this click was already told
  DWORD createdStyle = 0;     // style bits that only a new window can change
  // What the list view shows now, to change only what differs.
  std::vector<UiListColumn> shownColumns;
  std::vector<UiListRow> shownRows;  // not kept for a list of the rows' owner
  int shownSelected = -1;            // the selected row (from 0) of such a list as shown
  bool listBuilt = false;
  std::vector<Text> rowImageKeys;  // the keys of rowImages, in its order
  std::vector<Text> shownItems;    // a combo box's entries as shown
};

struct Win32UiHost::TipRec {
  HWND toolHwnd = nullptr;
  UiTip tip;
  win32::UniqueFont font;
  bool placed = false;         // a balloon: shown by tracking, where PlaceBalloon puts it
  std::int64_t visibleMs = 0;  // how long it stays
  std::uintptr_t hideTimer = 0;
  win32::UniqueBitmap backdrop;  // what lay below the balloon
  win32::UniqueRegion outline;   // the balloon's shape, in its window
  // Declared last, so that the window goes before the font and pictures it uses.
  win32::UniqueWindow hwnd;
};

struct Win32UiHost::TrayRec {
  UiHandle handle = 0;
  UiTrayIcon state;
  std::function<void(int)> onEvent;
  NOTIFYICONDATAW data{};
  HICON icon = nullptr;         // what the shell is shown
  win32::UniqueIcon ownedIcon;  // the same icon when it was loaded from a file
  Text iconFile;                // the file it came from ("" for the program's own)
  bool added = false;
  int balloons = 0;       // balloons put on it
  DWORD lastMouseUp = 0;  // when a button last came up on it (tick count)
  POINT anchor{};         // where the shell last said the icon is
};

}  // namespace platform
