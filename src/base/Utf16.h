#pragma once
// Byte codecs for the product's text files. UTF-16 LE units are taken exactly as
// they stand, unpaired surrogates and stray single bytes included, so a read and a
// write of the same content give back the same bytes.
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "base/Text.h"

namespace base {

inline constexpr std::string_view kUtf16Bom = "\xFF\xFE";

struct Utf16Content {
  bool hasBom = false;
  Text units;
  std::optional<unsigned char> oddByte;  // a trailing byte that makes no whole unit
};

Utf16Content DecodeUtf16Le(std::string_view bytes);
// Appends the whole units of `bytes` to `units`, looking for no byte-order mark, and
// returns the bytes they took: all of them but an odd last byte.
std::size_t AppendUtf16Le(std::string_view bytes, Text& units);
std::string EncodeUtf16Le(TextView units);
std::string EncodeUtf16Le(const Utf16Content& content);

bool HasUtf16Bom(std::string_view bytes);

// Windows-1252, the ANSI code page of the profile files a fresh system creates.
Text DecodeCp1252(std::string_view bytes);
std::string EncodeCp1252(TextView text);  // unmappable units become '?'

}  // namespace base
