#pragma once
// The missed-backup check of the tick: the engine lists in NotifyUsers ("<<" between
// names) the accounts whose scheduled backups have been failing, and records per
// account since when (DateFailed, yyyymmdd), why (Notifymsg) and that a notice is due
// (Notify_Err "1"). Once NoofDays have gone by the monitor tells the user, clears the
// keys and takes the account off the list; at most one account per tick.
#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <vector>

#include "base/DateTime.h"
#include "base/Text.h"
#include "frame/AppState.h"

namespace notify {

using base::Text;
using base::TextView;

// The support address in the notice's texts: qvwin.ini key "SupportMail", this when unset.
inline constexpr char16_t kSupportMailKey[] = u"SupportMail";
inline constexpr char16_t kDefaultSupportMail[] = u"support@corvane.com";
Text SupportAddress(frame::AppState& app);

// NoofDays with its bounds: empty or below 1 is 7, 31 or more is 30. A value that is
// not a number throws base::Failure, which ends the check for this tick.
int DaysToWait(const Text& noofDays);

// The date of eight digits yyyymmdd, months and days past their end rolling over as
// the platform's date serials do; throws base::Failure when they are not digits.
base::DateTime DateOfDigits(const Text& eightDigits);

// The reason words of Notifymsg, compared in upper case. A set without items is told
// by "NOBACUPSETDATA_" anywhere in the value, the set's name standing behind the word's
// length counted from the value's start.
inline constexpr char16_t kReasonMissed[] = u"MISSEDBACKUP";
inline constexpr char16_t kReasonNoScheduleJob[] = u"NOSCHEDULEJOB";
inline constexpr char16_t kReasonNoSetData[] = u"NOBACUPSETDATA";
enum class MissedReason { Missed, NoScheduleJob, NoSetData, Plain, Other };
struct ReasonOfNotice {
  MissedReason kind = MissedReason::Other;
  Text setName;  // NoSetData only
};
ReasonOfNotice ReasonOf(const Text& notifymsg);

// The sentence that tells an account without a scheduled job.
inline constexpr char16_t kNoScheduleSentence[] = u"You have not scheduled any backup jobs.";
// The sentence the notice gives a set without items, without its "Reason : " in front.
Text NoItemsSentence(const Text& setName);

// The notice's text for a reason word (compared in upper case); nullopt for a word
// the notice has no text for, which leaves the text it had.
std::optional<Text> NoticeText(const Text& reason, std::int64_t days, const Text& user,
                               const Text& support);

// The entries of NotifyUsers in order, blank ones passed over.
std::vector<Text> NotifyEntries(const Text& notifyUsers);

// The list as written back: every non-blank entry but the user, each behind "<<".
Text ListWithout(const Text& notifyUsers, const Text& user);

struct MissedBackupNotice {
  Text user;                 // the entry as it stands in the list
  std::int64_t days = 0;     // whole days since DateFailed
  Text reason;               // Notifymsg as read (trimmed)
  std::optional<Text> text;  // Label2; nullopt keeps what it shows
  bool plainLayout = false;  // Notifymsg was empty: the text moves, the link up
  bool shown = false;        // false: a failure over 99 days old, dropped without a word
};

// What the check makes of one entry of the list on `today`, reading the account's keys
// and writing nothing: the notice it is due for, or nullopt when it is not due (yet).
// A NoofDays or DateFailed that is no number throws base::Failure. The check of the
// tick and read-only reports share this one rule.
std::optional<MissedBackupNotice> DueNotice(frame::AppState& app, const Text& entry,
                                            const base::DateTime& today);

// One run of the check on `today`. `show` is called when a notice is due, before the
// account's keys are cleared. Returns the account it handled, if any. An entry that
// would leave its folder as a path is passed over (it stays in the list) and traced,
// once for each entry that `passedOver` keeps (every time without it).
std::optional<MissedBackupNotice> CheckMissedBackup(
    frame::AppState& app, const base::DateTime& today,
    const std::function<void(const MissedBackupNotice&)>& show,
    std::set<Text>* passedOver = nullptr);

}  // namespace notify
