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

  // Creates or truncates, writes every byte and has the system put them on the disk
  // before it returns: after true the file survives a crash of the process.
  virtual bool WriteFlushed(const Text& path, std::string_view bytes) = 0;
  enum class ReplaceResult {
    Done,    // `to` now holds what `from` held; `from` is gone
    Held,    // another program has `to` open without delete sharing, still after a brief retry
    Failed,  // anything else; both files are as they were
  };
  // Puts the file `from` in the place of `to` in one step: a reader sees the old file
  // or the new one, never a part. A missing `to` is created. A read-only `to` is
  // refused unless `evenReadOnly`.
  virtual ReplaceResult Replace(const Text& from, const Text& to, bool evenReadOnly) = 0;
  // Cuts a file back to its first `size` bytes.
  virtual bool Truncate(const Text& path, std::uint64_t size) = 0;
  // The system's words for the last failed call of this object ("There is not enough
  // space on the disk."); empty when nothing has failed yet.
  virtual Text LastErrorText() = 0;

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
