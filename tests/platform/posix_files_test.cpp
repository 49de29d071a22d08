// Files and folders on the real disk.
#include "platform/posix/posix_files.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <mntent.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <algorithm>
#include <cerrno>
#include <map>

#include "platform/posix/descriptor.h"
#include "platform/standard_streams.h"
#include "support/scratch_folder.h"

namespace {

/// The host's calls that fail from now on, with their errors; 0 for one that succeeds and does nothing.
std::map<std::string, int> failing;
/// Where the host's table of mounted volumes stands.
std::string mounts = "/proc/self/mounts";

template <typename Result = int, typename... Arguments>
Result Call(const char* name, Arguments... arguments) {
  if (failing.contains(name)) return (errno = failing[name]) != 0 ? -1 : 0;
  return reinterpret_cast<Result (*)(Arguments...)>(dlsym(RTLD_NEXT, name))(arguments...);
}

}  // namespace

extern "C" {
int fchown(int file, uid_t user, gid_t group) {
  return Call("fchown", file, user, group);
}
int fchmod(int file, mode_t mode) {
  return Call("fchmod", file, mode);
}
int fsync(int file) {
  return Call("fsync", file);
}
int rename(const char* from, const char* to) {
  return Call("rename", from, to);
}
ssize_t write(int file, const void* bytes, size_t count) {
  return Call<ssize_t>("write", file, bytes, count);
}
FILE* setmntent(const char* /*file*/, const char* mode) {
  return fopen(mounts.c_str(), mode);
}
}

namespace ox {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

class PosixFilesTest : public testing::Test {
 protected:
  ~PosixFilesTest() override { failing.clear(); }

  ScratchFolder scratch_;
  PosixFiles files_;
};

TEST_F(PosixFilesTest, ReadsUpToTheLimit) {
  Bytes content;
  for (int number = 0; number < 20000; ++number) content += std::to_string(number) + '\0';
  WriteFile("big", content);
  for (const std::size_t limit : {std::size_t{0}, std::size_t{65537}, Files::kNoLimit})
    EXPECT_TRUE(files_.Read("big", limit) == content.substr(0, limit)) << limit;
  EXPECT_LT(files_.Read("big")->capacity(), content.size() + 100'000);
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

TEST_F(PosixFilesTest, ALogIsMadeOnceAndGrowsAndGoes) {
  failing["fsync"] = EIO;
  const auto log = files_.MakeLog("log");
  EXPECT_TRUE(log->Append("one") && log->Append("two")) << "it does not wait for the disk";
  EXPECT_EQ(files_.MakeLog("log"), nullptr);
  EXPECT_EQ(ReadFile("log"), "onetwo");
  EXPECT_EQ(files_.SizeOf("log"), 6U);
  EXPECT_EQ(files_.SizeOf("."), std::nullopt);
  EXPECT_TRUE(files_.Remove("log"));
  EXPECT_FALSE(files_.SizeOf("log").has_value() || files_.Remove("log"));
}

TEST_F(PosixFilesTest, KnowsAFileUnderItsOtherNames) {
  WriteFile("file", "same");
  WriteFile("twin", "same");
  fs::create_symlink("file", "link");
  fs::create_hard_link("file", "second name");
  for (const char* other : {"file", "link", "second name", "./file"})
    EXPECT_TRUE(files_.SameFile("file", other));
  for (const char* other : {"twin", "missing", ""}) EXPECT_FALSE(files_.SameFile(other, "file")) << other;
  EXPECT_FALSE(files_.SameFile("missing", "missing") || files_.Exists("missing"));
  fs::create_symlink("missing", "nowhere");
  for (const char* name : {"file", "link", ".", "nowhere"}) EXPECT_TRUE(files_.Exists(name)) << name;
}

TEST_F(PosixFilesTest, WhatTheFileSystemCannotDoIsAFailureOnlyWhereItMatters) {
  WriteFile("new", "");
  const fs::perms usual = fs::status("new").permissions();
  // The call, its error, the rights of the file and what is left in it.
  const std::tuple<std::string, int, fs::perms, std::string> rows[] = {
      {"fchown", EIO, usual, "new"},
      {"fchmod", EIO, usual, "new"},
      {"fchmod", EPERM, fs::perms(0640), "new"},
      {"fsync", EINVAL, usual, "new"},
      {"fsync", ENOSYS, usual, "new"},
      {"fchmod", EIO, fs::perms(0640), "old one"},
      {"rename", EBUSY, usual, "new"},
      {"write", ENOSPC, usual, "old one"},
      {"write", 0, usual, "old one"},
      {"fsync", EIO, usual, "old one"},
      {"fsync", ENOSPC, usual, "old one"},
      {"rename", EIO, usual, "old one"}};
  for (const auto& [call, error, rights, left] : rows) {
    failing.clear();
    WriteFile("file", "old one");
    fs::permissions("file", rights);
    failing[call] = error;
    EXPECT_EQ(files_.Replace("file", "new"), left == "new") << call << error;
    EXPECT_EQ(ReadFile("file"), left) << call << error;
    EXPECT_EQ(fs::status("file").permissions(), rights) << call << error;
    const bool appended = files_.OpenForAppending("log")->Append("x");
    EXPECT_EQ(appended, (call != "fsync" && call != "write") || left == "new") << call << error;
  }
  EXPECT_EQ(std::distance(fs::directory_iterator("."), {}), 3) << "left something behind";
}

TEST_F(PosixFilesTest, AFileInAFolderThatIsNotWritableIsWrittenInPlaceOrStaysAsItWas) {
  constexpr uid_t kNobody = 65534;
  fs::create_directory("folder");
  WriteFile("folder/file", "old one");
  fs::permissions("folder/file", fs::perms(0666));
  fs::permissions("folder", fs::perms(0555));
  ASSERT_EQ(seteuid(geteuid() == 0 ? kNobody : geteuid()), 0);
  EXPECT_TRUE(files_.Replace("folder/file", "new"));
  EXPECT_EQ(ReadFile("folder/file"), "new");
  failing["fsync"] = EIO;
  EXPECT_FALSE(files_.Replace("folder/file", "newer one"));
  EXPECT_EQ(ReadFile("folder/file"), "new");
  EXPECT_FALSE(files_.Replace("folder/other", "new"));
  ASSERT_EQ(seteuid(getuid()), 0);
  fs::permissions("folder", fs::perms(0755));
}

TEST_F(PosixFilesTest, WhatKilledProgramsLeftIsCleared) {
  const pid_t dead = fork();
  if (dead == 0) _exit(0);
  waitpid(dead, nullptr, 0);
  const std::string left = ".ox-" + std::to_string(dead) + "-0.tmp";
  const Names others = {".ox-1-0.tmp", ".ox--1-0.tmp", left + "x", "x" + left};
  WriteFile(left, "");
  for (const std::string& name : others) WriteFile(name, "");
  EXPECT_TRUE(files_.Replace("file", "new"));
  EXPECT_FALSE(fs::exists(left));
  for (const std::string& name : others) EXPECT_TRUE(fs::exists(name)) << name;
}

TEST_F(PosixFilesTest, AProgramStartedWithoutItsStreamsOpensNothingInTheirPlace) {
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    const Descriptor kept(dup(stream));
    close(stream);
    const StandardStreams streams;
    EXPECT_NE(Descriptor(open(".", O_RDONLY)).Number(), stream);
    dup2(kept.Number(), stream);
  }
}

TEST_F(PosixFilesTest, ListsDrivesFoldersAndFiles) {
  for (const char* name : {"b", "a", ".hidden"}) fs::create_directory(name);
  for (const char* name : {"z.mes", "\xC3\xA4.mes", "M.par", ".secret", "bad\xFFname"}) WriteFile(name, "");
  fs::create_symlink("a", "to a");
  const std::string here = files_.WorkingFolder();
  EXPECT_EQ(files_.FoldersIn(here), (Names{"a", "b", "to a"}));
  EXPECT_EQ(files_.FilesIn(here), (Names{"M.par", "z.mes", "\xC3\xA4.mes"}));
  EXPECT_FALSE(files_.FoldersIn("missing") || files_.FilesIn("z.mes"));
  WriteFile("table", "proc /proc proc rw 0 0\n/dev/loop0 " + here + "/b squashfs ro 0 0\n/dev/sdb1 " + here +
                         "/a vfat rw 0 0\nnas:/x /nas nfs rw 0 0\n/dev/sdc " + here + "/z.mes ext4 rw 0 0\n");
  mounts = here + "/table";
  EXPECT_EQ(files_.Drives(), (Names{"/", "/nas", here + "/a"}));
}

}  // namespace
}  // namespace ox
