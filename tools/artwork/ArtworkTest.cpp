// Tests of the artwork program: the file writers against their readers, the
// catalogue against the keys the screens ask for, and the files on disk.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <sstream>

#include <unistd.h>

#include "Artwork.h"
#include "Font.h"
#include "Generate.h"
#include "ImageFiles.h"
#include "Raster.h"

namespace art {
namespace {

namespace fs = std::filesystem;

Image Pattern(int w, int h) {
  Image img{w, h, std::vector<uint8_t>(static_cast<size_t>(w) * h * 4)};
  for (int y = 0; y < h; ++y)
    for (int x = 0; x < w; ++x) {
      uint8_t* p = &img.bgra[(static_cast<size_t>(y) * w + x) * 4];
      const uint8_t a = static_cast<uint8_t>((x * 37 + y * 11) % 256);
      p[0] = static_cast<uint8_t>(std::min<int>(a, x * 3));
      p[1] = static_cast<uint8_t>(std::min<int>(a, y * 5));
      p[2] = static_cast<uint8_t>(std::min<int>(a, (x + y) % 97));
      p[3] = a;
    }
  return img;
}

struct Rgba {
  int r, g, b, a;
};

Rgba PixelOf(const Image& img, int x, int y) {
  const uint8_t* p = &img.bgra[(static_cast<size_t>(y) * img.width + x) * 4];
  return {p[2], p[1], p[0], p[3]};
}

// ---------------------------------------------------------------- rasteriser

TEST(Raster, EdgesOnPixelBoundariesAreCrisp) {
  Canvas c(10, 10);
  c.Fill(Rect(2, 3, 7, 8), Rgb(0x000000));
  for (int y = 0; y < 10; ++y)
    for (int x = 0; x < 10; ++x) {
      const bool inside = x >= 2 && x < 7 && y >= 3 && y < 8;
      EXPECT_FLOAT_EQ(c.PremultipliedAt(x, y).a, inside ? 1.0f : 0.0f) << x << "," << y;
    }
}

TEST(Raster, CircleCoversItsArea) {
  Canvas c(40, 40);
  c.Fill(Circle(20, 20, 12.5f), Rgb(0xFFFFFF));
  double sum = 0;
  for (int y = 0; y < 40; ++y)
    for (int x = 0; x < 40; ++x) sum += c.PremultipliedAt(x, y).a;
  EXPECT_NEAR(sum, 3.14159265 * 12.5 * 12.5, 3.14159265 * 12.5 * 12.5 * 0.01);
}

TEST(Raster, EraseCutsAHoleAndBlendKeepsPremultipliedOrder) {
  Canvas c(8, 8);
  c.Fill(Rect(0, 0, 8, 8), Rgb(0x336699));
  c.Fill(Rect(0, 0, 8, 8), WithAlpha(Rgb(0xFFFFFF), 0.5f));
  c.Erase(Rect(0, 0, 4, 8));
  EXPECT_EQ(c.PremultipliedAt(1, 1).a, 0.0f);
  const Color kept = c.PremultipliedAt(6, 1);
  EXPECT_FLOAT_EQ(kept.a, 1.0f);
  EXPECT_NEAR(kept.r, (0x33 / 255.0f + 1.0f) / 2, 1e-5);
  const auto bytes = c.PremultipliedBgra();
  for (size_t i = 0; i < bytes.size(); i += 4)
    EXPECT_TRUE(bytes[i] <= bytes[i + 3] && bytes[i + 1] <= bytes[i + 3] &&
                bytes[i + 2] <= bytes[i + 3]);
}

TEST(Raster, ArcStaysWithinItsAngles) {
  Canvas c(40, 40);
  c.Fill(Arc(20, 20, 10, 0, 90, 2), Rgb(0));  // right to bottom (y grows down)
  EXPECT_GT(c.PremultipliedAt(29, 20).a + c.PremultipliedAt(30, 20).a, 0.5f);
  EXPECT_GT(c.PremultipliedAt(20, 29).a + c.PremultipliedAt(20, 30).a, 0.5f);
  EXPECT_EQ(c.PremultipliedAt(9, 20).a + c.PremultipliedAt(10, 20).a, 0.0f);  // left
  EXPECT_EQ(c.PremultipliedAt(20, 9).a + c.PremultipliedAt(20, 10).a, 0.0f);  // top
}

TEST(Raster, GrownPolygonRoundsItsCornersAndGrowsItsArea) {
  Canvas c(40, 40);
  c.Fill(Polygon({{10, 10}, {30, 10}, {30, 30}, {10, 30}}, 4), Rgb(0));
  double sum = 0;
  for (int y = 0; y < 40; ++y)
    for (int x = 0; x < 40; ++x) sum += c.PremultipliedAt(x, y).a;
  // A 20 x 20 square grown by 4: 28 x 28 less the four corners outside a radius 4.
  EXPECT_NEAR(sum, 28 * 28 - 4 * (16 - 3.14159265 * 16 / 4), 4.0);
  EXPECT_FLOAT_EQ(c.PremultipliedAt(20, 6).a, 1.0f);  // the middle of an edge is solid
  EXPECT_LT(c.PremultipliedAt(6, 6).a, 0.5f);         // the corner is round
}

TEST(Raster, SetOperationsCutRings) {
  Canvas c(50, 50);
  c.Fill(Subtract(Circle(25, 25, 20), Circle(25, 25, 12)), Rgb(0));
  double sum = 0;
  for (int y = 0; y < 50; ++y)
    for (int x = 0; x < 50; ++x) sum += c.PremultipliedAt(x, y).a;
  EXPECT_NEAR(sum, 3.14159265 * (400 - 144), 3.14159265 * 256 * 0.01);
  EXPECT_EQ(c.PremultipliedAt(25, 25).a, 0.0f);

  Canvas d(50, 50);
  d.Fill(Intersect(Rect(0, 0, 25, 50), Circle(25, 25, 20)), Rgb(0));
  EXPECT_EQ(d.PremultipliedAt(30, 25).a, 0.0f);
  EXPECT_EQ(d.PremultipliedAt(20, 25).a, 1.0f);
}

TEST(Raster, ShapesPartlyOffTheCanvasAreClipped) {
  Canvas c(8, 8);
  c.Fill(Circle(-3, -3, 9), Rgb(0xFF0000));
  c.Fill(Rect(5, 5, 100, 100), Rgb(0x00FF00));
  c.Erase(Rect(6, 6, 100, 100));
  EXPECT_EQ(c.PremultipliedAt(7, 7).a, 0.0f);
  EXPECT_GT(c.PremultipliedAt(0, 0).a, 0.0f);
}

TEST(Raster, BlitAndStraightColoursFollowTheAlpha) {
  Canvas under(2, 1), over(2, 1);
  under.Fill(Rect(0, 0, 2, 1), Rgb(0x0000FF));
  over.Fill(Rect(0, 0, 1, 1), WithAlpha(Rgb(0xFF0000), 0.5f));
  under.Blit(over, 0, 0);
  const Color mixed = under.PremultipliedAt(0, 0);
  EXPECT_NEAR(mixed.r, 0.5f, 1e-6);
  EXPECT_NEAR(mixed.b, 0.5f, 1e-6);
  EXPECT_FLOAT_EQ(mixed.a, 1.0f);

  // Straight colours undo the premultiplication; clear pixels are all zero.
  const auto straight = over.StraightBgra();
  EXPECT_EQ(straight[2], 255);
  EXPECT_EQ(straight[3], 128);
  EXPECT_EQ(std::vector<uint8_t>(straight.begin() + 4, straight.end()), std::vector<uint8_t>(4, 0));
  const auto pre = over.PremultipliedBgra();
  EXPECT_EQ(pre[2], 128);
}

TEST(Font, CoversTheWordsTheArtworkWrites) {
  EXPECT_TRUE(FontCovers("Status"));
  EXPECT_TRUE(FontCovers("Details"));
  EXPECT_TRUE(FontCovers("Corvane"));
  EXPECT_FALSE(FontCovers("Zebra"));
  const TextStyle st;
  EXPECT_GT(TextWidth("Details", st), TextWidth("Deta", st));
}

TEST(Font, InkStaysBetweenCapitalHeightAndBaseline) {
  const TextStyle st{2.0f, 2.0f, 0.7f};
  const float width = TextWidth("Details", st);
  Canvas c(static_cast<int>(width) + 20, 40);
  c.Fill(TextShape("Details", 10, 30, st), Rgb(0));
  int top = 99, bottom = -1, left = 999, right = -1;
  for (int y = 0; y < c.Height(); ++y)
    for (int x = 0; x < c.Width(); ++x)
      if (c.PremultipliedAt(x, y).a > 0.5f) {
        top = std::min(top, y);
        bottom = std::max(bottom, y);
        left = std::min(left, x);
        right = std::max(right, x);
      }
  // Capitals 8 units (16 px) above the baseline at 30, the 'l' a little taller.
  EXPECT_GE(top, 30 - 18 - 2);
  EXPECT_LE(top, 30 - 15);
  EXPECT_LE(bottom, 30 + 1);
  EXPECT_GE(left, 9);
  EXPECT_LE(right, 10 + static_cast<int>(width) + 2);
}

// ---------------------------------------------------------------- file formats

// Premultiplying rounds to the nearest, as a decoder that converts to
// premultiplied pixels does; dividing by alpha on the way into the PNG rounds too,
// and the two undo each other exactly for every pixel a premultiplied picture can
// hold.
TEST(Png, StraightColoursGiveBackEveryPremultipliedPixel) {
  for (int a = 0; a < 256; ++a)
    for (int p = 0; p <= a; ++p) {
      const uint8_t s = UnpremultiplyChannel(uint8_t(p), uint8_t(a));
      ASSERT_EQ(PremultiplyChannel(s, uint8_t(a)), p) << "p " << p << " a " << a;
      // A decoder that truncates instead is off by one at most.
      ASSERT_LE(p - s * a / 255, 1) << "p " << p << " a " << a;
      if (a > 0) {
        ASSERT_NEAR(s, 255.0 * p / a, 0.5 + 1e-9) << "p " << p << " a " << a;
      }
    }
  EXPECT_EQ(UnpremultiplyChannel(0, 0), 0);  // clear pixels store black
}

// A small drawing with opaque, clear and half covered pixels, premultiplied.
Image Sample() {
  Canvas c(37, 29);
  c.Fill(Circle(18, 14, 12.3f), VerticalGradient(0, Rgb(0x1A9BA6), 29, Rgb(0x0A5C64)));
  c.Fill(Rect(3, 20, 34, 27), WithAlpha(Rgb(0xF0A020), 0.4f));
  c.Fill(Line({2, 2}, {35, 9}, 1.7f), WithAlpha(Rgb(0xFFFFFF), 0.8f));
  return ToImage(c, true);
}

TEST(Png, PicturesRoundTripThroughTheFile) {
  const Image premultiplied = Sample();
  for (int level : {0, 9}) {
    const auto back = DecodePng(EncodePng(Unpremultiply(premultiplied), level));
    ASSERT_TRUE(back) << level;
    EXPECT_EQ(back->chunks, (std::vector<std::string>{"IHDR", "IDAT", "IEND"}));
    EXPECT_EQ(back->image.width, 37);
    EXPECT_EQ(back->image.height, 29);
    EXPECT_EQ(Premultiply(back->image).bgra, premultiplied.bgra) << level;
  }
  // Any 8-bit RGBA content survives, whichever filters the rows get.
  const Image noise = Pattern(300, 80);
  const auto back = DecodePng(EncodePng(noise));
  ASSERT_TRUE(back);
  EXPECT_EQ(back->image.bgra, noise.bgra);
}

TEST(Png, CompressionPaysOffOnFlatPictures) {
  const Picture* p = FindPicture("qv_medium");
  ASSERT_NE(p, nullptr);
  const Canvas c = RenderBitmap(*p, 100);
  const std::vector<uint8_t> file = BitmapFile(c);
  EXPECT_LT(file.size() * 20, static_cast<size_t>(c.Width()) * c.Height() * 4);
}

TEST(Png, ReaderRefusesDamagedOrForeignFiles) {
  const std::vector<uint8_t> good = EncodePng(Pattern(20, 10));
  ASSERT_TRUE(DecodePng(good));
  const uint8_t iend[] = {'I', 'E', 'N', 'D'};
  EXPECT_EQ(Crc32(iend, 4), 0xAE426082u);

  std::vector<uint8_t> flipped = good;
  flipped[flipped.size() / 2] ^= 0x40;  // inside IDAT: its CRC no longer matches
  EXPECT_FALSE(DecodePng(flipped));
  EXPECT_FALSE(DecodePng(std::vector<uint8_t>(good.begin(), good.end() - 13)));  // no IEND
  EXPECT_FALSE(DecodePng(std::vector<uint8_t>(good.begin(), good.begin() + 8)));

  // A grey PNG (colour type 0) with a correct CRC is still not ours.
  std::vector<uint8_t> grey = good;
  grey[8 + 8 + 9] = 0;
  const uint32_t crc = Crc32(&grey[8 + 4], 17);
  for (int i = 0; i < 4; ++i) grey[8 + 8 + 13 + i] = static_cast<uint8_t>(crc >> (24 - 8 * i));
  EXPECT_FALSE(DecodePng(grey));

  // A data stream cut short inside a valid chunk.
  std::vector<uint8_t> shortData(good.begin(), good.begin() + 33);
  const std::vector<uint8_t> z = {0x78, 0x9C, 0x03, 0x00};
  auto put = [&](const char* type, const std::vector<uint8_t>& data) {
    for (int i = 0; i < 4; ++i)
      shortData.push_back(static_cast<uint8_t>(data.size() >> (24 - 8 * i)));
    const size_t start = shortData.size();
    shortData.insert(shortData.end(), type, type + 4);
    shortData.insert(shortData.end(), data.begin(), data.end());
    const uint32_t c = Crc32(&shortData[start], shortData.size() - start);
    for (int i = 0; i < 4; ++i) shortData.push_back(static_cast<uint8_t>(c >> (24 - 8 * i)));
  };
  put("IDAT", z);
  put("IEND", {});
  EXPECT_FALSE(DecodePng(shortData));
}

TEST(Ico, DirectoryEntriesAndMaskMatchTheImages) {
  std::vector<Image> images = {Pattern(16, 16), Pattern(20, 20), Pattern(256, 256)};
  const std::vector<uint8_t> f = EncodeIco(images);
  EXPECT_EQ(f[2] | (f[3] << 8), 1);  // icon
  EXPECT_EQ(f[4] | (f[5] << 8), 3);  // three images
  EXPECT_EQ(f[6 + 32], 0);           // 256 is written as 0 in the directory
  const auto entries = DecodeIco(f);
  ASSERT_TRUE(entries);
  ASSERT_EQ(entries->size(), 3u);
  for (size_t i = 0; i < images.size(); ++i) {
    const IcoEntry& e = (*entries)[i];
    EXPECT_EQ(e.width, images[i].width);
    EXPECT_EQ(e.image.bgra, images[i].bgra);
    for (int y = 0; y < e.height; ++y)
      for (int x = 0; x < e.width; ++x)
        ASSERT_EQ(e.transparentMask[static_cast<size_t>(y) * e.width + x],
                  PixelOf(e.image, x, y).a == 0)
            << "size " << e.width << " at " << x << "," << y;
  }
}

TEST(Ico, ReaderRefusesEntriesThatDoNotAddUp) {
  std::vector<uint8_t> f = EncodeIco({Pattern(16, 16)});
  ASSERT_TRUE(DecodeIco(f));
  std::vector<uint8_t> longer = f;
  longer[6 + 8] += 4;  // the entry claims more bytes than its bitmap and mask hold
  EXPECT_FALSE(DecodeIco(longer));
  std::vector<uint8_t> cut(f.begin(), f.end() - 10);
  EXPECT_FALSE(DecodeIco(cut));
}

// ---------------------------------------------------------------- the catalogue

// Every picture key and file the screens name.
const char* const kDesignKeys[] = {"qv_msg_info",
                                   "qv_msg_question",
                                   "qv_msg_cross",
                                   "qv_msg_warn",
                                   "qv_small_help",
                                   "qv_small_close",
                                   "qv_desk_notify",
                                   "qv_desknoti_fail",
                                   "qv_desknoti_success",
                                   "qv_dsktp_notification",
                                   "qv_medium",
                                   "qv_feedback",
                                   "qv_about_us",
                                   "qv_cust_about_us",
                                   "qv_logo_monitor",
                                   "button_enb",
                                   "button_ovr",
                                   "button_OK_enb",
                                   "button_OK_ovr",
                                   "button_large200_enb",
                                   "button_med_enb",
                                   "qv_backup_imm",
                                   "qv_logs",
                                   "qv_nor",
                                   "qv_sch4",
                                   "qvmon_view",
                                   "qvmon_refresh",
                                   "qvmon_stop",
                                   "slider_box",
                                   "slider_knob2",
                                   "bg_auto",
                                   "next_reg",
                                   "next_dis",
                                   "back_reg",
                                   "back_dis",
                                   "checked",
                                   "gen",
                                   "dis",
                                   "del_gen",
                                   "ref_gen",
                                   "stop_gen",
                                   "del_dis",
                                   "ref_dis",
                                   "stop_dis",
                                   "del_ove",
                                   "ref_ove",
                                   "stop_ove",
                                   "qvwin-desktop4.ico",
                                   "Screenicon.ico",
                                   "MonitorIcon.ico"};

TEST(Catalogue, HoldsEveryKeyTheScreensName) {
  for (const char* key : kDesignKeys) EXPECT_NE(FindPicture(key), nullptr) << key;
}

TEST(Catalogue, FileNamesAreUniqueIgnoringCase) {
  std::set<std::string> seen;
  for (const Picture& p : Catalogue())
    for (int pct : kScales) {
      if (p.kind == Kind::Icon && pct != 100) continue;
      std::string path = RelativePath(p, pct);
      std::transform(path.begin(), path.end(), path.begin(),
                     [](unsigned char ch) { return std::tolower(ch); });
      EXPECT_TRUE(seen.insert(path).second) << path;
    }
}

TEST(Catalogue, ScaledSizesRoundHalvesUp) {
  EXPECT_EQ(ScaledSize(53, 125), 66);
  EXPECT_EQ(ScaledSize(53, 150), 80);
  EXPECT_EQ(ScaledSize(16, 125), 20);
  EXPECT_EQ(ScaledSize(23, 200), 46);
  EXPECT_EQ(BitmapFileName("button_enb", 100), "button_enb.png");
  EXPECT_EQ(BitmapFileName("button_enb", 200), "button_enb@200.png");
}

// Pictures that replace each other on one control keep one size, so that the
// control does not jump when the state changes.
TEST(Catalogue, StatesOfOneControlShareTheirSize) {
  auto family = [](const std::string& key) {
    static const char* const suffixes[] = {"_enb", "_ovr", "_dwn", "_dis",
                                           "_gen", "_ove", "_reg", "_sel"};
    for (const char* s : suffixes) {
      const std::string suf(s);
      if (key.size() > suf.size() && key.compare(key.size() - suf.size(), suf.size(), suf) == 0)
        return key.substr(0, key.size() - suf.size());
    }
    if (key.starts_with("light_")) return std::string("light");
    if (key == "checked" || key == "gen" || key == "dis") return std::string("day");
    return key;
  };
  std::map<std::string, std::pair<int, int>> sizes;
  for (const Picture& p : Catalogue()) {
    if (p.kind != Kind::Bitmap) continue;
    auto [it, fresh] = sizes.emplace(family(p.key), std::make_pair(p.width, p.height));
    EXPECT_EQ(it->second, std::make_pair(p.width, p.height)) << p.key;
  }
  EXPECT_EQ(sizes.count("button_large200"), 1u);
  EXPECT_EQ(sizes.count("tab_status"), 1u);
}

TEST(Catalogue, DrawingIsRepeatable) {
  for (const Picture& p : Catalogue()) {
    if (p.kind == Kind::Bitmap && p.width <= 160) {
      EXPECT_EQ(RenderBitmap(p, 125).PremultipliedBgra(), RenderBitmap(p, 125).PremultipliedBgra())
          << p.key;
    } else if (p.kind == Kind::Icon) {
      EXPECT_EQ(RenderIcon(p, 20).StraightBgra(), RenderIcon(p, 20).StraightBgra()) << p.key;
    }
  }
}

TEST(Catalogue, WritingIntoAFileReportsTheFailure) {
  const fs::path blocker =
      fs::temp_directory_path() / ("qvartwork-blocker-" + std::to_string(::getpid()));
  ASSERT_TRUE(WriteFile(blocker.string(), {1, 2, 3}));
  std::vector<WrittenFile> written;
  std::string error;
  EXPECT_FALSE(WriteAll((blocker / "images").string(), written, error));
  EXPECT_FALSE(error.empty());
  fs::remove(blocker);
}

TEST(Catalogue, DocumentationCarriesTheCurrentList) {
  std::ifstream in(QV_ARTWORK_DOC);
  ASSERT_TRUE(in) << QV_ARTWORK_DOC;
  std::stringstream text;
  text << in.rdbuf();
  EXPECT_NE(text.str().find(MarkdownList()), std::string::npos)
      << "docs/artwork.md is out of date: paste the output of `qvartwork --list` into it";
}

// ---------------------------------------------------------------- the pictures

// A bitmap as it is written (premultiplied), drawn in memory.
Image Drawn(const std::string& key, int pct) {
  const Picture* p = FindPicture(key);
  EXPECT_NE(p, nullptr) << key;
  if (!p) return {};
  return ToImage(RenderBitmap(*p, pct), true);
}

// ---------------------------------------------------------------- the written files

class Written : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    dir_ =
        new fs::path(fs::temp_directory_path() / ("qvartwork-test-" + std::to_string(::getpid())));
    fs::remove_all(*dir_);
    std::string error;
    ok_ = WriteAll(dir_->string(), *written_, error);
    error_ = error;
  }
  static void TearDownTestSuite() {
    fs::remove_all(*dir_);
    delete dir_;
  }
  static std::vector<uint8_t> Bytes(const std::string& rel) {
    auto f = ReadFile((*dir_ / rel).string());
    return f ? *f : std::vector<uint8_t>{};
  }

  static inline fs::path* dir_ = nullptr;
  static inline bool ok_ = false;
  static inline std::string error_;
  static inline std::vector<WrittenFile>* written_ = new std::vector<WrittenFile>;
};

// The files give back, premultiplied as the host's decoder does, exactly the
// pixels drawn: what the 32-bit premultiplied bitmaps of earlier builds held.
TEST_F(Written, EveryBitmapAtEveryScaleGivesBackThePixelsDrawn) {
  ASSERT_TRUE(ok_) << error_;
  for (const Picture& p : Catalogue()) {
    if (p.kind != Kind::Bitmap) continue;
    for (int pct : kScales) {
      const auto info = DecodePng(Bytes(RelativePath(p, pct)));
      ASSERT_TRUE(info) << RelativePath(p, pct);
      EXPECT_EQ(info->image.width, ScaledSize(p.width, pct)) << p.key << "@" << pct;
      EXPECT_EQ(info->image.height, ScaledSize(p.height, pct)) << p.key << "@" << pct;
      const Image drawn = ToImage(RenderBitmap(p, pct), true);
      EXPECT_TRUE(Premultiply(info->image).bgra == drawn.bgra) << p.key << "@" << pct;
      EXPECT_TRUE(
          std::any_of(drawn.bgra.begin(), drawn.bgra.end(), [](uint8_t b) { return b != 0; }))
          << p.key << "@" << pct << " is empty";
    }
  }
}

TEST_F(Written, EveryIconHoldsTheSizesItClaims) {
  ASSERT_TRUE(ok_) << error_;
  for (const Picture& p : Catalogue()) {
    if (p.kind != Kind::Icon) continue;
    const auto entries = DecodeIco(Bytes(RelativePath(p, 100)));
    ASSERT_TRUE(entries) << p.key;
    std::vector<int> sizes;
    for (const IcoEntry& e : *entries) {
      sizes.push_back(e.width);
      EXPECT_EQ(e.width, e.height);
      // Rounded tiles: the corner is clear, the tile solid (its upper left
      // quarter, away from the state badge of the tray icons).
      EXPECT_EQ(PixelOf(e.image, 0, 0).a, 0) << p.key << " " << e.width;
      EXPECT_EQ(PixelOf(e.image, e.width / 4, e.height / 4).a, 255) << p.key << " " << e.width;
    }
    EXPECT_EQ(sizes, p.iconSizes) << p.key;
    // A tray at up to 200 % takes 16 to 32; a window's icons at up to 200 % 16 to 64.
    const std::vector<int> needed = p.key.starts_with("tray_")
                                        ? std::vector<int>{16, 20, 24, 32}
                                        : std::vector<int>{16, 20, 24, 32, 40, 48, 64};
    for (int size : needed)
      EXPECT_NE(std::find(sizes.begin(), sizes.end(), size), sizes.end())
          << p.key << " lacks " << size;
  }
}

TEST_F(Written, ManifestListsEveryFileWithItsSizeAndFingerprint) {
  ASSERT_TRUE(ok_) << error_;
  const std::vector<uint8_t> m = Bytes("artwork.txt");
  std::istringstream text(std::string(m.begin(), m.end()));
  std::map<std::string, std::string> lines;  // path -> the rest
  for (std::string line; std::getline(text, line);)
    if (!line.empty() && line[0] != '#')
      lines[line.substr(0, line.find('\t'))] = line.substr(line.find('\t') + 1);
  size_t files = 0;
  for (const Picture& p : Catalogue())
    for (int pct : kScales) {
      if (p.kind == Kind::Icon && pct != 100) continue;
      ++files;
      const std::string rel = RelativePath(p, pct);
      ASSERT_EQ(lines.count(rel), 1u) << rel;
      if (p.kind == Kind::Icon) {
        std::string sizes;
        for (int s : p.iconSizes) sizes += (sizes.empty() ? "" : ",") + std::to_string(s);
        const int largest = p.iconSizes.back();
        EXPECT_EQ(lines[rel],
                  std::to_string(largest) + "x" + std::to_string(largest) + "\tsizes=" + sizes);
        continue;
      }
      const auto info = DecodePng(Bytes(rel));
      ASSERT_TRUE(info) << rel;
      char fp[9];
      std::snprintf(fp, sizeof fp, "%08X", DecoderFingerprint(Premultiply(info->image)));
      EXPECT_EQ(lines[rel], std::to_string(info->image.width) + "x" +
                                std::to_string(info->image.height) + "\tfingerprint=" + fp);
    }
  EXPECT_EQ(lines.size(), files);
  EXPECT_EQ(written_->size(), files);
  // MonitorIcon.ico in the image folder freezes the tray icon; only a branded
  // install puts it there.
  EXPECT_FALSE(fs::exists(*dir_ / "MonitorIcon.ico"));
  EXPECT_TRUE(fs::exists(*dir_ / "branding" / "MonitorIcon.ico"));
}

// The program folder's images\ with all four scales stays under 4 MB.
TEST_F(Written, TheImageFolderStaysUnderFourMegabytes) {
  ASSERT_TRUE(ok_) << error_;
  uintmax_t total = 0;
  for (const auto& entry : fs::recursive_directory_iterator(*dir_))
    if (entry.is_regular_file()) total += entry.file_size();
  EXPECT_LT(total, 4u * 1024 * 1024);
  std::printf("images: %ju bytes\n", total);
}

// The fingerprint covers what every decoder agrees on, and only that.
TEST(Png, FingerprintIgnoresRoundingButNotPlaceOrOpaqueColour) {
  const Image a = Sample();
  Image rounded = a, moved = a, recoloured = a;
  for (size_t i = 0; i < a.bgra.size(); i += 4)
    if (a.bgra[i + 3] != 0 && a.bgra[i + 3] != 255 && a.bgra[i] > 0) rounded.bgra[i] -= 1;
  std::rotate(moved.bgra.begin(), moved.bgra.begin() + a.width * 4,
              moved.bgra.end());  // one row up
  for (size_t i = 0; i < a.bgra.size(); i += 4)
    if (a.bgra[i + 3] == 255)
      std::swap(recoloured.bgra[i], recoloured.bgra[i + 2]);  // red and blue
  ASSERT_NE(rounded.bgra, a.bgra);
  ASSERT_NE(recoloured.bgra, a.bgra);
  EXPECT_EQ(DecoderFingerprint(rounded), DecoderFingerprint(a));
  EXPECT_NE(DecoderFingerprint(moved), DecoderFingerprint(a));
  EXPECT_NE(DecoderFingerprint(recoloured), DecoderFingerprint(a));
}

// ---------------------------------------------------------------- what the pictures show

TEST(Pictures, BackgroundsAreOpaqueWithACrispFrame) {
  for (const char* key : {"qv_desk_notify", "qv_dsktp_notification", "qv_medium", "qv_about_us",
                          "qv_cust_about_us", "bg_auto"}) {
    for (int pct : kScales) {
      const Image img = Drawn(key, pct);
      for (size_t i = 3; i < img.bgra.size(); i += 4)
        ASSERT_EQ(img.bgra[i], 255) << key << "@" << pct;
      // The frame is one whole pixel of the dark teal on every side.
      for (auto [x, y] : {std::pair{img.width / 2, 0},
                          {img.width / 2, img.height - 1},
                          {0, img.height / 2},
                          {img.width - 1, img.height / 2}}) {
        const Rgba p = PixelOf(img, x, y);
        EXPECT_EQ(p.r, 0x0A) << key << "@" << pct << " at " << x << "," << y;
        EXPECT_EQ(p.g, 0x5C) << key << "@" << pct;
        EXPECT_EQ(p.b, 0x64) << key << "@" << pct;
      }
    }
  }
}

// The header band is as tall as docs/artwork.md promises the screens.
TEST(Pictures, HeaderBandHasTheDocumentedHeight) {
  const std::pair<int, int> bands[] = {{100, 34}, {125, 43}, {150, 51}, {200, 68}};
  for (auto [pct, band] : bands) {
    const Image img = Drawn("qv_desk_notify", pct);
    const int x = img.width / 3;
    EXPECT_LT(PixelOf(img, x, band - 1).r, 40) << pct;  // teal band
    EXPECT_GT(PixelOf(img, x, band).r, 60) << pct;      // the light line under it
    EXPECT_LT(PixelOf(img, x, band).r, 200) << pct;
    EXPECT_GT(PixelOf(img, x, band + 3).r, 230) << pct;  // near-white body
  }
}

TEST(Pictures, ButtonEdgesAreWholePixelsAtEveryScale) {
  for (const char* key :
       {"button_enb", "button_ovr", "button_OK_enb", "button_large200_enb", "button_med_enb"}) {
    for (int pct : kScales) {
      const Image img = Drawn(key, pct);
      const int mid = img.height / 2;
      // Straight edges: the outer column and row are solid, the corner is cut.
      EXPECT_EQ(PixelOf(img, 0, mid).a, 255) << key << "@" << pct;
      EXPECT_EQ(PixelOf(img, img.width - 1, mid).a, 255) << key << "@" << pct;
      EXPECT_EQ(PixelOf(img, img.width / 2, 0).a, 255) << key << "@" << pct;
      EXPECT_LT(PixelOf(img, 0, 0).a, 128) << key << "@" << pct;
      // One colour along the straight part of the edge, and every column of the
      // middle alike, so that the face may be stretched sideways.
      for (int x = img.width / 4; x < img.width * 3 / 4; ++x)
        for (int y = 0; y < img.height; ++y) {
          const Rgba a = PixelOf(img, x, y), b = PixelOf(img, img.width / 2, y);
          ASSERT_TRUE(a.r == b.r && a.g == b.g && a.b == b.b && a.a == b.a)
              << key << "@" << pct << " " << x << "," << y;
        }
    }
  }
}

TEST(Pictures, HoverFacesCarryWhiteLabelsAndNormalFacesDarkOnes) {
  // The label colour of state 1 is white: the hover face must be dark enough for
  // it, and the normal face light enough for a dark label.
  auto luminance = [](Rgba p) {
    auto lin = [](int c) {
      const double v = c / 255.0;
      return v <= 0.03928 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * lin(p.r) + 0.7152 * lin(p.g) + 0.0722 * lin(p.b);
  };
  for (const char* fam : {"button", "button_OK", "button_med", "button_large200"}) {
    const Image ovr = Drawn(std::string(fam) + "_ovr", 100);
    const Image enb = Drawn(std::string(fam) + "_enb", 100);
    const double hover = luminance(PixelOf(ovr, ovr.width / 2, ovr.height / 2));
    const double normal = luminance(PixelOf(enb, enb.width / 2, enb.height / 2));
    EXPECT_GE(1.05 / (hover + 0.05), 4.5) << fam << ": white on the hover face";
    EXPECT_GE((normal + 0.05) / 0.05, 12.0) << fam << ": black on the normal face";
  }
}

TEST(Pictures, SliderTicksSitUnderTheKnobCentres) {
  // The knob's left edge goes to box left + (box width - knob width) * p / 100, so
  // its centre at p is knob / 2 + (box - knob) * p / 100.
  for (int pct : kScales) {
    const Image box = Drawn("slider_box", pct);
    const int k = Drawn("slider_knob2", pct).width, w = box.width;
    const int y = box.height - ScaledSize(2, pct);
    std::vector<int> ticks;
    for (int x = 0; x < w; ++x)
      if (PixelOf(box, x, y).a > 128) ticks.push_back(x);
    ASSERT_FALSE(ticks.empty()) << pct;
    std::vector<int> starts = {ticks[0]};
    for (size_t i = 1; i < ticks.size(); ++i)
      if (ticks[i] != ticks[i - 1] + 1) starts.push_back(ticks[i]);
    ASSERT_EQ(starts.size(), 5u) << pct;
    for (int i = 0; i < 5; ++i)
      EXPECT_NEAR(starts[i] + 0.5 * ScaledSize(1, pct), k / 2.0 + (w - k) * i / 4.0, 1.0)
          << pct << " tick " << i;
  }
}

TEST(Pictures, PicturesWearTheColourOfTheirMeaning) {
  auto at = [](const char* key, double fx, double fy) {
    const Image img = Drawn(key, 100);
    return PixelOf(img, static_cast<int>(img.width * fx), static_cast<int>(img.height * fy));
  };
  auto red = [](Rgba p) { return p.r > 150 && p.g < 110 && p.b < 110; };
  auto green = [](Rgba p) { return p.g > p.r + 40 && p.g > p.b + 20; };
  auto amber = [](Rgba p) { return p.r > 200 && p.g > 130 && p.b < 90; };
  auto teal = [](Rgba p) { return p.r < 60 && p.g > 90 && p.b > 100; };
  EXPECT_TRUE(teal(at("qv_msg_info", 0.2, 0.5)));
  EXPECT_TRUE(teal(at("qv_msg_question", 0.2, 0.5)));
  EXPECT_TRUE(red(at("qv_msg_cross", 0.2, 0.5)));
  EXPECT_TRUE(amber(at("qv_msg_warn", 0.3, 0.75)));
  EXPECT_TRUE(green(at("qv_desknoti_success", 0.5, 0.25)));
  EXPECT_TRUE(red(at("qv_desknoti_fail", 0.5, 0.25)));
  // Lamps from the top: red, amber, green; one lit at a time.
  EXPECT_TRUE(green(at("light_green", 0.5, 0.85)));
  EXPECT_FALSE(red(at("light_green", 0.5, 0.2)));
  EXPECT_TRUE(amber(at("light_amber", 0.5, 0.55)));
  EXPECT_TRUE(red(at("light_red", 0.5, 0.25)));
  for (double fy : {0.25, 0.55, 0.85}) {
    const Rgba p = at("light_off", 0.5, fy);
    EXPECT_LT(std::max({p.r, p.g, p.b}), 120) << "an unlit lamp at " << fy;
  }
}

TEST(Pictures, EveryStateOfAPictureButtonLooksDifferent) {
  for (const char* base : {"edit", "del", "imme", "stop", "stcomp", "ref", "button", "tab_status",
                           "tab_details", "next", "back"}) {
    std::vector<std::vector<uint8_t>> seen;
    for (const char* suffix :
         {"_gen", "_ove", "_dwn", "_dis", "_enb", "_ovr", "_sel", "", "_reg"}) {
      const std::string key = std::string(base) + suffix;
      if (!FindPicture(key)) continue;
      const Image img = Drawn(key, 100);
      for (const auto& other : seen) EXPECT_NE(other, img.bgra) << key << " repeats another state";
      seen.push_back(img.bgra);
    }
    EXPECT_GE(seen.size(), 2u) << base;
  }
}

TEST(Pictures, TheDayBoxShowsItsCheckMark) {
  auto whitePixels = [](const char* key) {
    const Image img = Drawn(key, 100);
    int n = 0;
    for (int y = 3; y < 13; ++y)
      for (int x = 3; x < 13; ++x) {
        const Rgba p = PixelOf(img, x, y);
        n += p.r > 230 && p.g > 230 && p.b > 230;
      }
    return n;
  };
  const int checked = whitePixels("checked");
  EXPECT_GE(checked, 6);
  EXPECT_LE(checked, 40);             // a mark on teal, not a white box
  EXPECT_GE(whitePixels("gen"), 60);  // the empty box is light all over
}

const char* const kTrayStates[] = {"tray_running", "tray_stopped", "tray_paused", "tray_transfer",
                                   "tray_unknown"};

Image TrayIconAt(const std::string& state, bool light, int size) {
  const Picture* p = FindPicture(state + (light ? "_light.ico" : ".ico"));
  EXPECT_NE(p, nullptr) << state << (light ? " light" : "");
  return p ? ToImage(RenderIcon(*p, size), false)
           : Image{size, size, std::vector<uint8_t>(size * size * 4)};
}

TEST(Pictures, TrayStatesDifferAtSixteenPixels) {
  for (bool light : {false, true}) {
    std::vector<Image> small;
    for (const char* f : kTrayStates) small.push_back(TrayIconAt(f, light, 16));
    for (size_t i = 0; i < small.size(); ++i)
      for (size_t j = i + 1; j < small.size(); ++j) {
        int differing = 0;
        for (size_t b = 0; b < small[i].bgra.size(); b += 4) {
          const int d = std::abs(small[i].bgra[b] - small[j].bgra[b]) +
                        std::abs(small[i].bgra[b + 1] - small[j].bgra[b + 1]) +
                        std::abs(small[i].bgra[b + 2] - small[j].bgra[b + 2]);
          differing += d > 60;
        }
        EXPECT_GE(differing, 8) << kTrayStates[i] << " and " << kTrayStates[j]
                                << (light ? " (light)" : "");
      }
  }
}

double Luminance(double r, double g, double b) {
  auto lin = [](double c) {
    const double v = c / 255.0;
    return v <= 0.03928 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * lin(r) + 0.7152 * lin(g) + 0.0722 * lin(b);
}

// The share of an icon's outline that stands out from the taskbar behind it: of
// the pixels at the edge of its shape (mostly covered, next to a mostly clear one),
// those whose colour over the taskbar has a contrast of 3:1 or more with it.
double OutlineContrast(const Image& icon, uint32_t taskbar) {
  const double tr = (taskbar >> 16) & 0xFF, tg = (taskbar >> 8) & 0xFF, tb = taskbar & 0xFF;
  const double lt = Luminance(tr, tg, tb);
  auto alpha = [&](int x, int y) {
    return x < 0 || y < 0 || x >= icon.width || y >= icon.height ? 0 : PixelOf(icon, x, y).a;
  };
  int edge = 0, standing = 0;
  for (int y = 0; y < icon.height; ++y)
    for (int x = 0; x < icon.width; ++x) {
      if (alpha(x, y) < 128) continue;
      if (alpha(x - 1, y) >= 128 && alpha(x + 1, y) >= 128 && alpha(x, y - 1) >= 128 &&
          alpha(x, y + 1) >= 128)
        continue;
      const Rgba p = PixelOf(icon, x, y);
      const double a = p.a / 255.0;
      const double l =
          Luminance(p.r * a + tr * (1 - a), p.g * a + tg * (1 - a), p.b * a + tb * (1 - a));
      ++edge;
      standing += (std::max(l, lt) + 0.05) / (std::min(l, lt) + 0.05) >= 3.0;
    }
  return edge ? double(standing) / edge : 0;
}

// Light taskbars are light grey (about #EEEEEE to #F3F3F3). There the dark
// variants lose much of their outline (pale badges, grey tiles, the teal beside the
// cut around the badge); the light ones keep most of it, the rest being the
// anti-aliased pixels of curves.
TEST(Pictures, LightTrayIconsStandOutOnALightTaskbar) {
  for (uint32_t taskbar : {0xEEEEEEu, 0xF3F3F3u})
    for (const char* state : kTrayStates)
      for (int size : {16, 20, 24, 32}) {
        const double light = OutlineContrast(TrayIconAt(state, true, size), taskbar);
        const double dark = OutlineContrast(TrayIconAt(state, false, size), taskbar);
        EXPECT_GE(light, 0.8) << state << " at " << size << " on " << std::hex << taskbar;
        EXPECT_GE(light, dark + 0.2) << state << " at " << size << " on " << std::hex << taskbar;
      }
}

// Which colour a badge wears, by the hue of its pixels.
std::string Family(Rgba p) {
  const int hi = std::max({p.r, p.g, p.b}), lo = std::min({p.r, p.g, p.b});
  if (hi - lo < 40) return "grey";
  if (p.r == hi) return p.g > p.b + 60 ? "amber" : "red";
  if (p.g == hi && p.g > p.b + 20) return "green";
  return "teal";
}

// The badge of the light variant wears the colour its state wears on a dark
// taskbar (the transfer badge turns from white to teal: both are the mark's).
TEST(Pictures, LightTrayIconsKeepTheirStateColours) {
  const std::map<std::string, std::string> expected = {{"tray_running", "green"},
                                                       {"tray_stopped", "red"},
                                                       {"tray_paused", "amber"},
                                                       {"tray_transfer", "teal"},
                                                       {"tray_unknown", "grey"}};
  for (const char* state : kTrayStates)
    for (bool light : {false, true}) {
      // At 32 px the badge is centred at (23.2, 23.2), radius 8.4: look left of the
      // glyph and inside the rim.
      const Rgba p = PixelOf(TrayIconAt(state, light, 32), 18, 26);
      if (!light && std::string(state) == "tray_transfer") {
        EXPECT_GT(std::min({p.r, p.g, p.b}), 200) << "a white badge";
        continue;
      }
      EXPECT_EQ(Family(p), expected.at(state)) << state << (light ? " light" : "");
    }
}

}  // namespace
}  // namespace art
