// The monitor window: the activity log list and its menu items.
#include "base/Guarded.h"
#include "frame/Logs.h"
#include "frame/Settings.h"
#include "monitor/LogView.h"
#include "monitor/frmQVWinService.h"
#include "platform/TextFile.h"

namespace monitor {

namespace {

constexpr kit::Color kErrorRowColor = 255;  // red

}  // namespace

Text frmQVWinService::LogPath() {
  Text path = frame::ReadAccountKey(app_, u"Corvane", u"SessionFile", false);
  if (path.empty()) path = app_.ServiceLogPath;
  app_.SessionFilePath = path;
  return path;
}

void frmQVWinService::ShowLogInWindow() {
  base::IgnoreFailure([&] {
    platform::IFileSystem* fs = app_.platform.fs;
    if (fs == nullptr) return;
    Text path = app_.SessionFilePath;
    if (path.empty()) path = frame::ReadAccountKey(app_, u"Corvane", u"SessionFile", false);
    if (path.empty()) path = app_.ServiceLogPath;
    if (!fs->FileExists(path)) return;
    auto lines = ReadNewestLines(*fs, path, kNewestLines, [&] {
      Sleep(1);
      ui_.DoEvents();
    });
    // A file that cannot be read gives no lines, as an empty one does.
    FillLogList(lines.value_or(std::vector<Text>{}));
  });
}

bool frmQVWinService::SameRows(const std::vector<LogRow>& rows) const {
  if (static_cast<std::size_t>(lstLog.Count()) != rows.size()) return false;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const kit::ListItem& item = lstLog.Item(static_cast<int>(i) + 1);
    const LogRow& row = rows[i];
    if (item.GetText() != row.type || item.SubItem(1) != row.time ||
        item.SubItem(2) != row.message || item.SubItemCount() != 2 ||
        item.ForeColor() != (row.error ? kErrorRowColor : kit::kDefaultColor))
      return false;
  }
  return true;
}

void frmQVWinService::FillLogList(const std::vector<Text>& lines) {
  std::vector<LogRow> rows;
  for (const Text& line : lines) {
    if (auto row = ParseLogLine(line)) rows.push_back(std::move(*row));
  }
  // The rows go below those already there, and a list that would then hold more rows
  // than there are lines is filled again from empty. Deciding first gives the same
  // list without adding the rows twice.
  const int selected = lstLog.SelectedIndex();
  const bool refill = static_cast<std::size_t>(lstLog.Count()) + rows.size() > lines.size();
  // Most ticks find the log as it was: the list already shows what filling it again
  // would give, so it is left alone (and does not flicker).
  if (refill && SameRows(rows)) return;
  if (refill) lstLog.ClearRows();
  for (const LogRow& row : rows) {
    kit::ListItem& item = lstLog.AddRow(row.type);
    item.SetSubItem(1, row.time);
    item.SetSubItem(2, row.message);
    if (row.error) item.SetForeColor(kErrorRowColor);
    Sleep(2);
  }
  if (refill && selected > 0 && selected <= lstLog.Count()) lstLog.Item(selected).SetSelected(true);
}

void frmQVWinService::mnuOpenlog_Click() {
  base::IgnoreFailure([&] {
    const Text path = LogPath();
    platform::IFileSystem* fs = app_.platform.fs;
    if (fs != nullptr && !fs->FileExists(path)) platform::TextFile::Create(*fs, path, false);
    if (app_.platform.shell == nullptr) return;
    const long result = app_.platform.shell->Execute(0, u"open", path, Text(), Text(), 1);
    // The shell's result is the number of what went wrong.
    if (result < 32) {
      frame::WriteTrace(app_, u"Error while opening the Session log file.\r\nReason : " +
                                  base::FromNumber(result));
    }
  });
}

void frmQVWinService::mnuClearlog_Click() {
  LogPath();
  lstLog.ClearRows();
}

}  // namespace monitor
