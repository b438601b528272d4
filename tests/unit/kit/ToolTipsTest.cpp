// Balloon tips: a form's table, the cut of the texts, and when a tip comes and goes.
#include <gtest/gtest.h>

#include "kit/Controls.h"
#include "kit/Form.h"
#include "kit/ToolTips.h"

namespace {

using base::Text;

// Records what the renderer would be asked to do.
struct RecordingTips : kit::TipBackend {
  std::vector<kit::TipPlan> created;
  std::vector<std::uintptr_t> destroyed;
  std::vector<Text> plain;
  int plainDestroyed = 0;
  std::uintptr_t next = 100;
  std::uintptr_t Create(const kit::TipPlan& plan) override {
    created.push_back(plan);
    return next++;
  }
  void Destroy(std::uintptr_t tip) override { destroyed.push_back(tip); }
  void Track(std::uintptr_t, long, long, const kit::Control&) override {}
  void ShowPlain(const Text& text) override { plain.push_back(text); }
  void DestroyPlain() override { ++plainDestroyed; }
};

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

TEST(ToolTips, AKeyIsFoundInTheTableWithoutRegardToCase) {
  EXPECT_EQ(kit::FindTipText(kTips, u"BKUPJOBNOTIFY.CANCEL"), u"<br>Exit this screen<br>");
  EXPECT_EQ(kit::FindTipText(kTips, u"bkupjobnotify.ViewBkupLog"), kTips[0].text);
  EXPECT_EQ(kit::FindTipText(kTips, u"bkupjobnotify"), u"");
  EXPECT_EQ(kit::FindTipText(kTips, u""), u"");
  EXPECT_EQ(kit::FindTipText({}, u"bkupjobnotify.cancel"), u"");
}

TEST(ToolTips, TheCutDropsFourUnitsAtEachEndAndBreaksLines) {
  EXPECT_EQ(kit::CutTipText(u"<br>Exit this screen<br>"), u"Exit this screen");
  EXPECT_EQ(kit::CutTipText(
                u"<br>Immediately stop the backup or restore <br>operation that is underway<br>"),
            u"Immediately stop the backup or restore \r\noperation that is underway");
  // The one text without a leading mark loses four letters all the same.
  EXPECT_EQ(kit::CutTipText(u"QVMonitor will continue to <br>run in the system tray.<br>"),
            u"nitor will continue to \r\nrun in the system tray.");
  EXPECT_EQ(kit::CutTipText(u""), u"");
  EXPECT_EQ(kit::CutTipText(u"abcdef"), u"");
  EXPECT_EQ(kit::CutTipText(u"<br>x<br>y<br><br>"), u"x\r\ny\r\n");
}

TEST(ToolTips, RightButtonUpOpensTheBalloonAndAnyOtherClickRemovesIt) {
  RecordingTips backend;
  kit::TipService tips(&backend);
  bkupjobnotify form;

  tips.ButtonMouseUp(form.cancel.Lbl(), kit::kRightButton);
  ASSERT_EQ(backend.created.size(), 1u);
  const kit::TipPlan& plan = backend.created[0];
  EXPECT_EQ(plan.text, u"Exit this screen");
  EXPECT_EQ(plan.parent, &form.cancel) << "the label's tip hangs on its button";
  EXPECT_EQ(plan.style & kit::kTipStyleBalloon, kit::kTipStyleBalloon);
  ASSERT_NE(tips.Balloon(), nullptr);
  EXPECT_EQ(tips.Balloon()->VisibleTime(), 60000);
  EXPECT_EQ(tips.Balloon()->DelayTime(), 0);
  EXPECT_FALSE(tips.Balloon()->PopupOnDemand());

  // A second tip replaces the first, whose window goes.
  tips.ButtonMouseUp(form.viewbkuplog, kit::kRightButton);
  ASSERT_EQ(backend.created.size(), 2u);
  EXPECT_EQ(backend.created[1].text, u"View the log of the scheduled \r\nbackup /restore jobs");
  ASSERT_EQ(backend.destroyed.size(), 1u);
  EXPECT_EQ(backend.destroyed[0], 100u);

  tips.ButtonMouseUp(form.viewbkuplog, kit::kLeftButton);
  EXPECT_EQ(tips.Balloon(), nullptr);
  EXPECT_EQ(backend.destroyed.size(), 2u);

  // A button without an entry opens an empty tip.
  tips.ButtonMouseUp(form.nothing, kit::kRightButton);
  EXPECT_EQ(backend.created.back().text, u"");
  EXPECT_EQ(kit::TipService::KeyFor(form.nothing.Lbl()), u"bkupjobnotify.nothing");

  tips.ShowTip(kit::kRightButton, u"<br>plain<br>", form.cancel, true);
  ASSERT_NE(tips.Plain(), nullptr);
  EXPECT_EQ(backend.plain.back(), u"plain");
  tips.Remove();
  EXPECT_EQ(tips.Plain(), nullptr);
  EXPECT_EQ(tips.Balloon(), nullptr);
  EXPECT_EQ(backend.plainDestroyed, 1);
}

// The tool flags as the renderer reads them: a tip that comes with the pointer hooks
// its tool; an on-demand one is tracked instead and never comes up by itself.
TEST(ToolTips, OnDemandAndCentredTipsAreToldApartByTheRenderer) {
  constexpr std::uint32_t kIdIsWindow = 0x1, kCentre = 0x2, kHook = 0x10, kTrack = 0x20;
  kit::CBalloonToolTip tip;
  for (bool centred : {false, true}) {
    for (bool onDemand : {false, true}) {
      tip.SetCentered(centred);
      tip.SetPopupOnDemand(onDemand);
      const std::uint32_t flags = tip.ToolFlags();
      EXPECT_EQ((flags & kCentre) != 0, centred) << centred << onDemand;
      EXPECT_EQ((flags & kTrack) != 0, onDemand) << centred << onDemand;
      EXPECT_EQ((flags & kHook) != 0, !onDemand) << centred << onDemand;
      EXPECT_NE(flags & kIdIsWindow, 0u);
    }
  }
}

// The new window gets what the properties say, the tool before anything about it, and
// nothing for a property that was never given.
TEST(ToolTips, ThePlanCarriesTheGivenPropertiesAndOnlyThose) {
  bkupjobnotify form;
  auto find = [](const kit::TipPlan& plan, unsigned message, std::int64_t wParam = -1) {
    for (std::size_t i = 0; i < plan.messages.size(); ++i) {
      const kit::TipMessage& m = plan.messages[i];
      if (m.message == message && (wParam < 0 || m.wParam == wParam)) return static_cast<int>(i);
    }
    return -1;
  };
  kit::CBalloonToolTip plain;
  plain.SetVisibleTime(5000);
  plain.SetDelayTime(7);
  const kit::TipPlan p = plain.Plan(form.cancel);
  EXPECT_EQ(p.style & kit::kTipStyleBalloon, 0u) << "style 0 is the standard tip";
  ASSERT_GE(find(p, kit::kTtmSetDelayTime, 2), 0);
  EXPECT_EQ(p.messages[find(p, kit::kTtmSetDelayTime, 2)].lParam, 5000) << "visible time";
  EXPECT_EQ(p.messages[find(p, kit::kTtmSetDelayTime, 3)].lParam, 7) << "delay before";
  for (unsigned unset :
       {kit::kTtmSetTitle, kit::kTtmSetTipBkColor, kit::kTtmSetTipTextColor, kit::kWmSetFont}) {
    EXPECT_EQ(find(p, unset), -1) << unset;
  }

  kit::CBalloonToolTip full;
  full.SetStyle(1);
  full.SetIcon(1);
  full.SetBackColor(0x00FFEEDD);
  full.SetForeColor(0x00112233);
  full.SetTipFont({u"Tahoma", 8});
  const kit::TipPlan f = full.Plan(form.cancel);
  EXPECT_NE(f.style & kit::kTipStyleBalloon, 0u);
  const int tool = find(f, kit::kTtmAddTool);
  ASSERT_GE(tool, 0);
  for (unsigned message : {kit::kTtmSetTitle, kit::kTtmSetTipBkColor, kit::kTtmSetTipTextColor,
                           kit::kWmSetFont, kit::kTtmSetDelayTime}) {
    EXPECT_GT(find(f, message), tool) << message;
  }
  EXPECT_EQ(f.messages[find(f, kit::kTtmSetTitle)].wParam, 1) << "the icon";
  EXPECT_EQ(f.messages[find(f, kit::kTtmSetTipBkColor)].wParam, 0x00FFEEDD);
  EXPECT_EQ(f.messages[find(f, kit::kTtmSetTipTextColor)].wParam, 0x00112233);
  EXPECT_EQ(f.font, (kit::TipFontInfo{u"Tahoma", 8}));
}

}  // namespace
