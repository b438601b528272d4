#pragma once
// `qvjobs edit`: the schedule editor without its screen. It opens the editor on one
// record as the job list does, sets the controls the options name as a user would
// (so their click rules and questions run), and presses the main button, through the
// same code as frmDTEmail (jobs/ScheduleEditorModel, jobs/DTEmailRules).
#include <functional>
#include <string>
#include <vector>

#include "base/Text.h"
#include "QvJobsCommand.h"
#include "frame/AppState.h"

namespace qvjobs {

struct EditRequest {
  std::vector<std::string> args;  // RECORDNO and the edit options
  bool answerYes = true;          // --answer: what every question of the editor gets
  // The plug-in rule run on a change of frequency (nothing is tested when empty).
  std::function<bool(const base::Text& setName)> pluginRule;
};

// Checks the options; a bad one gives its reason in `usage` and nothing else is done.
// Otherwise runs the editor on `app` (its paths set) and prints each line of every
// message the screen would show into `out`. Exit 0 when the rows were written, 1 when
// a check refused the save or the job was in progress, 2 for a bad argument.
int RunEdit(frame::AppState& app, const EditRequest& request, std::string& out, std::string& usage);

}  // namespace qvjobs
