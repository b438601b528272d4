// The kit's manners on real windows, in this process: what a screen reader gets (names
// and roles through the platform's accessibility calls), high contrast and the taskbar's
// theme switched while the program runs, and a form told that its screen's scale
// changed. Pictures go to build/screenshots/kit/. (The real keyboard is driven through
// the monitor's window and box by its manners test.)
#include <gtest/gtest.h>

#include <oleacc.h>

#include <cstdlib>

#include "Desktop.h"
#include "KitSupport.h"
#include "platform/win32/Win32UiProbe.h"
#include "reference/bkupjobnotify.h"

namespace kit_e2e {
namespace {

class KitMannersTest : public KitScreenTest {
 protected:
  void SetUp() override { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
  void TearDown() override { CoUninitialize(); }
};

TEST_F(KitMannersTest, AScreenReaderHearsEachControlsNameAndRole) {
  reference::bkupjobnotify form(ui, system);
  Attached attached{ui, form};
  ASSERT_TRUE(ShowAndWait(form));
  platform::win32::UiProbe probe(host);

  struct Expect {
    const kit::Control& control;
    long role;
    const wchar_t* name;
    bool focusable;
  };
  // The kinds the monitor's own test does not meet across processes: a picture that acts
  // named by its tip, a label that takes no focus, a picture that only shows.
  const Expect expected[] = {
      {form.Picture1, ROLE_SYSTEM_PUSHBUTTON, L"Help", true},
      {form.Label2, ROLE_SYSTEM_STATICTEXT, L"View the logs of the backup/restore scheduled jobs",
       false},
      {form.PicSuccessJob, ROLE_SYSTEM_GRAPHIC, L"The job succeeded", false},
  };
  for (const Expect& e : expected) {
    SCOPED_TRACE(base::ToUtf8(e.control.Name()));
    // The platform's accessibility calls, as a screen reader in this process makes them.
    const platform::win32::ProbeState s = probe.Read(ui.Forms().HandleOf(e.control));
    EXPECT_EQ(s.role, e.role);
    EXPECT_EQ(W(s.name), e.name);
    EXPECT_EQ(s.focusable, e.focusable);
  }
}

TEST_F(KitMannersTest, HighContrastDrawsWithTheSystemsColoursAndComesBackLive) {
  reference::bkupjobnotify form(ui, system);
  Attached attached{ui, form};
  ASSERT_TRUE(ShowAndWait(form));
  HWND w = Window(form);
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
  ASSERT_TRUE(ShowAndWait(form));
  HWND w = Window(form);
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
