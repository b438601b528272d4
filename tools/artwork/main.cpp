// qvartwork: draws every picture of the monitor into a folder.
//
//   qvartwork OUTDIR                 the PNG and ICO files and artwork.txt
//   qvartwork OUTDIR --sheet PREFIX  also PREFIX-small.png and PREFIX-large.png
//   qvartwork --list                 the list of pictures as Markdown
#include <cstdio>
#include <string>
#include <vector>

#include "Generate.h"

namespace {

int Usage() {
  std::fprintf(stderr,
               "usage: qvartwork OUTDIR [--sheet PREFIX]\n"
               "       qvartwork --list\n");
  return 2;
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<std::string> args(argv + 1, argv + argc);
  if (args.size() == 1 && args[0] == "--list") {
    std::fputs(art::MarkdownList().c_str(), stdout);
    return 0;
  }
  if (args.empty() || args[0].starts_with("--")) return Usage();
  std::string out = args[0], sheet;
  for (size_t i = 1; i < args.size(); ++i) {
    if (args[i] == "--sheet" && i + 1 < args.size())
      sheet = args[++i];
    else
      return Usage();
  }

  std::vector<art::WrittenFile> written;
  std::string error;
  if (!art::WriteAll(out, written, error)) {
    std::fprintf(stderr, "qvartwork: %s\n", error.c_str());
    return 1;
  }
  std::printf("qvartwork: %zu files in %s\n", written.size(), out.c_str());

  if (!sheet.empty()) {
    for (bool large : {false, true}) {
      const std::string path = sheet + (large ? "-large.png" : "-small.png");
      if (!art::WriteFile(path, art::EncodePng(art::ContactSheet(large)))) {
        std::fprintf(stderr, "qvartwork: cannot write %s\n", path.c_str());
        return 1;
      }
      std::printf("qvartwork: contact sheet %s\n", path.c_str());
    }
  }
  return 0;
}
