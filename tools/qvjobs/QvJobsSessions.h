#pragma once
// `qvjobs sessions [--page N] [--json]`: a page of the Session Log as the screen shows
// it, on the screen's own code (the listing, the pager, the list and its default sort).
#include <string>
#include <vector>

#include "base/Text.h"
#include "frame/AppState.h"

namespace qvjobs {

struct SessionsPageRows {
  base::Text range;  // the pager's range text
  struct Row {
    base::Text startTime;    // "Start Time"
    base::Text description;  // "Description"
    base::Text sCol;         // "SCol", the hidden sort key
  };
  std::vector<Row> rows;  // in the list's order
};

// Page `page` (1-based) as the Next button walks the pages from the first load. Next
// does nothing once it is off, so a page past the end is the page the screen stays on.
SessionsPageRows ReadSessionsPage(frame::AppState& app, int page);

// The range text on a line, then a line "Start Time|Description|SCol" per row.
std::string SessionsPage(frame::AppState& app, int page);
// {"range": ..., "rows": [{"startTime", "description", "sCol"}, ...]}
std::string SessionsPageJson(frame::AppState& app, int page);

}  // namespace qvjobs
