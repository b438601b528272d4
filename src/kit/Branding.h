#pragma once
// The two branding files in the program's images folder: Config.txt with the
// application title (and a second value that is read and kept), and the icons.
#include "base/Text.h"
#include "frame/AppState.h"
#include "platform/FileSystem.h"

namespace kit {

using base::Text;

inline constexpr char16_t kDefaultAppTitle[] = u"Corvane for Windows";

struct Branding {
  bool configPresent = false;
  bool titleSet = false;  // Config.txt had the two lines that set the values
  Text title;             // the title as it stands after reading
  Text secondValue;
  Text appIconPath;   // images\qvwin-desktop4.ico when Config.txt is present
  Text formIconPath;  // the forms' icon when the title is not the standard one; "" = built in
};

// Config.txt is read whole and split at LF; only positions count, not keys. Line 1
// gives the title (behind the first "="; a line without one is taken whole), line 2
// the second value (behind the last "="). Fewer than two lines set nothing. Blanks
// around a value and a CR before the LF are not part of it. False when nothing is set.
bool ParseConfigText(base::TextView content, Text& title, Text& secondValue);

// Reads the images folder under `programFolder`. `currentTitle` is what stands when
// the file sets nothing (the standard title at start-up).
Branding ReadBranding(platform::IFileSystem& fs, const Text& programFolder,
                      const Text& currentTitle = kDefaultAppTitle);
// Puts the title into the process state.
void ApplyBranding(frame::AppState& app, const Branding& branding);

// The menu texts the title drives.
Text LaunchMenuCaption(const Text& title);  // "Launch " title
Text AboutMenuCaption(const Text& title);   // "About " title " ..."

}  // namespace kit
