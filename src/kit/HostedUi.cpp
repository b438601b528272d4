#include "kit/HostedUi.h"

#include "kit/MesgBox.h"

namespace kit {

TextSize HostTextMeasure::Measure(TextView text, double fontSize, bool bold,
                                  double wrapWidth) const {
  platform::UiTextSize size = host_.MeasureText(Text(text), {fontSize, bold}, wrapWidth);
  return {size.width, size.height};
}

platform::UiTip HostTipBackend::ToTip(const TipPlan& plan, platform::UiHandle tool) {
  platform::UiTip tip;
  tip.tool = tool;
  tip.windowClass = plan.windowClass;
  tip.style = plan.style;
  tip.toolFlags = plan.toolFlags;
  tip.text = plan.text;
  tip.title = plan.title;
  tip.icon = plan.icon;
  if (plan.font) {
    tip.fontName = plan.font->name;
    tip.fontSize = plan.font->size;
  }
  for (const TipMessage& m : plan.messages) tip.messages.push_back({m.message, m.wParam, m.lParam});
  return tip;
}

std::uintptr_t HostTipBackend::Create(const TipPlan& plan) {
  if (plan.parent == nullptr) return 0;
  const platform::UiHandle tool = forms_.HandleOf(*plan.parent);
  if (tool == 0) return 0;
  return host_.CreateTip(ToTip(plan, tool));
}

void HostTipBackend::Destroy(std::uintptr_t tip) {
  host_.DestroyTip(static_cast<platform::UiHandle>(tip));
}

void HostTipBackend::Track(std::uintptr_t tip, long x, long y, const Control& window) {
  host_.TrackTip(static_cast<platform::UiHandle>(tip), x, y, forms_.HandleOf(window));
}

void HostTipBackend::ShowPlain(const Text& text) { host_.ShowPlainTip(text); }

void HostTipBackend::DestroyPlain() { host_.HidePlainTip(); }

HostedUi::HostedUi(platform::IUiHost& host) : detail::HostedUiParts(host), Ui(&tips), host_(host) {}

HostedUi::~HostedUi() {
  // The message box belongs to the Ui base, which goes after the parts: let go of
  // every form (and its window) while all of them are still alive.
  Tips().Remove();
  forms.DetachAll();
}

void HostedUi::ShowModal(Form& form) { forms.ShowModal(form); }

void HostedUi::Show(Form& form) { forms.Show(form); }

void HostedUi::ShowNormal(Form& form) { forms.ShowNormal(form); }

void HostedUi::PopupMenu(Form& form, Menu& menu) { forms.PopupMenu(form, menu); }

void HostedUi::DoEvents() { host_.DoEvents(); }

std::uintptr_t HostedUi::NativeWindowOf(const Form& form) {
  const platform::UiHandle window = forms.WindowOf(form);
  return window == 0 ? 0 : host_.NativeWindow(window);
}

int HostedUi::TwipsPerPixelX() { return host_.TwipsPerPixelX(); }

int HostedUi::TwipsPerPixelY() { return host_.TwipsPerPixelY(); }

}  // namespace kit
