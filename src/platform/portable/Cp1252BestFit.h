#pragma once
// Windows-1252 as the system's own converter writes it: units outside the code page
// that have a look-alike in it (accented Latin letters outside Latin-1, fullwidth
// forms, box drawing, some Greek and symbols) become that look-alike, the rest '?'.
// Profile files written in ANSI go through this conversion on Windows.
#include <string>

#include "base/Text.h"

namespace platform {

std::string EncodeCp1252BestFit(base::TextView text);

}  // namespace platform
