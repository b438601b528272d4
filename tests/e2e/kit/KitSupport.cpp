#include "KitSupport.h"

#include "Screenshot.h"

#include <algorithm>
#include <cstdlib>
#include <thread>

namespace kit_e2e {

base::Text T(const std::wstring& w) { return base::Text(w.begin(), w.end()); }
std::wstring W(const base::Text& t) { return std::wstring(t.begin(), t.end()); }

base::Text ImageFolder() {
  if (const wchar_t* env = _wgetenv(L"QV_IMAGE_DIR"); env != nullptr && *env != 0) return T(env);
  return T(e2e::WindowsPathOf(QV_KIT_IMAGES));
}

std::vector<HWND> ThreadWindows(const wchar_t* className) {
  struct Search {
    const wchar_t* cls;
    std::vector<HWND> found;
  } search{className, {}};
  EnumThreadWindows(
      GetCurrentThreadId(),
      [](HWND hwnd, LPARAM lp) -> BOOL {
        auto* s = reinterpret_cast<Search*>(lp);
        wchar_t name[64] = {};
        GetClassNameW(hwnd, name, 64);
        if (_wcsicmp(name, s->cls) == 0) s->found.push_back(hwnd);
        return TRUE;
      },
      reinterpret_cast<LPARAM>(&search));
  return search.found;
}

namespace {

// Where the last move put the pointer, in SendInput's absolute units. The button
// events carry it too: under Wine a button event without a place can take the place
// from before the move (the previous test left the pointer elsewhere) and so reach
// another window.
LONG lastX = 0;
LONG lastY = 0;

void Send(DWORD flags) {
  INPUT in{};
  in.type = INPUT_MOUSE;
  in.mi.dwFlags = flags | MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE;
  in.mi.dx = lastX;
  in.mi.dy = lastY;
  SendInput(1, &in, sizeof(in));
}

}  // namespace

void MovePointerTo(HWND hwnd) {
  RECT r;
  GetWindowRect(hwnd, &r);
  MovePointerTo(POINT{(r.left + r.right) / 2, (r.top + r.bottom) / 2});
}

void MovePointerTo(POINT at) {
  const int w = std::max(2, GetSystemMetrics(SM_CXSCREEN));
  const int h = std::max(2, GetSystemMetrics(SM_CYSCREEN));
  // A real move through the input queue, so that the window under the pointer hears
  // of it as it would of the user's hand.
  lastX = static_cast<LONG>((at.x * 65535LL) / (w - 1));
  lastY = static_cast<LONG>((at.y * 65535LL) / (h - 1));
  Send(0);
  // The move is done when the system reports the pointer there.
  e2e::WaitUntil(
      [&] {
        POINT pt{};
        return GetCursorPos(&pt) && pt.x == at.x && pt.y == at.y;
      },
      Ms{1000}, Ms{10});
}

void PressAt(POINT at) {
  MovePointerTo(at);
  Send(MOUSEEVENTF_LEFTDOWN);
}

void Click(HWND hwnd, bool right) {
  MovePointerTo(hwnd);
  Send(right ? MOUSEEVENTF_RIGHTDOWN : MOUSEEVENTF_LEFTDOWN);
  Send(right ? MOUSEEVENTF_RIGHTUP : MOUSEEVENTF_LEFTUP);
}

void Press(HWND hwnd) {
  MovePointerTo(hwnd);
  Send(MOUSEEVENTF_LEFTDOWN);
}

void Release() { Send(MOUSEEVENTF_LEFTUP); }

bool PumpUntil(platform::IUiHost& host, const std::function<bool()>& done, Ms timeout) {
  const auto end = std::chrono::steady_clock::now() + timeout;
  while (std::chrono::steady_clock::now() < end) {
    host.DoEvents();
    if (done()) return true;
    std::this_thread::sleep_for(Ms{20});
  }
  host.DoEvents();
  return done();
}

void Pump(platform::IUiHost& host, Ms time) {
  PumpUntil(
      host, [] { return false; }, time);
}

bool KitScreenTest::ShowAndWait(kit::Form& form) {
  ui.Show(form);
  return PumpUntil(host, [&] { return Window(form) != nullptr && IsWindowVisible(Window(form)); });
}

void KitScreenTest::Shot(const std::string& name) {
  Pump(host, Ms{400});
  if (!e2e::Screenshot(name) && e2e::RunningUnderWine()) ADD_FAILURE() << "no screenshot " << name;
}

void UseKitScreenshotFolder() {
  if (std::getenv("QV_SCREENSHOT_DIR") == nullptr) {
    _putenv_s("QV_SCREENSHOT_DIR",
              (std::string(QV_E2E_SOURCE_DIR) + "/build/screenshots/kit").c_str());
  }
}

}  // namespace kit_e2e
