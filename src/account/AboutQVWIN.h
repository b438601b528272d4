#pragma once
// About: the running monitor's version and the versions of the product's program
// files (account/VersionInventory holds the rules).
#include "frame/AppState.h"
#include "kit/Controls.h"
#include "kit/Form.h"
#include "kit/Ui.h"

namespace account {

class AboutQVWIN : public kit::Form {
 public:
  AboutQVWIN(frame::AppState& app, kit::Ui& ui);

  void lblcopy_Click();  // the OK button, in spite of its name
  void lblshortclose_Click();

  // The background holds every other control.
  kit::Picture picbkgrd{*this, u"picbkgrd", {0, 0, 6750, 4950}, u"qv_about_us"};
  kit::Label lblCapbar{picbkgrd, u"lblCapbar", {0, 0, 6750, 420}};
  kit::Label LblAppCaption{
      picbkgrd, u"LblAppCaption", {180, 100, 5000, 255}, u"About Corvane for Windows"};
  kit::Label lblshortclose{picbkgrd, u"lblshortclose", {6390, 100, 240, 240}, u"X"};
  kit::Picture imglogo{picbkgrd, u"imglogo", {300, 600, 960, 960}, u"qv_logo_monitor"};
  kit::Label Label1{picbkgrd, u"Label1", {1440, 720, 5000, 255}};
  kit::Label Label2{
      picbkgrd, u"Label2", {1440, 1050, 5000, 480}, u"Copyright (C) Corvane. All rights reserved."};
  kit::Label Label3{picbkgrd, u"Label3", {300, 1740, 3000, 255}, u"Version Information"};
  kit::TextBox txtVersionList{picbkgrd, u"txtVersionList", {300, 2040, 6150, 2100}};
  kit::PictureButton lblcopy{picbkgrd, u"lblcopy", {5100, 4380, 1350, 345}, u"&OK"};

 protected:
  void Form_Load() override;
  void Form_Unload(int& cancel) override;

 private:
  frame::AppState& app_;
  kit::Ui& ui_;
};

}  // namespace account
