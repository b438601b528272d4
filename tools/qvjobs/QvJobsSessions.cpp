#include "QvJobsSessions.h"

#include "JsonWriter.h"
#include "kit/Form.h"
#include "kit/ListView.h"
#include "sessions/SessionFiles.h"
#include "sessions/SessionPager.h"

namespace qvjobs {

SessionsPageRows ReadSessionsPage(frame::AppState& app, int page) {
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

  SessionsPageRows out;
  out.range = range;
  for (int i = 1; i <= list.Count(); ++i) {
    const kit::ListItem& row = list.Item(i);
    out.rows.push_back({row.SubItem(1), row.SubItem(2), row.SubItem(3)});
  }
  return out;
}

std::string SessionsPage(frame::AppState& app, int page) {
  const SessionsPageRows shown = ReadSessionsPage(app, page);
  std::string out = base::ToUtf8(shown.range) + "\n";
  for (const auto& row : shown.rows)
    out += base::ToUtf8(row.startTime + u"|" + row.description + u"|" + row.sCol) + "\n";
  return out;
}

std::string SessionsPageJson(frame::AppState& app, int page) {
  const SessionsPageRows shown = ReadSessionsPage(app, page);
  JsonWriter json;
  json.BeginObject();
  json.Key("range").String(base::TextView(shown.range));
  json.Key("rows").BeginArray();
  for (const auto& row : shown.rows) {
    json.BeginObject();
    json.Key("startTime").String(base::TextView(row.startTime));
    json.Key("description").String(base::TextView(row.description));
    json.Key("sCol").String(base::TextView(row.sCol));
    json.EndObject();
  }
  json.EndArray();
  return json.EndObject().Document();
}

}  // namespace qvjobs
