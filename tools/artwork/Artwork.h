#pragma once
// The catalogue of every picture the monitor shows: its key, its files, its size
// at 96 DPI, where it is used and in which states, and how it is drawn.
#include <functional>
#include <string>
#include <vector>

#include "Raster.h"

namespace art {

// Scales written for each bitmap, in percent: 96, 120, 144 and 192 DPI.
inline constexpr int kScales[] = {100, 125, 150, 200};

// Sizes written into the icon files. The tray asks for the small icon size: 16,
// 20, 24 and 32 at 100, 125, 150 and 200 %; a window's icons are the small one and
// the large one (32 at 100 %, 64 at 200 %).
inline const std::vector<int> kTraySizes = {16, 20, 24, 32, 40, 48};
inline const std::vector<int> kSmallIconSizes = {16, 20, 24, 32, 40, 48, 64};
inline const std::vector<int> kBrandSizes = {16, 20, 24, 32, 40, 48, 64, 256};

// What a drawing routine knows about the canvas it draws on.
struct Ctx {
  float s = 1;  // pixels per design pixel (the design is drawn for 96 DPI)
  int w = 0;    // canvas size in pixels
  int h = 0;

  float S(float v) const { return v * s; }
  // A position snapped to a whole pixel, for edges that must stay crisp.
  float P(float v) const;
  // A stroke width snapped to whole pixels, at least one.
  float W(float v) const;
  // An even stroke width, for strokes centred on an even-sized canvas.
  float E(float v) const;
  float Cx() const { return w / 2.0f; }
  float Cy() const { return h / 2.0f; }
};

using DrawFn = std::function<void(Canvas&, const Ctx&)>;

enum class Kind { Bitmap, Icon };

struct Picture {
  std::string key;  // the image key (bitmaps) or the file name (icons)
  Kind kind = Kind::Bitmap;
  std::string folder;  // below the output folder; empty for the image folder itself
  int width = 0;       // at 96 DPI; for icons the design grid the drawing uses
  int height = 0;
  std::vector<int> iconSizes;  // icons only
  std::string group;           // the section of the list in the documentation
  std::string use;             // where the monitor shows it
  std::string states;          // which state the picture stands for
  DrawFn draw;
};

const std::vector<Picture>& Catalogue();
const Picture* FindPicture(const std::string& key);

// A size at a scale: round(base * percent / 100), halves up.
int ScaledSize(int base, int percent);
// "key.png", "key@125.png", "key@150.png", "key@200.png"; icons keep their own name.
std::string BitmapFileName(const std::string& key, int percent);
// The path below the output folder of a picture at a scale (icons ignore it).
std::string RelativePath(const Picture& p, int percent);

// Draws a bitmap at a scale in percent, or an icon at a size in pixels.
Canvas RenderBitmap(const Picture& p, int percent);
Canvas RenderIcon(const Picture& p, int size);

}  // namespace art
