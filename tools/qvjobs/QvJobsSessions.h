#pragma once
// `qvjobs sessions [--page N]`: a page of the Session Log as the screen shows it, on
// the screen's own code (the listing, the pager, the list and its default sort).
#include <string>

#include "frame/AppState.h"

namespace qvjobs {

// Page `page` (1-based) as the Next button walks the pages from the first load: the
// range text on a line, then a line "Start Time|Description|SCol" per row in the
// list's order. Next does nothing once it is off, so a page past the end prints the
// page the screen stays on.
std::string SessionsPage(frame::AppState& app, int page);

}  // namespace qvjobs
