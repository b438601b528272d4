#pragma once
// The dial-up window: after a job the engine may ask that the dial-up line be dropped.
// The window says which connection is about to go and counts down 30 firings of its
// timer; then, or at once on Disconnect, every connection is hung up. Close stops it.
// The tick opens it through Notices::DialupCheck.
#include "frame/AppState.h"
#include "kit/Controls.h"
#include "kit/Form.h"
#include "kit/Ui.h"

namespace notify {

class Dialupdisconnect : public kit::Form {
 public:
  Dialupdisconnect(frame::AppState& app, kit::Ui& ui);

  void Disconnect_Click();
  void cancel_Click();
  void Picture1_Click();
  void Picture2_Click();
  void Disconnectcountdown_Timer();

  int Counter() const { return counter_; }

  kit::Label lblCapbar{*this, u"lblCapbar", {0, 0, 4620, 510}};
  kit::Label Label3{*this, u"Label3", {180, 135, 4200, 300}, u"Dialup Disconnect"};
  kit::Picture Picture1{*this, u"Picture1", {4710, 135, 240, 240}, u"qv_small_help"};
  kit::Picture Picture2{*this, u"Picture2", {5010, 135, 240, 240}, u"qv_small_close"};
  kit::Label ISPname{*this, u"ISPname", {360, 810, 4680, 1080}};
  kit::PictureButton Disconnect{
      *this, u"Disconnect", {1860, 2250, 1800, 345}, u"&Disconnecting (30)"};
  kit::PictureButton cancel{*this, u"cancel", {3840, 2250, 1350, 345}, u"&Close"};
  kit::Timer Disconnectcountdown{*this, u"Disconnectcountdown", 950};

 protected:
  void Form_Load() override;

 private:
  frame::AppState& app_;
  kit::Ui& ui_;
  int counter_ = 0;
};

}  // namespace notify
