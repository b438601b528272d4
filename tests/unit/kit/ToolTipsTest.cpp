// Balloon tips as the user meets them on a host: the text of the form's table, cut and
// broken into lines, over the button that was right-clicked, gone at any other click.
#include <gtest/gtest.h>

#include <algorithm>

#include "kit/Controls.h"
#include "kit/Form.h"
#include "kit/HostedUi.h"
#include "kit/ToolTips.h"
#include "platform/fake/FakeUiHost.h"

namespace {

using base::Text;

constexpr kit::TipText kTips[] = {
    {u"bkupjobnotify.viewbkuplog",
     u"<br>View the log of the scheduled <br>backup /restore jobs<br>"},
    {u"bkupjobnotify.cancel", u"<br>Exit this screen<br>"},
};

struct bkupjobnotify : kit::Form {
  bkupjobnotify() : Form(u"bkupjobnotify") { SetTipTexts(kTips); }
  kit::PictureButton cancel{*this, u"cancel", {0, 0, 1200, 345}, u"&Close"};
  kit::PictureButton viewbkuplog{*this, u"viewbkuplog", {0, 0, 1200, 345}, u"&View Log"};
  kit::PictureButton nothing{*this, u"nothing", {0, 0, 1200, 345}, u"?"};
};

TEST(ToolTips, TheTableIsReadWithoutRegardToCaseAndTheTextIsCut) {
  EXPECT_EQ(kit::FindTipText(kTips, u"BKUPJOBNOTIFY.ViewBkupLog"), kTips[0].text);
  EXPECT_EQ(kit::FindTipText(kTips, u"bkupjobnotify"), u"");
  EXPECT_EQ(kit::FindTipText({}, u"bkupjobnotify.cancel"), u"");
  const struct {
    Text raw, shown;
  } cuts[] = {
      {u"<br>Exit this screen<br>", u"Exit this screen"},
      // The one text without a leading mark loses four letters all the same.
      {u"QVMonitor will continue to <br>run in the system tray.<br>",
       u"nitor will continue to \r\nrun in the system tray."},
      {u"abcdef", u""},
      {u"<br>x<br>y<br><br>", u"x\r\ny\r\n"},
  };
  for (const auto& c : cuts) EXPECT_EQ(kit::CutTipText(c.raw), c.shown) << base::ToUtf8(c.raw);
}

TEST(ToolTips, ARightClickShowsOneBalloonOverItsButtonAndAnyOtherClickRemovesIt) {
  platform::FakeUiHost host;
  bkupjobnotify form;
  kit::HostedUi ui{host};
  ui.Show(form);
  kit::TipService& tips = ui.Tips();
  // The one tip on the host (an empty one, and a failure, when there is not one).
  auto only = [&]() -> platform::UiTip {
    EXPECT_EQ(host.tips.size(), 1u);
    return host.tips.size() == 1 ? host.tips.begin()->second.tip : platform::UiTip{};
  };

  tips.ButtonMouseUp(form.cancel.Lbl(), kit::kRightButton);  // on the button's label
  EXPECT_EQ(only().tool, ui.Forms().HandleOf(form.cancel)) << "the label's tip hangs on its button";
  EXPECT_EQ(only().text, u"Exit this screen");
  EXPECT_NE(only().style & kit::kTipStyleBalloon, 0u);
  const auto sent = only().messages;
  EXPECT_NE(
      std::find(sent.begin(), sent.end(), platform::UiTipMessage{kit::kTtmSetDelayTime, 2, 60000}),
      sent.end())
      << "a balloon stays a minute";

  tips.ButtonMouseUp(form.viewbkuplog, kit::kRightButton);  // replaces the first
  EXPECT_EQ(only().tool, ui.Forms().HandleOf(form.viewbkuplog));
  EXPECT_EQ(only().text, u"View the log of the scheduled \r\nbackup /restore jobs");

  tips.ButtonMouseUp(form.viewbkuplog, kit::kLeftButton);
  EXPECT_TRUE(host.tips.empty());

  tips.ButtonMouseUp(form.nothing, kit::kRightButton);  // no entry: an empty tip
  EXPECT_EQ(only().text, u"");

  tips.ShowTip(kit::kRightButton, u"<br>plain<br>", form.cancel, true);
  EXPECT_TRUE(host.plainTipShown);
  EXPECT_EQ(host.plainTip, u"plain");
  tips.Remove();
  EXPECT_FALSE(host.plainTipShown);
  EXPECT_TRUE(host.tips.empty());

  // A tip goes with its form.
  tips.ButtonMouseUp(form.cancel, kit::kRightButton);
  ASSERT_EQ(host.tips.size(), 1u);
  ui.Forms().Detach(form);
  EXPECT_TRUE(host.tips.empty());
}

// A tip the product shows sets no colour, font or title of its own: the platform's
// defaults stay, so that a tip looks like every other on the desktop.
TEST(ToolTips, APlainTipLeavesColoursFontAndTitleToThePlatform) {
  bkupjobnotify form;
  const kit::TipPlan p = kit::CBalloonToolTip().Plan(form.cancel);
  EXPECT_EQ(p.style & kit::kTipStyleBalloon, 0u) << "style 0 is the standard tip";
  for (unsigned unset :
       {kit::kTtmSetTitle, kit::kTtmSetTipBkColor, kit::kTtmSetTipTextColor, kit::kWmSetFont}) {
    EXPECT_TRUE(std::none_of(p.messages.begin(), p.messages.end(), [&](const kit::TipMessage& m) {
      return m.message == unset;
    })) << unset;
  }
}

}  // namespace
