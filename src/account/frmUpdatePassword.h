#pragma once
// Update Password: a user name and a new password, proved against the account service
// and stored for the scheduled jobs (account/UpdatePasswordRules holds the rules).
#include "frame/AppState.h"
#include "kit/Controls.h"
#include "kit/Form.h"
#include "kit/Ui.h"

namespace account {

class frmUpdatePassword : public kit::Form {
 public:
  frmUpdatePassword(frame::AppState& app, kit::Ui& ui);

  void cmdUpdate_Click();  // apply
  void cmdClear_Click();   // reset
  void txtPassword_Change();
  void Picture1_Click();  // help
  void Picture2_Click();  // close

  kit::Label lblCapbar{*this, u"lblCapbar", {0, 0, 5400, 420}};
  kit::Label lblTitle{*this, u"lblTitle", {180, 100, 3600, 255}, u"Update Password"};
  kit::Picture Picture1{*this, u"Picture1", {4740, 100, 240, 240}, u"qv_small_help"};
  kit::Picture Picture2{*this, u"Picture2", {5040, 100, 240, 240}, u"qv_small_close"};
  kit::Label Label1{*this,
                    u"Label1",
                    {300, 600, 4900, 255},
                    u"Update the password for your existing scheduled jobs."};
  kit::ControlArray<kit::Label> lblLabels{
      *this, u"lblLabels", {{300, 1110, 1200, 255}, {300, 1560, 1200, 255}}};
  kit::TextBox txtUserName{*this, u"txtUserName", {1620, 1065, 3300, 315}};
  kit::TextBox txtPassword{*this, u"txtPassword", {1620, 1515, 3300, 315}};
  kit::PictureButton cmdUpdate{*this, u"cmdUpdate", {2220, 2220, 1300, 345}, u"&Apply"};
  kit::PictureButton cmdClear{*this, u"cmdClear", {3660, 2220, 1300, 345}, u"&Reset"};

 protected:
  void Form_Load() override;
  void Form_Unload(int& cancel) override;

 private:
  frame::AppState& app_;
  kit::Ui& ui_;
};

}  // namespace account
