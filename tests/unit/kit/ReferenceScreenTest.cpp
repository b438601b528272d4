// The reference screen without windows: on the fake host it is described as the
// design wants it (frameless, rounded, over the others without the activation,
// with its roles), and the user's mouse and keys reach the handlers
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
  // A picture that acts is a named stop; a label and a picture that only shows are not.
  const platform::UiControl* help = fake.Control(window, u"Picture1");
  ASSERT_NE(help, nullptr);
  EXPECT_EQ(help->role, UiRole::PushButton);
  EXPECT_TRUE(help->tabStop);
  EXPECT_EQ(help->caption, u"Help");
  EXPECT_FALSE(fake.Control(window, u"Label2")->tabStop);
  EXPECT_EQ(fake.Control(window, u"PicSuccessJob")->role, UiRole::Graphic);
}

// The key, tip, hover and drag rules are the kit's own tests'; here the declared chain
// of the documented screen takes the user's input from the host.
TEST_F(ReferenceScreen, TheDeclaredChainTakesTheUsersInputFromTheHost) {
  EXPECT_FALSE(Key(UiKey::Down, kit::kKeyReturn)) << "a key that acts is swallowed";
  EXPECT_EQ(form.viewLogRequests, 1);
  Press(kit::kKeyTab);
  Press(kit::kKeyTab);
  EXPECT_EQ(fake.forms.at(window).focus, Handle(u"cancel"));
  Press('V', kit::kAltMask);
  EXPECT_EQ(form.viewLogRequests, 2);

  Mouse(u"lbl_viewbkuplog", UiMouse::Move, 0);
  EXPECT_EQ(form.viewbkuplog.SkinState(), kit::kSkinHover);
  Mouse(u"lbl_cancel", UiMouse::Up, kit::kRightButton);
  ASSERT_EQ(fake.tips.size(), 1u);
  EXPECT_TRUE(form.IsLoaded()) << "the right button shows the tip and does not press";
  Press(kit::kKeyTab);
  Press(kit::kKeySpace);
  EXPECT_EQ(form.helpRequests, 1);
  Mouse(u"lblCapbar", UiMouse::Down, kit::kLeftButton);
  EXPECT_EQ(fake.dragRequests.size(), 1u);

  Press(kit::kKeyEscape);
  EXPECT_FALSE(form.IsLoaded());
  EXPECT_EQ(fake.FindForm(u"bkupjobnotify"), 0u);
}

}  // namespace
