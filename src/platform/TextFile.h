#pragma once
// UTF-16 LE text files by lines, over any IFileSystem. Lines end in CR LF; a reader
// also ends a line at a lone LF. Units are kept exactly: what a single-byte writer put
// into the file reads back as the units its bytes make, and writes back the same.
#include <cstdint>
#include <optional>
#include <string>
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

// The lines of a file one after another, as ReadLines gives them, read from the start a
// piece at a time: no more of the file is held than one piece and the line being made.
// A file no larger than a piece is read in one call, as ReadLines reads it.
class TextLineReader {
 public:
  static constexpr std::size_t kPieceBytes = std::size_t{512} << 10;

  TextLineReader(IFileSystem& fs, Text path, std::size_t pieceBytes = kPieceBytes);
  // The next line without its end; nullopt after the last one, or when a piece could not
  // be read (the unfinished line is then dropped).
  std::optional<Text> Next();
  // The first piece could not be read: the file is missing or refused.
  bool Unreadable() const { return failed_ && offset_ == 0; }
  // A later piece could not be read: the lines stopped before the end of the file.
  bool CutShort() const { return failed_ && offset_ > 0; }
  // Whether a piece was read since the last call (a caller's moment to let others in).
  bool TakePieceRead() {
    const bool read = pieceRead_;
    pieceRead_ = false;
    return read;
  }

 private:
  bool ReadPiece();

  IFileSystem& fs_;
  Text path_;
  std::size_t pieceBytes_;
  std::uint64_t offset_ = 0;
  Text units_;  // decoded units not yet given out, from pos_ on
  std::size_t pos_ = 0;
  std::size_t searched_ = 0;  // units_ holds no line feed before this index
  std::string carry_;         // bytes of a unit (or of the mark) that the last piece cut
  bool markChecked_ = false;
  bool atEnd_ = false;
  bool failed_ = false;
  bool pieceRead_ = false;
};

}  // namespace platform
