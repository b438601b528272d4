#include "notify/MissedBackup.h"

#include "base/Guarded.h"
#include "frame/Logs.h"
#include "frame/Settings.h"
#include "kit/WindowLook.h"

namespace notify {

namespace {

constexpr char16_t kSection[] = u"Corvane";
constexpr char16_t kNoSetData[] = u"NOBACUPSETDATA_";
constexpr char16_t kBreak[] = u"\r\n\r\n";

Text UserFile(frame::AppState& app, const Text& user) {
  return app.CommonFile(base::Trim(user) + u"\\qvwinserver.ini");
}

// A value of the user's file, cut at its first NUL and trimmed; "" when missing.
Text UserKey(frame::AppState& app, const Text& user, const Text& key) {
  return base::Trim(base::CutAtNul(
      app.platform.profile->GetString(kSection, key, Text(), 1024, UserFile(app, user))));
}

// The keys are cleared by writing them empty, as the engine expects to find them.
void ClearUserKey(frame::AppState& app, const Text& user, const Text& key) {
  app.platform.profile->WriteString(kSection, key, Text(), UserFile(app, user));
}

Text Days(std::int64_t days) { return base::FromNumber(days); }

}  // namespace

Text SupportAddress(frame::AppState& app) {
  const Text configured = base::Trim(frame::ReadSetting(app, kSupportMailKey));
  return configured.empty() ? Text(kDefaultSupportMail) : configured;
}

int DaysToWait(const Text& noofDays) {
  const Text value = base::Trim(noofDays);
  if (value.empty()) return 7;
  if (!base::IsNumeric(value)) throw base::Failure(13, "Type mismatch");
  const double number = base::LeadingNumber(value);
  if (number > 32767 || number < -32768) throw base::Failure(6, "Overflow");
  const long days = kit::RoundHalfEven(number);
  if (days >= 31) return 30;
  if (days < 1) return 7;
  return static_cast<int>(days);
}

base::DateTime DateOfDigits(const Text& eightDigits) {
  const Text digits = base::Trim(eightDigits);
  if (digits.size() != 8 || digits.find_first_not_of(u"0123456789") != Text::npos)
    throw base::Failure(13, "Type mismatch");
  long long year = 0, month = 0, day = 0;
  base::ParseLong(base::Mid(digits, 1, 4), year);
  base::ParseLong(base::Mid(digits, 5, 2), month);
  base::ParseLong(base::Mid(digits, 7, 2), day);
  if (year < 100) throw base::Failure(5, "Invalid procedure call or argument");
  base::DateTime date{static_cast<int>(year), 1, 1};
  return date.AddMonths(static_cast<int>(month) - 1).AddDays(day - 1);
}

ReasonOfNotice ReasonOf(const Text& notifymsg) {
  const Text upper = base::ToUpper(notifymsg);
  if (upper == kReasonMissed) return {MissedReason::Missed, {}};
  if (upper == kReasonNoScheduleJob) return {MissedReason::NoScheduleJob, {}};
  if (base::InStr(upper, kNoSetData) > 0) {
    // The name is what stands after the word's length, counted from the value's start.
    return {MissedReason::NoSetData,
            base::Mid(notifymsg, std::char_traits<char16_t>::length(kNoSetData) + 1)};
  }
  if (notifymsg.empty()) return {MissedReason::Plain, {}};
  return {MissedReason::Other, {}};
}

Text NoItemsSentence(const Text& setName) {
  return u"There are no items found in the Backup set : '" + setName + u"'.";
}

std::optional<Text> NoticeText(const Text& reason, std::int64_t days, const Text& user,
                               const Text& support) {
  const Text notTakenPlace = u"The scheduled backup has not taken place for the past " +
                             Days(days) + u" day(s) for the account '" + user + u"'.";
  const Text assistance = u"For assistance, email us at " + support + u" or send the ";
  const ReasonOfNotice why = ReasonOf(reason);
  switch (why.kind) {
    case MissedReason::Missed:
      return notTakenPlace + kBreak +
             u"The most common reason for a scheduled backup not to take place is that the "
             u"computer is shut down at the time of schedule." +
             kBreak + assistance;
    case MissedReason::NoScheduleJob:
      return u"User:  '" + user + u"'." + kBreak + kNoScheduleSentence +
             u" To protect your data automatically, we recommend you to schedule your important "
             u"files/folder for backup." +
             kBreak + assistance;
    case MissedReason::NoSetData:
      return notTakenPlace + kBreak + u"Reason : " + NoItemsSentence(why.setName) +
             u" Check the contents of the Backup set." + kBreak + assistance;
    case MissedReason::Plain: return notTakenPlace + kBreak + assistance;
    case MissedReason::Other: break;
  }
  return std::nullopt;
}

std::vector<Text> NotifyEntries(const Text& notifyUsers) {
  std::vector<Text> entries;
  for (const Text& entry : base::Split(notifyUsers, u"<<"))
    if (!base::IsBlank(entry)) entries.push_back(entry);
  return entries;
}

Text ListWithout(const Text& notifyUsers, const Text& user) {
  const Text gone = base::ToLower(base::Trim(user));
  Text out;
  for (const Text& entry : NotifyEntries(notifyUsers)) {
    if (base::ToLower(entry) == gone) continue;
    out += u"<<" + entry;
  }
  return out;
}

std::optional<MissedBackupNotice> DueNotice(frame::AppState& app, const Text& entry,
                                            const base::DateTime& today) {
  const int wait = DaysToWait(UserKey(app, entry, u"NoofDays"));
  if (UserKey(app, entry, u"Notify_Err") != u"1") return std::nullopt;
  const Text failed = UserKey(app, entry, u"DateFailed");
  if (failed.size() != 8) return std::nullopt;
  const std::int64_t days = base::DateTime::DaysBetween(DateOfDigits(failed), today);
  if (days < wait) return std::nullopt;

  MissedBackupNotice notice;
  notice.user = entry;
  notice.days = days;
  notice.reason = UserKey(app, entry, u"Notifymsg");
  // A failure over 99 days old gets no notice.
  if (days <= 99) {
    notice.text = NoticeText(notice.reason, days, entry, SupportAddress(app));
    notice.plainLayout = notice.reason.empty();
    notice.shown = true;
  }
  return notice;
}

std::optional<MissedBackupNotice> CheckMissedBackup(
    frame::AppState& app, const base::DateTime& today,
    const std::function<void(const MissedBackupNotice&)>& show, std::set<Text>* passedOver) {
  const Text list = frame::ReadSetting(app, u"NotifyUsers");
  if (base::IsBlank(list)) return std::nullopt;

  // The walk stops at the first account that is due: one per tick.
  std::optional<MissedBackupNotice> found;
  for (const Text& entry : NotifyEntries(list)) {
    if (!frame::StaysInItsFolder(entry)) {
      if (passedOver == nullptr || passedOver->insert(entry).second)
        frame::WriteTrace(app, u"NotifyUsers: the entry '" + entry +
                                   u"' is passed over: as a folder name it would leave QVCOMMON.");
      continue;
    }
    found = DueNotice(app, entry, today);
    if (found) break;
  }
  if (!found) return std::nullopt;

  const MissedBackupNotice& notice = *found;
  if (!notice.shown) {
    // A failure that old is dropped silently; its reason stays in the file.
    app.platform.profile->WriteString(kSection, u"Notify_Err", Text(u"0"),
                                      UserFile(app, notice.user));
    ClearUserKey(app, notice.user, u"DateFailed");
  } else {
    if (show) show(notice);
    app.platform.profile->WriteString(kSection, u"Notify_Err", Text(u"0"),
                                      UserFile(app, notice.user));
    ClearUserKey(app, notice.user, u"DateFailed");
    ClearUserKey(app, notice.user, u"Notifymsg");
  }
  frame::WriteSetting(app, u"NotifyUsers", ListWithout(list, notice.user));
  return found;
}

}  // namespace notify
