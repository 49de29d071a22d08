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
  constexpr std::size_t kSize = 10 * 1000 * 1000;
  Bytes content(kSize, 'x');
  for (std::size_t at = 0; at < kSize; at += 1000) content[at] = ByteOf(static_cast<unsigned>(at / 1000));
  WriteFile("big", content);
  WriteFile("empty", "");
  EXPECT_TRUE(files_.Read("big") == content);
  for (const std::size_t limit : {std::size_t{0}, std::size_t{1}, std::size_t{65537}, kSize, kSize + 1}) {
    EXPECT_TRUE(files_.Read("big", limit) == content.substr(0, limit)) << limit;
  }
  EXPECT_EQ(files_.Read("empty"), "");
  EXPECT_EQ(files_.Read((scratch_.Path() / "empty").string(), 5), "");
}

TEST_F(PosixFilesTest, RefusesWhatIsNoFile) {
  fs::create_directory("folder");
  ASSERT_EQ(mkfifo("pipe", 0600), 0);
  fs::create_symlink("nowhere", "broken");
  fs::create_symlink("circle", "circle");
  WriteFile("file", "old");
  const std::string zeroByte("file\0x", 6);
  for (const std::string& path :
       {std::string("folder"), std::string("pipe"), std::string("/dev/zero"), std::string("file/below"),
        std::string("none/file"), std::string("circle"), std::string(), zeroByte, std::string(5000, 'n')}) {
    EXPECT_EQ(files_.Read(path, 10), std::nullopt) << path;
    EXPECT_FALSE(files_.Replace(path, "new")) << path;
    EXPECT_EQ(files_.OpenForAppending(path), nullptr) << path;
  }
  EXPECT_EQ(files_.Read("missing"), std::nullopt);
  EXPECT_EQ(files_.Read("broken"), std::nullopt);
  EXPECT_EQ(ReadFile("file"), "old");
  EXPECT_TRUE(fs::is_fifo("pipe") && fs::is_directory("folder"));
  EXPECT_EQ(std::distance(fs::directory_iterator("."), fs::directory_iterator()), 5)
      << "left something behind";
}

TEST_F(PosixFilesTest, ReplacesAFileAndKeepsItsRights) {
  EXPECT_TRUE(files_.Replace("made", "first"));
  EXPECT_EQ(ReadFile("made"), "first");

  WriteFile("OX.CFG", "a longer old content");
  fs::permissions("OX.CFG", fs::perms(0640));
  EXPECT_TRUE(files_.Replace("OX.CFG", std::string("new\0\r\n", 6)));
  EXPECT_EQ(ReadFile("OX.CFG"), std::string("new\0\r\n", 6));
  EXPECT_EQ(fs::status("OX.CFG").permissions(), fs::perms(0640));

  fs::create_directory("real");
  fs::create_symlink("real/target", "link");
  for (const std::string content : {"made through the link", "replaced through the link"}) {
    EXPECT_TRUE(files_.Replace("link", content));
    EXPECT_EQ(ReadFile("real/target"), content);
    EXPECT_TRUE(fs::is_symlink("link"));
  }
}

TEST_F(PosixFilesTest, AReaderSeesTheOldOrTheNewContentOnly) {
  WriteFile("OX.CFG", "old");
  std::ifstream reader("OX.CFG");
  EXPECT_TRUE(files_.Replace("OX.CFG", "new"));
  std::string seen;
  reader >> seen;
  EXPECT_EQ(seen, "old");
}

TEST_F(PosixFilesTest, AppendsToWhatIsThere) {
  WriteFile("log", "1\r\n");
  const std::unique_ptr<AppendFile> log = files_.OpenForAppending("log");
  ASSERT_NE(log, nullptr);
  EXPECT_TRUE(log->Append("2\r\n"));
  EXPECT_EQ(ReadFile("log"), "1\r\n2\r\n");
  WriteFile("log", "");  // somebody emptied it meanwhile
  EXPECT_TRUE(log->Append("3\r\n"));
  EXPECT_EQ(ReadFile("log"), "3\r\n");
  ASSERT_NE(files_.OpenForAppending("new log"), nullptr);
  EXPECT_EQ(ReadFile("new log"), "");
}

TEST_F(PosixFilesTest, ListsFoldersAndFiles) {
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
  for (const std::string& none : {here + "/z.mes", here + "/missing", std::string()}) {
    EXPECT_EQ(files_.FoldersIn(none), std::nullopt);
    EXPECT_EQ(files_.FilesIn(none), std::nullopt);
  }
}

TEST_F(PosixFilesTest, DrivesAreFoldersWithTheRootFirst) {
  const Names drives = files_.Drives();
  ASSERT_FALSE(drives.empty());
  EXPECT_EQ(drives.front(), "/");
  for (const std::string& drive : drives) {
    EXPECT_TRUE(fs::is_directory(drive)) << drive;
    EXPECT_FALSE(drive.starts_with("/proc") || drive.starts_with("/sys")) << drive;
  }
}

}  // namespace
}  // namespace ox
