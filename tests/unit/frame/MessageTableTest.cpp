// The message table: compound messages as they are shown, the two that carry the
// application title, texts that keep their own blanks, and codes without a text.
#include <gtest/gtest.h>

#include "frame/MessageTable.h"
#include "testkit/FrameFixture.h"

namespace {

using base::Text;
using frame::GetMessage;

// The texts are the table's own; what is checked here is how they are put together.
TEST(MessageTable, TextsReadAsShownAndUnknownCodesAreEmpty) {
  const std::pair<long, Text> shown[] = {
      // Several codes share one text.
      {22, GetMessage(6, u"T")},
      {35, GetMessage(6, u"T")},
      // The reason first, an empty line, the question, as the pause question shows it.
      {17,
       u"There is a backup/ restore operation in progress, can not pause the QVWin Service"
       u"\r\n\r\nTo cancel the backup operation, Stop the QVWin Service"},
      {23, u" This record can not be edited as a backup/restore job is 'In Progress'."},
      {62, u"Reason: "},
      {501, GetMessage(502, u"T") + u" "},  // 501 differs from 502 by a trailing blank only
  };
  for (const auto& [code, text] : shown) EXPECT_EQ(GetMessage(code, u"T"), text) << code;
  EXPECT_NE(GetMessage(101, u"").find(frame::kFeedbackSite), Text::npos);
  for (long code : {0L, -1L, 75L, 105L, 108L, 999999L}) {
    EXPECT_EQ(GetMessage(code, u"T"), u"") << code;
  }
}

TEST(MessageTable, TwoMessagesCarryTheApplicationTitle) {
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
}

}  // namespace
