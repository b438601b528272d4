#pragma once
// What a screen reader is told about a control: the role the screen kit gives it
// (a picture the user clicks is a push button, a label static text, ...), its name
// (the caption without its "&" marks) and its state (focusable, focused, checked,
// unavailable). The platform's standard object is kept for everything else (place,
// parent, children, value of a text box): the answer wraps it and overrides only
// role, name and state.
#include "platform/win32/Win32Text.h"

#include "platform/UiProtocol.h"

namespace platform::win32 {

// The platform's role number of a kit role (ROLE_SYSTEM_*).
long AccessibleRole(UiRole role);
// A caption as a screen reader says it: "&" marks dropped, "&&" read as "&".
Text AccessibleName(const Text& caption);

// The answer to WM_GETOBJECT for a control's client object (lParam OBJID_CLIENT);
// 0 for any other object, which then goes to the default procedure.
LRESULT AnswerGetObject(HWND hwnd, WPARAM wp, LPARAM lp, const UiControl& state);

}  // namespace platform::win32
