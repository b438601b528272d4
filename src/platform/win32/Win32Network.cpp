#include "platform/win32/Win32Network.h"

#include "platform/win32/Win32Text.h"
// Win32Text.h brings <windows.h> first.
#include <winhttp.h>

#include "platform/win32/Win32Handles.h"

#include <algorithm>
#include <string>

#include "platform/portable/HttpRules.h"

namespace platform {

namespace {

using win32::FromWide;
using win32::Wide;

constexpr std::size_t kMaxReply = 1 << 20;
constexpr char16_t kUserAgent[] = u"CorvaneMonitor/9.5.5";
// WINHTTP_FLAG_SECURE_PROTOCOL_TLS1_3, which older headers do not have.
constexpr DWORD kSecureProtocolTls13 = 0x00002000;

struct Exchange {
  bool replied = false;  // an HTTP reply came back (whatever its status)
  DWORD statusCode = 0;
  Text statusText;
  std::string body;
  Text failure;  // why no reply came
};

Text Reason(DWORD error) {
  switch (error) {
    case ERROR_WINHTTP_SECURE_FAILURE:
    case ERROR_WINHTTP_SECURE_INVALID_CA:
    case ERROR_WINHTTP_SECURE_CERT_CN_INVALID:
    case ERROR_WINHTTP_SECURE_CERT_DATE_INVALID:
    case ERROR_WINHTTP_SECURE_INVALID_CERT:
    case ERROR_WINHTTP_SECURE_CERT_REVOKED:
    case ERROR_WINHTTP_SECURE_CHANNEL_ERROR:
      return u"the server's certificate was not accepted (" + base::FromNumber(error) + u")";
    case ERROR_WINHTTP_CANNOT_CONNECT: return u"the server could not be reached";
    case ERROR_WINHTTP_TIMEOUT: return u"the server did not answer in time";
    case ERROR_WINHTTP_NAME_NOT_RESOLVED: return u"the server's name is unknown";
    case ERROR_WINHTTP_CONNECTION_ERROR: return u"the connection was broken";
    default: return u"the request failed (" + base::FromNumber(error) + u")";
  }
}

Text QueryText(HINTERNET request, DWORD what) {
  DWORD size = 0;
  WinHttpQueryHeaders(request, what, WINHTTP_HEADER_NAME_BY_INDEX, WINHTTP_NO_OUTPUT_BUFFER, &size,
                      WINHTTP_NO_HEADER_INDEX);
  if (size == 0) return Text();
  std::wstring buffer(size / sizeof(wchar_t) + 1, L'\0');
  if (!WinHttpQueryHeaders(request, what, WINHTTP_HEADER_NAME_BY_INDEX, buffer.data(), &size,
                           WINHTTP_NO_HEADER_INDEX))
    return Text();
  return FromWide(buffer.c_str());
}

// One request over TLS. `body` empty and `verb` GET for a query; the body of a POST is
// written in chunks, with `progress` told the percentage after each.
Exchange Perform(const Text& address, const Text& pathAndQuery, const Text& verb,
                 const std::string& body, const std::function<void(long)>& progress) {
  Exchange x;
  auto where = ParseHttpsAddress(address);
  if (!where) {
    x.failure = u"the address is not an https:// address; nothing was sent";
    return x;
  }
  win32::UniqueInternet session(WinHttpOpen(Wide(Text(kUserAgent)),
                                            WINHTTP_ACCESS_TYPE_DEFAULT_PROXY,
                                            WINHTTP_NO_PROXY_NAME, WINHTTP_NO_PROXY_BYPASS, 0));
  if (!session) {
    x.failure = Reason(GetLastError());
    return x;
  }
  WinHttpSetTimeouts(session.Get(), 10000, 10000, 30000, 30000);
  // TLS 1.3 as well as 1.2 where the system offers it. A system that does not know
  // 1.3 refuses the pair, and then has 1.2 alone; the certificate is checked either way.
  DWORD protocols = WINHTTP_FLAG_SECURE_PROTOCOL_TLS1_2 | kSecureProtocolTls13;
  if (!WinHttpSetOption(session.Get(), WINHTTP_OPTION_SECURE_PROTOCOLS, &protocols,
                        sizeof(protocols))) {
    protocols = WINHTTP_FLAG_SECURE_PROTOCOL_TLS1_2;
    WinHttpSetOption(session.Get(), WINHTTP_OPTION_SECURE_PROTOCOLS, &protocols, sizeof(protocols));
  }
  win32::UniqueInternet connection(
      WinHttpConnect(session.Get(), Wide(where->host), where->port, 0));
  if (!connection) {
    x.failure = Reason(GetLastError());
    return x;
  }
  const Text path = where->basePath + pathAndQuery;
  win32::UniqueInternet request(
      WinHttpOpenRequest(connection.Get(), Wide(verb), Wide(path), nullptr, WINHTTP_NO_REFERER,
                         WINHTTP_DEFAULT_ACCEPT_TYPES, WINHTTP_FLAG_SECURE));
  if (!request) {
    x.failure = Reason(GetLastError());
    return x;
  }
  // A reply that sends us elsewhere is a reply, not a place to send the data to.
  DWORD redirects = WINHTTP_OPTION_REDIRECT_POLICY_NEVER;
  WinHttpSetOption(request.Get(), WINHTTP_OPTION_REDIRECT_POLICY, &redirects, sizeof(redirects));
  const Text headers =
      body.empty() ? Text() : Text(u"Content-Type: application/x-www-form-urlencoded\r\n");
  if (!WinHttpSendRequest(request.Get(),
                          headers.empty() ? WINHTTP_NO_ADDITIONAL_HEADERS : Wide(headers),
                          headers.empty() ? 0 : static_cast<DWORD>(-1L), WINHTTP_NO_REQUEST_DATA, 0,
                          static_cast<DWORD>(body.size()), 0)) {
    x.failure = Reason(GetLastError());
    return x;
  }
  std::size_t written = 0;
  while (written < body.size()) {
    const DWORD chunk = static_cast<DWORD>(std::min(kUploadChunk, body.size() - written));
    DWORD done = 0;
    if (!WinHttpWriteData(request.Get(), body.data() + written, chunk, &done) || done == 0) {
      x.failure = Reason(GetLastError());
      return x;
    }
    written += done;
    if (progress) progress(static_cast<long>(written * 100 / body.size()));
  }
  if (!WinHttpReceiveResponse(request.Get(), nullptr)) {
    x.failure = Reason(GetLastError());
    return x;
  }
  x.replied = true;
  DWORD code = 0, size = sizeof(code);
  WinHttpQueryHeaders(request.Get(), WINHTTP_QUERY_STATUS_CODE | WINHTTP_QUERY_FLAG_NUMBER,
                      WINHTTP_HEADER_NAME_BY_INDEX, &code, &size, WINHTTP_NO_HEADER_INDEX);
  x.statusCode = code;
  x.statusText = QueryText(request.Get(), WINHTTP_QUERY_STATUS_TEXT);
  for (;;) {
    DWORD available = 0;
    if (!WinHttpQueryDataAvailable(request.Get(), &available) || available == 0) break;
    std::string part(available, '\0');
    DWORD read = 0;
    if (!WinHttpReadData(request.Get(), part.data(), available, &read) || read == 0) break;
    x.body.append(part.data(), read);
    if (x.body.size() > kMaxReply) break;
  }
  return x;
}

class Win32Login : public ILoginObject {
 public:
  explicit Win32Login(ServiceEndpoints e) : endpoints_(std::move(e)) {}
  bool Login(const Text& userName, const Text& password, long) noexcept override {
    return win32::NoThrow(false, [&] {
      const Exchange x = Perform(endpoints_.accountServer, kLoginPath, u"POST",
                                 FormBody({{u"user", userName}, {u"password", password}}), {});
      return x.replied && x.statusCode == 200 && IsLoginAccepted(base::FromUtf8(x.body));
    });
  }

 private:
  ServiceEndpoints endpoints_;
};

class Win32Http : public IHttpObject {
 public:
  explicit Win32Http(ServiceEndpoints e) : endpoints_(std::move(e)) {}
  Text EncodeQueryValue(const Text& value, long) noexcept override {
    return win32::NoThrow(Text(), [&] { return PercentEncode(value); });
  }
  Text FilterLine(const Text& line) noexcept override {
    return win32::NoThrow(Text(), [&] { return FilterLogLine(line); });
  }
  Text Request(const Text& host, const Text& path, const Text& query, long, Text& status, long,
               RequestState& state) noexcept override {
    return win32::NoThrow(Text(), [&] {
      const Exchange x = Perform(host, path + query, u"GET", std::string(), {});
      state.statusCode = static_cast<long>(x.statusCode);
      status = x.replied ? x.statusText : x.failure;
      return x.replied && x.statusCode / 100 == 2 ? base::FromUtf8(x.body) : Text();
    });
  }
  void SendMail(const Text& to, const Text& subject, const Text& body, const Text& from, bool,
                const MailEvents& events) noexcept override {
    auto fail = [&](const Text& reason) {
      if (events.onFailed) events.onFailed(reason);
    };
    const bool done = win32::NoThrow(false, [&] {
      const Exchange x =
          Perform(endpoints_.feedbackServer, kFeedbackPath, u"POST",
                  FormBody({{u"to", to}, {u"subject", subject}, {u"body", body}, {u"from", from}}),
                  events.onProgress);
      if (!x.replied)
        fail(x.failure);
      else if (x.statusCode != 200)
        fail(u"the server answered " + base::FromNumber(x.statusCode) + u" " + x.statusText);
      else if (events.onSent)
        events.onSent();
      return true;
    });
    if (!done) fail(u"the report could not be prepared");
  }

 private:
  ServiceEndpoints endpoints_;
};

}  // namespace

std::unique_ptr<ILoginObject> Win32NetworkObjects::CreateLoginObject(
    const ServiceEndpoints& endpoints) {
  return win32::NoThrow(std::unique_ptr<ILoginObject>(),
                        [&] { return std::unique_ptr<ILoginObject>(new Win32Login(endpoints)); });
}

std::unique_ptr<IHttpObject> Win32NetworkObjects::CreateHttpObject(
    const ServiceEndpoints& endpoints) {
  return win32::NoThrow(std::unique_ptr<IHttpObject>(),
                        [&] { return std::unique_ptr<IHttpObject>(new Win32Http(endpoints)); });
}

}  // namespace platform
