// About on real windows over the staged program folder: the version list read with the
// system's own version calls, the window in the corner of the work area, a picture saved
// under build/screenshots/kit/, and the OK button by the real pointer.
#include <gtest/gtest.h>

#include "KitSupport.h"
#include "platform/win32/Win32Platform.h"
#include "account/AboutQVWIN.h"

namespace kit_e2e {
namespace {

using AboutOnWindows = KitScreenTest;

TEST_F(AboutOnWindows, ListsTheStagedProgramsWithTheirVersionsAndClosesByOk) {
  platform::Win32Platform win32;
  frame::AppState app{win32.Get()};
  // The program folder is the one the pictures come from.
  const base::Text images = ImageFolder();
  app.ProgramFolder = images.substr(0, images.rfind(u'\\'));
  app.DataRoot = app.ProgramFolder;

  account::AboutQVWIN form(app, ui);
  Attached attached{ui, form};
  form.Load();
  ASSERT_TRUE(ShowAndWait(form));

  // What the list box shows on the screen, read back from its window.
  HWND list = Hwnd(form.txtVersionList);
  wchar_t text[8192] = {};
  GetWindowTextW(list, text, 8192);
  const std::wstring shown(text);
  EXPECT_NE(shown.find(L"QVMonitor.exe" + std::wstring(25, L' ') + L"9.5.0.5"), std::wstring::npos)
      << base::ToUtf8(base::Text(reinterpret_cast<const char16_t*>(text)));
  EXPECT_NE(shown.find(L"QVBackground_955.exe" + std::wstring(11, L' ') + L"9.5.0.5"),
            std::wstring::npos);
  EXPECT_EQ(shown.find(L"QVWinSrv.dll"), std::wstring::npos) << "not staged, so not listed";

  // Bottom right of the work area.
  RECT work{}, r{};
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
  GetWindowRect(Window(form), &r);
  EXPECT_LE(std::abs(r.right - work.right), 2);
  EXPECT_LE(std::abs(r.bottom - work.bottom), 2);

  Shot("about");
  Click(Hwnd(form.lblcopy));
  EXPECT_TRUE(PumpUntil(host, [&] { return !form.IsLoaded(); }));
}

}  // namespace
}  // namespace kit_e2e
