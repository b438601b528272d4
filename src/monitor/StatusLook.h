#pragma once
// How the window shows the engine's state, without the window: what each routine of
// the status family sets (light, menu items, captions, status word), which routine
// an engine's word settles the status rounds with, and the tray picture for a word.
#include <optional>

#include "base/Text.h"
#include "monitor/MonitorPictures.h"

namespace monitor {

using base::Text;

// The routines Set_Start, Set_Pause, Set_Resume, Set_Stop, Set_Stopping, Set_Unknown.
enum class ServiceState { Start, Pause, Resume, Stop, Stopping, Unknown };

// The engine's word for a running program, and the two captions of the Pause item.
inline constexpr char16_t kRunningWord[] = u"Running";
inline constexpr char16_t kPauseCaption[] = u"Pause Service";
inline constexpr char16_t kResumeCaption[] = u"Resume Service";

// What one routine sets; nullopt and null leave that part as it is.
struct StatusLook {
  const char16_t* light = nullptr;  // the picture of TrafficLights1
  bool startEnabled = false;
  std::optional<bool> pauseEnabled;
  bool showPause = false;  // Pause is made visible
  bool stopEnabled = false;
  const char16_t* pauseCaption = nullptr;
  const char16_t* statusWord = nullptr;  // lblStatus
};

const StatusLook& LookOf(ServiceState state);

// The routine that settles the rounds for the background engine's word: "Running",
// "Stopped" and "Paused" do; any other word (a pending one) keeps the rounds going.
std::optional<ServiceState> SettledState(const Text& word);

// The tray picture for the background engine's last word.
const char16_t* TrayPictureFor(const Text& word);

}  // namespace monitor
