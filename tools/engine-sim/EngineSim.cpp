#include "EngineSim.h"

#include <objbase.h>
#include <oleauto.h>

// First of the product's headers: it takes back the API's macros (DeleteFile,
// CreateMutex) that would rename the methods of the platform's interfaces.
#include "platform/win32/Win32Handles.h"

#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "QVMonitor_h.h"
#include "Scenario.h"
#include "base/DateTime.h"
#include "base/Guarded.h"
#include "engine/MonitorCallback.h"
#include "frame/AppState.h"
#include "frame/Logs.h"
#include "frame/Settings.h"
#include "jobstore/DBaction.h"
#include "platform/TextFile.h"
#include "platform/win32/Win32Platform.h"

namespace enginesim {

namespace {

using base::Text;
using platform::win32::UniqueBstr;
using platform::win32::UniqueHandle;

const wchar_t* W(const Text& t) { return reinterpret_cast<const wchar_t*>(t.c_str()); }

// The simulator's own record of what it did, plain UTF-8, beside the shared files.
class SimLog {
 public:
  explicit SimLog(const Text& path) : path_(path) {}
  void Line(const Text& text) {
    const std::string utf8 = base::ToUtf8(text) + "\r\n";
    const UniqueHandle h(::CreateFileW(W(path_), FILE_APPEND_DATA,
                                       FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_ALWAYS,
                                       FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!h) return;
    DWORD written = 0;
    ::WriteFile(h.Get(), utf8.data(), static_cast<DWORD>(utf8.size()), &written, nullptr);
  }

 private:
  Text path_;
};

Text Hex(long v) {
  char buf[16];
  std::snprintf(buf, sizeof buf, "0x%08lx", static_cast<unsigned long>(v));
  return base::FromUtf8(buf);
}

// A string passed by reference both ways: the monitor may free ours and put its own
// in, which is then the one given back.
class InOutString {
 public:
  explicit InOutString(const Text& text)
      : held_(::SysAllocStringLen(W(text), static_cast<UINT>(text.size()))), arg_(held_.Get()) {}
  ~InOutString() {
    if (arg_ == held_.Get()) return;
    static_cast<void>(held_.Detach());  // freed by the monitor
    held_.Reset(arg_);
  }
  InOutString(const InOutString&) = delete;
  InOutString& operator=(const InOutString&) = delete;

  BSTR* Arg() { return &arg_; }

 private:
  UniqueBstr held_;
  BSTR arg_;
};

// One client instance of the monitor's class, held for the length of a job.
class MonitorClient {
 public:
  explicit MonitorClient(SimLog& log) : log_(log) {
    CLSID clsid{};
    HRESULT hr = ::CLSIDFromProgID(L"QVMonitor.IMonitor", &clsid);
    if (SUCCEEDED(hr))
      hr = ::CoCreateInstance(clsid, nullptr, CLSCTX_LOCAL_SERVER, IID__IMonitor,
                              monitor_.OutVoid());
    log_.Line(u"connect hr=" + Hex(hr));
  }
  bool Connected() const { return static_cast<bool>(monitor_); }

  void Call(const platform::UpdateMonitorArgs& a, bool withOptionals, Via via) {
    const Text how = via == Via::Dispatch ? u"dispatch" : u"vtable";
    // Left-out optionals are not sent: the monitor gets their defaults, and the log
    // says so, to compare with what arrived.
    platform::UpdateMonitorArgs asSent = a;
    if (!withOptionals) asSent.preCall = asSent.sBkStatus = 0;
    const Text sent = engine::ArrivedCallText(asSent);
    if (!monitor_) {
      log_.Line(u"not sent (no monitor) " + how + u" " + sent);
      return;
    }
    InOutString file(a.sFileName), rate(a.sTrfRate), elapsed(a.timeelapsed), left(a.TimeRemaining);
    double fileSize = a.dFileSize, total = a.dTotalFilesize, buff = a.dfileBuff,
           totalBuff = a.dTotalBuffer;
    short fileProg = a.iFileProg, totalProg = a.iTotalProg, eng = a.engNumber, pre = a.preCall;
    float start = a.StartTime;
    VARIANT result;
    ::VariantInit(&result);
    HRESULT hr = E_FAIL;
    if (via == Via::Vtable) {
      // A vtable caller cannot leave an argument out: it passes the defaults.
      if (!withOptionals) pre = 0;
      hr = monitor_->UpdateMonitor(file.Arg(), &fileSize, &total, &buff, &totalBuff, rate.Arg(),
                                   &fileProg, &totalProg, &start, elapsed.Arg(), left.Arg(), &eng,
                                   &pre, withOptionals ? a.sBkStatus : 0, &result);
    } else {
      // The number of the method is asked for once a connection, as a client that
      // binds late keeps it.
      hr = S_OK;
      if (!updateId_) {
        DISPID id = 0;
        LPOLESTR name = const_cast<LPOLESTR>(L"UpdateMonitor");
        hr = monitor_->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id);
        if (SUCCEEDED(hr)) updateId_ = id;
      }
      if (SUCCEEDED(hr)) {
        const DISPID id = *updateId_;
        VARIANTARG args[14];
        for (auto& v : args) ::VariantInit(&v);
        // Arguments go in reverse order.
        auto ref = [&](int index, VARTYPE type, void* p) {
          VARIANTARG& v = args[13 - index];
          v.vt = VT_BYREF | type;
          v.byref = p;
        };
        ref(0, VT_BSTR, file.Arg());
        ref(1, VT_R8, &fileSize);
        ref(2, VT_R8, &total);
        ref(3, VT_R8, &buff);
        ref(4, VT_R8, &totalBuff);
        ref(5, VT_BSTR, rate.Arg());
        ref(6, VT_I2, &fileProg);
        ref(7, VT_I2, &totalProg);
        ref(8, VT_R4, &start);
        ref(9, VT_BSTR, elapsed.Arg());
        ref(10, VT_BSTR, left.Arg());
        ref(11, VT_I2, &eng);
        ref(12, VT_I2, &pre);
        args[0].vt = VT_I4;
        args[0].lVal = a.sBkStatus;
        DISPPARAMS params{};
        // Without the optionals only the first twelve go, which are the last twelve here.
        params.rgvarg = withOptionals ? args : args + 2;
        params.cArgs = withOptionals ? 14 : 12;
        UINT argErr = 0;
        hr = monitor_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &params, &result,
                              nullptr, &argErr);
      }
    }
    Text outcome = u" hr=" + Hex(hr) + u" result=" +
                   (result.vt == VT_I2 ? base::FromNumber(result.iVal) : Text(u"?"));
    log_.Line(u"sent " + how +
              (withOptionals ? Text(u" with optionals ") : Text(u" without optionals ")) + sent +
              outcome);
    ::VariantClear(&result);
  }

  Text ProperTime(long seconds) {
    if (!monitor_) return Text();
    UniqueBstr out;
    monitor_->GetProperTime(seconds, out.Out());
    return out ? Text(reinterpret_cast<const char16_t*>(out.Get()), ::SysStringLen(out.Get()))
               : Text();
  }

 private:
  SimLog& log_;
  platform::win32::ComPtr<_IMonitor> monitor_;
  std::optional<DISPID> updateId_;
};

// The next run of a repeating job after `from`, past `now`; nullopt for a job that
// runs once. The editor stores hourly and monthly jobs, and any set of days without a
// name, with the index 0: their days tell them. The index serves only a record whose
// days are empty (an older file).
std::optional<base::DateTime> NextRunAfter(const jobstore::ScheduleRecord& r, base::DateTime from,
                                           base::DateTime now) {
  const Text days = base::ToUpper(base::Trim(r.Days));
  const long index = static_cast<long>(base::LeadingNumber(r.FrequencyIndex));
  if (index == 1 || days == u"IMMEDIATE" || r.SortKey == jobstore::kImmediateKey)
    return std::nullopt;
  const bool hourly = days == u"HOURLY" || (days.empty() && index == 2);
  const bool monthly = days == u"MONTHLY" || (days.empty() && index == 5);
  Text digits = days;
  if (days.empty()) {
    if (index == 3) digits = u"1234567";
    if (index == 4) digits = base::FromNumber(from.Weekday());
    if (index == 6) digits = u"23456";
    if (index == 7) digits = u"17";
  }
  // Digits name days 1 (Sunday) to 7 (Saturday); a set that names none never runs again.
  const bool onDays = !hourly && !monthly && base::IsNumeric(digits) &&
                      digits.find_first_of(u"1234567") != Text::npos;
  if (!hourly && !monthly && !onDays) return std::nullopt;
  base::DateTime next = from;
  for (int guard = 0; guard < 100000 && next <= now; ++guard) {
    if (hourly) {
      next = next.AddHours(1);
    } else if (monthly) {
      next = next.AddMonths(1);
    } else {
      // Daily, weekly, weekday and weekend jobs run on the days their digits name.
      do {
        next = next.AddDays(1);
      } while (digits.find(static_cast<char16_t>(u'0' + next.Weekday())) == Text::npos);
    }
  }
  return next;
}

Text TwoDigits(int v) { return (v < 10 ? Text(u"0") : Text()) + base::FromNumber(v); }

class Engine {
 public:
  explicit Engine(Control& control) : control_(control), app_(win32_.Get()) {
    app_.ProgramFolder = win32_.system.ProgramFolder();
    app_.DataRoot = app_.ProgramFolder;
    app_.ScheduleFilePath = app_.CommonFile(u"scheduleData.txt");
    app_.ServiceLogPath = app_.CommonFile(u"QVWServiceLog.txt");
    win32_.fs.CreateFolder(app_.CommonFolder());
    log_ = std::make_unique<SimLog>(app_.CommonFile(u"engine-sim.log"));
  }

  void Run() {
    log_->Line(u"started");
    while (!control_.quit) {
      scenario_ = LoadScenario();
      if (!control_.paused) RunDueJob();
      Wait(scenario_.pollMs);
    }
    log_->Line(u"ended");
  }

 private:
  Scenario LoadScenario() {
    Scenario s;
    auto bytes = win32_.fs.ReadAll(app_.ProgramFolder + u"\\engine-sim.ini");
    if (bytes) s = ParseScenario(*bytes);
    for (const std::string& p : s.problems)
      log_->Line(u"scenario line not understood: " + base::FromUtf8(p));
    return s;
  }

  void Wait(unsigned ms) {
    for (unsigned waited = 0; waited < ms && !control_.quit; waited += 10) ::Sleep(10);
  }

  bool StopAsked() { return jobstore::ReadStateLine(app_, app_.ScheduleFilePath) == u"2"; }

  void RunDueJob() {
    auto lines = platform::TextFile::ReadLines(win32_.fs, app_.ScheduleFilePath);
    if (!lines || lines->empty()) return;
    if (base::Trim((*lines)[0]) != u"0") return;  // a job runs, or the word is damaged
    const base::DateTime now = win32_.clock.Now();
    const Text nowKey = base::FormatSortKey(now);
    std::optional<jobstore::ScheduleRecord> due;
    for (size_t i = 1; i < lines->size(); ++i) {
      jobstore::ParsedLine p = jobstore::ParseScheduleLine((*lines)[i]);
      if (!p.hasSeparator) continue;
      const Text& key = p.record.SortKey;
      if (key == jobstore::kRunningKey || key.size() != 12 || key > nowKey) continue;
      if (!due || key < due->SortKey) due = p.record;
    }
    if (due) RunJob(*due, now);
  }

  void RunJob(jobstore::ScheduleRecord record, base::DateTime started) {
    const Text setName = base::Trim(record.BackupSetName);
    log_->Line(u"job " + record.RecordNo + u" " + setName + u" starts");
    const Text firstKey = record.SortKey;
    // The engine's marks of a running job: the word and the running key.
    static_cast<void>(jobstore::SetStateWord(app_, app_.ScheduleFilePath, u"1"));
    record.SortKey = jobstore::kRunningKey;
    static_cast<void>(jobstore::DB_WriteSchdata(app_, record, false));

    app_.CurrentLogName = u"Schedule " + setName;
    app_.CurrentSessionFile = u"Schedule " + TwoDigits(started.month) + u"-" +
                              TwoDigits(started.day) + u"-" + base::FromNumber(started.year) +
                              u"  " + TwoDigits(started.hour) + u"-" + TwoDigits(started.minute) +
                              u"-" + TwoDigits(started.second) + u".txt";
    frame::WriteActivityLog(app_, u"Scheduled backup of '" + setName + u"' started", 0);

    MonitorClient monitor(*log_);
    // The calls show a transfer clock of their own, so a short test run still reports
    // the times and rates of a real transfer.
    unsigned stepsDone = 0;
    auto elapsed = [&] { return stepsDone * scenario_.stepSeconds; };
    for (const ScriptedCall& c : scenario_.calls) {
      if (control_.quit) return;
      monitor.Call(c.args, c.withOptionals, c.via);
    }
    bool stopped = false;
    unsigned done = 0;
    for (unsigned f = 0; f < scenario_.files && !control_.quit; ++f) {
      for (unsigned step = 1; step <= scenario_.steps && !control_.quit; ++step) {
        Wait(scenario_.stepMs);
        ++stepsDone;
        monitor.Call(GeneratedCall(scenario_, f, step, elapsed()), scenario_.withOptionals,
                     scenario_.via);
      }
      ++done;
      frame::WriteActivityLog(
          app_,
          u"Backed up C:\\Users\\Public\\Documents\\Report " + base::FromNumber(f + 1) + u".docx",
          1);
      // A stop request is honoured between files, never inside one.
      if (f + 1 < scenario_.files && StopAsked()) {
        stopped = true;
        log_->Line(u"stop word seen after file " + base::FromNumber(f + 1));
        break;
      }
    }
    if (control_.quit) {
      log_->Line(u"job " + record.RecordNo + u" left by the ending program");
      return;
    }
    platform::UpdateMonitorArgs stop;
    stop.sFileName = u"?stop";
    monitor.Call(stop, scenario_.withOptionals, scenario_.via);

    // The word goes back to "0" and the job to its next run (or out of the file).
    static_cast<void>(jobstore::SetStateWord(app_, app_.ScheduleFilePath, u"0"));
    const auto from = base::ParseFileDate(record.NextRun);
    const auto next = NextRunAfter(record, from.value_or(started), win32_.clock.Now());
    if (next) {
      record.NextRun = base::FormatFileDate(*next);
      record.SortKey = base::FormatSortKey(*next);
      static_cast<void>(jobstore::DB_WriteSchdata(app_, record, false));
      log_->Line(u"job " + record.RecordNo + u" next " + record.NextRun);
    } else {
      static_cast<void>(jobstore::DB_DeleteRecord(app_, record.RecordNo, app_.ScheduleFilePath));
      log_->Line(u"job " + record.RecordNo + u" removed (" + firstKey + u")");
    }

    const Text result = stopped ? Text(u"RED") : scenario_.result;
    frame::WriteActivityLog(
        app_,
        u"Scheduled backup of '" + setName + u"' " +
            (stopped ? Text(u"was stopped by the user after ") : Text(u"ended: ")) +
            base::FromNumber(done) + u" file(s)",
        stopped ? 2 : 1);
    app_.CurrentSessionFile.clear();
    frame::WriteSetting(app_, u"DESKNOTIFYICON", result);
    platform::TextFile::WriteLines(win32_.fs, app_.CommonFile(u"qvwincurjobname.txt"),
                                   {setName, record.RecordNo, base::Trim(record.UserName)});
    log_->Line(u"job " + record.RecordNo + (stopped ? Text(u" stopped") : Text(u" ended")) +
               u" files=" + base::FromNumber(done) + u" result=" + result);
  }

  Control& control_;
  platform::Win32Platform win32_;
  frame::AppState app_;
  std::unique_ptr<SimLog> log_;
  Scenario scenario_;
};

}  // namespace

void RunEngine(Control& control) noexcept {
  base::IgnoreFailure([&] {
    ::CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    {
      Engine engine(control);
      engine.Run();
    }
    ::CoUninitialize();
  });
}

}  // namespace enginesim
