#pragma once
// Web Management without the window: whether the user wants the helper (WebManage
// and an account), what the helper's ErrVal says, and what the menu item's click does
// with that answer.
#include "base/Text.h"

namespace monitor {

using base::Text;

// Texts of the message table.
inline constexpr long kTextLoginFirst = 72;      // no account: log in first
inline constexpr long kTextDisableWeb = 74;      // turning the feature off?
inline constexpr long kTextLoginFailed = 277;    // authentication failed
inline constexpr long kTextAccountClosed = 278;  // account canceled or expired

// WebManage trimmed, with whether a user name and a password are stored: "0" turns
// the feature off; "1" or empty turns it on when there is an account; anything else
// (or no account) leaves the item as it is.
enum class WebChoice { Off, On, Leave };
WebChoice WebManageChoice(const Text& webManage, bool hasAccount);

// What the helper left in ErrVal; the value is compared as it stands.
enum class HelperAnswer {
  None,           // empty: nothing to go by
  LoggedIn,       // "0"
  LoginFailed,    // "-1"
  AccountClosed,  // "-2": canceled or expired
  Refused,        // "-3": a refusal that is not told
  Other,          // anything else
};
HelperAnswer ReadHelperAnswer(const Text& errVal);

// A failed login is told once: while WebMessage is "0" or empty.
bool TellLoginFailure(const Text& webMessage);

// After the click that turned the feature on: the text shown first (0 for none), and
// whether the feature is turned off again.
struct ClickOutcome {
  long message = 0;
  bool turnOff = false;
  bool operator==(const ClickOutcome&) const = default;
};
ClickOutcome AfterClick(HelperAnswer answer);

}  // namespace monitor
