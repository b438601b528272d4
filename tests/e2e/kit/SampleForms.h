#pragma once
// Small screens written the way the product's screens are: one class with its
// controls, its layout in twips and its handlers, and nothing of the renderer.
#include "kit/Controls.h"
#include "kit/Form.h"
#include "kit/ToolTips.h"
#include "kit/Ui.h"
#include "kit/WindowLook.h"
#include "platform/SystemInfo.h"

namespace kit_e2e {

// One skinned button in each state, with its state written under it.
class frmSkins : public kit::Form {
 public:
  frmSkins() : Form(u"frmSkins", {2400, 1800, 6900, 2250}, u"Skinned buttons") {
    SetBackColor(0xF9F8F6);
  }

  kit::PictureButton normal{*this, u"cmdNormal", {300, 450, 1350, 345}, u"&Normal"};
  kit::PictureButton hover{*this, u"cmdHover", {1950, 450, 1350, 345}, u"&Hover"};
  kit::PictureButton pressed{*this, u"cmdPressed", {3600, 450, 1350, 345}, u"&Pressed"};
  kit::PictureButton disabled{*this, u"cmdDisabled", {5250, 450, 1350, 345}, u"&Disabled"};
  kit::Label lblStates{*this,
                       u"lblStates",
                       {300, 1050, 6300, 255},
                       u"state 0 normal, 1 hover, pressed (left button held), 2 disabled"};
  kit::CheckBox chkOption{
      *this, u"chkOption", {300, 1440, 3000, 255}, u"&Auto Pause (Bandwidth used)"};

 protected:
  void Form_Load() override {
    kit::ApplySkin(normal, kit::kSkinNormal);
    kit::ApplySkin(hover, kit::kSkinHover);
    kit::ApplySkin(pressed, kit::kSkinNormal);
    kit::ApplySkin(disabled, kit::kSkinDisabled);
    chkOption.SetValue(1);
  }
};

}  // namespace kit_e2e
