#include "platform/portable/PortableFileSystem.h"

#include <chrono>
#include <ctime>
#include <fstream>

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
  return !ec && fs::is_directory(p, ec);
}

bool PortableFileSystem::DeleteFile(const Text& path) {
  std::error_code ec;
  auto p = ToNative(path);
  if (!fs::is_regular_file(p, ec)) return false;
  fs::permissions(p, fs::perms::owner_write, fs::perm_options::add, ec);
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

bool PortableFileSystem::WriteAll(const Text& path, std::string_view bytes) {
  std::ofstream out(ToNative(path), std::ios::binary | std::ios::trunc);
  if (!out) return false;
  out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  return static_cast<bool>(out);
}

bool PortableFileSystem::Append(const Text& path, std::string_view bytes) {
  std::ofstream out(ToNative(path), std::ios::binary | std::ios::app);
  if (!out) return false;
  out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  return static_cast<bool>(out);
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
