#include "notify/Notices.h"

#include "base/Guarded.h"
#include "frame/Logs.h"
#include "frame/Settings.h"
#include "notify/Dialupdisconnect.h"
#include "notify/MissedBackup.h"
#include "notify/bkupjobnotify.h"
#include "notify/frmBKErrNotify.h"

namespace notify {

Notices::Notices(frame::AppState& app, kit::Ui& ui, NoticeHooks hooks)
    : app_(app),
      ui_(ui),
      jobNotice_(std::make_unique<bkupjobnotify>(app, ui, names_, std::move(hooks.openSessionLog),
                                                 std::move(hooks.monitorLabelFontSize))),
      errNotice_(std::make_unique<frmBKErrNotify>(app, ui, std::move(hooks.openErrorReport))),
      dialup_(std::make_unique<Dialupdisconnect>(app, ui)) {}

Notices::~Notices() = default;

void Notices::ShowQuietly(kit::Form& form, const std::function<void()>& activationWork) {
  ui_.Show(form);
  // A window shown without activation gets no Form_Activate from the platform: its
  // work runs here, as activation would have run it (again, where a renderer did).
  if (activationWork && form.IsLoaded()) activationWork();
}

void Notices::senddesktopnotify() {
  // Every step goes on past a failure: the window opens with what could be read.
  const Text path = app_.CommonFile(kJobRequestFile);
  std::optional<JobRequest> request;
  base::IgnoreFailure([&] { request = ReadJobRequest(app_); });
  if (!request) return;
  bkupjobnotify& form = *jobNotice_;
  base::IgnoreFailure([&] {
    if (!form.IsLoaded()) form.Load();
    if (request->kind == JobRequest::Kind::Empty) {
      form.bkupjobname.SetCaption(Text());
    } else if (request->kind == JobRequest::Kind::Names) {
      KeepNames(app_, names_, *request);
      form.SetSetName(app_.CurrentLogName);
      form.lblaccntname.SetCaption(names_.accountName);
    }
  });
  base::IgnoreFailure([&] { app_.platform.fs->DeleteFile(path); });
  base::IgnoreFailure([&] {
    if (app_.platform.sound) app_.platform.sound->PlayAlias(u"SystemStart");
  });
  base::IgnoreFailure([&] {
    form.Hide();
    form.SetTopMost(true);  // View Log may have put it behind the Session Log
  });
  base::IgnoreFailure([&] {
    const bool shown = !IsDefaultSet(app_.CurrentLogName);
    form.bkupjobname.SetVisible(shown);
    form.Label1.SetVisible(shown);
  });
  base::IgnoreFailure([&] {
    if (!form.IsLoaded()) form.Load();
    // The key is read for each picture, as the engine may be writing it.
    form.PicFailedJob.SetVisible(
        ResultPicturesFor(frame::ReadSetting(app_, u"DESKNOTIFYICON")).failed);
    form.PicSuccessJob.SetVisible(
        ResultPicturesFor(frame::ReadSetting(app_, u"DESKNOTIFYICON")).success);
  });
  base::IgnoreFailure([&] { ShowQuietly(form, [&form] { form.FillFromKept(); }); });
}

void Notices::DialupCheck() {
  base::Guarded(
      [&] {
        const Text path = app_.CommonFile(kDialupRequestFile);
        const std::optional<DialupRequest> request = ReadDialupRequest(app_);
        if (!request) return;
        KeepNames(app_, names_, *request);
        ShowQuietly(*dialup_, {});
        if (app_.platform.fs->FileExists(path)) app_.platform.fs->DeleteFile(path);
      },
      frame::TraceFailure(app_, u"Error DialupCheck.Reason"));
}

void Notices::CheckMissedBackup() {
  notify::CheckMissedBackup(
      app_, app_.platform.clock->Now(),
      [&](const MissedBackupNotice& notice) {
        if (!errNotice_->IsLoaded()) errNotice_->Load();
        errNotice_->SetNotice(notice.text, notice.plainLayout);
        ShowQuietly(*errNotice_, {});
      },
      &passedOverUsers_);
}

}  // namespace notify
