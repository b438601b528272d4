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

uint32_t Le32(const std::vector<uint8_t>& v, size_t at) {
  return v[at] | (v[at + 1] << 8) | (v[at + 2] << 16) | (uint32_t(v[at + 3]) << 24);
}

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
    EXPECT_TRUE(bytes[i] <= bytes[i + 3] && bytes[i + 1] <= bytes[i + 3] && bytes[i + 2] <= bytes[i + 3]);
}

TEST(Raster, ArcStaysWithinItsAngles) {
  Canvas c(40, 40);
  c.Fill(Arc(20, 20, 10, 0, 90, 2), Rgb(0));  // right to bottom (y grows down)
  EXPECT_GT(c.PremultipliedAt(29, 20).a + c.PremultipliedAt(30, 20).a, 0.5f);
  EXPECT_GT(c.PremultipliedAt(20, 29).a + c.PremultipliedAt(20, 30).a, 0.5f);
  EXPECT_EQ(c.PremultipliedAt(9, 20).a + c.PremultipliedAt(10, 20).a, 0.0f);   // left
  EXPECT_EQ(c.PremultipliedAt(20, 9).a + c.PremultipliedAt(20, 10).a, 0.0f);   // top
}

TEST(Font, CoversTheWordsTheArtworkWrites) {
  EXPECT_TRUE(FontCovers("Status"));
  EXPECT_TRUE(FontCovers("Details"));
  EXPECT_TRUE(FontCovers("Corvane"));
  EXPECT_FALSE(FontCovers("Zebra"));
  const TextStyle st;
  EXPECT_GT(TextWidth("Details", st), TextWidth("Deta", st));
}

// ---------------------------------------------------------------- file formats

TEST(Bmp, HeaderIsV5WithAlphaMaskBottomUp) {
  const Image img = Pattern(3, 2);
  const std::vector<uint8_t> f = EncodeBmp(img, 125);
  ASSERT_EQ(f.size(), 14u + 124u + 3 * 2 * 4);
  EXPECT_EQ(f[0], 'B');
  EXPECT_EQ(f[1], 'M');
  EXPECT_EQ(Le32(f, 2), f.size());
  EXPECT_EQ(Le32(f, 10), 138u);                       // pixels right after the headers
  EXPECT_EQ(Le32(f, 14), 124u);                       // BITMAPV5HEADER
  EXPECT_EQ(static_cast<int32_t>(Le32(f, 22)), 2);    // positive height: bottom-up
  EXPECT_EQ(f[28] | (f[29] << 8), 32);
  EXPECT_EQ(Le32(f, 30), 3u);                         // BI_BITFIELDS
  EXPECT_EQ(Le32(f, 38), 4724u);                      // 120 DPI
  EXPECT_EQ(Le32(f, 54), 0x00FF0000u);
  EXPECT_EQ(Le32(f, 58), 0x0000FF00u);
  EXPECT_EQ(Le32(f, 62), 0x000000FFu);
  EXPECT_EQ(Le32(f, 66), 0xFF000000u);
  EXPECT_EQ(Le32(f, 70), 0x73524742u);                // sRGB
  // The first stored row is the bottom row of the picture.
  EXPECT_TRUE(std::equal(f.begin() + 138, f.begin() + 138 + 12, img.bgra.begin() + 12));
}

TEST(Bmp, ReaderGivesBackThePixels) {
  const Image img = Pattern(17, 9);
  const auto info = DecodeBmp(EncodeBmp(img));
  ASSERT_TRUE(info);
  EXPECT_TRUE(info->bottomUp);
  EXPECT_EQ(info->masks[3], 0xFF000000u);
  EXPECT_EQ(info->pixelsPerMetreX, 3780);
  EXPECT_EQ(info->image.width, 17);
  EXPECT_EQ(info->image.height, 9);
  EXPECT_EQ(info->image.bgra, img.bgra);
}

TEST(Bmp, ReaderRefusesDamagedFiles) {
  std::vector<uint8_t> f = EncodeBmp(Pattern(4, 4));
  std::vector<uint8_t> cut(f.begin(), f.end() - 1);
  EXPECT_FALSE(DecodeBmp(cut));
  f[0] = 'X';
  EXPECT_FALSE(DecodeBmp(f));
}

TEST(Ico, DirectoryEntriesAndMaskMatchTheImages) {
  std::vector<Image> images = {Pattern(16, 16), Pattern(20, 20), Pattern(256, 256)};
  const std::vector<uint8_t> f = EncodeIco(images);
  EXPECT_EQ(f[2] | (f[3] << 8), 1);   // icon
  EXPECT_EQ(f[4] | (f[5] << 8), 3);   // three images
  EXPECT_EQ(f[6 + 32], 0);            // 256 is written as 0 in the directory
  const auto entries = DecodeIco(f);
  ASSERT_TRUE(entries);
  ASSERT_EQ(entries->size(), 3u);
  for (size_t i = 0; i < images.size(); ++i) {
    const IcoEntry& e = (*entries)[i];
    EXPECT_EQ(e.width, images[i].width);
    EXPECT_EQ(e.image.bgra, images[i].bgra);
    for (int y = 0; y < e.height; ++y)
      for (int x = 0; x < e.width; ++x)
        ASSERT_EQ(e.transparentMask[static_cast<size_t>(y) * e.width + x], PixelOf(e.image, x, y).a == 0)
            << "size " << e.width << " at " << x << "," << y;
  }
}

TEST(Png, StoredBlocksRoundTripAndCrcIsChecked) {
  const Image img = Pattern(300, 80);  // more raw data than one stored block holds
  std::vector<uint8_t> f = EncodePng(img);
  const auto back = DecodeStoredPng(f);
  ASSERT_TRUE(back);
  EXPECT_EQ(back->bgra, img.bgra);
  const uint8_t iend[] = {'I', 'E', 'N', 'D'};
  EXPECT_EQ(Crc32(iend, 4), 0xAE426082u);
  f[f.size() / 2] ^= 0x40;
  EXPECT_FALSE(DecodeStoredPng(f));
}

// ---------------------------------------------------------------- the catalogue

// Every picture key and file the screens name.
const char* const kDesignKeys[] = {
    "qv_msg_info", "qv_msg_question", "qv_msg_cross", "qv_msg_warn", "qv_small_help", "qv_small_close",
    "qv_desk_notify", "qv_desknoti_fail", "qv_desknoti_success", "qv_dsktp_notification", "qv_medium",
    "qv_feedback", "qv_about_us", "qv_cust_about_us", "qv_logo_monitor", "button_enb", "button_ovr",
    "button_OK_enb", "button_OK_ovr", "button_large200_enb", "button_med_enb", "qv_backup_imm", "qv_logs",
    "qv_nor", "qv_sch4", "qvmon_view", "qvmon_refresh", "qvmon_stop", "slider_box", "slider_knob2", "bg_auto",
    "next_reg", "next_dis", "back_reg", "back_dis", "checked", "gen", "dis", "del_gen", "ref_gen", "stop_gen",
    "del_dis", "ref_dis", "stop_dis", "del_ove", "ref_ove", "stop_ove", "qvwin-desktop4.ico",
    "Screenicon.ico", "MonitorIcon.ico"};

TEST(Catalogue, HoldsEveryKeyTheScreensName) {
  for (const char* key : kDesignKeys) EXPECT_NE(FindPicture(key), nullptr) << key;
}

TEST(Catalogue, FileNamesAreUniqueIgnoringCase) {
  std::set<std::string> seen;
  for (const Picture& p : Catalogue())
    for (int pct : kScales) {
      if (p.kind == Kind::Icon && pct != 100) continue;
      std::string path = RelativePath(p, pct);
      std::transform(path.begin(), path.end(), path.begin(), [](unsigned char ch) { return std::tolower(ch); });
      EXPECT_TRUE(seen.insert(path).second) << path;
    }
}

TEST(Catalogue, ScaledSizesRoundHalvesUp) {
  EXPECT_EQ(ScaledSize(53, 125), 66);
  EXPECT_EQ(ScaledSize(53, 150), 80);
  EXPECT_EQ(ScaledSize(16, 125), 20);
  EXPECT_EQ(BitmapFileName("button_enb", 100), "button_enb.bmp");
  EXPECT_EQ(BitmapFileName("button_enb", 150), "button_enb@150.bmp");
}

// Pictures that replace each other on one control keep one size, so that the
// control does not jump when the state changes.
TEST(Catalogue, StatesOfOneControlShareTheirSize) {
  auto family = [](const std::string& key) {
    static const char* const suffixes[] = {"_enb", "_ovr", "_dwn", "_dis", "_gen", "_ove", "_reg", "_sel"};
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

TEST(Catalogue, DocumentationCarriesTheCurrentList) {
  std::ifstream in(QV_ARTWORK_DOC);
  ASSERT_TRUE(in) << QV_ARTWORK_DOC;
  std::stringstream text;
  text << in.rdbuf();
  EXPECT_NE(text.str().find(MarkdownList()), std::string::npos)
      << "docs/artwork.md is out of date: paste the output of `qvartwork --list` into it";
}

// ---------------------------------------------------------------- the written files

class Written : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    dir_ = new fs::path(fs::temp_directory_path() / ("qvartwork-test-" + std::to_string(::getpid())));
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
  static std::optional<BmpInfo> Bmp(const std::string& key, int pct) {
    return DecodeBmp(Bytes(BitmapFileName(key, pct)));
  }

  static inline fs::path* dir_ = nullptr;
  static inline bool ok_ = false;
  static inline std::string error_;
  static inline std::vector<WrittenFile>* written_ = new std::vector<WrittenFile>;
};

TEST_F(Written, EveryBitmapAtEveryScaleParsesWithItsSize) {
  ASSERT_TRUE(ok_) << error_;
  for (const Picture& p : Catalogue()) {
    if (p.kind != Kind::Bitmap) continue;
    for (int pct : kScales) {
      const auto info = DecodeBmp(Bytes(RelativePath(p, pct)));
      ASSERT_TRUE(info) << RelativePath(p, pct);
      EXPECT_EQ(info->image.width, ScaledSize(p.width, pct)) << p.key << "@" << pct;
      EXPECT_EQ(info->image.height, ScaledSize(p.height, pct)) << p.key << "@" << pct;
      EXPECT_EQ(info->pixelsPerMetreX, PixelsPerMetre(pct));
      bool drawn = false, premultiplied = true;
      const auto& px = info->image.bgra;
      for (size_t i = 0; i < px.size(); i += 4) {
        drawn |= px[i + 3] > 0;
        premultiplied &= px[i] <= px[i + 3] && px[i + 1] <= px[i + 3] && px[i + 2] <= px[i + 3];
      }
      EXPECT_TRUE(drawn) << p.key << "@" << pct << " is empty";
      EXPECT_TRUE(premultiplied) << p.key << "@" << pct;
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
  }
}

TEST_F(Written, ManifestListsEveryFile) {
  ASSERT_TRUE(ok_) << error_;
  const std::vector<uint8_t> m = Bytes("artwork.txt");
  const std::string text(m.begin(), m.end());
  size_t files = 0;
  for (const Picture& p : Catalogue())
    for (int pct : kScales) {
      if (p.kind == Kind::Icon && pct != 100) continue;
      ++files;
      EXPECT_NE(text.find(RelativePath(p, pct) + "\t"), std::string::npos) << RelativePath(p, pct);
    }
  EXPECT_EQ(written_->size(), files);
}

TEST_F(Written, BrandingIconsStayOutOfTheImageFolder) {
  // MonitorIcon.ico in the image folder freezes the tray icon; only a branded
  // install puts it there.
  ASSERT_TRUE(ok_) << error_;
  EXPECT_FALSE(fs::exists(*dir_ / "MonitorIcon.ico"));
  EXPECT_TRUE(fs::exists(*dir_ / "branding" / "MonitorIcon.ico"));
}

TEST_F(Written, BackgroundsAreOpaqueWithACrispFrame) {
  ASSERT_TRUE(ok_) << error_;
  for (const char* key : {"qv_desk_notify", "qv_dsktp_notification", "qv_medium", "qv_about_us",
                          "qv_cust_about_us", "bg_auto"}) {
    for (int pct : kScales) {
      const auto info = Bmp(key, pct);
      ASSERT_TRUE(info) << key;
      const Image& img = info->image;
      for (size_t i = 3; i < img.bgra.size(); i += 4) ASSERT_EQ(img.bgra[i], 255) << key << "@" << pct;
      // The frame is one whole pixel of the dark teal on every side.
      for (auto [x, y] : {std::pair{img.width / 2, 0}, {img.width / 2, img.height - 1}, {0, img.height / 2},
                          {img.width - 1, img.height / 2}}) {
        const Rgba p = PixelOf(img, x, y);
        EXPECT_EQ(p.r, 0x0A) << key << "@" << pct << " at " << x << "," << y;
        EXPECT_EQ(p.g, 0x5C) << key << "@" << pct;
        EXPECT_EQ(p.b, 0x64) << key << "@" << pct;
      }
    }
  }
}

TEST_F(Written, ButtonEdgesAreWholePixelsAtEveryScale) {
  ASSERT_TRUE(ok_) << error_;
  for (const char* key : {"button_enb", "button_ovr", "button_OK_enb", "button_large200_enb", "button_med_enb"}) {
    for (int pct : kScales) {
      const auto info = Bmp(key, pct);
      ASSERT_TRUE(info) << key;
      const Image& img = info->image;
      const int mid = img.height / 2;
      // Straight edges: the outer column and row are solid, the corner is cut.
      EXPECT_EQ(PixelOf(img, 0, mid).a, 255) << key << "@" << pct;
      EXPECT_EQ(PixelOf(img, img.width - 1, mid).a, 255) << key << "@" << pct;
      EXPECT_EQ(PixelOf(img, img.width / 2, 0).a, 255) << key << "@" << pct;
      EXPECT_LT(PixelOf(img, 0, 0).a, 128) << key << "@" << pct;
      // The border is one colour along the whole straight part of the edge.
      const Rgba first = PixelOf(img, img.width / 2, 0);
      for (int x = img.width / 4; x < img.width * 3 / 4; ++x) {
        const Rgba p = PixelOf(img, x, 0);
        ASSERT_TRUE(p.r == first.r && p.g == first.g && p.b == first.b) << key << "@" << pct << " x " << x;
      }
    }
  }
}

TEST_F(Written, HoverFacesCarryWhiteLabelsAndNormalFacesDarkOnes) {
  // The label colour of state 1 is white: the hover face must be dark enough for
  // it, and the normal face light enough for a dark label.
  ASSERT_TRUE(ok_) << error_;
  auto luminance = [](Rgba p) {
    auto lin = [](int c) {
      const double v = c / 255.0;
      return v <= 0.03928 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * lin(p.r) + 0.7152 * lin(p.g) + 0.0722 * lin(p.b);
  };
  for (const char* fam : {"button", "button_OK", "button_med", "button_large200"}) {
    const auto ovr = Bmp(std::string(fam) + "_ovr", 100);
    const auto enb = Bmp(std::string(fam) + "_enb", 100);
    ASSERT_TRUE(ovr && enb) << fam;
    const double hover = luminance(PixelOf(ovr->image, ovr->image.width / 2, ovr->image.height / 2));
    const double normal = luminance(PixelOf(enb->image, enb->image.width / 2, enb->image.height / 2));
    EXPECT_GE(1.05 / (hover + 0.05), 4.5) << fam << ": white on the hover face";
    EXPECT_GE((normal + 0.05) / 0.05, 12.0) << fam << ": black on the normal face";
  }
}

TEST_F(Written, TrayStatesDifferAtSixteenPixels) {
  ASSERT_TRUE(ok_) << error_;
  std::vector<Image> small;
  for (const char* f : {"tray_running.ico", "tray_stopped.ico", "tray_paused.ico", "tray_transfer.ico",
                        "tray_unknown.ico"}) {
    const auto entries = DecodeIco(Bytes(f));
    ASSERT_TRUE(entries && !entries->empty()) << f;
    small.push_back(entries->front().image);
    ASSERT_EQ(small.back().width, 16);
  }
  for (size_t i = 0; i < small.size(); ++i)
    for (size_t j = i + 1; j < small.size(); ++j) {
      int differing = 0;
      for (size_t b = 0; b < small[i].bgra.size(); b += 4)
        differing += std::abs(small[i].bgra[b] - small[j].bgra[b]) + std::abs(small[i].bgra[b + 1] - small[j].bgra[b + 1]) +
                         std::abs(small[i].bgra[b + 2] - small[j].bgra[b + 2]) > 60;
      EXPECT_GE(differing, 8) << "tray icons " << i << " and " << j << " look alike";
    }
}

}  // namespace
}  // namespace art
