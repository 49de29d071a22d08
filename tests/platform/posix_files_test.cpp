// Files and folders on the real disk.
#include "platform/posix/posix_files.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>

#include "platform/scratch_folder.h"

namespace ox {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

struct PosixFilesTest : testing::Test {
  ScratchFolder scratch_;
  PosixFiles files_;
};

TEST_F(PosixFilesTest, ReadsUpToTheLimit) {
  Bytes content;
  for (int number = 0; number < 20000; ++number) content += std::to_string(number) + '\0';
  WriteFile("big", content);
  for (const std::size_t limit : {0UL, 65537UL, Files::kNoLimit})
    EXPECT_TRUE(files_.Read("big", limit) == content.substr(0, limit)) << limit;
}

TEST_F(PosixFilesTest, RefusesWhatIsNoFile) {
  fs::create_directory("folder");
  ASSERT_EQ(mkfifo("pipe", 0600), 0);
  WriteFile("file", "old");
  for (const std::string& path : Names{"folder", "pipe", "file/below", "", std::string("file\0x", 6)}) {
    EXPECT_EQ(files_.Read(path, 10), std::nullopt) << path;
    EXPECT_FALSE(files_.Replace(path, "new")) << path;
    EXPECT_EQ(files_.OpenForAppending(path), nullptr) << path;
  }
  EXPECT_EQ(files_.Read("missing"), std::nullopt);
  EXPECT_EQ(ReadFile("file"), "old");
  EXPECT_EQ(std::distance(fs::directory_iterator("."), {}), 3) << "left something behind";
}

TEST_F(PosixFilesTest, ReplacesAFileWholeAndKeepsItsRightsAndAppendsToIt) {
  fs::create_directory("real");
  WriteFile("real/target", "old");
  fs::permissions("real/target", fs::perms(0640));
  fs::create_symlink("real/target", "link");
  std::ifstream reader("link");
  EXPECT_TRUE(files_.Replace("link", Bytes("new\0\r\n", 6)));
  EXPECT_EQ(reader.get(), 'o') << "a reader sees the old or the new content only";
  EXPECT_EQ(fs::status("real/target").permissions(), fs::perms(0640));
  EXPECT_TRUE(files_.OpenForAppending("link")->Append("more"));
  EXPECT_EQ(ReadFile("real/target"), Bytes("new\0\r\nmore", 10));
}

TEST_F(PosixFilesTest, KnowsAFileUnderItsOtherNames) {
  WriteFile("file", "same");
  WriteFile("twin", "same");
  fs::create_symlink("file", "link");
  fs::create_hard_link("file", "second name");
  for (const char* other : {"file", "link", "second name", "./file"})
    EXPECT_TRUE(files_.SameFile("file", other));
  for (const char* other : {"twin", "missing", ""}) EXPECT_FALSE(files_.SameFile(other, "file")) << other;
  EXPECT_FALSE(files_.SameFile("missing", "missing"));
}

TEST_F(PosixFilesTest, ListsDrivesFoldersAndFiles) {
  for (const char* name : {"b", "a", ".hidden"}) fs::create_directory(name);
  for (const char* name : {"z.mes", "\xC3\xA4.mes", "M.par", ".secret", "bad\xFFname"}) WriteFile(name, "");
  fs::create_symlink("a", "to a");
  const std::string here = files_.WorkingFolder();
  EXPECT_EQ(files_.FoldersIn(here), (Names{"a", "b", "to a"}));
  EXPECT_EQ(files_.FilesIn(here), (Names{"M.par", "z.mes", "\xC3\xA4.mes"}));
  EXPECT_FALSE(files_.FoldersIn("missing") || files_.FilesIn("z.mes"));
  EXPECT_EQ(files_.Drives().front(), "/");
  EXPECT_EQ(std::ranges::count(files_.Drives(), "/proc"), 0);
}

}  // namespace
}  // namespace ox
