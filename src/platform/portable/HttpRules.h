#pragma once
// The parts of the request object that need no network: the query encoding, the
// report's line filter, the https:// address rule and the bodies of the requests as
// they go over the wire. The Windows object and the fakes share them.
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/Text.h"

namespace platform {

using base::Text;

// UTF-8, then every byte outside A-Z a-z 0-9 - . _ ~ as %XX (capitals).
Text PercentEncode(const Text& value);
// Control characters (below 32, and 127) dropped, tabs kept; the value behind every
// "password=" and "password:" (any case) up to the next blank, "&" or ";" masked as
// "********".
Text FilterLogLine(const Text& line);

struct HttpsAddress {
  Text host;
  unsigned short port = 443;
  Text basePath;  // "" or "/prefix", without a trailing "/"
};
// "https://host[:port][/prefix]" (the scheme in any case); nullopt for anything else,
// http:// included: nothing is ever sent in clear.
std::optional<HttpsAddress> ParseHttpsAddress(const Text& address);

// application/x-www-form-urlencoded: name=value pairs joined by "&", the values
// percent-encoded, as UTF-8 bytes.
std::string FormBody(const std::vector<std::pair<Text, Text>>& fields);

// The paths of the requests the objects make.
inline constexpr char16_t kLoginPath[] = u"/cgi-bin/login";
inline constexpr char16_t kStatusPath[] = u"/cgi-bin/get_account_status?";
inline constexpr char16_t kFeedbackPath[] = u"/cgi-bin/feedback";
// The size of one write of the report's upload; a progress event follows each.
inline constexpr std::size_t kUploadChunk = 4096;

// A login reply is good when its first word is "OK" (any case).
bool IsLoginAccepted(const Text& reply);

}  // namespace platform
