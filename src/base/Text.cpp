#include "base/Text.h"

#include <cmath>
#include <cstdlib>

namespace base {

Text FromUtf8(std::string_view s) {
  Text out;
  out.reserve(s.size());
  for (size_t i = 0; i < s.size();) {
    unsigned char c = static_cast<unsigned char>(s[i]);
    char32_t cp = 0xFFFD;
    size_t len = 1;
    if (c < 0x80) {
      cp = c;
    } else if ((c >> 5) == 0x6 && i + 1 < s.size()) {
      cp = ((c & 0x1F) << 6) | (static_cast<unsigned char>(s[i + 1]) & 0x3F);
      len = 2;
    } else if ((c >> 4) == 0xE && i + 2 < s.size()) {
      cp = ((c & 0x0F) << 12) | ((static_cast<unsigned char>(s[i + 1]) & 0x3F) << 6) |
           (static_cast<unsigned char>(s[i + 2]) & 0x3F);
      len = 3;
    } else if ((c >> 3) == 0x1E && i + 3 < s.size()) {
      cp = ((c & 0x07) << 18) | ((static_cast<unsigned char>(s[i + 1]) & 0x3F) << 12) |
           ((static_cast<unsigned char>(s[i + 2]) & 0x3F) << 6) |
           (static_cast<unsigned char>(s[i + 3]) & 0x3F);
      len = 4;
    }
    i += len;
    if (cp >= 0x10000) {
      cp -= 0x10000;
      out.push_back(static_cast<char16_t>(0xD800 + (cp >> 10)));
      out.push_back(static_cast<char16_t>(0xDC00 + (cp & 0x3FF)));
    } else {
      out.push_back(static_cast<char16_t>(cp));
    }
  }
  return out;
}

std::string ToUtf8(TextView t) {
  std::string out;
  out.reserve(t.size());
  for (size_t i = 0; i < t.size(); ++i) {
    char32_t cp = t[i];
    if (cp >= 0xD800 && cp <= 0xDBFF && i + 1 < t.size() && t[i + 1] >= 0xDC00 &&
        t[i + 1] <= 0xDFFF) {
      cp = 0x10000 + ((cp - 0xD800) << 10) + (t[i + 1] - 0xDC00);
      ++i;
    } else if (cp >= 0xD800 && cp <= 0xDFFF) {
      cp = 0xFFFD;
    }
    if (cp < 0x80) {
      out.push_back(static_cast<char>(cp));
    } else if (cp < 0x800) {
      out.push_back(static_cast<char>(0xC0 | (cp >> 6)));
      out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
    } else if (cp < 0x10000) {
      out.push_back(static_cast<char>(0xE0 | (cp >> 12)));
      out.push_back(static_cast<char>(0x80 | ((cp >> 6) & 0x3F)));
      out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
    } else {
      out.push_back(static_cast<char>(0xF0 | (cp >> 18)));
      out.push_back(static_cast<char>(0x80 | ((cp >> 12) & 0x3F)));
      out.push_back(static_cast<char>(0x80 | ((cp >> 6) & 0x3F)));
      out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
    }
  }
  return out;
}

Text FromLatin1(std::string_view bytes) {
  Text out;
  out.reserve(bytes.size());
  for (char c : bytes) out.push_back(static_cast<unsigned char>(c));
  return out;
}

Text LTrim(TextView t) {
  size_t b = 0;
  while (b < t.size() && t[b] == u' ') ++b;
  return Text(t.substr(b));
}

Text RTrim(TextView t) {
  size_t e = t.size();
  while (e > 0 && t[e - 1] == u' ') --e;
  return Text(t.substr(0, e));
}

Text Trim(TextView t) {
  size_t b = 0, e = t.size();
  while (b < e && t[b] == u' ') ++b;
  while (e > b && t[e - 1] == u' ') --e;
  return Text(t.substr(b, e - b));
}

bool IsBlank(TextView t) {
  for (char16_t c : t)
    if (c != u' ') return false;
  return true;
}

namespace {
char16_t LowerUnit(char16_t c) {
  if (c >= u'A' && c <= u'Z') return c + 32;
  if (c >= 0xC0 && c <= 0xDE && c != 0xD7) return c + 32;
  if (c >= 0x391 && c <= 0x3AB && c != 0x3A2) return c + 32;  // Greek
  if (c >= 0x410 && c <= 0x42F) return c + 32;                // Cyrillic
  if (c >= 0x400 && c <= 0x40F) return c + 80;
  if (c >= 0x100 && c <= 0x17F && c != 0x130 && c != 0x131 && c != 0x138 && c != 0x149 &&
      c != 0x178 && c != 0x17F) {
    bool evenUpper = (c < 0x139) || (c >= 0x14A && c < 0x179);
    if (evenUpper ? (c % 2 == 0) : (c % 2 == 1)) return c + 1;
  }
  if (c == 0x178) return 0xFF;
  return c;
}
char16_t UpperUnit(char16_t c) {
  if (c >= u'a' && c <= u'z') return c - 32;
  if (c >= 0xE0 && c <= 0xFE && c != 0xF7) return c - 32;
  if (c == 0xFF) return 0x178;
  if (c >= 0x3B1 && c <= 0x3CB && c != 0x3C2) return c - 32;
  if (c >= 0x430 && c <= 0x44F) return c - 32;
  if (c >= 0x450 && c <= 0x45F) return c - 80;
  if (c >= 0x100 && c <= 0x17F && c != 0x130 && c != 0x131 && c != 0x138 && c != 0x149 &&
      c != 0x178 && c != 0x17F) {
    bool evenUpper = (c < 0x139) || (c >= 0x14A && c < 0x179);
    if (evenUpper ? (c % 2 == 1) : (c % 2 == 0)) return c - 1;
  }
  return c;
}
}  // namespace

Text ToLower(TextView t) {
  Text out(t);
  for (auto& c : out) c = LowerUnit(c);
  return out;
}

Text ToUpper(TextView t) {
  Text out(t);
  for (auto& c : out) c = UpperUnit(c);
  return out;
}

bool EqualsNoCase(TextView a, TextView b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i)
    if (LowerUnit(a[i]) != LowerUnit(b[i])) return false;
  return true;
}

bool StartsWith(TextView t, TextView p) {
  return t.size() >= p.size() && t.substr(0, p.size()) == p;
}
bool EndsWith(TextView t, TextView s) {
  return t.size() >= s.size() && t.substr(t.size() - s.size()) == s;
}

Text Left(TextView t, size_t n) { return Text(t.substr(0, std::min(n, t.size()))); }
Text Right(TextView t, size_t n) {
  n = std::min(n, t.size());
  return Text(t.substr(t.size() - n));
}
Text Mid(TextView t, size_t start1, size_t count) {
  if (start1 == 0) start1 = 1;
  if (start1 > t.size()) return Text();
  return Text(t.substr(start1 - 1, count));
}

size_t InStr(TextView t, TextView f, size_t start1) {
  if (start1 == 0) start1 = 1;
  if (start1 > t.size() + 1) return 0;
  if (f.empty()) return start1;
  size_t p = t.find(f, start1 - 1);
  return p == TextView::npos ? 0 : p + 1;
}

size_t InStrNoCase(TextView t, TextView f, size_t start1) {
  Text lt = ToLower(t), lf = ToLower(f);
  return InStr(lt, lf, start1);
}

std::vector<Text> Split(TextView t, TextView sep) {
  std::vector<Text> out;
  if (t.empty()) return out;
  if (sep.empty()) {
    out.emplace_back(t);
    return out;
  }
  size_t start = 0;
  for (;;) {
    size_t p = t.find(sep, start);
    if (p == TextView::npos) {
      out.emplace_back(t.substr(start));
      break;
    }
    out.emplace_back(t.substr(start, p - start));
    start = p + sep.size();
  }
  return out;
}

Text Join(const std::vector<Text>& items, TextView sep) {
  Text out;
  for (size_t i = 0; i < items.size(); ++i) {
    if (i) out.append(sep);
    out.append(items[i]);
  }
  return out;
}

Text Replace(TextView t, TextView from, TextView to) {
  if (from.empty()) return Text(t);
  Text out;
  size_t start = 0;
  for (;;) {
    size_t p = t.find(from, start);
    if (p == TextView::npos) {
      out.append(t.substr(start));
      return out;
    }
    out.append(t.substr(start, p - start));
    out.append(to);
    start = p + from.size();
  }
}

Text CutAtNul(TextView t) {
  size_t p = t.find(u'\0');
  return Text(p == TextView::npos ? t : t.substr(0, p));
}

bool ParseLong(TextView t, long long& out) {
  Text s = Trim(t);
  if (s.empty()) return false;
  size_t i = 0;
  bool neg = false;
  if (s[0] == u'+' || s[0] == u'-') {
    neg = s[0] == u'-';
    i = 1;
  }
  if (i >= s.size()) return false;
  long long v = 0;
  for (; i < s.size(); ++i) {
    if (s[i] < u'0' || s[i] > u'9') return false;
    if (v > (9223372036854775807LL - 9) / 10) return false;
    v = v * 10 + (s[i] - u'0');
  }
  out = neg ? -v : v;
  return true;
}

double LeadingNumber(TextView t) {
  std::string digits;
  size_t i = 0;
  while (i < t.size() && (t[i] == u' ' || t[i] == u'\t')) ++i;
  if (i < t.size() && (t[i] == u'-' || t[i] == u'+')) digits.push_back(static_cast<char>(t[i++]));
  bool dot = false;
  for (; i < t.size(); ++i) {
    char16_t c = t[i];
    if (c >= u'0' && c <= u'9') {
      digits.push_back(static_cast<char>(c));
    } else if (c == u'.' && !dot) {
      dot = true;
      digits.push_back('.');
    } else if (c == u' ') {
      continue;
    } else {
      break;
    }
  }
  if (digits.empty()) return 0;
  return std::strtod(digits.c_str(), nullptr);
}

bool IsNumeric(TextView t) {
  Text s = Trim(t);
  if (s.empty()) return false;
  size_t i = 0;
  if (s[0] == u'+' || s[0] == u'-') i = 1;
  bool digit = false, dot = false;
  for (; i < s.size(); ++i) {
    if (s[i] >= u'0' && s[i] <= u'9') {
      digit = true;
    } else if (s[i] == u'.' && !dot) {
      dot = true;
    } else {
      return false;
    }
  }
  return digit;
}

Text FromNumber(long long v) {
  std::string s = std::to_string(v);
  return Text(s.begin(), s.end());
}

Text PadLeft(TextView t, size_t width, char16_t fill) {
  Text out(t);
  if (out.size() < width) out.insert(0, width - out.size(), fill);
  return out;
}

}  // namespace base
