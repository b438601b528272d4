#pragma once
// The balloon tips of the job screens: Backup Now, the job list and the schedule editor.
// The editor's texts stand under the names of its buttons as they were, whether or not
// the editor shows them.
// Keys are "form.control", matched without regard to case; a tip shows its text cut
// by kit::CutTipText.
#include "kit/TipTable.h"

namespace jobs {

inline constexpr kit::TipText kJobTips[] = {
    {u"frmBackupNow.cmdBackupNow",
     u"<br>Initiate an immediate scheduled backup for the <br>selected Backup set, without logging "
     u"into <br>the application<br>"},
    {u"frmBackupNow.cmdClose", u"<br>Exit this screen<br>"},
    {u"frmManageScheduledJobs.Pic_Edit",
     u"<br>Edit a backup or restore job (only exception <br>is when it is indicated as 'In "
     u"Progress')<br>"},
    {u"frmManageScheduledJobs.Pic_Delete",
     u"<br>Delete a backup or restore job (only exception <br>is when it is indicated as 'In "
     u"Progress')<br>"},
    {u"frmManageScheduledJobs.Pic_Imme",
     u"<br>Start an immediate backup or restore of the selected job<br>"},
    {u"frmManageScheduledJobs.Pic_Refresh", u"<br>View an updated list of your scheduled jobs<br>"},
    {u"frmManageScheduledJobs.Pic_Sttrf", u"<br>Stop the backup or restore job <br>"},
    {u"frmDTEmail.Sch_Start4_Cancel", u"<br>Exit this screen<br>"},
    {u"frmDTEmail.Sch_Start4_Next", u"<br>Save the information and <br>parameters provided<br>"},
    {u"frmDTEmail.Sch_Start4_Help", u"<br>Access the Help Guide<br>"},
    {u"frmDTEmail.cmdmailadd",
     u"<br>Provide additional email addresses on which <br>you want to receive the "
     u"notifications<br>"},
    {u"frmManageScheduledJobs.SchcmdClose", u"<br>Exit this screen<br>"},
    {u"frmDTEmail.Pic_Delete",
     u"<br>Delete the selected backup / restore job unless <br>its status indicates 'In "
     u"Progress'<br>"},
    {u"frmDTEmail.Pic_Refresh", u"<br>Update the scheduled job list<br>"},
    {u"frmDTEmail.Pic_Sttrf",
     u"<br>Stop the backup / restore job <br>with the status 'In Progress'<br>"},
};

}  // namespace jobs
