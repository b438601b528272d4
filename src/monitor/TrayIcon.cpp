#include "monitor/TrayIcon.h"

#include "kit/Branding.h"

namespace monitor {

Text TrayTipText(const Text& appTitle, bool transferSeen, double totalFileSize,
                 long totalProgress) {
  Text tip =
      appTitle == kit::kDefaultAppTitle ? Text(u"Corvane for Windows Monitor") : Text(u"QVMonitor");
  if (transferSeen && totalFileSize != 0)
    tip += u" - " + base::FromNumber(totalProgress) + u"% transferred";
  return tip;
}

bool TrayIcon::Add(platform::UiHandle owner, const Text& icon, const Text& tip,
                   std::function<void(int)> onMouse) {
  if (host_ == nullptr) return false;
  if (handle_ != 0) Remove();
  record_.owner = owner;
  record_.icon = icon;
  record_.tip.clear();
  handle_ = host_->AddTrayIcon(record_, std::move(onMouse));
  SetTip(tip);
  return handle_ != 0;
}

void TrayIcon::SetTip(const Text& tip) {
  record_.tip = tip.substr(0, kTipUnits);
  if (host_ != nullptr && handle_ != 0) host_->ModifyTrayIcon(handle_, record_);
}

void TrayIcon::SetIcon(const Text& icon) {
  // The shell is told only of a change: the tick sets the icon of the engine's state
  // every ten seconds.
  if (icon.empty() || icon == record_.icon) return;
  record_.icon = icon;
  if (host_ != nullptr && handle_ != 0) host_->ModifyTrayIcon(handle_, record_);
}

void TrayIcon::Remove() {
  if (host_ != nullptr && handle_ != 0) host_->RemoveTrayIcon(handle_);
  handle_ = 0;
}

}  // namespace monitor
