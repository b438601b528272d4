// Any file versions (or none) and program folder name through the About list and title.

#include "FuzzInput.h"
#include "account/VersionInventory.h"

namespace {

using base::Text;

Text VersionText(const platform::FileVersion& v) {
  return base::FromNumber(v[0]) + u"." + base::FromNumber(v[1]) + u"." + base::FromNumber(v[2]) +
         u"." + base::FromNumber(v[3]);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Reader in(data, size);
  const Text folder = in.String(32);

  fuzz::Monitor fx;
  fx.fake.system.programFolder = folder;
  // The files of the list in its order; the last two have no column and never show.
  const Text files[] = {u"CorvaneForWindows_955.exe",
                        u"QVWinSrv.dll",
                        u"QVBackground_955.exe",
                        u"QVMonitor.exe",
                        u"QVPatch.dll",
                        u"QVWINHelp.chm"};
  std::vector<Text> expected;
  for (std::size_t i = 0; i < 6; ++i) {
    const std::uint8_t present = in.Byte();
    if (!(present & 1)) continue;
    platform::FileVersion v{in.Word(), in.Word(), in.Word(), in.Word()};
    fx.fake.versions.versions[base::ToLower(folder + u"\\" + files[i])] = v;
    if (i < 4) expected.push_back(VersionText(v));
  }

  const Text list = account::BuildVersionList(fx.app, folder);
  std::vector<Text> lines = base::Split(list, u"\r\n");
  FUZZ_CHECK(lines.size() == expected.size() + 2 && lines[0].empty());
  for (std::size_t i = 2; i < lines.size(); ++i)
    FUZZ_CHECK(base::EndsWith(lines[i], expected[i - 2]));

  account::AboutTitleLine(fx.app);
  return 0;
}
