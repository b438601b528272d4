// artwork_load_check IMAGES_DIR (Windows): reads every picture listed in
// artwork.txt the way the monitor does, and fails where Windows reads a file
// differently from what the manifest says.
//  - bitmaps through win32::Pictures, the host's own code: the platform's PNG
//    decoder into a premultiplied DIB section, the file chosen by the height of the
//    place, drawn with Pictures::Draw. Each must come at its scale and size and
//    draw, upright and premultiplied, the pixels the manifest's fingerprint
//    describes; the buttons are also alpha-blended over white.
//  - icons with LoadImageW at every size the file holds.
#include <windows.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <string>
#include <vector>

#include "platform/win32/Win32Handles.h"
#include "platform/win32/Win32Pictures.h"

namespace {

using platform::win32::Bitmap;
using platform::win32::MemoryDC;
using platform::win32::Pictures;
using platform::win32::Selected;
using platform::win32::UniqueBitmap;
using platform::win32::UniqueDC;
using platform::win32::UniqueIcon;
using platform::win32::WindowDC;

std::wstring Widen(const std::string& s) { return std::wstring(s.begin(), s.end()); }
base::Text Text(const std::wstring& s) { return platform::win32::FromWide(s.c_str(), s.size()); }

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

struct Entry {
  std::string path;
  int width = 0, height = 0;
  std::string more;  // "fingerprint=..." or "sizes=..."
};

// The picture as Pictures::Draw puts it on a clear 32-bit top-down canvas of its
// size: premultiplied source-over onto nothing gives back the source's own pixels,
// rows top to bottom as they show on the screen.
std::vector<uint8_t> DrawnPixels(const Bitmap& bmp) {
  BITMAPINFO bi{};
  bi.bmiHeader = {sizeof(bi.bmiHeader), bmp.width, -bmp.height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  void* bits = nullptr;
  const UniqueBitmap canvas(CreateDIBSection(nullptr, &bi, DIB_RGB_COLORS, &bits, nullptr, 0));
  const UniqueDC dc(CreateCompatibleDC(nullptr));
  if (!canvas || !bits || !dc) return {};
  const size_t bytes = static_cast<size_t>(bmp.width) * bmp.height * 4;
  std::memset(bits, 0, bytes);
  {
    const Selected selected(dc.Get(), canvas.Get());
    Pictures::Draw(dc.Get(), bmp, 0, 0, bmp.width, bmp.height);
    GdiFlush();
  }
  return std::vector<uint8_t>(static_cast<const uint8_t*>(bits),
                              static_cast<const uint8_t*>(bits) + bytes);
}

// As qvartwork's DecoderFingerprint: FNV-1a over every byte of the opaque and the
// clear pixels and the alpha byte alone of the others, whose colour may differ by
// one with the decoder's rounding.
uint32_t Fingerprint(const std::vector<uint8_t>& bgra) {
  uint32_t h = 2166136261u;
  auto add = [&h](uint8_t byte) { h = (h ^ byte) * 16777619u; };
  for (size_t i = 0; i < bgra.size(); i += 4) {
    const uint8_t a = bgra[i + 3];
    if (a == 0 || a == 255)
      for (int ch = 0; ch < 4; ++ch) add(bgra[i + ch]);
    else
      add(a);
  }
  return h;
}

// Draws the picture with its alpha over white and returns the pixel at (x, y).
COLORREF BlendOverWhite(const Bitmap& bmp, int x, int y) {
  const WindowDC screen(nullptr);
  const MemoryDC dst(screen.Get(), bmp.width, bmp.height);
  RECT all{0, 0, bmp.width, bmp.height};
  FillRect(dst.Get(), &all, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
  Pictures::Draw(dst.Get(), bmp, 0, 0, bmp.width, bmp.height);
  return GetPixel(dst.Get(), x, y);
}

void CheckBitmap(Pictures& pictures, const Entry& e) {
  // "key@125.png" is the key at 125 %, "key.png" at 100 %.
  std::string key = e.path.substr(0, e.path.size() - 4);
  int scale = 100;
  if (const size_t at = key.rfind('@'); at != std::string::npos) {
    scale = std::atoi(key.c_str() + at + 1);
    key.resize(at);
  }
  const Bitmap* bmp = pictures.Find(Text(Widen(key)), e.height);
  if (!bmp) return Fail(e.path + ": not loaded");
  if (bmp->scale != scale || bmp->width != e.width || bmp->height != e.height)
    return Fail(e.path + ": chosen for height " + std::to_string(e.height) + " as " +
                std::to_string(bmp->width) + "x" + std::to_string(bmp->height) + " at " +
                std::to_string(bmp->scale) + " %");
  const std::vector<uint8_t> px = DrawnPixels(*bmp);
  if (px.empty()) return Fail(e.path + ": no canvas to draw on");
  for (size_t i = 0; i < px.size(); i += 4)
    if (px[i] > px[i + 3] || px[i + 1] > px[i + 3] || px[i + 2] > px[i + 3])
      return Fail(e.path + ": pixel " + std::to_string(i / 4) + " is not premultiplied");
  char expected[32];
  std::snprintf(expected, sizeof expected, "fingerprint=%08X",
                static_cast<unsigned>(Fingerprint(px)));
  if (e.more != expected)
    Fail(e.path + ": decoded pixels give " + expected + ", the manifest says " + e.more);
  // Buttons have clear rounded corners: blended over white the corner stays white
  // and the middle is the face.
  if (key == "button_enb" || key == "button_ovr") {
    if (BlendOverWhite(*bmp, 0, 0) != RGB(255, 255, 255)) Fail(e.path + ": corner not transparent");
    const COLORREF mid = BlendOverWhite(*bmp, bmp->width / 2, bmp->height / 2);
    if (key == "button_ovr" && GetRValue(mid) > 60) Fail(e.path + ": hover face not teal");
  }
}

void CheckIcon(const std::wstring& dir, const Entry& e) {
  if (e.more.rfind("sizes=", 0) != 0) return Fail(e.path + ": no sizes in the manifest");
  int checked = 0;
  for (size_t at = 6; at < e.more.size();) {
    const int size = std::atoi(e.more.c_str() + at);
    const size_t comma = e.more.find(',', at);
    at = comma == std::string::npos ? e.more.size() : comma + 1;
    const UniqueIcon icon(
        static_cast<HICON>(LoadImageW(nullptr, WindowsPath(dir + L"\\" + Widen(e.path)).c_str(),
                                      IMAGE_ICON, size, size, LR_LOADFROMFILE)));
    ++checked;
    if (!icon) {
      Fail(e.path + ": no icon of " + std::to_string(size));
      continue;
    }
    ICONINFO ii{};
    BITMAP bm{};
    if (GetIconInfo(icon.Get(), &ii)) {
      // The icon's two bitmaps are copies the caller deletes.
      const UniqueBitmap color(ii.hbmColor), mask(ii.hbmMask);
      if (!GetObjectW(color.Get(), sizeof bm, &bm))
        Fail(e.path + ": the icon of " + std::to_string(size) + " has no colour bitmap");
      else if (bm.bmWidth != size || bm.bmHeight != size || bm.bmBitsPixel != 32)
        Fail(e.path + ": " + std::to_string(size) + " came as " + std::to_string(bm.bmWidth) + " " +
             std::to_string(bm.bmBitsPixel) + " bits");
    } else {
      Fail(e.path + ": no icon information for " + std::to_string(size));
    }
  }
  if (checked == 0) Fail(e.path + ": no sizes in the manifest");
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
  if (argc != 2) {
    std::printf("usage: artwork_load_check IMAGES_DIR\n");
    return 2;
  }
  const std::wstring dir = WindowsPath(argv[1]);
  const std::wstring path = dir + L"\\artwork.txt";
  std::ifstream manifest(std::string(path.begin(), path.end()));  // build paths are ASCII
  if (!manifest) {
    std::printf("FAIL no artwork.txt in the folder\n");
    return 1;
  }
  Pictures pictures(Text(dir), 96);
  int bitmaps = 0, icons = 0;
  std::string line;
  while (std::getline(manifest, line)) {
    if (line.empty() || line[0] == '#') continue;
    Entry e;
    const size_t tab = line.find('\t'),
                 tab2 = line.find('\t', tab == std::string::npos ? tab : tab + 1);
    if (tab == std::string::npos || tab2 == std::string::npos ||
        std::sscanf(line.c_str() + tab + 1, "%dx%d", &e.width, &e.height) != 2) {
      Fail("manifest line: " + line);
      continue;
    }
    e.path = line.substr(0, tab);
    e.more = line.substr(tab2 + 1);
    if (e.path.size() > 4 && e.path.compare(e.path.size() - 4, 4, ".png") == 0) {
      CheckBitmap(pictures, e);
      ++bitmaps;
    } else {
      CheckIcon(dir, e);
      ++icons;
    }
  }
  std::printf("artwork_load_check: %d bitmaps, %d icons, %d failures\n", bitmaps, icons, failures);
  return failures == 0 && bitmaps > 0 && icons > 0 ? 0 : 1;
}
