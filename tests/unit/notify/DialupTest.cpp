// Hanging up dial-up lines: the listing, the hang-ups a settle time apart, the log lines.
#include <gtest/gtest.h>

#include "notify/Dialup.h"
#include "testkit/FrameFixture.h"

namespace {

using base::Text;
using testkit::U8;

class DialupTest : public ::testing::Test, public testkit::CommonFixture {};

TEST_F(DialupTest, NoConnection) {
  EXPECT_EQ(notify::ConnectionsText(app), Text(u"No active connections found"));
  notify::DisconnectDialup(app);
  EXPECT_EQ(Activity(), (std::vector<Text>{u"Unable to find active dial-up connection",
                                           u"Successfully logged out", u""}));
  EXPECT_EQ(fake.clock.sleptMs, 0u);
}

TEST_F(DialupTest, TwoConnectionsAreHungUpFiveSecondsApartAndTheScreenNamesTheSecond) {
  fake.dialUp.connections = {{0x11, u"Office", u"modem", u"USR 56k"},
                             {0x22, u"Home ISP", u"isdn", u"ISDN adapter"}};
  EXPECT_EQ(notify::ConnectionsText(app),
            Text(u"Home ISP connected via ISDN adapter is about to be disconnected."));
  notify::DisconnectDialup(app);
  ASSERT_EQ(fake.dialUp.hangUps.size(), 2u);
  EXPECT_EQ(fake.dialUp.hangUps[0].handle, 0x11u);
  EXPECT_EQ(fake.dialUp.hangUps[1].handle, 0x22u);
  EXPECT_EQ(fake.dialUp.hangUps[1].tickMs - fake.dialUp.hangUps[0].tickMs, 5000u);
  EXPECT_EQ(fake.clock.sleptMs, 10000u);
  EXPECT_EQ(Activity(), (std::vector<Text>{u"Successfully disconnected 'Office' connection",
                                           u"Successfully disconnected 'Home ISP' connection",
                                           u"Successfully logged out", u""}));
}

TEST_F(DialupTest, AFailingHangUpIsLoggedAndNotTriedAgain) {
  fake.dialUp.connections = {{0x11, u"Office", u"modem", u"USR 56k"}};
  fake.dialUp.hangUpErrors[0x11] = 668;
  notify::DisconnectDialup(app);
  EXPECT_EQ(fake.dialUp.hangUps.size(), 1u);
  EXPECT_EQ(fake.clock.sleptMs, 5000u);  // the wait comes whatever the result
  EXPECT_EQ(Activity(), (std::vector<Text>{u"Unable to hang-up 'Office' connection",
                                           u"Successfully logged out", u""}));
  EXPECT_TRUE(TraceHas(u"RasHangup failed: Error = 668"));
}

TEST_F(DialupTest, AFailingListingIsTracedAndNothingIsHungUp) {
  fake.dialUp.connections = {{0x11, u"Office", u"modem", u"USR 56k"}};
  fake.dialUp.listError = 632;
  EXPECT_EQ(notify::ConnectionsText(app), std::nullopt);
  notify::DisconnectDialup(app);
  EXPECT_TRUE(fake.dialUp.hangUps.empty());
  EXPECT_TRUE(TraceHas(u"RasEnumConnections failed: Error = 632"));
  EXPECT_EQ(Activity(), (std::vector<Text>{u"Successfully logged out", u""}));
}

}  // namespace
