// Any profile file (any of its encodings) through reads, repeated writes and deletes.

#include "FuzzInput.h"
#include "platform/portable/PortableProfile.h"

namespace {

using base::Text;

// Names for the reads come from the input too, so they hit what the file holds.
Text NameFrom(const std::string& bytes, std::size_t at) {
  Text name;
  for (std::size_t i = at; i < bytes.size() && i < at + 6; ++i) {
    unsigned char c = static_cast<unsigned char>(bytes[i]);
    if (c == '\r' || c == '\n' || c == 0) break;
    name.push_back(c);
  }
  return name;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string bytes(reinterpret_cast<const char*>(data), size);
  platform::FakeFileSystem fs;
  const Text file = u"C:\\QVCOMMON\\qvwin.ini";
  fs.AddFolders(u"C:\\QVCOMMON");
  fs.PutFile(file, bytes);
  platform::PortableProfile profile(fs);

  for (std::size_t buffer : {std::size_t{0}, std::size_t{1}, std::size_t{3}, std::size_t{1024}}) {
    Text value =
        profile.GetString(NameFrom(bytes, 1), NameFrom(bytes, size / 2), u"\"d\" ", buffer, file);
    FUZZ_CHECK(buffer == 0 ? value.empty() : value.size() <= buffer - 1);
  }

  // The first write tidies the file (which can change how it reads, on the platform too).
  auto write = [&] {
    return profile.WriteString(u"Corvane", Text(u"UserName"), Text(u"alice"), file);
  };
  FUZZ_CHECK(write());
  FUZZ_CHECK(write());
  std::string tidy = fs.Bytes(file);
  FUZZ_CHECK(write());
  FUZZ_CHECK(fs.Bytes(file) == tidy);
  FUZZ_CHECK(profile.GetString(u"corvane", u"username", u"", 1024, file) == u"alice");

  profile.WriteString(NameFrom(bytes, 0), NameFrom(bytes, 3), std::nullopt, file);
  profile.WriteString(NameFrom(bytes, 2), std::nullopt, std::nullopt, file);
  FUZZ_CHECK(profile.WriteString(u"Corvane", std::nullopt, std::nullopt, file));
  return 0;
}
