// Arbitrary engine calls: the bytes become the 14 arguments of UpdateMonitor (texts as
// UTF-16 units, numbers as raw bits, NaN and infinities included). Beyond "no crash",
// each call must keep its promises: "?stop" ends the transfer and keeps nothing, a
// negative size keeps nothing and adds one trace line, anything else is kept as it came
// with a time left that is either the one sent, empty, or the one kept before.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "engine/MonitorCallback.h"
#include "frame/AppState.h"
#include "platform/TextFile.h"
#include "platform/fake/FakePlatform.h"

namespace {

using base::Text;

#define Check(condition)                                                               \
  do {                                                                                 \
    if (!(condition)) {                                                                \
      std::fprintf(stderr, "fuzz_monitor_callback: broken at line %d: %s\n", __LINE__, \
                   #condition);                                                        \
      std::abort();                                                                    \
    }                                                                                  \
  } while (false)

class Reader {
 public:
  Reader(const uint8_t* data, size_t size) : data_(data), size_(size) {}
  template <class T>
  T Number() {
    T value{};
    unsigned char bytes[sizeof(T)] = {};
    for (auto& b : bytes) b = Byte();
    std::memcpy(&value, bytes, sizeof(T));
    return value;
  }
  Text String() {
    const size_t length = Byte() % 24;
    Text t;
    for (size_t i = 0; i < length; ++i) t.push_back(static_cast<char16_t>(Byte() | (Byte() << 8)));
    return t;
  }
  uint8_t Byte() { return pos_ < size_ ? data_[pos_++] : 0; }
  bool More() const { return pos_ < size_; }

 private:
  const uint8_t* data_;
  size_t size_;
  size_t pos_ = 0;
};

size_t TraceLines(platform::FakePlatform& fake, const Text& path) {
  return platform::TextFile::ReadLines(fake.fs, path).value_or(std::vector<Text>{}).size();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  platform::FakePlatform fake;
  fake.fs.AddFolders(u"C:\\QV\\QVCOMMON");
  frame::AppState app(fake.Get());
  app.DataRoot = u"C:\\QV";
  const Text trace = u"C:\\QV\\QVCOMMON\\SerTraceFile.txt";
  Reader in(data, size);
  for (int call = 0; call < 8 && in.More(); ++call) {
    platform::UpdateMonitorArgs a;
    a.sFileName = (in.Byte() & 7) == 0 ? Text(u"?StOp") : in.String();
    a.dFileSize = in.Number<double>();
    a.dTotalFilesize = in.Number<double>();
    a.dfileBuff = in.Number<double>();
    a.dTotalBuffer = in.Number<double>();
    a.sTrfRate = in.String();
    a.iFileProg = in.Number<short>();
    a.iTotalProg = in.Number<short>();
    a.StartTime = in.Number<float>();
    a.timeelapsed = in.String();
    a.TimeRemaining = in.String();
    a.engNumber = in.Number<short>();
    a.preCall = in.Number<short>();
    a.sBkStatus = in.Number<int32_t>();

    const engine::TransferUpdate before = app.Transfer;
    const bool waitingBefore = app.UpdateWaiting;
    const size_t linesBefore = TraceLines(fake, trace);
    Check(engine::UpdateMonitor(app, a) == 1);
    Check(app.PaneFlag == u"1");
    const bool refused =
        a.dTotalFilesize < 0 || a.dFileSize < 0 || a.dTotalBuffer < 0 || a.dfileBuff < 0;
    if (engine::IsStopWord(a.sFileName)) {
      Check(app.StopSeen && !app.UpdateWaiting);
      Check(app.Transfer.sFileName == before.sFileName);
    } else if (refused) {
      Check(app.UpdateWaiting == waitingBefore && !app.StopSeen);
      Check(app.Transfer.sFileName == before.sFileName);
      Check(TraceLines(fake, trace) >= linesBefore + 1);  // a CR or LF sent splits it
    } else {
      Check(app.UpdateWaiting && !app.StopSeen);
      Check(app.Transfer.sFileName == a.sFileName && app.Transfer.sTrfRate == a.sTrfRate);
      Check(app.Transfer.sBkStatus == a.sBkStatus && app.Transfer.engNumber == a.engNumber);
      const Text& left = app.Transfer.TimeRemaining;
      Check(left.empty() || left == a.TimeRemaining || left == before.TimeRemaining);
      Check(TraceLines(fake, trace) == linesBefore);
    }
    engine::GetProperTime(app, in.Number<int32_t>());
  }
  return 0;
}
