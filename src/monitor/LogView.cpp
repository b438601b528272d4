#include "monitor/LogView.h"

#include <algorithm>

#include "base/Utf16.h"

namespace monitor {

namespace {

// The line as the view takes it: cut at the first NUL, blanks trimmed.
Text Cleaned(TextView piece) { return base::Trim(base::CutAtNul(piece)); }

// From the last piece upward, the non-blank lines, newest first. `first` is the
// index of the first piece known to be a whole line.
std::vector<Text> TakeNewest(const std::vector<Text>& pieces, std::size_t first, std::size_t count,
                             const EveryFifthLine& pause) {
  std::vector<Text> lines;
  for (std::size_t k = pieces.size(); k > first && lines.size() < count; --k) {
    Text line = Cleaned(pieces[k - 1]);
    if (line.empty()) continue;
    lines.push_back(std::move(line));
    if (pause && lines.size() % 5 == 0) pause();
  }
  return lines;
}

std::size_t CountNonBlank(const std::vector<Text>& pieces, std::size_t first, std::size_t enough) {
  std::size_t n = 0;
  for (std::size_t k = pieces.size(); k > first && n < enough; --k)
    if (!Cleaned(pieces[k - 1]).empty()) ++n;
  return n;
}

Text DecodeUnits(const std::string& bytes) {
  Text units(bytes.size() / 2, u'\0');
  for (std::size_t i = 0; i < units.size(); ++i) {
    units[i] = static_cast<char16_t>(static_cast<unsigned char>(bytes[2 * i]) |
                                     (static_cast<unsigned char>(bytes[2 * i + 1]) << 8));
  }
  return units;
}

}  // namespace

std::vector<Text> SplitAtCrLf(TextView units) {
  std::vector<Text> pieces;
  std::size_t start = 0;
  for (std::size_t i = 0; i + 1 < units.size(); ++i) {
    if (units[i] == u'\r' && units[i + 1] == u'\n') {
      pieces.emplace_back(units.substr(start, i - start));
      start = i + 2;
      ++i;
    }
  }
  pieces.emplace_back(units.substr(start));
  return pieces;
}

std::optional<std::vector<Text>> ReadNewestLinesWhole(platform::IFileSystem& fs, const Text& path,
                                                      std::size_t count) {
  auto bytes = fs.ReadAll(path);
  if (!bytes) return std::nullopt;
  Text units = base::DecodeUtf16Le(*bytes).units;
  if (units.empty()) return std::vector<Text>{};
  return TakeNewest(SplitAtCrLf(units), 0, count, {});
}

std::optional<std::vector<Text>> ReadNewestLines(platform::IFileSystem& fs, const Text& path,
                                                 std::size_t count, const EveryFifthLine& pause,
                                                 std::size_t chunkBytes) {
  const auto size = fs.FileSize(path);
  if (!size) return std::nullopt;
  // Units stand at even offsets from the first byte, with or without the mark (it is
  // one unit itself); a trailing odd byte makes no unit.
  const std::uint64_t end = *size & ~static_cast<std::uint64_t>(1);
  if (end == 0) return std::vector<Text>{};

  std::uint64_t chunk = std::max<std::uint64_t>(2, chunkBytes & ~static_cast<std::size_t>(1));
  std::uint64_t from = end;
  Text tail;
  for (;;) {
    const std::uint64_t take = std::min<std::uint64_t>(chunk, from);
    from -= take;
    auto bytes = fs.ReadRange(path, from, static_cast<std::size_t>(take));
    if (!bytes || bytes->size() != take) return std::nullopt;
    tail.insert(0, DecodeUnits(*bytes));

    const bool atStart = from == 0;
    if (atStart && !tail.empty() && tail.front() == static_cast<char16_t>(0xFEFF)) tail.erase(0, 1);
    const std::vector<Text> pieces = SplitAtCrLf(tail);
    // Short of the file's start, the first piece may be the end of a longer line.
    const std::size_t first = atStart ? 0 : 1;
    if (atStart || CountNonBlank(pieces, first, count) >= count)
      return TakeNewest(pieces, first, count, pause);
    chunk *= 2;
  }
}

std::optional<LogRow> ParseLogLine(TextView line) {
  const std::size_t colon = base::InStr(line, u":");
  if (colon == 0) return std::nullopt;
  LogRow row;
  // The stretch before the colon, less the blank the writers put in front of it.
  row.type = colon >= 2 ? base::Left(line, colon - 2) : Text();
  const std::size_t typeLength = row.type.size();
  row.time = base::Mid(line, typeLength + 3, 21);
  row.message = base::Mid(line, typeLength + 25);
  if (!row.message.empty() && row.message.back() == u'\r') row.message.pop_back();
  row.error = base::InStr(row.type, u"Error") != 0;
  return row;
}

}  // namespace monitor
