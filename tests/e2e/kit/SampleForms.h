#pragma once
// Small screens written the way the product's screens are: one class with its
// controls, its layout in twips and its handlers, and nothing of the renderer.
#include "kit/Controls.h"
#include "kit/ListView.h"
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

// The platform's own controls as a job list would use them: a list with check marks,
// a date picker, a text box, option buttons and a progress bar.
class frmControls : public kit::Form {
 public:
  frmControls() : Form(u"frmControls", {1500, 1200, 8400, 5400}, u"Scheduled Jobs") {
    lvJobs.on.ItemClick = [this](kit::ListItem& row) { clickedRow = row.Index(); };
    lvJobs.on.ItemCheck = [this](kit::ListItem& row) { checkedRow = row.Index(); };
  }

  int clickedRow = 0;
  int checkedRow = 0;

  kit::ListView lvJobs{*this, u"lvJobs", {240, 240, 7800, 2400}};
  kit::Label lblNext{*this, u"lblNext", {240, 2850, 1500, 255}, u"Next Transfer:"};
  kit::DatePicker DTPicker{*this, u"DTPicker", {1800, 2790, 2400, 315}};
  kit::Label lblMail{*this, u"lblMail", {240, 3300, 1500, 255}, u"E-mail:"};
  kit::TextBox txtMail{*this, u"txtMail", {1800, 3240, 3600, 315}, u"jsmith@example.com"};
  kit::OptionButton optDaily{*this, u"optDaily", {240, 3780, 1500, 255}, u"&Daily"};
  kit::OptionButton optWeekly{*this, u"optWeekly", {1800, 3780, 1500, 255}, u"&Weekly"};
  kit::ProgressBar pbDone{*this, u"pbDone", {240, 4260, 7800, 240}};

 protected:
  void Form_Load() override {
    lvJobs.SetCheckboxes(true);
    lvJobs.AddColumn(u"Backup/Restore set", 2400);
    lvJobs.AddColumn(u"Next Transfer", 2100);
    lvJobs.AddColumn(u"Status", 1500);
    lvJobs.AddColumn(u"No.", 0);  // data the user does not see
    const char16_t* rows[][4] = {{u"My Documents", u"11/23/2026 9:00 PM", u"In Progress", u"1"},
                                 {u"Photos", u"11/24/2026 2:30 AM", u"", u"2"},
                                 {u"Mail archive", u"11/28/2026 11:00 PM", u"", u"3"}};
    for (auto& r : rows) {
      kit::ListItem& item = lvJobs.AddRow(r[0]);
      for (int i = 1; i < 4; ++i) item.SetSubItem(i, r[i]);
    }
    lvJobs.Item(2).SetChecked(true);
    lvJobs.Item(1).SetSelected(true);
    DTPicker.SetValue({2026, 11, 24, 2, 30, 0});
    optWeekly.SetValue(true);
    pbDone.SetValue(60);
  }
};

}  // namespace kit_e2e
