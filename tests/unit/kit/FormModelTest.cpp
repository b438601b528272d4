// The form model through a small screen of its own: handlers change controls, the
// list sorts, a close can be refused, and a renderer can follow every change.
#include <gtest/gtest.h>

#include "SampleForm.h"
#include "kit/ScriptedUi.h"

namespace {

using base::Text;
using kit::Layout;
using kittest::frmSample;

// The list's first column, top to bottom.
std::vector<Text> Texts(const kit::ListView& lv) {
  std::vector<Text> out;
  for (int i = 1; i <= lv.Count(); ++i) out.push_back(lv.Item(i).GetText());
  return out;
}

struct FormModel : ::testing::Test {
  kit::ScriptedUi ui;
  frmSample f;
};

TEST_F(FormModel, ClickHandlerChangesLabelOnlyForAcceptedInput) {
  EXPECT_EQ(f.Find(u"LBL_CMDGO"), &f.cmdGo.Lbl()) << "found by name without regard to case";
  EXPECT_EQ(f.Find(u"nothing"), nullptr);
  f.cmdGo.Lbl().RaiseMouseUp({kit::kLeftButton});
  EXPECT_EQ(f.lblStatus.Caption(), u"Idle") << "an unloaded form takes no input";

  ui.Show(f);
  f.cmdGo.RaiseMouseUp({kit::kRightButton});
  EXPECT_EQ(f.lblStatus.Caption(), u"Idle");
  f.picFrame.SetEnabled(false);
  f.cmdGo.Lbl().RaiseMouseUp({kit::kLeftButton});
  EXPECT_EQ(f.lblStatus.Caption(), u"Idle") << "a disabled container blocks its controls";
  f.picFrame.SetEnabled(true);
  f.picFrame.SetVisible(false);
  f.cmdGo.Lbl().RaiseMouseUp({kit::kLeftButton});
  EXPECT_EQ(f.lblStatus.Caption(), u"Idle") << "so does a hidden one";
  f.picFrame.SetVisible(true);
  f.cmdGo.Lbl().RaiseMouseUp({kit::kLeftButton});
  EXPECT_EQ(f.lblStatus.Caption(), u"Going");
}

TEST_F(FormModel, ACloseMayBeRefusedAndALoadedAgainFormStartsFromItsDesign) {
  ui.Show(f);
  f.lblStatus.SetCaption(u"Changed");
  f.lblStatus.SetForeColor(kit::kWhite);
  f.cmdGo.Move(1, 2, 3, 4);
  f.lvItems.AddRow(u"row");
  f.refuseClose = true;
  EXPECT_FALSE(f.Unload(kit::UnloadMode::ControlMenu));
  EXPECT_TRUE(f.IsLoaded());
  EXPECT_EQ(f.unloads, 0);
  EXPECT_EQ(f.lastMode, kit::UnloadMode::ControlMenu);
  f.refuseClose = false;
  EXPECT_TRUE(f.Unload());
  EXPECT_EQ(f.unloads, 1);

  ui.Show(f);
  EXPECT_EQ(f.loads, 2);
  EXPECT_EQ(f.lblStatus.Caption(), u"Idle");
  EXPECT_EQ(f.lblStatus.ForeColor(), 0x00112233u);
  EXPECT_EQ(f.cmdGo.GetLayout(), (Layout{100, 100, 1200, 345}));
  EXPECT_EQ(f.lvItems.Count(), 0);
  // Columns added by Form_Load are not design: they come once per load.
  EXPECT_EQ(f.lvItems.ColumnCount(), 2);
}

TEST_F(FormModel, CheckBoxAndOptionsRaiseClickOnProgramChangesAsThePlatformDoes) {
  ui.Show(f);
  f.chkAll.SetValue(1);
  f.chkAll.SetValue(1);
  EXPECT_EQ(f.chkAllClicks, 1);
  f.chkAll.UserClick();
  EXPECT_EQ(f.chkAll.Value(), 0);
  EXPECT_EQ(f.chkAllClicks, 2);
  EXPECT_THROW(f.chkAll.SetValue(7), std::invalid_argument);
  f.chkAll.SetEnabled(false);
  f.chkAll.UserClick();
  EXPECT_EQ(f.chkAll.Value(), 0) << "a disabled box takes no click";

  f.optA.SetValue(true);
  f.optInFrame.SetValue(true);
  f.optB.UserClick();
  EXPECT_FALSE(f.optA.Value()) << "options of one container are one group";
  EXPECT_TRUE(f.optB.Value());
  EXPECT_TRUE(f.optInFrame.Value()) << "another container is another group";
}

TEST_F(FormModel, KeyPreviewDecidesWhoSeesAKeyFirst) {
  ui.Show(f);
  // The form's handler records a key as it is, the text box's as its negative.
  f.txtName.on.KeyDown = [this](kit::KeyArgs& a) { f.keysSeen.push_back(-a.keyCode); };
  auto deliver = [this](int key) {
    kit::KeyArgs k{key, 0};
    f.DeliverKeyDown(k);
  };
  deliver('A');  // no focus: the form has the key
  f.txtName.SetFocus();
  deliver('A');
  f.SetKeyPreview(true);
  deliver('A');
  deliver('Q');  // swallowed by the form: the box never sees it
  EXPECT_EQ(f.keysSeen, (std::vector<int>{'A', -'A', 'A', -'A', 'Q'}));
}

TEST_F(FormModel, ListViewSortsByKeyAndOrderWithoutRegardToCase) {
  ui.Show(f);
  auto& lv = f.lvItems;
  lv.AddRow(u"beta").SetSubItem(1, u"2");
  lv.AddRow(u"Alpha").SetSubItem(1, u"3");
  lv.AddRow(u"gamma").SetSubItem(1, u"1");
  lv.AddRow(u"alpha", u"k4");  // no sub-item: sorts as ""
  EXPECT_EQ(lv.Item(1).GetText(), u"beta") << "unsorted rows stand as added";

  // Descending by the text; equal texts keep their former order.
  lv.UserClickColumn(1);
  EXPECT_EQ(Texts(lv), (std::vector<Text>{u"gamma", u"beta", u"Alpha", u"alpha"}));
  lv.UserClickColumn(2);  // ascending by sub-item 1
  EXPECT_EQ(Texts(lv), (std::vector<Text>{u"alpha", u"gamma", u"beta", u"Alpha"}));

  // A sorted list places new rows and changed keys at once.
  lv.AddRow(u"delta").SetSubItem(1, u"0");
  EXPECT_EQ(lv.Item(2).GetText(), u"delta");
  lv.FindKey(u"k4")->SetSubItem(1, u"9");
  EXPECT_EQ(Texts(lv), (std::vector<Text>{u"delta", u"gamma", u"beta", u"Alpha", u"alpha"}));
}

TEST_F(FormModel, AListViewBatchTellsOnceWhenTheOutermostEndsAndSortsThen) {
  auto& lv = f.lvItems;
  lv.SetSorted(true);
  int told = 0;
  f.SetChangeListener([&](kit::Control& c, kit::Aspect a) {
    if (&c == &lv && kit::Has(a, kit::Aspect::Items)) ++told;
  });
  {
    kit::ListView::Batch outer(lv);
    {
      kit::ListView::Batch inner(lv);
      for (const char16_t* t : {u"c", u"a", u"b"}) lv.AddRow(t).SetSubItem(2, t);
    }
    lv.Item(1).SetSelected(true);
    EXPECT_EQ(told, 0) << "told inside a batch";
  }
  EXPECT_EQ(told, 1);
  EXPECT_EQ(Texts(lv), (std::vector<Text>{u"a", u"b", u"c"})) << "sorted when the batch ended";
  EXPECT_EQ(lv.SelectedItem()->GetText(), u"c");
  { kit::ListView::Batch nothing(lv); }
  EXPECT_EQ(told, 1) << "a batch that changed nothing tells nothing";
  lv.AddRow(u"d");
  EXPECT_EQ(told, 2) << "outside a batch every change is told";
}

TEST_F(FormModel, ListViewSelectionChecksAndBadIndexes) {
  auto& lv = f.lvItems;
  lv.AddRow(u"a", u"A");
  lv.AddRow(u"b");
  EXPECT_EQ(lv.SelectedIndex(), 0);
  lv.Item(1).SetSelected(true);
  lv.Item(2).SetSelected(true);
  EXPECT_FALSE(lv.Item(1).Selected());
  EXPECT_EQ(lv.SelectedIndex(), 2);
  lv.Item(1).SetChecked(true);
  EXPECT_TRUE(lv.Item(1).Checked());
  EXPECT_THROW(lv.Item(3), std::out_of_range);
  EXPECT_THROW(lv.Item(0), std::out_of_range);
  EXPECT_THROW(lv.AddRow(u"dup", u"A"), std::invalid_argument);
  EXPECT_EQ(lv.Item(2).SubItem(5), u"");
  lv.RemoveRow(1);
  EXPECT_EQ(lv.Count(), 1);
  EXPECT_EQ(lv.SelectedIndex(), 1);
}

TEST_F(FormModel, TimersRunOnlyOnALoadedFormAndMenusHonourEnabledParents) {
  f.Timer1.Fire();
  EXPECT_EQ(f.ticks, 0);
  ui.Show(f);
  f.Timer1.Fire();
  f.Timer1.SetEnabled(false);
  f.Timer1.Fire();
  EXPECT_EQ(f.ticks, 1);

  f.mnuMain.SetVisible(false);  // a popup menu hidden on the bar still works
  f.mnuMain.SetEnabled(false);
  f.mnuHide.Choose();
  EXPECT_TRUE(f.lblStatus.Visible());
  f.mnuMain.SetEnabled(true);
  f.mnuHide.Choose();
  EXPECT_FALSE(f.lblStatus.Visible());
}

// The windowless Ui every screen test runs on: a modal show runs the screen's script
// and closes what the script left open.
TEST_F(FormModel, ScriptedUiRunsModalScriptsAndClosesWhatTheyLeaveOpen) {
  ui.OnShow(u"frmSample", [](kit::Form& form) {
    static_cast<frmSample&>(form).cmdGo.RaiseMouseUp({kit::kLeftButton});
  });
  ui.ShowModal(f);
  EXPECT_EQ(f.lblStatus.Caption(), u"Going") << "the script ran on the shown form";
  EXPECT_FALSE(f.IsLoaded());
  EXPECT_TRUE(ui.ShownForms().at(0).modal);
}

}  // namespace
