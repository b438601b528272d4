// The Windows UI host: the forms' windows (made, changed, shown, destroyed), their
// messages, the screen's scale and the desktop's look.
#include "platform/win32/Win32UiRecords.h"

#include <windowsx.h>

#include <algorithm>
#include <cmath>

namespace platform {

using win32::Wide;

LRESULT Win32UiHost::OnFormMessage(FormRec& f, UINT msg, WPARAM wp, LPARAM lp) {
  HWND hwnd = f.hwnd.Get();
  switch (msg) {
    case kApplyMenuMessage: BuildMenuBar(f); return 0;
    case WM_CLOSE:
      // The model decides: it unloads the form (and destroys this window) or not.
      f.events->OnCloseRequest(f.handle);
      return 0;
    case WM_ACTIVATE: {
      LRESULT r = DefWindowProcW(hwnd, msg, wp, lp);
      if (LOWORD(wp) == WA_INACTIVE || f.dead) return r;
      const HWND from = reinterpret_cast<HWND>(lp);
      if (from != nullptr && from != hwnd && FormOf(from) != nullptr) f.activatedFrom = from;
      if (f.pendingFocus != 0) {
        if (ControlRec* c = Control(f.pendingFocus)) SetFocus(c->hwnd.Get());
        f.pendingFocus = 0;
      }
      // Activation among the program's own forms, as the design counts it: coming
      // back from another program does not activate a form again.
      if (lastActive_ != f.handle) {
        const UiHandle before = lastActive_;
        lastActive_ = f.handle;
        if (FormRec* old = Form(before); old != nullptr && !old->dead) {
          old->events->OnActivate(before, false);
        }
        if (!f.dead) f.events->OnActivate(f.handle, true);
      }
      return r;
    }
    case WM_ERASEBKGND: return 1;
    case WM_PAINT: {
      win32::PaintScope paint(hwnd);
      RECT client;
      GetClientRect(hwnd, &client);
      win32::MemoryDC mem(paint.Get(), std::max<LONG>(1, client.right),
                          std::max<LONG>(1, client.bottom));
      PaintScene(f, mem.Get(), client, nullptr, true);
      PaintBehindOutline(f, mem.Get(), {0, 0});
      const RECT& area = paint.Area();
      BitBlt(paint.Get(), area.left, area.top, area.right - area.left, area.bottom - area.top,
             mem.Get(), area.left, area.top, SRCCOPY);
      return 0;
    }
    case WM_SIZE:
      if (!f.dead && f.events != nullptr &&
          (wp == SIZE_MINIMIZED || wp == SIZE_RESTORED || wp == SIZE_MAXIMIZED))
        f.events->OnMinimized(f.handle, wp == SIZE_MINIMIZED);
      return DefWindowProcW(hwnd, msg, wp, lp);
    case WM_WINDOWPOSCHANGED: {
      LRESULT r = DefWindowProcW(hwnd, msg, wp, lp);
      const auto* pos = reinterpret_cast<const WINDOWPOS*>(lp);
      if (f.applying || f.dead || (pos->flags & SWP_NOMOVE && pos->flags & SWP_NOSIZE)) return r;
      RECT now;
      GetWindowRect(hwnd, &now);
      if (EqualRect(&now, &f.applied) || IsIconic(hwnd)) return r;
      f.applied = now;
      const UiRect twips = TwipsRect(now, f.dpi);
      f.state.rect = twips;
      f.events->OnMoved(f.handle, twips);
      return r;
    }
    case WM_DPICHANGED:
      // The window went to a screen of another scale (or was told so): it is drawn at
      // that scale in the place the system suggests. Its size in twips stays.
      Rescale(f, HIWORD(wp), reinterpret_cast<const RECT*>(lp));
      return 0;
    case WM_SETCURSOR:
      if (f.state.pointer == UiPointer::Hourglass) {
        SetCursor(LoadCursorW(nullptr, IDC_WAIT));
        return TRUE;
      }
      return DefWindowProcW(hwnd, msg, wp, lp);
    case WM_SYSCHAR:
      if (!f.menuBar) return 0;
      return DefWindowProcW(hwnd, msg, wp, lp);
    case WM_COMMAND:
      if (lp == 0 && HIWORD(wp) == 0) {
        f.events->OnMenu(f.handle, LOWORD(wp));
        return 0;
      }
      break;
    case kTrayCallbackMessage: TrayCallback(hwnd, wp, lp); return 0;
    default:
      if (IsMouseMessage(msg)) {
        Mouse(f, nullptr, hwnd, msg, wp, lp);
        return 0;
      }
      break;
  }
  LRESULT result = 0;
  if (OnParentMessage(msg, wp, lp, result)) return result;
  return DefWindowProcW(hwnd, msg, wp, lp);
}

// ---- Scale and look -------------------------------------------------------------------------

void Win32UiHost::ApplyTheme() {
  const bool highContrast = win32::HighContrastOn();
  const bool light = win32::LightTaskbar();
  const bool contrastChanged = highContrast != highContrast_;
  highContrast_ = highContrast;
  if (light != lightTaskbar_) {
    lightTaskbar_ = light;
    for (auto& [h, t] : tray_) {
      if (!t->iconFile.empty() || t->ownedIcon) ReloadTrayIcon(*t);
    }
  }
  // The system's colours may have changed even where high contrast did not: every
  // window is drawn again, and what keeps a picture of its background makes it anew.
  for (auto& [h, f] : forms_) {
    if (f->dead) continue;
    for (UiHandle ch : f->controls) {
      ControlRec* c = Control(ch);
      if (c == nullptr || c->dead) continue;
      c->backdrop.Reset();
      c->backdropBitmap.Reset();
      if (contrastChanged) {
        if (c->state.kind == UiKind::ListView) ApplyList(*c, true);
        if (c->state.kind == UiKind::ProgressBar) ApplyControl(*c, UiChange::Value);
      }
    }
    RedrawWindow(f->hwnd.Get(), nullptr, nullptr,
                 RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
  }
}

void Win32UiHost::Rescale(FormRec& f, int dpi, const RECT* suggested) {
  if (dpi <= 0) return;
  f.dpi = dpi;
  f.applied = suggested != nullptr ? *suggested : PixelRect(f.state.rect, dpi);
  f.applying = true;
  SetWindowPos(f.hwnd.Get(), nullptr, f.applied.left, f.applied.top,
               f.applied.right - f.applied.left, f.applied.bottom - f.applied.top,
               SWP_NOZORDER | SWP_NOACTIVATE);
  f.applying = false;
  // The outline, the icons, and every control's place, letters and pictures at the new scale.
  f.appliedRegion.reset();
  ApplyForm(f, UiChange::Style | UiChange::Picture);
  for (UiHandle ch : f.controls) {
    ControlRec* c = Control(ch);
    if (c == nullptr || c->dead) continue;
    c->backdrop.Reset();
    c->backdropBitmap.Reset();
    c->rowImageKeys.clear();
    c->rowImages.Reset();
    ApplyControl(*c, UiChange::Layout | UiChange::Style);
    if (c->state.kind == UiKind::ListView) ApplyList(*c, true);
  }
  RedrawWindow(f.hwnd.Get(), nullptr, nullptr,
               RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
}

// ---- Forms ---------------------------------------------------------------------------------

UiHandle Win32UiHost::CreateForm(const UiWindow& window, IUiEvents& events) {
  if (Started() == nullptr) return 0;
  auto f = std::make_unique<FormRec>();
  f->handle = next_++;
  f->events = &events;
  f->state = window;
  f->dpi = dpi_;
  const RECT r = PixelRect(window.rect, f->dpi);
  DWORD style = WS_CLIPCHILDREN | WS_CLIPSIBLINGS;
  style |= window.frameless ? WS_POPUP
                            : WS_OVERLAPPED | WS_CAPTION | (window.controlBox ? WS_SYSMENU : 0) |
                                  (window.minButton ? WS_MINIMIZEBOX : 0) |
                                  (window.maxButton ? WS_MAXIMIZEBOX : 0);
  // A frameless window has no button on the taskbar: it belongs to the host window.
  HWND owner = window.frameless ? hostHwnd_.Get() : nullptr;
  f->hwnd.Reset(CreateWindowExW(window.topmost ? WS_EX_TOPMOST : 0, kFormClass,
                                Wide(window.caption), style, r.left, r.top, r.right - r.left,
                                r.bottom - r.top, owner, nullptr, instance_, this));
  if (!f->hwnd) return 0;
  f->applied = r;
  // A window on a screen of another scale than the one the host started on is drawn
  // at that screen's.
  if (const int own = win32::DpiForWindow(f->hwnd.Get(), dpi_); own != f->dpi) {
    f->dpi = own;
    f->applied = PixelRect(window.rect, own);
    f->applying = true;
    SetWindowPos(f->hwnd.Get(), nullptr, f->applied.left, f->applied.top,
                 f->applied.right - f->applied.left, f->applied.bottom - f->applied.top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
    f->applying = false;
  }
  SetName(f->hwnd.Get(), window.name);
  const UiHandle h = f->handle;
  byHwnd_[f->hwnd.Get()] = h;
  FormRec& rec = *f;
  forms_[h] = std::move(f);
  ApplyForm(rec, UiChange::All);
  return h;
}

void Win32UiHost::UpdateForm(UiHandle window, const UiWindow& state, UiChange changes) {
  FormRec* f = Form(window);
  if (f == nullptr || f->dead) return;
  f->state = state;
  ApplyForm(*f, changes);
}

void Win32UiHost::ApplyFrame(FormRec& f) {
  const LONG_PTR style = GetWindowLongPtrW(f.hwnd.Get(), GWL_STYLE);
  LONG_PTR want = style;
  if (f.state.frameless) {
    want &= ~static_cast<LONG_PTR>(WS_CAPTION | WS_MINIMIZEBOX | WS_MAXIMIZEBOX);
  } else {
    want |= WS_CAPTION;
    want = f.state.controlBox ? (want | WS_SYSMENU) : (want & ~static_cast<LONG_PTR>(WS_SYSMENU));
    want = f.state.minButton ? (want | WS_MINIMIZEBOX)
                             : (want & ~static_cast<LONG_PTR>(WS_MINIMIZEBOX));
    want = f.state.maxButton ? (want | WS_MAXIMIZEBOX)
                             : (want & ~static_cast<LONG_PTR>(WS_MAXIMIZEBOX));
  }
  if (want == style) return;
  SetWindowLongPtrW(f.hwnd.Get(), GWL_STYLE, want);
  if (f.state.frameless)
    SetWindowLongPtrW(f.hwnd.Get(), GWLP_HWNDPARENT, reinterpret_cast<LONG_PTR>(hostHwnd_.Get()));
  // The frame routine's flags: frame changed, no Z order change; the size stays.
  f.applying = true;
  SetWindowPos(f.hwnd.Get(), nullptr, f.applied.left, f.applied.top,
               f.applied.right - f.applied.left, f.applied.bottom - f.applied.top,
               SWP_NOOWNERZORDER | SWP_FRAMECHANGED | SWP_NOZORDER | SWP_NOACTIVATE);
  f.applying = false;
}

void Win32UiHost::ApplyForm(FormRec& f, UiChange changes) {
  const UiWindow& s = f.state;
  if (Has(changes, UiChange::Style)) {
    ApplyFrame(f);
    if (s.region != f.appliedRegion) {
      f.appliedRegion = s.region;
      win32::UniqueRegion region;
      f.outline.Reset();
      if (s.region) {
        // The outline is given in the design's pixels; the window is drawn at its own.
        region.Reset(CreateRoundRectRgn(
            Scaled(s.region->left, f.dpi), Scaled(s.region->top, f.dpi),
            Scaled(s.region->right, f.dpi), Scaled(s.region->bottom, f.dpi),
            Scaled(s.region->ellipseWidth, f.dpi), Scaled(s.region->ellipseHeight, f.dpi)));
      }
      if (region && s.frameless && win32::CutCornersShowBlack()) {
        // Kept for painting; the window stays whole (see FormRec::outline).
        f.outline = std::move(region);
      } else if (!s.frameless && win32::CutCornersShowBlack()) {
        // The corners of a framed window are its frame's: it stays rectangular there.
      } else if (SetWindowRgn(f.hwnd.Get(), region.Get(), TRUE) != 0) {
        (void)region.Detach();  // the window owns the region from here on
      }
    }
    const bool topmost = (GetWindowLongPtrW(f.hwnd.Get(), GWL_EXSTYLE) & WS_EX_TOPMOST) != 0;
    if (topmost != s.topmost) {
      SetWindowPos(f.hwnd.Get(), s.topmost ? HWND_TOPMOST : HWND_NOTOPMOST, 0, 0, 0, 0,
                   SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    }
    InvalidateRect(f.hwnd.Get(), nullptr, TRUE);
  }
  if (Has(changes, UiChange::Layout)) {
    const RECT r = PixelRect(s.rect, f.dpi);
    if (!EqualRect(&r, &f.applied)) {
      f.applying = true;
      SetWindowPos(f.hwnd.Get(), nullptr, r.left, r.top, r.right - r.left, r.bottom - r.top,
                   SWP_NOZORDER | SWP_NOACTIVATE);
      f.applying = false;
      f.applied = r;
    }
  }
  if (Has(changes, UiChange::Caption)) {
    wchar_t now[512] = {};
    GetWindowTextW(f.hwnd.Get(), now, 512);
    if (win32::FromWide(now) != s.caption) SetWindowTextW(f.hwnd.Get(), Wide(s.caption));
  }
  if (Has(changes, UiChange::Picture)) {
    win32::UniqueIcon big;
    win32::UniqueIcon small;
    if (!s.iconPath.empty()) {
      big.Reset(win32::Pictures::LoadIconFile(s.iconPath, win32::MetricForDpi(SM_CXICON, f.dpi),
                                              win32::MetricForDpi(SM_CYICON, f.dpi)));
      small.Reset(win32::Pictures::LoadIconFile(s.iconPath, win32::MetricForDpi(SM_CXSMICON, f.dpi),
                                                win32::MetricForDpi(SM_CYSMICON, f.dpi)));
    }
    SendMessageW(f.hwnd.Get(), WM_SETICON, ICON_BIG, reinterpret_cast<LPARAM>(big.Get()));
    SendMessageW(f.hwnd.Get(), WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(small.Get()));
    // The window shows the new icons now: the old ones go.
    f.bigIcon = std::move(big);
    f.smallIcon = std::move(small);
    RedrawWindow(f.hwnd.Get(), nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN);
  }
  if (Has(changes, UiChange::Menu)) ApplyMenuBar(f);
  if (Has(changes, UiChange::Enabled)) EnableWindow(f.hwnd.Get(), s.enabled ? TRUE : FALSE);
  bool centered = false;
  if (Has(changes, UiChange::Visible)) {
    const bool shown = IsWindowVisible(f.hwnd.Get()) != FALSE;
    if (s.visible && !shown && s.centerOnShow && !f.centered) {
      // The platform's start-up position: the middle of the work area, once.
      RECT work{};
      SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
      const LONG w = f.applied.right - f.applied.left;
      const LONG h = f.applied.bottom - f.applied.top;
      const RECT r{work.left + (work.right - work.left - w) / 2,
                   work.top + (work.bottom - work.top - h) / 2, 0, 0};
      f.applying = true;
      SetWindowPos(f.hwnd.Get(), nullptr, r.left, r.top, 0, 0,
                   SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
      f.applying = false;
      f.applied = {r.left, r.top, r.left + w, r.top + h};
      f.centered = true;
      centered = true;
    }
    if (s.visible && !shown && f.outline) {
      // What lies under the window now shows in its cut-away corners.
      const RECT& a = f.applied;
      win32::WindowDC screen(nullptr);
      win32::MemoryDC shot(screen.Get(), std::max<LONG>(1, a.right - a.left),
                           std::max<LONG>(1, a.bottom - a.top));
      BitBlt(shot.Get(), 0, 0, a.right - a.left, a.bottom - a.top, screen.Get(), a.left, a.top,
             SRCCOPY);
      f.behind = shot.TakeBitmap();
    }
    if (s.visible && !shown) {
      // A notice comes up without taking the keyboard from the program the user is in.
      ShowWindow(f.hwnd.Get(), s.showNoActivate ? SW_SHOWNOACTIVATE : SW_SHOW);
      if (s.topmost) {
        SetWindowPos(f.hwnd.Get(), HWND_TOPMOST, 0, 0, 0, 0,
                     SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
      }
      UpdateWindow(f.hwnd.Get());
    } else if (!s.visible && shown) {
      ShowWindow(f.hwnd.Get(), SW_HIDE);
    }
  }
  // The form learns where it was put.
  if (centered && !f.dead) {
    f.events->OnMoved(f.handle, TwipsRect(f.applied, f.dpi));
  }
}

void Win32UiHost::Bury(std::unique_ptr<FormRec> f) {
  graveyard_.push_back(std::move(f));
  Sweep();
}

std::uintptr_t Win32UiHost::NativeWindow(UiHandle window) {
  FormRec* f = Form(window);
  return f == nullptr || f->dead ? 0 : reinterpret_cast<std::uintptr_t>(f->hwnd.Get());
}

void Win32UiHost::DestroyForm(UiHandle window) {
  auto it = forms_.find(window);
  if (it == forms_.end()) return;
  FormRec& f = *it->second;
  f.dead = true;
  if (lastActive_ == window) lastActive_ = 0;
  formPressed_.erase(window);

  // Icons and tips that belong to this window go with it.
  for (auto t = tray_.begin(); t != tray_.end();) {
    if (t->second->data.hWnd == f.hwnd.Get()) {
      if (t->second->added) Shell_NotifyIconW(NIM_DELETE, &t->second->data);
      t = tray_.erase(t);
    } else {
      ++t;
    }
  }
  {
    // Out of the map first: a window that goes may still send the host messages.
    std::vector<std::unique_ptr<TipRec>> gone;
    for (auto t = tips_.begin(); t != tips_.end();) {
      HWND root =
          IsWindow(t->second->toolHwnd) ? GetAncestor(t->second->toolHwnd, GA_ROOT) : nullptr;
      if (root == f.hwnd.Get() || root == nullptr) {
        if (t->second->hideTimer != 0) StopTimer(t->second->hideTimer);
        gone.push_back(std::move(t->second));
        t = tips_.erase(t);
      } else {
        ++t;
      }
    }
  }

  for (UiHandle h : f.controls) {
    auto c = controls_.find(h);
    if (c == controls_.end()) continue;
    c->second->dead = true;
    if (c->second->hwnd) {
      RemoveHoverTip(c->second->hwnd.Get());
      DropName(c->second->hwnd.Get());
      byHwnd_.erase(c->second->hwnd.Get());
    }
    c->second->backdrop.Reset();
    c->second->backdropBitmap.Reset();
    // The form's window destroys its children with it, below.
    (void)c->second->hwnd.Detach();
    controlGraveyard_.push_back(std::move(c->second));
    controls_.erase(c);
  }
  HWND hwnd = f.hwnd.Get();
  DropName(hwnd);
  byHwnd_.erase(hwnd);
  auto owned = std::move(it->second);
  forms_.erase(it);
  // The window takes its menu bar with it; then its icons go.
  (void)owned->menuBar.Detach();
  owned->hwnd.Reset();
  owned->bigIcon.Reset();
  owned->smallIcon.Reset();
  // A modal loop waiting in GetMessage learns of it.
  PostMessageW(hostHwnd_.Get(), kWakeMessage, 0, 0);
  Bury(std::move(owned));
}

void Win32UiHost::FocusControl(UiHandle window, UiHandle control) {
  FormRec* f = Form(window);
  if (f == nullptr || f->dead) return;
  HWND target = f->hwnd.Get();
  if (control != 0) {
    ControlRec* c = Control(control);
    if (c == nullptr || c->dead) return;
    target = c->hwnd.Get();
  }
  if (GetFocus() == target) return;
  if (IsWindowVisible(f->hwnd.Get()) && GetActiveWindow() == f->hwnd.Get()) {
    SetFocus(target);
  } else {
    f->pendingFocus = control;
  }
}

void Win32UiHost::BeginDrag(UiHandle window) {
  FormRec* f = Form(window);
  if (f == nullptr || f->dead) return;
  // The design's way: let go of the mouse and tell the window its caption was hit.
  POINT pt{};
  GetCursorPos(&pt);
  ReleaseCapture();
  SendMessageW(f->hwnd.Get(), WM_NCLBUTTONDOWN, HTCAPTION, MAKELPARAM(pt.x, pt.y));
}

}  // namespace platform
