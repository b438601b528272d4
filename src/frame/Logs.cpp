#include "frame/Logs.h"

#include "base/DateTime.h"
#include "platform/TextFile.h"

namespace frame {

namespace {

using platform::TextFile;

void EnsureCommonFolder(AppState& app) {
  auto& fs = *app.platform.fs;
  if (!fs.FolderExists(app.CommonFolder())) fs.CreateFolder(app.CommonFolder());
}

Text TracePath(AppState& app) { return app.CommonFile(u"SerTraceFile.txt"); }

const char16_t* ActivityKind(int type) {
  switch (type) {
    case kInformation: return u"Information : ";
    case kSuccess: return u"Success     : ";
    case kError: return u"Error       : ";
    default: return nullptr;
  }
}

const char16_t* MonitorKind(int type) {
  switch (type) {
    case kInformation: return u"Information (QVMonitor) : ";
    case kSuccess: return u"Success     (QVMonitor) : ";
    case kError: return u"Error       (QVMonitor) : ";
    default: return nullptr;
  }
}

// The separator goes in as single bytes; see the log view for how it reads back.
void AppendSeparatorBytes(AppState& app, const Text& path) {
  std::string bytes(kSeparatorLength, '_');
  bytes += "\r\n";
  TextFile::AppendBytes(*app.platform.fs, path, bytes);
}

}  // namespace

Text LogStamp(AppState& app) {
  auto& locale = *app.platform.locale;
  return base::FormatStamp(app.platform.clock->Now(), locale.DateSeparator(),
                           locale.TimeSeparator());
}

Text ActivityLine(const Text& stamp, const Text& message, int type) {
  const char16_t* kind = ActivityKind(type);
  if (!kind) return Text();
  return Text(kind) + stamp + u" : " + base::CutAtNul(message);
}

Text MonitorTraceLine(const Text& stamp, const Text& message, int type) {
  const char16_t* kind = MonitorKind(type);
  if (!kind) return Text();
  return Text(kind) + stamp + u" :  " + message;
}

void AppendLine(AppState& app, const Text& path, const Text& text) {
  base::IgnoreFailure([&] {
    EnsureCommonFolder(app);
    // A missing file is made by the append itself, with its mark, never by a replace:
    // the engine writes the same trace and logs, and may make the file between our
    // test and our write. A replace would throw away the lines it put there.
    TextFile::AppendLine(*app.platform.fs, path, base::Trim(text));
  });
}

void WriteTrace(AppState& app, const Text& message) {
  EnsureCommonFolder(app);
  AppendLine(app, TracePath(app), message);
}

void WriteMonitorTrace(AppState& app, const Text& message, int type) {
  EnsureCommonFolder(app);
  AppendLine(app, TracePath(app), MonitorTraceLine(LogStamp(app), message, type));
}

void WriteActivityLog(AppState& app, const Text& message, int type) {
  base::IgnoreFailure([&] {
    auto& fs = *app.platform.fs;
    Text line;
    if (!base::IsBlank(message)) line = ActivityLine(LogStamp(app), message, type);

    EnsureCommonFolder(app);
    Text logsFolder = app.CommonFile(u"logs");
    Text jobLog = logsFolder + u"\\" + app.CurrentLogName + u".txt";
    if (!fs.FolderExists(logsFolder)) fs.CreateFolder(logsFolder);
    if (fs.FolderExists(logsFolder)) AppendLine(app, jobLog, line);

    if (!app.CurrentSessionFile.empty()) {
      Text sessionFolder = app.CommonFile(u"Session");
      if (!fs.FolderExists(sessionFolder)) fs.CreateFolder(sessionFolder);
      if (fs.FolderExists(sessionFolder) && !app.CurrentSessionFile.empty())
        AppendLine(app, sessionFolder + u"\\" + app.CurrentSessionFile, line);
    }

    AppendLine(app, app.ServiceLogPath, line);

    if (base::Right(line, 11) == u"logged out ") {
      AppendSeparatorBytes(app, app.ServiceLogPath);
      if (fs.FolderExists(logsFolder) || fs.CreateFolder(logsFolder))
        AppendSeparatorBytes(app, jobLog);
    }
  });
}

Text ErrorLine(const Text& prefix, const base::ErrorInfo& error, const Text& where) {
  Text line = prefix + error.description;
  if (!where.empty()) line += u" " + where;
  return line;
}

void TraceError(AppState& app, const Text& prefix, const base::ErrorInfo& error,
                const Text& where) {
  WriteTrace(app, ErrorLine(prefix, error, where));
}

}  // namespace frame
