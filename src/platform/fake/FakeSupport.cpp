#include "platform/fake/FakeSupport.h"

#include "platform/portable/HttpRules.h"

namespace platform {

namespace {

class Counted {
 public:
  explicit Counted(FakeNetwork& net) : net_(net) { ++net_.liveObjects; }
  ~Counted() { --net_.liveObjects; }

 protected:
  FakeNetwork& net_;
};

class FakeLogin : public ILoginObject, Counted {
 public:
  using Counted::Counted;
  bool Login(const Text& user, const Text& password, long) override {
    net_.logins.emplace_back(user, password);
    auto it = net_.goodAccounts.find(user);
    return it != net_.goodAccounts.end() && it->second == password;
  }
};

class FakeHttp : public IHttpObject, Counted {
 public:
  using Counted::Counted;
  Text EncodeQueryValue(const Text& value, long) override { return PercentEncode(value); }
  Text FilterLine(const Text& line) override { return FilterLogLine(line); }
  Text Request(const Text& host, const Text& path, const Text& query, long mode, Text& status, long,
               RequestState& state) override {
    net_.requests.push_back({host, path, query, status, mode});
    if (net_.statusReplies.empty()) {
      status = u"Cannot connect";
      state.statusCode = 0;
      return Text();
    }
    FakeNetwork::Reply reply = net_.statusReplies.front();
    net_.statusReplies.pop_front();
    status = reply.status;
    state.statusCode = reply.statusCode;
    return reply.statusCode / 100 == 2 ? reply.text : Text();
  }
  void SendMail(const Text& to, const Text& subject, const Text& body, const Text& from, bool html,
                const MailEvents& events) override {
    if (net_.duringUpload) net_.duringUpload();
    for (long p : net_.mailProgress)
      if (events.onProgress) events.onProgress(p);
    if (!net_.mailFailure.empty()) {
      if (events.onFailed) events.onFailed(net_.mailFailure);
      return;
    }
    net_.mails.push_back({to, subject, body, from, html});
    if (events.onSent) events.onSent();
  }
};

}  // namespace

std::unique_ptr<ILoginObject> FakeNetwork::CreateLoginObject(const ServiceEndpoints& endpoints) {
  if (!installed) return nullptr;
  endpointsSeen.push_back(endpoints);
  return std::make_unique<FakeLogin>(*this);
}

std::unique_ptr<IHttpObject> FakeNetwork::CreateHttpObject(const ServiceEndpoints& endpoints) {
  if (!installed) return nullptr;
  endpointsSeen.push_back(endpoints);
  return std::make_unique<FakeHttp>(*this);
}

std::optional<FileVersion> FakeFileVersions::Read(const Text& path) {
  auto it = versions.find(base::ToLower(path));
  if (it == versions.end()) return std::nullopt;
  return it->second;
}

std::optional<Text> FakeLocaleInfo::Item(LocaleSource source, unsigned long item) {
  const auto& items = source == LocaleSource::SystemLanguage ? systemItems : userItems;
  auto it = items.find(item);
  if (it == items.end()) return std::nullopt;
  return it->second;
}

}  // namespace platform
