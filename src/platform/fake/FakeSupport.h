#pragma once
// In-memory account service, version resources and regional items for tests. The
// request object encodes and filters with the real rules; what the service answers is
// scripted, and every request and report is recorded.
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <vector>

#include "platform/ClosedObjects.h"
#include "platform/SupportInfo.h"

namespace platform {

class FakeNetwork : public INetworkObjects {
 public:
  struct Reply {
    Text status;  // "OK", "Cache Access Denied." or a failure's reason
    Text text;    // the reply text (given back only with a 2xx code)
    long statusCode = 200;
  };
  struct RequestRecord {
    Text host, path, query, statusIn;
    long mode = 0;
  };
  struct Mail {
    Text to, subject, body, from;
    bool html = false;
  };

  std::unique_ptr<ILoginObject> CreateLoginObject(const ServiceEndpoints& endpoints) override;
  std::unique_ptr<IHttpObject> CreateHttpObject(const ServiceEndpoints& endpoints) override;

  // What the service knows.
  bool installed = true;                        // false: the objects cannot be created
  std::map<Text, Text> goodAccounts;            // user -> password the login accepts
  std::deque<Reply> statusReplies;              // one per status request; empty: no connection
  std::vector<long> mailProgress{25, 50, 100};  // percentages the upload reports
  Text mailFailure;                             // non-empty: the upload fails with it
  std::function<void()> duringUpload;           // the user at work while an upload runs

  // What was asked.
  std::vector<std::pair<Text, Text>> logins;  // user, password
  std::vector<RequestRecord> requests;
  std::vector<Mail> mails;
  std::vector<ServiceEndpoints> endpointsSeen;
  int liveObjects = 0;  // objects created and not yet released
};

class FakeFileVersions : public IFileVersions {
 public:
  std::optional<FileVersion> Read(const Text& path) override;
  std::map<Text, FileVersion> versions;  // by lower-cased path
};

class FakeLocaleInfo : public ILocaleInfo {
 public:
  unsigned long Id(LocaleSource source) override {
    return source == LocaleSource::SystemLanguage ? systemLanguage : userLocale;
  }
  std::optional<Text> Item(LocaleSource source, unsigned long item) override;
  unsigned long userLocale = 0x0409, systemLanguage = 0x0409;
  std::map<unsigned long, Text> userItems, systemItems;  // missing item: the call fails
};

}  // namespace platform
