#include "Generate.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <sstream>

namespace art {

namespace fs = std::filesystem;

namespace {

// Window backgrounds and anything else this wide go on the large sheet.
constexpr int kLargeWidth = 160;

bool Put(const fs::path& root, const std::string& rel, const std::vector<uint8_t>& bytes,
         std::string& error) {
  const fs::path path = root / rel;
  std::error_code ec;
  fs::create_directories(path.parent_path(), ec);
  if (ec) {
    error = "cannot create " + path.parent_path().string() + ": " + ec.message();
    return false;
  }
  if (!WriteFile(path.string(), bytes)) {
    error = "cannot write " + path.string();
    return false;
  }
  return true;
}

std::string Sizes(const Picture& p) {
  std::ostringstream o;
  if (p.kind == Kind::Icon) {
    for (size_t i = 0; i < p.iconSizes.size(); ++i) o << (i ? ", " : "") << p.iconSizes[i];
    return o.str();
  }
  o << p.width << " x " << p.height;
  return o.str();
}

}  // namespace

Image ToImage(const Canvas& c, bool premultiplied) {
  return {c.Width(), c.Height(), premultiplied ? c.PremultipliedBgra() : c.StraightBgra()};
}

std::vector<uint8_t> BitmapFile(const Canvas& drawn) {
  return EncodePng(Unpremultiply(ToImage(drawn, true)));
}

bool WriteAll(const std::string& outDir, std::vector<WrittenFile>& written, std::string& error) {
  const fs::path root(outDir);
  written.clear();
  for (const Picture& p : Catalogue()) {
    if (p.kind == Kind::Bitmap) {
      for (int pct : kScales) {
        const Canvas c = RenderBitmap(p, pct);
        const std::string rel = RelativePath(p, pct);
        if (!Put(root, rel, BitmapFile(c), error)) return false;
        written.push_back({rel, c.Width(), c.Height(), DecoderFingerprint(ToImage(c, true)), {}});
      }
    } else {
      std::vector<Image> images;
      for (int size : p.iconSizes) images.push_back(ToImage(RenderIcon(p, size), false));
      const std::string rel = RelativePath(p, 100);
      if (!Put(root, rel, EncodeIco(images), error)) return false;
      const int largest = *std::max_element(p.iconSizes.begin(), p.iconSizes.end());
      written.push_back({rel, largest, largest, 0, p.iconSizes});
    }
  }
  const std::string manifest = Manifest(written);
  return Put(root, "artwork.txt", std::vector<uint8_t>(manifest.begin(), manifest.end()), error);
}

std::string Manifest(const std::vector<WrittenFile>& written) {
  std::ostringstream o;
  o << "# Pictures written by qvartwork: path, size in pixels (icons: the largest), and\n"
       "# the fingerprint of a bitmap's premultiplied pixels or the sizes an icon holds.\n";
  for (const WrittenFile& f : written) {
    o << f.path << '\t' << f.width << 'x' << f.height << '\t';
    if (f.iconSizes.empty()) {
      char hex[9];
      std::snprintf(hex, sizeof hex, "%08X", f.fingerprint);
      o << "fingerprint=" << hex;
    } else {
      o << "sizes=";
      for (size_t i = 0; i < f.iconSizes.size(); ++i) o << (i ? "," : "") << f.iconSizes[i];
    }
    o << '\n';
  }
  return o.str();
}

std::string MarkdownList() {
  std::ostringstream o;
  std::string group;
  for (const Picture& p : Catalogue()) {
    if (p.group != group) {
      group = p.group;
      o << "\n### " << group << "\n\n";
      o << "| Key | File(s) | Size at 96 DPI | Used by | State |\n|---|---|---|---|---|\n";
    }
    std::string files;
    if (p.kind == Kind::Icon) {
      files = "`" + RelativePath(p, 100) + "`";
    } else {
      for (int pct : kScales)
        files += (files.empty() ? "" : ", ") + ("`" + RelativePath(p, pct) + "`");
    }
    o << "| `" << p.key << "` | " << files << " | " << Sizes(p)
      << (p.kind == Kind::Icon ? " (icon sizes)" : "") << " | " << p.use << " | " << p.states
      << " |\n";
  }
  return o.str();
}

Image ContactSheet(bool large) {
  struct Item {
    std::vector<Canvas> canvases;
    int w = 0, h = 0;
  };
  const int gap = 6, pad = 12, maxWidth = large ? 2400 : 1400;
  std::vector<Item> items;
  for (const Picture& p : Catalogue()) {
    // Small sheet: small bitmaps and icons up to 64; large: the rest.
    if (p.kind == Kind::Bitmap && (p.width > kLargeWidth) != large) continue;
    Item it;
    if (p.kind == Kind::Bitmap)
      for (int pct : kScales) it.canvases.push_back(RenderBitmap(p, pct));
    else
      for (int size : p.iconSizes)
        if ((size > 64) == large) it.canvases.push_back(RenderIcon(p, size));
    if (it.canvases.empty()) continue;
    for (const Canvas& c : it.canvases) {
      it.w += c.Width() + gap;
      it.h = std::max(it.h, c.Height());
    }
    it.w += 2 * gap;
    items.push_back(std::move(it));
  }
  // Shelves: items left to right, a new shelf when the width is used up.
  struct Placed {
    size_t item;
    int x, y;
  };
  std::vector<Placed> placed;
  int x = pad, y = pad, shelf = 0, width = 0;
  for (size_t i = 0; i < items.size(); ++i) {
    if (x + items[i].w > maxWidth && x > pad) {
      x = pad;
      y += shelf + 2 * gap;
      shelf = 0;
    }
    placed.push_back({i, x, y});
    x += items[i].w;
    width = std::max(width, x);
    shelf = std::max(shelf, items[i].h);
  }
  const int height = y + shelf + pad;
  width += pad;
  Canvas sheet(width, height);
  sheet.Flood([](float fx, float fy) {
    const bool dark = (static_cast<int>(fx) / 8 + static_cast<int>(fy) / 8) % 2;
    return dark ? Rgb(0xE4E7E9) : Rgb(0xFAFBFB);
  });
  for (const Placed& pl : placed) {
    int px = pl.x + gap;
    for (const Canvas& c : items[pl.item].canvases) {
      sheet.Blit(c, px, pl.y);
      px += c.Width() + gap;
    }
  }
  return ToImage(sheet, false);
}

}  // namespace art
