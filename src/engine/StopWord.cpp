#include "engine/StopWord.h"

#include "base/Guarded.h"
#include "engine/EngineObject.h"
#include "frame/Logs.h"
#include "jobstore/DBaction.h"
#include "jobstore/JobStoreState.h"

namespace engine {

namespace {

constexpr int kButtonsYesNo = 4;

bool ScheduleFileExists(AppState& app) {
  return app.platform.fs && app.platform.fs->FileExists(app.ScheduleFilePath);
}

Text StateWord(AppState& app) { return jobstore::ReadStateLine(app, app.ScheduleFilePath); }

}  // namespace

int AskYesNo(AppState& app, const Text& text) {
  if (app.Store.ShowMessage)
    return app.Store.ShowMessage(text, jobstore::kIconQuestion, kButtonsYesNo);
  if (app.platform.ui)
    return app.platform.ui->AskYesNo(text, app.AppTitle) ? kAnswerYes : kAnswerNo;
  return kAnswerNo;
}

void ShowInformation(AppState& app, const Text& text) {
  if (app.Store.ShowMessage)
    app.Store.ShowMessage(text, jobstore::kIconInformation, jobstore::kButtonsOk);
}

void StopTransfer(AppState& app) {
  base::Guarded(
      [&] {
        if (ScheduleFileExists(app) && StateWord(app) == kWordRunning)
          // The write traces its own failure.
          static_cast<void>(jobstore::SetStateWord(app, app.ScheduleFilePath, kWordStopAsked));
      },
      [&](const base::ErrorInfo& e) {
        frame::TraceError(app, u"Unable to stop the transfer. \r\nReason: ", e);
      });
}

bool StopTransferMsgBox(AppState& app) {
  bool running = false;
  base::Guarded([&] { running = ScheduleFileExists(app) && StateWord(app) == kWordRunning; },
                [&](const base::ErrorInfo& e) {
                  frame::TraceError(app, u"Error in StopTransferMsgBox() Reason: ", e);
                });
  return running;
}

void AskAndStopTransfer(AppState& app) {
  base::Guarded(
      [&] {
        if (!app.ActiveEngine || !app.ActiveEngine->StopTransferMsgBox()) return;
        if (AskYesNo(app, kAskStopTransfer) != kAnswerYes) return;
        app.ActiveEngine->StopTransfer();
      },
      [&](const base::ErrorInfo& e) {
        frame::TraceError(app, u"Unable to stop the transfer. \r\nReason: ", e);
      });
}

bool IsBackingUp(AppState& app, const StopWindowSteps& window) {
  bool answer = false;
  base::Guarded(
      [&] {
        Text word;
        const bool read = base::Guarded(
            [&] {
              if (ScheduleFileExists(app)) word = StateWord(app);
            },
            [&](const base::ErrorInfo& e) {
              frame::TraceError(app, u"Error reading Scheduled data: ", e);
            });
        if (!read || word != kWordRunning) return;
        // From here on the engine must not be stopped, whatever the user answers.
        answer = true;
        if (AskYesNo(app, kAskStopService) == kAnswerNo) return;
        // A word that could not be written (traced by the store) stops nothing: the
        // window does not say that it will.
        if (!jobstore::SetStateWord(app, app.ScheduleFilePath, kWordStopAsked)) return;
        if (window.setStopping) window.setStopping();
        ShowInformation(app, kStopIsSet);
        if (window.redraw) window.redraw();
      },
      [&](const base::ErrorInfo& e) {
        frame::TraceError(app, u"Error in IsBackingUp Monitor, Reason : ", e);
      });
  return answer;
}

bool CanPause(AppState& app) {
  bool allowed = false;
  base::Guarded(
      [&] {
        platform::IFileSystem* fs = app.platform.fs;
        if (!fs) return;
        if (!fs->FileExists(app.ScheduleFilePath)) {
          allowed = true;
          return;
        }
        const auto first = fs->ReadRange(app.ScheduleFilePath, 0, 1);
        allowed = first && first->size() == 1 && (*first)[0] == '0';
      },
      [&](const base::ErrorInfo& e) {
        frame::TraceError(app, u"Error reading Scheduled data: ", e);
      });
  return allowed;
}

void ClearStaleStateWord(AppState& app) {
  base::Guarded(
      [&] {
        if (!ScheduleFileExists(app)) return;
        const Text word = StateWord(app);
        if (word != kWordRunning && word != kWordStopAsked) return;
        const Text status = app.ActiveEngine ? app.ActiveEngine->GetServiceStatus() : Text();
        // The write traces its own failure.
        if (status != u"Running")
          static_cast<void>(jobstore::SetStateWord(app, app.ScheduleFilePath, kWordIdle));
      },
      [&](const base::ErrorInfo& e) {
        frame::TraceError(app, u"Error obtaining the service status: ", e);
      });
}

}  // namespace engine
