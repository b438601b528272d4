#include "platform/portable/HttpRules.h"

namespace platform {

namespace {

bool Unreserved(unsigned char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-' ||
         c == '.' || c == '_' || c == '~';
}

bool EndsSecret(char16_t c) { return c == u' ' || c == u'&' || c == u';' || c == u'\t'; }

}  // namespace

Text PercentEncode(const Text& value) {
  static const char kHex[] = "0123456789ABCDEF";
  Text out;
  for (unsigned char c : base::ToUtf8(value)) {
    if (Unreserved(c)) {
      out.push_back(static_cast<char16_t>(c));
    } else {
      out.push_back(u'%');
      out.push_back(static_cast<char16_t>(kHex[c >> 4]));
      out.push_back(static_cast<char16_t>(kHex[c & 15]));
    }
  }
  return out;
}

Text FilterLogLine(const Text& line) {
  Text clean;
  clean.reserve(line.size());
  for (char16_t c : line) {
    if ((c < 32 && c != u'\t') || c == 127) continue;
    clean.push_back(c);
  }
  const Text lower = base::ToLower(clean);
  Text out;
  std::size_t i = 0;
  while (i < clean.size()) {
    std::size_t hit = lower.find(u"password", i);
    if (hit == Text::npos) break;
    std::size_t mark = hit + 8;
    if (mark < clean.size() && (clean[mark] == u'=' || clean[mark] == u':')) {
      std::size_t start = mark + 1;
      while (start < clean.size() && clean[start] == u' ') ++start;
      std::size_t end = start;
      while (end < clean.size() && !EndsSecret(clean[end])) ++end;
      out += clean.substr(i, start - i);
      if (end > start) out += u"********";
      i = end;
    } else {
      out += clean.substr(i, mark - i);
      i = mark;
    }
  }
  out += clean.substr(std::min(i, clean.size()));
  return out;
}

std::optional<HttpsAddress> ParseHttpsAddress(const Text& address) {
  const Text text = base::Trim(address);
  static constexpr char16_t kScheme[] = u"https://";
  if (text.size() <= 8 || !base::EqualsNoCase(text.substr(0, 8), kScheme)) return std::nullopt;
  Text rest = text.substr(8);
  HttpsAddress result;
  std::size_t slash = rest.find(u'/');
  Text authority = rest.substr(0, slash);
  if (slash != Text::npos) {
    result.basePath = rest.substr(slash);
    while (!result.basePath.empty() && result.basePath.back() == u'/') result.basePath.pop_back();
  }
  std::size_t colon = authority.rfind(u':');
  if (colon != Text::npos) {
    long long port = 0;
    Text digits = authority.substr(colon + 1);
    if (digits.empty() || !base::ParseLong(digits, port) || port < 1 || port > 65535)
      return std::nullopt;
    for (char16_t c : digits)
      if (c < u'0' || c > u'9') return std::nullopt;
    result.port = static_cast<unsigned short>(port);
    authority = authority.substr(0, colon);
  }
  if (authority.empty()) return std::nullopt;
  for (char16_t c : authority)
    if (c <= u' ' || c == u'@' || c == u'?' || c == u'#') return std::nullopt;
  result.host = authority;
  return result;
}

std::string FormBody(const std::vector<std::pair<Text, Text>>& fields) {
  std::string body;
  for (const auto& [name, value] : fields) {
    if (!body.empty()) body.push_back('&');
    body += base::ToUtf8(name);
    body.push_back('=');
    body += base::ToUtf8(PercentEncode(value));
  }
  return body;
}

bool IsLoginAccepted(const Text& reply) {
  Text t = base::Trim(reply);
  std::size_t end = 0;
  while (end < t.size() && t[end] != u' ' && t[end] != u'\r' && t[end] != u'\n') ++end;
  return base::EqualsNoCase(t.substr(0, end), u"OK");
}

}  // namespace platform
