#include "account/AccountService.h"

#include "base/Guarded.h"
#include "frame/Settings.h"
#include "platform/portable/HttpRules.h"

namespace account {

namespace {

Text SettingOr(frame::AppState& app, const Text& key, const Text& fallback) {
  Text value = base::Trim(frame::ReadSetting(app, key));
  return value.empty() ? fallback : value;
}

constexpr char16_t kCacheDenied[] = u"Cache Access Denied.";

}  // namespace

platform::ServiceEndpoints ReadEndpoints(frame::AppState& app) {
  return {SettingOr(app, kAccountServerKey, kDefaultAccountServer),
          SettingOr(app, kFeedbackServerKey, kDefaultFeedbackServer)};
}

Text SupportMailAddress(frame::AppState& app) {
  return SettingOr(app, kSupportMailKey, kDefaultSupportMail);
}

int ClassifyAccountReply(const Text& reply) {
  if (reply.empty()) return kStatusNothing;
  const Text trimmed = base::Trim(reply);
  const std::size_t blank = trimmed.find(u' ');
  // The design cuts at the first blank; a reply without one has no first word to
  // compare and counts as any other reply.
  if (blank == Text::npos) return kStatusOther;
  const Text word = trimmed.substr(0, blank);
  if (base::EqualsNoCase(word, u"Cancelled")) return kStatusCancelled;
  if (base::EqualsNoCase(word, u"Expired")) return kStatusExpired;
  return kStatusOther;
}

bool ProveLogin(frame::AppState& app, const Text& userName, const Text& password) {
  bool proved = false;
  base::IgnoreFailure([&] {
    if (app.platform.network == nullptr) return;
    auto login = app.platform.network->CreateLoginObject(ReadEndpoints(app));
    if (login) proved = login->Login(userName, password, 0);
  });
  return proved;
}

int CheckAccountStatus(frame::AppState& app, const Text& userName, const Text& password) {
  const Text user = base::Trim(userName);
  const Text pass = base::Trim(password);
  if (user.empty() || pass.empty()) return kStatusNothing;
  Text reply;
  base::IgnoreFailure([&] {
    if (app.platform.network == nullptr) return;
    const platform::ServiceEndpoints endpoints = ReadEndpoints(app);
    auto http = app.platform.network->CreateHttpObject(endpoints);
    if (!http) return;
    Text status;
    platform::IHttpObject::RequestState state;
    auto ask = [&] {
      const Text query = u"user=" + http->EncodeQueryValue(user, 0) + u"&password=" +
                         http->EncodeQueryValue(pass, 0);
      return http->Request(endpoints.accountServer, platform::kStatusPath, query, 3, status, 0,
                           state);
    };
    reply = ask();
    if (base::EqualsNoCase(status, kCacheDenied)) {
      // A proxy in the way refused the request: once more, and no more.
      status = kCacheDenied;
      reply.clear();
      reply = ask();
      status.clear();
    }
  });
  return ClassifyAccountReply(reply);
}

}  // namespace account
