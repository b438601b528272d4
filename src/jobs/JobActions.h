#pragma once
// The actions behind the buttons of Manage Scheduled Jobs, without the form: edit,
// Enter on the list, delete, run now, stop and stop completely. Each acts on the
// selected row of a JobList, in its fixed order of checks, changes scheduleData.txt or
// its state word, and then reloads and rebuilds the list. The engine is never called:
// it and the monitor meet in the schedule file only. The screen and tools/qvjobs both
// run these.
#include <cstdint>
#include <functional>

#include "base/Text.h"
#include "frame/AppState.h"
#include "jobs/JobListRules.h"
#include "jobs/JobPrompts.h"

namespace jobs {

using base::Text;

// Opens the schedule editor modally at the row whose "No." is `recordNo`. The editor is
// another screen's: the program fills this in (empty: the edit opens nothing).
using OpenEditorFn = std::function<void(const Text& recordNo)>;

// The blocking wait of stop completely before the state word is looked at again.
inline constexpr std::uint32_t kClearStopWaitMs = 9000;

class JobActions {
 public:
  // `majorVersion` is the system's for the plug-in rule (GetWinMajorVersion, or what a
  // command line fixes).
  JobActions(frame::AppState& app, JobList& list, JobPrompts& prompts, unsigned long majorVersion,
             OpenEditorFn openEditor = {})
      : app_(app),
        list_(list),
        prompts_(prompts),
        majorVersion_(majorVersion),
        openEditor_(std::move(openEditor)) {}

  // Edit: Pic_Edit_Click passes the selected row on as a double click.
  void Pic_Edit_Click();
  void Sch_list_lv_DblClick();
  // Enter on the list: finds the job again and keeps its index; opens nothing.
  void ShowSelectedRecord();
  // Key release on the list (13 Enter, 46 Delete).
  void Sch_list_lv_KeyUp(int keyCode);

  void Pic_Delete_Click();
  void DeleteRecord();

  void Pic_Imme_Click();
  void ScheduleImmediate(int recordNo);

  void Pic_Sttrf_Click();
  void StopTransfer();

  void Pic_Stcomp_Click();
  void ClearStopTransfer();

 private:
  void EditRow();
  int Ask(long code, int icon, int buttons);
  bool AskToEnableJobs(long code);

  frame::AppState& app_;
  JobList& list_;
  JobPrompts& prompts_;
  unsigned long majorVersion_;
  OpenEditorFn openEditor_;
};

// The "No." text as the 16-bit number the actions take; throws on an empty or
// non-numeric text and on one out of range.
int RecordNumberOf(const Text& text);

}  // namespace jobs
