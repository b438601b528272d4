#pragma once
// The reference screen: a compiled example of how a screen of this program is
// written, shaped as the design's job-end notice (frameless, rounded, in the corner
// of the work area, over the other windows without taking the keyboard, two skinned
// buttons with tips, help and close pictures, a strip that drags it, and its keys).
// docs/kit.md quotes it between the "doc:" marks, and a check keeps the quotes and
// this file the same. Its windowless test is tests/unit/kit/ReferenceScreenTest.cpp;
// the kit's gallery and input tests put it on real windows. The program's own
// notification, with its request file, names, next-job and quota lines, is
// src/notify/bkupjobnotify; this one stays a trimmed sample of the recipe.
#include "kit/Controls.h"
#include "kit/Form.h"
#include "kit/Ui.h"
#include "platform/SystemInfo.h"

namespace reference {

// doc:class
class bkupjobnotify : public kit::Form {
 public:
  bkupjobnotify(kit::Ui& ui, platform::ISystemInfo& system);

  // The handlers, under the design's names; the constructor binds them once.
  void viewbkuplog_Click();
  void cancel_Click();
  void Picture1_Click();
  void Picture2_Click();

  // What the notice was asked to do (the real one opens the session log and the
  // help; this one counts).
  int viewLogRequests = 0;
  int helpRequests = 0;

  // The layout table: each control under its design name, with its place in twips
  // (left, top, width, height) and its caption.
  kit::Label lblCapbar{*this, u"lblCapbar", {0, 0, 6000, 510}};
  kit::Label Label1{*this, u"Label1", {180, 135, 4500, 300}, u"Scheduled job status"};
  kit::Picture Picture1{*this, u"Picture1", {6060, 135, 240, 240}, u"qv_small_help"};
  kit::Picture Picture2{*this, u"Picture2", {6360, 135, 240, 240}, u"qv_small_close"};
  kit::Picture PicSuccessJob{*this, u"PicSuccessJob", {330, 780, 600, 600}, u"qv_desknoti_success"};
  kit::Label Label5{*this, u"Label5", {1140, 780, 1500, 255}, u"Account Name:"};
  kit::Label lblaccntname{*this, u"lblaccntname", {3000, 780, 3500, 255}};
  kit::Label Label3{*this, u"Label3", {1140, 1080, 1800, 255}, u"Backup/ Restore set:"};
  kit::Label bkupjobname{*this, u"bkupjobname", {3000, 1080, 3500, 255}};
  kit::Label schjobststus{*this, u"schjobststus", {1140, 1500, 5400, 255}};
  kit::Label lblquota{*this, u"lblquota", {1140, 1920, 1700, 255}, u"Quota Information :"};
  kit::Label lblUserQuota{*this, u"lblUserQuota", {2850, 1920, 3600, 255}};
  kit::ProgressBar QVDiskPBar{*this, u"QVDiskPBar", {1140, 2250, 5250, 210}};
  kit::Label Label2{*this,
                    u"Label2",
                    {330, 2820, 6100, 255},
                    u"View the logs of the backup/restore scheduled jobs"};
  kit::PictureButton viewbkuplog{*this, u"viewbkuplog", {3600, 3390, 1350, 345}, u"&View Log"};
  kit::PictureButton cancel{*this, u"cancel", {5100, 3390, 1350, 345}, u"&Close"};

 protected:
  void Form_Load() override;
  void Form_Unload(int& cancel) override;

 private:
  kit::Ui& ui_;
  platform::ISystemInfo& system_;
};
// doc:end

}  // namespace reference
