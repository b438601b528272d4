// Any log of the feedback report, read as Unicode and as plain text.
#include "FuzzInput.h"
#include "account/FeedbackReport.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Monitor fx;
  fx.AddCommon();
  auto& fake = fx.fake;
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  auto http = fake.network.CreateHttpObject({});
  for (bool plain : {false, true}) {
    fake.fs.WriteAll(u"C:\\QV\\QVCOMMON\\TraceLdb.txt", bytes);
    const base::Text tail =
        account::BundleLogFile(fx.app, *http, u"TraceLdb.txt", false, plain, [] {});
    FUZZ_CHECK(!fake.fs.FileExists(u"C:\\QV\\QVCOMMON\\TmpLogAttach.txt"));
    // The limit counts bytes; the walk stops on the line that reaches it.
    FUZZ_CHECK(tail.size() <= account::kLogTailLimit + size + 2);
    FUZZ_CHECK(tail.empty() || tail.back() == u'\n');
  }
  return 0;
}
