// Files and folders on the real disk.
#include "platform/posix/posix_files.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "platform/scratch_folder.h"

namespace ox {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

class PosixFilesTest : public testing::Test {
 protected:
  ScratchFolder scratch_;
  PosixFiles files_;
};

TEST_F(PosixFilesTest, ReadsUpToTheLimit) {
  Bytes content;
  for (int number = 0; number < 20000; ++number) content += std::to_string(number) + '\0';
  WriteFile("big", content);
  for (const std::size_t limit : {0UL, 1UL, 65536UL, 65537UL, Files::kNoLimit}) {
    EXPECT_TRUE(files_.Read("big", limit) == content.substr(0, limit)) << limit;
  }
  WriteFile("empty", "");
  EXPECT_EQ(files_.Read((scratch_.Path() / "empty").string()), "");
}

TEST_F(PosixFilesTest, RefusesWhatIsNoFile) {
  fs::create_directory("folder");
  ASSERT_EQ(mkfifo("pipe", 0600), 0);
  fs::create_symlink("nowhere", "broken");
  fs::create_symlink("circle", "circle");
  WriteFile("file", "old");
  for (const std::string& path : Names{"folder", "pipe", "/dev/zero", "file/below", "none/file", "circle", "",
                                       std::string("file\0x", 6), std::string(5000, 'n')}) {
    EXPECT_EQ(files_.Read(path, 10), std::nullopt) << path;
    EXPECT_FALSE(files_.Replace(path, "new")) << path;
    EXPECT_EQ(files_.OpenForAppending(path), nullptr) << path;
  }
  EXPECT_FALSE(files_.Read("missing") || files_.Read("broken"));
  EXPECT_EQ(ReadFile("file"), "old");
  EXPECT_TRUE(fs::is_fifo("pipe") && fs::is_directory("folder"));
  EXPECT_EQ(std::distance(fs::directory_iterator("."), {}), 5) << "left something behind";
}

TEST_F(PosixFilesTest, ReplacesAFileWholeAndKeepsItsRights) {
  fs::create_directory("real");
  fs::create_symlink("real/target", "link");
  EXPECT_TRUE(files_.Replace("link", "made through the link"));
  EXPECT_EQ(ReadFile("real/target"), "made through the link");
  fs::permissions("real/target", fs::perms(0640));
  std::ifstream reader("link");
  EXPECT_TRUE(files_.Replace("link", Bytes("new\0\r\n", 6)));
  EXPECT_EQ(ReadFile("real/target"), Bytes("new\0\r\n", 6));
  EXPECT_EQ(fs::status("real/target").permissions(), fs::perms(0640));
  EXPECT_TRUE(fs::is_symlink("link"));
  EXPECT_EQ(reader.get(), 'm') << "a reader sees the old or the new content only";
}

TEST_F(PosixFilesTest, AppendsToWhatIsThere) {
  WriteFile("log", "1\r\n");
  const std::unique_ptr<AppendFile> log = files_.OpenForAppending("log");
  EXPECT_TRUE(log->Append("2\r\n"));
  EXPECT_EQ(ReadFile("log"), "1\r\n2\r\n");
  WriteFile("log", "");  // somebody emptied it meanwhile
  EXPECT_TRUE(log->Append("3\r\n"));
  EXPECT_EQ(ReadFile("log"), "3\r\n");
  EXPECT_NE(files_.OpenForAppending("new log"), nullptr);
  EXPECT_TRUE(fs::exists("new log"));
}

TEST_F(PosixFilesTest, ListsDrivesFoldersAndFiles) {
  for (const char* name : {"b", "a", ".hidden"}) fs::create_directory(name);
  for (const char* name : {"z.mes", "\xC3\xA4.mes", "M.par", ".secret", "bad\xFFname"}) WriteFile(name, "");
  ASSERT_EQ(mkfifo("pipe", 0600), 0);
  fs::create_symlink("nowhere", "broken");
  fs::create_symlink("a", "to a");
  fs::create_symlink("z.mes", "to z");
  const std::string here = files_.WorkingFolder();
  EXPECT_EQ(here, fs::canonical(scratch_.Path()).string());
  EXPECT_EQ(files_.FoldersIn(here), (Names{"a", "b", "to a"}));
  EXPECT_EQ(files_.FilesIn(here), (Names{"M.par", "to z", "z.mes", "\xC3\xA4.mes"}));
  EXPECT_EQ(files_.FilesIn(here + "/a"), Names{});
  for (const std::string& none : Names{here + "/z.mes", here + "/missing", ""}) {
    EXPECT_FALSE(files_.FoldersIn(none) || files_.FilesIn(none)) << none;
  }
  EXPECT_EQ(files_.Drives().front(), "/");
  for (const std::string& drive : files_.Drives()) {
    EXPECT_TRUE(fs::is_directory(drive) && !drive.starts_with("/proc") && !drive.starts_with("/sys"))
        << drive;
  }
}

}  // namespace
}  // namespace ox
