// Any bytes as the account service's reply, an address and a log line to filter.
#include "FuzzInput.h"
#include "platform/portable/HttpRules.h"
#include "account/AccountService.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const base::Text text =
      base::FromUtf8(std::string_view(reinterpret_cast<const char*>(data), size));
  const int code = account::ClassifyAccountReply(text);
  FUZZ_CHECK(code >= 0 && code <= 3);
  FUZZ_CHECK((code == 0) == text.empty());

  if (auto address = platform::ParseHttpsAddress(text)) {
    FUZZ_CHECK(!address->host.empty());
    FUZZ_CHECK(address->port > 0);
  }

  const base::Text filtered = platform::FilterLogLine(text);
  for (char16_t c : filtered) FUZZ_CHECK(c >= 32 || c == u'\t');
  const base::Text lower = base::ToLower(filtered);
  for (std::size_t at = lower.find(u"password="); at != base::Text::npos;
       at = lower.find(u"password=", at + 1)) {
    std::size_t v = at + 9;
    while (v < filtered.size() && filtered[v] == u' ') ++v;
    // Behind the mark: nothing, an end of the value, or the mask.
    FUZZ_CHECK(v >= filtered.size() || filtered[v] == u'&' || filtered[v] == u';' ||
               filtered[v] == u'\t' || filtered.compare(v, 8, u"********") == 0);
  }
  const base::Text encoded = platform::PercentEncode(text);
  for (char16_t c : encoded) FUZZ_CHECK(c < 128 && c != u' ' && c != u'&' && c != u'=');
  return 0;
}
