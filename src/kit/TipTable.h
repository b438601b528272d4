#pragma once
// A screen's balloon tip texts. The kit knows no texts of its own: each screen folder
// keeps the table of its forms, and a form names it (Form::SetTipTexts).
#include <span>

#include "base/Text.h"

namespace kit {

using base::Text;
using base::TextView;

struct TipText {
  const char16_t* key;  // "form.control"
  const char16_t* text;
};
using TipTable = std::span<const TipText>;

// The text under `key`, without regard to case; "" when absent.
Text FindTipText(TipTable table, TextView key);

}  // namespace kit
