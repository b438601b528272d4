#pragma once
// The product's own closed objects, which the monitor only creates and calls.
#include <functional>
#include <memory>
#include <optional>

#include "base/Text.h"

namespace platform {

using base::Text;

class IOsNameProvider {
 public:
  virtual ~IOsNameProvider() = default;
  // The operating system's name; nullopt when the object is not registered.
  virtual std::optional<Text> OsName() = 0;
};

class ISettingsProvider {
 public:
  virtual ~ISettingsProvider() = default;
  // Asked with a key and two zeros; "" when unknown or unavailable.
  virtual Text GetSetting(const Text& key, long a, long b) = 0;
};

// Where the account and feedback objects send their requests: https:// addresses of
// the services, and the support mailbox the report is addressed to. The caller reads
// them from the settings and gives them to each object it creates.
struct ServiceEndpoints {
  Text accountServer;   // "https://host[:port]" of the login proof and the status query
  Text feedbackServer;  // "https://host[:port]" that receives the feedback report
};

// Proves a user name and a password against the account service.
class ILoginObject {
 public:
  virtual ~ILoginObject() = default;
  // True only when the service said the credentials are good; false on every failure.
  virtual bool Login(const Text& userName, const Text& password, long flags) = 0;
};

// The request object: query encoding, the line filter of the report, a request to a
// host, and the report's upload with its three events.
class IHttpObject {
 public:
  virtual ~IHttpObject() = default;
  // Percent-encodes a value for a query (UTF-8, unreserved characters kept).
  virtual Text EncodeQueryValue(const Text& value, long flags) = 0;
  // One line of a log made fit for the report: control characters dropped and the
  // value of every "password=" masked.
  virtual Text FilterLine(const Text& line) = 0;
  // Requests `host` + `path` + `query` (a plain GET). `status` goes in and comes out:
  // on a reply it is the reply's status text ("OK", "Cache Access Denied." ...), on a
  // failure the reason. The reply text is returned only for a successful (2xx) reply.
  // `mode` and `flags` are the design's 3 and 0; `state` is the object's own.
  struct RequestState {
    long statusCode = 0;
  };
  virtual Text Request(const Text& host, const Text& path, const Text& query, long mode,
                       Text& status, long flags, RequestState& state) = 0;

  struct MailEvents {
    std::function<void(long percent)> onProgress;
    std::function<void(const Text& reason)> onFailed;
    std::function<void()> onSent;
  };
  // Sends the report synchronously; the events come while it runs. Exactly one of
  // onFailed and onSent comes at the end.
  virtual void SendMail(const Text& to, const Text& subject, const Text& body, const Text& from,
                        bool html, const MailEvents& events) = 0;
};

// Creates the objects; null when the object cannot be created (not installed).
class INetworkObjects {
 public:
  virtual ~INetworkObjects() = default;
  virtual std::unique_ptr<ILoginObject> CreateLoginObject(const ServiceEndpoints& endpoints) = 0;
  virtual std::unique_ptr<IHttpObject> CreateHttpObject(const ServiceEndpoints& endpoints) = 0;
};

}  // namespace platform
