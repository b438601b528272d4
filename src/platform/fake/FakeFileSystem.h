#pragma once
// An in-memory disk for tests. Paths compare without regard to case and with '/'
// and '\' alike; a drive ("C:") or an empty parent always exists. Files can be
// made unreadable or unwritable to play a locked or protected file.
#include <map>
#include <set>

#include "platform/FileSystem.h"

namespace platform {

class FakeFileSystem : public IFileSystem {
 public:
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
  std::vector<FileEntry> List(const Text& folder, const Text& pattern) override;
  bool SetCurrentFolder(const Text& path) override;

  // Test set-up.
  void AddFolders(const Text& path);  // every level
  void PutFile(const Text& path, std::string_view bytes, base::DateTime modified = {});
  void SetLocked(const Text& path, bool locked);  // neither read nor written
  void SetReadOnly(const Text& path, bool readOnly);
  void FailCreateFolder(const Text& path) { noCreate_.insert(Key(path)); }
  std::string Bytes(const Text& path);  // "" when absent
  Text CurrentFolder() const { return current_; }
  int WriteCount() const { return writes_; }

 private:
  struct File {
    Text name;  // as first written, for listings
    std::string bytes;
    bool readOnly = false;
    base::DateTime modified;
  };
  static Text Key(const Text& path);
  bool ParentExists(const Text& key) const;
  bool Writable(const Text& key) const;

  std::map<Text, File> files_;
  std::map<Text, Text> folders_;  // key -> name as created
  std::set<Text> locked_;
  std::set<Text> noCreate_;
  Text current_;
  int writes_ = 0;
};

}  // namespace platform
