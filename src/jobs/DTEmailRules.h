#pragma once
// The rules of the schedule editor's choices (frmDTEmail) that need no form: what a
// click on a frequency, a day, the mail box or the cut-off box does to the other
// choices, the questions it asks, which controls it enables, and the texts the list
// shows for a row. The form copies its controls into EditorChoices, runs a rule and
// copies them back; the command line runs the same rules in place of the clicks.
#include "frame/AppState.h"
#include "jobs/ScheduleEditorModel.h"

namespace jobs {

inline constexpr char16_t kDailyCaption[] = u" Daily Schedule";
inline constexpr char16_t kWeekDaysCaption[] = u" Week-Day(s)";
// The grey of a disabled mail box and the white of an enabled one (0x00BBGGRR).
inline constexpr unsigned kMailDisabledColor = 0xABABAB;
inline constexpr unsigned kMailEnabledColor = 0xFFFFFF;

inline constexpr char16_t kHelpTopic[] = u"QVWINHelp.chm::/Corvane_Tray_Icon/Using_Tray_Icon.htm";
inline constexpr char16_t kAutomatedSet[] = u"autobkupqvwin";

enum class FrequencyControl { Immediate, Hourly, Monthly };

// Which of the choices a user may touch after a rule ran.
struct ChoiceEnables {
  bool DTPMonthly = false;
  bool DTPicker = true;
  bool ChkEmailNotification = true;
  bool chkdesktop = true;
  bool chkCutoffTime = true;
};

// chkImmediate, optHourly or optMonthly was clicked (its new value is in `c`).
void FrequencyClick(AppState& app, ScheduleEditor& ed, EditorChoices& c, FrequencyControl which);
// chkBox(index) changed; chkDaily follows the count of days.
void DayClick(ScheduleEditor& ed, EditorChoices& c);
// chkDaily was clicked: all seven days follow it.
void DailyClick(ScheduleEditor& ed, EditorChoices& c);
// ChkEmailNotification was clicked.
void MailClick(AppState& app, EditorChoices& c);
// chkCutoffTime was clicked; a check asks whether to go on.
void CutoffClick(AppState& app, ScheduleEditor& ed, EditorChoices& c);

// " Daily Schedule" with all seven days, else " Week-Day(s)".
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

}  // namespace jobs
