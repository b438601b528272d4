#pragma once
// The rules of the schedule editor's choices (frmDTEmail) that need no form: what a
// click on a frequency, a day, the mail box or the cut-off box does to the other
// choices, the questions it asks, which controls it enables, and the texts the list
// shows for a row. The form copies its controls into EditorChoices, runs a rule and
// copies them back; the command line runs the same rules in place of the clicks.
#include "frame/AppState.h"
#include "jobs/ScheduleEditorModel.h"

namespace jobs {

// The grey of a disabled mail box and the white of an enabled one (0x00BBGGRR).
inline constexpr unsigned kMailDisabledColor = 0xABABAB;
inline constexpr unsigned kMailEnabledColor = 0xFFFFFF;

inline constexpr char16_t kHelpTopic[] = u"QVWINHelp.chm::/Corvane_Tray_Icon/Using_Tray_Icon.htm";
// The automated job's name, compared with regard to case as the job list does.
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

}  // namespace jobs
