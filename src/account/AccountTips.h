#pragma once
// The balloon tips of Update Password and the feedback report.
// Keys are "form.control", matched without regard to case; a tip shows its text cut
// by kit::CutTipText.
#include "kit/TipTable.h"

namespace account {

inline constexpr kit::TipText kAccountTips[] = {
    {u"frmUpdatePassword.cmdUpdate", u"<br>Apply the updated password<br>"},
    {u"frmUpdatePassword.cmdClear", u"<br>Clear the data entered<br>"},
    {u"frmUpdatePassword.cmdClose", u"<br>Exit this screen<br>"},
    {u"frmErrorReport.cmdSend", u"<br>Email your query or feedback on the application <br>"},
    {u"frmErrorReport.cmdExit", u"<br>Exit the screen<br>"},
};

}  // namespace account
