// kit_box: the product's message box in a program of its own, so that a test can
// answer it from outside as a user (or a screen reader) would.
//
//   kit_box BUTTONS ICON TEXT   shows the box; the exit code is its result
//   kit_box --layout BUTTONS     prints the box's sizes in twips and in pixels, then
//                                closes it (for the tests of the screen's scale)
#include <windows.h>
#undef MessageBox

#include <cstdio>
#include <string>

#include "kit/HostedUi.h"
#include "kit/MesgBox.h"
#include "platform/win32/Win32UiHost.h"

namespace {

base::Text T(const wchar_t* w) {
  std::wstring s(w);
  return base::Text(s.begin(), s.end());
}

base::Text ImageFolder() {
  if (const wchar_t* env = _wgetenv(L"QV_IMAGE_DIR"); env != nullptr && *env != 0) return T(env);
  return {};
}

long PixelWidth(platform::Win32UiHost& host, platform::UiHandle h) {
  RECT r{};
  GetWindowRect(host.WindowHandle(h), &r);
  return r.right - r.left;
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
  platform::Win32UiHost host(ImageFolder());
  kit::HostedUi ui(host);
  const base::Text title = u"Corvane for Windows";

  if (argc >= 3 && std::wstring(argv[1]) == L"--layout") {
    const int buttons = _wtoi(argv[2]);
    kit::MesgBox& box = ui.Box();
    // Read the sizes once the box is up, then close it as its close picture would.
    std::uintptr_t timer = 0;
    timer = host.StartTimer(300, [&] {
      host.StopTimer(timer);
      kit::FormHost& forms = ui.Forms();
      std::printf("tpp=%d\n", host.TwipsPerPixelX());
      std::printf("dpi=%d\n", host.WindowDpi(forms.WindowOf(box)));
      std::printf("formTwips=%.2f\n", box.Width());
      std::printf("formPixels=%ld\n", PixelWidth(host, forms.WindowOf(box)));
      std::printf("buttonTwips=%.2f\n", box.cmdButton(0).Width());
      std::printf("buttonPixels=%ld\n", PixelWidth(host, forms.HandleOf(box.cmdButton(0))));
      std::printf("iconTwips=%.2f\n", box.picIcon(0).Width());
      std::printf("iconPixels=%ld\n", PixelWidth(host, forms.HandleOf(box.picIcon(0))));
      std::fflush(stdout);
      box.MsgClose.RaiseMouseUp({kit::kLeftButton, 0, 0, 0});
    });
    return ui.MessageBox(u"Sizes at this screen's dots per inch", kit::kIconInfo, buttons, title);
  }

  if (argc < 4) {
    std::fprintf(stderr, "usage: kit_box BUTTONS ICON TEXT | kit_box --layout BUTTONS\n");
    return 100;
  }
  return ui.MessageBox(T(argv[3]), _wtoi(argv[2]), _wtoi(argv[1]), title);
}
