#pragma once
// The program's entry: data root, write permission, the single instance, the engine
// objects, the monitor window shown or hidden in the tray.
#include <optional>

#include "base/Text.h"
#include "frame/AppState.h"

namespace frame {

inline constexpr char16_t kInstanceMutexName[] = u"Global\\QVWinMonitor";

// What Main asks of the layers above it, in the order it asks.
class IStartupSteps {
 public:
  virtual ~IStartupSteps() = default;
  virtual void CreateEngines(AppState& app) = 0;      // step 6
  virtual void LoadMonitorWindow(AppState& app) = 0;  // step 9 (the window's load steps)
  // Step 11, in twips, applied in the order width, height, top, left; a value that
  // did not convert to a number is passed over on its own.
  virtual void ApplyGeometry(AppState& app, std::optional<long> width, std::optional<long> height,
                             std::optional<long> top, std::optional<long> left) = 0;
  virtual void HideFromTaskBar(AppState& app) = 0;  // step 12
  virtual void ShowFromTaskBar(AppState& app) = 0;  // step 13
  virtual void ShowLogInWindow(AppState& app) = 0;  // step 14
};

enum class MainResult {
  Run,                // the window is loaded: run the message loop
  NoWritePermission,  // ended silently at step 3
  AlreadyRunning,     // ended silently at step 5
};

Text SettleDataRoot(AppState& app);  // sets and returns DataRoot
// Removes the temporary files of whole writes that an earlier run did not finish
// (QVCOMMON and the folders under it); returns how many.
int RemoveLeftoverWrites(AppState& app);
bool WritePermissionCheck(AppState& app);
bool InstanceGuard(AppState& app);
void SetBacksetFilePath(AppState& app);
MainResult Main(AppState& app, IStartupSteps& steps);

}  // namespace frame
