#pragma once
// Writes that a failure or a crash cannot leave half done, over any IFileSystem.
//
// A whole file goes first to a temporary file beside it ("<name>.qvtmp" in the same
// folder), is flushed to the disk and then takes the place of the original in one
// step: a reader (the engine, the application) sees the old content or the new, and a
// failure at any point leaves the old bytes. When the replace is refused because
// another program holds the file without delete sharing, the file is written over in
// place as the other programs do it, and the result says so. An append that fails is
// cut back to the length the file had before it, so a line is in the file whole or
// not at all.
#include <cstdint>
#include <string_view>

#include "base/Text.h"
#include "platform/FileSystem.h"

namespace platform {

struct WriteResult {
  bool ok = false;
  // The replace was refused (the file is held open by another program): the content
  // was written over the file in place instead.
  bool inPlace = false;
  // The system's words when `ok` is false.
  Text reason;

  explicit operator bool() const { return ok; }
  static WriteResult Success() { return WriteResult{true, false, Text()}; }
  static WriteResult Failure(Text why);
};

// The temporary file a whole write of `path` goes through.
Text TemporaryFileFor(base::TextView path);
inline constexpr char16_t kTemporaryPattern[] = u"*.qvtmp";

// The whole file, all or nothing. `evenReadOnly` replaces a read-only file too (its
// mark goes with it); otherwise a read-only file is refused and left as it is.
[[nodiscard]] WriteResult WriteWholeFile(IFileSystem& fs, const Text& path, std::string_view bytes,
                                         bool evenReadOnly = false);

// `bytes` at the end of the file, created when missing. On failure the file is cut
// back to its old length (removed again when the append had created it).
[[nodiscard]] WriteResult AppendWhole(IFileSystem& fs, const Text& path, std::string_view bytes);

// Removes the temporary files that a crash in the middle of a whole write left in
// `folder`; returns how many were removed.
int RemoveLeftoverTemporaries(IFileSystem& fs, const Text& folder);

}  // namespace platform
