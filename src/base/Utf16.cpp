#include "base/Utf16.h"

namespace base {

bool HasUtf16Bom(std::string_view bytes) { return bytes.substr(0, 2) == kUtf16Bom; }

std::size_t AppendUtf16Le(std::string_view bytes, Text& units) {
  units.reserve(units.size() + bytes.size() / 2);
  std::size_t i = 0;
  for (; i + 1 < bytes.size(); i += 2)
    units.push_back(static_cast<char16_t>(static_cast<unsigned char>(bytes[i]) |
                                          (static_cast<unsigned char>(bytes[i + 1]) << 8)));
  return i;
}

Utf16Content DecodeUtf16Le(std::string_view bytes) {
  Utf16Content c;
  if (HasUtf16Bom(bytes)) {
    c.hasBom = true;
    bytes.remove_prefix(2);
  }
  const std::size_t used = AppendUtf16Le(bytes, c.units);
  if (used < bytes.size()) c.oddByte = static_cast<unsigned char>(bytes[used]);
  return c;
}

std::string EncodeUtf16Le(TextView units) {
  std::string out;
  out.resize(units.size() * 2);
  for (size_t i = 0; i < units.size(); ++i) {
    out[2 * i] = static_cast<char>(units[i] & 0xFF);
    out[2 * i + 1] = static_cast<char>(units[i] >> 8);
  }
  return out;
}

std::string EncodeUtf16Le(const Utf16Content& c) {
  std::string out;
  if (c.hasBom) out.append(kUtf16Bom);
  out.append(EncodeUtf16Le(c.units));
  if (c.oddByte) out.push_back(static_cast<char>(*c.oddByte));
  return out;
}

namespace {
// 0x80..0x9F of Windows-1252; 0 marks the five undefined bytes, kept as themselves.
constexpr char16_t kCp1252High[32] = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};
}  // namespace

Text DecodeCp1252(std::string_view bytes) {
  Text out;
  out.reserve(bytes.size());
  for (char ch : bytes) {
    unsigned char b = static_cast<unsigned char>(ch);
    if (b >= 0x80 && b <= 0x9F && kCp1252High[b - 0x80] != 0) {
      out.push_back(kCp1252High[b - 0x80]);
    } else {
      out.push_back(b);
    }
  }
  return out;
}

std::string EncodeCp1252(TextView text) {
  std::string out;
  out.reserve(text.size());
  for (char16_t u : text) {
    if (u < 0x80 || (u >= 0xA0 && u <= 0xFF)) {
      out.push_back(static_cast<char>(u));
      continue;
    }
    char found = '?';
    for (int i = 0; i < 32; ++i) {
      if (kCp1252High[i] == u && u != 0) {
        found = static_cast<char>(0x80 + i);
        break;
      }
    }
    if (found == '?' && u >= 0x80 && u <= 0x9F && kCp1252High[u - 0x80] == 0)
      found = static_cast<char>(u);
    out.push_back(found);
  }
  return out;
}

}  // namespace base
