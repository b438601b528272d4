#include "kit/LabelText.h"

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

Text WrapLabelText(TextView text, const FitsFn& fits) {
  // Positions count from 1, as the routine has always counted them.
  const std::size_t n = text.size();
  std::size_t pos = 1;
  std::size_t start = 1;
  Text out;
  while (pos <= n) {
    if (out.empty()) {
      out = base::Left(text, 30);
      pos = 30;
      continue;
    }
    std::size_t i = 1;
    for (; i <= n - pos; ++i) {
      if (!fits(base::Mid(text, start, i + 30))) break;
    }
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
