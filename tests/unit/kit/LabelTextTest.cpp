// The measured line breaking of long names, shared by the transfer pane and the
// job-end notice.
#include <gtest/gtest.h>

#include <random>

#include "kit/Form.h"
#include "kit/LabelText.h"
#include "kit/TextMeasure.h"

namespace {

using base::Text;

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

// The routine as it has always counted: one measurement per unit of a line.
Text WrapByCounting(base::TextView text, const kit::FitsFn& fits) {
  const std::size_t n = text.size();
  std::size_t pos = 1, start = 1;
  Text out;
  while (pos <= n) {
    if (out.empty()) {
      out = base::Left(text, 30);
      pos = 30;
      continue;
    }
    std::size_t i = 1;
    for (; i <= n - pos; ++i)
      if (!fits(base::Mid(text, start, i + 30))) break;
    out += base::Mid(text, pos + 1, i - 1) + u"\r\n";
    start = pos = pos + i;
    if (pos <= n) {
      out += base::Mid(text, pos, 30);
      pos += 29;
    }
  }
  return out;
}

TEST(LabelTextTest, WrapBreaksWhereCountingUnitByUnitWould) {
  // Units of unequal widths (as a real font has them), blanks and line breaks, limits
  // below, near and above the 30 unmeasured units.
  std::mt19937 rng(25);
  const char16_t kUnits[] = u"iiWWmm.. ab&\r\n\u00E9";
  const kit::EstimatedTextMeasure measure;
  for (int round = 0; round < 120; ++round) {
    Text text(rng() % 300, u' ');
    for (auto& c : text) c = kUnits[rng() % (sizeof kUnits / sizeof kUnits[0] - 1)];
    const double limit = 1500.0 + static_cast<double>(rng() % 8000);
    const kit::FitsFn byWidth = [&](base::TextView piece) {
      double width = 0;
      for (char16_t c : piece) width += c == u'W' || c == u'm' ? 160 : c == u'i' ? 40 : 90;
      return width <= limit;
    };
    const kit::FitsFn byEstimate = [&](base::TextView piece) {
      return measure.Measure(piece, 8.25, false, 0).width <= limit;
    };
    ASSERT_EQ(kit::WrapLabelText(text, byWidth), WrapByCounting(text, byWidth)) << round;
    ASSERT_EQ(kit::WrapLabelText(text, byEstimate), WrapByCounting(text, byEstimate)) << round;
  }
}

TEST(LabelTextTest, WrapMeasuresAFewTimesPerLineNotOncePerUnit) {
  // A name of 40,000 units in lines of 80: counting would measure 50 times a line.
  const Text name(40000, u'x');
  std::size_t calls = 0;
  std::size_t measured = 0;
  const kit::FitsFn fits = [&](base::TextView piece) {
    ++calls;
    measured += piece.size();
    return piece.size() <= 80;
  };
  const Text wrapped = kit::WrapLabelText(name, fits);
  const std::size_t lines = 40000 / 80;
  EXPECT_LE(calls, 3 * lines);
  EXPECT_LE(measured, 3 * 81 * lines);
  EXPECT_EQ(wrapped, WrapByCounting(name, fits));
}

}  // namespace
