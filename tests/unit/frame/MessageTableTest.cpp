// Samples of the message table: the compound messages as they are shown, the two
// that carry the application title, and codes that stand twice with a difference.
#include <gtest/gtest.h>

#include "frame/MessageTable.h"
#include "testkit/FrameFixture.h"

namespace {

using frame::GetMessage;

TEST(MessageTable, CompoundMessagesReadAsShown) {
  const base::Text disabled =
      u"All your scheduled backup/restore jobs are currently disabled.\r\nDo you want to enable "
      u"them?";
  EXPECT_EQ(GetMessage(6, u"T"), disabled);
  EXPECT_EQ(GetMessage(22, u"T"), disabled);
  EXPECT_EQ(GetMessage(35, u"T"), disabled);
  EXPECT_EQ(GetMessage(29, u"T"),
            u"A scheduled job is in progress.\r\nDo you want to stop the transfer? ");
  EXPECT_EQ(GetMessage(304, u"T"), u"A scheduled job is underway.\r\nDo you want to stop it?");
  EXPECT_EQ(GetMessage(64, u"T"), u"Reason: \r\nError while deleting the logs.");
  EXPECT_EQ(GetMessage(100, u"T"), u"Reason : \r\nUnable to continue");
  // As the pause and stop questions show them: the reason first, an empty line, the question.
  EXPECT_EQ(GetMessage(17, u"T"),
            u"There is a backup/ restore operation in progress, can not pause the QVWin Service"
            u"\r\n\r\nTo cancel the backup operation, Stop the QVWin Service");
  EXPECT_EQ(GetMessage(564, u"T"),
            u"A record has been added for immediate backup/restore.\r\n"
            u"This operation should commence within a few minutes.\r\n\r\n"
            u"Click the 'Refresh' button to get the updated status on this backup/restore job.");
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

TEST(MessageTable, SingleTextsKeepTheirOwnBlanksAndUnknownCodesAreEmpty) {
  EXPECT_EQ(GetMessage(39, u""), u"Enter your Corvane username.");
  EXPECT_EQ(GetMessage(23, u""),
            u" This record can not be edited as a backup/restore job is 'In Progress'.");
  EXPECT_EQ(
      GetMessage(329, u""),
      u"To stop the backup operation, select the scheduled job with the status  'In Progress'.");
  // 501 differs from 500 and 502 by a trailing blank only.
  EXPECT_EQ(GetMessage(501, u""), GetMessage(502, u"") + u" ");
  EXPECT_EQ(GetMessage(62, u""), u"Reason: ");
  EXPECT_NE(GetMessage(101, u"").find(frame::kFeedbackSite), base::Text::npos);
  for (long code : {0L, -1L, 75L, 105L, 108L, 999999L}) {
    EXPECT_EQ(GetMessage(code, u"T"), u"") << code;
  }
}

}  // namespace
