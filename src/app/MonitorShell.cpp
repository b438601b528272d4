#include "app/MonitorShell.h"

#include <cstring>
#include <cwchar>

#include "app/AppIcon.h"
#include "base/Guarded.h"
#include "engine/EngineObjects.h"
#include "frame/Logs.h"
#include "frame/Settings.h"

namespace app {

namespace {

static_assert(sizeof(wchar_t) == sizeof(char16_t));

const wchar_t* W(const base::Text& t) { return reinterpret_cast<const wchar_t*>(t.c_str()); }

// The design's size of the monitor window, in twips.
constexpr long kDesignWidthTwips = 7200;
constexpr long kDesignHeightTwips = 5400;

}  // namespace

MonitorShell::~MonitorShell() {
  RemoveTrayIcon();
  if (icon_) DestroyIcon(icon_);
}

void MonitorShell::CreateEngines(frame::AppState& app) { engine::CreateEngines(app); }

void MonitorShell::LoadMonitorWindow(frame::AppState& app) {
  app_ = &app;
  taskbarCreated_ = RegisterWindowMessageW(L"TaskbarCreated");
  icon_ = CreateAppIcon(32);

  WNDCLASSEXW wc{};
  wc.cbSize = sizeof(wc);
  wc.lpfnWndProc = &MonitorShell::WindowProc;
  wc.hInstance = instance_;
  wc.hIcon = icon_;
  wc.hIconSm = icon_;
  wc.hCursor = LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
  wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
  wc.lpszClassName = kWindowClass;
  RegisterClassExW(&wc);

  const int twips = app.platform.system->TwipsPerPixelX();
  const int tpp = twips > 0 ? twips : 15;
  window_ = CreateWindowExW(0, kWindowClass, kWindowTitle,
                            WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX,
                            CW_USEDEFAULT, CW_USEDEFAULT, kDesignWidthTwips / tpp,
                            kDesignHeightTwips / tpp, nullptr, nullptr, instance_, this);

  // Label1 of the design: the product's caption on the window.
  CreateWindowExW(0, L"STATIC", kWindowTitle, WS_CHILD | WS_VISIBLE | SS_LEFT, 16, 16, 400, 20,
                  window_, nullptr, instance_, nullptr);
  AddTrayIcon();
  // A background engine is ended once a day between transfers (the tick restarts it).
  if (frame::EngineIsService(app) == 0) SetTimer(window_, kDailyTimerId, engine::kDailyTimerMs, nullptr);
}

void MonitorShell::ApplyGeometry(frame::AppState& app, std::optional<long> width,
                                 std::optional<long> height, std::optional<long> top,
                                 std::optional<long> left) {
  if (!window_) return;
  const int tpp = app.platform.system->TwipsPerPixelX() > 0 ? app.platform.system->TwipsPerPixelX()
                                                            : 15;
  RECT r{};
  GetWindowRect(window_, &r);
  auto apply = [&](long x, long y, long w, long h) {
    SetWindowPos(window_, nullptr, x, y, w, h, SWP_NOZORDER | SWP_NOACTIVATE);
    GetWindowRect(window_, &r);
  };
  if (width) apply(r.left, r.top, *width / tpp, r.bottom - r.top);
  if (height) apply(r.left, r.top, r.right - r.left, *height / tpp);
  if (top) apply(r.left, *top / tpp, r.right - r.left, r.bottom - r.top);
  if (left) apply(*left / tpp, r.top, r.right - r.left, r.bottom - r.top);
}

void MonitorShell::HideFromTaskBar(frame::AppState&) {
  if (window_) ShowWindow(window_, SW_HIDE);
  menuOpenEnabled_ = true;
}

void MonitorShell::ShowFromTaskBar(frame::AppState&) {
  if (!window_) return;
  ShowWindow(window_, SW_SHOWNORMAL);
  SetForegroundWindow(window_);
  SetFocus(window_);
  UpdateWindow(window_);
}

void MonitorShell::ShowLogInWindow(frame::AppState&) {
  // The activity log view fills this with the newest lines of the log.
}

base::Text MonitorShell::TrayTip() const {
  if (app_ && app_->AppTitle == u"Corvane for Windows") return u"Corvane for Windows Monitor";
  return u"QVMonitor";
}

void MonitorShell::AddTrayIcon() {
  tray_ = {};
  tray_.cbSize = sizeof(tray_);
  tray_.hWnd = window_;
  tray_.uID = 0;
  tray_.uFlags = NIF_MESSAGE | NIF_ICON;
  tray_.uCallbackMessage = kTrayCallbackMessage;
  tray_.hIcon = icon_;
  trayAdded_ = Shell_NotifyIconW(NIM_ADD, &tray_) != FALSE;
  base::Text tip = TrayTip();
  wcsncpy(tray_.szTip, W(tip), (sizeof(tray_.szTip) / sizeof(wchar_t)) - 1);
  tray_.uFlags = NIF_TIP;
  Shell_NotifyIconW(NIM_MODIFY, &tray_);
}

void MonitorShell::RemoveTrayIcon() {
  if (!trayAdded_) return;
  tray_.uFlags = 0;
  Shell_NotifyIconW(NIM_DELETE, &tray_);
  trayAdded_ = false;
}

void MonitorShell::ShowTrayMenu() {
  HMENU menu = CreatePopupMenu();
  AppendMenuW(menu, MF_STRING | (menuOpenEnabled_ ? 0 : MF_GRAYED), kMenuOpen,
              L"&Open Status Indicator");
  AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
  AppendMenuW(menu, MF_STRING, kMenuShutdown, L"&Shutdown Indicator");
  POINT pt{};
  GetCursorPos(&pt);
  // Without the foreground the menu would not close when the user clicks elsewhere.
  SetForegroundWindow(window_);
  TrackPopupMenu(menu, TPM_RIGHTBUTTON, pt.x, pt.y, 0, window_, nullptr);
  PostMessageW(window_, WM_NULL, 0, 0);
  DestroyMenu(menu);
}

void MonitorShell::StoreGeometry() {
  if (!window_ || !app_ || IsIconic(window_)) return;
  RECT r{};
  GetWindowRect(window_, &r);
  const int tpp = app_->platform.system->TwipsPerPixelX() > 0
                      ? app_->platform.system->TwipsPerPixelX()
                      : 15;
  frame::WriteSetting(*app_, u"MonWidth", base::FromNumber((r.right - r.left) * tpp));
  frame::WriteSetting(*app_, u"MonHeight", base::FromNumber((r.bottom - r.top) * tpp));
  frame::WriteSetting(*app_, u"MonTop", base::FromNumber(r.top * tpp));
  frame::WriteSetting(*app_, u"MonLeft", base::FromNumber(r.left * tpp));
}

void MonitorShell::Shutdown() {
  if (window_ && IsWindowVisible(window_)) StoreGeometry();
  RemoveTrayIcon();
  // A class object left registered by an ended process can be handed to the engine
  // later, which then cannot reach it; the next monitor's would not be used.
  if (app_ && app_->platform.com) app_->platform.com->RevokeClassObject();
  TerminateProcess(GetCurrentProcess(), 0);
}

LRESULT CALLBACK MonitorShell::WindowProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) noexcept {
  MonitorShell* self = nullptr;
  if (msg == WM_NCCREATE) {
    auto* cs = reinterpret_cast<CREATESTRUCTW*>(lp);
    self = static_cast<MonitorShell*>(cs->lpCreateParams);
    SetWindowLongPtrW(hwnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
    self->window_ = hwnd;
  } else {
    self = reinterpret_cast<MonitorShell*>(GetWindowLongPtrW(hwnd, GWLP_USERDATA));
  }
  if (!self) return DefWindowProcW(hwnd, msg, wp, lp);
  LRESULT result = 0;
  bool handled = base::Guarded([&] { result = self->Handle(msg, wp, lp); },
                               [](const base::ErrorInfo&) {});
  return handled ? result : 0;
}

LRESULT MonitorShell::Handle(UINT msg, WPARAM wp, LPARAM lp) {
  if (msg == taskbarCreated_ && taskbarCreated_ != 0) {
    trayAdded_ = false;
    AddTrayIcon();
    return 0;
  }
  switch (msg) {
    case kTrayCallbackMessage:
      if (lp == WM_LBUTTONDBLCLK) {
        ShowFromTaskBar(*app_);
        menuOpenEnabled_ = false;
      } else if (lp == WM_RBUTTONUP) {
        ShowTrayMenu();
      }
      return 0;
    case WM_COMMAND:
      if (LOWORD(wp) == kMenuOpen) {
        ShowFromTaskBar(*app_);
        menuOpenEnabled_ = false;
      } else if (LOWORD(wp) == kMenuShutdown) {
        Shutdown();
      }
      return 0;
    case WM_TIMER:
      if (wp == kDailyTimerId) engine::TimerProc(*app_);
      return 0;
    case WM_CLOSE:
      // Closing hides the window to the tray; only Shutdown ends the program.
      StoreGeometry();
      HideFromTaskBar(*app_);
      return 0;
    default:
      return DefWindowProcW(window_, msg, wp, lp);
  }
}

}  // namespace app
