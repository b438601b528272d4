#pragma once
// The texts of the transfer pane: sizes in proper units, the status line, the file
// name with its kind, the time left, and the measured line breaking of long names.
// Everything here is drawn from the stored TransferUpdate; nothing reads a file.
#include <functional>
#include <optional>

#include "base/Text.h"
#include "engine/TransferUpdate.h"
#include "frame/AppState.h"
#include "platform/Locale.h"

namespace monitor {

using base::Text;
using base::TextView;

// A number with two decimals in the user's regional style: the locale's decimal and
// thousands separators, groups of three, a leading zero and a leading minus.
Text FormatTwoDecimals(double value, platform::ILocale* locale);

// A size in bytes as text. The thresholds are binary in both modes; `decimal` only
// changes the divisor. Exactly 1024 passes every strict test and comes out as the bare
// number "0.00" without a unit: the engine's own reports read the same, so it stays.
// On failure "0 KB", with a trace line.
Text GetProperSizeValue(frame::AppState& app, double value, bool decimal);

// "Status : <done> out of <total> (<rate>)", or "... Transferred ..." without a total.
Text TransferStatusLine(frame::AppState& app, const engine::TransferUpdate& t);

// The file in transfer as the label shows it: every "&" doubled (a lone one would mark
// a hot key) behind "[Full Backup] " or "[Incremental Backup] " for kinds 1 and 2.
Text FileNameWithKind(const engine::TransferUpdate& t);

// What txtRsyncTimeLeft shows for the stored time left; nullopt leaves it as it is.
// The callback filtered the value already; filtering again on drawing is how the
// pane has always behaved.
std::optional<Text> TimeLeftForPane(const engine::TransferUpdate& t);

// Whether a piece of text fits the limit (in twips) when measured as the label would.
using FitsFn = std::function<bool(TextView piece)>;

// Breaks a long name into lines by measured width. The first 30 units of every line
// are taken unmeasured, and a text of 30 units or more ends in CR LF even when it needed
// no break: the notification and the pane both show names that way.
Text WrapLabelText(TextView text, const FitsFn& fits);

}  // namespace monitor
