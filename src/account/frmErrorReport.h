#pragma once
// Send Error Report: the user's message to support, with the machine, the account,
// the tails of the logs and the regional settings (account/FeedbackReport holds the
// rules).
#include "frame/AppState.h"
#include "kit/Controls.h"
#include "kit/Form.h"
#include "kit/ListView.h"
#include "kit/Ui.h"

namespace account {

class frmErrorReport : public kit::Form {
 public:
  frmErrorReport(frame::AppState& app, kit::Ui& ui);

  void cmdSend_Click();
  void cmdExit_Click();
  void cmdReset_Click();
  void txtTroubleTicket_Change();
  void txtQty_KeyPress(int& keyAscii);
  void ClearTextBoxesOnForm();
  bool SendFailed() const { return sendFailed_; }

  // The background holds every other control.
  kit::Picture picbkgrd{*this, u"picbkgrd", {0, 0, 8625, 6330}, u"qv_medium"};
  kit::Label lblCapbar{picbkgrd, u"lblCapbar", {0, 0, 8625, 660}};
  kit::Picture imgTitleinfo{picbkgrd, u"imgTitleinfo", {180, 120, 420, 420}, u"qv_feedback"};
  kit::Label lblTitle{picbkgrd, u"lblTitle", {720, 210, 4500, 300}, u"Report Feedback"};
  kit::Label typelbl{picbkgrd,
                     u"typelbl",
                     {300, 840, 8000, 255},
                     u"Send your feedback to Corvane technical support team"};
  kit::Label lblFromName{picbkgrd, u"lblFromName", {300, 1290, 2000, 255}, u"Corvane Username"};
  kit::TextBox txtFromName{picbkgrd, u"txtFromName", {2400, 1250, 5900, 315}};
  kit::Label lblFrom{picbkgrd, u"lblFrom", {300, 1710, 2000, 255}, u"Email address"};
  kit::TextBox txtFrom{picbkgrd, u"txtFrom", {2400, 1670, 5900, 315}};
  kit::Label Label1{picbkgrd, u"Label1", {300, 2130, 2000, 255}, u"Contact No"};
  kit::TextBox txtContactNumber{picbkgrd, u"txtContactNumber", {2400, 2090, 5900, 315}};
  kit::Label Label3{picbkgrd, u"Label3", {300, 2490, 2000, 420}};
  kit::TextBox txtTroubleTicket{picbkgrd, u"txtTroubleTicket", {2400, 2510, 5900, 315}};
  kit::Label lblSubject{picbkgrd, u"lblSubject", {300, 2970, 2000, 255}, u"Subject"};
  kit::TextBox txtSubject{
      picbkgrd, u"txtSubject", {2400, 2930, 5900, 315}, u"Corvane for Windows user feedback"};
  kit::Label lblMsg{picbkgrd, u"lblMsg", {300, 3390, 2000, 255}, u"Message"};
  kit::TextBox txtMsg{picbkgrd, u"txtMsg", {2400, 3350, 5900, 1800}};
  kit::Label lblProgress{picbkgrd, u"lblProgress", {300, 5340, 7900, 255}};
  kit::PictureButton cmdSend{picbkgrd, u"cmdSend", {5340, 5760, 1350, 345}, u"&Send"};
  kit::PictureButton cmdExit{picbkgrd, u"cmdExit", {6900, 5760, 1350, 345}, u"&Close"};

  // Hidden: they take no part in a report.
  kit::Label lblTo{picbkgrd, u"lblTo", {300, 6600, 2000, 255}};
  kit::TextBox txtTo{picbkgrd, u"txtTo", {2400, 6600, 2000, 315}};
  kit::Label lblServer{picbkgrd, u"lblServer", {300, 6600, 2000, 255}};
  kit::TextBox txtServer{picbkgrd, u"txtServer", {2400, 6600, 2000, 315}};
  kit::Label lblToName{picbkgrd, u"lblToName", {300, 6600, 2000, 255}};
  kit::TextBox txtToName{picbkgrd, u"txtToName", {2400, 6600, 2000, 315}};
  kit::Label lblAttach{picbkgrd, u"lblAttach", {300, 6600, 2000, 255}};
  kit::TextBox txtAttach{picbkgrd, u"txtAttach", {2400, 6600, 2000, 315}};
  kit::Picture fraOptions{picbkgrd, u"fraOptions", {300, 6600, 2000, 600}};
  kit::OptionButton optSend{fraOptions, u"optSend", {60, 60, 1500, 255}};
  kit::TextBox txtQty{picbkgrd, u"txtQty", {2400, 6600, 600, 315}};
  kit::PictureButton cmdBrowse{picbkgrd, u"cmdBrowse", {4500, 6600, 1350, 345}, u"&Browse"};
  kit::PictureButton cmdReset{picbkgrd, u"cmdReset", {6000, 6600, 1350, 345}, u"R&eset"};
  kit::ListView lstStatus{picbkgrd, u"lstStatus", {300, 6600, 2000, 600}};

 protected:
  void Form_Load() override;
  void Form_Unload(int& cancel) override;

 private:
  void FillUserFields();

  frame::AppState& app_;
  kit::Ui& ui_;
  bool sendFailed_ = false;
  bool sending_ = false;  // a send runs: Send and Alt+S wait for its end
};

}  // namespace account
