#include "engine/NTService.h"

#include "engine/EngineNames.h"
#include "engine/ProcessScan.h"
#include "engine/StopWord.h"
#include "frame/Logs.h"
#include "platform/ServiceManager.h"

namespace engine {

namespace {

constexpr char16_t kErrorText[] = u"Error Monitor ";
// GetComputerNameW is given 16 characters: a longer name does not fit and fails.
constexpr std::size_t kComputerNameBufferChars = 16;

template <class T>
T& Require(T* service) {
  if (!service) throw base::Failure(91, "Object variable or With block variable not set");
  return *service;
}

}  // namespace

Text ServiceStateWord(unsigned long state) {
  switch (state) {
    case 1: return u"Stopped";
    case 2: return u"Start Pending";
    case 3: return u"Stop Pending";
    case 4: return u"Running";
    case 5: return u"Continue Pending";
    case 6: return u"Pause Pending";
    case 7: return u"Paused";
    default: return Text();
  }
}

Text StartTypeRepairCommand(const Text& computerName) {
  return u"SC \"\\\\" + computerName + u"\" config \"" + kServiceName + u"\" start= auto";
}

NTService::NTService(frame::AppState& app) : app_(app), exeName_(kServiceProgram) {}

template <class Call>
void NTService::WithService(unsigned long managerAccess, unsigned long serviceAccess, Call&& call) {
  platform::IServiceManager& sm = Require(app_.platform.services);
  // Without the service the manager would open nothing; it is not asked at all.
  if (!sm.ServiceInstalled(kServiceName)) return;
  const platform::ScHandle manager = sm.OpenSCManagerW(Text(), kServicesDatabase, managerAccess);
  if (manager == 0) return;
  const platform::ScHandle service = sm.OpenServiceW(manager, kServiceName, serviceAccess);
  if (service != 0) {
    base::Guarded([&] { call(sm, service); },
                  [&](const base::ErrorInfo& e) { frame::TraceError(app_, kErrorText, e); });
    sm.CloseServiceHandle(service);
  }
  sm.CloseServiceHandle(manager);
}

bool NTService::Installed() {
  return app_.platform.services == nullptr ||
         app_.platform.services->ServiceInstalled(kServiceName);
}

Text NTService::GetServiceStatus() {
  Text word;
  base::Guarded(
      [&] {
        WithService(platform::kGenericRead, platform::kServiceQueryStatus,
                    [&](platform::IServiceManager& sm, platform::ScHandle service) {
                      platform::ServiceStatus status;
                      if (sm.QueryServiceStatus(service, status))
                        word = ServiceStateWord(status.currentState);
                    });
      },
      [&](const base::ErrorInfo& e) { frame::TraceError(app_, kErrorText, e); });
  return word;
}

void NTService::Control(unsigned long code) {
  base::Guarded(
      [&] {
        WithService(platform::kScManagerAllAccess, platform::kServiceAllAccess,
                    [&](platform::IServiceManager& sm, platform::ScHandle service) {
                      platform::ServiceStatus status;
                      sm.ControlService(service, code, status);
                    });
      },
      [&](const base::ErrorInfo& e) { frame::TraceError(app_, kErrorText, e); });
}

void NTService::ServicePause() { Control(platform::kServiceControlPause); }
void NTService::ServiceStop() { Control(platform::kServiceControlStop); }
void NTService::ServiceResume() { Control(platform::kServiceControlContinue); }

void NTService::ServiceStart() {
  base::Guarded(
      [&] {
        if (GetServiceStartupType() == static_cast<long>(platform::kServiceDisabled)) {
          const Text computer = GetCompName();
          // Once per object: the command is not awaited, and a service that stays
          // disabled must not get a new command window-less process every tick.
          if (!computer.empty() && !configRepairIssued_) {
            Require(app_.platform.shell).Run(StartTypeRepairCommand(computer), true);
            configRepairIssued_ = true;
          }
        }
        WithService(platform::kScManagerAllAccess, platform::kServiceAllAccess,
                    [](platform::IServiceManager& sm, platform::ScHandle service) {
                      sm.StartServiceA(service);
                    });
      },
      [&](const base::ErrorInfo& e) { frame::TraceError(app_, kErrorText, e); });
}

long NTService::GetServiceStartupType() {
  long startType = 0;
  base::Guarded(
      [&] {
        WithService(platform::kScManagerAllAccess, platform::kGenericRead,
                    [&](platform::IServiceManager& sm, platform::ScHandle service) {
                      unsigned long needed = 0, type = 0;
                      // First without a buffer to learn its size, then with it.
                      sm.QueryServiceConfigA(service, 0, needed, type);
                      unsigned long needed2 = 0;
                      if (sm.QueryServiceConfigA(service, needed, needed2, type))
                        startType = static_cast<long>(type);
                    });
      },
      [&](const base::ErrorInfo& e) { frame::TraceError(app_, kErrorText, e); });
  return startType;
}

Text NTService::GetCompName() {
  Text name;
  base::Guarded(
      [&] {
        Text got = Require(app_.platform.system).ComputerName();
        if (got.size() < kComputerNameBufferChars) name = base::CutAtNul(got);
      },
      [&](const base::ErrorInfo& e) { frame::TraceError(app_, kErrorText, e); });
  return name;
}

void NTService::StopTransfer() { engine::StopTransfer(app_); }
bool NTService::StopTransferMsgBox() { return engine::StopTransferMsgBox(app_); }
Text NTService::getlabelstring() { return kGuideText; }

long NTService::IsServiceExeRunning(bool KillIt) {
  long result = 0;
  base::Guarded([&] { result = ScanForProgram(app_, exeName_, KillIt, getVersion()); },
                [&](const base::ErrorInfo& e) { frame::TraceError(app_, kErrorText, e); });
  return result;
}

long NTService::getVersion() {
  long id = 0;
  base::Guarded([&] { id = static_cast<long>(Require(app_.platform.system).PlatformId()); },
                [&](const base::ErrorInfo& e) { frame::TraceError(app_, kErrorText, e); });
  return id;
}

long NTService::getMajorVersion() {
  long major = 0;
  base::Guarded([&] { major = static_cast<long>(Require(app_.platform.system).MajorVersion()); },
                [&](const base::ErrorInfo& e) { frame::TraceError(app_, kErrorText, e); });
  return major;
}

}  // namespace engine
