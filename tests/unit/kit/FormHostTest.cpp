// The kit's forms on a UI host: what the host is told of a screen, and how the user's
// input the host reports reaches the screen's handlers.
#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <utility>
#include <vector>

#include "base/Guarded.h"
#include "base/Text.h"
#include "SampleForm.h"
#include "kit/HostedUi.h"
#include "kit/MesgBox.h"
#include "kit/ToolTips.h"
#include "platform/fake/FakeUiHost.h"

namespace {

using base::Text;
using kit::MouseArgs;
using kittest::frmSample;
using platform::UiChange;
using platform::UiHandle;
using platform::UiKind;

class FormHostTest : public ::testing::Test {
 protected:
  FormHostTest() { form.withRows = true; }
  platform::FakeUiHost fake;
  frmSample form;  // outlives the Ui that renders it
  kit::HostedUi ui{fake};

  UiHandle Window() { return ui.Forms().WindowOf(form); }
  const platform::UiControl& State(const kit::Control& c) {
    return fake.controls.at(ui.Forms().HandleOf(c)).state;
  }
  platform::IUiEvents& Events() { return *fake.Events(Window()); }
  UiHandle H(const kit::Control& c) { return ui.Forms().HandleOf(c); }
};

TEST_F(FormHostTest, AScreenBecomesOneWindowWithItsControlsInTheirContainers) {
  ui.Show(form);
  const UiHandle w = Window();
  ASSERT_NE(w, 0u);
  const platform::UiWindow& win = fake.forms.at(w).state;
  EXPECT_EQ(win.caption, u"Sample");
  EXPECT_EQ(win.rect, (platform::UiRect{1200, 900, 6000, 4000}));
  EXPECT_TRUE(win.visible);

  // Timers and menus are no windows; every other control is, in its container.
  EXPECT_EQ(fake.controls.size(), 11u);
  EXPECT_EQ(fake.controls.at(H(form.cmdGo)).container, H(form.picFrame));
  EXPECT_EQ(fake.controls.at(H(form.cmdGo.Lbl())).container, H(form.cmdGo));
  // Controls are created in declaration order, so later ones stack above.
  EXPECT_LT(H(form.cmdGo), H(form.cmdGo.Lbl()));

  EXPECT_EQ(State(form.cmdGo).kind, UiKind::PictureButton);
  EXPECT_EQ(State(form.cmdGo).caption, u"&Go");  // the button reads as its label
  EXPECT_EQ(State(form.picFrame).pictureKey, u"qv_medium");
  const platform::UiControl& list = State(form.lvItems);
  EXPECT_EQ(list.columns.at(1).caption, u"Size");
  EXPECT_EQ(list.rows.at(1).subItems, std::vector<Text>{u"2 KB"});
  EXPECT_TRUE(list.checkboxes);

  // The bar shows the visible menu only; the popup stays out of it.
  ASSERT_EQ(win.menuBar.size(), 1u);
  EXPECT_EQ(win.menuBar[0].children.at(0).caption, u"&Hide");
}

TEST_F(FormHostTest, ChangesReachTheHostAsTheAspectThatChanged) {
  ui.Show(form);
  const UiHandle status = H(form.lblStatus);
  const int before = fake.controls.at(status).updates;

  form.lblStatus.SetCaption(u"Busy");
  EXPECT_EQ(fake.controls.at(status).updates, before + 1);
  EXPECT_EQ(fake.controls.at(status).lastChanges, UiChange::Caption);
  EXPECT_EQ(State(form.lblStatus).caption, u"Busy");

  form.lblStatus.SetCaption(u"Busy");  // no change, nothing sent
  EXPECT_EQ(fake.controls.at(status).updates, before + 1);

  form.lblStatus.Move(10, 20, 30, 40);
  EXPECT_EQ(fake.controls.at(status).lastChanges, UiChange::Layout);
  EXPECT_EQ(State(form.lblStatus).rect, (platform::UiRect{10, 20, 30, 40}));

  // A skinned button's text follows its label.
  form.cmdGo.Lbl().SetCaption(u"&Stop");
  EXPECT_EQ(State(form.cmdGo).caption, u"&Stop");
  form.cmdGo.SetSkinState(1);
  EXPECT_EQ(State(form.cmdGo).skinState, 1);

  form.lvItems.Item(2).SetSelected(true);
  EXPECT_TRUE(State(form.lvItems).rows[1].selected);
  EXPECT_EQ(fake.controls.at(H(form.lvItems)).lastChanges, UiChange::Items);
  // Scrolling is asked for on its own, and every time it is asked for: the user may
  // have scrolled away from the row in between.
  const auto& scrolled = fake.controls.at(H(form.lvItems)).scrolledTo;
  EXPECT_TRUE(scrolled.empty()) << "a selection scrolled by itself";
  form.lvItems.Item(2).EnsureVisible();
  form.lvItems.EnsureVisible(2);
  EXPECT_EQ(scrolled, (std::vector<int>{2, 2}));
  EXPECT_EQ(fake.controls.at(H(form.lvItems)).lastChanges, UiChange::Scroll);
  EXPECT_THROW(form.lvItems.EnsureVisible(3), std::out_of_range);
  form.lvItems.RemoveRow(2);
  EXPECT_EQ(State(form.lvItems).visibleRow, 0) << "the asked row is gone";

  form.pbDisk.SetValue(250);  // held to the range
  EXPECT_EQ(State(form.pbDisk).value, 100);

  form.mnuHide.SetCaption(u"&Hide it");
  EXPECT_EQ(fake.forms.at(Window()).state.menuBar[0].children[0].caption, u"&Hide it");
  form.SetRegion(kit::RoundRegion{0, 0, 401, 268, 5, 5});
  ASSERT_TRUE(fake.forms.at(Window()).state.region.has_value());
}

TEST_F(FormHostTest, TheWindowLivesWhileTheFormIsLoadedAndGoesWithAFormDestroyedWhileShown) {
  ui.Show(form);
  const UiHandle first = Window();
  form.Hide();
  EXPECT_FALSE(fake.forms.at(first).state.visible);
  EXPECT_TRUE(form.Unload());
  EXPECT_EQ(Window(), 0u);
  EXPECT_TRUE(fake.forms.empty());
  EXPECT_TRUE(fake.controls.empty());

  // Loaded again, it gets a fresh window built from its design.
  ui.Show(form);
  ASSERT_NE(Window(), 0u);
  EXPECT_NE(Window(), first);
  EXPECT_EQ(State(form.lvItems).rows.size(), 2u);
  ui.Forms().Detach(form);
  EXPECT_TRUE(fake.forms.empty());
  form.lblStatus.SetCaption(u"Nobody listens");  // no host any more, no crash

  {
    frmSample shortLived;
    ui.Show(shortLived);
    EXPECT_EQ(fake.timers.size(), 1u);
  }
  EXPECT_EQ(fake.FindForm(u"frmSample"), 0u);
  EXPECT_TRUE(fake.timers.empty());
}

TEST_F(FormHostTest, TheUsersInputReachesTheScreensHandlers) {
  ui.Show(form);
  const UiHandle w = Window();

  // A right button up on the label of the skinned button is its button's event.
  Events().OnMouse(w, H(form.cmdGo.Lbl()), {platform::UiMouse::Up, kit::kRightButton, 0, 5, 5});
  EXPECT_EQ(form.lastButton, kit::kRightButton);
  Events().OnMouse(w, H(form.cmdGo), {platform::UiMouse::Up, kit::kLeftButton, 0, 5, 5});
  EXPECT_EQ(State(form.lblStatus).caption, u"Going");

  // The host changes no state itself: the click toggles the model, which sends it back.
  Events().OnClick(w, H(form.chkAll));
  EXPECT_EQ(form.chkAllClicks, 1);
  EXPECT_EQ(State(form.chkAll).check, 1);

  Events().OnTextChanged(w, H(form.txtName), u"typed");
  EXPECT_EQ(form.lastText, u"typed");

  Events().OnList(w, H(form.lvItems), {platform::UiListWhat::RowClick, 2, false});
  EXPECT_EQ(form.lvItems.SelectedIndex(), 2);
  Events().OnList(w, H(form.lvItems), {platform::UiListWhat::RowCheck, 1, true});
  EXPECT_TRUE(form.lvItems.Item(1).Checked());
  EXPECT_EQ(form.lastChecked, 1);
  Events().OnList(w, H(form.lvItems), {platform::UiListWhat::RowClick, 9, false});  // no such row
  EXPECT_EQ(form.lvItems.SelectedIndex(), 2);
  Events().OnList(w, H(form.lvItems), {platform::UiListWhat::ColumnClick, 2, false});
  EXPECT_EQ(form.lastColumn, 2);

  Events().OnMenu(w, kit::FormHost::MenuId(form, form.mnuHide));
  EXPECT_FALSE(form.lblStatus.Visible());

  Events().OnActivate(w, true);
  EXPECT_EQ(form.activations, 1);

  Events().OnFocus(w, H(form.txtName));
  EXPECT_EQ(form.ActiveControl(), &form.txtName);

  // Keys go through the form, and a key it swallowed is reported as such.
  form.SetKeyPreview(true);
  EXPECT_TRUE(Events().OnKey(w, {platform::UiKey::Down, 'A', 0}));
  EXPECT_FALSE(Events().OnKey(w, {platform::UiKey::Down, 'Q', 0}));
  EXPECT_EQ(form.keysSeen, (std::vector<int>{'A', 'Q'}));

  // Which input a hidden or disabled control drops is FormModelTest's; a handle the
  // window does not know is the host's own case.
  const int button = form.lastButton;
  Events().OnMouse(w, 9999, {platform::UiMouse::Up, kit::kRightButton, 0, 0, 0});
  EXPECT_EQ(form.lastButton, button);

  // The window's own events: minimised, moved by the user, dragged by a strip, closed.
  Events().OnMinimized(w, true);
  EXPECT_EQ(form.WindowState(), kit::kWindowMinimized);
  Events().OnMinimized(w, false);
  EXPECT_EQ(form.WindowState(), kit::kWindowNormal);
  Events().OnMoved(w, {3000, 1500, 6000, 4000});
  EXPECT_EQ(form.GetLayout(), (kit::Layout{3000, 1500, 6000, 4000}));
  form.lblStatus.SetVisible(true);
  Events().OnMouse(w, H(form.lblStatus), {platform::UiMouse::Down, kit::kLeftButton, 0, 1, 1});
  EXPECT_EQ(fake.dragRequests, std::vector<UiHandle>{w});
  Events().OnCloseRequest(w);
  EXPECT_EQ(form.lastMode, kit::UnloadMode::ControlMenu);
  EXPECT_FALSE(form.IsLoaded());
  EXPECT_TRUE(fake.forms.empty());
}

TEST_F(FormHostTest, ShowNormalRestoresAndActivatesAWindowThatIsVisibleAlready) {
  ui.Show(form);
  fake.Minimize(Window());
  fake.activeWindow = 0;  // another program has the keyboard
  ui.Show(form);
  EXPECT_EQ(fake.activeWindow, 0u) << "a plain show of a visible window changes nothing";
  ui.ShowNormal(form);
  EXPECT_EQ(fake.activeWindow, Window());
  EXPECT_FALSE(fake.forms.at(Window()).minimized);
  EXPECT_EQ(form.WindowState(), kit::kWindowNormal);
  // Hidden, it is shown and restored the same way.
  form.Hide();
  ui.ShowNormal(form);
  EXPECT_TRUE(fake.forms.at(Window()).state.visible);
}

TEST_F(FormHostTest, FormTimersRunOnHostTimersWhileTheFormIsLoaded) {
  ui.Show(form);
  ASSERT_EQ(fake.timers.size(), 1u);
  std::uintptr_t id = fake.timers.begin()->first;
  EXPECT_EQ(fake.timers.begin()->second.intervalMs, 60000u);
  fake.FireTimer(id);
  EXPECT_EQ(form.ticks, 1);

  form.Timer1.SetInterval(950);
  ASSERT_EQ(fake.timers.size(), 1u);
  EXPECT_EQ(fake.timers.begin()->second.intervalMs, 950u);
  EXPECT_EQ(fake.timers.count(id), 0u);

  form.Timer1.SetEnabled(false);
  EXPECT_TRUE(fake.timers.empty());
  form.Timer1.SetEnabled(true);
  EXPECT_EQ(fake.timers.size(), 1u);
  form.Unload();
  EXPECT_TRUE(fake.timers.empty());
}

TEST_F(FormHostTest, APopupMenuShowsTheHiddenMenusItemsAndRunsTheChoice) {
  ui.Show(form);
  fake.popupChoices.push_back(kit::FormHost::MenuId(form, form.mnuPopupGo));
  ui.PopupMenu(form, form.mnuPopup);
  EXPECT_EQ(fake.popups.at(0).at(0).caption, u"&Go");
  EXPECT_EQ(form.lblStatus.Caption(), u"Chosen");

  // Nothing chosen: nothing happens. A disabled item is not run even if reported.
  form.lblStatus.SetCaption(u"Idle");
  ui.PopupMenu(form, form.mnuPopup);
  form.mnuPopupGo.SetEnabled(false);
  fake.popupChoices.push_back(kit::FormHost::MenuId(form, form.mnuPopupGo));
  ui.PopupMenu(form, form.mnuPopup);
  EXPECT_FALSE(fake.popups.back()[0].enabled);
  EXPECT_EQ(form.lblStatus.Caption(), u"Idle");
}

constexpr char16_t kTitle[] = u"Corvane for Windows";

// The box's rules are proved in MesgBoxTest; here, that the host's input answers it
// modally, that its window goes with the answer, and that it lays out at the host's scale.
TEST(MesgBoxOnHost, TheHostsInputAnswersTheBoxWhichGoesAndKeepsItsPixelsAtAnyScale) {
  platform::FakeUiHost fake;
  kit::HostedUi ui{fake};
  fake.onModal = [&](UiHandle w) {
    fake.Events(w)->OnMouse(w, fake.FindControl(w, u"MsgClose"),
                            {platform::UiMouse::Up, kit::kLeftButton, 0, 3, 3});
  };
  EXPECT_EQ(ui.MessageBox(u"Question", kit::kIconQuestion, kit::kButtonsYesNo, kTitle),
            kit::kResultClosed);
  EXPECT_EQ(fake.FindForm(u"MesgBox"), 0u);

  auto buttonPixels = [&](int twipsPerPixel) {
    platform::FakeUiHost host;
    host.twipsPerPixel = twipsPerPixel;
    kit::HostedUi hostUi{host};
    double pixels = 0;
    host.onModal = [&](UiHandle w) {
      pixels = host.Control(w, u"cmdButton(0)")->rect.width / twipsPerPixel;
    };
    hostUi.MessageBox(u"Question", kit::kIconQuestion, kit::kButtonsOk, kTitle);
    return pixels;
  };
  // At 120 dots per inch a pixel is 12 twips: the scaled design is as many pixels wide.
  EXPECT_GT(buttonPixels(15), 0);
  EXPECT_DOUBLE_EQ(buttonPixels(12), buttonPixels(15));
}

// What the host's failure sink was told, as "control: description".
void CollectFailures(kit::HostedUi& ui, std::vector<Text>& seen) {
  ui.Forms().SetFailureSink([&seen](kit::Control& c, const base::ErrorInfo& e) {
    seen.push_back(c.Name() + u": " + e.description);
  });
}

// A host that fails as one out of memory would: it throws while it draws one change,
// has no timer to give once, and cannot make one control.
class FaultyHost : public platform::FakeUiHost {
 public:
  void UpdateControl(UiHandle control, const platform::UiControl& state,
                     UiChange changes) override {
    if (std::exchange(throwNext, false)) throw std::runtime_error("no room for the caption");
    FakeUiHost::UpdateControl(control, state, changes);
  }
  std::uintptr_t StartTimer(std::uint32_t intervalMs, std::function<void()> onTick) override {
    if (std::exchange(refuseTimer, false)) return 0;
    return FakeUiHost::StartTimer(intervalMs, std::move(onTick));
  }
  platform::UiHandle CreateControl(platform::UiHandle window, platform::UiHandle container,
                                   const platform::UiControl& control) override {
    if (control.name == failing) throw base::Failure(7, "Out of memory");
    return FakeUiHost::CreateControl(window, container, control);
  }
  bool throwNext = false;
  bool refuseTimer = false;
  Text failing;
};

TEST(FormHostFailures, WhatEscapesAHandlerOrTheHostReachesTheHostsSinkAndNotTheCaller) {
  FaultyHost host;
  frmSample form;
  kit::HostedUi ui{host};
  std::vector<Text> seen;
  CollectFailures(ui, seen);
  ui.Show(form);
  const UiHandle w = ui.Forms().WindowOf(form);

  form.cmdGo.on.MouseUp = [&](const MouseArgs&) { form.lvItems.Item(9); };
  host.Events(w)->OnMouse(w, ui.Forms().HandleOf(form.cmdGo),
                          {platform::UiMouse::Up, kit::kLeftButton, 0, 5, 5});
  host.throwNext = true;
  EXPECT_NO_THROW(form.lblStatus.SetCaption(u"Changed"));
  ASSERT_EQ(seen.size(), 2u);
  EXPECT_EQ(seen[0].rfind(u"cmdGo: ", 0), 0u);
  EXPECT_EQ(seen[1], u"lblStatus: no room for the caption");

  // A form no longer followed reports nothing to this host.
  ui.Forms().Detach(form);
  form.cmdGo.on.Click = [&] { form.lvItems.Item(9); };
  EXPECT_NO_THROW(form.cmdGo.RaiseClick());
  EXPECT_EQ(seen.size(), 2u);
}

TEST(FormHostFailures, ARefusedTimerIsAskedForAgainAndAControlNotMadeLeavesTheRestRunning) {
  for (const bool timerRefused : {true, false}) {
    SCOPED_TRACE(timerRefused ? "timer refused" : "control not made");
    FaultyHost host;
    host.refuseTimer = timerRefused;
    host.failing = timerRefused ? u"" : u"lblStatus";
    frmSample form;
    kit::HostedUi ui{host};
    std::vector<Text> seen;
    CollectFailures(ui, seen);
    ui.Show(form);
    if (timerRefused) form.lblStatus.SetCaption(u"Anything");  // the form's next change
    EXPECT_EQ(seen, std::vector<Text>{timerRefused ? u"Timer1: The timer could not be started"
                                                   : u"lblStatus: Out of memory"});
    ASSERT_EQ(host.timers.size(), 1u);
    host.FireTimer(host.timers.begin()->first);
    EXPECT_EQ(form.ticks, 1);
    EXPECT_EQ(seen.size(), 1u);
  }
}

using FormHostLongLists = FormHostTest;

TEST_F(FormHostLongLists, AListOfManyRowsLetsTheHostAnswerWhileItIsDescribedAndHandedOver) {
  ui.Show(form);
  const int before = fake.answerCalls;
  const std::size_t had = static_cast<std::size_t>(form.lvItems.Count());
  {
    kit::ListView::Batch batch(form.lvItems);
    for (int i = 1; i <= 10000; ++i) form.lvItems.AddRow(u"row " + base::FromNumber(i));
  }
  // Every 4,096 rows, and before and after the hand-over.
  EXPECT_GE(fake.answerCalls - before, 4);
  const auto& shown = State(form.lvItems).rows;
  ASSERT_EQ(shown.size(), had + 10000);
  EXPECT_EQ(shown.back().text, u"row 10000");

  // A label's change is no occasion to answer.
  const int atList = fake.answerCalls;
  form.lblStatus.SetCaption(u"Done");
  EXPECT_EQ(fake.answerCalls, atList);
}

// Rows of a screen's own model, which the list asks for cell by cell.
struct Squares : kit::ListRows {
  int n = 0;
  int RowCount() const override { return n; }
  Text RowCell(int row1, int sub) const override {
    if (row1 == 13 && sub == 1) throw std::runtime_error("no square today");
    const Text number = base::FromNumber(row1);
    return sub == 0 ? number : number + u"^2=" + base::FromNumber(1LL * row1 * row1);
  }
};

class frmOwned : public kit::Form {
 public:
  explicit frmOwned(const kit::ListRows& rows) : Form(u"frmOwned", {0, 0, 4000, 3000}, u"Owned") {
    lv.SetRowOwner(&rows);
    lv.on.RowClick = [this](int row1) { clicked.push_back(row1); };
  }
  kit::ListView lv{*this, u"lv", {0, 0, 3000, 2000}};
  std::vector<int> clicked;

 protected:
  void Form_Load() override {
    lv.AddColumn(u"Number", 1000);
    lv.AddColumn(u"Square", 2000);
  }
};

TEST(FormHostOwnerRows, TheHostAsksTheOwnerForCellsAndKeepsNoRowsOfItsOwn) {
  platform::FakeUiHost host;
  Squares rows;
  rows.n = 200000;
  auto form = std::make_unique<frmOwned>(rows);
  kit::HostedUi ui{host};
  ui.Show(*form);
  const UiHandle handle = ui.Forms().HandleOf(form->lv);
  const auto& shown = host.controls.at(handle);
  EXPECT_TRUE(shown.state.rows.empty());
  EXPECT_EQ(shown.RowCount(), 200000);
  EXPECT_EQ(shown.Cell(199999, 1), u"200000^2=40000000000");
  EXPECT_EQ(shown.Cell(200000, 0), u"") << "beyond the rows";
  EXPECT_EQ(shown.Cell(12, 1), u"") << "a cell the owner cannot make is drawn empty";
  EXPECT_THROW(form->lv.CellText(200001, 0), std::out_of_range);

  // Selection by the program and by the user, and one piece of news for a batch.
  const int updates = shown.updates;
  {
    kit::ListView::Batch batch(form->lv);
    rows.n = 5;
    form->lv.RowsChanged();
    form->lv.SelectRow(2);
  }
  EXPECT_EQ(shown.updates, updates + 1);
  EXPECT_EQ(shown.RowCount(), 5);
  EXPECT_EQ(shown.SelectedRow(), 2);
  host.Events(ui.Forms().WindowOf(*form))
      ->OnList(ui.Forms().WindowOf(*form), handle, {platform::UiListWhat::RowClick, 4, false});
  EXPECT_EQ(form->clicked, std::vector<int>{4});
  EXPECT_EQ(shown.SelectedRow(), 4);
  EXPECT_THROW(form->lv.SelectRow(6), std::out_of_range);
  // Fewer rows than the selected one: no selection, as when rows are removed.
  rows.n = 3;
  form->lv.RowsChanged();
  EXPECT_EQ(form->lv.SelectedIndex(), 0);
  EXPECT_EQ(shown.SelectedRow(), 0);

  // Such a list has no items to hand out or add.
  EXPECT_EQ(form->lv.SelectedItem(), nullptr);
  EXPECT_THROW(form->lv.Item(1), std::out_of_range);
  EXPECT_THROW(form->lv.AddRow(u"extra"), std::logic_error);

  // A host that keeps the source past the list's life reads nothing from the gone owner.
  const auto source = shown.state.rowSource;
  form.reset();
  ASSERT_NE(source, nullptr);
  EXPECT_EQ(source->Cell(0, 0), u"");
}

}  // namespace
