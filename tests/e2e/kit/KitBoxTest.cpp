// The product's message box on real windows, in a program of its own (kit_box),
// answered from this process as the user's keys and clicks would answer it: the
// result reaches the caller as kit_box's exit code. What the box shows is read from
// outside through the window texts and design names.
#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <sstream>

#include "Desktop.h"
#include "KitSupport.h"
#include "Process.h"
#include "ProgramFolder.h"
#include "Screenshot.h"

namespace kit_e2e {
namespace {

constexpr wchar_t kTitle[] = L"Corvane for Windows";

class KitBoxTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { _wputenv_s(L"QV_IMAGE_DIR", W(ImageFolder()).c_str()); }

  std::optional<e2e::Process> Start(const std::wstring& arguments, bool capture = false) {
    return e2e::Process::Start(e2e::OwnFolder() / L"kit_box.exe", arguments, e2e::OwnFolder(),
                               capture);
  }

  // The box of that program once it is up and painted.
  HWND WaitForBox(const e2e::Process& p) {
    auto box = e2e::WaitForWindow({kTitle, L"QvForm", p.Pid(), true});
    if (!box) return nullptr;
    e2e::WaitUntil([&] { return FindByName(box->hwnd, L"cmdButton(0)") != nullptr; }, Ms{3000});
    return box->hwnd;
  }

  static void AltLetter(HWND box, wchar_t upper) {
    // What the keyboard sends for Alt+letter: the context bit 29 says Alt is down.
    e2e::Post(box, WM_SYSKEYDOWN, upper, 0x20000001);
    e2e::Post(box, WM_SYSKEYUP, upper, static_cast<LPARAM>(0xE0000001u));
  }
};

TEST_F(KitBoxTest, WhatTheBoxShowsCanBeReadFromOutside) {
  auto p = Start(L"2 1 \"Do you want to stop the backup/restore operation?\"");
  ASSERT_TRUE(p);
  HWND box = WaitForBox(*p);
  ASSERT_NE(box, nullptr) << "no message box came up";

  // Which buttons and which icon the set and the kind bring; their captions are data.
  HWND yes = FindByName(box, L"cmdButton(0)");
  HWND retry = FindByName(box, L"cmdButton(2)");
  ASSERT_TRUE(yes && retry);
  EXPECT_TRUE(e2e::Describe(yes).visible);
  EXPECT_FALSE(e2e::Describe(retry).visible) << "a Yes/No box shows a third button";
  EXPECT_EQ(e2e::Describe(FindByName(box, L"lblSmallText")).text,
            L"Do you want to stop the backup/restore operation?");
  EXPECT_TRUE(e2e::Describe(FindByName(box, L"picIcon(1)")).visible);
  EXPECT_FALSE(e2e::Describe(FindByName(box, L"picIcon(0)")).visible);
  // The frame is stripped and the outline rounded.
  EXPECT_EQ(GetWindowLongW(box, GWL_STYLE) & WS_CAPTION, 0);
  if (e2e::RunningUnderWine()) {
    // Wine shows a cut-away pixel black: the box keeps no region and paints its
    // corners with what lay behind it (the desktop), while its edge is its own.
    RECT r{};
    GetWindowRect(box, &r);
    HDC screen = GetDC(nullptr);
    const COLORREF outside = GetPixel(screen, r.left - 1, r.top + 1);
    EXPECT_EQ(GetPixel(screen, r.left, r.top), outside)
        << "the top left corner is not what lies behind";
    EXPECT_EQ(GetPixel(screen, r.right - 1, r.bottom - 1), outside) << "the bottom right corner";
    EXPECT_NE(GetPixel(screen, r.left + 2, r.top), outside) << "the edge itself is painted over";
    ReleaseDC(nullptr, screen);
    // A region would give the window a shape that the display shows black where it cuts.
    platform::win32::UniqueRegion region(CreateRectRgn(0, 0, 0, 0));
    EXPECT_EQ(GetWindowRgn(box, region.Get()), ERROR) << "the box has a window region under Wine";
  } else {
    platform::win32::UniqueRegion region(CreateRectRgn(0, 0, 0, 0));
    EXPECT_NE(GetWindowRgn(box, region.Get()), ERROR) << "the box has no window region";
  }

  AltLetter(box, L'N');
  auto code = p->WaitExit();
  ASSERT_TRUE(code) << "Alt+N did not close the box";
  EXPECT_EQ(*code, 7u);
}

// ---- Scaling above 96 dots per inch ------------------------------------------------------

std::map<std::string, double> ReadLayout(const std::string& output) {
  std::map<std::string, double> values;
  std::istringstream in(output);
  std::string line;
  while (std::getline(in, line)) {
    auto eq = line.find('=');
    if (eq != std::string::npos) values[line.substr(0, eq)] = std::atof(line.c_str() + eq + 1);
  }
  return values;
}

TEST_F(KitBoxTest, AProgramStartedOnALargerScaleDrawsTheBoxLargerWithTheDesignsTwips) {
  auto measure = [&](std::optional<DWORD> dpi) {
    // The screen's dots per inch for the programs started from now on.
    std::optional<e2e::UserSetting> setting;
    if (dpi) setting.emplace(L"Control Panel\\Desktop", L"LogPixels", *dpi);
    auto p = Start(L"--layout 0", true);
    std::map<std::string, double> values;
    if (!p) return values;
    // The program reads the setting when it starts; the value goes back at once.
    e2e::WaitUntil(
        [&] {
          return !e2e::FindTopLevel({kTitle, L"QvForm", p->Pid()}).empty();
        },
        Ms{10000});
    setting.reset();
    if (!p->WaitExit()) return values;
    return ReadLayout(p->Output());
  };
  auto at96 = measure(std::nullopt);
  ASSERT_EQ(at96["dpi"], 96) << "the test screen is expected at 96 dpi";
  EXPECT_EQ(at96["buttonPixels"], 53);
  for (const DWORD dpi : {120u, 144u}) {
    SCOPED_TRACE(dpi);
    auto at = measure(dpi);
    ASSERT_EQ(at["dpi"], dpi) << "LogPixels did not reach the program";
    // The forms see the design's screen: the twips are the design's, and the form's
    // own scaling (which would shrink them above 96 dpi) has nothing to do...
    EXPECT_EQ(at["tpp"], 15);
    EXPECT_DOUBLE_EQ(at["buttonTwips"], at96["buttonTwips"]);
    EXPECT_DOUBLE_EQ(at["iconTwips"], at96["iconTwips"]);
    // ...and the host draws them at the screen's scale (each edge rounded on its own).
    const double factor = dpi / 96.0;
    EXPECT_NEAR(at["buttonPixels"], at96["buttonPixels"] * factor, 1.0);
    EXPECT_NEAR(at["iconPixels"], at96["iconPixels"] * factor, 1.0);
    // The box fits its text, which the font at this scale measures a little apart.
    EXPECT_NEAR(at["formPixels"], at96["formPixels"] * factor, at96["formPixels"] * factor * 0.06);
  }
}

}  // namespace
}  // namespace kit_e2e
