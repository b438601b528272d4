#pragma once
// Helpers of the screen kit's tests on real windows: the image folder, windows by
// their design name (the "QvName" atom the host puts on every window), real mouse
// input, and waiting while the host lets events through.
#include <windows.h>
#include <commctrl.h>
#undef MessageBox  // kit::Ui::MessageBox, not the platform's

#include <chrono>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "Driver.h"
#include "base/Text.h"
#include "kit/HostedUi.h"
#include "platform/UiHost.h"

namespace kit_e2e {

using e2e::Ms;

// The staged image folder (QV_IMAGE_DIR overrides it), as a Windows path.
base::Text ImageFolder();
std::filesystem::path TestProgramFolder();

// Design names ("" when none) and the first window below `parent` with one.
using e2e::DesignName;
using e2e::FindByName;
// Top-level windows of this process of a class.
std::vector<HWND> ThreadWindows(const wchar_t* className);

// Moves the real pointer to the middle of `hwnd` and presses and releases a button
// there; `hold` leaves the button down (release with Release()).
void Click(HWND hwnd, bool right = false);
void Press(HWND hwnd);
void Release();
void MovePointerTo(HWND hwnd);

// Lets the host run its events until `done` or the timeout; true when done.
bool PumpUntil(platform::IUiHost& host, const std::function<bool()>& done, Ms timeout = Ms{8000});
void Pump(platform::IUiHost& host, Ms time);

// Lets go of a form before it goes, so that the host never holds a dead form.
struct Attached {
  kit::HostedUi& ui;
  kit::Form& form;
  ~Attached() { ui.Forms().Detach(form); }
};

// Screenshots of the kit's tests go to build/screenshots/kit/ (unless
// QV_SCREENSHOT_DIR says otherwise).
void UseKitScreenshotFolder();

base::Text T(const std::wstring& w);
std::wstring W(const base::Text& t);

}  // namespace kit_e2e
