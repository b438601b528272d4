#include "platform/TextFile.h"

#include <algorithm>

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

TextLineReader::TextLineReader(IFileSystem& fs, Text path, std::size_t pieceBytes)
    : fs_(fs), path_(std::move(path)), pieceBytes_(std::max<std::size_t>(pieceBytes, 2)) {}

bool TextLineReader::ReadPiece() {
  auto more = fs_.ReadRange(path_, offset_, pieceBytes_);
  if (!more) {
    failed_ = atEnd_ = true;
    return false;
  }
  pieceRead_ = true;
  offset_ += more->size();
  atEnd_ = more->size() < pieceBytes_;
  std::string_view bytes(*more);
  std::string joined;
  if (!carry_.empty()) {
    joined = carry_ + *more;
    carry_.clear();
    bytes = joined;
  }
  if (!markChecked_) {
    // The mark is told only from the file's first two bytes, whichever piece they came in.
    if (bytes.size() < 2 && !atEnd_) {
      carry_.assign(bytes);
      return true;
    }
    markChecked_ = true;
    if (base::HasUtf16Bom(bytes)) bytes.remove_prefix(2);
  }
  // Everything before pos_ has been given out: drop it before the units grow.
  units_.erase(0, pos_);
  searched_ -= pos_;
  pos_ = 0;
  const size_t used = base::AppendUtf16Le(bytes, units_);
  // A unit cut by the piece's end waits for its second byte; at the file's end an odd
  // last byte is no unit, as for ReadLines.
  if (used < bytes.size() && !atEnd_) carry_.assign(bytes.substr(used));
  return true;
}

std::optional<Text> TextLineReader::Next() {
  for (;;) {
    const size_t lf = units_.find(u'\n', searched_);
    if (lf != Text::npos) {
      const size_t end = (lf > pos_ && units_[lf - 1] == u'\r') ? lf - 1 : lf;
      Text line = units_.substr(pos_, end - pos_);
      pos_ = searched_ = lf + 1;
      return line;
    }
    searched_ = units_.size();
    if (atEnd_) {
      if (failed_ || pos_ >= units_.size()) return std::nullopt;
      Text line = units_.substr(pos_);
      pos_ = searched_ = units_.size();
      return line;
    }
    ReadPiece();
  }
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
