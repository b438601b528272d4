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
};

// Writes every picture below outDir (created if needed) and the manifest
// "artwork.txt". Returns false with a reason on the first failure.
bool WriteAll(const std::string& outDir, std::vector<WrittenFile>& written, std::string& error);

// The manifest text: one line per file, "path<TAB>width x height<TAB>key".
std::string Manifest(const std::vector<WrittenFile>& written);

// The list of pictures as a Markdown table, grouped as in the catalogue.
std::string MarkdownList();

// Contact sheets of every picture at every scale (bitmaps) or size (icons), on a
// checker board so that transparency shows. `large` picks the window backgrounds.
Image ContactSheet(bool large);

// Every picture as a PNG with straight alpha, named like its BMP or, for icons,
// "<file>-<size>.png".
bool ExportPngs(const std::string& dir, std::string& error);

Image ToImage(const Canvas& c, bool premultiplied);

}  // namespace art
