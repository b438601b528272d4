// Arbitrary engine calls: the bytes become the 14 arguments of UpdateMonitor (texts as
// UTF-16 units, numbers as raw bits, NaN and infinities included). Beyond "no crash",
// each call must keep its promises: "?stop" ends the transfer and keeps nothing, a
// negative size keeps nothing and adds one trace line, anything else is kept as it came
// with a time left that is either the one sent, empty, or the one kept before.
#include <cstddef>
#include <cstdint>

#include "FuzzInput.h"
#include "engine/MonitorCallback.h"

using base::Text;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Monitor fx;
  fx.AddCommon();
  frame::AppState& app = fx.app;
  // A trace line is only ever added: the size of the file tells whether one was.
  const auto traceSize = [&] { return fx.fake.fs.Bytes(fx.Common(u"SerTraceFile.txt")).size(); };
  fuzz::Reader in(data, size);
  for (int call = 0; call < 8 && in.More(); ++call) {
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

    const engine::TransferUpdate before = app.Transfer;
    const bool waitingBefore = app.UpdateWaiting;
    const std::size_t traceBefore = traceSize();
    FUZZ_CHECK(engine::UpdateMonitor(app, a) == 1);
    FUZZ_CHECK(app.PaneFlag == u"1");
    const bool refused =
        a.dTotalFilesize < 0 || a.dFileSize < 0 || a.dTotalBuffer < 0 || a.dfileBuff < 0;
    if (engine::IsStopWord(a.sFileName)) {
      FUZZ_CHECK(app.StopSeen && !app.UpdateWaiting);
      FUZZ_CHECK(app.Transfer.sFileName == before.sFileName);
    } else if (refused) {
      FUZZ_CHECK(app.UpdateWaiting == waitingBefore && !app.StopSeen);
      FUZZ_CHECK(app.Transfer.sFileName == before.sFileName);
      FUZZ_CHECK(traceSize() > traceBefore);
    } else {
      FUZZ_CHECK(app.UpdateWaiting && !app.StopSeen);
      FUZZ_CHECK(app.Transfer.sFileName == a.sFileName && app.Transfer.sTrfRate == a.sTrfRate);
      FUZZ_CHECK(app.Transfer.sBkStatus == a.sBkStatus && app.Transfer.engNumber == a.engNumber);
      const Text& left = app.Transfer.TimeRemaining;
      FUZZ_CHECK(left.empty() || left == a.TimeRemaining || left == before.TimeRemaining);
      FUZZ_CHECK(traceSize() == traceBefore);
    }
    engine::GetProperTime(app, in.Number<std::int32_t>());
  }
  return 0;
}
