#pragma once
// The rules of the schedule editor's choices (frmDTEmail) that need no form: what a
// click on a frequency, a day, the mail box or the cut-off box does to the other
// choices, the questions it asks, which controls it enables, and the texts the list
// shows for a row. The form copies its controls into EditorChoices, runs a rule and
// copies them back; the command line runs the same rules in place of the clicks.
#include <array>
#include <vector>

#include "frame/AppState.h"
#include "jobs/ScheduleEditorModel.h"

namespace jobs {

// The grey of a disabled mail box and the white of an enabled one (0x00BBGGRR).
inline constexpr unsigned kMailDisabledColor = 0xABABAB;
inline constexpr unsigned kMailEnabledColor = 0xFFFFFF;

inline constexpr char16_t kHelpTopic[] = u"QVWINHelp.chm::/Corvane_Tray_Icon/Using_Tray_Icon.htm";
// The automated job's name, compared with regard to case as the job list does.
inline constexpr char16_t kAutomatedSet[] = u"autobkupqvwin";

inline constexpr const char16_t* kDayNames[] = {u"Sunday",   u"Monday", u"Tuesday", u"Wednesday",
                                                u"Thursday", u"Friday", u"Saturday"};
inline constexpr char16_t kRestoreSet[] = u"Restore ItemSet";
inline constexpr char16_t kDeleteRestoreUnderway[] =
    u"The scheduled job can not be deleted as the restore operation is underway.";
inline constexpr char16_t kStopQuestion[] =
    u"A scheduled job is underway.\r\nDo you want to stop it?";

// The list's columns: caption and width in twips (0 hides "DataSort", the sort key).
struct EditorColumn {
  const char16_t* caption;
  double width;
};
inline constexpr EditorColumn kEditorColumns[] = {
    {u"Backupset", 2000}, {u"Next Transfer", 1900}, {u"Frequency", 1300},
    {u"Status", 1100},    {u"Destination", 1500},   {u"DataSort", 0},
    {u"No.", 600},        {u"User Name", 1200},     {u"Scheduled day(s)", 2400}};

enum class FrequencyControl { Immediate, Hourly, Monthly };

// Which of the choices a user may touch after a rule ran.
struct ChoiceEnables {
  bool DTPMonthly = false;
  bool DTPicker = true;
  bool ChkEmailNotification = true;
  bool chkdesktop = true;
  bool chkCutoffTime = true;
};

// chkImmediate, optHourly or optMonthly was clicked (its new value is in `c`). A check
// of hourly or monthly puts a suggested start time in DTPicker (set_RecommendedTime);
// an uncheck that leaves no frequency at all marks the row cleared: saving removes it.
void FrequencyClick(AppState& app, ScheduleEditor& ed, EditorChoices& c, FrequencyControl which);
// chkBox(index) changed; chkDaily and its caption follow the count of days. A day click
// never marks the row cleared (a row left without days saves as daily); one that leaves
// a day checked takes the mark of an earlier uncheck away.
void DayClick(ScheduleEditor& ed, EditorChoices& c);
// chkDaily was clicked: all seven days follow it, then as DayClick.
void DailyClick(ScheduleEditor& ed, EditorChoices& c);
// ChkEmailNotification was clicked.
void MailClick(AppState& app, EditorChoices& c);
// chkCutoffTime was clicked; a check asks whether to go on.
void CutoffClick(AppState& app, ScheduleEditor& ed, EditorChoices& c);

// The caption chkDaily shows for the choices.
Text DailyCaptionFor(const EditorChoices& c);
ChoiceEnables EnablesFor(const EditorChoices& c);

// The cut-off question for a time text.
Text CutoffQuestion(AppState& app, const Text& time);

// The list's texts of a record: the date in the screen's order (the DateFormat rule),
// the days column.
Text ScreenDate(AppState& app, const Text& fileDate);
Text DaysColumn(const jobstore::ScheduleRecord& r);
// The status of a row: only the next job shows one, from the state line.
Text StatusFor(const Text& stateLine);

// One row of the list: its key ("QV_" and the number), the set's name, and the
// sub-items 1 to 8 in the order of the columns.
struct EditorRow {
  Text key;
  Text name;
  std::array<Text, 8> cells;
};
// The rows the list shows for the temporary array, in the array's order. A record
// without a number or whose Days is "No Schedule" (any case) has no row, nor has a
// second record of a number already shown. Only the record at `nextJobIndex` has a
// status, from the state line of the schedule file.
std::vector<EditorRow> EditorRows(AppState& app, const ScheduleEditor& ed, long nextJobIndex);
// The number of the job the engine runs now (the next job while the state line says
// "1" or "2"); "" when none runs.
Text CurrentJobNo(AppState& app, long nextJobIndex);

// After a delete: no day checked, and chkDaily back to its plain caption.
void ClearDays(EditorChoices& c);
// After a delete from the file (the global list read again): a job that is gone leaves
// the temporary array too, so that the list no longer shows it. The edits of the other
// rows stay there for the main button.
void ForgetDeletedJob(AppState& app, ScheduleEditor& ed, const Text& recordNo);

}  // namespace jobs
