#include "Scenario.h"

#include <cstdlib>

#include "base/Text.h"

namespace enginesim {

using base::Text;

namespace {

std::string Lower(std::string s) {
  for (char& c : s)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  return s;
}

std::string TrimAscii(std::string_view s) {
  size_t b = 0, e = s.size();
  while (b < e && (s[b] == ' ' || s[b] == '\t' || s[b] == '\r')) ++b;
  while (e > b && (s[e - 1] == ' ' || s[e - 1] == '\t' || s[e - 1] == '\r')) --e;
  return std::string(s.substr(b, e - b));
}

bool Number(const std::string& v, double& out) {
  char* end = nullptr;
  const double d = std::strtod(v.c_str(), &end);
  if (v.empty() || *end != '\0') return false;
  out = d;
  return true;
}

bool Yes(const std::string& v) {
  const std::string l = Lower(v);
  return l == "yes" || l == "1" || l == "true";
}

// The fields of an exact call; false when the key is not one of them.
bool SetCallField(ScriptedCall& c, const std::string& key, const std::string& value, bool& bad) {
  platform::UpdateMonitorArgs& a = c.args;
  double d = 0;
  auto num = [&](auto& field) {
    if (!Number(value, d)) bad = true;
    field = static_cast<std::remove_reference_t<decltype(field)>>(d);
  };
  if (key == "sfilename")
    a.sFileName = base::FromUtf8(value);
  else if (key == "dfilesize")
    num(a.dFileSize);
  else if (key == "dtotalfilesize")
    num(a.dTotalFilesize);
  else if (key == "dfilebuff")
    num(a.dfileBuff);
  else if (key == "dtotalbuffer")
    num(a.dTotalBuffer);
  else if (key == "strfrate")
    a.sTrfRate = base::FromUtf8(value);
  else if (key == "ifileprog")
    num(a.iFileProg);
  else if (key == "itotalprog")
    num(a.iTotalProg);
  else if (key == "starttime")
    num(a.StartTime);
  else if (key == "timeelapsed")
    a.timeelapsed = base::FromUtf8(value);
  else if (key == "timeremaining")
    a.TimeRemaining = base::FromUtf8(value);
  else if (key == "engnumber")
    num(a.engNumber);
  else if (key == "precall")
    num(a.preCall);
  else if (key == "sbkstatus")
    num(a.sBkStatus);
  else if (key == "optionals")
    c.withOptionals = Yes(value);
  else if (key == "via")
    c.via = Lower(value) == "dispatch" ? Via::Dispatch : Via::Vtable;
  else
    return false;
  return true;
}

}  // namespace

Scenario ParseScenario(std::string_view text) {
  Scenario s;
  ScriptedCall* call = nullptr;
  size_t start = 0;
  while (start <= text.size()) {
    size_t end = text.find('\n', start);
    if (end == std::string_view::npos) end = text.size();
    const std::string line = TrimAscii(text.substr(start, end - start));
    start = end + 1;
    if (line.empty() || line[0] == '#' || line[0] == ';') continue;
    if (Lower(line) == "[call]") {
      ScriptedCall c;
      // Arguments the call does not name: the first step of the scenario's transfer.
      Scenario d = s;
      if (d.files == 0) d.files = 3;
      c.args = GeneratedCall(d, 0, 1, d.stepSeconds);
      c.withOptionals = s.withOptionals;
      c.via = s.via;
      s.calls.push_back(c);
      call = &s.calls.back();
      continue;
    }
    const size_t eq = line.find('=');
    if (eq == std::string::npos) {
      s.problems.push_back(line);
      continue;
    }
    const std::string key = Lower(TrimAscii(line.substr(0, eq)));
    const std::string value = TrimAscii(line.substr(eq + 1));
    bool bad = false;
    if (call) {
      if (!SetCallField(*call, key, value, bad) || bad) s.problems.push_back(line);
      continue;
    }
    double d = 0;
    if (key == "poll_ms" && Number(value, d) && d >= 10)
      s.pollMs = static_cast<unsigned>(d);
    else if (key == "files" && Number(value, d) && d >= 0)
      s.files = static_cast<unsigned>(d);
    else if (key == "file_size" && Number(value, d))
      s.fileSize = d;
    else if (key == "steps" && Number(value, d) && d >= 1)
      s.steps = static_cast<unsigned>(d);
    else if (key == "step_ms" && Number(value, d) && d >= 0)
      s.stepMs = static_cast<unsigned>(d);
    else if (key == "step_seconds" && Number(value, d) && d >= 0)
      s.stepSeconds = d;
    else if (key == "bk_status" && Number(value, d))
      s.bkStatus = static_cast<long>(d);
    else if (key == "optionals")
      s.withOptionals = Yes(value);
    else if (key == "via")
      s.via = Lower(value) == "dispatch" ? Via::Dispatch : Via::Vtable;
    else if (key == "result")
      s.result = base::FromUtf8(value);
    else if (key == "time_left")
      s.timeLeft = base::FromUtf8(value);
    else
      s.problems.push_back(line);
  }
  return s;
}

platform::UpdateMonitorArgs GeneratedCall(const Scenario& s, unsigned file, unsigned step,
                                          double elapsedSeconds) {
  platform::UpdateMonitorArgs a;
  const double total = s.fileSize * s.files;
  const double fileDone = s.fileSize * step / s.steps;
  const double allDone = s.fileSize * file + fileDone;
  a.sFileName = u"C:\\Users\\Public\\Documents\\Report " + base::FromNumber(file + 1) + u".docx";
  a.dFileSize = s.fileSize;
  a.dTotalFilesize = total;
  a.dfileBuff = fileDone;
  a.dTotalBuffer = allDone;
  const double rate = elapsedSeconds > 0 ? allDone / elapsedSeconds / 1024 : 0;
  a.sTrfRate = base::FromNumber(static_cast<long long>(rate)) + u" KB/s";
  a.iFileProg = static_cast<short>(100.0 * step / s.steps);
  a.iTotalProg = static_cast<short>(total > 0 ? 100.0 * allDone / total : 0);
  a.StartTime = static_cast<float>(elapsedSeconds);
  auto hms = [](long long v) {
    auto two = [](long long x) { return (x < 10 ? Text(u"0") : Text()) + base::FromNumber(x); };
    return two(v / 3600) + u":" + two(v / 60 % 60) + u":" + two(v % 60);
  };
  a.timeelapsed = hms(static_cast<long long>(elapsedSeconds));
  if (!s.timeLeft.empty()) {
    a.TimeRemaining = s.timeLeft;
  } else {
    const double left = allDone > 0 ? elapsedSeconds * (total - allDone) / allDone : 0;
    a.TimeRemaining = hms(static_cast<long long>(left));
  }
  a.engNumber = 1;
  a.preCall = 0;
  a.sBkStatus = s.withOptionals ? s.bkStatus : 0;
  return a;
}

}  // namespace enginesim
