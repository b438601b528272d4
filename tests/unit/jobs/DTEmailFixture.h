#pragma once
// The schedule editor on the fake platform: a monitor rooted at C:\QV with a fixed
// clock (Monday 18 March 2013, 15:02:33), schedule lines built field by field, and
// the editor's messages collected.
#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "frame/Logs.h"
#include "frame/Settings.h"
#include "jobs/ScheduleEditorModel.h"
#include "jobstore/DBaction.h"
#include "kit/MesgBox.h"
#include "testkit/FrameFixture.h"

namespace jobs::test {

using base::Text;

inline const Text kB = u"\b\b";

// One record in the writer's form. `key` is the SortKey, `days` the Days field.
struct Row {
  Text no, name = u"Docs", nextRun = u"03-25-2013 6:41:00", freq = u"3", key = u"201303250641",
           days = u"1234567", mailMode = u"0", mail = {}, reserved12 = {};

  Text Line() const {
    return base::Replace(no + u"|" + name + u"|" + nextRun + u"|03-18-2013 15:02:33|My Corvane/|" +
                             freq + u"|2|1|" + mail + u"|||" + reserved12 + u"|0|1|" + mailMode +
                             u"|" + key + u"|jsmith|1|0|" + days,
                         u"|", kB);
  }
};

class EditorTest : public ::testing::Test, public testkit::UserFixture {
 protected:
  EditorTest() {
    ed.host.message = [this](const Text& text, int, int) {
      shown.push_back(text);
      return kit::kResultYes;
    };
    ed.host.focusMail = [this] { ++mailFocus; };
    ed.host.unloadScreen = [this] { ++unloads; };
  }

  void PutSchedule(const std::vector<Text>& lines) { PutLines(app.ScheduleFilePath, lines); }
  std::vector<Text> ScheduleLines() { return Lines(app.ScheduleFilePath); }

  // Opens the editor on a record as the job list does.
  void Open(const Text& recordNo) {
    LoadTempJobs(app, ed);
    jobstore::DB_ReadSchdata(app, Text(), app.Jobs, false);
    ASSERT_TRUE(ShowRecordChoices(app, ed, recordNo, c));
  }

  // The record of a number as the file now holds it ("" fields when absent).
  jobstore::ScheduleRecord InFile(const Text& no) {
    std::vector<jobstore::ScheduleRecord> rows;
    jobstore::DB_ReadSchdata(app, Text(), rows, false);
    for (auto& r : rows)
      if (r.RecordNo == no) return r;
    return {};
  }

  ScheduleEditor ed;
  EditorChoices c;
  std::vector<Text> shown;  // the texts of the boxes shown
  int mailFocus = 0;
  int unloads = 0;
};

using testkit::U8;

}  // namespace jobs::test
