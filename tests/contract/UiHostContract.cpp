// The UI host described once: what a window and its controls show after the
// program told the host about them, what the host reports of the user's doings
// (and that it changes nothing on its own), focus, modal loops, measuring and the
// notification area. Natively against the fake host; under Wine against the Windows
// host as well, read back through the platform's own calls.
#include <gtest/gtest.h>

#include "UiTargets.h"

namespace contract {
namespace {

using platform::UiChange;
using platform::UiControl;
using platform::UiHandle;
using platform::UiKind;
using platform::UiWindow;

// Everything the host reports, in order.
struct Recorder : platform::IUiEvents {
  void OnClick(UiHandle, UiHandle control) override {
    events.push_back("click " + std::to_string(control));
  }
  void OnSelect(UiHandle, UiHandle control, int index) override {
    events.push_back("select " + std::to_string(control) + " " + std::to_string(index));
  }
  void OnFocus(UiHandle, UiHandle control) override { focused = control; }
  void OnCloseRequest(UiHandle) override { events.push_back("close"); }
  std::vector<std::string> events;
  UiHandle focused = 0;
};

UiWindow Window(const Text& name) {
  UiWindow w;
  w.name = name;
  w.caption = u"Contract " + name;
  w.rect = {1500, 1500, 6000, 4500};
  return w;
}

// A control with what the hosts need of it here: a tab stop where it can take the
// focus, and the button role on a picture button (it takes no capture of its own).
UiControl Control(UiKind kind, const Text& name, const Text& caption, platform::UiRect rect) {
  UiControl c;
  c.kind = kind;
  c.name = name;
  c.caption = caption;
  c.rect = rect;
  c.tabStop = kind != UiKind::Picture && kind != UiKind::Label;
  if (kind == UiKind::PictureButton) c.role = platform::UiRole::PushButton;
  return c;
}

class UiHostContract : public ::testing::TestWithParam<UiTarget> {
 protected:
  void SetUp() override { world_ = GetParam().make(); }
  platform::IUiHost& Host() { return world_->Host(); }
  // A shown window with a button, a check box, a combo box and a list.
  UiHandle MakeWindow(const Text& name) {
    UiWindow w = Window(name);
    const UiHandle window = Host().CreateForm(w, events_);
    w.visible = true;
    Host().UpdateForm(window, w, UiChange::Visible);
    world_->Pump();
    return window;
  }

  std::unique_ptr<UiWorld> world_;
  Recorder events_;
};

TEST_P(UiHostContract, WindowsAndControlsShowWhatTheyWereToldAndGoWithTheirWindow) {
  UiWindow w = Window(u"frmA");
  const UiHandle window = Host().CreateForm(w, events_);
  ASSERT_NE(window, 0u);
  EXPECT_FALSE(world_->Read(window).visible) << "a window is made hidden unless told";
  const UiHandle frame = Host().CreateControl(
      window, 0, Control(UiKind::Picture, u"picFrame", u"", {120, 120, 5000, 2000}));
  const UiHandle button = Host().CreateControl(
      window, frame, Control(UiKind::PictureButton, u"cmdGo", u"&Go", {120, 120, 1200, 345}));
  ASSERT_NE(frame, 0u);
  ASSERT_NE(button, 0u);
  EXPECT_EQ(world_->Read(button).text, u"&Go");
  EXPECT_EQ(world_->Read(window).text, u"Contract frmA");

  w.visible = true;
  w.caption = u"Renamed";
  Host().UpdateForm(window, w, UiChange::Visible | UiChange::Caption);
  world_->Pump();
  EXPECT_TRUE(world_->Read(window).visible);
  EXPECT_EQ(world_->Read(window).text, u"Renamed");

  UiControl disabled = Control(UiKind::PictureButton, u"cmdGo", u"&Stop", {120, 120, 1200, 345});
  disabled.enabled = false;
  Host().UpdateControl(button, disabled, UiChange::Caption | UiChange::Enabled);
  EXPECT_EQ(world_->Read(button).text, u"&Stop");
  EXPECT_FALSE(world_->Read(button).enabled);

  // A container that is not there, or belongs to another window, holds nothing.
  const UiHandle other = Host().CreateForm(Window(u"frmB"), events_);
  const UiControl label = Control(UiKind::Label, u"lbl", u"x", {0, 0, 100, 100});
  EXPECT_EQ(Host().CreateControl(other, frame, label), 0u);
  EXPECT_EQ(Host().CreateControl(window, 999999, label), 0u);

  Host().DestroyForm(window);
  world_->Pump();
  EXPECT_FALSE(world_->Read(window).exists);
  EXPECT_FALSE(world_->Read(button).exists);
  EXPECT_TRUE(world_->Read(other).exists);
}

TEST_P(UiHostContract, TheUsersClickIsReportedAndChangesNothingUntilTheProgramSays) {
  const UiHandle window = MakeWindow(u"frmClick");
  UiControl box = Control(UiKind::CheckBox, u"chkAll", u"&All", {120, 120, 2400, 255});
  const UiHandle check = Host().CreateControl(window, 0, box);
  world_->Click(check);
  ASSERT_EQ(events_.events, (std::vector<std::string>{"click " + std::to_string(check)}));
  EXPECT_EQ(world_->Read(check).check, 0) << "the model decides the check";
  box.check = 1;
  Host().UpdateControl(check, box, UiChange::Value);
  EXPECT_EQ(world_->Read(check).check, 1);

  world_->RequestClose(window);
  EXPECT_EQ(events_.events.back(), "close");
  EXPECT_TRUE(world_->Read(window).exists) << "a close request is only a request";
}

TEST_P(UiHostContract, ComboBoxAndListShowTheirEntriesAndAChoiceIsReported) {
  const UiHandle window = MakeWindow(u"frmLists");
  UiControl combo = Control(UiKind::ComboBox, u"cmbFrequency", u"", {120, 120, 2400, 315});
  combo.items = {u"Daily", u"Weekly", u"Monthly"};
  combo.listIndex = 1;
  const UiHandle cmb = Host().CreateControl(window, 0, combo);
  ASSERT_NE(cmb, 0u);
  EXPECT_EQ(world_->Read(cmb).items, combo.items);
  EXPECT_EQ(world_->Read(cmb).listIndex, 1);
  world_->Select(cmb, 2);
  EXPECT_EQ(events_.events.back(), "select " + std::to_string(cmb) + " 2");
  combo.items = {u"Once"};
  combo.listIndex = -1;
  Host().UpdateControl(cmb, combo, UiChange::Items | UiChange::Value);
  EXPECT_EQ(world_->Read(cmb).items, std::vector<Text>{u"Once"});
  EXPECT_EQ(world_->Read(cmb).listIndex, -1);

  UiControl list = Control(UiKind::ListView, u"lvJobs", u"", {120, 600, 5000, 2000});
  list.columns = {{u"Set", 2000}, {u"Next", 2000}};
  list.rows.resize(2);
  list.rows[0].text = u"Documents";
  list.rows[0].image = u"session_backup";
  list.rows[1].text = u"Photos";
  const UiHandle lv = Host().CreateControl(window, 0, list);
  EXPECT_EQ(world_->Read(lv).items, (std::vector<Text>{u"Documents", u"Photos"}));
  EXPECT_EQ(world_->Read(lv).rowImages, (std::vector<bool>{true, false}));

  // Forty rows in a list that holds a few: a Scroll change brings the asked row into
  // view without selecting it.
  list.rows.assign(40, {});
  for (std::size_t i = 0; i < 40; ++i) list.rows[i].text = u"Set " + base::FromNumber(i + 1);
  Host().UpdateControl(lv, list, UiChange::Items);
  list.visibleRow = 35;
  Host().UpdateControl(lv, list, UiChange::Scroll);
  world_->Pump();
  const auto seen = world_->Read(lv);
  ASSERT_EQ(seen.rowsInView.size(), 40u);
  EXPECT_TRUE(seen.rowsInView[34]) << "the asked row is out of view";
}

TEST_P(UiHostContract, FocusGoesWhereTheProgramSaysAndIsReported) {
  const UiHandle window = MakeWindow(u"frmFocus");
  const UiHandle first = Host().CreateControl(
      window, 0, Control(UiKind::PictureButton, u"cmdA", u"&A", {120, 120, 1200, 345}));
  const UiHandle second = Host().CreateControl(
      window, 0, Control(UiKind::PictureButton, u"cmdB", u"&B", {1500, 120, 1200, 345}));
  world_->Activate(window);
  Host().FocusControl(window, second);
  world_->Pump();
  EXPECT_TRUE(world_->Read(second).focused);
  EXPECT_FALSE(world_->Read(first).focused);
  EXPECT_EQ(events_.focused, second);
}

TEST_P(UiHostContract, ANoticeStaysOnTopWithoutTakingTheActivation) {
  const UiHandle main = MakeWindow(u"frmMain");
  world_->Activate(main);
  UiWindow notice = Window(u"frmNotice");
  notice.frameless = true;
  notice.topmost = true;
  notice.showNoActivate = true;
  const UiHandle w = Host().CreateForm(notice, events_);
  notice.visible = true;
  Host().UpdateForm(w, notice, UiChange::Visible);
  world_->Pump();
  EXPECT_TRUE(world_->Read(w).visible);
  EXPECT_TRUE(world_->Read(w).topmost);
  EXPECT_FALSE(world_->Read(w).active);
  EXPECT_TRUE(world_->Read(main).active);
  EXPECT_FALSE(world_->Read(main).topmost);
}

TEST_P(UiHostContract, AModalLoopEndsWhenToldOrWhenItsWindowGoes) {
  const UiHandle window = MakeWindow(u"frmModal");
  bool ran = false;
  world_->DuringModal([&] {
    ran = true;
    Host().EndModal(window);
  });
  Host().RunModal(window);
  EXPECT_TRUE(ran);
  EXPECT_TRUE(world_->Read(window).exists);
  world_->DuringModal([&] { Host().DestroyForm(window); });
  Host().RunModal(window);
  EXPECT_FALSE(world_->Read(window).exists);
}

TEST_P(UiHostContract, TextIsMeasuredAsALabelDrawsIt) {
  const platform::UiFont font;
  const auto one = Host().MeasureText(u"Backup", font, 0);
  const auto two = Host().MeasureText(u"Backup Backup", font, 0);
  EXPECT_GT(one.width, 0);
  EXPECT_GT(two.width, one.width);
  const auto wrapped = Host().MeasureText(u"Backup Backup Backup Backup", font, one.width * 1.5);
  EXPECT_GT(wrapped.height, one.height) << "a word-wrapping label grows downwards";
  EXPECT_LE(wrapped.width, one.width * 1.5);
  EXPECT_GT(Host().TwipsPerPixelX(), 0);
}

TEST_P(UiHostContract, TrayIconsComeAndGoAndABalloonNeedsAnIcon) {
  platform::UiTrayIcon icon;
  icon.icon = u"tray_running";
  icon.tip = u"Contract";
  const UiHandle tray = Host().AddTrayIcon(icon, [](int) {});
  ASSERT_NE(tray, 0u);
  EXPECT_TRUE(world_->TrayShown(tray));
  Host().ShowTrayBalloon(tray, {u"Title", u"Text", platform::UiBalloonIcon::Info});
  EXPECT_EQ(world_->BalloonsShown(tray), 1);
  Host().RemoveTrayIcon(tray);
  EXPECT_FALSE(world_->TrayShown(tray));
  // A balloon for an icon that is gone is no balloon, and no fault.
  Host().ShowTrayBalloon(tray, {u"Title", u"Text", platform::UiBalloonIcon::Info});
  EXPECT_EQ(world_->BalloonsShown(tray), 0);
}

INSTANTIATE_TEST_SUITE_P(Hosts, UiHostContract, ::testing::ValuesIn(UiTargets()), TargetName());

}  // namespace
}  // namespace contract
