// The screen gallery: every element of the screen kit on the Windows host, each
// saved as a picture under build/screenshots/kit/ for people to look at. The checks
// here are that each element came up and, for the skinned button, that each state
// shows its own face.
#include <gtest/gtest.h>

#include <cstdlib>

#include "KitSupport.h"
#include "reference/bkupjobnotify.h"
#include "SampleForms.h"
#include "Screenshot.h"
#include "kit/HostedUi.h"
#include "kit/MesgBox.h"
#include "platform/win32/Win32SystemInfo.h"
#include "platform/win32/Win32UiHost.h"

namespace kit_e2e {
namespace {

class KitGallery : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { UseKitScreenshotFolder(); }

  platform::Win32UiHost host{ImageFolder()};
  platform::Win32SystemInfo system;
  kit::HostedUi ui{host};

  bool Shot(const std::string& name) {
    Pump(host, Ms{400});
    auto saved = e2e::Screenshot(name);
    if (!saved && e2e::RunningUnderWine()) ADD_FAILURE() << "no screenshot " << name;
    return saved.has_value();
  }

  // The pointer out of the way, so that no button shows its hover face by chance.
  void PointerAside() {
    INPUT in{};
    in.type = INPUT_MOUSE;
    in.mi.dwFlags = MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE;
    in.mi.dx = 300;
    in.mi.dy = 300;
    SendInput(1, &in, sizeof(in));
    Pump(host, Ms{100});
  }

  // Shows a message box, takes its picture while it is up, and closes it.
  int BoxShot(const std::string& name, const base::Text& text, int icon, int buttons) {
    bool up = false;
    std::uintptr_t timer = 0;
    timer = host.StartTimer(200, [&] {
      host.StopTimer(timer);
      up = ui.Forms().WindowOf(ui.Box()) != 0;
      Shot(name);
      ui.Box().MsgClose.RaiseMouseUp({kit::kLeftButton, 0, 0, 0});
    });
    int result = ui.MessageBox(text, icon, buttons, u"Corvane for Windows");
    EXPECT_TRUE(up) << name;
    return result;
  }

  HWND Hwnd(const kit::Control& c) { return host.WindowHandle(ui.Forms().HandleOf(c)); }
};

TEST_F(KitGallery, MessageBoxInEveryButtonSetAndIcon) {
  PointerAside();
  const base::Text shortText = u"Select a record that you want to delete.";
  const base::Text longText =
      u"There is backup/ restore process in progress. Stopping QVWin service now will result "
      u"in cancelling the backup/ restore process and loss of data.\r\n"
      u"Are you sure you want to stop the QVWin service?";
  EXPECT_EQ(BoxShot("msgbox-0-ok-info-short", shortText, kit::kIconInfo, kit::kButtonsOk), 3);
  BoxShot("msgbox-1-okcancel-question-long", longText, kit::kIconQuestion, kit::kButtonsOkCancel);
  BoxShot("msgbox-2-yesno-cross-short", u"Do you want to stop the backup/restore operation?",
          kit::kIconError, kit::kButtonsYesNo);
  BoxShot("msgbox-3-okcancelretry-warn-long", longText, kit::kIconWarning,
          kit::kButtonsOkCancelRetry);
  BoxShot("msgbox-4-okcancelignore-info-short", shortText, kit::kIconInfo,
          kit::kButtonsOkCancelIgnore);
  BoxShot("msgbox-yesno-question-verylong",
          u"Web Management helps you manage your Backup set, schedule backups and view backup "
          u"logs via a web browser. Do you want to disable this feature? Download and install the "
          u"'Advanced Backup plug-in' for the SQL Server, Exchange Server, Brick level Backup and "
          u"Oracle server Backups.",
          kit::kIconQuestion, kit::kButtonsYesNo);
  BoxShot("msgbox-nobuttons-warn", u"A box with a bad button set closes only by its picture.",
          kit::kIconWarning, 9);
}

TEST_F(KitGallery, RoundedStrippedFormInTheCornerWithItsBalloonTip) {
  PointerAside();
  reference::bkupjobnotify form(ui, system);
  form.lblaccntname.SetCaption(u"jsmith");
  form.bkupjobname.SetCaption(u"My Documents && Photos");
  form.schjobststus.SetCaption(u"Your backup/restore job(s) will start in next 5 hour(s)");
  form.lblUserQuota.SetCaption(u"1.25 GB Out of 5.00 GB");
  form.QVDiskPBar.SetValue(25);
  Attached attached{ui, form};
  ui.Show(form);
  HWND window = host.WindowHandle(ui.Forms().WindowOf(form));
  ASSERT_TRUE(PumpUntil(host, [&] { return window != nullptr && IsWindowVisible(window); }));
  Shot("notify-corner");

  Click(Hwnd(form.cancel), true);
  EXPECT_TRUE(PumpUntil(host, [&] { return ui.Tips().Balloon() != nullptr; }));
  Shot("notify-balloon-tip");
  MovePointerTo(Hwnd(form.viewbkuplog.Lbl()));
  Shot("notify-hover");
}

// Each state shows its own face of the skin: the normal face light enough for a dark
// label, the hover face dark enough for a white one, and the pressed and disabled
// faces unlike both. Each is read on the screen beside the label, at mid height.
TEST_F(KitGallery, SkinnedButtonInEachState) {
  PointerAside();
  frmSkins form;
  Attached attached{ui, form};
  ui.Show(form);
  HWND window = host.WindowHandle(ui.Forms().WindowOf(form));
  ASSERT_TRUE(PumpUntil(host, [&] { return window != nullptr && IsWindowVisible(window); }));
  auto face = [&](const kit::PictureButton& b) {
    RECT r{};
    GetWindowRect(Hwnd(b), &r);
    HDC screen = GetDC(nullptr);
    const COLORREF c = GetPixel(screen, r.left + (r.right - r.left) / 10, (r.top + r.bottom) / 2);
    ReleaseDC(nullptr, screen);
    return c;
  };
  auto light = [](COLORREF c) { return GetRValue(c) + GetGValue(c) + GetBValue(c); };
  // The pressed face shows while the left button is held on the button.
  Press(Hwnd(form.pressed));
  Shot("skinned-buttons");
  const COLORREF normal = face(form.normal), hover = face(form.hover), pressed = face(form.pressed),
                 disabled = face(form.disabled);
  Release();
  Pump(host, Ms{200});
  EXPECT_GT(light(normal), 3 * 180) << std::hex << normal;
  EXPECT_LT(light(hover), 3 * 160) << std::hex << hover;
  EXPECT_NE(pressed, normal);
  EXPECT_NE(pressed, hover);
  EXPECT_NE(disabled, normal);
  EXPECT_NE(disabled, hover);
  EXPECT_NE(face(form.pressed), pressed) << "released, the pressed face goes";
}

TEST_F(KitGallery, ThePlatformsControlsShowTheModelAndReportTheUser) {
  PointerAside();
  frmControls form;
  Attached attached{ui, form};
  ui.Show(form);
  HWND window = host.WindowHandle(ui.Forms().WindowOf(form));
  ASSERT_TRUE(PumpUntil(host, [&] { return window != nullptr && IsWindowVisible(window); }));
  HWND list = Hwnd(form.lvJobs);
  EXPECT_EQ(ListView_GetItemCount(list), 3);
  EXPECT_TRUE(ListView_GetCheckState(list, 1));
  EXPECT_FALSE(ListView_GetCheckState(list, 0));
  EXPECT_EQ(ListView_GetNextItem(list, -1, LVNI_SELECTED), 0);
  SYSTEMTIME st{};
  EXPECT_EQ(SendMessageW(Hwnd(form.DTPicker), DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(&st)),
            GDT_VALID);
  EXPECT_EQ(st.wDay, 24);
  EXPECT_EQ(SendMessageW(Hwnd(form.optWeekly), BM_GETCHECK, 0, 0), BST_CHECKED);
  EXPECT_EQ(SendMessageW(Hwnd(form.pbDone), PBM_GETPOS, 0, 0), 60);
  Shot("platform-controls");

  // The user picks the third row with the real pointer: the model hears of it.
  RECT row{};
  ListView_GetItemRect(list, 2, &row, LVIR_LABEL);
  MapWindowPoints(list, nullptr, reinterpret_cast<POINT*>(&row), 2);
  SetCursorPos((row.left + row.right) / 2, (row.top + row.bottom) / 2);
  INPUT click[2] = {};
  click[0].type = click[1].type = INPUT_MOUSE;
  click[0].mi.dwFlags = MOUSEEVENTF_LEFTDOWN;
  click[1].mi.dwFlags = MOUSEEVENTF_LEFTUP;
  SendInput(2, click, sizeof(INPUT));
  EXPECT_TRUE(PumpUntil(host, [&] { return form.clickedRow == 3; })) << form.clickedRow;
  EXPECT_EQ(form.lvJobs.SelectedIndex(), 3);
  // A program change of the rows shows at once.
  form.lvJobs.Item(1).SetSubItem(2, u"Stopping");
  wchar_t cell[64] = {};
  ListView_GetItemText(list, 0, 2, cell, 64);
  EXPECT_STREQ(cell, L"Stopping");
}

}  // namespace
}  // namespace kit_e2e
