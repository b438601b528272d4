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
