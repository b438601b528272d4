#pragma once
#include <windows.h>

namespace app {

// The monitor's own icon, drawn at run time until the branded icons of the image
// folder are loaded: a rounded teal square with a white upward arrow.
HICON CreateAppIcon(int size);

}  // namespace app
