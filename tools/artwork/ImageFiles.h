#pragma once
// The picture files of the artwork: 32-bit BMP with alpha, multi-size ICO, and a
// plain PNG writer for contact sheets. Readers are here too, so that tests (and
// anybody curious) can check what was written.
//
// BMP: BITMAPFILEHEADER + BITMAPV5HEADER, 32 bits, BI_BITFIELDS with the masks
//      R 0x00FF0000, G 0x0000FF00, B 0x000000FF, A 0xFF000000, colour space sRGB,
//      rows bottom-up (positive height), pixels PREMULTIPLIED by alpha, ready for
//      AlphaBlend with AC_SRC_ALPHA after LoadImage(LR_CREATEDIBSECTION).
// ICO: classic BMP-in-ICO entries (BITMAPINFOHEADER, height doubled, 32 bits,
//      rows bottom-up, STRAIGHT alpha as Windows icons require, followed by the
//      1-bit AND mask, set where the pixel is fully transparent).
// PNG: 8-bit RGBA, straight alpha, stored (uncompressed) deflate blocks.
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

// Pixels per metre written into the BMP header for a scale in percent (96 DPI at 100).
int PixelsPerMetre(int scalePercent);

std::vector<uint8_t> EncodeBmp(const Image& premultiplied, int scalePercent = 100);

struct BmpInfo {
  Image image;                 // pixels as stored (premultiplied for our files)
  uint32_t headerSize = 0;     // 124 for BITMAPV5HEADER
  uint16_t bitCount = 0;
  uint32_t compression = 0;
  uint32_t masks[4] = {};      // R, G, B, A
  bool bottomUp = false;
  uint32_t colourSpace = 0;
  int32_t pixelsPerMetreX = 0;
};
// Parses BI_RGB and BI_BITFIELDS 32-bit files, top-down or bottom-up.
std::optional<BmpInfo> DecodeBmp(const std::vector<uint8_t>& file);

std::vector<uint8_t> EncodeIco(const std::vector<Image>& straightImages);

struct IcoEntry {
  int width = 0;   // from the directory; 256 written as 0 there
  int height = 0;
  Image image;     // straight alpha
  std::vector<bool> transparentMask;  // the AND mask, row major top to bottom
};
std::optional<std::vector<IcoEntry>> DecodeIco(const std::vector<uint8_t>& file);

std::vector<uint8_t> EncodePng(const Image& straight);
// Reads back what EncodePng writes (stored blocks only); checks every CRC and the
// Adler-32 of the data.
std::optional<Image> DecodeStoredPng(const std::vector<uint8_t>& file);

uint32_t Crc32(const uint8_t* data, size_t n);

bool WriteFile(const std::string& path, const std::vector<uint8_t>& bytes);
std::optional<std::vector<uint8_t>> ReadFile(const std::string& path);

}  // namespace art
