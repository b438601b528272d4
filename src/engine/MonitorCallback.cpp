#include "engine/MonitorCallback.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "base/Guarded.h"
#include "frame/Logs.h"

namespace engine {

namespace {

constexpr double kGiB = 1073741824.0;

Text DecimalSeparatorOf(AppState& app) {
  Text sep = app.platform.locale ? app.platform.locale->DecimalSeparator() : Text(u".");
  return sep.empty() ? Text(u".") : sep;
}

// Shortest text that reads back as the same double (for the test trace only).
Text ExactNumber(double value) {
  char buf[40];
  for (int digits = 1; digits <= 17; ++digits) {
    std::snprintf(buf, sizeof buf, "%.*g", digits, value);
    if (std::strtod(buf, nullptr) == value) break;
  }
  return base::FromUtf8(buf);
}

Text Field(const char16_t* name, const Text& value) { return Text(name) + u"=[" + value + u"]"; }

}  // namespace

bool IsStopWord(TextView fileName) { return base::ToLower(fileName) == kStopFileName; }

bool IsTimeLeftPlausible(double size, long hours) {
  if (hours <= 1) return true;
  if (hours > 12) return false;
  return size >= static_cast<double>(hours - 1) * kGiB;
}

std::optional<Text> FilterTimeLeft(const Text& timeLeft, double totalFilesize) {
  if (timeLeft.empty()) return Text();
  const size_t p = base::InStr(timeLeft, u":");
  if (p < 2) return std::nullopt;
  const double h = base::LeadingNumber(base::Left(timeLeft, p - 1));
  if (h >= 13) return Text();
  if (totalFilesize > 0) {
    const long hours = static_cast<long>(std::max(h, -1.0));
    return IsTimeLeftPlausible(totalFilesize, hours) ? timeLeft : Text();
  }
  return std::nullopt;
}

Text GetProperTime(AppState& app, long lTimeValue) {
  Text result;
  base::Guarded(
      [&] {
        const long long v = lTimeValue;
        const long long s = v % 60;
        const long long rest = v - s;
        const long long m = (rest % 3600) / 60;
        const long long h = (rest - 60 * m) / 3600;
        auto part = [](long long x) {
          return (x < 10 ? Text(u"0") : Text()) + base::FromNumber(x);
        };
        result = part(h) + u":" + part(m) + u":" + part(s);
      },
      [&](const base::ErrorInfo& e) {
        frame::TraceError(app, u"Unable to prepare time value, reason : ", e);
      });
  return result;
}

Text NumberText(double value, int digits, TextView decimalSeparator) {
  if (std::isnan(value)) return u"NaN";
  if (std::isinf(value)) return value < 0 ? u"-Infinity" : u"Infinity";
  if (value == 0) return u"0";
  char buf[64];
  std::snprintf(buf, sizeof buf, "%.*G", digits, value);
  std::string s = buf;
  std::string exponent;
  const size_t e = s.find('E');
  if (e != std::string::npos) {
    exponent = s.substr(e);
    s = s.substr(0, e);
    // "E+05" reads "E+05" in the engine's texts too, but "E+005" never appears.
    const char sign = exponent.size() > 1 ? exponent[1] : '+';
    std::string digitsPart = exponent.substr(2);
    while (digitsPart.size() > 2 && digitsPart[0] == '0') digitsPart.erase(0, 1);
    exponent = std::string("E") + sign + digitsPart;
  }
  if (s.find('.') != std::string::npos) {
    while (!s.empty() && s.back() == '0') s.pop_back();
    if (!s.empty() && s.back() == '.') s.pop_back();
  }
  Text text = base::FromUtf8(s + exponent);
  return base::Replace(text, u".", decimalSeparator);
}

Text RefusedCallText(const UpdateMonitorArgs& a, TextView sep) {
  return u"got a call " + a.sFileName + u" " + NumberText(a.dFileSize, 15, sep) + u" " +
         NumberText(a.dTotalFilesize, 15, sep) + u" " + NumberText(a.dfileBuff, 15, sep) + u" " +
         NumberText(a.dTotalBuffer, 15, sep) + u" " + a.sTrfRate + u" " +
         NumberText(a.StartTime, 7, sep) + a.TimeRemaining;
}

short UpdateMonitor(AppState& app, const UpdateMonitorArgs& a) {
  app.StopSeen = false;
  app.PaneFlag = u"1";
  if (IsStopWord(a.sFileName)) {
    app.StopSeen = true;
    app.UpdateWaiting = false;
    return 1;
  }
  if (a.dTotalFilesize < 0 || a.dFileSize < 0 || a.dTotalBuffer < 0 || a.dfileBuff < 0) {
    frame::WriteMonitorTrace(app, RefusedCallText(a, DecimalSeparatorOf(app)), frame::kInformation);
    return 1;
  }
  TransferUpdate& t = app.Transfer;
  t.sFileName = a.sFileName;
  t.sBkStatus = a.sBkStatus;
  t.dFileSize = a.dFileSize;
  t.iFileProg = a.iFileProg;
  t.iTotalProg = a.iTotalProg;
  t.dTotalBuffer = a.dTotalBuffer;
  t.sTrfRate = a.sTrfRate;
  t.dTotalFilesize = a.dTotalFilesize;
  t.timeelapsed = a.timeelapsed;
  if (auto kept = FilterTimeLeft(a.TimeRemaining, a.dTotalFilesize)) t.TimeRemaining = *kept;
  t.engNumber = a.engNumber;
  app.UpdateWaiting = true;
  return 1;
}

Text ArrivedCallText(const UpdateMonitorArgs& a) {
  return u"UpdateMonitor arrived: " + Field(u"sFileName", a.sFileName) + u" " +
         Field(u"dFileSize", ExactNumber(a.dFileSize)) + u" " +
         Field(u"dTotalFilesize", ExactNumber(a.dTotalFilesize)) + u" " +
         Field(u"dfileBuff", ExactNumber(a.dfileBuff)) + u" " +
         Field(u"dTotalBuffer", ExactNumber(a.dTotalBuffer)) + u" " +
         Field(u"sTrfRate", a.sTrfRate) + u" " +
         Field(u"iFileProg", base::FromNumber(a.iFileProg)) + u" " +
         Field(u"iTotalProg", base::FromNumber(a.iTotalProg)) + u" " +
         Field(u"StartTime", ExactNumber(a.StartTime)) + u" " +
         Field(u"timeelapsed", a.timeelapsed) + u" " + Field(u"TimeRemaining", a.TimeRemaining) +
         u" " + Field(u"engNumber", base::FromNumber(a.engNumber)) + u" " +
         Field(u"preCall", base::FromNumber(a.preCall)) + u" " +
         Field(u"sBkStatus", base::FromNumber(a.sBkStatus));
}

Text StoredUpdateText(const AppState& app) {
  const TransferUpdate& t = app.Transfer;
  return u"UpdateMonitor kept: " + Field(u"sFileName", t.sFileName) + u" " +
         Field(u"dFileSize", ExactNumber(t.dFileSize)) + u" " +
         Field(u"dTotalFilesize", ExactNumber(t.dTotalFilesize)) + u" " +
         Field(u"dTotalBuffer", ExactNumber(t.dTotalBuffer)) + u" " +
         Field(u"sTrfRate", t.sTrfRate) + u" " +
         Field(u"iFileProg", base::FromNumber(t.iFileProg)) + u" " +
         Field(u"iTotalProg", base::FromNumber(t.iTotalProg)) + u" " +
         Field(u"timeelapsed", t.timeelapsed) + u" " + Field(u"TimeRemaining", t.TimeRemaining) +
         u" " + Field(u"engNumber", base::FromNumber(t.engNumber)) + u" " +
         Field(u"sBkStatus", base::FromNumber(t.sBkStatus)) + u" " +
         Field(u"UpdateWaiting", app.UpdateWaiting ? u"1" : u"0") + u" " +
         Field(u"StopSeen", app.StopSeen ? u"1" : u"0") + u" " + Field(u"PaneFlag", app.PaneFlag);
}

MonitorCallback::MonitorCallback(AppState& app) : app_(app) {
  if (app.platform.system) {
    const auto value = app.platform.system->Environment(kTraceUpdatesVariable);
    traceUpdates_ = value && *value == u"1";
  }
}

short MonitorCallback::UpdateMonitor(const UpdateMonitorArgs& args) {
  short result = 1;
  base::IgnoreFailure([&] {
    if (traceUpdates_) frame::WriteTrace(app_, ArrivedCallText(args));
    result = engine::UpdateMonitor(app_, args);
    if (traceUpdates_) frame::WriteTrace(app_, StoredUpdateText(app_));
  });
  return result;
}

Text MonitorCallback::GetProperTime(long lTimeValue) {
  return engine::GetProperTime(app_, lTimeValue);
}

}  // namespace engine
