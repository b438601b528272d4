// The Windows UI host: the host window, the loops, timers, the window procedures and
// the mouse. The forms' windows are in Win32UiForms.cpp, controls in
// Win32UiControls.cpp (painting in Win32UiPaint.cpp, lists in Win32UiLists.cpp), tips,
// tray and menus in Win32UiShell.cpp.
#include "platform/win32/Win32UiRecords.h"

#include <windowsx.h>

#include <algorithm>
#include <cmath>

#include "base/Guarded.h"

namespace platform {

using win32::Wide;

namespace {

// Every message handled here counts; records of windows destroyed meanwhile are
// freed only when the outermost one is done, so that a handler that closes its own
// window never leaves a caller holding freed memory.
class Depth {
 public:
  explicit Depth(int& depth) : depth_(depth) { ++depth_; }
  ~Depth() { --depth_; }
  Depth(const Depth&) = delete;
  Depth& operator=(const Depth&) = delete;

 private:
  int& depth_;
};

int KeyShift(const MSG& msg) {
  const bool sys = msg.message == WM_SYSKEYDOWN || msg.message == WM_SYSKEYUP;
  // A key posted by another program carries Alt only in its context bit.
  const bool alt = (sys && (msg.lParam & (1 << 29)) != 0) || GetKeyState(VK_MENU) < 0;
  return (GetKeyState(VK_SHIFT) < 0 ? 1 : 0) | (GetKeyState(VK_CONTROL) < 0 ? 2 : 0) |
         (alt ? 4 : 0);
}

}  // namespace

Win32UiHost::Win32UiHost(Text imageFolder) {
  instance_ = GetModuleHandleW(nullptr);

  {
    win32::WindowDC screen(nullptr);
    dpi_ = std::max(1, GetDeviceCaps(screen.Get(), LOGPIXELSY));
  }

  if (imageFolder.empty()) {
    wchar_t path[MAX_PATH] = {};
    DWORD n = GetModuleFileNameW(nullptr, path, MAX_PATH);
    Text exe = win32::FromWide(path, n);
    std::size_t slash = exe.find_last_of(u'\\');
    imageFolder = (slash == Text::npos ? Text() : exe.substr(0, slash)) + u"\\images";
  }
  pictures_ = std::make_unique<win32::Pictures>(imageFolder, dpi_);
}

HWND Win32UiHost::Started() {
  if (hostHwnd_) return hostHwnd_.Get();
  INITCOMMONCONTROLSEX icc{sizeof(icc), ICC_WIN95_CLASSES | ICC_DATE_CLASSES | ICC_BAR_CLASSES |
                                            ICC_LISTVIEW_CLASSES | ICC_PROGRESS_CLASS |
                                            ICC_STANDARD_CLASSES};
  InitCommonControlsEx(&icc);
  highContrast_ = win32::HighContrastOn();
  lightTaskbar_ = win32::LightTaskbar();

  WNDCLASSEXW host{};
  host.cbSize = sizeof(host);
  host.lpfnWndProc = &Win32UiHost::HostProc;
  host.hInstance = instance_;
  host.lpszClassName = kHostClass;
  RegisterClassExW(&host);

  WNDCLASSEXW form{};
  form.cbSize = sizeof(form);
  form.style = CS_DBLCLKS;
  form.lpfnWndProc = &Win32UiHost::FormProc;
  form.hInstance = instance_;
  form.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  form.hIcon = LoadIconW(instance_, MAKEINTRESOURCEW(1));
  if (form.hIcon == nullptr) form.hIcon = LoadIconW(nullptr, IDI_APPLICATION);
  form.lpszClassName = kFormClass;
  RegisterClassExW(&form);

  // A hidden top-level popup rather than a message-only window: only top-level
  // windows hear that the taskbar was created again.
  hostHwnd_.Reset(CreateWindowExW(WS_EX_TOOLWINDOW, kHostClass, L"QvUiHost", WS_POPUP, 0, 0, 0, 0,
                                  nullptr, nullptr, instance_, this));
  taskbarCreated_ = RegisterWindowMessageW(L"TaskbarCreated");
  return hostHwnd_.Get();
}

Win32UiHost::~Win32UiHost() {
  // In this order: icons (each record takes its icon with it), tips, forms, the host
  // window and its timers, then the fonts the windows drew with.
  for (auto& [h, t] : tray_) {
    if (t->added) Shell_NotifyIconW(NIM_DELETE, &t->data);
  }
  tray_.clear();
  {
    // Out of the map first: a window that goes may still send the host messages.
    std::map<UiHandle, std::unique_ptr<TipRec>> tips;
    tips.swap(tips_);
  }
  plainTip_.Reset();
  hoverTip_.Reset();
  while (!forms_.empty()) DestroyForm(forms_.begin()->first);
  graveyard_.clear();
  controlGraveyard_.clear();
  if (hostHwnd_) {
    for (auto& [id, fn] : timers_) KillTimer(hostHwnd_.Get(), id);
    hostHwnd_.Reset();
  }
  timers_.clear();
  fonts_.clear();
}

// ---- Lookups ------------------------------------------------------------------------

Win32UiHost::FormRec* Win32UiHost::Form(UiHandle h) const {
  auto it = forms_.find(h);
  return it == forms_.end() ? nullptr : it->second.get();
}

Win32UiHost::ControlRec* Win32UiHost::Control(UiHandle h) const {
  auto it = controls_.find(h);
  return it == controls_.end() ? nullptr : it->second.get();
}

Win32UiHost::FormRec* Win32UiHost::FormOf(HWND hwnd) const {
  auto it = byHwnd_.find(hwnd);
  return it == byHwnd_.end() ? nullptr : Form(it->second);
}

Win32UiHost::ControlRec* Win32UiHost::ControlOf(HWND hwnd) const {
  auto it = byHwnd_.find(hwnd);
  return it == byHwnd_.end() ? nullptr : Control(it->second);
}

HWND Win32UiHost::WindowHandle(UiHandle h) const {
  if (FormRec* f = Form(h)) return f->hwnd.Get();
  if (ControlRec* c = Control(h)) return c->hwnd.Get();
  return nullptr;
}

RECT Win32UiHost::PixelRect(const UiRect& r, int dpi) {
  // Edges are rounded one by one, so that neighbours meet without a gap.
  auto px = [dpi](double twips) { return static_cast<LONG>(std::lround(twips * dpi / 1440.0)); };
  RECT out;
  out.left = px(r.left);
  out.top = px(r.top);
  out.right = px(r.left + r.width);
  out.bottom = px(r.top + r.height);
  if (out.right < out.left) out.right = out.left;
  if (out.bottom < out.top) out.bottom = out.top;
  return out;
}

UiRect Win32UiHost::TwipsRect(const RECT& r, int dpi) {
  const double k = 1440.0 / std::max(1, dpi);
  return {r.left * k, r.top * k, (r.right - r.left) * k, (r.bottom - r.top) * k};
}

long Win32UiHost::Scaled(long designPixels, int dpi) {
  return static_cast<long>(std::lround(designPixels * dpi / 96.0));
}

int Win32UiHost::DpiOf(const ControlRec& c) const {
  const FormRec* f = Form(c.window);
  return f != nullptr ? f->dpi : dpi_;
}

int Win32UiHost::WindowDpi(UiHandle window) const {
  const FormRec* f = Form(window);
  return f != nullptr ? f->dpi : 0;
}

// ---- Loops ----------------------------------------------------------------------------

bool Win32UiHost::PreTranslate(MSG& msg) {
  UiKey what;
  switch (msg.message) {
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN: what = UiKey::Down; break;
    case WM_KEYUP:
    case WM_SYSKEYUP: what = UiKey::Up; break;
    case WM_CHAR: what = UiKey::Press; break;
    case WM_SYSCHAR: {
      // Alt+letter on a form without a menu bar would only beep.
      FormRec* f = FormOf(GetAncestor(msg.hwnd, GA_ROOT));
      return f == nullptr || static_cast<bool>(f->menuBar);
    }
    default: return true;
  }
  FormRec* f = FormOf(GetAncestor(msg.hwnd, GA_ROOT));
  if (f == nullptr || f->dead || f->events == nullptr) return true;
  const UiKeyEvent e{what, static_cast<int>(msg.wParam), KeyShift(msg)};
  bool pass = true;
  try {
    pass = f->events->OnKey(f->handle, e);
  } catch (...) {
    // The key goes on to its window, as if the form had let it through.
    ReportFailure(u"key for form", msg.message, f->hwnd.Get());
    pass = true;
  }
  // The key may have closed its window.
  return pass && IsWindow(msg.hwnd);
}

void Win32UiHost::Pump(MSG& msg) {
  Depth depth(depth_);
  if (PreTranslate(msg)) {
    TranslateMessage(&msg);
    DispatchMessageW(&msg);
  }
}

int Win32UiHost::RunMessageLoop() {
  Started();
  MSG msg;
  while (true) {
    BOOL r = GetMessageW(&msg, nullptr, 0, 0);
    if (r == 0) return static_cast<int>(msg.wParam);
    if (r == -1) return -1;
    Pump(msg);
    Sweep();
  }
}

void Win32UiHost::Sweep() {
  if (depth_ != 0) return;
  graveyard_.clear();
  controlGraveyard_.clear();
}

void Win32UiHost::Quit(int exitCode) { PostQuitMessage(exitCode); }

void Win32UiHost::AnswerOtherPrograms() {
  // A peek for sent messages alone delivers them and removes nothing from the queue.
  MSG msg;
  PeekMessageW(&msg, nullptr, 0, 0, PM_NOREMOVE | PM_QS_SENDMESSAGE);
}

void Win32UiHost::DoEvents() {
  MSG msg;
  // Bounded: a stream of posted messages must not keep the caller here for ever.
  for (int i = 0; i < 10000 && PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE); ++i) {
    if (msg.message == WM_QUIT) {
      PostQuitMessage(static_cast<int>(msg.wParam));
      break;
    }
    Pump(msg);
    Sweep();
  }
}

void Win32UiHost::SetOthersEnabled(FormRec& modal, bool enable, std::vector<HWND>& changed) {
  if (!enable) {
    for (auto& [h, f] : forms_) {
      if (f.get() == &modal || f->dead) continue;
      if (IsWindowVisible(f->hwnd.Get()) && IsWindowEnabled(f->hwnd.Get())) {
        EnableWindow(f->hwnd.Get(), FALSE);
        changed.push_back(f->hwnd.Get());
      }
    }
    return;
  }
  for (HWND hwnd : changed) {
    if (IsWindow(hwnd) && FormOf(hwnd) != nullptr) EnableWindow(hwnd, TRUE);
  }
}

void Win32UiHost::RunModal(UiHandle window) {
  FormRec* f = Form(window);
  if (f == nullptr || f->dead) return;
  // The window to give the activation back to. A modal form is usually up (and so
  // active) already: then it is the one that form took the activation from.
  HWND before = GetActiveWindow();
  if (before == f->hwnd.Get()) before = f->activatedFrom;
  std::vector<HWND> disabled;
  SetOthersEnabled(*f, false, disabled);
  f->modalEnded = false;
  ++f->modalDepth;
  if (!IsWindowVisible(f->hwnd.Get())) ShowWindow(f->hwnd.Get(), SW_SHOW);
  SetForegroundWindow(f->hwnd.Get());
  SetActiveWindow(f->hwnd.Get());

  MSG msg;
  while (true) {
    FormRec* now = Form(window);
    if (now == nullptr || now->dead || now->modalEnded) break;
    BOOL r = GetMessageW(&msg, nullptr, 0, 0);
    if (r == 0 || r == -1) {
      // The program is ending: let the outer loop see it too.
      PostQuitMessage(r == 0 ? static_cast<int>(msg.wParam) : -1);
      break;
    }
    Pump(msg);
    Sweep();
  }
  if (FormRec* now = Form(window)) {
    --now->modalDepth;
    now->modalEnded = false;
  }
  SetOthersEnabled(*f, true, disabled);
  if (before != nullptr && IsWindow(before) && IsWindowVisible(before) && IsWindowEnabled(before)) {
    SetActiveWindow(before);
  }
}

void Win32UiHost::EndModal(UiHandle window) {
  FormRec* f = Form(window);
  if (f == nullptr) return;
  f->modalEnded = true;
  PostMessageW(hostHwnd_.Get(), kWakeMessage, 0, 0);
}

void Win32UiHost::ShowNormal(UiHandle window) {
  FormRec* f = Form(window);
  if (f == nullptr || f->dead) return;
  HWND hwnd = f->hwnd.Get();
  // Normal, not just shown: a minimised window (hidden while minimised or not) comes
  // back restored, and a window behind other programs' comes to the front.
  ShowWindow(hwnd, SW_SHOWNORMAL);
  SetForegroundWindow(hwnd);
  BringWindowToTop(hwnd);
  SetActiveWindow(hwnd);
}

// ---- Timers ------------------------------------------------------------------------------

std::uintptr_t Win32UiHost::StartTimer(std::uint32_t intervalMs, std::function<void()> onTick) {
  if (Started() == nullptr) return 0;
  const std::uintptr_t id = nextTimer_++;
  if (SetTimer(hostHwnd_.Get(), id, std::max<std::uint32_t>(1, intervalMs), nullptr) == 0) return 0;
  timers_[id] = std::move(onTick);
  return id;
}

void Win32UiHost::StopTimer(std::uintptr_t id) {
  if (timers_.erase(id) != 0) KillTimer(hostHwnd_.Get(), id);
}

bool Win32UiHost::AskYesNo(const Text& text, const Text& title) {
  return MessageBoxW(nullptr, Wide(text), Wide(title), MB_YESNO | MB_ICONQUESTION | MB_TASKMODAL) ==
         IDYES;
}

// ---- Window procedures -------------------------------------------------------------------

void Win32UiHost::ReportFailure(const Text& what, UINT msg, HWND hwnd) noexcept {
  // Called inside a catch block: the exception being handled is the one described.
  const base::ErrorInfo error = base::DescribeCurrentException();
  if (!failureSink_) return;
  // A line that cannot be made or written is lost, as a log line may be.
  base::IgnoreFailure([&] {
    Text line = u"UI host: " + what;
    wchar_t name[256] = {};
    const auto atom = static_cast<ATOM>(reinterpret_cast<UINT_PTR>(GetPropW(hwnd, kNameProperty)));
    if (atom != 0 && GlobalGetAtomNameW(atom, name, 256) > 0) {
      line += u" \"" + win32::FromWide(name) + u"\"";
    }
    line += u", message " + base::FromNumber(msg) + u": " + error.description + u" (error " +
            base::FromNumber(error.number) + u")";
    failureSink_(line);
  });
}

LRESULT CALLBACK Win32UiHost::HostProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) noexcept {
  if (msg == WM_NCCREATE) {
    auto* cs = reinterpret_cast<CREATESTRUCTW*>(lp);
    SetWindowLongPtrW(hwnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(cs->lpCreateParams));
  }
  auto* self = reinterpret_cast<Win32UiHost*>(GetWindowLongPtrW(hwnd, GWLP_USERDATA));
  if (self == nullptr || msg == WM_NCCREATE) return DefWindowProcW(hwnd, msg, wp, lp);
  Depth depth(self->depth_);
  try {
    return self->OnHostMessage(hwnd, msg, wp, lp);
  } catch (...) {
    self->ReportFailure(u"the host window", msg, hwnd);
    return DefWindowProcW(hwnd, msg, wp, lp);
  }
}

LRESULT CALLBACK Win32UiHost::FormProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) noexcept {
  if (msg == WM_NCCREATE) {
    auto* cs = reinterpret_cast<CREATESTRUCTW*>(lp);
    SetWindowLongPtrW(hwnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(cs->lpCreateParams));
  }
  auto* self = reinterpret_cast<Win32UiHost*>(GetWindowLongPtrW(hwnd, GWLP_USERDATA));
  FormRec* f = self == nullptr ? nullptr : self->FormOf(hwnd);
  if (f == nullptr || f->dead) return DefWindowProcW(hwnd, msg, wp, lp);
  Depth depth(self->depth_);
  try {
    return self->OnFormMessage(*f, msg, wp, lp);
  } catch (...) {
    self->ReportFailure(u"form", msg, hwnd);
    // Closing stays the model's decision: the default procedure would destroy the
    // window behind its back.
    if (msg == WM_CLOSE) return 0;
    return DefWindowProcW(hwnd, msg, wp, lp);
  }
}

LRESULT CALLBACK Win32UiHost::ControlProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp, UINT_PTR,
                                          DWORD_PTR selfData) noexcept {
  auto* self = reinterpret_cast<Win32UiHost*>(selfData);
  if (msg == WM_NCDESTROY) {
    RemoveWindowSubclass(hwnd, &Win32UiHost::ControlProc, 1);
    return DefSubclassProc(hwnd, msg, wp, lp);
  }
  ControlRec* c = self->ControlOf(hwnd);
  if (c == nullptr || c->dead) return DefSubclassProc(hwnd, msg, wp, lp);
  Depth depth(self->depth_);
  try {
    return self->OnControlMessage(*c, msg, wp, lp);
  } catch (...) {
    self->ReportFailure(u"control", msg, hwnd);
    return DefSubclassProc(hwnd, msg, wp, lp);
  }
}

LRESULT Win32UiHost::OnHostMessage(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) {
  if (msg == taskbarCreated_ && taskbarCreated_ != 0) {
    // The shell started again (or for the first time): every icon is new to it.
    for (auto& [h, t] : tray_) {
      t->added = false;
      ApplyTray(*t, NIM_ADD);
    }
    return 0;
  }
  switch (msg) {
    case WM_TIMER: {
      if (wp == kTrayRetryTimer) {
        RetryTray();
        return 0;
      }
      auto it = timers_.find(static_cast<std::uintptr_t>(wp));
      if (it == timers_.end()) return 0;
      // The tick may stop its own timer: keep the function alive while it runs.
      std::function<void()> tick = it->second;
      if (tick) tick();
      return 0;
    }
    case kTrayCallbackMessage: TrayCallback(hwnd, wp, lp); return 0;
    case kWakeMessage: return 0;
    case WM_SETTINGCHANGE:
      // A theme, high contrast or the taskbar's colours: the desktop's look is read again.
      if (win32::ThemeSettingChanged(static_cast<UINT>(wp), reinterpret_cast<const wchar_t*>(lp)))
        ApplyTheme();
      return DefWindowProcW(hwnd, msg, wp, lp);
    case WM_SYSCOLORCHANGE: ApplyTheme(); return DefWindowProcW(hwnd, msg, wp, lp);
    default: return DefWindowProcW(hwnd, msg, wp, lp);
  }
}

bool Win32UiHost::Mouse(FormRec& f, ControlRec* c, HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) {
  // The platform's mouse messages as the button and what happened to it (a double
  // click of another button than the left counts as its press).
  struct MouseMessage {
    UINT msg;
    int button;
    UiMouse what;
  };
  static constexpr MouseMessage kMouseMessages[] = {
      {WM_LBUTTONDOWN, 1, UiMouse::Down},   {WM_RBUTTONDOWN, 2, UiMouse::Down},
      {WM_MBUTTONDOWN, 4, UiMouse::Down},   {WM_LBUTTONDBLCLK, 1, UiMouse::DblClick},
      {WM_RBUTTONDBLCLK, 2, UiMouse::Down}, {WM_MBUTTONDBLCLK, 4, UiMouse::Down},
      {WM_LBUTTONUP, 1, UiMouse::Up},       {WM_RBUTTONUP, 2, UiMouse::Up},
      {WM_MBUTTONUP, 4, UiMouse::Up},       {WM_MOUSEMOVE, 0, UiMouse::Move},
  };
  const MouseMessage* found = nullptr;
  for (const MouseMessage& m : kMouseMessages) {
    if (m.msg == msg) found = &m;
  }
  if (found == nullptr) return true;
  const int button = found->button;
  const UiMouse what = found->what;
  const int shift =
      ((wp & MK_SHIFT) ? 1 : 0) | ((wp & MK_CONTROL) ? 2 : 0) | (GetKeyState(VK_MENU) < 0 ? 4 : 0);
  const POINT pt{GET_X_LPARAM(lp), GET_Y_LPARAM(lp)};
  const double x = pt.x * 1440.0 / f.dpi;
  const double y = pt.y * 1440.0 / f.dpi;
  const UiHandle window = f.handle;
  const UiHandle control = c == nullptr ? 0 : c->handle;
  IUiEvents* events = f.events;
  auto alive = [&] { return !f.dead && (c == nullptr || !c->dead); };
  // Labels, pictures and the form take the capture themselves, so that the button
  // comes up where it went down; the platform's controls do it on their own.
  const bool ownCapture = c == nullptr || c->state.kind == UiKind::Label ||
                          (c->state.kind == UiKind::Picture && c->state.role != UiRole::PushButton);
  const bool clickable = c == nullptr || c->state.kind == UiKind::Label ||
                         c->state.kind == UiKind::Picture || c->state.kind == UiKind::PictureButton;
  int& pressed = c == nullptr ? formPressed_[f.handle] : c->pressed;
  // The label on a skinned button takes the clicks on the button's middle: the
  // button shows pressed meanwhile, and its tips hear the pointer moving there.
  ControlRec* face = nullptr;
  if (c != nullptr && c->state.kind == UiKind::Label && c->container != 0) {
    ControlRec* p = Control(c->container);
    if (p != nullptr && p->state.kind == UiKind::PictureButton) face = p;
  }
  if (face != nullptr && what == UiMouse::Move) RelayToTips(face->hwnd.Get(), hwnd, msg, wp, lp);
  if (face != nullptr && button == 1 && (what == UiMouse::Down || what == UiMouse::DblClick)) {
    SendMessageW(face->hwnd.Get(), BM_SETSTATE, TRUE, 0);
  }
  if (face != nullptr && button == 1 && what == UiMouse::Up)
    SendMessageW(face->hwnd.Get(), BM_SETSTATE, FALSE, 0);

  switch (what) {
    case UiMouse::Down:
    case UiMouse::DblClick:
      pressed |= button;
      if (ownCapture && GetCapture() != hwnd) SetCapture(hwnd);
      if (what == UiMouse::DblClick) {
        events->OnMouse(window, control, {UiMouse::DblClick, button, shift, x, y});
      } else {
        events->OnMouse(window, control, {UiMouse::Down, button, shift, x, y});
      }
      break;
    case UiMouse::Up: {
      const bool wasPressed = (pressed & button) != 0;
      pressed &= ~button;
      if (ownCapture && pressed == 0 && GetCapture() == hwnd) ReleaseCapture();
      events->OnMouse(window, control, {UiMouse::Up, button, shift, x, y});
      if (!alive()) return false;
      RECT client;
      GetClientRect(hwnd, &client);
      if (clickable && button == 1 && wasPressed && PtInRect(&client, pt)) {
        events->OnMouse(window, control, {UiMouse::Click, button, shift, x, y});
      }
      break;
    }
    case UiMouse::Move: {
      const int held =
          ((wp & MK_LBUTTON) ? 1 : 0) | ((wp & MK_RBUTTON) ? 2 : 0) | ((wp & MK_MBUTTON) ? 4 : 0);
      events->OnMouse(window, control, {UiMouse::Move, held, shift, x, y});
      break;
    }
    default: break;
  }
  return alive();
}

}  // namespace platform
