#include "frame/KeepAnswering.h"

#include "platform/Clock.h"
#include "platform/UiHost.h"

namespace frame {

void KeepAnswering(AppState& app) {
  platform::Platform& p = app.platform;
  if (p.ui == nullptr || p.clock == nullptr) return;
  // One thread: the time of the last answer is the process's.
  static std::uint64_t last = 0;
  const std::uint64_t now = p.clock->TickMs();
  if (now - last < 100) return;
  last = now;
  p.ui->AnswerOtherPrograms();
}

}  // namespace frame
