#include "jobstore/BackupSets.h"

#include <algorithm>

#include "base/Guarded.h"
#include "frame/Logs.h"
#include "frame/Settings.h"
#include "jobstore/DBaction.h"

namespace jobstore {

namespace {

constexpr char16_t kSetSeparator = u'\u0008';

void TraceReaderError(AppState& app, const base::ErrorInfo& e, const Text& where) {
  frame::TraceError(app, u"Error Monitor Reason :", e, where);
}

void TraceError(AppState& app, const base::ErrorInfo& e, const Text& where) {
  frame::TraceError(app, u"Error Reason :", e, where);
}

// Sets that Backup Now never offers, compared upper-cased.
bool IsHiddenSet(const Text& name) {
  const Text upper = base::ToUpper(name);
  return upper == u"AUTOEXCHANGE01" || upper == u"RESTORE ITEMSET" || upper == u"AUTOBKUPQVWIN";
}

// The collections are keyed the way the product's collections always were: a key
// that is already there, in any mix of capitals, refuses the new entry.
bool HasKey(const std::vector<BackupSetRecord>& list, const Text& key) {
  return std::any_of(list.begin(), list.end(),
                     [&](const BackupSetRecord& r) { return base::EqualsNoCase(r.Name, key); });
}
bool HasKey(const std::vector<Text>& list, const Text& key) {
  return std::any_of(list.begin(), list.end(),
                     [&](const Text& t) { return base::EqualsNoCase(t, key); });
}

Text Same(const Text& t) { return base::ToUpper(base::Trim(t)); }

}  // namespace

Text GetBackSetName(AppState& app, const Text& line) {
  Text name;
  base::Guarded(
      [&] {
        size_t p = line.find(kSetSeparator);
        if (p != Text::npos) name = line.substr(0, p);
      },
      [&](const base::ErrorInfo& e) {
        TraceReaderError(app, e, u"in procedure GetBackSetName of Module DBaction");
      });
  return name;
}

BackupNowOutcome DB_ReadBackdata(AppState& app) {
  frame::WriteTrace(app, u"Enter DB_ReadBackdata Monitor");
  BackupNowOutcome outcome = BackupNowOutcome::Close;
  JobStoreState& store = app.Store;
  base::Guarded(
      [&] {
        store.BackupSetList.clear();
        const Text userName = frame::ReadSetting(app, u"UserName");
        if (DB_NumberOfRecord(app, app.BacksetFilePath) >= 1) {
          std::vector<Text> lines;
          DB_ReadRecord(app, Text(), app.BacksetFilePath, lines);
          for (Text& line : lines) {
            Text name = GetBackSetName(app, line);
            if (!HasKey(store.BackupSetList, name))
              store.BackupSetList.push_back({std::move(name), std::move(line)});
          }
        }
        store.LstBackupSet.Clear();
        for (const BackupSetRecord& set : store.BackupSetList) {
          if (base::IsBlank(set.Line)) continue;
          const Text name = GetBackSetName(app, set.Line);
          if (IsHiddenSet(name)) continue;
          store.LstBackupSet.Rows.push_back({name, kDefaultDestination, userName, u"-1"});
        }
        if (!store.LstBackupSet.Rows.empty()) {
          store.LstBackupSet.SelectedRow = 1;
          outcome = BackupNowOutcome::Show;
        } else {
          ShowMessage(
              app, u"Create a Backup set using the " + app.AppTitle + u" application for backup.",
              kIconInformation);
        }
      },
      [&](const base::ErrorInfo& e) {
        TraceReaderError(app, e, u"in procedure DB_ReadBackdata of Monitor");
      });
  frame::WriteTrace(app, u"Exit DB_ReadBackdata Monitor");
  return outcome;
}

BackupNowOutcome DB_Relative_ReadBackdata(AppState& app) {
  BackupNowOutcome outcome = BackupNowOutcome::Close;
  JobStoreState& store = app.Store;
  base::Guarded(
      [&] {
        store.BackupNowMode = false;
        DB_ReadSchdata(app, Text(), app.Jobs, false);
        store.LstBackupSet.Clear();
        auto& rows = store.LstBackupSet.Rows;
        const Text user = Same(app.UserName);
        for (const ScheduleRecord& r : app.Jobs) {
          if (base::IsBlank(r.BackupSetName) || Same(r.UserName) != user ||
              Same(r.BackupSetName) == u"RESTORE ITEMSET")
            continue;
          // One row per set, destination and user: the first job of them gives its number.
          const bool listed = std::any_of(rows.begin(), rows.end(), [&](const BackupNowRow& row) {
            return Same(row.Name) == Same(r.BackupSetName) &&
                   Same(row.Destination) == Same(r.Destination) &&
                   Same(row.UserName) == Same(r.UserName);
          });
          if (!listed) rows.push_back({r.BackupSetName, r.Destination, r.UserName, r.RecordNo});
        }
        if (!rows.empty()) {
          outcome = BackupNowOutcome::Show;
        } else {
          ShowMessage(app,
                      u"No scheduled data available. You can use the 'Backup now' option in "
                      u"'Relative Path' mode only for the Backup sets that have already been "
                      u"scheduled.",
                      kIconInformation);
        }
      },
      [&](const base::ErrorInfo& e) {
        TraceReaderError(app, e, u"in procedure DB_Relative_ReadBackdata of Monitor");
      });
  return outcome;
}

BackupNowOutcome FillBackupNowList(AppState& app) {
  const Text mirror = base::Trim(frame::ReadSetting(app, u"MIRROR"));
  app.Store.MirrorMode = mirror == u"1" || mirror.empty();
  auto& fs = *app.platform.fs;
  if (app.Store.MirrorMode) {
    if (fs.FileExists(app.BacksetFilePath)) return DB_ReadBackdata(app);
    ShowMessage(app, u"Create a Backup set for backup using the " + app.AppTitle + u" application.",
                kIconInformation);
    return BackupNowOutcome::Close;
  }
  if (fs.FileExists(app.ScheduleFilePath)) return DB_Relative_ReadBackdata(app);
  return BackupNowOutcome::Nothing;
}

void DB_ReadMaildata(AppState& app, std::vector<Text>& list, const Text& path) {
  frame::WriteTrace(app, u"Enter DB_ReadMaildata");
  base::Guarded(
      [&] {
        list.clear();
        if (DB_NumberOfRecord(app, path) < 1) return;
        std::vector<Text> lines;
        DB_ReadRecord(app, Text(), path, lines);
        for (Text& line : lines)
          if (!HasKey(list, line)) list.push_back(std::move(line));
      },
      [&](const base::ErrorInfo& e) {
        TraceError(app, e, u"in procedure DB_ReadMaildata of Module DBaction");
      });
  frame::WriteTrace(app, u"Exit DB_ReadMaildata");
}

void Sch_LoadMailidList(AppState& app, std::vector<Text>* lstMailAdd) {
  base::Guarded(
      [&] {
        DB_ReadMaildata(app, app.Store.MailIdList, app.MailFilePath);
        for (const Text& address : app.Store.MailIdList) {
          if (base::IsBlank(address)) continue;
          // The schedule editor has no address list: its first row ends the load here,
          // after the collection is filled, which is all that screen uses.
          if (!lstMailAdd)
            throw base::Failure(438, "Object doesn't support this property or method");
          lstMailAdd->push_back(address);
        }
      },
      [&](const base::ErrorInfo& e) {
        TraceError(app, e, u"in procedure Sch_LoadMailidList of Class Module Scheduler");
      });
}

void Sch_SaveMailid(AppState& app, const Text& address) {
  base::Guarded(
      [&] {
        if (address.empty()) return;
        auto& list = app.Store.MailIdList;
        if (!CheckEnumStatus(list, address)) {
          if (list.size() >= kMaxMailIds) list.erase(list.begin());
          const Text wanted = base::ToLower(base::Trim(address));
          const bool known = std::any_of(list.begin(), list.end(), [&](const Text& t) {
            return base::ToLower(base::Trim(t)) == wanted;
          });
          if (!known) list.insert(list.begin(), address);
        }
        DB_WriteBackdata(app, list, app.MailFilePath);
      },
      [&](const base::ErrorInfo& e) {
        TraceError(app, e, u"in procedure Sch_SaveMailid of Class Module Scheduler");
      });
}

void DB_WriteBackdata(AppState& app, const std::vector<Text>& list, const Text& fileName) {
  base::Guarded(
      [&] {
        std::vector<Text> lines(list.rbegin(), list.rend());
        Text folder = app.ProgramFolder;
        if (folder.empty() && app.platform.system) folder = app.platform.system->ProgramFolder();
        // The caller hands over a full path and this joins it to the program folder
        // all the same: the write goes nowhere and Mailid.txt keeps its content. Kept.
        // The write traces its own failure.
        static_cast<void>(
            DB_WriteLines(app, lines, folder + u"\\" + fileName, static_cast<long>(lines.size())));
      },
      [&](const base::ErrorInfo& e) {
        TraceError(app, e, u"in procedure DB_WriteBackdata of Module DBaction");
      });
}

}  // namespace jobstore
