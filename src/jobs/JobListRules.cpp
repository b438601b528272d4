#include "jobs/JobListRules.h"

#include <stdexcept>

#include "base/Guarded.h"
#include "frame/Logs.h"
#include "jobstore/DBaction.h"
#include "jobstore/NextRun.h"
#include "jobstore/ScheduleReader.h"

namespace jobs {

namespace {

constexpr char16_t kForm[] = u"of Form SchedulerFrm";

Text Where(const Text& procedure) { return u"in procedure " + procedure + u" " + kForm; }

// The row of record `r`, as far as it goes; a NextRun that is no date ends it after
// the name.
JobRow BuildRow(const jobstore::ScheduleRecord& r, const jobstore::LocaleFormats& locale) {
  if (r.NextRun.empty()) return JobRow(r.BackupSetName, r.NextRun, r.RecordNo, r.SortKey);
  JobRow::Filled f;
  f.name = r.BackupSetName;
  f.nextRun = r.NextRun;
  f.nextTransfer = NextTransferText(r.NextRun, locale);
  const Text frequency = base::Trim(r.FrequencyIndex);
  if (!frequency.empty()) {
    long long index = 0;
    if (!base::ParseLong(frequency, index)) throw base::Failure(13, "Type mismatch");
    f.frequency = jobstore::GetFreNameFromIndex(static_cast<long>(index));
  }
  f.destination = r.Destination;
  f.dataSort = r.SortKey;
  f.number = r.RecordNo;
  f.userName = r.UserName;
  f.days = r.Days;
  return JobRow(f);
}

}  // namespace

JobRow::JobRow(const Text& name, const Text& nextRun, const Text& recordNo, const Text& sortKey) {
  Append(kName, name);
  Append(kNextTransfer, {});
  Append(kFrequency, {});
  Append(kDestination, {});
  Append(kDataSort, sortKey);
  Append(kNumber, recordNo);
  Append(kUserName, {});
  Append(kDays, {});
  Append(kNextRun, nextRun);
}

JobRow::JobRow(const Filled& f) : filled_(true) {
  text_.reserve(f.name.size() + f.nextTransfer.size() + f.frequency.size() + f.destination.size() +
                f.dataSort.size() + f.number.size() + f.userName.size() + f.days.size() +
                f.nextRun.size());
  Append(kName, f.name);
  Append(kNextTransfer, f.nextTransfer);
  Append(kFrequency, f.frequency);
  Append(kDestination, f.destination);
  Append(kDataSort, f.dataSort);
  Append(kNumber, f.number);
  Append(kUserName, f.userName);
  Append(kDays, f.days);
  Append(kNextRun, f.nextRun);
}

void JobRow::Append(PieceIndex i, const Text& piece) {
  text_ += piece;
  ends_[i] = static_cast<std::uint32_t>(text_.size());
}

Text JobRow::Piece(PieceIndex i) const {
  const std::uint32_t begin = i == kName ? 0 : ends_[i - 1];
  return text_.substr(begin, ends_[i] - begin);
}

Text JobRow::Cell(int column) const {
  if (column == kColBackupset) return Piece(kName);
  if (!filled_) return Text();
  switch (column) {
    case kColNextTransfer: return Piece(kNextTransfer);
    case kColFrequency: return Piece(kFrequency);
    case kColStatus:
      return status_ == JobStatus::InProgress ? Text(kStatusInProgress)
             : status_ == JobStatus::Stopping ? Text(kStatusStopping)
                                              : Text();
    case kColDestination: return Piece(kDestination);
    case kColDataSort: return Piece(kDataSort);
    case kColNo: return Piece(kNumber);
    case kColUserName: return Piece(kUserName);
    case kColDays: {
      // The record's digits, shown as the names of the days; a field of blanks as it is.
      const Text raw = Piece(kDays);
      const Text days = base::Trim(raw);
      return days.empty() ? raw : jobstore::DayNamesFromDays(days);
    }
    default: return Text();
  }
}

std::vector<Text> JobRow::Cells() const {
  std::vector<Text> cells;
  const int n = filled_ ? kJobColumnCount : 1;
  cells.reserve(static_cast<size_t>(n));
  for (int c = 1; c <= n; ++c) cells.push_back(Cell(c));
  return cells;
}

long JobList::IndexOfRecord(const Text& recordNo) const {
  const auto& jobs = Jobs();
  for (size_t i = 0; i < jobs.size(); ++i)
    if (jobs[i].RecordNo() == recordNo) return static_cast<long>(i) + 1;
  return -1;
}

void LoadJobs(frame::AppState& app, JobList& list) {
  app.Store.BackupNowMode = false;
  app.Store.ImmediateFound = false;
  // What an earlier load left goes first: a large schedule is held once at most.
  app.Jobs.clear();
  app.Jobs.shrink_to_fit();
  list.loaded.clear();
  list.loaded.shrink_to_fit();
  list.loadedFresh = true;

  const jobstore::LocaleFormats locale = jobstore::LocaleOf(app);
  Text smallestKey = jobstore::kSearchStartKey;
  long smallestIndex = 0;
  jobstore::ScheduleReader reader(app);
  jobstore::ScheduleRecord r;
  while (reader.Next(r)) {
    if (r.SortKey < smallestKey) {
      smallestKey = r.SortKey;
      smallestIndex = static_cast<long>(list.loaded.size());
    }
    // A NextRun that is no date ends its row after the name; the next row is filled.
    JobRow row(r.BackupSetName, r.NextRun, r.RecordNo, r.SortKey);
    base::Guarded([&] { row = BuildRow(r, locale); },
                  frame::TraceFailure(app, u"Error Reason :", Where(u"FillListView")));
    list.loaded.push_back(std::move(row));
  }
  list.loaded.shrink_to_fit();
  app.RecordCount = reader.Count();
  list.NextJobIndex = smallestIndex;
}

Text NextTransferText(const Text& nextRun, const jobstore::LocaleFormats& locale) {
  const bool dayFirst =
      !locale.shortDateFormat.empty() && base::ToUpper(locale.shortDateFormat.substr(0, 1)) == u"D";
  const Text text =
      dayFirst ? jobstore::ReformatDate(nextRun, jobstore::kFileDatePattern, locale) : nextRun;
  const auto date = jobstore::ParseSystemDate(text, locale);
  if (!date) throw base::Failure(13, "Type mismatch");
  // The hidden date control shows the date alone, in the system's short form.
  base::DateTime day = *date;
  day.hour = day.minute = day.second = 0;
  return jobstore::FormatDate(day, locale.shortDateFormat, locale);
}

void FillListView(frame::AppState& app, JobList& list) {
  // The screen is told also when the fill stops half way, so that it shows what was
  // filled.
  struct TellAtEnd {
    frame::AppState& app;
    const JobList& list;
    ~TellAtEnd() {
      base::Guarded([&] { list.Changed(); },
                    frame::TraceFailure(app, u"Error Reason :", Where(u"FillListView")));
    }
  } tell{app, list};

  ++list.fills;
  if (list.loadedFresh) {
    list.rows.swap(list.loaded);
    list.loaded.clear();
    list.loaded.shrink_to_fit();
    list.loadedFresh = false;
  }
  list.markedRow = 0;
  list.lblMsgProgres.clear();
  for (JobRow& row : list.rows) row.SetStatus(JobStatus::None);
  // The state word goes to the next job's row, and only when that row is filled.
  if (list.NextJobIndex >= 0 && list.NextJobIndex < list.Count()) {
    JobRow& row = list.rows[static_cast<size_t>(list.NextJobIndex)];
    if (row.HasCells()) {
      const Text state = jobstore::Readfirstline(app, app.ScheduleFilePath);
      if (state == u"1") {
        row.SetStatus(JobStatus::InProgress);
        list.lblMsgProgres = u"Scheduled backup (username : " + base::Trim(row.Cell(kColUserName)) +
                             u") for the Backup set : '" + row.Name() + u"' is in progress.";
      } else if (state == u"2") {
        row.SetStatus(JobStatus::Stopping);
      }
    }
  }
  if (list.HasRows() && list.SelectedRow > 0) {
    // A row deleted elsewhere (or the bottom row just deleted here) leaves SelectedRow
    // beyond the last row: the mark fails, the failure goes to the trace and the list
    // stands without a selection. The action that asked for the fill goes on.
    base::Guarded(
        [&] {
          if (list.SelectedRow > list.Count()) throw base::Failure(380, "Invalid property value");
          list.markedRow = list.SelectedRow;
        },
        frame::TraceFailure(app, u"Error Reason :", Where(u"FillListView")));
  } else if (list.HasRows()) {
    list.markedRow = 1;
    list.SelectedRow = 1;
  }
  CheckForRecords(app, list);
}

void SetButtons(JobList& list, bool enabled) {
  if (list.buttonsEnabled == enabled) return;
  list.buttonsEnabled = enabled;
  list.Changed();
}

void CheckForRecords(frame::AppState& app, JobList& list) {
  base::Guarded(
      [&] {
        if (!list.HasRows()) SetButtons(list, false);
      },
      frame::TraceFailure(app, u"Error in CheckForRecords method Reason : "));
}

void RefreshSteps(frame::AppState& app, JobList& list, bool disableWhenEmpty) {
  LoadJobs(app, list);
  FillListView(app, list);
  CheckForRecords(app, list);
  if (disableWhenEmpty && !list.HasRows()) SetButtons(list, false);
}

void ActivateJobList(frame::AppState& app, JobList& list) {
  LoadJobs(app, list);
  FillListView(app, list);
  if (app.RecordCount != 0) SetButtons(list, true);
  if (!list.HasRows()) SetButtons(list, false);
}

void RefreshListView(frame::AppState& app, JobList& list) {
  base::Guarded([&] { RefreshSteps(app, list, true); },
                frame::TraceFailure(app, u"Error Reason :", Where(u"RefreshListView")));
}

bool GetListNoFromRecNo(frame::AppState& app, JobList& list, const Text& recordNo) {
  bool found = false;
  base::Guarded(
      [&] {
        for (long row = 1; row <= list.Count(); ++row) {
          if (list.Row(row)->Number() == recordNo) {
            list.SelectedRow = row;
            found = true;
            return;
          }
        }
      },
      frame::TraceFailure(app, u"Error in GetListNoFromRecNo method Reason : "));
  return found;
}

void ClickRow(frame::AppState& app, JobList& list, long row1) {
  base::Guarded(
      [&] {
        list.SelectedRow = row1;
        list.markedRow = list.Row(row1) != nullptr ? row1 : 0;
        app.Store.BackupNowMode = false;
        if (list.HasRows() && list.SelectedRow >= 1) SetButtons(list, true);
        list.Changed();
      },
      frame::TraceFailure(app, u"Error in click on scheduler list Reason : "));
}

}  // namespace jobs
