#include "monitor/StatusLook.h"

namespace monitor {

const StatusLook& LookOf(ServiceState state) {
  // light, Start, Pause enabled, Pause shown, Stop, Pause caption, status word
  static const StatusLook kStart{kLightRunning, false,         true,      false,
                                 true,          kPauseCaption, u"Running"};
  static const StatusLook kPause{kLightChanging, false,          std::nullopt, false,
                                 true,           kResumeCaption, u"Paused"};
  static const StatusLook kResume{kLightRunning, false,         std::nullopt, true,
                                  true,          kPauseCaption, nullptr};
  static const StatusLook kStop{kLightStopped, true, false, false, false, nullptr, u"Stopped"};
  static const StatusLook kStopping{kLightChanging, false,   false,      false,
                                    false,          nullptr, u"Stopping"};
  static const StatusLook kUnknown{kLightChanging, false, false, false, false, nullptr, u"Unknown"};
  switch (state) {
    case ServiceState::Start: return kStart;
    case ServiceState::Pause: return kPause;
    case ServiceState::Resume: return kResume;
    case ServiceState::Stop: return kStop;
    case ServiceState::Stopping: return kStopping;
    case ServiceState::Unknown: break;
  }
  return kUnknown;
}

std::optional<ServiceState> SettledState(const Text& word) {
  if (word == kRunningWord) return ServiceState::Start;
  if (word == u"Stopped") return ServiceState::Stop;
  if (word == u"Paused") return ServiceState::Pause;
  return std::nullopt;
}

const char16_t* TrayPictureFor(const Text& word) {
  return word == kRunningWord ? kTrayRunning : kTrayNotRunning;
}

}  // namespace monitor
