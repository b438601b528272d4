#pragma once
// Files and folders through the Windows API. Paths are used as given (no long-path
// prefix); every failure comes back as false, nullopt or an empty list.
#include "platform/FileSystem.h"

namespace platform {

class Win32FileSystem : public IFileSystem {
 public:
  bool FileExists(const Text& path) noexcept override;
  bool FolderExists(const Text& path) noexcept override;
  bool CreateFolder(const Text& path) noexcept override;
  bool DeleteFile(const Text& path) noexcept override;
  bool DeleteFileWithoutForce(const Text& path) noexcept override;
  std::optional<std::string> ReadAll(const Text& path) noexcept override;
  std::optional<std::string> ReadRange(const Text& path, std::uint64_t offset,
                                       std::size_t count) noexcept override;
  std::optional<std::uint64_t> FileSize(const Text& path) noexcept override;
  bool WriteAll(const Text& path, std::string_view bytes) noexcept override;
  bool Append(const Text& path, std::string_view bytes) noexcept override;
  bool WriteFlushed(const Text& path, std::string_view bytes) noexcept override;
  ReplaceResult Replace(const Text& from, const Text& to, bool evenReadOnly) noexcept override;
  bool Truncate(const Text& path, std::uint64_t size) noexcept override;
  Text LastErrorText() noexcept override;
  unsigned long LastErrorNumber() const noexcept { return lastError_; }
  std::vector<FileEntry> List(const Text& folder, const Text& pattern) noexcept override;
  bool SetCurrentFolder(const Text& path) noexcept override;

 private:
  // Keeps GetLastError() of the call that just failed; always false.
  bool Failed() noexcept;
  unsigned long lastError_ = 0;
};

}  // namespace platform
