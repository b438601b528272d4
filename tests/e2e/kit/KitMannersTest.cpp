// The kit's manners on real windows, in this process: what a screen reader gets
// (names and roles through the platform's accessibility calls), the real keyboard,
// high contrast and the taskbar's theme switched while the program runs, and a form
// told that its screen's scale changed. Pictures go to build/screenshots/kit/.
#include <gtest/gtest.h>

#include <oleacc.h>

#include <cstdlib>

#include "Desktop.h"
#include "KitSupport.h"
#include "Screenshot.h"
#include "kit/HostedUi.h"
#include "platform/win32/Win32SystemInfo.h"
#include "platform/win32/Win32UiHost.h"
#include "platform/win32/Win32UiProbe.h"
#include "reference/bkupjobnotify.h"

namespace kit_e2e {
namespace {

class KitMannersTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { UseKitScreenshotFolder(); }
  void SetUp() override { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
  void TearDown() override { CoUninitialize(); }

  HWND Hwnd(const kit::Control& c) { return host.WindowHandle(ui.Forms().HandleOf(c)); }
  HWND Window(const kit::Form& f) { return host.WindowHandle(ui.Forms().WindowOf(f)); }

  // The notice up, in front and with the keyboard (it comes up without it).
  bool ShowActive(kit::Form& form) {
    ui.Show(form);
    HWND w = Window(form);
    if (!PumpUntil(host, [&] { return w != nullptr && IsWindowVisible(w); })) return false;
    SetForegroundWindow(w);
    return PumpUntil(host, [&] { return GetForegroundWindow() == w; });
  }

  void Shot(const std::string& name) {
    Pump(host, Ms{400});
    if (!e2e::Screenshot(name) && e2e::RunningUnderWine())
      ADD_FAILURE() << "no screenshot " << name;
  }

  platform::Win32UiHost host{ImageFolder()};
  platform::Win32SystemInfo system;
  kit::HostedUi ui{host};
};

TEST_F(KitMannersTest, AScreenReaderHearsEachControlsNameAndRole) {
  reference::bkupjobnotify form(ui, system);
  Attached attached{ui, form};
  ui.Show(form);
  ASSERT_TRUE(PumpUntil(host, [&] { return IsWindowVisible(Window(form)) != FALSE; }));
  platform::win32::UiProbe probe(host);

  struct Expect {
    const kit::Control& control;
    long role;
    const wchar_t* name;
    bool focusable;
  };
  const Expect expected[] = {
      {form.viewbkuplog, ROLE_SYSTEM_PUSHBUTTON, L"View Log", true},
      {form.cancel, ROLE_SYSTEM_PUSHBUTTON, L"Close", true},
      {form.Picture1, ROLE_SYSTEM_PUSHBUTTON, L"Help", true},
      {form.Picture2, ROLE_SYSTEM_PUSHBUTTON, L"Close", true},
      {form.Label2, ROLE_SYSTEM_STATICTEXT, L"View the logs of the backup/restore scheduled jobs",
       false},
      {form.PicSuccessJob, ROLE_SYSTEM_GRAPHIC, L"The job succeeded", false},
      {form.QVDiskPBar, ROLE_SYSTEM_PROGRESSBAR, L"", false},
  };
  for (const Expect& e : expected) {
    SCOPED_TRACE(base::ToUtf8(e.control.Name()));
    // The platform's accessibility calls, as a screen reader in this process makes them.
    const platform::win32::ProbeState s = probe.Read(ui.Forms().HandleOf(e.control));
    EXPECT_EQ(s.role, e.role);
    EXPECT_EQ(W(s.name), e.name);
    EXPECT_EQ(s.focusable, e.focusable);
  }
  // What the platform's own proxies read from: a picture that acts is a button window.
  wchar_t cls[32] = {};
  GetClassNameW(Hwnd(form.Picture1), cls, 32);
  EXPECT_STREQ(cls, L"Button");
  EXPECT_EQ(GetWindowLongW(Hwnd(form.Picture1), GWL_STYLE) & (BS_TYPEMASK | WS_TABSTOP),
            BS_OWNERDRAW | WS_TABSTOP);
}

TEST_F(KitMannersTest, TheRealKeyboardMovesTheFocusAndPressesTheFocusedButton) {
  reference::bkupjobnotify form(ui, system);
  Attached attached{ui, form};
  ASSERT_TRUE(ShowActive(form));
  e2e::TypeKey(VK_TAB);
  ASSERT_TRUE(PumpUntil(host, [&] { return GetFocus() == Hwnd(form.viewbkuplog); }))
      << "Tab did not reach the first button";
  e2e::TypeKey(VK_TAB);
  ASSERT_TRUE(PumpUntil(host, [&] { return GetFocus() == Hwnd(form.cancel); }));
  e2e::TypeKey(VK_TAB, true);
  ASSERT_TRUE(PumpUntil(host, [&] { return GetFocus() == Hwnd(form.viewbkuplog); }));
  Shot("notify-focus-on-button");
  e2e::TypeKey(VK_RETURN);
  EXPECT_TRUE(PumpUntil(host, [&] { return form.viewLogRequests == 1; }));
  e2e::TypeKey('C', false, true);  // Alt+C closes
  EXPECT_TRUE(PumpUntil(host, [&] { return !form.IsLoaded(); }));
}

TEST_F(KitMannersTest, HighContrastDrawsWithTheSystemsColoursAndComesBackLive) {
  reference::bkupjobnotify form(ui, system);
  Attached attached{ui, form};
  ui.Show(form);
  HWND w = Window(form);
  ASSERT_TRUE(PumpUntil(host, [&] { return IsWindowVisible(w) != FALSE; }));
  // A point of the notice's own background, clear of its controls.
  auto pixel = [&] {
    Pump(host, Ms{300});
    HDC dc = GetDC(w);
    const COLORREF c = GetPixel(dc, 20, 200);
    ReleaseDC(w, dc);
    return c;
  };
  const COLORREF skinned = pixel();
  ASSERT_FALSE(host.HighContrast());
  {
    e2e::HighContrastOn on;
    ASSERT_TRUE(PumpUntil(host, [&] { return host.HighContrast(); }))
        << "the host did not hear of it";
    EXPECT_EQ(pixel(), GetSysColor(COLOR_WINDOW)) << "the background picture is still drawn";
    Shot("notify-high-contrast");
  }
  ASSERT_TRUE(PumpUntil(host, [&] { return !host.HighContrast(); }));
  EXPECT_EQ(pixel(), skinned);
}

TEST_F(KitMannersTest, TheTrayIconFollowsTheTaskbarsTheme) {
  platform::UiTrayIcon icon;
  icon.icon = u"tray_running";
  icon.tip = u"Manners";
  const platform::UiHandle tray = host.AddTrayIcon(icon, [](int) {});
  ASSERT_NE(tray, 0u);
  auto file = [&] { return host.TrayIconFile(tray); };
  EXPECT_TRUE(base::EndsWith(file(), u"\\tray_running.ico")) << base::ToUtf8(file());
  {
    e2e::UserSetting light(L"Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize",
                           L"SystemUsesLightTheme", 1);
    e2e::BroadcastSettingChange(0, L"ImmersiveColorSet");
    EXPECT_TRUE(PumpUntil(host, [&] {
      return base::EndsWith(file(), u"\\tray_running_light.ico");
    })) << base::ToUtf8(file());
    // A state changes on the light taskbar: its light icon.
    icon.icon = u"tray_stopped";
    host.ModifyTrayIcon(tray, icon);
    EXPECT_TRUE(base::EndsWith(file(), u"\\tray_stopped_light.ico")) << base::ToUtf8(file());
  }
  e2e::BroadcastSettingChange(0, L"ImmersiveColorSet");
  EXPECT_TRUE(PumpUntil(host, [&] { return base::EndsWith(file(), u"\\tray_stopped.ico"); }))
      << base::ToUtf8(file());
  host.RemoveTrayIcon(tray);
}

TEST_F(KitMannersTest, AFormToldOfALargerScaleIsLaidOutAnewAtThatScale) {
  reference::bkupjobnotify form(ui, system);
  Attached attached{ui, form};
  ui.Show(form);
  HWND w = Window(form);
  ASSERT_TRUE(PumpUntil(host, [&] { return IsWindowVisible(w) != FALSE; }));
  auto size = [](HWND h) {
    RECT r{};
    GetWindowRect(h, &r);
    return std::make_pair(r.right - r.left, r.bottom - r.top);
  };
  const auto form96 = size(w);
  const auto button96 = size(Hwnd(form.viewbkuplog));
  ASSERT_EQ(host.WindowDpi(ui.Forms().WindowOf(form)), 96);

  // The system suggests a place at the new scale (here: up and left, so it fits).
  RECT suggested{100, 100, 100 + form96.first * 3 / 2, 100 + form96.second * 3 / 2};
  SendMessageW(w, WM_DPICHANGED, MAKEWPARAM(144, 144), reinterpret_cast<LPARAM>(&suggested));
  Pump(host, Ms{300});
  EXPECT_EQ(host.WindowDpi(ui.Forms().WindowOf(form)), 144);
  const auto form144 = size(w);
  EXPECT_EQ(form144.first, suggested.right - suggested.left);
  EXPECT_EQ(form144.second, suggested.bottom - suggested.top);
  const auto button144 = size(Hwnd(form.viewbkuplog));
  EXPECT_NEAR(button144.first, button96.first * 1.5, 1.0);
  EXPECT_NEAR(button144.second, button96.second * 1.5, 1.0);
  // The form's twips did not change: the scale is the host's.
  EXPECT_DOUBLE_EQ(form.viewbkuplog.Width(), 1350);
  Shot("notify-150-percent");
}

}  // namespace
}  // namespace kit_e2e
