#include "account/FeedbackReport.h"

#include "frame/Logs.h"
#include "frame/Settings.h"
#include "kit/MesgBox.h"
#include "frame/MessageTable.h"
#include "platform/TextFile.h"
#include "platform/portable/HttpRules.h"
#include "account/AccountService.h"
#include "account/ValueFiles.h"

namespace account {

namespace {

constexpr char16_t kCrLf[] = u"\r\n";

void Run(const std::function<void()>& f) {
  if (f) f();
}

void Say(const std::function<void(const Text&)>& f, const Text& text) {
  if (f) f(text);
}

std::string Narrow(const Text& text) {
  std::string out;
  out.reserve(text.size());
  for (char16_t c : text) out.push_back(c < 256 ? static_cast<char>(c) : '?');
  return out;
}

Text RegistryValue(frame::AppState& app, const Text& key, const Text& name) {
  auto value = app.platform.registry == nullptr
                   ? std::nullopt
                   : app.platform.registry->ReadString(platform::RegRoot::LocalMachine, key, name);
  if (!value) {
    frame::WriteTrace(app, u" Unable to get the setting IE for Corvane Log file, Reason: " + key +
                               name + u" could not be read");
    return Text();
  }
  return base::CutAtNul(*value);
}

Text LogFolder(frame::AppState& app, bool oracleFolder) {
  return oracleFolder ? app.CommonFile(u"QVOracle\\LOGS") : app.CommonFolder();
}

}  // namespace

const std::vector<ReportLog>& ReportLogs() {
  static const std::vector<ReportLog> logs = {
      {u"QVWServiceLog.txt", u"----------CorvaneServiceLog-------------", false, true},
      {u"QVWLogFile.txt", u"----------CorvaneLogFile----------------", false, true},
      {u"SerTraceFile.txt", u"----------ServiceTraceFile--------------", false, true},
      {u"TraceFile.txt", u"----------CorvaneTraceFile--------------", false, true},
      {u"scheduleData.txt", u"----------ScheduleDataFile--------------", false, true},
      {u"SQLBackupTraceFile.txt", u"----------SQLBackupTraceFile------------", false, false},
      {u"SQLAttachTraceFile.txt", u"----------SQLRestoreTraceFile-----------", false, false},
      {u"ExchBackupTrace.txt", u"----------ExchangeBackupTrace-----------", false, false},
      {u"ExchRestoreTrace.txt", u"----------ExchangeRestoreTrace----------", false, false},
      {u"VSSTraceFile.txt", u"----------Open file Backup Trace----------", false, false},
      {u"QVOracleBackup.txt", u"----------Oracle Server Backup Trace----------", true, false},
      {u"QVOracleRestore.txt", u"----------Oracle Server Restore Trace----------", true, false},
      {u"sysbkptracefile.txt", u"----------System state Backup/Restore Trace----------", false,
       false},
      {u"TraceLdb.txt", u"----------Listing Trace------------", false, false},
  };
  return logs;
}

bool ValidateMailid(const Text& address) {
  const std::size_t at = address.find(u'@');
  if (at == Text::npos) return false;
  if (at + 1 < address.size() && address[at + 1] == u'.') return false;
  return at + 2 < address.size() && address.find(u'.', at + 2) != Text::npos;
}

Text TicketSubject(const Text& ticket) {
  if (base::IsBlank(ticket)) return kDefaultSubject;
  return u"Corvane for Windows Ticket : " + base::Trim(ticket);
}

TicketLabel TroubleTicketLabel(int twipsPerPixelX) {
  if (twipsPerPixelX <= 0 || 1440 / twipsPerPixelX <= 96)
    return {u"Trouble Ticket No\r\n (If created already)", Text()};
  return {u"Trouble Ticket ...", u"Trouble Ticket No  (If created already)"};
}

Text EncodeMessage(platform::IHttpObject& http, const Text& message) {
  if (base::IsBlank(message)) return Text();
  const std::vector<Text> lines = base::Split(message, kCrLf);
  if (lines.size() == 1) return http.EncodeQueryValue(lines[0], 0);
  Text out;
  for (const Text& line : lines) out += http.EncodeQueryValue(line, 0) + u"\n";
  return out;
}

Text GetSystemSettings(frame::AppState& app, const ReportFields& fields) {
  const bool nineX = app.platform.system != nullptr && app.platform.system->PlatformId() == 1;
  const Text osKey = nineX ? u"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\"
                           : u"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\";
  const Text osName = RegistryValue(app, osKey, u"ProductName");
  const Text osVersion = RegistryValue(app, osKey, nineX ? u"VersionNumber" : u"CurrentVersion");
  const Text browser = RegistryValue(app, u"SOFTWARE\\Microsoft\\Internet Explorer\\", u"Version");
  Text head;
  auto line = [&](const Text& text) { head += text + kCrLf; };
  line(Text(u"<<< USER FEEDBACK FROM CORVANE FOR WINDOWS version >>>") + kReportVersion);
  line(u"User's Operating System:  " + osName);
  line(u"OS Version: " + osVersion);
  line(u"User's Browser: Internet Explorer version  " + browser);
  // Left empty on purpose: the monitor does not know the proxy.
  line(u"Does the user connect through a proxy server? ");
  line(u"Corvane Username: " + fields.fromName);
  line(u"User's Quota: " + frame::ReadSetting(app, u"TotalSpace"));
  line(u"User's Used Space: " + frame::ReadSetting(app, u"UsedSpace"));
  line(u"User's e-mail address: " + fields.from);
  line(u"User's Contact Phone Number:" + fields.contactNumber);
  line(Text(u"User 's technical issues/comments/suggestions:") + kCrLf);
  return head;
}

Text BundleLogFile(frame::AppState& app, platform::IHttpObject& http, const Text& fileName,
                   bool oracleFolder, bool plainText, const std::function<void()>& letEventsRun) {
  auto& fs = *app.platform.fs;
  const Text folder = LogFolder(app, oracleFolder);
  const Text source = folder + u"\\" + fileName;
  const Text temp = folder + u"\\" + kTempLogName;
  if (!fs.FileExists(source)) return Text();
  if (!fs.FileExists(temp)) {
    if (plainText)
      fs.WriteAll(temp, "");
    else
      platform::TextFile::Create(fs, temp, true);
  }
  Text content;
  if (plainText) {
    auto bytes = fs.ReadAll(source);
    if (bytes && !bytes->empty()) content = base::FromLatin1(*bytes);
  } else {
    content = platform::TextFile::ReadText(fs, source).value_or(Text());
  }
  const std::vector<Text> lines = base::Split(content, kCrLf);
  Text collected;
  std::size_t walked = 0;
  for (std::size_t i = lines.size(); i-- > 0;) {
    Run(letEventsRun);
    Run(letEventsRun);
    const Text line = base::CutAtNul(lines[i]);
    if (!base::IsBlank(line)) {
      if (plainText) {
        collected = line + kCrLf + collected;
        fs.Append(temp, Narrow(line) + "\r\n");
      } else {
        collected = http.FilterLine(line) + u"\n" + collected;
        frame::AppendLine(app, temp, line);
      }
      if (fs.FileSize(temp).value_or(0) >= kLogTailLimit) break;
    }
    if (++walked % 50 == 0 && app.platform.clock != nullptr) app.platform.clock->Sleep(1);
  }
  fs.DeleteFile(temp);
  if (!plainText) return collected;
  // The plain variant filters in a second walk, first line first.
  Text filtered;
  std::vector<Text> pieces = base::Split(collected, kCrLf);
  if (!pieces.empty() && pieces.back().empty()) pieces.pop_back();
  for (const Text& piece : pieces) filtered += http.FilterLine(piece) + u"\n";
  return filtered;
}

Text GetLocaleDetails(frame::AppState& app, const Text& mode) {
  if (app.platform.localeInfo == nullptr) return Text();
  const platform::LocaleSource source = mode == u"CodePage" ? platform::LocaleSource::SystemLanguage
                                                            : platform::LocaleSource::UserDefault;
  auto item = [&](unsigned long number) {
    return base::CutAtNul(app.platform.localeInfo->Item(source, number).value_or(Text()));
  };
  Text t;
  t += u"Locale ID: " + item(1) + kCrLf;
  t += u"Country: " + item(6) + u"  (" + item(7) + u")" + kCrLf;
  t += u"Language: " + item(2) + kCrLf;
  t += u"Decimal: " + item(14) + kCrLf;
  t += u"Thousands: " + item(15) + kCrLf;
  t += u"Time Format: " + item(4099) + kCrLf;
  t += u"Short Date: " + item(31);
  return t;
}

void ListBackupConfig(frame::AppState& app) {
  base::IgnoreFailure([&] {
    Text folder;
    const bool vista = app.platform.system != nullptr && app.platform.system->MajorVersion() >= 6;
    if (vista) {
      // "low" straight behind the Local AppData folder: its LocalLow sibling.
      auto local = app.platform.system->Environment(u"LOCALAPPDATA");
      if (!local) return;
      folder = *local + u"low\\BackupConfig\\";
    } else {
      folder = app.DataRoot + u"\\BackupConfig\\";
    }
    for (const platform::FileEntry& entry : app.platform.fs->List(folder, u"*")) {
      if (entry.isFolder) continue;
      frame::WriteTrace(app, u"Content of BackupConfig folder : " + folder + entry.name);
    }
  });
}

Text BuildReport(frame::AppState& app, platform::IHttpObject& http, const ReportFields& fields,
                 const ReportProgress& progress) {
  Text report = GetSystemSettings(app, fields) + kCrLf + EncodeMessage(http, fields.message);
  Run(progress.letEventsRun);
  Run(progress.letEventsRun);
  Run(progress.showProgress);
  ListBackupConfig(app);
  Say(progress.progressText, u"Sending the feedback report ...");
  for (const ReportLog& log : ReportLogs()) {
    if (!app.platform.fs->FileExists(LogFolder(app, log.oracleFolder) + u"\\" + log.file)) continue;
    report +=
        Text(kCrLf) + kCrLf + log.banner + kCrLf +
        BundleLogFile(app, http, log.file, log.oracleFolder, !log.unicode, progress.letEventsRun);
  }
  report +=
      Text(kCrLf) + u"System language details:" + kCrLf + kCrLf + u"Standards and format details:";
  const Text regional = GetLocaleDetails(app, u"Regional");
  if (!base::IsBlank(regional)) report += kCrLf + regional;
  report += Text(kCrLf) + kCrLf + u"Language for non-Unicode programs:";
  const Text codePage = GetLocaleDetails(app, u"CodePage");
  if (!base::IsBlank(base::CutAtNul(codePage))) report += kCrLf + codePage;
  report += Text(kCrLf) + kCrLf + u"Release date : " + kReleaseDate;
  return report;
}

Text WithoutPassword(frame::AppState& app, const Text& report) {
  Text out = report;
  const Text user = base::Trim(frame::ReadSetting(app, u"UserName"));
  if (user.empty()) return out;
  const Text password = frame::ReadSetting(app, user, true);
  // In the clear, scrambled as the value file holds it, and encoded as a message line.
  for (const Text& secret : {password, Encrypt(app, password), platform::PercentEncode(password)}) {
    if (secret.empty()) continue;
    out = base::Replace(out, secret, Text(secret.size(), u'*'));
  }
  return out;
}

bool ValidateLogMail(frame::AppState& app, kit::Ui& ui, const ReportFields& fields,
                     const SendHooks& hooks) {
  frame::WriteTrace(app, u"Enter ValidateLogMail");
  bool valid = false;
  base::Guarded(
      [&] {
        auto say = [&](long code) {
          ui.MessageBox(frame::GetMessage(app, code), kit::kIconInfo, kit::kButtonsOk,
                        app.AppTitle);
        };
        if (fields.from.empty()) {
          say(12);
          Run(hooks.focusFrom);
        } else if (fields.message.empty()) {
          say(14);
          Run(hooks.focusMessage);
        } else if (!ValidateMailid(fields.from)) {
          say(52);
          Run(hooks.focusFrom);
        } else {
          valid = true;
        }
      },
      [&](const base::ErrorInfo& e) {
        frame::TraceError(app, u"Error in Validatelogmail function of Error report screen", e);
      });
  frame::WriteTrace(app, u"Exit ValidateLogMail");
  return valid;
}

SendOutcome SendReport(frame::AppState& app, kit::Ui& ui, const ReportFields& fields,
                       const SendHooks& hooks) {
  if (!ValidateLogMail(app, ui, fields, hooks)) return SendOutcome::Invalid;
  bool sendFailed = false;
  auto busy = [&](bool on) {
    if (hooks.setBusy) hooks.setBusy(on);
  };
  busy(true);
  base::Guarded(
      [&] {
        const platform::ServiceEndpoints endpoints = ReadEndpoints(app);
        std::unique_ptr<platform::IHttpObject> http;
        if (app.platform.network != nullptr)
          http = app.platform.network->CreateHttpObject(endpoints);
        if (!http) throw base::Failure(429, "ActiveX component can't create object");
        Text report = BuildReport(app, *http, fields,
                                  {hooks.letEventsRun, hooks.progressText, hooks.showProgress});
        report = WithoutPassword(app, report);
        platform::IHttpObject::MailEvents events;
        events.onProgress = [&](long percent) {
          Say(hooks.progressText, base::FromNumber(percent) + u"% complete");
        };
        events.onFailed = [&](const Text& reason) {
          ui.MessageBox(frame::GetMessage(app, 11) + u" " + reason + u" " +
                            frame::GetMessage(app, 101) + kCrLf,
                        kit::kIconInfo, kit::kButtonsOk, app.AppTitle);
          sendFailed = true;
          Say(hooks.progressText, Text());
        };
        events.onSent = [&] { Say(hooks.progressText, u"Send Successful!"); };
        http->SendMail(SupportMailAddress(app), base::Trim(fields.subject), report,
                       base::Trim(fields.from), true, events);
        http.reset();
        Say(hooks.progressText, sendFailed ? u"Failed to send the feedback report."
                                           : u"Feedback report has been sent successfully.");
      },
      [&](const base::ErrorInfo& e) {
        sendFailed = true;
        frame::TraceError(app, u"Error Reason :", e,
                          u"in procedure cmdSend_Click of Form frmErrorReport");
      });
  busy(false);
  Run(hooks.focusForm);
  return sendFailed ? SendOutcome::Failed : SendOutcome::Sent;
}

}  // namespace account
