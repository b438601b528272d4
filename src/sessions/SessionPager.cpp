#include "sessions/SessionPager.h"

#include "kit/ListView.h"

namespace sessions {

namespace {

const PagerButton kNextOn{u"next_reg", true};
const PagerButton kNextOff{u"next_dis", false};
const PagerButton kBackOn{u"back_reg", true};
const PagerButton kBackOff{u"back_dis", false};

}  // namespace

Text RangeText(int first, int last, int total) {
  return base::FromNumber(first) + u" to " + base::FromNumber(last) + u" of " +
         base::FromNumber(total);
}

PageStep SessionPager::Load(int count) {
  NextStart = 0;
  PageSize = kPageSize;
  PageStep step;
  if (count <= NextStart + PageSize) {
    // One page at most: Next is off at once, even for exactly one full page.
    if (count != 0) {
      step.find = true;
      step.from = NextStart + 1;
      step.to = count;
      step.range = RangeText(step.from, count, count);
    }
    step.next = kNextOff;
  } else {
    step.find = true;
    step.from = NextStart + 1;
    step.to = NextStart + PageSize;
    step.range = RangeText(step.from, step.to, count);
    NextStart += PageSize;
    // The design names only the picture here; the button is enabled with it, or a
    // delete made on the last page would leave page one with a Next that cannot act.
    step.next = kNextOn;
  }
  step.back = kBackOff;
  return step;
}

PageStep SessionPager::Next(int count) {
  PageStep step;
  if (count >= NextStart + PageSize) {
    // A count that ends on this page's end keeps Next on: one more click shows the
    // empty page "101 to 100 of 100".
    step.find = true;
    step.from = NextStart + 1;
    step.to = NextStart + PageSize;
    step.range = RangeText(step.from, step.to, count);
    step.next = PagerButton{u"next_reg", std::nullopt};
  } else {
    if (count != 0) {
      step.find = true;
      step.from = NextStart + 1;
      step.to = count;
      step.range = RangeText(step.from, count, count);
    }
    step.next = kNextOff;
  }
  NextStart += PageSize;
  step.back = NextStart > 0 ? kBackOn : kBackOff;
  return step;
}

PageStep SessionPager::Back(int count) {
  PageStep step;
  NextStart = NextStart - 2 * PageSize >= 0 ? NextStart - 2 * PageSize : 0;
  step.find = true;
  step.from = NextStart + 1;
  step.to = NextStart + PageSize;
  step.range = RangeText(step.from, step.to, count);
  step.back = NextStart > 0 ? kBackOn : kBackOff;
  step.next = kNextOn;
  NextStart += PageSize;
  return step;
}

void SetUpSessionList(kit::ListView& list) {
  list.ClearColumns();
  list.AddColumn(u"Type", 900);
  list.AddColumn(u"Start Time", 2900);
  list.AddColumn(u"Description", 5500);
  list.AddColumn(u"SCol", 0);
  list.SetCheckboxes(true);
  list.SetFullRowSelect(true);
  list.SetHideSelection(false);
}

void ShowPage(frame::AppState& app, kit::ListView& list, const std::vector<Text>& names,
              const PageStep& step, const SessionFilter& filter) {
  if (step.find) FindSessionFiles(app, list, names, step.from, step.to, filter);
  SortListview(list);
}

void SortListview(kit::ListView& list) {
  list.SetSortKey(3);
  list.SetSortOrder(kit::SortOrder::Descending);
  list.SetSorted(true);
}

void ColumnClickSort(kit::ListView& list, int column) {
  list.SetSortOrder(list.Order() == kit::SortOrder::Ascending ? kit::SortOrder::Descending
                                                              : kit::SortOrder::Ascending);
  // The description is never the key: its column sorts by "SCol" as "Start Time" does.
  list.SetSortKey(column == 2 ? column + 1 : column);
}

void CheckAllRows(kit::ListView& list, bool checked) {
  for (int i = list.Count(); i >= 1; --i) list.Item(i).SetChecked(checked);
}

bool CheckMarkChanged(kit::ListView& list, kit::ListItem& item) {
  if (list.Count() > 0 && item.Checked()) item.SetSelected(true);
  for (int i = 1; i <= list.Count(); ++i) {
    if (!list.Item(i).Checked()) return false;
  }
  return true;
}

}  // namespace sessions
