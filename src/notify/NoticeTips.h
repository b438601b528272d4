#pragma once
// The balloon tips of the job-end notification; the missed-backup notice borrows its
// Close text.
// Keys are "form.control", matched without regard to case; a tip shows its text cut
// by kit::CutTipText.
#include "kit/TipTable.h"

namespace notify {

inline constexpr kit::TipText kNoticeTips[] = {
    {u"bkupjobnotify.viewbkuplog",
     u"<br>View the log of the scheduled <br>backup /restore jobs<br>"},
    {u"bkupjobnotify.cancel", u"<br>Exit this screen<br>"},
};

}  // namespace notify
