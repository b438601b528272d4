// Arbitrary bytes as Mailid.txt, and an arbitrary address, through the load of the
// address list (for a screen with a list and for one without), the save of an address
// and a write of the list read back. Beyond "no crash, no hang": loading never changes
// the file, the list holds each address once, the saved address is in it afterwards,
// and every address written comes back whole and in its place.
#include <string>
#include <vector>

#include "FuzzInput.h"
#include "jobstore/BackupSets.h"
#include "testkit/FrameFixture.h"

namespace {

using base::Text;

bool HasLineBreak(const Text& t) { return t.find_first_of(u"\r\n") != Text::npos; }

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::size_t length = data[0] % 64;
  Text address;
  std::size_t at = 1;
  for (; address.size() < length && at + 1 < size; at += 2)
    address.push_back(static_cast<char16_t>(data[at] | (data[at + 1] << 8)));
  const std::string bytes(reinterpret_cast<const char*>(data) + at, size - at);

  testkit::FrameFixture fx;
  fx.fake.fs.AddFolders(u"C:\\QV\\QVCOMMON");
  fx.fake.fs.PutFile(fx.app.MailFilePath, bytes);

  std::vector<Text> shown;
  jobstore::Sch_LoadMailidList(fx.app, &shown);
  const std::vector<Text> loaded = fx.app.Store.MailIdList;
  for (std::size_t i = 0; i < loaded.size(); ++i)
    for (std::size_t j = 0; j < i; ++j) FUZZ_CHECK(!base::EqualsNoCase(loaded[i], loaded[j]));
  std::vector<Text> expectedShown;
  for (const Text& a : loaded)
    if (!base::IsBlank(a)) expectedShown.push_back(a);
  FUZZ_CHECK(shown == expectedShown);

  // The editor has no list: the load ends early but the collection is the same.
  jobstore::Sch_LoadMailidList(fx.app, nullptr);
  FUZZ_CHECK(fx.app.Store.MailIdList == loaded);
  FUZZ_CHECK(fx.fake.fs.Bytes(fx.app.MailFilePath) == bytes);

  jobstore::Sch_SaveMailid(fx.app, address);
  const std::vector<Text>& saved = fx.app.Store.MailIdList;
  FUZZ_CHECK(saved.size() <= std::max(loaded.size(), jobstore::kMaxMailIds));
  if (!address.empty()) {
    const Text wanted = base::ToLower(base::Trim(address));
    bool found = false;
    for (const Text& a : saved)
      found = found || a == address || base::ToLower(base::Trim(a)) == wanted;
    FUZZ_CHECK(found);
  }
  // The save joins the full path to the program folder, so the file keeps its bytes.
  FUZZ_CHECK(fx.fake.fs.Bytes(fx.app.MailFilePath) == bytes);

  // Written under a name relative to the program folder, the list lands in Mailid.txt
  // (oldest first) and reads back whole: newest last, a later case-twin dropped.
  bool plain = true;
  for (const Text& a : saved) plain = plain && !HasLineBreak(a);
  if (plain) {
    jobstore::DB_WriteBackdata(fx.app, saved, u"QVCOMMON\\Mailid.txt");
    std::vector<Text> expected;
    for (auto it = saved.rbegin(); it != saved.rend(); ++it) {
      bool twin = false;
      for (const Text& e : expected) twin = twin || base::EqualsNoCase(e, *it);
      if (!twin) expected.push_back(*it);
    }
    std::vector<Text> again;
    jobstore::DB_ReadMaildata(fx.app, again, fx.app.MailFilePath);
    FUZZ_CHECK(again == expected);
  }
  return 0;
}
