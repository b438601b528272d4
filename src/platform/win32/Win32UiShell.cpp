// The Windows UI host: menus, balloon, plain and hover tips, and the notification-area icon.
#include "platform/win32/Win32UiRecords.h"

#include <windowsx.h>

#include <cwchar>

namespace platform {

using win32::Wide;

namespace {

wchar_t* Mutable(const Text& text) { return const_cast<wchar_t*>(Wide(text)); }

// The tooltip messages of the design, by their ANSI numbers, and the wide messages
// this host sends instead. The colour messages pass through by number, as they were.
constexpr unsigned kAddToolA = 1028;
constexpr unsigned kSetTitleA = 1056;
constexpr unsigned kSetFont = 48;

}  // namespace

// ---- Menus ----------------------------------------------------------------------------------

win32::UniqueMenu Win32UiHost::BuildMenu(const std::vector<UiMenuItem>& items, bool popup) {
  win32::UniqueMenu menu(popup ? CreatePopupMenu() : CreateMenu());
  if (!menu) return menu;
  for (const UiMenuItem& item : items) {
    if (!item.visible) continue;
    if (item.caption == u"-") {
      AppendMenuW(menu.Get(), MF_SEPARATOR, 0, nullptr);
      continue;
    }
    UINT flags = (item.enabled ? 0 : MF_GRAYED) | (item.checked ? MF_CHECKED : 0);
    if (!item.children.empty()) {
      win32::UniqueMenu sub = BuildMenu(item.children, true);
      if (AppendMenuW(menu.Get(), MF_POPUP | flags, reinterpret_cast<UINT_PTR>(sub.Get()),
                      Wide(item.caption))) {
        (void)sub.Detach();  // the menu owns its submenu from here on
      }
    } else {
      AppendMenuW(menu.Get(), MF_STRING | flags, item.id, Wide(item.caption));
    }
  }
  return menu;
}

void Win32UiHost::ApplyMenuBar(FormRec& f) {
  // A bar the window already shows is rebuilt once the present message has been
  // handled: an item switched on and off again within one handler (the monitor's tick
  // does so every ten seconds) then costs nothing, and several changes one rebuild.
  if (f.menuBar && !f.state.menuBar.empty()) {
    if (!f.menuPosted) f.menuPosted = PostMessageW(f.hwnd.Get(), kApplyMenuMessage, 0, 0) != FALSE;
    if (f.menuPosted) return;
  }
  BuildMenuBar(f);
}

void Win32UiHost::BuildMenuBar(FormRec& f) {
  f.menuPosted = false;
  if (f.menuBar && f.state.menuBar == f.shownMenu) return;
  win32::UniqueMenu bar;
  if (!f.state.menuBar.empty()) bar = BuildMenu(f.state.menuBar, false);
  if (!bar && !f.menuBar) return;
  SetMenu(f.hwnd.Get(), bar.Get());
  // The window shows the new bar now: the old one goes.
  f.menuBar = std::move(bar);
  f.shownMenu = f.state.menuBar;
  DrawMenuBar(f.hwnd.Get());
}

std::uint32_t Win32UiHost::PopupMenu(UiHandle window, const std::vector<UiMenuItem>& items) {
  HWND owner = Started();
  if (FormRec* f = Form(window); f != nullptr && !f->dead && IsWindowVisible(f->hwnd.Get()))
    owner = f->hwnd.Get();
  win32::UniqueMenu menu = BuildMenu(items, true);
  if (!menu) return 0;
  POINT pt{};
  GetCursorPos(&pt);
  // A menu asked for from the keyboard on a tray icon opens at the icon, not at a
  // pointer that may be anywhere.
  if (keyboardTray_ != nullptr) pt = keyboardTray_->anchor;
  // Without the foreground the menu would not close when the user clicks elsewhere.
  SetForegroundWindow(owner);
  const UINT id = static_cast<UINT>(TrackPopupMenuEx(
      menu.Get(), TPM_RETURNCMD | TPM_NONOTIFY | TPM_RIGHTBUTTON, pt.x, pt.y, owner, nullptr));
  PostMessageW(owner, WM_NULL, 0, 0);
  return id;
}

// ---- Balloon tips ----------------------------------------------------------------------------

HWND Win32UiHost::TipHandle(UiHandle tip) const {
  auto it = tips_.find(tip);
  return it == tips_.end() ? nullptr : it->second->hwnd.Get();
}

UiHandle Win32UiHost::CreateTip(const UiTip& tip) {
  HWND tool = nullptr;
  if (ControlRec* c = Control(tip.tool); c != nullptr && !c->dead) tool = c->hwnd.Get();
  if (FormRec* f = Form(tip.tool); f != nullptr && !f->dead) tool = f->hwnd.Get();
  if (tool == nullptr) return 0;

  auto rec = std::make_unique<TipRec>();
  rec->tip = tip;
  rec->toolHwnd = tool;
  const wchar_t* cls = tip.windowClass.empty() ? TOOLTIPS_CLASSW : Wide(tip.windowClass);
  // Owned by the tool's window, so that it goes with it.
  rec->hwnd.Reset(CreateWindowExW(WS_EX_TOPMOST, cls, nullptr, tip.style, 0, 0, 0, 0, tool, nullptr,
                                  instance_, nullptr));
  if (!rec->hwnd) return 0;
  SetWindowSubclass(rec->hwnd.Get(), &Win32UiHost::TipProc, 2, reinterpret_cast<DWORD_PTR>(this));

  // Under Wine a balloon that stands over a window of ours paints solid black; one
  // that stands clear of them paints well. So a balloon is always shown by tracking,
  // placed outside its window with the stem at the tool (see PlaceBalloon), instead
  // of coming up under the pointer.
  const bool balloon = (tip.style & TTS_BALLOON) != 0;
  rec->placed = balloon;
  TOOLINFOW ti{};
  ti.cbSize = sizeof(ti);
  ti.uFlags = tip.toolFlags | (balloon ? TTF_TRACK | TTF_ABSOLUTE : 0);
  ti.hwnd = tool;
  ti.uId = reinterpret_cast<UINT_PTR>(tool);
  GetClientRect(tool, &ti.rect);
  ti.lpszText = Mutable(rec->tip.text);
  for (const UiTipMessage& m : tip.messages) {
    switch (m.message) {
      case kAddToolA:
        SendMessageW(rec->hwnd.Get(), TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&ti));
        break;
      case kSetTitleA:
        SendMessageW(rec->hwnd.Get(), TTM_SETTITLEW, static_cast<WPARAM>(tip.icon),
                     reinterpret_cast<LPARAM>(Wide(rec->tip.title)));
        break;
      case kSetFont: {
        if (!tip.fontName) break;
        const double points = tip.fontSize > 0 ? tip.fontSize : 8.25;
        const FormRec* form = FormOf(GetAncestor(tool, GA_ROOT));
        rec->font.Reset(CreateFontW(
            -MulDiv(static_cast<int>(points * 100), form != nullptr ? form->dpi : dpi_, 7200), 0, 0,
            0, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS,
            CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, DEFAULT_PITCH | FF_SWISS, Wide(*tip.fontName)));
        SendMessageW(rec->hwnd.Get(), WM_SETFONT, reinterpret_cast<WPARAM>(rec->font.Get()), TRUE);
        break;
      }
      default:
        if (m.message == TTM_SETDELAYTIME && m.wParam == TTDT_AUTOPOP) rec->visibleMs = m.lParam;
        SendMessageW(rec->hwnd.Get(), m.message, static_cast<WPARAM>(m.wParam),
                     static_cast<LPARAM>(m.lParam));
        break;
    }
  }
  const UiHandle h = next_++;
  TipRec& t = *rec;
  tips_[h] = std::move(rec);
  // A tip that comes with the pointer shows when the pointer is over its tool; the
  // click that asked for it was there. Its place is taken from the click's message:
  // the pointer's present place can lag behind it (under Wine it does).
  const bool onDemand = (tip.toolFlags & TTF_TRACK) != 0;
  if (balloon && !onDemand) {
    const DWORD at = GetMessagePos();
    POINT pt{GET_X_LPARAM(at), GET_Y_LPARAM(at)};
    RECT r;
    GetWindowRect(tool, &r);
    if (PtInRect(&r, pt)) PlaceBalloon(h, t, (r.left + r.right) / 2);
  }
  return h;
}

void Win32UiHost::PlaceBalloon(UiHandle h, TipRec& t, long stemX) {
  HWND form = GetAncestor(t.toolHwnd, GA_ROOT);
  RECT f{};
  RECT tool{};
  GetWindowRect(form, &f);
  GetWindowRect(t.toolHwnd, &tool);
  RECT work{};
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
  TOOLINFOW ti{};
  ti.cbSize = sizeof(ti);
  ti.hwnd = t.toolHwnd;
  ti.uId = reinterpret_cast<UINT_PTR>(t.toolHwnd);
  // Tracked at the bottom of the work area the balloon opens upwards with its stem
  // down; then it is lifted to stand on the window's top edge. Without room there,
  // tracked at the top it opens downwards, and is lowered to hang from the bottom.
  SendMessageW(t.hwnd.Get(), TTM_TRACKPOSITION, 0, MAKELPARAM(stemX, work.bottom - 1));
  SendMessageW(t.hwnd.Get(), TTM_TRACKACTIVATE, TRUE, reinterpret_cast<LPARAM>(&ti));
  RECT b{};
  GetWindowRect(t.hwnd.Get(), &b);
  LONG height = b.bottom - b.top;
  LONG top = f.top - height;
  if (top < work.top) {
    SendMessageW(t.hwnd.Get(), TTM_TRACKPOSITION, 0, MAKELPARAM(stemX, work.top));
    GetWindowRect(t.hwnd.Get(), &b);
    height = b.bottom - b.top;
    top = f.bottom;
    // The window fills the height: at the tool after all.
    if (top + height > work.bottom) top = tool.bottom;
  }
  const LONG width = b.right - b.left;
  // Wine shows what lies outside the balloon's outline in black: the window loses
  // its outline and its background is what the screen showed there before.
  t.backdrop.Reset();
  {
    win32::WindowDC screen(nullptr);
    win32::MemoryDC mem(screen.Get(), width, height);
    BitBlt(mem.Get(), 0, 0, width, height, screen.Get(), b.left, top, SRCCOPY);
    t.backdrop = mem.TakeBitmap();
  }
  // The tip fills and frames its window's outline; it keeps its shape that way.
  if (!t.outline) t.outline.Reset(CreateRectRgn(0, 0, 0, 0));
  if (GetWindowRgn(t.hwnd.Get(), t.outline.Get()) == ERROR)
    SetRectRgn(t.outline.Get(), 0, 0, width, height);
  SetWindowRgn(t.hwnd.Get(), nullptr, FALSE);
  SetWindowPos(t.hwnd.Get(), HWND_TOPMOST, b.left, top, 0, 0, SWP_NOSIZE | SWP_NOACTIVATE);
  RedrawWindow(t.hwnd.Get(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
  // A tracked tip stays until it is told to go: the tip's visible time does that.
  if (t.hideTimer != 0) StopTimer(t.hideTimer);
  t.hideTimer = 0;
  if (t.visibleMs > 0) {
    t.hideTimer = StartTimer(static_cast<std::uint32_t>(t.visibleMs), [this, h] {
      auto it = tips_.find(h);
      if (it == tips_.end()) return;
      StopTimer(it->second->hideTimer);
      it->second->hideTimer = 0;
      TOOLINFOW off{};
      off.cbSize = sizeof(off);
      off.hwnd = it->second->toolHwnd;
      off.uId = reinterpret_cast<UINT_PTR>(it->second->toolHwnd);
      SendMessageW(it->second->hwnd.Get(), TTM_TRACKACTIVATE, FALSE,
                   reinterpret_cast<LPARAM>(&off));
    });
  }
}

LRESULT CALLBACK Win32UiHost::TipProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp, UINT_PTR,
                                      DWORD_PTR selfData) noexcept {
  if (msg == WM_NCDESTROY) {
    RemoveWindowSubclass(hwnd, &Win32UiHost::TipProc, 2);
    return DefSubclassProc(hwnd, msg, wp, lp);
  }
  if (msg == WM_ERASEBKGND) {
    auto* self = reinterpret_cast<Win32UiHost*>(selfData);
    for (auto& [h, t] : self->tips_) {
      if (t->hwnd.Get() != hwnd || !t->backdrop) continue;
      HDC dc = reinterpret_cast<HDC>(wp);
      {
        win32::UniqueDC mem(CreateCompatibleDC(dc));
        win32::Selected picture(mem.Get(), t->backdrop.Get());
        RECT r;
        GetClientRect(hwnd, &r);
        BitBlt(dc, 0, 0, r.right, r.bottom, mem.Get(), 0, 0, SRCCOPY);
      }
      if (t->outline) {
        win32::UniqueBrush fill(
            CreateSolidBrush(static_cast<COLORREF>(SendMessageW(hwnd, TTM_GETTIPBKCOLOR, 0, 0))));
        win32::UniqueBrush edge(
            CreateSolidBrush(static_cast<COLORREF>(SendMessageW(hwnd, TTM_GETTIPTEXTCOLOR, 0, 0))));
        FillRgn(dc, t->outline.Get(), fill.Get());
        FrameRgn(dc, t->outline.Get(), edge.Get(), 1, 1);
      }
      return 1;
    }
  }
  if (msg == TTM_WINDOWFROMPOINT && lp != 0) {
    // The tip asks which window is under the pointer. The label on a skinned button
    // is part of the button, as far as the button's tips go.
    auto* self = reinterpret_cast<Win32UiHost*>(selfData);
    HWND under = WindowFromPoint(*reinterpret_cast<const POINT*>(lp));
    ControlRec* c = self->ControlOf(under);
    if (c != nullptr && c->state.kind == UiKind::Label && c->container != 0) {
      ControlRec* p = self->Control(c->container);
      if (p != nullptr && p->state.kind == UiKind::PictureButton)
        return reinterpret_cast<LRESULT>(p->hwnd.Get());
    }
    return reinterpret_cast<LRESULT>(under);
  }
  return DefSubclassProc(hwnd, msg, wp, lp);
}

void Win32UiHost::RelayToTips(HWND tool, HWND from, UINT msg, WPARAM wp, LPARAM lp) {
  POINT pt{GET_X_LPARAM(lp), GET_Y_LPARAM(lp)};
  if (from != tool) MapWindowPoints(from, tool, &pt, 1);
  MSG relay{};
  relay.hwnd = tool;
  relay.message = msg;
  relay.wParam = wp;
  relay.lParam = MAKELPARAM(pt.x, pt.y);
  relay.time = GetMessageTime();
  GetCursorPos(&relay.pt);
  for (auto& [h, t] : tips_) {
    if (t->toolHwnd == tool && !t->placed && IsWindow(t->hwnd.Get())) {
      SendMessageW(t->hwnd.Get(), TTM_RELAYEVENT, 0, reinterpret_cast<LPARAM>(&relay));
    }
  }
}

void Win32UiHost::DestroyTip(UiHandle tip) {
  auto it = tips_.find(tip);
  if (it == tips_.end()) return;
  if (it->second->hideTimer != 0) StopTimer(it->second->hideTimer);
  // Out of the map first: the window that goes with the record may still send the
  // host messages.
  std::unique_ptr<TipRec> gone = std::move(it->second);
  tips_.erase(it);
}

void Win32UiHost::TrackTip(UiHandle tip, long x, long y, UiHandle control) {
  auto it = tips_.find(tip);
  if (it == tips_.end()) return;
  HWND window = WindowHandle(control);
  if (window == nullptr) window = it->second->toolHwnd;
  // The point is in the design's pixels; the window is drawn at its own scale.
  const FormRec* form = FormOf(GetAncestor(window, GA_ROOT));
  const int dpi = form != nullptr ? form->dpi : dpi_;
  POINT pt{Scaled(x, dpi), Scaled(y, dpi)};
  ClientToScreen(window, &pt);
  if (it->second->placed) {
    PlaceBalloon(tip, *it->second, pt.x);
    return;
  }
  TOOLINFOW ti{};
  ti.cbSize = sizeof(ti);
  ti.hwnd = it->second->toolHwnd;
  ti.uId = reinterpret_cast<UINT_PTR>(it->second->toolHwnd);
  SendMessageW(it->second->hwnd.Get(), TTM_TRACKPOSITION, 0, MAKELPARAM(pt.x, pt.y));
  SendMessageW(it->second->hwnd.Get(), TTM_TRACKACTIVATE, TRUE, reinterpret_cast<LPARAM>(&ti));
}

void Win32UiHost::ShowPlainTip(const Text& text) {
  if (Started() == nullptr) return;
  TOOLINFOW ti{};
  ti.cbSize = sizeof(ti);
  ti.uFlags = TTF_IDISHWND | TTF_TRACK | TTF_ABSOLUTE;
  ti.hwnd = hostHwnd_.Get();
  ti.uId = reinterpret_cast<UINT_PTR>(hostHwnd_.Get());
  ti.lpszText = Mutable(text);
  if (!plainTip_) {
    plainTip_.Reset(CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr,
                                    WS_POPUP | TTS_NOPREFIX | TTS_ALWAYSTIP, 0, 0, 0, 0,
                                    hostHwnd_.Get(), nullptr, instance_, nullptr));
    if (!plainTip_) return;
    SendMessageW(plainTip_.Get(), TTM_SETMAXTIPWIDTH, 0, 500);
    SendMessageW(plainTip_.Get(), TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&ti));
  } else {
    SendMessageW(plainTip_.Get(), TTM_UPDATETIPTEXTW, 0, reinterpret_cast<LPARAM>(&ti));
  }
  POINT pt{};
  GetCursorPos(&pt);
  SendMessageW(plainTip_.Get(), TTM_TRACKPOSITION, 0, MAKELPARAM(pt.x, pt.y));
  SendMessageW(plainTip_.Get(), TTM_TRACKACTIVATE, TRUE, reinterpret_cast<LPARAM>(&ti));
}

void Win32UiHost::HidePlainTip() {
  if (!plainTip_) return;
  TOOLINFOW ti{};
  ti.cbSize = sizeof(ti);
  ti.hwnd = hostHwnd_.Get();
  ti.uId = reinterpret_cast<UINT_PTR>(hostHwnd_.Get());
  SendMessageW(plainTip_.Get(), TTM_TRACKACTIVATE, FALSE, reinterpret_cast<LPARAM>(&ti));
}

// ---- Notification area -------------------------------------------------------------------------

void Win32UiHost::ApplyTray(TrayRec& t, DWORD message) {
  t.data.uFlags = NIF_MESSAGE | NIF_ICON | NIF_TIP | NIF_SHOWTIP;
  t.data.uCallbackMessage = kTrayCallbackMessage;
  t.data.hIcon = t.icon;
  std::wmemset(t.data.szTip, 0, sizeof(t.data.szTip) / sizeof(wchar_t));
  std::wcsncpy(t.data.szTip, Wide(base::Left(t.state.tip, 63)), 63);
  if (message == NIM_ADD) {
    if (!Shell_NotifyIconW(NIM_ADD, &t.data)) return;
    t.added = true;
    // The icon's messages then carry the event in the low word of lParam.
    t.data.uVersion = NOTIFYICON_VERSION_4;
    Shell_NotifyIconW(NIM_SETVERSION, &t.data);
    return;
  }
  if (t.added) Shell_NotifyIconW(NIM_MODIFY, &t.data);
}

void Win32UiHost::RetryTray() {
  bool missing = false;
  for (auto& [h, t] : tray_) {
    if (!t->added) ApplyTray(*t, NIM_ADD);
    missing = missing || !t->added;
  }
  // The shell may still be starting; give it a minute.
  if (!missing || ++trayRetries_ > 60) KillTimer(hostHwnd_.Get(), kTrayRetryTimer);
}

namespace {

// The icon of a key or path, at the tray's size for `dpi`, in the variant for the
// taskbar's theme; one loaded from a file is put in `owned` and its file in `file`,
// the program's or the system's shared icon stands in for a missing file.
HICON LoadTrayIcon(win32::Pictures& pictures, const Text& keyOrPath, bool lightTaskbar, int dpi,
                   HINSTANCE instance, win32::UniqueIcon& owned, Text& file) {
  file = pictures.IconPath(keyOrPath, lightTaskbar);
  const int side = win32::MetricForDpi(SM_CXSMICON, dpi);
  owned.Reset(win32::Pictures::LoadIconFile(file, side, side));
  HICON icon = owned.Get();
  if (icon == nullptr) file.clear();
  if (icon == nullptr) icon = LoadIconW(instance, MAKEINTRESOURCEW(1));
  if (icon == nullptr) icon = LoadIconW(nullptr, IDI_APPLICATION);
  return icon;
}

}  // namespace

UiHandle Win32UiHost::AddTrayIcon(const UiTrayIcon& icon, std::function<void(int)> onEvent) {
  if (Started() == nullptr) return 0;
  HWND owner = icon.owner != 0 ? WindowHandle(icon.owner) : hostHwnd_.Get();
  if (owner == nullptr) owner = hostHwnd_.Get();
  auto t = std::make_unique<TrayRec>();
  t->handle = next_++;
  t->state = icon;
  t->onEvent = std::move(onEvent);
  UINT id = 0;  // the design's icon identifier is 0; further icons of a window count up
  for (auto& [h, other] : tray_) {
    if (other->data.hWnd == owner) ++id;
  }
  t->data.cbSize = sizeof(t->data);
  t->data.hWnd = owner;
  t->data.uID = id;
  t->icon = LoadTrayIcon(*pictures_, icon.icon, lightTaskbar_, TrayDpi(), instance_, t->ownedIcon,
                         t->iconFile);
  ApplyTray(*t, NIM_ADD);
  if (!t->added) {
    trayRetries_ = 0;
    SetTimer(hostHwnd_.Get(), kTrayRetryTimer, 1000, nullptr);
  }
  const UiHandle h = t->handle;
  tray_[h] = std::move(t);
  return h;
}

void Win32UiHost::ModifyTrayIcon(UiHandle handle, const UiTrayIcon& state) {
  auto it = tray_.find(handle);
  if (it == tray_.end()) return;
  TrayRec& t = *it->second;
  if (state.icon != t.state.icon) {
    win32::UniqueIcon owned;
    HICON icon = LoadTrayIcon(*pictures_, state.icon, lightTaskbar_, TrayDpi(), instance_, owned,
                              t.iconFile);
    // The old icon stays until the shell shows the new one.
    win32::UniqueIcon old = std::move(t.ownedIcon);
    t.icon = icon;
    t.ownedIcon = std::move(owned);
    t.state = state;
    ApplyTray(t, NIM_MODIFY);
    return;
  }
  t.state = state;
  ApplyTray(t, NIM_MODIFY);
}

void Win32UiHost::ReloadTrayIcon(TrayRec& t) {
  win32::UniqueIcon owned;
  HICON icon = LoadTrayIcon(*pictures_, t.state.icon, lightTaskbar_, TrayDpi(), instance_, owned,
                            t.iconFile);
  win32::UniqueIcon old = std::move(t.ownedIcon);  // until the shell shows the new one
  t.icon = icon;
  t.ownedIcon = std::move(owned);
  ApplyTray(t, NIM_MODIFY);
}

int Win32UiHost::TrayDpi() { return win32::DpiForWindow(Started(), dpi_); }

bool Win32UiHost::TrayIconShown(UiHandle icon) const {
  auto it = tray_.find(icon);
  return it != tray_.end() && it->second->added;
}

int Win32UiHost::TrayBalloonsShown(UiHandle icon) const {
  auto it = tray_.find(icon);
  return it == tray_.end() ? 0 : it->second->balloons;
}

Text Win32UiHost::TrayIconFile(UiHandle icon) const {
  auto it = tray_.find(icon);
  return it == tray_.end() ? Text() : it->second->iconFile;
}

void Win32UiHost::RemoveTrayIcon(UiHandle handle) {
  auto it = tray_.find(handle);
  if (it == tray_.end()) return;
  TrayRec& t = *it->second;
  if (t.added) {
    t.data.uFlags = 0;
    Shell_NotifyIconW(NIM_DELETE, &t.data);
  }
  tray_.erase(it);
}

void Win32UiHost::ShowTrayBalloon(UiHandle handle, const UiTrayBalloon& balloon) {
  auto it = tray_.find(handle);
  if (it == tray_.end() || !it->second->added) return;
  NOTIFYICONDATAW data = it->second->data;
  data.uFlags = NIF_INFO;
  std::wcsncpy(data.szInfoTitle, Wide(base::Left(balloon.title, 63)), 63);
  std::wcsncpy(data.szInfo, Wide(base::Left(balloon.text, 255)), 255);
  switch (balloon.icon) {
    case UiBalloonIcon::Info: data.dwInfoFlags = NIIF_INFO; break;
    case UiBalloonIcon::Warning: data.dwInfoFlags = NIIF_WARNING; break;
    case UiBalloonIcon::Error: data.dwInfoFlags = NIIF_ERROR; break;
    default: data.dwInfoFlags = NIIF_NONE; break;
  }
  if (Shell_NotifyIconW(NIM_MODIFY, &data)) ++it->second->balloons;
}

void Win32UiHost::TrayCallback(HWND owner, WPARAM wp, LPARAM lp) {
  // Version 4 puts the event in the low word and the icon in the high word; an
  // older shell (or a test posting the design's numbers) sends the event alone.
  const int event = LOWORD(lp);
  const UINT id = HIWORD(lp);
  TrayRec* only = nullptr;
  TrayRec* match = nullptr;
  int count = 0;
  for (auto& [h, t] : tray_) {
    if (t->data.hWnd != owner) continue;
    ++count;
    only = t.get();
    if (t->data.uID == id) match = t.get();
  }
  TrayRec* target = count == 1 ? only : match;
  if (target == nullptr || !target->onEvent) return;
  // Version 4 gives the icon's place with every event.
  target->anchor = {GET_X_LPARAM(wp), GET_Y_LPARAM(wp)};
  int told = event;
  switch (event) {
    case WM_LBUTTONUP:
    case WM_RBUTTONUP:
    case WM_MBUTTONUP: target->lastMouseUp = GetTickCount(); break;
    case NIN_KEYSELECT: told = kTrayKeyboardMenu; break;
    case NIN_SELECT:
    case WM_CONTEXTMENU:
      // The shell follows a click with these as well; only the keyboard's (Enter,
      // the context-menu key, Shift+F10) open the menu.
      if (GetTickCount() - target->lastMouseUp < GetDoubleClickTime()) return;
      told = kTrayKeyboardMenu;
      break;
    default: break;
  }
  std::function<void(int)> handler = target->onEvent;
  TrayRec* keyboard = told == kTrayKeyboardMenu ? target : nullptr;
  struct Restore {
    TrayRec*& slot;
    TrayRec* before;
    ~Restore() { slot = before; }
  } restore{keyboardTray_, keyboardTray_};
  keyboardTray_ = keyboard;
  handler(told);
}

// ---- Plain hover tips -------------------------------------------------------------------------

void Win32UiHost::SetHoverTip(ControlRec& c) {
  if (c.state.toolTip.empty()) {
    RemoveHoverTip(c.hwnd.Get());
    return;
  }
  if (!hoverTip_) {
    hoverTip_.Reset(CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr,
                                    WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, CW_USEDEFAULT,
                                    CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, hostHwnd_.Get(),
                                    nullptr, instance_, nullptr));
    if (!hoverTip_) return;
  }
  TOOLINFOW ti{};
  ti.cbSize = sizeof(ti);
  ti.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
  ti.hwnd = GetParent(c.hwnd.Get());
  ti.uId = reinterpret_cast<UINT_PTR>(c.hwnd.Get());
  ti.lpszText = Mutable(c.state.toolTip);
  TOOLINFOW probe = ti;
  probe.lpszText = nullptr;
  if (SendMessageW(hoverTip_.Get(), TTM_GETTOOLINFOW, 0, reinterpret_cast<LPARAM>(&probe))) {
    SendMessageW(hoverTip_.Get(), TTM_UPDATETIPTEXTW, 0, reinterpret_cast<LPARAM>(&ti));
  } else {
    SendMessageW(hoverTip_.Get(), TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&ti));
  }
}

void Win32UiHost::RemoveHoverTip(HWND tool) {
  if (!hoverTip_ || tool == nullptr) return;
  TOOLINFOW ti{};
  ti.cbSize = sizeof(ti);
  ti.uFlags = TTF_IDISHWND;
  ti.hwnd = GetParent(tool);
  ti.uId = reinterpret_cast<UINT_PTR>(tool);
  SendMessageW(hoverTip_.Get(), TTM_DELTOOLW, 0, reinterpret_cast<LPARAM>(&ti));
}

}  // namespace platform
