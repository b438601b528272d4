#pragma once
// The state word: the first line of scheduleData.txt, by which the monitor asks the
// engine to stop. The engine owns the transfer; the monitor only turns "1" into "2"
// and waits for the engine to finish the current file.
#include <functional>

#include "base/Text.h"
#include "frame/AppState.h"

namespace engine {

using base::Text;
using frame::AppState;

inline constexpr char16_t kWordIdle[] = u"0";
inline constexpr char16_t kWordRunning[] = u"1";
inline constexpr char16_t kWordStopAsked[] = u"2";

// The texts of the message table that this handshake shows (numbers 15, 17, 18, 19).
inline constexpr char16_t kAskStopTransfer[] = u"Do you want to stop the backup/restore operation?";
inline constexpr char16_t kCannotPause[] =
    u"There is a backup/ restore operation in progress, can not pause the QVWin Service\r\n\r\n"
    u"To cancel the backup operation, Stop the QVWin Service";
inline constexpr char16_t kAskStopService[] =
    u"There is backup/ restore process in progress. Stopping QVWin service now will result in "
    u"cancelling the backup/ restore process and loss of data.\r\n\r\n"
    u"Are you sure you want to stop the QVWin service?";
inline constexpr char16_t kStopIsSet[] =
    u"The backup/ restore operation is set to stop...\r\n"
    u"The service will stop only after the current file being backed up is completely backed "
    u"up. This might take some time.";

// Result codes of the message box.
inline constexpr int kAnswerYes = 6;
inline constexpr int kAnswerNo = 7;

// Shared by both engine classes.
void StopTransfer(AppState& app);        // "1" becomes "2"; any other word stays
bool StopTransferMsgBox(AppState& app);  // whether there is a transfer to stop; shows nothing

// The Stop transfer menu item and button: ask question 15, and on Yes ask the
// active engine to stop.
void AskAndStopTransfer(AppState& app);

// What the window does around the stop request; either may be left empty.
struct StopWindowSteps {
  std::function<void()> setStopping;  // Set_Stopping
  std::function<void()> redraw;
};

// Asked before the engine itself is stopped. True means "do not stop the engine":
// a transfer runs (and, unless the user said No, it was asked to stop instead).
bool IsBackingUp(AppState& app, const StopWindowSteps& window = {});

// Pausing is allowed only when the file is absent or its first byte is "0". The file
// starts with the UTF-16 byte-order mark, so a file written as the job store writes
// it refuses pausing whatever its word; that has always been so and is kept.
bool CanPause(AppState& app);

// A word "1" or "2" left by an engine that is not running goes back to "0".
void ClearStaleStateWord(AppState& app);

// The product's box when one is installed, else the UI host's plain question.
int AskYesNo(AppState& app, const Text& text);
void ShowInformation(AppState& app, const Text& text);

}  // namespace engine
