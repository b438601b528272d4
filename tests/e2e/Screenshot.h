#pragma once
// Pictures of the screen for people to look at, saved as
// <repository>/build/screenshots/e2e/<name>.png ($QV_SCREENSHOT_DIR overrides the
// folder). The X tools do the work, so this needs Wine: on real Windows, and when the
// script does not deliver within the timeout, the answer is empty and the test goes on.
#include <optional>
#include <string>

#include "Driver.h"

namespace e2e {

bool RunningUnderWine();
// The Windows path (drive Z:, which Wine maps to the Unix root) of a Unix path.
std::wstring WindowsPathOf(const std::string& unixPath);
// The Linux path of the saved picture.
std::optional<std::string> Screenshot(const std::string& name, Ms timeout = Ms{30000});

}  // namespace e2e
