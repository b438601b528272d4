#pragma once
// The arguments of the program's whole command line, as the system hands it over.
#include "base/Text.h"

namespace platform {

// What follows the program's name, leading blanks and tabs removed, the rest as it
// stands. The name is a quoted path, the program's own full path `modulePath` written
// unquoted (blanks and all, compared without regard to case), or else everything up
// to the first blank or tab.
base::Text ArgumentsOf(base::TextView commandLine, base::TextView modulePath);

}  // namespace platform
