// artwork_load_check IMAGES_DIR (Windows): loads every picture listed in
// artwork.txt the way the screens do, LoadImageW for bitmaps and icons and
// AlphaBlend for the rounded pictures, and fails if Windows reads any of them
// differently from what the manifest says.
#include <windows.h>

#include <cstdio>
#include <fstream>
#include <string>

namespace {

std::wstring Widen(const std::string& s) { return std::wstring(s.begin(), s.end()); }

// A Unix path from the build (under Wine) becomes one on drive Z:.
std::wstring WindowsPath(std::wstring p) {
  for (wchar_t& c : p)
    if (c == L'/') c = L'\\';
  if (!p.empty() && p[0] == L'\\') p = L"Z:" + p;
  return p;
}

int failures = 0;

void Fail(const std::string& what) {
  std::printf("FAIL %s\n", what.c_str());
  ++failures;
}

// Draws the bitmap with its alpha over white and returns the pixel at (x, y).
COLORREF BlendOverWhite(HBITMAP bmp, int w, int h, int x, int y) {
  HDC screen = GetDC(nullptr);
  HDC src = CreateCompatibleDC(screen), dst = CreateCompatibleDC(screen);
  HBITMAP target = CreateCompatibleBitmap(screen, w, h);
  HGDIOBJ oldSrc = SelectObject(src, bmp), oldDst = SelectObject(dst, target);
  RECT all{0, 0, w, h};
  FillRect(dst, &all, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
  BLENDFUNCTION bf{AC_SRC_OVER, 0, 255, AC_SRC_ALPHA};
  COLORREF c = CLR_INVALID;
  if (AlphaBlend(dst, 0, 0, w, h, src, 0, 0, w, h, bf)) c = GetPixel(dst, x, y);
  SelectObject(src, oldSrc);
  SelectObject(dst, oldDst);
  DeleteObject(target);
  DeleteDC(src);
  DeleteDC(dst);
  ReleaseDC(nullptr, screen);
  return c;
}

void CheckBitmap(const std::wstring& dir, const std::string& rel, int w, int h) {
  HBITMAP bmp = static_cast<HBITMAP>(LoadImageW(nullptr, WindowsPath(dir + L"\\" + Widen(rel)).c_str(),
                                                IMAGE_BITMAP, 0, 0, LR_LOADFROMFILE | LR_CREATEDIBSECTION));
  DIBSECTION ds{};
  if (!bmp || GetObjectW(bmp, sizeof ds, &ds) != sizeof ds) return Fail(rel + ": not loaded");
  if (ds.dsBm.bmWidth != w || ds.dsBm.bmHeight != h || ds.dsBm.bmBitsPixel != 32)
    Fail(rel + ": loaded as " + std::to_string(ds.dsBm.bmWidth) + "x" + std::to_string(ds.dsBm.bmHeight) + " " +
         std::to_string(ds.dsBm.bmBitsPixel) + " bits");
  // Buttons have clear rounded corners: blended over white the corner stays white
  // and the middle is the face.
  if (rel.rfind("button_enb", 0) == 0 || rel.rfind("button_ovr", 0) == 0) {
    if (BlendOverWhite(bmp, w, h, 0, 0) != RGB(255, 255, 255)) Fail(rel + ": corner not transparent");
    const COLORREF mid = BlendOverWhite(bmp, w, h, w / 2, h / 2);
    if (rel.rfind("button_ovr", 0) == 0 && GetRValue(mid) > 60) Fail(rel + ": hover face not teal");
  }
  DeleteObject(bmp);
}

void CheckIcon(const std::wstring& dir, const std::string& rel) {
  for (int size : {16, 20, 24, 32, 40, 48}) {
    HICON icon = static_cast<HICON>(
        LoadImageW(nullptr, WindowsPath(dir + L"\\" + Widen(rel)).c_str(), IMAGE_ICON, size, size, LR_LOADFROMFILE));
    ICONINFO ii{};
    BITMAP bm{};
    if (!icon || !GetIconInfo(icon, &ii) || !GetObjectW(ii.hbmColor, sizeof bm, &bm)) {
      Fail(rel + ": no icon of " + std::to_string(size));
      continue;
    }
    if (bm.bmWidth != size || bm.bmHeight != size || bm.bmBitsPixel != 32)
      Fail(rel + ": " + std::to_string(size) + " came as " + std::to_string(bm.bmWidth) + " " +
           std::to_string(bm.bmBitsPixel) + " bits");
    DeleteObject(ii.hbmColor);
    DeleteObject(ii.hbmMask);
    DestroyIcon(icon);
  }
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
  if (argc != 2) {
    std::printf("usage: artwork_load_check IMAGES_DIR\n");
    return 2;
  }
  const std::wstring dir = argv[1];
  const std::wstring path = WindowsPath(dir + L"\\artwork.txt");
  std::ifstream manifest(std::string(path.begin(), path.end()));  // build paths are ASCII
  if (!manifest) {
    std::printf("FAIL no artwork.txt in the folder\n");
    return 1;
  }
  int bitmaps = 0, icons = 0;
  std::string line;
  while (std::getline(manifest, line)) {
    if (line.empty() || line[0] == '#') continue;
    const size_t tab = line.find('\t');
    const std::string rel = line.substr(0, tab);
    int w = 0, h = 0;
    if (tab == std::string::npos || std::sscanf(line.c_str() + tab + 1, "%dx%d", &w, &h) != 2) {
      Fail("manifest line: " + line);
      continue;
    }
    if (rel.size() > 4 && rel.compare(rel.size() - 4, 4, ".bmp") == 0) {
      CheckBitmap(dir, rel, w, h);
      ++bitmaps;
    } else {
      CheckIcon(dir, rel);
      ++icons;
    }
  }
  std::printf("artwork_load_check: %d bitmaps, %d icons, %d failures\n", bitmaps, icons, failures);
  return failures == 0 && bitmaps > 0 && icons > 0 ? 0 : 1;
}
