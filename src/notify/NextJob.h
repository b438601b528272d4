#pragma once
// The next-job and quota lines of the job-end notice: when the next scheduled job
// starts, told in the largest unit that fits, and how much of the account's quota is
// used. Composed from the schedule file and the settings; the notice only shows them.
#include <cstdint>
#include <optional>

#include "base/DateTime.h"
#include "base/Text.h"
#include "frame/AppState.h"
#include "kit/Control.h"

namespace notify {

using base::Text;
using base::TextView;

// Differences between two moments as the platform's date arithmetic counts them: the
// calendar days, hours and minutes whose boundaries lie between them, and the seconds.
struct DateDiffs {
  std::int64_t days = 0;
  std::int64_t hours = 0;
  std::int64_t minutes = 0;
  std::int64_t seconds = 0;
};
DateDiffs DateDiff(const base::DateTime& from, const base::DateTime& to);

inline constexpr char16_t kNoScheduledJob[] = u"No scheduled backup/restore job(s)";
inline constexpr char16_t kStartsImmediately[] =
    u"Next backup/restore job(s) will start immediately";
inline constexpr char16_t kStartsIn[] = u"Your backup/restore job(s) will start in next ";

// The state line for a job at `next` seen at `now`; `withTime` is false only when it
// says the job starts immediately. Years come with one decimal in the locale's style.
struct NextJobStatus {
  Text text;
  bool withTime = true;
};
NextJobStatus NextJobStatusLine(const base::DateTime& now, const base::DateTime& next,
                                TextView decimalSeparator);

// What the notice shows of the next job.
struct NextJobView {
  Text status;             // schjobststus
  bool showLines = false;  // lblnxtbkup and lblnxtbkupTime
  Text setName;            // the next set as a label shows it ("&" doubled), unwrapped
  base::DateTime nextRun;  // the time of the next transfer (DTPNextTrf)
};

// The rules on one record's set name, next-run text and sort key. A day-first
// `dateFormat` ("D...") means the next-run text is day first; only its seconds count,
// the rest comes from the sort key. A key that makes no date throws base::Failure.
NextJobView ComposeNextJob(const Text& setName, const Text& nextRunText, const Text& sortKey,
                           const Text& dateFormat, const base::DateTime& now,
                           TextView decimalSeparator);

// The same for the job that sorts first in the schedule file, with the present time of
// the platform's clock and the DateFormat of the settings object.
NextJobView ReadNextJob(frame::AppState& app);

// "Next Backup/Restore Set:  " and "Next Transfer Time: " lines.
inline constexpr char16_t kNextSetPrefix[] = u"Next Backup/Restore Set:  ";
inline constexpr char16_t kNextTimePrefix[] = u"Next Transfer Time: ";
// The time as the date picker shows it: the short date and the time, in the locale's style.
Text NextTransferTimeText(frame::AppState& app, const base::DateTime& next);

// ---- Quota ------------------------------------------------------------------------

inline constexpr kit::Color kQuotaFullColor = 0x4D4DFF;  // red: used at or above total
inline constexpr kit::Color kQuotaColor = 0x0DDF27;      // green

struct QuotaView {
  bool visible = false;            // lblquota, lblUserQuota and QVDiskPBar
  std::optional<double> barValue;  // nullopt leaves the bar as it is
  kit::Color barColor = kQuotaColor;
  std::optional<Text> label;  // nullopt leaves lblUserQuota as it is
};

// The figures behind the quota line: the megabytes of TotalSpace and UsedSpace, the bar's
// percentage (100 once used reaches total; none when the total is 0), the used bytes and
// the total in bytes as the account kind counts them ("QVSYNC" 1024s, "QVWIN" 1000s;
// none for another kind). Nullopt when either value is empty or "0".
struct QuotaFigures {
  double totalMegabytes = 0;
  double usedMegabytes = 0;
  std::optional<double> percent;
  double usedBytes = 0;
  std::optional<double> totalBytes;
};
std::optional<QuotaFigures> QuotaFiguresOf(const Text& totalSpace, const Text& usedSpace,
                                           const Text& accountType);

// TotalSpace and UsedSpace hold megabytes followed by "M". The total is told in binary
// units for a "QVSYNC" account and in decimal ones for "QVWIN" (the used space binary in
// both): the account kinds count so, and the asymmetry is kept. Another kind leaves the
// label alone. Either value empty or "0": nothing is shown.
QuotaView ComposeQuota(frame::AppState& app, const Text& totalSpace, const Text& usedSpace,
                       const Text& accountType);

// The same from qvwin.ini and the user's ACCTYPE.
QuotaView ReadQuota(frame::AppState& app);
std::optional<QuotaFigures> ReadQuotaFigures(frame::AppState& app);

}  // namespace notify
