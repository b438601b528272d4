// The real monitor on a full disk, beside the simulated engine: every action that writes
// shows its failure or goes back to what is stored, no file changes by a byte, and the
// monitor keeps answering; with space again the same actions go through.
// Run only from full-disk-e2e.sh, which mounts the small disk and links it in as the
// program folder's QVCOMMON: it is its own program, outside the discovered tests.
#include "RefusedWrites.h"

namespace e2e {
namespace {

// Writes `path` until the disk refuses more; true when it was refused.
bool FillDisk(const std::filesystem::path& path) {
  platform::win32::UniqueHandle file(CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr,
                                                 CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file) return false;
  const HANDLE h = file.Get();
  std::string block(4096, 'x');
  DWORD put = 0;
  bool refused = false;
  for (int i = 0; i < 4096 && !refused; ++i)
    refused = !WriteFile(h, block.data(), static_cast<DWORD>(block.size()), &put, nullptr) ||
              put < block.size();
  // The last few bytes, one by one.
  for (int i = 0; i < 4096 && refused; ++i)
    if (!WriteFile(h, block.data(), 1, &put, nullptr) || put == 0) break;
  return refused;
}

class FullDiskTest : public RefusedWritesTest {
 protected:
  void Refuse() override {
    ASSERT_TRUE(FillDisk(Folder().CommonFile(L"filler")))
        << "the disk took 16 MB: not the small one";
  }
  void Allow() override { ASSERT_TRUE(std::filesystem::remove(Folder().CommonFile(L"filler"))); }
  void PutWord(wchar_t word) override {
    ASSERT_TRUE(PutWordInPlace(Folder().CommonFile(L"scheduleData.txt"), word));
  }
};

TEST_F(FullDiskTest, EveryWriteIsRefusedHonestlyAndGoesThroughWithSpaceAgain) {
  ASSERT_NO_FATAL_FAILURE(StartOnTheMount());
  ASSERT_NO_FATAL_FAILURE(EveryWriteRefused());
  ASSERT_NO_FATAL_FAILURE(Allow());
  ASSERT_NO_FATAL_FAILURE(TheSameWritesGoThrough());
  PasswordStored();
}

}  // namespace
}  // namespace e2e
