#pragma once
// The account and support screens, each opened modally by one call with its arguments
// and its result.
#include "frame/AppState.h"
#include "kit/Ui.h"

namespace account {

// Update Password: proves a new password and stores it for the scheduled jobs. The user
// name is typed on the screen.
struct UpdatePasswordArgs {};
struct UpdatePasswordResult {
  bool shown = false;
};
UpdatePasswordResult ShowUpdatePassword(frame::AppState& app, kit::Ui& ui,
                                        const UpdatePasswordArgs& args);

// The feedback report to the support team.
struct ErrorReportArgs {};
struct ErrorReportResult {
  bool shown = false;
  bool sendFailed = false;  // the last Send of the screen failed
};
ErrorReportResult ShowErrorReport(frame::AppState& app, kit::Ui& ui, const ErrorReportArgs& args);
// The same report shown not modally (the missed-backup notice's link opens it so); the
// Ui keeps it, one at a time.
void ShowErrorReportModeless(frame::AppState& app, kit::Ui& ui);
// About, with the versions of the product's files.
struct AboutArgs {};
struct AboutResult {
  bool shown = false;
};
AboutResult ShowAbout(frame::AppState& app, kit::Ui& ui, const AboutArgs& args);

}  // namespace account
