#pragma once
// The job store's module state that is not the job array itself: the Backup Now
// watch, the collections of backup sets and mail addresses, the row under edit and
// the way a message reaches the user. It lives in AppState, one per program.
#include <functional>
#include <vector>

#include "base/Text.h"
#include "jobstore/BackupSetRecord.h"

namespace jobstore {

using base::Text;

// Icon and button codes of the product's message box.
inline constexpr int kIconCritical = 16;
inline constexpr int kIconQuestion = 32;
inline constexpr int kIconExclamation = 48;
inline constexpr int kIconInformation = 64;
inline constexpr int kButtonsOk = 0;

// Until the message box exists, a message goes to whoever installs this; the
// result is the button pressed. An empty callback drops the message.
using ShowMessageFn = std::function<int(const Text& text, int icon, int buttons)>;

// One row of the Backup Now list, in the list's column order.
struct BackupNowRow {
  Text Name;
  Text Destination;
  Text UserName;
  Text RecordNo;  // the source job; "-1" for a set that has none

  bool operator==(const BackupNowRow&) const = default;
};

// The rows the Backup Now screen shows. The screen copies them into its list view
// and reports the click back in SelectedRow.
struct BackupNowList {
  std::vector<BackupNowRow> Rows;
  long SelectedRow = 0;  // 1-based, 0 when nothing is selected

  const BackupNowRow* Selected() const {
    if (SelectedRow < 1 || static_cast<size_t>(SelectedRow) > Rows.size()) return nullptr;
    return &Rows[static_cast<size_t>(SelectedRow) - 1];
  }
  void Clear() {
    Rows.clear();
    SelectedRow = 0;
  }
};

struct JobStoreState {
  // Backup Now: set by its menu item; with it the schedule load watches for an
  // immediate job of the chosen set.
  bool BackupNowMode = false;
  bool MirrorMode = true;
  Text ChosenSetName;
  Text ChosenDestination = u"My Corvane/";
  bool ImmediateFound = false;
  BackupNowList LstBackupSet;

  // Lines of BacksetData.txt keyed by set name, and the addresses of Mailid.txt.
  std::vector<BackupSetRecord> BackupSetList;
  std::vector<Text> MailIdList;

  // Index of the record the editor works on.
  long RecordIndex = 0;
  // How many lines without a separator the trace was last told a load passed over.
  long PassedOverLines = 0;

  ShowMessageFn ShowMessage;
};

}  // namespace jobstore
