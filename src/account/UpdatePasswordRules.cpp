#include "account/UpdatePasswordRules.h"

#include "frame/Settings.h"
#include "jobstore/BackupSets.h"
#include "jobstore/DBaction.h"
#include "kit/MesgBox.h"
#include "frame/MessageTable.h"
#include "account/AccountService.h"

namespace account {

namespace {

void Call(const std::function<void()>& f) {
  if (f) f();
}

}  // namespace

bool IsPasswordCharacter(char16_t unit) { return unit >= u' ' && unit <= u'~'; }

bool HoldsOnlyPasswordCharacters(const Text& password) {
  for (char16_t unit : password)
    if (!IsPasswordCharacter(unit)) return false;
  return true;
}

ApplyOutcome ApplyPassword(frame::AppState& app, kit::Ui& ui, const Text& userName,
                           const Text& password, const PasswordScreenHooks& hooks) {
  auto say = [&](long code, int icon) {
    ui.MessageBox(frame::GetMessage(app, code), icon, kit::kButtonsOk, app.AppTitle);
  };
  auto busy = [&](bool on) {
    if (hooks.setBusy) hooks.setBusy(on);
  };
  auto twice = [&] {
    ui.DoEvents();
    ui.DoEvents();
  };

  if (base::IsBlank(userName)) {
    say(39, kit::kIconInfo);
    Call(hooks.focusUserName);
    return ApplyOutcome::MissingUserName;
  }
  if (base::IsBlank(password)) {
    say(40, kit::kIconInfo);
    Call(hooks.focusPassword);
    return ApplyOutcome::MissingPassword;
  }
  const Text user = base::Trim(userName);
  Text pass = base::Trim(password);
  if (!frame::StaysInItsFolder(user)) {
    ui.MessageBox(kUserNameFolderMessage, kit::kIconInfo, kit::kButtonsOk, app.AppTitle);
    Call(hooks.focusUserName);
    return ApplyOutcome::NameLeavesFolder;
  }
  // Never prove a password that the store would give back as another one.
  if (!HoldsOnlyPasswordCharacters(pass)) {
    ui.MessageBox(kPasswordAlphabetMessage, kit::kIconInfo, kit::kButtonsOk, app.AppTitle);
    Call(hooks.focusPassword);
    return ApplyOutcome::NotStorable;
  }
  if (pass.size() > kPasswordLimit) pass.resize(kPasswordLimit);

  if (ui.MessageBox(frame::GetMessage(app, 41), kit::kIconQuestion, kit::kButtonsYesNo,
                    app.AppTitle) != kit::kResultYes)
    return ApplyOutcome::NotConfirmed;

  busy(true);
  twice();
  if (ProveLogin(app, user, pass)) {
    const Text state = jobstore::ReadStateLine(app, app.ScheduleFilePath);
    jobstore::DB_ReadBackdata(app);
    if (state == u"1") {
      say(47, kit::kIconInfo);
      twice();
      busy(false);
      return ApplyOutcome::JobInProgress;
    }
    // The design's list keeps its first entry apart: only more than one set counts.
    if (app.Store.BackupSetList.size() > 1) {
      const Text previousUser = frame::ReadSetting(app, u"UserName");
      auto stored = frame::WriteSetting(app, u"UserName", user);
      if (stored) {
        stored = frame::WriteSetting(app, user, pass, true);
        // The name goes back with its own password rather than stand without one.
        if (!stored && previousUser != user) frame::WriteSetting(app, u"UserName", previousUser);
      }
      if (!stored) {
        // Never "updated" for a password that is not on the disk.
        ui.MessageBox(Text(kCouldNotStoreText) + stored.reason, kit::kIconError, kit::kButtonsOk,
                      app.AppTitle);
        twice();
        busy(false);
        return ApplyOutcome::NotStored;
      }
      app.UserName = user;
      say(48, kit::kIconInfo);
      twice();
      busy(false);
      Call(hooks.close);
      return ApplyOutcome::Updated;
    }
    busy(false);
    return ApplyOutcome::NoBackupSets;
  }

  switch (CheckAccountStatus(app, user, pass)) {
    case kStatusOther: say(42, kit::kIconWarning); break;
    case kStatusCancelled:
      ui.MessageBox(frame::GetMessage(app, 43) + user + frame::GetMessage(app, 44),
                    kit::kIconWarning, kit::kButtonsOk, app.AppTitle);
      break;
    case kStatusExpired:
      ui.MessageBox(frame::GetMessage(app, 45) + user + frame::GetMessage(app, 46),
                    kit::kIconWarning, kit::kButtonsOk, app.AppTitle);
      break;
    default: break;
  }
  twice();
  busy(false);
  return ApplyOutcome::Refused;
}

}  // namespace account
