#include "platform/portable/PortableFileSystem.h"

#include "platform/WritePause.h"

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <fstream>

#ifndef _WIN32
#include <fcntl.h>
#include <unistd.h>
#endif

namespace platform {

namespace fs = std::filesystem;

namespace {

#ifndef _WIN32
// Strict UTF-8: a byte that does not begin a well-formed sequence (stray or missing
// continuation bytes, overlong forms, surrogates, beyond U+10FFFF) becomes U+FFFD.
Text DecodeStrict(std::string_view s) {
  Text out;
  out.reserve(s.size());
  for (size_t i = 0; i < s.size();) {
    const auto c = static_cast<unsigned char>(s[i]);
    size_t len = 0;
    char32_t cp = 0;
    if (c < 0x80) {
      len = 1;
      cp = c;
    } else if (c >= 0xC2 && c <= 0xDF) {
      len = 2;
      cp = c & 0x1F;
    } else if (c >= 0xE0 && c <= 0xEF) {
      len = 3;
      cp = c & 0x0F;
    } else if (c >= 0xF0 && c <= 0xF4) {
      len = 4;
      cp = c & 0x07;
    }
    bool ok = len > 0 && i + len <= s.size();
    for (size_t k = 1; ok && k < len; ++k) {
      const auto d = static_cast<unsigned char>(s[i + k]);
      ok = (d & 0xC0) == 0x80;
      cp = (cp << 6) | (d & 0x3F);
    }
    ok = ok && !(len == 3 && cp < 0x800) && !(len == 4 && (cp < 0x10000 || cp > 0x10FFFF)) &&
         !(cp >= 0xD800 && cp <= 0xDFFF);
    if (!ok) {
      out.push_back(u'\uFFFD');
      ++i;
      continue;
    }
    if (cp >= 0x10000) {
      out.push_back(static_cast<char16_t>(0xD800 + ((cp - 0x10000) >> 10)));
      out.push_back(static_cast<char16_t>(0xDC00 + ((cp - 0x10000) & 0x3FF)));
    } else {
      out.push_back(static_cast<char16_t>(cp));
    }
    i += len;
  }
  return out;
}
#endif

// The entry's name as text. On Linux a name is bytes, UTF-8 by custom only: what is
// not UTF-8 comes as U+FFFD, and nothing opens the file by the name that results.
Text NameOf(const fs::path& file) {
#ifdef _WIN32
  const std::wstring& units = file.native();
  return Text(units.begin(), units.end());
#else
  return DecodeStrict(file.native());
#endif
}

}  // namespace

fs::path PortableFileSystem::ToNative(const Text& path) {
#ifdef _WIN32
  return fs::path(std::u16string(path));
#else
  std::u16string p(path);
  for (auto& c : p)
    if (c == u'\\') c = u'/';
  return fs::path(p);
#endif
}

bool PortableFileSystem::FileExists(const Text& path) {
  std::error_code ec;
  return fs::is_regular_file(ToNative(path), ec);
}

bool PortableFileSystem::FolderExists(const Text& path) {
  std::error_code ec;
  return fs::is_directory(ToNative(path), ec);
}

bool PortableFileSystem::CreateFolder(const Text& path) {
  std::error_code ec;
  auto p = ToNative(path);
  if (fs::is_directory(p, ec)) return true;
  fs::create_directory(p, ec);
  if (ec) return Failed(ec);
  return fs::is_directory(p, ec);
}

bool PortableFileSystem::DeleteFile(const Text& path) {
  std::error_code ec;
  auto p = ToNative(path);
  if (!fs::is_regular_file(p, ec)) return false;
  fs::permissions(p, fs::perms::owner_write, fs::perm_options::add, ec);
  return fs::remove(p, ec) && !ec;
}

bool PortableFileSystem::DeleteFileWithoutForce(const Text& path) {
  std::error_code ec;
  auto p = ToNative(path);
  if (!fs::is_regular_file(p, ec)) return false;
  // A file without write permission is the read-only file of Windows: it stays.
  if ((fs::status(p, ec).permissions() & fs::perms::owner_write) == fs::perms::none) return false;
  return fs::remove(p, ec) && !ec;
}

std::optional<std::string> PortableFileSystem::ReadAll(const Text& path) {
  std::ifstream in(ToNative(path), std::ios::binary);
  if (!in) return std::nullopt;
  std::string data((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  if (in.bad()) return std::nullopt;
  return data;
}

std::optional<std::string> PortableFileSystem::ReadRange(const Text& path, std::uint64_t offset,
                                                         std::size_t count) {
  std::ifstream in(ToNative(path), std::ios::binary);
  if (!in) return std::nullopt;
  in.seekg(0, std::ios::end);
  std::uint64_t size = static_cast<std::uint64_t>(in.tellg());
  if (offset >= size) return std::string();
  std::size_t n = static_cast<std::size_t>(std::min<std::uint64_t>(count, size - offset));
  std::string data(n, '\0');
  in.seekg(static_cast<std::streamoff>(offset));
  in.read(data.data(), static_cast<std::streamsize>(n));
  data.resize(static_cast<std::size_t>(in.gcount()));
  return data;
}

std::optional<std::uint64_t> PortableFileSystem::FileSize(const Text& path) {
  std::error_code ec;
  auto s = fs::file_size(ToNative(path), ec);
  if (ec) return std::nullopt;
  return s;
}

namespace {

enum class Put { Truncate, Append, TruncateAndFlush };

// Writes so that a full disk, a short write and a failed close are all seen (errno
// holds the reason when the result is false).
bool PutBytes(const fs::path& path, std::string_view bytes, Put how, base::TextView name) {
#ifdef _WIN32
  // On Windows the product uses Win32FileSystem; this version is only compared with it,
  // and the library's stream has no way to ask for the flush to the disk.
  std::ofstream out(path,
                    std::ios::binary | (how == Put::Append ? std::ios::app : std::ios::trunc));
  if (!out) return false;
  out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  out.flush();
  return static_cast<bool>(out);
#else
  std::FILE* file = std::fopen(path.c_str(), how == Put::Append ? "ab" : "wb");
  if (file == nullptr) return false;
  // A test may stop an append half way, or a whole write before its flush.
  std::size_t first = 0;
  if (how == Put::Append && PauseAsked(WriteStep::Appending, name)) first = bytes.size() / 2;
  bool ok = true;
  if (first > 0) {
    ok = std::fwrite(bytes.data(), 1, first, file) == first && std::fflush(file) == 0;
    if (ok) PauseHere();
  }
  const std::size_t rest = bytes.size() - first;
  ok = ok && std::fwrite(bytes.data() + first, 1, rest, file) == rest;
  if (how == Put::TruncateAndFlush) PauseIfAsked(WriteStep::Written, name);
  ok = ok && std::fflush(file) == 0;
  if (ok && how == Put::TruncateAndFlush) ok = ::fsync(::fileno(file)) == 0;
  int saved = errno;
  bool closed = std::fclose(file) == 0;
  if (ok && !closed) return false;  // errno is the close's
  errno = saved;
  return ok;
#endif
}

#ifndef _WIN32
// A rename is on the disk only once its folder is.
void FlushFolder(const fs::path& folder) {
  int fd = ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY);
  if (fd < 0) return;
  ::fsync(fd);
  ::close(fd);
}
#endif

}  // namespace

bool PortableFileSystem::Failed(const std::error_code& ec) {
  lastError_ = base::FromUtf8(ec.message());
  return false;
}

bool PortableFileSystem::Failed(int errorNumber) {
  return Failed(std::error_code(errorNumber == 0 ? EIO : errorNumber, std::generic_category()));
}

bool PortableFileSystem::WriteAll(const Text& path, std::string_view bytes) {
  errno = 0;
  return PutBytes(ToNative(path), bytes, Put::Truncate, path) || Failed(errno);
}

bool PortableFileSystem::Append(const Text& path, std::string_view bytes) {
  errno = 0;
  return PutBytes(ToNative(path), bytes, Put::Append, path) || Failed(errno);
}

bool PortableFileSystem::WriteFlushed(const Text& path, std::string_view bytes) {
  errno = 0;
  return PutBytes(ToNative(path), bytes, Put::TruncateAndFlush, path) || Failed(errno);
}

IFileSystem::ReplaceResult PortableFileSystem::Replace(const Text& from, const Text& to,
                                                       bool evenReadOnly) {
  std::error_code ec;
  const fs::path source = ToNative(from);
  const fs::path target = ToNative(to);
  if (!fs::is_regular_file(source, ec)) {
    Failed(std::make_error_code(std::errc::no_such_file_or_directory));
    return ReplaceResult::Failed;
  }
  if (fs::exists(target, ec)) {
    if (!fs::is_regular_file(target, ec)) {
      Failed(std::make_error_code(std::errc::is_a_directory));
      return ReplaceResult::Failed;
    }
    // The platform's read-only mark: a file without write permission is not replaced,
    // whoever runs the program.
    auto perms = fs::status(target, ec).permissions();
    if (!evenReadOnly && (perms & fs::perms::owner_write) == fs::perms::none) {
      Failed(std::make_error_code(std::errc::permission_denied));
      return ReplaceResult::Failed;
    }
  }
  PauseIfAsked(WriteStep::Replacing, to);
  fs::rename(source, target, ec);
  if (ec) {
    Failed(ec);
    return ReplaceResult::Failed;
  }
#ifndef _WIN32
  FlushFolder(target.parent_path());
#endif
  return ReplaceResult::Done;
}

bool PortableFileSystem::Truncate(const Text& path, std::uint64_t size) {
  std::error_code ec;
  fs::resize_file(ToNative(path), size, ec);
  return !ec || Failed(ec);
}

std::vector<FileEntry> PortableFileSystem::List(const Text& folder, const Text& pattern) {
  std::vector<FileEntry> out;
  std::error_code ec;
  for (fs::directory_iterator it(ToNative(folder), ec), end; !ec && it != end; it.increment(ec)) {
    Text name = NameOf(it->path().filename());
    if (!MatchesPattern(name, pattern)) continue;
    FileEntry e;
    e.name = name;
    e.isFolder = it->is_directory(ec);
    if (!e.isFolder) e.size = it->file_size(ec);
    auto ft = it->last_write_time(ec);
    if (!ec) {
      auto sys = std::chrono::file_clock::to_sys(ft);
      std::time_t t = std::chrono::system_clock::to_time_t(sys);
      std::tm tm{};
#ifdef _WIN32
      localtime_s(&tm, &t);
#else
      localtime_r(&t, &tm);
#endif
      e.modified = {tm.tm_year + 1900, tm.tm_mon + 1, tm.tm_mday, tm.tm_hour, tm.tm_min, tm.tm_sec};
    }
    out.push_back(std::move(e));
  }
  return out;
}

bool PortableFileSystem::SetCurrentFolder(const Text& path) {
  std::error_code ec;
  fs::current_path(ToNative(path), ec);
  return !ec;
}

}  // namespace platform
