#pragma once
// The file system through std::filesystem. On Linux a Windows path's '\' separators
// become '/', so the product's composed paths work on a native folder. A name that is
// not UTF-8 is listed with U+FFFD for each byte that could not be read; no call finds
// the file by that name.
#include <filesystem>

#include "platform/FileSystem.h"

namespace platform {

class PortableFileSystem : public IFileSystem {
 public:
  static std::filesystem::path ToNative(const Text& path);

  bool FileExists(const Text& path) override;
  bool FolderExists(const Text& path) override;
  bool CreateFolder(const Text& path) override;
  bool DeleteFile(const Text& path) override;
  bool DeleteFileWithoutForce(const Text& path) override;
  std::optional<std::string> ReadAll(const Text& path) override;
  std::optional<std::string> ReadRange(const Text& path, std::uint64_t offset,
                                       std::size_t count) override;
  std::optional<std::uint64_t> FileSize(const Text& path) override;
  bool WriteAll(const Text& path, std::string_view bytes) override;
  bool Append(const Text& path, std::string_view bytes) override;
  bool WriteFlushed(const Text& path, std::string_view bytes) override;
  ReplaceResult Replace(const Text& from, const Text& to, bool evenReadOnly) override;
  bool Truncate(const Text& path, std::uint64_t size) override;
  Text LastErrorText() override { return lastError_; }
  std::vector<FileEntry> List(const Text& folder, const Text& pattern) override;
  bool SetCurrentFolder(const Text& path) override;

 private:
  bool Failed(const std::error_code& ec);
  bool Failed(int errorNumber);
  Text lastError_;
};

}  // namespace platform
