#include "platform/fake/FakeFileSystem.h"

namespace platform {

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
  if (files_.count(k) || noCreate_.count(k) || !ParentExists(k)) return false;
  folders_[k] = FileNameOf(path);
  return true;
}

bool FakeFileSystem::DeleteFile(const Text& path) {
  Text k = Key(path);
  if (locked_.count(k)) return false;
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
  if (!Writable(k)) return false;
  auto& f = files_[k];
  if (f.name.empty()) f.name = FileNameOf(path);
  f.bytes.assign(bytes);
  ++writes_;
  return true;
}

bool FakeFileSystem::Append(const Text& path, std::string_view bytes) {
  Text k = Key(path);
  if (!Writable(k)) return false;
  auto& f = files_[k];
  if (f.name.empty()) f.name = FileNameOf(path);
  f.bytes.append(bytes);
  ++writes_;
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
