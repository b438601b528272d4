#pragma once
// Measuring text for auto-sized labels. The renderer measures with the real font;
// portable code and tests use the estimate below, which is deterministic.
#include "kit/Controls.h"

namespace kit {

struct TextSize {
  double width = 0;   // twips
  double height = 0;  // twips
};

class TextMeasure {
 public:
  virtual ~TextMeasure() = default;
  // The size of `text` in a font of `fontSize` points (0 = the standard 8.25).
  // With wrapWidth above 0 the text is broken at blanks to fit that width, as a
  // word-wrapping label does; CR LF always breaks a line.
  virtual TextSize Measure(TextView text, double fontSize, bool bold, double wrapWidth) const = 0;
};

// Every unit the same width: 11 twips per point of font size (about 90 twips, six
// pixels, at the standard size) and lines of 24 twips per point.
class EstimatedTextMeasure : public TextMeasure {
 public:
  TextSize Measure(TextView text, double fontSize, bool bold, double wrapWidth) const override;
  static double CharWidth(double fontSize);
  static double LineHeight(double fontSize);
};

inline constexpr double kStandardFontSize = 8.25;

// What the platform does when an auto-sized label's caption is set: the label takes
// the size of its text; a word-wrapping one keeps its width and takes the height.
// Labels without AutoSize are left as they are.
void AutoSize(Label& label, const TextMeasure& measure);

}  // namespace kit
