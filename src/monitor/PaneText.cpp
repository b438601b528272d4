#include "monitor/PaneText.h"

#include "base/Guarded.h"
#include "engine/MonitorCallback.h"
#include "frame/Logs.h"

namespace monitor {

Text TransferStatusLine(frame::AppState& app, const engine::TransferUpdate& t) {
  const Text rate = t.sTrfRate.empty() ? Text() : u" (" + t.sTrfRate + u")";
  if (t.dTotalFilesize != 0) {
    return u"Status : " + GetProperSizeValue(app, t.dTotalBuffer, false) + u" out of " +
           GetProperSizeValue(app, t.dTotalFilesize, false) + rate;
  }
  return u"Status : " + GetProperSizeValue(app, t.dTotalBuffer, false) + u" Transferred" + rate;
}

Text FileNameWithKind(const engine::TransferUpdate& t) {
  Text name = base::Replace(t.sFileName, u"&", u"&&");
  if (t.sBkStatus == 1) return u"[Full Backup] " + name;
  if (t.sBkStatus == 2) return u"[Incremental Backup] " + name;
  return name;
}

std::optional<Text> TimeLeftForPane(const engine::TransferUpdate& t) {
  return engine::FilterTimeLeft(t.TimeRemaining, t.dTotalFilesize);
}

}  // namespace monitor
