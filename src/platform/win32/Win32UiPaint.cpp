// The Windows UI host: painting. Labels, pictures and skinned buttons are drawn with
// what lies below them (the form's background and every drawn control in stacking
// order), in the skin or, in high contrast, in the system's colours.
#include "platform/win32/Win32UiRecords.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace platform {

using win32::Bitmap;
using win32::Pictures;
using win32::Wide;

namespace {

// The skin's extra faces: a pressed or a disabled look of a standard face, when the
// image folder has one.
Text Variant(Pictures& pictures, const Text& key, const char16_t* suffix) {
  if (!base::EndsWith(key, u"_enb") && !base::EndsWith(key, u"_ovr")) return key;
  Text candidate = key.substr(0, key.size() - 4) + suffix;
  return pictures.Exists(candidate) ? candidate : key;
}

}  // namespace

// ---- Painting --------------------------------------------------------------------------------

void Win32UiHost::PaintScene(FormRec& f, HDC dc, const RECT& clip, const ControlRec* upTo,
                             bool backgroundOnly, bool upToPressed) {
  RECT client;
  GetClientRect(f.hwnd.Get(), &client);
  if (highContrast_) {
    // High contrast: the system's colours, and no skin.
    FillRect(dc, &clip, GetSysColorBrush(COLOR_WINDOW));
  } else if (f.state.backColor != kUiDefaultColor) {
    win32::UniqueBrush bg(CreateSolidBrush(f.state.backColor));
    FillRect(dc, &clip, bg.Get());
  } else {
    FillRect(dc, &clip, GetSysColorBrush(COLOR_BTNFACE));
  }
  if (!f.state.pictureKey.empty() && !highContrast_) {
    if (const Bitmap* b = pictures_->Find(f.state.pictureKey, client.bottom)) {
      Pictures::Draw(dc, *b, 0, 0, b->width, b->height);
    } else {
      Pictures::DrawPlaceholder(dc, client);
    }
  }
  if (backgroundOnly) return;

  // Stacking order: a container, then what it holds, then its later siblings.
  std::function<bool(UiHandle, const RECT&)> visit = [&](UiHandle container, const RECT& area) {
    for (UiHandle h : f.controls) {
      ControlRec* c = Control(h);
      if (c == nullptr || c->container != container) continue;
      if (!c->state.visible) {
        if (c == upTo) return true;
        continue;
      }
      const RECT r = RectInForm(*c);
      RECT shown;
      if (!IntersectRect(&shown, &r, &area)) SetRectEmpty(&shown);
      RECT hit;
      if (Drawn(c->state.kind) && IntersectRect(&hit, &shown, &clip)) {
        const int saved = SaveDC(dc);
        IntersectClipRect(dc, shown.left, shown.top, shown.right, shown.bottom);
        PaintControl(*c, dc, r, c == upTo && upToPressed);
        RestoreDC(dc, saved);
      }
      if (c == upTo) return true;
      if (visit(c->handle, shown)) return true;
    }
    return false;
  };
  visit(0, client);
}

void Win32UiHost::PaintControl(ControlRec& c, HDC dc, const RECT& r, bool pressed) {
  if (highContrast_) {
    PaintHighContrast(c, dc, r, pressed);
  } else {
    PaintSkinned(c, dc, r, pressed);
  }
  // The keyboard's focus shows on every control that has it.
  if (GetFocus() == c.hwnd.Get() && c.state.kind != UiKind::Label) {
    RECT focus = r;
    InflateRect(&focus, -2, -2);
    SetTextColor(dc, RGB(0, 0, 0));
    SetBkColor(dc, RGB(0xFF, 0xFF, 0xFF));
    DrawFocusRect(dc, &focus);
  }
}

namespace {

// How much of a caption can show in `r` with the font selected into `dc`: no character is
// narrower than a pixel, so a line holds at most the rectangle's width in characters, and
// no more lines show than its height holds. A caption of a megabyte (a file name of the
// engine's, a set name of a request file) is so laid out in the time of what shows: the
// platform's word break measures the rest of the text for every line it makes.
std::size_t ShownLength(HDC dc, const Text& caption, const RECT& r) {
  TEXTMETRICW tm{};
  const long lineHeight = GetTextMetricsW(dc, &tm) && tm.tmHeight > 0 ? tm.tmHeight : 1;
  const std::size_t lines = static_cast<std::size_t>(std::max<long>(0, r.bottom - r.top)) /
                                static_cast<std::size_t>(lineHeight) +
                            2;
  // A line's own CR LF, and the look past its end for a place to break.
  const std::size_t perLine = static_cast<std::size_t>(std::max<long>(1, r.right - r.left)) + 3;
  return std::min(caption.size(), lines * perLine);
}

// A caption drawn as a label draws it, in `color`; false when it does not fit `r`.
bool DrawCaption(HDC dc, const Text& caption, RECT r, COLORREF color, UINT align, bool mustFit) {
  if (caption.empty()) return false;
  const std::size_t shown = ShownLength(dc, caption, r);
  if (mustFit) {
    if (shown < caption.size()) return false;
    RECT need = r;
    DrawTextW(dc, Wide(caption), static_cast<int>(caption.size()), &need,
              DT_CALCRECT | DT_WORDBREAK);
    if (need.right - need.left > r.right - r.left || need.bottom - need.top > r.bottom - r.top)
      return false;
  }
  SetBkMode(dc, TRANSPARENT);
  SetTextColor(dc, color);
  DrawTextW(dc, Wide(caption), static_cast<int>(shown), &r, DT_WORDBREAK | DT_EXPANDTABS | align);
  return true;
}

}  // namespace

void Win32UiHost::PaintHighContrast(ControlRec& c, HDC dc, const RECT& r, bool pressed) {
  const UiControl& s = c.state;
  win32::Selected font(dc, Font(s.font, DpiOf(c)));
  const bool pushed = pressed || (SendMessageW(c.hwnd.Get(), BM_GETSTATE, 0, 0) & BST_PUSHED) != 0;
  switch (s.kind) {
    case UiKind::PictureButton: {
      RECT face = r;
      DrawFrameControl(dc, &face, DFC_BUTTON, DFCS_BUTTONPUSH | (pushed ? DFCS_PUSHED : 0));
      break;
    }
    case UiKind::Picture: {
      if (s.role == UiRole::PushButton) {
        RECT face = r;
        DrawFrameControl(dc, &face, DFC_BUTTON, DFCS_BUTTONPUSH | (pushed ? DFCS_PUSHED : 0));
        // Its name where it fits; a small icon button keeps its icon.
        const COLORREF text = GetSysColor(s.enabled ? COLOR_BTNTEXT : COLOR_GRAYTEXT);
        if (!DrawCaption(dc, s.caption, r, text, DT_CENTER, true) && !s.pictureKey.empty()) {
          const int side = std::min(r.right - r.left, r.bottom - r.top) - 4;
          if (const Bitmap* b = pictures_->Find(s.pictureKey, side)) {
            Pictures::Draw(dc, *b, r.left + (r.right - r.left - side) / 2,
                           r.top + (r.bottom - r.top - side) / 2, side, side);
          }
        }
      } else if (s.role == UiRole::Indicator || s.role == UiRole::Slider) {
        // A state told by a colour: a mark in the text colour, and its caption where it fits.
        FillRect(dc, &r, GetSysColorBrush(COLOR_WINDOWTEXT));
        DrawCaption(dc, s.caption, r, GetSysColor(COLOR_WINDOW), DT_CENTER, true);
      } else if (s.role == UiRole::Graphic && !s.caption.empty()) {
        // A picture that says something says it in words, in a frame; where the words
        // do not fit, the picture itself is what it says.
        FrameRect(dc, &r, GetSysColorBrush(COLOR_WINDOWTEXT));
        RECT inner = r;
        InflateRect(&inner, -2, -2);
        if (!DrawCaption(dc, s.caption, inner, GetSysColor(COLOR_WINDOWTEXT), DT_CENTER, true) &&
            !s.pictureKey.empty()) {
          if (const Bitmap* b = pictures_->Find(s.pictureKey, inner.bottom - inner.top)) {
            Pictures::Draw(dc, *b, inner.left, inner.top, inner.right - inner.left,
                           inner.bottom - inner.top);
          }
        }
      }
      // A picture that only decorates, or holds other controls, is not drawn.
      break;
    }
    case UiKind::Label: {
      const ControlRec* face = c.container != 0 ? Control(c.container) : nullptr;
      const bool onButton = face != nullptr && face->state.kind == UiKind::PictureButton;
      COLORREF color = GetSysColor(onButton ? COLOR_BTNTEXT : COLOR_WINDOWTEXT);
      if (!s.enabled) color = GetSysColor(COLOR_GRAYTEXT);
      const UINT align = s.align == UiAlign::Center  ? DT_CENTER
                         : s.align == UiAlign::Right ? DT_RIGHT
                                                     : DT_LEFT;
      DrawCaption(dc, s.caption, r, color, align, false);
      break;
    }
    default: break;
  }
}

void Win32UiHost::PaintSkinned(ControlRec& c, HDC dc, const RECT& r, bool pressed) {
  const UiControl& s = c.state;
  if (s.backColor != kUiDefaultColor) {
    win32::UniqueBrush b(CreateSolidBrush(s.backColor));
    FillRect(dc, &r, b.Get());
  }
  const int height = r.bottom - r.top;
  switch (s.kind) {
    case UiKind::Picture: {
      if (s.pictureKey.empty()) break;
      if (const Bitmap* b = pictures_->Find(s.pictureKey, height)) {
        // As the platform's picture box: the picture at its own size, top left; one
        // larger than its place is shrunk to fit rather than cut.
        const int width = r.right - r.left;
        int w = b->width;
        int h = b->height;
        if (w > width || h > height) {
          const double scale =
              std::min(static_cast<double>(width) / w, static_cast<double>(height) / h);
          w = std::max(1, static_cast<int>(std::lround(w * scale)));
          h = std::max(1, static_cast<int>(std::lround(h * scale)));
        }
        Pictures::Draw(dc, *b, r.left, r.top, w, h);
      } else {
        Pictures::DrawPlaceholder(dc, r);
      }
      break;
    }
    case UiKind::PictureButton: {
      Text key = s.pictureKey;
      if (pressed || (SendMessageW(c.hwnd.Get(), BM_GETSTATE, 0, 0) & BST_PUSHED) != 0) {
        key = Variant(*pictures_, key, u"_dwn");
      } else if (s.skinState == 2 || !s.enabled) {
        key = Variant(*pictures_, key, u"_dis");
      }
      if (const Bitmap* b = pictures_->Find(key, height)) {
        Pictures::DrawFace(dc, *b, r);
      } else if (!key.empty()) {
        Pictures::DrawPlaceholder(dc, r);
      }
      break;
    }
    case UiKind::Label: {
      win32::Selected font(dc, Font(s.font, DpiOf(c)));
      SetBkMode(dc, TRANSPARENT);
      COLORREF color = s.foreColor == kUiDefaultColor ? GetSysColor(COLOR_BTNTEXT) : s.foreColor;
      if (!s.enabled) color = GetSysColor(COLOR_GRAYTEXT);
      // On a pressed face, as on a hovered one, the caption is white.
      if (ControlRec* face = c.container != 0 ? Control(c.container) : nullptr;
          face != nullptr && face->state.kind == UiKind::PictureButton && s.enabled &&
          (SendMessageW(face->hwnd.Get(), BM_GETSTATE, 0, 0) & BST_PUSHED) != 0) {
        color = RGB(0xFF, 0xFF, 0xFF);
      }
      SetTextColor(dc, color);
      UINT flags = DT_WORDBREAK | DT_EXPANDTABS;
      flags |= s.align == UiAlign::Center  ? DT_CENTER
               : s.align == UiAlign::Right ? DT_RIGHT
                                           : DT_LEFT;
      RECT text = r;
      DrawTextW(dc, Wide(s.caption), static_cast<int>(ShownLength(dc, s.caption, r)), &text, flags);
      break;
    }
    default: break;
  }
}

void Win32UiHost::PaintOwnerDrawn(ControlRec& c, HDC dc, const RECT& client, bool pressed) {
  FormRec* f = Form(c.window);
  if (f == nullptr) return;
  const int w = client.right - client.left;
  const int h = client.bottom - client.top;
  if (w <= 0 || h <= 0) return;
  win32::MemoryDC mem(dc, w, h);
  const RECT inForm = RectInForm(c);
  SetViewportOrgEx(mem.Get(), -inForm.left, -inForm.top, nullptr);
  PaintScene(*f, mem.Get(), inForm, &c, false, pressed);
  SetViewportOrgEx(mem.Get(), 0, 0, nullptr);
  PaintBehindOutline(*f, mem.Get(), {inForm.left, inForm.top});
  BitBlt(dc, client.left, client.top, w, h, mem.Get(), 0, 0, SRCCOPY);
}

void Win32UiHost::PaintBehindOutline(FormRec& f, HDC dc, POINT origin) {
  if (!f.outline || !f.behind) return;
  // The pixels outside the outline, in the drawing's own coordinates.
  RECT window{};
  GetWindowRect(f.hwnd.Get(), &window);
  win32::UniqueRegion outside(
      CreateRectRgn(0, 0, window.right - window.left, window.bottom - window.top));
  CombineRgn(outside.Get(), outside.Get(), f.outline.Get(), RGN_DIFF);
  OffsetRgn(outside.Get(), -origin.x, -origin.y);
  const int saved = SaveDC(dc);
  ExtSelectClipRgn(dc, outside.Get(), RGN_AND);
  win32::UniqueDC src(CreateCompatibleDC(dc));
  win32::Selected picture(src.Get(), f.behind.Get());
  BitBlt(dc, -origin.x, -origin.y, window.right - window.left, window.bottom - window.top,
         src.Get(), 0, 0, SRCCOPY);
  RestoreDC(dc, saved);
}

HBRUSH Win32UiHost::Backdrop(ControlRec& c) {
  c.backdrop.Reset();
  c.backdropBitmap.Reset();
  if (c.state.backColor != kUiDefaultColor) {
    c.backdrop.Reset(CreateSolidBrush(c.state.backColor));
    return c.backdrop.Get();
  }
  FormRec* f = Form(c.window);
  if (f == nullptr) return GetSysColorBrush(COLOR_BTNFACE);
  const RECT r = RectInForm(c);
  const int w = std::max<LONG>(1, r.right - r.left);
  const int h = std::max<LONG>(1, r.bottom - r.top);
  // The place under the control as the form draws it, as a brush the control
  // fills its background with: it then looks transparent on any background.
  {
    win32::WindowDC screen(c.hwnd.Get());
    win32::MemoryDC mem(screen.Get(), w, h);
    SetViewportOrgEx(mem.Get(), -r.left, -r.top, nullptr);
    PaintScene(*f, mem.Get(), r, &c, false);
    c.backdropBitmap = mem.TakeBitmap();
  }
  c.backdrop.Reset(CreatePatternBrush(c.backdropBitmap.Get()));
  return c.backdrop.Get();
}

}  // namespace platform
