#include "kit/LabelText.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "base/Guarded.h"
#include "frame/Logs.h"

namespace kit {

namespace {

constexpr double kGiB = 1073741824.0;
constexpr double kMiB = 1048576.0;
constexpr double kKiB = 1024.0;

}  // namespace

Text FormatTwoDecimals(double value, platform::ILocale* locale) {
  if (!std::isfinite(value)) throw base::Failure(6, "Overflow");
  const Text decimalSep = locale ? locale->DecimalSeparator() : Text(u".");
  const Text thousandsSep = locale ? locale->ThousandsSeparator() : Text(u",");

  char buffer[64];
  std::snprintf(buffer, sizeof buffer, "%.2f", std::fabs(value));
  const std::string digits(buffer);
  const std::size_t dot = digits.find('.');
  const std::string whole = digits.substr(0, dot);
  const std::string fraction = digits.substr(dot + 1);

  Text grouped;
  for (std::size_t i = 0; i < whole.size(); ++i) {
    if (i > 0 && (whole.size() - i) % 3 == 0) grouped += thousandsSep;
    grouped += static_cast<char16_t>(whole[i]);
  }
  Text out = grouped + decimalSep + base::FromUtf8(fraction);
  // A value that rounds to zero shows no sign, as the regional formatter does.
  const bool allZero = digits.find_first_not_of("0.") == std::string::npos;
  if (value < 0 && !allZero) out = u"-" + out;
  return out;
}

Text GetProperSizeValue(frame::AppState& app, double value, bool decimal) {
  Text result;
  base::Guarded(
      [&] {
        double shown = 0;
        Text unit;
        if (value > kGiB) {
          shown = value / (decimal ? 1000000000.0 : kGiB);
          unit = u" GB";
        } else if (value > kMiB) {
          shown = value / (decimal ? 1000000.0 : kMiB);
          unit = u" MB";
        } else if (value > kKiB) {
          shown = value / (decimal ? 1000.0 : kKiB);
          unit = u" KB";
        } else if (value < kKiB) {
          shown = value;
          unit = u" B";
        }
        result = FormatTwoDecimals(shown, app.platform.locale) + unit;
      },
      [&](const base::ErrorInfo& e) {
        result = u"0 KB";
        frame::TraceError(app, u"Error in GetProperSizeValue ", e);
      });
  return result;
}

namespace {

// The smallest count i in 1..last whose piece does not fit, or last + 1 when all do:
// what counting up from 1 finds, given that a piece that fits still fits when it is
// shortened. The search starts at the count of the line before (lines of one name are
// mostly alike), gallops away from it and halves the rest, so that a line costs a few
// measurements rather than one per unit: the cost of a text stays linear in its length.
std::size_t FirstMisfit(const std::function<bool(std::size_t)>& fitsAt, std::size_t last,
                        std::size_t guess) {
  if (last == 0) return 1;
  guess = std::clamp<std::size_t>(guess, 1, last);
  // Invariant: every count up to lo fits (0 stands for none measured), hi does not
  // (last + 1 stands for beyond the text).
  std::size_t lo = 0;
  std::size_t hi = last + 1;
  std::size_t step = 1;
  if (fitsAt(guess)) {
    lo = guess;
    while (lo < last) {
      const std::size_t next = std::min(last, lo + step);
      if (!fitsAt(next)) {
        hi = next;
        break;
      }
      lo = next;
      step *= 2;
    }
  } else {
    hi = guess;
    while (hi > 1) {
      const std::size_t next = hi > step ? hi - step : 1;
      if (fitsAt(next)) {
        lo = next;
        break;
      }
      hi = next;
      step *= 2;
    }
  }
  while (hi - lo > 1) {
    const std::size_t mid = lo + (hi - lo) / 2;
    if (fitsAt(mid))
      lo = mid;
    else
      hi = mid;
  }
  return hi;
}

}  // namespace

Text WrapLabelText(TextView text, const FitsFn& fits) {
  // Positions count from 1, as the routine has always counted them.
  const std::size_t n = text.size();
  std::size_t pos = 1;
  std::size_t start = 1;
  std::size_t previous = 1;
  Text out;
  while (pos <= n) {
    if (out.empty()) {
      out = base::Left(text, 30);
      pos = 30;
      continue;
    }
    // The first i for which the i + 30 units from start do not fit.
    const std::size_t i =
        FirstMisfit([&](std::size_t count) { return fits(base::Mid(text, start, count + 30)); },
                    n - pos, previous);
    previous = i;
    out += base::Mid(text, pos + 1, i - 1) + u"\r\n";
    start = pos = pos + i;
    if (pos <= n) {
      out += base::Mid(text, pos, 30);
      pos += 29;
    }
  }
  return out;
}

Text WrapLabelText(TextView text, double limit, const Label& label, const TextMeasure& measure) {
  const double size = label.FontSize();
  const bool bold = label.FontBold();
  return WrapLabelText(
      text, [&](TextView piece) { return measure.Measure(piece, size, bold, 0).width <= limit; });
}

}  // namespace kit
