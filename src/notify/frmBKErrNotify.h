#pragma once
// The missed-backup notice: a small frameless window in the bottom right corner of the
// work area telling the user that scheduled backups of an account have not been taking
// place, and why, with a link to the feedback report. The tick's missed-backup check
// opens it (Notices::CheckMissedBackup).
#include <functional>
#include <optional>

#include "frame/AppState.h"
#include "kit/Controls.h"
#include "kit/Form.h"
#include "kit/Ui.h"

namespace notify {

using base::Text;

class frmBKErrNotify : public kit::Form {
 public:
  // `openErrorReport` opens the feedback report.
  frmBKErrNotify(frame::AppState& app, kit::Ui& ui, std::function<void()> openErrorReport);

  void cancel_Click();
  void lblLink_Click();
  void Picture1_Click();
  void Picture2_Click();

  // The text for Notifymsg (nullopt keeps the one shown); with `plainLayout` the text
  // sits lower and shorter and the link moves up.
  void SetNotice(const std::optional<Text>& text, bool plainLayout);

  kit::Label lblCapbar{*this, u"lblCapbar", {0, 0, 4620, 510}};
  kit::Label Label3{*this, u"Label3", {180, 135, 4200, 300}, u"Scheduled job status"};
  kit::Picture Picture1{*this, u"Picture1", {4710, 135, 240, 240}, u"qv_small_help"};
  kit::Picture Picture2{*this, u"Picture2", {5010, 135, 240, 240}, u"qv_small_close"};
  kit::Picture PicFailedJob{*this, u"PicFailedJob", {240, 690, 600, 600}, u"qv_desknoti_fail"};
  kit::Label Label2{*this, u"Label2", {960, 600, 4320, 1740}};
  kit::Label lblLink{*this, u"lblLink", {960, 2355, 1100, 255}, u"error report."};
  kit::PictureButton cancel{*this, u"cancel", {3930, 2370, 1350, 345}, u"&Close"};

 protected:
  void Form_Load() override;
  void Form_Unload(int& cancel) override;

 private:
  frame::AppState& app_;
  kit::Ui& ui_;
  std::function<void()> openErrorReport_;
};

}  // namespace notify
