// The monitor window: Web Management, the helper program started, watched and
// ended by the load, the tick and the menu item.
#include "base/Guarded.h"
#include "engine/ProcessScan.h"
#include "frame/Logs.h"
#include "frame/Settings.h"
#include "kit/MesgBox.h"
#include "frame/MessageTable.h"
#include "monitor/WebHelperAnswer.h"
#include "monitor/frmQVWinService.h"

namespace monitor {

bool frmQVWinService::HasCredentials() {
  app_.UserName = frame::ReadSetting(app_, u"UserName");
  if (base::IsBlank(app_.UserName)) return false;
  const Text password = frame::ReadSetting(app_, app_.UserName, true);
  return !base::IsBlank(password);
}

Text frmQVWinService::ReadErrVal() {
  if (app_.platform.profile == nullptr) return Text();
  return app_.platform.profile->GetString(u"OLWA", u"ErrVal", Text(), frame::kProfileBufferChars,
                                          app_.CommonFile(u"qvwin.ini"));
}

void frmQVWinService::WriteErrVal(const Text& value) {
  if (app_.platform.profile == nullptr) return;
  app_.platform.profile->WriteString(u"OLWA", Text(u"ErrVal"), value,
                                     app_.CommonFile(u"qvwin.ini"));
}

long frmQVWinService::KillHelper() {
  long found = 0;
  base::IgnoreFailure([&] { found = engine::IsExeRunningAutomatic(app_, kWebHelper, true); });
  return found;
}

void frmQVWinService::StartHelper(bool testRunning) {
  if (testRunning && engine::IsExeRunningAutomatic(app_, kWebHelper, false) != 0) return;
  const Text path = app_.ProgramFolder + u"\\" + kWebHelper;
  if (app_.platform.fs == nullptr || !app_.platform.fs->FileExists(path)) return;
  WriteErrVal(u"0");
  if (app_.platform.shell != nullptr)
    app_.platform.shell->Execute(0, u"open", path, Text(), Text(), 0);
}

void frmQVWinService::WebManagementAtLoad() {
  const bool credentials = HasCredentials();
  const Text w = base::Trim(frame::ReadAccountKey(app_, u"Corvane", u"WebManage", true));
  switch (WebManageChoice(w, credentials)) {
    case WebChoice::Off:
      WebMang.SetChecked(false);
      KillHelper();
      break;
    case WebChoice::On:
      WebMang.SetChecked(true);
      base::IgnoreFailure([&] { StartHelper(true); });
      break;
    case WebChoice::Leave: break;
  }
}

void frmQVWinService::WebManagementTick() {
  const bool credentials = HasCredentials();
  const Text w = base::Trim(frame::ReadAccountKey(app_, u"Corvane", u"WebManage", true));
  const WebChoice choice = WebManageChoice(w, credentials);
  if (choice == WebChoice::Off) {
    WebMang.SetChecked(false);
    return;
  }
  if (choice != WebChoice::On) return;
  WebMang.SetChecked(true);
  frame::WriteAccountKey(app_, u"Corvane", u"WebManage", u"1");
  base::IgnoreFailure([&] { StartHelper(true); });
  // The helper reports its login through ErrVal; it is given two seconds each tick.
  Sleep(1000);
  ui_.DoEvents();
  Sleep(1000);
  const HelperAnswer answer = ReadHelperAnswer(ReadErrVal());
  if (answer == HelperAnswer::None) return;
  auto turnOff = [&] {
    frame::WriteAccountKey(app_, u"Corvane", u"WebManage", u"0");
    KillHelper();
    WebMang.SetChecked(false);
  };
  switch (answer) {
    case HelperAnswer::AccountClosed:
    case HelperAnswer::Refused: {
      // The refusal that a click passes over in silence is logged here all the same.
      turnOff();
      const Text text = frame::GetMessage(app_, kTextAccountClosed);
      frame::WriteTrace(app_, text);
      frame::WriteActivityLog(app_, text, frame::kError);
      break;
    }
    case HelperAnswer::LoginFailed:
      if (TellLoginFailure(frame::ReadSetting(app_, u"WebMessage"))) {
        turnOff();
        Ask(kTextLoginFailed, kit::kIconError, kit::kButtonsOk);
        const Text text = frame::GetMessage(app_, kTextLoginFailed);
        frame::WriteActivityLog(app_, text, frame::kError);
        frame::WriteTrace(app_, text);
      }
      frame::WriteSetting(app_, u"WebMessage", u"1");
      break;
    case HelperAnswer::LoggedIn: frame::WriteSetting(app_, u"WebMessage", u"0"); break;
    default: break;
  }
}

void frmQVWinService::WebMang_Click() {
  if (!HasCredentials()) {
    Ask(kTextLoginFirst, kit::kIconInfo, kit::kButtonsOk);
    return;
  }
  auto turnOff = [&] {
    frame::WriteAccountKey(app_, u"Corvane", u"WebManage", u"0");
    KillHelper();
    WebMang.SetChecked(false);
  };
  if (WebMang.Checked()) {
    if (Ask(kTextDisableWeb, kit::kIconQuestion, kit::kButtonsYesNo) == kit::kResultYes) turnOff();
    return;
  }
  WriteErrVal(u"0");
  frame::WriteAccountKey(app_, u"Corvane", u"WebManage", u"1");
  WebMang.SetChecked(true);
  KillHelper();
  Sleep(1000);
  ui_.DoEvents();
  base::IgnoreFailure([&] { StartHelper(false); });
  Sleep(1000);
  ui_.DoEvents();
  Sleep(1000);
  // The message comes first: the item stays on while it is read.
  const ClickOutcome outcome = AfterClick(ReadHelperAnswer(ReadErrVal()));
  if (outcome.message != 0) Ask(outcome.message, kit::kIconError, kit::kButtonsOk);
  if (outcome.turnOff) turnOff();
}

}  // namespace monitor
