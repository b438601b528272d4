#pragma once
// Dropping a dial-up line after a job: the countdown's rules, what the window says
// about the connections, and the hanging up with its log and trace lines.
#include <optional>

#include "base/Text.h"
#include "frame/AppState.h"

namespace notify {

using base::Text;

inline constexpr int kCountdownFirings = 30;
inline constexpr unsigned kCountdownIntervalMs = 950;
// Each hang-up is given this long to bring the line down before the next.
inline constexpr unsigned kHangUpSettleMs = 5000;

// The caption of the Disconnect button after `counter` firings: "Disconnecting(" 30 - n ")".
Text CountdownCaption(int counter);

// What ISPname says after listing the connections: "No active connections found", or
// the last connection's "<entry> connected via <device> is about to be disconnected.";
// nullopt when the listing failed (traced) or there was nothing to say.
std::optional<Text> ConnectionsText(frame::AppState& app);

// Hangs up every connection, one after the other, with the design's log and trace lines;
// always ends with "Successfully logged out" and an empty line in the activity log.
void DisconnectDialup(frame::AppState& app);

// The user stopped the countdown: the activity log says so; nothing is hung up.
void DialupCanceled(frame::AppState& app);

}  // namespace notify
