#pragma once
// Files and folders. Paths are Windows paths ("C:\dir\file.txt"); the portable
// implementation maps '\' to '/'. Every call reports failure by false or nullopt.
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/DateTime.h"
#include "base/Text.h"

namespace platform {

using base::Text;

struct FileEntry {
  Text name;  // the name within its folder, no path
  bool isFolder = false;
  std::uint64_t size = 0;
  base::DateTime modified;
};

class IFileSystem {
 public:
  virtual ~IFileSystem() = default;

  virtual bool FileExists(const Text& path) = 0;
  virtual bool FolderExists(const Text& path) = 0;
  // One level only: the parent must exist. True when the folder exists afterwards.
  virtual bool CreateFolder(const Text& path) = 0;
  // Deletes a file, read-only or not.
  virtual bool DeleteFile(const Text& path) = 0;
  // Deletes a file without force: a read-only file stays, and the answer is false.
  virtual bool DeleteFileWithoutForce(const Text& path) = 0;

  virtual std::optional<std::string> ReadAll(const Text& path) = 0;
  // Up to `count` bytes from `offset`; shorter at the end of the file.
  virtual std::optional<std::string> ReadRange(const Text& path, std::uint64_t offset,
                                               std::size_t count) = 0;
  virtual std::optional<std::uint64_t> FileSize(const Text& path) = 0;
  // Creates or truncates.
  virtual bool WriteAll(const Text& path, std::string_view bytes) = 0;
  // Creates when missing.
  virtual bool Append(const Text& path, std::string_view bytes) = 0;

  // Entries of `folder` whose names match `pattern` ("*", "*.txt", "name*"), in no set order.
  virtual std::vector<FileEntry> List(const Text& folder, const Text& pattern) = 0;
  virtual bool SetCurrentFolder(const Text& path) = 0;
};

// "*" and "?" matching without regard to case, as the platform's file search does.
bool MatchesPattern(base::TextView name, base::TextView pattern);

// The folder part of a path without the trailing separator; "" when there is none.
Text ParentFolder(base::TextView path);
Text FileNameOf(base::TextView path);

}  // namespace platform
