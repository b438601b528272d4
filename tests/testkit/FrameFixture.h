#pragma once
// A monitor's process state on a fake platform, rooted at C:\QV.
#include <string>

#include "base/Utf16.h"
#include "frame/AppState.h"
#include "platform/TextFile.h"
#include "platform/fake/FakePlatform.h"

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
  base::Text Common(const base::Text& name) { return u"C:\\QV\\QVCOMMON\\" + name; }

  platform::FakePlatform fake;
  frame::AppState app;
};

// Readable failure output for UTF-16 texts.
inline std::string U8(const base::Text& t) { return base::ToUtf8(t); }

}  // namespace testkit
