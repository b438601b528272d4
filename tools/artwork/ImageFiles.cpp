#include "ImageFiles.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <fstream>
#include <iterator>

namespace art {

namespace {

constexpr uint32_t kBiRgb = 0;
constexpr uint32_t kBiBitfields = 3;
constexpr uint32_t kLcsSrgb = 0x73524742;  // 'sRGB'
constexpr uint32_t kLcsGmImages = 4;
constexpr uint32_t kV5HeaderSize = 124;
constexpr uint32_t kFileHeaderSize = 14;

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

const std::array<uint32_t, 256>& CrcTable() {
  static const std::array<uint32_t, 256> table = [] {
    std::array<uint32_t, 256> t{};
    for (uint32_t n = 0; n < 256; ++n) {
      uint32_t c = n;
      for (int k = 0; k < 8; ++k) c = (c & 1) ? 0xEDB88320u ^ (c >> 1) : c >> 1;
      t[n] = c;
    }
    return t;
  }();
  return table;
}

uint32_t Adler32(const std::vector<uint8_t>& data) {
  uint32_t a = 1, b = 0;
  for (uint8_t byte : data) {
    a = (a + byte) % 65521;
    b = (b + a) % 65521;
  }
  return (b << 16) | a;
}

void PutChunk(std::vector<uint8_t>& out, const char* type, const std::vector<uint8_t>& data) {
  PutBe32(out, static_cast<uint32_t>(data.size()));
  size_t start = out.size();
  out.insert(out.end(), type, type + 4);
  out.insert(out.end(), data.begin(), data.end());
  PutBe32(out, Crc32(&out[start], out.size() - start));
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
  uint32_t c = 0xFFFFFFFFu;
  for (size_t i = 0; i < n; ++i) c = CrcTable()[(c ^ data[i]) & 0xFF] ^ (c >> 8);
  return c ^ 0xFFFFFFFFu;
}

int PixelsPerMetre(int scalePercent) {
  return static_cast<int>(std::lround(96.0 * scalePercent / 100.0 / 0.0254));
}

std::vector<uint8_t> EncodeBmp(const Image& img, int scalePercent) {
  const uint32_t imageBytes = static_cast<uint32_t>(img.width) * img.height * 4;
  std::vector<uint8_t> v;
  v.reserve(kFileHeaderSize + kV5HeaderSize + imageBytes);
  v.push_back('B');
  v.push_back('M');
  Put32(v, kFileHeaderSize + kV5HeaderSize + imageBytes);
  Put32(v, 0);
  Put32(v, kFileHeaderSize + kV5HeaderSize);

  const int ppm = PixelsPerMetre(scalePercent);
  Put32(v, kV5HeaderSize);
  Put32(v, img.width);
  Put32(v, img.height);  // positive: bottom-up
  Put16(v, 1);
  Put16(v, 32);
  Put32(v, kBiBitfields);
  Put32(v, imageBytes);
  Put32(v, ppm);
  Put32(v, ppm);
  Put32(v, 0);
  Put32(v, 0);
  Put32(v, 0x00FF0000);
  Put32(v, 0x0000FF00);
  Put32(v, 0x000000FF);
  Put32(v, 0xFF000000);
  Put32(v, kLcsSrgb);
  for (int i = 0; i < 9; ++i) Put32(v, 0);  // end points
  for (int i = 0; i < 3; ++i) Put32(v, 0);  // gamma
  Put32(v, kLcsGmImages);
  Put32(v, 0);  // profile data
  Put32(v, 0);  // profile size
  Put32(v, 0);  // reserved

  const size_t stride = static_cast<size_t>(img.width) * 4;
  for (int y = img.height - 1; y >= 0; --y) {
    auto row = img.bgra.begin() + static_cast<std::ptrdiff_t>(y * stride);
    v.insert(v.end(), row, row + static_cast<std::ptrdiff_t>(stride));
  }
  return v;
}

std::optional<BmpInfo> DecodeBmp(const std::vector<uint8_t>& f) {
  if (f.size() < kFileHeaderSize + 40 || f[0] != 'B' || f[1] != 'M') return std::nullopt;
  if (Get32(f, 2) != f.size()) return std::nullopt;
  BmpInfo info;
  const uint32_t offBits = Get32(f, 10);
  info.headerSize = Get32(f, 14);
  if (info.headerSize < 40 || kFileHeaderSize + info.headerSize > f.size()) return std::nullopt;
  int32_t w = static_cast<int32_t>(Get32(f, 18));
  int32_t h = static_cast<int32_t>(Get32(f, 22));
  info.bitCount = static_cast<uint16_t>(Get16(f, 28));
  info.compression = Get32(f, 30);
  info.pixelsPerMetreX = static_cast<int32_t>(Get32(f, 38));
  if (info.bitCount != 32 || w <= 0 || h == 0) return std::nullopt;
  if (info.compression == kBiBitfields) {
    size_t at = kFileHeaderSize + 40;
    if (info.headerSize < 56 && offBits < at + 12) return std::nullopt;
    for (int i = 0; i < 4; ++i) info.masks[i] = (i < 3 || info.headerSize >= 56) ? Get32(f, at + 4 * i) : 0;
  } else if (info.compression == kBiRgb) {
    info.masks[0] = 0x00FF0000;
    info.masks[1] = 0x0000FF00;
    info.masks[2] = 0x000000FF;
    info.masks[3] = 0xFF000000;
  } else {
    return std::nullopt;
  }
  if (info.headerSize >= 108) info.colourSpace = Get32(f, kFileHeaderSize + 56);
  info.bottomUp = h > 0;
  const int height = h > 0 ? h : -h;
  const size_t stride = static_cast<size_t>(w) * 4;
  if (offBits + stride * height > f.size()) return std::nullopt;
  info.image.width = w;
  info.image.height = height;
  info.image.bgra.resize(stride * height);
  for (int row = 0; row < height; ++row) {
    int y = info.bottomUp ? height - 1 - row : row;
    std::copy_n(f.begin() + offBits + row * stride, stride,
                info.image.bgra.begin() + static_cast<std::ptrdiff_t>(y * stride));
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
        if (img.bgra[y * stride + x * 4 + 3] == 0) row[x / 8] |= static_cast<uint8_t>(0x80 >> (x % 8));
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
      std::copy_n(f.begin() + px + row * stride, stride,
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

std::vector<uint8_t> EncodePng(const Image& img) {
  std::vector<uint8_t> out = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
  std::vector<uint8_t> ihdr;
  PutBe32(ihdr, img.width);
  PutBe32(ihdr, img.height);
  ihdr.insert(ihdr.end(), {8, 6, 0, 0, 0});
  PutChunk(out, "IHDR", ihdr);

  std::vector<uint8_t> raw;
  raw.reserve((static_cast<size_t>(img.width) * 4 + 1) * img.height);
  for (int y = 0; y < img.height; ++y) {
    raw.push_back(0);  // filter: none
    for (int x = 0; x < img.width; ++x) {
      const uint8_t* p = &img.bgra[(static_cast<size_t>(y) * img.width + x) * 4];
      raw.insert(raw.end(), {p[2], p[1], p[0], p[3]});
    }
  }
  std::vector<uint8_t> z = {0x78, 0x01};
  size_t pos = 0;
  do {
    size_t n = std::min<size_t>(65535, raw.size() - pos);
    bool last = pos + n == raw.size();
    z.push_back(last ? 1 : 0);
    Put16(z, static_cast<uint32_t>(n));
    Put16(z, static_cast<uint32_t>(~n & 0xFFFF));
    z.insert(z.end(), raw.begin() + static_cast<std::ptrdiff_t>(pos),
             raw.begin() + static_cast<std::ptrdiff_t>(pos + n));
    pos += n;
  } while (pos < raw.size());
  PutBe32(z, Adler32(raw));
  PutChunk(out, "IDAT", z);
  PutChunk(out, "IEND", {});
  return out;
}

std::optional<Image> DecodeStoredPng(const std::vector<uint8_t>& f) {
  static const uint8_t sig[8] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
  if (f.size() < 8 || !std::equal(sig, sig + 8, f.begin())) return std::nullopt;
  Image img;
  std::vector<uint8_t> z;
  bool ended = false;
  for (size_t at = 8; at + 12 <= f.size() && !ended;) {
    const uint32_t len = GetBe32(f, at);
    if (at + 12 + len > f.size()) return std::nullopt;
    const std::string type(f.begin() + at + 4, f.begin() + at + 8);
    if (Crc32(&f[at + 4], len + 4) != GetBe32(f, at + 8 + len)) return std::nullopt;
    const size_t data = at + 8;
    if (type == "IHDR") {
      img.width = static_cast<int>(GetBe32(f, data));
      img.height = static_cast<int>(GetBe32(f, data + 4));
      if (f[data + 8] != 8 || f[data + 9] != 6) return std::nullopt;
    } else if (type == "IDAT") {
      z.insert(z.end(), f.begin() + data, f.begin() + data + len);
    } else if (type == "IEND") {
      ended = true;
    }
    at += 12 + len;
  }
  if (!ended || z.size() < 6 || (z[0] * 256 + z[1]) % 31 != 0) return std::nullopt;
  std::vector<uint8_t> raw;
  size_t at = 2;
  for (bool last = false; !last;) {
    if (at + 5 > z.size()) return std::nullopt;
    last = z[at] & 1;
    if ((z[at] >> 1) != 0) return std::nullopt;  // only stored blocks
    const uint32_t n = Get16(z, at + 1);
    if ((Get16(z, at + 3) ^ 0xFFFF) != n || at + 5 + n > z.size()) return std::nullopt;
    raw.insert(raw.end(), z.begin() + at + 5, z.begin() + at + 5 + n);
    at += 5 + n;
  }
  if (at + 4 != z.size() || GetBe32(z, at) != Adler32(raw)) return std::nullopt;
  const size_t rowBytes = static_cast<size_t>(img.width) * 4 + 1;
  if (raw.size() != rowBytes * img.height) return std::nullopt;
  img.bgra.resize(static_cast<size_t>(img.width) * img.height * 4);
  for (int y = 0; y < img.height; ++y) {
    if (raw[y * rowBytes] != 0) return std::nullopt;
    for (int x = 0; x < img.width; ++x) {
      const uint8_t* p = &raw[y * rowBytes + 1 + x * 4];
      uint8_t* q = &img.bgra[(static_cast<size_t>(y) * img.width + x) * 4];
      q[0] = p[2];
      q[1] = p[1];
      q[2] = p[0];
      q[3] = p[3];
    }
  }
  return img;
}

bool WriteFile(const std::string& path, const std::vector<uint8_t>& bytes) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  if (!out) return false;
  out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
  return static_cast<bool>(out);
}

std::optional<std::vector<uint8_t>> ReadFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return std::nullopt;
  return std::vector<uint8_t>(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

}  // namespace art
