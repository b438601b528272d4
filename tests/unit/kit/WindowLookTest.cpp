// The shared look: outline, skin, frame, placement, scaling, help and branding.
#include <gtest/gtest.h>

#include <cmath>

#include "base/Utf16.h"
#include "kit/Branding.h"
#include "kit/Menu.h"
#include "kit/WindowLook.h"
#include "testkit/FrameFixture.h"

namespace {

using base::Text;
using kit::Layout;

struct frmBKErrNotify : kit::Form {
  frmBKErrNotify() : Form(u"frmBKErrNotify", {0, 0, 6750, 4050}) {}
  kit::Label Label2{*this, u"Label2", {300, 600, 6000, 1200}};
  kit::Label lblLink{*this, u"lblLink", {300, 1900, 2500, 255}};
  kit::Picture PicFailedJob{*this, u"PicFailedJob", {120, 120, 600, 600}};
  kit::PictureButton cancel{*this, u"cancel", {5000, 3300, 1200, 345}, u"&Close"};
  kit::Timer Timer1{*this, u"Timer1", 1000};
  kit::Menu mnuPop{*this, u"mnuPop", u"Pop"};
};

TEST(WindowLook, RoundingGoesHalfToEven) {
  const std::pair<double, long> cases[] = {{0.5, 0},      {1.5, 2},         {2.5, 2},
                                           {2.51, 3},     {-1.5, -2},       {-2.5, -2},
                                           {451.25, 451}, {std::nan(""), 0}};
  for (const auto& [in, out] : cases) EXPECT_EQ(kit::RoundHalfEven(in), out) << in;
}

TEST(WindowLook, TheNamedFormsGetANarrowerOutline) {
  frmBKErrNotify notice;
  kit::clsRounder rounder;
  kit::RoundRegion r = rounder.RoundForm(notice, 15, 15);
  EXPECT_EQ(r, (kit::RoundRegion{0, 0, 451, 271, 5, 5}));  // 450 + 1.25, 270 + 0.75
  EXPECT_EQ(notice.Region(), r);

  // 450.3 pixels: + 1.25 rounds to 452, + 1.0 to 451.
  notice.SetWidth(6754.5);
  EXPECT_EQ(rounder.RoundForm(notice, 15, 15).right, 452);
  kit::Form about(u"AboutQVWIN", {0, 0, 6754.5, 4050});
  EXPECT_EQ(rounder.RoundForm(about, 15, 15).right, 451);
}

TEST(WindowLook, SkinStatesSetPictureAndLabelWithoutRepaintingTheSame) {
  frmBKErrNotify f;
  f.cancel.Lbl().SetForeColor(0x00404040);
  f.Load();
  kit::ApplySkin(f.cancel, kit::kSkinHover);
  EXPECT_EQ(f.cancel.PictureKey(), u"button_ovr");
  EXPECT_EQ(f.cancel.Lbl().ForeColor(), kit::kWhite);
  EXPECT_EQ(f.cancel.SkinState(), kit::kSkinHover);
  const auto revision = f.cancel.Revision();
  const auto labelRevision = f.cancel.Lbl().Revision();
  kit::ApplySkin(f.cancel, kit::kSkinHover);
  EXPECT_EQ(f.cancel.Revision(), revision) << "a mouse move over a hovered button changes nothing";
  EXPECT_EQ(f.cancel.Lbl().Revision(), labelRevision);

  kit::ApplySkin(f.cancel, kit::kSkinDisabled);
  EXPECT_EQ(f.cancel.PictureKey(), u"button_enb");
  EXPECT_FALSE(f.cancel.Lbl().Enabled());
  EXPECT_EQ(f.cancel.Lbl().ForeColor(), 0x00404040u) << "back to its own colour";
  kit::ApplySkin(f.cancel, kit::kSkinNormal, u"button_OK_enb");
  EXPECT_EQ(f.cancel.PictureKey(), u"button_OK_enb");
  EXPECT_TRUE(f.cancel.Lbl().Enabled());
  kit::ApplySkin(f.cancel, 9);
  EXPECT_EQ(f.cancel.PictureKey(), u"button_OK_enb") << "an unknown state changes nothing";
}

TEST(WindowLook, FrameIsStrippedWithItsCaptionKeptAndCanComeBack) {
  kit::Form f(u"frmX", {}, u"Real caption");
  kit::SetFormFrame(f, false);
  EXPECT_TRUE(f.Frameless());
  EXPECT_EQ(f.KeptCaption(), u"Real caption");
  f.SetCaption(u"Desktop notification");
  f.SetFrameFlags(true, false, true);
  kit::SetFormFrame(f, true);
  EXPECT_FALSE(f.Frameless());
  EXPECT_EQ(f.Caption(), u"Real caption");
}

TEST(WindowLook, FormsSitInTheBottomRightCornerOfTheWorkArea) {
  testkit::FrameFixture fx;
  fx.fake.system.workArea = {0, 40, 1280, 800};  // task bar on top
  kit::WorkArea px = kit::GetWorkArea(fx.fake.system, false);
  EXPECT_EQ(px.top, 40);
  EXPECT_EQ(px.height, 760);
  kit::WorkArea tw = kit::GetWorkArea(fx.fake.system, true);
  EXPECT_EQ(tw.top, 600);
  EXPECT_EQ(tw.width, 19200);
  frmBKErrNotify f;
  kit::PlaceBottomRight(f, tw);
  EXPECT_EQ(f.GetLayout(), (Layout{19200 - 6750, 600 + 11400 - 4050, 6750, 4050}));
}

TEST(WindowLook, ResizeControlShrinksTwipsAboveNinetySixDots) {
  frmBKErrNotify f;
  const Layout label2 = f.Label2.GetLayout();
  EXPECT_FALSE(kit::ResizeControl(f, 15));
  EXPECT_EQ(f.Label2.GetLayout(), label2);
  EXPECT_EQ(f.Width(), 6750);

  double seenFactor = 0;
  const kit::ResizeKeep keeps[] = {{u"lblLink", -1, false, false, true, true}};
  ASSERT_TRUE(kit::ResizeControl(f, 12, keeps, [&](double factor) {
    seenFactor = factor;
    f.Label2.SetHeight(f.Label2.Height() + 260);
  }));
  EXPECT_DOUBLE_EQ(seenFactor, 1.25);
  EXPECT_DOUBLE_EQ(f.Width(), 5400);
  EXPECT_DOUBLE_EQ(f.Height(), 3240);
  EXPECT_EQ(f.Label2.GetLayout(), (Layout{240, 480, 4800, 960 + 260}));
  EXPECT_EQ(f.lblLink.GetLayout(), (Layout{240, 1520, 2500, 255})) << "keeps width and height";
  EXPECT_EQ(f.cancel.GetLayout(), (Layout{4000, 2640, 960, 276}));
  // The button's label is a control of its own and is scaled as well.
  EXPECT_DOUBLE_EQ(f.cancel.Lbl().Width(), 960);

  frmBKErrNotify g;
  kit::ResizeControl(g, 10);  // 144 dots per inch
  EXPECT_DOUBLE_EQ(g.Width(), 4500);
}

// The help service as the platform offers it, recording the calls.
struct RecordingHelp : platform::IHelp {
  std::vector<std::pair<Text, Text>> shown;
  bool Show(const Text& file, const Text& topic) override {
    shown.emplace_back(file, topic);
    return true;
  }
};

TEST(WindowLook, ShowHelpFileOpensTheTopicOfItsFile) {
  testkit::FrameFixture fx;
  RecordingHelp help;
  fx.app.platform.help = &help;
  kit::Form f(u"frmSessionLog");
  kit::ShowHelpFile(fx.app, f, u"QVWINHelp.chm::/Main_Window/Menu_Bar/Log.htm");
  ASSERT_EQ(help.shown.size(), 1u);
  EXPECT_EQ(help.shown[0].first, u"QVWINHelp.chm");
  EXPECT_EQ(help.shown[0].second, u"/Main_Window/Menu_Bar/Log.htm");

  fx.app.platform.help = nullptr;  // no help on this machine: still no crash
  kit::ShowHelpFile(fx.app, f, u"x.chm");
  EXPECT_EQ(help.shown.size(), 1u);
}

TEST(Branding, ConfigTextGivesTitleAndSecondValueByPosition) {
  // One line sets nothing: ReadBranding's test shows the title kept.
  Text title, second;
  ASSERT_TRUE(kit::ParseConfigText(u"Name = Acme Backup\r\nMode=x=Pro\r\n", title, second));
  EXPECT_EQ(title, u"Acme Backup");
  EXPECT_EQ(second, u"Pro") << "behind the last '='";
  ASSERT_TRUE(kit::ParseConfigText(u"Acme=Backup=Plus\nnoequals", title, second));
  EXPECT_EQ(title, u"Backup=Plus") << "behind the first '='";
  EXPECT_EQ(second, u"noequals");
  ASSERT_TRUE(kit::ParseConfigText(u"Whole line title\n", title, second));
  EXPECT_EQ(title, u"Whole line title");
  EXPECT_EQ(second, u"");
}

TEST(Branding, TheImagesFolderDecidesTitleAndIcons) {
  testkit::FrameFixture fx;
  fx.fake.fs.AddFolders(u"C:\\QV\\images");
  kit::Branding none = kit::ReadBranding(fx.fake.fs, u"C:\\QV");
  EXPECT_FALSE(none.configPresent);
  EXPECT_EQ(none.title, u"Corvane for Windows");
  EXPECT_EQ(none.appIconPath, u"");
  EXPECT_EQ(kit::LaunchMenuCaption(none.title), u"Launch Corvane for Windows");
  EXPECT_EQ(kit::AboutMenuCaption(none.title), u"About Corvane for Windows ...");

  fx.fake.fs.PutFile(u"C:\\QV\\images\\Config.txt", "Title=Acme");
  kit::Branding oneLine = kit::ReadBranding(fx.fake.fs, u"C:\\QV", u"As it was");
  EXPECT_TRUE(oneLine.configPresent);
  EXPECT_FALSE(oneLine.titleSet);
  EXPECT_EQ(oneLine.title, u"As it was");
  EXPECT_EQ(oneLine.appIconPath, u"C:\\QV\\images\\qvwin-desktop4.ico");

  // UTF-16 with its mark; a title of its own looks for the forms' icon.
  fx.fake.fs.PutFile(u"C:\\QV\\images\\Config.txt",
                     std::string(base::kUtf16Bom) + base::EncodeUtf16Le(u"T=A\u00e9\nx=2"));
  kit::Branding noIcon = kit::ReadBranding(fx.fake.fs, u"C:\\QV");
  EXPECT_EQ(noIcon.formIconPath, u"");
  fx.fake.fs.PutFile(u"C:\\QV\\Images\\ScreenIcon.ico", "ico");
  kit::Branding other = kit::ReadBranding(fx.fake.fs, u"C:\\QV");
  EXPECT_EQ(other.title, u"A\u00e9");
  EXPECT_EQ(other.secondValue, u"2");
  ASSERT_FALSE(other.formIconPath.empty());
  EXPECT_TRUE(fx.fake.fs.FileExists(other.formIconPath));
  kit::ApplyBranding(fx.app, other);
  EXPECT_EQ(fx.app.AppTitle, u"A\u00e9");
}

}  // namespace
