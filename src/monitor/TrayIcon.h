#pragma once
// The monitor's icon in the notification area: the design's record (owner window,
// icon, tip) kept between calls, and its four operations over the UI host. The host
// delivers the callback message's mouse word (515 double click, 517 right button up)
// and puts the icon back by itself when the taskbar is created again.
#include <functional>

#include "base/Text.h"
#include "platform/UiHost.h"

namespace monitor {

using base::Text;

class TrayIcon {
 public:
  explicit TrayIcon(platform::IUiHost* host) : host_(host) {}
  ~TrayIcon() = default;
  TrayIcon(const TrayIcon&) = delete;
  TrayIcon& operator=(const TrayIcon&) = delete;

  // Adds the icon with the owner window's icon, then sets the tip, as the shell
  // was always called. A second add while one is shown replaces it.
  bool Add(platform::UiHandle owner, const Text& icon, const Text& tip,
           std::function<void(int mouseMessage)> onMouse);
  void SetTip(const Text& tip);
  // A picture key ("tray_running") or an .ico file; the same one again changes nothing.
  void SetIcon(const Text& icon);
  void Remove();

  bool Added() const { return handle_ != 0; }
  const Text& Tip() const { return record_.tip; }
  const Text& Icon() const { return record_.icon; }

  // What the shell keeps of a tip: 63 units and the terminating NUL.
  static constexpr std::size_t kTipUnits = 63;

 private:
  platform::IUiHost* host_;
  platform::UiHandle handle_ = 0;
  platform::UiTrayIcon record_;
};

// The icon's tip: the product's monitor under the standard title, "QVMonitor" under a
// branded one; while a transfer that has a total is drawn, its percentage follows.
Text TrayTipText(const Text& appTitle, bool transferSeen, double totalFileSize, long totalProgress);

}  // namespace monitor
