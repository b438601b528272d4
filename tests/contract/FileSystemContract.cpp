// What every file system gives the logic, written once and run on each of them.
#include <gtest/gtest.h>

#include <filesystem>

#include "Targets.h"

namespace contract {
namespace {

class FileSystemContract : public FsContract {};

TEST_P(FileSystemContract, FoldersAreMadeOneLevelAtATimeAndToldFromFiles) {
  Text file = Path(u"a.txt");
  Text parent = Path(u"One");
  Text child = parent + u"\\Two";
  EXPECT_FALSE(fs().FileExists(file));
  EXPECT_FALSE(fs().CreateFolder(child));
  EXPECT_FALSE(fs().FolderExists(child));
  ASSERT_TRUE(fs().WriteAll(file, "x"));
  EXPECT_TRUE(fs().CreateFolder(parent));
  EXPECT_TRUE(fs().CreateFolder(parent)) << "an existing folder counts as success";
  EXPECT_TRUE(fs().CreateFolder(child));
  EXPECT_TRUE(fs().FileExists(file));
  EXPECT_FALSE(fs().FolderExists(file));
  EXPECT_TRUE(fs().FolderExists(child));
  EXPECT_FALSE(fs().FileExists(parent));
  EXPECT_TRUE(fs().FolderExists(world_->Root()));
}

// A forced delete takes a read-only file; one without force leaves it. Neither takes
// a folder or what is gone.
TEST_P(FileSystemContract, DeleteWithAndWithoutForce) {
  Text plain = Path(u"plain.txt");
  Text locked = Path(u"readonly.txt");
  ASSERT_TRUE(fs().WriteAll(plain, "1"));
  ASSERT_TRUE(fs().WriteAll(locked, "2"));
  ASSERT_TRUE(world_->MakeReadOnly(locked));
  ASSERT_TRUE(fs().CreateFolder(Path(u"Dir")));
  EXPECT_TRUE(fs().DeleteFileWithoutForce(plain));
  EXPECT_FALSE(fs().FileExists(plain));
  EXPECT_FALSE(fs().DeleteFileWithoutForce(locked));
  EXPECT_EQ(fs().ReadAll(locked), std::optional<std::string>("2"));
  EXPECT_TRUE(fs().DeleteFile(locked));
  EXPECT_FALSE(fs().FileExists(locked));
  for (const Text& gone : {plain, Path(u"Dir")}) {
    EXPECT_FALSE(fs().DeleteFile(gone));
    EXPECT_FALSE(fs().DeleteFileWithoutForce(gone));
  }
  EXPECT_TRUE(fs().FolderExists(Path(u"Dir")));
}

TEST_P(FileSystemContract, WriteReadAppendKeepEveryByteAndARangeStopsAtTheEnd) {
  Text file = Path(u"bytes.bin");
  std::string all;
  for (int i = 0; i < 256; ++i) all.push_back(static_cast<char>(i));
  ASSERT_TRUE(fs().WriteAll(file, all));
  EXPECT_EQ(fs().ReadAll(file), all);
  ASSERT_TRUE(fs().WriteAll(file, "short")) << "a rewrite truncates";
  EXPECT_EQ(fs().ReadAll(file), "short");
  ASSERT_TRUE(fs().Append(file, std::string("\0\r\n", 3)));
  EXPECT_EQ(fs().ReadAll(file), std::string("short\0\r\n", 8));
  EXPECT_EQ(fs().FileSize(file), 8u);
  EXPECT_EQ(fs().ReadRange(file, 0, 4), "shor");
  EXPECT_EQ(fs().ReadRange(file, 6, 100), "\r\n");
  EXPECT_EQ(fs().ReadRange(file, 8, 5), "");
  EXPECT_EQ(fs().ReadRange(file, 50, 5), "");

  Text fresh = Path(u"new.log");
  ASSERT_TRUE(fs().Append(fresh, "first")) << "append creates a missing file";
  EXPECT_EQ(fs().ReadAll(fresh), "first");
  ASSERT_TRUE(fs().WriteAll(Path(u"empty"), ""));
  EXPECT_EQ(fs().ReadAll(Path(u"empty")), "");
  EXPECT_EQ(fs().FileSize(Path(u"empty")), 0u);
}

TEST_P(FileSystemContract, MissingThingsFailQuietlyAndAnExistingFolderCanBeMadeCurrent) {
  Text missing = Path(u"missing.txt");
  Text inMissingFolder = Path(u"NoSuchFolder\\file.txt");
  EXPECT_EQ(fs().ReadAll(missing), std::nullopt);
  EXPECT_EQ(fs().ReadRange(missing, 0, 1), std::nullopt);
  EXPECT_EQ(fs().FileSize(missing), std::nullopt);
  EXPECT_FALSE(fs().WriteAll(inMissingFolder, "x"));
  EXPECT_FALSE(fs().Append(inMissingFolder, "x"));
  EXPECT_FALSE(fs().FileExists(inMissingFolder));
  EXPECT_TRUE(fs().List(Path(u"NoSuchFolder"), u"*").empty());
  EXPECT_FALSE(fs().SetCurrentFolder(Path(u"NoSuchFolder")));
  // The real folder is put back, or the temporary folder could not be removed.
  std::error_code ec;
  auto before = std::filesystem::current_path(ec);
  EXPECT_TRUE(fs().SetCurrentFolder(world_->Root()));
  if (!ec) std::filesystem::current_path(before, ec);
}

TEST_P(FileSystemContract, ListMatchesPatternsWithoutRegardToCaseAndKeepsWideNames) {
  ASSERT_TRUE(fs().WriteAll(Path(u"Session1.txt"), "abc"));
  ASSERT_TRUE(fs().WriteAll(Path(u"session2.TXT"), ""));
  ASSERT_TRUE(fs().WriteAll(Path(u"notes.log"), "x"));
  ASSERT_TRUE(fs().CreateFolder(Path(u"Logs")));
  const Text wide = u"R\u00e9sum\u00e9 \u20ac \u0416.txt";
  ASSERT_TRUE(fs().WriteAll(Path(wide), "v"));
  EXPECT_TRUE(fs().FileExists(Path(wide)));

  EXPECT_EQ(Names(),
            (std::vector<Text>{u"Logs", wide, u"Session1.txt", u"notes.log", u"session2.TXT"}));
  for (const auto& e : fs().List(world_->Root(), u"*")) {
    EXPECT_EQ(e.isFolder, e.name == u"Logs") << base::ToUtf8(e.name);
    if (e.name == u"Session1.txt") {
      EXPECT_EQ(e.size, 3u);
      if (world_->StampsTimes()) {
        EXPECT_GT(e.modified.year, 2000) << "a real modification time";
      }
    }
  }
  EXPECT_EQ(Names(u"*.txt"), (std::vector<Text>{wide, u"Session1.txt", u"session2.TXT"}));
  EXPECT_EQ(Names(u"SESSION*"), (std::vector<Text>{u"Session1.txt", u"session2.TXT"}));
  EXPECT_EQ(Names(u"notes.log"), std::vector<Text>{u"notes.log"});
  EXPECT_TRUE(Names(u"*.dat").empty());
}

INSTANTIATE_TEST_SUITE_P(All, FileSystemContract, ::testing::ValuesIn(FileSystemTargets()),
                         TargetName());

}  // namespace
}  // namespace contract
