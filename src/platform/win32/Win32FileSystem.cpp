#include "platform/win32/Win32Text.h"
#include "platform/win32/Win32FileSystem.h"

#include <algorithm>

#include "platform/WritePause.h"
#include "platform/win32/Win32Handles.h"

namespace platform {
namespace {

using win32::FromWide;
using win32::NoThrow;
using win32::Wide;
// Closes the file when the call is done, whichever way it leaves.
using FileHandle = win32::UniqueHandle;

// Others (the engine) append to the same files while we read them: share everything.
constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

HANDLE OpenForReading(const Text& path) {
  return ::CreateFileW(Wide(path), GENERIC_READ, kShareAll, nullptr, OPEN_EXISTING,
                       FILE_ATTRIBUTE_NORMAL, nullptr);
}

bool ReadExactly(HANDLE h, std::string& into, std::size_t count) {
  into.resize(count);
  std::size_t done = 0;
  while (done < count) {
    DWORD chunk = static_cast<DWORD>(std::min<std::size_t>(count - done, 1u << 30));
    DWORD got = 0;
    if (!::ReadFile(h, into.data() + done, chunk, &got, nullptr)) return false;
    if (got == 0) break;  // the file shrank under us: keep what there is
    done += got;
  }
  into.resize(done);
  return true;
}

bool WriteEverything(HANDLE h, std::string_view bytes) {
  std::size_t done = 0;
  while (done < bytes.size()) {
    DWORD chunk = static_cast<DWORD>(std::min<std::size_t>(bytes.size() - done, 1u << 30));
    DWORD put = 0;
    if (!::WriteFile(h, bytes.data() + done, chunk, &put, nullptr) || put == 0) return false;
    done += put;
  }
  return true;
}

base::DateTime ToLocalDateTime(const FILETIME& utc) {
  FILETIME local{};
  SYSTEMTIME st{};
  if (!::FileTimeToLocalFileTime(&utc, &local) || !::FileTimeToSystemTime(&local, &st))
    return base::DateTime{};
  return base::DateTime{st.wYear, st.wMonth, st.wDay, st.wHour, st.wMinute, st.wSecond};
}

}  // namespace

bool Win32FileSystem::FileExists(const Text& path) noexcept {
  DWORD attr = ::GetFileAttributesW(Wide(path));
  return attr != INVALID_FILE_ATTRIBUTES && !(attr & FILE_ATTRIBUTE_DIRECTORY);
}

bool Win32FileSystem::FolderExists(const Text& path) noexcept {
  DWORD attr = ::GetFileAttributesW(Wide(path));
  return attr != INVALID_FILE_ATTRIBUTES && (attr & FILE_ATTRIBUTE_DIRECTORY);
}

bool Win32FileSystem::CreateFolder(const Text& path) noexcept {
  if (FolderExists(path)) return true;
  if (!::CreateDirectoryW(Wide(path), nullptr)) Failed();
  return FolderExists(path);
}

bool Win32FileSystem::DeleteFile(const Text& path) noexcept {
  DWORD attr = ::GetFileAttributesW(Wide(path));
  if (attr == INVALID_FILE_ATTRIBUTES || (attr & FILE_ATTRIBUTE_DIRECTORY)) return false;
  if (attr & FILE_ATTRIBUTE_READONLY)
    ::SetFileAttributesW(Wide(path), attr & ~static_cast<DWORD>(FILE_ATTRIBUTE_READONLY));
  return ::DeleteFileW(Wide(path)) != FALSE;
}

bool Win32FileSystem::DeleteFileWithoutForce(const Text& path) noexcept {
  DWORD attr = ::GetFileAttributesW(Wide(path));
  if (attr == INVALID_FILE_ATTRIBUTES || (attr & FILE_ATTRIBUTE_DIRECTORY)) return false;
  // The system refuses a read-only file, which is what "without force" means.
  return ::DeleteFileW(Wide(path)) != FALSE;
}

std::optional<std::string> Win32FileSystem::ReadAll(const Text& path) noexcept {
  return NoThrow(std::optional<std::string>(), [&]() -> std::optional<std::string> {
    FileHandle file(OpenForReading(path));
    if (!file) return std::nullopt;
    LARGE_INTEGER size{};
    if (!::GetFileSizeEx(file.Get(), &size)) return std::nullopt;
    std::string data;
    if (!ReadExactly(file.Get(), data, static_cast<std::size_t>(size.QuadPart)))
      return std::nullopt;
    return data;
  });
}

std::optional<std::string> Win32FileSystem::ReadRange(const Text& path, std::uint64_t offset,
                                                      std::size_t count) noexcept {
  return NoThrow(std::optional<std::string>(), [&]() -> std::optional<std::string> {
    FileHandle file(OpenForReading(path));
    if (!file) return std::nullopt;
    LARGE_INTEGER size{};
    if (!::GetFileSizeEx(file.Get(), &size)) return std::nullopt;
    std::uint64_t total = static_cast<std::uint64_t>(size.QuadPart);
    if (offset >= total) return std::string();
    LARGE_INTEGER at{};
    at.QuadPart = static_cast<LONGLONG>(offset);
    if (!::SetFilePointerEx(file.Get(), at, nullptr, FILE_BEGIN)) return std::nullopt;
    std::string data;
    std::size_t want = static_cast<std::size_t>(std::min<std::uint64_t>(count, total - offset));
    if (!ReadExactly(file.Get(), data, want)) return std::nullopt;
    return data;
  });
}

std::optional<std::uint64_t> Win32FileSystem::FileSize(const Text& path) noexcept {
  WIN32_FILE_ATTRIBUTE_DATA data{};
  if (!::GetFileAttributesExW(Wide(path), GetFileExInfoStandard, &data)) return std::nullopt;
  if (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) return std::nullopt;
  return (static_cast<std::uint64_t>(data.nFileSizeHigh) << 32) | data.nFileSizeLow;
}

bool Win32FileSystem::Failed() noexcept {
  lastError_ = ::GetLastError();
  return false;
}

Text Win32FileSystem::LastErrorText() noexcept {
  if (lastError_ == 0) return Text();
  return NoThrow(Text(), [&] {
    wchar_t* buffer = nullptr;
    DWORD n = ::FormatMessageW(
        FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
        nullptr, lastError_, 0, reinterpret_cast<wchar_t*>(&buffer), 0, nullptr);
    Text text = n != 0 && buffer != nullptr ? FromWide(buffer, n) : Text();
    if (buffer != nullptr) ::LocalFree(buffer);
    while (!text.empty() && (text.back() == u'\r' || text.back() == u'\n' || text.back() == u' '))
      text.pop_back();
    if (text.empty()) text = u"Error " + base::FromNumber(static_cast<long long>(lastError_));
    return text;
  });
}

bool Win32FileSystem::WriteAll(const Text& path, std::string_view bytes) noexcept {
  FileHandle file(::CreateFileW(Wide(path), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS,
                                FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file) return Failed();
  return WriteEverything(file.Get(), bytes) || Failed();
}

bool Win32FileSystem::Append(const Text& path, std::string_view bytes) noexcept {
  // Append-only access puts every write at the current end, even when another
  // program appended in between.
  FileHandle file(::CreateFileW(Wide(path), FILE_APPEND_DATA | SYNCHRONIZE, kShareAll, nullptr,
                                OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file) return Failed();
  // A test may stop the append half way.
  if (PauseAsked(WriteStep::Appending, path) && bytes.size() > 1) {
    const std::size_t half = bytes.size() / 2;
    if (!WriteEverything(file.Get(), bytes.substr(0, half))) return Failed();
    ::FlushFileBuffers(file.Get());
    PauseHere();
    bytes.remove_prefix(half);
  }
  return WriteEverything(file.Get(), bytes) || Failed();
}

bool Win32FileSystem::WriteFlushed(const Text& path, std::string_view bytes) noexcept {
  FileHandle file(::CreateFileW(Wide(path), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file) return Failed();
  if (!WriteEverything(file.Get(), bytes)) return Failed();
  PauseIfAsked(WriteStep::Written, path);
  return ::FlushFileBuffers(file.Get()) != FALSE || Failed();
}

IFileSystem::ReplaceResult Win32FileSystem::Replace(const Text& from, const Text& to,
                                                    bool evenReadOnly) noexcept {
  DWORD attr = ::GetFileAttributesW(Wide(to));
  if (attr != INVALID_FILE_ATTRIBUTES && (attr & FILE_ATTRIBUTE_READONLY)) {
    if (!evenReadOnly) {
      ::SetLastError(ERROR_ACCESS_DENIED);
      Failed();
      return ReplaceResult::Failed;
    }
    ::SetFileAttributesW(Wide(to), attr & ~static_cast<DWORD>(FILE_ATTRIBUTE_READONLY));
  }
  // Another program (the engine) may have the file open for a moment: try again
  // for about half a second before giving the decision back.
  constexpr int kTries = 10;
  PauseIfAsked(WriteStep::Replacing, to);
  for (int attempt = 1;; ++attempt) {
    if (::MoveFileExW(Wide(from), Wide(to), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
      return ReplaceResult::Done;
    Failed();
    bool held = lastError_ == ERROR_SHARING_VIOLATION || lastError_ == ERROR_LOCK_VIOLATION ||
                (lastError_ == ERROR_ACCESS_DENIED && attr != INVALID_FILE_ATTRIBUTES &&
                 !(attr & FILE_ATTRIBUTE_DIRECTORY));
    if (!held) return ReplaceResult::Failed;
    if (attempt == kTries) return ReplaceResult::Held;
    ::Sleep(50);
  }
}

bool Win32FileSystem::Truncate(const Text& path, std::uint64_t size) noexcept {
  FileHandle file(::CreateFileW(Wide(path), GENERIC_WRITE, kShareAll, nullptr, OPEN_EXISTING,
                                FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file) return Failed();
  LARGE_INTEGER at{};
  at.QuadPart = static_cast<LONGLONG>(size);
  if (!::SetFilePointerEx(file.Get(), at, nullptr, FILE_BEGIN)) return Failed();
  return ::SetEndOfFile(file.Get()) != FALSE || Failed();
}

std::vector<FileEntry> Win32FileSystem::List(const Text& folder, const Text& pattern) noexcept {
  return NoThrow(std::vector<FileEntry>(), [&] {
    std::vector<FileEntry> entries;
    Text query = folder;
    if (!query.empty() && query.back() != u'\\' && query.back() != u'/') query += u'\\';
    query += pattern;
    WIN32_FIND_DATAW found{};
    win32::UniqueFindHandle search(::FindFirstFileW(Wide(query), &found));
    if (!search) return entries;
    do {
      Text name = FromWide(found.cFileName);
      if (name == u"." || name == u"..") continue;
      FileEntry entry;
      entry.name = std::move(name);
      entry.isFolder = (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
      entry.size = (static_cast<std::uint64_t>(found.nFileSizeHigh) << 32) | found.nFileSizeLow;
      entry.modified = ToLocalDateTime(found.ftLastWriteTime);
      entries.push_back(std::move(entry));
    } while (::FindNextFileW(search.Get(), &found));
    return entries;
  });
}

bool Win32FileSystem::SetCurrentFolder(const Text& path) noexcept {
  return ::SetCurrentDirectoryW(Wide(path)) != FALSE;
}

}  // namespace platform
