#include "Files.h"

#include <windows.h>

#include <algorithm>
#include <fstream>
#include <iterator>

namespace e2e {

namespace {

std::optional<std::string> ReadBytes(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  if (!in) return std::nullopt;
  return std::string(std::istreambuf_iterator<char>(in), {});
}

}  // namespace

std::string FileBytes(const std::filesystem::path& file) { return ReadBytes(file).value_or(""); }

namespace {

bool WriteBytes(const std::filesystem::path& file, const std::string& bytes) {
  std::error_code ec;
  std::filesystem::create_directories(file.parent_path(), ec);
  std::ofstream out(file, std::ios::binary | std::ios::trunc);
  out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  return static_cast<bool>(out);
}

Lines SplitLines(const std::wstring& text) {
  Lines lines;
  std::wstring::size_type start = 0;
  while (start < text.size()) {
    auto end = text.find(L"\r\n", start);
    if (end == std::wstring::npos) {
      lines.push_back(text.substr(start));
      break;
    }
    lines.push_back(text.substr(start, end - start));
    start = end + 2;
  }
  return lines;
}

}  // namespace

bool WriteUtf16File(const std::filesystem::path& file, const Lines& lines) {
  std::string bytes = "\xFF\xFE";
  for (const auto& line : lines) {
    for (wchar_t c : line + L"\r\n") {
      bytes.push_back(static_cast<char>(c & 0xFF));
      bytes.push_back(static_cast<char>((c >> 8) & 0xFF));
    }
  }
  return WriteBytes(file, bytes);
}

bool WriteAnsiFile(const std::filesystem::path& file, const Lines& lines) {
  std::string bytes;
  for (const auto& line : lines) bytes += Narrow(line + L"\r\n", CP_ACP);
  return WriteBytes(file, bytes);
}

std::string Narrow(const std::wstring& w, unsigned codePage) {
  const int n = WideCharToMultiByte(codePage, 0, w.data(), static_cast<int>(w.size()), nullptr, 0,
                                    nullptr, nullptr);
  std::string s(static_cast<size_t>(n), '\0');
  WideCharToMultiByte(codePage, 0, w.data(), static_cast<int>(w.size()), s.data(), n, nullptr,
                      nullptr);
  return s;
}

std::optional<Lines> ReadTextFile(const std::filesystem::path& file) {
  auto bytes = ReadBytes(file);
  if (!bytes) return std::nullopt;
  std::wstring text;
  if (bytes->size() >= 2 && (*bytes)[0] == '\xFF' && (*bytes)[1] == '\xFE') {
    for (size_t i = 2; i + 1 < bytes->size(); i += 2)
      text.push_back(static_cast<wchar_t>(static_cast<unsigned char>((*bytes)[i]) |
                                          (static_cast<unsigned char>((*bytes)[i + 1]) << 8)));
  } else if (!bytes->empty()) {
    int n =
        MultiByteToWideChar(CP_ACP, 0, bytes->data(), static_cast<int>(bytes->size()), nullptr, 0);
    text.resize(static_cast<size_t>(n));
    MultiByteToWideChar(CP_ACP, 0, bytes->data(), static_cast<int>(bytes->size()), text.data(), n);
  }
  return SplitLines(text);
}

std::wstring ReadIni(const std::filesystem::path& file, const std::wstring& section,
                     const std::wstring& key) {
  wchar_t buffer[1024] = {};
  DWORD n = GetPrivateProfileStringW(section.c_str(), key.c_str(), L"", buffer, 1024, file.c_str());
  return std::wstring(buffer, n);
}

int CountLine(const Lines& lines, const std::wstring& line) {
  return static_cast<int>(std::count(lines.begin(), lines.end(), line));
}

}  // namespace e2e
