#pragma once
// The three engine objects of the running monitor, and the daily restart of a
// background engine.
#include <cstdint>

#include "engine/EngineObject.h"
#include "frame/AppState.h"

namespace engine {

using frame::AppState;

inline constexpr std::uint32_t kDailyTimerMs = 86400000;

// ServiceEngine and BackgroundEngine always; ActiveEngine a third object of the
// class of the installed type. It keeps that class even if the type changes later.
void CreateEngines(AppState& app);

// Once a day between transfers: ends both engine programs, which the next tick
// finds down and starts again.
void TimerProc(AppState& app);

// Starts the daily timer when the engine is not a service; 0 when none was started.
std::uintptr_t StartDailyTimer(AppState& app);

}  // namespace engine
