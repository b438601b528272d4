// A failure that escapes the handling of a message under the Windows host: the host
// writes one line (what was being handled, the message, the error) to its failure
// sink, lets the platform's default procedure have the message, and the window
// goes on working. The events here fail on purpose, below the screen kit, whose
// own handlers never let a failure reach the host.
#include <gtest/gtest.h>

#include <stdexcept>

#include "KitSupport.h"
#include "base/Guarded.h"
#include "platform/win32/Win32UiHost.h"

namespace kit_e2e {
namespace {

using platform::UiHandle;

// Every handler fails the first time it is called and counts the calls after that.
class FailingEvents : public platform::IUiEvents {
 public:
  void OnMouse(UiHandle, UiHandle control, const platform::UiMouseEvent& e) override {
    if (e.what != platform::UiMouse::Down) return;
    if (!mouseFailed) {
      mouseFailed = true;
      throw std::out_of_range("row 7");
    }
    downs.push_back(control);
  }
  bool OnKey(UiHandle, const platform::UiKeyEvent& e) override {
    if (e.what == platform::UiKey::Press && !keyFailed) {
      keyFailed = true;
      throw base::Failure(5, "Invalid procedure call or argument");
    }
    return true;
  }
  void OnTextChanged(UiHandle, UiHandle, const base::Text& text) override { typed = text; }
  void OnCloseRequest(UiHandle) override {
    ++closeRequests;
    throw std::runtime_error("the form could not be unloaded");
  }

  bool mouseFailed = false;
  bool keyFailed = false;
  std::vector<UiHandle> downs;
  base::Text typed;
  int closeRequests = 0;
};

platform::UiControl Control(platform::UiKind kind, const char16_t* name, const char16_t* caption,
                            platform::UiRect rect) {
  platform::UiControl c;
  c.kind = kind;
  c.name = name;
  c.caption = caption;
  c.rect = rect;
  return c;
}

class KitFailureTest : public ::testing::Test {
 protected:
  void SetUp() override {
    host.SetFailureSink([this](const base::Text& line) { lines.push_back(W(line)); });
    platform::UiWindow w;
    w.name = u"frmFailing";
    w.caption = u"Failing handlers";
    w.rect = {1500, 1500, 4500, 3000};
    w.visible = true;
    form = host.CreateForm(w, events);
    ASSERT_NE(form, 0u);
    label = host.CreateControl(
        form, 0,
        Control(platform::UiKind::Label, u"lblTarget", u"Click here", {120, 120, 2000, 300}));
    box = host.CreateControl(
        form, 0, Control(platform::UiKind::TextBox, u"txtInput", u"", {120, 600, 2000, 315}));
    ASSERT_NE(label, 0u);
    ASSERT_NE(box, 0u);
    Pump(host, Ms{200});
  }

  void TearDown() override {
    if (form != 0) host.DestroyForm(form);
  }

  static void Click(HWND hwnd) {
    SendMessageW(hwnd, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
    SendMessageW(hwnd, WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
  }

  platform::Win32UiHost host{ImageFolder()};
  FailingEvents events;
  std::vector<std::wstring> lines;
  UiHandle form = 0;
  UiHandle label = 0;
  UiHandle box = 0;
};

TEST_F(KitFailureTest, AFailingHandlerOfAFormOrControlIsTracedAndTheWindowGoesOn) {
  HWND window = host.WindowHandle(form);
  Click(window);
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_EQ(lines[0],
            L"UI host: form \"frmFailing\", message 513: Subscript out of range (error 9)");
  Click(window);
  EXPECT_EQ(events.downs, (std::vector<UiHandle>{0}));

  // A control's own procedure (a subclass) reports the same way.
  events.mouseFailed = false;
  HWND target = host.WindowHandle(label);
  Click(target);
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[1],
            L"UI host: control \"lblTarget\", message 513: Subscript out of range (error 9)");
  Click(target);
  EXPECT_EQ(events.downs, (std::vector<UiHandle>{0, label}));
  EXPECT_EQ(GetCapture(), nullptr) << "the failed press left the mouse captured";
}

// A key, a close request and a timer tick whose handlers fail: each traced once, and the
// key still reaches its box, the window stays to the model, the timer goes on.
TEST_F(KitFailureTest, AFailingKeyCloseOrTimerHandlerIsTracedAndItsWorkGoesOn) {
  HWND edit = host.WindowHandle(box);
  host.FocusControl(form, box);
  PostMessageW(edit, WM_CHAR, L'x', 0);
  PostMessageW(edit, WM_CHAR, L'y', 0);
  EXPECT_TRUE(PumpUntil(host, [&] { return events.typed == u"xy"; }))
      << "the box holds \"" << base::ToUtf8(events.typed) << "\"";
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_EQ(lines[0],
            L"UI host: key for form \"frmFailing\", message 258: "
            L"Invalid procedure call or argument (error 5)");

  HWND window = host.WindowHandle(form);
  SendMessageW(window, WM_CLOSE, 0, 0);
  EXPECT_EQ(events.closeRequests, 1);
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[1],
            L"UI host: form \"frmFailing\", message 16: the form could not be unloaded (error 5)");
  EXPECT_TRUE(IsWindow(window)) << "the default procedure closed the window";
  EXPECT_TRUE(IsWindowVisible(window));

  int ticks = 0;
  const std::uintptr_t timer = host.StartTimer(20, [&] {
    if (++ticks == 1) throw std::bad_alloc();
  });
  ASSERT_NE(timer, 0u);
  EXPECT_TRUE(PumpUntil(host, [&] { return ticks >= 3; }));
  host.StopTimer(timer);
  ASSERT_EQ(lines.size(), 3u);
  EXPECT_EQ(lines[2], L"UI host: the host window, message 275: Out of memory (error 7)");
}

}  // namespace
}  // namespace kit_e2e
