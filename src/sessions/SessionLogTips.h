#pragma once
// The balloon tips of the Session Log.
// Keys are "form.control", matched without regard to case; a tip shows its text cut
// by kit::CutTipText.
#include "kit/TipTable.h"

namespace sessions {

inline constexpr kit::TipText kSessionLogTips[] = {
    {u"frmSessionLog.chkSelectAll",
     u"<br>Select all the backup and restore <br>session log entries <br>"},
    {u"frmSessionLog.cmdView",
     u"<br>View the log file of the selected <br>backup or restore session <br>"},
    {u"frmSessionLog.cmdDelete",
     u"<br>Delete the log file of the selected backup <br>or restore session<br>"},
    {u"frmSessionLog.cmdCloseSessionLog", u"<br>Exit this screen<br>"},
};

}  // namespace sessions
