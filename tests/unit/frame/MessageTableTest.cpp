// The message table's logic: the two texts that carry the application title, and codes
// without a text. The texts themselves are data, read by the screens' tests where a
// rule chooses one of them.
#include <gtest/gtest.h>

#include "frame/MessageTable.h"
#include "testkit/FrameFixture.h"

namespace {

using base::Text;
using frame::GetMessage;

TEST(MessageTable, TwoMessagesCarryTheApplicationTitleAndUnknownCodesAreEmpty) {
  EXPECT_EQ(GetMessage(16, u"Acme Backup"),
            u"Create a Backup set for backup using the Acme Backup application.");
  EXPECT_EQ(GetMessage(65, u"Acme Backup"),
            u"Create a Backup set using the Acme Backup application for backup.");
  // Message 4 names the product in its text and does not follow the title.
  EXPECT_EQ(GetMessage(4, u"Acme Backup"),
            u"Create a Backup set using the Corvane for Windows application to perform backup.");
  testkit::FrameFixture env;
  env.app.AppTitle = u"Other";
  EXPECT_EQ(GetMessage(env.app, 16),
            u"Create a Backup set for backup using the Other application.");

  for (long code : {0L, -1L, 75L, 105L, 108L, 999999L}) {
    EXPECT_EQ(GetMessage(code, u"T"), u"") << code;
  }
}

}  // namespace
