// Any scheduleData.txt through load, update, delete, new number and the state word.
#include "FuzzInput.h"
#include "jobstore/DBaction.h"
#include "jobstore/NextRun.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::uint8_t flags = data[0];
  fuzz::Monitor fx;
  fx.AddCommon();
  frame::AppState& app = fx.app;
  app.UserName = u"u";
  fx.fake.clock.now = base::DateTime{2013, 3, 18, 10, 15, 20};
  if (flags & 1) fx.fake.locale.timeSeparator = u".";
  if (flags & 2) fx.fake.locale.shortDateFormat = u"dd/MM/yyyy";
  if (flags & 4)
    fx.fake.profile.WriteString(u"DateFormat", base::Text(u"DateFormat"), base::Text(u"D"),
                                fx.Common(u"qvwin.ini"));
  if (flags & 8) {
    app.Store.BackupNowMode = true;
    app.Store.ChosenSetName = u"A";
    app.Store.LstBackupSet.Rows = {{u"A", u"", u"", (flags & 16) ? u"1" : u"-1"}};
    app.Store.LstBackupSet.SelectedRow = 1;
  }
  fx.fake.fs.PutFile(app.ScheduleFilePath,
                     std::string(reinterpret_cast<const char*>(data) + 1, size - 1));

  const long next = jobstore::DB_ReadSchdata(app, {}, app.Jobs, (flags & 8) != 0);
  FUZZ_CHECK(next >= 0 && (app.Jobs.empty() || static_cast<size_t>(next) < app.Jobs.size()));
  jobstore::Sch_SortBuildDate(app, app.Jobs.empty() ? base::Text() : app.Jobs[0].NextRun);
  app.Store.BackupNowMode = false;
  FUZZ_CHECK(jobstore::DB_GetNewSchRecordNo(app, app.RecordCount) >= 1);

  if (!app.Jobs.empty()) {
    jobstore::ScheduleRecord r = app.Jobs[(flags >> 5) % app.Jobs.size()];
    static_cast<void>(jobstore::DB_WriteSchdata(app, r, (flags & 16) != 0));
    std::vector<jobstore::ScheduleRecord> again;
    jobstore::DB_ReadSchdata(app, {}, again, false);
    static_cast<void>(
        jobstore::DB_DeleteRecord(app, app.Jobs.back().RecordNo, app.ScheduleFilePath));
  }

  const base::Utf16Content was = base::DecodeUtf16Le(fx.fake.fs.Bytes(app.ScheduleFilePath));
  static_cast<void>(jobstore::SetStateWord(app, app.ScheduleFilePath, u"2"));
  const base::Utf16Content now = base::DecodeUtf16Le(fx.fake.fs.Bytes(app.ScheduleFilePath));
  FUZZ_CHECK(now.units == u"2" + base::Mid(was.units, 2) && now.oddByte == was.oddByte);
  return 0;
}
