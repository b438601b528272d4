#pragma once
// Standard-library versions of the services that have one: the clock, a fixed
// United States locale, and what a portable program can tell of its system.
#include "platform/Clock.h"
#include "platform/Locale.h"
#include "platform/SystemInfo.h"

namespace platform {

class PortableClock : public IClock {
 public:
  base::DateTime Now() override;
  std::uint64_t TickMs() override;
  void Sleep(std::uint32_t ms) override;
};

class PortableLocale : public ILocale {
 public:
  Text DateSeparator() override { return u"/"; }
  Text TimeSeparator() override { return u":"; }
  Text DecimalSeparator() override { return u"."; }
  Text ThousandsSeparator() override { return u","; }
  Text ShortDateFormat() override { return u"M/d/yyyy"; }
  Text TimeFormat() override { return u"h:mm:ss tt"; }
  Text AmSymbol() override { return u"AM"; }
  Text PmSymbol() override { return u"PM"; }
};

}  // namespace platform
