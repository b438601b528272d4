#pragma once
// All the texts the message box shows, by number, so that screens name a code and
// not a text.
#include "base/Text.h"
#include "frame/AppState.h"

namespace frame {

using base::Text;

// The address message 101 sends users to.
inline constexpr char16_t kFeedbackSite[] = u"www.corvane.com";

// The text of a code, "" for an unknown one. Messages of several pieces read as
// they are shown (joined by CR LF, in the order the showing screen uses); 16 and 65
// carry `appTitle` between their pieces.
Text GetMessage(long code, const Text& appTitle);
// The same with the application title of the running program.
Text GetMessage(const frame::AppState& app, long code);

}  // namespace frame
