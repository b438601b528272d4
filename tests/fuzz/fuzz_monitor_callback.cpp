// Any engine calls: the bytes are UpdateMonitor's 14 arguments (NaN and infinities too).
#include "FuzzInput.h"
#include "engine/MonitorCallback.h"

using base::Text;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Monitor fx;
  fx.AddCommon();
  frame::AppState& app = fx.app;
  const auto traceSize = [&] { return fx.fake.fs.Bytes(fx.Common(u"SerTraceFile.txt")).size(); };
  fuzz::Reader in(data, size);
  for (int call = 0; call < 8 && in.More(); ++call) {
    const Text before = app.Transfer.TimeRemaining;
    platform::UpdateMonitorArgs a;
    a.sFileName = (in.Byte() & 7) == 0 ? Text(u"?StOp") : in.String(24);
    a.dFileSize = in.Number<double>();
    a.dTotalFilesize = in.Number<double>();
    a.dfileBuff = in.Number<double>();
    a.dTotalBuffer = in.Number<double>();
    a.sTrfRate = in.String(24);
    a.iFileProg = in.Number<std::int16_t>();
    a.iTotalProg = in.Number<std::int16_t>();
    a.StartTime = in.Number<float>();
    a.timeelapsed = in.String(24);
    a.TimeRemaining = in.String(24);
    a.engNumber = in.Number<std::int16_t>();
    a.preCall = in.Number<std::int16_t>();
    a.sBkStatus = in.Number<std::int32_t>();

    const std::size_t traceBefore = traceSize();
    FUZZ_CHECK(engine::UpdateMonitor(app, a) == 1);
    const bool refused =
        a.dTotalFilesize < 0 || a.dFileSize < 0 || a.dTotalBuffer < 0 || a.dfileBuff < 0;
    if (engine::IsStopWord(a.sFileName)) {
      FUZZ_CHECK(app.StopSeen && !app.UpdateWaiting);
    } else if (refused) {
      FUZZ_CHECK(traceSize() > traceBefore);
    } else {
      FUZZ_CHECK(app.UpdateWaiting && app.Transfer.sFileName == a.sFileName);
      const Text& left = app.Transfer.TimeRemaining;
      FUZZ_CHECK(left.empty() || left == a.TimeRemaining || left == before);
    }
    engine::GetProperTime(app, in.Number<std::int32_t>());
  }
  return 0;
}
