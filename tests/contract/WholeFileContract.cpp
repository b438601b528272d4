// Whole-file writes and appends that are complete or absent, on every file system:
// the temporary file, the one-step replace, the read-only file, the missing folder,
// the cut-back append and the clean-up after a crash.
#include <gtest/gtest.h>

#include "Targets.h"
#include "platform/WholeFile.h"

namespace contract {
namespace {

class WholeFileContract : public FsContract {};

TEST_P(WholeFileContract, ReplacesTheFileAndLeavesNothingBeside) {
  Text file = Path(u"scheduleData.txt");
  ASSERT_TRUE(fs().WriteAll(file, "old content, longer than the new"));
  auto written = platform::WriteWholeFile(fs(), file, "new");
  ASSERT_TRUE(written.ok) << base::ToUtf8(written.reason);
  EXPECT_FALSE(written.inPlace);
  EXPECT_EQ(fs().ReadAll(file), "new");
  EXPECT_EQ(Names(), std::vector<Text>{u"scheduleData.txt"});

  Text fresh = Path(u"fresh.ini");
  ASSERT_TRUE(platform::WriteWholeFile(fs(), fresh, std::string("\xFF\xFE\0\0", 4)).ok)
      << "a missing file is created";
  EXPECT_EQ(fs().ReadAll(fresh), std::string("\xFF\xFE\0\0", 4));
  ASSERT_TRUE(platform::WriteWholeFile(fs(), fresh, "").ok);
  EXPECT_EQ(fs().FileSize(fresh), 0u);
}

TEST_P(WholeFileContract, ReadOnlyFileOrMissingFolderIsRefusedAndNothingIsLeft) {
  Text file = Path(u"qvwin.ini");
  ASSERT_TRUE(fs().WriteAll(file, "kept"));
  ASSERT_TRUE(world_->MakeReadOnly(file));
  auto refused = platform::WriteWholeFile(fs(), file, "lost");
  EXPECT_FALSE(refused.ok);
  EXPECT_FALSE(refused.reason.empty()) << "the system's reason comes back";
  EXPECT_EQ(fs().ReadAll(file), "kept");
  EXPECT_EQ(Names(), std::vector<Text>{u"qvwin.ini"}) << "no temporary file stays";

  auto forced = platform::WriteWholeFile(fs(), file, "replaced", true);
  ASSERT_TRUE(forced.ok) << base::ToUtf8(forced.reason);
  EXPECT_EQ(fs().ReadAll(file), "replaced");

  // A missing folder: both ways fail with a reason and make nothing.
  Text lost = Path(u"NoSuchUser") + u"\\jsmith.txt";
  for (auto written :
       {platform::WriteWholeFile(fs(), lost, "x"), platform::AppendWhole(fs(), lost, "x")}) {
    EXPECT_FALSE(written.ok);
    EXPECT_FALSE(written.reason.empty());
  }
  EXPECT_EQ(Names(), std::vector<Text>{u"qvwin.ini"});
}

TEST_P(WholeFileContract, ReplaceMovesInOneStep) {
  Text from = Path(u"a.qvtmp");
  Text to = Path(u"a");
  ASSERT_TRUE(fs().WriteFlushed(from, "new bytes"));
  ASSERT_TRUE(fs().WriteAll(to, "old"));
  EXPECT_EQ(fs().Replace(from, to, false), platform::IFileSystem::ReplaceResult::Done);
  EXPECT_EQ(fs().ReadAll(to), "new bytes");
  EXPECT_FALSE(fs().FileExists(from));
  EXPECT_EQ(fs().Replace(from, to, false), platform::IFileSystem::ReplaceResult::Failed)
      << "nothing left to move";
  EXPECT_FALSE(fs().LastErrorText().empty());
  EXPECT_EQ(fs().ReadAll(to), "new bytes");
}

TEST_P(WholeFileContract, AppendAddsAndTruncateCutsBack) {
  Text log = Path(u"SerTraceFile.txt");
  ASSERT_TRUE(platform::AppendWhole(fs(), log, "one\r\n").ok) << "a missing file is created";
  ASSERT_TRUE(platform::AppendWhole(fs(), log, "two\r\n").ok);
  EXPECT_EQ(fs().ReadAll(log), "one\r\ntwo\r\n");
  ASSERT_TRUE(fs().Truncate(log, 5));
  EXPECT_EQ(fs().ReadAll(log), "one\r\n");
  EXPECT_FALSE(fs().Truncate(Path(u"absent"), 0));
}

TEST_P(WholeFileContract, LeftoverTemporariesAreRemovedAndNothingElse) {
  ASSERT_TRUE(fs().WriteAll(Path(u"scheduleData.txt"), "keep"));
  ASSERT_TRUE(fs().WriteAll(Path(u"scheduleData.txt.qvtmp"), "half"));
  ASSERT_TRUE(fs().WriteAll(Path(u"qvwin.ini.QVTMP"), "half"));
  ASSERT_TRUE(fs().WriteAll(Path(u"notes.qvtmp.txt"), "keep"));
  ASSERT_TRUE(fs().CreateFolder(Path(u"jsmith.qvtmp")));
  EXPECT_EQ(platform::RemoveLeftoverTemporaries(fs(), world_->Root()), 2);
  EXPECT_EQ(Names(), (std::vector<Text>{u"jsmith.qvtmp", u"notes.qvtmp.txt", u"scheduleData.txt"}));
  EXPECT_EQ(fs().ReadAll(Path(u"scheduleData.txt")), "keep");
}

INSTANTIATE_TEST_SUITE_P(All, WholeFileContract, ::testing::ValuesIn(FileSystemTargets()),
                         TargetName());

}  // namespace
}  // namespace contract
