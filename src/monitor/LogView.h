#pragma once
// The activity log as the monitor window lists it: the newest lines of the file and
// the parse of one line into type, time and message.
#include <cstddef>
#include <functional>
#include <optional>
#include <vector>

#include "base/Text.h"
#include "platform/FileSystem.h"

namespace monitor {

using base::Text;
using base::TextView;

inline constexpr std::size_t kNewestLines = 20;

// Called after every fifth line taken, so that the window stays responsive while a
// long log is read (the window sleeps a millisecond and lets events run).
using EveryFifthLine = std::function<void()>;

// The newest lines of a UTF-16 log, newest first: the units after the byte-order
// mark, split at CR LF, each cut at its first NUL and trimmed, blank ones passed over.
// The separator the log writers append as single bytes goes through as the units its
// bytes make, so it shows as one garbled line at most, and a lone LF does not end a
// line. nullopt when the file cannot be read.
//
// Only the end of the file is read, in chunks of `chunkBytes` growing backwards until
// enough whole lines are in, so the cost does not grow with the size of the log.
std::optional<std::vector<Text>> ReadNewestLines(platform::IFileSystem& fs, const Text& path,
                                                 std::size_t count = kNewestLines,
                                                 const EveryFifthLine& pause = {},
                                                 std::size_t chunkBytes = 4096);

// The same lines from the whole file read at once; what the tail reader must always
// agree with.
std::optional<std::vector<Text>> ReadNewestLinesWhole(platform::IFileSystem& fs, const Text& path,
                                                      std::size_t count = kNewestLines);

// Splits units at every CR LF pair (only the pair ends a line).
std::vector<Text> SplitAtCrLf(TextView units);

struct LogRow {
  Text type;     // the kind word with its inner blanks ("Error      ")
  Text time;     // 21 units: the stamp between two blanks
  Text message;  // the rest, from the blank behind the second colon
  bool error = false;
  bool operator==(const LogRow&) const = default;
};

// One line of the view; nullopt for a line without ":", which the view leaves out.
// The positions are those of the writers' line form: the kind word ends in a blank
// before the colon, the stamp stands between blanks, the message follows " : ".
std::optional<LogRow> ParseLogLine(TextView line);

}  // namespace monitor
