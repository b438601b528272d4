#pragma once
// The session files: one plain text log per operation of the engine or the main
// application, in QVCOMMON\Session, named "<word> mm-dd-yyyy  HH-MM-SS.txt". The
// monitor never reads them; what it shows of a session (its kind and start time) is
// told by the name. This module holds the name rule, the order of the files, a name
// turned into a row of the list and a row turned back into a name, and the two
// actions on a row (view, delete).
#include <functional>
#include <optional>
#include <vector>

#include "base/Text.h"
#include "frame/AppState.h"

namespace kit {
class ListView;
}

namespace sessions {

using base::Text;
using base::TextView;

// The folder, as listing names it and as opening and deleting name it; the file
// system does not tell the two apart.
// Both end in a separator: "<root>\QVCOMMON\session\" and "<root>\QVCOMMON\Session\".
Text SessionListFolder(const frame::AppState& app);
Text SessionFileFolder(const frame::AppState& app);

// The small pictures of the list's rows: entry 1 (the backup kinds) and 2 (restore).
inline constexpr int kIconNone = 0;
inline constexpr int kIconBackup = 1;
inline constexpr int kIconRestore = 2;
Text IconKeyOf(int icon);  // "session_backup", "session_restore", "" for none

// The word before the first blank of a name, and what the list shows for it.
struct SessionKind {
  Text description;  // the "Description" column; empty for a word nobody knows
  int icon = kIconNone;
};
SessionKind KindOfWord(const Text& word);

// The logs of the plug-ins: four prefixes the normal listing leaves out. A flag that
// is set turns the normal listing off and lets only the rows of its prefix through.
// Nothing in the program sets one; a caller may.
struct SessionFilter {
  bool bShowSystemState = false;
  bool bShowExchBrick = false;
  bool bShowOracleLog = false;
  bool bShowSharePoint = false;
  bool AnySet() const {
    return bShowSystemState || bShowExchBrick || bShowOracleLog || bShowSharePoint;
  }
};
struct PluginPrefix {
  const char16_t* prefix;
  const char16_t* description;
  bool SessionFilter::*flag;
};
// "QVSystemState", "QVExchBrick", "QVOracleLog", "QVSharePoint", in that order.
const std::vector<PluginPrefix>& PluginPrefixes();
bool IsPluginPrefix(const Text& word);

// One row of LstSessionLogView, in the order of its columns after the item itself.
struct SessionRow {
  Text startTime;    // "Start Time": 21 characters from the first blank on, blank included
  Text description;  // "Description"
  Text sortKey;      // "SCol" (hidden): yyyymmddHHMM
  int icon = kIconNone;
  bool operator==(const SessionRow&) const = default;
};

// The row of one listed name; none for a name without a blank, or (with a filter
// flag set) for a name of another prefix.
std::optional<SessionRow> SessionRowOf(frame::AppState& app, const Text& name,
                                       const SessionFilter& filter = {});

// A name as the listing found it, with the key it sorts by.
struct SessionEntry {
  Text key;
  Text name;
};

// The key the listing gives a name: the date and time behind its first blank, the
// time with ":", through Sch_SortBuildDate.
Text ListingKeyOf(frame::AppState& app, const Text& name);

// How many files the walk takes between two turns of the user interface.
inline constexpr int kFilesPerTurn = 256;

// The folder walked: the names that are listed, in the order the file system gives
// them, each with its key. `turn` lets the user interface through as the walk goes.
std::vector<SessionEntry> WalkSessionFolder(frame::AppState& app, const SessionFilter& filter,
                                            const std::function<void()>& turn = {});

// Newest first: keys in descending order of plain text comparison; of equal keys the
// one found later stands first.
std::vector<Text> NewestFirst(std::vector<SessionEntry> entries);

// ListSessionFiles: every listed name of the folder, newest first (the model of the
// screen's pages).
std::vector<Text> ListSessionFiles(frame::AppState& app, const SessionFilter& filter = {},
                                   const std::function<void()>& turn = {});

// FindSessionFiles: the list's rows become those of names nStartIdx to nEndIdx
// (1-based, both included) of `names`; an empty range empties the list.
void FindSessionFiles(frame::AppState& app, kit::ListView& list, const std::vector<Text>& names,
                      int nStartIdx, int nEndIdx, const SessionFilter& filter = {});

// From a row back to its file name: by the trimmed "Description" and "Start Time".
// Viewing and deleting know different kinds (see docs/sessions.md).
enum class NameFor { View, Delete };
Text SessionFileNameOf(const Text& description, const Text& startTime, NameFor use);

// Opens a file with the program the shell links to its type, or lets the user choose
// one when there is none.
void Trf_ViewFile(frame::AppState& app, const Text& path);

// Opens the file of row nSelectedIDX when it is there.
void GetSessionFileSelected_View(frame::AppState& app, kit::ListView& list, int nSelectedIDX);
// Removes row nSelectedIDX when it bears a check mark, then deletes its file when it
// is there. Answers whether the row was removed.
bool GetSessionFileSelected_Delete(frame::AppState& app, kit::ListView& list, int nSelectedIDX);

}  // namespace sessions
