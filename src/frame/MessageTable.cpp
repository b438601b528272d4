#include "frame/MessageTable.h"

#include <algorithm>
#include <iterator>

namespace frame {

namespace {

struct Entry {
  long code;
  const char16_t* text;
};

// Codes that read as one piece. Several texts stand twice under different codes;
// each code keeps its own.
constexpr Entry kSingle[] = {
    {1, u"Error while opening the logs for the backup jobs."},
    {3, u"Select a scheduled Backup set to be backed up immediately. "},
    {4, u"Create a Backup set using the Corvane for Windows application to perform backup."},
    {5,
     u"Download and install the 'Advanced Backup plug-in' for the SQL Server, Exchange Server, "
     u"Brick level Backup and Oracle server Backups."},
    {7, u"The frequency for the Oracle server database backup can not be set as 'Hourly'."},
    {8, u"The frequency for the Oracle server database backup can not be set as 'Hourly'."},
    {9, u"Enter your valid email address to receive notifications."},
    {10,
     u"The selected date/time for the scheduled backup/restore job has passed. Enter new "
     u"settings."},
    {11, u"Your email could not be sent because"},
    {12, u"Enter your email address. "},
    {13, u"Enter your contact number to allow the support team to correspond with you personally."},
    {14, u"Enter your feedback/query. "},
    {15, u"Do you want to stop the backup/restore operation?"},
    {21,
     u"Download and install the 'Advanced Backup plug-in'for the SQL Server, Exchange Server, "
     u"Brick level Backup and Oracle server Backups."},
    {23, u" This record can not be edited as a backup/restore job is 'In Progress'."},
    {24, u"Are you sure you want to delete the automated backup job?"},
    {25, u"This record can not be deleted as a backup job is 'In Progress'."},
    {26, u"Are you sure you want to delete the scheduled record?"},
    {27, u"Select a record that you want to delete."},
    {28, u"The scheduled job could not be found as it may have already been backed up."},
    {30, u"The scheduled job will stop shortly."},
    {31, u"Do you want to stop the data transfer completely? "},
    {32, u"The scheduled job will stop shortly."},
    {33, u"Are you sure you want to delete the automated backup job?"},
    {34,
     u"Download and install the 'Advanced Backup plug-in' for the SQL Server, Exchange Server, "
     u"Brick level Backup and Oracle server Backups."},
    {36, u"Select the scheduled job which is 'In Progress' to stop the backup/restore operation."},
    {37, u"An 'Immediate' job can not be added now as a backup/restore job is 'In Progress'."},
    {38, u"An immediate backup/ restore job is already on the list."},
    {39, u"Enter your Corvane username."},
    {40, u"Enter your Corvane password."},
    {41, u"Do you want to update the password for the existing scheduled jobs?"},
    {42, u"Enter your correct Corvane username and password and try again."},
    {43, u"Unable to connect to Corvane. Reason : account '"},
    {44, u"' has been canceled."},
    {45, u"Unable to connect to Corvane. Reason : account '"},
    {46, u"' has expired."},
    {47, u"You can not update your password now as a scheduled job is in progress."},
    {48, u"You have successfully updated the password for your scheduled jobs."},
    {49, u"You have not selected any transfer set."},
    {50, u"You have not specified any Zip File Name."},
    {51, u"Enter your email address."},
    {52, u"Enter your valid email address."},
    {53, u"Enter your valid email address."},
    {54,
     u"The selected date/time for the scheduled backup/restore job has passed. Enter new "
     u"settings."},
    {55, u"Select the file to be backed up."},
    {56, u"Select a folder in your Corvane account where you want your backups to go."},
    {57, u"Select the file to be restored. "},
    {58, u"Select a folder on your local machine to restore data."},
    {59, u"Enter a valid email address."},
    {60, u"Enter a valid email address."},
    {61, u"Unable to open the file "},
    {62, u"Reason: "},
    {63, u"Are you sure you want to delete the logs of the scheduled jobs?"},
    {66, u"You have already set up an immediate backup job for this Backup set '"},
    {67, u"You have successfully set up an immediate backup of your scheduled Backup set '"},
    {68, u"'. You may check its status from the system tray."},
    {69,
     u"No scheduled data available. You can use the 'Backup now' option in 'Relative Path' mode "
     u"only for the Backup sets that have already been scheduled."},
    {70, u"You have chosen to set a cut-off time ' "},
    {72, u"Login to the Corvane for Windows application and enable the Web Management feature."},
    {73, u"Enter the correct Username and password and try again."},
    {74,
     u"Web Management helps you manage your Backup set, schedule backups and view backup logs via "
     u"a web browser. Do you want to disable this feature?"},
    {102, u"Unable to the open Scheduler screen."},
    {104, u"The record could not be deleted because"},
    {175, u"Select the item(s) that you want to delete."},
    {176, u"Select an item to view its details."},
    {277, u"Authentication failed. Login to Corvane for Windows with your updated credentials."},
    {278, u"Operation aborted as your account has been canceled / expired."},
    {296, u"The scheduled job can not be deleted as the backup operation is underway."},
    {297, u"The scheduled job can not be edited as the restore operation is underway."},
    {298, u"Do you want to delete the scheduled job?"},
    {299, u"Select a scheduled job to delete."},
    {300, u"The scheduled job could not be found as it may have already been backed up."},
    {305, u"The scheduled job will stop shortly."},
    {326,
     u"Are you sure you wish to delete this particular job? This is an automated job that "
     u"automatically backs up your data files after applying the rules which you have selected "
     u"through the automated file selection/backup wizard."},
    {329,
     u"To stop the backup operation, select the scheduled job with the status  'In Progress'."},
    {330,
     u"To stop the restore operation, select the scheduled job with the status 'In Progress'."},
    {500,
     u"Download and install the 'Advanced Backup plug-in' for the SQL Server, Exchange Server, "
     u"Brick level Backup and Oracle server Backups."},
    {501,
     u"Download and install the 'Advanced Backup plug-in' for the SQL Server, Exchange Server, "
     u"Brick level Backup and Oracle server Backups. "},
    {502,
     u"Download and install the 'Advanced Backup plug-in' for the SQL Server, Exchange Server, "
     u"Brick level Backup and Oracle server Backups."},
    {527, u"You can only select folders."},
    {532,
     u"Download and install the 'Advanced Backup plug-in' for the SQL Server, Exchange Server, "
     u"Brick level Backup and Oracle Server Backups."},
    {547, u"You have set '"},
};

constexpr char16_t kCrLf[] = u"\r\n";

}  // namespace

Text GetMessage(long code, const Text& appTitle) {
  const Text nl = kCrLf;
  switch (code) {
    case 2: return u"." + nl + u"Reason : ";
    case 6:
    case 22:
    case 35:
      return u"All your scheduled backup/restore jobs are currently disabled." + nl +
             u"Do you want to enable them?";
    case 16: return u"Create a Backup set for backup using the " + appTitle + u" application.";
    case 17:
      return u"There is a backup/ restore operation in progress, can not pause the QVWin "
             u"Service" +
             nl + nl + u"To cancel the backup operation, Stop the QVWin Service";
    case 18:
      return u"There is backup/ restore process in progress. Stopping QVWin service now will "
             u"result in cancelling the backup/ restore process and loss of data." +
             nl + nl + u"Are you sure you want to stop the QVWin service?";
    case 19:
      return u"The backup/ restore operation is set to stop..." + nl +
             u"The service will stop only after the current file being backed up is completely "
             u"backed up. This might take some time.";
    case 20:
      return u"If you select this option, all your scheduled jobs will be stopped." + nl +
             u"Do you want to proceed?";
    case 29: return u"A scheduled job is in progress." + nl + u"Do you want to stop the transfer? ";
    case 64: return u"Reason: " + nl + u"Error while deleting the logs.";
    case 65: return u"Create a Backup set using the " + appTitle + u" application for backup.";
    // 71 and 548 follow the text a caller puts before them (message 70 or 547 and the
    // time); the question comes last, after an empty line.
    case 71:
      return u"' for the scheduled backup/restore operation. This may terminate your "
             u"scheduled backup/restore operation before it is completed." +
             nl + nl + u"Would you like to proceed?";
    case 100: return u"Reason : " + nl + u"Unable to continue";
    case 101: return Text(u"Use the feedback form provided on our website ") + kFeedbackSite + u".";
    case 103: return u"Unable to load the scheduled data backup/restore jobs." + nl + u"Reason:";
    case 177:
      return u"There is no item to view." + nl +
             u"The scheduled job can not be deleted as the restore operation is underway.";
    case 304: return u"A scheduled job is underway." + nl + u"Do you want to stop it?";
    case 327:
      return u"All your scheduled backup/ restore jobs are disabled as of now. Do you want to "
             u"enable them?" +
             nl +
             u"Download and install the 'Advanced Backup plug-in' for the SQL Server, Exchange "
             u"Server, Brick level Backup and Oracle Server Backups.";
    case 548:
      return u"' as the cut-off time for the scheduled backup/restore operation. This may "
             u"terminate the scheduled job before it is complete." +
             nl + nl + u"Do you want to proceed?";
    case 564:
      return u"A record has been added for immediate backup/restore." + nl +
             u"This operation should commence within a few minutes." + nl + nl +
             u"Click the 'Refresh' button to get the updated status on this backup/restore job.";
    default: break;
  }
  auto it = std::find_if(std::begin(kSingle), std::end(kSingle),
                         [code](const Entry& e) { return e.code == code; });
  return it == std::end(kSingle) ? Text() : Text(it->text);
}

Text GetMessage(const frame::AppState& app, long code) { return GetMessage(code, app.AppTitle); }

}  // namespace frame
