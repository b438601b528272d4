#pragma once
// A monitor's process state on a fake platform, rooted at C:\QV.
#include <string>
#include <vector>

#include "base/Utf16.h"
#include "frame/AppState.h"
#include "platform/TextFile.h"
#include "platform/fake/FakePlatform.h"
#include "testkit/TextFiles.h"

namespace testkit {

struct FrameFixture {
  FrameFixture() : app(fake.Get()) {
    fake.system.programFolder = u"C:\\QV";
    fake.fs.AddFolders(u"C:\\QV");
    app.ProgramFolder = u"C:\\QV";
    app.DataRoot = u"C:\\QV";
    app.ScheduleFilePath = u"C:\\QV\\QVCOMMON\\scheduleData.txt";
    app.ServiceLogPath = u"C:\\QV\\QVCOMMON\\QVWServiceLog.txt";
    app.MailFilePath = u"C:\\QV\\QVCOMMON\\Mailid.txt";
  }

  // The units of a UTF-16 file after its BOM, as one text ("" when absent).
  base::Text Units(const base::Text& path) {
    return base::DecodeUtf16Le(fake.fs.Bytes(path)).units;
  }
  std::vector<base::Text> Lines(const base::Text& path) {
    return platform::TextFile::ReadLines(fake.fs, path).value_or(std::vector<base::Text>{});
  }
  base::Text Common(const base::Text& name) { return kCommonFolder + u"\\" + name; }
  void AddCommon() { fake.fs.AddFolders(kCommonFolder); }
  // Writes a UTF-16 text file with these lines.
  void PutLines(const base::Text& path, const std::vector<base::Text>& lines) {
    fake.fs.PutFile(path, Utf16File(lines));
  }

  // The trace file's lines; whether one of them is this line, or contains this text.
  std::vector<base::Text> Trace() { return Lines(Common(u"SerTraceFile.txt")); }
  bool TraceHas(const base::Text& line) {
    for (const base::Text& l : Trace())
      if (l == line) return true;
    return false;
  }
  // A log's messages without their kind and stamp ("" for an empty line).
  std::vector<base::Text> Messages(const base::Text& log) {
    std::vector<base::Text> out;
    for (const base::Text& line : Lines(log)) {
      const std::size_t at = line.find(u" : ", line.find(u" : ") + 3);
      out.push_back(at == base::Text::npos ? line : line.substr(at + 3));
    }
    return out;
  }
  std::vector<base::Text> Activity() { return Messages(app.ServiceLogPath); }
  bool TraceMentions(const base::Text& part) {
    for (const base::Text& l : Trace())
      if (l.find(part) != base::Text::npos) return true;
    return false;
  }

  platform::FakePlatform fake;
  frame::AppState app;
};

// With the shared data folder in place.
struct CommonFixture : FrameFixture {
  CommonFixture() { AddCommon(); }
};

// jsmith signed in at 15:02:33 on Monday 18 March 2013, with his backup sets file.
struct UserFixture : CommonFixture {
  UserFixture() {
    app.BacksetFilePath = Common(u"BacksetData.txt");
    app.UserName = u"jsmith";
    fake.clock.now = base::DateTime{2013, 3, 18, 15, 2, 33};
  }
};

}  // namespace testkit
