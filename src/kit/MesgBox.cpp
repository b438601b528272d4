#include "kit/MesgBox.h"

#include "kit/TextMeasure.h"
#include "kit/Ui.h"
#include "kit/WindowLook.h"

namespace kit {

namespace {

constexpr double kButtonWidth = 795;
constexpr double kButtonHeight = 345;
constexpr double kDesignWidth = 5400;
constexpr double kDesignHeight = 2400;

const EstimatedTextMeasure kFallbackMeasure;

}  // namespace

int ResultForCaption(TextView caption) {
  // Exact compare, kept as it always was: "&Ok" and "&Cancel" match nothing, and
  // such a press leaves the result of the previous call.
  if (caption == u"&OK") return kResultOk;
  if (caption == u"Cancel") return kResultCancel;
  if (caption == u"&Yes") return kResultYes;
  if (caption == u"&No") return kResultNo;
  if (caption == u"&Ignore") return kResultIgnore;
  if (caption == u"&Retry") return kResultRetry;
  return -1;
}

char16_t MnemonicOf(TextView caption) {
  const std::size_t amp = caption.find(u'&');
  if (amp == TextView::npos || amp + 1 >= caption.size()) return 0;
  char16_t c = caption[amp + 1];
  if (c >= u'A' && c <= u'Z') c = static_cast<char16_t>(c - u'A' + u'a');
  return c;
}

int ResultForLetter(char16_t letter) {
  switch (letter) {
    case u'o':
    case u'O': return kResultOk;
    case u'c':
    case u'C': return kResultCancel;
    case u'y':
    case u'Y': return kResultYes;
    case u'n':
    case u'N': return kResultNo;
    case u'r':
    case u'R': return kResultRetry;
    case u'i':
    case u'I': return kResultIgnore;
    default: return -1;
  }
}

MesgBox::MesgBox()
    : Form(u"MesgBox", {0, 0, kDesignWidth, kDesignHeight}),
      Picture1(*this, u"Picture1", {0, 0, kDesignWidth, kDesignHeight + 100}),
      lblCapbar(*this, u"lblCapbar", {0, 0, kDesignWidth, 200}),
      AppCaption(*this, u"AppCaption", {120, 0, 4200, 195}),
      MsgClose(*this, u"MsgClose", {kDesignWidth - 500, 10, 180, 180}, u"qv_small_close"),
      // The icon stands a little below the strip and clear of the text beside it.
      picIcon(*this, u"picIcon",
              {{60, 260, 480, 480}, {60, 260, 480, 480}, {60, 260, 480, 480}, {60, 260, 480, 480}}),
      lblText(*this, u"lblText", {600, 1000, 4200, 195}),
      lblSmallText(*this, u"lblSmallText", {600, 200, 3000, 195}),
      picBtnContainer(*this, u"picBtnContainer", {50, 1000, kDesignWidth - 100, 495}),
      cmdButton(picBtnContainer, u"cmdButton",
                {{0, 75, kButtonWidth, kButtonHeight},
                 {0, 75, kButtonWidth, kButtonHeight},
                 {0, 75, kButtonWidth, kButtonHeight}}),
      Picture2(*this, u"Picture2", {kDesignWidth - 469, kDesignHeight - 120, 469, 120}) {
  SetKeyPreview(true);
  SetStartUpPosition(StartUpPosition::CenterScreen);
  // The skin's colours: a light teal strip with the title in dark teal over a light
  // body.
  Picture1.SetBackColor(0x00F9F8F6);
  lblCapbar.SetBackColor(0x00F1EFDD);
  AppCaption.SetForeColor(0x004A4307);
  AppCaption.SetFontBold(true);
  MsgClose.SetToolTipText(u"Close");

  static const char16_t* const kIconKeys[] = {u"qv_msg_info", u"qv_msg_question", u"qv_msg_cross",
                                              u"qv_msg_warn"};
  for (int i = 0; i < picIcon.Count(); ++i) {
    picIcon(i).SetPictureKey(kIconKeys[i]);
    picIcon(i).SetVisible(false);
  }
  lblText.SetAutoSize(true);
  lblText.SetWordWrap(true);
  lblText.SetVisible(false);
  lblSmallText.SetAutoSize(true);
  lblSmallText.SetVisible(false);

  for (int i = 0; i < cmdButton.Count(); ++i) {
    PictureButton& b = cmdButton(i);
    b.SetVisible(false);
    b.on.MouseUp = [this, i](const MouseArgs& a) {
      if (a.button == kLeftButton) cmdButton_Click(i);
    };
    b.Lbl().on.MouseUp = b.on.MouseUp;
    b.Lbl().on.MouseMove = [this, i](const MouseArgs&) { lbl_cmdButton_MouseMove(i); };
  }
  picBtnContainer.on.MouseMove = [this](const MouseArgs&) { hoverReady_ = true; };
  MsgClose.on.MouseUp = [this](const MouseArgs& a) { MsgClose_MouseUp(a); };

  // doc:keyboard
  // The keyboard: Tab goes along the buttons and then the close picture; Enter or
  // Space on a button gives that button's own result (its letter, as Alt with it
  // would), and on the close picture closes the box.
  MsgClose.SetCaption(u"Close");
  MsgClose.SetRole(Role::PushButton);
  static const char16_t* const kIconNames[] = {u"Information", u"Question", u"Error", u"Warning"};
  for (int i = 0; i < picIcon.Count(); ++i) picIcon(i).SetCaption(kIconNames[i]);
  SetTabOrder({&cmdButton(0), &cmdButton(1), &cmdButton(2), &MsgClose});
  for (int i = 0; i < cmdButton.Count(); ++i) {
    AddKey({KeyStroke::Down, kEnter, &cmdButton(i), nullptr,
            [this, i] { PressKey(MnemonicOf(cmdButton(i).Lbl().Caption())); }});
  }
  AddKey(
      {KeyStroke::Down, kEnter, &MsgClose, nullptr, [this] { MsgClose_MouseUp({kLeftButton}); }});
  // doc:end
  lblCapbar.on.MouseDown = [this](const MouseArgs& a) { DragStrip_MouseDown(a); };
  Picture1.on.MouseDown = lblCapbar.on.MouseDown;
}

bool MesgBox::HighDpi() const {
  return ui_ != nullptr && DotsPerInch(ui_->TwipsPerPixelX()) > 96.0;
}

int MesgBox::ShowMessage(Ui& ui, const Text& text, int icon, int buttons, const Text& title) {
  // One form serves every call. A question asked while the box is up (a timer's,
  // say) cannot have it; it reads as closed, which no caller takes for Yes.
  if (showing_) return kResultClosed;
  ui_ = &ui;
  callText_ = text;
  callIcon_ = icon;
  callButtons_ = buttons;
  callTitle_ = title;

  // Each call starts from the design: no icon, no button of an earlier set.
  if (IsLoaded()) Unload(UnloadMode::Code);
  Load();

  base::IgnoreFailure([&] {
    buttonCount_ = -1;
    SetMessage(text);
    AppCaption.SetCaption(title);
    SetCaption(title);
    SetUpButtons(buttons);
    // The focus starts on the button Enter stands for, so that what Enter does
    // is what the focus shows.
    for (int i = 0; i < buttonCount_ && i < cmdButton.Count(); ++i) {
      if (!defaultKey_.empty() && MnemonicOf(cmdButton(i).Lbl().Caption()) == defaultKey_[0])
        cmdButton(i).SetFocus();
    }
  });
  // A picture that fails leaves the box without icon, and the text where it was.
  base::IgnoreFailure([&] {
    Picture& shown = picIcon(icon);
    shown.SetVisible(true);
    lblText.SetLeft(shown.Width() + 120);
    lblSmallText.SetLeft(shown.Width() + 120);
  });
  base::IgnoreFailure([&] { ResizeMsgbox(); });

  struct Showing {
    bool& flag;
    explicit Showing(bool& f) : flag(f) { flag = true; }
    ~Showing() { flag = false; }
  } showing(showing_);
  ui.ShowModal(*this);
  return result_;
}

void MesgBox::SetMessage(const Text& text) {
  const TextMeasure& measure = ui_ != nullptr ? ui_->Measure() : kFallbackMeasure;
  if (text.size() <= 50) {
    lblSmallText.SetCaption(text);
    AutoSize(lblSmallText, measure);
    shortText_ = true;
    lblText.SetVisible(false);
    lblSmallText.SetVisible(true);
  } else {
    // Short texts get empty lines behind them, so that the box does not look cramped.
    const long n = RoundHalfEven(static_cast<double>(text.size()) / 50.0);
    if (n <= 2) {
      lblText.SetCaption(text + u"\r\n\r\n");
      lblText.SetTop(1000);
    } else if (n <= 4) {
      lblText.SetCaption(text + u"\r\n");
      lblText.SetTop(1230);
    } else if (n == 5) {
      lblText.SetCaption(text);
      lblText.SetTop(1230);
    } else {
      lblText.SetCaption(text);
    }
    // Setting the caption again from itself makes the label measure its height.
    AutoSize(lblText, measure);
    shortText_ = false;
    lblText.SetVisible(true);
    lblSmallText.SetVisible(false);
  }
  ResizeMsgbox();
  const int tppX = ui_ != nullptr ? ui_->TwipsPerPixelX() : 15;
  const int tppY = ui_ != nullptr ? ui_->TwipsPerPixelY() : 15;
  clsRounder().RoundForm(*this, tppX, tppY);
}

void MesgBox::ResizeMsgbox() {
  Label& text = shortText_ ? lblSmallText : lblText;
  PictureButton& first = cmdButton(0);
  if (text.Width() < first.Width()) text.SetWidth(first.Width());
  SetWidth(text.Left() + text.Width() + 500);
  text.SetTop(200);

  picBtnContainer.Move(50, text.Top() + text.Height() + kGapAboveButtons, Width() - 100,
                       picBtnContainer.Height());
  SetHeight(picBtnContainer.Top() + picBtnContainer.Height() + kGapBelowButtons);

  if (buttonCount_ < 1) return;  // no valid set yet: layout without buttons
  const double inner = picBtnContainer.Width();
  if (buttonCount_ == 1) {
    first.SetLeft((inner - first.Width()) / 2);
    return;
  }
  first.SetLeft((inner - (buttonCount_ == 2 ? 1800 : 2800)) / 2);
  for (int i = 1; i < buttonCount_ && i < cmdButton.Count(); ++i) {
    const PictureButton& before = cmdButton(i - 1);
    cmdButton(i).SetLeft(before.Left() + before.Width() + 210);
  }
}

void MesgBox::SetButton(int index, const Text& caption, bool visible, bool isDefault) {
  cmdButton(index).Lbl().SetCaption(caption);
  cmdButton(index).SetVisible(visible);
}

void MesgBox::SetUpButtons(int buttons) {
  // A set outside 0 to 4 gives no button, and no key either: only MsgClose closes.
  allowedKeys_.clear();
  defaultKey_.clear();
  switch (buttons) {
    case kButtonsOk:
      SetButton(0, u"&OK", true, true);
      allowedKeys_ = u"oO";
      defaultKey_ = u"o";
      buttonCount_ = 1;
      break;
    case kButtonsOkCancel:
      SetButton(0, u"&OK", true, false);
      SetButton(1, u"&Cancel", true, true);
      allowedKeys_ = u"ocOC";
      defaultKey_ = u"c";
      buttonCount_ = 2;
      break;
    case kButtonsYesNo:
      SetButton(0, u"&Yes", true, true);
      SetButton(1, u"&No", true, false);
      allowedKeys_ = u"ynYN";
      defaultKey_ = u"y";
      buttonCount_ = 2;
      break;
    case kButtonsOkCancelRetry:
      SetButton(0, u"&Ok", true, true);
      SetButton(1, u"&Cancel", true, false);
      SetButton(2, u"&Retry", true, false);
      allowedKeys_ = u"ocrOCR";
      defaultKey_ = u"o";
      buttonCount_ = 3;
      break;
    case kButtonsOkCancelIgnore:
      SetButton(0, u"&Ok", true, true);
      SetButton(1, u"&Cancel", true, false);
      SetButton(2, u"&Ignore", true, false);
      allowedKeys_ = u"ociOCI";
      defaultKey_ = u"o";
      buttonCount_ = 3;
      break;
    default: break;
  }
}

void MesgBox::cmdButton_Click(int index) {
  const int r = ResultForCaption(cmdButton(index).Lbl().Caption());
  if (r >= 0) result_ = static_cast<std::int16_t>(r);
  Unload(UnloadMode::Code);
}

void MesgBox::PressKey(char16_t letter) {
  if (letter == 0 || allowedKeys_.find(letter) == Text::npos) return;
  const int r = ResultForLetter(letter);
  if (r < 0) return;
  result_ = static_cast<std::int16_t>(r);
  Unload(UnloadMode::Code);
}

void MesgBox::Form_KeyDown(KeyArgs& args) {
  // Enter is the default letter pressed with Alt: Cancel in an OK/Cancel box.
  if (args.keyCode == kKeyReturn && !defaultKey_.empty()) PressKey(defaultKey_[0]);
}

void MesgBox::Form_KeyUp(KeyArgs& args) {
  if (!args.Alt()) return;
  if (args.keyCode >= 'A' && args.keyCode <= 'Z') PressKey(static_cast<char16_t>(args.keyCode));
}

void MesgBox::MsgClose_MouseUp(const MouseArgs& args) {
  if (args.button != kLeftButton) return;
  for (int i = 0; i < cmdButton.Count(); ++i) {
    const Text& caption = cmdButton(i).Lbl().Caption();
    if (caption == u"No" || caption == u"Cancel") {
      cmdButton_Click(i);
      return;
    }
  }
  result_ = kResultClosed;
  Unload(UnloadMode::Code);
}

void MesgBox::lbl_cmdButton_MouseMove(int index) {
  if (!hoverReady_) return;
  for (int i = 0; i < cmdButton.Count(); ++i) {
    ApplySkin(cmdButton(i), i == index ? kSkinHover : kSkinNormal);
  }
}

void MesgBox::DragStrip_MouseDown(const MouseArgs& args) {
  if (args.button == kLeftButton) BeginDrag();
}

void MesgBox::Form_MouseDown(const MouseArgs& args) { DragStrip_MouseDown(args); }

void MesgBox::Form_Load() {
  for (int i = 0; i < cmdButton.Count(); ++i) ApplySkin(cmdButton(i), kSkinNormal);
  SetFormFrame(*this, false);
  if (ui_ == nullptr) return;
  ResizeControl(*this, ui_->TwipsPerPixelX(), {}, [this](double) {
    Picture2.SetLeft(Width() - 475);
    MsgClose.SetLeft(Width() - 450);
    for (int i = 0; i < cmdButton.Count(); ++i) {
      Label& l = cmdButton(i).Lbl();
      l.Move(l.Left() + 30, l.Top() - 20, l.Width(), l.Height());
    }
  });
}

void MesgBox::Form_Resize() {
  Picture1.SetWidth(Width());
  Picture1.SetHeight(Height() + 100);
  if (HighDpi()) {
    MsgClose.SetLeft(Width() - 450);
    Picture2.SetLeft(Width() - 475);
  } else {
    MsgClose.SetLeft(Width() - 500);
    Picture2.SetLeft(Width() - 469);
  }
  Picture2.SetTop(Height() - Picture2.Height());
}

}  // namespace kit
