// Web Management's rules without the window: the user's choice, the helper's answer
// and what the click does with it.
#include <gtest/gtest.h>

#include "monitor/WebHelperAnswer.h"

namespace {

using namespace monitor;

TEST(WebHelperAnswer, TheChoiceNeedsAnAccountToTurnTheFeatureOn) {
  EXPECT_EQ(WebManageChoice(u"0", true), WebChoice::Off);
  EXPECT_EQ(WebManageChoice(u"0", false), WebChoice::Off);
  EXPECT_EQ(WebManageChoice(u"1", true), WebChoice::On);
  EXPECT_EQ(WebManageChoice(u"", true), WebChoice::On);  // not yet decided counts as on
  EXPECT_EQ(WebManageChoice(u"1", false), WebChoice::Leave);
  EXPECT_EQ(WebManageChoice(u"yes", true), WebChoice::Leave);
}

TEST(WebHelperAnswer, ErrValIsTakenAsItStands) {
  EXPECT_EQ(ReadHelperAnswer(u""), HelperAnswer::None);
  EXPECT_EQ(ReadHelperAnswer(u"0"), HelperAnswer::LoggedIn);
  EXPECT_EQ(ReadHelperAnswer(u"-1"), HelperAnswer::LoginFailed);
  EXPECT_EQ(ReadHelperAnswer(u"-2"), HelperAnswer::AccountClosed);
  EXPECT_EQ(ReadHelperAnswer(u"-3"), HelperAnswer::Refused);
  EXPECT_EQ(ReadHelperAnswer(u" -1"), HelperAnswer::Other);
  EXPECT_EQ(ReadHelperAnswer(u"-4"), HelperAnswer::Other);
  // A failed login is told while nothing says it was told already.
  EXPECT_TRUE(TellLoginFailure(u""));
  EXPECT_TRUE(TellLoginFailure(u"0"));
  EXPECT_FALSE(TellLoginFailure(u"1"));
}

TEST(WebHelperAnswer, AClickTurnsTheFeatureOffAgainOnEveryRefusal) {
  EXPECT_EQ(AfterClick(HelperAnswer::AccountClosed), (ClickOutcome{kTextAccountClosed, true}));
  EXPECT_EQ(AfterClick(HelperAnswer::Refused), (ClickOutcome{0, true}));
  EXPECT_EQ(AfterClick(HelperAnswer::LoginFailed), (ClickOutcome{kTextLoginFailed, true}));
  for (HelperAnswer a : {HelperAnswer::None, HelperAnswer::LoggedIn, HelperAnswer::Other}) {
    EXPECT_EQ(AfterClick(a), ClickOutcome{});
  }
}

}  // namespace
