// The product's message box, driven as a user would: buttons, keys, the close
// picture; and the way it sizes itself to the text.
#include <gtest/gtest.h>

#include "kit/MesgBox.h"
#include "kit/ScriptedUi.h"
#include "kit/WindowLook.h"

namespace {

using base::Text;
using Answer = kit::ScriptedUi::Answer;

constexpr char16_t kTitle[] = u"Corvane for Windows";

Text Chars(std::size_t n) { return Text(n, u'x'); }

int Ask(kit::ScriptedUi& ui, int buttons, const std::vector<Answer>& answers) {
  for (const Answer& a : answers) ui.Queue(a);
  return ui.MessageBox(u"Text", kit::kIconInfo, buttons, kTitle);
}

struct MesgBox : ::testing::Test {
  kit::ScriptedUi ui;
  kit::MesgBox& box = ui.Box();
};

TEST_F(MesgBox, EachSetShowsItsButtonsAndKeys) {
  const struct {
    int buttons;
    std::vector<Text> captions;
    Text allowed, defaultKey;
  } sets[] = {{3, {u"&Ok", u"&Cancel", u"&Retry"}, u"ocrOCR", u"o"},
              {4, {u"&Ok", u"&Cancel", u"&Ignore"}, u"ociOCI", u"o"},
              {1, {u"&OK", u"&Cancel"}, u"ocOC", u"c"},
              {2, {u"&Yes", u"&No"}, u"ynYN", u"y"},
              {0, {u"&OK"}, u"oO", u"o"}};
  // One box for all, fewer buttons after more: a call hides what the one before showed.
  for (const auto& c : sets) {
    SCOPED_TRACE(c.buttons);
    Ask(ui, c.buttons, {Answer::Close()});  // the controls keep what the call set
    EXPECT_EQ(box.ButtonCount(), static_cast<int>(c.captions.size()));
    EXPECT_EQ(box.AllowedKeys(), c.allowed);
    EXPECT_EQ(box.DefaultKey(), c.defaultKey);
    for (int i = 0; i < 3; ++i) {
      const bool shown = i < static_cast<int>(c.captions.size());
      EXPECT_EQ(box.cmdButton(i).Visible(), shown) << i;
      if (shown) EXPECT_EQ(box.cmdButton(i).Lbl().Caption(), c.captions[i]);
    }
  }
}

TEST_F(MesgBox, ButtonsKeysAndAltLettersGiveTheirResults) {
  // In order: "&Cancel" and "&Ok" match no caption of the compare, so a press on them
  // closes the box with the result of the call before.
  const struct {
    int buttons;
    std::vector<Answer> answers;
    int result;
  } cases[] = {
      {kit::kButtonsYesNo, {Answer::Press(1)}, kit::kResultNo},
      {kit::kButtonsOkCancelRetry, {Answer::Press(2)}, kit::kResultRetry},
      {kit::kButtonsOkCancelIgnore, {Answer::Press(2)}, kit::kResultIgnore},
      {kit::kButtonsOk, {Answer::Press(0)}, kit::kResultOk},
      {kit::kButtonsOkCancel, {Answer::Press(1)}, kit::kResultOk},
      {kit::kButtonsYesNo, {Answer::Press(0)}, kit::kResultYes},
      {kit::kButtonsOkCancelRetry, {Answer::Press(0)}, kit::kResultYes},
      // The focus starts on the Enter button; Tab, Shift+Tab, then Enter or Space give
      // the focused button's own result, also where a press would not ("&Cancel" of
      // the three-button set, then the close picture).
      {kit::kButtonsYesNo, {Answer::Enter()}, kit::kResultYes},
      {kit::kButtonsYesNo, {Answer::Tab(), Answer::Enter()}, kit::kResultNo},
      {kit::kButtonsOkCancel, {Answer::Enter()}, kit::kResultCancel},
      {kit::kButtonsOkCancel, {Answer::Tab(true), Answer::Space()}, kit::kResultOk},
      {kit::kButtonsOkCancelRetry, {Answer::Tab(), Answer::Enter()}, kit::kResultCancel},
      {kit::kButtonsOkCancelIgnore, {Answer::Tab(true), Answer::Enter()}, kit::kResultClosed},
      {kit::kButtonsOkCancelRetry, {Answer::Alt(u'r')}, kit::kResultRetry},
      {kit::kButtonsOkCancelIgnore, {Answer::Alt(u'I')}, kit::kResultIgnore},
      {kit::kButtonsOkCancelIgnore, {Answer::Cancel()}, kit::kResultCancel},
      {kit::kButtonsYesNo, {Answer::Close()}, kit::kResultClosed},
  };
  int row = 0;
  for (const auto& c : cases) {
    SCOPED_TRACE(row++);
    EXPECT_EQ(Ask(ui, c.buttons, c.answers), c.result);
  }
  EXPECT_EQ(ui.UnansweredCount(), 0) << "each answer closed its box";

  // Alt+N in an OK box does nothing: the box stays until it is closed.
  EXPECT_EQ(Ask(ui, kit::kButtonsOk, {Answer::No(), Answer::Close()}), kit::kResultClosed);
  EXPECT_EQ(ui.Questions().back().inputs, 2);

  // A letter without Alt does nothing either (the box of the last call: OK only).
  box.Load();
  kit::KeyArgs plainO{'O', 0};
  box.DeliverKeyUp(plainO);
  EXPECT_TRUE(box.IsLoaded());
  kit::KeyArgs altO{'O', kit::kAltMask};
  box.DeliverKeyUp(altO);
  EXPECT_FALSE(box.IsLoaded());
}

TEST_F(MesgBox, ABadButtonSetLeavesOnlyTheClosePictureAndABadIconNoIcon) {
  EXPECT_EQ(Ask(ui, kit::kButtonsOk, {Answer::Ok()}), kit::kResultOk);
  EXPECT_EQ(Ask(ui, 7, {Answer::Enter(), Answer::Ok(), Answer::Press(0), Answer::Close()}),
            kit::kResultClosed);
  EXPECT_EQ(ui.Questions().back().inputs, 4);
  EXPECT_EQ(box.ButtonCount(), -1);
  EXPECT_TRUE(box.AllowedKeys().empty());
  EXPECT_FALSE(box.cmdButton(0).Visible());
  // A bad icon leaves the box without one.
  for (int icon : {9, -1}) {
    ui.Queue(Answer::Ok());
    EXPECT_EQ(ui.MessageBox(u"Text", icon, kit::kButtonsOk, kTitle), kit::kResultOk);
    for (int i = 0; i < 4; ++i) EXPECT_FALSE(box.picIcon(i).Visible()) << icon << " " << i;
  }
}

TEST_F(MesgBox, ASecondCallShowsOnlyItsOwnIconAndTitle) {
  Ask(ui, kit::kButtonsOkCancelIgnore, {Answer::Alt(u'i')});
  ui.Queue(Answer::Close());
  ui.MessageBox(u"Second", kit::kIconError, kit::kButtonsOk, u"Other title");
  EXPECT_FALSE(box.picIcon(0).Visible());
  EXPECT_TRUE(box.picIcon(kit::kIconError).Visible());
  EXPECT_EQ(box.AppCaption.Caption(), u"Other title");
  EXPECT_EQ(box.Caption(), u"Other title");
}

TEST_F(MesgBox, TheTextChoosesTheLabelAndItsLineEnds) {
  auto show = [&](std::size_t n) {
    ui.Queue(Answer::Ok());
    ui.MessageBox(Chars(n), kit::kIconInfo, kit::kButtonsOk, kTitle);
  };
  show(50);
  EXPECT_TRUE(box.ShortText());
  EXPECT_TRUE(box.lblSmallText.Visible());
  EXPECT_FALSE(box.lblText.Visible());
  EXPECT_EQ(box.lblSmallText.Caption(), Chars(50));

  struct LineCase {
    std::size_t length;
    Text tail;
  };
  // n = length / 50 with halves to the even number: 125 is 2, 225 is 4.
  const LineCase cases[] = {
      {51, u"\r\n\r\n"}, {125, u"\r\n\r\n"}, {126, u"\r\n"}, {225, u"\r\n"}, {226, u""}};
  for (const LineCase& c : cases) {
    show(c.length);
    EXPECT_FALSE(box.ShortText()) << c.length;
    EXPECT_TRUE(box.lblText.Visible()) << c.length;
    EXPECT_FALSE(box.lblSmallText.Visible()) << c.length;
    EXPECT_EQ(box.lblText.Caption(), Chars(c.length) + c.tail) << c.length;
  }
}

// What a person sees at 96 and at 120 dots per inch, whatever the text and the set:
// the text right of its icon, the buttons below it in one row, and the text, the row
// and the close picture inside the window, which its region covers within a pixel or two.
class MesgBoxLayout : public ::testing::TestWithParam<int> {};

TEST_P(MesgBoxLayout, TextButtonsAndClosePictureFitInsideTheWindow) {
  const int twipsPerPixel = GetParam();
  kit::ScriptedUi ui(twipsPerPixel);
  kit::MesgBox& box = ui.Box();
  struct Shown {
    Text text;
    int buttons;
    int count;
  };
  for (const Shown& s : {Shown{u"Hi", kit::kButtonsOk, 1}, Shown{Chars(40), kit::kButtonsYesNo, 2},
                         Shown{Chars(120), kit::kButtonsOkCancelRetry, 3},
                         Shown{Chars(275), kit::kButtonsOkCancelIgnore, 3}}) {
    SCOPED_TRACE(s.text.size());
    ui.Queue(Answer::Close());
    ui.MessageBox(s.text, kit::kIconWarning, s.buttons, kTitle);
    const kit::Label& text = box.ShortText() ? box.lblSmallText : box.lblText;
    const auto& icon = box.picIcon(kit::kIconWarning);
    const auto& row = box.picBtnContainer;
    EXPECT_GE(text.Left(), icon.Left() + icon.Width());
    EXPECT_LE(text.Left() + text.Width(), box.Width());
    if (s.text.size() > 100) {
      EXPECT_GT(text.Height(), 2 * kit::EstimatedTextMeasure::LineHeight(0)) << "lines of text";
    }
    EXPECT_GE(row.Top(), text.Top() + text.Height());
    EXPECT_LE(row.Left() + row.Width(), box.Width());
    EXPECT_LE(row.Top() + row.Height(), box.Height());

    const double first = box.cmdButton(0).Left();
    const double last = box.cmdButton(s.count - 1).Left() + box.cmdButton(s.count - 1).Width();
    for (int i = 1; i < s.count; ++i) {
      EXPECT_GT(box.cmdButton(i).Left(), box.cmdButton(i - 1).Left() + box.cmdButton(i - 1).Width())
          << "button " << i << " stands clear right of the one before";
    }
    EXPECT_GE(first, 0);
    EXPECT_LE(last, row.Width());
    if (twipsPerPixel == 15) {
      // The row's start is reckoned from the buttons' design widths: centred at 96 dots
      // per inch only, where the buttons keep them.
      EXPECT_NEAR(first, row.Width() - last, 2 * twipsPerPixel) << "the row is centred";
    }

    EXPECT_GE(box.MsgClose.Left(), text.Left() + text.Width() - box.MsgClose.Width());
    EXPECT_LE(box.MsgClose.Left() + box.MsgClose.Width(), box.Width());
    EXPECT_LT(box.MsgClose.Top(), text.Top());
    ASSERT_TRUE(box.Region().has_value());
    EXPECT_NEAR(box.Region()->right * twipsPerPixel, box.Width(), 2 * twipsPerPixel);
  }
}

INSTANTIATE_TEST_SUITE_P(Dpi, MesgBoxLayout, ::testing::Values(15, 12));

TEST_F(MesgBox, TheMouseLightsTheButtonUnderItOnceReadyAndTheClosePictureCancels) {
  box.Load();
  box.SetButton(0, u"&Yes", true, true);
  box.SetButton(1, u"&No", true, false);
  box.cmdButton(1).Lbl().RaiseMouseMove({});
  EXPECT_EQ(box.cmdButton(1).PictureKey(), u"button_enb") << "not before the pointer passed";
  box.picBtnContainer.RaiseMouseMove({});
  EXPECT_TRUE(box.HoverReady());
  box.cmdButton(1).Lbl().RaiseMouseMove({});
  EXPECT_EQ(box.cmdButton(1).PictureKey(), u"button_ovr");
  box.cmdButton(0).Lbl().RaiseMouseMove({});
  EXPECT_EQ(box.cmdButton(0).PictureKey(), u"button_ovr");
  EXPECT_EQ(box.cmdButton(1).PictureKey(), u"button_enb");
  // A right button up on a button does nothing.
  box.cmdButton(0).RaiseMouseUp({kit::kRightButton});
  EXPECT_TRUE(box.IsLoaded());
  box.lblCapbar.RaiseMouseDown({kit::kLeftButton});
  EXPECT_EQ(box.DragRequests(), 1);
  EXPECT_EQ(box.MsgClose.Role(), kit::Role::PushButton) << "to a screen reader";

  // The close picture runs a button captioned No or Cancel, on the left button only.
  box.SetButton(1, u"Cancel", true, false);
  box.MsgClose.RaiseMouseUp({kit::kRightButton});
  EXPECT_TRUE(box.IsLoaded());
  box.MsgClose.RaiseMouseUp({kit::kLeftButton});
  EXPECT_FALSE(box.IsLoaded());
  EXPECT_EQ(box.Result(), kit::kResultCancel);
}

TEST_F(MesgBox, AQuestionAskedWhileTheBoxIsUpReadsAsClosed) {
  int nested = -1;
  // A timer that asks while the first box waits for its answer.
  struct NestingUi : kit::ScriptedUi {
    std::function<void()> during;
    void ShowModal(kit::Form& form) override {
      if (during) {
        auto d = std::move(during);
        during = nullptr;
        d();
      }
      ScriptedUi::ShowModal(form);
    }
  } nui;
  nui.during = [&] { nested = nui.MessageBox(u"Inner", 1, kit::kButtonsYesNo, kTitle); };
  nui.Queue(Answer::Yes());
  EXPECT_EQ(nui.MessageBox(u"Outer", 1, kit::kButtonsYesNo, kTitle), kit::kResultYes);
  EXPECT_EQ(nested, kit::kResultClosed);
  EXPECT_EQ(nui.Questions().size(), 1u) << "the inner question never showed";
}

}  // namespace
