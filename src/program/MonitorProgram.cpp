#include "program/MonitorProgram.h"

#include "engine/EngineObjects.h"
#include "frame/Logs.h"
#include "kit/HostedUi.h"

namespace program {

MonitorProgram::MonitorProgram(frame::AppState& app, kit::Ui& ui)
    : ui_(ui),
      // The job-end notification measures its names in the font of the window's
      // file-name label.
      screens_(app, ui, [this] { return window_.txtRsyncFileName1.FontSize(); }),
      window_(app, ui, &screens_) {
  if (auto* hosted = dynamic_cast<kit::HostedUi*>(&ui_)) {
    kit::FormHost& forms = hosted->Forms();
    window_.SetWindowHandle([&forms, this] { return forms.WindowOf(window_); });
    // What escapes a handler of any screen, or the host drawing it, is written down.
    forms.SetFailureSink([&app](kit::Control& control, const base::ErrorInfo& error) {
      frame::TraceError(app, u"Error Reason :", error,
                        u"in procedure " + control.Name() + u" of Form " + control.Owner().Name());
    });
  }
}

MonitorProgram::~MonitorProgram() {
  if (auto* hosted = dynamic_cast<kit::HostedUi*>(&ui_)) hosted->Forms().Detach(window_);
}

void MonitorProgram::CreateEngines(frame::AppState& app) { engine::CreateEngines(app); }

void MonitorProgram::LoadMonitorWindow(frame::AppState&) {
  // The window exists from here on, hidden or not: its timer runs and the tray icon
  // talks to it even when Main leaves it in the tray.
  if (auto* hosted = dynamic_cast<kit::HostedUi*>(&ui_)) hosted->Forms().Attach(window_);
  window_.Load();
}

void MonitorProgram::ApplyGeometry(frame::AppState&, std::optional<long> width,
                                   std::optional<long> height, std::optional<long> top,
                                   std::optional<long> left) {
  window_.ApplyGeometry(width, height, top, left);
}

void MonitorProgram::HideFromTaskBar(frame::AppState&) { window_.HideFromTaskBar(); }

void MonitorProgram::ShowFromTaskBar(frame::AppState&) { window_.ShowFromTaskBar(); }

void MonitorProgram::ShowLogInWindow(frame::AppState&) { window_.ShowLogInWindow(); }

void MonitorProgram::SetTerminate(std::function<void(unsigned)> terminate) {
  window_.SetTerminate(std::move(terminate));
}

}  // namespace program
