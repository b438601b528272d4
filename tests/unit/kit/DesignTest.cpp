// What a Design chain binds beyond presses and keys: skinned buttons that light up in
// a screen's own skins, picture buttons with a face per state, a tip taken from
// another form, tips that go with their form, and the refusal of a second binding.
#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

#include "kit/Controls.h"
#include "kit/Design.h"
#include "kit/Form.h"
#include "kit/ScriptedUi.h"
#include "kit/ToolTips.h"
#include "kit/WindowLook.h"

namespace {

using kit::MouseArgs;

// The tips of this form and of the notice whose Close tip it borrows.
constexpr kit::TipText kLitTips[] = {
    {u"frmLit.Pic_Edit", u"Edit this job"},
    {u"bkupjobnotify.cancel", u"<br>Exit this screen<br>"},
};

class frmLit : public kit::Form {
 public:
  explicit frmLit(kit::Ui& ui) : Form(u"frmLit", {0, 0, 6000, 4000}, u"Lit") {
    SetTipTexts(kLitTips);
    kit::Design(*this, ui)
        .Press(cancel, &frmLit::cancel_Click)
        .Press(Pic_Edit, &frmLit::Pic_Edit_Click)
        .Tips({&Pic_Edit})
        .TipsOf(u"bkupjobnotify", {&cancel})
        .Hover({&cancel}, u"wide_enb", u"wide_ovr")
        .Hover({&cmdPlain})
        .Faces(faces);
  }
  void cancel_Click() { ++widePresses; }
  void Pic_Edit_Click() { ++editPresses; }
  int widePresses = 0;
  int editPresses = 0;

  kit::PictureButton cancel{*this, u"cancel", {120, 120, 2000, 345}, u"&Close"};
  kit::PictureButton cmdPlain{*this, u"cmdPlain", {2400, 120, 1200, 345}, u"&Plain"};
  kit::Picture Pic_Edit{*this, u"Pic_Edit", {120, 900, 360, 360}};
  kit::Picture Pic_Del{*this, u"Pic_Del", {600, 900, 360, 360}};
  kit::PictureFaces faces{{{&Pic_Edit, u"edit"}, {&Pic_Del, u"del"}},
                          {u"_gen", u"_ove", u"_dwn", u"_dis"}};
};

struct DesignTest : ::testing::Test {
  void SetUp() override { ui.Show(form); }
  static void Move(kit::Control& c) { c.RaiseMouseMove({kit::kLeftButton}); }

  kit::ScriptedUi ui;
  frmLit form{ui};
};

TEST_F(DesignTest, SkinnedButtonsLightInTheirOwnSkinsAsOneGroup) {
  Move(form.cancel);
  EXPECT_EQ(form.cancel.PictureKey(), u"wide_ovr");
  // Over the other button: the wide one goes back to its own normal face, the other
  // takes the kit's hover face (its label counts as the button).
  Move(form.cmdPlain.Lbl());
  EXPECT_EQ(form.cancel.PictureKey(), u"wide_enb");
  EXPECT_EQ(form.cmdPlain.PictureKey(), kit::StandardSkinKey(kit::kSkinHover));
  Move(form);
  EXPECT_EQ(form.cmdPlain.SkinState(), kit::kSkinNormal);
  // A disabled button keeps its disabled skin under the pointer.
  kit::ApplySkin(form.cancel, kit::kSkinDisabled);
  form.cancel.SetEnabled(false);
  Move(form.cmdPlain);
  EXPECT_EQ(form.cancel.SkinState(), kit::kSkinDisabled);
}

TEST_F(DesignTest, PictureFacesFollowThePointerTheButtonAndTheFocus) {
  form.Pic_Edit.RaiseMouseDown({kit::kLeftButton});
  EXPECT_EQ(form.Pic_Edit.PictureKey(), u"edit_dwn");
  form.Pic_Edit.RaiseMouseDown({kit::kRightButton});
  EXPECT_EQ(form.Pic_Edit.PictureKey(), u"edit_dwn");
  Move(form.Pic_Del);
  EXPECT_EQ(form.Pic_Del.PictureKey(), u"del_ove");
  EXPECT_EQ(form.Pic_Edit.PictureKey(), u"edit_gen");
  form.Pic_Edit.RaiseGotFocus();
  EXPECT_EQ(form.Pic_Edit.PictureKey(), u"edit_ove");
  form.Pic_Edit.RaiseLostFocus();
  EXPECT_EQ(form.Pic_Edit.PictureKey(), u"edit_gen");
  // A disabled picture shows its disabled face whatever the pointer does.
  form.Pic_Edit.SetEnabled(false);
  Move(form.Pic_Del);
  EXPECT_EQ(form.Pic_Edit.PictureKey(), u"edit_dis");
  // A picture under the pointer leaves a lit skinned button as it is; a skinned
  // button or the form under it puts the pictures back.
  Move(form.cmdPlain);
  Move(form.Pic_Del);
  EXPECT_EQ(form.cmdPlain.SkinState(), kit::kSkinHover);
  Move(form.cmdPlain);
  EXPECT_EQ(form.Pic_Del.PictureKey(), u"del_gen");
  Move(form.Pic_Del);
  Move(form);
  EXPECT_EQ(form.Pic_Del.PictureKey(), u"del_gen");
  EXPECT_EQ(form.cmdPlain.SkinState(), kit::kSkinNormal);
}

TEST_F(DesignTest, ATipKeyOfAnotherFormAndTipsThatGoWithTheirForm) {
  form.cancel.Lbl().RaiseMouseUp({kit::kRightButton});
  ASSERT_NE(ui.Tips().Balloon(), nullptr);
  EXPECT_EQ(ui.Tips().Balloon()->TipText(), kit::CutTipText(u"<br>Exit this screen<br>"));
  EXPECT_EQ(form.widePresses, 0);
  // The left button presses and takes the tip away.
  form.cancel.RaiseMouseUp({kit::kLeftButton});
  EXPECT_EQ(form.widePresses, 1);
  EXPECT_EQ(ui.Tips().Balloon(), nullptr);

  // A tip of another form stays when this one unloads; its own goes.
  frmLit other{ui};
  ui.Show(other);
  other.Pic_Edit.RaiseMouseUp({kit::kRightButton});
  ASSERT_NE(ui.Tips().Balloon(), nullptr);
  EXPECT_TRUE(form.Unload());
  EXPECT_NE(ui.Tips().Balloon(), nullptr);
  EXPECT_TRUE(other.Unload());
  EXPECT_EQ(ui.Tips().Balloon(), nullptr);
}

// Each of these binds one event of a control a second time.
class frmTwice : public kit::Form {
 public:
  explicit frmTwice(kit::Ui& ui) : Form(u"frmTwice", {0, 0, 3000, 3000}), ui_(ui) {}
  void Go() {}
  kit::Design<frmTwice> Chain() { return kit::Design(*this, ui_); }
  kit::PictureButton cmdGo{*this, u"cmdGo", {0, 0, 1200, 345}, u"&Go"};
  kit::Picture picGo{*this, u"picGo", {0, 600, 360, 360}};
  kit::Timer tmrGo{*this, u"tmrGo", 100};

 private:
  kit::Ui& ui_;
};

TEST(DesignBindsOnce, ASecondBindingOfAnEventFailsWhenTheFormIsBuilt) {
  kit::ScriptedUi ui;
  using T = frmTwice;
  const std::function<void(T&)> twice[] = {
      [](T& f) { f.Chain().Press(f.cmdGo, &T::Go).Press(f.cmdGo, &T::Go); },
      [](T& f) { f.Chain().Press(f.picGo, &T::Go).Click(f.picGo, &T::Go); },
      [](T& f) { f.Chain().Tips({&f.cmdGo}).TipsOf(u"frmOther", {&f.cmdGo}); },
      [](T& f) { f.Chain().Hover({&f.cmdGo}).Drag({&f.cmdGo.Lbl()}).Drag({&f.cmdGo.Lbl()}); },
      // By hand before the chain, or by another chain.
      [](T& f) {
        f.tmrGo.on.Timer = [] {};
        f.Chain().On(f.tmrGo.on.Timer, &T::Go);
      },
      [](T& f) {
        f.Chain().Hover({&f.cmdGo});
        f.Chain().Hover({&f.cmdGo});
      },
  };
  for (std::size_t i = 0; i < std::size(twice); ++i) {
    frmTwice f{ui};
    EXPECT_THROW(twice[i](f), std::logic_error) << i;
  }
}

}  // namespace
