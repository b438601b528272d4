#include "ImageFiles.h"

#include <zlib.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>

namespace art {

namespace {

constexpr uint32_t kBiRgb = 0;
constexpr uint8_t kPngSignature[8] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
// Larger pictures than this are refused by the reader (the largest drawn is 1150 x 844).
constexpr uint32_t kMaxPngSide = 1 << 14;
constexpr uint32_t kMaxPngPixels = 1 << 24;

void Put16(std::vector<uint8_t>& v, uint32_t x) {
  v.push_back(x & 0xFF);
  v.push_back((x >> 8) & 0xFF);
}
void Put32(std::vector<uint8_t>& v, uint32_t x) {
  Put16(v, x & 0xFFFF);
  Put16(v, x >> 16);
}
void PutBe32(std::vector<uint8_t>& v, uint32_t x) {
  v.push_back((x >> 24) & 0xFF);
  v.push_back((x >> 16) & 0xFF);
  v.push_back((x >> 8) & 0xFF);
  v.push_back(x & 0xFF);
}

uint32_t Get16(const std::vector<uint8_t>& v, size_t at) { return v[at] | (v[at + 1] << 8); }
uint32_t Get32(const std::vector<uint8_t>& v, size_t at) {
  return Get16(v, at) | (Get16(v, at + 2) << 16);
}
uint32_t GetBe32(const std::vector<uint8_t>& v, size_t at) {
  return (uint32_t(v[at]) << 24) | (v[at + 1] << 16) | (v[at + 2] << 8) | v[at + 3];
}

void PutChunk(std::vector<uint8_t>& out, const char* type, const std::vector<uint8_t>& data) {
  PutBe32(out, static_cast<uint32_t>(data.size()));
  size_t start = out.size();
  out.insert(out.end(), type, type + 4);
  out.insert(out.end(), data.begin(), data.end());
  PutBe32(out, Crc32(&out[start], out.size() - start));
}

// ---- PNG filters: each byte is predicted from the one to its left (a), above (b)
// and above left (c); a row stores its bytes minus the prediction.
enum Filter : uint8_t { kNone = 0, kSub = 1, kUp = 2, kAverage = 3, kPaeth = 4 };

uint8_t Predict(int filter, int a, int b, int c) {
  switch (filter) {
    case kSub: return static_cast<uint8_t>(a);
    case kUp: return static_cast<uint8_t>(b);
    case kAverage: return static_cast<uint8_t>((a + b) / 2);
    case kPaeth: {
      const int p = a + b - c, pa = std::abs(p - a), pb = std::abs(p - b), pc = std::abs(p - c);
      return static_cast<uint8_t>(pa <= pb && pa <= pc ? a : pb <= pc ? b : c);
    }
    default: return 0;
  }
}

// `prev` is the row above, all zeros for the first row.
void FilterRow(int filter, const uint8_t* row, const uint8_t* prev, size_t n, uint8_t* out) {
  for (size_t i = 0; i < n; ++i) {
    const int a = i >= 4 ? row[i - 4] : 0, c = i >= 4 ? prev[i - 4] : 0;
    out[i] = static_cast<uint8_t>(row[i] - Predict(filter, a, prev[i], c));
  }
}

// The filtered scan lines, every row with `filter`, or each with the filter whose
// output has the least sum of magnitudes (a good guess of what deflates best) when
// `filter` is negative.
std::vector<uint8_t> Filtered(const std::vector<uint8_t>& rgba, int width, int height, int filter) {
  const size_t n = static_cast<size_t>(width) * 4;
  std::vector<uint8_t> out((n + 1) * height), zeros(n, 0), trial(n);
  for (int y = 0; y < height; ++y) {
    const uint8_t* row = &rgba[y * n];
    const uint8_t* prev = y > 0 ? &rgba[(y - 1) * n] : zeros.data();
    uint8_t* dst = &out[y * (n + 1)];
    int chosen = filter;
    if (filter < 0) {
      long best = -1;
      for (int f = kNone; f <= kPaeth; ++f) {
        FilterRow(f, row, prev, n, trial.data());
        long cost = 0;
        for (uint8_t v : trial) cost += v < 128 ? v : 256 - v;
        if (best < 0 || cost < best) {
          best = cost;
          chosen = f;
        }
      }
    }
    dst[0] = static_cast<uint8_t>(chosen);
    FilterRow(chosen, row, prev, n, dst + 1);
  }
  return out;
}

std::vector<uint8_t> Deflate(const std::vector<uint8_t>& data, int level, int strategy) {
  z_stream z{};
  if (deflateInit2(&z, level, Z_DEFLATED, 15, 9, strategy) != Z_OK) return {};
  std::vector<uint8_t> out(deflateBound(&z, data.size()));
  z.next_in = const_cast<Bytef*>(data.data());
  z.avail_in = static_cast<uInt>(data.size());
  z.next_out = out.data();
  z.avail_out = static_cast<uInt>(out.size());
  const int rc = deflate(&z, Z_FINISH);
  out.resize(z.total_out);
  deflateEnd(&z);
  return rc == Z_STREAM_END ? out : std::vector<uint8_t>{};
}

// The 40-byte BITMAPINFOHEADER of an icon entry.
void PutIconHeader(std::vector<uint8_t>& v, int w, int h, uint32_t imageBytes) {
  Put32(v, 40);
  Put32(v, w);
  Put32(v, h * 2);
  Put16(v, 1);
  Put16(v, 32);
  Put32(v, kBiRgb);
  Put32(v, imageBytes);
  Put32(v, 0);
  Put32(v, 0);
  Put32(v, 0);
  Put32(v, 0);
}

size_t MaskStride(int w) { return static_cast<size_t>((w + 31) / 32) * 4; }

}  // namespace

uint32_t Crc32(const uint8_t* data, size_t n) {
  return static_cast<uint32_t>(crc32(0L, data, static_cast<uInt>(n)));
}

uint8_t UnpremultiplyChannel(uint8_t p, uint8_t a) {
  if (a == 0) return 0;
  return static_cast<uint8_t>(std::min(255, (p * 255 + a / 2) / a));
}

uint8_t PremultiplyChannel(uint8_t s, uint8_t a) {
  return static_cast<uint8_t>((s * a + 127) / 255);
}

namespace {

// The image with each colour channel put through `channel(value, alpha)`.
Image MapColours(const Image& img, uint8_t (*channel)(uint8_t, uint8_t)) {
  Image out = img;
  for (size_t i = 0; i < out.bgra.size(); i += 4)
    for (int ch = 0; ch < 3; ++ch) out.bgra[i + ch] = channel(img.bgra[i + ch], img.bgra[i + 3]);
  return out;
}

}  // namespace

Image Unpremultiply(const Image& img) { return MapColours(img, &UnpremultiplyChannel); }

Image Premultiply(const Image& img) { return MapColours(img, &PremultiplyChannel); }

uint32_t DecoderFingerprint(const Image& img) {
  uint32_t h = 2166136261u;
  auto add = [&h](uint8_t byte) { h = (h ^ byte) * 16777619u; };
  for (size_t i = 0; i < img.bgra.size(); i += 4) {
    const uint8_t a = img.bgra[i + 3];
    if (a == 0 || a == 255)
      for (int ch = 0; ch < 4; ++ch) add(img.bgra[i + ch]);
    else
      add(a);
  }
  return h;
}

std::vector<uint8_t> EncodePng(const Image& img, int level) {
  std::vector<uint8_t> out(std::begin(kPngSignature), std::end(kPngSignature));
  std::vector<uint8_t> ihdr;
  PutBe32(ihdr, img.width);
  PutBe32(ihdr, img.height);
  ihdr.insert(ihdr.end(), {8, 6, 0, 0, 0});  // 8 bits, RGBA, deflate, filters, no interlace
  PutChunk(out, "IHDR", ihdr);

  std::vector<uint8_t> rgba(img.bgra.size());
  for (size_t i = 0; i < rgba.size(); i += 4) {
    rgba[i] = img.bgra[i + 2];
    rgba[i + 1] = img.bgra[i + 1];
    rgba[i + 2] = img.bgra[i];
    rgba[i + 3] = img.bgra[i + 3];
  }
  // Flat faces and gradients deflate best unfiltered; text, glyphs and noise with a
  // filter chosen row by row. Both are tried and the smaller kept: over the whole
  // artwork this came within 0.5 % of trying every filter with every zlib strategy.
  std::vector<uint8_t> best;
  for (int filter : {int(kNone), -1}) {
    std::vector<uint8_t> z =
        Deflate(Filtered(rgba, img.width, img.height, filter), level, Z_DEFAULT_STRATEGY);
    if (!z.empty() && (best.empty() || z.size() < best.size())) best = std::move(z);
  }
  PutChunk(out, "IDAT", best);
  PutChunk(out, "IEND", {});
  return out;
}

std::optional<PngInfo> DecodePng(const std::vector<uint8_t>& f) {
  if (f.size() < 8 || !std::equal(std::begin(kPngSignature), std::end(kPngSignature), f.begin()))
    return std::nullopt;
  PngInfo info;
  Image& img = info.image;
  std::vector<uint8_t> z;
  size_t at = 8;
  while (info.chunks.empty() || info.chunks.back() != "IEND") {
    if (at + 12 > f.size()) return std::nullopt;
    const uint32_t len = GetBe32(f, at);
    if (len > f.size() - at - 12) return std::nullopt;
    const std::string type(f.begin() + at + 4, f.begin() + at + 8);
    if (Crc32(&f[at + 4], len + 4) != GetBe32(f, at + 8 + len)) return std::nullopt;
    if (info.chunks.empty() != (type == "IHDR")) return std::nullopt;  // IHDR first, and once
    const size_t data = at + 8;
    if (type == "IHDR") {
      if (len != 13) return std::nullopt;
      const uint32_t w = GetBe32(f, data), h = GetBe32(f, data + 4);
      if (w == 0 || h == 0 || w > kMaxPngSide || h > kMaxPngSide || w * h > kMaxPngPixels)
        return std::nullopt;
      // 8-bit RGBA, deflate, the standard filters, not interlaced: all we write.
      if (f[data + 8] != 8 || f[data + 9] != 6 || f[data + 10] || f[data + 11] || f[data + 12])
        return std::nullopt;
      img.width = static_cast<int>(w);
      img.height = static_cast<int>(h);
    } else if (type == "IDAT") {
      z.insert(z.end(), f.begin() + data, f.begin() + data + len);
    }
    info.chunks.push_back(type);
    at += 12 + len;
  }
  if (at != f.size()) return std::nullopt;

  const size_t n = static_cast<size_t>(img.width) * 4;
  std::vector<uint8_t> raw((n + 1) * img.height);
  uLongf got = static_cast<uLongf>(raw.size());
  if (z.empty() || uncompress(raw.data(), &got, z.data(), static_cast<uLong>(z.size())) != Z_OK ||
      got != raw.size())
    return std::nullopt;

  std::vector<uint8_t> rgba(n * img.height), zeros(n, 0);
  for (int y = 0; y < img.height; ++y) {
    const uint8_t filter = raw[y * (n + 1)];
    if (filter > kPaeth) return std::nullopt;
    info.filters.push_back(filter);
    const uint8_t* src = &raw[y * (n + 1) + 1];
    const uint8_t* prev = y > 0 ? &rgba[(y - 1) * n] : zeros.data();
    uint8_t* row = &rgba[y * n];
    for (size_t i = 0; i < n; ++i) {
      const int a = i >= 4 ? row[i - 4] : 0, c = i >= 4 ? prev[i - 4] : 0;
      row[i] = static_cast<uint8_t>(src[i] + Predict(filter, a, prev[i], c));
    }
  }
  img.bgra.resize(rgba.size());
  for (size_t i = 0; i < rgba.size(); i += 4) {
    img.bgra[i] = rgba[i + 2];
    img.bgra[i + 1] = rgba[i + 1];
    img.bgra[i + 2] = rgba[i];
    img.bgra[i + 3] = rgba[i + 3];
  }
  return info;
}

std::vector<uint8_t> EncodeIco(const std::vector<Image>& images) {
  std::vector<uint8_t> v;
  Put16(v, 0);
  Put16(v, 1);
  Put16(v, static_cast<uint32_t>(images.size()));
  std::vector<std::vector<uint8_t>> bodies;
  for (const Image& img : images) {
    // The large entry is stored as a PNG, as the system reads it since Windows Vista:
    // a quarter of a megabyte less in every program that carries the icon.
    if (img.width >= 256) {
      bodies.push_back(EncodePng(img));
      continue;
    }
    const size_t stride = static_cast<size_t>(img.width) * 4;
    const size_t maskStride = MaskStride(img.width);
    std::vector<uint8_t> b;
    PutIconHeader(b, img.width, img.height,
                  static_cast<uint32_t>(stride * img.height + maskStride * img.height));
    for (int y = img.height - 1; y >= 0; --y) {
      auto row = img.bgra.begin() + static_cast<std::ptrdiff_t>(y * stride);
      b.insert(b.end(), row, row + static_cast<std::ptrdiff_t>(stride));
    }
    for (int y = img.height - 1; y >= 0; --y) {
      std::vector<uint8_t> row(maskStride, 0);
      for (int x = 0; x < img.width; ++x)
        if (img.bgra[y * stride + x * 4 + 3] == 0)
          row[x / 8] |= static_cast<uint8_t>(0x80 >> (x % 8));
      b.insert(b.end(), row.begin(), row.end());
    }
    bodies.push_back(std::move(b));
  }
  uint32_t offset = 6 + 16 * static_cast<uint32_t>(images.size());
  for (size_t i = 0; i < images.size(); ++i) {
    v.push_back(images[i].width >= 256 ? 0 : static_cast<uint8_t>(images[i].width));
    v.push_back(images[i].height >= 256 ? 0 : static_cast<uint8_t>(images[i].height));
    v.push_back(0);  // colour count
    v.push_back(0);  // reserved
    Put16(v, 1);     // planes
    Put16(v, 32);    // bits
    Put32(v, static_cast<uint32_t>(bodies[i].size()));
    Put32(v, offset);
    offset += static_cast<uint32_t>(bodies[i].size());
  }
  for (const auto& b : bodies) v.insert(v.end(), b.begin(), b.end());
  return v;
}

std::optional<std::vector<IcoEntry>> DecodeIco(const std::vector<uint8_t>& f) {
  if (f.size() < 6 || Get16(f, 0) != 0 || Get16(f, 2) != 1) return std::nullopt;
  const uint32_t count = Get16(f, 4);
  if (f.size() < 6 + 16 * count) return std::nullopt;
  std::vector<IcoEntry> out;
  for (uint32_t i = 0; i < count; ++i) {
    const size_t d = 6 + 16 * i;
    IcoEntry e;
    e.width = f[d] ? f[d] : 256;
    e.height = f[d + 1] ? f[d + 1] : 256;
    if (Get16(f, d + 6) != 32) return std::nullopt;
    const uint32_t bytes = Get32(f, d + 8);
    const uint32_t at = Get32(f, d + 12);
    if (static_cast<size_t>(at) + bytes > f.size() || bytes < 40) return std::nullopt;
    if (std::equal(std::begin(kPngSignature), std::end(kPngSignature), f.begin() + at)) {
      auto png = DecodePng(std::vector<uint8_t>(f.begin() + at, f.begin() + at + bytes));
      if (!png || png->image.width != e.width || png->image.height != e.height) return std::nullopt;
      e.image = std::move(png->image);
      e.transparentMask.resize(static_cast<size_t>(e.width) * e.height);
      for (size_t i = 0; i < e.transparentMask.size(); ++i)
        e.transparentMask[i] = e.image.bgra[i * 4 + 3] == 0;
      out.push_back(std::move(e));
      continue;
    }
    if (Get32(f, at) != 40 || static_cast<int>(Get32(f, at + 4)) != e.width ||
        static_cast<int>(Get32(f, at + 8)) != 2 * e.height || Get16(f, at + 14) != 32)
      return std::nullopt;
    const size_t stride = static_cast<size_t>(e.width) * 4;
    const size_t maskStride = MaskStride(e.width);
    if (40 + stride * e.height + maskStride * e.height != bytes) return std::nullopt;
    e.image.width = e.width;
    e.image.height = e.height;
    e.image.bgra.resize(stride * e.height);
    const size_t px = at + 40;
    for (int row = 0; row < e.height; ++row)
      std::copy_n(
          f.begin() + px + row * stride, stride,
          e.image.bgra.begin() + static_cast<std::ptrdiff_t>((e.height - 1 - row) * stride));
    const size_t mask = px + stride * e.height;
    e.transparentMask.resize(static_cast<size_t>(e.width) * e.height);
    for (int row = 0; row < e.height; ++row) {
      int y = e.height - 1 - row;
      for (int x = 0; x < e.width; ++x)
        e.transparentMask[static_cast<size_t>(y) * e.width + x] =
            (f[mask + row * maskStride + x / 8] & (0x80 >> (x % 8))) != 0;
    }
    out.push_back(std::move(e));
  }
  return out;
}

bool WriteFile(const std::string& path, const std::vector<uint8_t>& bytes) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  if (!out) return false;
  out.write(reinterpret_cast<const char*>(bytes.data()),
            static_cast<std::streamsize>(bytes.size()));
  return static_cast<bool>(out);
}

std::optional<std::vector<uint8_t>> ReadFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return std::nullopt;
  return std::vector<uint8_t>(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

}  // namespace art
