#pragma once
// The engine installed as the Windows service "QVWin Service", driven through the
// service manager.
#include "engine/EngineObject.h"
#include "frame/AppState.h"

namespace engine {

class NTService : public EngineObject {
 public:
  explicit NTService(frame::AppState& app);

  Text GetServiceStatus() override;
  void ServicePause() override;
  void ServiceStart() override;
  void ServiceStop() override;
  void ServiceResume() override;
  void StopTransfer() override;
  Text getlabelstring() override;
  long IsServiceExeRunning(bool KillIt) override;
  bool StopTransferMsgBox() override;
  long getVersion() override;
  long getMajorVersion() override;
  long GetServiceStartupType() override;
  Text GetCompName() override;
  bool Installed() override;
  bool IsService() const override { return true; }

  // Whether this object has already asked for the start type to be repaired.
  bool ConfigRepairIssued() const { return configRepairIssued_; }
  const Text& ExeName() const { return exeName_; }

 private:
  // Open manager, open service, one call, close both: the shape of every operation.
  template <class Call>
  void WithService(unsigned long managerAccess, unsigned long serviceAccess, Call&& call);
  void Control(unsigned long code);

  frame::AppState& app_;
  bool configRepairIssued_ = false;
  Text exeName_;
};

// "Stopped", "Start Pending", ... "Paused" for the service states 1 to 7; "" otherwise.
Text ServiceStateWord(unsigned long state);

// The command that sets the service back to automatic start on `computerName`.
Text StartTypeRepairCommand(const Text& computerName);

}  // namespace engine
