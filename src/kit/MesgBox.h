#pragma once
// The product's own message box. One form serves every question: the text, the
// buttons and the icon are set for each call, the window sizes itself to the text,
// and callers get the platform's familiar result codes. Screens call
// Ui::MessageBox(text, icon, buttons, title) with the application title.
#include <cstdint>

#include "kit/Controls.h"
#include "kit/Form.h"

namespace kit {

class Ui;

// Icons, by the `icon` argument.
inline constexpr int kIconInfo = 0;
inline constexpr int kIconQuestion = 1;
inline constexpr int kIconError = 2;
inline constexpr int kIconWarning = 3;

// Button sets, by the `buttons` argument.
inline constexpr int kButtonsOk = 0;
inline constexpr int kButtonsOkCancel = 1;
inline constexpr int kButtonsYesNo = 2;
inline constexpr int kButtonsOkCancelRetry = 3;
inline constexpr int kButtonsOkCancelIgnore = 4;

// Results.
inline constexpr int kResultOk = 0;
inline constexpr int kResultCancel = 2;
inline constexpr int kResultClosed = 3;
inline constexpr int kResultRetry = 4;
inline constexpr int kResultIgnore = 5;
inline constexpr int kResultYes = 6;
inline constexpr int kResultNo = 7;

class MesgBox : public Form {
 public:
  MesgBox();

  // The body of MessageBox: sets the box up, shows it modally through `ui`, and
  // returns Result when it has gone.
  int ShowMessage(Ui& ui, const Text& text, int icon, int buttons, const Text& title);
  // Places the text in the label that suits its length and lays the window out.
  void SetMessage(const Text& text);
  void ResizeMsgbox();
  // Caption of lbl_cmdButton(index) and visibility of cmdButton(index); the last
  // argument is accepted and not used.
  void SetButton(int index, const Text& caption, bool visible, bool isDefault);

  // A press of cmdButton(index): the result by the button's caption, then unload.
  void cmdButton_Click(int index);

  // Members that live from call to call.
  int Result() const { return result_; }
  int ButtonCount() const { return buttonCount_; }
  const Text& AllowedKeys() const { return allowedKeys_; }
  const Text& DefaultKey() const { return defaultKey_; }
  bool ShortText() const { return shortText_; }
  bool HoverReady() const { return hoverReady_; }

  // The arguments of the call in progress (or the last one).
  const Text& CallText() const { return callText_; }
  int CallIcon() const { return callIcon_; }
  int CallButtons() const { return callButtons_; }
  const Text& CallTitle() const { return callTitle_; }

  // Twips the box keeps below the text before the buttons, and below them.
  static constexpr double kGapAboveButtons = 300;
  static constexpr double kGapBelowButtons = 150;

  // Controls, under the design's names.
  Picture Picture1;
  Label lblCapbar;
  Label AppCaption;
  Picture MsgClose;
  ControlArray<Picture> picIcon;
  Label lblText;
  Label lblSmallText;
  Picture picBtnContainer;
  ControlArray<PictureButton> cmdButton;
  Picture Picture2;

 protected:
  void Form_Load() override;
  void Form_Resize() override;
  void Form_KeyDown(KeyArgs& args) override;
  void Form_KeyUp(KeyArgs& args) override;
  void Form_MouseDown(const MouseArgs& args) override;

 private:
  void SetUpButtons(int buttons);
  // A letter pressed with Alt (Enter counts as DefaultKey): the result, then unload.
  void PressKey(char16_t letter);
  void MsgClose_MouseUp(const MouseArgs& args);
  void lbl_cmdButton_MouseMove(int index);
  void DragStrip_MouseDown(const MouseArgs& args);
  bool HighDpi() const;

  Ui* ui_ = nullptr;
  bool showing_ = false;

  std::int16_t result_ = 0;
  int buttonCount_ = -1;
  Text allowedKeys_;
  Text defaultKey_;
  bool shortText_ = false;
  bool hoverReady_ = false;

  Text callText_;
  int callIcon_ = 0;
  int callButtons_ = 0;
  Text callTitle_;
};

// The result a button caption gives; nullopt-like -1 when the caption matches none
// (the caption compare is exact: "&Ok" and "&Cancel" match nothing).
int ResultForCaption(TextView caption);
// The letter after the "&" of a caption, in lower case; 0 when it has none.
char16_t MnemonicOf(TextView caption);
// The result a letter gives ("o" 0, "c" 2, "y" 6, "n" 7, "r" 4, "i" 5, either case);
// -1 for any other.
int ResultForLetter(char16_t letter);

}  // namespace kit
