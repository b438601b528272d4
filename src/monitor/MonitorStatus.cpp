// The monitor window: the engine's status (the status rounds and the status family)
// and the service menu items.
#include "base/Guarded.h"
#include "engine/EngineObject.h"
#include "engine/StopWord.h"
#include "frame/Logs.h"
#include "frame/Settings.h"
#include "kit/MesgBox.h"
#include "monitor/StatusLook.h"
#include "monitor/frmQVWinService.h"

namespace monitor {

namespace {

Text StatusOf(const std::shared_ptr<engine::EngineObject>& engine) {
  Text word;
  if (engine) base::IgnoreFailure([&] { word = engine->GetServiceStatus(); });
  return word;
}

}  // namespace

void frmQVWinService::Indicate_ServiceStatus() {
  base::Guarded(
      [&] {
        engine::ClearStaleStateWord(app_);
        // Both programs are kept running whichever is installed; the background
        // program's word is the one shown.
        auto keepRunning = [&](const std::shared_ptr<engine::EngineObject>& engine) {
          Text word = StatusOf(engine);
          if (word != kRunningWord) {
            // A service that is not installed cannot start: no call, nothing to wait for,
            // and the word stays as it was read.
            bool installed = true;
            if (engine) base::IgnoreFailure([&] { installed = engine->Installed(); });
            if (!installed) return word;
            if (engine) base::IgnoreFailure([&] { engine->ServiceStart(); });
            Sleep(100);
            word = StatusOf(engine);
          }
          return word;
        };
        Text word;
        for (int round = 0; round < kStatusRounds; ++round) {
          keepRunning(app_.ServiceEngine);
          word = keepRunning(app_.BackgroundEngine);
          if (word.empty()) {
            word = u"Unknown";
            Set_Unknown();
          }
          lblStatus.SetCaption(word);
          if (const auto settled = SettledState(word)) {
            ShowStatus(*settled);
            break;
          }
          Sleep(100);
        }
        base::IgnoreFailure([&] {
          if (frame::EngineIsService(app_) == 0)
            Pause.SetEnabled(false);
          else
            StoptransferMenu.SetEnabled(true);
        });
        base::IgnoreFailure([&] { ShowTrayState(word); });
      },
      frame::TraceFailure(app_, u"Error obtaining the service status: "));
}

void frmQVWinService::ShowTrayState(const Text& word) {
  const Text branded = app_.ProgramFolder + u"\\images\\MonitorIcon.ico";
  if (app_.platform.fs == nullptr || !app_.platform.fs->FileExists(branded)) {
    tray_.SetIcon(TrayPictureFor(word));
    return;
  }
  // A branded icon stands for every state, in the tray and on the window.
  picTrayicon.SetPictureKey(branded);
  tray_.SetIcon(branded);
  SetIconPath(branded);
}

void frmQVWinService::ShowStatus(ServiceState state) {
  // In the order the routines always set them.
  const StatusLook& look = LookOf(state);
  TrafficLights1.SetPictureKey(look.light);
  Start.SetEnabled(look.startEnabled);
  if (look.pauseEnabled) Pause.SetEnabled(*look.pauseEnabled);
  if (look.showPause) Pause.SetVisible(true);
  Stop.SetEnabled(look.stopEnabled);
  if (look.pauseCaption != nullptr) Pause.SetCaption(look.pauseCaption);
  if (look.statusWord != nullptr) lblStatus.SetCaption(look.statusWord);
  // What the light's colour says, in words, for a screen reader and high contrast.
  TrafficLights1.SetCaption(u"Service status: " + lblStatus.Caption());
}

void frmQVWinService::Set_Start() { ShowStatus(ServiceState::Start); }
void frmQVWinService::Set_Pause() { ShowStatus(ServiceState::Pause); }
void frmQVWinService::Set_Resume() { ShowStatus(ServiceState::Resume); }
void frmQVWinService::Set_Stop() { ShowStatus(ServiceState::Stop); }
void frmQVWinService::Set_Stopping() { ShowStatus(ServiceState::Stopping); }
void frmQVWinService::Set_Unknown() { ShowStatus(ServiceState::Unknown); }

void frmQVWinService::Start_Click() {
  TrafficLights1.SetPictureKey(kLightWaiting);
  if (app_.ActiveEngine) base::IgnoreFailure([&] { app_.ActiveEngine->ServiceStart(); });
  Sleep(400);
  Indicate_ServiceStatus();
}

void frmQVWinService::Stop_Click() {
  engine::StopWindowSteps steps;
  steps.setStopping = [this] { Set_Stopping(); };
  // A transfer is running: it was asked to stop instead (or the user said No).
  if (engine::IsBackingUp(app_, steps)) return;
  TrafficLights1.SetPictureKey(kLightWaiting);
  if (app_.ActiveEngine) base::IgnoreFailure([&] { app_.ActiveEngine->ServiceStop(); });
  Sleep(400);
  Indicate_ServiceStatus();
}

void frmQVWinService::Pause_Click() {
  if (!engine::CanPause(app_)) {
    Ask(17, kit::kIconInfo, kit::kButtonsOk);
    return;
  }
  if (Pause.Caption() == kPauseCaption) {
    Set_Pause();
    if (app_.ActiveEngine) base::IgnoreFailure([&] { app_.ActiveEngine->ServicePause(); });
  } else {
    Set_Resume();
    if (app_.ActiveEngine) base::IgnoreFailure([&] { app_.ActiveEngine->ServiceResume(); });
  }
  Sleep(400);
  Indicate_ServiceStatus();
}

void frmQVWinService::StopTransfer_Click() { engine::AskAndStopTransfer(app_); }

}  // namespace monitor
