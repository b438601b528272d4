#pragma once
// A monitor rooted at C:\QV on the fake platform, with QVCOMMON in place, a fixed
// clock and every message the job store shows collected.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/Utf16.h"
#include "jobstore/DBaction.h"
#include "testkit/FrameFixture.h"

namespace jobstore::test {

using base::Text;

// U+0008 pair and the old "ûû" pair, for building lines in tests.
inline const Text kB = u"\b\b";
inline const Text kU = u"\u00FB\u00FB";

// The worked record of the file description, in the writer's form.
inline const Text kWorkedLine =
    u"12\b\bDocuments\b\b03-25-2013 6:41:00\b\b03-18-2013 15:02:33\b\bMy Corvane/\b\b3\b\b2\b\b1"
    u"\b\b\b\b\b\b\b\b\b\b0\b\b1\b\b0\b\b201303250641\b\bjsmith\b\b1\b\b0\b\b1234567";

using base::Join;

using testkit::U8;
using testkit::Utf16File;

// The worked record with some fields changed ({position from 0, text}), cut to `count`
// fields and joined with `sep`.
inline Text Line(std::initializer_list<std::pair<int, Text>> changes, std::size_t count = 20,
                 const Text& sep = kB) {
  std::vector<Text> f = base::Split(kWorkedLine, kB);
  for (const auto& [i, text] : changes) f[static_cast<std::size_t>(i)] = text;
  f.resize(count);
  return Join(f, sep);
}

// A line written with "|" for each field separator.
inline Text Bars(const Text& fields, const Text& sep = kB) {
  return base::Replace(fields, u"|", sep);
}

// A weekly record of jsmith's in the writer's form, numbered and named as asked.
inline Text Rec(const Text& no, const Text& name = u"Docs", const Text& key = u"201303250641") {
  return Line({{0, no}, {1, name}, {15, key}});
}

// A record with only its number and set name.
inline ScheduleRecord Numbered(const Text& no, const Text& name = u"Saved") {
  ScheduleRecord r;
  r.RecordNo = no;
  r.BackupSetName = name;
  return r;
}

class JobStoreTest : public ::testing::Test, public testkit::UserFixture {
 protected:
  JobStoreTest() {
    app.Store.ShowMessage = [this](const Text& text, int, int) {
      messages.push_back(text);
      return 1;
    };
  }

  Text SchedulePath() const { return app.ScheduleFilePath; }
  void PutSchedule(const std::vector<Text>& lines) { PutLines(SchedulePath(), lines); }
  std::string ScheduleBytes() { return fake.fs.Bytes(SchedulePath()); }
  std::vector<Text> ScheduleLines() { return Lines(SchedulePath()); }
  void SetIni(const Text& section, const Text& key, const Text& value) {
    fake.profile.WriteString(section, key, value, Common(u"qvwin.ini"));
  }

  long Load(const Text& key = Text()) { return DB_ReadSchdata(app, key, app.Jobs, false); }

  std::vector<Text> messages;  // the texts of the boxes shown
};

}  // namespace jobstore::test
