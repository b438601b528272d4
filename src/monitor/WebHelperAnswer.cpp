#include "monitor/WebHelperAnswer.h"

namespace monitor {

WebChoice WebManageChoice(const Text& webManage, bool hasAccount) {
  if (webManage == u"0") return WebChoice::Off;
  if ((webManage == u"1" || webManage.empty()) && hasAccount) return WebChoice::On;
  return WebChoice::Leave;
}

HelperAnswer ReadHelperAnswer(const Text& errVal) {
  if (errVal.empty()) return HelperAnswer::None;
  if (errVal == u"0") return HelperAnswer::LoggedIn;
  if (errVal == u"-1") return HelperAnswer::LoginFailed;
  if (errVal == u"-2") return HelperAnswer::AccountClosed;
  if (errVal == u"-3") return HelperAnswer::Refused;
  return HelperAnswer::Other;
}

bool TellLoginFailure(const Text& webMessage) { return webMessage == u"0" || webMessage.empty(); }

ClickOutcome AfterClick(HelperAnswer answer) {
  switch (answer) {
    case HelperAnswer::AccountClosed: return {kTextAccountClosed, true};
    case HelperAnswer::Refused: return {0, true};
    case HelperAnswer::LoginFailed: return {kTextLoginFailed, true};
    default: return {0, false};
  }
}

}  // namespace monitor
