// The fuzz programs' corpus replayed in the native test tree, without libFuzzer: each
// file under the folders (or the files) given is read and handed to the target once,
// under the tree's AddressSanitizer and UBSan. A folder that does not exist or holds
// no file fails, so that a target cannot lose its corpus unseen. The clang tree's
// libFuzzer programs (`make fuzz`) grow the corpus; this only plays it back.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

bool Replay(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  if (!in) return false;
  const std::vector<char> bytes{std::istreambuf_iterator<char>(in),
                                std::istreambuf_iterator<char>()};
  LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  namespace fs = std::filesystem;
  std::size_t played = 0;
  for (int i = 1; i < argc; ++i) {
    const fs::path where = argv[i];
    std::error_code ec;
    std::vector<fs::path> files;
    if (fs::is_directory(where, ec)) {
      for (const auto& entry : fs::directory_iterator(where, ec))
        if (entry.is_regular_file(ec)) files.push_back(entry.path());
    } else if (fs::is_regular_file(where, ec)) {
      files.push_back(where);
    }
    if (files.empty()) {
      std::fprintf(stderr, "replay: no corpus file in %s\n", argv[i]);
      return 1;
    }
    for (const fs::path& file : files) {
      if (!Replay(file)) {
        std::fprintf(stderr, "replay: cannot read %s\n", file.string().c_str());
        return 1;
      }
      ++played;
    }
  }
  std::printf("replay: %zu inputs played\n", played);
  return played > 0 ? 0 : 1;
}
