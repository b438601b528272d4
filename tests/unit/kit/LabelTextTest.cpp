// The measured line breaking of long names, shared by the transfer pane and the
// job-end notice.
#include <gtest/gtest.h>

#include "kit/Form.h"
#include "kit/LabelText.h"
#include "kit/TextMeasure.h"

namespace {

using base::Text;

// Ten units fit a line when measured.
bool FitsTen(base::TextView piece) { return piece.size() <= 40; }

TEST(LabelTextTest, WrapTakesThirtyUnitsUnmeasuredThenBreaksByMeasure) {
  auto wrap = [](base::TextView t, std::size_t fit) {
    return kit::WrapLabelText(t, [fit](base::TextView p) { return p.size() <= fit; });
  };
  EXPECT_EQ(wrap(u"", 40), u"");
  EXPECT_EQ(wrap(u"short name", 5), u"short name");  // under 30: never measured
  const Text thirty(30, u'a');
  EXPECT_EQ(wrap(thirty, 100), thirty + u"\r\n");  // 30 or more ends in CR LF
  const Text seventy = Text(30, u'a') + Text(20, u'b') + Text(20, u'c');
  // 50 units fit a line: the first line takes 30 + 20, the rest goes below unmeasured.
  EXPECT_EQ(wrap(seventy, 50), Text(30, u'a') + Text(20, u'b') + u"\r\n" + Text(20, u'c'));
  // A line that never fits more than 30 keeps the 30 and moves on.
  const Text ninety(90, u'x');
  EXPECT_EQ(wrap(ninety, 30),
            Text(30, u'x') + u"\r\n" + Text(30, u'x') + u"\r\n" + Text(30, u'x') + u"\r\n");
  EXPECT_EQ(kit::WrapLabelText(Text(45, u'q'), FitsTen), Text(40, u'q') + u"\r\n" + Text(5, u'q'));
}

TEST(LabelTextTest, WrapMeasuresInTheFontOfTheLabel) {
  // The estimate gives a unit 11 twips per point: 8.25 points make 90.75 twips.
  kit::Form form(u"f");
  kit::Label label(form, u"l", {0, 0, 3000, 255});
  const kit::EstimatedTextMeasure measure;
  const Text name(60, u'n');
  // 33 units fit 3000 twips at 8.25 points, 25 at 12 points (then 30 go unmeasured).
  EXPECT_EQ(kit::WrapLabelText(name, 3000, label, measure),
            Text(33, u'n') + u"\r\n" + Text(27, u'n'));
  label.SetFontSize(12);
  EXPECT_EQ(kit::WrapLabelText(name, 3000, label, measure),
            Text(30, u'n') + u"\r\n" + Text(30, u'n') + u"\r\n");
}

}  // namespace
