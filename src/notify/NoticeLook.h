#pragma once
// What the three notices of the tick share: they come up over the other windows and
// leave the keyboard where it was, with a help and a close picture in their corner.
#include "kit/Controls.h"
#include "kit/Form.h"

namespace notify {

inline void LookAsNotice(kit::Form& form, kit::Picture& help, kit::Picture& close) {
  form.SetTopMost(true);
  form.SetShowWithoutActivation(true);
  help.SetCaption(u"Help");
  help.SetToolTipText(u"Help");
  close.SetCaption(u"Close");
  close.SetToolTipText(u"Close");
}

}  // namespace notify
