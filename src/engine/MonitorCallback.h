#pragma once
// The class IMonitor, as the engine calls it during a transfer: it only stores what
// arrives, for the tick to draw. The COM shell around it converts the wire arguments.
#include <optional>

#include "base/Text.h"
#include "frame/AppState.h"
#include "platform/ComServer.h"

namespace engine {

using base::Text;
using base::TextView;
using frame::AppState;
using platform::UpdateMonitorArgs;

inline constexpr char16_t kStopFileName[] = u"?stop";
// Set to "1" in the monitor's environment, every call is written to the trace as it
// arrived and as it was kept; the end-to-end tests read the calls from there.
inline constexpr char16_t kTraceUpdatesVariable[] = u"QV_TRACE_UPDATES";

// "?stop" in any mix of capitals ends the transfer.
bool IsStopWord(TextView fileName);

// Young transfers give wild estimates: up to 1 hour is believed, 2 to 12 hours only
// with at least (hours - 1) GiB to move, more than 12 never.
bool IsTimeLeftPlausible(double size, long hours);

// The filter of the time left: the value to keep, or nullopt to keep the old one.
std::optional<Text> FilterTimeLeft(const Text& timeLeft, double totalFilesize);

// Seconds as "hh:mm:ss" (each part with a leading "0" below 10).
Text GetProperTime(AppState& app, long lTimeValue);

// A number as the engine's text conversion writes it: up to `digits` significant
// digits, no trailing zeros, the locale's decimal separator, "E+nn" for large ones.
Text NumberText(double value, int digits, TextView decimalSeparator = u".");

// The trace text of a refused call (a negative size).
Text RefusedCallText(const UpdateMonitorArgs& args, TextView decimalSeparator = u".");

// The rules of one call on the process state; the result the engine gets is 1.
short UpdateMonitor(AppState& app, const UpdateMonitorArgs& args);

// For the test trace: what arrived and what is kept, with every number exact.
Text ArrivedCallText(const UpdateMonitorArgs& args);
Text StoredUpdateText(const AppState& app);

// One instance of the class, as the COM shell creates it for each client.
class MonitorCallback : public platform::IMonitorCallback {
 public:
  explicit MonitorCallback(AppState& app);
  double GetTransferRate() override { return dTransferRate_; }
  void SetTransferRate(double value) override { dTransferRate_ = value; }
  short UpdateMonitor(const UpdateMonitorArgs& args) override;
  Text GetProperTime(long lTimeValue) override;

 private:
  AppState& app_;
  double dTransferRate_ = 0;
  bool traceUpdates_ = false;
};

}  // namespace engine
