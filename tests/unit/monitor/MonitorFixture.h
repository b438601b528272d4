#pragma once
// The monitor window on a fake platform and a windowless screen service, with engine
// objects whose answers a test scripts, and a record of what the window asked of the
// other folders' screens. Calls of all of them go into one ordered log.
#include <gtest/gtest.h>

#include <deque>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "base/Utf16.h"
#include "engine/EngineNames.h"
#include "engine/EngineObject.h"
#include "engine/MonitorCallback.h"
#include "engine/StopWord.h"
#include "frame/Settings.h"
#include "kit/ScriptedUi.h"
#include "monitor/frmQVWinService.h"
#include "testkit/FrameFixture.h"

namespace monitortest {

using base::Text;

// One engine object whose status words come from a script; once the script is used
// up it answers `steady`. Starting, stopping and pausing change `steady` as a real
// engine would settle.
class ScriptedEngine : public engine::EngineObject {
 public:
  ScriptedEngine(frame::AppState& app, std::string name, std::vector<std::string>& log,
                 bool service)
      : app_(app), name_(std::move(name)), log_(log), service_(service) {}

  Text GetServiceStatus() override {
    log_.push_back(name_ + ".status");
    ++statusCalls;
    if (words.empty()) return steady;
    Text w = words.front();
    words.pop_front();
    return w;
  }
  void ServiceStart() override {
    log_.push_back(name_ + ".start");
    ++starts;
    // A paused engine is not started again by a start; it stays paused.
    if (startSettles && steady != u"Paused") steady = u"Running";
  }
  void ServiceStop() override {
    log_.push_back(name_ + ".stop");
    steady = u"Stopped";
  }
  void ServicePause() override {
    if (!service_) NotOffered();
    log_.push_back(name_ + ".pause");
    steady = u"Paused";
  }
  void ServiceResume() override {
    if (!service_) NotOffered();
    log_.push_back(name_ + ".resume");
    steady = u"Running";
  }
  void StopTransfer() override { engine::StopTransfer(app_); }
  bool StopTransferMsgBox() override { return engine::StopTransferMsgBox(app_); }
  Text getlabelstring() override { return engine::kGuideText; }
  long IsServiceExeRunning(bool) override { return 0; }
  long getVersion() override { return 2; }
  long getMajorVersion() override { return 10; }
  bool IsService() const override { return service_; }
  bool Installed() override { return installed; }

  std::deque<Text> words;
  bool installed = true;
  Text steady = u"Running";
  bool startSettles = true;
  int statusCalls = 0;
  int starts = 0;

 private:
  frame::AppState& app_;
  std::string name_;
  std::vector<std::string>& log_;
  bool service_;
};

// What the window asks of the other folders' screens.
class RecordingScreens : public monitor::MonitorScreens {
 public:
  explicit RecordingScreens(std::vector<std::string>& log) : log_(log) {}
  void senddesktopnotify() override { Note("senddesktopnotify"); }
  void Dialupdisconnect() override { Note("Dialupdisconnect"); }
  void CheckMissedBackup() override { Note("CheckMissedBackup"); }
  void OpenBackupNow() override { Open("BackupNow"); }
  void OpenUpdatePassword() override { Open("UpdatePassword"); }
  void OpenManageScheduledJobs() override { Open("ManageScheduledJobs"); }
  void OpenErrorReport() override { Open("ErrorReport"); }
  void OpenAbout() override { Open("About"); }
  void OpenSessionLog() override { Open("SessionLog"); }

  std::function<void(const std::string&)> onStep;

 private:
  void Note(const std::string& step) {
    log_.push_back(step);
    if (onStep) onStep(step);
  }
  void Open(const std::string& screen) { log_.push_back("open " + screen); }
  std::vector<std::string>& log_;
};

class MapSecureStore : public frame::ISecureStore {
 public:
  Text ReadSecure(const Text& keyName) override {
    return values.contains(keyName) ? values[keyName] : Text();
  }
  platform::WriteResult WriteSecure(const Text& keyName, const Text& value) override {
    values[keyName] = value;
    return platform::WriteResult::Success();
  }
  std::map<Text, Text> values;
};

class MonitorFormTest : public ::testing::Test, public testkit::CommonFixture {
 protected:
  MonitorFormTest() : screens(log) {
    app.secureStore = &secure;
    auto service = std::make_shared<ScriptedEngine>(app, "service", log, true);
    auto background = std::make_shared<ScriptedEngine>(app, "background", log, false);
    serviceEngine = service.get();
    backgroundEngine = background.get();
    app.ServiceEngine = service;
    app.BackgroundEngine = background;
    app.ActiveEngine = background;
  }

  // Builds and loads the window (its load steps run now, as in Main).
  monitor::frmQVWinService& Open() {
    form = std::make_unique<monitor::frmQVWinService>(app, ui, &screens);
    form->SetTerminate([this](unsigned code) { terminated.push_back(code); });
    form->Load();
    log.clear();
    return *form;
  }

  void Setting(const Text& key, const Text& value) { frame::WriteSetting(app, key, value); }
  Text Get(const Text& key) { return frame::ReadSetting(app, key); }
  Text Ini(const Text& section, const Text& key, const Text& file) {
    return fake.profile.GetString(section, key, Text(), 1024, file);
  }
  void Account(const Text& user, const Text& password) {
    Setting(u"UserName", user);
    secure.values[user] = password;
  }
  void EngineType(const Text& type) {
    fake.profile.WriteString(u"Corvane", Text(u"Type"), type, Common(u"QVDetails.ini"));
  }
  void StateWord(const Text& word) {
    platform::TextFile::WriteLines(fake.fs, app.ScheduleFilePath, {word});
  }
  // The activity log with lines 1 to n.
  void LogLines(int n) {
    std::vector<Text> lines;
    for (int i = 1; i <= n; ++i)
      lines.push_back(u"Information : 11/15/2026 05:25:27 : line " + base::FromNumber(i));
    platform::TextFile::WriteLines(fake.fs, app.ServiceLogPath, lines);
  }
  // The window's one icon in the notification area.
  platform::UiHandle TrayHandle() {
    EXPECT_EQ(fake.ui.trayIcons.size(), 1u);
    return fake.ui.trayIcons.empty() ? 0 : fake.ui.trayIcons.begin()->first;
  }
  const platform::UiTrayIcon& Tray() { return fake.ui.trayIcons.at(TrayHandle()).state; }

  // One progress call of the engine, as the COM shell hands it on.
  void Call(const Text& file, double fileSize, double total, double done, short fileProg,
            short totalProg, long kind, short engNumber = 1, const Text& left = u"0:05:00") {
    platform::UpdateMonitorArgs a;
    a.sFileName = file;
    a.dFileSize = fileSize;
    a.dTotalFilesize = total;
    a.dTotalBuffer = done;
    a.sTrfRate = u"1.2 MB/s";
    a.iFileProg = fileProg;
    a.iTotalProg = totalProg;
    a.timeelapsed = u"0:01:10";
    a.TimeRemaining = left;
    a.engNumber = engNumber;
    a.sBkStatus = kind;
    engine::UpdateMonitor(app, a);
  }
  void StopCall() {
    platform::UpdateMonitorArgs a;
    a.sFileName = u"?STOP";
    engine::UpdateMonitor(app, a);
  }

  std::vector<std::string> log;
  MapSecureStore secure;
  RecordingScreens screens;
  ScriptedEngine* serviceEngine = nullptr;
  ScriptedEngine* backgroundEngine = nullptr;
  kit::ScriptedUi ui;
  std::unique_ptr<monitor::frmQVWinService> form;
  std::vector<unsigned> terminated;
};

using testkit::U8;

}  // namespace monitortest
