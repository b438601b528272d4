// The Windows UI host: controls and their notifications. Painting is in
// Win32UiPaint.cpp, what lists and combo boxes show in Win32UiLists.cpp.
#include "platform/win32/Win32UiRecords.h"

#include <uxtheme.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <functional>

namespace platform {

using win32::Bitmap;
using win32::Pictures;
using win32::Wide;

namespace {

DWORD DateStyle(const UiControl& s) {
  DWORD style = 0;
  switch (s.dateFormat) {
    case UiDateFormat::LongDate: style = DTS_LONGDATEFORMAT; break;
    case UiDateFormat::Time: style = DTS_TIMEFORMAT; break;
    default: style = DTS_SHORTDATEFORMAT; break;
  }
  return style | (s.upDown ? DTS_UPDOWN : 0);
}

// A picture the user presses is a button to the system (its window's class says so
// to a screen reader and to the keyboard).
bool ButtonWindow(const UiControl& s) {
  return s.kind == UiKind::PictureButton ||
         (s.kind == UiKind::Picture && s.role == UiRole::PushButton);
}

// The style bits of a kind that a window cannot change once it exists; the top bit
// stands for a picture's window class.
DWORD StructuralStyle(const UiControl& s) {
  switch (s.kind) {
    case UiKind::TextBox: return s.multiLine ? ES_MULTILINE : 0;
    case UiKind::DatePicker: return DateStyle(s);
    case UiKind::Picture: return ButtonWindow(s) ? 0x80000000u : 0;
    // A list without check marks asks the host for what it shows (the rows' owner): it
    // takes a hundred thousand rows at once and holds no copy of them. Check marks of
    // such a list would be the host's to draw, so a list with them holds its rows.
    case UiKind::ListView: return s.checkboxes ? 0 : LVS_OWNERDATA;
    default: return 0;
  }
}

// How many entries a combo box's list shows when it drops down.
constexpr int kComboLines = 8;

SYSTEMTIME ToSystemTime(const base::DateTime& d) {
  SYSTEMTIME st{};
  st.wYear = static_cast<WORD>(d.year);
  st.wMonth = static_cast<WORD>(d.month);
  st.wDay = static_cast<WORD>(d.day);
  st.wHour = static_cast<WORD>(d.hour);
  st.wMinute = static_cast<WORD>(d.minute);
  st.wSecond = static_cast<WORD>(d.second);
  st.wDayOfWeek = static_cast<WORD>(d.Weekday() - 1);
  return st;
}

base::DateTime FromSystemTime(const SYSTEMTIME& st) {
  return {st.wYear, st.wMonth, st.wDay, st.wHour, st.wMinute, st.wSecond};
}

Text WindowText(HWND hwnd) {
  const int n = GetWindowTextLengthW(hwnd);
  std::wstring buffer(static_cast<std::size_t>(n) + 1, L'\0');
  const int got = GetWindowTextW(hwnd, buffer.data(), n + 1);
  return win32::FromWide(buffer.data(), static_cast<std::size_t>(std::max(0, got)));
}

}  // namespace

// ---- Creating and changing controls -------------------------------------------------------

RECT Win32UiHost::RectInForm(const ControlRec& c) const {
  const int dpi = DpiOf(c);
  RECT r = PixelRect(c.state.rect, dpi);
  for (UiHandle h = c.container; h != 0;) {
    ControlRec* p = Control(h);
    if (p == nullptr) break;
    const RECT pr = PixelRect(p->state.rect, dpi);
    OffsetRect(&r, pr.left, pr.top);
    h = p->container;
  }
  return r;
}

bool Win32UiHost::ShownInForm(const ControlRec& c) const {
  for (const ControlRec* p = &c; p != nullptr; p = p->container ? Control(p->container) : nullptr) {
    if (!p->state.visible) return false;
  }
  return true;
}

HFONT Win32UiHost::Font(const UiFont& font, int dpi) {
  const double points = font.size > 0 ? font.size : 8.25;
  const int hundredths = static_cast<int>(std::lround(points * 100));
  const auto key = std::make_tuple(hundredths, font.bold, dpi);
  auto it = fonts_.find(key);
  if (it != fonts_.end()) return it->second.Get();
  win32::UniqueFont f(CreateFontW(-MulDiv(hundredths, dpi, 7200), 0, 0, 0,
                                  font.bold ? FW_BOLD : FW_NORMAL, FALSE, FALSE, FALSE,
                                  DEFAULT_CHARSET, OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS,
                                  DEFAULT_QUALITY, DEFAULT_PITCH | FF_SWISS, L"Tahoma"));
  return (fonts_[key] = std::move(f)).Get();
}

UiTextSize Win32UiHost::MeasureText(const Text& text, const UiFont& font, double wrapWidth) {
  if (!measureDc_) measureDc_.Reset(CreateCompatibleDC(nullptr));
  std::optional<win32::WindowDC> screen;
  if (!measureDc_) screen.emplace(nullptr);
  HDC dc = measureDc_ ? measureDc_.Get() : screen->Get();
  win32::Selected selected(dc, Font(font, dpi_));
  RECT r{0, 0, 0, 0};
  UINT flags = DT_CALCRECT | DT_EXPANDTABS;
  if (wrapWidth > 0) {
    r.right = std::max<LONG>(1, static_cast<LONG>(std::lround(wrapWidth * dpi_ / 1440.0)));
    flags |= DT_WORDBREAK;
  }
  // An empty caption still takes one line's height, as a label does.
  const Text& measured = text.empty() ? Text(u" ") : text;
  DrawTextW(dc, Wide(measured), static_cast<int>(measured.size()), &r, flags);
  const double k = 1440.0 / dpi_;
  const double width = text.empty() ? 0 : static_cast<double>(r.right - r.left) * k;
  return {width, static_cast<double>(r.bottom - r.top) * k};
}

HWND Win32UiHost::CreateControlWindow(ControlRec& c) {
  const UiControl& s = c.state;
  HWND parent = nullptr;
  if (c.container != 0) {
    if (ControlRec* p = Control(c.container)) parent = p->hwnd.Get();
  } else if (FormRec* f = Form(c.window)) {
    parent = f->hwnd.Get();
  }
  if (parent == nullptr) return nullptr;

  const wchar_t* cls = L"STATIC";
  // Tab stops are the kit's; the style says so to whoever reads the window.
  DWORD style = WS_CHILD | WS_CLIPSIBLINGS | (s.visible ? WS_VISIBLE : 0) |
                (s.enabled ? 0 : WS_DISABLED) | (s.tabStop ? WS_TABSTOP : 0);
  DWORD ex = 0;
  switch (s.kind) {
    case UiKind::Label: style |= SS_OWNERDRAW | SS_NOTIFY; break;
    case UiKind::Picture:
    case UiKind::PictureButton:
      if (ButtonWindow(s)) {
        cls = L"BUTTON";
        style |= BS_OWNERDRAW | WS_CLIPCHILDREN;
      } else {
        style |= SS_OWNERDRAW | SS_NOTIFY | WS_CLIPCHILDREN;
      }
      break;
    case UiKind::CheckBox:
      cls = L"BUTTON";
      style |= BS_3STATE;
      break;
    case UiKind::OptionButton:
      cls = L"BUTTON";
      style |= BS_RADIOBUTTON;
      break;
    case UiKind::TextBox:
      cls = L"EDIT";
      style |=
          s.multiLine ? ES_MULTILINE | ES_AUTOVSCROLL | ES_WANTRETURN | WS_VSCROLL : ES_AUTOHSCROLL;
      ex = WS_EX_CLIENTEDGE;
      break;
    case UiKind::ListView:
      cls = WC_LISTVIEWW;
      // The rows' pictures are the host's: the list only borrows them.
      style |= LVS_REPORT | LVS_SINGLESEL | LVS_SHAREIMAGELISTS | StructuralStyle(s) |
               (s.hideSelection ? 0 : LVS_SHOWSELALWAYS);
      ex = WS_EX_CLIENTEDGE;
      break;
    case UiKind::ProgressBar:
      cls = PROGRESS_CLASSW;
      style |= PBS_SMOOTH;
      break;
    case UiKind::DatePicker:
      cls = DATETIMEPICK_CLASSW;
      style |= DateStyle(s);
      break;
    case UiKind::ComboBox:
      cls = WC_COMBOBOXW;
      style |= CBS_DROPDOWNLIST | WS_VSCROLL;
      break;
  }
  const int dpi = DpiOf(c);
  RECT r = PixelRect(s.rect, dpi);
  // A combo box's window holds its dropped list too.
  if (s.kind == UiKind::ComboBox) r.bottom += (r.bottom - r.top) * kComboLines;
  // Made without its caption: ApplyControl below gives it as the window's text. A window
  // made with a caption of a megabyte (a set name of a request file) is not made at all
  // under Wine, and the control would be missing from its form.
  HWND hwnd = CreateWindowExW(
      ex, cls, L"", style, r.left, r.top, r.right - r.left, r.bottom - r.top, parent,
      reinterpret_cast<HMENU>(static_cast<UINT_PTR>(c.handle & 0xFFFF)), instance_, nullptr);
  if (hwnd == nullptr) return nullptr;
  c.hwnd.Reset(hwnd);
  c.createdStyle = StructuralStyle(s);
  byHwnd_[hwnd] = c.handle;
  SetWindowSubclass(hwnd, &Win32UiHost::ControlProc, 1, reinterpret_cast<DWORD_PTR>(this));
  SetName(hwnd, s.name);
  // Created later, stacked higher: the design's order of its controls.
  SetWindowPos(hwnd, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  c.listBuilt = false;
  c.shownItems.clear();
  ApplyControl(c, UiChange::All);
  return hwnd;
}

UiHandle Win32UiHost::CreateControl(UiHandle window, UiHandle container, const UiControl& control) {
  FormRec* f = Form(window);
  if (f == nullptr || f->dead) return 0;
  if (container != 0) {
    ControlRec* p = Control(container);
    if (p == nullptr || p->window != window) return 0;
  }
  auto c = std::make_unique<ControlRec>();
  c->handle = next_++;
  c->window = window;
  c->container = container;
  c->state = control;
  ControlRec& rec = *c;
  controls_[rec.handle] = std::move(c);
  if (CreateControlWindow(rec) == nullptr) {
    controls_.erase(rec.handle);
    return 0;
  }
  f->controls.push_back(rec.handle);
  return rec.handle;
}

void Win32UiHost::UpdateControl(UiHandle control, const UiControl& state, UiChange changes) {
  ControlRec* c = Control(control);
  if (c == nullptr || c->dead) return;
  c->state = state;
  if (StructuralStyle(state) != c->createdStyle) {
    Recreate(*c);
    return;
  }
  ApplyControl(*c, changes);
}

void Win32UiHost::Recreate(ControlRec& c) {
  HWND old = c.hwnd.Get();
  HWND above = GetWindow(old, GW_HWNDPREV);
  RemoveHoverTip(old);
  DropName(old);
  byHwnd_.erase(old);
  c.shownColumns.clear();
  c.shownRows.clear();
  c.shownSelected = -1;
  c.hwnd.Reset();
  if (CreateControlWindow(c) == nullptr) return;
  // Back to its place among its siblings.
  SetWindowPos(c.hwnd.Get(), above != nullptr ? above : HWND_TOP, 0, 0, 0, 0,
               SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

void Win32UiHost::Repaint(ControlRec& c) {
  // Drawn controls show what lies below them, and what lies above them shows them:
  // redraw everything over the control's place.
  HWND parent = GetParent(c.hwnd.Get());
  RECT r;
  GetWindowRect(c.hwnd.Get(), &r);
  MapWindowPoints(nullptr, parent, reinterpret_cast<POINT*>(&r), 2);
  RedrawWindow(parent, &r, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN);
}

void Win32UiHost::ApplyControl(ControlRec& c, UiChange changes) {
  const UiControl& s = c.state;
  HWND hwnd = c.hwnd.Get();
  ++c.updating;
  if (Has(changes, UiChange::Layout)) {
    RECT now;
    GetWindowRect(hwnd, &now);
    MapWindowPoints(nullptr, GetParent(hwnd), reinterpret_cast<POINT*>(&now), 2);
    RECT r = PixelRect(s.rect, DpiOf(c));
    if (s.kind == UiKind::ComboBox) r.bottom += (r.bottom - r.top) * kComboLines;
    if (!EqualRect(&now, &r)) {
      if (Drawn(s.kind)) Repaint(c);  // the place it leaves
      SetWindowPos(hwnd, nullptr, r.left, r.top, r.right - r.left, r.bottom - r.top,
                   SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS);
    }
  }
  if (Has(changes, UiChange::Style) || Has(changes, UiChange::Caption)) {
    if (!Drawn(s.kind))
      SendMessageW(hwnd, WM_SETFONT, reinterpret_cast<WPARAM>(Font(s.font, DpiOf(c))), TRUE);
  }
  if (Has(changes, UiChange::Style)) {
    const LONG_PTR style = GetWindowLongPtrW(hwnd, GWL_STYLE);
    const LONG_PTR want =
        s.tabStop ? style | WS_TABSTOP : style & ~static_cast<LONG_PTR>(WS_TABSTOP);
    if (want != style) SetWindowLongPtrW(hwnd, GWL_STYLE, want);
  }
  if (Has(changes, UiChange::Caption)) {
    const bool hasText = s.kind != UiKind::ListView && s.kind != UiKind::ProgressBar &&
                         s.kind != UiKind::DatePicker && s.kind != UiKind::ComboBox;
    if (hasText && WindowText(hwnd) != s.caption) SetWindowTextW(hwnd, Wide(s.caption));
    SetHoverTip(c);
  }
  if (Has(changes, UiChange::Style)) {
    switch (s.kind) {
      case UiKind::TextBox:
        SendMessageW(hwnd, EM_SETPASSWORDCHAR, s.passwordChar, 0);
        SendMessageW(hwnd, EM_SETREADONLY, s.locked ? TRUE : FALSE, 0);
        SendMessageW(hwnd, EM_SETLIMITTEXT, s.maxLength > 0 ? s.maxLength : 0, 0);
        break;
      case UiKind::ListView: {
        const DWORD mask = LVS_EX_FULLROWSELECT | LVS_EX_CHECKBOXES | LVS_EX_DOUBLEBUFFER;
        const DWORD want = (s.fullRowSelect ? LVS_EX_FULLROWSELECT : 0) |
                           (s.checkboxes ? LVS_EX_CHECKBOXES : 0) | LVS_EX_DOUBLEBUFFER;
        if ((ListView_GetExtendedListViewStyle(hwnd) & mask) != want) {
          ListView_SetExtendedListViewStyleEx(hwnd, mask, want);
          c.listBuilt = false;  // check marks come and go with the rows
        }
        LONG_PTR style = GetWindowLongPtrW(hwnd, GWL_STYLE);
        LONG_PTR wantStyle = s.hideSelection ? style & ~static_cast<LONG_PTR>(LVS_SHOWSELALWAYS)
                                             : style | LVS_SHOWSELALWAYS;
        if (wantStyle != style) SetWindowLongPtrW(hwnd, GWL_STYLE, wantStyle);
        break;
      }
      case UiKind::DatePicker:
        SendMessageW(hwnd, DTM_SETFORMATW, 0,
                     s.dateFormat == UiDateFormat::Custom && !s.customFormat.empty()
                         ? reinterpret_cast<LPARAM>(Wide(s.customFormat))
                         : 0);
        break;
      default: break;
    }
  }
  if (Has(changes, UiChange::Value)) {
    switch (s.kind) {
      case UiKind::CheckBox:
      case UiKind::OptionButton:
        SendMessageW(hwnd, BM_SETCHECK,
                     s.check == 1   ? BST_CHECKED
                     : s.check == 2 ? BST_INDETERMINATE
                                    : BST_UNCHECKED,
                     0);
        break;
      case UiKind::ProgressBar:
        SendMessageW(hwnd, PBM_SETRANGE32, static_cast<WPARAM>(std::lround(s.min)),
                     static_cast<LPARAM>(std::lround(s.max)));
        SendMessageW(hwnd, PBM_SETPOS, static_cast<WPARAM>(std::lround(s.value)), 0);
        // A themed bar ignores its colour: a coloured bar is drawn the classic way. In
        // high contrast the bar takes the system's colours.
        if (s.barColor != kUiDefaultColor && !highContrast_) {
          SetWindowTheme(hwnd, L" ", L" ");
          SendMessageW(hwnd, PBM_SETBARCOLOR, 0, static_cast<LPARAM>(s.barColor));
        } else {
          SendMessageW(hwnd, PBM_SETBARCOLOR, 0, CLR_DEFAULT);
        }
        break;
      case UiKind::ComboBox:
        ApplyComboItems(c);
        SendMessageW(hwnd, CB_SETCURSEL, static_cast<WPARAM>(s.listIndex), 0);
        break;
      case UiKind::DatePicker: {
        SYSTEMTIME st = ToSystemTime(s.date);
        SendMessageW(hwnd, DTM_SETSYSTEMTIME, GDT_VALID, reinterpret_cast<LPARAM>(&st));
        break;
      }
      default: break;
    }
  }
  if (Has(changes, UiChange::Items) && s.kind == UiKind::ListView) ApplyList(c, false);
  if (Has(changes, UiChange::Items) && s.kind == UiKind::ComboBox) {
    ApplyComboItems(c);
    SendMessageW(hwnd, CB_SETCURSEL, static_cast<WPARAM>(s.listIndex), 0);
  }
  if (Has(changes, UiChange::Style) && s.kind == UiKind::ListView && !c.listBuilt)
    ApplyList(c, true);
  // After the rows, so that a row added in the same update can be scrolled to.
  if (Has(changes, UiChange::Scroll) && s.kind == UiKind::ListView && s.visibleRow >= 1 &&
      s.visibleRow <= ListView_GetItemCount(hwnd))
    ListView_EnsureVisible(hwnd, s.visibleRow - 1, FALSE);
  if (Has(changes, UiChange::Enabled)) {
    if ((IsWindowEnabled(hwnd) != FALSE) != s.enabled) EnableWindow(hwnd, s.enabled ? TRUE : FALSE);
  }
  if (Has(changes, UiChange::Visible)) {
    if (((GetWindowLongPtrW(hwnd, GWL_STYLE) & WS_VISIBLE) != 0) != s.visible) {
      ShowWindow(hwnd, s.visible ? SW_SHOWNA : SW_HIDE);
    }
  }
  if (Drawn(s.kind) && (Has(changes, UiChange::Caption) || Has(changes, UiChange::Style) ||
                        Has(changes, UiChange::Picture) || Has(changes, UiChange::Enabled) ||
                        Has(changes, UiChange::Layout))) {
    Repaint(c);
  } else if (Checkable(s.kind) &&
             (Has(changes, UiChange::Style) || Has(changes, UiChange::Layout))) {
    InvalidateRect(hwnd, nullptr, TRUE);
  }
  --c.updating;
}

// ---- Messages of controls -----------------------------------------------------------------

LRESULT Win32UiHost::OnControlMessage(ControlRec& c, UINT msg, WPARAM wp, LPARAM lp) {
  FormRec* f = Form(c.window);
  HWND hwnd = c.hwnd.Get();
  if (f == nullptr || f->dead) return DefSubclassProc(hwnd, msg, wp, lp);
  if (IsMouseMessage(msg)) {
    if (msg == WM_LBUTTONDOWN) c.rowClickSent = false;
    // A handler may close the window under the pointer; then nothing more is done.
    if (!Mouse(*f, &c, hwnd, msg, wp, lp)) return 0;
    return DefSubclassProc(hwnd, msg, wp, lp);
  }
  switch (msg) {
    case WM_SETFOCUS: {
      LRESULT r = DefSubclassProc(hwnd, msg, wp, lp);
      if (Drawn(c.state.kind)) Repaint(c);  // the focus rectangle
      if (!c.dead && !f->dead) f->events->OnFocus(f->handle, c.handle);
      return r;
    }
    case WM_KILLFOCUS: {
      LRESULT r = DefSubclassProc(hwnd, msg, wp, lp);
      if (!c.dead && Drawn(c.state.kind)) Repaint(c);
      return r;
    }
    case WM_GETOBJECT:
      // A screen reader asks what the control is: the kit's role, name and state.
      if (const LRESULT answer = win32::AnswerGetObject(hwnd, wp, lp, c.state); answer != 0)
        return answer;
      break;
    case WM_ERASEBKGND:
      if (Drawn(c.state.kind)) return 1;  // all of it is painted in one go
      break;
    case WM_SETCURSOR:
      // A control with a pointer of its own (the hand over a link) shows it there.
      if (c.state.pointer == UiPointer::Hand && LOWORD(lp) == HTCLIENT) {
        SetCursor(LoadCursorW(nullptr, IDC_HAND));
        return TRUE;
      }
      break;
    default: {
      LRESULT result = 0;
      if (OnParentMessage(msg, wp, lp, result)) return result;
      break;
    }
  }
  return DefSubclassProc(hwnd, msg, wp, lp);
}

bool Win32UiHost::OnParentMessage(UINT msg, WPARAM wp, LPARAM lp, LRESULT& result) {
  switch (msg) {
    case WM_DRAWITEM: {
      const auto* dis = reinterpret_cast<const DRAWITEMSTRUCT*>(lp);
      ControlRec* c = ControlOf(dis->hwndItem);
      if (c == nullptr || c->dead || !Drawn(c->state.kind)) return false;
      PaintOwnerDrawn(*c, dis->hDC, dis->rcItem, (dis->itemState & ODS_SELECTED) != 0);
      // The button clips its label out of its own painting: the label shows the
      // face below it again (pressed or not).
      if (c->state.kind == UiKind::PictureButton) {
        for (HWND child = GetWindow(c->hwnd.Get(), GW_CHILD); child != nullptr;
             child = GetWindow(child, GW_HWNDNEXT)) {
          InvalidateRect(child, nullptr, FALSE);
        }
      }
      result = TRUE;
      return true;
    }
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLORBTN: {
      ControlRec* c = ControlOf(reinterpret_cast<HWND>(lp));
      if (c == nullptr || c->dead || !Checkable(c->state.kind)) return false;
      HDC dc = reinterpret_cast<HDC>(wp);
      SetBkMode(dc, TRANSPARENT);
      SetTextColor(dc, highContrast_                           ? GetSysColor(COLOR_WINDOWTEXT)
                       : c->state.foreColor == kUiDefaultColor ? GetSysColor(COLOR_BTNTEXT)
                                                               : c->state.foreColor);
      result = reinterpret_cast<LRESULT>(Backdrop(*c));
      return true;
    }
    case WM_COMMAND: {
      ControlRec* c = ControlOf(reinterpret_cast<HWND>(lp));
      if (c == nullptr || c->dead) return false;
      FormRec* f = Form(c->window);
      if (f == nullptr || f->dead) return false;
      const WORD code = HIWORD(wp);
      if (Checkable(c->state.kind) && (code == BN_CLICKED || code == BN_DOUBLECLICKED)) {
        // The state is the model's: it toggles and sends the check back.
        if (c->updating == 0) f->events->OnClick(f->handle, c->handle);
      } else if (c->state.kind == UiKind::TextBox && code == EN_CHANGE && c->updating == 0) {
        c->state.caption = WindowText(c->hwnd.Get());
        f->events->OnTextChanged(f->handle, c->handle, c->state.caption);
      } else if (c->state.kind == UiKind::ComboBox && code == CBN_SELCHANGE && c->updating == 0) {
        const LRESULT chosen = SendMessageW(c->hwnd.Get(), CB_GETCURSEL, 0, 0);
        if (chosen >= 0) f->events->OnSelect(f->handle, c->handle, static_cast<int>(chosen));
      }
      result = 0;
      return true;
    }
    case WM_NOTIFY: {
      const auto* nm = reinterpret_cast<const NMHDR*>(lp);
      ControlRec* c = ControlOf(nm->hwndFrom);
      if (c == nullptr || c->dead) return false;
      FormRec* f = Form(c->window);
      if (f == nullptr || f->dead) return false;
      if (c->state.kind == UiKind::ListView) {
        switch (nm->code) {
          case LVN_ITEMCHANGED: {
            const auto* lv = reinterpret_cast<const NMLISTVIEW*>(lp);
            result = 0;
            if (c->updating != 0 || lv->iItem < 0 || (lv->uChanged & LVIF_STATE) == 0) return true;
            const UINT oldImage = (lv->uOldState & LVIS_STATEIMAGEMASK) >> 12;
            const UINT newImage = (lv->uNewState & LVIS_STATEIMAGEMASK) >> 12;
            if (c->state.checkboxes && oldImage != 0 && newImage != 0 && oldImage != newImage) {
              f->events->OnList(f->handle, c->handle,
                                {UiListWhat::RowCheck, lv->iItem + 1, newImage == 2});
              if (c->dead) return true;
            }
            if ((lv->uNewState & LVIS_SELECTED) != 0 && (lv->uOldState & LVIS_SELECTED) == 0) {
              c->rowClickSent = true;
              f->events->OnList(f->handle, c->handle, {UiListWhat::RowClick, lv->iItem + 1, false});
            }
            return true;
          }
          case NM_CLICK: {
            const auto* ia = reinterpret_cast<const NMITEMACTIVATE*>(lp);
            // A click on the row that was already selected is a row click too.
            if (ia->iItem >= 0 && !c->rowClickSent) {
              f->events->OnList(f->handle, c->handle, {UiListWhat::RowClick, ia->iItem + 1, false});
            }
            if (!c->dead) c->rowClickSent = false;
            result = 0;
            return true;
          }
          case LVN_GETDISPINFOW: {
            // A list of the rows' owner asks for what it is about to draw or tell.
            auto* di = reinterpret_cast<NMLVDISPINFOW*>(lp);
            FillDisplayInfo(*c, di->item);
            result = 0;
            return true;
          }
          case LVN_ODFINDITEMW: {
            result = -1;  // no typing to a row: the design's lists have none
            return true;
          }
          case LVN_COLUMNCLICK: {
            const auto* lv = reinterpret_cast<const NMLISTVIEW*>(lp);
            f->events->OnList(f->handle, c->handle,
                              {UiListWhat::ColumnClick, lv->iSubItem + 1, false});
            result = 0;
            return true;
          }
          case NM_CUSTOMDRAW: {
            auto* cd = reinterpret_cast<NMLVCUSTOMDRAW*>(lp);
            if (cd->nmcd.dwDrawStage == CDDS_PREPAINT) {
              result = CDRF_NOTIFYITEMDRAW;
            } else if (cd->nmcd.dwDrawStage == CDDS_ITEMPREPAINT) {
              const std::size_t row = static_cast<std::size_t>(cd->nmcd.dwItemSpec);
              if (!highContrast_ && row < c->state.rows.size() &&
                  c->state.rows[row].foreColor != kUiDefaultColor) {
                cd->clrText = c->state.rows[row].foreColor;
              }
              result = CDRF_DODEFAULT;
            } else {
              result = CDRF_DODEFAULT;
            }
            return true;
          }
          default: return false;
        }
      }
      if (c->state.kind == UiKind::DatePicker && nm->code == DTN_DATETIMECHANGE) {
        const auto* dt = reinterpret_cast<const NMDATETIMECHANGE*>(lp);
        if (c->updating == 0 && dt->dwFlags == GDT_VALID) {
          c->state.date = FromSystemTime(dt->st);
          f->events->OnDateChanged(f->handle, c->handle, c->state.date);
        }
        result = 0;
        return true;
      }
      return false;
    }
    default: return false;
  }
}

}  // namespace platform
