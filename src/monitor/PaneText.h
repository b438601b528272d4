#pragma once
// The texts of the transfer pane: sizes in proper units, the status line, the file
// name with its kind, the time left, and the measured line breaking of long names.
// Everything here is drawn from the stored TransferUpdate; nothing reads a file.
#include <optional>

#include "base/Text.h"
#include "engine/TransferUpdate.h"
#include "frame/AppState.h"
#include "kit/LabelText.h"
#include "platform/Locale.h"

namespace monitor {

using base::Text;
using base::TextView;

// Sizes and the wrapping of long names are shared with the notices: they live in
// the kit, and the pane uses them under their names.
using kit::FormatTwoDecimals;
using kit::GetProperSizeValue;
using kit::WrapLabelText;

// "Status : <done> out of <total> (<rate>)", or "... Transferred ..." without a total.
Text TransferStatusLine(frame::AppState& app, const engine::TransferUpdate& t);

// The file in transfer as the label shows it: every "&" doubled (a lone one would mark
// a hot key) behind "[Full Backup] " or "[Incremental Backup] " for kinds 1 and 2.
Text FileNameWithKind(const engine::TransferUpdate& t);

// What txtRsyncTimeLeft shows for the stored time left; nullopt leaves it as it is.
// The callback filtered the value already; filtering again on drawing is how the
// pane has always behaved.
std::optional<Text> TimeLeftForPane(const engine::TransferUpdate& t);

}  // namespace monitor
