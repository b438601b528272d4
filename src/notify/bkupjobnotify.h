#pragma once
// The job-end desktop notification: a small frameless window in the bottom right
// corner of the work area that names the account and the set of the job that ended,
// shows its result, when the next job starts and how much of the quota is used. It
// comes up over the other windows without taking the keyboard and stays until closed.
// The tick opens it through Notices::senddesktopnotify.
#include <functional>

#include "frame/AppState.h"
#include "kit/Controls.h"
#include "kit/Form.h"
#include "kit/Ui.h"
#include "notify/Requests.h"

namespace notify {

class bkupjobnotify : public kit::Form {
 public:
  // `names` hold the account kept for the life of the process (the set is the
  // process's CurrentLogName); `openSessionLog`
  // opens the Session Log screen.
  bkupjobnotify(frame::AppState& app, kit::Ui& ui, const KeptNames& names,
                std::function<void()> openSessionLog,
                std::function<double()> monitorLabelFontSize = {});

  void viewbkuplog_Click();
  void cancel_Click();
  void Picture1_Click();
  void Picture2_Click();

  // What Form_Activate does: the names from the kept ones, then the next-job and quota
  // lines. The notice is shown without activation, so its opener runs it then too.
  void FillFromKept();
  // The set's caption as the label shows it: "&" doubled, wrapped to the label's width.
  void SetSetName(const Text& name);

  kit::Label lblCapbar{*this, u"lblCapbar", {0, 0, 5940, 510}};
  kit::Label lblTitle{*this, u"lblTitle", {180, 135, 4500, 300}, u"Scheduled job status"};
  kit::Picture Picture1{*this, u"Picture1", {6060, 135, 240, 240}, u"qv_small_help"};
  kit::Picture Picture2{*this, u"Picture2", {6360, 135, 240, 240}, u"qv_small_close"};
  kit::Picture PicSuccessJob{*this, u"PicSuccessJob", {330, 690, 600, 600}, u"qv_desknoti_success"};
  kit::Picture PicFailedJob{*this, u"PicFailedJob", {330, 690, 600, 600}, u"qv_desknoti_fail"};
  kit::Label Label5{*this, u"Label5", {1140, 660, 1650, 255}, u"Account Name:"};
  kit::Label lblaccntname{*this, u"lblaccntname", {2820, 660, 3780, 255}};
  kit::Label Label1{*this, u"Label1", {1140, 930, 1650, 255}, u"Backup/ Restore set:"};
  kit::Label bkupjobname{*this, u"bkupjobname", {2820, 930, 3780, 480}};
  kit::Label schjobststus{
      *this, u"schjobststus", {1140, 1440, 5400, 255}, u"No backup has been scheduled"};
  kit::Label lblnxtbkup{*this, u"lblnxtbkup", {1140, 1700, 5400, 420}};
  kit::Label lblnxtbkupTime{*this, u"lblnxtbkupTime", {1140, 2130, 5400, 255}};
  kit::Label lblquota{*this, u"lblquota", {1140, 2430, 1600, 255}, u"Quota Information :"};
  kit::Label lblUserQuota{*this, u"lblUserQuota", {2760, 2430, 3700, 255}};
  kit::ProgressBar QVDiskPBar{*this, u"QVDiskPBar", {1140, 2720, 5250, 180}};
  kit::Label Label2{*this,
                    u"Label2",
                    {330, 3030, 6100, 255},
                    u"View the logs of the backup/restore scheduled jobs"};
  kit::PictureButton viewbkuplog{*this, u"viewbkuplog", {3600, 3480, 1350, 345}, u"&View Log"};
  kit::PictureButton cancel{*this, u"cancel", {5100, 3480, 1350, 345}, u"&Close"};
  // Measures the pieces of a long name; never seen.
  kit::Label lblTempDummy{*this, u"lblTempDummy", {0, 0, 15, 195}, u" "};
  // The moments the next-job line compares; never seen.
  kit::DatePicker DTPcurrent{*this, u"DTPcurrent", {0, 0, 15, 15}};
  kit::DatePicker DTPNextTrf{*this, u"DTPNextTrf", {0, 0, 15, 15}};
  kit::DatePicker DTPicker{*this, u"DTPicker", {0, 0, 15, 15}};

 protected:
  void Form_Load() override;
  void Form_Activate() override;
  void Form_Unload(int& cancel) override;

 private:
  void NextJobAndQuota();
  // Before a name is wrapped: the monitor window's label size to the measuring label
  // and the two labels that show wrapped names.
  void TakeMonitorFontSize();
  // `text` wrapped to `width` in the measuring label's font; a long name is measured in
  // many pieces, and the window goes on answering other programs meanwhile.
  Text Wrapped(TextView text, double width);

  // The set name as last wrapped, and what it was wrapped for: opening the notice sets
  // the name again, and a megabyte name is not measured twice for the same width.
  struct WrappedName {
    Text name;
    double width = -1;
    double fontSize = -1;
    bool bold = false;
    Text caption;
  } setName_;

  frame::AppState& app_;
  kit::Ui& ui_;
  const KeptNames& names_;
  std::function<void()> openSessionLog_;
  std::function<double()> monitorLabelFontSize_;
};

}  // namespace notify
