// A fuzz program's corpus replayed without libFuzzer: each file of the folders given goes
// to the target once. A folder that is missing or empty fails: no corpus is lost unseen.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int argc, char** argv) {
  namespace fs = std::filesystem;
  std::size_t played = 0;
  for (int i = 1; i < argc; ++i) {
    std::error_code ec;
    std::vector<fs::path> files;
    if (fs::is_directory(argv[i], ec))
      for (const auto& entry : fs::directory_iterator(argv[i], ec))
        if (entry.is_regular_file(ec)) files.push_back(entry.path());
    if (files.empty()) {
      std::fprintf(stderr, "replay: no corpus file in %s\n", argv[i]);
      return 1;
    }
    for (const fs::path& file : files) {
      std::ifstream in(file, std::ios::binary);
      if (!in) {
        std::fprintf(stderr, "replay: cannot read %s\n", file.string().c_str());
        return 1;
      }
      const std::vector<char> bytes{std::istreambuf_iterator<char>(in), {}};
      LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
      ++played;
    }
  }
  std::printf("replay: %zu inputs played\n", played);
  return played > 0 ? 0 : 1;
}
