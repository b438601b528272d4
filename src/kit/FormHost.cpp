#include "kit/FormHost.h"

#include <algorithm>

#include "base/Guarded.h"
#include "kit/Controls.h"
#include "kit/ListView.h"
#include "kit/Menu.h"

namespace kit {

using platform::UiChange;
using platform::UiHandle;

struct FormHost::Tracked {
  Form* form = nullptr;
  UiHandle window = 0;
  std::map<const Control*, UiHandle> handles;
  std::map<UiHandle, Control*> controls;
  struct RunningTimer {
    std::uintptr_t id = 0;
    unsigned interval = 0;
  };
  std::map<const Control*, RunningTimer> timers;
  // A timer the host could not start; it is tried again at the form's next change.
  bool timerPending = false;
  bool modal = false;
};

namespace {

// The aspects a host acts on share their bits with UiChange; focus and lifecycle
// are handled here.
UiChange ToChange(Aspect aspect) {
  constexpr std::uint32_t kShared = 0xFFu | static_cast<std::uint32_t>(Aspect::Scroll);
  return static_cast<UiChange>(static_cast<std::uint32_t>(aspect) & kShared);
}

static_assert(static_cast<int>(Role::Window) == static_cast<int>(platform::UiRole::Window) &&
                  static_cast<int>(Role::Slider) == static_cast<int>(platform::UiRole::Slider),
              "the kit's roles and the host's are the same list");

platform::UiMenuItem DescribeItem(const Form& form, const MenuItem& item) {
  platform::UiMenuItem m;
  m.id = FormHost::MenuId(form, item);
  m.caption = item.Caption();
  m.enabled = item.Enabled();
  m.checked = item.Checked();
  m.visible = item.Visible();
  for (const MenuItem* child : item.Children()) m.children.push_back(DescribeItem(form, *child));
  return m;
}

bool IsButtonLabel(const Control& c) {
  return c.Kind() == ControlKind::Label && c.Container() != nullptr &&
         c.Container()->Kind() == ControlKind::PictureButton;
}

}  // namespace

FormHost::FormHost(platform::IUiHost& host) : host_(host) {}

FormHost::~FormHost() { DetachAll(); }

std::uint32_t FormHost::MenuId(const Form& form, const Control& item) {
  const auto& all = form.Controls();
  auto it = std::find(all.begin(), all.end(), &item);
  return it == all.end() ? 0 : static_cast<std::uint32_t>(it - all.begin()) + 1;
}

platform::UiWindow FormHost::Describe(const Form& form) {
  platform::UiWindow w;
  w.name = form.Name();
  w.caption = form.Caption();
  w.rect = ToRect(form.GetLayout());
  w.visible = form.IsLoaded() && form.Visible();
  w.enabled = form.Enabled();
  w.frameless = form.Frameless();
  w.controlBox = form.ControlBox();
  w.minButton = form.MinButton();
  w.maxButton = form.MaxButton();
  w.pictureKey = form.PictureKey();
  w.backColor = form.BackColor();
  w.iconPath = form.IconPath();
  if (form.Region()) {
    const RoundRegion& r = *form.Region();
    w.region =
        platform::UiRegion{r.left, r.top, r.right, r.bottom, r.ellipseWidth, r.ellipseHeight};
  }
  w.pointer = static_cast<platform::UiPointer>(static_cast<int>(form.Pointer()));
  w.centerOnShow = form.StartUp() == StartUpPosition::CenterOwner ||
                   form.StartUp() == StartUpPosition::CenterScreen;
  w.topmost = form.TopMost();
  w.showNoActivate = form.ShowWithoutActivation();
  // Top-level menus hidden on the bar are popups only.
  for (const Control* c : form.Controls()) {
    if (c->Kind() != ControlKind::Menu || !c->Visible()) continue;
    w.menuBar.push_back(DescribeItem(form, static_cast<const MenuItem&>(*c)));
  }
  return w;
}

FormHost::Tracked* FormHost::Find(const Form& form) const {
  for (const auto& t : tracked_) {
    if (t->form == &form) return t.get();
  }
  return nullptr;
}

FormHost::Tracked* FormHost::FindWindow(UiHandle window) const {
  if (window == 0) return nullptr;
  for (const auto& t : tracked_) {
    if (t->window == window) return t.get();
  }
  return nullptr;
}

Control* FormHost::ControlOf(Tracked& t, UiHandle control) const {
  if (control == 0) return t.form;
  auto it = t.controls.find(control);
  return it == t.controls.end() ? nullptr : it->second;
}

bool FormHost::IsAttached(const Form& form) const { return Find(form) != nullptr; }

UiHandle FormHost::WindowOf(const Form& form) const {
  Tracked* t = Find(form);
  return t == nullptr ? 0 : t->window;
}

UiHandle FormHost::HandleOf(const Control& control) const {
  if (control.Kind() == ControlKind::Form) return WindowOf(static_cast<const Form&>(control));
  Tracked* t = Find(control.Owner());
  if (t == nullptr) return 0;
  auto it = t->handles.find(&control);
  return it == t->handles.end() ? 0 : it->second;
}

void FormHost::Attach(Form& form) {
  if (Find(form) != nullptr) return;
  tracked_.push_back(std::make_unique<Tracked>());
  Tracked* t = tracked_.back().get();
  t->form = &form;
  form.SetChangeListener([this, t](Control& c, Aspect a) { OnChange(*t, c, a); });
  form.SetDragHandler([this, t] {
    if (t->window != 0) host_.BeginDrag(t->window);
  });
  form.SetGoneHandler([this, t](Form&) { Forget(*t); });
  form.SetFailureSink([this](Control& c, const base::ErrorInfo& e) {
    if (failureSink_) failureSink_(c, e);
  });
  if (form.IsLoaded()) Build(*t);
  SyncTimers(*t);
}

void FormHost::Detach(Form& form) {
  auto it = std::find_if(tracked_.begin(), tracked_.end(),
                         [&](const auto& t) { return t->form == &form; });
  if (it == tracked_.end()) return;
  Tracked& t = **it;
  TearDown(t);
  for (auto& [timer, running] : t.timers) host_.StopTimer(running.id);
  t.timers.clear();
  form.SetChangeListener(nullptr);
  form.SetDragHandler(nullptr);
  form.SetGoneHandler(nullptr);
  form.SetFailureSink(nullptr);
  tracked_.erase(it);
}

void FormHost::Forget(Tracked& t) {
  // The form is being destroyed: its window and timers go, and nothing of the form
  // may be touched any more.
  auto it =
      std::find_if(tracked_.begin(), tracked_.end(), [&](const auto& p) { return p.get() == &t; });
  if (it == tracked_.end()) return;
  TearDown(t);
  for (auto& [timer, running] : t.timers) host_.StopTimer(running.id);
  tracked_.erase(it);
}

void FormHost::DetachAll() {
  while (!tracked_.empty()) Detach(*tracked_.back()->form);
}

void FormHost::Build(Tracked& t) {
  Form& form = *t.form;
  // Hidden until every control is in place, so that nothing half-built shows.
  platform::UiWindow w = Describe(form);
  const bool show = w.visible;
  w.visible = false;
  t.window = host_.CreateForm(w, *this);
  if (t.window == 0) return;
  for (Control* c : form.Controls()) {
    if (!Rendered(c->Kind())) continue;
    UiHandle container = 0;
    if (c->Container() != nullptr) {
      auto it = t.handles.find(c->Container());
      if (it == t.handles.end()) continue;  // inside something that is not drawn
      container = it->second;
    }
    // A control the host failed to make is left out and told to the failure sink; the
    // others, and the form's timers after them, are still set up.
    UiHandle h = 0;
    base::Guarded([&] { h = host_.CreateControl(t.window, container, Describe(*c)); },
                  [&](const base::ErrorInfo& e) {
                    if (failureSink_) base::IgnoreFailure([&] { failureSink_(*c, e); });
                  });
    if (h == 0) continue;
    t.handles[c] = h;
    t.controls[h] = c;
  }
  if (form.ActiveControl() != nullptr)
    host_.FocusControl(t.window, HandleOf(*form.ActiveControl()));
  if (show) host_.UpdateForm(t.window, Describe(form), UiChange::Visible);
}

void FormHost::TearDown(Tracked& t) {
  if (t.window == 0) return;
  UiHandle window = t.window;
  t.window = 0;
  t.handles.clear();
  t.controls.clear();
  host_.DestroyForm(window);
}

void FormHost::UpdateMenus(Tracked& t) {
  if (t.window != 0) host_.UpdateForm(t.window, Describe(*t.form), UiChange::Menu);
}

void FormHost::SyncTimers(Tracked& t) {
  for (Control* c : t.form->Controls()) {
    if (c->Kind() == ControlKind::Timer) SyncTimer(t, *c);
  }
}

void FormHost::SyncTimer(Tracked& t, Control& control) {
  auto& timer = static_cast<Timer&>(control);
  auto it = t.timers.find(&control);
  const bool running = timer.Running();
  if (it != t.timers.end() && (!running || it->second.interval != timer.Interval())) {
    host_.StopTimer(it->second.id);
    t.timers.erase(it);
    it = t.timers.end();
  }
  if (running && it == t.timers.end()) {
    Timer* target = &timer;
    std::uintptr_t id = host_.StartTimer(timer.Interval(), [target] { target->Fire(); });
    if (id != 0) {
      t.timers[&control] = {id, timer.Interval()};
      return;
    }
    // The system had no timer to give. A timer such as the monitor's tick must run for
    // the life of the process, so it is asked for again at the form's next change.
    if (!t.timerPending && failureSink_)
      base::IgnoreFailure([&] { failureSink_(control, {0, u"The timer could not be started"}); });
    t.timerPending = true;
  }
}

void FormHost::OnChange(Tracked& t, Control& control, Aspect aspect) {
  Form& form = *t.form;
  if (t.timerPending) {
    t.timerPending = false;
    SyncTimers(t);
  }
  if (&control == &form) {
    if (!form.IsLoaded()) {
      TearDown(t);
      SyncTimers(t);
      return;
    }
    if (t.window == 0) {
      Build(t);
      SyncTimers(t);
      return;
    }
    const UiChange change = ToChange(aspect);
    if (change != UiChange::None) host_.UpdateForm(t.window, Describe(form), change);
    if (Has(aspect, Aspect::Focus)) {
      const Control* active = form.ActiveControl();
      host_.FocusControl(t.window, active == nullptr ? 0 : HandleOf(*active));
    }
    if (Has(aspect, Aspect::Visible) && t.modal && !form.Visible()) host_.EndModal(t.window);
    return;
  }
  switch (control.Kind()) {
    case ControlKind::Menu:
    case ControlKind::MenuItem: UpdateMenus(t); return;
    case ControlKind::Timer: SyncTimer(t, control); return;
    default: break;
  }
  if (t.window == 0) return;
  auto it = t.handles.find(&control);
  if (it == t.handles.end()) return;
  const UiChange change = ToChange(aspect);
  if (change == UiChange::None) return;
  if (control.Kind() == ControlKind::ListView) {
    // A list of many thousand rows takes a while to describe and to hand over: the
    // host answers other programs in between, and nothing else runs.
    const auto answer = [this] { host_.AnswerOtherPrograms(); };
    platform::UiControl d = Describe(control, answer);
    answer();
    host_.UpdateControl(it->second, d, change);
    answer();
  } else {
    host_.UpdateControl(it->second, Describe(control), change);
  }
  // A skinned button carries its label's caption as its own text.
  if (IsButtonLabel(control) && Has(change, UiChange::Caption)) {
    auto button = t.handles.find(control.Container());
    if (button != t.handles.end()) {
      host_.UpdateControl(button->second, Describe(*control.Container()), UiChange::Caption);
    }
  }
}

void FormHost::ShowModal(Form& form) {
  Attach(form);
  form.Load();
  if (!form.IsLoaded()) return;
  form.SetVisible(true);
  Tracked* t = Find(form);
  if (t == nullptr || t->window == 0 || !form.IsLoaded() || !form.Visible()) return;
  t->modal = true;
  host_.RunModal(t->window);
  // The form may have been detached meanwhile.
  t = Find(form);
  if (t == nullptr) return;
  t->modal = false;
  // The loop can also end without the form's doing (the program is quitting): a
  // modal show still returns with the form out of sight.
  if (form.IsLoaded() && form.Visible()) form.Hide();
}

void FormHost::Show(Form& form) {
  Attach(form);
  form.Load();
  if (form.IsLoaded()) form.SetVisible(true);
}

void FormHost::ShowNormal(Form& form) {
  Show(form);
  Tracked* t = Find(form);
  if (t == nullptr || t->window == 0 || !form.IsLoaded()) return;
  host_.ShowNormal(t->window);
  form.SetWindowState(kWindowNormal);
}

void FormHost::PopupMenu(Form& form, Menu& menu) {
  Attach(form);
  std::vector<platform::UiMenuItem> items;
  for (const MenuItem* child : menu.Children()) items.push_back(DescribeItem(form, *child));
  const std::uint32_t id = host_.PopupMenu(WindowOf(form), items);
  if (id == 0 || id > form.Controls().size()) return;
  Control* chosen = form.Controls()[id - 1];
  if (chosen->Kind() == ControlKind::MenuItem || chosen->Kind() == ControlKind::Menu) {
    static_cast<MenuItem*>(chosen)->Choose();
  }
}

// ---- What the host reports ---------------------------------------------------------

void FormHost::OnMouse(UiHandle window, UiHandle control, const platform::UiMouseEvent& e) {
  Tracked* t = FindWindow(window);
  if (t == nullptr) return;
  Control* c = ControlOf(*t, control);
  if (c == nullptr) return;
  const MouseArgs args{e.button, e.shift, e.x, e.y};
  switch (e.what) {
    case platform::UiMouse::Down: c->RaiseMouseDown(args); break;
    case platform::UiMouse::Up: c->RaiseMouseUp(args); break;
    case platform::UiMouse::Move: c->RaiseMouseMove(args); break;
    case platform::UiMouse::Click: c->RaiseClick(); break;
    case platform::UiMouse::DblClick: c->RaiseDblClick(); break;
  }
}

bool FormHost::OnKey(UiHandle window, const platform::UiKeyEvent& e) {
  Tracked* t = FindWindow(window);
  if (t == nullptr) return true;
  Form& form = *t->form;
  switch (e.what) {
    case platform::UiKey::Down: {
      KeyArgs args{e.keyCode, e.shift};
      form.DeliverKeyDown(args);
      return args.keyCode != 0;
    }
    case platform::UiKey::Up: {
      KeyArgs args{e.keyCode, e.shift};
      form.DeliverKeyUp(args);
      return args.keyCode != 0;
    }
    case platform::UiKey::Press: {
      int key = e.keyCode;
      form.DeliverKeyPress(key);
      return key != 0;
    }
  }
  return true;
}

void FormHost::OnClick(UiHandle window, UiHandle control) {
  Tracked* t = FindWindow(window);
  if (t == nullptr) return;
  Control* c = ControlOf(*t, control);
  if (c == nullptr) return;
  switch (c->Kind()) {
    case ControlKind::CheckBox: static_cast<CheckBox*>(c)->UserClick(); break;
    case ControlKind::OptionButton: static_cast<OptionButton*>(c)->UserClick(); break;
    default: c->RaiseClick(); break;
  }
}

void FormHost::OnTextChanged(UiHandle window, UiHandle control, const Text& text) {
  Tracked* t = FindWindow(window);
  Control* c = t == nullptr ? nullptr : ControlOf(*t, control);
  if (c != nullptr && c->Kind() == ControlKind::TextBox && c->AcceptsInput()) {
    static_cast<TextBox*>(c)->SetText(text);
  }
}

void FormHost::OnDateChanged(UiHandle window, UiHandle control, const base::DateTime& value) {
  Tracked* t = FindWindow(window);
  Control* c = t == nullptr ? nullptr : ControlOf(*t, control);
  if (c != nullptr && c->Kind() == ControlKind::DatePicker && c->AcceptsInput()) {
    static_cast<DatePicker*>(c)->SetValue(value);
  }
}

void FormHost::OnList(UiHandle window, UiHandle control, const platform::UiListEvent& e) {
  Tracked* t = FindWindow(window);
  Control* c = t == nullptr ? nullptr : ControlOf(*t, control);
  if (c == nullptr || c->Kind() != ControlKind::ListView) return;
  auto* lv = static_cast<ListView*>(c);
  switch (e.what) {
    case platform::UiListWhat::RowClick: lv->UserClickRow(e.index); break;
    case platform::UiListWhat::RowCheck: lv->UserCheckRow(e.index, e.checked); break;
    case platform::UiListWhat::ColumnClick: lv->UserClickColumn(e.index); break;
  }
}

void FormHost::OnSelect(UiHandle window, UiHandle control, int index) {
  Tracked* t = FindWindow(window);
  Control* c = t == nullptr ? nullptr : ControlOf(*t, control);
  if (c != nullptr && c->Kind() == ControlKind::ComboBox)
    static_cast<ComboBox*>(c)->UserSelect(index);
}

void FormHost::OnFocus(UiHandle window, UiHandle control) {
  Tracked* t = FindWindow(window);
  if (t == nullptr) return;
  Control* c = control == 0 ? nullptr : ControlOf(*t, control);
  if (control != 0 && c == nullptr) return;
  t->form->SetActiveControl(c);
}

void FormHost::OnActivate(UiHandle window, bool active) {
  Tracked* t = FindWindow(window);
  if (t == nullptr) return;
  if (active) {
    t->form->RaiseActivate();
  } else {
    t->form->RaiseDeactivate();
  }
}

void FormHost::OnCloseRequest(UiHandle window) {
  Tracked* t = FindWindow(window);
  if (t != nullptr) t->form->Unload(UnloadMode::ControlMenu);
}

void FormHost::OnMoved(UiHandle window, const platform::UiRect& rect) {
  Tracked* t = FindWindow(window);
  if (t != nullptr) t->form->Move(rect.left, rect.top, rect.width, rect.height);
}

void FormHost::OnMinimized(UiHandle window, bool minimized) {
  Tracked* t = FindWindow(window);
  if (t != nullptr) t->form->SetWindowState(minimized ? kWindowMinimized : kWindowNormal);
}

void FormHost::OnMenu(UiHandle window, std::uint32_t itemId) {
  Tracked* t = FindWindow(window);
  if (t == nullptr) return;
  const auto& all = t->form->Controls();
  if (itemId == 0 || itemId > all.size()) return;
  Control* c = all[itemId - 1];
  if (c->Kind() == ControlKind::MenuItem || c->Kind() == ControlKind::Menu) {
    static_cast<MenuItem*>(c)->Choose();
  }
}

}  // namespace kit
