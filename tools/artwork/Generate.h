#pragma once
// Writing the catalogue out: the picture files, a manifest, contact sheets and the
// list for the documentation.
#include <string>
#include <vector>

#include "Artwork.h"
#include "ImageFiles.h"

namespace art {

struct WrittenFile {
  std::string path;  // relative to the output folder, '/' separated
  int width = 0;     // for icons, the largest size
  int height = 0;
  uint32_t fingerprint = 0;    // bitmaps: DecoderFingerprint of the pixels drawn
  std::vector<int> iconSizes;  // icons: every size the file holds
};

// Writes every picture below outDir (created if needed) and the manifest
// "artwork.txt". Returns false with a reason on the first failure.
bool WriteAll(const std::string& outDir, std::vector<WrittenFile>& written, std::string& error);

// The manifest text: one line per file, "path<TAB>WIDTHxHEIGHT<TAB>more", where
// more is "fingerprint=XXXXXXXX" (hex) for a bitmap and "sizes=16,20,..." for an
// icon.
std::string Manifest(const std::vector<WrittenFile>& written);

// The PNG file of a bitmap as drawn (straight alpha, see ImageFiles.h).
std::vector<uint8_t> BitmapFile(const Canvas& drawn);

// The list of pictures as a Markdown table, grouped as in the catalogue.
std::string MarkdownList();

// Contact sheets of every picture at every scale (bitmaps) or size (icons), on a
// checker board so that transparency shows. `large` picks the window backgrounds.
Image ContactSheet(bool large);

Image ToImage(const Canvas& c, bool premultiplied);

}  // namespace art
