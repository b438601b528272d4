#pragma once
// The screen service over a platform UI host: forms become real windows through a
// FormHost, labels are measured in the real font, and balloon tips are real tip
// windows. The program creates one of these over its host (the Windows host in the
// product; the fake in tests) and hands it to the screens.
#include "kit/FormHost.h"
#include "kit/ToolTips.h"
#include "kit/Ui.h"
#include "platform/UiHost.h"

namespace kit {

// Measures with the host's font.
class HostTextMeasure : public TextMeasure {
 public:
  explicit HostTextMeasure(platform::IUiHost& host) : host_(host) {}
  TextSize Measure(TextView text, double fontSize, bool bold, double wrapWidth) const override;

 private:
  platform::IUiHost& host_;
};

// Real tip windows for the tip model: the plan becomes a neutral tip over the
// control's window.
class HostTipBackend : public TipBackend {
 public:
  HostTipBackend(platform::IUiHost& host, FormHost& forms) : host_(host), forms_(forms) {}
  std::uintptr_t Create(const TipPlan& plan) override;
  void Destroy(std::uintptr_t tip) override;
  void Track(std::uintptr_t tip, long x, long y, const Control& window) override;
  void ShowPlain(const Text& text) override;
  void DestroyPlain() override;

  // The neutral tip a plan turns into (the tool as the host knows it).
  static platform::UiTip ToTip(const TipPlan& plan, platform::UiHandle tool);

 private:
  platform::IUiHost& host_;
  FormHost& forms_;
};

namespace detail {
// Built before the Ui base, which keeps a pointer to the tip backend.
struct HostedUiParts {
  explicit HostedUiParts(platform::IUiHost& host) : forms(host), tips(host, forms), measure(host) {}
  FormHost forms;
  HostTipBackend tips;
  HostTextMeasure measure;
};
}  // namespace detail

class HostedUi : private detail::HostedUiParts, public Ui {
 public:
  explicit HostedUi(platform::IUiHost& host);
  ~HostedUi() override;

  void ShowModal(Form& form) override;
  void Show(Form& form) override;
  void ShowNormal(Form& form) override;
  void PopupMenu(Form& form, Menu& menu) override;
  void DoEvents() override;
  std::uintptr_t NativeWindowOf(const Form& form) override;
  int TwipsPerPixelX() override;
  int TwipsPerPixelY() override;
  const TextMeasure& Measure() override { return measure; }

  FormHost& Forms() { return forms; }
  platform::IUiHost& Host() { return host_; }

 private:
  platform::IUiHost& host_;
};

}  // namespace kit
