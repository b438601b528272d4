#pragma once
// The feedback report without its form: the address checks, the subject, the head of
// machine and account facts, the tails of the logs, the regional settings, and the
// send with its three events.
#include <functional>
#include <vector>

#include "base/Text.h"
#include "frame/AppState.h"
#include "kit/Ui.h"
#include "platform/ClosedObjects.h"

namespace account {

using base::Text;

inline constexpr char16_t kReportVersion[] = u"9.5.5";
inline constexpr char16_t kReleaseDate[] = u"02/08/2013";
inline constexpr char16_t kDefaultSubject[] = u"Corvane for Windows user feedback";
// What the temporary file may grow to before a log's walk stops.
inline constexpr std::uint64_t kLogTailLimit = 20000;
inline constexpr char16_t kTempLogName[] = u"TmpLogAttach.txt";

struct ReportLog {
  const char16_t* file;
  const char16_t* banner;
  bool oracleFolder;
  bool unicode;
};
// The fourteen logs and traces of the report, in their order.
const std::vector<ReportLog>& ReportLogs();

// One "@"; the character behind it not "."; a "." from the second character behind
// the "@" on.
bool ValidateMailid(const Text& address);
// The subject for a trouble ticket number (blank: the default subject).
Text TicketSubject(const Text& ticket);

struct TicketLabel {
  Text caption;
  Text toolTip;  // "" at 96 dots per inch or less
};
TicketLabel TroubleTicketLabel(int twipsPerPixelX);

// What the user typed.
struct ReportFields {
  Text fromName;       // txtFromName
  Text from;           // txtFrom
  Text contactNumber;  // txtContactNumber
  Text subject;        // txtSubject
  Text message;        // txtMsg
};

// The user's message, line by line through the object's encoding.
Text EncodeMessage(platform::IHttpObject& http, const Text& message);
Text GetSystemSettings(frame::AppState& app, const ReportFields& fields);
// The tail of one log in its file order, up to the temporary file's limit.
// `letEventsRun` is called twice before each line.
Text BundleLogFile(frame::AppState& app, platform::IHttpObject& http, const Text& fileName,
                   bool oracleFolder, bool plainText, const std::function<void()>& letEventsRun);
Text GetLocaleDetails(frame::AppState& app, const Text& mode);
// Writes the files of the BackupConfig folder to the trace.
void ListBackupConfig(frame::AppState& app);

// The whole report text (steps 3 to 11 of the send, without its screen).
struct ReportProgress {
  std::function<void()> letEventsRun;
  std::function<void(const Text& text)> progressText;  // lblProgress
  std::function<void()> showProgress;
};
Text BuildReport(frame::AppState& app, platform::IHttpObject& http, const ReportFields& fields,
                 const ReportProgress& progress);
// Masks the stored account password (and its scrambled form) wherever it stands.
Text WithoutPassword(frame::AppState& app, const Text& report);

struct SendHooks {
  std::function<void()> letEventsRun;
  std::function<void(const Text& text)> progressText;
  std::function<void()> showProgress;
  std::function<void(bool busy)> setBusy;  // hourglass and the disabled send button
  std::function<void()> focusFrom;
  std::function<void()> focusMessage;
  std::function<void()> focusForm;
};
enum class SendOutcome { Invalid, Sent, Failed };
// ValidateLogMail with its messages.
bool ValidateLogMail(frame::AppState& app, kit::Ui& ui, const ReportFields& fields,
                     const SendHooks& hooks);
// The send action in its fourteen steps.
SendOutcome SendReport(frame::AppState& app, kit::Ui& ui, const ReportFields& fields,
                       const SendHooks& hooks);

}  // namespace account
