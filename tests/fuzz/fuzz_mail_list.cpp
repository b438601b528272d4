// Any Mailid.txt and address through the load of the address list and the save of one.

#include "FuzzInput.h"
#include "jobstore/BackupSets.h"

using base::Text;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::size_t length = data[0] % 64;
  Text address;
  std::size_t at = 1;
  for (; address.size() < length && at + 1 < size; at += 2)
    address.push_back(static_cast<char16_t>(data[at] | (data[at + 1] << 8)));
  const std::string bytes(reinterpret_cast<const char*>(data) + at, size - at);

  fuzz::Monitor fx;
  fx.AddCommon();
  fx.fake.fs.PutFile(fx.app.MailFilePath, bytes);

  std::vector<Text> shown;
  jobstore::Sch_LoadMailidList(fx.app, &shown);
  const std::vector<Text> loaded = fx.app.Store.MailIdList;
  jobstore::Sch_LoadMailidList(fx.app, nullptr);
  FUZZ_CHECK(fx.app.Store.MailIdList == loaded);
  jobstore::Sch_SaveMailid(fx.app, address);
  FUZZ_CHECK(fx.app.Store.MailIdList.size() <= std::max(loaded.size(), jobstore::kMaxMailIds));
  FUZZ_CHECK(fx.fake.fs.Bytes(fx.app.MailFilePath) == bytes);
  return 0;
}
