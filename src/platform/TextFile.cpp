#include "platform/TextFile.h"

#include "base/Utf16.h"

namespace platform {

std::vector<Text> TextFile::SplitLines(base::TextView units) {
  std::vector<Text> lines;
  size_t start = 0;
  for (size_t i = 0; i < units.size(); ++i) {
    if (units[i] != u'\n') continue;
    size_t end = (i > start && units[i - 1] == u'\r') ? i - 1 : i;
    lines.emplace_back(units.substr(start, end - start));
    start = i + 1;
  }
  if (start < units.size()) lines.emplace_back(units.substr(start));
  return lines;
}

std::optional<Text> TextFile::ReadText(IFileSystem& fs, const Text& path) {
  auto bytes = fs.ReadAll(path);
  if (!bytes) return std::nullopt;
  return base::DecodeUtf16Le(*bytes).units;
}

std::optional<std::vector<Text>> TextFile::ReadLines(IFileSystem& fs, const Text& path) {
  auto units = ReadText(fs, path);
  if (!units) return std::nullopt;
  return SplitLines(*units);
}

namespace {

// The byte offset of the first LF unit at or after unit offset `from` (both counted
// from the file's start, units at even offsets), or npos.
size_t FindLineFeed(std::string_view bytes, size_t from) {
  for (size_t i = from; i + 1 < bytes.size(); i += 2)
    if (bytes[i] == '\n' && bytes[i + 1] == '\0') return i;
  return std::string_view::npos;
}

}  // namespace

std::optional<Text> TextFile::ReadFirstLine(IFileSystem& fs, const Text& path) {
  std::string bytes;
  std::size_t piece = 4096;
  for (;;) {
    auto more = fs.ReadRange(path, bytes.size(), piece);
    if (!more) return std::nullopt;
    const size_t searched = bytes.size() & ~size_t{1};
    bytes += *more;
    const size_t lf = FindLineFeed(bytes, searched);
    const bool atEnd = more->size() < piece;
    if (lf != std::string_view::npos || atEnd) {
      const std::string_view head = lf == std::string_view::npos
                                        ? std::string_view(bytes)
                                        : std::string_view(bytes).substr(0, lf + 2);
      const auto lines = SplitLines(base::DecodeUtf16Le(head).units);
      return lines.empty() ? Text() : lines.front();
    }
    // A first line of megabytes is read in pieces that double, not in thousands.
    piece *= 2;
  }
}

std::optional<std::size_t> TextFile::CountLines(IFileSystem& fs, const Text& path) {
  auto bytes = fs.ReadAll(path);
  if (!bytes) return std::nullopt;
  const std::string_view all(*bytes);
  const size_t first = base::HasUtf16Bom(all) ? 2 : 0;
  const size_t end = first + (all.size() - first) / 2 * 2;  // an odd last byte is no unit
  std::size_t lines = 0;
  size_t start = first;
  for (size_t lf = FindLineFeed(all.substr(0, end), first); lf != std::string_view::npos;
       lf = FindLineFeed(all.substr(0, end), lf + 2)) {
    ++lines;
    start = lf + 2;
  }
  return lines + (start < end ? 1 : 0);
}

namespace {

// Only a file that is surely not there may be made anew: making it truncates. An
// existence test that fails for a file that is there (a passing error of the system)
// must not cost the file, so a file whose size can be read counts as there.
bool SurelyMissing(IFileSystem& fs, const Text& path) {
  return !fs.FileExists(path) && !fs.FileSize(path);
}

}  // namespace

WriteResult TextFile::Create(IFileSystem& fs, const Text& path, bool overwrite) {
  if (!overwrite && !SurelyMissing(fs, path)) return WriteResult::Success();
  return WriteWholeFile(fs, path, base::kUtf16Bom);
}

std::string TextFile::Encode(const std::vector<Text>& lines) {
  std::string bytes(base::kUtf16Bom);
  for (const auto& line : lines) {
    bytes += base::EncodeUtf16Le(line);
    bytes += base::EncodeUtf16Le(u"\r\n");
  }
  return bytes;
}

WriteResult TextFile::WriteLines(IFileSystem& fs, const Text& path, const std::vector<Text>& lines,
                                 bool evenReadOnly) {
  return WriteWholeFile(fs, path, Encode(lines), evenReadOnly);
}

WriteResult TextFile::AppendLine(IFileSystem& fs, const Text& path, base::TextView line) {
  Text withEnd(line);
  withEnd += u"\r\n";
  // A new file gets its mark in the same write as its first line.
  std::string bytes = SurelyMissing(fs, path) ? std::string(base::kUtf16Bom) : std::string();
  bytes += base::EncodeUtf16Le(withEnd);
  return AppendWhole(fs, path, bytes);
}

WriteResult TextFile::AppendBytes(IFileSystem& fs, const Text& path, std::string_view bytes) {
  return AppendWhole(fs, path, bytes);
}

}  // namespace platform
