#include "kit/ScriptedUi.h"

#include "kit/Menu.h"
#include "kit/MesgBox.h"

namespace kit {

ScriptedUi::ScriptedUi(int twipsPerPixel, TipBackend* tipBackend)
    : Ui(tipBackend), tpp_(twipsPerPixel) {}

void ScriptedUi::Queue(std::initializer_list<Answer> answers) {
  for (const Answer& a : answers) answers_.push_back(a);
}

int ScriptedUi::UnansweredCount() const {
  int n = 0;
  for (const Question& q : questions_) n += q.unanswered ? 1 : 0;
  return n;
}

void ScriptedUi::OnShow(const Text& formName, std::function<void(Form&)> script) {
  scripts_.emplace_back(formName, std::move(script));
}

void ScriptedUi::OnPopup(const Text& menuName, std::function<void(Menu&)> script) {
  popupScripts_.emplace_back(menuName, std::move(script));
}

void ScriptedUi::RunScript(Form& form) {
  for (auto& [name, script] : scripts_) {
    if (name == form.Name() && form.IsLoaded()) script(form);
  }
}

void ScriptedUi::Show(Form& form) {
  form.Load();
  if (!form.IsLoaded()) return;
  form.SetVisible(true);
  shown_.push_back({form.Name(), false});
  form.RaiseActivate();
  RunScript(form);
}

void ScriptedUi::ShowNormal(Form& form) {
  Show(form);
  if (!form.IsLoaded()) return;
  form.SetWindowState(kWindowNormal);
  if (!shown_.empty()) shown_.back().normal = true;
}

void ScriptedUi::ShowModal(Form& form) {
  form.Load();
  if (!form.IsLoaded()) return;
  form.SetVisible(true);
  shown_.push_back({form.Name(), true});
  form.RaiseActivate();
  if (auto* box = dynamic_cast<MesgBox*>(&form)) {
    AnswerBox(*box);
    return;
  }
  RunScript(form);
  // A modal show ends with the form gone; one the script left up is closed here.
  if (form.IsLoaded() && form.Visible() && !form.Unload(UnloadMode::Code)) form.Hide();
}

void ScriptedUi::AnswerBox(MesgBox& box) {
  Question q;
  q.text = box.CallText();
  q.icon = box.CallIcon();
  q.buttons = box.CallButtons();
  q.title = box.CallTitle();
  while (box.IsLoaded() && !answers_.empty()) {
    Answer a = answers_.front();
    answers_.pop_front();
    ++q.inputs;
    Apply(box, a);
  }
  if (box.IsLoaded()) {
    q.unanswered = true;
    Apply(box, Answer::Close());
  }
  if (box.IsLoaded()) box.Unload(UnloadMode::Code);
  q.result = box.Result();
  questions_.push_back(q);
}

void ScriptedUi::Apply(MesgBox& box, const Answer& answer) {
  switch (answer.kind) {
    case Answer::Kind::Button:
      if (box.cmdButton.Contains(answer.button)) {
        box.cmdButton(answer.button).RaiseMouseUp({kLeftButton, 0, 0, 0});
      }
      break;
    case Answer::Kind::AltKey: {
      char16_t k = answer.key;
      if (k >= u'a' && k <= u'z') k = static_cast<char16_t>(k - u'a' + u'A');
      KeyArgs args{k, kAltMask};
      box.DeliverKeyUp(args);
      break;
    }
    case Answer::Kind::Enter: {
      KeyArgs args{kKeyReturn, 0};
      box.DeliverKeyDown(args);
      break;
    }
    case Answer::Kind::Close: box.MsgClose.RaiseMouseUp({kLeftButton, 0, 0, 0}); break;
    case Answer::Kind::Tab:
    case Answer::Kind::Space: {
      const int key = answer.kind == Answer::Kind::Tab ? kKeyTab : kKeySpace;
      const int shift = answer.button != 0 ? kShiftMask : 0;
      KeyArgs down{key, shift};
      box.DeliverKeyDown(down);
      KeyArgs up{key, shift};
      if (box.IsLoaded()) box.DeliverKeyUp(up);
      break;
    }
  }
}

void ScriptedUi::PopupMenu(Form& form, Menu& menu) {
  popups_.push_back(menu.Name());
  for (auto& [name, script] : popupScripts_) {
    if (name == menu.Name()) script(menu);
  }
}

}  // namespace kit
