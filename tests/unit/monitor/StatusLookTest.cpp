// The words that settle the status rounds (the looks themselves are checked through
// the window, in StatusTest).
#include <gtest/gtest.h>

#include "monitor/StatusLook.h"

namespace {

using base::Text;
using namespace monitor;

TEST(StatusLook, OnlyRunningStoppedAndPausedSettleTheRounds) {
  EXPECT_EQ(SettledState(u"Running"), ServiceState::Start);
  EXPECT_EQ(SettledState(u"Stopped"), ServiceState::Stop);
  EXPECT_EQ(SettledState(u"Paused"), ServiceState::Pause);
  for (const char16_t* pending : {u"", u"Unknown", u"Start Pending", u"running", u"Running "}) {
    EXPECT_EQ(SettledState(pending), std::nullopt) << base::ToUtf8(pending);
  }
}

}  // namespace
