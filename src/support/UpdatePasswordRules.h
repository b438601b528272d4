#pragma once
// The apply action of the Update Password screen, without the form: what it asks,
// proves, refuses and writes, in the design's order. The form hands in its two
// fields and what it does with the focus, the pointer and its closing.
#include <functional>

#include "base/Text.h"
#include "frame/AppState.h"
#include "kit/Ui.h"

namespace support {

using base::Text;

// Passwords longer than this are proved and stored cut, without a word.
inline constexpr std::size_t kPasswordLimit = 16;

struct PasswordScreenHooks {
  std::function<void()> focusUserName;
  std::function<void()> focusPassword;
  std::function<void(bool busy)> setBusy;  // hourglass on the form, or back to normal
  std::function<void()> close;             // unload the form
};

enum class ApplyOutcome {
  MissingUserName,  // message 39
  MissingPassword,  // message 40
  NotConfirmed,     // message 41 answered other than Yes
  JobInProgress,    // message 47, after a good proof
  Updated,          // settings written, message 48, form closed
  NoBackupSets,     // a good proof but too few backup sets: nothing written or said
  Refused,          // the proof failed; messages 42-46 by the account's state, or none
  NotStored,        // a good proof, but the name or the password could not be written
};

// What the screen says before the reason when the new password could not be stored.
inline constexpr char16_t kCouldNotStoreText[] = u"The new password could not be stored. Reason : ";

ApplyOutcome ApplyPassword(frame::AppState& app, kit::Ui& ui, const Text& userName,
                           const Text& password, const PasswordScreenHooks& hooks);

}  // namespace support
