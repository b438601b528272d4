#pragma once
// The apply action of the Update Password screen, without the form: what it asks,
// proves, refuses and writes, in the design's order. The form hands in its two
// fields and what it does with the focus, the pointer and its closing.
#include <functional>

#include "base/Text.h"
#include "frame/AppState.h"
#include "kit/Ui.h"

namespace account {

using base::Text;

// Passwords longer than this are proved and stored cut, without a word.
inline constexpr std::size_t kPasswordLimit = 16;

// The password alphabet: printable ASCII, the blank included. The scrambled store
// keeps eight bits of each character and one line of text; every character of this
// range comes back from it as it went in, in any place of the password. Anything
// else (letters with accents, other scripts, control characters) is refused by the
// form before the account check, with this message.
bool IsPasswordCharacter(char16_t unit);
bool HoldsOnlyPasswordCharacters(const Text& password);
inline constexpr char16_t kPasswordAlphabetMessage[] =
    u"The password can contain only the letters A to Z and a to z, the digits 0 to 9, "
    u"blanks and the signs of an English keyboard, such as ! @ # $ % * ? - _ . "
    u"Other characters cannot be kept for your scheduled jobs: type the password again "
    u"without them.";

// The user's folder under QVCOMMON is named by the user name: a name that would lead
// out of it is refused before anything is proved or written.
inline constexpr char16_t kUserNameFolderMessage[] =
    u"The username cannot contain \\, /, : or two dots in a row. Enter your Corvane "
    u"username as you use it to log in.";

struct PasswordScreenHooks {
  std::function<void()> focusUserName;
  std::function<void()> focusPassword;
  std::function<void(bool busy)> setBusy;  // hourglass on the form, or back to normal
  std::function<void()> close;             // unload the form
};

enum class ApplyOutcome {
  MissingUserName,   // message 39
  MissingPassword,   // message 40
  NotStorable,       // a character outside the password alphabet: our own message
  NameLeavesFolder,  // the user name would lead out of its folder: our own message
  NotConfirmed,      // message 41 answered other than Yes
  JobInProgress,     // message 47, after a good proof
  Updated,           // settings written, message 48, form closed
  NoBackupSets,      // a good proof but too few backup sets: nothing written or said
  Refused,           // the proof failed; messages 42-46 by the account's state, or none
  NotStored,         // a good proof, but the name or the password could not be written
};

// What the screen says before the reason when the new password could not be stored.
inline constexpr char16_t kCouldNotStoreText[] = u"The new password could not be stored. Reason : ";

ApplyOutcome ApplyPassword(frame::AppState& app, kit::Ui& ui, const Text& userName,
                           const Text& password, const PasswordScreenHooks& hooks);

}  // namespace account
