#include "platform/fake/FakeFileSystem.h"

namespace platform {

namespace {
// The words Windows gives for each case, so the messages read as they will there.
constexpr const char16_t* kNoPath = u"The system cannot find the path specified.";
constexpr const char16_t* kDenied = u"Access is denied.";
constexpr const char16_t* kDiskFull = u"There is not enough space on the disk.";
constexpr const char16_t* kInUse =
    u"The process cannot access the file because it is being used by another process.";
constexpr const char16_t* kDeviceError =
    u"The request could not be performed because of an I/O device error.";
constexpr const char16_t* kNotFound = u"The system cannot find the file specified.";
constexpr const char16_t* kDead = u"The process has been ended.";
}  // namespace

bool FakeFileSystem::Fail(const Text& why) {
  lastError_ = why;
  return false;
}

bool FakeFileSystem::Due(Step step) {
  auto it = failAt_.find(step);
  if (it == failAt_.end()) return false;
  if (--it->second > 0) return false;
  failAt_.erase(it);
  return true;
}

bool FakeFileSystem::Alive(bool& half) {
  half = false;
  if (!crashAt_) {
    ++changes_;
    return true;
  }
  if (changes_ > *crashAt_) return false;
  half = changes_ == *crashAt_;
  ++changes_;
  return true;
}

std::uint64_t FakeFileSystem::Used() const {
  std::uint64_t used = 0;
  for (const auto& [k, f] : files_) used += f.bytes.size();
  return used;
}

void FakeFileSystem::SetSpaceLeft(std::optional<std::uint64_t> bytes) {
  capacity_.reset();
  if (bytes) capacity_ = Used() + *bytes;
}

bool FakeFileSystem::Put(File& f, std::size_t offset, std::string_view bytes, bool half) {
  f.bytes.resize(offset);
  std::size_t fits = bytes.size();
  if (capacity_) {
    std::uint64_t used = Used();
    std::uint64_t room = *capacity_ > used ? *capacity_ - used : 0;
    if (room < fits) fits = static_cast<std::size_t>(room);
  }
  if (half) fits = std::min(fits, bytes.size() / 2);
  f.bytes.append(bytes.substr(0, fits));
  if (fits == bytes.size()) return true;
  return Fail(half ? kDeviceError : kDiskFull);
}

Text FakeFileSystem::Key(const Text& path) {
  Text k = base::ToLower(path);
  for (auto& c : k)
    if (c == u'/') c = u'\\';
  while (k.size() > 1 && k.back() == u'\\') k.pop_back();
  return k;
}

bool FakeFileSystem::ParentExists(const Text& key) const {
  Text parent = ParentFolder(key);
  if (parent.empty() || (parent.size() == 2 && parent[1] == u':')) return true;
  return folders_.count(parent) > 0;
}

bool FakeFileSystem::Writable(const Text& key) const {
  if (locked_.count(key)) return false;
  auto it = files_.find(key);
  if (it != files_.end() && it->second.readOnly) return false;
  return ParentExists(key) && !folders_.count(key);
}

bool FakeFileSystem::FileExists(const Text& path) { return files_.count(Key(path)) > 0; }

bool FakeFileSystem::FolderExists(const Text& path) {
  Text k = Key(path);
  return folders_.count(k) > 0 || (k.size() == 2 && k[1] == u':');
}

bool FakeFileSystem::CreateFolder(const Text& path) {
  Text k = Key(path);
  if (folders_.count(k)) return true;
  if (files_.count(k) || noCreate_.count(k)) return Fail(kDenied);
  if (!ParentExists(k)) return Fail(kNoPath);
  bool half = false;
  if (!Alive(half) || half) return Fail(kDead);
  folders_[k] = FileNameOf(path);
  return true;
}

bool FakeFileSystem::DeleteFile(const Text& path) {
  Text k = Key(path);
  if (locked_.count(k)) return Fail(kInUse);
  if (!files_.count(k)) return Fail(kNotFound);
  bool half = false;
  if (!Alive(half) || half) return Fail(kDead);
  return files_.erase(k) > 0;
}

bool FakeFileSystem::DeleteFileWithoutForce(const Text& path) {
  auto it = files_.find(Key(path));
  if (it != files_.end() && it->second.readOnly) return false;
  return DeleteFile(path);
}

std::optional<std::string> FakeFileSystem::ReadAll(const Text& path) {
  Text k = Key(path);
  auto it = files_.find(k);
  if (it == files_.end() || locked_.count(k)) return std::nullopt;
  return it->second.bytes;
}

std::optional<std::string> FakeFileSystem::ReadRange(const Text& path, std::uint64_t offset,
                                                     std::size_t count) {
  auto all = ReadAll(path);
  if (!all) return std::nullopt;
  if (offset >= all->size()) return std::string();
  return all->substr(static_cast<std::size_t>(offset), count);
}

std::optional<std::uint64_t> FakeFileSystem::FileSize(const Text& path) {
  auto it = files_.find(Key(path));
  if (it == files_.end()) return std::nullopt;
  return it->second.bytes.size();
}

bool FakeFileSystem::WriteAll(const Text& path, std::string_view bytes) {
  Text k = Key(path);
  if (!ParentExists(k)) return Fail(kNoPath);
  if (!Writable(k)) return Fail(locked_.count(k) ? kInUse : kDenied);
  bool half = false;
  if (!Alive(half)) return Fail(kDead);
  auto& f = files_[k];
  if (f.name.empty()) f.name = FileNameOf(path);
  ++writes_;
  bool shortWrite = half || Due(Step::Write);
  return Put(f, 0, bytes, shortWrite) && !half;
}

bool FakeFileSystem::Append(const Text& path, std::string_view bytes) {
  Text k = Key(path);
  if (!ParentExists(k)) return Fail(kNoPath);
  if (!Writable(k)) return Fail(locked_.count(k) ? kInUse : kDenied);
  bool half = false;
  if (!Alive(half)) return Fail(kDead);
  auto& f = files_[k];
  if (f.name.empty()) f.name = FileNameOf(path);
  ++writes_;
  bool shortWrite = half || Due(Step::Append);
  return Put(f, f.bytes.size(), bytes, shortWrite) && !half;
}

bool FakeFileSystem::WriteFlushed(const Text& path, std::string_view bytes) {
  if (!WriteAll(path, bytes)) return false;
  if (Due(Step::Flush)) return Fail(kDeviceError);
  return true;
}

IFileSystem::ReplaceResult FakeFileSystem::Replace(const Text& from, const Text& to,
                                                   bool evenReadOnly) {
  Text source = Key(from);
  Text target = Key(to);
  auto it = files_.find(source);
  if (it == files_.end() || locked_.count(source)) {
    Fail(it == files_.end() ? kNotFound : kInUse);
    return ReplaceResult::Failed;
  }
  if (!ParentExists(target)) {
    Fail(kNoPath);
    return ReplaceResult::Failed;
  }
  auto old = files_.find(target);
  if (folders_.count(target) || (old != files_.end() && old->second.readOnly && !evenReadOnly)) {
    Fail(kDenied);
    return ReplaceResult::Failed;
  }
  if (locked_.count(target) || Due(Step::Held)) {
    Fail(kInUse);
    return ReplaceResult::Held;
  }
  if (Due(Step::Replace)) {
    Fail(kDenied);
    return ReplaceResult::Failed;
  }
  bool half = false;
  if (!Alive(half) || half) {  // a rename is one step: done or not done
    Fail(kDead);
    return ReplaceResult::Failed;
  }
  File moved = std::move(it->second);
  files_.erase(it);
  moved.name = FileNameOf(to);
  moved.readOnly = false;
  files_[target] = std::move(moved);  // the write was counted when the bytes went in
  return ReplaceResult::Done;
}

bool FakeFileSystem::Truncate(const Text& path, std::uint64_t size) {
  Text k = Key(path);
  auto it = files_.find(k);
  if (it == files_.end()) return Fail(kNotFound);
  if (!Writable(k)) return Fail(locked_.count(k) ? kInUse : kDenied);
  if (Due(Step::Truncate)) return Fail(kDeviceError);
  bool half = false;
  if (!Alive(half) || half) return Fail(kDead);
  if (size < it->second.bytes.size()) it->second.bytes.resize(static_cast<std::size_t>(size));
  return true;
}

std::vector<FileEntry> FakeFileSystem::List(const Text& folder, const Text& pattern) {
  std::vector<FileEntry> out;
  Text dir = Key(folder);
  for (const auto& [k, f] : files_) {
    if (ParentFolder(k) != dir || !MatchesPattern(f.name, pattern)) continue;
    out.push_back({f.name, false, f.bytes.size(), f.modified});
  }
  for (const auto& [k, name] : folders_) {
    if (ParentFolder(k) != dir || !MatchesPattern(name, pattern)) continue;
    out.push_back({name, true, 0, {}});
  }
  return out;
}

bool FakeFileSystem::SetCurrentFolder(const Text& path) {
  if (!FolderExists(path)) return false;
  current_ = path;
  return true;
}

void FakeFileSystem::AddFolders(const Text& path) {
  Text k = Key(path);
  std::vector<Text> levels;
  for (Text p = k; !p.empty() && !(p.size() == 2 && p[1] == u':'); p = ParentFolder(p))
    levels.push_back(p);
  Text original = path;
  for (auto it = levels.rbegin(); it != levels.rend(); ++it) {
    if (!folders_.count(*it)) folders_[*it] = FileNameOf(original.substr(0, it->size()));
  }
}

void FakeFileSystem::PutFile(const Text& path, std::string_view bytes, base::DateTime modified) {
  AddFolders(ParentFolder(path));
  auto& f = files_[Key(path)];
  f.name = FileNameOf(path);
  f.bytes.assign(bytes);
  f.modified = modified;
}

void FakeFileSystem::SetLocked(const Text& path, bool locked) {
  if (locked) {
    locked_.insert(Key(path));
  } else {
    locked_.erase(Key(path));
  }
}

void FakeFileSystem::SetReadOnly(const Text& path, bool readOnly) {
  auto it = files_.find(Key(path));
  if (it != files_.end()) it->second.readOnly = readOnly;
}

std::string FakeFileSystem::Bytes(const Text& path) {
  auto it = files_.find(Key(path));
  return it == files_.end() ? std::string() : it->second.bytes;
}

}  // namespace platform
