#pragma once
// Texts that labels of several screens show the same way: sizes in proper units and
// the measured line breaking of long names (the transfer pane's file name, the
// job-end notice's set names).
#include <functional>

#include "base/Text.h"
#include "frame/AppState.h"
#include "kit/Controls.h"
#include "kit/TextMeasure.h"
#include "platform/Locale.h"

namespace kit {

// A number with two decimals in the user's regional style: the locale's decimal and
// thousands separators, groups of three, a leading zero and a leading minus.
Text FormatTwoDecimals(double value, platform::ILocale* locale);

// A size in bytes as text. The thresholds are binary in both modes; `decimal` only
// changes the divisor. Exactly 1024 passes every strict test and comes out as the bare
// number "0.00" without a unit: the engine's own reports read the same, so it stays.
// On failure "0 KB", with a trace line.
Text GetProperSizeValue(frame::AppState& app, double value, bool decimal);

// Whether a piece of text fits the limit (in twips) when measured as the label would.
using FitsFn = std::function<bool(TextView piece)>;

// Breaks a long name into lines by measured width. The first 30 units of every line
// are taken unmeasured, and a text of 30 units or more ends in CR LF even when it needed
// no break: the notification and the pane both show names that way.
Text WrapLabelText(TextView text, const FitsFn& fits);

// The same with `limit` twips measured in the font of `label`: a piece fits when its
// measured width is not above the limit.
Text WrapLabelText(TextView text, double limit, const Label& label, const TextMeasure& measure);

}  // namespace kit
