// The monitor window by the keyboard: Tab goes through its buttons, tabs, boxes,
// slider and list in reading order, Enter and Space press what has the focus, the
// arrows move the bandwidth limit, and the tray's keyboard event opens its menu.
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
  Text Focused() const {
    return form->ActiveControl() == nullptr ? Text() : form->ActiveControl()->FullName();
  }
};

TEST_F(MonitorKeyboardTest, TabReachesEveryButtonInOrderAndSkipsWhatIsHidden) {
  Open();
  ui.Show(*form);
  std::vector<Text> order;
  for (int i = 0; i < 11; ++i) {
    Press(kit::kKeyTab);
    order.push_back(Focused());
  }
  // The start-at-logon box lies on the hidden Details pane: passed over.
  EXPECT_EQ(order, (std::vector<Text>{u"pic_Status", u"cmdDetails", u"btnRefresh", u"btnLogFile",
                                      u"btnStopTransfer", u"chkbandwidth", u"PictSliderKnob1",
                                      u"lstLog", u"Picture1", u"btnClose", u"pic_Status"}));
  // Enter on the Details tab shows its pane; then the box there is a stop.
  Press(kit::kKeyTab);
  Down(kit::kKeyReturn);
  EXPECT_TRUE(form->FrameDetails.Visible());
  Press(kit::kKeyTab);
  EXPECT_EQ(Focused(), u"StartAuto");
  // Every picture that acts is a push button to a screen reader, with a name.
  for (kit::Control* c : {static_cast<kit::Control*>(&form->btnRefresh),
                          static_cast<kit::Control*>(&form->pic_Status),
                          static_cast<kit::Control*>(&form->btnClose)}) {
    EXPECT_EQ(c->Role(), kit::Role::PushButton) << base::ToUtf8(c->Name());
    EXPECT_FALSE(c->Caption().empty());
  }
}

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
