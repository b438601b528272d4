// Screens on the Windows host driven by the real pointer (SendInput):
// balloon tips on a right click and hover skins (pictured under build/screenshots/kit/), and
// dragging by the caption strip. (Timers under a modal loop are the UI contract's, the real
// keyboard in a modal box the monitor's manners test's.)
#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "KitSupport.h"
#include "reference/bkupjobnotify.h"
#include "kit/WindowLook.h"

namespace kit_e2e {
namespace {

class KitInputTest : public KitScreenTest {
 protected:
  static HWND VisibleBalloon() {
    for (HWND tip : ThreadWindows(L"tooltips_class32")) {
      if (IsWindowVisible(tip) && (GetWindowLongW(tip, GWL_STYLE) & TTS_BALLOON) != 0) return tip;
    }
    return nullptr;
  }

  static std::wstring TipText(HWND tip, HWND tool) {
    wchar_t text[256] = {};
    TOOLINFOW ti{};
    ti.cbSize = sizeof(ti);
    ti.hwnd = tool;
    ti.uId = reinterpret_cast<UINT_PTR>(tool);
    ti.lpszText = text;
    SendMessageW(tip, TTM_GETTEXTW, 256, reinterpret_cast<LPARAM>(&ti));
    return text;
  }

  bool ShownAndPainted(kit::Form& form) {
    const bool ok = ShowAndWait(form);
    HWND w = Window(form);
    // The clicks are real input at screen points: nothing else may stand over the form
    // (a window some other program of the run left showing for a moment).
    if (ok) {
      SetWindowPos(w, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
      SetForegroundWindow(w);
    }
    Pump(host, Ms{300});
    return ok;
  }
};

TEST_F(KitInputTest, ARightClickShowsTheBalloonTipAndALeftClickRemovesIt) {
  reference::bkupjobnotify form(ui, system);
  Attached attached{ui, form};
  ASSERT_TRUE(ShownAndPainted(form));
  ASSERT_EQ(VisibleBalloon(), nullptr);

  HWND cancel = Hwnd(form.cancel);
  Click(cancel, true);
  HWND tip = nullptr;
  ASSERT_TRUE(PumpUntil(host, [&] { return (tip = VisibleBalloon()) != nullptr; }))
      << "a right click on Close showed no balloon";
  // The click lands on the button's picture or on the label over its middle; the tip
  // belongs to the one that heard it.
  std::wstring text = TipText(tip, cancel);
  if (text.empty()) text = TipText(tip, Hwnd(form.cancel.Lbl()));
  EXPECT_EQ(text, L"Exit this screen");
  // The tip stands clear of the window it belongs to (over it, it painted black).
  RECT tipRect;
  RECT formRect;
  GetWindowRect(tip, &tipRect);
  GetWindowRect(Window(form), &formRect);
  RECT overlap;
  EXPECT_FALSE(IntersectRect(&overlap, &tipRect, &formRect))
      << "tip " << tipRect.left << "," << tipRect.top << " form " << formRect.left << ","
      << formRect.top;

  EXPECT_EQ(form.cancel.SkinState(), kit::kSkinHover) << "the pointer on it gives the hover skin";
  Shot("notify-balloon-tip");

  // A left click anywhere on a skinned button removes it, and is a click as well; the
  // pointer took the hover skin along.
  Click(Hwnd(form.viewbkuplog.Lbl()));
  EXPECT_TRUE(PumpUntil(host, [&] { return VisibleBalloon() == nullptr; }))
      << "a left click left the balloon up";
  EXPECT_EQ(form.viewLogRequests, 1);
  EXPECT_TRUE(PumpUntil(host, [&] { return form.viewbkuplog.SkinState() == kit::kSkinHover; }));
  EXPECT_EQ(form.cancel.SkinState(), kit::kSkinNormal);
  Shot("notify-hover");
}

TEST_F(KitInputTest, DraggingTheCaptionStripMovesTheWindowAndTheForm) {
  reference::bkupjobnotify form(ui, system);
  Attached attached{ui, form};
  ASSERT_TRUE(ShownAndPainted(form));
  HWND window = Window(form);
  RECT before;
  GetWindowRect(window, &before);
  const double leftBefore = form.Left();

  // The window follows the pointer inside the platform's move loop, which holds
  // this thread until the button comes up: the hand is another thread.
  RECT strip;
  GetWindowRect(Hwnd(form.lblCapbar), &strip);
  const POINT from{strip.left + 40, (strip.top + strip.bottom) / 2};
  std::atomic<bool> done{false};
  std::thread hand([&] {
    MovePointerTo(from);
    std::this_thread::sleep_for(Ms{200});
    PressAt(from);
    for (int i = 1; i <= 10; ++i) {
      std::this_thread::sleep_for(Ms{40});
      MovePointerTo(POINT{from.x - 12 * i, from.y - 8 * i});
    }
    std::this_thread::sleep_for(Ms{200});
    Release();
    done = true;
  });
  PumpUntil(
      host, [&] { return done.load(); }, Ms{10000});
  hand.join();
  Pump(host, Ms{300});

  RECT after;
  GetWindowRect(window, &after);
  EXPECT_EQ(after.left, before.left - 120);
  EXPECT_EQ(after.top, before.top - 80);
  EXPECT_EQ(form.Left(), leftBefore - 120.0 * host.TwipsPerPixelX());
}

}  // namespace
}  // namespace kit_e2e
