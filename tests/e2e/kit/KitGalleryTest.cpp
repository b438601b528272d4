// The screen gallery: the kit's own elements on the Windows host, each saved as a
// picture under build/screenshots/kit/ for people to look at (the platform's controls
// are pictured on the monitor's screens). The checks
// here are that each element came up and, for the skinned button, that each state
// shows its own face.
#include <gtest/gtest.h>

#include <cstdlib>

#include "KitSupport.h"
#include "SampleForms.h"
#include "kit/MesgBox.h"

namespace kit_e2e {
namespace {

class KitGallery : public KitScreenTest {
 protected:
  // The pointer out of the way, so that no button shows its hover face by chance.
  void PointerAside() {
    MovePointerTo(POINT{5, 5});
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

// Each state shows its own face of the skin: the normal face light enough for a dark
// label, the hover face dark enough for a white one, and the pressed and disabled
// faces unlike both. Each is read on the screen beside the label, at mid height.
TEST_F(KitGallery, SkinnedButtonInEachState) {
  PointerAside();
  frmSkins form;
  Attached attached{ui, form};
  ASSERT_TRUE(ShowAndWait(form));
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

}  // namespace
}  // namespace kit_e2e
