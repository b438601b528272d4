#include "platform/win32/Win32Pictures.h"

#include <cmath>
#include <cstdlib>

namespace platform::win32 {

namespace {

constexpr int kScales[] = {100, 125, 150};

base::Text FileName(const base::Text& key, int scale) {
  if (scale == 100) return key + u".bmp";
  return key + u"@" + base::FromNumber(scale) + u".bmp";
}

int ScaledSize(int size100, int scale) {
  // The artwork's rule: the size at 96 dpi times the scale, halves up.
  return static_cast<int>(std::floor(size100 * scale / 100.0 + 0.5));
}

int ScaleForDpi(int dpi) {
  if (dpi <= 96) return 100;
  if (dpi <= 120) return 125;
  return 150;
}

bool IsAbsolute(const base::Text& path) {
  return (path.size() > 1 && path[1] == u':') || base::StartsWith(path, u"\\\\");
}

}  // namespace

Pictures::Pictures(base::Text folder, int dpi) : folder_(std::move(folder)), dpi_(dpi) {}

Pictures::~Pictures() {
  for (auto& [key, scales] : cache_) {
    for (auto& [scale, bmp] : scales) {
      if (bmp.handle) DeleteObject(bmp.handle);
    }
  }
}

const Bitmap* Pictures::Load(const base::Text& key, int scale) {
  auto& scales = cache_[key];
  auto it = scales.find(scale);
  if (it == scales.end()) {
    Bitmap bmp;
    bmp.scale = scale;
    const base::Text path = folder_ + u"\\" + FileName(key, scale);
    bmp.handle = static_cast<HBITMAP>(LoadImageW(nullptr, Wide(path), IMAGE_BITMAP, 0, 0,
                                                 LR_LOADFROMFILE | LR_CREATEDIBSECTION));
    if (bmp.handle) {
      BITMAP info{};
      GetObjectW(bmp.handle, sizeof(info), &info);
      bmp.width = info.bmWidth;
      bmp.height = std::abs(info.bmHeight);
    }
    it = scales.emplace(scale, bmp).first;
  }
  return it->second.handle ? &it->second : nullptr;
}

bool Pictures::Exists(const base::Text& key) { return !key.empty() && Load(key, 100) != nullptr; }

const Bitmap* Pictures::Find(const base::Text& key, int targetHeight) {
  if (key.empty()) return nullptr;
  const Bitmap* base = Load(key, 100);
  if (base == nullptr) return nullptr;
  int best = ScaleForDpi(dpi_);
  if (targetHeight > 0) {
    // The scale whose height comes closest; a tie goes to the screen's own scale.
    int bestDiff = std::abs(ScaledSize(base->height, best) - targetHeight);
    for (int s : kScales) {
      int diff = std::abs(ScaledSize(base->height, s) - targetHeight);
      if (diff < bestDiff) {
        best = s;
        bestDiff = diff;
      }
    }
  }
  const Bitmap* chosen = Load(key, best);
  return chosen != nullptr ? chosen : base;
}

void Pictures::Draw(HDC dc, const Bitmap& bmp, int x, int y, int w, int h) {
  HDC src = CreateCompatibleDC(dc);
  HGDIOBJ old = SelectObject(src, bmp.handle);
  BLENDFUNCTION blend{AC_SRC_OVER, 0, 255, AC_SRC_ALPHA};
  SetStretchBltMode(dc, HALFTONE);
  GdiAlphaBlend(dc, x, y, w, h, src, 0, 0, bmp.width, bmp.height, blend);
  SelectObject(src, old);
  DeleteDC(src);
}

void Pictures::DrawFace(HDC dc, const Bitmap& bmp, const RECT& r) {
  const int w = r.right - r.left;
  const int h = r.bottom - r.top;
  if (w <= 0 || h <= 0) return;
  // 4 pixels at each end at 100 %, 5 at 125 %, 6 at 150 %.
  int end = bmp.scale >= 150 ? 6 : bmp.scale >= 125 ? 5 : 4;
  if (w == bmp.width || bmp.width <= 2 * end || w <= 2 * end) {
    Draw(dc, bmp, r.left, r.top, w, h);
    return;
  }
  HDC src = CreateCompatibleDC(dc);
  HGDIOBJ old = SelectObject(src, bmp.handle);
  BLENDFUNCTION blend{AC_SRC_OVER, 0, 255, AC_SRC_ALPHA};
  GdiAlphaBlend(dc, r.left, r.top, end, h, src, 0, 0, end, bmp.height, blend);
  GdiAlphaBlend(dc, r.left + end, r.top, w - 2 * end, h, src, end, 0, 1, bmp.height, blend);
  GdiAlphaBlend(dc, r.right - end, r.top, end, h, src, bmp.width - end, 0, end, bmp.height, blend);
  SelectObject(src, old);
  DeleteDC(src);
}

void Pictures::DrawPlaceholder(HDC dc, const RECT& r) {
  HBRUSH fill = CreateSolidBrush(RGB(0xEA, 0xEF, 0xF1));
  FillRect(dc, &r, fill);
  DeleteObject(fill);
  HBRUSH edge = CreateSolidBrush(RGB(0xB8, 0xC3, 0xC8));
  FrameRect(dc, &r, edge);
  DeleteObject(edge);
}

HICON Pictures::LoadIconFile(const base::Text& path, int cx, int cy) {
  if (path.empty()) return nullptr;
  return static_cast<HICON>(LoadImageW(nullptr, Wide(path), IMAGE_ICON, cx, cy, LR_LOADFROMFILE));
}

base::Text Pictures::IconPath(const base::Text& keyOrPath) const {
  if (keyOrPath.empty()) return {};
  if (base::EndsWith(base::ToLower(keyOrPath), u".ico")) {
    return IsAbsolute(keyOrPath) ? keyOrPath : folder_ + u"\\" + keyOrPath;
  }
  return folder_ + u"\\" + keyOrPath + u".ico";
}

}  // namespace platform::win32
