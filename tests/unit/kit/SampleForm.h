#pragma once
// A screen as later screens are written: controls under their names with their layout,
// handlers under their names. The model's tests and the host's tests both drive it.
#include <vector>

#include "kit/Controls.h"
#include "kit/Form.h"
#include "kit/ListView.h"
#include "kit/Menu.h"

namespace kittest {

class frmSample : public kit::Form {
 public:
  frmSample() : Form(u"frmSample", {1200, 900, 6000, 4000}, u"Sample") {
    lblStatus.SetForeColor(0x00112233);
    cmdGo.on.MouseUp = [this](const kit::MouseArgs& a) { cmdGo_MouseUp(a); };
    cmdGo.Lbl().on.MouseUp = cmdGo.on.MouseUp;
    chkAll.on.Click = [this] { ++chkAllClicks; };
    txtName.on.Change = [this] { lastText = txtName.GetText(); };
    lvItems.on.ItemCheck = [this](kit::ListItem& item) { lastChecked = item.Index(); };
    lvItems.on.ColumnClick = [this](int column) { lvItems_ColumnClick(column); };
    mnuHide.on.Click = [this] { lblStatus.SetVisible(false); };
    mnuPopupGo.on.Click = [this] { lblStatus.SetCaption(u"Chosen"); };
    Timer1.on.Timer = [this] { ++ticks; };
    lblStatus.on.MouseDown = [this](const kit::MouseArgs& a) {
      if (a.button == kit::kLeftButton) BeginDrag();
    };
  }

  void cmdGo_MouseUp(const kit::MouseArgs& a) {
    lastButton = a.button;
    if (a.button == kit::kLeftButton) lblStatus.SetCaption(u"Going");
  }
  void lvItems_ColumnClick(int column) {
    lastColumn = column;
    lvItems.SetSortOrder(lvItems.Order() == kit::SortOrder::Ascending ? kit::SortOrder::Descending
                                                                      : kit::SortOrder::Ascending);
    lvItems.SetSortKey(column - 1);
    lvItems.SetSorted(true);
  }

  bool refuseClose = false;
  bool withRows = false;  // two rows at load
  int loads = 0;
  int unloads = 0;
  int activations = 0;
  int chkAllClicks = 0;
  int ticks = 0;
  int lastButton = 0;
  int lastChecked = 0;
  int lastColumn = 0;
  kit::UnloadMode lastMode = kit::UnloadMode::Code;
  base::Text lastText;
  std::vector<int> keysSeen;

  kit::Label lblStatus{*this, u"lblStatus", {120, 120, 3000, 255}, u"Idle"};
  kit::Picture picFrame{*this, u"picFrame", {120, 500, 5000, 900}, u"qv_medium"};
  kit::PictureButton cmdGo{picFrame, u"cmdGo", {100, 100, 1200, 345}, u"&Go"};
  kit::OptionButton optInFrame{picFrame, u"optInFrame", {100, 500, 2000, 255}, u"C"};
  kit::CheckBox chkAll{*this, u"chkAll", {120, 1500, 2000, 255}, u"&Select All"};
  kit::OptionButton optA{*this, u"optA", {2200, 1500, 1000, 255}, u"A"};
  kit::OptionButton optB{*this, u"optB", {3300, 1500, 1000, 255}, u"B"};
  kit::TextBox txtName{*this, u"txtName", {120, 1800, 2000, 285}};
  kit::ListView lvItems{*this, u"lvItems", {120, 2400, 5000, 1200}};
  kit::ProgressBar pbDisk{*this, u"pbDisk", {120, 3700, 2000, 200}};
  kit::Timer Timer1{*this, u"Timer1", 60000};
  kit::Menu mnuMain{*this, u"mnuMain", u"Main"};
  kit::MenuItem mnuHide{mnuMain, u"mnuHide", u"&Hide"};
  kit::Menu mnuPopup{*this, u"mnuPopup", u"Popup"};
  kit::MenuItem mnuPopupGo{mnuPopup, u"mnuPopupGo", u"&Go"};

 protected:
  void Form_Load() override {
    ++loads;
    mnuPopup.SetVisible(false);  // a popup only, as the tray menu is
    lvItems.SetCheckboxes(true);
    lvItems.AddColumn(u"Name", 1500);
    lvItems.AddColumn(u"Size", 1000);
    if (withRows) {
      lvItems.AddRow(u"alpha").SetSubItem(1, u"1 KB");
      lvItems.AddRow(u"beta").SetSubItem(1, u"2 KB");
    }
  }
  void Form_Activate() override { ++activations; }
  void Form_QueryUnload(int& cancel, kit::UnloadMode mode) override {
    lastMode = mode;
    if (refuseClose) cancel = 1;
  }
  void Form_Unload(int&) override { ++unloads; }
  void Form_KeyDown(kit::KeyArgs& args) override {
    keysSeen.push_back(args.keyCode);
    if (args.keyCode == 'Q') args.keyCode = 0;  // swallowed
  }
};

}  // namespace kittest
