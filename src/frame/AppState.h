#pragma once
// The process-wide values of the monitor, in one object owned by the running program
// and passed by reference. Nothing here is global, so tests build as many programs as
// they like. Paths carry no trailing separator.
#include <cstdint>
#include <memory>
#include <vector>

#include "base/Text.h"
#include "engine/ScanMemo.h"
#include "engine/TransferUpdate.h"
#include "jobstore/JobStoreState.h"
#include "jobstore/ScheduleRecord.h"
#include "platform/WholeFile.h"
#include "platform/Platform.h"

namespace frame {

using base::Text;

// The scrambled password store lives with the account code, above this layer; the
// settings routines reach it through this interface when their secure flag is set.
class StartupTimes;

class ISecureStore {
 public:
  virtual ~ISecureStore() = default;
  virtual Text ReadSecure(const Text& keyName) = 0;
  // The system's reason when the value could not be stored.
  [[nodiscard]] virtual platform::WriteResult WriteSecure(const Text& keyName,
                                                          const Text& value) = 0;
};

struct AppState {
  explicit AppState(platform::Platform& p) : platform(p) {}

  platform::Platform& platform;
  ISecureStore* secureStore = nullptr;
  StartupTimes* startupTimes = nullptr;  // set only while the start-up is being timed

  // Start-up and paths.
  Text ProgramFolder;
  Text DataRoot;
  Text ScheduleFilePath;
  Text ServiceLogPath;
  Text MailFilePath;
  Text BacksetFilePath;
  Text SessionFilePath;
  Text UserName;
  std::uintptr_t MonitorMutexHandle = 0;
  // The system's reason of the last write of a shared file (the schedule, a setting,
  // the stored password) that did not reach the disk; "" when none failed.
  Text LastWriteFailure;

  // Per-job log names set by the notification and dial-up handling.
  Text CurrentLogName;
  Text CurrentSessionFile;

  // Branding, from images\Config.txt.
  Text AppTitle = u"Corvane for Windows";

  // The engine objects (always both, and the one of the installed type).
  std::shared_ptr<engine::EngineObject> ServiceEngine;
  std::shared_ptr<engine::EngineObject> BackgroundEngine;
  std::shared_ptr<engine::EngineObject> ActiveEngine;

  // The job store's in-memory copy of scheduleData.txt and the state line last read.
  std::vector<jobstore::ScheduleRecord> Jobs;
  long RecordCount = 0;
  Text StateLine;
  // The rest of the job store's module state (Backup Now watch, set and mail lists).
  jobstore::JobStoreState Store;

  // The engine's progress, pushed by the callback and drawn by the tick.
  engine::TransferUpdate Transfer;
  engine::ProcessScanMemo ProcessScans;  // engine/ProcessScan
  bool TransferSeen = false;
  bool UpdateWaiting = false;
  bool StopSeen = false;
  Text PaneFlag;

  // Folder helpers.
  Text CommonFolder() const { return DataRoot + u"\\QVCOMMON"; }
  Text CommonFile(const Text& name) const { return CommonFolder() + u"\\" + name; }
};

}  // namespace frame
