#include <gtest/gtest.h>

#include "AccountFixture.h"
#include "account/AccountService.h"

using account::CheckAccountStatus;
using base::Text;
using platform::FakeNetwork;

namespace {

class AccountServiceTest : public ::testing::Test, public testkit::AccountFixture {};

TEST(AccountReply, FirstWordDecidesAndAWordWithoutBlankIsAnyOtherReply) {
  EXPECT_EQ(account::ClassifyAccountReply(u""), 0);
  EXPECT_EQ(account::ClassifyAccountReply(u"Cancelled since 01-02-2013"), 1);
  EXPECT_EQ(account::ClassifyAccountReply(u"  cANCELLED by the user"), 1);
  EXPECT_EQ(account::ClassifyAccountReply(u"EXPIRED on 01-02-2013"), 2);
  EXPECT_EQ(account::ClassifyAccountReply(u"Active 3 GB"), 3);
  EXPECT_EQ(account::ClassifyAccountReply(u"Cancelledx now"), 3);
  // One word alone cannot be cut at a blank: any other reply.
  EXPECT_EQ(account::ClassifyAccountReply(u"Cancelled"), 3);
  EXPECT_EQ(account::ClassifyAccountReply(u"  Expired  "), 3);
  EXPECT_EQ(account::ClassifyAccountReply(u"   "), 3);
}

TEST_F(AccountServiceTest, BlankNameOrPasswordAsksNothing) {
  fake.network.statusReplies.push_back({u"OK", u"Expired x"});
  EXPECT_EQ(CheckAccountStatus(app, u"  ", u"pw"), 0);
  EXPECT_EQ(CheckAccountStatus(app, u"mary", u"   "), 0);
  EXPECT_TRUE(fake.network.requests.empty());
}

TEST_F(AccountServiceTest, StatusQueryCarriesTheEncodedTrimmedValuesToTheSettingsHost) {
  frame::WriteSetting(app, u"AccountServer", u"https://127.0.0.1:8443");
  fake.network.statusReplies.push_back({u"OK", u"Cancelled on request"});
  EXPECT_EQ(CheckAccountStatus(app, u" mary smith ", u" p&ss=w%rd "), 1);
  ASSERT_EQ(fake.network.requests.size(), 1u);
  const auto& r = fake.network.requests[0];
  EXPECT_EQ(r.host, u"https://127.0.0.1:8443");
  EXPECT_EQ(r.path, u"/cgi-bin/get_account_status?");
  EXPECT_EQ(r.query, u"user=mary%20smith&password=p%26ss%3Dw%25rd");
  EXPECT_EQ(r.mode, 3);
  EXPECT_EQ(r.statusIn, u"");
  EXPECT_EQ(fake.network.liveObjects, 0);  // released after the call
}

TEST_F(AccountServiceTest, ARefusingProxyGetsExactlyOneRetry) {
  fake.network.statusReplies.push_back({u"Cache Access Denied.", u"", 403});
  fake.network.statusReplies.push_back({u"OK", u"Expired last week"});
  EXPECT_EQ(CheckAccountStatus(app, u"mary", u"pw"), 2);
  ASSERT_EQ(fake.network.requests.size(), 2u);
  EXPECT_EQ(fake.network.requests[1].statusIn, u"Cache Access Denied.");
  EXPECT_EQ(fake.network.requests[1].query, fake.network.requests[0].query);

  // Refused twice: no third request, and an empty reply is nothing usable.
  fake.network.requests.clear();
  fake.network.statusReplies.push_back({u"cache access denied.", u"", 403});
  fake.network.statusReplies.push_back({u"Cache Access Denied.", u"", 403});
  fake.network.statusReplies.push_back({u"OK", u"Expired x"});
  EXPECT_EQ(CheckAccountStatus(app, u"mary", u"pw"), 0);
  EXPECT_EQ(fake.network.requests.size(), 2u);
}

TEST_F(AccountServiceTest, NoConnectionOrNoObjectIsNothingUsable) {
  EXPECT_EQ(CheckAccountStatus(app, u"mary", u"pw"), 0);  // no reply scripted
  fake.network.installed = false;
  fake.network.statusReplies.push_back({u"OK", u"Expired x"});
  EXPECT_EQ(CheckAccountStatus(app, u"mary", u"pw"), 0);
  EXPECT_FALSE(account::ProveLogin(app, u"mary", u"pw"));
}

}  // namespace
