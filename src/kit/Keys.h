#pragma once
// The keys a form gives a meaning to, as data: which key, on its way down or up,
// with Alt or not, and when the rule holds (only while a control has the focus, or
// only until a control has had it once). The form routes every key through its
// rules in one place (Form::DeliverKeyDown/Up), before the designed handlers and the
// kit's own navigation (Tab, arrows in an option group).
#include <functional>

#include "kit/Control.h"

namespace kit {

enum class KeyStroke { Down, Up };

// A key as the design names it: a virtual key code (letters by their upper-case code),
// and whether Alt is held.
struct Key {
  int code = 0;
  bool alt = false;
};

inline constexpr Key kEnter{kKeyReturn};
inline constexpr Key kEscape{kKeyEscape};
inline constexpr Key kDelete{kKeyDelete};
inline constexpr Key kSpace{kKeySpace};

// Alt with a letter, either case ("Alt+V or Alt+v").
constexpr Key Alt(char16_t letter) {
  const int upper = letter >= u'a' && letter <= u'z' ? letter - u'a' + u'A' : letter;
  return {upper, true};
}

struct KeyRule {
  KeyStroke stroke = KeyStroke::Down;
  Key key;
  // Held only while this control has the focus; it then comes before the form's
  // preview, so that a focused button answers Enter for itself.
  const Control* focus = nullptr;
  // Held only until this control has had the focus once (since the form was loaded).
  const Control* untilFocused = nullptr;
  std::function<void()> action;

  // Whether the rule answers a key of `stroke` with `args` on a form whose focused
  // control is `active`.
  bool Matches(KeyStroke s, const KeyArgs& args, const Control* active) const;
};

}  // namespace kit
