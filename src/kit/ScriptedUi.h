#pragma once
// A Ui without windows, for tests and headless runs. Message boxes are answered
// from a queue of scripted inputs that drive the real MesgBox (a button press, a key,
// the close picture), and every question asked is recorded. Other forms shown
// modally run a script registered for their name, then close.
#include <deque>
#include <functional>
#include <vector>

#include "kit/Ui.h"

namespace kit {

class ScriptedUi : public Ui {
 public:
  // One input to the message box.
  struct Answer {
    enum class Kind { Button, AltKey, Enter, Close, Tab, Space };
    Kind kind = Kind::Close;
    int button = 0;    // Button: left button up on cmdButton(button)
    char16_t key = 0;  // AltKey: the letter, either case

    static Answer Press(int index) { return {Kind::Button, index, 0}; }
    static Answer Alt(char16_t letter) { return {Kind::AltKey, 0, letter}; }
    static Answer Enter() { return {Kind::Enter, 0, 0}; }
    static Answer Close() { return {Kind::Close, 0, 0}; }
    // The keyboard's navigation: Tab (Shift+Tab with `back`), Space on the focus.
    static Answer Tab(bool back = false) { return {Kind::Tab, back ? 1 : 0, 0}; }
    static Answer Space() { return {Kind::Space, 0, 0}; }
    // By the keyboard, which gives every button of every set its own result.
    static Answer Yes() { return Alt(u'y'); }
    static Answer No() { return Alt(u'n'); }
    static Answer Ok() { return Alt(u'o'); }
    static Answer Cancel() { return Alt(u'c'); }
  };

  struct Question {
    Text text;
    int icon = 0;
    int buttons = 0;
    Text title;
    int result = 0;           // what MessageBox returned
    int inputs = 0;           // answers used on this box
    bool unanswered = false;  // the queue ran dry: it was closed with MsgClose
  };

  struct Shown {
    Text name;
    bool modal = false;
    bool normal = false;  // by ShowNormal: restored and brought in front
  };

  explicit ScriptedUi(int twipsPerPixel = 15, TipBackend* tipBackend = nullptr);

  // Queues inputs for the coming message boxes. A box takes inputs until it has gone;
  // one that is still open when the queue is empty is closed with MsgClose.
  void Queue(Answer answer) { answers_.push_back(answer); }
  void Queue(std::initializer_list<Answer> answers);
  std::size_t Pending() const { return answers_.size(); }

  const std::vector<Question>& Questions() const { return questions_; }
  int UnansweredCount() const;

  // Runs `script` whenever a form of that name is shown (modally or not), after
  // its load and activation. A modal form still up after the script is unloaded.
  void OnShow(const Text& formName, std::function<void(Form&)> script);
  const std::vector<Shown>& ShownForms() const { return shown_; }

  // A popup menu runs the script for its name (typically item->Choose()).
  void OnPopup(const Text& menuName, std::function<void(Menu&)> script);
  const std::vector<Text>& Popups() const { return popups_; }

  int DoEventsCount() const { return doEvents_; }
  void SetTwipsPerPixel(int twipsPerPixel) { tpp_ = twipsPerPixel; }

  void ShowModal(Form& form) override;
  void Show(Form& form) override;
  // As Show; the form's state becomes normal.
  void ShowNormal(Form& form) override;
  void PopupMenu(Form& form, Menu& menu) override;
  void DoEvents() override { ++doEvents_; }
  // A loaded form stands for its own window: its address.
  std::uintptr_t NativeWindowOf(const Form& form) override {
    return form.IsLoaded() ? reinterpret_cast<std::uintptr_t>(&form) : 0;
  }
  int TwipsPerPixelX() override { return tpp_; }
  int TwipsPerPixelY() override { return tpp_; }
  const TextMeasure& Measure() override { return measure_; }

 private:
  void AnswerBox(MesgBox& box);
  void Apply(MesgBox& box, const Answer& answer);
  void RunScript(Form& form);

  int tpp_;
  EstimatedTextMeasure measure_;
  std::deque<Answer> answers_;
  std::vector<Question> questions_;
  std::vector<std::pair<Text, std::function<void(Form&)>>> scripts_;
  std::vector<std::pair<Text, std::function<void(Menu&)>>> popupScripts_;
  std::vector<Shown> shown_;
  std::vector<Text> popups_;
  int doEvents_ = 0;
};

}  // namespace kit
