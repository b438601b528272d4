#pragma once
// The account service as the monitor sees it: where it is (settings with defaults),
// the login proof and CheckAccountStatus.
#include "base/Text.h"
#include "frame/AppState.h"
#include "platform/ClosedObjects.h"

namespace account {

using base::Text;

// Settings keys of qvwin.ini and their defaults. Addresses must be https://.
inline constexpr char16_t kAccountServerKey[] = u"AccountServer";
inline constexpr char16_t kFeedbackServerKey[] = u"FeedbackServer";
inline constexpr char16_t kSupportMailKey[] = u"SupportMail";
inline constexpr char16_t kDefaultAccountServer[] = u"https://account.corvane.com";
inline constexpr char16_t kDefaultFeedbackServer[] = u"https://feedback.corvane.com";
inline constexpr char16_t kDefaultSupportMail[] = u"support@corvane.com";

platform::ServiceEndpoints ReadEndpoints(frame::AppState& app);
Text SupportMailAddress(frame::AppState& app);

// What the status service's reply says.
enum AccountStatus : int {
  kStatusNothing = 0,
  kStatusCancelled = 1,
  kStatusExpired = 2,
  kStatusOther = 3
};

// The first word of a reply: "Cancelled" 1, "Expired" 2 (any case), anything else 3,
// an empty reply 0. A reply without a blank is 3 whatever its one word is.
int ClassifyAccountReply(const Text& reply);

// Proves the name and password with a LoginObject held for this call only; false
// when the object cannot be created.
bool ProveLogin(frame::AppState& app, const Text& userName, const Text& password);

// Asks the status service about the account, with the one retry behind a proxy that
// answers "Cache Access Denied.".
int CheckAccountStatus(frame::AppState& app, const Text& userName, const Text& password);

}  // namespace account
