#include "engine/EngineObjects.h"

#include <memory>

#include "base/Guarded.h"
#include "engine/BackGroundService.h"
#include "engine/NTService.h"
#include "engine/StopWord.h"
#include "frame/Logs.h"
#include "frame/Settings.h"
#include "jobstore/DBaction.h"

namespace engine {

void CreateEngines(AppState& app) {
  app.ServiceEngine = std::make_shared<NTService>(app);
  app.BackgroundEngine = std::make_shared<BackGroundService>(app);
  if (frame::EngineIsService(app) == 1)
    app.ActiveEngine = std::make_shared<NTService>(app);
  else
    app.ActiveEngine = std::make_shared<BackGroundService>(app);
}

void TimerProc(AppState& app) {
  base::Guarded(
      [&] {
        if (!app.platform.fs || !app.platform.fs->FileExists(app.ScheduleFilePath)) return;
        if (jobstore::Readfirstline(app, app.ScheduleFilePath) != kWordIdle) return;
        if (app.ServiceEngine) app.ServiceEngine->IsServiceExeRunning(true);
        if (app.BackgroundEngine) app.BackgroundEngine->IsServiceExeRunning(true);
      },
      [&](const base::ErrorInfo& e) {
        frame::TraceError(app, u"Error in TimerProc, Reason: ", e);
      });
}

std::uintptr_t StartDailyTimer(AppState& app) {
  if (!app.platform.ui || frame::EngineIsService(app) != 0) return 0;
  return app.platform.ui->StartTimer(kDailyTimerMs, [&app] { TimerProc(app); });
}

}  // namespace engine
