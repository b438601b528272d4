#pragma once
// A fresh folder on the real disk for one test, removed afterwards.
#include <filesystem>
#include <string>

#include "base/Text.h"

namespace testkit {

class TempDir {
 public:
  TempDir();
  ~TempDir();
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;

  const std::filesystem::path& Path() const { return path_; }
  // The folder as the product writes paths (native separators on Windows).
  base::Text TextPath() const;

 private:
  std::filesystem::path path_;
};

}  // namespace testkit
