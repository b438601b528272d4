// The Windows UI host as a target of the UI contract: read back and played through
// the platform's own calls (platform/win32/Win32UiProbe).
#if QV_HAVE_WIN32
#include "UiTargets.h"
#include "platform/win32/Win32UiHost.h"
#include "platform/win32/Win32UiProbe.h"

namespace contract {

namespace {

class Win32UiWorld : public UiWorld {
 public:
  platform::IUiHost& Host() override { return host_; }
  void Pump() override {
    for (int i = 0; i < 5; ++i) host_.DoEvents();
  }
  UiSeen Read(platform::UiHandle h) override {
    const platform::win32::ProbeState p = probe_.Read(h);
    UiSeen seen;
    seen.exists = p.exists;
    seen.visible = p.visible;
    seen.enabled = p.enabled;
    seen.focused = p.focused;
    seen.active = p.active;
    seen.topmost = p.topmost;
    seen.text = p.text;
    seen.check = p.check;
    seen.items = p.items;
    seen.listIndex = p.listIndex;
    seen.rowImages = p.rowImages;
    seen.rowsInView = p.rowsInView;
    return seen;
  }
  void Click(platform::UiHandle control) override { probe_.Click(control); }
  void Select(platform::UiHandle combo, int index) override { probe_.Select(combo, index); }
  void RequestClose(platform::UiHandle window) override { probe_.RequestClose(window); }
  void Activate(platform::UiHandle window) override {
    probe_.Activate(window);
    Pump();
  }
  void DuringModal(std::function<void()> fn) override {
    auto once = std::make_shared<std::uintptr_t>(0);
    *once = host_.StartTimer(10, [this, once, fn] {
      host_.StopTimer(*once);
      fn();
    });
  }
  bool TrayShown(platform::UiHandle icon) override { return host_.TrayIconShown(icon); }
  int BalloonsShown(platform::UiHandle icon) override { return host_.TrayBalloonsShown(icon); }

 private:
  platform::Win32UiHost host_;
  platform::win32::UiProbe probe_{host_};
};

}  // namespace

std::unique_ptr<UiWorld> MakeWin32UiWorld() { return std::make_unique<Win32UiWorld>(); }

}  // namespace contract
#endif
