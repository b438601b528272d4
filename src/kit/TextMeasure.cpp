#include "kit/TextMeasure.h"

#include <algorithm>
#include <cmath>

namespace kit {

namespace {

double Points(double fontSize) { return fontSize > 0 ? fontSize : kStandardFontSize; }

// Lines of one paragraph when broken at blanks to at most `maxChars` units; a word
// longer than a line is cut where the line ends.
std::vector<std::size_t> WrapParagraph(TextView para, std::size_t maxChars) {
  std::vector<std::size_t> lines;
  if (maxChars == 0) maxChars = 1;
  std::size_t pos = 0;
  if (para.empty()) return {0};
  while (pos < para.size()) {
    std::size_t rest = para.size() - pos;
    if (rest <= maxChars) {
      lines.push_back(rest);
      break;
    }
    // The last blank within reach ends the line; the blank itself is dropped. Only the
    // line's own reach is searched: a long run without blanks is looked at once.
    std::size_t cut = para.substr(pos, maxChars + 1).rfind(u' ');
    if (cut != TextView::npos) cut += pos;
    if (cut == TextView::npos || cut == pos) {
      lines.push_back(maxChars);
      pos += maxChars;
    } else {
      lines.push_back(cut - pos);
      pos = cut + 1;
    }
  }
  return lines;
}

}  // namespace

double EstimatedTextMeasure::CharWidth(double fontSize) { return Points(fontSize) * 11.0; }
double EstimatedTextMeasure::LineHeight(double fontSize) { return Points(fontSize) * 24.0; }

TextSize EstimatedTextMeasure::Measure(TextView text, double fontSize, bool bold,
                                       double wrapWidth) const {
  const double cw = CharWidth(fontSize) * (bold ? 1.1 : 1.0);
  const double lh = LineHeight(fontSize);
  std::size_t maxChars = 0;
  if (wrapWidth > 0) maxChars = static_cast<std::size_t>(std::max(1.0, std::floor(wrapWidth / cw)));

  std::size_t lineCount = 0;
  std::size_t widest = 0;
  std::size_t start = 0;
  while (true) {
    std::size_t lf = text.find(u'\n', start);
    TextView para = text.substr(start, lf == TextView::npos ? TextView::npos : lf - start);
    if (!para.empty() && para.back() == u'\r') para.remove_suffix(1);
    if (maxChars > 0) {
      for (std::size_t n : WrapParagraph(para, maxChars)) {
        ++lineCount;
        widest = std::max(widest, n);
      }
    } else {
      ++lineCount;
      widest = std::max(widest, para.size());
    }
    if (lf == TextView::npos) break;
    start = lf + 1;
  }
  return {static_cast<double>(widest) * cw, static_cast<double>(lineCount) * lh};
}

void AutoSize(Label& label, const TextMeasure& measure) {
  if (!label.AutoSize()) return;
  if (label.WordWrap()) {
    TextSize size =
        measure.Measure(label.Caption(), label.FontSize(), label.FontBold(), label.Width());
    label.SetHeight(size.height);
  } else {
    TextSize size = measure.Measure(label.Caption(), label.FontSize(), label.FontBold(), 0);
    label.Move(label.Left(), label.Top(), size.width, size.height);
  }
}

}  // namespace kit
