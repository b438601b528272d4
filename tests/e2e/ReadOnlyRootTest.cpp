// The real monitor on a data folder it may read but not write, beside the simulated
// engine: the same actions as on the full disk, each refused honestly. Then only the
// password's folder stays read-only, so that the store's own write is the one refused;
// then writes are taken everywhere and the same actions go through.
// Run only from full-disk-e2e.sh, which mounts the data (a tmpfs, and a second one for
// the password's folder) and remounts them read-only or writable when the test asks.
#include "RefusedWrites.h"

namespace e2e {
namespace {

class ReadOnlyRootTest : public RefusedWritesTest {
 protected:
  void Refuse() override { ASSERT_TRUE(AskScript(L"read-only")); }
  // The data folder takes writes again; the password's folder only with Allow().
  void AllowRoot() { ASSERT_TRUE(AskScript(L"writable-root")); }
  void Allow() override { ASSERT_TRUE(AskScript(L"writable")); }
  // The engine's word can only be put on a writable mount: writable for that moment.
  void PutWord(wchar_t word) override {
    ASSERT_TRUE(AskScript(L"writable"));
    ASSERT_TRUE(PutWordInPlace(Folder().CommonFile(L"scheduleData.txt"), word));
    ASSERT_TRUE(AskScript(L"read-only"));
  }
};

TEST_F(ReadOnlyRootTest, EveryWriteIsRefusedHonestlyAndGoesThroughWhenWritable) {
  ASSERT_NO_FATAL_FAILURE(StartOnTheMount());
  ASSERT_NO_FATAL_FAILURE(EveryWriteRefused());

  // Only the password's folder refuses: the user name is written (the same name, the
  // same bytes), the password's own write is refused, and every file (nothing left beside
  // the password either) stays as it was.
  ASSERT_NO_FATAL_FAILURE(AllowRoot());
  ASSERT_NO_FATAL_FAILURE(TheSameWritesGoThrough());
  Snapshot();
  HWND updatePassword = ApplyPassword();
  ASSERT_NE(updatePassword, nullptr);
  Refused(L"The new password could not be stored. Reason : ", "password-store-refused");
  EXPECT_TRUE(StillThere(updatePassword)) << "Update Password closed on a failure";
  NoPasswordAnywhere();
  PostMessageW(updatePassword, WM_CLOSE, 0, 0);
  ASSERT_TRUE(WaitUntil([&] { return !StillThere(updatePassword); }));

  ASSERT_NO_FATAL_FAILURE(Allow());
  PasswordStored();
}

}  // namespace
}  // namespace e2e
