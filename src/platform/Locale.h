#pragma once
#include "base/Text.h"

namespace platform {

using base::Text;

// Regional formats of the user.
class ILocale {
 public:
  virtual ~ILocale() = default;
  virtual Text DateSeparator() = 0;       // "/"
  virtual Text TimeSeparator() = 0;       // ":"
  virtual Text DecimalSeparator() = 0;    // "."
  virtual Text ThousandsSeparator() = 0;  // ","
  virtual Text ShortDateFormat() = 0;     // "M/d/yyyy"
  virtual Text TimeFormat() = 0;          // "h:mm:ss tt"
  virtual Text AmSymbol() = 0;
  virtual Text PmSymbol() = 0;
};

}  // namespace platform
