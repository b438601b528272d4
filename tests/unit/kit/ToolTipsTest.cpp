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
      {u"", u""},
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
  auto only = [&]() -> const platform::UiTip& {
    EXPECT_EQ(host.tips.size(), 1u);
    return host.tips.begin()->second.tip;
  };

  tips.ButtonMouseUp(form.cancel.Lbl(), kit::kRightButton);  // on the button's label
  ASSERT_EQ(host.tips.size(), 1u);
  EXPECT_EQ(only().tool, ui.Forms().HandleOf(form.cancel)) << "the label's tip hangs on its button";
  EXPECT_EQ(only().text, u"Exit this screen");
  EXPECT_NE(only().style & kit::kTipStyleBalloon, 0u);
  EXPECT_EQ(tips.Balloon()->VisibleTime(), 60000) << "a balloon stays a minute";
  EXPECT_EQ(tips.Balloon()->DelayTime(), 0);

  tips.ButtonMouseUp(form.viewbkuplog, kit::kRightButton);  // replaces the first
  ASSERT_EQ(host.tips.size(), 1u);
  EXPECT_EQ(only().tool, ui.Forms().HandleOf(form.viewbkuplog));
  EXPECT_EQ(only().text, u"View the log of the scheduled \r\nbackup /restore jobs");

  tips.ButtonMouseUp(form.viewbkuplog, kit::kLeftButton);
  EXPECT_TRUE(host.tips.empty());
  EXPECT_EQ(tips.Balloon(), nullptr);

  tips.ButtonMouseUp(form.nothing, kit::kRightButton);  // no entry: an empty tip
  ASSERT_EQ(host.tips.size(), 1u);
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

// A tip's own colours, font and times reach its window; what was never given is left
// to the platform's defaults.
TEST(ToolTips, GivenColoursFontAndTimesReachTheTipAndNothingElseIsSet) {
  bkupjobnotify form;
  auto sends = [](const kit::TipPlan& plan, unsigned message) {
    return std::any_of(plan.messages.begin(), plan.messages.end(),
                       [&](const kit::TipMessage& m) { return m.message == message; });
  };
  kit::CBalloonToolTip plain;
  const kit::TipPlan p = plain.Plan(form.cancel);
  EXPECT_EQ(p.style & kit::kTipStyleBalloon, 0u) << "style 0 is the standard tip";
  for (unsigned unset :
       {kit::kTtmSetTitle, kit::kTtmSetTipBkColor, kit::kTtmSetTipTextColor, kit::kWmSetFont}) {
    EXPECT_FALSE(sends(p, unset)) << unset;
  }

  kit::CBalloonToolTip full;
  full.SetIcon(1);
  full.SetBackColor(0x00FFEEDD);
  full.SetForeColor(0x00112233);
  full.SetTipFont({u"Tahoma", 8});
  full.SetVisibleTime(5000);
  full.SetDelayTime(7);
  const kit::TipPlan f = full.Plan(form.cancel);
  const auto tool =
      std::find_if(f.messages.begin(), f.messages.end(),
                   [](const kit::TipMessage& m) { return m.message == kit::kTtmAddTool; });
  ASSERT_NE(tool, f.messages.end());
  const std::vector<kit::TipMessage> afterTool(tool + 1, f.messages.end());
  for (const kit::TipMessage& m : {kit::TipMessage{kit::kTtmSetTitle, 1, 0},
                                   kit::TipMessage{kit::kTtmSetTipBkColor, 0x00FFEEDD, 0},
                                   kit::TipMessage{kit::kTtmSetTipTextColor, 0x00112233, 0},
                                   kit::TipMessage{kit::kTtmSetDelayTime, 2, 5000},  // it stays
                                   kit::TipMessage{kit::kTtmSetDelayTime, 3, 7}}) {  // before
    EXPECT_NE(std::find(afterTool.begin(), afterTool.end(), m), afterTool.end())
        << m.message << " is sent after the tool with its value";
  }
  EXPECT_EQ(f.font, (kit::TipFontInfo{u"Tahoma", 8}));
}

}  // namespace
