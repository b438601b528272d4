// Any activity log through the tail reader (any chunk size and count) and the line parse.

#include "FuzzInput.h"
#include "monitor/LogView.h"

using base::Text;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  const std::size_t chunk = 1 + data[0] % 64;
  const std::size_t count = data[1] % 40;
  const std::string bytes(reinterpret_cast<const char*>(data) + 2, size - 2);

  platform::FakeFileSystem fs;
  fs.AddFolders(u"C:\\QV\\QVCOMMON");
  const Text path = u"C:\\QV\\QVCOMMON\\QVWServiceLog.txt";
  fs.PutFile(path, bytes);

  std::size_t pauses = 0;
  const auto tail = monitor::ReadNewestLines(
      fs, path, count, [&] { ++pauses; }, chunk);
  const auto whole = monitor::ReadNewestLinesWhole(fs, path, count);
  FUZZ_CHECK(tail.has_value() && whole.has_value());
  FUZZ_CHECK(*tail == *whole);
  FUZZ_CHECK(tail->size() <= count);
  for (const Text& line : *tail) {
    FUZZ_CHECK(!base::IsBlank(line) && line == base::Trim(line));
    FUZZ_CHECK(line.find(u'\0') == Text::npos);
    const auto row = monitor::ParseLogLine(line);
    if (line.find(u':') == Text::npos) FUZZ_CHECK(!row);
  }
  return 0;
}
