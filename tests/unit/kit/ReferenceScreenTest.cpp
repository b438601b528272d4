// The reference screen without windows: on the fake host it is described as the
// design wants it (frameless, rounded, in the corner, over the others without the
// activation, with its roles), and the user's mouse and keys reach the handlers
// its constructor declared. docs/kit.md quotes this screen.
#include <gtest/gtest.h>

#include "kit/HostedUi.h"
#include "kit/WindowLook.h"
#include "platform/fake/FakeServices.h"
#include "platform/fake/FakeUiHost.h"
#include "reference/bkupjobnotify.h"

namespace {

using platform::UiHandle;
using platform::UiKey;
using platform::UiMouse;
using platform::UiRole;

struct ReferenceScreen : ::testing::Test {
  void SetUp() override {
    ui.Show(form);
    window = fake.FindForm(u"bkupjobnotify");
    ASSERT_NE(window, 0u);
  }
  UiHandle Handle(const base::Text& name) const { return fake.FindControl(window, name); }
  void Mouse(const base::Text& name, UiMouse what, int button) {
    fake.Events(window)->OnMouse(window, Handle(name), {what, button, 0, 60, 60});
  }
  bool Key(UiKey what, int code, int shift = 0) {
    return fake.Events(window)->OnKey(window, {what, code, shift});
  }
  void Press(int code, int shift = 0) {
    Key(UiKey::Down, code, shift);
    Key(UiKey::Up, code, shift);
  }

  platform::FakeUiHost fake;
  platform::FakeSystemInfo system;
  kit::HostedUi ui{fake};
  reference::bkupjobnotify form{ui, system};
  UiHandle window = 0;
};

TEST_F(ReferenceScreen, TheHostIsToldTheDesignedWindowAndWhatEachControlIs) {
  const platform::UiWindow& w = fake.forms.at(window).state;
  EXPECT_TRUE(w.frameless);
  EXPECT_TRUE(w.topmost);
  EXPECT_TRUE(w.showNoActivate);
  ASSERT_TRUE(w.region.has_value());
  // In the bottom-right corner of the work area (1280 x 760 pixels, 15 twips each).
  EXPECT_DOUBLE_EQ(w.rect.left + w.rect.width, 1280 * 15);
  EXPECT_DOUBLE_EQ(w.rect.top + w.rect.height, 760 * 15);

  const platform::UiControl* help = fake.Control(window, u"Picture1");
  ASSERT_NE(help, nullptr);
  EXPECT_EQ(help->role, UiRole::PushButton);
  EXPECT_TRUE(help->tabStop);
  EXPECT_EQ(help->caption, u"Help");
  EXPECT_EQ(fake.Control(window, u"viewbkuplog")->caption, u"&View Log");
  EXPECT_EQ(fake.Control(window, u"viewbkuplog")->role, UiRole::PushButton);
  EXPECT_EQ(fake.Control(window, u"Label2")->role, UiRole::StaticText);
  EXPECT_FALSE(fake.Control(window, u"Label2")->tabStop);
  EXPECT_EQ(fake.Control(window, u"QVDiskPBar")->role, UiRole::ProgressBar);
  EXPECT_EQ(fake.Control(window, u"PicSuccessJob")->role, UiRole::Graphic);
}

TEST_F(ReferenceScreen, EnterViewsTheLogUntilTheButtonHadTheFocusThenTabAndEnterAct) {
  EXPECT_FALSE(Key(UiKey::Down, kit::kKeyReturn)) << "a key that acts is swallowed";
  EXPECT_EQ(form.viewLogRequests, 1);
  Press(kit::kKeyTab);
  EXPECT_EQ(fake.forms.at(window).focus, Handle(u"viewbkuplog"));
  Press(kit::kKeyTab);
  EXPECT_EQ(fake.forms.at(window).focus, Handle(u"cancel"));
  Press(kit::kKeyTab);
  EXPECT_EQ(fake.forms.at(window).focus, Handle(u"Picture1"));
  Press(kit::kKeySpace);
  EXPECT_EQ(form.helpRequests, 1);
  // The view button has had the focus: Enter on the help picture is the picture's.
  Key(UiKey::Down, kit::kKeyReturn);
  EXPECT_EQ(form.viewLogRequests, 1);
  EXPECT_EQ(form.helpRequests, 2);
  Press('V', kit::kAltMask);
  EXPECT_EQ(form.viewLogRequests, 2);
  Press(kit::kKeyTab, kit::kShiftMask);
  Key(UiKey::Down, kit::kKeyReturn);  // on Close
  EXPECT_FALSE(form.IsLoaded());
  EXPECT_EQ(fake.FindForm(u"bkupjobnotify"), 0u);
}

TEST_F(ReferenceScreen, MouseOnButtonsAndLabelsPressesShowsTipsHoversAndDrags) {
  Mouse(u"lbl_viewbkuplog", UiMouse::Move, 0);
  EXPECT_EQ(form.viewbkuplog.SkinState(), kit::kSkinHover);
  EXPECT_EQ(form.cancel.SkinState(), kit::kSkinNormal);
  fake.Events(window)->OnMouse(window, 0, {UiMouse::Move, 0, 0, 10, 10});
  EXPECT_EQ(form.viewbkuplog.SkinState(), kit::kSkinNormal);

  Mouse(u"lbl_cancel", UiMouse::Up, kit::kRightButton);
  ASSERT_EQ(fake.tips.size(), 1u);
  EXPECT_EQ(fake.tips.begin()->second.tip.text, u"Exit this screen");
  EXPECT_TRUE(form.IsLoaded()) << "the right button shows the tip and does not press";
  Mouse(u"lbl_viewbkuplog", UiMouse::Up, kit::kLeftButton);
  EXPECT_TRUE(fake.tips.empty());
  EXPECT_EQ(form.viewLogRequests, 1);

  Mouse(u"Label1", UiMouse::Down, kit::kLeftButton);
  fake.Events(window)->OnMouse(window, 0, {UiMouse::Down, kit::kLeftButton, 0, 10, 10});
  Mouse(u"lblCapbar", UiMouse::Down, kit::kRightButton);
  EXPECT_EQ(fake.dragRequests.size(), 2u);

  Press(kit::kKeyEscape);
  EXPECT_FALSE(form.IsLoaded());
}

}  // namespace
