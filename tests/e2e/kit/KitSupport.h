#pragma once
// Helpers of the screen kit's tests on real windows: the image folder, windows by
// their design name (the "QvName" atom the host puts on every window), real mouse
// input, and waiting while the host lets events through.
#include <windows.h>
#include <commctrl.h>
#undef MessageBox  // kit::Ui::MessageBox, not the platform's

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "Driver.h"
#include "base/Text.h"
#include "kit/HostedUi.h"
#include "platform/UiHost.h"
#include "platform/win32/Win32SystemInfo.h"
#include "platform/win32/Win32UiHost.h"

namespace kit_e2e {

using e2e::Ms;

// The staged image folder (QV_IMAGE_DIR overrides it), as a Windows path.
base::Text ImageFolder();

// The first window below `parent` with a design name.
using e2e::FindByName;
// Top-level windows of this process of a class.
std::vector<HWND> ThreadWindows(const wchar_t* className);

// Moves the real pointer to the middle of `hwnd` and presses and releases a button
// there; `hold` leaves the button down (release with Release()).
void Click(HWND hwnd, bool right = false);
void Press(HWND hwnd);
void Release();
// The same at a point of the screen; a left button pressed there (from any thread).
void MovePointerTo(POINT at);
void PressAt(POINT at);

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

// The base of the tests of screens on the Windows host in this process: the host, the
// windows of a form and of its controls, and pictures under build/screenshots/kit/.
class KitScreenTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { UseKitScreenshotFolder(); }
  HWND Hwnd(const kit::Control& c) { return host.WindowHandle(ui.Forms().HandleOf(c)); }
  HWND Window(const kit::Form& f) { return host.WindowHandle(ui.Forms().WindowOf(f)); }
  // Shows `form`; true once its window is up.
  bool ShowAndWait(kit::Form& form);
  // A picture of the screen after a moment for the host to paint; a failure under Wine
  // when none could be taken.
  void Shot(const std::string& name);

  platform::Win32UiHost host{ImageFolder()};
  platform::Win32SystemInfo system;
  kit::HostedUi ui{host};
};

base::Text T(const std::wstring& w);
std::wstring W(const base::Text& t);

}  // namespace kit_e2e
