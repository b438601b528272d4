#pragma once
// The product's text files as a test writes and reads them: UTF-16 LE with a byte-order
// mark and CR LF (what the monitor and the engine write), or ANSI (what Windows makes of
// a profile file that did not exist).
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace e2e {

using Lines = std::vector<std::wstring>;

bool WriteUtf16File(const std::filesystem::path& file, const Lines& lines);
bool WriteAnsiFile(const std::filesystem::path& file, const Lines& lines);
// The file's bytes; empty when it cannot be read.
std::string FileBytes(const std::filesystem::path& file);
// Lines without their CR LF. A file without a byte-order mark is read as ANSI.
// Nothing when the file cannot be read.
std::optional<Lines> ReadTextFile(const std::filesystem::path& file);

// Through the system's own profile functions, as the monitor reads them.
std::wstring ReadIni(const std::filesystem::path& file, const std::wstring& section,
                     const std::wstring& key);

// Lines of `lines` equal to `line`.
int CountLine(const Lines& lines, const std::wstring& line);

// Text in a code page (UTF-8 by default, for the test's own messages).
std::string Narrow(const std::wstring& w, unsigned codePage = 65001);
inline std::string Utf8(const std::wstring& w) { return Narrow(w); }

}  // namespace e2e
