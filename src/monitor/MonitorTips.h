#pragma once
// The balloon tips of the monitor window's buttons.
// Keys are "form.control", matched without regard to case; a tip shows its text cut
// by kit::CutTipText.
#include "kit/TipTable.h"

namespace monitor {

inline constexpr kit::TipText kMonitorTips[] = {
    {u"frmQVWinService.btnLogFile", u"<br>View details of scheduled jobs<br>"},
    {u"frmQVWinService.btnRefresh", u"<br>Update the service status and the log entries<br>"},
    {u"frmQVWinService.btnStopTransfer",
     u"<br>Immediately stop the backup or restore <br>operation that is underway<br>"},
    {u"frmQVWinService.btnClose", u"QVMonitor will continue to <br>run in the system tray.<br>"},
    {u"frmQVWinService.cmdDetails", u"<br>View the 20 most recent Session logs.<br>"},
    {u"frmQVWinService.chkbandwidth",
     u"<br>Auto Pause option makes intelligent guesses on <br>pausing backup to enable optimum "
     u"<br>desktop experience during user activity <br>"},
};

}  // namespace monitor
