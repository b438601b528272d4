#pragma once
// An in-memory disk for tests. Paths compare without regard to case and with '/'
// and '\' alike; a drive ("C:") or an empty parent always exists. Files can be
// made unreadable or unwritable to play a locked or protected file, and every step of
// a write can be made to fail, the disk to fill up, or the process to die.
#include <map>
#include <optional>
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
  bool WriteFlushed(const Text& path, std::string_view bytes) override;
  ReplaceResult Replace(const Text& from, const Text& to, bool evenReadOnly) override;
  bool Truncate(const Text& path, std::uint64_t size) override;
  Text LastErrorText() override { return lastError_; }
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

  // Failures on purpose. The `nth` next call of a step fails (1: the next one). A
  // failing Write, Flushed write or Append puts half of its bytes into the file first,
  // as a short write does; a failing Flush has written everything.
  enum class Step { Write, Flush, Replace, Held, Append, Truncate };
  void FailAt(Step step, int nth = 1) { failAt_[step] = nth; }
  // Room left on the disk in bytes; a write beyond it puts in what fits and fails.
  void SetSpaceLeft(std::optional<std::uint64_t> bytes);
  // The process dies in its `n`th change from now (0: before the next): that change
  // is done by half, and nothing after it reaches the disk. Revive() starts again.
  void CrashAt(int n) { crashAt_ = changes_ + n; }
  void Revive() { crashAt_.reset(); }
  bool Crashed() const { return crashAt_ && changes_ > *crashAt_; }
  int Changes() const { return changes_; }  // calls that change the disk, so far

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
  bool Fail(const Text& why);
  bool Due(Step step);
  // Counts one change; false when the process is dead by now (`half`: dying now).
  bool Alive(bool& half);
  std::uint64_t Used() const;
  // Puts `bytes` at `offset` of the file's content within the room left; false when
  // not everything fitted or `half` asks for half.
  bool Put(File& f, std::size_t offset, std::string_view bytes, bool half);

  std::map<Text, File> files_;
  std::map<Text, Text> folders_;  // key -> name as created
  std::set<Text> locked_;
  std::set<Text> noCreate_;
  Text current_;
  int writes_ = 0;
  Text lastError_;
  std::map<Step, int> failAt_;
  std::optional<std::uint64_t> capacity_;
  std::optional<int> crashAt_;
  int changes_ = 0;
};

}  // namespace platform
