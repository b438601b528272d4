// The status family's table and the words that settle the status rounds.
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
  EXPECT_EQ(Text(TrayPictureFor(u"Running")), kTrayRunning);
  EXPECT_EQ(Text(TrayPictureFor(u"Paused")), kTrayNotRunning);
  EXPECT_EQ(Text(TrayPictureFor(u"")), kTrayNotRunning);
}

TEST(StatusLook, WhatEachRoutineLeavesAsItWas) {
  // Pausing and resuming leave Pause's enabling to the caller's state; resuming keeps
  // the status word; stopping and the pending looks keep the caption of Pause.
  EXPECT_FALSE(LookOf(ServiceState::Pause).pauseEnabled.has_value());
  EXPECT_FALSE(LookOf(ServiceState::Resume).pauseEnabled.has_value());
  EXPECT_EQ(LookOf(ServiceState::Resume).statusWord, nullptr);
  for (ServiceState s : {ServiceState::Stop, ServiceState::Stopping, ServiceState::Unknown}) {
    EXPECT_EQ(LookOf(s).pauseCaption, nullptr);
    EXPECT_EQ(LookOf(s).pauseEnabled, std::optional<bool>(false));
    EXPECT_FALSE(LookOf(s).stopEnabled);
  }
  // Only a stopped engine can be started; a running or paused one can be stopped.
  EXPECT_TRUE(LookOf(ServiceState::Stop).startEnabled);
  for (ServiceState s : {ServiceState::Start, ServiceState::Pause, ServiceState::Resume}) {
    EXPECT_FALSE(LookOf(s).startEnabled);
    EXPECT_TRUE(LookOf(s).stopEnabled);
  }
  EXPECT_EQ(Text(LookOf(ServiceState::Pause).pauseCaption), kResumeCaption);
  EXPECT_EQ(Text(LookOf(ServiceState::Resume).pauseCaption), kPauseCaption);
  EXPECT_TRUE(LookOf(ServiceState::Resume).showPause);
}

}  // namespace
