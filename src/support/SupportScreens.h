#pragma once
// The account and support screens, each opened modally by one call. Each answers
// whether it opened its screen.
#include "frame/AppState.h"
#include "kit/Ui.h"

namespace support {

// Update Password: proves a new password and stores it for the scheduled jobs.
bool ShowUpdatePassword(frame::AppState& app, kit::Ui& ui);
// The feedback report to the support team.
bool ShowErrorReport(frame::AppState& app, kit::Ui& ui);
// The same report shown not modally (the missed-backup notice's link opens it so); the
// Ui keeps it, one at a time.
void ShowErrorReportModeless(frame::AppState& app, kit::Ui& ui);
// About, with the versions of the product's files.
bool ShowAbout(frame::AppState& app, kit::Ui& ui);

}  // namespace support
