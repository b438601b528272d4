#pragma once
// The user's regional formats, read afresh at every call: the user may change them
// while the program runs.
#include "platform/Locale.h"

namespace platform {

class Win32Locale : public ILocale {
 public:
  Text DateSeparator() noexcept override;
  Text TimeSeparator() noexcept override;
  Text DecimalSeparator() noexcept override;
  Text ThousandsSeparator() noexcept override;
  Text ShortDateFormat() noexcept override;
  Text TimeFormat() noexcept override;
  Text AmSymbol() noexcept override;
  Text PmSymbol() noexcept override;
};

}  // namespace platform
