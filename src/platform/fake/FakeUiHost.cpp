#include "platform/fake/FakeUiHost.h"

#include <algorithm>
#include <cmath>

#include "base/Guarded.h"

namespace platform {

namespace {

std::string Narrow(const Text& t) { return base::ToUtf8(t); }

}  // namespace

std::uintptr_t FakeUiHost::StartTimer(std::uint32_t intervalMs, std::function<void()> onTick) {
  std::uintptr_t id = nextTimer_++;
  timers[id] = {intervalMs, std::move(onTick)};
  return id;
}

bool FakeUiHost::AskYesNo(const Text& text, const Text&) {
  questions.push_back(text);
  if (answers.empty()) return false;
  bool a = answers.front();
  answers.pop_front();
  return a;
}

void FakeUiHost::FireTimer(std::uintptr_t id) {
  auto it = timers.find(id);
  if (it == timers.end() || !it->second.onTick) return;
  // The tick may stop its own timer; keep the function alive while it runs.
  std::function<void()> tick = it->second.onTick;
  try {
    tick();
  } catch (...) {
    Failed(u"timer " + base::FromNumber(static_cast<long long>(id)));
  }
}

void FakeUiHost::Failed(const Text& what) {
  const base::ErrorInfo error = base::DescribeCurrentException();
  Text line = u"UI host: " + what + u": " + error.description + u" (error " +
              base::FromNumber(error.number) + u")";
  failures.push_back(line);
  if (failureSink) failureSink(line);
}

UiTextSize FakeUiHost::MeasureText(const Text& text, const UiFont& font, double wrapWidth) {
  const double points = font.size > 0 ? font.size : 8.25;
  const double unit = points * 11.0;
  const double line = points * 24.0;
  std::size_t perLine = 0;
  if (wrapWidth > 0)
    perLine = static_cast<std::size_t>(std::max(1.0, std::floor(wrapWidth / unit)));
  std::size_t lines = 0;
  std::size_t widest = 0;
  for (const Text& raw : base::Split(text, u"\n")) {
    Text para = raw;
    if (!para.empty() && para.back() == u'\r') para.pop_back();
    std::size_t n = para.size();
    if (perLine > 0 && n > perLine) {
      lines += (n + perLine - 1) / perLine;
      widest = std::max(widest, perLine);
    } else {
      lines += 1;
      widest = std::max(widest, n);
    }
  }
  return {static_cast<double>(widest) * unit, static_cast<double>(lines) * line};
}

UiHandle FakeUiHost::CreateForm(const UiWindow& window, IUiEvents& events) {
  UiHandle h = next_++;
  FormRecord& r = forms[h];
  r.state = window;
  r.events = &events;
  calls.push_back("CreateForm " + Narrow(window.name));
  if (window.visible && !window.showNoActivate) activeWindow = h;
  return h;
}

void FakeUiHost::UpdateForm(UiHandle window, const UiWindow& state, UiChange changes) {
  auto it = forms.find(window);
  if (it == forms.end()) return;
  const bool wasVisible = it->second.state.visible;
  it->second.state = state;
  ++it->second.updates;
  it->second.lastChanges = changes;
  if (Has(changes, UiChange::Visible) && state.visible && !wasVisible && !state.showNoActivate)
    activeWindow = window;
  if (!state.visible && activeWindow == window) activeWindow = 0;
}

void FakeUiHost::ShowNormal(UiHandle window) {
  auto it = forms.find(window);
  if (it == forms.end()) return;
  calls.push_back("ShowNormal " + Narrow(it->second.state.name));
  it->second.state.visible = true;
  activeWindow = window;
  if (it->second.minimized) {
    it->second.minimized = false;
    if (it->second.events != nullptr) it->second.events->OnMinimized(window, false);
  }
}

void FakeUiHost::Minimize(UiHandle window) {
  auto it = forms.find(window);
  if (it == forms.end()) return;
  it->second.minimized = true;
  if (it->second.events != nullptr) it->second.events->OnMinimized(window, true);
}

void FakeUiHost::DestroyForm(UiHandle window) {
  auto it = forms.find(window);
  if (it == forms.end()) return;
  calls.push_back("DestroyForm " + Narrow(it->second.state.name));
  // A tip lives with the window of its tool.
  for (auto t = tips.begin(); t != tips.end();) {
    auto tool = controls.find(t->second.tip.tool);
    bool mine =
        t->second.tip.tool == window || (tool != controls.end() && tool->second.window == window);
    t = mine ? tips.erase(t) : std::next(t);
  }
  for (auto c = controls.begin(); c != controls.end();) {
    c = c->second.window == window ? controls.erase(c) : std::next(c);
  }
  if (activeWindow == window) activeWindow = 0;
  forms.erase(it);
}

UiHandle FakeUiHost::CreateControl(UiHandle window, UiHandle container, const UiControl& control) {
  if (forms.count(window) == 0) return 0;
  // A container is a control of the same window, as on the platform.
  if (container != 0) {
    auto holder = controls.find(container);
    if (holder == controls.end() || holder->second.window != window) return 0;
  }
  UiHandle h = next_++;
  ControlRecord& r = controls[h];
  r.window = window;
  r.container = container;
  r.state = control;
  return h;
}

void FakeUiHost::UpdateControl(UiHandle control, const UiControl& state, UiChange changes) {
  auto it = controls.find(control);
  if (it == controls.end()) return;
  it->second.state = state;
  ++it->second.updates;
  it->second.lastChanges = changes;
  if (Has(changes, UiChange::Scroll) && state.kind == UiKind::ListView && state.visibleRow > 0)
    it->second.scrolledTo.push_back(state.visibleRow);
}

void FakeUiHost::FocusControl(UiHandle window, UiHandle control) {
  auto it = forms.find(window);
  if (it == forms.end()) return;
  it->second.focus = control;
  // As the platform, the window hears of it once it is up.
  if (it->second.state.visible && it->second.events != nullptr)
    it->second.events->OnFocus(window, control);
}

void FakeUiHost::RunModal(UiHandle window) {
  auto it = forms.find(window);
  if (it == forms.end()) return;
  calls.push_back("RunModal " + Narrow(it->second.state.name));
  it->second.modal = true;
  it->second.ended = false;
  activeWindow = window;
  if (onModal) onModal(window);
  it = forms.find(window);
  if (it != forms.end()) it->second.modal = false;
}

void FakeUiHost::EndModal(UiHandle window) {
  auto it = forms.find(window);
  if (it == forms.end()) return;
  calls.push_back("EndModal " + Narrow(it->second.state.name));
  it->second.ended = true;
}

std::uint32_t FakeUiHost::PopupMenu(UiHandle, const std::vector<UiMenuItem>& items) {
  popups.push_back(items);
  if (popupChoices.empty()) return 0;
  std::uint32_t id = popupChoices.front();
  popupChoices.pop_front();
  return id;
}

UiHandle FakeUiHost::CreateTip(const UiTip& tip) {
  UiHandle h = next_++;
  tips[h].tip = tip;
  return h;
}

void FakeUiHost::TrackTip(UiHandle tip, long x, long y, UiHandle) {
  auto it = tips.find(tip);
  if (it == tips.end()) return;
  it->second.tracked = true;
  it->second.x = x;
  it->second.y = y;
}

UiHandle FakeUiHost::AddTrayIcon(const UiTrayIcon& icon, std::function<void(int)> onEvent) {
  UiHandle h = next_++;
  trayIcons[h] = {icon, std::move(onEvent)};
  return h;
}

void FakeUiHost::ModifyTrayIcon(UiHandle icon, const UiTrayIcon& state) {
  auto it = trayIcons.find(icon);
  if (it != trayIcons.end()) it->second.state = state;
  ++trayModifies;
}

void FakeUiHost::ShowTrayBalloon(UiHandle icon, const UiTrayBalloon& balloon) {
  // Like the shell, only an icon that is there can show one.
  if (trayIcons.count(icon) == 0) return;
  balloons.emplace_back(icon, balloon);
}

void FakeUiHost::FireTray(UiHandle icon, int mouseMessage) {
  auto it = trayIcons.find(icon);
  if (it == trayIcons.end() || !it->second.onEvent) return;
  std::function<void(int)> handler = it->second.onEvent;
  try {
    handler(mouseMessage);
  } catch (...) {
    Failed(u"tray icon, message " + base::FromNumber(mouseMessage));
  }
}

UiHandle FakeUiHost::FindForm(const Text& name) const {
  for (const auto& [h, r] : forms) {
    if (r.state.name == name) return h;
  }
  return 0;
}

UiHandle FakeUiHost::FindControl(UiHandle window, const Text& name) const {
  for (const auto& [h, r] : controls) {
    if (r.window == window && r.state.name == name) return h;
  }
  return 0;
}

const UiControl* FakeUiHost::Control(UiHandle window, const Text& name) const {
  UiHandle h = FindControl(window, name);
  return h == 0 ? nullptr : &controls.at(h).state;
}

bool FakeUiHost::Shown(UiHandle control) const {
  UiHandle h = control;
  UiHandle window = 0;
  while (h != 0) {
    auto it = controls.find(h);
    if (it == controls.end() || !it->second.state.visible) return false;
    window = it->second.window;
    h = it->second.container;
  }
  auto f = forms.find(window);
  return f != forms.end() && f->second.state.visible;
}

IUiEvents* FakeUiHost::Events(UiHandle window) const {
  auto it = forms.find(window);
  return it == forms.end() ? nullptr : it->second.events;
}

int FakeUiHost::ControlRecord::RowCount() const {
  return state.rowSource ? state.rowCount : static_cast<int>(state.rows.size());
}

Text FakeUiHost::ControlRecord::Cell(int row0, int column0) const {
  if (row0 < 0 || row0 >= RowCount() || column0 < 0) return Text();
  if (state.rowSource) return state.rowSource->Cell(row0, column0);
  const UiListRow& row = state.rows[static_cast<std::size_t>(row0)];
  if (column0 == 0) return row.text;
  const auto sub = static_cast<std::size_t>(column0 - 1);
  return sub < row.subItems.size() ? row.subItems[sub] : Text();
}

int FakeUiHost::ControlRecord::SelectedRow() const {
  if (state.rowSource) return state.selectedRow;
  for (std::size_t i = 0; i < state.rows.size(); ++i)
    if (state.rows[i].selected) return static_cast<int>(i + 1);
  return 0;
}

}  // namespace platform
