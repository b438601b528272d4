#include "testkit/TempDir.h"

#include <atomic>
#include <chrono>
#include <random>

namespace testkit {

TempDir::TempDir() {
  static std::atomic<int> counter{0};
  auto stamp = std::chrono::steady_clock::now().time_since_epoch().count();
  std::random_device rd;
  path_ = std::filesystem::temp_directory_path() /
          ("qvtest-" + std::to_string(stamp % 1000000007) + "-" + std::to_string(rd() % 100000) +
           "-" + std::to_string(counter++));
  std::filesystem::create_directories(path_);
}

TempDir::~TempDir() {
  std::error_code ec;
  std::filesystem::remove_all(path_, ec);
}

base::Text TempDir::TextPath() const {
  auto s = path_.u16string();
  return base::Text(s.begin(), s.end());
}

}  // namespace testkit
