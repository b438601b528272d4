#include "sessions/SessionFiles.h"

#include <algorithm>
#include <cstdint>

#include "base/Guarded.h"
#include "frame/Logs.h"
#include "jobstore/NextRun.h"
#include "kit/ListView.h"

namespace sessions {

namespace {

using base::InStr;
using base::Mid;
using base::Replace;
using base::Trim;

// The word before the first blank ("" when the name starts with one); none without a blank.
std::optional<Text> WordOf(const Text& name) {
  const size_t blank = name.find(u' ');
  if (blank == Text::npos) return std::nullopt;
  return name.substr(0, blank);
}

Text WithoutTrailingSeparator(Text folder) {
  while (!folder.empty() && (folder.back() == u'\\' || folder.back() == u'/')) folder.pop_back();
  return folder;
}

}  // namespace

Text SessionListFolder(const frame::AppState& app) {
  return app.DataRoot + u"\\QVCOMMON\\session\\";
}

Text SessionFileFolder(const frame::AppState& app) {
  return app.DataRoot + u"\\QVCOMMON\\Session\\";
}

Text IconKeyOf(int icon) {
  if (icon == kIconBackup) return u"session_backup";
  if (icon == kIconRestore) return u"session_restore";
  return Text();
}

SessionKind KindOfWord(const Text& word) {
  // Compared exactly, with regard to case.
  if (word == u"Backup") return {u"Interactive " + word + u" ", kIconBackup};
  if (word == u"Restore") return {u"Interactive " + word + u" ", kIconRestore};
  if (word == u"Schedule") return {word + u" ", kIconBackup};
  static const struct {
    const char16_t* word;
    const char16_t* description;
  } kPlain[] = {
      {u"Automatic_Sync", u"Automatic Sync"},
      {u"Delete", u"Delete"},
      {u"Trash_Delete", u"Trash Delete"},
      {u"Empty_Trash", u"Empty Trash"},
      {u"Create_Directory", u"Create Directory"},
      {u"Rename", u"Rename"},
      {u"Move_to_Original", u"Move to Original"},
      {u"Continuous_Backup", u"Continuous Backup"},
      {u"Sync", u"Sync"},
  };
  for (const auto& k : kPlain) {
    if (word == k.word) return {k.description, kIconBackup};
  }
  return {};
}

const std::vector<PluginPrefix>& PluginPrefixes() {
  static const std::vector<PluginPrefix> kPrefixes = {
      {u"QVSystemState", u"System State Backup", &SessionFilter::bShowSystemState},
      {u"QVExchBrick", u"Exchange Server Brick-Level Backup", &SessionFilter::bShowExchBrick},
      {u"QVOracleLog", u"Oracle Server Database Backup-Restore", &SessionFilter::bShowOracleLog},
      {u"QVSharePoint", u"SharePoint Server Backup-Restore", &SessionFilter::bShowSharePoint},
  };
  return kPrefixes;
}

bool IsPluginPrefix(const Text& word) {
  for (const PluginPrefix& p : PluginPrefixes()) {
    if (word == p.prefix) return true;
  }
  return false;
}

std::optional<SessionRow> SessionRowOf(frame::AppState& app, const Text& name,
                                       const SessionFilter& filter) {
  const std::optional<Text> word = WordOf(name);
  if (!word) return std::nullopt;
  SessionRow row;
  if (filter.AnySet()) {
    // Only the flagged plug-ins' files, with their own description.
    for (const PluginPrefix& p : PluginPrefixes()) {
      if (filter.*p.flag && *word == p.prefix) {
        row.description = p.description;
        row.icon = kIconBackup;
      }
    }
    if (row.icon == kIconNone) return std::nullopt;
  } else {
    const SessionKind kind = KindOfWord(*word);
    row.description = kind.description;
    row.icon = kind.icon;
  }
  row.startTime = Mid(name, word->size() + 1, 21);
  // " mm-dd-yyyy  HH-MM-SS": the date from the second character, the time from the 13th.
  const Text date = Replace(Mid(row.startTime, 2, 10), u"-", u"/");
  const Text time = Replace(Mid(row.startTime, 13), u"-", u":");
  row.sortKey = jobstore::Sch_SortBuildDate(app, date + time);
  return row;
}

Text ListingKeyOf(frame::AppState& app, const Text& name) {
  const size_t blank = name.find(u' ');
  const Text tail = Trim(blank == Text::npos ? TextView(name) : TextView(name).substr(blank));
  // The date with one of the two blanks, then the other blank and the time.
  const Text when = Mid(tail, 1, 11) + Replace(Mid(tail, 12, 9), u"-", u":");
  return jobstore::Sch_SortBuildDate(app, when);
}

std::vector<SessionEntry> WalkSessionFolder(frame::AppState& app, const SessionFilter& filter,
                                            const std::function<void()>& turn) {
  std::vector<SessionEntry> entries;
  platform::IFileSystem* fs = app.platform.fs;
  if (fs == nullptr) return entries;
  Text folder = WithoutTrailingSeparator(SessionListFolder(app));
  // Windows does not tell "session" from "Session"; a file system that does (qvjobs
  // on Linux) lists the folder under the name the engine gives it.
  if (!fs->FolderExists(folder)) folder = WithoutTrailingSeparator(SessionFileFolder(app));
  if (!fs->FolderExists(folder)) return entries;
  const std::vector<platform::FileEntry> found = fs->List(folder, u"*");
  entries.reserve(found.size());
  const bool flagged = filter.AnySet();
  int sinceTurn = 0;
  for (const platform::FileEntry& file : found) {
    if (turn && ++sinceTurn == kFilesPerTurn) {
      sinceTurn = 0;
      turn();
    }
    if (flagged || file.isFolder || file.name == u"." || file.name == u"..") continue;
    // A name the file system could not give as text (bytes that are not UTF-8 on
    // Linux) comes with U+FFFD, and the file cannot be opened by it: passed over, and
    // the trace says so. A real U+FFFD in a name finds its file and stays.
    if (file.name.find(u'\uFFFD') != Text::npos && !fs->FileExists(folder + u"\\" + file.name)) {
      frame::WriteTrace(app, u"Session file passed over, its name is not text : " + file.name);
      continue;
    }
    const std::optional<Text> word = WordOf(file.name);
    if (!word || IsPluginPrefix(Trim(*word))) continue;
    entries.push_back({ListingKeyOf(app, file.name), file.name});
  }
  return entries;
}

namespace {

// A key of twelve digits as a number: two such keys compare as numbers the way they
// compare as text, so the sort need not reach the texts for them.
struct SortSlot {
  std::uint64_t number;
  std::uint32_t index;
  bool digits;
};

SortSlot SlotOf(const Text& key, std::uint32_t index) {
  SortSlot slot{0, index, key.size() == 12};
  for (size_t i = 0; slot.digits && i < key.size(); ++i) {
    if (key[i] < u'0' || key[i] > u'9') slot.digits = false;
    slot.number = slot.number * 10 + static_cast<std::uint64_t>(key[i] - u'0');
  }
  return slot;
}

}  // namespace

std::vector<Text> NewestFirst(std::vector<SessionEntry> entries) {
  // What keeping the entries in ascending order by insertion, equal keys in the order
  // found, and reading them from the last gives: a stable sort by key, read backwards.
  std::vector<SortSlot> slots;
  slots.reserve(entries.size());
  for (size_t i = 0; i < entries.size(); ++i)
    slots.push_back(SlotOf(entries[i].key, static_cast<std::uint32_t>(i)));
  std::stable_sort(slots.begin(), slots.end(), [&](const SortSlot& a, const SortSlot& b) {
    if (a.digits && b.digits) return a.number < b.number;
    return entries[a.index].key < entries[b.index].key;
  });
  std::vector<Text> names;
  names.reserve(entries.size());
  for (auto it = slots.rbegin(); it != slots.rend(); ++it)
    names.push_back(std::move(entries[it->index].name));
  return names;
}

std::vector<Text> ListSessionFiles(frame::AppState& app, const SessionFilter& filter,
                                   const std::function<void()>& turn) {
  return NewestFirst(WalkSessionFolder(app, filter, turn));
}

void FindSessionFiles(frame::AppState& app, kit::ListView& list, const std::vector<Text>& names,
                      int nStartIdx, int nEndIdx, const SessionFilter& filter) {
  list.ClearRows();
  const int last = std::min(nEndIdx, static_cast<int>(names.size()));
  for (int i = std::max(nStartIdx, 1); i <= last; ++i) {
    const std::optional<SessionRow> row =
        SessionRowOf(app, names[static_cast<size_t>(i - 1)], filter);
    if (!row) continue;
    kit::ListItem& item = list.AddRow(Text());
    item.SetIconKey(IconKeyOf(row->icon));
    item.SetSubItem(1, row->startTime);
    item.SetSubItem(2, row->description);
    item.SetSubItem(3, row->sortKey);
  }
}

Text SessionFileNameOf(const Text& description, const Text& startTime, NameFor use) {
  const Text kind = Trim(description);
  const Text time = Trim(startTime);
  const Text tail = u" " + time + u".txt";
  static const struct {
    const char16_t* description;
    const char16_t* word;
  } kBoth[] = {
      {u"Schedule", u"Schedule"},
      {u"System State Backup", u"QVSystemState"},
      {u"Exchange Server Brick-Level Backup", u"QVExchBrick"},
      {u"Oracle Server Database Backup-Restore", u"QVOracleLog"},
      {u"Automatic Sync", u"Automatic_Sync"},
      {u"Rename", u"Rename"},
      {u"Trash Delete", u"Trash_Delete"},
      {u"Empty Trash", u"Empty_Trash"},
      {u"Move to Original", u"Move_to_Original"},
      {u"Create Directory", u"Create_Directory"},
      {u"Sync", u"Sync"},
      {u"Delete", u"Delete"},
  };
  for (const auto& k : kBoth) {
    if (kind == k.description) return k.word + tail;
  }
  // Viewing knows the SharePoint logs, deleting the continuous backups; the name that
  // deleting builds for those holds the fixed time twice and finds no file.
  if (use == NameFor::View && kind == u"SharePoint Server Backup-Restore")
    return u"QVSharePoint" + tail;
  if (use == NameFor::Delete && kind == u"Continuous Backup")
    return u"Continuous_Backup " + time + u"  00-00-00.txt";
  // Any other: what follows the description's first blank ("Interactive Backup" gives
  // "Backup"); a description without a blank stays whole.
  return Mid(kind, InStr(kind, u" ") + 1) + tail;
}

void Trf_ViewFile(frame::AppState& app, const Text& path) {
  frame::WriteTrace(app, u"Enter Trf_ViewFile ");
  if (platform::IShell* shell = app.platform.shell) {
    // Owned by the desktop: no window of ours (0 is the desktop to the shell).
    const long result = shell->Execute(0, u"open", path, Text(), Text(), 1);
    // 31: no program is linked to the type; the system's "Open with" lets the user choose.
    // It is started from the system folder by its full path: a bare name would be
    // looked for in the program's folder and the current folder first.
    if (result == 31) {
      const Text system = app.platform.system ? app.platform.system->SystemFolder() : Text();
      if (system.empty()) {
        frame::WriteTrace(app, u"Trf_ViewFile: the system folder is unknown, no Open with");
      } else {
        shell->Run(u"\"" + system + u"\\RUNDLL32.EXE\" shell32.dll,OpenAs_RunDLL " + path, false);
      }
    }
  }
  frame::WriteTrace(app, u"Exit Trf_ViewFile ");
}

void GetSessionFileSelected_View(frame::AppState& app, kit::ListView& list, int nSelectedIDX) {
  base::Guarded(
      [&] {
        if (list.Count() == 0 || nSelectedIDX == 0) return;
        const kit::ListItem& row = list.Item(nSelectedIDX);
        const Text path = SessionFileFolder(app) +
                          SessionFileNameOf(row.SubItem(2), row.SubItem(1), NameFor::View);
        if (app.platform.fs != nullptr && app.platform.fs->FileExists(path))
          Trf_ViewFile(app, path);
      },
      [&](const base::ErrorInfo& e) {
        frame::WriteTrace(app, u"Error in GetSessionFileSelected_View, Reason : " + e.description);
      });
}

bool GetSessionFileSelected_Delete(frame::AppState& app, kit::ListView& list, int nSelectedIDX) {
  bool removed = false;
  base::Guarded(
      [&] {
        if (list.Count() == 0 || !list.Item(nSelectedIDX).Checked()) return;
        const kit::ListItem& row = list.Item(nSelectedIDX);
        const Text path = SessionFileFolder(app) +
                          SessionFileNameOf(row.SubItem(2), row.SubItem(1), NameFor::Delete);
        // The row goes first: a file that is gone or stays leaves only the row changed.
        list.RemoveRow(nSelectedIDX);
        removed = true;
        // Without force: a read-only file stays, and the failure goes to the trace.
        platform::IFileSystem* fs = app.platform.fs;
        if (fs != nullptr && fs->FileExists(path) && !fs->DeleteFileWithoutForce(path))
          throw base::Failure(70, "Permission denied");
      },
      frame::TraceFailure(app, u"Error Reason :",
                          u"in procedure GetSessionFileSelected_Delete of Class Module "
                          u"TreeViewControl"));
  return removed;
}

}  // namespace sessions
