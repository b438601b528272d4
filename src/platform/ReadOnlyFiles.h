#pragma once
// Files and profiles that can be read but not changed: every read goes to the wrapped
// service, every write (a file written, appended, deleted, a folder made, a profile key
// written) is refused as a failure would be and remembered. A command that promises to
// leave a data root as it found it runs the product's own code over these, so a trace
// line or a cleared key that the code would write on the way cannot reach the disk.
#include <vector>

#include "platform/FileSystem.h"
#include "platform/Profile.h"

namespace platform {

class ReadOnlyFileSystem : public IFileSystem {
 public:
  explicit ReadOnlyFileSystem(IFileSystem& inner) : inner_(inner) {}

  bool FileExists(const Text& path) override { return inner_.FileExists(path); }
  bool FolderExists(const Text& path) override { return inner_.FolderExists(path); }
  bool CreateFolder(const Text& path) override { return Refuse(path); }
  bool DeleteFile(const Text& path) override { return Refuse(path); }
  bool DeleteFileWithoutForce(const Text& path) override { return Refuse(path); }
  std::optional<std::string> ReadAll(const Text& path) override { return inner_.ReadAll(path); }
  std::optional<std::string> ReadRange(const Text& path, std::uint64_t offset,
                                       std::size_t count) override {
    return inner_.ReadRange(path, offset, count);
  }
  std::optional<std::uint64_t> FileSize(const Text& path) override { return inner_.FileSize(path); }
  bool WriteAll(const Text& path, std::string_view) override { return Refuse(path); }
  bool Append(const Text& path, std::string_view) override { return Refuse(path); }
  bool WriteFlushed(const Text& path, std::string_view) override { return Refuse(path); }
  ReplaceResult Replace(const Text&, const Text& to, bool) override {
    Refuse(to);
    return ReplaceResult::Failed;
  }
  bool Truncate(const Text& path, std::uint64_t) override { return Refuse(path); }
  Text LastErrorText() override {
    return refused_.empty() ? inner_.LastErrorText() : Text(u"Access is denied.");
  }
  std::vector<FileEntry> List(const Text& folder, const Text& pattern) override {
    return inner_.List(folder, pattern);
  }
  bool SetCurrentFolder(const Text& path) override { return inner_.SetCurrentFolder(path); }

  // The paths that something tried to change, in the order it tried.
  const std::vector<Text>& Refused() const { return refused_; }

 private:
  bool Refuse(const Text& path) {
    refused_.push_back(path);
    return false;
  }

  IFileSystem& inner_;
  std::vector<Text> refused_;
};

class ReadOnlyProfile : public IProfile {
 public:
  // Error 5, access denied, is what a write to a read-only file answers.
  static constexpr unsigned long kRefusedError = 5;

  explicit ReadOnlyProfile(IProfile& inner) : inner_(inner) {}

  Text GetString(const Text& section, const Text& key, const Text& defaultValue,
                 std::size_t bufferChars, const Text& file) override {
    refusedError_ = false;
    return inner_.GetString(section, key, defaultValue, bufferChars, file);
  }
  bool WriteString(const Text& section, const std::optional<Text>& key,
                   const std::optional<Text>& value, const Text& file) override {
    refused_.push_back(file + u" [" + section + u"] " + key.value_or(Text()));
    refusedError_ = true;
    return false;
  }
  unsigned long LastError() override { return refusedError_ ? kRefusedError : inner_.LastError(); }

  // "<file> [<section>] <key>" of each refused write, in order.
  const std::vector<Text>& Refused() const { return refused_; }

 private:
  IProfile& inner_;
  std::vector<Text> refused_;
  bool refusedError_ = false;
};

}  // namespace platform
