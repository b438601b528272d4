// Any job-end and dial-up request files and missed-backup keys through the notices.

#include "FuzzInput.h"
#include "base/Guarded.h"
#include "frame/Settings.h"
#include "kit/ScriptedUi.h"
#include "notify/Notices.h"
#include "notify/Requests.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  const std::size_t third = size / 3;
  fuzz::Monitor fx;
  fx.fake.fs.AddFolders(u"C:\\QV\\QVCOMMON\\fuzz");
  fx.fake.fs.PutFile(fx.Common(u"qvwincurjobname.txt"), bytes.substr(0, third));
  fx.fake.fs.PutFile(fx.Common(u"DialupDisconnect.txt"), bytes.substr(third, third));
  fx.fake.fs.PutFile(fx.Common(u"fuzz\\qvwinserver.ini"), bytes.substr(2 * third));
  frame::WriteSetting(fx.app, u"NotifyUsers", u"<<fuzz<< <<fuzz");
  frame::WriteSetting(fx.app, u"DESKNOTIFYICON", u"RED");

  kit::ScriptedUi ui;
  notify::Notices notices(fx.app, ui, {});
  const auto job = notify::ReadJobRequest(fx.app);
  notices.senddesktopnotify();
  FUZZ_CHECK(!fx.fake.fs.FileExists(fx.Common(u"qvwincurjobname.txt")));
  if (job && job->kind == notify::JobRequest::Kind::Names)
    FUZZ_CHECK(fx.app.CurrentLogName == job->jobName);

  const auto dialup = notify::ReadDialupRequest(fx.app);
  notices.DialupCheck();
  FUZZ_CHECK(!fx.fake.fs.FileExists(fx.Common(u"DialupDisconnect.txt")));
  if (dialup) {
    FUZZ_CHECK(fx.app.CurrentLogName == dialup->jobName);
    FUZZ_CHECK(fx.app.CurrentSessionFile == dialup->secondLine);
  }
  // A value that is no number ends the tick's run there, as the tick's handler does.
  for (int tick = 0; tick < 2; ++tick) base::IgnoreFailure([&] { notices.CheckMissedBackup(); });
  return 0;
}
