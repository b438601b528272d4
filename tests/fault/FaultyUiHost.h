#pragma once
// The UI host with faults. The Windows host is no noexcept boundary: making a window,
// a control, a menu or a tip can fail by its result (0) and can throw (an allocation).
// The loop, modal loops and the destruction of windows pass through untouched: a
// window that failed to go away would leave the fake host calling a form that is gone.
#include "fault/FaultPlan.h"
#include "platform/UiHost.h"

namespace fault {

using base::Text;

// Most calls fail by their result or throw; the result of a failed call is what
// Windows gives (0: no window, no control, nothing chosen), a failed change is left out.
class FaultyUiHost : public Faulty<platform::IUiHost> {
 public:
  using Faulty::Faulty;

  int RunMessageLoop() override { return in_.RunMessageLoop(); }
  void Quit(int exitCode) override { in_.Quit(exitCode); }
  void DoEvents() override { in_.DoEvents(); }
  void AnswerOtherPrograms() override { in_.AnswerOtherPrograms(); }
  // SetTimer fails when the system is out of timers.
  std::uintptr_t StartTimer(std::uint32_t intervalMs, std::function<void()> onTick) override {
    return Maybe<&Interface::StartTimer>(std::uintptr_t{0}, intervalMs, std::move(onTick));
  }
  void StopTimer(std::uintptr_t id) override { in_.StopTimer(id); }
  bool AskYesNo(const Text& text, const Text& title) override { return in_.AskYesNo(text, title); }
  void SetFailureSink(std::function<void(const Text& line)> sink) override {
    in_.SetFailureSink(std::move(sink));
  }

  int TwipsPerPixelX() override { return in_.TwipsPerPixelX(); }
  int TwipsPerPixelY() override { return in_.TwipsPerPixelY(); }
  // Empty: no device context, nothing measured.
  platform::UiTextSize MeasureText(const Text& text, const platform::UiFont& font,
                                   double wrapWidth) override {
    return Maybe<&Interface::MeasureText>({Fault::Empty, Fault::Throw}, platform::UiTextSize{},
                                          text, font, wrapWidth);
  }

  platform::UiHandle CreateForm(const platform::UiWindow& window,
                                platform::IUiEvents& events) override {
    return Maybe<&Interface::CreateForm>(kErrorOrThrow, platform::UiHandle{0}, window, events);
  }
  // A failed update: the window kept its old look.
  void UpdateForm(platform::UiHandle window, const platform::UiWindow& state,
                  platform::UiChange changes) override {
    MaybeDo<&Interface::UpdateForm>(kErrorOrThrow, window, state, changes);
  }
  void DestroyForm(platform::UiHandle window) override { in_.DestroyForm(window); }
  platform::UiHandle CreateControl(platform::UiHandle window, platform::UiHandle container,
                                   const platform::UiControl& control) override {
    return Maybe<&Interface::CreateControl>(kErrorOrThrow, platform::UiHandle{0}, window, container,
                                            control);
  }
  void UpdateControl(platform::UiHandle control, const platform::UiControl& state,
                     platform::UiChange changes) override {
    MaybeDo<&Interface::UpdateControl>(kErrorOrThrow, control, state, changes);
  }
  void FocusControl(platform::UiHandle window, platform::UiHandle control) override {
    in_.FocusControl(window, control);
  }
  void RunModal(platform::UiHandle window) override { in_.RunModal(window); }
  void EndModal(platform::UiHandle window) override { in_.EndModal(window); }
  void BeginDrag(platform::UiHandle window) override { in_.BeginDrag(window); }
  void ShowNormal(platform::UiHandle window) override {
    MaybeDo<&Interface::ShowNormal>(kErrorOrThrow, window);
  }
  std::uintptr_t NativeWindow(platform::UiHandle window) override {
    return in_.NativeWindow(window);
  }
  std::uint32_t PopupMenu(platform::UiHandle window,
                          const std::vector<platform::UiMenuItem>& items) override {
    return Maybe<&Interface::PopupMenu>(kErrorOrThrow, std::uint32_t{0}, window, items);
  }

  platform::UiHandle CreateTip(const platform::UiTip& tip) override {
    return Maybe<&Interface::CreateTip>(kErrorOrThrow, platform::UiHandle{0}, tip);
  }
  void DestroyTip(platform::UiHandle tip) override { in_.DestroyTip(tip); }
  void TrackTip(platform::UiHandle tip, long x, long y, platform::UiHandle control) override {
    MaybeDo<&Interface::TrackTip>({Fault::Error}, tip, x, y, control);
  }
  void ShowPlainTip(const Text& text) override {
    MaybeDo<&Interface::ShowPlainTip>({Fault::Error}, text);
  }
  void HidePlainTip() override { in_.HidePlainTip(); }

  platform::UiHandle AddTrayIcon(const platform::UiTrayIcon& icon,
                                 std::function<void(int mouseMessage)> onEvent) override {
    return Maybe<&Interface::AddTrayIcon>(kErrorOrThrow, platform::UiHandle{0}, icon,
                                          std::move(onEvent));
  }
  void ModifyTrayIcon(platform::UiHandle icon, const platform::UiTrayIcon& state) override {
    MaybeDo<&Interface::ModifyTrayIcon>(kErrorOrThrow, icon, state);
  }
  void RemoveTrayIcon(platform::UiHandle icon) override { in_.RemoveTrayIcon(icon); }
  void ShowTrayBalloon(platform::UiHandle icon, const platform::UiTrayBalloon& balloon) override {
    MaybeDo<&Interface::ShowTrayBalloon>(kErrorOrThrow, icon, balloon);
  }

 private:
  static constexpr std::initializer_list<Fault> kErrorOrThrow = {Fault::Error, Fault::Throw};
};

}  // namespace fault
