#pragma once
// UTF-16 LE text files by lines, over any IFileSystem. Lines end in CR LF; a reader
// also ends a line at a lone LF. Units are kept exactly: what a single-byte writer put
// into the file reads back as the units its bytes make, and writes back the same.
#include <optional>
#include <string_view>
#include <vector>

#include "base/Text.h"
#include "platform/FileSystem.h"
#include "platform/WholeFile.h"

namespace platform {

class TextFile {
 public:
  // The file's lines without their terminators; nullopt when it cannot be read.
  // A byte-order mark is skipped; a file without one is read as UTF-16 all the same.
  static std::optional<std::vector<Text>> ReadLines(IFileSystem& fs, const Text& path);
  // The whole content as units, BOM removed (a trailing odd byte is dropped).
  static std::optional<Text> ReadText(IFileSystem& fs, const Text& path);
  // ReadLines' first line alone ("" for a file without lines), read from the start a
  // piece at a time: a schedule of fifty megabytes costs what its first line costs.
  static std::optional<Text> ReadFirstLine(IFileSystem& fs, const Text& path);
  // How many lines ReadLines would give, counted without making them.
  static std::optional<std::size_t> CountLines(IFileSystem& fs, const Text& path);
  // A new file holding only the byte-order mark; with overwrite false an existing
  // file is left alone (and counts as success).
  static WriteResult Create(IFileSystem& fs, const Text& path, bool overwrite);
  // BOM + each line + CR LF, the whole file all or nothing (WriteWholeFile).
  static WriteResult WriteLines(IFileSystem& fs, const Text& path, const std::vector<Text>& lines,
                                bool evenReadOnly = false);
  // The bytes WriteLines puts into a file.
  static std::string Encode(const std::vector<Text>& lines);
  // line + CR LF at the end; a missing file is created with its BOM first. The line
  // is in the file whole or not at all (AppendWhole).
  static WriteResult AppendLine(IFileSystem& fs, const Text& path, base::TextView line);
  // Raw single bytes at the end (how the log separator is written), whole or not at all.
  static WriteResult AppendBytes(IFileSystem& fs, const Text& path, std::string_view bytes);
  // Splits decoded units into lines the way ReadLines does.
  static std::vector<Text> SplitLines(base::TextView units);
};

}  // namespace platform
