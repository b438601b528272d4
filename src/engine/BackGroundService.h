#pragma once
// The engine installed as a plain background program with a hidden window titled
// "QVBackground". It has no pause: the program cannot be told to hold.
#include "engine/EngineObject.h"
#include "frame/AppState.h"

namespace engine {

inline constexpr std::uint32_t kCloseMessage = 16;  // WM_CLOSE
inline constexpr int kShowHidden = 0;               // SW_HIDE

class BackGroundService : public EngineObject {
 public:
  explicit BackGroundService(frame::AppState& app);

  Text GetServiceStatus() override;
  void ServiceStart() override;
  void ServiceStop() override;
  void StopTransfer() override;
  Text getlabelstring() override;
  long getVersion() override;
  long getMajorVersion() override;
  long IsServiceExeRunning(bool KillIt) override;
  bool StopTransferMsgBox() override;
  bool IsService() const override { return false; }

  const Text& ExeName() const { return exeName_; }

 private:
  // The scan without the kill; a failure of the scan reaches the caller.
  bool IsExeRunning();

  frame::AppState& app_;
  Text exeName_;
};

}  // namespace engine
