#include "QvJobsSessions.h"

#include "kit/Form.h"
#include "kit/ListView.h"
#include "sessions/SessionFiles.h"
#include "sessions/SessionPager.h"

namespace qvjobs {

std::string SessionsPage(frame::AppState& app, int page) {
  // The screen's list, without the screen: a form only to hold it.
  kit::Form holder(u"frmSessionLog");
  kit::ListView list(holder, u"LstSessionLogView", {});
  sessions::SetUpSessionList(list);

  const std::vector<base::Text> names = sessions::ListSessionFiles(app);
  const int count = static_cast<int>(names.size());
  sessions::SessionPager pager;
  sessions::PageStep step = pager.Load(count);
  sessions::ShowPage(app, list, names, step);
  base::Text range = step.range;
  bool nextOn = step.next && step.next->enabled.value_or(true);
  for (int shown = 1; shown < page && nextOn; ++shown) {
    step = pager.Next(count);
    sessions::ShowPage(app, list, names, step);
    range = step.range;
    if (step.next && step.next->enabled) nextOn = *step.next->enabled;
  }

  std::string out = base::ToUtf8(range) + "\n";
  for (int i = 1; i <= list.Count(); ++i) {
    const kit::ListItem& row = list.Item(i);
    out += base::ToUtf8(row.SubItem(1) + u"|" + row.SubItem(2) + u"|" + row.SubItem(3)) + "\n";
  }
  return out;
}

}  // namespace qvjobs
