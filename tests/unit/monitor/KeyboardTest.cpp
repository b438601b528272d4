// The monitor window by the keyboard: Space presses what has the focus, the arrows
// move the bandwidth limit, the light says its state, and the tray's keyboard event
// opens its menu. The tab order is the form's declared list; the kit's tests prove
// how Tab follows it.
#include <gtest/gtest.h>

#include "MonitorFixture.h"

namespace {

using base::Text;
using monitortest::MonitorFormTest;

class MonitorKeyboardTest : public MonitorFormTest {
 protected:
  void Down(int key, int shift = 0) {
    kit::KeyArgs a{key, shift};
    form->DeliverKeyDown(a);
  }
  void Press(int key, int shift = 0) {
    Down(key, shift);
    kit::KeyArgs up{key, shift};
    form->DeliverKeyUp(up);
  }
};

TEST_F(MonitorKeyboardTest, SpaceOnCloseHidesTheWindowAndTheArrowsMoveTheLimitAndKeepIt) {
  Setting(u"BANDWIDTH", u"50");
  Open();
  ui.Show(*form);
  form->PictSliderKnob1.SetFocus();
  Down(kit::kKeyRight);
  Down(kit::kKeyRight);
  EXPECT_EQ(Get(u"BANDWIDTH"), u"52");
  EXPECT_EQ(form->lablBandWidth.Caption(), u"52%");
  for (int i = 0; i < 60; ++i) Down(kit::kKeyLeft);
  EXPECT_EQ(Get(u"BANDWIDTH"), u"0") << "the limit stops at the slider's end";
  form->btnClose.SetFocus();
  Press(kit::kKeySpace);
  EXPECT_FALSE(form->Visible());
  EXPECT_TRUE(form->IsLoaded()) << "closing hides the window, as the close picture does";
}

TEST_F(MonitorKeyboardTest, TheLightSaysItsStateAndTheTrayKeyboardOpensTheMenu) {
  Open();
  form->Set_Stop();
  EXPECT_EQ(form->TrafficLights1.Role(), kit::Role::Indicator);
  EXPECT_EQ(form->TrafficLights1.Caption(), u"Service status: Stopped");
  form->Set_Start();
  EXPECT_EQ(form->TrafficLights1.Caption(), u"Service status: Running");

  Setting(u"DisableAllSchdulers", u"1");
  form->TrayMouse(platform::kTrayKeyboardMenu);
  ASSERT_EQ(ui.Popups().size(), 1u);
  EXPECT_EQ(ui.Popups()[0], u"TrayMenu");
  EXPECT_EQ(form->mnuenablesch.Caption(), monitor::kEnableAllJobs);
}

}  // namespace
