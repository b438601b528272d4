#pragma once
// qvjobs: the job store from a command line, for support staff and scripts. It works
// on a data root's QVCOMMON through the same code the monitor uses, so what it lists,
// deletes or plans is what the monitor would.
#include <string>
#include <vector>

#include "base/Text.h"
#include "platform/Platform.h"

namespace qvjobs {

inline constexpr int kExitOk = 0;
inline constexpr int kExitRefused = 1;  // an action refused, or with nothing to do
inline constexpr int kExitUsage = 2;
// Standard output did not take the answer (for `status`: UNKNOWN, as it is).
inline constexpr int kExitAnswerLost = 3;

// Runs one command line (without the program name). Output and the usage error are
// UTF-8 text; `currentFolder` is the data root when --root is not given. The plug-in
// rule looks for its files in `programFolder`, or (when empty) in the folder of the
// running program as the system tells it, else in the data root.
int RunQvJobs(const std::vector<std::string>& args, platform::Platform& platform,
              const base::Text& currentFolder, std::string& out, std::string& err,
              const base::Text& programFolder = {});

}  // namespace qvjobs
