// The keyboard in the form model: the tab order, option groups, and where each key goes.
#include <gtest/gtest.h>

#include "kit/Controls.h"
#include "kit/Design.h"
#include "kit/Form.h"
#include "kit/ListView.h"
#include "kit/ScriptedUi.h"

namespace {

using kit::KeyArgs;
using kit::KeyStroke;

class frmKeys : public kit::Form {
 public:
  explicit frmKeys(kit::Ui& ui) : Form(u"frmKeys", {0, 0, 6000, 5000}, u"Keys") {
    SetKeyPreview(true);
    kit::Design(*this, ui)
        .Press(cmdOk, &frmKeys::cmdOk_Click)
        .Press(picRefresh, &frmKeys::picRefresh_Click)
        .Key(KeyStroke::Up, kit::Alt('C'), &frmKeys::Close_Key)
        .KeyUntilFocused(KeyStroke::Down, kit::kEnter, cmdOk, &frmKeys::Enter_Key);
  }
  void cmdOk_Click() { ++okPresses; }
  void picRefresh_Click() { ++refreshes; }
  void Close_Key() { ++closeKeys; }
  void Enter_Key() { ++formEnters; }

  int okPresses = 0;
  int refreshes = 0;
  int closeKeys = 0;
  int formEnters = 0;

  // Declared out of reading order on purpose: Tab follows the place, not the line.
  kit::ListView lvJobs{*this, u"lvJobs", {120, 2400, 5000, 1200}};
  kit::Label lblTitle{*this, u"lblTitle", {120, 120, 3000, 255}, u"Title"};
  kit::TextBox txtMail{*this, u"txtMail", {120, 600, 3000, 300}};
  kit::PictureButton cmdOk{*this, u"cmdOk", {3300, 620, 1200, 345}, u"&OK"};
  kit::CheckBox chkHidden{*this, u"chkHidden", {120, 1000, 2000, 255}, u"Hidden"};
  kit::CheckBox chkOff{*this, u"chkOff", {2400, 1000, 2000, 255}, u"Disabled"};
  kit::Picture fraDays{*this, u"fraDays", {120, 1400, 5000, 600}};
  kit::OptionButton optDaily{fraDays, u"optDaily", {0, 0, 1500, 255}, u"&Daily"};
  kit::OptionButton optWeekly{fraDays, u"optWeekly", {1600, 0, 1500, 255}, u"&Weekly"};
  kit::OptionButton optMonthly{fraDays, u"optMonthly", {3200, 0, 1500, 255}, u"&Monthly"};
  kit::Picture picRefresh{*this, u"picRefresh", {5400, 120, 360, 360}, u"ref_gen"};
  kit::Picture picLogo{*this, u"picLogo", {5400, 4000, 360, 360}, u"qv_logo"};
};

struct KeyboardTest : ::testing::Test {
  void SetUp() override {
    ui.Show(form);
    form.chkHidden.SetVisible(false);
    form.chkOff.SetEnabled(false);
  }
  void Down(int key, int shift = 0) {
    KeyArgs a{key, shift};
    form.DeliverKeyDown(a);
  }
  void Up(int key, int shift = 0) {
    KeyArgs a{key, shift};
    form.DeliverKeyUp(a);
  }
  void Tab(bool back = false) {
    Down(kit::kKeyTab, back ? kit::kShiftMask : 0);
    Up(kit::kKeyTab, back ? kit::kShiftMask : 0);
  }
  base::Text Focused() const {
    return form.ActiveControl() == nullptr ? base::Text() : form.ActiveControl()->FullName();
  }
  // Where each of `n` presses of Tab (or Shift+Tab) puts the focus.
  std::vector<base::Text> Tabs(int n, bool back = false) {
    std::vector<base::Text> seen;
    for (int i = 0; i < n; ++i) {
      Tab(back);
      seen.push_back(Focused());
    }
    return seen;
  }

  kit::ScriptedUi ui;
  frmKeys form{ui};
};

TEST_F(KeyboardTest, TabGoesByPlaceSkipsHiddenAndDisabledAndComesRound) {
  // The refresh picture acts, so it is a stop; the logo only shows.
  EXPECT_EQ(form.fraDays.Role(), kit::Role::Pane);
  EXPECT_EQ(Tabs(6), (std::vector<base::Text>{u"picRefresh", u"txtMail", u"cmdOk", u"optDaily",
                                              u"lvJobs", u"picRefresh"}));
  EXPECT_EQ(Tabs(2, true), (std::vector<base::Text>{u"lvJobs", u"optDaily"}));
}

TEST_F(KeyboardTest, ADeclaredOrderComesFirstAndAControlThatBecomesUsableIsReached) {
  form.SetTabOrder({&form.cmdOk, &form.lvJobs});
  form.chkOff.SetEnabled(true);
  EXPECT_EQ(Tabs(5),
            (std::vector<base::Text>{u"cmdOk", u"lvJobs", u"picRefresh", u"txtMail", u"chkOff"}));
}

TEST_F(KeyboardTest, AnOptionGroupIsOneStopAndTheArrowsChooseWithinIt) {
  form.optWeekly.SetValue(true);
  form.SetTabOrder({&form.optDaily});
  Tab();
  EXPECT_EQ(Focused(), u"optWeekly");  // the chosen one stands for the group
  Down(kit::kKeyRight);
  EXPECT_EQ(Focused(), u"optMonthly");
  EXPECT_TRUE(form.optMonthly.Value());
  EXPECT_FALSE(form.optWeekly.Value());
  Down(kit::kKeyDown);  // round the end
  EXPECT_TRUE(form.optDaily.Value());
  form.optWeekly.SetEnabled(false);
  Down(kit::kKeyLeft);  // a disabled option is passed over
  EXPECT_TRUE(form.optMonthly.Value());
  Tab();
  EXPECT_NE(Focused().substr(0, 3), u"opt");
}

TEST_F(KeyboardTest, EnterAndSpaceOnAFocusedButtonPressItAndTheFormRuleStopsOnceItHadTheFocus) {
  Down(kit::kKeyReturn);
  EXPECT_EQ(form.formEnters, 1);  // no focus yet: the form's Enter
  form.cmdOk.SetFocus();
  Down(kit::kKeyReturn);
  EXPECT_EQ(form.okPresses, 1);
  EXPECT_EQ(form.formEnters, 1);
  Down(kit::kKeySpace);
  EXPECT_EQ(form.okPresses, 1);  // Space acts when it comes up
  Up(kit::kKeySpace);
  EXPECT_EQ(form.okPresses, 2);
  form.txtMail.SetFocus();
  Down(kit::kKeyReturn);
  EXPECT_EQ(form.formEnters, 1);  // the button has had the focus: the form's rule is over
  form.picRefresh.SetFocus();
  Down(kit::kKeyReturn);
  EXPECT_EQ(form.refreshes, 1);
}

TEST_F(KeyboardTest, TheDesignedAltKeysWinWhereverTheFocusIsAndTabReachesNoHandler) {
  int keyDowns = 0;
  form.txtMail.on.KeyDown = [&](KeyArgs&) { ++keyDowns; };
  form.txtMail.SetFocus();
  Up('C', kit::kAltMask);
  EXPECT_EQ(form.closeKeys, 1);
  Up('C');  // without Alt it is a letter of the text box
  EXPECT_EQ(form.closeKeys, 1);
  Down('A');
  EXPECT_EQ(keyDowns, 1);
  Tab();
  EXPECT_EQ(keyDowns, 2);  // the control saw Tab go by, and the kit moved on
  EXPECT_EQ(Focused(), u"cmdOk");
  form.Unload();
  Up('C', kit::kAltMask);  // an unloaded form takes no keys
  EXPECT_EQ(form.closeKeys, 1);
}

}  // namespace
