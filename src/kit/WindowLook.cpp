#include "kit/WindowLook.h"

#include <cmath>
#include <limits>

#include "frame/Logs.h"
#include "kit/Menu.h"

namespace kit {

long RoundHalfEven(double value) {
  if (!std::isfinite(value)) return 0;
  constexpr double kMax = static_cast<double>(std::numeric_limits<long>::max());
  if (value >= kMax) return std::numeric_limits<long>::max();
  if (value <= -kMax) return std::numeric_limits<long>::min();
  double whole = std::floor(value);
  double fraction = value - whole;
  long n = static_cast<long>(whole);
  if (fraction > 0.5) return n + 1;
  if (fraction < 0.5) return n;
  return (n % 2 == 0) ? n : n + 1;
}

// ---- Outline ----------------------------------------------------------------

bool clsRounder::IsNamedForm(TextView formName) {
  return formName == u"AboutQVWIN" || formName == u"frmUpdatePassword" || formName == u"MesgBox";
}

RoundRegion clsRounder::RoundForm(Form& form, int twipsPerPixelX, int twipsPerPixelY) {
  // Measured in pixels whatever the form's own units are.
  const double widthPx = twipsPerPixelX > 0 ? form.Width() / twipsPerPixelX : form.Width() / 15.0;
  const double heightPx =
      twipsPerPixelY > 0 ? form.Height() / twipsPerPixelY : form.Height() / 15.0;
  const double extra = IsNamedForm(form.Name()) ? 1.0 : 1.25;
  RoundRegion region{0, 0, RoundHalfEven(widthPx + extra), RoundHalfEven(heightPx + 0.75), 5, 5};
  form.SetRegion(region);
  return region;
}

// ---- Frame ------------------------------------------------------------------

FrameChange SetFormFrame(Form& form, bool showFrame) {
  FrameChange change;
  if (!showFrame) {
    change.clearBits = kFrameStyleBits;
    form.SetFrameless(true, form.Caption());
    return change;
  }
  change.addBits = kStyleCaption;
  if (form.ControlBox()) change.addBits |= kStyleSysMenu;
  if (form.MaxButton()) change.addBits |= kStyleMaximizeBox;
  if (form.MinButton()) change.addBits |= kStyleMinimizeBox;
  Text kept = form.KeptCaption();
  form.SetFrameless(false, Text());
  if (!kept.empty()) form.SetCaption(kept);
  return change;
}

// ---- Skin -------------------------------------------------------------------

Text StandardSkinKey(int state) {
  switch (state) {
    case kSkinNormal:
    case kSkinDisabled: return u"button_enb";
    case kSkinHover: return u"button_ovr";
    default: return Text();
  }
}

void ApplySkin(Picture& picture, Label& label, int state, const Text& key) {
  if (state != kSkinNormal && state != kSkinHover && state != kSkinDisabled) return;
  const Text wanted = key.empty() ? StandardSkinKey(state) : key;
  if (picture.PictureKey() != wanted) picture.SetPictureKey(wanted);
  if (picture.Kind() == ControlKind::PictureButton) {
    static_cast<PictureButton&>(picture).SetSkinState(state);
  }
  label.SetForeColor(state == kSkinHover ? kWhite : label.DesignForeColor());
  label.SetEnabled(state != kSkinDisabled);
}

void ApplySkin(PictureButton& button, int state, const Text& key) {
  ApplySkin(button, button.Lbl(), state, key);
}

// ---- Work area and placement -------------------------------------------------

WorkArea GetWorkArea(platform::ISystemInfo& system, bool inTwips) {
  platform::Rect r = system.WorkArea();
  WorkArea area{static_cast<double>(r.left), static_cast<double>(r.top),
                static_cast<double>(r.Width()), static_cast<double>(r.Height())};
  if (inTwips) {
    const double x = system.TwipsPerPixelX();
    const double y = system.TwipsPerPixelY();
    area = {area.left * x, area.top * y, area.width * x, area.height * y};
  }
  return area;
}

void PlaceBottomRight(Form& form, const WorkArea& area) {
  form.Move(area.left + area.width - form.Width(), area.top + area.height - form.Height(),
            form.Width(), form.Height());
}

// ---- Scaling ------------------------------------------------------------------

double DotsPerInch(int twipsPerPixel) { return twipsPerPixel > 0 ? 1440.0 / twipsPerPixel : 96.0; }

namespace {

bool Scales(ControlKind kind) {
  switch (kind) {
    case ControlKind::Menu:
    case ControlKind::MenuItem:
    case ControlKind::Timer:
    case ControlKind::ImageList:
    case ControlKind::Form: return false;
    default: return true;
  }
}

const ResizeKeep* FindKeep(std::span<const ResizeKeep> keeps, const Control& c) {
  for (const ResizeKeep& k : keeps) {
    if (k.index == c.Index() && k.name == c.Name()) return &k;
  }
  return nullptr;
}

}  // namespace

bool ResizeControl(Form& form, int twipsPerPixelX, std::span<const ResizeKeep> keeps,
                   const std::function<void(double factor)>& specials) {
  const double dpi = DotsPerInch(twipsPerPixelX);
  if (dpi <= 96.0) return false;
  const double factor = dpi / 96.0;

  form.Move(form.Left(), form.Top(), form.Width() / factor, form.Height() / factor);
  for (Control* c : form.Controls()) {
    if (!Scales(c->Kind())) continue;
    const ResizeKeep* keep = FindKeep(keeps, *c);
    Layout l = c->GetLayout();
    if (keep == nullptr || !keep->height) l.height /= factor;
    if (keep == nullptr || !keep->left) l.left /= factor;
    if (keep == nullptr || !keep->top) l.top /= factor;
    if (keep == nullptr || !keep->width) l.width /= factor;
    c->SetLayout(l);
  }
  if (specials) specials(factor);
  return true;
}

// ---- Help -------------------------------------------------------------------

void ShowHelpFile(frame::AppState& app, const Form& window, const Text& topic) {
  base::Guarded(
      [&] {
        frame::WriteTrace(app, u"Enter ShowHelpFile Monitor");
        // The design's topics carry the file and the page in one string; the
        // platform's help takes them apart.
        if (app.platform.help != nullptr) {
          std::size_t sep = topic.find(u"::");
          Text file = sep == Text::npos ? topic : topic.substr(0, sep);
          Text page = sep == Text::npos ? Text() : topic.substr(sep + 2);
          app.platform.help->Show(file, page);
        }
        frame::WriteTrace(app, u"Exit ShowHelpFile Monitor");
      },
      [&](const base::ErrorInfo& error) {
        frame::TraceError(app, u"Error Reason :", error,
                          u"in procedure ShowHelpFile of Module modGeneral");
      });
}

}  // namespace kit
