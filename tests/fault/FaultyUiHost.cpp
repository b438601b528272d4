#include "fault/FaultyUiHost.h"

namespace fault {

using F = Fault;
using platform::UiHandle;

std::uintptr_t FaultyUiHost::StartTimer(std::uint32_t intervalMs, std::function<void()> onTick) {
  // SetTimer fails when the system is out of timers.
  if (plan_.Draw("IUiHost::StartTimer", {F::Error})) return 0;
  return in_.StartTimer(intervalMs, std::move(onTick));
}

platform::UiTextSize FaultyUiHost::MeasureText(const Text& text, const platform::UiFont& font,
                                               double wrapWidth) {
  const auto fault = plan_.Draw("IUiHost::MeasureText", {F::Empty, F::Throw});
  if (fault == F::Throw) plan_.Throw("IUiHost::MeasureText");
  if (fault == F::Empty) return {};  // no device context: nothing measured
  return in_.MeasureText(text, font, wrapWidth);
}

UiHandle FaultyUiHost::CreateForm(const platform::UiWindow& window, platform::IUiEvents& events) {
  const auto fault = plan_.Draw("IUiHost::CreateForm", {F::Error, F::Throw});
  if (fault == F::Throw) plan_.Throw("IUiHost::CreateForm");
  if (fault == F::Error) return 0;
  return in_.CreateForm(window, events);
}

void FaultyUiHost::UpdateForm(UiHandle window, const platform::UiWindow& state,
                              platform::UiChange changes) {
  const auto fault = plan_.Draw("IUiHost::UpdateForm", {F::Error, F::Throw});
  if (fault == F::Throw) plan_.Throw("IUiHost::UpdateForm");
  if (fault == F::Error) return;  // the window kept its old look
  in_.UpdateForm(window, state, changes);
}

UiHandle FaultyUiHost::CreateControl(UiHandle window, UiHandle container,
                                     const platform::UiControl& control) {
  const auto fault = plan_.Draw("IUiHost::CreateControl", {F::Error, F::Throw});
  if (fault == F::Throw) plan_.Throw("IUiHost::CreateControl");
  if (fault == F::Error) return 0;
  return in_.CreateControl(window, container, control);
}

void FaultyUiHost::UpdateControl(UiHandle control, const platform::UiControl& state,
                                 platform::UiChange changes) {
  const auto fault = plan_.Draw("IUiHost::UpdateControl", {F::Error, F::Throw});
  if (fault == F::Throw) plan_.Throw("IUiHost::UpdateControl");
  if (fault == F::Error) return;
  in_.UpdateControl(control, state, changes);
}

std::uint32_t FaultyUiHost::PopupMenu(UiHandle window,
                                      const std::vector<platform::UiMenuItem>& items) {
  const auto fault = plan_.Draw("IUiHost::PopupMenu", {F::Error, F::Throw});
  if (fault == F::Throw) plan_.Throw("IUiHost::PopupMenu");
  if (fault == F::Error) return 0;  // the menu could not be shown: nothing chosen
  return in_.PopupMenu(window, items);
}

UiHandle FaultyUiHost::CreateTip(const platform::UiTip& tip) {
  const auto fault = plan_.Draw("IUiHost::CreateTip", {F::Error, F::Throw});
  if (fault == F::Throw) plan_.Throw("IUiHost::CreateTip");
  if (fault == F::Error) return 0;
  return in_.CreateTip(tip);
}

void FaultyUiHost::TrackTip(UiHandle tip, long x, long y, UiHandle control) {
  if (plan_.Draw("IUiHost::TrackTip", {F::Error})) return;
  in_.TrackTip(tip, x, y, control);
}

void FaultyUiHost::ShowNormal(UiHandle window) {
  const auto fault = plan_.Draw("IUiHost::ShowNormal", {F::Error, F::Throw});
  if (fault == F::Throw) plan_.Throw("IUiHost::ShowNormal");
  if (fault == F::Error) return;
  in_.ShowNormal(window);
}

void FaultyUiHost::ShowPlainTip(const Text& text) {
  if (plan_.Draw("IUiHost::ShowPlainTip", {F::Error})) return;
  in_.ShowPlainTip(text);
}

UiHandle FaultyUiHost::AddTrayIcon(const platform::UiTrayIcon& icon,
                                   std::function<void(int mouseMessage)> onEvent) {
  const auto fault = plan_.Draw("IUiHost::AddTrayIcon", {F::Error, F::Throw});
  if (fault == F::Throw) plan_.Throw("IUiHost::AddTrayIcon");
  if (fault == F::Error) return 0;
  return in_.AddTrayIcon(icon, std::move(onEvent));
}

void FaultyUiHost::ModifyTrayIcon(UiHandle icon, const platform::UiTrayIcon& state) {
  const auto fault = plan_.Draw("IUiHost::ModifyTrayIcon", {F::Error, F::Throw});
  if (fault == F::Throw) plan_.Throw("IUiHost::ModifyTrayIcon");
  if (fault == F::Error) return;
  in_.ModifyTrayIcon(icon, state);
}

void FaultyUiHost::ShowTrayBalloon(UiHandle icon, const platform::UiTrayBalloon& balloon) {
  const auto fault = plan_.Draw("IUiHost::ShowTrayBalloon", {F::Error, F::Throw});
  if (fault == F::Throw) plan_.Throw("IUiHost::ShowTrayBalloon");
  if (fault == F::Error) return;
  in_.ShowTrayBalloon(icon, balloon);
}

}  // namespace fault
