#pragma once
// The About window's list of the product's program files and their versions.
#include "base/Text.h"
#include "frame/AppState.h"

namespace account {

using base::Text;

// The version of a file as "a.b.c.d", or "N/A".
Text GetVersionInfo(frame::AppState& app, const Text& file);
// Adds "name" + blanks to its column + version to the list; nothing for a file
// without a version, a name the routine has no column for, or one longer than it.
void AddVersionLine(Text& list, const Text& file, const Text& version);
// The whole list: the release date, then the files in their fixed order, looked for
// in `folder`.
Text BuildVersionList(frame::AppState& app, const Text& folder);
// "<title> - Version <major>.<minor>.<revision>" of the running monitor.
Text AboutTitleLine(frame::AppState& app);

}  // namespace account
