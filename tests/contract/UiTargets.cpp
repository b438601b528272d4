#include "UiTargets.h"

#include <algorithm>

#include "platform/fake/FakeUiHost.h"

#if QV_HAVE_WIN32
#include "platform/win32/Win32UiHost.h"
#include "platform/win32/Win32UiProbe.h"
#endif

namespace contract {
namespace {

using platform::UiHandle;

class FakeUiWorld : public UiWorld {
 public:
  platform::IUiHost& Host() override { return fake_; }
  void Pump() override {}

  UiSeen Read(UiHandle h) override {
    if (auto f = fake_.forms.find(h); f != fake_.forms.end()) {
      const platform::UiWindow& s = f->second.state;
      return {true, s.visible, s.enabled, false, fake_.activeWindow == h, s.topmost, s.caption};
    }
    auto c = fake_.controls.find(h);
    if (c == fake_.controls.end()) return {};
    const platform::UiControl& s = c->second.state;
    const bool focused = fake_.forms.at(c->second.window).focus == h;
    UiSeen seen{true, fake_.Shown(h), s.enabled, focused, false, false, s.caption, s.check};
    if (s.kind == platform::UiKind::ComboBox) {
      seen.items = s.items;
      seen.listIndex = s.listIndex;
    }
    for (int i = 0; i < c->second.RowCount(); ++i) {
      seen.items.push_back(c->second.Cell(i, 0));
      seen.rowImages.push_back(!s.rowSource && !s.rows[static_cast<size_t>(i)].image.empty());
      seen.rowsInView.push_back(true);  // the fake has no page: every row shows
    }
    return seen;
  }

  void Click(UiHandle control) override {
    const UiHandle window = fake_.controls.at(control).window;
    fake_.Events(window)->OnClick(window, control);
  }
  void Select(UiHandle combo, int index) override {
    const UiHandle window = fake_.controls.at(combo).window;
    fake_.Events(window)->OnSelect(window, combo, index);
  }
  void RequestClose(UiHandle window) override { fake_.Events(window)->OnCloseRequest(window); }
  void Activate(UiHandle window) override { fake_.activeWindow = window; }
  void DuringModal(std::function<void()> fn) override {
    fake_.onModal = [fn](UiHandle) { fn(); };
  }
  bool TrayShown(UiHandle icon) override { return fake_.trayIcons.count(icon) != 0; }
  int BalloonsShown(UiHandle icon) override {
    if (fake_.trayIcons.count(icon) == 0) return 0;
    return static_cast<int>(std::count_if(fake_.balloons.begin(), fake_.balloons.end(),
                                          [&](const auto& b) { return b.first == icon; }));
  }

 private:
  platform::FakeUiHost fake_;
};

#if QV_HAVE_WIN32
// The Windows host, read back and played through the platform's own calls
// (platform/win32/Win32UiProbe).
class Win32UiWorld : public UiWorld {
 public:
  platform::IUiHost& Host() override { return host_; }
  void Pump() override {
    for (int i = 0; i < 5; ++i) host_.DoEvents();
  }
  UiSeen Read(platform::UiHandle h) override {
    const platform::win32::ProbeState p = probe_.Read(h);
    return {p.exists, p.visible, p.enabled, p.focused,   p.active,    p.topmost,
            p.text,   p.check,   p.items,   p.listIndex, p.rowImages, p.rowsInView};
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
#endif

}  // namespace

std::vector<UiTarget> UiTargets() {
  std::vector<UiTarget> targets{{"fake", [] { return std::make_unique<FakeUiWorld>(); }}};
#if QV_HAVE_WIN32
  targets.push_back({"win32", [] { return std::make_unique<Win32UiWorld>(); }});
#endif
  return targets;
}

}  // namespace contract
