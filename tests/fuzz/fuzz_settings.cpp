// Any settings, account and password files through start-up and the readers of their values.

#include "FuzzInput.h"
#include "frame/Settings.h"
#include "frame/Startup.h"
#include "jobs/PluginRules.h"
#include "jobs/ScheduleEditorModel.h"
#include "monitor/BandwidthRules.h"
#include "monitor/WebHelperAnswer.h"
#include "notify/NextJob.h"
#include "account/AccountService.h"
#include "account/ValueFiles.h"

namespace {

using base::Text;

struct Steps : frame::IStartupSteps {
  void CreateEngines(frame::AppState&) override {}
  void LoadMonitorWindow(frame::AppState&) override {}
  void ApplyGeometry(frame::AppState&, std::optional<long>, std::optional<long>,
                     std::optional<long>, std::optional<long>) override {
    ++placed;
  }
  void HideFromTaskBar(frame::AppState&) override {}
  void ShowFromTaskBar(frame::AppState&) override {}
  void ShowLogInWindow(frame::AppState&) override {}
  int placed = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 4) return 0;
  // The first four bytes share the rest out among the five files.
  const std::string rest(reinterpret_cast<const char*>(data) + 4, size - 4);
  std::string parts[5];
  std::size_t at = 0;
  for (int i = 0; i < 4; ++i) {
    const std::size_t n = (rest.size() - at) * data[i] / 255;
    parts[i] = rest.substr(at, n);
    at += n;
  }
  parts[4] = rest.substr(at);

  fuzz::Monitor fx;
  auto& fs = fx.fake.fs;
  fs.AddFolders(u"C:\\QV\\QVCOMMON\\alice");
  fs.PutFile(fx.Common(u"qvwin.ini"), parts[0]);
  fs.PutFile(fx.Common(u"QVDetails.ini"), parts[1]);
  fs.PutFile(fx.Common(u"alice\\qvwinserver.ini"), parts[2]);
  fs.PutFile(fx.Common(u"AutoPause.ini"), parts[3]);
  fs.PutFile(fx.Common(u"alice\\alice.txt"), parts[4]);
  account::SecureValueStore secure(fx.app);
  fx.app.secureStore = &secure;

  Steps steps;
  FUZZ_CHECK(frame::Main(fx.app, steps) == frame::MainResult::Run);
  FUZZ_CHECK(steps.placed <= 1);
  FUZZ_CHECK(!fx.app.BacksetFilePath.empty());
  fx.app.UserName = u"alice";

  for (const char16_t* key : {monitor::kPlainLimitKey, monitor::kPausedLimitKey}) {
    const long percent =
        monitor::LimitPercent(monitor::LimitOrFull(base::Trim(frame::ReadSetting(fx.app, key))));
    monitor::KnobPercent({100, 3000, 200}, monitor::KnobLeft({100, 3000, 200}, percent));
  }
  const Text idle =
      fx.fake.profile.GetString(u"AUTOPAUSE", u"BackupIdleState", Text(),
                                frame::kProfileBufferChars, fx.Common(u"AutoPause.ini"));
  const bool autoPause = base::Trim(frame::ReadSetting(fx.app, monitor::kAutoPauseKey)) == u"1";
  for (auto pass :
       {monitor::SliderPass::Load, monitor::SliderPass::First, monitor::SliderPass::Second})
    monitor::ChooseSliderLimit(pass, autoPause, idle, data[0] % 6);

  if (auto f = notify::ReadQuotaFigures(fx.app);
      f && f->totalMegabytes > 0 && f->usedMegabytes >= 0)
    FUZZ_CHECK(f->percent && *f->percent >= 0 && *f->percent <= 100);
  notify::ReadQuota(fx.app);
  const int service = frame::EngineIsService(fx.app);
  FUZZ_CHECK(service == 0 || service == 1);
  monitor::WebManageChoice(
      base::Trim(frame::ReadAccountKey(fx.app, u"Corvane", u"WebManage", true)),
      !base::IsBlank(frame::ReadSetting(fx.app, u"alice", true)));
  monitor::ReadHelperAnswer(fx.fake.profile.GetString(
      u"OLWA", u"ErrVal", Text(), frame::kProfileBufferChars, fx.Common(u"qvwin.ini")));

  jobs::EditorChoices choices;
  jobs::LoadEditorSettings(fx.app, choices);

  account::ReadEndpoints(fx.app);
  account::SupportMailAddress(fx.app);
  jobs::DownloadAddress(fx.app);
  return 0;
}
