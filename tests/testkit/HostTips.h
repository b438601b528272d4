#pragma once
// The balloon tip a right click brings up, read where the user would see it: on the
// fake UI host, as the kit handed it over.
#include <optional>

#include "base/Text.h"
#include "platform/fake/FakeUiHost.h"

namespace testkit {

struct ShownTip {
  base::Text text;
  platform::UiHandle tool = 0;  // the control the tip belongs to
};

// A right button up on `control` of the shown form `form`; the one tip on the host
// afterwards (none when there is none, or more than one).
inline std::optional<ShownTip> RightClickTip(platform::FakeUiHost& host, const base::Text& form,
                                             const base::Text& control) {
  const platform::UiHandle window = host.FindForm(form);
  const platform::UiHandle target = host.FindControl(window, control);
  if (window == 0 || target == 0) return std::nullopt;
  host.Events(window)->OnMouse(window, target,
                               {platform::UiMouse::Up, /* the right button */ 2, 0, 60, 60});
  if (host.tips.size() != 1) return std::nullopt;
  const platform::UiTip& tip = host.tips.begin()->second.tip;
  return ShownTip{tip.text, tip.tool};
}

}  // namespace testkit
