#include "notify/Requests.h"

#include "base/Utf16.h"
#include "platform/TextFile.h"

namespace notify {

namespace {

Text LineOr(const std::vector<Text>& lines, std::size_t index) {
  return index < lines.size() ? lines[index] : Text();
}

}  // namespace

std::optional<JobRequest> ReadJobRequest(frame::AppState& app) {
  auto& fs = *app.platform.fs;
  const Text path = app.CommonFile(kJobRequestFile);
  if (!fs.FileExists(path)) return std::nullopt;
  JobRequest request;
  const auto text = platform::TextFile::ReadText(fs, path);
  if (!text) {
    request.kind = JobRequest::Kind::Unusable;
  } else if (text->empty()) {
    request.kind = JobRequest::Kind::Empty;
  } else {
    const std::vector<Text> lines = platform::TextFile::SplitLines(*text);
    if (lines.size() < 3) {
      request.kind = JobRequest::Kind::Unusable;
    } else {
      request.jobName = lines[0];
      request.accountName = lines[2];
    }
  }
  return request;
}

void KeepNames(frame::AppState& app, KeptNames& kept, const JobRequest& request) {
  if (request.kind != JobRequest::Kind::Names) return;
  app.CurrentLogName = request.jobName;
  kept.accountName = request.accountName;
}

std::optional<DialupRequest> ReadDialupRequest(frame::AppState& app) {
  auto& fs = *app.platform.fs;
  const Text path = app.CommonFile(kDialupRequestFile);
  if (!fs.FileExists(path)) return std::nullopt;
  DialupRequest request;
  const auto bytes = fs.ReadAll(path);
  if (!bytes) return std::nullopt;
  if (bytes->empty()) return request;
  std::vector<Text> lines = platform::TextFile::SplitLines(base::DecodeCp1252(*bytes));
  request.lines = lines.size();
  request.jobName = LineOr(lines, 0);
  request.secondLine = LineOr(lines, 1);
  return request;
}

void KeepNames(frame::AppState& app, KeptNames& kept, const DialupRequest& request) {
  app.CurrentLogName = request.jobName;
  app.CurrentSessionFile = request.secondLine;
  if (request.lines == 0) kept.accountName.clear();
}

Text LabelText(TextView name) { return base::Replace(name, u"&", u"&&"); }

bool IsDefaultSet(TextView jobName) { return base::ToLower(jobName) == u"default backupset"; }

ResultPictures ResultPicturesFor(TextView deskNotifyIcon) {
  const Text icon = base::ToUpper(deskNotifyIcon);
  return {icon == u"RED", icon == u"GREEN"};
}

}  // namespace notify
