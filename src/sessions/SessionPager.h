#pragma once
// The Session Log's rules that need no form: the pager over the listed names (the
// first page, Next and Back, with the design's NextStart one page ahead of the page
// shown), and the list's rules (its default sort, a column click, Select All, a check
// mark). The screen and `qvjobs sessions` both page through these.
#include <optional>
#include <vector>

#include "base/Text.h"
#include "frame/AppState.h"
#include "sessions/SessionFiles.h"

namespace kit {
class ListView;
class ListItem;
}  // namespace kit

namespace sessions {

// The look of a pager button after a step: its picture, and its enabled state when
// the step sets it.
struct PagerButton {
  Text picture;  // "next_reg", "next_dis", "back_reg", "back_dis"
  std::optional<bool> enabled;
  bool operator==(const PagerButton&) const = default;
};

// What one step of the pager does to the screen.
struct PageStep {
  bool find = false;  // the list is rebuilt from names from..to (an empty range empties it)
  int from = 0;
  int to = 0;
  Text range;  // lblDispItems
  std::optional<PagerButton> next;
  std::optional<PagerButton> back;
};

// "first to last of total".
Text RangeText(int first, int last, int total);

class SessionPager {
 public:
  static constexpr int kPageSize = 50;

  // The first page of `count` names (the load, and again after a delete).
  PageStep Load(int count);
  // lblNext and lblBack.
  PageStep Next(int count);
  PageStep Back(int count);

  // Names before the page that Next would show: one page ahead of the page shown.
  int NextStart = 0;
  int PageSize = kPageSize;
};

// The list's columns ("Type", "Start Time", "Description", the hidden "SCol") and its
// check marks, as the screen has them.
void SetUpSessionList(kit::ListView& list);

// Rebuilds the list for a step and sorts it as every rebuild does (a step without a
// rebuild leaves the rows as they are).
void ShowPage(frame::AppState& app, kit::ListView& list, const std::vector<Text>& names,
              const PageStep& step, const SessionFilter& filter = {});

// SortListview: by the hidden key "SCol", descending.
void SortListview(kit::ListView& list);
// A click on a column (1-based): the order flips; "Start Time" and "Description"
// sort by "SCol", "Type" by the start time's text.
void ColumnClickSort(kit::ListView& list, int column);
// Select All: every row of the page checked or not, from the last to the first.
void CheckAllRows(kit::ListView& list, bool checked);
// A check mark set or taken off by the user: a checked row is selected too. Answers
// whether every row of the page now bears a check mark.
bool CheckMarkChanged(kit::ListView& list, kit::ListItem& item);

}  // namespace sessions
