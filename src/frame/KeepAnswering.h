#pragma once
// Long work on the program's one thread (a load of many thousand records, a fill of as
// many rows) calls KeepAnswering every few hundred items. At most every 100 ms it lets
// the host answer what other programs sent to the windows (a WM_NULL that asks whether
// the program hangs, a question of the shell or a screen reader) and nothing else: no
// timer, input or callback runs, so the work is not entered again from inside.
#include "frame/AppState.h"

namespace frame {

void KeepAnswering(AppState& app);

}  // namespace frame
