// The Session Log screen on a fake disk and a windowless Ui: the pages, the buttons'
// states, view, delete, the check marks and the keys.
#include <gtest/gtest.h>

#include "kit/MesgBox.h"
#include "kit/ScriptedUi.h"
#include "kit/WindowLook.h"
#include "sessions/frmSessionLog.h"
#include "testkit/FrameFixture.h"
#include "unit/sessions/MadeSessions.h"

namespace sessions {
namespace {

using testkit::U8;

const Text kFolder = u"C:\\QV\\QVCOMMON\\Session";

using testsessions::MadeSession;

class SessionLogScreenTest : public ::testing::Test, protected testkit::FrameFixture {
 protected:
  SessionLogScreenTest() { fake.fs.AddFolders(kFolder); }

  void Files(int count) {
    for (int n = 1; n <= count; ++n) fake.fs.PutFile(kFolder + u"\\" + MadeSession(n), "log");
  }
  void Open() {
    form = std::make_unique<frmSessionLog>(app, ui);
    ui.Show(*form);
  }
  Text Range() { return form->lblDispItems.Caption(); }
  // "next_reg+ back_dis-": the pager's pictures and whether each is enabled.
  std::string Pager() {
    auto say = [](const kit::Picture& p) {
      return base::ToUtf8(p.PictureKey()) + (p.Enabled() ? "+" : "-");
    };
    return say(form->lblNext) + " " + say(form->lblBack);
  }
  Text StartOfRow(int i) { return form->LstSessionLogView.Item(i).SubItem(1); }
  void Key(bool up, int code, int shift) {
    kit::KeyArgs args{code, shift};
    if (up)
      form->DeliverKeyUp(args);
    else
      form->DeliverKeyDown(args);
  }
  void Alt(char16_t letter) { Key(true, kit::Alt(letter).code, kit::kAltMask); }
  bool TraceHas(const Text& text) {
    return Units(Common(u"SerTraceFile.txt")).find(text) != Text::npos;
  }
  void Click(kit::Control& c) { c.RaiseMouseUp({kit::kLeftButton}); }

  kit::ScriptedUi ui;
  std::unique_ptr<frmSessionLog> form;
};

TEST_F(SessionLogScreenTest, NoFiles) {
  Open();
  EXPECT_EQ(form->cmdView.SkinState(), kit::kSkinDisabled);
  EXPECT_EQ(form->cmdDelete.SkinState(), kit::kSkinDisabled);
  // After a plain load the buttons still answer, with a message.
  EXPECT_TRUE(form->cmdView.Enabled());
  ui.Queue(kit::ScriptedUi::Answer::Ok());
  Click(form->cmdView);
  ASSERT_EQ(ui.Questions().size(), 1u);
  EXPECT_EQ(ui.Questions()[0].text, kNothingToView);
  // Delete on an empty list counts as a deletion: the page is loaded again, and now
  // the buttons and Select All are off.
  Click(form->cmdDelete);
  EXPECT_EQ(ui.Questions().size(), 1u);
  EXPECT_FALSE(form->cmdView.Enabled());
  EXPECT_FALSE(form->cmdDelete.Lbl().Enabled());
  EXPECT_FALSE(form->chkSelectAll.Enabled());
}

TEST_F(SessionLogScreenTest, PagesOf120NewestFirst) {
  Files(120);
  Open();
  EXPECT_EQ(Range(), u"1 to 50 of 120");
  EXPECT_EQ(Pager(), "next_reg+ back_dis-");
  EXPECT_EQ(form->cmdView.SkinState(), kit::kSkinNormal);
  ASSERT_EQ(form->LstSessionLogView.Count(), 50);
  EXPECT_EQ(StartOfRow(1), u" 12-31-2026  10-00-00");  // session 1
  Click(form->lblNext);
  EXPECT_EQ(StartOfRow(1), base::Mid(MadeSession(51), 7, 21));  // a Backup
  Click(form->lblNext);
  EXPECT_EQ(Pager(), "next_dis- back_reg+");
  EXPECT_EQ(form->LstSessionLogView.Count(), 20);
  Click(form->lblBack);
  EXPECT_EQ(Range(), u"51 to 100 of 120");
}

TEST_F(SessionLogScreenTest, DeleteWithNothingCheckedTellsSoAndTheStaysPage) {
  Files(60);
  Open();
  Click(form->lblNext);
  ui.Queue(kit::ScriptedUi::Answer::Ok());
  Alt(u'd');
  ASSERT_EQ(ui.Questions().size(), 1u);
  EXPECT_EQ(ui.Questions()[0].text, kSelectToDelete);
  EXPECT_EQ(Range(), u"51 to 60 of 60");
  EXPECT_TRUE(
      TraceHas(u"Enter cmdDelete_Click() of frmSessionLog form\r\n"
               u"Enter cmdDelete_Click()of frmSessionLog form\r\n"));
}

TEST_F(SessionLogScreenTest, DeletingFromPageThreeGoesBackToPageOne) {
  Files(120);
  Open();
  Click(form->lblNext);
  Click(form->lblNext);
  kit::ListView& list = form->LstSessionLogView;
  ASSERT_EQ(list.Count(), 20);
  auto fileOf = [&](int row) {
    return kFolder + u"\\" +
           SessionFileNameOf(list.Item(row).SubItem(2), list.Item(row).SubItem(1), NameFor::Delete);
  };
  const Text first = fileOf(1), third = fileOf(3);
  ASSERT_TRUE(fake.fs.FileExists(first));
  list.UserCheckRow(1, true);
  list.UserCheckRow(3, true);
  Click(form->cmdDelete);  // no question
  EXPECT_TRUE(ui.Questions().empty());
  EXPECT_EQ(Range(), u"1 to 50 of 118");
  EXPECT_FALSE(fake.fs.FileExists(first)) << U8(first);
  EXPECT_FALSE(fake.fs.FileExists(third)) << U8(third);
  EXPECT_TRUE(form->cmdView.Enabled());
  EXPECT_TRUE(form->chkSelectAll.Enabled());
}

TEST_F(SessionLogScreenTest, SelectAllAndTheCheckMarks) {
  Files(3);
  Open();
  kit::ListView& list = form->LstSessionLogView;
  form->chkSelectAll.UserClick();
  for (int i = 1; i <= 3; ++i) EXPECT_TRUE(list.Item(i).Checked());
  // The user takes one off: the box goes off without taking the others' marks.
  list.UserCheckRow(2, false);
  EXPECT_EQ(form->chkSelectAll.Value(), 0);
  EXPECT_TRUE(list.Item(1).Checked());
  EXPECT_TRUE(list.Item(3).Checked());
  EXPECT_TRUE(form->bSelectAllActive);
  // Marking it again marks the box and selects the row.
  list.UserCheckRow(2, true);
  EXPECT_EQ(form->chkSelectAll.Value(), 1);
  EXPECT_EQ(list.SelectedIndex(), 2);
  form->chkSelectAll.UserClick();
  for (int i = 1; i <= 3; ++i) EXPECT_FALSE(list.Item(i).Checked());
  // A row taken off while the box is already off leaves the flag down: the next click
  // on the box only raises it again, as the design has it.
  list.UserCheckRow(1, true);
  list.UserCheckRow(1, false);
  EXPECT_FALSE(form->bSelectAllActive);
  form->chkSelectAll.UserClick();
  EXPECT_TRUE(form->bSelectAllActive);
  EXPECT_FALSE(list.Item(2).Checked());
}

TEST_F(SessionLogScreenTest, ViewByButtonDoubleClickAndAlt) {
  Files(2);
  Open();
  ui.Queue(kit::ScriptedUi::Answer::Ok());
  Click(form->cmdView);
  ASSERT_EQ(ui.Questions().size(), 1u);
  EXPECT_EQ(ui.Questions()[0].text, kSelectToView);

  form->LstSessionLogView.UserClickRow(2);
  form->LstSessionLogView.RaiseDblClick();
  ASSERT_EQ(fake.shell.executed.size(), 1u);
  EXPECT_EQ(fake.shell.executed[0].file, kFolder + u"\\" + MadeSession(2));
  EXPECT_EQ(form->LstSessionLogView.SelectedIndex(), 2);
  Alt(u'V');
  EXPECT_EQ(fake.shell.executed.size(), 2u);
}

TEST_F(SessionLogScreenTest, AltCAndEnterClose) {
  Open();
  Alt(u'c');
  EXPECT_FALSE(form->IsLoaded());
  Open();
  Key(false, kit::kKeyReturn, 0);
  EXPECT_FALSE(form->IsLoaded());
}

TEST_F(SessionLogScreenTest, ShowSessionLogKeepsOneScreenShownNotModally) {
  Files(1);
  ShowSessionLog(app, ui);
  kit::Form* shown = ui.KeptScreen(u"frmSessionLog");
  ASSERT_NE(shown, nullptr);
  EXPECT_TRUE(shown->IsLoaded());
  ASSERT_EQ(ui.ShownForms().size(), 1u);
  EXPECT_FALSE(ui.ShownForms()[0].modal);
  ShowSessionLog(app, ui);
  EXPECT_EQ(ui.KeptScreen(u"frmSessionLog"), shown);
  EXPECT_EQ(ui.ShownForms().size(), 2u);
}

}  // namespace
}  // namespace sessions
