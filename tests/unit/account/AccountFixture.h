#pragma once
// A monitor's state on the fake platform with an account, its backup sets and a
// scripted account service, for the account and report rules.
#include <algorithm>

#include "frame/MessageTable.h"
#include "frame/Settings.h"
#include "kit/ScriptedUi.h"
#include "testkit/FrameFixture.h"
#include "account/ValueFiles.h"

namespace testkit {

struct AccountFixture : FrameFixture {
  AccountFixture() : secure(app) {
    fake.fs.AddFolders(app.CommonFolder());
    app.secureStore = &secure;
    app.BacksetFilePath = Common(u"BacksetData.txt");
  }
  void BackupSets(int count) {
    std::vector<base::Text> lines;
    for (int i = 1; i <= count; ++i)
      lines.push_back(u"Set" + base::FromNumber(i) + u"\u0008C:\\data" + base::FromNumber(i));
    platform::TextFile::WriteLines(fake.fs, app.BacksetFilePath, lines);
  }
  void JobInProgress() { platform::TextFile::WriteLines(fake.fs, app.ScheduleFilePath, {u"1"}); }
  // The texts of the boxes shown so far, in order.
  std::vector<base::Text> Texts() {
    std::vector<base::Text> t;
    for (const auto& q : ui.Questions()) t.push_back(q.text);
    return t;
  }
  base::Text Msg(long code) { return frame::GetMessage(app, code); }
  static bool Has(const base::Text& text, const base::Text& part) {
    return text.find(part) != base::Text::npos;
  }

  account::SecureValueStore secure;
  kit::ScriptedUi ui;
};

}  // namespace testkit
