#pragma once
// The trace (SerTraceFile.txt) and the activity log (QVWServiceLog.txt with its
// per-job and session companions). Writers never fail towards the caller: a line
// that cannot be written is lost without a word, as the engine's lines may be.
#include "base/Guarded.h"
#include "base/Text.h"
#include "frame/AppState.h"

namespace frame {

// The separator that closes a user's session in the logs: 104 underscores, written
// as single bytes into the UTF-16 files (readers cope; see the log view).
inline constexpr std::size_t kSeparatorLength = 104;

enum LogType : int { kInformation = 0, kSuccess = 1, kError = 2 };

// Appends `text`, trimmed, and CR LF to a UTF-16 file, creating QVCOMMON and the
// file (with its byte-order mark) when missing. Opened and closed for every line.
void AppendLine(AppState& app, const Text& path, const Text& text);

// A bare line in the trace.
void WriteTrace(AppState& app, const Text& message);
// "Information (QVMonitor) : <stamp> :  <message>"; a type outside 0..2 appends an empty line.
void WriteMonitorTrace(AppState& app, const Text& message, int type);
// "Information : <stamp> : <message>" into the per-job log, the session file (when
// one is set) and the activity log; "logged out " at the end adds the separator.
void WriteActivityLog(AppState& app, const Text& message, int type);

// The present time as the logs stamp it: "mm/dd/yyyy hh:mm:ss" with the locale's separators.
Text LogStamp(AppState& app);
// The typed lines without their files, for the writers and their tests.
Text ActivityLine(const Text& stamp, const Text& message, int type);
Text MonitorTraceLine(const Text& stamp, const Text& message, int type);

// The line of a last-resort handler: prefix, the error's description, then (when
// given) a blank and the place, e.g. "Error Reason :" ... "in procedure Decrypt of Module
// modGeneral".
Text ErrorLine(const Text& prefix, const base::ErrorInfo& error, const Text& where = Text());
void TraceError(AppState& app, const Text& prefix, const base::ErrorInfo& error,
                const Text& where = Text());

// The last-resort handler of a routine that writes its own trace line, for Guarded:
//   base::Guarded(body, frame::TraceFailure(app, u"Error Reason :", u"in procedure X of Y"));
// writes the line of TraceError. (A failure passed over without a line is
// base::IgnoreFailure.)
inline auto TraceFailure(AppState& app, Text prefix, Text where = Text()) {
  return [&app, prefix = std::move(prefix), where = std::move(where)](
             const base::ErrorInfo& error) { TraceError(app, prefix, error, where); };
}

}  // namespace frame
