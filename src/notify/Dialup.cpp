#include "notify/Dialup.h"

#include "base/Guarded.h"
#include "frame/Logs.h"

namespace notify {

namespace {

Text Number(unsigned long n) { return base::FromNumber(static_cast<long long>(n)); }

void LoggedOut(frame::AppState& app) {
  frame::WriteActivityLog(app, u"Successfully logged out", frame::kInformation);
  frame::WriteActivityLog(app, Text(), frame::kInformation);
}

}  // namespace

Text CountdownCaption(int counter) {
  return u"Disconnecting(" + base::FromNumber(kCountdownFirings - counter) + u")";
}

std::optional<Text> ConnectionsText(frame::AppState& app) {
  platform::IDialUp* dialUp = app.platform.dialUp;
  if (dialUp == nullptr) return std::nullopt;
  const platform::DialUpListing listing = dialUp->Connections();
  if (listing.none) return Text(u"No active connections found");
  if (listing.error != 0) {
    frame::WriteTrace(app, u"RasEnumConnections failed: Error = " + Number(listing.error));
    return std::nullopt;
  }
  // Several connections overwrite each other: the last one stays.
  std::optional<Text> shown;
  for (const auto& c : listing.connections)
    shown = c.entryName + u" connected via " + c.deviceName + u" is about to be disconnected.";
  return shown;
}

void DisconnectDialup(frame::AppState& app) {
  base::Guarded(
      [&] {
        frame::WriteTrace(app, u"Enter DisconnectDialup");
        platform::IDialUp* dialUp = app.platform.dialUp;
        platform::DialUpListing listing;
        if (dialUp) {
          listing = dialUp->Connections();
        } else {
          listing.none = true;
        }
        if (listing.none) {
          frame::WriteActivityLog(app, u"Unable to find active dial-up connection", frame::kError);
        } else if (listing.error != 0) {
          frame::WriteTrace(app, u"RasEnumConnections failed: Error = " + Number(listing.error));
        } else {
          for (const auto& c : listing.connections) {
            const unsigned long result = dialUp->HangUp(c.handle);
            // The line needs the time to come down before the next is touched.
            app.platform.clock->Sleep(kHangUpSettleMs);
            if (result == 0) {
              frame::WriteActivityLog(
                  app, u"Successfully disconnected '" + c.entryName + u"' connection",
                  frame::kSuccess);
            } else {
              frame::WriteActivityLog(app, u"Unable to hang-up '" + c.entryName + u"' connection",
                                      frame::kError);
              frame::WriteTrace(app, u"RasHangup failed: Error = " + Number(result));
            }
          }
        }
        LoggedOut(app);
        frame::WriteTrace(app, u"Exit DisconnectDialup ");
      },
      frame::TraceFailure(app, u"Error DisconnectDialup.Reason:"));
}

void DialupCanceled(frame::AppState& app) {
  frame::WriteActivityLog(app, u"Dial-up disconnection canceled", frame::kInformation);
  LoggedOut(app);
}

}  // namespace notify
