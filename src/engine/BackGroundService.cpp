#include "engine/BackGroundService.h"

#include "engine/EngineNames.h"
#include "engine/ProcessScan.h"
#include "engine/StopWord.h"
#include "frame/Logs.h"

namespace engine {

namespace {

template <class T>
T& Require(T* service) {
  if (!service) throw base::Failure(91, "Object variable or With block variable not set");
  return *service;
}

long PlatformIdOf(frame::AppState& app) {
  return static_cast<long>(Require(app.platform.system).PlatformId());
}

}  // namespace

BackGroundService::BackGroundService(frame::AppState& app)
    : app_(app), exeName_(kBackgroundProgram) {}

bool BackGroundService::IsExeRunning() {
  return ScanForProgram(app_, exeName_, false, PlatformIdOf(app_), ScanAccess::QueryOnly) == 1;
}

Text BackGroundService::GetServiceStatus() {
  Text word;
  const bool ok = base::Guarded(
      [&] { word = IsExeRunning() ? u"Running" : u"Stopped"; },
      [&](const base::ErrorInfo& e) {
        frame::TraceError(app_, u"Unable to read the background exe status, Reason : ", e);
      });
  return ok ? word : Text(u"Unknown");
}

void BackGroundService::ServiceStart() {
  base::Guarded(
      [&] {
        // Relative: the monitor's current folder is the program folder.
        Require(app_.platform.shell)
            .Execute(0, u"open", kBackgroundProgram, Text(), Text(), kShowHidden);
      },
      [&](const base::ErrorInfo& e) {
        frame::TraceError(app_, u"Unable to start the background exe, Reason : ", e);
      });
}

void BackGroundService::ServiceStop() {
  base::Guarded(
      [&] {
        platform::IProcessList& list = Require(app_.platform.processes);
        // With no such window the close goes to a null window and does nothing.
        list.PostMessageA(list.FindWindowByTitle(kBackgroundTitle), kCloseMessage, 0, 0);
      },
      [&](const base::ErrorInfo& e) {
        frame::TraceError(app_, u"Unable to stop the background exe, Reason : ", e);
      });
}

void BackGroundService::StopTransfer() { engine::StopTransfer(app_); }
bool BackGroundService::StopTransferMsgBox() { return engine::StopTransferMsgBox(app_); }
Text BackGroundService::getlabelstring() { return kGuideText; }

long BackGroundService::getVersion() {
  long id = 0;
  base::Guarded([&] { id = PlatformIdOf(app_); },
                [&](const base::ErrorInfo& e) { frame::TraceError(app_, u"Error Monitor ", e); });
  return id;
}

long BackGroundService::getMajorVersion() {
  long major = 0;
  base::Guarded([&] { major = static_cast<long>(Require(app_.platform.system).MajorVersion()); },
                [&](const base::ErrorInfo& e) { frame::TraceError(app_, u"Error Monitor ", e); });
  return major;
}

long BackGroundService::IsServiceExeRunning(bool KillIt) {
  long result = 0;
  base::Guarded([&] { result = ScanForProgram(app_, exeName_, KillIt, getVersion()); },
                [&](const base::ErrorInfo& e) { frame::TraceError(app_, u"Error Monitor ", e); });
  return result;
}

}  // namespace engine
