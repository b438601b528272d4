#pragma once
// What the writers of DBaction.cpp and the in-memory schedule edit share; not for
// other modules.
#include <optional>
#include <string>
#include <vector>

#include "jobstore/DBaction.h"

namespace jobstore {

// The bytes of a file that is to be written back as they are, or nullopt (traced) when
// fewer came than the file holds.
std::optional<std::string> ReadWhole(AppState& app, const Text& path);
void TraceMonitorError(AppState& app, const base::ErrorInfo& error, const Text& procedure);
// Traces a write that failed with the system's reason, or that had to go in place.
void TraceWrite(AppState& app, const WriteResult& result, const Text& path, const Text& procedure);
WriteResult Unreadable(AppState& app, const Text& path);
// Every rewritten line goes to the trace, as one block.
void TraceContent(AppState& app, const std::vector<Text>& lines);

}  // namespace jobstore
