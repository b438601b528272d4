#pragma once
// The job screens' rules on the fake platform rooted at C:\QV, with the windowless
// screen service answering the product's message box from a script.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/Utf16.h"
#include "frame/Settings.h"
#include "jobs/JobPrompts.h"
#include "frame/MessageTable.h"
#include "kit/ScriptedUi.h"
#include "testkit/FrameFixture.h"

namespace jobstest {

using base::Text;
using testkit::U8;

// One record as the file holds it, field after field.
struct Rec {
  Text no, name, next = u"03-25-2013 6:41:00", key = u"201303250641", days = u"2", freq = u"4",
                 user = u"jsmith", dest = u"My Corvane/", created = u"03-18-2013 15:02:33";
  Text Line() const {
    return base::Join({no,  name, next, created, dest, freq, u"2", u"1", u"a@b.c", u"",
                       u"", u"",  u"0", u"1",    u"3", key,  user, u"1", u"0",     days},
                      u"\b\b");
  }
};

// A weekly job on Mondays, and one the engine runs (its key is the running one).
inline const Rec kDocs{u"3", u"Documents", u"03-25-2013 6:41:00", u"201303250641", u"2", u"4"};
inline const Rec kRunning{u"5", u"Photos",  u"03-19-2013 9:00:00", u"000000000000", u"1234567",
                          u"3", u"  mary  "};

// Downloads asked for instead of opened, next to the product's message box.
class RecordingPrompts : public jobs::UiPrompts {
 public:
  using UiPrompts::UiPrompts;
  void OpenDownload(const Text& url) override { downloads.push_back(url); }
  std::vector<Text> downloads;
};

class JobsTest : public ::testing::Test, public testkit::UserFixture {
 protected:
  JobsTest() : prompts(app, ui) {}

  void PutSchedule(const Text& state, const std::vector<Rec>& records) {
    std::vector<Text> lines{state};
    for (const Rec& r : records) lines.push_back(r.Line());
    PutLines(app.ScheduleFilePath, lines);
  }
  std::vector<Text> Schedule() { return Lines(app.ScheduleFilePath); }
  void SetIni(const Text& key, const Text& value) { frame::WriteSetting(app, key, value); }

  // The texts of the message boxes so far, in order.
  std::vector<Text> Asked() const {
    std::vector<Text> texts;
    for (const auto& q : ui.Questions()) texts.push_back(q.text);
    return texts;
  }
  Text Msg(long code) const { return frame::GetMessage(app, code); }
  // The program folder holds every file of the plug-in.
  void InstallPlugin() {
    for (const char16_t* f :
         {u"SqlAgentLib.dll", u"SqlAgentRun.exe", u"MailStoreLib.dll", u"MailStoreRun.exe",
          u"MailStoreLib64.dll", u"MailStoreRun64.exe", u"MailStoreRestore.dll",
          u"MailStoreRestore64.dll", u"MailBrickRun.exe", u"MailStoreRun2010.exe",
          u"SysStateRun32.exe", u"SysStateRun64.exe"})
      fake.fs.PutFile(u"C:\\QV\\" + Text(f), "x");
  }

  kit::ScriptedUi ui;
  RecordingPrompts prompts;
};

}  // namespace jobstest
