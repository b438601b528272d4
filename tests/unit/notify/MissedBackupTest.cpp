// The missed-backup check: who is due, what the notice says, what is cleared.
#include <gtest/gtest.h>

#include "base/Guarded.h"
#include "frame/Settings.h"
#include "notify/MissedBackup.h"
#include "testkit/FrameFixture.h"

namespace {

using base::DateTime;
using base::Text;
using testkit::U8;

class MissedBackupTest : public ::testing::Test, public testkit::CommonFixture {
 protected:
  Text UserFile(const Text& user) { return Common(user + u"\\qvwinserver.ini"); }
  void SetUser(const Text& user, const Text& days, const Text& err, const Text& failed,
               const Text& msg) {
    fake.fs.AddFolders(Common(user));
    for (auto [key, value] : {std::pair<Text, Text>{u"NoofDays", days},
                              {u"Notify_Err", err},
                              {u"DateFailed", failed},
                              {u"Notifymsg", msg}}) {
      fake.profile.WriteString(u"Corvane", key, value, UserFile(user));
    }
  }
  Text Key(const Text& user, const Text& key) {
    return fake.profile.GetString(u"Corvane", key, u"<none>", 1024, UserFile(user));
  }
  std::optional<notify::MissedBackupNotice> Check() {
    shown.clear();
    return notify::CheckMissedBackup(
        app, today, [&](const notify::MissedBackupNotice& n) { shown.push_back(n); });
  }

  DateTime today{2026, 11, 15, 10, 0, 0};
  std::vector<notify::MissedBackupNotice> shown;
};

TEST_F(MissedBackupTest, TwoUsersWithTheFirstDueLeaveTheSecondAloneInTheList) {
  frame::WriteSetting(app, u"NotifyUsers", u"<<alice<< <<bob");
  SetUser(u"alice", u"7", u"1", u"20261105", u"MISSEDBACKUP");  // 10 days
  SetUser(u"bob", u"7", u"1", u"20261101", u"NOSCHEDULEJOB");   // due too, but next tick
  ASSERT_TRUE(Check());
  ASSERT_EQ(shown.size(), 1u);
  EXPECT_EQ(shown[0].user, u"alice");
  EXPECT_EQ(shown[0].days, 10);
  EXPECT_FALSE(shown[0].plainLayout);
  EXPECT_EQ(frame::ReadSetting(app, u"NotifyUsers"), u"<<bob");
  EXPECT_EQ(Key(u"alice", u"Notify_Err"), u"0");
  EXPECT_EQ(Key(u"alice", u"DateFailed"), u"");  // written empty, not removed
  EXPECT_EQ(Key(u"alice", u"Notifymsg"), u"");
  EXPECT_EQ(Key(u"bob", u"Notify_Err"), u"1");

  ASSERT_TRUE(Check());
  EXPECT_EQ(shown.at(0).user, u"bob");
  EXPECT_EQ(frame::ReadSetting(app, u"NotifyUsers"), u"");
  EXPECT_FALSE(Check());
}

TEST_F(MissedBackupTest, DueNoticeTellsWhatTheCheckWouldShowAndWritesNothing) {
  frame::WriteSetting(app, u"NotifyUsers", u"<<alice<<old");
  SetUser(u"alice", u"7", u"1", u"20261105", u"NOBACUPSETDATA_Pics");
  SetUser(u"old", u"7", u"1", u"20260801", u"MISSEDBACKUP");  // 106 days: no notice
  const int writes = fake.fs.WriteCount();
  const auto alice = notify::DueNotice(app, u"alice", today);
  const auto old = notify::DueNotice(app, u"old", today);
  EXPECT_EQ(fake.fs.WriteCount(), writes);
  ASSERT_TRUE(alice && old);
  EXPECT_EQ(alice->reason, u"NOBACUPSETDATA_Pics");
  EXPECT_TRUE(alice->shown);
  EXPECT_EQ(old->days, 106);
  EXPECT_EQ(old->reason, u"MISSEDBACKUP");
  EXPECT_FALSE(old->shown);
  EXPECT_FALSE(old->text);
  EXPECT_FALSE(notify::DueNotice(app, u"nobody", today));

  ASSERT_TRUE(Check());
  ASSERT_EQ(shown.size(), 1u);
  EXPECT_EQ(shown[0].text, alice->text);
  EXPECT_EQ(shown[0].days, alice->days);
}

TEST_F(MissedBackupTest, NoofDaysBoundsAndEntriesThatAreNotDue) {
  for (const auto& [stored, days] :
       {std::pair<Text, int>{u"", 7}, {u"0", 7}, {u"1", 1}, {u"30", 30}, {u"31", 30}})
    EXPECT_EQ(notify::DaysToWait(stored), days) << U8(stored);
  EXPECT_THROW(notify::DaysToWait(u"week"), base::Failure);

  frame::WriteSetting(app, u"NotifyUsers", u"<<alice<<carol<<dave<<erin");
  SetUser(u"alice", u"", u"1", u"20261109", u"");    // 6 days of 7: not yet
  SetUser(u"carol", u"45", u"1", u"20261016", u"");  // 30 days of 30: due
  SetUser(u"dave", u"1", u" 0", u"20200101", u"");   // no notice pending
  SetUser(u"erin", u"1", u"1", u"2026111", u"");     // seven digits
  auto handled = Check();
  ASSERT_TRUE(handled);
  EXPECT_EQ(handled->user, u"carol");
  EXPECT_EQ(handled->days, 30);
  EXPECT_EQ(frame::ReadSetting(app, u"NotifyUsers"), u"<<alice<<dave<<erin");
  EXPECT_FALSE(Check());  // nobody else is due: the list stays
  EXPECT_EQ(frame::ReadSetting(app, u"NotifyUsers"), u"<<alice<<dave<<erin");
}

TEST_F(MissedBackupTest, NinetyNineDaysShowAHundredAreDroppedSilently) {
  frame::WriteSetting(app, u"NotifyUsers", u"alice");
  SetUser(u"alice", u"7", u"1", u"20260808", u"MISSEDBACKUP");  // 99 days
  ASSERT_TRUE(Check());
  EXPECT_EQ(shown.at(0).days, 99);

  frame::WriteSetting(app, u"NotifyUsers", u"<<alice");
  SetUser(u"alice", u"7", u"1", u"20260807", u"MISSEDBACKUP");  // 100 days
  auto handled = Check();
  ASSERT_TRUE(handled);
  EXPECT_FALSE(handled->shown);
  EXPECT_TRUE(shown.empty());
  EXPECT_EQ(Key(u"alice", u"Notify_Err"), u"0");
  EXPECT_EQ(Key(u"alice", u"DateFailed"), u"");
  EXPECT_EQ(Key(u"alice", u"Notifymsg"), u"MISSEDBACKUP");  // this path leaves the reason
  EXPECT_EQ(frame::ReadSetting(app, u"NotifyUsers"), u"");
}

TEST_F(MissedBackupTest, AMissingUserFileStaysInTheListAndABadNumberStopsTheTick) {
  frame::WriteSetting(app, u"NotifyUsers", u"<<ghost");
  EXPECT_FALSE(Check());
  EXPECT_EQ(frame::ReadSetting(app, u"NotifyUsers"), u"<<ghost");

  frame::WriteSetting(app, u"NotifyUsers", u"<<alice<<bob");
  SetUser(u"alice", u"soon", u"1", u"20261101", u"");
  SetUser(u"bob", u"7", u"1", u"20261101", u"");
  EXPECT_THROW(Check(), base::Failure);
  EXPECT_EQ(frame::ReadSetting(app, u"NotifyUsers"), u"<<alice<<bob");
  EXPECT_EQ(Key(u"bob", u"Notify_Err"), u"1");
}

// Which text for which reason, with the days, the account and the set put in; the
// sentences themselves are the message table's.
TEST_F(MissedBackupTest, TheTextsForEachReason) {
  const Text support = u"help@example.com";
  const Text missed =
      u"The scheduled backup has not taken place for the past 12 day(s) for the account 'Ann'.";
  const auto text = [&](const Text& reason) {
    return notify::NoticeText(reason, 12, u"Ann", support).value_or(u"<none>");
  };
  EXPECT_TRUE(base::StartsWith(text(u"missedbackup"), missed + u"\r\n\r\nThe most common"));
  EXPECT_TRUE(base::StartsWith(text(u"NOSCHEDULEJOB"), u"User:  'Ann'.\r\n\r\nYou have not"));
  // The set name is what follows the word's length from the value's start.
  EXPECT_TRUE(base::StartsWith(text(u"nobacupsetdata_My Photos"),
                               missed + u"\r\n\r\nReason : There are no items found in the "
                                        u"Backup set : 'My Photos'."));
  EXPECT_EQ(text(u""),
            missed + u"\r\n\r\nFor assistance, email us at help@example.com or send the ");
  for (const Text& reason :
       {Text(u"missedbackup"), Text(u"NOSCHEDULEJOB"), Text(u"nobacupsetdata_x")})
    EXPECT_TRUE(base::EndsWith(text(reason), u"email us at help@example.com or send the "));
  EXPECT_EQ(notify::NoticeText(u"SOMETHINGELSE", 12, u"Ann", support), std::nullopt);

  frame::WriteSetting(app, u"NotifyUsers", u"<<Ann");
  SetUser(u"Ann", u"7", u"1", u"20261101", u"");
  ASSERT_TRUE(Check());
  EXPECT_TRUE(shown.at(0).plainLayout);
  EXPECT_NE(shown[0].text->find(notify::kDefaultSupportMail), Text::npos);
  frame::WriteSetting(app, notify::kSupportMailKey, support);
  EXPECT_EQ(notify::SupportAddress(app), support);
}

TEST(MissedBackupDateTest, DigitsRollOverAsDateSerialsDo) {
  EXPECT_EQ(notify::DateOfDigits(u"20261115"), (DateTime{2026, 11, 15}));
  EXPECT_EQ(notify::DateOfDigits(u"20261301"), (DateTime{2027, 1, 1}));
  EXPECT_EQ(notify::DateOfDigits(u"20260230"), (DateTime{2026, 3, 2}));
  EXPECT_THROW(notify::DateOfDigits(u"2026-1-1"), base::Failure);
}

// An entry is a folder name under QVCOMMON: one that would lead out of it is never
// made a path, neither read nor written, and stays in the list as it was.
TEST_F(MissedBackupTest, EntriesThatWouldLeaveTheirFolderArePassedOver) {
  frame::WriteSetting(app, u"NotifyUsers", u"<<..\\outside<<c:evil<<a/b<<alice");
  for (const Text& bad : {Text(u"..\\outside"), Text(u"c:evil"), Text(u"a/b")})
    SetUser(bad, u"7", u"1", u"20261101", u"MISSEDBACKUP");
  SetUser(u"alice", u"7", u"1", u"20261105", u"MISSEDBACKUP");
  ASSERT_TRUE(Check());
  ASSERT_EQ(shown.size(), 1u);
  EXPECT_EQ(shown[0].user, u"alice");
  for (const Text& bad : {Text(u"..\\outside"), Text(u"c:evil"), Text(u"a/b")})
    EXPECT_EQ(Key(bad, u"Notify_Err"), u"1") << U8(bad);
  EXPECT_EQ(frame::ReadSetting(app, u"NotifyUsers"), u"<<..\\outside<<c:evil<<a/b");
  const auto traced = [&] {
    int n = 0;
    for (const Text& line : Trace()) n += line.find(u"'..\\outside' is passed over") != Text::npos;
    return n;
  };
  EXPECT_EQ(traced(), 1);
  // Ticks later each is traced again only without a memory of what was passed over.
  std::set<Text> passedOver;
  EXPECT_FALSE(notify::CheckMissedBackup(app, today, nullptr, &passedOver));
  EXPECT_FALSE(notify::CheckMissedBackup(app, today, nullptr, &passedOver));
  EXPECT_EQ(traced(), 2);
  EXPECT_EQ(passedOver.size(), 3u);
}

}  // namespace
