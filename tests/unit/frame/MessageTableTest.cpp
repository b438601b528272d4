// The message table: compound messages as they are shown, the two that carry the
// application title, texts that keep their own blanks, and codes without a text.
#include <gtest/gtest.h>

#include "frame/MessageTable.h"
#include "testkit/FrameFixture.h"

namespace {

using base::Text;
using frame::GetMessage;

TEST(MessageTable, TextsReadAsShownAndUnknownCodesAreEmpty) {
  const Text disabled =
      u"All your scheduled backup/restore jobs are currently disabled.\r\nDo you want to enable "
      u"them?";
  const std::pair<long, Text> shown[] = {
      {6, disabled},
      {22, disabled},
      {35, disabled},
      {29, u"A scheduled job is in progress.\r\nDo you want to stop the transfer? "},
      {304, u"A scheduled job is underway.\r\nDo you want to stop it?"},
      {64, u"Reason: \r\nError while deleting the logs."},
      {100, u"Reason : \r\nUnable to continue"},
      // The reason first, an empty line, the question, as the pause question shows it.
      {17,
       u"There is a backup/ restore operation in progress, can not pause the QVWin Service"
       u"\r\n\r\nTo cancel the backup operation, Stop the QVWin Service"},
      {564,
       u"A record has been added for immediate backup/restore.\r\n"
       u"This operation should commence within a few minutes.\r\n\r\n"
       u"Click the 'Refresh' button to get the updated status on this backup/restore job."},
      {39, u"Enter your Corvane username."},
      {23, u" This record can not be edited as a backup/restore job is 'In Progress'."},
      {329,
       u"To stop the backup operation, select the scheduled job with the status  'In Progress'."},
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
