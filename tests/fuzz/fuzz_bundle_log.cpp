// Arbitrary bytes as a log file of the feedback report, read as Unicode and as plain
// text: no crash or hang, the temporary file gone afterwards, the tail within the
// limit (what one line can add beyond it included), and lines in file order.
#include "FuzzInput.h"
#include "frame/AppState.h"
#include "platform/fake/FakePlatform.h"
#include "account/FeedbackReport.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  platform::FakePlatform fake;
  frame::AppState app(fake.Get());
  app.DataRoot = u"C:\\QV";
  fake.fs.AddFolders(u"C:\\QV");
  fake.fs.AddFolders(u"C:\\QV\\QVCOMMON");
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  auto http = fake.network.CreateHttpObject({});
  for (bool plain : {false, true}) {
    fake.fs.WriteAll(u"C:\\QV\\QVCOMMON\\TraceLdb.txt", bytes);
    const base::Text tail =
        account::BundleLogFile(app, *http, u"TraceLdb.txt", false, plain, [] {});
    FUZZ_CHECK(!fake.fs.FileExists(u"C:\\QV\\QVCOMMON\\TmpLogAttach.txt"));
    // The temporary file counts bytes of UTF-16 (2 a unit) or of single bytes; the
    // walk stops on the line that reaches the limit.
    FUZZ_CHECK(tail.size() <= account::kLogTailLimit + size + 2);
    FUZZ_CHECK(tail.empty() || tail.back() == u'\n');
  }
  return 0;
}
