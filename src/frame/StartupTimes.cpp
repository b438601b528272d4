#include "frame/StartupTimes.h"

#include "base/Guarded.h"
#include "platform/TextFile.h"

namespace frame {

StartupTimes::StartupTimes(AppState& app, std::uint64_t processAgeMs) : app_(app) {
  auto& p = app.platform;
  if (p.system == nullptr || p.clock == nullptr || p.fs == nullptr) return;
  file_ = p.system->Environment(Text(kStartupTimesVariable)).value_or(Text());
  if (!Enabled()) return;
  const std::uint64_t now = p.clock->TickMs();
  origin_ = now > processAgeMs ? now - processAgeMs : 0;
  marks_.reserve(48);
}

void StartupTimes::Mark(base::TextView step) {
  if (!Enabled()) return;
  marks_.emplace_back(app_.platform.clock->TickMs(), Text(step));
}

std::vector<Text> StartupTimes::Lines() const {
  std::vector<Text> lines;
  lines.reserve(marks_.size());
  for (const auto& [at, step] : marks_)
    lines.push_back(base::FromNumber(static_cast<long long>(at - origin_)) + u" " + step);
  return lines;
}

void StartupTimes::Write() {
  if (!Enabled()) return;
  base::IgnoreFailure([&] { platform::TextFile::WriteLines(*app_.platform.fs, file_, Lines()); });
}

void MarkStartup(AppState& app, base::TextView step) {
  if (app.startupTimes != nullptr) app.startupTimes->Mark(step);
}

}  // namespace frame
