#pragma once
// The UI host with faults. The Windows host is no noexcept boundary: making a window,
// a control, a menu or a tip can fail by its result (0) and can throw (an allocation).
// The loop, modal loops and the destruction of windows pass through untouched: a
// window that failed to go away would leave the fake host calling a form that is gone.
#include "fault/FaultPlan.h"
#include "platform/UiHost.h"

namespace fault {

using base::Text;

class FaultyUiHost : public platform::IUiHost {
 public:
  FaultyUiHost(platform::IUiHost& inner, FaultPlan& plan) : in_(inner), plan_(plan) {}

  int RunMessageLoop() override { return in_.RunMessageLoop(); }
  void Quit(int exitCode) override { in_.Quit(exitCode); }
  void DoEvents() override { in_.DoEvents(); }
  void AnswerOtherPrograms() override { in_.AnswerOtherPrograms(); }
  std::uintptr_t StartTimer(std::uint32_t intervalMs, std::function<void()> onTick) override;
  void StopTimer(std::uintptr_t id) override { in_.StopTimer(id); }
  bool AskYesNo(const Text& text, const Text& title) override { return in_.AskYesNo(text, title); }
  void SetFailureSink(std::function<void(const Text& line)> sink) override {
    in_.SetFailureSink(std::move(sink));
  }

  int TwipsPerPixelX() override { return in_.TwipsPerPixelX(); }
  int TwipsPerPixelY() override { return in_.TwipsPerPixelY(); }
  platform::UiTextSize MeasureText(const Text& text, const platform::UiFont& font,
                                   double wrapWidth) override;

  platform::UiHandle CreateForm(const platform::UiWindow& window,
                                platform::IUiEvents& events) override;
  void UpdateForm(platform::UiHandle window, const platform::UiWindow& state,
                  platform::UiChange changes) override;
  void DestroyForm(platform::UiHandle window) override { in_.DestroyForm(window); }
  platform::UiHandle CreateControl(platform::UiHandle window, platform::UiHandle container,
                                   const platform::UiControl& control) override;
  void UpdateControl(platform::UiHandle control, const platform::UiControl& state,
                     platform::UiChange changes) override;
  void FocusControl(platform::UiHandle window, platform::UiHandle control) override {
    in_.FocusControl(window, control);
  }
  void RunModal(platform::UiHandle window) override { in_.RunModal(window); }
  void EndModal(platform::UiHandle window) override { in_.EndModal(window); }
  void BeginDrag(platform::UiHandle window) override { in_.BeginDrag(window); }
  void ShowNormal(platform::UiHandle window) override;
  std::uintptr_t NativeWindow(platform::UiHandle window) override {
    return in_.NativeWindow(window);
  }
  std::uint32_t PopupMenu(platform::UiHandle window,
                          const std::vector<platform::UiMenuItem>& items) override;

  platform::UiHandle CreateTip(const platform::UiTip& tip) override;
  void DestroyTip(platform::UiHandle tip) override { in_.DestroyTip(tip); }
  void TrackTip(platform::UiHandle tip, long x, long y, platform::UiHandle control) override;
  void ShowPlainTip(const Text& text) override;
  void HidePlainTip() override { in_.HidePlainTip(); }

  platform::UiHandle AddTrayIcon(const platform::UiTrayIcon& icon,
                                 std::function<void(int mouseMessage)> onEvent) override;
  void ModifyTrayIcon(platform::UiHandle icon, const platform::UiTrayIcon& state) override;
  void RemoveTrayIcon(platform::UiHandle icon) override { in_.RemoveTrayIcon(icon); }
  void ShowTrayBalloon(platform::UiHandle icon, const platform::UiTrayBalloon& balloon) override;

 private:
  platform::IUiHost& in_;
  FaultPlan& plan_;
};

}  // namespace fault
