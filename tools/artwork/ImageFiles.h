#pragma once
// The picture files of the artwork: compressed PNG for the bitmaps and contact
// sheets, multi-size ICO for the icons. Readers are here too, so that tests (and
// anybody curious) can check what was written.
//
// PNG: 8-bit RGBA (colour type 6), not interlaced, STRAIGHT alpha as PNG defines
//      it, deflate through zlib, a filter chosen for size. The straight colours are
//      the premultiplied pixels divided by alpha with rounding, so that a decoder
//      premultiplying with rounding (Premultiply below) gives back exactly the
//      premultiplied pixels the artwork was drawn as.
// ICO: classic BMP-in-ICO entries (BITMAPINFOHEADER, height doubled, 32 bits,
//      rows bottom-up, STRAIGHT alpha as Windows icons require, followed by the
//      1-bit AND mask, set where the pixel is fully transparent).
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace art {

struct Image {
  int width = 0;
  int height = 0;
  std::vector<uint8_t> bgra;  // rows top to bottom, 4 bytes a pixel
};

// One channel: straight = premultiplied * 255 / alpha and back, both rounded to
// the nearest; Premultiply(Unpremultiply(p, a), a) == p for every p <= a.
uint8_t UnpremultiplyChannel(uint8_t premultiplied, uint8_t alpha);
uint8_t PremultiplyChannel(uint8_t straight, uint8_t alpha);
Image Unpremultiply(const Image& premultiplied);
Image Premultiply(const Image& straight);

// The PNG of a picture given with straight alpha. `level` is zlib's 0..9.
std::vector<uint8_t> EncodePng(const Image& straight, int level = 9);

struct PngInfo {
  Image image;                      // straight alpha, as stored
  std::vector<std::string> chunks;  // chunk types in file order
  std::vector<int> filters;         // the filter byte of every row
};
// Reads 8-bit RGBA PNGs that are not interlaced (what EncodePng writes); checks
// every chunk's CRC and the zlib stream. Nothing else is accepted.
std::optional<PngInfo> DecodePng(const std::vector<uint8_t>& file);

std::vector<uint8_t> EncodeIco(const std::vector<Image>& straightImages);

struct IcoEntry {
  int width = 0;  // from the directory; 256 written as 0 there
  int height = 0;
  Image image;                        // straight alpha
  std::vector<bool> transparentMask;  // the AND mask, row major top to bottom
};
std::optional<std::vector<IcoEntry>> DecodeIco(const std::vector<uint8_t>& file);

uint32_t Crc32(const uint8_t* data, size_t n);

// FNV-1a over the bytes of premultiplied pixels every correct decoder agrees on:
// the four bytes of a pixel that is fully opaque or fully clear, the alpha byte
// alone of one in between (whose colour may differ by one with the decoder's
// rounding). The manifest carries it so the Windows check can compare what the
// platform decoded without a copy of the pixels.
uint32_t DecoderFingerprint(const Image& premultiplied);

bool WriteFile(const std::string& path, const std::vector<uint8_t>& bytes);
std::optional<std::vector<uint8_t>> ReadFile(const std::string& path);

}  // namespace art
